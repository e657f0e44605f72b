// The errors of the object deployers, with their message templates.
#pragma once

#include "commons/errors.h"

ERROR_TAG(FailedClientDeployment, "Failed deployment of client %1%");
ERROR_TAG(FailedDomainDeployment, "Failed deployment of domain %1%");
ERROR_TAG(SkipDomainDueToTemplateHosting,
          "Domain %1% has not enabled hosting, but domain template you trying to apply has. This "
          "situation can not be resolved automatically. Please ether create physical hosting on "
          "the domain or use domain template without hosting disabled, and migrate this domain "
          "again");
ERROR_TAG(EmptyIp, "IP address should be specified for domain %1%");
ERROR_TAG(ResumeDomainFailed,
          "The resume of domain failed. The domain may be unavailable after restore. Please, "
          "resume it manually. Error message: %1%");
ERROR_TAG(FailedSubdomainDeployment, "Failed deployment of subdomain %1% (domain %2%)");
ERROR_TAG(FailedProtDirDeployment, "Failed deployment of prot.directory %1% (domain %2%)");
ERROR_TAG(FailedProtDirUserDeployment,
          "Failed deployment of user %1% of prot.directory %2% (domain %3%)");
ERROR_TAG(FailedWebuserDeployment, "Failed deployment of webuser %1% (domain %2%)");
ERROR_TAG(FailedMailuserDeployment, "Failed deployment of mail user %1%@%2%");
ERROR_TAG(FailedDatabaseDeployment, "Failed deployment of database %1% (domain %2%)");
ERROR_TAG(FailedDatabaseUserDeployment, "Failed deployment of database user %1% of database %2%");
ERROR_TAG(FailedSiteAppDeployment, "Can not deploy site application %1% on domain %2%");
ERROR_TAG(NoSiteAppPackage, "SiteApplicationPackage %1% does not exist.");
ERROR_TAG(NoSiteAppDistribution,
          "SiteApplicationPackage %1% does not exist, and the dump has no distribution of it.");
ERROR_TAG(SkippedDatabaseDeployment,
          "Skipped deployment of database %1% (domain %2%): administrator credentials not set");
ERROR_TAG(PostgresMigrationIsImpossibleToLowerVersion,
          "Migration of PostgreSQL databases content is impossible to lower version. Domain: %1% , "
          "Database: %2%");
ERROR_TAG(IncompatibleDbPasswordVersion,
          "Cannot add user %1% to database because of new password style and mysql server is too "
          "old");
ERROR_TAG(CantReadPkgVersion, "Can not read the version of package %1%: %2%");
ERROR_TAG(ClientDoesNotExist, "Client %1% does not exist, but is expected to.");
ERROR_TAG(UnknownParentClassObject, "Cannot find parent with guid '%1%' ['%2%'].");
ERROR_TAG(CantWriteTempFile, "Can not write temporary file '%1%': %2%.");
ERROR_TAG(NotValidSsoInfo, "Valid SSO information does not exist in Zelvo and in backup file");
ERROR_TAG(NotAProperSubdomain, "%1% is not a proper subdomain of %2%");
ERROR_TAG(UnsafeText, "The base64 text of %1% holds a NUL, which would cut it short");
