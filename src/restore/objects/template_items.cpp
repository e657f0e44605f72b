#include "restore/objects/template_items.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>

#include "commons/errors.h"
#include "report/error_functions.h"
#include "report/object_logger.h"
#include "restore/toolbox/list_operator.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/whole_number.h"

namespace zelvo {

namespace {

std::string itemPath(const std::string& key) { return "template-item[@name='" + key + "']"; }

std::string optionOf(const TemplateRow& row, OptionNames names) {
    if (row.option != nullptr) {
        return row.option;
    }
    std::string option = std::string("-") + row.key;
    if (names == OptionNames::kWithMinus) {
        std::replace(option.begin(), option.end(), '_', '-');
    }
    return option;
}

std::set<std::string> keysOf(const XmlNode& node) {
    std::set<std::string> keys;
    for (XmlNodeIterator key = node.iterate("template-item/@name"); !key.atEnd(); ++key) {
        keys.insert((*key).str("."));
    }
    return keys;
}

// What says nothing of an item that is not there.
bool isOfItem(OptionRule rule) { return rule == ifThere || rule == trueOrFalseIfThere; }

struct Unit {
    std::int64_t seconds;
    const char* letter;
};

constexpr std::int64_t kDay = 86400;
constexpr Unit kUnits[] = {{365 * kDay, "Y"}, {30 * kDay, "M"}, {kDay, "D"}};

std::string inLargestUnit(std::int64_t seconds) {
    for (const Unit& unit : kUnits) {
        if (seconds % unit.seconds == 0) {
            return std::to_string(seconds / unit.seconds) + unit.letter;
        }
    }
    return seconds < 0 ? "-1" : "0D";
}

std::string neededItem(const XmlNode& node, const std::string& key, const std::string& forWhat) {
    const std::string path = itemPath(key);
    if (!node.test(path)) {
        throw EXC(AssertionFailed) % ("the template item '" + key + "' is needed for " + forWhat);
    }
    return node.str(path);
}

// "UTILITY VERB NAME -owner OWNER".
CliExec ownedCommand(const std::string& utility, const std::string& verb, const std::string& name,
                     const std::string& owner) {
    CliExec cmd = commandOn(utility, verb, name);
    if (!owner.empty()) {
        cmd << "-owner" << owner;
    }
    return cmd;
}

}  // namespace

void appendTemplateItems(const XmlNode& node, CmdLine& cmd, OptionNames names,
                         std::initializer_list<TemplateRow> table) {
    // A template has few of all the items: those that it lacks are not worth a query each.
    const std::set<std::string> keys = keysOf(node);
    for (const TemplateRow& row : table) {
        if (isOfItem(row.rule) && !keys.contains(row.key)) {
            continue;
        }
        const std::string option = optionOf(row, names);
        const std::string item = itemPath(row.key);
        appendOptions(node, cmd, {{option.c_str(), item.c_str(), row.rule}});
    }
}

std::optional<std::string> expirationValue(const XmlNode& node, const char* item) {
    if (!node.test(item)) {
        return std::nullopt;
    }
    return inLargestUnit(wholeNumber(node.str(item), "template item 'expiration'"));
}

std::optional<std::string> mailBounceValue(const XmlNode& node, const char* item) {
    if (!node.test(item)) {
        return std::nullopt;
    }
    const std::string word = node.str(item);
    if (word == "reject") {
        return word;
    }
    if (word == "catch") {
        return neededItem(node, "catch_addr", "'catch'");
    }
    if (word == "bounce") {
        return "bounce:" + neededItem(node, "bounce_mess", "'bounce'");
    }
    throw EXC(AssertionFailed) % ("the template item 'nonexist_mail' can not be '" + word + "'");
}

void appendSharedAttribute(const XmlNode& node, CmdLine& cmd) {
    appendOptions(node, cmd, {{"-shared", "@shared", trueOrFalseIfThere}});
}

void appendIpPoolOptions(const XmlNode& node, CmdLine& cmd) {
    std::string addresses;
    const tPeriodSeparatedListOperator gather(addresses);
    node.foreach (
        "ip_pool/ip/ip-address", [&](const XmlNode& address) { gather.act(address.node()); },
        deploy_error_func);
    if (!addresses.empty()) {
        cmd << "-ip-pool"
            << "add:" + addresses;
    }
}

void deployTemplate(const std::string& kind, const std::string& owner, const XmlNode& node,
                    const std::function<void(CmdLine&)>& fill) {
    const std::string name = node.str("@name");
    const std::string utility = kind + "_template";
    if (ownedCommand(utility, "-x", name, owner).exec(std::nothrow) == 0) {
        return;
    }
    const ObjectLogger logger(name, kind + " template");
    CliExec cmd = ownedCommand(utility, "--create", name, owner);
    refuseNonNumbers([&] { fill(cmd); });
    cmd.exec();
}

}  // namespace zelvo
