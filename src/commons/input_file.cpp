#include "commons/input_file.h"

#include <sys/stat.h>

namespace zelvo {

bool check_input_file(const std::string& name, bool /*flag*/) {
    struct stat status = {};
    return !name.empty() && stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace zelvo
