// What the panel's utilities answer: the row of a call is looked up by utility and first argument,
// and carries it out on the model.
#pragma once

#include "call.h"
#include "panel/command.h"

namespace sandbox {

// Carries out one call within the model's transaction. Throws Refusal with the model unchanged or
// half changed; the caller then drops the transaction. A utility without rows is refused, unless
// the state directory says that such ones succeed.
Answer serveFromModel(Model& model, const Call& call);

// The answers of a panel without a model: everything succeeds.
Answer serveWithoutModel(const Call& call);

}  // namespace sandbox
