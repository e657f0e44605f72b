// Owners of what libxml2 hands out for the checks against schemas.
#pragma once

#include <libxml/xmlschemas.h>

#include <memory>

namespace zelvo {

template <auto Free>
struct Freeing {
    template <class T>
    void operator()(T* pointer) const {
        Free(pointer);
    }
};
using SchemaParserPtr = std::unique_ptr<xmlSchemaParserCtxt, Freeing<xmlSchemaFreeParserCtxt>>;
using SchemaPtr = std::unique_ptr<xmlSchema, Freeing<xmlSchemaFree>>;
using SchemaValidCtxtPtr = std::unique_ptr<xmlSchemaValidCtxt, Freeing<xmlSchemaFreeValidCtxt>>;

}  // namespace zelvo
