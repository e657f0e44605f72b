#include "restore/location.h"

#include <memory>

#include "report/debug_log.h"
#include "restore/option_table.h"
#include "xml/tool_answers.h"

namespace zelvo {

namespace {

struct Location {
    std::string country;
    std::string state;
    std::string zip;
};

Location askAdminLocation() {
    CliExec cmd = panelCommand("admin");
    cmd << "-xi";
    if (cmd.exec(std::nothrow) != 0) {
        theDebugLog->log(std::string("The location of the administrator is not known"));
        return {};
    }
    const auto answer = getAdminLocation(cmd.stdout);
    return {answer->getCountry(), answer->getState(), answer->getZip()};
}

const Location& adminLocation() {
    static bool asked = false;
    static Location location;
    if (!asked) {
        asked = true;
        location = askAdminLocation();
    }
    return location;
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
