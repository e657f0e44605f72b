#include "restore/toolbox/limit_number.h"

#include "restore/toolbox/whole_number.h"

namespace zelvo {

std::string limitNumber(const std::string& text, const std::string& what) {
    return std::to_string(wholeNumber(text, "limit '" + what + "'"));
}

}  // namespace zelvo
