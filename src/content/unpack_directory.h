// The temporary directory that an archive is unpacked into on its way to somewhere else.
#pragma once

#include <string>

namespace zelvo {

// Removes a path with all that is below it. A failure goes to the debug log only.
void cleanTempDir(const std::string& path) noexcept;

// A directory of its own, readable by root alone and gone at the end. Needs theDebugLog.
class UnpackDirectory {
  public:
    // parent: where it is made; if empty, in the temporary directory of the configuration. Raises
    // CantCreateTempDir.
    explicit UnpackDirectory(const std::string& parent = "");
    ~UnpackDirectory();
    UnpackDirectory(const UnpackDirectory&) = delete;
    UnpackDirectory& operator=(const UnpackDirectory&) = delete;

    const std::string& path() const { return path_; }

    // Makes the panel's own user the one who can enter the directory beside root. Without that user
    // there is nobody to let in.
    void openToPanel() const;

    // At the end this path goes instead, and the directory stays.
    void cleanInstead(const std::string& path) { toClean_ = path; }

  private:
    std::string path_;
    std::string toClean_;
};

}  // namespace zelvo
