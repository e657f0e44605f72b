#include "restore/domain/forwarding.h"

#include <string>

#include "commons/errors.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

void forward(const XmlNode& hosting, const DomainInfo& domain, const char* kind) {
    const std::string url = hosting.str(".");
    if (url.empty()) {
        throw EXC(AssertionFailed) % "is_xml_attr_set(attr_url)";
    }
    CliExec cmd = updateCommand("domain", domain.name);
    cmd << "-hosting"
        << "true"
        << "-ip" << domain.address << "-hst_type" << kind << "-target_url" << url;
    cmd.exec();
}

}  // namespace

void deploy_shosting(const XmlNode& shosting, const DomainInfo& domain) {
    forward(shosting, domain, "std");
}

void deploy_fhosting(const XmlNode& fhosting, const DomainInfo& domain) {
    forward(fhosting, domain, "frm");
}

}  // namespace zelvo
