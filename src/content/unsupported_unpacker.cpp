#include "content/unsupported_unpacker.h"

#include "commons/errors.h"

namespace zelvo {

namespace {

constexpr const char* kWhat = "content of a repository";

}  // namespace

ContentUnpacker::Paths UnsupportedUnpacker::unpackTar(const Cid&, const std::string&,
                                                      const Paths&) {
    throw EXC(NotSupportedOperation) % kWhat;
}

void UnsupportedUnpacker::extractPart(const Cid&, const std::string&) {
    throw EXC(NotSupportedOperation) % kWhat;
}

void UnsupportedUnpacker::unpackDb(const Cid&, const DbServerAccess&, const std::string&) {
    throw EXC(NotSupportedOperation) % kWhat;
}

}  // namespace zelvo
