#include "panel/given_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "files.h"
#include "panel/command.h"
#include "panel/system_users.h"
#include "words.h"

namespace sandbox {

std::string readGiven(const std::string& path) {
    const auto text = readFile(path);
    if (!text) {
        throw Refusal("there is no file " + quoteWord(path));
    }
    return *text;
}

std::string readSecret(const std::string& path) {
    const Fd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    struct stat status {};
    if (!fd || fstat(fd.get(), &status) != 0) {
        throw Refusal("there is no file " + quoteWord(path));
    }
    if (status.st_uid != systemUserId("qrdadm") || (status.st_mode & 07777) != 0600) {
        throw Refusal(quoteWord(path) + " must be qrdadm's alone");
    }
    return readAll(fd.get());
}

}  // namespace sandbox
