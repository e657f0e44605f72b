// The names that tar prints of what it unpacks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelvo {

// A name as it stands in the archive. told: with the escapes of C for what is not printable and for
// a backslash (GNU tar, quoting style "escape").
std::string nameOfTold(std::string_view told);

// The names of a listing, in its order. told: one name a line, each as above.
std::vector<std::string> namesOfListing(std::string_view told);

}  // namespace zelvo
