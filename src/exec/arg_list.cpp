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
    entries_.push_back(nullptr);
    char* const copy = strdup(argument.c_str());
    if (copy == nullptr) {
        entries_.pop_back();
        throw std::bad_alloc();
    }
    entries_[entries_.size() - 2] = copy;
}

}  // namespace zelvo
