// A debug log that keeps its lines for a test to read.
#pragma once

#include <algorithm>
#include <boost/format.hpp>
#include <string>
#include <vector>

#include "commons/text_formatter.h"
#include "report/debug_log.h"

// Is the process's debug log for its lifetime.
class RecordingLog : public zelvo::DebugLog {
  public:
    RecordingLog() { zelvo::theDebugLog = this; }
    ~RecordingLog() override { zelvo::theDebugLog = nullptr; }

    void log(const std::string& text) override { lines.push_back(text); }
    void log(const boost::format& text) override { lines.push_back(text.str()); }
    // Without the place, which moves with every change of the source.
    void log(const zelvo::ExTraceable& failure) override {
        const std::string text = zelvo::formatPlainTextMessage(failure);
        lines.push_back("failure " + text.substr(0, text.rfind(" [")));
    }
    bool isVerboseMode() const override { return false; }
    bool isDebugMode() const override { return false; }

    // Whether text is in one of the lines.
    bool holds(const std::string& text) const {
        return std::any_of(lines.begin(), lines.end(), [&text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    }

    std::vector<std::string> lines;
};
