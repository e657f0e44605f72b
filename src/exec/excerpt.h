// What is kept of an output that has no end in sight.
#pragma once

#include <cstddef>
#include <string>

namespace zelvo {

// Keeps a growing text small: its first lines, as many as 64 KiB hold, and its end, 64 KiB at
// least, with "[...]" between them and the lines behind that that matter. A text of up to 192 KiB
// stays whole.
class Excerpt {
  public:
    // text: what stands in it already stays; has to outlive the excerpt. mark: how the lines begin
    // that are kept wherever they stand, up to 64 KiB of them; empty for none.
    Excerpt(std::string& text, std::string mark);

    // Takes out what is too much; to be called whenever the text has grown.
    void shorten();

  private:
    std::size_t linesEnd(std::size_t most) const;
    std::string markedLines(std::size_t end);

    std::string& text_;
    std::string mark_;
    // Where what may be taken out begins.
    std::size_t middle_;
    bool isCut_ = false;
    // Room for more marked lines.
    std::size_t room_;
};

}  // namespace zelvo
