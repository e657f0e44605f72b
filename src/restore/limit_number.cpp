#include "restore/limit_number.h"

#include <boost/lexical_cast.hpp>

namespace zelvo {

long long parseLimit(const std::string& text, const std::string& what) {
    try {
        return boost::lexical_cast<long long>(text);
    } catch (const boost::bad_lexical_cast&) {
        throw LimitConversionError("The value of the limit '" + what + "' is not a number: '" +
                                   text + "'");
    }
}

long long validateMbLimit(long long value, const std::string&) { return value; }

long long validateKbLimit(long long value, const std::string&) { return value; }

}  // namespace zelvo
