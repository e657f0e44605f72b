// Mail: its owners, the conversion of mailboxes and of the spam filter's data.
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <string_view>
#include <tuple>
#include <utility>

#include "commons/files.h"
#include "content/account_ids.h"
#include "content/accounts.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/content_unpacker.h"
#include "content/destination.h"
#include "content/unpack_directory.h"
#include "exec/beneath.h"
#include "exec/log_exec_cmd.h"

namespace zelvo {

using namespace accounts;
using Paths = ContentUnpacker::Paths;

namespace {

constexpr const char* kSpamDirectory = ".spamassassin";
constexpr mode_t kSharedMode = 0770;

tLogExecCmd asMailUser(const std::string& utility) {
    tLogExecCmd command(utility);
    command.uid = userId(kMail);
    return command;
}

// One account serves the mail of all domains. A link that an archive leaves would show it the mail
// of another customer, a device the disk; neither is mail.
template <class Work>
Paths keepingFilesAlone(const std::string& directory, Work&& unpack) {
    timespec start{};
    clock_gettime(CLOCK_REALTIME_COARSE, &start);
    Paths paths;
    try {
        paths = unpack();
    } catch (...) {
        removeIrregular(directory, start);
        throw;
    }
    const std::string removed = removeIrregular(directory, start);
    if (!removed.empty()) {
        throw EXC(UnExpectedResult) %
            ("the archive's " + removed + " is neither a file nor a directory");
    }
    return paths;
}

// Once the converter has said that it has nothing to do here, convert stays false.
void convertSpamData(const std::string& directory, bool& convert) {
    if (!convert) {
        return;
    }
    refuseLinks(directory);
    tLogExecCmd converter = asMailUser(files::getSAConvertFileName());
    converter << directory;
    convert = converter.exec(std::nothrow) != 1;
}

// The first path. Through a link what cleans up behind the converter would reach a file of this
// server.
std::string mailboxAmong(const Paths& paths, const std::string& directory) {
    const mode_t type = paths.empty() ? 0 : typeBeneath(directory, paths.front());
    if (type != S_IFREG && type != S_IFDIR) {
        throw EXC(UnExpectedResult) % "there is no mailbox in the archive";
    }
    return paths.front();
}

// The converter may read and write the mail of every domain.
void convertMailbox(tLogExecCmd converter, const std::string& source, const std::string& maildir) {
    refuseLinks(source);
    refuseLinks(maildir);
    converter << "-s" << source << "-R"
              << "-d" << maildir;
    converter.exec();
}

// Gives the panel what of a domain's mail is its own.
class MailSorter {
  public:
    explicit MailSorter(std::string directory) : directory_(std::move(directory)) {}

    void sort(const std::string& path) const {
        static bool convert = true;
        const std::size_t start = directory_.size() + (path.size() > directory_.size() ? 1 : 0);
        const std::size_t slash = path.find('/', start);
        if (slash == std::string::npos) {
            return;
        }
        // This text starts with the slash, so neither name is ever met.
        const std::string_view rest = std::string_view(path).substr(slash);
        if (rest.starts_with("Maildir")) {
            return;
        }
        if (rest.starts_with(kSpamDirectory) && convert) {
            convertSpamData(
                directory_ + "/" + path.substr(start, slash + 1 - start) + kSpamDirectory, convert);
            return;
        }
        // The path is a full one already, so this names nothing as a rule, and the mail stays the
        // mail user's.
        lchownBeneath(directory_, directory_ + "/" + path, owner_, group_);
        chmodBeneath(directory_, directory_ + "/" + path, kSharedMode);
    }

  private:
    std::string directory_;
    uid_t owner_ = userId(kPanel);
    gid_t group_ = groupId(kPanel);
};

}  // namespace

Paths ContentUnpacker::extractDomainMail(const Cid& cid, const std::string& domain,
                                         const Paths& includes) {
    const std::string directory = getDomainMailDir(domain);
    return keepingFilesAlone(directory, [&] {
        Paths paths = untar(cid, directory, includes, kMail, kMail, 0);
        const MailSorter sorter(directory);
        for (const std::string& path : paths) {
            sorter.sort(path);
        }
        return paths;
    });
}

Paths ContentUnpacker::extractSpamAssassinContent(const Cid& cid, const std::string& domain,
                                                  const std::string& mailName, bool& convert,
                                                  const std::string& offset) {
    const std::string directory = getSpamDir(domain, mailName);
    Paths paths = keepingFilesAlone(aboveOffset(directory, offset), [&] {
        return unpack_hosting_cid(cid, directory, offset, kMail, kMail, kSharedMode);
    });
    convertSpamData(directory, convert);
    return paths;
}

bool ContentUnpacker::mdir2mdir(const Cid& cid, const std::string& domain,
                                const std::string& mailName, const std::string& offset) {
    const std::string maildir = getMaildir(domain, mailName);
    requireUnpacked(keepingFilesAlone(aboveOffset(maildir, offset), [&] {
        return untar(cid, maildir, offset, kMail, kMail, 0);
    }));
    return true;
}

bool ContentUnpacker::mbox2mdir(const Cid& cid, const std::string& domain,
                                const std::string& mailName, bool single_file,
                                const std::string& offset) {
    tLogExecCmd converter = asMailUser(files::getMb2mdFileName());
    const gid_t group = groupId(kMail);
    UnpackDirectory temporary;
    const Paths paths = requireUnpacked(untar(cid, temporary.path(), offset, kMail, kMail, 0));
    std::ignore = chown(temporary.path().c_str(), converter.uid, group);
    std::string source = temporary.path();
    if (single_file) {
        source = mailboxAmong(paths, temporary.path());
        temporary.cleanInstead(source);
    }
    convertMailbox(std::move(converter), source, getMaildir(domain, mailName));
    return true;
}

void ContentUnpacker::convertUnpackedMbox(const std::string& domain, const std::string& mailName,
                                          const std::string& offset) {
    const std::string directory = getDomainMailDir(domain);
    // Without a place of its own it would be the mail of everybody.
    const Paths places = offset.empty() ? Paths() : Paths{directory + "/" + offset};
    convertMailbox(asMailUser(files::getMb2mdFileName()), mailboxAmong(places, directory),
                   getMaildir(domain, mailName));
}

}  // namespace zelvo
