// The sandbox itself: a panel that forgets, or a fault that does not happen, would let every other
// test pass.

#include "sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>

#include "file_tree.h"
#include "panel/objects.h"

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kUtilities[] = "/opt/qrd/admin/vlib/api-cli/";

std::vector<std::string> utility(const std::string& name, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), kUtilities + name + ".php");
    return arguments;
}

std::vector<std::string> shell(const std::string& script) {
    return {"/bin/sh", "-c", "cd " + std::string(kUtilities) + "; " + script};
}

std::string machineFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Journal, HoldsArgumentsEnvironmentAndInput) {
    Sandbox box;
    box.environment("ALLOW_WEAK_PASSWORDS", "");
    box.environment("QRD_PASSWORD", "it's");
    box.environment("HOME", "/root");
    box.runCommand(shell("printf 'a b\\n1' | ./traffic.php --add-batch 'x y' ''"));
    EXPECT_EQ(box.journal(), Lines({R"(ALLOW_WEAK_PASSWORDS='' QRD_PASSWORD='it\'s' )"
                                    R"(traffic --add-batch 'x y' '' <<<'a b\n1')"}));
}

TEST(Journal, KeepsEveryLineWholeWhenCallsRunSideBySide) {
    Sandbox box;
    const auto result = box.runCommand(
        shell("for w in 1 2 3 4 5 6 7 8; do (for i in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15; do"
              " ./domain.php --create d$w-$i.com -owner admin </dev/null || echo failed; done) &"
              " done; wait"));
    EXPECT_EQ(result.out + result.err, "");
    const Lines lines = box.journal();
    EXPECT_THAT(std::set<std::string>(lines.begin(), lines.end()), SizeIs(120));
    EXPECT_THAT(lines,
                ::testing::Each(::testing::MatchesRegex("domain --create d.*com -owner admin")));
    EXPECT_EQ(box.readFile("calls").size(), 120U);
}

constexpr std::pair<std::string_view, std::string_view> kRefused[] = {
    {"client --create bob", "an account bob exists already"},
    {"client --create rita", "an account rita exists already"},
    {"client_pref --update ann -a b", "client ann does not exist"},
    {"reseller --update bob -a b", "reseller bob does not exist"},
    {"client --create ann -owner x", "owner x does not exist"},
    {"client --create ann -owner bob", "client bob cannot own clients"},
    {"domain --change-owner b.com -owner bob", "domain b.com does not exist"},
    {"client --update bob -passwd secret", "a password must not stand in the arguments"},
    {"client --update bob -passwd ''",
     "-passwd is given, but neither QRD_PASSWORD nor QRD_CRYPTED_PASSWORD is set"},
    {"client --update bob -ok 1 -status", "option -status needs a value"},
    {"client --update bob status on", "unexpected argument status"},
    {"domain --update a.com -x 1 -guid g1", "guid g1 belongs to client bob"},
    {"domain --create b.com -template t", "domain_template t does not exist"},
    {"subdomain --create www -domain a.com", "subdomain www exists already"},
    {"subdomain --update www -domain b.com", "domain b.com does not exist"},
    {"subdomain --create www -domain c.com", "domain c.com has no physical hosting"},
    {"subdomain --create new -domain a.com -ftp_user native -login bob",
     "an account bob exists already in the system"},
    {"webuser --create root -domain a.com", "an account root exists already in the system"},
    {"domain --update c.com -hosting true -hst_type phys", "--update needs -login"},
    {"certificate --create x -admin -key-file /etc/passwd", "/etc/passwd must be qrdadm's alone"},
    {"dns --set a.com -list 'A,www,192.0.2.1;SRV,_sip._tcp.b.com.,sip,1;'",
     "no record for a.com: SRV,_sip._tcp.b.com.,sip,1"},
    {"objectInfo --getinfo -property-names name -guid g2", "there is no object with guid g2"},
    {"ip_pool --add 192.0.2.1 -type shared -owner bob", "ip 192.0.2.1 does not exist"},
    {"domain --destroy a.com", "unknown command --destroy"},
    {"mail --create joe@b.com", "domain b.com does not exist"},
    {"mail --create @a.com", "no mail name: @a.com"},
    {"mail --create joe@a.com", "mail joe@a.com exists already"},
    {"mail --update joe@a.com -aliases 'add:x;keep:y'", "no change of a list: keep:y"},
    {"mail --update joe@a.com -aliases add:x,", "no change of a list: add:x,"},
    {"autoresponder -u gone -mail joe@a.com", "autoresponder gone does not exist"},
    {"autoresponder -u away -mail joe@a.com -attach add:/etc/qrd/qrd.conf",
     "/etc/qrd/qrd.conf is outside the temporary directory"},
    {"autoresponder -u away -mail joe@a.com -attach add:/opt/qrd/RMK/tmp/x",
     "there is no file /opt/qrd/RMK/tmp/x"},
    {"turboaddr -c 1 -owner-email joe@a.com -type person", "unknown type person"},
    {"maillist --create news -domain c.com -email x@a.com", "maillist news exists already"},
    {"maillist --create new -domain a.com", "--create needs -email"},
    {"maillist --update news -domain c.com -members add:x", "maillist news does not exist"},
    {"database --create shop -domain a.com -type db2", "unknown type db2"},
    {"database --update gone -add_user bob -type mysql", "database gone does not exist"},
    {"database --update shop -add_user bob -type postgresql",
     "database shop is not of type postgresql"},
    {"database --update shop -add_user bob -type mysql", "--update needs -passwd"},
    {"database --update shop -remove_user bob", "dbuser bob does not exist"},
    {"siteapp-item --create -sapp-name wiki -sapp-version 1.2",
     "sapp-package 'wiki 1.2' does not exist"},
    {"sapp-items-pool --off a.com", "unknown utility sapp-items-pool"}};

