// The forms in which servers list, and in which they are addressed.
#include "repository/ftp_listing.h"

#include <gtest/gtest.h>

#include <chrono>

#include "recording_log.h"
#include "repository/curl_errors.h"
#include "repository/ftp_connection.h"
#include "repository/ftp_url.h"
#include "told.h"

namespace zelvo {
namespace {

struct Row {
    const char* line;
    // Empty for one that is skipped.
    const char* name;
    long size;
};

const Row kLines[] = {{"-rw-r--r--   1 root     root         1234 Nov 23 13:15 a_1203011530.tgz",
                       "a_1203011530.tgz", 1234},
                      {"-rw-r--r--    1 102      105             3 Nov 23 13:44 f", "f", 3},
                      {"-rw-r--r-- 1 0 0 7 2026-11-23 13:44 f", "f", 7},
                      {"-rw-r--r-- 1 ftp ftp 1234 23 Nov 13:15 f", "f", 1234},
                      {"-rw-r--r-- 1 ftp ftp 1234 23 Nov 2025 a f", "f", 1234},
                      {"-rw-r--r-- 1 101 102 1234 23. Nov 2025 f", "f", 1234},
                      {"-rw-r--r-- 1 101 102 1234 11\u6708 23 13:15 f", "f", 1234},
                      {"-rw-r--r-- 1 101 102 1234 \u010der 3 2025 f", "f", 1234},
                      {"-rw-r--r-- 1 101 102 1234 11/23/2025 13:15 f", "f", 1234},
                      {"lrwxrwxrwx 1 u g 4 Nov 23 13:15 l -> /etc/passwd", "l", 4},
                      {"-rw-r--r-- 1 root root 1234 Nov 23 2025 two words", "words", 1234},
                      {"-rw-r--r-- 1 root root 1234 Nov 23 2025 /full/path/f", "f", 1234},
                      {"-rw-r--r-- 1 root root 5 Nov 23 2025 ../f", "f", 5},
                      {"drwxr-xr-x 2 root root 4096 Nov 23 2025 ..", "", 0},
                      {"-rw-r--r-- 1 root root 99999999999999999999 Nov 23 2025 f", "", 0},
                      {"total 12", "", 0},
                      {"01-23-26  03:15PM           1,234,567 my dump.zip", "my dump.zip", 1234567},
                      {"01-23-26  03:15PM           1.234 dump.zip", "dump.zip", 1234},
                      {"01-23-26  03:15PM       <DIR>          sub", "sub", 0},
                      {"nothing known", "", 0}};

TEST(FtpListing, IsReadLineByLine) {
    const RecordingLog log;
    for (const Row& row : kLines) {
        std::vector<FtpFileInfo> entries;
        SplitFileInfo(std::string("\r\n") + row.line + "\r\n", entries);
        EXPECT_EQ(*row.name == '\0' ? 0U : 1U, entries.size()) << row.line;
        if (!entries.empty()) {
            EXPECT_EQ(row.name, entries[0].name) << row.line;
            EXPECT_EQ(row.size, entries[0].size) << row.line;
        }
    }
    EXPECT_EQ("Unable to retreave file size from line '01-23-26  03:15PM       <DIR>          sub'",
              log.lines[2]);
    EXPECT_EQ("Unable to get file info from line 'nothing known'", log.lines.back());
}

// Catches: a line on which an expression tries for minutes, or takes the stack.
TEST(FtpListing, IsNotWorthForEver) {
    const RecordingLog log;
    const auto begin = std::chrono::steady_clock::now();
    const std::string ones(2000, '1');
    std::string text;
    for (int i = 0; i < 50; ++i) {
        text += ones + std::string(2000, ' ') + "\na   " + ones + ones + "\n" + ones + ones + ones;
        text += "\n" + ones + std::string(1000, ' ') + std::string(1000, 'x') + "\n";
    }
    std::vector<FtpFileInfo> entries;
    SplitFileInfo(text, entries);
    EXPECT_FALSE(log.lines.empty());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

// That a login and a path come back as they went in is the law of the fuzz target.
TEST(FtpUrl, HoldsALoginAndAnEncodedPath) {
    EXPECT_EQ("ftp://u:p@h/d", GetUrlWithAuth("ftp://h/d", "u:p"));
    EXPECT_EQ("u:p@h/d", GetUrlWithAuth("h/d", "u:p"));
    EXPECT_EQ("ftp://h/a@b", urlWithoutLogin("ftp://u:p@h/a@b"));
    EXPECT_EQ("ftp://h:21/a%23%3B/%3F%25//%20b", encodeFtpUrl("ftp://h:21/a#;/?%// b"));
    EXPECT_EQ("ftp://h/", encodeFtpUrl("ftp://h"));
    for (const char* url : {"ftp://h/a\r\nDELE b", "http://h/", "ftp://h/\x7f"}) {
        EXPECT_NE("", messageOf([&] { encodeFtpUrl(url); })) << url;
    }
    for (const char* path : {"", "a/", "a/.", "a/..", "a/b\n"}) {
        EXPECT_THROW(tFtpConnection::GetFileName(path), Exc<&tFtpConnection::InvalidPath>) << path;
    }
}

TEST(CurlErrors, HaveAClass) {
    const std::pair<int, int> rows[] = {{0, 0}, {9, 2},  {67, 2}, {10, 3}, {11, 3}, {12, 4},
                                        {6, 5}, {15, 5}, {7, 6},  {16, 6}, {28, 7}, {18, 7}};
    for (const auto& [code, status] : rows) {
        const CurlException failure(EXC(CurlError) % "", static_cast<CURLcode>(code));
        EXPECT_EQ(status, static_cast<int>(GetTransportStatus(failure))) << code;
    }
}

}  // namespace
}  // namespace zelvo
