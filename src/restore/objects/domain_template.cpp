#include "restore/objects/domain_template.h"

#include "restore/toolbox/panel_command.h"
#include "xml/xml_document.h"

namespace zelvo {

namespace {

// Gives ask an XmlDomainTemplate of the panel's answer, which lives no longer than the call.
template <class Ask>
bool askTemplate(const std::string& templateName, Ask ask) {
    tXmlRmkDocument answer(askPanel("domain_template", {"-x", templateName}));
    answer.initFileDoc("domain-template");
    return ask(XmlDomainTemplate(XmlNode(answer.doc(), answer.root())));
}

}  // namespace

bool XmlDomainTemplate::hasPhysicalHosting() const {
    return element_.test("template-item[@name = 'vh_type'] = 'physical'");
}

bool XmlDomainTemplate::getWebmailStatus() const {
    return element_.test("template-item[@name = 'webmail'] = 'true'");
}

bool domainTemplateHasHosting(const std::string& templateName) {
    return askTemplate(templateName,
                       [](const XmlDomainTemplate& asked) { return asked.hasPhysicalHosting(); });
}

bool domainTemplateWebmailStatus(const std::string& templateName) {
    return askTemplate(templateName,
                       [](const XmlDomainTemplate& asked) { return asked.getWebmailStatus(); });
}

}  // namespace zelvo
