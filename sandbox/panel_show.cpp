// Shows a person what the panel of a sandbox now holds.

#include "files.h"
#include "model.h"
#include "paths.h"
#include "words.h"

#include <cstdio>
#include <map>
#include <stdexcept>

namespace {

using namespace sandbox;

void line(int depth, const std::string& text) {
    std::printf("%*s%s\n", depth * 2, "", text.c_str());
}

bool isContact(const std::string& option) {
    return option == "name" || option == "pname" || option == "email";
}

// "status enabled, name 'Bob B.', password plain; options: client 9, ip_pool 1"
std::string describe(Model& model, const Object& object) {
    std::string facts;
    std::map<std::string, int> counts;
    std::string status = "enabled";
    for (const Option& option : model.options(object)) {
        ++counts[option.tool];
        if (option.name == "status" && option.tool == object.kind) status = option.value;
        if (isContact(option.name)) facts += ", " + option.name + " " + quoteWord(option.value);
        if (option.name == "passwd") facts += ", password " + option.value;
        if (option.name == "suspended" && option.value == "true") facts += ", SUSPENDED";
    }
    std::string text = "status " + quoteWord(status) + facts;
    const char* separator = "; options: ";
    for (const auto& [tool, count] : counts) {
        text += separator + tool + " " + std::to_string(count);
        separator = ", ";
    }
    if (const long rows = model.countTrafficRows(object)) {
        text += "; traffic rows: " + std::to_string(rows);
    }
    if (!object.guid.empty()) text += "; guid " + object.guid;
    return text;
}

void showBelow(Model& model, const std::string& owner, int depth) {
    for (const Object& object : model.ownedBy(owner)) {
        line(depth, object.kind + " " + quoteWord(object.name) + ": " + describe(model, object));
        if (object.kind == "client" || object.kind == "reseller") {
            showBelow(model, object.name, depth + 1);
        }
    }
}

void showIps(Model& model) {
    for (const Object& ip : model.all("ip")) {
        const auto type = model.option("ip", ip.name, "ipmanage", "type");
        const auto domain = model.option("ip", ip.name, "ipmanage", "default-domain");
        line(0, "ip " + ip.name + ": " + type.value_or("shared") +
                    (domain ? ", default domain " + *domain : ""));
    }
}

void show(const std::string& state) {
    const std::string path = state + "/" + kModelFile;
    if (!fileExists(path)) throw std::runtime_error("there is no panel in " + state);
    Model model(path);
    line(0, "admin");
    showBelow(model, "admin", 1);
    showIps(model);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        show(argc > 1 ? argv[1] : kStateDir);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "panel-show: %s\n", e.what());
        return 1;
    }
}
