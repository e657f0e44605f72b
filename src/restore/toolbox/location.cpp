#include "restore/toolbox/location.h"

#include <optional>

#include "report/guard.h"
#include "restore/toolbox/panel_command.h"
#include "xml/tool_answers.h"

namespace zelvo {

namespace {

struct Location {
    std::string country;
    std::string state;
    std::string zip;
};

Location askAdminLocation() {
    CliExec cmd = panelCommand("admin", {"-xi"});
    execOrReport(cmd);
    const auto answer = getAdminLocation(cmd.stdout);
    return {answer->getCountry(), answer->getState(), answer->getZip()};
}

// Asked for once: also an administrator of whom nothing can be learnt is told of once.
const Location& adminLocation() {
    static std::optional<Location> location;
    if (!location) {
        location.emplace();
        guarded([] { location = askAdminLocation(); });
    }
    return *location;
}

void fill(std::string& item, const std::string& value, bool& taken) {
    if (item.empty() && !value.empty()) {
        item = value;
        taken = true;
    }
}

}  // namespace

bool american(const std::string& country) { return country == "US" || country == "CA"; }

bool incompleteAmerican(const std::string& country, const std::string& state,
                        const std::string& zip) {
    return american(country) && (state.empty() || zip.empty());
}

void completeLocation(std::string& country, std::string& state, std::string& zip) {
    const Location& admin = adminLocation();
    if (!american(admin.country)) {
        return;
    }
    bool taken = false;
    fill(state, admin.state, taken);
    fill(zip, admin.zip, taken);
    if (taken) {
        country = admin.country;
    }
}

}  // namespace zelvo
