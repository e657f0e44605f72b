#include "restore/deploy_doc_ability.h"

#include <boost/algorithm/string/case_conv.hpp>

#include "lib/base64.h"
#include "report/debug_log.h"
#include "report/error_functions.h"
#include "restore/limit_number.h"
#include "restore/location.h"
#include "restore/option_table.h"
#include "restore/passwd.h"
#include "restore/shells.h"

namespace zelvo {

_xmlDoc* tDeployDocAbility::doc_ = nullptr;
_xmlNode* tDeployDocAbility::xnode_root_ = nullptr;
XmlNode tDeployDocAbility::root(nullptr, nullptr);
std::string tDeployDocAbility::domainTemplate;
bool tDeployDocAbility::notifyUsers = false;
std::shared_ptr<ContentUnpacker> tDeployDocAbility::extractor;
std::string tDeployDocAbility::backupUser;
std::string tDeployDocAbility::backupUserType;
bool tDeployDocAbility::suspend = false;
tDeployProgressReport* tDeployDocAbility::report_ptr_ = nullptr;

namespace {

const char* const kScriptingNames[] = {
    "ssi_html", "php",        "php_safe_mode", "php_version", "cgi",  "perl", "asp",
    "python",   "coldfusion", "ruby",          "fastcgi",     "miva", "fp",   "fp_no_index"};

std::string pinfoText(const XmlNode& pinfo) {
    const std::string text = pinfo.str(".");
    return pinfo.test("@encoded = 'true'") ? base64_decode(text) : text;
}

// An item of contact data: below `preferences`, or where that is missing directly below the node.
std::string contactItem(const XmlNode& node, const std::string& name) {
    const std::string item = "pinfo[@name='" + name + "']";
    for (const std::string& place : {"preferences/" + item, item}) {
        if (node.test(place)) {
            return pinfoText(node.getNode(place));
        }
    }
    return "";
}

std::string cidPath(const std::string& type) { return "content/cid[@type='" + type + "']"; }

}  // namespace

void tDeployDocAbility::getLockScreen(const XmlNode& node, CmdLine& cmd) const {
    if (node.test("@lock-screen = 'false'")) {
        cmd << "-lock-screen"
            << "false";
    }
}

void tDeployDocAbility::getMaxButtonLength(const XmlNode& node, CmdLine& cmd) const {
    appendOptions(node, cmd, {{"-max-button-length", "@max-button-length"}});
}

bool tDeployDocAbility::setLocale(CmdLine& cmd, const XmlNode& node) const {
    for (const char* place : {"preferences/pinfo[@name='locale']", "pinfo[@name='locale']"}) {
        if (!node.test(place)) {
            continue;
        }
        const std::string locale = pinfoText(node.getNode(place));
        if (!locale.empty()) {
            cmd << "-locale" << locale;
            return true;
        }
    }
    return false;
}

bool tDeployDocAbility::setCountry(CmdLine& cmd, const XmlNode& node) const {
    std::string country = contactItem(node, "country");
    std::string state = contactItem(node, "state");
    std::string zip = contactItem(node, "zip");
    if (country.empty()) {
        return false;
    }
    if (incompleteAmerican(country, state, zip)) {
        completeLocation(country, state, zip);
    }
    cmd << "-country" << country;
    if (!zip.empty()) {
        cmd << "-zip" << zip;
    }
    if (!state.empty()) {
        cmd << "-state" << state;
    }
    return true;
}

bool tDeployDocAbility::setPinfo(CmdLine& cmd, const XmlNode& node) const {
    cmd << "-" + node.str("@name") << pinfoText(node);
    return true;
}

bool tDeployDocAbility::setSafePinfo(CmdLine& cmd, const XmlNode& node) const {
    const std::string name = node.str("@name");
    for (const char* other : {"locale", "country", "state", "zip"}) {
        if (name == other) {
            return false;
        }
    }
    return setPinfo(cmd, node);
}

bool tDeployDocAbility::setEmail(CmdLine& cmd, const XmlNode& node,
                                 const std::string& place) const {
    const std::string email = place + "pinfo[@name='email']";
    if (!node.test(email)) {
        return false;
    }
    cmd << "-email" << pinfoText(node.getNode(email));
    return true;
}

std::string tDeployDocAbility::parseStatus(const XmlNode& node) const {
    if (node.test("enabled")) {
        return "enabled";
    }
    std::string words;
    node.foreach (
        "disabled-by/@name",
        [&words](const XmlNode& name) { words += (words.empty() ? "" : ",") + name.str("."); },
        deploy_error_func);
    return words;
}

void tDeployDocAbility::addStatus(CmdLine& cmd, const XmlNode& node) const {
    cmd << "-status" << parseStatus(node);
}

bool tDeployDocAbility::hasCid(const XmlNode& node, const std::string& type) const {
    return node.test(cidPath(type));
}

Cid tDeployDocAbility::getCid(const XmlNode& node, const std::string& type) const {
    return Cid(node.getNode(cidPath(type)));
}

bool tDeployDocAbility::getCid(const XmlNode& node, const std::string& type, Cid& cid) const {
    if (!hasCid(node, type)) {
        return false;
    }
    cid = getCid(node, type);
    return true;
}

void tDeployDocAbility::getPasswordOpts(const XmlNode& node, CmdLine& cmd) const {
    addPasswdToCmdLine(ensureNoEmptyPassword(passwd(node), "sysuser"), cmd);
}

void tDeployDocAbility::getScriptingOpts(const XmlNode& node, [[maybe_unused]] bool forUpdate,
                                         CmdLine& cmd, NamedValues& list) const {
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

void tDeployDocAbility::getSysUserOpts(const XmlNode& node, CmdLine& cmd, bool lowerName,
                                       bool full) const {
    std::string name = node.str("@name");
    if (lowerName && boost::to_lower_copy(name) != name) {
        theDebugLog->log("Converting name " + name + " to lower case");
        boost::to_lower(name);
    }
    cmd << "-login" << name;
    getPasswordOpts(node, cmd);
    if (full && node.test("@quota") && node.str("@quota") != "-1") {
        const std::string what = "Sysuser " + name;
        cmd << "-hard_quota"
            << std::to_string(validateMbLimit(parseLimit(node.str("@quota"), what), what));
    }
    if (node.test("@shell")) {
        cmd << "-shell" << fixShell(node.str("@shell"));
    }
}

void tDeployDocAbility::tryInstallSkin(const XmlNode& node, const std::string& utility,
                                       const std::string& name) const {
    if (!node.test("@skin")) {
        return;
    }
    try {
        CliExec cmd = updateCommand(utility, name);
        cmd << "-skin" << node.str("@skin");
        cmd.exec();
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
    }
}

void addPermission(CmdLine& cmd, const XmlNode& permission) {
    cmd << "-" + permission.str("@name") << (permission.test("@value='false'") ? "false" : "true");
}

}  // namespace zelvo
