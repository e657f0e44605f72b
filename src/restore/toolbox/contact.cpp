// Contact data: the `pinfo` elements of accounts and of domain administrators.
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/encoded_text.h"
#include "restore/toolbox/location.h"
#include "restore/toolbox/option_name.h"

namespace zelvo {

namespace {

// An item of contact data: below `preferences`, or where that is missing directly below the node.
std::string contactItem(const XmlNode& node, const std::string& name) {
    const std::string item = "pinfo[@name='" + name + "']";
    for (const std::string& place : {"preferences/" + item, item}) {
        if (node.test(place)) {
            return encodedText(node.getNode(place));
        }
    }
    return "";
}

}  // namespace

bool tDeployDocAbility::setLocale(CmdLine& cmd, const XmlNode& node) {
    for (const char* place : {"preferences/pinfo[@name='locale']", "pinfo[@name='locale']"}) {
        if (!node.test(place)) {
            continue;
        }
        const std::string locale = encodedText(node.getNode(place));
        if (!locale.empty()) {
            cmd << "-locale" << locale;
            return true;
        }
    }
    return false;
}

bool tDeployDocAbility::setCountry(CmdLine& cmd, const XmlNode& node) {
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

bool tDeployDocAbility::setPinfo(CmdLine& cmd, const XmlNode& node) {
    const std::string value = encodedText(node);
    cmd << "-" + node.str("@name") << value;
    return true;
}

bool tDeployDocAbility::setSafePinfo(CmdLine& cmd, const XmlNode& node) {
    const std::string name = node.str("@name");
    for (const char* other : {"locale", "country", "state", "zip"}) {
        if (name == other) {
            return false;
        }
    }
    requireAccountOption(name, "contact data");
    return setPinfo(cmd, node);
}

}  // namespace zelvo
