// The small documents with which the panel's tools and the CLI gate answer. Each is read by a
// function that takes the whole text of the answer and raises, for what is no such answer,
// AssertionFailed (empty text), tError_ParseFile, tError_EmptyDoc or tError_WrongDoc. An element
// that the answer lacks is read as an empty string.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

namespace zelvo {

// Where the administrator lives.
class AdminLocation {
  public:
    virtual ~AdminLocation() = default;

    virtual std::string getCountry() const = 0;
    virtual std::string getState() const = 0;
    virtual std::string getZip() const = 0;
};

// How the CLI gate ran one command.
class CliGateResponse {
  public:
    virtual ~CliGateResponse() = default;

    // True if the gate could run the command, whatever came of it.
    virtual bool isOk() const = 0;
    // Why the gate could not.
    virtual std::string getError() const = 0;
    // The command's exit status. Raises boost::bad_lexical_cast for what is no number.
    virtual long long getReturn() const = 0;
    virtual std::string getStdout() const = 0;
    virtual std::string getStderr() const = 0;
};

// The login of a database server's administrator.
class DatabaseCredentials {
  public:
    virtual ~DatabaseCredentials() = default;

    // True if the panel knows of no such server.
    virtual bool notConfigured() const = 0;
    virtual std::string getUsername() const = 0;
    virtual std::string getPassword() const = 0;
};

// One file that belongs to a dump.
struct DumpFile {
    std::string name;
    // In bytes; 0 if the answer has none.
    long long size = 0;
    // In hexadecimal; empty if the answer has none.
    std::string md5sum;
};

// The files that belong to a dump.
class AgentFileList {
  public:
    virtual ~AgentFileList() = default;

    // The sum of the sizes in bytes, as they lie and unpacked. Both raise NoSuchAttribute if the
    // answer has none, and boost::bad_lexical_cast for what is no number.
    virtual unsigned long long getTotalSize() const = 0;
    virtual unsigned long long getUnpackedSize() const = 0;
    // In the order of the answer.
    virtual const std::list<DumpFile>& getFileList() const = 0;
};

// An IP address of the panel.
struct ZelvoIp {
    // True if the address has a default domain.
    bool defaultDomain = false;
    // "shared" or "exclusive", as the panel says it.
    std::string type;
};

// Root element "admin".
std::unique_ptr<AdminLocation> getAdminLocation(const std::string& text);
// Root element "cli".
std::unique_ptr<CliGateResponse> getCliGateResponse(const std::string& text);
// Root element "credentials".
std::unique_ptr<DatabaseCredentials> getDatabaseCredentials(const std::string& text);
// Root element "contentlist". Raises boost::bad_lexical_cast for a size that is no number.
std::unique_ptr<AgentFileList> getFileList(const std::string& text);
// Root element "ipinfo". By address; of an address that comes twice the later counts. Raises
// tError_XPath_CantEvaluate for an address without a type.
std::map<std::string, ZelvoIp> getZelvoIpInfo(const std::string& text);

}  // namespace zelvo
