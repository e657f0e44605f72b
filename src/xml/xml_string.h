// The border between the strings of libxml2 and ours.
#pragma once

#include <string>

#include "xml/libxml_types.h"

namespace zelvo {

// The text as libxml2 takes it: owned by the argument, up to its first zero byte.
inline const xmlChar* toXmlChar(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

// A copy of a string that libxml2 keeps; null gives an empty one.
inline std::string toString(const xmlChar* text) {
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

// A copy of a string that libxml2 handed over, which is freed; null gives an empty one.
inline std::string takeXmlString(xmlChar* text) {
    std::string copy = toString(text);
    rmkFreeXmlChar(text);
    return copy;
}

}  // namespace zelvo
