// bench-unpack-site SESSION ARCHIVE DIRECTORY USER: unpacks the whole archive of a domain's content
// with thirty parts in it, as the restore of its hosting does, and does nothing else. ARCHIVE:
// below the session. DIRECTORY: of the domain's virtual host. USER: the domain's. Runs in a panel.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "commons/session.h"
#include "content/destination.h"
#include "content/regular_unpacker.h"
#include "content/vhost_refferred.h"
#include "report/debug_log.h"
#include "xml/xml_document.h"

namespace {

constexpr int kSubdomains = 18;

std::string cid(const std::string& type, const std::string& archive, const std::string& more) {
    return "<cid path='.' type='" + type + "'" + more + "><content-file>" + archive +
           "</content-file></cid>";
}

std::string part(const std::string& type, const std::string& archive, int number) {
    return cid(type, archive, " referrer='true' offset='directory-" + std::to_string(number) + "'");
}

// The element of a hosting: twelve parts of the domain's own, and one of each subdomain.
std::string hosting(const std::string& archive) {
    std::string text = "<phosting><content>" + cid("vhost", archive, "");
    int number = 0;
    for (const zelvo::VhostRow& row : zelvo::domainRows()) {
        text += part(row.type, archive, number++);
    }
    text += "</content>";
    for (int i = 0; i < kSubdomains; ++i) {
        text += "<subdomain name='s" + std::to_string(i) + "'><content>" +
                part("docroot", archive, number++) + "</content></subdomain>";
    }
    return text + "</phosting>";
}

void unpack(const std::string& archive, const std::string& directory, const std::string& user) {
    const std::string domain = directory.substr(directory.rfind('/') + 1);
    if (zelvo::getVhostDir(domain) != directory) {
        throw std::runtime_error("no virtual host: " + directory);
    }
    const zelvo::tXmlDocument document(hosting(archive));
    const zelvo::XmlNode node =
        zelvo::tXPathExpr(document.doc(), "/phosting", nullptr).getXmlNode();
    zelvo::DomainVHostRefferred collection(node, domain, user);
    collection.addDomainVhost(node);
    for (auto it = node.iterate("subdomain"); !it.atEnd(); ++it) {
        collection.addSubDomain(*it, (*it).str("@name"), user);
    }
    zelvo::RegularUnpacker unpacker;
    collection.Extract(unpacker);
    if (!std::filesystem::exists(directory + "/directory-29")) {
        throw std::runtime_error("not everything was unpacked");
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: bench-unpack-site SESSION ARCHIVE DIRECTORY USER\n", stderr);
        return 2;
    }
    try {
        const zelvo::SessionLifetimeController session(argv[1]);
        const zelvo::DebugLogLifetimeController debugLog(false, false);
        unpack(argv[2], argv[3], argv[4]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-unpack-site: %s\n", failure.what());
        return 1;
    }
}
