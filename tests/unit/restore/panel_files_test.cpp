// What the panel gets in files, and deployers that hardly any dump reaches: with utilities that
// write down their arguments, and in place of a temporary file what they find there.

#include "restore/toolbox/panel_file.h"

#include <sys/stat.h>

#include "deploying.h"
#include "restore/domain/webalizer.h"
#include "restore/objects/certificate.h"
#include "restore/objects/cron.h"
#include "restore/objects/file_list.h"
#include "restore/objects/installed_site_app.h"
#include "told.h"

using namespace zelvo;
using test::faultOf;
using test::panelBox;
namespace fs = std::filesystem;

namespace {

const std::string kUtility =
    "exec >>$(dirname $0)/calls\nprintf %s $(basename $0 .php)\nfor a; do\n"
    "case $a in */RMK/tmp/*) a=[$(stat -c '%u:%g %a' $a):$(cat $a)];; esac; printf ' %s' \"$a\"\n"
    "done\necho";

class PanelFiles : public test::Deploying {
  protected:
    PanelFiles() {
        fs::create_directories(tmp_);
        for (const char* name : {"certificate", "custombutton", "database", "siteapp-item",
                                 "siteapp-registrar", "webstat"}) {
            utility(std::string("vlib/api-cli/") + name + ".php", kUtility);
        }
        utility("sbin/crontabmng", kUtility);
    }

    // What the deployer calls for an element.
    static std::string callsFor(const XmlDeployDocAbility& deployer, const std::string& element) {
        deployer.act(test::Element(element));
        EXPECT_TRUE(fs::is_empty(tmp_)) << element;
        return takeCalls();
    }
    static std::string takeCalls() {
        std::string calls;
        for (const char* directory : {"vlib/api-cli", "sbin"}) {
            const std::string journal = panelBox.dir.path("product/admin/") + directory + "/calls";
            calls += contentOf(journal);
            fs::remove(journal);
        }
        return calls;
    }

    static inline const std::string tmp_ = panelBox.dir.path("product/RMK/tmp");
};

// The temporary directory on a disk of its own.
struct SmallDisk {
    SmallDisk(const std::string& path, const char* options) : path_(path) {
        EXPECT_EQ(mount("none", path_.c_str(), "tmpfs", 0, options), 0);
    }
    ~SmallDisk() { umount2(path_.c_str(), MNT_DETACH); }
    std::string path_;
};

// Catches: pieces in each other's files, a key that is not the panel's alone while it is read, the
// repository's options in front or for a domain.
TEST_F(PanelFiles, HoldTheCertificatesOfTheServer) {
    const CertificateDeployer server("");
    EXPECT_EQ(callsFor(server,
                       "<certificate name='c' default='true'><certificate-data>D</certificate-data>"
                       "<private-key>K</private-key><signing-request>R</signing-request>"
                       "<ca-certificate>A</ca-certificate></certificate>"),
              "certificate --create c -cert-file [4711:4712 600:D] -key-file [4711:4712 600:K] "
              "-csr-file [4711:4712 600:R] -cacert-file [4711:4712 600:A] -admin -default\n");
    EXPECT_EQ(callsFor(server, "<certificate name='c' default='1' deployer-action='delete'/>"),
              "certificate --remove c -admin\n");
}

// Catches: half a table that replaces a whole one, and a full disk that ends the run.
TEST_F(PanelFiles, AreWholeOrNotHandedOut) {
    const CronDeployer cron("webmaster");
    EXPECT_EQ(callsFor(cron, "<cron>* * * * * a\n</cron>"),
              "crontabmng set [0:0 600:* * * * * a] webmaster\n");
    const std::string large = "<cron>" + std::string(5000, '#') + "</cron>";
    const std::pair<const char*, std::string> kDisks[] = {
        {"size=4k", "CantWriteTempFile: Can not write temporary file '" + tmp_ + "/rmk-cron-"},
        {"size=8k,nr_inodes=1",
         "CantCreateTempFile: Can not create temporary file with the template '" + tmp_ +
             "/rmk-cron-XXXXXX': No space left on device."}};
    for (const auto& [options, fault] : kDisks) {
        const SmallDisk disk(tmp_, options);
        EXPECT_EQ(faultOf([&] { callsFor(cron, large); }).substr(0, fault.size()), fault);
        EXPECT_EQ(callsFor(WebalizerDeployer("a"), "<webalizer/>"), "") << "nothing was called";
    }
}

// Catches: passwords that others can read, an element that the registrar gets in part, or with what
// stands around it.
TEST_F(PanelFiles, HoldTheElementOfAnApplication) {
    const std::string element =
        "<sapp-installed><sapp-spec><sapp-name>w\u00efki</sapp-name></sapp-spec>"
        "<settings>a <b/>\n</settings></sapp-installed>";
    const test::Element hosting("<phosting/>");
    DomainVHostRefferred content(hosting, "a", "");
    const InstalledSiteAppDeployer applications({"a", "bob", ""}, content, "s");
    EXPECT_EQ(callsFor(applications, element),
              "siteapp-item --add-to-pool bob -sapp-name w\u00efki -sapp-version \n"
              "siteapp-registrar --register [4711:4712 600:<sapp-installed>\n  <sapp-spec>\n"
              "    <sapp-name>w&#xEF;ki</sapp-name>\n  </sapp-spec>\n"
              "  <settings>a <b/>\n</settings>\n</sapp-installed>] -subdomain s.a -print-id\n");
    const SmallDisk disk(tmp_, "size=4k");
    EXPECT_EQ(callsFor(applications, "<a>" + std::string(5000, '#') + "</a>"), "");
}

// Catches: a list that is lost with another one, and an empty one that is sent.
TEST_F(PanelFiles, AndResourcesOfAnApplicationGo) {
    deleteLinkedResources({"1", "2"}, {}, {"-3"});
    deleteLinkedResources({}, {"1:4"}, {"5"});
    EXPECT_EQ(takeCalls(),
              "database --remove-dbs 1,2\ndatabase --remove-dbus 1:4\ncustombutton --remove 5\n");
    const std::string root = tmp_ + "/app";
    fs::create_directories(root + "/sub");
    std::ofstream(root + "/sub/a");
    std::ofstream(root + "/b");
    const std::vector<std::string> files{root + "/./sub/../sub/a", root + "//b", root + "/gone"};
    std::ostringstream list;
    saveFilelist(reduceFileList(root, files), list);
    EXPECT_EQ(list.str(), "sub/a\nb\ngone\n");
    EXPECT_EQ(faultOf([&] { reduceFileList(root, {root + "/../b"}); }),
              "UnsafeName: '" + root +
                  "/../b' can not be the name of an application's file: it is in another place");
    removeFilelist(files);
    EXPECT_FALSE(fs::exists(root + "/b"));
    EXPECT_TRUE(fs::is_empty(root + "/sub"));
    fs::remove_all(root);
}

// Catches: a server without the panel's account on which the run ends in the middle.
TEST_F(PanelFiles, StayRootsWhereThePanelHasNoUser) {
    const std::string users = panelBox.dir.path("etc/passwd");
    fs::rename(users, users + ".away");
    const PanelFile file("rmk-");
    EXPECT_EQ(printedBy([&] { file.handOver(); }),
              "Can not chown temporary file " + file.path() +
                  " to be accessible by Zelvo CP\nSystem error 2: No such file or directory\n");
    struct stat status {};
    EXPECT_EQ(stat(file.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 0U);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    fs::rename(users + ".away", users);
}

}  // namespace
