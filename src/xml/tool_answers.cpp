#include "xml/tool_answers.h"

#include <libxml/tree.h>

#include <boost/lexical_cast.hpp>

#include "xml/answer_document.h"

namespace zelvo {

namespace {

class XmlAdminLocation : public AnswerDocument, public AdminLocation {
  public:
    explicit XmlAdminLocation(const std::string& text) : AnswerDocument(text, "admin") {}

    std::string getCountry() const override { return str("country"); }
    std::string getState() const override { return str("state"); }
    std::string getZip() const override { return str("zip"); }
};

class XmlCliGateResponse : public AnswerDocument, public CliGateResponse {
  public:
    explicit XmlCliGateResponse(const std::string& text) : AnswerDocument(text, "cli") {}

    bool isOk() const override { return test("ok"); }
    std::string getError() const override { return str("failure"); }
    long long getReturn() const override { return boost::lexical_cast<long long>(str("return")); }
    std::string getStdout() const override { return str("stdout"); }
    std::string getStderr() const override { return str("stderr"); }
};

class XmlDatabaseCredentials : public AnswerDocument, public DatabaseCredentials {
  public:
    explicit XmlDatabaseCredentials(const std::string& text)
        : AnswerDocument(text, "credentials") {}

    bool notConfigured() const override { return test("not-configured"); }
    std::string getUsername() const override { return str("username"); }
    std::string getPassword() const override { return str("password"); }
};

class XmlAgentFileList : public AnswerDocument, public AgentFileList {
  public:
    explicit XmlAgentFileList(const std::string& text) : AnswerDocument(text, "contentlist") {}

    unsigned long long getTotalSize() const override { return sizeAttribute("size"); }
    unsigned long long getUnpackedSize() const override { return sizeAttribute("unpacked"); }
    const std::list<DumpFile>& getFileList() const override { return files_; }

    // Reads the list of files.
    void parse();

  private:
    unsigned long long sizeAttribute(const char* name) const {
        return boost::lexical_cast<unsigned long long>(getAttribute(root(), name));
    }
    DumpFile readFile(xmlNode* file) const;

    std::list<DumpFile> files_;
};

void XmlAgentFileList::parse() {
    for (xmlNode* child = root()->children; child != nullptr; child = child->next) {
        if (stringEq(child->name, "file")) {
            files_.push_back(readFile(child));
        }
    }
}

DumpFile XmlAgentFileList::readFile(xmlNode* file) const {
    DumpFile read;
    read.size = boost::lexical_cast<long long>(attributeOr(file, "size", "0"));
    read.md5sum = attributeOr(file, "md5sum", "");
    read.name = getNodeText(file);
    return read;
}

ZelvoIp readIp(const XmlNode& ip) { return {ip.test("def_domain"), ip.getNode("type").str(".")}; }

}  // namespace

std::unique_ptr<AdminLocation> getAdminLocation(const std::string& text) {
    return std::make_unique<XmlAdminLocation>(text);
}

std::unique_ptr<CliGateResponse> getCliGateResponse(const std::string& text) {
    return std::make_unique<XmlCliGateResponse>(text);
}

std::unique_ptr<DatabaseCredentials> getDatabaseCredentials(const std::string& text) {
    return std::make_unique<XmlDatabaseCredentials>(text);
}

std::unique_ptr<AgentFileList> getFileList(const std::string& text) {
    auto list = std::make_unique<XmlAgentFileList>(text);
    list->parse();
    return list;
}

std::map<std::string, ZelvoIp> getZelvoIpInfo(const std::string& text) {
    const AnswerDocument answer(text, "ipinfo");
    std::map<std::string, ZelvoIp> addresses;
    for (const XmlNode& ip : answer.nodes("ip")) {
        addresses[ip.str("@name")] = readIp(ip);
    }
    return addresses;
}

}  // namespace zelvo
