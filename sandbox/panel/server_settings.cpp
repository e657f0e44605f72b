// The utilities that set what belongs to the panel as a whole: its preferences, its pages, mail,
// names, filters and single sign-on.
#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "panel/command.h"
#include "panel/given_file.h"
#include "panel/objects.h"
#include "words.h"

namespace sandbox {

namespace {

// An option and its values, separated by blanks: any if there are none, "#" for a whole number, ","
// for a list.
struct Allowed {
    std::string_view option;
    std::string_view values = {};
};

constexpr std::string_view kBoolean = "true false";
constexpr std::string_view kNumber = "#";
constexpr std::string_view kList = ",";

bool isNumber(std::string_view text) {
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isList(const std::string& text) {
    const auto items = splitText(text, ',');
    return std::find(items.begin(), items.end(), "") == items.end();
}

bool isOneOf(std::string_view values, const std::string& value) {
    if (values == kList) {
        return isList(value);
    }
    return values.empty() || (values == kNumber ? isNumber(value) : holdsWord(values, value));
}

// An empty table is for a command that takes none.
void checkOptions(const Request& request, std::span<const Allowed> table) {
    if (request.options.empty() && !table.empty()) {
        throw Refusal(std::string(request.command.word) + " needs an option");
    }
    for (const auto& [name, value] : request.options) {
        const auto* row =
            std::find_if(table.data(), table.data() + table.size(),
                         [&option = name](const Allowed& one) { return one.option == option; });
        if (row == table.data() + table.size()) {
            throw Refusal("unknown option -" + name);
        }
        if (!isOneOf(row->values, value)) {
            throw Refusal("-" + name + " cannot be " + quoteWord(value));
        }
    }
}

Answer keepOptions(Model& model, const Request& request, std::span<const Allowed> table) {
    checkOptions(request, table);
    storeOptions(model, theServer(model, request), request);
    return {};
}

// ---- preferences ---------------------------------------------------------

constexpr Allowed kPreferences[] = {{"force-db-prefix", kBoolean},
                                    {"allow-siteapp-local-db", kBoolean},
                                    {"force-db-user-prefix", kBoolean},
                                    {"forbid-create-dns-subzone", kBoolean},
                                    {"db-user-length", kNumber},
                                    {"max-backup-processes", kNumber},
                                    {"low-priority", kBoolean},
                                    {"do-not-compress", kBoolean},
                                    {"hide-top-advertisement"},
                                    {"traffic-direction"},
                                    {"restart-apache", kNumber},
                                    {"stat-keep", kNumber},
                                    {"count-type"},
                                    {"ucp-catalog-url"},
                                    {"include-logs", kBoolean},
                                    {"include-databases", kBoolean},
                                    {"include-mailboxes", kBoolean},
                                    {"include-webapps", kBoolean},
                                    {"include-maillists", kBoolean},
                                    {"include-domaindumps", kBoolean}};

// A parameter of the site wizard, or preferences.
Answer updatePreferences(Model& model, const Request& request) {
    if (const std::string* name = request.option("wz-param-name")) {
        model.setOption(theServer(model, request),
                        {"server_pref", "wz " + *name, request.neededOption("wz-param-value")});
        return {};
    }
    return keepOptions(model, request, kPreferences);
}

constexpr Allowed kPages[] = {
    {"hide_disabled", kBoolean},       {"hide_unavailable_limits", kBoolean},
    {"domain_registration", kBoolean}, {"hide_unavailable_permissions", kBoolean},
    {"cert_purchasing", kBoolean},     {"extras", kBoolean},
    {"mail_bounce", kBoolean},         {"newsfeeds", kBoolean},
    {"promo_krexa", kBoolean}};

Answer updatePages(Model& model, const Request& request) {
    return keepOptions(model, request, kPages);
}

// ---- mail ----------------------------------------------------------------

constexpr Allowed kMailWords[] = {
    {"--set-relay"},
    {"--set-max-letter-size", kNumber},
    {"--set-maps-status", kBoolean},
    {"--set-account-type"},
    {"--use-vocabulary", kBoolean},
    {"--set-message-submission", kBoolean},
    {"--sign-outgoing-mail", kBoolean},
    {"--verify-incoming-mail", kBoolean},
    {"--set-maps-zone"},
    {"--set-virusfilter"},
};
constexpr Allowed kRelay[] = {{"auth-type", "pop3 smtp both"}, {"lock-time", kNumber}};
constexpr Allowed kSpf[] = {
    {"spf-status", kBoolean}, {"spf-behavior", kNumber}, {"spf-rules"}, {"spf-guess"}, {"spf-exp"}};

// "WORD VALUE", kept under the word.
Answer setMail(Model& model, const Request& request) {
    const std::string_view word = request.command.word;
    const auto* row = std::find_if(std::begin(kMailWords), std::end(kMailWords),
                                   [&](const Allowed& one) { return one.option == word; });
    if (!isOneOf(row->values, request.name)) {
        throw Refusal(std::string(word) + " cannot be " + quoteWord(request.name));
    }
    if (!request.options.empty()) {
        checkOptions(request,
                     word == "--set-relay" ? std::span(kRelay) : std::span<const Allowed>());
    }
    const Object server = theServer(model, request);
    model.setOption(server, {"mailserver", std::string(word.substr(2)), request.name});
    storeOptions(model, server, request);
    return {};
}

Answer addToMailList(Model& model, const Request& request) {
    checkOptions(request, {});
    if (!isList(request.name)) {
        throw Refusal("an empty item in " + quoteWord(request.name));
    }
    for (const std::string_view item : splitText(request.name, ',')) {
        model.addOption(
            theServer(model, request),
            {"mailserver", std::string(request.command.word.substr(2)), std::string(item)});
    }
    return {};
}

Answer updateSpf(Model& model, const Request& request) { return keepOptions(model, request, kSpf); }

// ---- names ---------------------------------------------------------------

constexpr Allowed kNames[] = {{"recursion"}, {"status", "enabled disabled"}, {"add-acl", kList}};
constexpr Allowed kSoa[] = {{"soa-serial-format", "YYYYMMDDNN timestamp"}};

Answer updateNames(Model& model, const Request& request) {
    return keepOptions(model, request, kNames);
}

Answer updateZoneDefaults(Model& model, const Request& request) {
    return keepOptions(model, request, kSoa);
}

// ---- filters -------------------------------------------------------------

constexpr Allowed kGreyListing[] = {{"grey-interval", kNumber},   {"expire-interval", kNumber},
                                    {"penalty-status", kBoolean}, {"penalty-interval", kNumber},
                                    {"status", "on off"},         {"personal-conf", kBoolean},
                                    {"domains-whitelist"}};
constexpr Allowed kSpamFilter[] = {{"status"},
                                   {"hits"},
                                   {"reject-spam", kBoolean},
                                   {"modify-subj-text"},
                                   {"blacklist", kList},
                                   {"whitelist", kList}};

Answer showGreyListing(Model&, const Request& request) {
    checkOptions(request, {});
    return {};
}

Answer updateGreyListing(Model& model, const Request& request) {
    checkChanges(request, "domains-whitelist", "add del");
    return keepOptions(model, request, kGreyListing);
}

Answer updateSpamFilter(Model& model, const Request& request) {
    return keepOptions(model, request, kSpamFilter);
}

// ---- single sign-on ------------------------------------------------------

constexpr Allowed kSso[] = {{"server"},
                            {"relay"},
                            {"application-id"},
                            {"admin-uid"},
                            {"admin-ownership", kBoolean},
                            {"certificate"},
                            {"enabled", kBoolean},
                            {"idp-certificate"},
                            {"idp-api-version"},
                            {"idp-id"}};

Answer writeSso(Model& model, const Request& request) {
    keepOptions(model, request, kSso);
    for (const char* name : {"certificate", "idp-certificate"}) {
        if (const std::string* path = request.option(name)) {
            model.setOption(theServer(model, request),
                            {"sso", name, std::to_string(readSecret(*path).size()) + " bytes"});
        }
    }
    return {};
}

// A panel is known to the service once it was told the server and its own certificate.
Answer checkSso(Model& model, const Request& request) {
    checkOptions(request, {});
    const Object server = theServer(model, request);
    const bool isKnown =
        model.option(server, "sso", "server") && model.option(server, "sso", "certificate");
    return {isKnown ? 0 : 1, "", ""};
}

constexpr Allowed kBranding[] = {{"domain"}, {"url"}};

Answer brandIdp(Model& model, const Request& request) {
    checkOptions(request, kBranding);
    const std::string& domain = request.neededOption("domain");
    const std::string& url = request.neededOption("url");
    if (domain.empty() || url.empty()) {
        throw Refusal("a domain and an address are needed");
    }
    model.setOption(theServer(model, request), {"sso", "idp of " + domain, url});
    return {};
}

constexpr Command kRows[] = {
    {"server_pref", "--update", Shape::kOptions, "", kServer, updatePreferences},
    {"interface_template", "--preferences", Shape::kOptions, "", kServer, updatePages},
    {"mailserver", "--set-relay", Shape::kName, "", kServer, setMail},
    {"mailserver", "--set-max-letter-size", Shape::kName, "", kServer, setMail},
    {"mailserver", "--set-maps-status", Shape::kName, "", kServer, setMail},
    {"mailserver", "--set-account-type", Shape::kName, "", kServer, setMail},
    {"mailserver", "--use-vocabulary", Shape::kName, "", kServer, setMail},
    {"mailserver", "--update-spf", Shape::kOptions, "", kServer, updateSpf},
    {"mailserver", "--add-to-black-list", Shape::kName, "", kServer, addToMailList},
    {"mailserver", "--add-to-white-list", Shape::kName, "", kServer, addToMailList},
    {"mailserver", "--set-message-submission", Shape::kName, "", kServer, setMail},
    {"mailserver", "--sign-outgoing-mail", Shape::kName, "", kServer, setMail},
    {"mailserver", "--verify-incoming-mail", Shape::kName, "", kServer, setMail},
    {"mailserver", "--set-maps-zone", Shape::kName, "", kServer, setMail},
    {"mailserver", "--set-virusfilter", Shape::kName, "", kServer, setMail},
    {"server_dns",
     "--update-server",
     Shape::kOptions,
     "",
     kServer,
     updateNames,
     nullptr,
     {},
     "add-acl"},
    {"dns-zone-param", "--update-soa", Shape::kOptions, "", kServer, updateZoneDefaults},
    {"grey_listing", "--info-server", Shape::kOptions, "", kServer, showGreyListing},
    {"grey_listing",
     "--update-server",
     Shape::kOptions,
     "",
     kServer,
     updateGreyListing,
     nullptr,
     {},
     "domains-whitelist"},
    {"spamassassin", "--update-server", Shape::kOptions, "", kServer, updateSpamFilter},
    {"sso", "--check-valid-info", Shape::kOptions, "", kServer, checkSso},
    {"sso", "--write-settings", Shape::kOptions, "", kServer, writeSso},
    {"sso", "--set-branded-idp", Shape::kOptions, "", kServer, brandIdp},
};

}  // namespace

Commands serverSettingsCommands() { return rowsOf(kRows); }

}  // namespace sandbox
