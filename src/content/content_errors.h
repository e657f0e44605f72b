// The errors of putting content into its place.
#pragma once

#include "commons/exception.h"

ERROR_TAG(CantCreateDirectory, "Can not create directory %1%: %2%");
ERROR_TAG(CantStatFile, "Cannot stat %1%: %2%");
ERROR_TAG(UnsafeName, "'%1%' can not be the name of %2%: %3%");
ERROR_TAG(UnsuitableOwner, "'%1%' can not be the owner of content: %2%");
ERROR_TAG(UnExpectedResult, "The resutl of operaion is unexpected: %1%");

namespace zelvo {
inline void IDNConversationError(bool) {}
}  // namespace zelvo
ERROR_DEFINITION(zelvo::IDNConversationError, "InternalIdnaLibraryError",
                 "IDN conversion error: %1%");
