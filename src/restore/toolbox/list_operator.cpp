#include "restore/toolbox/list_operator.h"

#include <algorithm>
#include <boost/format.hpp>
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

// A wildcard may stand for the "@" or for what is around it. There is a pattern for each one that
// can.
std::vector<std::string> splitAtWildcards(const std::string& text) {
    std::vector<std::string> patterns;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isInside = place > 0 && place + 1 < text.size();
        const char* separator = text[place] == '*'               ? "*@*"
                                : text[place] == '?' && isInside ? "@"
                                                                 : nullptr;
        if (separator != nullptr) {
            patterns.push_back(text.substr(0, place) + separator + text.substr(place + 1));
        }
    }
    return patterns;
}

std::vector<std::string> rewrite(const std::string& entry) {
    if (entry.empty()) {
        return {};
    }
    // Each wildcard makes a pattern as long as the entry, so an entry that is longer than any mail
    // address could fill the memory.
    constexpr std::size_t kLongestAddress = 320;
    if (entry.find('@') != std::string::npos || entry.size() > kLongestAddress) {
        return {entry};
    }
    const std::string text = shrinkStars(entry);
    if (text == "*") {
        return {"*@*"};
    }
    if (std::none_of(text.begin(), text.end(), isWildcard)) {
        return {text + "@*"};
    }
    std::vector<std::string> patterns = splitAtWildcards(text);
    if (!patterns.empty()) {
        return patterns;
    }
    return {isWildcard(text.front()) ? text + "@*" : "*@" + text};
}

}  // namespace

std::vector<std::string> toAddressPatterns(const std::string& entry) {
    std::vector<std::string> patterns = rewrite(entry);
    for (const std::string& pattern : patterns) {
        if (pattern != entry) {
            theDebugLog->log(boost::format("Convert template '%1%' to '%2%'") % entry % pattern);
        }
    }
    return patterns;
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
    for (const std::string& pattern : toAddressPatterns(nodeOfDump(node).str("."))) {
        appendToList(list_, pattern);
    }
}

}  // namespace zelvo
