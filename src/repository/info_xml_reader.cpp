#include "repository/info_xml_reader.h"

#include "repository/info_xml_document.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// Goes to the next node. A restore expands an entity to whatever the document says, which may be
// names of files or elements with some, and this reader does not see them.
bool readPlain(XmlTextReader& reader) {
    if (!reader.read()) {
        return false;
    }
    if (reader.isEntityReference()) {
        throw EXC(tInfoXmlReader::XmlReaderError) %
            ("entity '" + reader.name() + "' in an info document");
    }
    return true;
}

// All text of an element that is not empty, on whose start the reader stands, to its end.
std::string readText(XmlTextReader& reader) {
    std::string text;
    for (int depth = 1; depth > 0 && readPlain(reader);) {
        if (reader.isText()) {
            text += reader.value();
        } else if (reader.isElementEnd()) {
            --depth;
        } else if (reader.isElement() && !reader.isEmptyElement()) {
            ++depth;
        }
    }
    return text;
}

// Appends one cid element, on whose start the reader stands, to its end, and those in it.
void readEntry(XmlTextReader& reader, std::vector<ContentEntry>& content) {
    ContentEntry entry;
    entry.path = reader.attribute("path");
    bool isOpen = !reader.isEmptyElement();
    while (isOpen && readPlain(reader)) {
        if (reader.isElementEnd()) {
            isOpen = reader.name() != "cid";
        } else if (reader.isElement() && reader.name() == "cid") {
            readEntry(reader, content);
        } else if (reader.isElement() && reader.name() == "content-file" &&
                   !reader.isEmptyElement()) {
            const std::string file = readText(reader);
            if (!file.empty()) {
                entry.files.push_back(file);
            }
        }
    }
    content.push_back(entry);
}

}  // namespace

void tInfoXmlReader::RetreaveXmlInfo() {
    if (fetchedPath_.empty()) {
        fetchedPath_ = transport_->GetLocalFile(path_);
        if (!transport_->GetReceivingDir().empty()) {
            fetchedCopy_.emplace(fetchedPath_);
        }
        localPath_ = fetchedPath_;
    }
}

const std::string& tInfoXmlReader::GetLocalPath() {
    RetreaveXmlInfo();
    return localPath_;
}

void tInfoXmlReader::ReadObject() {
    readDocument(GetLocalPath(), [&](XmlTextReader& reader) {
        while (reader.readElement()) {
            if (IsValidTypeName(reader.name())) {
                objectType_ = GetTypeName(reader.name());
                LogMsg("Xml rader: object type found: " + objectType_);
                objectGuid_ = reader.attribute("guid");
                LogMsg(objectGuid_.empty() ? "Xml rader: object guid is empty."
                                           : "Xml rader: object guid found: " + objectGuid_);
                return;
            }
        }
    });
}

std::string tInfoXmlReader::ReadDescription() {
    std::string description;
    readDocument(GetLocalPath(), [&](XmlTextReader& reader) {
        while (reader.readElement()) {
            if (reader.name() == "description") {
                description = reader.innerXml();
                return;
            }
        }
    });
    return description;
}

std::vector<ContentEntry> tInfoXmlReader::ReadContent() {
    std::vector<ContentEntry> content;
    readDocument(GetLocalPath(), [&](XmlTextReader& reader) {
        while (readPlain(reader)) {
            if (reader.isElement() && reader.name() == "cid") {
                readEntry(reader, content);
            }
        }
    });
    return content;
}

void tInfoXmlReader::ClearTempFiles() {
    localPath_ = fetchedPath_;
    isSignGood_.reset();
    std::vector<TempFileGuard> files = std::exchange(tempFiles_, {});
    // The guards behind one that fails remove their own.
    for (TempFileGuard& file : files) {
        file.remove();
    }
}

void tInfoXmlReader::ClearTempFiles(std::nothrow_t) noexcept {
    try {
        ClearTempFiles();
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
    } catch (...) {
        LogMsg("Unknown error when clear temp files");
    }
}

std::string GetTypeName(const std::string& element) {
    return element == "admin" ? "server" : element;
}

bool IsValidTypeName(const std::string& element) {
    return element == "server" || element == "admin" || element == "reseller" ||
           element == "client" || element == "domain";
}

}  // namespace zelvo
