// A variable of the process's own environment for the time of one call into a library that looks
// there.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace zelvo {

// Sets a variable of the environment as long as it lives, and then puts back what was there.
class ScopedVariable {
  public:
    ScopedVariable(const std::string& name, const std::string& value) : name_(name) {
        if (const char* before = getenv(name_.c_str())) {
            before_ = before;
        }
        setenv(name_.c_str(), value.c_str(), 1);
    }
    ~ScopedVariable() {
        if (before_) {
            setenv(name_.c_str(), before_->c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace zelvo
