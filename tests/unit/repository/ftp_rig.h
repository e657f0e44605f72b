// What tests of FTP share: a place for temporary files, a log in its most detailed form, and
// transports.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "lib/read_configuration.h"
#include "recording_log.h"
#include "repository/ftp_transport.h"
#include "temp_dir.h"

class DetailedLog : public RecordingLog {
  public:
    bool isDebugMode() const override { return true; }

    bool holds(const std::string& text) const {
        return std::any_of(lines.begin(), lines.end(), [&text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    }
};

class FtpRig : public testing::Test {
  protected:
    FtpRig() {
        theQrdConfHash = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
        std::filesystem::create_directory(dir_.path("tmp"));
        EXPECT_EQ(0, conf_set_r("DUMP_TMP_D", dir_.path("tmp").c_str(), theQrdConfHash));
    }
    ~FtpRig() override {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
        EXPECT_TRUE(std::filesystem::is_empty(dir_.path("tmp")));
    }

    static std::unique_ptr<zelvo::tRepositoryTransport> transport(const std::string& url,
                                                                  const std::string& login,
                                                                  const std::string& password,
                                                                  bool passive = true,
                                                                  unsigned long timeout = 30) {
        auto made = zelvo::makeFtpTransport(url);
        made->Init(login, password, passive, timeout);
        return made;
    }

    static void put(zelvo::tRepositoryTransport& transport, const std::string& path,
                    const std::string& content) {
        const auto out = transport.PutFile(path);
        *out << content;
        out->close();
    }
    static std::string get(zelvo::tRepositoryTransport& transport, const std::string& path) {
        const auto in = transport.GetFile(path);
        return {std::istreambuf_iterator<char>(*in), std::istreambuf_iterator<char>()};
    }

    const TempDir dir_;
    DetailedLog log_;
};
