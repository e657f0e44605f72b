// The scripting settings of a site.
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

namespace {

const char* const kScriptingNames[] = {
    "ssi_html", "php",        "php_safe_mode", "php_version", "cgi",  "perl", "asp",
    "python",   "coldfusion", "ruby",          "fastcgi",     "miva", "fp",   "fp_no_index"};

}  // namespace

void tDeployDocAbility::getScriptingOpts(const XmlNode& node, [[maybe_unused]] bool forUpdate,
                                         CmdLine& cmd, NamedValues& list) {
    const auto add = [&cmd, &list](const std::string& name, const std::string& value) {
        list.emplace_back(name, value);
        cmd << "-" + name << value;
    };
    if (node.test("@php_handler_type")) {
        const std::string value = node.str("@php_handler_type");
        add("php_handler_type", value == "isapi" ? "module" : value);
    }
    for (const std::string name : kScriptingNames) {
        if (node.test("@" + name)) {
            add(name, node.str("@" + name));
        }
    }
}

}  // namespace zelvo
