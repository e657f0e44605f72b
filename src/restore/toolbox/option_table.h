// Tables of options: which item of an element becomes which option of a utility, by which rule.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>

#include "exec/exec_cmd.h"
#include "xml/xml_node.h"

namespace zelvo {

// How an option gets its value. node: the element. item: the row's expression on it. Returns the
// value, or nothing for an option that is not sent. A function without captures may be a rule too.
using OptionRule = std::optional<std::string> (*)(const XmlNode& node, const char* item);

// The string value of the item...
// ... if the element has the item,
std::optional<std::string> ifThere(const XmlNode& node, const char* item);
// ... also where there is no such item: empty then,
std::optional<std::string> always(const XmlNode& node, const char* item);
// ... if it is not empty,
std::optional<std::string> ifSet(const XmlNode& node, const char* item);
// ... if it is there, decoded from base64 (RFC 4648) where it says encoded="true",
std::optional<std::string> decoded(const XmlNode& node, const char* item);
// ... if it is there, in upper case (ASCII),
std::optional<std::string> upperCase(const XmlNode& node, const char* item);
// ... of each node of the item that is not empty, with commas; empty where there is none,
std::optional<std::string> joined(const XmlNode& node, const char* item);
// ... the same if one is there.
std::optional<std::string> joinedIfThere(const XmlNode& node, const char* item);

// "true" if the item is exactly "true", and "false" otherwise.
std::optional<std::string> trueOrFalse(const XmlNode& node, const char* item);
// The same if the item is there.
std::optional<std::string> trueOrFalseIfThere(const XmlNode& node, const char* item);
// "false" if the item is exactly "false", and "true" otherwise.
std::optional<std::string> falseOrTrue(const XmlNode& node, const char* item);
// "true" if the expression holds: the element has the item, or the comparison is true.
std::optional<std::string> trueIf(const XmlNode& node, const char* item);
// "false" if the expression holds.
std::optional<std::string> falseIf(const XmlNode& node, const char* item);

// One option of a utility.
struct OptionRow {
    const char* option;
    const char* item;
    OptionRule rule = ifThere;
};

// Appends the options of the table that the node calls for, in the order of the table. Returns
// whether any was appended.
bool appendOptions(const XmlNode& node, CmdLine& cmd, std::initializer_list<OptionRow> table);

}  // namespace zelvo
