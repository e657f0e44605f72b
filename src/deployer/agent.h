// A migration agent: what is installed of it tells how a dump of one foreign product becomes a
// canonical dump.
#pragma once

#include <array>
#include <boost/filesystem/path.hpp>
#include <cstddef>
#include <string>

#include "commons/exception.h"

namespace zelvo {

// The tokens of a spec file. Their order is that of what parse gives.
inline constexpr std::array<const char*, 5> entries = {"Description", "EntryPoint", "DocumentType",
                                                       "Stylesheet", "Interpreter"};

// An agent as its spec file describes it.
//
// A spec file holds one "TOKEN: VALUE" a line. The token is what stands before the first colon and
// must be one of entries, letter by letter; white space before the value does not belong to it.
// Empty lines are skipped, there are no comments, no token is required, and of a repeated one the
// last value counts.
class Agent {
  public:
    // A spec file that cannot be understood.
    static void ParseFailed(bool) {}

    using Values = std::array<std::string, entries.size()>;

    struct Data {
        // For people.
        std::string description;
        // The program that makes dumps on the foreign side.
        std::string entryPoint;
        // File name of the DTD of the agent's dumps; empty: they are canonical.
        std::string documentType;
        // File name of the stylesheet that makes them canonical; empty: they are.
        std::string stylesheet;
        // What runs the entry point; empty: perl.
        std::string interpreter;
    };

    // Reads the spec file and writes what it says to the log category of agents. name: of the
    // agent's directory below files::agents::getDir. Raises what parse raises.
    Agent(const std::string& name, const std::string& specFileName);
    Agent(const std::string& name, const boost::filesystem::path& specFile);

    // The values of a spec file in the order of entries; empty ones for what it does not say, and
    // all of them for a file that cannot be opened. Raises ParseFailed, with the number of the line
    // or with the token that does not exist.
    static Values parse(const std::string& fileName);

    const std::string& description() const { return data_.description; }
    // The full path of the DTD or the stylesheet; empty if the agent has none.
    std::string getDocumentType() const;
    std::string getStylesheet() const;

    // Writes the fields to the log category of agents.
    void logContents() const;

  private:
    std::string name_;
    Data data_;
};

}  // namespace zelvo

ERROR_DEFINITION(zelvo::Agent::ParseFailed, "Agent::ParseFailed", "Unable to parse spec file: %1%");
