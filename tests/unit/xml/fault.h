// What a test reads of a failure.
#pragma once

#include <string>
#include <utility>

#include "commons/exception.h"

namespace test {

// The code and the message of the failure that the call raises; both empty if it raises none.
template <class Call>
std::pair<std::string, std::string> faultOf(Call&& call) {
    try {
        call();
    } catch (const zelvo::ExTraceable& failure) {
        return {static_cast<const std::runtime_error&>(failure).std::runtime_error::what(),
                failure.what()};
    }
    return {};
}

using Fault = std::pair<std::string, std::string>;

}  // namespace test
