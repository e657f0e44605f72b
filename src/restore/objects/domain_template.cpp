#include "restore/objects/domain_template.h"

#include "restore/toolbox/panel_command.h"
#include "xml/answer_document.h"

namespace zelvo {

namespace {

AnswerDocument askTemplate(const std::string& templateName) {
    return {askPanel("domain_template", {"-x", templateName}), "domain-template"};
}

}  // namespace

bool XmlDomainTemplate::hasPhysicalHosting() const {
    return element_.test("template-item[@name = 'vh_type'] = 'physical'");
}

bool XmlDomainTemplate::getWebmailStatus() const {
    return element_.test("template-item[@name = 'webmail'] = 'true'");
}

bool domainTemplateHasHosting(const std::string& templateName) {
    const AnswerDocument answer = askTemplate(templateName);
    return XmlDomainTemplate(answer.rootNode()).hasPhysicalHosting();
}

bool domainTemplateWebmailStatus(const std::string& templateName) {
    const AnswerDocument answer = askTemplate(templateName);
    return XmlDomainTemplate(answer.rootNode()).getWebmailStatus();
}

}  // namespace zelvo
