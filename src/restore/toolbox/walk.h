// The walks: one whose first failure ends it, for nodes that make up one command together, and one
// whose nodes stand each for itself.
#pragma once

#include <string>

#include "report/guard.h"
#include "xml/xml_node.h"

namespace zelvo {

// Calls op with each node of the expression, in document order. What op raises leaves the walk.
template <class Op>
void forEachNode(const XmlNode& node, const std::string& expr, Op&& op) {
    for (XmlNodeIterator it = node.iterate(expr); !it.atEnd(); ++it) {
        op(*it);
    }
}

// The same, but the failure of one node is told, and the next one follows. Returns whether all went
// through.
template <class Op>
bool guardedEach(const XmlNode& node, const std::string& expr, Op&& op) {
    bool wentThrough = true;
    forEachNode(node, expr, [&](const XmlNode& found) {
        wentThrough = guarded([&] { op(found); }) && wentThrough;
    });
    return wentThrough;
}

}  // namespace zelvo
