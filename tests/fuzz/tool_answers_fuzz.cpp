// The answers of the panel's tools and of its gate with any bytes in them. The first byte says
// which tool answers.
#include <boost/lexical_cast.hpp>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "xml/tool_answers.h"

namespace {

void readGateAnswer(const std::string& text) {
    const auto answer = zelvo::getCliGateResponse(text);
    answer->isOk();
    answer->getError();
    answer->getStdout();
    answer->getStderr();
    answer->getReturn();
}

void readLocation(const std::string& text) {
    const auto location = zelvo::getAdminLocation(text);
    location->getCountry();
    location->getState();
    location->getZip();
}

void readCredentials(const std::string& text) {
    const auto credentials = zelvo::getDatabaseCredentials(text);
    credentials->notConfigured();
    credentials->getUsername();
    credentials->getPassword();
}

void readFileList(const std::string& text) {
    const auto list = zelvo::getFileList(text);
    list->getFileList();
    list->getTotalSize();
    list->getUnpackedSize();
}

void readAddresses(const std::string& text) { zelvo::getZelvoIpInfo(text); }

void (*const kReaders[])(const std::string&) = {readGateAnswer, readLocation, readCredentials,
                                                readFileList, readAddresses};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    try {
        kReaders[*data % std::size(kReaders)](text);
    } catch (const std::exception&) {
        // What is no such answer is refused; anything that is no exception is a fault.
    }
    return 0;
}
