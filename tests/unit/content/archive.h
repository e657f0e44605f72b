// Archives as no tar would write them, and trees as texts.
#pragma once

#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace test {

struct Member {
    std::string name;
    // '0' file, '1' hard link, '2' symbolic link, '5' directory (POSIX ustar).
    char type = '0';
    std::string link = {};
    std::string content = {};
    int mode = 0640;
    int uid = 1001;
    int gid = 1002;
};

// The archive (POSIX ustar) of these members; names of up to 100 bytes, unchecked.
inline std::string tarOf(const std::vector<Member>& members) {
    std::string archive;
    for (const Member& member : members) {
        char header[512] = {};
        member.name.copy(header, 100);
        const auto number = [&](int at, int width, unsigned long value) {
            std::snprintf(header + at, static_cast<std::size_t>(width), "%0*lo", width - 1, value);
        };
        number(100, 8, static_cast<unsigned long>(member.mode));
        number(108, 8, static_cast<unsigned long>(member.uid));
        number(116, 8, static_cast<unsigned long>(member.gid));
        number(124, 12, member.content.size());
        number(136, 12, 1'000'000'000);
        header[156] = member.type;
        member.link.copy(header + 157, 100);
        std::memcpy(header + 257, "ustar\00000", 8);
        std::memset(header + 148, ' ', 8);
        unsigned long sum = 0;
        for (const char c : header) sum += static_cast<unsigned char>(c);
        number(148, 7, sum);
        archive.append(header, sizeof header).append(member.content);
        archive.resize((archive.size() + 511) / 512 * 512);
    }
    return archive.append(1024, '\0');
}

// "MODE UID:GID" of a path itself, or "-" for none; the mode with its type, in octal.
inline std::string attributesOf(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return "-";
    char text[64];
    std::snprintf(text, sizeof text, "%o %u:%u", status.st_mode, status.st_uid, status.st_gid);
    return text;
}

// "PATH MODE UID:GID" of all that is below a directory.
inline std::set<std::string> treeOf(const std::string& directory) {
    std::set<std::string> lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        lines.insert(entry.path().lexically_relative(directory).string() + " " +
                     attributesOf(entry.path()));
    }
    return lines;
}

}  // namespace test
