#include "lib/idn_url.h"

#include <regex.h>
#include <syslog.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "lib/idn.h"
#include "lib/liblog.h"

namespace {

constexpr int kLogPriority = LOG_USER | LOG_ERR;

enum Group { kWhole, kScheme, kLogin, kHost, kRest, kGroupCount };

// The parts of a URL, as a POSIX extended expression tells them apart.
class UrlExpression {
  public:
    UrlExpression();
    ~UrlExpression() { regfree(&expression_); }
    UrlExpression(const UrlExpression&) = delete;
    UrlExpression& operator=(const UrlExpression&) = delete;

    // Fills the groups; what does not match is logged.
    bool match(const char* url, regmatch_t (&groups)[kGroupCount]) const;

  private:
    // Why a call of the regular expression library failed.
    struct Reason {
        Reason(int code, const regex_t* expression) {
            regerror(code, expression, text, sizeof(text));
        }
        char text[256];
    };

    regex_t expression_{};
};

UrlExpression::UrlExpression() {
    const int code =
        regcomp(&expression_, "^(ftp://|https?://)?([^@]+@)?([^/:]+)(.*)?$", REG_EXTENDED);
    if (code != 0) {
        errno = 0;
        messlog2(1, 0, "regcomp() failed: %s", Reason(code, &expression_).text);
    }
}

bool UrlExpression::match(const char* url, regmatch_t (&groups)[kGroupCount]) const {
    const int code = regexec(&expression_, url, kGroupCount, groups, 0);
    if (code != 0) {
        zelvo_log(kLogPriority, "regexec() failed: %s", Reason(code, &expression_).text);
    }
    return code == 0;
}

bool isPresent(const regmatch_t& group) { return group.rm_so >= 0; }

int lengthOf(const regmatch_t& group) {
    return isPresent(group) ? static_cast<int>(group.rm_eo - group.rm_so) : 0;
}

// Where a group stands; any place will do for one of no length.
const char* startOf(const regmatch_t& group, const char* url) {
    return isPresent(group) ? url + group.rm_so : "";
}

using Text = std::unique_ptr<char, decltype(&free)>;

Text hostToAscii(const char* url, const regmatch_t& host) {
    const std::string name(startOf(host, url), static_cast<std::size_t>(lengthOf(host)));
    Text ascii(idn_toascii(name.c_str()), &free);
    if (ascii == nullptr) {
        zelvo_log(kLogPriority, "idn_toascii() failed: %s", idn_strerror(idn_errno));
    }
    return ascii;
}

}  // namespace

const char* idn_url_toascii(const char* url) {
    static char converted[4096];
    regmatch_t groups[kGroupCount];
    if (!UrlExpression().match(url, groups)) {
        return nullptr;
    }
    if (!isPresent(groups[kHost])) {
        zelvo_log(kLogPriority, "no hostname found in URL");
        return nullptr;
    }
    const Text host = hostToAscii(url, groups[kHost]);
    if (host == nullptr) {
        return nullptr;
    }
    const int length = snprintf(converted, sizeof(converted), "%.*s%.*s%s%.*s",
                                lengthOf(groups[kScheme]), startOf(groups[kScheme], url),
                                lengthOf(groups[kLogin]), startOf(groups[kLogin], url), host.get(),
                                lengthOf(groups[kRest]), startOf(groups[kRest], url));
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof(converted)) {
        zelvo_log(kLogPriority, "URL is too long");
        return nullptr;
    }
    return converted;
}
