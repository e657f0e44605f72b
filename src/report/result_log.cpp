#include "report/result_log.h"

#include <unistd.h>

#include "commons/session.h"
#include "report/debug_log.h"
#include "report/xml_formatter.h"

namespace zelvo {

Log* theLog = nullptr;

XmlLog::XmlLog()
    : fileName_(theSession->getResultFileName()), current_(nullptr, nullptr), hasMessages_{true} {
    initNewDoc("execution-result");
    current_ = XmlNode(doc(), root());
}

void XmlLog::log(const ExTraceable& failure) {
    XmlMsgFormatter formatter(*this, newChild(current_.node(), "message"));
    failure.accept(formatter);
    hasMessages_.back() = true;
}

void XmlLog::pushObject(const std::string& name, const std::string& type) {
    xmlNode* object = newChild(current_.node(), "object");
    addAttribute(object, "name", name);
    addAttribute(object, "type", type);
    current_ = XmlNode(doc(), object);
    hasMessages_.push_back(false);
}

void XmlLog::popObject() {
    const XmlNode object = current_;
    current_ = object.getParent();
    const bool mustStay = hasMessages_.back();
    hasMessages_.pop_back();
    if (mustStay) {
        hasMessages_.back() = true;
    } else {
        removeNode(object.node());
    }
}

int XmlLog::getDepth() const { return static_cast<int>(hasMessages_.size()) - 1; }

void XmlLog::save() {
    addAttribute(root(), "status", success_ ? "success" : "error");
    saveToFileAtomically(fileName_, Durability::kSynced);
}

LogLifetimeController::LogLifetimeController() : log_(std::make_unique<XmlLog>()) {
    theLog = log_.get();
    unlink(theSession->getResultFileName().c_str());
}

LogLifetimeController::~LogLifetimeController() {
    if (!log_) {
        return;
    }
    try {
        finish();
    } catch (const ExTraceable& failure) {
        if (theDebugLog != nullptr) {
            theDebugLog->log(failure);
        }
    } catch (const std::exception& failure) {
        if (theDebugLog != nullptr) {
            theDebugLog->log(std::string(failure.what()));
        }
    }
}

void LogLifetimeController::finish() {
    const std::unique_ptr<XmlLog> log = std::move(log_);
    theLog = nullptr;
    log->save();
}

}  // namespace zelvo
