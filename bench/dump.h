// Dumps of any size, for the benchmarks.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

// Writes a dump with that many domains below a fixed number of clients, so that a bigger dump has
// longer lists of siblings. Each domain has limits, an administrator, a status and a guid. Raises
// std::runtime_error.
void writeDump(const std::string& path, int domains);

// Writes a dump with that many domains with full hosting: settings, a subdomain, a web user, a
// protected directory, a zone, a certificate. They belong to the system user "customer", and the
// content of each is the archive "site.tar" beside the dump. Raises std::runtime_error.
void writeSitesDump(const std::string& path, int sites);

// Writes a dump of one domain with a zone of that many records. Raises std::runtime_error.
void writeZoneDump(const std::string& path, int records);

// Writes a dump of one domain with that many mail users, each with a password, a mailbox, an alias,
// a redirection and an automatic answer. Raises std::runtime_error.
void writeMailDump(const std::string& path, int users);

// Writes a dump of one domain with a mail list of that many members. Raises std::runtime_error.
void writeListDump(const std::string& path, int members);

// Writes a dump of a server with that many templates, of all kinds, and with an item of every
// fourth number in its vault and in the pool of a client. Raises std::runtime_error.
void writeServerDump(const std::string& path, int templates);

// The number of domains of a dump that is about so big.
int domainsIn(std::size_t bytes);

}  // namespace bench
