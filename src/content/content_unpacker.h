// Puts the content that a Cid names into its place on the server.
#pragma once

namespace zelvo {

// There is one for a run: its concrete class says how an archive is got and opened.
class ContentUnpacker {
  public:
    virtual ~ContentUnpacker() = default;

  protected:
    ContentUnpacker() = default;
};

}  // namespace zelvo