// Catches: a panel that takes what a real one would not.
TEST(Refusals, SayWhyAndChangeNothing) {
    Sandbox box;
    box.setup(
        "client --create bob -owner admin -guid g1\nreseller --create rita\n"
        "domain --create a.com -owner bob\n"
        "domain --update a.com -hosting true -hst_type phys -login bob\n"
        "subdomain --create www -domain a.com\ndomain --create c.com\n"
        "mail --create joe@a.com\nautoresponder -c away -mail joe@a.com\n"
        "maillist --create news -domain a.com -email joe@a.com\n"
        "database --create shop -domain a.com -type mysql\n");
    const std::string held = (box.runCommand({"/bin/true"}), box.panel());
    for (const auto& [call, reason] : kRefused) {
        const std::string name(call.substr(0, call.find(' ')));
        const std::string arguments(call.substr(name.size()));
        const auto result = box.runCommand(shell("./" + name + ".php" + arguments));
        EXPECT_EQ(result.exitStatus, 1) << call;
        EXPECT_EQ(result.err, name + ": " + std::string(reason) + "\n");
        EXPECT_EQ(box.panel(), held) << call;
    }
    box.writeFile("accept-unknown", "");
    EXPECT_EQ(box.runCommand(utility("sapp-items-pool", {"--off", "a.com"})).exitStatus, 0);
}

