#include "restore/domain/start_pages.h"

#include "content/content_errors.h"
#include "content/unsafe_name.h"
#include "exec/log_exec_cmd.h"

namespace zelvo {

void removeStartPages(const std::string& directory) {
    if (!directory.starts_with('/')) {
        throw EXC(UnsafeName) % directory % "the directory of a site" % "it is not absolute";
    }
    requireDescent(directory.substr(1), "the directory of a site");
    tLogExecCmd cmd("/usr/bin/find");
    cmd << directory + "/httpdocs" << directory + "/httpsdocs";
    for (const char* word :
         {"-maxdepth", "1", "-type", "f", "-name", "index.htm*", "-exec", "rm", "{}", ";"}) {
        cmd << word;
    }
    cmd.exec();
}

}  // namespace zelvo
