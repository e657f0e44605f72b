// What the panel's utilities answer: each call is looked up by utility and
// first argument, judged against the model, and carried out on it.
#pragma once

#include "call.h"

#include <stdexcept>
#include <string>

namespace sandbox {

class Model;

struct Answer {
    int status = 0;
    std::string out;
    std::string err;
};

// Why a utility did not do as it was told; becomes its line on standard error
// and exit code 1.
class Refusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Carries out one call within the model's transaction. Throws Refusal with the
// model unchanged or half changed; the caller then drops the transaction.
// A utility that the model knows nothing of succeeds without a word.
Answer serveFromModel(Model& model, const Call& call);

// The answers of a panel without a model: everything succeeds.
Answer serveWithoutModel(const Call& call);

}  // namespace sandbox
