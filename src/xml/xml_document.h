// XML documents: read, built, written in place or by an atomic replacement. Documents are untrusted
// input: only a document's own entities are expanded while reading, and counted; no external subset
// is loaded and nothing is fetched from the network.
#pragma once

#include <boost/filesystem/path.hpp>
#include <iosfwd>
#include <string>

#include "xml/pointer.h"

namespace zelvo {

// Whether a replaced file must outlive a crash of the machine.
enum class Durability {
    // The kernel writes it when it likes: for files that are rewritten many times in a run.
    kCached,
    // The data has reached the disk before the file gets its name.
    kSynced,
};

// A document. Copies share it, and the last one frees it.
class tXmlDocument {
  public:
    // A new empty document.
    tXmlDocument();
    // Reads a file; "-" is standard input. Raises what readFromFile raises.
    explicit tXmlDocument(const char* fileName);
    explicit tXmlDocument(const boost::filesystem::path& file);
    // Parses the text. Raises AssertionFailed for an empty text and tError_ParseFile, which then
    // calls the file "-".
    explicit tXmlDocument(const std::string& content);
    tXmlDocument(const tXmlDocument&) = default;
    tXmlDocument& operator=(const tXmlDocument&) = default;
    virtual ~tXmlDocument() = default;

    // Writes the document in place; "-" is standard output. Raises AssertionFailed for a null or
    // empty name and tError_SaveFile.
    virtual void saveToFile(const char* fileName);
    // The same, through the form above.
    virtual void saveToFile(const std::string& fileName);
    // Writes to standard output; gives 0. Raises tError_SaveFile.
    virtual int saveToStdout();

    // Replaces the held document by a new empty one, version "1.0". Raises tError_XmlInternal.
    void createNewDoc();

    // Replaces the held document by that of the file and gives 1. "-" is standard input. Raises
    // AssertionFailed for a null or empty name, tError_WrongInputFile for what is missing or no
    // regular file, tError_ParseFile with libxml2's diagnostics; after the last the object holds
    // no document and is good for nothing.
    int readFromFile(const char* fileName);

    // Writes into the buffer, which libxml2 closes and frees. Gives the number of bytes written.
    // Raises AssertionFailed for a null buffer and tError_SaveFile.
    int saveToBuffer(xmlOutputBuffer* buffer);

    // Writes into the stream and leaves it open. Raises what saveToBuffer raises.
    void saveToStream(std::ostream& stream);

    // Replaces the file in one step, so that a reader sees the old whole document or the new whole
    // one. The new file belongs to the user and group "qrdadm" with mode 0600. Raises
    // CantCreateTempFile, tError_SaveFile, CantTakeFileOwnership, CantRenameFile; the target is
    // then as it was, and behind all but the first the temporary file is left beside it.
    void saveToFileAtomically(const std::string& path, Durability durability = Durability::kCached);

    // The library's document, which stays owned here.
    xmlDoc* doc() const { return doc_.get(); }

  protected:
    // Shares a document.
    explicit tXmlDocument(const XmlDocPtr& doc);

  private:
    XmlDocPtr doc_;
};

// A document that knows its root element and can be built.
class tXmlRmkDocument : public tXmlDocument {
  public:
    // The same as of tXmlDocument; the root is null until one of the init operations has run.
    using tXmlDocument::tXmlDocument;
    tXmlRmkDocument() = default;

    // Makes the root element. Raises tError_XmlInternal.
    void initNewDoc(const char* rootName);

    // Finds the root element of a document that was read. Raises tError_EmptyDoc if there is none
    // and tError_WrongDoc if it has another name.
    void initFileDoc(const char* rootName);

    // The root element; null before one of the init operations.
    xmlNode* root() const { return root_; }

    // The first child of the root with this name. Raises tError_WrongContent if there is none.
    xmlNode* getRootNodeChild(const char* name) const;

    // The attribute's value, empty if it is there and empty. Raises NoSuchAttribute.
    std::string getAttribute(xmlNode* node, const std::string& name) const;

    // The element's text with entity references substituted. An element without text ends in
    // std::logic_error, which no guard around an object catches: to be called only where there is
    // text.
    std::string getNodeText(xmlNode* node) const;

    // Sets or replaces an attribute. Markup in the value is escaped when the document is written;
    // what XML cannot hold is replaced (see toXmlText).
    void addAttribute(xmlNode* node, const std::string& name, const std::string& value);

    // Adds a child with this text and returns it, owned by the document. The text is treated as in
    // addAttribute. A null parent adds nothing and gives null.
    xmlNode* newTextChild(xmlNode* parent, const std::string& name, const std::string& text);

    // Adds an empty child and returns it, owned by the document.
    xmlNode* newChild(xmlNode* parent, const std::string& name);

    // Removes a node with all that is below it, or all children of a node and not its attributes.
    void removeNode(xmlNode* node);
    void removeChildren(xmlNode* parent);

    static bool stringEq(const xmlChar* left, const std::string& right);

  private:
    xmlNode* root_ = nullptr;
};

}  // namespace zelvo
