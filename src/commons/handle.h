// Owner of one value of a C library: checked when it is taken over, released once.
#pragma once

#include <cstdlib>

#include "commons/errors.h"

class NonCopyableConcept {
  public:
    NonCopyableConcept(const NonCopyableConcept&) = delete;
    NonCopyableConcept& operator=(const NonCopyableConcept&) = delete;

  protected:
    NonCopyableConcept() = default;
    ~NonCopyableConcept() = default;
};

namespace zelvo {

// Accepts what is not null.
template <class T>
struct DefaultValidationPolicy {
    static bool isValid(const T& value) { return value != nullptr; }
};

// Releases what malloc and its kin (strdup among them) gave.
template <class T>
struct DefaultDestructionFunc {
    void operator()(T value) const { free(value); }
};

// Owns a value and applies DestructionFunc to it at the end.
template <class T, class DestructionFunc = DefaultDestructionFunc<T>,
          class ValidationPolicy = DefaultValidationPolicy<T>>
class Handle : private NonCopyableConcept, private ValidationPolicy {
  public:
    // Takes the value over; a value that the policy refuses raises InvalidHandle.
    explicit Handle(T value) : value_(value) {
        if (!ValidationPolicy::isValid(value)) {
            // The one place of every handle failure, whatever instance it comes from.
            throw Exc<&InvalidHandle>(__PRETTY_FUNCTION__, "./handle", __LINE__);
        }
    }
    ~Handle() { DestructionFunc()(value_); }

    T get() const { return value_; }

  private:
    T value_;
};

}  // namespace zelvo
