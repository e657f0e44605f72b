#include "restore/toolbox/option_table.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>
#include <locale>
#include <utility>
#include <vector>

#include "restore/toolbox/encoded_text.h"

namespace zelvo {

std::optional<std::string> ifThere(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(node.str(item)) : std::nullopt;
}

std::optional<std::string> always(const XmlNode& node, const char* item) { return node.str(item); }

std::optional<std::string> ifSet(const XmlNode& node, const char* item) {
    std::string value = node.str(item);
    return value.empty() ? std::nullopt : std::optional(std::move(value));
}

std::optional<std::string> decoded(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(encodedText(node.getNode(item))) : std::nullopt;
}

std::optional<std::string> upperCase(const XmlNode& node, const char* item) {
    std::optional<std::string> value = ifThere(node, item);
    if (value) {
        boost::to_upper(*value, std::locale::classic());
    }
    return value;
}

std::optional<std::string> joined(const XmlNode& node, const char* item) {
    std::vector<std::string> texts;
    for (XmlNodeIterator found = node.iterate(item); !found.atEnd(); ++found) {
        if (std::string text = (*found).str("."); !text.empty()) {
            texts.push_back(std::move(text));
        }
    }
    return boost::algorithm::join(texts, ",");
}

std::optional<std::string> joinedIfThere(const XmlNode& node, const char* item) {
    std::optional<std::string> list = joined(node, item);
    return list->empty() ? std::nullopt : list;
}

std::optional<std::string> trueOrFalse(const XmlNode& node, const char* item) {
    return node.str(item) == "true" ? "true" : "false";
}

std::optional<std::string> trueOrFalseIfThere(const XmlNode& node, const char* item) {
    return node.test(item) ? trueOrFalse(node, item) : std::nullopt;
}

std::optional<std::string> falseOrTrue(const XmlNode& node, const char* item) {
    return node.str(item) == "false" ? "false" : "true";
}

std::optional<std::string> trueIf(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional<std::string>("true") : std::nullopt;
}

std::optional<std::string> falseIf(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional<std::string>("false") : std::nullopt;
}

bool appendOptions(const XmlNode& node, CmdLine& cmd, std::initializer_list<OptionRow> table) {
    bool appended = false;
    for (const OptionRow& row : table) {
        if (const std::optional<std::string> value = row.rule(node, row.item)) {
            cmd << row.option << *value;
            appended = true;
        }
    }
    return appended;
}

}  // namespace zelvo
