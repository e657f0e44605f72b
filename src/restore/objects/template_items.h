// What the templates of domains and of accounts have in common: they are flat lists of named items,
// and one that the panel has is left alone.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "restore/toolbox/option_table.h"

namespace zelvo {

// The option of an item that has none in its row.
enum class OptionNames {
    kAsKey,      // the item's key
    kWithMinus,  // the key with "-" for each "_"
};

// One item of a template.
struct TemplateRow {
    // @name of its `template-item`.
    const char* key;
    // With "-" in front; null for the one that follows from the key.
    const char* option = nullptr;
    // Is given the path of the item, not its key.
    OptionRule rule = ifThere;
};

// Appends the options of the table that the template calls for, in the order of the table. Raises
// what the rules raise.
void appendTemplateItems(const XmlNode& node, CmdLine& cmd, OptionNames names,
                         std::initializer_list<TemplateRow> table);

// Rules of their own:

// A time, which the item has in seconds, in the largest unit that divides it: "1Y" of 365 days,
// "1M" of 30 days or "1D"; otherwise "-1", which is no limit, for a negative one and "0D" for
// others. Raises NumberConversionError.
std::optional<std::string> expirationValue(const XmlNode& node, const char* item);
// What happens to mail for nobody: "reject", for "catch" the address of the item `catch_addr`, for
// "bounce" "bounce:" and the text of the item `bounce_mess`. Raises AssertionFailed for another
// word, and where that second item is missing.
std::optional<std::string> mailBounceValue(const XmlNode& node, const char* item);

// "-shared" with "true" or "false" if the template has @shared.
void appendSharedAttribute(const XmlNode& node, CmdLine& cmd);

// "-ip-pool" with "add:" and the addresses of the template's pool, joined with commas, if there are
// any. The failure of an address is told.
void appendIpPoolOptions(const XmlNode& node, CmdLine& cmd);

// Makes the template that the element describes, unless the panel says that it has one of that
// name. kind: of what it is a template: "domain", "client" or "reseller". owner: login, empty where
// the kind has no owners. fill: appends what the template holds. Raises UnsafeName,
// ExecCmd::Failed, what fill raises, and AssertionFailed in place of its NumberConversionError.
void deployTemplate(const std::string& kind, const std::string& owner, const XmlNode& node,
                    const std::function<void(CmdLine&)>& fill);

}  // namespace zelvo
