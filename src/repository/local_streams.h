// The files of a repository in a local directory.
#pragma once

#include <string>

#include "repository/transport.h"

namespace zelvo {

class tLocalInStream : public irepostream {
  public:
    // path: the full path.
    explicit tLocalInStream(std::string path) : path_(std::move(path)) {}

    void close() override { std::ifstream::close(); }
    void open() override;
    bool is_open() const override { return std::ifstream::is_open(); }

  private:
    std::string path_;
};

// Cuts a file that is there already to nothing. The file is written where it stands, so it has its
// name before it is whole.
class tLocalOutStream : public orepostream {
  public:
    // path: the full path.
    explicit tLocalOutStream(std::string path) : path_(std::move(path)) {}

    void close() override;
    void open() override;
    bool is_open() const override { return std::ofstream::is_open(); }

  private:
    [[noreturn]] void raise(int number) const;

    std::string path_;
};

}  // namespace zelvo
