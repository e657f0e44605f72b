#include "report/migration_status.h"

#include <unistd.h>

#include "commons/session.h"
#include "report/debug_log.h"
#include "report/error_functions.h"
#include "xml/xml_document.h"

namespace zelvo {

namespace {

// The record as the document "migration.status" of the session.
class XmlMigrationStatus : public tXmlRmkDocument, public MigrationStatus {
  public:
    XmlMigrationStatus() { initNewDoc("migration-status"); }
    ~XmlMigrationStatus() override;
    XmlMigrationStatus(const XmlMigrationStatus&) = delete;
    XmlMigrationStatus& operator=(const XmlMigrationStatus&) = delete;

    void setIdle() override { state_ = State::idle; }
    void setAgentParams(const std::string& host) override { host_ = host; }
    void setAgentOperation(agentOperation operation) override;
    void setTransferSpeed(const std::string& speed) override { speed_ = speed; }
    void setTransferDump() override { state_ = State::transferDump; }
    void setTransferTotals(const std::string& files, const std::string& size) override;
    void setTransferFilesLeft(const std::string& files) override;
    void setTransferSizeLeft(const std::string& size) override;
    void setCurrentFile(const std::string& name, const std::string& size) override;
    void setTransferCurrentFileSizeLeft(const std::string& size) override;
    void setDeployTotals(const std::string& accounts, const std::string& domains) override;
    void setDeploy(const std::string& accounts, const std::string& domains) override;
    void setCurrentObject(const std::string& name, objectType type) override;
    void setTranslate() override { state_ = State::translate; }
    void saveFile() override;

  private:
    // The phase that the document shows.
    enum class State { idle, agent, transferDump, transferFiles, translate, deploy };

    void build();
    void buildAgent();
    xmlNode* buildTransfer();
    void buildFiles(xmlNode* transfer);
    void buildDeploy();

    State state_ = State::idle;
    agentOperation operation_ = agentOperation::deploy;
    std::string pid_;
    std::string host_;
    std::string speed_;
    std::string filesTotal_;
    std::string filesLeft_;
    std::string sizeTotal_;
    std::string sizeLeft_;
    std::string currentFileSizeLeft_;
    std::string currentFile_;
    std::string currentFileSize_;
    std::string totalAccounts_;
    std::string totalDomains_;
    std::string completedAccounts_;
    std::string completedDomains_;
    std::string currentObject_;
    objectType currentObjectType_ = objectType::account;
};

XmlMigrationStatus::~XmlMigrationStatus() {
    try {
        XmlMigrationStatus::saveFile();
    } catch (const ExTraceable& failure) {
        // Another failure may be under way, and it goes on; this one still reaches the caller
        // through the result document.
        deploy_error_func(failure);
    } catch (const std::exception& failure) {
        if (theDebugLog != nullptr) {
            theDebugLog->log(std::string(failure.what()));
        }
    }
}

void XmlMigrationStatus::setAgentOperation(agentOperation operation) {
    state_ = State::agent;
    operation_ = operation;
}

void XmlMigrationStatus::setTransferTotals(const std::string& files, const std::string& size) {
    state_ = State::transferFiles;
    filesTotal_ = filesLeft_ = files;
    sizeTotal_ = sizeLeft_ = size;
}

void XmlMigrationStatus::setTransferFilesLeft(const std::string& files) {
    state_ = State::transferFiles;
    filesLeft_ = files;
}

void XmlMigrationStatus::setTransferSizeLeft(const std::string& size) {
    state_ = State::transferFiles;
    sizeLeft_ = size;
}

void XmlMigrationStatus::setCurrentFile(const std::string& name, const std::string& size) {
    currentFile_ = name;
    currentFileSize_ = currentFileSizeLeft_ = size;
}

void XmlMigrationStatus::setTransferCurrentFileSizeLeft(const std::string& size) {
    state_ = State::transferFiles;
    currentFileSizeLeft_ = size;
}

void XmlMigrationStatus::setDeployTotals(const std::string& accounts, const std::string& domains) {
    state_ = State::deploy;
    totalAccounts_ = accounts;
    totalDomains_ = domains;
}

void XmlMigrationStatus::setDeploy(const std::string& accounts, const std::string& domains) {
    state_ = State::deploy;
    completedAccounts_ = accounts;
    completedDomains_ = domains;
}

void XmlMigrationStatus::setCurrentObject(const std::string& name, objectType type) {
    currentObject_ = name;
    currentObjectType_ = type;
}

void XmlMigrationStatus::saveFile() {
    pid_ = std::to_string(getpid());
    // The attributes of the root stay: pollers may see the numbers of a phase that has passed.
    removeChildren(root());
    // Without a parent this adds nothing: the document names no process.
    newTextChild(nullptr, "pid", pid_);
    build();
    saveToFileAtomically(theSession->getStatusFileName());
}

void XmlMigrationStatus::build() {
    switch (state_) {
        case State::idle:
            newChild(root(), "idle");
            break;
        case State::agent:
            buildAgent();
            break;
        case State::transferDump:
            newChild(buildTransfer(), "dumpfile");
            break;
        case State::transferFiles:
            buildFiles(buildTransfer());
            break;
        case State::translate:
            newChild(root(), "translate");
            break;
        case State::deploy:
            buildDeploy();
            break;
    }
}

void XmlMigrationStatus::buildAgent() {
    xmlNode* agent = newChild(root(), "agent");
    addAttribute(agent, "action", operation_ == agentOperation::deploy ? "deploy" : "wait");
    newTextChild(agent, "host", host_);
}

xmlNode* XmlMigrationStatus::buildTransfer() {
    xmlNode* transfer = newChild(root(), "transfer");
    if (!speed_.empty()) {
        addAttribute(transfer, "speed", speed_);
    }
    newTextChild(transfer, "host", host_);
    return transfer;
}

void XmlMigrationStatus::buildFiles(xmlNode* transfer) {
    xmlNode* files = newChild(transfer, "files");
    addAttribute(files, "total", filesTotal_);
    addAttribute(files, "left", filesLeft_);
    if (!sizeTotal_.empty() && !sizeLeft_.empty()) {
        addAttribute(files, "size-total", sizeTotal_);
        addAttribute(files, "size-left", sizeLeft_);
    }
    if (currentFile_.empty()) {
        return;
    }
    xmlNode* file = newTextChild(files, "current-file", currentFile_);
    if (!currentFileSize_.empty()) {
        addAttribute(file, "size", currentFileSize_);
        addAttribute(file, "size-left", currentFileSizeLeft_);
    }
}

void XmlMigrationStatus::buildDeploy() {
    addAttribute(root(), "total-accounts", totalAccounts_);
    addAttribute(root(), "total-domains", totalDomains_);
    addAttribute(root(), "completed-accounts", completedAccounts_);
    addAttribute(root(), "completed-domains", completedDomains_);
    if (!currentObject_.empty()) {
        xmlNode* object = newTextChild(root(), "current-object", currentObject_);
        addAttribute(object, "type",
                     currentObjectType_ == objectType::account ? "account" : "domain");
    }
}

}  // namespace

std::unique_ptr<MigrationStatus> createMigrationStatusFile() {
    return std::make_unique<XmlMigrationStatus>();
}

}  // namespace zelvo
