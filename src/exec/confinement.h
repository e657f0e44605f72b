// What keeps a child from more than its work.
#pragma once

#include <cstddef>

#include "exec/outsider.h"
#include "exec/write_fence.h"

namespace zelvo {

// Nothing is owned; all has to live until the child has become its program.
struct Confinement {
    // Of an output that is kept in full, in bytes: the list of an archive of some millions of
    // members, while one that was made to fill the memory has any number of them.
    static constexpr std::size_t kMostOutput = std::size_t{512} << 20;

    // Keeps the child from writing elsewhere; null for none. It is ready.
    const WriteFence* fence = nullptr;
    // Who the child becomes, and then it has no home and only the basic environment (Inherited),
    // and behind a fence it sees no processes of others; null for who it is.
    const Outsider* outsider = nullptr;
    // Null for all of the child's output. Else an Excerpt of each stream is kept, with this mark.
    const char* excerptMark = nullptr;
    // How long each stream may be that is kept in full. A child that writes more finds its stream
    // closed, has failed and is told of in the text of its standard error.
    std::size_t mostOutput = kMostOutput;
};

}  // namespace zelvo
