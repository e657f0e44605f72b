#include "content/cid.h"

#include "commons/errors.h"
#include "report/debug_log.h"

namespace zelvo {

Cid::Cid(const XmlNode& node) { load(node); }

Cid::Cid(const XmlNode& parent, const std::string& cidType) { loadCidType(parent, cidType); }

void Cid::load(const XmlNode& node) {
    clear();
    if (node.test("@referrer")) {
        throw EXC(NotSupportedOperation) % ("This cid cannot be referrer:" + node.str("."));
    }
    doLoad(node);  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
}

void Cid::loadCidType(const XmlNode& parent, const std::string& cidType) {
    clear();
    const std::string expr = "content/cid[@type='" + cidType + "']";
    if (parent.test(expr)) {
        doLoad(parent.getNode(expr));  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
    }
}

void Cid::doLoad(const XmlNode& node) {
    path = node.str("@path");
    type = node.str("@type");
    if (!isTypeSupported(type)) {
        throw EXC(NotSupportedOperation) %
            ("This class does not allow this type: " + node.str("."));
    }
    files.clear();
    for (XmlNodeIterator file = node.iterate("content-file"); !file.atEnd(); ++file) {
        files.push_back((*file).str("."));
    }
}

bool Cid::isTypeSupported(const std::string& /*cidType*/) const { return true; }

void Cid::clear() {
    path.clear();
    type.clear();
    files.clear();
}

std::string Cid::str() const {
    std::string text = path + "[" + type + "]: ";
    for (const std::string& file : files) {
        text += file + ",";
    }
    return text;
}

bool Cid::operator==(const Cid& other) const { return path == other.path && files == other.files; }

RefferredCid::RefferredCid(const XmlNode& parent, const std::string& cidType) {
    loadCidType(parent, cidType);
}

void RefferredCid::doLoad(const XmlNode& node) {
    Cid::doLoad(node);
    offset.clear();
    referred = node.test("@referrer");
    if (!referred) {
        theDebugLog->log("Load unreffered cid " + str());
        return;
    }
    if (node.test("@offset")) {
        offset = node.str("@offset");
    }
    theDebugLog->log(str() + "Load reffered cid with offset '" + offset + "'");
}

void WholeContentCid::addReferredCid(RefferredCid* cid) {
    if (cid == nullptr || cid->type.empty() || cid->files.empty() || !(*cid == *this)) {
        return;
    }
    theDebugLog->log("Add reffrered cid '" + cid->str() + "' to whole content '" + str() + "'");
    referredCids_.push_back(cid);
    held_.insert(cid);
}

std::vector<std::string> WholeContentCid::getIncludes() const {
    std::vector<std::string> includes;
    for (const RefferredCid* cid : referredCids_) {
        if (!cid->offset.empty()) {
            includes.push_back(cid->offset);
        }
    }
    return includes;
}

}  // namespace zelvo
