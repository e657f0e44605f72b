// The user id of a child that changes none.
#pragma once

#include <cstdint>
#include <limits>

namespace zelvo {

// Stands for "stay who you are"; the system has no user of that number.
inline constexpr std::uint32_t kKeepUser = std::numeric_limits<std::uint32_t>::max();

}  // namespace zelvo
