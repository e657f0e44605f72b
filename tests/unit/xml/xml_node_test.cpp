#include "xml/xml_node.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <vector>

#include "commons/errors.h"
#include "commons/termination.h"
#include "fault.h"
#include "xml/xml_document.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

std::vector<std::string> errors;

void keepError(const ExTraceable& failure) { errors.emplace_back(failure.what()); }

void throwError(const ExTraceable& failure) {
    keepError(failure);
    throw ExTraceable(failure);
}

class XmlNodeTest : public testing::Test {
  protected:
    XmlNodeTest() { errors.clear(); }

    XmlNode root() const { return XmlNode(document_.doc(), nullptr).getNode("/r"); }

    tXmlDocument document_{
        std::string("<r><a n='1'><in/></a><b/><a n='2'/><c>text</c><a n='3'/></r>")};
};

// Notes the nodes that it is called for and fails at one of them.
class Recorder : public tXmlOperator {
  public:
    enum class Ending { kFailure, kTermination };

    explicit Recorder(Ending ending) : ending_(ending) {}

    void act(xmlNode* node) const override { (*this)(XmlNode(node->doc, node)); }
    void operator()(const XmlNode& node) const {
        seen.push_back(node.str("@n"));
        if (seen.back() != "2") {
            return;
        }
        if (ending_ == Ending::kTermination) {
            throw MigrationTerminatedException();
        }
        throw EXC(NotSupportedOperation) % "two";
    }

    mutable std::vector<std::string> seen;

  private:
    Ending ending_;
};

const std::vector<std::string> kAll = {"1", "2", "3"};
const std::vector<std::string> kFirstTwo = {"1", "2"};
const std::vector<std::string> kTwoFailed = {"The operation is not supported: two"};

// Catches a failure of one node that costs its siblings, in both forms of the walk.
TEST_F(XmlNodeTest, WalkGoesOnBehindAFailure) {
    const Recorder functor(Recorder::Ending::kFailure);
    root().foreach ("a", functor, keepError);
    EXPECT_EQ(functor.seen, kAll);
    EXPECT_EQ(errors, kTwoFailed);

    errors.clear();
    const Recorder op(Recorder::Ending::kFailure);
    EXPECT_EQ(foreach_xmlnode(tXPathExpr(document_.doc(), "a", root().node()), op, keepError), 1);
    EXPECT_EQ(op.seen, kAll);
    EXPECT_EQ(errors, kTwoFailed);
}

TEST_F(XmlNodeTest, WalkStopsWhenTheErrorFunctionRaises) {
    const Recorder functor(Recorder::Ending::kFailure);
    EXPECT_EQ(faultOf([&] { root().foreach ("a", functor, throwError); }),
              Fault("NotSupportedOperation", "The operation is not supported: two"));
    EXPECT_EQ(functor.seen, kFirstTwo);
}

// Catches a guard around one object that swallows the wish to stop.
TEST_F(XmlNodeTest, TerminationEndsTheWalk) {
    const Recorder functor(Recorder::Ending::kTermination);
    EXPECT_THROW(root().foreach ("a", functor, keepError), MigrationTerminatedException);
    EXPECT_EQ(functor.seen, kFirstTwo);

    const Recorder op(Recorder::Ending::kTermination);
    const tXPathExpr nodes(document_.doc(), "a", root().node());
    EXPECT_THROW(foreach_xmlnode(nodes, op, keepError), MigrationTerminatedException);
    EXPECT_EQ(op.seen, kFirstTwo);
    EXPECT_TRUE(errors.empty());
}

// Catches the difference between the two walks over nothing.
TEST_F(XmlNodeTest, WalksOverNothing) {
    const Recorder op(Recorder::Ending::kFailure);
    const tXPathExpr null(document_.doc(), "ancestor::none/..", root().node());
    ASSERT_EQ(null.getNodeSet(), nullptr);
    EXPECT_EQ(foreach_xmlnode(null, op, keepError), 0);
    EXPECT_EQ(errors,
              std::vector<std::string>{"Can not evaluate XPath expression: ancestor::none/.."});

    errors.clear();
    root().foreach ("ancestor::none/..", op, keepError);
    const tXPathExpr empty(document_.doc(), "none", root().node());
    EXPECT_EQ(foreach_xmlnode(empty, op, keepError), 1);
    EXPECT_TRUE(op.seen.empty());
    EXPECT_TRUE(errors.empty());
}

