#include "repository/info_xml_reader.h"

#include "repository/info_xml_document.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// Reads one cid element, on whose start the reader stands, to its end.
ContentEntry readEntry(XmlTextReader& reader) {
    ContentEntry entry;
    entry.path = reader.attribute("path");
    if (reader.isEmptyElement()) {
        return entry;
    }
    bool isNameNext = false;
    while (reader.read() && !(reader.isElementEnd() && reader.name() == "cid")) {
        if (reader.isElement()) {
            isNameNext = reader.name() == "content-file" && !reader.isEmptyElement();
        } else if (reader.isElementEnd()) {
            isNameNext = false;
        } else if (isNameNext && reader.isText()) {
            entry.files.push_back(reader.value());
            isNameNext = false;
        }
    }
    return entry;
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
        while (reader.readElement()) {
            if (reader.name() == "cid") {
                content.push_back(readEntry(reader));
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
