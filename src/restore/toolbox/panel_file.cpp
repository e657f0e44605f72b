#include "restore/toolbox/panel_file.h"

#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ostream>

#include "commons/errors.h"
#include "commons/files.h"
#include "commons/system_error.h"
#include "content/accounts.h"
#include "lib/liblog.h"
#include "lib/zelvo_ugid.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

namespace {

// A directory without room costs the object that the file is for, and not the run.
RMKTmpFile makeFile(const std::string& prefix) {
    const std::string directory = files::getTmpDir();
    try {
        return RMKTmpFile(directory, prefix, true);
    } catch (const SystemError& failure) {
        throw EXC(CantCreateTempFile) % (directory + "/" + prefix + "XXXXXX") %
            strerror(failure.number());
    }
}

}  // namespace

PanelFile::PanelFile(const std::string& prefix) : file_(makeFile(prefix)) {}

PanelFile::PanelFile(const std::string& prefix, const std::string& text) : PanelFile(prefix) {
    handOver();
    write(text);
}

void PanelFile::handOver() const {
    uid_t user = 0;
    gid_t group = 0;
    if (zelvo_ugid(accounts::kPanel, &user, &group) != 0 ||
        lchown(path().c_str(), user, group) != 0) {
        messlog2(0, 0, "Can not chown temporary file %s to be accessible by Zelvo CP",
                 path().c_str());
    }
}

void PanelFile::write(const std::string& text) {
    errno = 0;
    if (!(file_ << text << std::flush)) {
        throw EXC(CantWriteTempFile) % path() % strerror(errno);
    }
}

}  // namespace zelvo
