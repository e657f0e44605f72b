// The errors that belong to no single class, with their message templates. Errors that one floor
// alone raises stand with that floor.
#pragma once

#include "commons/exception.h"

ERROR_TAG(AssertionFailed, "Assertion failed: %1%");
ERROR_TAG(NotSupportedOperation, "The operation is not supported: %1%");
ERROR_TAG(InvalidHandle, "Invalid handle passed");
ERROR_TAG(UnableToCreateSession, "Unable to create session: %1%");
ERROR_TAG(CantCreateTempFile, "Can not create temporary file with the template '%1%': %2%.");
ERROR_TAG(CantCreateTempDir, "Can not create temporary dir with the template '%1%': %2%.");

// Of directories and what is unpacked into them.
ERROR_TAG(CantCreateDirectory, "Can not create directory %1%: %2%");
ERROR_TAG(CantStatFile, "Cannot stat %1%: %2%");
ERROR_TAG(UnExpectedResult, "The resutl of operaion is unexpected: %1%");