TEST(Panel, RemembersWhatItWasTold) {
    Sandbox box;
    box.setup(
        "reseller --create rita -name 'Rita R.'\n"
        "QRD_PASSWORD=x client --create bob -owner rita -passwd '' -name Bob\n"
        "QRD_CRYPTED_PASSWORD=x client --update bob -passwd '' -status disabled-by-admin\n"
        "domain_template --create small -hosting false\n"
        "domain --create a.com -owner bob\n"
        "domain --update a.com -guid g1\n"
        "ipmanage -c 192.0.2.1 -type exclusive\n"
        "domain --update a.com -ip 192.0.2.1\n"
        "domain_pref -d a.com\n"
        "traffic --add-batch a.com <<<'1\\n2\\n\\n3'\n"
        "client --convert-to-reseller bob\n"
        "reseller --update bob -status enabled\n"
        "domain --create b.com -owner rita -template small -force\n"
        "domain --update a.com -hosting true -hst_type phys -login anna -shell /bin/sh\n"
        "domain --update b.com -hosting true -hst_type phys -login ben\n"
        "subdomain --create www -domain a.com -ssl true\n"
        "subdomain --create www -domain b.com\n"
        "crontabmng set /etc/qrd/.qrd.shadow ben\n"
        "dns --set b.com -list 'NS,,ns.b.com.;A,,192.0.2.1;;'\n"
        "domain_template --create small -owner bob -hosting true\n");
    const auto info = box.runCommand(
        utility("objectInfo", {"--getinfo", "-property-names", "name", "-guid", "g1"}));
    EXPECT_EQ(info.out, "name=a.com\n");
    EXPECT_EQ(box.runCommand(utility("ipmanage", {"-xi"})).out,
              "<ipinfo>\n  <ip name=\"192.0.2.1\"><type>exclusive</type>"
              "<def_domain>a.com</def_domain></ip>\n</ipinfo>\n");
    const std::string small = "domain_template small: options: domain_template 1\n";
    const std::string rest =
        "  reseller rita: name 'Rita R.'; options: reseller 1\n"
        "    domain b.com: directory /opt/qrd/var/vhosts/b.com; options: domain 5\n"
        "      dns record: NS,,ns.b.com.\n"
        "      dns record: A,,192.0.2.1\n"
        "      subdomain www: directory /opt/qrd/var/vhosts/b.com/subdomains/www\n"
        "      sysuser ben: home /opt/qrd/var/vhosts/b.com, shell /bin/false\n"
        "        crontabmng table: panel-in-a-box\n"
        "ip 192.0.2.1: exclusive, default domain a.com\n";
    EXPECT_EQ(box.panel(),
              "admin\n  " + small +
                  "  reseller bob: name Bob, password encrypted, status enabled; "
                  "options: reseller 3\n"
                  "    domain a.com: directory /opt/qrd/var/vhosts/a.com; options: domain 5, "
                  "domain_pref 1; traffic rows: 3; guid g1\n"
                  "      subdomain www: directory /opt/qrd/var/vhosts/a.com/subdomains/www; "
                  "options: subdomain 1\n"
                  "      sysuser anna: home /opt/qrd/var/vhosts/a.com, shell /bin/sh\n    " +
                  small + rest);
    box.runCommand(utility("reseller", {"--remove", "bob"}));
    EXPECT_EQ(box.panel(), "admin\n  " + small + rest);
}

// Catches: content that would land in no living tree, or in one that outlives its site, and users
// or directories of changes that were refused.
TEST(Panel, MakesUsersAndDirectoriesThatLiveAsLongAsTheirObjects) {
    Sandbox box;
    box.setup(
        "domain_template --create gold -hosting true\n"
        "client --create bob\n"
        "domain --create bücher.example -owner bob -template gold -login bob -shell /bin/sh\n"
        "domain --update bücher.example -login rob\n"
        "subdomain --create bü -domain bücher.example -ftp_user native -login sub\n"
        "webuser --create wu -domain bücher.example\n"
        "domain --create b.example -owner bob\n"
        "domain --update b.example -hosting true -hst_type phys -login ben\n"
        "domain --update b.example -hosting true -hst_type std\n");
    const std::string vhosts = "/opt/qrd/var/vhosts";
    const std::string site = "xn--bcher-kva.example/";
    EXPECT_EQ(treeOf(box, vhosts + "/" + site),
              R"(./ root:root 755
anon_ftp/ root:root 755
anon_ftp/incoming/ rob:qrdftp 770
anon_ftp/pub/ rob:qrdcln 755
cgi-bin/ rob:qrdserv 750
conf/ root:qrdserv 750
error_docs/ rob:qrdserv 755
httpdocs/ rob:qrdserv 750
httpdocs/index.html rob:qrdcln 644 'This site is new.\n'
httpsdocs/ rob:qrdserv 750
httpsdocs/index.html rob:qrdcln 644 'This site is new.\n'
private/ rob:root 750
statistics/ root:root 755
statistics/anon_ftpstat/ root:root 755
statistics/ftpstat/ root:root 755
statistics/logs/ root:qrdserv 750
statistics/webstat-ssl/ root:root 755
statistics/webstat/ root:root 755
subdomains/ root:root 755
subdomains/xn--b-eha/ root:root 755
subdomains/xn--b-eha/cgi-bin/ sub:qrdserv 750
subdomains/xn--b-eha/conf/ root:qrdserv 750
subdomains/xn--b-eha/error_docs/ sub:qrdserv 755
subdomains/xn--b-eha/httpdocs/ sub:qrdserv 750
subdomains/xn--b-eha/httpdocs/index.html sub:qrdcln 644 'This site is new.\n'
subdomains/xn--b-eha/httpsdocs/ sub:qrdserv 750
subdomains/xn--b-eha/httpsdocs/index.html sub:qrdcln 644 'This site is new.\n'
web_users/ root:root 755
web_users/wu/ wu:qrdserv 750
)");
    const std::string look = "tail -n 3 /etc/passwd; ls " + vhosts;
    EXPECT_EQ(box.runCommand(shell(look)).out,
              "rob:x:10001:2123::/opt/qrd/var/vhosts/xn--bcher-kva.example:/bin/sh\n"
              "sub:x:10002:2123::/opt/qrd/var/vhosts/xn--bcher-kva.example/subdomains/xn--b-eha:"
              "/bin/false\n"
              "wu:x:10003:2123::/opt/qrd/var/vhosts/xn--bcher-kva.example/web_users/wu:/bin/false\n"
              "xn--bcher-kva.example\n");
    const auto gone = box.runCommand(
        shell("./domain.php --update b.example -hosting true -hst_type phys -login new -shell x; "
              "./client.php --remove bob; " +
              look));
    EXPECT_THAT(gone.out, ::testing::EndsWith(
                              "\nlist:x:2116:2126:list archives:/opt/qrd/mailman:/bin/false\n"));
}

