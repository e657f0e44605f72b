// Reads a document node by node, without building its tree: for what needs a few words of a
// document that may be big.
#pragma once

#include <memory>
#include <string>

typedef struct _xmlTextReader xmlTextReader;

extern "C" {
void xmlFreeTextReader(xmlTextReader* reader);
}

namespace zelvo {

// Stands in front of the document at first. No external entity is loaded, and one of the document
// itself stays a reference.
class XmlTextReader {
  public:
    // Raises tError_WrongInputFile for what is no regular file or cannot be opened.
    explicit XmlTextReader(const std::string& fileName);

    // Goes to the next node in the order of the document, the ends of elements included. Returns
    // false at the end of the document. Raises tError_ParseFile with libxml2's diagnostics.
    bool read();
    // Goes on to the next element. As read.
    bool readElement();

    // ---- of the node that it stands on:

    bool isElement() const;
    bool isElementEnd() const;
    // With blank text and CDATA.
    bool isText() const;
    bool isEntityReference() const;
    // <name/>, which has no end of its own.
    bool isEmptyElement() const;
    // With its prefix.
    std::string name() const;
    // Without it, as the nodes of a tree are named.
    std::string localName() const;
    // The text of a text node.
    std::string value() const;
    // Empty for an attribute that the element does not have.
    std::string attribute(const std::string& name) const;
    // The markup inside the element. Raises tError_ParseFile.
    std::string innerXml();

  private:
    struct Free {
        void operator()(xmlTextReader* reader) const { xmlFreeTextReader(reader); }
    };

    [[noreturn]] void raise() const;

    std::string fileName_;
    // Of its own place in memory: the library has its address.
    std::unique_ptr<std::string> errors_ = std::make_unique<std::string>();
    std::unique_ptr<xmlTextReader, Free> reader_;
};

}  // namespace zelvo
