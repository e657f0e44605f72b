// The files of a repository in a local directory.
#pragma once

#include <string>

#include "repository/transport.h"

namespace zelvo {

class tLocalInStream : public irepostream {
  public:
    // path: the full path. name: what messages call it; the path if there is none.
    explicit tLocalInStream(std::string path, const std::string& name = "")
        : path_(std::move(path)), name_(name.empty() ? path_ : name) {}

    void close() override { std::ifstream::close(); }
    void open() override;
    bool is_open() const override { return std::ifstream::is_open(); }

  private:
    [[noreturn]] void raise(const char* reason) const;

    std::string path_;
    std::string name_;
};

// Cuts a file that is there already to nothing. The file is written where it stands, so it has its
// name before it is whole; a new one that was not closed whole goes with the stream.
class tLocalOutStream : public orepostream {
  public:
    // As of tLocalInStream.
    explicit tLocalOutStream(std::string path, const std::string& name = "")
        : path_(std::move(path)), name_(name.empty() ? path_ : name) {}
    ~tLocalOutStream() override;

    void close() override;
    void open() override;
    bool is_open() const override { return std::ofstream::is_open(); }

  private:
    [[noreturn]] void raise(int number) const;

    std::string path_;
    std::string name_;
    // Whether the file was made here and is not whole yet.
    bool isHalf_ = false;
};

}  // namespace zelvo