// Catches nodes that come in the order of the expression.
TEST_F(XmlNodeTest, NodesComeInDocumentOrder) {
    std::string names;
    root().foreach (
        "c | b | a[2] | a/in", [&](const XmlNode& node) { names += node.str("name()") + " "; },
        keepError);
    EXPECT_EQ(names, "in b a c ");
    EXPECT_EQ(tXPathExpr(document_.doc(), "c | b", root().node()).getXmlNode().str("name()"), "b");
}

TEST_F(XmlNodeTest, TestCastsAsXPathDoes) {
    const std::pair<const char*, bool> cases[] = {
        {"a", true},          {"none", false},    {"count(a)", true}, {"count(none)", false},
        {"string(c)", true},  {"''", false},      {"'false'", true},  {"0 div 0", false},
        {"c = 'text'", true}, {"c = 'x'", false},
    };
    for (const auto& [expr, expected] : cases) {
        EXPECT_EQ(root().test(expr), expected) << expr;
        EXPECT_EQ(testXPathExpr(document_.doc(), expr, root().node()), expected) << expr;
    }
    EXPECT_EQ(root().str("c"), "text");
    EXPECT_EQ(root().str("none"), "");
    EXPECT_EQ(root().str("count(a)"), "3");
}

// Catches a failure that does not tell the place, or tells one where there is none.
TEST_F(XmlNodeTest, MissingNodeIsNamedWithItsPlace) {
    const std::string head =
        "The XML document is invalid for XPath exception.\n"
        "Can not evaluate result of expression '";
    const XmlNode second = root().getNode("a[2]");
    EXPECT_EQ(faultOf([&] { second.getNode("no/such"); }),
              Fault("tError_XPath_CantEvaluate", head + "no/such at path '/r/a[2]''"));
    EXPECT_EQ(faultOf([&] { tXPathExpr(document_.doc(), "x", second.node()).getNode(); }),
              Fault("tError_XPath_CantEvaluate", head + "x at path '/r/a[2]''"));
    EXPECT_EQ(faultOf([&] { tXPathExpr(document_.doc(), "/x", nullptr).getNode(); }),
              Fault("tError_XPath_CantEvaluate", head + "/x'"));
    EXPECT_EQ(tXPathExpr(document_.doc(), "r/c", nullptr).str(), "text");
}

TEST_F(XmlNodeTest, ExpressionsOfOtherTypesAreRefused) {
    const Fault mismatch("tError_XPath_TypesMismatch",
                         "The result of expression 'count(a)' is not a 'nodeset' type");
    EXPECT_EQ(faultOf([&] { root().getNode("count(a)"); }), mismatch);
    EXPECT_EQ(faultOf([&] {
                  root().foreach (
                      "count(a)", [](const XmlNode&) {}, keepError);
              }),
              mismatch);
    EXPECT_TRUE(errors.empty());
    testing::internal::CaptureStderr();
    EXPECT_EQ(faultOf([&] { root().test("a[["); }).first, "tError_XPath_CantEvaluate");
    testing::internal::GetCapturedStderr();
}

TEST_F(XmlNodeTest, FindsParentsAndChildren) {
    EXPECT_EQ(root().getNode("a/in").getParent().str("@n"), "1");
    tXmlRmkDocument other;
    xmlNode* loose = xmlNewNode(nullptr, BAD_CAST "loose");
    EXPECT_EQ(faultOf([&] { XmlNode(other.doc(), loose).getParent(); }),
              Fault("NoParentNode", "No parent node on requested XML element"));
    other.removeNode(loose);
    EXPECT_EQ(getXmlChild(root().node(), "a"), root().getNode("a[1]").node());
    EXPECT_EQ(getXmlChild(root().node(), "in"), nullptr);
    EXPECT_EQ(faultOf([] { getXmlChild(nullptr, "a"); }),
              Fault("AssertionFailed", "Assertion failed: node != NULL"));
}

TEST_F(XmlNodeTest, KnowsSetAttributes) {
    EXPECT_FALSE(is_xml_attr_set(XmlCharPtr()));
    EXPECT_FALSE(is_xml_attr_set(XmlCharPtr(xmlStrdup(BAD_CAST ""))));
    EXPECT_TRUE(is_xml_attr_set(XmlCharPtr(xmlStrdup(BAD_CAST "0"))));
}

}  // namespace
}  // namespace zelvo
