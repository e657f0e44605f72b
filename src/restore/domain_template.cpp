#include "restore/domain_template.h"

#include "restore/option_table.h"
#include "xml/xml_document.h"

namespace zelvo {

namespace {

// Gives ask an XmlDomainTemplate of the panel's answer, which lives no longer than the call.
template <class Ask>
bool askTemplate(const std::string& templateName, Ask ask) {
    CliExec cmd = panelCommand("domain_template");
    cmd << "-x" << templateName;
    if (cmd.exec(std::nothrow) != 0 && cmd.stdout.empty()) {
        // There is nothing to read, and the utility has said why.
        cmd.reportError();
    }
    tXmlRmkDocument answer(cmd.stdout);
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
