#include "restore/toolbox/whole_number.h"

#include <boost/lexical_cast.hpp>

#include "commons/errors.h"

namespace zelvo {

std::int64_t wholeNumber(const std::string& text, const std::string& what) {
    try {
        return boost::lexical_cast<std::int64_t>(text);
    } catch (const boost::bad_lexical_cast&) {
        throw NumberConversionError("The value of the " + what + " is not a number: '" + text +
                                    "'");
    }
}

void refuseNonNumbers(const std::function<void()>& work) {
    try {
        work();
    } catch (const NumberConversionError& error) {
        throw EXC(AssertionFailed) % error.what();
    }
}

}  // namespace zelvo
