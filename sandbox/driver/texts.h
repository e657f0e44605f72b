// Small work on texts that the driver and the tests share.
#pragma once

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text);
// The lines, each with its end, so that a difference can be seen.
std::string joined(const Lines& lines);

std::string replaceAll(std::string text, const std::string& from, const std::string& to);
int countOf(const std::string& text, const std::string& part);

// On one line: a backslash and a line feed become \\ and \n.
std::string onOneLine(const std::string& text);

// A file of the sources, by its path from their top, or of the example company.
std::string sourceFile(const std::string& path);
std::string example(const std::string& name);