// Catches: mail that has no directory of its owner, answers that are not those that a restore
// reads, and a converter that loses, joins or splits messages.
TEST(Panel, HasMailListsAndDatabases) {
    Sandbox box;
    box.setup(
        "domain --create a.com\n"
        "mail --create joe@a.com -aliases add:x,y\n"
        "maillist --create news -domain a.com -email joe@a.com\n"
        "maillist --update news -domain a.com -members add:a@b.com,b@b.com\n"
        "maillist --update news -domain a.com -members add:c@b.com\n"
        "QRD_PASSWORD='s&' database-registrar --register db:99 -type postgresql -login boss "
        "-passwd ''\n");
    const std::string mailbox =
        R"('From a Mon\nSubject: 1\n\nOne\nFrom here\n\nFrom b Tue\n\n>From me\n')";
    const auto made = box.runCommand(
        shell("./autoresponder.php -c away -mail joe@a.com && printf hello > ../../../RMK/tmp/n &&"
              "./autoresponder.php -u away -mail joe@a.com -attach add:/opt/qrd/RMK/tmp/n &&"
              "./database.php --create shop -domain a.com -type mysql -print-id &&"
              "QRD_PASSWORD=x ./database.php --update shop -add_user u -type mysql -print-id "
              "-passwd '' && ./database.php --update shop -update_user u -add-access % &&"
              "./database-registrar.php --get-default-server -type postgresql &&"
              "./database-registrar.php --get-credentials db:99 -type postgresql &&"
              "./database-registrar.php --get-credentials db:98 -type postgresql &&"
              "printf " +
              mailbox +
              " | tee /opt/qrd/RMK/tmp/mbox > /opt/qrd/var/mailman/archives/private/news.mbox/"
              "news.mbox && /opt/qrd/mailman/bin/arch news && cd / &&"
              "setpriv --reuid popuser --regid popuser --clear-groups /opt/qrd/RMK/mb2md.pl"
              " -s /opt/qrd/RMK/tmp/mbox -R -d /opt/qrd/var/mailnames/a.com/joe/Maildir"));
    EXPECT_EQ(made.err, "");
    EXPECT_EQ(made.out,
              R"(<?xml version="1.0"?>
<database-id>1</database-id>
New database user ID = 1
<?xml version="1.0"?>
<db-server type="postgresql"><host>db</host><port>99</port></db-server>
<?xml version="1.0"?>
<credentials><username>boss</username><password>s&amp;</password></credentials>
<?xml version="1.0"?>
<credentials><not-configured/></credentials>
)");
    EXPECT_EQ(treeOf(box, "/opt/qrd/var/mailnames"),
              R"(./ root:root 755
a.com/ popuser:popuser 755
a.com/joe/ popuser:popuser 700
a.com/joe/Maildir/ popuser:popuser 700
a.com/joe/Maildir/cur/ popuser:popuser 700
a.com/joe/Maildir/cur/000001.mbox:2,S popuser:popuser 644 'Subject: 1\n\nOne\nFrom here\n\n'
a.com/joe/Maildir/cur/000002.mbox:2,S popuser:popuser 644 '\nFrom me\n'
a.com/joe/Maildir/new/ popuser:popuser 700
a.com/joe/Maildir/tmp/ popuser:popuser 700
)");
    EXPECT_EQ(box.panel(), R"(admin
  domain a.com
    database shop: options: database 2
      dbuser u: password plain; options: database 1
        database access: %
    mail joe@a.com: directory /opt/qrd/var/mailnames/a.com/joe
      mail aliases: add:x,y
      autoresponder away
        autoresponder attached: n 5 bytes
    maillist news: messages 2, email joe@a.com, directory /opt/qrd/var/mailman/archives/private/news.mbox; members 3; options: maillist 1
dbserver 'postgresql db:99': login boss
)");
}

