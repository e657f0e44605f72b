// What keeps a child from more than its work.
#pragma once

#include "exec/outsider.h"
#include "exec/write_fence.h"

namespace zelvo {

// Nothing is owned; all has to live until the child has become its program.
struct Confinement {
    // Keeps the child from writing elsewhere; null for none. It is ready.
    const WriteFence* fence = nullptr;
    // Who the child becomes, and then it has no home and only the basic environment (Inherited),
    // and behind a fence it sees no processes of others; null for who it is.
    const Outsider* outsider = nullptr;
    // Null for all of the child's output. Else an Excerpt of each stream is kept, with this mark.
    const char* excerptMark = nullptr;
};

}  // namespace zelvo
