#include "restore/objects/dns_soa.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "restore/toolbox/whole_number.h"

namespace zelvo {

namespace {

struct Unit {
    std::string_view name;
    std::int64_t seconds;
    char letter;
};

constexpr Unit kUnits[] = {{"second", 1, 's'},
                           {"minutes", 60, 'm'},
                           {"hours", 3600, 'h'},
                           {"days", 86400, 'd'},
                           {"weeks", 604800, 'w'}};

constexpr const char* kParameters[] = {"ttl", "refresh", "retry", "expire", "minimum"};

// As zone files have it, such as "3h"; the remainder is lost.
std::string inUnit(std::int64_t seconds, const std::string& name) {
    for (const Unit& unit : kUnits) {
        if (name == unit.name) {
            return std::to_string(seconds / unit.seconds) + unit.letter;
        }
    }
    return "";
}

}  // namespace

void DnsSOAPrefsDeployer::act(_xmlNode* node) const {
    const XmlNode parameter(doc_, node);
    const std::string name = parameter.str("@name");
    const std::int64_t seconds =
        wholeNumber(parameter.str("@value"), "zone parameter '" + name + "'");
    for (const char* known : kParameters) {
        if (name == known) {
            cmd_ << "-soa-" + name << inUnit(seconds, parameter.str("@unit"));
        }
    }
}

}  // namespace zelvo