TEST(Panel, KeepsListsInOrderAndOfOtherOptionsTheLastValue) {
    using namespace sandbox;
    constexpr Command kUpdate{"domain",     "--update", Shape::kName, "domain", kOwner,
                              updateObject, nullptr,    "force",      "a b"};
    Model model(":memory:");
    const Object domain = model.insert("domain", "a.com", model.at(Model::kAdmin));
    const auto update = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--update", "a.com"});
        updateObject(model, Request({"domain", std::move(arguments), {}, {}}, kUpdate));
    };
    update({"-b", "2", "-c", "1", "-force", "-b", "1", "-c", "2"});
    update({"-b", "3"});
    std::string kept;
    for (const Option& option : model.options(domain)) {
        kept += option.name + "=" + option.value + " ";
    }
    EXPECT_EQ(kept, "b=2 b=1 b=3 c=2 force=true ");
}

TEST(Faults, HappenAndLeaveTheModelAlone) {
    Sandbox box;
    box.faults(
        "call 1: stdout 'so\\n'; stderr 'no space\\n'; exit 5\n"
        "call 2: after; exit 6\n"
        "call 3: signal SEGV\n"
        "call 4: print 3; sleep 1\n");
    const auto create = [&](const char* name) {
        return box.runCommand(utility("client", {"--create", name}));
    };
    const auto first = create("one");
    EXPECT_EQ(first.exitStatus, 5);
    EXPECT_EQ(first.out + first.err, "so\nno space\n");
    EXPECT_EQ(create("two").exitStatus, 6);
    EXPECT_EQ(create("three").signal, SIGSEGV);
    EXPECT_EQ(create("four").out, "xxx");
    EXPECT_THAT(box.journal(), SizeIs(4));
    EXPECT_EQ(box.panel(), "admin\n  client four\n  client two\n");
}

TEST(Faults, ABadRuleIsNoQuietOne) {
    Sandbox box;
    box.faults("call 1: explode\n");
    const auto result = box.runCommand(utility("client", {"--create", "bob"}));
    EXPECT_EQ(result.exitStatus, 99);
    EXPECT_EQ(result.err, "sandbox: unknown fault action 'explode'\n");
}

TEST(Faults, SignalsReachTheRestoreAndNobodyElse) {
    for (const bool gate : {false, true}) {
        Sandbox box;
        box.withGate(gate);
        box.faults("call 1: signal-parent TERM\n");
        const std::string call =
            gate
                ? "curl -s -H \"HTTP_AUTH_PASSWD: $(cat /etc/qrd/.qrd.shadow)\""
                  " -d 'ARG[0]=client&ARG[1]=--create&ARG[2]=bob' http://127.0.0.1:8880/cligate.php"
                : "./client.php --create bob";
        const auto result =
            box.runCommand(shell("trap 'echo terminated' TERM; " + call + "; exit 3"));
        EXPECT_THAT(result.out, HasSubstr("terminated\n"));
        EXPECT_EQ(result.exitStatus, 3);
        EXPECT_THAT(box.panel(), HasSubstr("client bob"));
    }
}

