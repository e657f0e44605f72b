// bench-unpack-mailbox SESSION ARCHIVE MAILDIR: unpacks the mailbox of a mail user as its restore
// does, and does nothing else. ARCHIVE: below the session. MAILDIR: the mail user's. Runs in a
// panel.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "commons/session.h"
#include "content/destination.h"
#include "content/mail_refferred.h"
#include "content/regular_unpacker.h"
#include "report/debug_log.h"
#include "xml/xml_document.h"

namespace {

void unpack(const std::string& archive, const std::filesystem::path& maildir) {
    const std::string mailName = maildir.parent_path().filename();
    const std::string domain = maildir.parent_path().parent_path().filename();
    if (zelvo::getMaildir(domain, mailName) != maildir) {
        throw std::runtime_error("no mailbox: " + maildir.string());
    }
    const zelvo::tXmlDocument document(
        "<mailbox type='mdir'><content><cid path='.' type='mailbox'><content-file>" + archive +
        "</content-file></cid></content></mailbox>");
    const zelvo::XmlNode mailbox =
        zelvo::tXPathExpr(document.doc(), "/mailbox", nullptr).getXmlNode();
    zelvo::DomainMailRefferred collection(mailbox, false, domain);
    collection.addMailName(mailbox, mailName);
    zelvo::RegularUnpacker unpacker;
    collection.Extract(unpacker);
    if (std::filesystem::is_empty(maildir)) {
        throw std::runtime_error("nothing was unpacked");
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bench-unpack-mailbox SESSION ARCHIVE MAILDIR\n", stderr);
        return 2;
    }
    try {
        const zelvo::SessionLifetimeController session(argv[1]);
        const zelvo::DebugLogLifetimeController debugLog(false, false);
        unpack(argv[2], argv[3]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-unpack-mailbox: %s\n", failure.what());
        return 1;
    }
}
