#include "restore/domain/webalizer.h"

#include <initializer_list>
#include <utility>

#include "report/error_functions.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

// Adds an entry of a type to the domain's list. more: the options behind the type.
void addEntry(const std::string& domainName, const char* type,
              std::initializer_list<std::string> more = {}) {
    CliExec cmd = commandOn("webstat", "-a", domainName);
    cmd << "-type" << type;
    for (const std::string& argument : more) {
        cmd << argument;
    }
    cmd.exec();
}

}  // namespace

WebalizerDeployer::WebalizerDeployer(std::string domainName) : domainName_(std::move(domainName)) {}

void WebalizerDeployer::act(XmlNode node) const {
    if (node.test(
            "@hide-direct-referrer or webalizer-group-referrer or webalizer-hidden-referrer")) {
        commandOn("webstat", "--del-all", domainName_).exec();
    }
    if (node.test("@hide-direct-referrer = 'true'")) {
        addEntry(domainName_, "hidden_direct");
    }
    deployEach(node, "webalizer-group-referrer", WebalizerGroupReferrerDeployer(domainName_));
    deployEach(node, "webalizer-hidden-referrer", WebalizerHiddenReferrerDeployer(domainName_));
}

WebalizerHiddenReferrerDeployer::WebalizerHiddenReferrerDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void WebalizerHiddenReferrerDeployer::act(XmlNode node) const {
    addEntry(domainName_, "hidden", {"-url", node.str(".")});
}

WebalizerGroupReferrerDeployer::WebalizerGroupReferrerDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void WebalizerGroupReferrerDeployer::act(XmlNode node) const {
    addEntry(domainName_, "group", {"-group", node.str("@group-name"), "-url", node.str(".")});
}

}  // namespace zelvo
