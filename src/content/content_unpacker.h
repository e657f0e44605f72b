// Puts the content that a Cid names into its place on the server.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "content/cid.h"
#include "content/db_server_access.h"
#include "content/unpacked_file.h"

namespace zelvo {

// There is one for a run: its concrete class says how an archive is got and opened. Needs
// theDebugLog.
//
// The panel's accounts are looked up by name at each call; UnsuitableOwner is raised for one that
// is missing. "Paths" are the full paths of what was unpacked, in the order of the archive; an
// archive that cannot be unpacked may give none.
class ContentUnpacker {
  public:
    using Paths = std::vector<std::string>;

    virtual ~ContentUnpacker() = default;

    // Unpacks an archive. includes: the wanted members; an unpacker may give more. Returns the
    // names as the archive has them, relative to the destination.
    virtual Paths unpackTar(const Cid& cid, const std::string& destination,
                            const Paths& includes) = 0;
    // Puts the archive file itself at the destination. A destination that is there and is empty
    // afterwards is an archive that could not be got in full: why, the debug log tells.
    virtual void extractPart(const Cid& cid, const std::string& destination) = 0;
    // Loads the database dump in an archive into a database.
    virtual void unpackDb(const Cid& cid, const DbServerAccess& server,
                          const std::string& database) = 0;

    // Unpacks into a directory, which is made when it is missing. An existing one keeps its mode
    // and owner whatever the archive says. user, group: names, owners of the directories that are
    // made; "root" and "0" are the group with id 0. mode: of the directories that are made, 0 for
    // what the file mask gives. Raises UnsuitableOwner, CantCreateDirectory, CantStatFile,
    // UnExpectedResult for a name that leads out of the destination and for an include that is not
    // safe (isSafeOffset), std::out_of_range for an empty name, and what unpackTar raises.
    Paths untar(const Cid& cid, const std::string& destination, const Paths& includes,
                const std::string& user, const std::string& group, mode_t mode);
    Paths untar(const Cid& cid, const std::string& destination, const std::string& user,
                const std::string& group, mode_t mode);
    // For a part of a whole archive. offset: the part's path in the archive, empty for the whole; a
    // destination that ends in it is where the part goes, any other is above the part.
    Paths untar(const Cid& cid, const std::string& destination, const std::string& offset,
                const std::string& user, const std::string& group, mode_t mode);

    Paths unpack_hosting_cid(const Cid& cid, const std::string& destination,
                             const std::string& offset, const std::string& user,
                             const std::string& group, mode_t mode = kHostingMode);
    // The same, then apply_hosting_cid_with_fp on what was unpacked.
    Paths unpack_hosting_cid_with_fp(const Cid& cid, const std::string& domain,
                                     const std::string& destination, const std::string& offset,
                                     const std::string& user, const std::string& group,
                                     mode_t mode = kHostingMode);

    // ---- Each kind of content with its owners. Argument names: destination, owner (a user's
    // name) and offset as in untar. All raise what untar raises.

