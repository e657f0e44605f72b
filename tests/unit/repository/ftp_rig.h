// What tests of FTP share: a place for temporary files, a log in its most detailed form, and
// transports.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "memory_configuration.h"
#include "recording_log.h"
#include "repository/ftp_transport.h"
#include "temp_dir.h"

class DetailedLog : public RecordingLog {
  public:
    bool isDebugMode() const override { return true; }
};

class FtpRig : public testing::Test {
  protected:
    FtpRig() {
        std::filesystem::create_directory(dir_.path("tmp"));
        configuration_.set("DUMP_TMP_D", dir_.path("tmp"));
    }
    ~FtpRig() override { EXPECT_TRUE(std::filesystem::is_empty(dir_.path("tmp"))); }

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
    const MemoryConfiguration configuration_;
    DetailedLog log_;
};
