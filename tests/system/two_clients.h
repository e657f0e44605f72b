// The smallest restore in which one object can fail and the next one must not.
#pragma once

#include <string>

const std::string kTwoClients =
    R"(<migration-dump><client name="bob"/><client name="eve"/></migration-dump>)";

const std::string kStatistics = "bare correct_aw_statistics.pl\n";

// The calls for a client of it, with the number of its random password.
inline std::string createOf(const std::string& name, int random) {
    return "QRD_PASSWORD=RANDOM" + std::to_string(random) + " client --create " + name + " -name " +
           name + " -notify false -passwd '' -owner admin\n";
}
inline std::string updateOf(const std::string& name) {
    return "client --update " + name + " -login " + name + "\n";
}

const std::string kFiveCalls =
    createOf("bob", 1) + updateOf("bob") + createOf("eve", 2) + updateOf("eve") + kStatistics;
