#include "xml/xml_node.h"

#include <libxml/tree.h>

#include "commons/errors.h"
#include "commons/termination.h"
#include "panel_box.h"
#include "xml/xml_document.h"

namespace zelvo {
namespace {

using test::faultOf;

tXmlDocument document{
    std::string("<r><a n='1'/><b/><a n='2'/><c>text</c><a n='3'/><d n='4'/><d/></r>")};

XmlNode root() { return XmlNode(document.doc(), nullptr).getNode("/r"); }

std::string events;

void keep(const ExTraceable& failure) { events += std::string("(") + failure.what() + ")"; }

// Notes the numbers of the nodes; fails at the second and wishes to stop at the fourth.
struct Visitor : tXmlOperator {
    void act(xmlNode* node) const override { (*this)(XmlNode(node->doc, node)); }
    void operator()(const XmlNode& node) const {
        events += node.str("@n");
        if (events.back() == '2') throw EXC(NotSupportedOperation) % "two";
        if (events.back() == '4') throw MigrationTerminatedException();
    }
};

// Catches a failure of one node that costs its siblings, a guard that swallows the wish to stop,
// another order than the document's, and the difference of the two walks over nothing.
TEST(XmlNode, WalksGoOnBehindFailuresOnly) {
    // The expression, the events of a walk, and those that foreach_xmlnode has behind them.
    const std::string cases[][3] = {
        {"a", "12(The operation is not supported: two)3", "=1"},
        {"d", std::string("4") + MigrationTerminatedException().what(), ""},
        {"a[3] | a[1]", "13", "=1"},
        {"none", "", "=1"},
        {"ancestor::none/..", "", "(Can not evaluate XPath expression: ancestor::none/..)=0"},
        {"1", "tError_XPath_TypesMismatch: The result of expression '1' is not a 'nodeset' type",
         ""},
    };
    for (const auto& [expr, expected, behind] : cases) {
        events = "";
        events += faultOf([&expr = expr] { root().foreach (expr, Visitor(), keep); });
        EXPECT_EQ(events, expected) << expr;
        events = "";
        events += faultOf([&expr = expr] {
            const tXPathExpr nodes(document.doc(), expr, root().node());
            const int given = foreach_xmlnode(nodes, Visitor(), keep);
            events += "=" + std::to_string(given);
        });
        EXPECT_EQ(events, expected + behind) << expr;
    }
}

TEST(XmlNode, CastsAsXPathDoes) {
    for (const char* expr : {"a", "count(a)", "string(c)", "'false'", "c = 'text'"})
        EXPECT_TRUE(root().test(expr)) << expr;
    for (const char* expr : {"none", "count(none)", "''", "0 div 0", "c = 'x'"})
        EXPECT_FALSE(root().test(expr)) << expr;
    EXPECT_EQ(root().str("c") + root().str("none") + root().str("count(a)"), "text3");
}

// Catches a failure that does not tell the place, or tells one where there is none.
TEST(XmlNode, MissingNodeIsNamedWithItsPlace) {
    const std::string head =
        "tError_XPath_CantEvaluate: The XML document is invalid for XPath exception.\n"
        "Can not evaluate result of expression '";
    EXPECT_EQ(faultOf([] { root().getNode("a[2]").getNode("x/y"); }),
              head + "x/y at path '/r/a[2]''");
    EXPECT_EQ(faultOf([] { tXPathExpr(document.doc(), "/x", nullptr).getNode(); }), head + "/x'");
}

}  // namespace
}  // namespace zelvo
