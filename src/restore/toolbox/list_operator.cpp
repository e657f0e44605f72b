#include "restore/toolbox/list_operator.h"

#include <utility>

#include "report/debug_log.h"
#include "report/termination_lines.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

namespace {

XmlNode nodeOfDump(_xmlNode* node) { return XmlNode(tDeployDocAbility::doc_, node); }

void appendToList(std::string& list, const std::string& item) {
    if (item.empty()) {
        return;
    }
    if (!list.empty()) {
        list += ",";
    }
    list += item;
}

bool isWildcard(char c) { return c == '*' || c == '?'; }

std::string shrinkStars(const std::string& entry) {
    std::string result;
    for (const char c : entry) {
        if (c != '*' || result.empty() || result.back() != '*') {
            result += c;
        }
    }
    return result;
}

// The place of the wildcard c that stands neither first nor last, or npos.
size_t findInside(const std::string& pattern, char c) {
    const size_t place = pattern.find(c, 1);
    return place != std::string::npos && place + 1 < pattern.size() ? place : std::string::npos;
}

std::string rewrite(const std::string& entry) {
    if (entry.find('@') != std::string::npos || entry.find_first_of("*?") == std::string::npos) {
        return entry;
    }
    const std::string pattern = shrinkStars(entry);
    if (pattern == "*") {
        return "*@*";
    }
    size_t separator = findInside(pattern, '?');
    if (separator == std::string::npos) {
        separator = findInside(pattern, '*');
    }
    if (separator != std::string::npos) {
        return pattern.substr(0, separator) + "@" + pattern.substr(separator + 1);
    }
    return isWildcard(pattern.front()) ? pattern + "@*" : "*@" + pattern;
}

}  // namespace

std::string toAddressPattern(const std::string& entry) {
    std::string pattern = rewrite(entry);
    if (pattern != entry) {
        theDebugLog->log("Convert template '" + entry + "' to '" + pattern + "'");
    }
    return pattern;
}

tPeriodSeparatedListOperator::tPeriodSeparatedListOperator(std::string& list, std::string action)
    : list_(list), action_(std::move(action)) {}

void tPeriodSeparatedListOperator::act(_xmlNode* node) const {
    checkProgramTerminated();
    const XmlNode item = nodeOfDump(node);
    const tDeployAction action(item);
    if (action.action() == action_ || (action_.empty() && action.DeployActionCreate())) {
        appendToList(list_, item.str("."));
    }
}

tPeriodSeparatedListOperatorForSpamAssassin::tPeriodSeparatedListOperatorForSpamAssassin(
    std::string& list)
    : list_(list) {}

void tPeriodSeparatedListOperatorForSpamAssassin::act(_xmlNode* node) const {
    checkProgramTerminated();
    appendToList(list_, toAddressPattern(nodeOfDump(node).str(".")));
}

}  // namespace zelvo
