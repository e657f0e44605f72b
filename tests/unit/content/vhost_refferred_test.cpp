#include "content/vhost_refferred.h"

#include <sstream>

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

// The elements that add content, then type, place, mode and owner of its directory, and what is
// said of its loss, which begins with "CantUnpack" and has "Can not deploy" in front of the last
// words. Ids: webmaster 4717, qrdcln 4718, qrdserv 4719, qrdftp 4720.
constexpr char kRows[] = R"(
domain docroot /httpdocs 40750 4717:4718 DomainDocroot: web-content of domain a.com
domain docroot_ssl /httpsdocs 40750 4717:4718 DomainDocrootSsl: ssl-content of domain a.com
domain cgi /cgi-bin 40750 4717:4718 DomainCgi: cgi-content of domain a.com
domain conf /conf 40755 0:0 DomainContent: content of domain a.com
domain webstat /statistics/webstat 40750 0:0 Webstat: web statistics of domain a.com
domain webstat_ssl /statistics/webstat-ssl 40750 0:0 Webstat: web statistics of domain a.com
domain ftpstat /statistics/ftpstat 40750 0:0 Ftpstat: ftp statistics of domain a.com
domain anon_ftpstat /statistics/anon_ftpstat 40750 0:0 Ftpstat: ftp statistics of domain a.com
domain error_docs /error_docs 40750 4717:4719 ErrorDocs: error documents for domain a.com
domain private /private 40750 4717:4718 PrivateData: private data of domain a.com
domain admin_private /private/webmaster 40750 4717:4718 PrivateData: private data of domain a.com
domain logs /statistics/logs 40750 0:4719 Logs: log files on domain a.com
user webuser_home /web_users/webmaster 40755 4717:4718 WebuserContent: web content of webuser Webmaster (domain a.com)
user webuser_private /web_users/webmaster/private/ 40755 4717:4718 WebuserContent: web content of webuser Webmaster (domain a.com)
ftp ftp_pub /anon_ftp/pub 40750 4717:4718 DomainPublicAnonFtp: anonymous ftp content of domain a.com
ftp ftp_incoming /anon_ftp/incoming 40750 4717:4720 DomainPublicAnonFtp: anonymous ftp content of domain a.com
sub docroot /subdomains/xn--mll-hoa/httpdocs 40755 4717:4718 SubdomainDocroot: web content of subdomain müll (domain a.com)
sub docroot_ssl /subdomains/xn--mll-hoa/httpsdocs 40755 4717:4718 SubdomainDocrootSsl: ssl-content of subdomain müll (domain a.com)
sub cgi /subdomains/xn--mll-hoa/cgi-bin 40755 4717:4718 SubdomainCgi: cgi content of subdomain müll (domain a.com)
sub conf /subdomains/xn--mll-hoa/conf 40755 0:4719 SubdomainConf: conf directory of subdomain müll (domain a.com)
app sapp-scripts /vault_scripts/7 40755 0:4718 DomainContent: content of domain a.com
app sapp-https-scripts /vault_https_scripts/7 40755 0:4718 DomainContent: content of domain a.com
app sapp-cgi-bin /cgi-bin/a/b 40755 4717:4718 DomainContent: content of domain a.com
app sapp-htdocs /httpdocs/a/b 40755 4717:4718 DomainContent: content of domain a.com
subapp sapp-htdocs /subdomains/xn--mll-hoa/httpsdocs/ 40755 4717:4718 DomainContent: content of domain a.com
)";

// Catches a row with another place, owner, mode or failure.
TEST_F(VHostTest, PutsEachKindInItsPlace) {
    const auto add = [](DomainVHostRefferred& to, const std::string& how, const Element& from) {
        if (how == "domain") to.addDomainVhost(from);
        if (how == "sub") to.addSubDomain(from, kSub, "Webmaster");
        if (how == "user") to.addDomainWebUser(from, "Webmaster");
        if (how == "ftp") to.addDomainAnonFtp(from, "webmaster");
        if (how == "app") to.addSiteApp(from, {"7", "wiki-1-2", "a/b"}, std::nullopt, "webmaster");
        if (how == "subapp") to.addSiteApp(from, {"7", "wiki-1-2", "", true}, kSub, "webmaster");
    };
    std::istringstream rows(kRows);
    for (std::string how, type, to, mode, owner, code, text; rows >> how;) {
        std::getline(rows >> type >> to >> mode >> owner >> code, text);
        SCOPED_TRACE(how + " " + type);
        std::filesystem::remove_all(box("vhosts"));
        unpacked.clear();
        result.messages.clear();
        const Element element({{type, "a.tar", "off"}});
        DomainVHostRefferred collection(element, "a.com", "webmaster");
        add(collection, how, element);
        collection.Extract(unpacker);
        EXPECT_THAT(unpacked, ElementsAre("vhosts/a.com" + to + " off"));
        EXPECT_EQ(unpacker.attributes, mode + " " + owner);
        EXPECT_THAT(result.messages, ElementsAre());
        fails = [](const std::string&) { return true; };
        collection.Extract(unpacker);
        EXPECT_THAT(result.messages, ElementsAre("CantUnpack" + code + " Can not deploy" + text));
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
    Paths codes;
    for (const auto& text : result.messages) codes.push_back(text.substr(10, text.find(':') - 10));
    EXPECT_THAT(codes, ElementsAre("DomainContent", "Webstat", "Webstat", "Ftpstat", "ErrorDocs",
                                   "WebuserContent", "WebuserContent", "SubdomainDocroot",
                                   "SubdomainDocroot", "DomainContent"));
    EXPECT_THAT(log.lines, testing::IsSupersetOf(Paths{
                               "Going to unpack domain content",
                               "Going to unpack domain vhost content with restored objects",
                               "failure " + kLost + "a part's place in an archive is no plain path",
                               "failure UnsuitableOwner: 'nobody-here' can not be the owner of "
                               "content: the system has no "
                               "such user",
                               "Finished unpacking domain content"}));

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
