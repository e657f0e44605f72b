#include "content/vhost_refferred.h"

#include "collecting.h"
#include "commons/files.h"

using namespace test;
using testing::ElementsAre;
using zelvo::DomainVHostRefferred;

namespace {

using VHostTest = Collecting;
const std::string kLost = "UnExpectedResult: The resutl of operaion is unexpected: ";
const char* const kSub = "m\xc3\xbcll";

}  // namespace

// Catches a row with another place, owner, mode or failure. Ids: webmaster 4717, qrdcln 4718,
// qrdserv 4719, qrdftp 4720.
TEST_F(VHostTest, PutsEachKindInItsPlace) {
    using D = DomainVHostRefferred;
    const auto domain = [](D& d, const zelvo::XmlNode& e) { d.addDomainVhost(e); };
    const auto sub = [](D& d, const zelvo::XmlNode& e) { d.addSubDomain(e, kSub, "Webmaster"); };
    const auto user = [](D& d, const zelvo::XmlNode& e) { d.addDomainWebUser(e, "Webmaster"); };
    const auto ftp = [](D& d, const zelvo::XmlNode& e) { d.addDomainAnonFtp(e, "webmaster"); };
    const auto app = [](D& d, const zelvo::XmlNode& e) {
        d.addSiteApp(e, {"7", "wiki-1-2", "a/b"}, std::nullopt, "webmaster");
    };
    const auto subApp = [](D& d, const zelvo::XmlNode& e) {
        d.addSiteApp(e, {"7", "wiki-1-2", "", true}, kSub, "webmaster");
    };
    const struct {
        std::function<void(D&, const zelvo::XmlNode&)> add;
        const char* type;
        const char* to;
        const char* attributes;
        const char* failure;
    } rows[] = {
        {domain, "docroot", "/httpdocs", "40750 4717:4718",
         "DomainDocroot: Can not deploy web-content of domain a.com"},
        {domain, "docroot_ssl", "/httpsdocs", "40750 4717:4718",
         "DomainDocrootSsl: Can not deploy ssl-content of domain a.com"},
        {domain, "cgi", "/cgi-bin", "40750 4717:4718",
         "DomainCgi: Can not deploy cgi-content of domain a.com"},
        {domain, "conf", "/conf", "40755 0:0",
         "DomainContent: Can not deploy content of domain a.com"},
        {domain, "webstat", "/statistics/webstat", "40750 0:0",
         "Webstat: Can not deploy web statistics of domain a.com"},
        {domain, "webstat_ssl", "/statistics/webstat-ssl", "40750 0:0",
         "Webstat: Can not deploy web statistics of domain a.com"},
        {domain, "ftpstat", "/statistics/ftpstat", "40750 0:0",
         "Ftpstat: Can not deploy ftp statistics of domain a.com"},
        {domain, "anon_ftpstat", "/statistics/anon_ftpstat", "40750 0:0",
         "Ftpstat: Can not deploy ftp statistics of domain a.com"},
        {domain, "error_docs", "/error_docs", "40750 4717:4719",
         "ErrorDocs: Can not deploy error documents for domain a.com"},
        {domain, "private", "/private", "40750 4717:4718",
         "PrivateData: Can not deploy private data of domain a.com"},
        {domain, "admin_private", "/private/webmaster", "40750 4717:4718",
         "PrivateData: Can not deploy private data of domain a.com"},
        {domain, "logs", "/statistics/logs", "40750 0:4719",
         "Logs: Can not deploy log files on domain a.com"},
        {user, "webuser_home", "/web_users/webmaster", "40755 4717:4718",
         "WebuserContent: Can not deploy web content of webuser Webmaster (domain a.com)"},
        {user, "webuser_private", "/web_users/webmaster/private/", "40755 4717:4718",
         "WebuserContent: Can not deploy web content of webuser Webmaster (domain a.com)"},
        {ftp, "ftp_pub", "/anon_ftp/pub", "40750 4717:4718",
         "DomainPublicAnonFtp: Can not deploy anonymous ftp content of domain a.com"},
        {ftp, "ftp_incoming", "/anon_ftp/incoming", "40750 4717:4720",
         "DomainPublicAnonFtp: Can not deploy anonymous ftp content of domain a.com"},
        {sub, "docroot", "/subdomains/xn--mll-hoa/httpdocs", "40755 4717:4718",
         "SubdomainDocroot: Can not deploy web content of subdomain m\xc3\xbcll (domain a.com)"},
        {sub, "docroot_ssl", "/subdomains/xn--mll-hoa/httpsdocs", "40755 4717:4718",
         "SubdomainDocrootSsl: Can not deploy ssl-content of subdomain m\xc3\xbcll (domain a.com)"},
        {sub, "cgi", "/subdomains/xn--mll-hoa/cgi-bin", "40755 4717:4718",
         "SubdomainCgi: Can not deploy cgi content of subdomain m\xc3\xbcll (domain a.com)"},
        {sub, "conf", "/subdomains/xn--mll-hoa/conf", "40755 0:4719",
         "SubdomainConf: Can not deploy conf directory of subdomain m\xc3\xbcll (domain a.com)"},
        {app, "sapp-scripts", "/vault_scripts/7", "40755 0:4718",
         "DomainContent: Can not deploy content of domain a.com"},
        {app, "sapp-https-scripts", "/vault_https_scripts/7", "40755 0:4718",
         "DomainContent: Can not deploy content of domain a.com"},
        {app, "sapp-cgi-bin", "/cgi-bin/a/b", "40755 4717:4718",
         "DomainContent: Can not deploy content of domain a.com"},
        {app, "sapp-htdocs", "/httpdocs/a/b", "40755 4717:4718",
         "DomainContent: Can not deploy content of domain a.com"},
        {subApp, "sapp-htdocs", "/subdomains/xn--mll-hoa/httpsdocs/", "40755 4717:4718",
         "DomainContent: Can not deploy content of domain a.com"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.to);
        std::filesystem::remove_all(box("vhosts"));
        unpacked.clear();
        result.messages.clear();
        const Element element({{row.type, "a.tar", "off"}});
        DomainVHostRefferred collection(element, "a.com", "webmaster");
        row.add(collection, element);
        collection.Extract(unpacker);
        EXPECT_THAT(unpacked, ElementsAre("vhosts/a.com" + std::string(row.to) + " off"));
        EXPECT_EQ(unpacker.attributes, row.attributes);
        EXPECT_THAT(result.messages, ElementsAre());
        fails = [](const std::string&) { return true; };
        collection.Extract(unpacker);
        EXPECT_THAT(result.messages, ElementsAre(std::string("CantUnpack") + row.failure));
        fails = [](const std::string&) { return false; };
    }
}

