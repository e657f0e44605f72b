#include "exec/arg_list.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace zelvo {

ArgList::ArgList(const ArgList& other) : ArgList() {
    entries_.reserve(other.entries_.size());
    for (std::size_t i = 0; i < other.size(); ++i) {
        push_back(other[i]);
    }
}

ArgList& ArgList::operator=(const ArgList& other) {
    ArgList copy(other);
    entries_.swap(copy.entries_);
    return *this;
}

ArgList::~ArgList() {
    for (char* entry : entries_) {
        free(entry);
    }
}

void ArgList::push_back(const std::string& argument) {
    entries_.reserve(entries_.size() + 1);
    char* const copy = strdup(argument.c_str());
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    entries_.back() = copy;
    entries_.push_back(nullptr);
}

}  // namespace zelvo
