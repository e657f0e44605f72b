// A panel with a session, for tests of unpackers.
#pragma once

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <functional>
#include <regex>

#include "archive.h"
#include "commons/session.h"
#include "content/content_unpacker.h"
#include "panel_box.h"
#include "recording_log.h"

namespace test {

using zelvo::Cid;
using Paths = std::vector<std::string>;

// Gives each directory of the panel a place in the test's own. Files below "bin" stand for the
// clients of the database servers.
class Unpacking : public testing::Test {
  protected:
    Unpacking() {
        namespace fs = std::filesystem;
        umask(022);
        // Programs run as the panel's users pass through.
        fs::permissions(box("product/.."), fs::perms(0711));
        fs::remove_all(box("tmp"));
        for (const char* name : {"tmp", "bin", "product/RMK/tmp"})
            fs::create_directories(box(name));
        fs::permissions(box("tmp"), fs::perms(0711));
        panelBox.dir.write("etc/qrd/qrd.conf",
                           "PRODUCT_ROOT_D " + box("product") + "\nDUMP_TMP_D " + box("tmp") +
                               "\nHTTPD_VHOSTS_D " + box("vhosts") + "\nZELVO_MAILNAMES_D " +
                               box("mail") + "\nMAILMAN_VAR_D " + box("lists") + "\nMYSQL_BIN_D " +
                               box("bin") + "\nPGSQL_BIN_D " + box("bin") + "\n");
        cid.path = "archives";
        cid.files = {"a.tar"};
    }

    static std::string box(const std::string& name) { return panelBox.dir.path(name); }
    static std::string rmk(const std::string& name) { return box("product/RMK/") + name; }

    void writeArchive(const std::string& content) const {
        dir.write("session/archives/a.tar", content);
    }
    static void writeProgram(const std::string& path, const std::string& script) {
        std::ofstream(path) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(path, std::filesystem::perms(0755));
    }
    // Without the variable parts of temporary names.
    static std::string plain(const std::string& text) {
        return std::regex_replace(text, std::regex("unpack-[^/ \n]{6}"), "unpack-XXXXXX");
    }
    // Whether every temporary directory of an unpacking is gone.
    static bool isTmpEmpty() { return std::filesystem::is_empty(box("tmp")); }

    const TempDir dir;
    RecordingLog log;
    const zelvo::SessionLifetimeController session{dir.path("session")};
    Cid cid;
};

// An unpacker whose archives a test makes up.
class FakeUnpacker : public zelvo::ContentUnpacker {
  public:
    Paths unpackTar(const Cid& /*cid*/, const std::string& to, const Paths& wanted) override {
        destination = to;
        includes = wanted;
        attributes = attributesOf(to);
        work(to);
        return names;
    }
    void extractPart(const Cid& /*cid*/, const std::string& /*to*/) override {}
    void unpackDb(const Cid& /*cid*/, const zelvo::DbServerAccess& /*server*/,
                  const std::string& /*database*/) override {}

    // What an archive holds, and what unpacking it does.
    Paths names = {"member"};
    std::function<void(const std::string& destination)> work = [](const std::string&) {};
    // What was asked for, and the destination's attributes then.
    std::string destination;
    Paths includes;
    std::string attributes;
};

}  // namespace test
