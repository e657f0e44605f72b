// Where the panel's installation keeps what a run uses: the only place that spells an installed
// path. The roots come from the panel's configuration or its compile-time defaults; nothing is
// tested for existence.
#pragma once

#include <string>
#include <vector>

namespace zelvo::files {

// The root of the migration tools.
std::string getRmkDir();

namespace agents {

// The directory with one directory for each migration agent.
std::string getDir();

}  // namespace agents

std::string getTmpDir();
std::string getZelvoSappPoolFixedXsl();
std::string getCorrectAwStatisticsFileName();
std::string getScoutFileName();
std::string getZelvoRestoreSpecificationXsdFileName();
std::string getZelvoXsdFileName();
std::string getZelvoDtdFileName();
std::string getSAConvertFileName();
std::string getMb2mdFileName();
// The configuration of the debug log.
std::string getRmkLogConfigFileName();

// The head of a command that runs a PHP script of the panel: a program and its first arguments.
std::vector<std::string> getPhpExecuteCmd();
std::string getSuspendHandlerUtility();
std::string getChrootShellFileName();

// A utility that can also be called through the gate. name: without directory and extension.
std::string getDirectCliUtilityPath(const std::string& name);
std::string getDirectCliBackupUtilityPath(const std::string& name);
// A utility that is only run directly. name: the file's name.
std::string getZelvoUtilityPath(const std::string& name);
std::string getCidExtractorFileName();

std::string getMailmanArchFileName();
std::string getMailmanVarDir();
std::string getPgsqlBinDir();
std::string getMysqlBinDir();
std::string getMailDir();
std::string getVhostsDir();
// The directory of a domain. domain: its name in UTF-8, which is converted to ASCII. Raises
// idn::IdnaError for a name that has no ASCII form.
std::string getVhostDir(const std::string& domain);

// The bare name, without a directory, of the file in which an agent reports its dumping state.
std::string getRemoteDumpingStatusFileName();

}  // namespace zelvo::files
