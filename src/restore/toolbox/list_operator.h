// Lists of an element's items as one argument, separated by commas.
#pragma once

#include <string>
#include <vector>

#include "xml/xml_node.h"

namespace zelvo {

// Gathers the text of the visited nodes that carry a certain action word.
class tPeriodSeparatedListOperator : public tXmlOperator {
  public:
    // list: where the items are appended; must outlive the operator. action: the action word of
    // the nodes to take; an empty one takes those to be created.
    explicit tPeriodSeparatedListOperator(std::string& list, std::string action = "");

    // Appends the node's text, if it has any. Raises MigrationTerminatedException when the run is
    // to stop.
    void act(_xmlNode* node) const override;

  private:
    std::string& list_;
    std::string action_;
};

// The same for the address patterns of the spam filter, whatever the nodes' action words.
class tPeriodSeparatedListOperatorForSpamAssassin : public tXmlOperator {
  public:
    // list: as above.
    explicit tPeriodSeparatedListOperatorForSpamAssassin(std::string& list);

    void act(_xmlNode* node) const override;

  private:
    std::string& list_;
};

// The address patterns "LOCAL@DOMAIN" that the spam filter needs for an entry of the dump: one for
// an entry with an "@", which stays as it is, or without "*" and "?", which gets any domain; one
// for each of these wildcards that can stand for the "@" otherwise; none for an empty one. A change
// is told to the debug log.
std::vector<std::string> toAddressPatterns(const std::string& entry);

}  // namespace zelvo
