// The environment of a child, made ready in the parent: a child that shares its parent's memory
// must not call setenv.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace zelvo {

// Variables from name to value. Their order, byte-wise on the name, is the order in which they are
// set.
using Environment = std::map<std::string, std::string>;

// What a child gets of this process's environment. kBasic: PATH, HOME, TZ, LANG and LC_* alone, for
// a child that works for a stranger, who may read what the child can.
enum class Inherited { kAll, kBasic };

// This process's environment as it would be after one setenv with overwriting for each variable.
// Points into the process's own environment, so it is good until that changes.
class EnvironmentVector {
  public:
    // additions: what is set over the variables that are inherited. A name that setenv would refuse
    // (empty, or with a "=" in it) stops the work there and is told by error().
    explicit EnvironmentVector(const Environment& additions, Inherited inherited = Inherited::kAll);
    EnvironmentVector(const EnvironmentVector&) = delete;
    EnvironmentVector& operator=(const EnvironmentVector&) = delete;

    // "name=value" strings that end in a null entry.
    char* const* data() const { return entries_.data(); }

    // The value of the first variable of that name, or null.
    const char* find(const std::string& name) const;

    // The error number of the first variable that could not be set, or 0.
    int error() const { return error_; }

  private:
    // C strings, of which setenv sees no more than that.
    void set(const char* name, const char* value);

    std::vector<std::string> owned_;
    std::vector<char*> entries_;
    int error_ = 0;
};

}  // namespace zelvo
