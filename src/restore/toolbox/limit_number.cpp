#include "restore/toolbox/limit_number.h"

#include <boost/lexical_cast.hpp>

namespace zelvo {

std::string limitNumber(const std::string& text, const std::string& what) {
    try {
        return std::to_string(boost::lexical_cast<long long>(text));
    } catch (const boost::bad_lexical_cast&) {
        throw LimitConversionError("The value of the limit '" + what + "' is not a number: '" +
                                   text + "'");
    }
}

}  // namespace zelvo
