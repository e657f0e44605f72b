// What is done with the failure of one object among many.
#pragma once

#include "commons/exception.h"

namespace zelvo {

// Writes the failure to the debug log and then to the result log, as far as there are such, and
// returns: the siblings go on.
void deploy_error_func(const ExTraceable& failure);

// Does the same and then throws a copy of the failure as a plain ExTraceable, with code and message
// but without its place and cause: those stand in the logs already.
void deploy_error_func_throw(const ExTraceable& failure);

// Whether the failure has been told: deploy_error_func_throw has thrown it.
bool wasTold(const ExTraceable& failure);

// Tells the result log, if there is one, that the failure that was caught last is not going to be
// told: the next one belongs to where it happens.
void forgetFailure();

}  // namespace zelvo
