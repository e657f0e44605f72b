// What a run has, for tests: a session, a debug log that is kept in memory, a way to fail.
#pragma once

#include <string>
#include <vector>

#include "../xml/fault.h"
#include "../xml/panel_box.h"
#include "commons/errors.h"
#include "commons/session.h"
#include "commons/text_formatter.h"
#include "report/debug_log.h"
#include "report/termination_lines.h"

namespace test {

// The process's debug log as long as it lives.
class MemoryLog : public zelvo::DebugLog {
  public:
    MemoryLog() { zelvo::theDebugLog = this; }
    ~MemoryLog() override { zelvo::theDebugLog = nullptr; }
    MemoryLog(const MemoryLog&) = delete;
    MemoryLog& operator=(const MemoryLog&) = delete;

    void log(const std::string& text) override {
        zelvo::writeTerminationLines();
        lines.push_back(text);
    }
    void log(const boost::format& text) override { log(text.str()); }
    void log(const zelvo::ExTraceable& failure) override {
        log(zelvo::formatPlainTextMessage(failure));
    }
    bool isVerboseMode() const override { return false; }
    bool isDebugMode() const override { return false; }

    std::vector<std::string> lines;
};

// A session in a directory of its own, whose name has all that a configuration file, a URI or a
// shell could take for syntax.
struct Session {
    std::string file(const std::string& name) const { return readFile(path / name); }
    bool has(const std::string& name) const { return std::filesystem::exists(path / name); }
    // Makes every save into the session fail.
    void remove() const { std::filesystem::remove_all(path); }

    TempDir dir;
    std::filesystem::path path = dir / "a#b=c${HOME}\\ %41 'd'";
    zelvo::SessionLifetimeController controller{path.string()};
};

using Failure = zelvo::Exc<&zelvo::NotSupportedOperation>;

// A failure with a place that the tests can spell.
inline Failure failure(const std::string& what) { return Failure("void f()", "./f.cpp", 7) % what; }

// The same with a cause.
inline Failure failure(const std::string& what, const zelvo::ExTraceable& cause) {
    return Failure("void g()", "./g.cpp", 8, cause) % what;
}

}  // namespace test
