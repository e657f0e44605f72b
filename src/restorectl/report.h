// What a command tells at its end, as a table for people or as a JSON document (RFC 8259).
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

namespace zelvo {

// A number of bytes.
struct ByteCount {
    std::uint64_t bytes = 0;
};

using Cell = std::variant<std::string, std::uint64_t, ByteCount, std::vector<std::string>>;

struct Column {
    // In the JSON document.
    const char* key;
    // In the table.
    const char* heading;
};

class Report {
  public:
    // Rows of which there may be many. key: of their list in the JSON document.
    static Report ofMany(std::string key, std::vector<Column> columns) {
        return {std::move(key), std::move(columns), false};
    }
    // One row, whose cells people get below each other.
    static Report ofOne(std::string key, std::vector<Column> columns) {
        return {std::move(key), std::move(columns), true};
    }

    // row: a cell for each column.
    void add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }
    // Of what was asked something was not done; the text says what and why.
    void fail(const std::string& text);
    // The same where a row tells it.
    void fail() { hasFailed_ = true; }
    bool hasFailed() const { return hasFailed_ || !failures_.empty(); }
    const std::vector<std::string>& failures() const { return failures_; }

    // Both end with a line feed. What is no UTF-8 is replaced, and what would move a terminal's
    // cursor is escaped.
    void printTable(std::ostream& out) const;
    void printJson(std::ostream& out) const;

  private:
    Report(std::string key, std::vector<Column> columns, bool isOne)
        : key_(std::move(key)), columns_(std::move(columns)), isOne_(isOne) {}

    void printRows(std::ostream& out) const;
    void printOne(std::ostream& out) const;

    std::string key_;
    std::vector<Column> columns_;
    bool isOne_;
    std::vector<std::vector<Cell>> rows_;
    bool hasFailed_ = false;
    std::vector<std::string> failures_;
};

// A text as it may stand on a terminal: control characters as "\xHH". lineBreak: what a line feed
// becomes.
std::string printable(const std::string& text, const std::string& lineBreak);

}  // namespace zelvo
