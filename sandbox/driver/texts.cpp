#include "texts.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

Lines linesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

int countOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

std::string onOneLine(const std::string& text) {
    return replaceAll(replaceAll(text, "\\", "\\\\"), "\n", "\\n");
}

std::string sourceFile(const std::string& path) {
    std::ifstream file(std::string(SOURCE_DIR) + "/" + path);
    if (!file) throw std::runtime_error("there is no " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string example(const std::string& name) {
    return sourceFile("examples/hosting-company/" + name);
}
