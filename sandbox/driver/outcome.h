// What a result document tells, in the words of the scenario texts.
//
//   success
//   client bob
//     FailedClientDeployment: bob
//       ExecCmd::Failed: client --create bob -owner admin => 1: client: no space left
//     NotSupportedOperation: tomcat
//
// An object is its type and its name, a message its code and its text; what is inside stands
// further to the right. Behind "CODE: " stands what is particular in the usual sentence of the
// code, behind "CODE " any other text, whole. A failed utility is its command and, behind "=>", its
// code and what it said: behind ":" its standard error alone, without the last line feed, behind
// "|" the streams as the text has them. Backslashes and line feeds are written \\ and \n. Nothing
// is left out but the places: each message must have one, and one inside a text is "[PLACE]".
#pragma once

#include "texts.h"

class Sandbox;

struct Outcome {
    std::string status;   // "malformed" when the document is none
    std::string outline;  // what stands below the status
    Lines codes;          // one a message: "client bob/domain a.com: OuterCode > InnerCode"
};

Outcome outcomeIn(const std::string& document);

// True for a document that a reader can take.
bool isWhole(const std::string& document);

// The status and what stands below it, as a text.
std::string outcomeOf(const Sandbox& box);
// The status and then the codes: for texts that others word, or that do not matter.
Lines codesOf(const Sandbox& box);