// Catches a part that is unpacked twice or not at all, and a failure that reaches further than its
// content: of the whole, of a part, of a name that leads away, of an owner, of a strange archive.
TEST_F(VHostTest, UnpacksTheWholeOnceAndEachOtherPartByItself) {
    const Element hosting({{"vhost", "w", ""},
                           {"docroot", "w", "httpdocs"},
                           {"docroot_ssl", "w", "httpsdocs"},
                           {"cgi", "own", "cgi-bin"},
                           {"conf", "w", "-C/etc"},
                           {"webstat", "w", " -C/etc"},
                           {"webstat_ssl", "own", "\\055C/etc"},
                           {"ftpstat", "w", "a/../../b"},
                           {"error_docs", "own", "a.com/error_docs"},
                           {"private", "w", "private"},
                           {"logs", "own", ""}});
    const Element user({{"webuser_home", "own", ""}});
    DomainVHostRefferred collection(hosting, "a.com", "webmaster");
    collection.addDomainVhost(hosting);
    collection.addDomainWebUser(user, "nobody-here");
    collection.addDomainWebUser(user, "root");
    collection.addSubDomain(Element({{"docroot", "own", ""}}), "../..", "webmaster");
    collection.addSubDomain(Element({{"docroot", "own", ""}}), "shop", "");
    collection.addSiteApp(Element({{"sapp-htdocs", "own", ""}}), {"7", "wiki", "../x"},
                          std::nullopt, "webmaster");
    collection.Extract(unpacker);
    EXPECT_THAT(unpacked, ElementsAre("vhosts/a.com httpdocs httpsdocs private",
                                      "vhosts/a.com/ cgi-bin", "vhosts/a.com/statistics/logs"));
    EXPECT_THAT(
        result.messages,
        ElementsAre(
            "CantUnpackDomainContent: Can not deploy content of domain a.com",
            "CantUnpackWebstat: Can not deploy web statistics of domain a.com",
            "CantUnpackWebstat: Can not deploy web statistics of domain a.com",
            "CantUnpackFtpstat: Can not deploy ftp statistics of domain a.com",
            "CantUnpackErrorDocs: Can not deploy error documents for domain a.com",
            "CantUnpackWebuserContent: Can not deploy web content of webuser nobody-here (domain "
            "a.com)",
            "CantUnpackWebuserContent: Can not deploy web content of webuser root (domain a.com)",
            "CantUnpackSubdomainDocroot: Can not deploy web content of subdomain ../.. (domain "
            "a.com)",
            "CantUnpackSubdomainDocroot: Can not deploy web content of subdomain shop (domain "
            "a.com)",
            "CantUnpackDomainContent: Can not deploy content of domain a.com"));
    EXPECT_THAT(
        log.lines,
        testing::IsSupersetOf(
            {std::string("Going to unpack domain content"),
             std::string("Going to unpack domain vhost content with restored objects"),
             "failure " + kLost + "a part's place in an archive is no plain path",
             std::string(
                 "failure UnsuitableOwner: 'nobody-here' can not be the owner of content: the "
                 "system has no such user"),
             std::string("Finished unpacking domain content")}));

    unpacked.clear();
    result.messages.clear();
    fails = [](const std::string& to) { return to.ends_with("a.com"); };
    unpacker.names = {""};
    DomainVHostRefferred second(hosting, "a.com", "webmaster");
    second.addDomainVhost(Element({{"docroot", "w", "x"}, {"cgi", "own", ""}}));
    second.Extract(unpacker);
    EXPECT_THAT(unpacked, ElementsAre("vhosts/a.com x", "vhosts/a.com/cgi-bin"));
    EXPECT_THAT(result.messages,
                ElementsAre(kLost + "broken",
                            "CantUnpackDomainCgi: Can not deploy cgi-content of domain a.com"));
    // A part that is all of the archive.
    unpacked.clear();
    collection.addDomainAnonFtp(Element({{"ftp_pub", "w", ""}}), "webmaster");
    collection.Extract(unpacker);
    EXPECT_EQ(unpacked.front(), "vhosts/a.com");
}