TEST(Gate, RunsTheSameCallAndCanFailInEachWay) {
    Sandbox box;
    box.withGate();
    box.gateFaults("request 4: status 500; body 'broken'\nrequest 5: drop\nrequest 6+: exit\n");
    const std::string post = "curl -s -o /dev/null -w '%{http_code} %{exitcode}\\n' -d ";
    const std::string url = " http://127.0.0.1:8880/cligate.php";
    const std::string password = " -H \"HTTP_AUTH_PASSWD: $(cat /etc/qrd/.qrd.shadow)\"";
    const std::string form =
        "'ARG[0]=client&ARG[1]=--create&ARG[2]=a%20b&ENV[LANG]=x%3D1&ENV[HOME]=y&STDIN=%3C%0A'";
    const std::string allowed = post + form + password + url + "; ";
    const auto result = box.runCommand(shell(post + "''" + url + "; " + post + form + url + "; " +
                                             allowed + allowed + allowed + allowed));
    EXPECT_EQ(result.out, "400 0\n403 0\n200 0\n500 0\n000 52\n000 52\n");
    EXPECT_EQ(box.journal(), Lines({R"(LANG=x=1 client --create 'a b' <<<'<\n')"}));
}

TEST(Namespace, LeavesTheMachineAsItWas) {
    const std::string passwd = machineFile("/etc/passwd");
    const std::string mounts = machineFile("/proc/self/mounts");
    std::string state;
    {
        Sandbox box;
        state = box.statePath();
        const auto result =
            box.runCommand({"/bin/sh", "-c",
                            "echo x:x:1:1:::>>/etc/passwd; echo y>/etc/qrd/qrd.conf; id -u qrdadm;"
                            " id -g qrdadm; stat -c %a /etc/qrd/.qrd.shadow /opt/qrd/RMK/tmp;"
                            " test -s /etc/hosts && test -d /etc/ssl && echo machine"});
        EXPECT_EQ(result.out, "2110\n2120\n600\n711\nmachine\n");
        EXPECT_EQ(box.readFile("etc/qrd/qrd.conf"), "y\n");
    }
    EXPECT_EQ(machineFile("/etc/passwd"), passwd);
    EXPECT_EQ(machineFile("/proc/self/mounts"), mounts);
    EXPECT_FALSE(std::filesystem::exists("/etc/qrd/.qrd.shadow"));
    EXPECT_FALSE(std::filesystem::exists(state));
}

TEST(Namespace, FindsTheProductWithoutAConfiguration) {
    Sandbox box;
    box.withoutConfiguration();
    const auto result = box.runCommand(
        {"/bin/sh", "-c", "ls /etc/qrd/qrd.conf; test -d /usr/local/qrd/RMK && echo product"});
    EXPECT_EQ(result.out, "product\n");
}

TEST(Runs, EndAsTheirCommandDid) {
    Sandbox box;
    EXPECT_EQ(box.runCommand({"/bin/sh", "-c", "exit 42"}).exitStatus, 42);
    EXPECT_EQ(box.runCommand({"/bin/sh", "-c", "kill -HUP $$"}).signal, SIGHUP);
    box.withGate();
    EXPECT_EQ(box.runCommand({"/bin/sh", "-c", "kill -HUP $$"}).signal, SIGHUP);
    Process sleeper = box.start({"/bin/sleep", "60"});
    const ProcessResult late = sleeper.wait(std::chrono::milliseconds(300));
    EXPECT_TRUE(late.timedOut);
}

TEST(Runs, ShowTheComplaintOfASanitizer) {
    EXPECT_THAT(findReport("all is well\n"), IsEmpty());
    EXPECT_EQ(findReport("x\n./a.cpp:3:5: runtime error: shift\ny"),
              "./a.cpp:3:5: runtime error: shift");
}

}  // namespace
