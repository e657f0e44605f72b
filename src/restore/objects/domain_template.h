// What the panel's domain template of the command line asks for.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// Reads single items of a `domain-template` element.
class XmlDomainTemplate {
  public:
    // element: good as long as its document.
    explicit XmlDomainTemplate(const XmlNode& element) : element_(element) {}

    // The template's domains have web hosting of their own on this server.
    bool hasPhysicalHosting() const;
    // The template's domains have webmail.
    bool getWebmailStatus() const;

  private:
    XmlNode element_;
};

// Both ask the panel anew for the template of that name. They raise the failures of reading its
// answer (tError_ParseFile, tError_WrongDoc, AssertionFailed for an empty one) and ExecCmd::Failed
// when there is no answer but an error.
bool domainTemplateHasHosting(const std::string& templateName);
bool domainTemplateWebmailStatus(const std::string& templateName);

}  // namespace zelvo
