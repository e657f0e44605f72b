// Random words made plain, so that expected texts can name them.
#pragma once

#include <string>
#include <utility>
#include <vector>

// What a run makes up: passwords of 7 or 16 letters and digits, logins of temporary users, names of
// temporary files and directories. So no dump of a test has such a password. The first one that the
// texts hold becomes RANDOM1, the next one RANDOM2; the same word is the same plain word.
class PlainWords {
  public:
    // Finds the words in the journal, the result and the log of one run, in this order.
    PlainWords(const std::string& journal, const std::string& result, const std::string& log);
    std::string in(std::string text) const;

  private:
    void learn(const std::string& text);

    std::vector<std::pair<std::string, std::string>> words_;
};
