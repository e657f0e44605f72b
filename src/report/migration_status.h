// The record of where a migration stands, kept in a document that the caller polls.
#pragma once

#include <memory>
#include <string>

namespace zelvo {

// What an agent does on its host.
enum class agentOperation { deploy = 0, wait = 1 };

// What the current object is.
enum class objectType { account = 0, domain = 1 };

// The record. Numbers are strings of decimal digits; sizes are in bytes. The setters only store,
// and most of them move the record on to the phase that their value belongs to.
class MigrationStatus {
  public:
    virtual ~MigrationStatus() = default;

    // Nothing is under way.
    virtual void setIdle() = 0;
    // The host of the agent, which the agent and transfer phases show.
    virtual void setAgentParams(const std::string& host) = 0;
    // An agent is at work.
    virtual void setAgentOperation(agentOperation operation) = 0;
    // The speed of the transfer; empty if it is not known.
    virtual void setTransferSpeed(const std::string& speed) = 0;
    // The dump is being transferred.
    virtual void setTransferDump() = 0;
    // Content files are being transferred; all of them are left. size may be empty.
    virtual void setTransferTotals(const std::string& files, const std::string& size) = 0;
    virtual void setTransferFilesLeft(const std::string& files) = 0;
    virtual void setTransferSizeLeft(const std::string& size) = 0;
    // The file under way, with all of its size left; size may be empty.
    virtual void setCurrentFile(const std::string& name, const std::string& size) = 0;
    virtual void setTransferCurrentFileSizeLeft(const std::string& size) = 0;
    // Deployment: how much there is, and how much of it is done.
    virtual void setDeployTotals(const std::string& accounts, const std::string& domains) = 0;
    virtual void setDeploy(const std::string& accounts, const std::string& domains) = 0;
    // The object that deployment is busy with.
    virtual void setCurrentObject(const std::string& name, objectType type) = 0;
    // The dump is being translated.
    virtual void setTranslate() = 0;
    // Writes the record. Raises what tXmlDocument::saveToFileAtomically raises.
    virtual void saveFile() = 0;
};

// The record of the session's file "migration.status", at first idle. The file is written by
// saveFile, and once more when the record dies, so that the last state always reaches the disk; a
// write that fails then goes to both logs, since a destructor has nobody to tell.
std::unique_ptr<MigrationStatus> createMigrationStatusFile();

}  // namespace zelvo
