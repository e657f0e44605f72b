// Writing to named files through libxml2 and libxslt, without what gets lost on their way.
#pragma once

#include <string>

namespace zelvo {

// The form in which a file name is given to libxml2 for writing. The library takes a name that
// reads as a URI for one and undoes its %-escapes: a directory "50%25" would be sought as "50%".
std::string outputName(const std::string& fileName);

// Notes whether libxml2 met a failure while it lived. A failed write in the middle of a document
// does not show in what the save functions return.
class OutputCheck {
  public:
    OutputCheck();
    OutputCheck(const OutputCheck&) = delete;
    OutputCheck& operator=(const OutputCheck&) = delete;

    // result: what the save function returned, negative for a failure. True if all was written.
    bool isWritten(int result) const;
};

}  // namespace zelvo
