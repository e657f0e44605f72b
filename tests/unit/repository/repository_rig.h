// A repository in a local directory, on a machine with the panel's signing tool and schema.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "memory_configuration.h"
#include "recording_log.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "temp_dir.h"
#include "told.h"

namespace zelvo {

// Signs by an envelope, and finds a good signature in what holds no "bad"; notes that it was
// called.
inline constexpr char kSignTool[] =
    "#!/bin/sh\necho x >> \"$0.runs\"\ngrep -q bad \"$2\" && { cat \"$2\"; exit 3; }\n"
    "if [ $1 = sign ]; then echo '<Envelope>'; cat \"$2\"; echo '</Envelope>'\n"
    "else grep -v Envelope \"$2\"; fi\n";

inline constexpr char kSchema[] =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='admin'/>"
    "<xs:element name='client'/></xs:schema>";

class RepositoryRig : public testing::Test {
  protected:
    RepositoryRig() {
        for (const char* dir : {"q/admin/sbin", "q/RMK", "tmp", "r", "other"}) {
            std::filesystem::create_directories(dir_.path(dir));
        }
        configuration_.set("PRODUCT_ROOT_D", dir_.path("q"));
        configuration_.set("DUMP_TMP_D", dir_.path("tmp"));
        std::filesystem::permissions(dir_.write("q/admin/sbin/backup_sign", kSignTool),
                                     std::filesystem::perms::owner_all);
        dir_.write("q/RMK/zelvo.xsd", kSchema);
    }
    ~RepositoryRig() override { EXPECT_FALSE(leavesTempFiles()); }

    bool leavesTempFiles() const { return !std::filesystem::is_empty(dir_.path("tmp")); }

    // Makes each of the files that the words of text name, below the repository; a word that ends
    // in "/" is a directory.
    void make(const std::string& text) const {
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            const std::string path = dir_.path("r/" + word);
            std::filesystem::create_directories(word.ends_with('/') ? path : parentOf(path));
            if (!word.ends_with('/')) {
                std::ofstream(path) << "<admin/>";
            }
        }
    }
    // A dump with its items. document: its info document.
    void makeDump(const std::string& infoPath, const std::string& owner,
                  const std::string& document = "<admin/>") {
        make(infoPath);
        dir_.write("r/" + infoPath, document);
        repository_.CreateDiscovered(parentOf(infoPath), GetInfoXmlDir(fileNameOf(infoPath)), 5,
                                     owner, "server", "G", "7");
    }

    // The backups of an object, sorted by their paths.
    static std::vector<BackupInfo> backupsIn(tRepository& repository, const std::string& type,
                                             const std::string& guid, const std::string& owner,
                                             bool validate = false) {
        std::vector<BackupInfo> found;
        repository.BackupsList(type, guid, owner, found, validate);
        std::sort(found.begin(), found.end(),
                  [](const auto& a, const auto& b) { return a.path < b.path; });
        return found;
    }

    // The files of the repository, sorted.
    static std::string files(const std::string& root) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            if (!entry.is_directory() || std::filesystem::is_empty(entry.path())) {
                names.push_back(entry.path().string().substr(root.size() + 1) +
                                (entry.is_directory() ? "/" : ""));
            }
        }
        return sorted(names);
    }
    std::string files() const { return files(dir_.path("r")); }
    static std::string sorted(const std::string& text) {
        std::istringstream words(text);
        return sorted(std::vector<std::string>{std::istream_iterator<std::string>(words), {}});
    }
    static std::string sorted(std::vector<std::string> names) {
        std::sort(names.begin(), names.end());
        std::string text;
        for (const std::string& name : names) {
            text += name + " ";
        }
        return text;
    }
    const TempDir dir_;
    const MemoryConfiguration configuration_;
    RecordingLog log_;
    tRepository repository_{dir_.path("r"), "", "", "", false};
};

}  // namespace zelvo
