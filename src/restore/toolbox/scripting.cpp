#include "restore/toolbox/scripting.h"

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

namespace {

using NamedValues = tDeployDocAbility::NamedValues;

const char* const kScriptingNames[] = {
    "ssi_html", "php",        "php_safe_mode", "php_version", "cgi",  "perl", "asp",
    "python",   "coldfusion", "ruby",          "fastcgi",     "miva", "fp",   "fp_no_index"};

NamedValues scriptingSettings(const XmlNode& node) {
    NamedValues settings;
    if (!node.str("@php_handler_type").empty()) {
        const std::string value = node.str("@php_handler_type");
        settings.emplace_back("php_handler_type", value == "isapi" ? "module" : value);
    }
    for (const std::string name : kScriptingNames) {
        if (node.test("@" + name)) {
            settings.emplace_back(name, node.str("@" + name));
        }
    }
    return settings;
}

void appendSetting(CmdLine& cmd, const NamedValues::value_type& setting) {
    cmd << "-" + setting.first << setting.second;
}

}  // namespace

void tDeployDocAbility::getScriptingOpts(const XmlNode& node, [[maybe_unused]] bool forUpdate,
                                         CmdLine& cmd, NamedValues& list) {
    for (const auto& setting : scriptingSettings(node)) {
        list.push_back(setting);
        appendSetting(cmd, setting);
    }
}

void updateScripting(const CliExec& head, const XmlNode& scripting, const OptionGroup& more) {
    const NamedValues settings = scriptingSettings(scripting);
    CommandInParts command(head);
    for (const auto& setting : settings) {
        command.add(PartCost::kNothing, [&](CmdLine& cmd) { appendSetting(cmd, setting); });
    }
    command.exec([&](CmdLine& cmd) {
        for (const auto& setting : settings) {
            appendSetting(cmd, setting);
        }
        if (more) {
            more(cmd);
        }
    });
}

}  // namespace zelvo
