#include "restore/toolbox/option_name.h"

#include <algorithm>

#include "content/content_errors.h"

namespace zelvo {

namespace {

const std::string kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
const std::string kFollowing = kLetters + "0123456789-_";

bool isPlainWord(const std::string& name) {
    return !name.empty() && kLetters.find(name.front()) != std::string::npos &&
           name.find_first_not_of(kFollowing) == std::string::npos;
}

}  // namespace

const std::string& requireOptionName(const std::string& name, const std::string& what,
                                     std::initializer_list<const char*> taken) {
    if (!isPlainWord(name)) {
        throw EXC(UnsafeName) % name % what % "it is no plain word";
    }
    if (std::find(taken.begin(), taken.end(), name) != taken.end()) {
        throw EXC(UnsafeName) % name % what % "it is an option of another meaning";
    }
    return name;
}

const std::string& requireAccountOption(const std::string& name, const std::string& what) {
    return requireOptionName(name, what,
                             {"passwd", "login", "owner", "email", "uid", "guid", "ownership",
                              "status", "creation-date", "notify", "force"});
}

}  // namespace zelvo
