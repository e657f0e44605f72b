// Tests of whole restores as texts: what the panel held, the dump, and then every call that was
// made, the whole result document and the last status. A file of cases:
//
//   --- around
//   # Sections for all the cases behind it, up to the next "---". The case's own section stands
//   # where "@@" is, on a line of its own with that indentation, or else at the end.
//   dump:
//   <domain name="a.example">@@</domain>
//   result:
//   domain a.example
//     @@
//
//   === NameOfTheCase
//   # What it catches.
//   before:      calls that set the panel up, one a line or with "; " between them
//   faults:      rules of misbehaviour
//   options: --notify
//   archive: NAME    an archive in the session, see file_tree.h for its lines; the first may stand
//                behind the name
//   dump:        what stands below the root. "$cid(TYPE PATH/FILE OFFSET)" is the element of an
//                archive; path and offset, a part that is referred to, may be missing.
//                "$content(...)" is one in a content element of its own. "$items(KEY=VALUE ...)"
//                are the items of a template
//   calls:       the journal, written like that, without the environment that every utility of the
//                panel gets; a call that lacks it is "bare", or "$suspend DOMAIN" or "$resume
//                DOMAIN" for the suspend handler. "$create DOMAIN" is the two calls that make a
//                domain of the administrator's if little is said of it, "$update DOMAIN" those that
//                change one. The repair of the statistics, which ends a restore, is written as
//                "..." and needs no mention where nothing follows it; "no ..." where it is not
//                made.
//   result:      what failed, see outcome.h; "error" in its first line if that was the run. Empty,
//                whatever stands around: a clean success.
//   tree: DIRECTORY  what must stand there, all of it, see file_tree.h; as with archives
//   status: 1 of 1 accounts, 0 of 0 domains, bob account
//   log:         lines of the debug log, in their order; others may stand between them
//
// The first line of a part may stand behind its title. Only the name and the dump are a must;
// status and trees are compared where a case has them. Random words are plain everywhere, see
// plain_words.h.
#pragma once

#include "sandbox.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

struct Case {
    std::string name;
    // By title; "archive NAME" and "tree DIRECTORY" are titles too.
    std::map<std::string, std::string> parts = {};
    std::string part(const std::string& title) const {
        const auto found = parts.find(title);
        return found == parts.end() ? "" : found->second;
    }
};

// The cases of a file of tests/system, or of a text, with all that stands around them.
std::vector<Case> casesOf(const std::string& file);
std::vector<Case> casesIn(const std::string& text);

// Restores the dump and compares all that came of it.
void runCase(const Case& one);
void runCases(const std::string& file);

// ---- the pieces, for tests that build their texts ----

// The dump as it is restored.
std::string dumpOf(const Case& one);
// The panel, its faults, the archives and the dump are as the case says.
void prepare(Sandbox& box, const Case& one);
// As in "calls:", one a line.
std::string callsOf(const Sandbox& box);
// As in "status:".
std::string statusOf(const Sandbox& box);
// No password that a utility was given stands in an argument list.
void expectNoPasswordInArguments(const Sandbox& box);
