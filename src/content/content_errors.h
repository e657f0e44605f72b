// The errors of putting content into its place.
#pragma once

#include "commons/errors.h"
#include "commons/exception.h"

ERROR_TAG(CantMoveContent, "Can not move %1% to %2%: %3%");
ERROR_TAG(UnsafeName, "'%1%' can not be the name of %2%: %3%");
ERROR_TAG(UnsuitableOwner, "'%1%' can not be the owner of content: %2%");

// The content of a virtual host: %1% is the domain, or what stands in it and %2% the domain.
ERROR_TAG(CantUnpackDomainDocroot, "Can not deploy web-content of domain %1%");
ERROR_TAG(CantUnpackDomainDocrootSsl, "Can not deploy ssl-content of domain %1%");
ERROR_TAG(CantUnpackDomainCgi, "Can not deploy cgi-content of domain %1%");
ERROR_TAG(CantUnpackWebstat, "Can not deploy web statistics of domain %1%");
ERROR_TAG(CantUnpackFtpstat, "Can not deploy ftp statistics of domain %1%");
ERROR_TAG(CantUnpackErrorDocs, "Can not deploy error documents for domain %1%");
ERROR_TAG(CantUnpackPrivateData, "Can not deploy private data of domain %1%");
ERROR_TAG(CantUnpackLogs, "Can not deploy log files on domain %1%");
ERROR_TAG(CantUnpackDomainPublicAnonFtp, "Can not deploy anonymous ftp content of domain %1%");
ERROR_TAG(CantUnpackDomainContent, "Can not deploy content of domain %1%");
ERROR_TAG(CantUnpackWebuserContent, "Can not deploy web content of webuser %1% (domain %2%)");
ERROR_TAG(CantUnpackSubdomainDocroot, "Can not deploy web content of subdomain %1% (domain %2%)");
ERROR_TAG(CantUnpackSubdomainDocrootSsl,
          "Can not deploy ssl-content of subdomain %1% (domain %2%)");
ERROR_TAG(CantUnpackSubdomainCgi, "Can not deploy cgi content of subdomain %1% (domain %2%)");
ERROR_TAG(CantUnpackSubdomainConf, "Can not deploy conf directory of subdomain %1% (domain %2%)");

// Mail: %1% is the mail name or the list.
ERROR_TAG(CantUnpackMailboxContent, "Unable to unpack mailbox content for %1% on domain %2%");
ERROR_TAG(CantUnpackAttachments, "Unable to unpack mail attachments for %1% on domain %2%");
ERROR_TAG(CantUnpackSpamassassin, "Unable to unpack spamassassin bases for %1% on domain %2%");

ERROR_TAG(CantUnpackSkeleton, "Unable to unpack skeleton for client %1%");

namespace zelvo {
inline void IDNConversationError(bool) {}
}  // namespace zelvo
ERROR_DEFINITION(zelvo::IDNConversationError, "InternalIdnaLibraryError",
                 "IDN conversion error: %1%");
