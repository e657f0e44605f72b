// The local files of a transport whose own ones are far away.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace zelvo {

// A temporary directory, made on first use, for what is to be sent, and in it one for what was
// fetched. Both are gone with it.
class FtpReceiving {
  public:
    // Gets the file at a path of the repository into a local one.
    using Fetch = std::function<void(const std::string& path, const std::string& localFile)>;

    FtpReceiving() = default;
    ~FtpReceiving();
    FtpReceiving(const FtpReceiving&) = delete;
    FtpReceiving& operator=(const FtpReceiving&) = delete;

    // The directory, with "/" at its end. Raises TransportException, as all do.
    const std::string& path();
    // Whether a path is the part of it that is not to be sent.
    bool isOwn(const std::string& localPath) const;
    // Removes all that is to be sent; what was fetched stays. What hinders that is told in the log.
    void clear() const noexcept;
    // A new empty file. Raises CantCreateTempFile as well.
    std::string newFile();
    // The local name for the file at a path of the repository. Raises TransportError if there is a
    // file.
    std::string placeFor(const std::string& path);
    // A local directory with the files names of the directory path of the repository. What an
    // earlier call left there and this one wants is not fetched again; the rest goes.
    std::string collect(const std::string& path, const std::vector<std::string>& names,
                        const Fetch& fetch);

  private:
    // The directory of what was fetched.
    const std::string& own();
    void dropFilesBut(const std::vector<std::string>& wanted);

    std::string path_;
    std::string own_;
    // Paths of the repository.
    std::vector<std::string> collected_;
};

}  // namespace zelvo
