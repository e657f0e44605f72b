// The utilities of the server and its administrator, of traffic, and of objects known by their
// guid.
#include <algorithm>

#include "panel/command.h"
#include "panel/objects.h"
#include "words.h"
#include "xml_text.h"

namespace sandbox {

namespace {

// ---- the administrator ---------------------------------------------------

Answer adminDocument(const std::string& country, const std::string& state, const std::string& zip) {
    return {0,
            "<admin><country>" + xmlText(country) + "</country><state>" + xmlText(state) +
                "</state><zip>" + xmlText(zip) + "</zip></admin>\n",
            ""};
}

Answer showAdmin(Model& model, const Request& request) {
    const Object admin = requestedObject(model, request);
    const auto value = [&](const char* name) {
        return model.option(admin, "admin", name).value_or("");
    };
    return adminDocument(value("country"), value("state"), value("zip"));
}

Answer showSomeAdmin() { return adminDocument("US", "NY", "10001"); }

// ---- configuration -------------------------------------------------------

constexpr char kConfigured[] = "configured";

void setConfigured(Model& model, const Request& request, const char* value) {
    model.setOption(requestedObject(model, request), {"init_conf", kConfigured, value});
}

// A panel is configured unless it was told to forget that.
Answer checkConfigured(Model& model, const Request& request) {
    const auto value = model.option(requestedObject(model, request), "init_conf", kConfigured);
    return {value.value_or("true") == "true" ? 0 : 1, "", ""};
}

Answer configure(Model& model, const Request& request) {
    if (request.command.word == "--update" && request.option("hostname") &&
        checkConfigured(model, request).status == 0) {
        throw Refusal("a configured panel keeps its host name");
    }
    updateObject(model, request);
    setConfigured(model, request, "true");
    return {};
}

Answer forgetConfiguration(Model& model, const Request& request) {
    setConfigured(model, request, "false");
    return {};
}

// ---- traffic -------------------------------------------------------------

Answer addTraffic(Model& model, const Object& object, std::string_view rows) {
    while (!rows.empty()) {
        const std::string_view row = rows.substr(0, rows.find('\n'));
        rows.remove_prefix(std::min(row.size() + 1, rows.size()));
        if (row.find_first_not_of(" \t\r") != std::string_view::npos) {
            model.addTrafficRow(object, row);
        }
    }
    return {};
}

Answer addDomainTraffic(Model& model, const Request& request) {
    return addTraffic(model, requestedObject(model, request), request.call.input);
}

Answer addUserTraffic(Model& model, const Request& request) {
    return addTraffic(model, existingAccount(model, request.name), request.call.input);
}

// ---- objects by guid -----------------------------------------------------

std::string property(Model& model, const Object& object, const std::string& name) {
    if (name == "name") {
        return object.name;
    }
    if (name == "guid") {
        return object.guid;
    }
    if (name == "type") {
        return object.kind;
    }
    if (name == "owner") {
        return model.at(object.parent).name;
    }
    throw Refusal("unknown property " + quoteWord(name));
}

Answer getInfo(Model& model, const Request& request) {
    const std::string* guid = request.option("guid");
    const std::string* name = request.option("property-names");
    if (guid == nullptr || name == nullptr) {
        throw Refusal("-guid and -property-names are needed");
    }
    const auto object = model.findGuid(*guid);
    if (!object) {
        throw Refusal("there is no object with guid " + quoteWord(*guid));
    }
    return {0, *name + "=" + property(model, *object, *name) + "\n", ""};
}

// Every guid is that of the administrator's own objects.
Answer getAdminInfo() { return {0, "name=admin\n", ""}; }

constexpr Command kRows[] = {
    {"admin", "--update", Shape::kOptions, "admin", kAdmin, updateObject},
    {"admin", "-u", Shape::kOptions, "admin", kAdmin, updateObject},
    {"admin", "-xi", Shape::kOptions, "admin", kAdmin, showAdmin, showSomeAdmin},
    {"init_conf", "--check-configured", Shape::kOptions, "admin", kAdmin, checkConfigured},
    {"init_conf", "--init", Shape::kOptions, "admin", kAdmin, configure},
    {"init_conf", "--update", Shape::kOptions, "admin", kAdmin, configure},
    {"init_conf", "--forget", Shape::kOptions, "admin", kAdmin, forgetConfiguration},
    {"traffic", "--add-batch", Shape::kName, "domain", kOwner, addDomainTraffic},
    {"traffic", "--add-batch-user", Shape::kName, "", kOwner, addUserTraffic},
    {"objectInfo", "--getinfo", Shape::kOptions, "", kServer, getInfo, getAdminInfo},
    {"websrvmng", "--reconfigure-all", Shape::kOptions, "", kServer, succeed},
    {"correct_aw_statistics.pl", "", Shape::kBare, "", kServer, succeed},
};

}  // namespace

Commands serverCommands() { return rowsOf(kRows); }

}  // namespace sandbox
