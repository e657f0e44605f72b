// Temporary files that a utility of the panel reads by their name.
#pragma once

#include <string>

#include "exec/tmp_file.h"

namespace zelvo {

// A new file in the temporary directory of the migration tools, which only its owner can read at
// any moment, and which is gone with this object.
class PanelFile {
  public:
    // prefix: start of the file's name. Raises CantCreateTempFile.
    explicit PanelFile(const std::string& prefix);
    // The same with the text in it, and given to the panel before there is anything to read. Raises
    // CantWriteTempFile too.
    PanelFile(const std::string& prefix, const std::string& text);

    // Gives the file to the panel's own user and group. A failure is only logged, through
    // messlog2: a utility that runs as root reads the file all the same.
    void handOver() const;

    // Appends the text, and has it all in the file at the end. Raises CantWriteTempFile.
    void write(const std::string& text);

    const std::string& path() const { return file_.path(); }

  private:
    RMKTmpFile file_;
};

}  // namespace zelvo
