// Where the attachments of a mail name's automatic answers wait for the panel to take them.
#pragma once

#include <string>

namespace zelvo {

// A domain's own directory in the temporary one, with a directory for a mail name. What an earlier
// run has left there is removed first, and all of it at the end. Needs theDebugLog.
class AttachmentDirectory {
  public:
    // domain, mailName: each can be one component of a path. Makes no directory.
    AttachmentDirectory(const std::string& domain, const std::string& mailName);
    ~AttachmentDirectory();
    AttachmentDirectory(const AttachmentDirectory&) = delete;
    AttachmentDirectory& operator=(const AttachmentDirectory&) = delete;

    const std::string& ofDomain() const { return ofDomain_; }
    std::string ofMailName() const { return ofDomain_ + "/" + mailName_; }

  private:
    void clean() const;

    std::string ofDomain_;
    std::string mailName_;
};

}  // namespace zelvo
