// Passwords: as the dump holds them, as a utility gets them, and new ones.
#pragma once

#include <cstdlib>
#include <string>

#include "exec/exec_cmd.h"
#include "xml/xml_node.h"

namespace zelvo {

// A password of the dump.
struct passwd {
    enum Type { NONE = 0, PLAIN = 1, ENCRYPTED = 2 };

    Type type = PLAIN;
    // The real text for PLAIN, a crypt hash for ENCRYPTED.
    std::string value;

    passwd() = default;
    // Reads the element `password`, or else `properties/password`, below node. With neither the
    // result is PLAIN and empty. A password whose @type is neither "plain" nor "encrypted" raises
    // AssertionFailed.
    explicit passwd(const XmlNode& node);
};

// The text of an element that holds a password, decoded when its @encoding is "base64". Raises
// UnsafeText.
std::string passwordText(const XmlNode& element);

// Replaces a PLAIN empty password by a random one, with a line in the debug log. what: whose
// password it is, for that line.
passwd ensureNoEmptyPassword(passwd password, const std::string& what);

// Replaces the value of an ENCRYPTED password by a random text, with a line in the debug log. The
// type stays ENCRYPTED.
passwd ensureNoEncryptedPassword(passwd password, const std::string& what);

// Appends "-passwd" and an empty argument, and puts the password itself into the environment of
// the command: argument lists are readable by every user of the machine.
void addPasswdToCmdLine(const passwd& password, CmdLine& cmd);

// Seven random letters and digits, from rand().
std::string randomPasswd();

// Where random numbers come from: each call gives one from 0 to RAND_MAX.
using RandomSource = int (*)();

// The system's own generator (getentropy), whose numbers nobody can guess from others. Raises
// SystemError.
int systemRandom();

// A random text of length characters of which every third is a digit, a capital or a small letter
// before they are shuffled. Empty for a length of 0 or less.
std::string randomStrongPassword(int length, RandomSource next = rand);

}  // namespace zelvo
