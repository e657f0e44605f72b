// The one way in which outside bytes become a document. Its elements carry their place in the
// document's order, for queries.
#pragma once

#include <string>

#include "xml/libxml_types.h"

namespace zelvo {

// Makes libxml2 refuse, from now on and in the whole process, to fetch what a document, a schema or
// a stylesheet names by a network URL. Called by all that reads.
void refuseNetwork();

// Parses a file; "-" is standard input. Entities of the document itself are expanded. Gives null
// for what is not well-formed, refers to an entity in another file, or goes beyond libxml2's limits
// of depth and expansion; what is wrong with it goes to libxml2's generic error function. The
// caller owns the document.
xmlDoc* parseXmlFile(const char* fileName);

// The same for a text in memory. A text of 2 GB or more gives null.
xmlDoc* parseXmlText(const std::string& text);

// The number of elements of a document that one of the two functions made; 0 of any other.
unsigned long elementCount(const xmlDoc* doc);

}  // namespace zelvo