// Catches after-work that is forgotten for a part of the whole, or that costs the content.
TEST_F(VHostTest, FixesUpSiteApplications) {
    using namespace zelvo::files;
    utility(getDirectCliUtilityPath("siteapp-registrar"));
    utility(getZelvoUtilityPath("sappmng"));
    const Element hosting({{"vhost", "w", ""}});
    const auto extract = [&](const char* archive, const std::optional<std::string>& subdomain,
                             const std::string& owner) {
        DomainVHostRefferred collection(hosting, "a.com", "webmaster");
        collection.addSiteApp(Element({{"sapp-scripts", archive, "s"}}),
                              {"7", "wiki-1-2", "a/b", subdomain.has_value()}, subdomain, owner);
        collection.Extract(unpacker);
    };
    extract("w", std::nullopt, "Webmaster");
    extract("own", kSub, "webmaster");
    const std::string sappmng =
        "sappmng --update-application-permissions --application-full-name=wiki-1-2 --vhost-path=" +
        box("vhosts/a.com");
    const std::string end = " --user-name=webmaster --application-subdirectory=a/b";
    EXPECT_EQ(calls(), "siteapp-registrar --fixup 7\n" + sappmng + end +
                           "\nsiteapp-registrar --fixup 7\n" + sappmng + "/subdomains/xn--mll-hoa" +
                           end + " --ssl\n");
    utility(getDirectCliUtilityPath("siteapp-registrar"), "exit 1");
    extract("own", std::nullopt, "nobody-here");
    const std::string which = "'wiki-1-2' on domain 'a.com'. This is not fatal error";
    EXPECT_THAT(log.lines,
                testing::IsSupersetOf({"Cannot fix up site application " + which + "!",
                                       "Cannot update site application permissions " + which +
                                           ", but this site application can have wrong work!"}));
    EXPECT_THAT(result.messages, ElementsAre());
}