    void extractDomainVhost(const Cid& cid, const std::string& destination, const Paths& includes,
                            const std::string& owner, Paths& result);
    Paths extractDomainWhole(const Cid& cid, const std::string& destination,
                             const std::string& owner);
    // destination: a directory beside the archives of lists, as others than the domain's lie there.
    Paths extractDomainMailList(const Cid& cid, const std::string& destination,
                                const Paths& includes);
    Paths extractDomainMail(const Cid& cid, const std::string& domain, const Paths& includes);
    Paths extractDomainDocRoot(const Cid& cid, const std::string& domain,
                               const std::string& destination, const std::string& owner,
                               const std::string& offset);
    Paths extractDomainDocRootSSL(const Cid& cid, const std::string& domain,
                                  const std::string& destination, const std::string& owner,
                                  const std::string& offset);
    Paths extractDomainCgi(const Cid& cid, const std::string& destination, const std::string& owner,
                           const std::string& offset);
    Paths extractDomainWebStat(const Cid& cid, const std::string& destination,
                               const std::string& offset);
    Paths extractDomainWebStatSSL(const Cid& cid, const std::string& destination,
                                  const std::string& offset);
    Paths extractDomainFtpStat(const Cid& cid, const std::string& destination,
                               const std::string& offset);
    Paths extractDomainAnonFtpStat(const Cid& cid, const std::string& destination,
                                   const std::string& offset);
    Paths extractDomainErrorDocs(const Cid& cid, const std::string& destination,
                                 const std::string& owner, const std::string& offset);
    Paths extractDomainLogs(const Cid& cid, const std::string& destination,
                            const std::string& offset);
    Paths extractDomainPrivate(const Cid& cid, const std::string& destination,
                               const std::string& owner, const std::string& offset);
    Paths extractDomainPublicAnonFtp(const Cid& cid, const std::string& destination,
                                     const std::string& owner, const std::string& offset);
    Paths extractDomainIncomingAnonFtp(const Cid& cid, const std::string& destination,
                                       const std::string& owner, const std::string& offset);
    Paths extractDomainConf(const Cid& cid, const std::string& destination,
                            const std::string& offset);
    Paths extractSubDomainConf(const Cid& cid, const std::string& destination,
                               const std::string& offset);
    Paths extractSubDomainDocRoot(const Cid& cid, const std::string& destination,
                                  const std::string& owner, const std::string& offset);
    Paths extractSubDomainDocRootSSL(const Cid& cid, const std::string& destination,
                                     const std::string& owner, const std::string& offset);
    Paths extractSubDomainCgiBin(const Cid& cid, const std::string& destination,
                                 const std::string& owner, const std::string& offset);
    Paths extractWebUserContent(const Cid& cid, const std::string& destination,
                                const std::string& owner, const std::string& offset);
    Paths extractSiteAppHttpDocs(const Cid& cid, const std::string& destination,
                                 const std::string& owner, const std::string& offset);
    Paths extractSiteAppCgiBin(const Cid& cid, const std::string& destination,
                               const std::string& owner, const std::string& offset);
    Paths extractSiteAppScripts(const Cid& cid, const std::string& destination,
                                const std::string& offset);
    Paths extractSiteAppHttpsScripts(const Cid& cid, const std::string& destination,
                                     const std::string& offset);
    // Attachments. name, subName: the place below the temporary directory, one in the other.
    Paths extractAutoResponder(const Cid& cid, const std::string& name, const std::string& subName,
                               const std::string& offset);
    // convert: convert the filter's data to this server's form; set to false when the converter
    // ends with code 1, as one that cannot be started does too.
    Paths extractSpamAssassinContent(const Cid& cid, const std::string& domain,
                                     const std::string& mailName, bool& convert,
                                     const std::string& offset);
    // domain: of no effect.
    Paths extractMailManContent(const Cid& cid, const std::string& domain,
                                const std::string& listName, const std::string& offset);

    // ---- Single files. They return the one file, below the temporary directory in a directory
    // that only root and the panel's own user can enter: what else an archive holds, such as a link
    // or a program with root's rights, reaches nobody. They raise CantCreateTempDir,
    // AssertionFailed when it is not one file, UnExpectedResult when it is none but a link or
    // alike, and what untar raises.

    UnpackedFile extractIcons(const Cid& cid);
    UnpackedFile extractPrivateKey(const Cid& cid);
    UnpackedFile extractSiteAppDistr(const Cid& cid);
    UnpackedFile extractTomCatApp(const Cid& cid);

    // ---- Mailboxes. Both return true.

    // Unpacks a maildir into that of the mail name. Here as for all mail, what an archive brings
    // along that is neither a file nor a directory is removed, and UnExpectedResult raised for it.
    bool mdir2mdir(const Cid& cid, const std::string& domain, const std::string& mailName,
                   const std::string& offset);
    // Converts mailboxes in mbox form into the maildir of the mail name. single_file: the archive
    // is the one file of an inbox. Raises ExecCmd::Failed, and UnExpectedResult for an inbox that
    // is not there.
    bool mbox2mdir(const Cid& cid, const std::string& domain, const std::string& mailName,
                   bool single_file, const std::string& offset);
    // The same for mailboxes that the whole archive of a domain's mail has left in the domain's
    // mail directory, where they stay. offset: their place there, a file or a directory. Raises
    // ExecCmd::Failed, and UnExpectedResult when nothing is there.
    static void convertUnpackedMbox(const std::string& domain, const std::string& mailName,
                                    const std::string& offset);

  protected:
    ContentUnpacker() = default;
    ContentUnpacker(const ContentUnpacker&) = default;
    ContentUnpacker& operator=(const ContentUnpacker&) = default;

  private:
    // The one file of an archive. assertion: the text of the failure when it is not one.
    UnpackedFile extractFile(const Cid& cid, const std::string& user, const std::string& group,
                             const char* assertion);

    static constexpr mode_t kHostingMode = 0750;
};

}  // namespace zelvo
