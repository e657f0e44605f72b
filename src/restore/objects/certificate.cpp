#include "restore/objects/certificate.h"

#include <list>
#include <utility>

#include "report/error_functions.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/panel_file.h"

namespace zelvo {

namespace {

// What a certificate consists of. None of it may stand among the arguments, where all users of the
// machine could read it.
struct Piece {
    const char* item;
    const char* prefix;
    const char* option;
};

constexpr Piece kPieces[] = {{"certificate-data", "rmk-cert-", "-cert-file"},
                             {"private-key", "rmk-privkey-", "-key-file"},
                             {"signing-request", "rmk-csr-", "-csr-file"},
                             {"ca-certificate", "rmk-cacert-", "-cacert-file"}};

}  // namespace

CertificateDeployer::CertificateDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void CertificateDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    const ObjectLogger logger(node.str("@name"), "SSL certificate");
    try {
        deploy(node);
    } catch (const ExTraceable& failure) {
        deploy_error_func_throw(failure);
    }
}

void CertificateDeployer::deploy(const XmlNode& node) const {
    const tDeployAction word(node);
    if (word.DeployActionCreate()) {
        create(node);
    } else if (word.DeployActionUpdate() && node.test("@current-name != @name")) {
        CliExec cmd = updateCommand("certificate", node.str("@current-name"));
        cmd << "-new-name" << node.str("@name");
        execInRepository(cmd, node);
    } else if (word.DeployActionDelete()) {
        CliExec cmd = commandOn("certificate", "--remove", node.str("@name"));
        execInRepository(cmd, node);
    }
}

void CertificateDeployer::create(const XmlNode& node) const {
    std::list<PanelFile> files;
    CliExec cmd = createCommand("certificate", node.str("@name"));
    for (const Piece& piece : kPieces) {
        if (node.test(piece.item)) {
            cmd << piece.option << files.emplace_back(piece.prefix, node.str(piece.item)).path();
        }
    }
    execInRepository(cmd, node);
}

void CertificateDeployer::execInRepository(CliExec& cmd, const XmlNode& node) const {
    if (!domainName_.empty()) {
        cmd << "-domain" << domainName_;
    } else {
        cmd << "-admin";
        if (node.test("@default = 'true'")) {
            cmd << "-default";
        }
    }
    cmd.exec();
}

}  // namespace zelvo
