// What the repository tells: its lines go to the debug log of the run, if there is one.
#pragma once

#include <string>

#include "commons/exception.h"

namespace zelvo {

// A line on what is being done.
void LogMsg(const std::string& text);

// A failure that is gone on behind.
void LogMsg(const ExTraceable& failure);

// A line that only a verbose log has.
void LogVerboseMsg(const std::string& text);

// The head of a long operation.
void LogStep(const std::string& text);

// A failure, in words.
void LogError(const std::string& text);

}  // namespace zelvo
