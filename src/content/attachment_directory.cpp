#include "content/attachment_directory.h"

#include <sys/stat.h>

#include "commons/files.h"
#include "content/beneath.h"
#include "content/unpack_directory.h"

namespace zelvo {

AttachmentDirectory::AttachmentDirectory(const std::string& domain, const std::string& mailName)
    : ofDomain_(files::getTmpDir() + "/" + domain), mailName_(mailName) {
    clean();
}

AttachmentDirectory::~AttachmentDirectory() { clean(); }

// Anything but a directory is somebody else's: a single file that was unpacked beside it, or a
// link.
void AttachmentDirectory::clean() const {
    if (typeBeneath(files::getTmpDir(), ofDomain_) == S_IFDIR) {
        cleanTempDir(ofDomain_);
    }
}

}  // namespace zelvo
