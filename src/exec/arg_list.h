// The argument vector of a child process, in the form that the exec family takes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zelvo {

// Owns C strings that end in one null entry at all times, so that data() can be handed to execve as
// it stands. A copy has strings of its own.
class ArgList {
  public:
    ArgList() : entries_(1, nullptr) {}
    ArgList(const ArgList& other);
    ArgList& operator=(const ArgList& other);
    ~ArgList();

    // Appends a copy of the argument, which ends at its first zero byte as every argument does.
    // Raises std::bad_alloc.
    void push_back(const std::string& argument);

    // The number of arguments, the null entry not counted.
    std::size_t size() const { return entries_.size() - 1; }

    // The argument at an index of at most size(); the entry at size() is null.
    const char* operator[](std::size_t index) const { return entries_[index]; }

    // The vector with its null entry. Owned by the list, good until the list changes.
    char* const* data() const { return entries_.data(); }

  private:
    std::vector<char*> entries_;
};

}  // namespace zelvo
