// Shows a person what the panel of a sandbox now holds.

#include <cstdio>
#include <map>
#include <stdexcept>
#include <string_view>

#include "files.h"
#include "panel/model.h"
#include "panel/system_objects.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

void line(int depth, const std::string& text) {
    std::printf("%*s%s\n", depth * 2, "", text.c_str());
}

bool isContact(const std::string& option) {
    return option == "name" || option == "pname" || option == "email";
}

// A list with the changes that were made to it.
bool isChanges(const Option& option) {
    return option.value.find(':') != std::string::npos &&
           (option.name == "aliases" || option.name == "groupmem" || option.name == "blacklist" ||
            option.name == "whitelist");
}

bool isMembers(const Option& option) {
    return option.tool == "maillist" && option.name == "members";
}

// What is shown as it is, and not counted.
bool isTable(const Option& option) {
    return option.tool == "crontabmng" || option.tool == "webstat" || isChanges(option) ||
           option.name == "attached" || option.name == "access" ||
           (option.name == "record" && (option.tool == "dns" || option.tool == "server_dns"));
}

bool isFile(const Option& option) {
    return option.tool == "certificate" && option.name.ends_with("-file");
}

// What tells of the object itself, with ", " between: "name 'Bob B.', status enabled".
std::string facts(const Object& object, const std::vector<Option>& options) {
    std::string text;
    const auto add = [&](const std::string& fact) { text += (text.empty() ? "" : ", ") + fact; };
    for (const Option& option : options) {
        if (isContact(option.name) || (option.name == "status" && option.tool == object.kind)) {
            add(option.name + " " + quoteWord(option.value));
        }
        if (option.name == "passwd") {
            add("password " + option.value);
        }
        if (option.name == "suspended" && option.value == "true") {
            add("SUSPENDED");
        }
        if (isFile(option)) {
            add(option.name + " " + option.value);
        }
        if (option.tool == "arch") {
            add(option.name + " " + option.value);
        }
        if (option.tool == kSystem && option.name != "uid" && option.name != "password") {
            add(option.name + " " + quoteWord(option.value));
        }
    }
    return text;
}

// How many options each utility set: "options: client 9, ip_pool 1".
std::string optionCounts(const std::vector<Option>& options) {
    std::map<std::string, int> counts;
    for (const Option& option : options) {
        if (option.tool != kSystem && option.tool != "arch" && !isTable(option) &&
            !isMembers(option) && !isFile(option)) {
            ++counts[option.tool];
        }
    }
    std::string text;
    for (const auto& [tool, count] : counts) {
        text += (text.empty() ? "options: " : ", ") + tool + " " + std::to_string(count);
    }
    return text;
}

// How many members all changes of a list together gave it: "members 200".
std::string memberCount(const std::vector<Option>& options) {
    std::size_t count = 0;
    for (const Option& option : options) {
        count += isMembers(option) ? splitText(option.value, ',').size() : 0;
    }
    return count > 0 ? "members " + std::to_string(count) : "";
}

// "client bob: name 'Bob B.', status enabled; options: client 9; guid 1"
std::string describe(Model& model, const Object& object) {
    const std::vector<Option> options = model.options(object);
    const long rows = model.countTrafficRows(object);
    std::string text = object.kind + " " + quoteWord(object.name);
    const char* separator = ": ";
    for (const std::string& part :
         {facts(object, options), memberCount(options), optionCounts(options),
          rows > 0 ? "traffic rows: " + std::to_string(rows) : "",
          object.guid.empty() ? "" : "guid " + object.guid}) {
        if (!part.empty()) {
            text += separator + part;
            separator = "; ";
        }
    }
    return text;
}

std::string_view withoutNewline(std::string_view text) {
    text.remove_suffix(text.ends_with('\n') ? 1 : 0);
    return text;
}

std::string describeIp(Model& model, const Object& ip) {
    const auto type = model.option(ip, "ipmanage", "type");
    const auto domain = model.option(ip, "ipmanage", "default-domain");
    return "ip " + ip.name + ": " + type.value_or("shared") +
           (domain ? ", default domain " + *domain : "");
}

// Zones, filters and cron tables, each of their lines as one.
void showTables(Model& model, const Object& object, int depth) {
    for (const Option& option : model.options(object)) {
        if (isTable(option)) {
            for (const std::string_view text : splitText(withoutNewline(option.value), '\n')) {
                line(depth, option.tool + " " + option.name + ": " + std::string(text));
            }
        }
    }
}

void showBelow(Model& model, const Object& parent, int depth) {
    for (const Object& object : model.children(parent)) {
        if (object.id == Model::kAdmin) {
            line(depth, object.name);
        } else {
            line(depth, object.kind == "ip" ? describeIp(model, object) : describe(model, object));
        }
        showTables(model, object, depth + 1);
        showBelow(model, object, depth + 1);
    }
}

void show(const std::string& state) {
    const std::string path = state + "/" + kModelFile;
    if (!fileExists(path)) {
        throw std::runtime_error("there is no panel in " + state);
    }
    Model model(path);
    const Object server = model.at(Model::kServer);
    showTables(model, server, 0);
    showBelow(model, server, 0);
}

}  // namespace

}  // namespace sandbox

int main(int argc, char** argv) {
    try {
        sandbox::show(argc > 1 ? argv[1] : sandbox::kStateDir);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "panel-show: %s\n", e.what());
        return 1;
    }
}
