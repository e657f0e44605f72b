#include "restore/toolbox/passwd.h"

#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "commons/errors.h"
#include "commons/system_error.h"
#include "report/debug_log.h"
#include "restore/toolbox/encoded_text.h"

namespace zelvo {

namespace {

const std::string kDigits = "1234567890";
const std::string kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string kSmallLetters = "abcdefghijklmnopqrstuvwxyz";
const std::string symbols = kSmallLetters + kCapitals + "0123456789";

char pick(const std::string& alphabet, RandomSource next) {
    return alphabet[static_cast<size_t>(next()) % alphabet.size()];
}

void logReplacement(const std::string& kind, const std::string& what) {
    theDebugLog->log("No " + kind + " passwords are allowed for " + what +
                     ". New password will be generated and" +
                     " sent by mail to the respective user.");
}

}  // namespace

passwd::passwd(const XmlNode& node) {
    const std::string place = node.test("password") ? "password" : "properties/password";
    if (!node.test(place)) {
        return;
    }
    const XmlNode element = node.getNode(place);
    if (element.test("@type = 'plain'")) {
        type = PLAIN;
    } else if (element.test("@type = 'encrypted'")) {
        type = ENCRYPTED;
    } else {
        type = NONE;
    }
    value = passwordText(element);
    if (!(type & (PLAIN | ENCRYPTED))) {
        throw EXC(AssertionFailed) % "type & (PLAIN | ENCRYPTED)";
    }
}

std::string passwordText(const XmlNode& element) {
    const std::string text = element.str(".");
    return element.test("@encoding = 'base64'") ? textOfBase64(text, "a password") : text;
}

passwd ensureNoEmptyPassword(passwd password, const std::string& what) {
    if (password.type == passwd::PLAIN && password.value.empty()) {
        logReplacement("empty", what);
        password.value = randomPasswd();
    }
    return password;
}

passwd ensureNoEncryptedPassword(passwd password, const std::string& what) {
    if (password.type == passwd::ENCRYPTED) {
        logReplacement("encrypted", what);
        password.value = randomPasswd();
    }
    return password;
}

void addPasswdToCmdLine(const passwd& password, CmdLine& cmd) {
    cmd << "-passwd"
        << "";
    cmd.setEnv(password.type == passwd::PLAIN ? "QRD_PASSWORD" : "QRD_CRYPTED_PASSWORD",
               password.value);
}

std::string randomPasswd() {
    std::string result;
    for (int i = 0; i < 7; ++i) {
        result += pick(symbols, rand);
    }
    return result;
}

int systemRandom() {
    unsigned number = 0;
    if (getentropy(&number, sizeof(number)) != 0) {
        throwSystemError("getentropy() failed");
    }
    return static_cast<int>(number & static_cast<unsigned>(RAND_MAX));
}

std::string randomStrongPassword(int length, RandomSource next) {
    const std::string* const alphabets[] = {&kDigits, &kCapitals, &kSmallLetters};
    std::string result;
    for (int i = 0; i < length; ++i) {
        result += pick(*alphabets[i % 3], next);
    }
    for (int i = 0; i < length; ++i) {
        const size_t one = static_cast<size_t>(next() % length);
        const size_t other = static_cast<size_t>(next() % length);
        std::swap(result[one], result[other]);
    }
    return result;
}

}  // namespace zelvo
