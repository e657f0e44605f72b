// Tests of whole restores as texts: what the panel held, the dump, and then every call that was
// made, the whole result document and the last status. A file of cases:
//
//   === NameOfTheCase
//   # What it catches.
//   before:      calls that set the panel up
//   faults:      rules of misbehaviour
//   options: --notify
//   dump:        what stands below the root
//   calls:       the journal without the environment that every utility of the panel gets; a call
//                that lacks it is "bare". The repair of the statistics, which ends a restore, is
//                written as "..." and needs no mention where nothing follows it.
//   result:      an outline of what failed: "NAME TYPE" is an object, "CODE @ FUNCTION FILE @ TEXT"
//                a message, and what is inside stands further to the right. Empty: a clean success.
//   status: 1 of 1 accounts, 0 of 0 domains, bob account
//   log:         lines of the debug log, in their order; others may stand between them
//
// Only the name and the dump are a must; the status is compared where a case has one.
#pragma once

#include "sandbox.h"

#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

struct Case {
    std::string name;
    std::map<std::string, std::string> parts = {};
    std::string part(const std::string& title) const {
        const auto found = parts.find(title);
        return found == parts.end() ? "" : found->second;
    }
};

std::vector<Case> casesOf(const std::string& file);

// Restores the dump and compares all that came of it.
void runCase(const Case& one);
void runCases(const std::string& file);

// ---- the pieces, for tests that build their texts ----

// Long words that the texts abbreviate: "$failed CALL" is a failed utility of the panel, with
// "$suspend DOMAIN" and "$resume DOMAIN" the suspend handler is run.
std::string expand(const std::string& text);

std::string callsOf(const Sandbox& box);
std::string resultDocument(const std::string& outline, const std::string& status = "success");
std::string statusDocument(const std::string& words);

// The dump below the root; the panel and its faults are as the case says.
void prepare(Sandbox& box, const Case& one);
Lines deployOptions(const std::string& more = "");
void expectResult(const Sandbox& box, const std::string& document);
// No password that a utility was given stands in an argument list.
void expectNoPasswordInArguments(const Sandbox& box);
