#include "restore/objects/account_template.h"

#include <utility>

#include "restore/objects/template_items.h"

namespace zelvo {

ClientTemplateDeployer::ClientTemplateDeployer(std::string owner) : owner_(std::move(owner)) {}

void ClientTemplateDeployer::act(XmlNode node) const {
    deployTemplate("client", owner_, node, [&node](CmdLine& cmd) {
        fillCmd(cmd, node);
        appendSharedAttribute(node, cmd);
        appendIpPoolOptions(node, cmd);
    });
}

void ClientTemplateDeployer::fillCmd(CmdLine& cmd, const XmlNode& node) {
    appendTemplateItems(node, cmd, OptionNames::kWithMinus,
                        {{"overuse"},
                         {"cp_access"},
                         {"create_domains"},
                         {"manage_phosting"},
                         {"manage_php_safe_mode"},
                         {"manage_quota"},
                         {"change_limits"},
                         {"manage_dns"},
                         {"manage_log"},
                         {"manage_crontab"},
                         {"manage_anonftp"},
                         {"manage_webapps"},
                         {"manage_maillists"},
                         {"manage_sh_access"},
                         {"manage_not_chroot_shell"},
                         {"manage_subdomains"},
                         {"manage_virusfilter"},
                         {"manage_drweb"},
                         {"allow_local_backups"},
                         {"allow_ftp_backups"},
                         {"remote_access_interface"},
                         {"manage_domain_aliases"},
                         {"manage_spamfilter"},
                         {"manage_dashboard"},
                         {"dashboard"},
                         {"stdgui"},
                         {"manage_webstat"},
                         {"manage_performance"},
                         {"max_dom"},
                         {"max_subdom"},
                         {"max_dom_aliases"},
                         {"disk_space"},
                         {"disk_space_soft"},
                         {"max_traffic"},
                         {"max_traffic_soft"},
                         {"max_wu"},
                         {"max_db"},
                         {"max_box"},
                         {"mbox_quota"},
                         {"max_redir"},
                         {"max_mg"},
                         {"max_resp"},
                         {"max_maillists"},
                         {"max_webapps"},
                         {"expiration", "-expiration", expirationValue},
                         {"site_wizard"},
                         {"select_db_server"},
                         {"use_wznet", "-wz-user"},
                         {"excl_ip_num"}});
}

ResellerTemplateDeployer::ResellerTemplateDeployer() : ClientTemplateDeployer("") {}

void ResellerTemplateDeployer::act(XmlNode node) const {
    deployTemplate("reseller", "", node, [&node](CmdLine& cmd) {
        fillCmd(cmd, node);
        appendIpPoolOptions(node, cmd);
    });
}

void ResellerTemplateDeployer::fillCmd(CmdLine& cmd, const XmlNode& node) {
    ClientTemplateDeployer::fillCmd(cmd, node);
    appendTemplateItems(node, cmd, OptionNames::kWithMinus,
                        {{"create_clients"}, {"allow_oversell"}, {"oversell"}, {"max_cl"}});
}

}  // namespace zelvo
