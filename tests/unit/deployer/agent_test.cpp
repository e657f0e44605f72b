#include "deployer/agent.h"

#include <gtest/gtest.h>

#include "deployer/agents_factory.h"
#include "panel_box.h"

namespace zelvo {
namespace {

using test::faultOf;
using test::panelBox;

std::string parsed(const std::string& text) {
    const std::string file = panelBox.dir.write("spec", text);
    std::string told;
    const std::string fault = faultOf([&] {
        for (const std::string& value : Agent::parse(file)) told += "[" + value + "]";
    });
    return fault.empty() ? told : fault;
}

// Catches: a value that is cut or keeps what does not belong to it, a token that is taken for
// another, a line that is counted wrongly.
TEST(AgentSpec, IsReadLineByLine) {
    const std::string fault = "Agent::ParseFailed: Unable to parse spec file: ";
    const std::string file = panelBox.dir.path("spec");
    const std::string rows[][2] = {
        {"", "[][][][][]"},
        {"Interpreter:e\nStylesheet:d\nDocumentType:c\nEntryPoint:b\nDescription:a",
         "[a][b][c][d][e]"},
        {"Description: \t a: b :c \t\r\n\n", "[a: b :c \t\r][][][][]"},
        {"EntryPoint: x\nEntryPoint:\t \n", "[][][][][]"},
        {"\n\nDescription\n", fault + file + ":3: Expected '<token>: <value>', got 'Description'"},
        {"description: a\n", fault + "Illegal parameter found in " + file + ": description"},
        {": a\n", fault + "Illegal parameter found in " + file + ": "},
        {"%1%: %2%\n", fault + "Illegal parameter found in " + file + ": %1%"},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parsed(text), expected) << text;
    EXPECT_EQ(Agent::parse(file + "-that-is-not-there"), Agent::Values());
}

// Catches: a broken agent that stays broken when it was mended, and a good one that is read again.
TEST(AgentsFactory, KeepsWhatItHasRead) {
    const std::string agent = "product/RMK/agents/sometimes/control/";
    std::filesystem::create_directories(panelBox.dir.path(agent));
    const auto lookUp = [] { return theAgentsFactory().getAgent("sometimes")->description(); };
    const std::string missing =
        "AgentNotFound: Agent sometimes was not found or does not contain proper spec file";
    EXPECT_EQ(faultOf(lookUp), missing);
    panelBox.dir.write(agent + "spec", "broken");
    EXPECT_EQ(faultOf(lookUp), missing);
    panelBox.dir.write(agent + "spec", "Description: good\n");
    EXPECT_EQ(lookUp(), "good");
    panelBox.dir.write(agent + "spec", "Description: other\n");
    EXPECT_EQ(lookUp(), "good");
    EXPECT_EQ(theAgentsFactory().getAllAgents().at("sometimes")->description(), "good");
}

}  // namespace
}  // namespace zelvo
