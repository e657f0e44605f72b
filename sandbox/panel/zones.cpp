// The utilities of DNS zones: that of a domain or an alias, and the one that new domains get.
#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "panel/command.h"
#include "panel/objects.h"
#include "words.h"

namespace sandbox {

namespace {

// ---- records -------------------------------------------------------------

using Texts = std::vector<std::string_view>;

// What may stand in a field of a record. The zone for new domains has place holders, as "<ip>".
enum class Field {
    kSubdomain,  // labels without the domain; empty for the domain itself
    kName,       // a whole name
    kOwnName,    // a whole name in the zone
    kAddress,
    kNumber,  // or nothing
    kText,
    kNone,
};

struct RecordType {
    std::string_view name;
    std::array<Field, 3> fields;

    std::size_t count() const {
        return static_cast<std::size_t>(std::count_if(
            fields.begin(), fields.end(), [](Field field) { return field != Field::kNone; }));
    }
};

constexpr RecordType kTypes[] = {
    {"A", {Field::kSubdomain, Field::kAddress, Field::kNone}},
    {"NS", {Field::kSubdomain, Field::kName, Field::kNone}},
    {"CNAME", {Field::kSubdomain, Field::kName, Field::kNone}},
    {"TXT", {Field::kSubdomain, Field::kText, Field::kNone}},
    {"MX", {Field::kSubdomain, Field::kName, Field::kNumber}},
    {"PTR", {Field::kAddress, Field::kSubdomain, Field::kNumber}},
    {"SRV", {Field::kOwnName, Field::kName, Field::kText}},
    {"master", {Field::kAddress, Field::kNone, Field::kNone}},
};

bool isLabel(std::string_view label) {
    constexpr std::size_t kLongest = 63;
    return !label.empty() && label.size() <= kLongest && label.front() != '-' &&
           std::all_of(label.begin(), label.end(), [](unsigned char c) {
               return c > ' ' && c != 127 &&
                      std::string_view("/\\:@<>'\"").find(char(c)) == std::string_view::npos;
           });
}

bool areLabels(std::string_view name) {
    const Texts labels = splitText(name, '.');
    return std::all_of(labels.begin(), labels.end(), isLabel);
}

std::string_view withoutLastDot(std::string_view name) {
    if (name.ends_with('.')) {
        name.remove_suffix(1);
    }
    return name;
}

bool isPlaceHolder(std::string_view text) { return text.starts_with('<') && text.ends_with('>'); }

bool isAddress(std::string_view text) {
    const std::string whole(text);
    in6_addr address{};
    return inet_pton(AF_INET, whole.c_str(), &address) == 1 ||
           inet_pton(AF_INET6, whole.c_str(), &address) == 1;
}

bool isIn(std::string_view name, const std::string& zone) {
    const std::string_view whole = withoutLastDot(name);
    return whole == zone || whole.ends_with("." + zone);
}

bool fits(std::string_view text, Field field, const std::string& zone) {
    const bool isTemplate = isPlaceHolder(zone);
    switch (field) {
        case Field::kSubdomain:
            return text.empty() || areLabels(text);
        case Field::kName:
            return isTemplate ? !text.empty() : areLabels(withoutLastDot(text));
        case Field::kOwnName:
            return isIn(text, zone);
        case Field::kAddress:
            return isAddress(text) || (isTemplate && isPlaceHolder(text));
        case Field::kNumber:
            return text.find_first_not_of("0123456789") == std::string::npos;
        case Field::kText:
        case Field::kNone:
            break;
    }
    return true;
}

bool isRecord(const Texts& parts, const std::string& zone) {
    const auto* type = std::find_if(std::begin(kTypes), std::end(kTypes),
                                    [&](const auto& one) { return one.name == parts.front(); });
    if (type == std::end(kTypes) || parts.size() != type->count() + 1) {
        return false;
    }
    return std::equal(parts.begin() + 1, parts.end(), type->fields.begin(),
                      [&](auto text, Field field) { return fits(text, field, zone); });
}

// "A,www,192.0.2.1;MX,,mail.example.com.,10;": an entry may be empty.
std::vector<std::string> recordsIn(const std::string& list, const std::string& zone) {
    std::vector<std::string> records;
    for (const std::string_view entry : splitText(list, ';')) {
        if (entry.empty()) {
            continue;
        }
        if (!isRecord(splitText(entry, ','), zone)) {
            throw Refusal("no record for " + quoteWord(zone) + ": " + quoteWord(entry));
        }
        records.emplace_back(entry);
    }
    return records;
}

// ---- zones ---------------------------------------------------------------

// An alias has a zone of its own.
Object zoneHolder(Model& model, const Request& request) {
    if (const auto alias = model.find("domalias", request.name)) {
        return *alias;
    }
    return existing(model, "domain", request.name);
}

Answer setRecords(Model& model, const Request& request) {
    const Object holder = zoneHolder(model, request);
    model.setList(holder, "dns", "record", recordsIn(request.neededOption("list"), holder.name));
    return {};
}

Answer switchOff(Model& model, const Request& request) {
    model.setOption(zoneHolder(model, request), {"dns", "zone", "off"});
    return {};
}

Answer makeSlave(Model& model, const Request& request) {
    model.setOption(zoneHolder(model, request), {"dns", "type", "slave"});
    return {};
}

Answer updateSoa(Model& model, const Request& request) {
    storeOptions(model, zoneHolder(model, request), request);
    return {};
}

Answer setTemplate(Model& model, const Request& request) {
    model.setList(model.at(Model::kServer), "server_dns", "record",
                  recordsIn(request.name, "<domain>"));
    return {};
}

constexpr Command kRows[] = {
    {"dns", "--off", Shape::kName, "", kServer, switchOff},
    {"dns", "--set-slave", Shape::kName, "", kServer, makeSlave},
    {"dns", "--set", Shape::kName, "", kServer, setRecords},
    {"dns", "--update-soa", Shape::kName, "", kServer, updateSoa},
    {"server_dns", "--set", Shape::kName, "", kServer, setTemplate},
};

}  // namespace

Commands zoneCommands() { return rowsOf(kRows); }

}  // namespace sandbox
