#include "restore/objects/custom_button.h"

#include <optional>
#include <utility>

#include "content/unpacked_file.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"
#include "xml/answer_document.h"

namespace zelvo {

namespace {

constexpr std::pair<const char*, const char*> kUrlComponents[] = {
    {"domain-id", "dom_id"},          {"domain-name", "dom_name"}, {"ftp-login", "ftp_user"},
    {"ftp-password", "ftp_pass"},     {"client-id", "cl_id"},      {"client-company-name", "cname"},
    {"client-contact-name", "pname"}, {"client-email", "email"}};

std::string urlComponents(const XmlNode& button) {
    std::string components;
    forEachNode(button, "url-option", CustomButtonDeployer::UrlOptionAppender(components));
    return components;
}

}  // namespace

void CustomButtonDeployer::UrlOptionAppender::operator()(const XmlNode& option) const {
    if (!components_.empty()) {
        components_ += ',';
    }
    const std::string name = option.str("@name");
    for (const auto& [known, component] : kUrlComponents) {
        if (name == known) {
            components_ += component;
        }
    }
}

CustomButtonDeployer::CustomButtonDeployer(std::string owner, std::vector<std::string>* createdIds)
    : owner_(std::move(owner)), createdIds_(createdIds) {}

void CustomButtonDeployer::act(XmlNode node) const {
    CliExec cmd = panelCommand("custombutton", {"--create", "-owner", owner_});
    appendOptions(node, cmd,
                  {{"-url", "@url", always},
                   {"-text", "@text", always},
                   {"-sort_key", "@sort-priority", always},
                   {"-place", "@interface-place", always},
                   {"-conhelp", "@conhelp", always},
                   {"-internal", "@open-in-same-frame", always},
                   {"-public", "@visible-to-sublogins", always}});
    std::optional<UnpackedFile> icon;
    if (hasCid(node, "icon")) {
        icon = extractor->extractIcons(getCid(node, "icon"));
        cmd << "-file" << icon->path();
    }
    cmd << "-url_comp" << urlComponents(node) << "-print-id";
    cmd.exec();
    const std::string id = AnswerDocument(cmd.stdout, "custombutton-id").str(".");
    if (createdIds_ != nullptr) {
        createdIds_->push_back(id);
    }
}

}  // namespace zelvo
