#include "repository/tar_command.h"

#include <algorithm>

#include "repository/archive_formats.h"
#include "repository/local_files.h"
#include "repository/repository.h"

namespace zelvo {

namespace {

constexpr const char* kPlain =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._/,:=+-";

// One word of a shell line (POSIX, 2.2.2). What is shown to people is quoted otherwise: there some
// characters stay bare that a shell with extensions would take for its own.
std::string shellWord(const std::string& text) {
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) {
        return text;
    }
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return word + "'";
}

std::string shellWords(const std::vector<std::string>& texts) {
    std::string words;
    for (const std::string& text : texts) {
        words += (words.empty() ? "" : " ") + shellWord(text);
    }
    return words;
}

// A string literal of Perl in which nothing is a variable or an escape.
std::string perlString(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        literal += std::string("\\\"$@").find(c) == std::string::npos ? "" : "\\";
        literal += c;
    }
    return literal + "\"";
}

std::vector<std::string> wordsOf(const tLogExecCmd& command) {
    return {command.args.data(), command.args.data() + command.args.size()};
}

}  // namespace

TempFileGuard makeTempFile(const std::string& text) {
    TempFileGuard guard(GetTempFilePath());
    NewLocalFile file(guard.path());
    file.stream() << text;
    file.finish();
    return guard;
}

ArchiverRun SendFilesToTar(tLogExecCmd& tar, const std::vector<std::string>& volumes) {
    if (volumes.empty()) {
        throw EXC(tRepository::ArchiverError) % "no files to extract";
    }
    if (IsGzipped(volumes.front())) {
        tar << "-z";
    }
    if (volumes.size() == 1) {
        tar << "-f" << volumes.front();
        return {tar, std::nullopt};
    }
    tar << "-f"
        << "-";
    const std::string line = "cat " + shellWords(volumes) + " | " + shellWords(wordsOf(tar));
    TempFileGuard script = makeTempFile("system(" + perlString(line) + ");\n$? == 0 or die $?;\n");
    tLogExecCmd perl("perl");
    perl << "-f" << script.path();
    perl.env = tar.env;
    return {perl, std::move(script)};
}

}  // namespace zelvo
