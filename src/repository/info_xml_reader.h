// What a repository needs of an info document, the document that describes a dump: whose it is,
// what content belongs to it, whether it is signed and valid.
#pragma once

#include <new>
#include <optional>
#include <string>
#include <vector>

#include "commons/exception.h"
#include "repository/temp_file_guard.h"
#include "repository/transport.h"
#include "xml/xml_document.h"

namespace zelvo {

// The root element of a signed document, around the dump's own.
inline constexpr const char* ENVELOPE_NAME = "Envelope";

// One content/cid element.
struct ContentEntry {
    // The directory of the files, relative to the dump's.
    std::string path;
    // The volumes of the archive.
    std::vector<std::string> files;
};

// A document is fetched when it is first asked for. Every operation raises XmlReaderError for a
// document that cannot be read, and the failures of the transport.
class tInfoXmlReader {
  public:
    static void XmlReaderError(bool) {}

    // transport: must outlive the reader. path: of the document in it.
    tInfoXmlReader(tRepositoryTransport* transport, std::string path)
        : transport_(transport), path_(std::move(path)) {}

    // Fetches the document, once.
    void RetreaveXmlInfo();
    // The local file of the document: as it was fetched, or as Sign or ValidateSign left it.
    const std::string& GetLocalPath();

    // Finds the type and the GUID of the object that the dump is of.
    void ReadObject();
    // The markup inside the first description; empty if there is none.
    std::string ReadDescription();
    // The content entries. Raises XmlReaderError as well for a document with a reference to an
    // entity of its own making.
    std::vector<ContentEntry> ReadContent();

    // Puts a signed document in the place of one that is not. Raises ExecCmd::Failed when the
    // signing fails, XmlReaderError for a tool that has not signed.
    void Sign();
    // Whether the signature is good. If so, the document without its envelope takes its place. It
    // is checked once. Raises XmlReaderError for a tool that gives no verdict.
    bool ValidateSign();
    // Whether it has been checked and is not good.
    bool isSignRefused() const { return isSignGood_ == false; }
    // Whether the document, without its envelope if it has one, is valid by the panel's schema.
    // What is wrong is told in the log. Raises XmlReaderError for a schema that cannot be read.
    bool ValidateZelvoXsd();

    // Removes the temporary files; the document is then again as it was fetched. The first raises
    // TransportError for a file that stays, when it has tried them all.
    void ClearTempFiles();
    void ClearTempFiles(std::nothrow_t) noexcept;

    // Of the object, after ReadObject: a type of GetTypeName, "server" at first.
    const std::string& object_type() const { return objectType_; }
    const std::string& object_guid() const { return objectGuid_; }

  private:
    // Runs the signing tool's command on the document; fills its output.
    int runSignTool(const std::string& command, std::string& output, bool mustSucceed);
    // Writes a document of some kind to a temporary file, which becomes the local one.
    void replaceDocument(const std::string& kind, const std::string& text);

    tRepositoryTransport* transport_;
    std::string path_;
    std::string objectType_ = "server";
    std::string objectGuid_;
    std::string fetchedPath_;
    // Of a document that is far away: what stays there is not fetched by the next reader.
    std::optional<TempFileGuard> fetchedCopy_;
    std::string localPath_;
    // None before the check.
    std::optional<bool> isSignGood_;
    std::vector<TempFileGuard> tempFiles_;
};

// The type word of an object's element: "server" for "admin", and the name itself for others.
std::string GetTypeName(const std::string& element);
// Whether an element of this name is an object.
bool IsValidTypeName(const std::string& element);

// Whether a document is signed: its root element is the envelope.
bool InfoXmlSigned(const tXmlDocument& document);
// The same of a local file, which is not read beyond that element.
// Raises tInfoXmlReader::XmlReaderError.
bool IsSigned(const std::string& file);

}  // namespace zelvo

ERROR_DEFINITION(zelvo::tInfoXmlReader::XmlReaderError, "tInfoXmlReader::XmlReaderError", "%1%");
