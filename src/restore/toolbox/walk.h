// The walk whose first failure ends it, for nodes that make up one command together.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// Calls op with each node of the expression, in document order. What op raises leaves the walk.
template <class Op>
void forEachNode(const XmlNode& node, const std::string& expr, Op&& op) {
    for (XmlNodeIterator it = node.iterate(expr); !it.atEnd(); ++it) {
        op(*it);
    }
}

}  // namespace zelvo
