#include "commons/files.h"

#include "lib/idn.h"
#include "lib/read_configuration.h"

namespace zelvo::files {

namespace {

std::string configured(qrd_conf_variable variable) { return qrdConfGetDefaultByIndex(variable); }

std::string inProduct(const std::string& path) { return configured(PRODUCT_ROOT_D) + path; }

std::string inRmk(const std::string& path) { return getRmkDir() + path; }

}  // namespace

std::string getRmkDir() { return inProduct("/RMK"); }

std::string agents::getDir() { return inRmk("/agents"); }

std::string getTmpDir() { return inRmk("/tmp"); }

std::string getZelvoSappPoolFixedXsl() { return inRmk("/agents/ZelvoX/control/fix_sapp_pool.xsl"); }

std::string getCorrectAwStatisticsFileName() { return inRmk("/correct_aw_statistics.pl"); }

std::string getScoutFileName() { return inRmk("/scout.pl"); }

std::string getZelvoRestoreSpecificationXsdFileName() {
    return inRmk("/restore-specification.xsd");
}

std::string getZelvoXsdFileName() { return inRmk("/zelvo.xsd"); }

std::string getZelvoDtdFileName() { return inRmk("/zelvo.dtd"); }

std::string getSAConvertFileName() { return inRmk("/sa_convert.sh"); }

std::string getMb2mdFileName() { return inRmk("/mb2md.pl"); }

std::string getRmkLogConfigFileName() { return inRmk("/log4cpp.properties"); }

std::vector<std::string> getPhpExecuteCmd() { return {inProduct("/bin/xt-engine-zelvorun")}; }

std::string getSuspendHandlerUtility() {
    return inProduct("/admin/vlib/backup/suspend_handler/SuspendHandlerRunner.php");
}

std::string getChrootShellFileName() { return inProduct("/bin/chrootsh"); }

std::string getDirectCliUtilityPath(const std::string& name) {
    return inProduct("/admin/vlib/api-cli/" + name + ".php");
}

std::string getDirectCliBackupUtilityPath(const std::string& name) {
    return inProduct("/admin/vlib/backup/" + name + ".php");
}

std::string getZelvoUtilityPath(const std::string& name) {
    return inProduct("/admin/sbin/" + name);
}

std::string getCidExtractorFileName() { return getZelvoUtilityPath("cid_unpacker"); }

std::string getMailmanArchFileName() { return configured(MAILMAN_ROOT_D) + "/bin/arch"; }

std::string getMailmanVarDir() { return configured(MAILMAN_VAR_D); }

std::string getPgsqlBinDir() { return configured(PGSQL_BIN_D); }

std::string getMysqlBinDir() { return configured(MYSQL_BIN_D); }

std::string getMailDir() { return configured(ZELVO_MAILNAMES_D); }

std::string getVhostsDir() { return configured(HTTPD_VHOSTS_D); }

std::string getVhostDir(const std::string& domain) {
    return getVhostsDir() + "/" + idn::toAscii(domain);
}

std::string getRemoteDumpingStatusFileName() { return "dumping-status.xml"; }

}  // namespace zelvo::files
