// What holds for a whole run: the order of its stages, whose objects they are, on whose behalf it
// works, what it tells while it goes on and when it is over.

#include "dumps.h"

#include <sstream>

namespace {

class Run : public ::testing::TestWithParam<Restore> {};

TEST_P(Run, MakesTheseCalls) {
    Sandbox box;
    runAndExpect(box, GetParam());
}

std::string unknownParent(const std::string& guid, const std::string& why) {
    return message("UnknownParentClassObject",
                   {"ZelvoDumpRestorer::getParentByGuidId", "./restore/restorer.cpp"},
                   "Cannot find parent with guid '" + guid + "' ['" + why + "'].");
}

const Restore kRuns[] = {
    // Catches: stages that follow the document instead of their own order.
    {.name = "StagesInTheirOrder",
     .before = "reseller --create r1\nreseller --create r2\nclient --create c1\n"
               "client --create c2\ndomain --create d1.example\ndomain --create d2.example\n",
     .dump = R"(
<domain name="d2.example" guid="g6" deployer-action="auxiliary"/>
<client name="c2" deployer-action="update"/>
<reseller name="r2" deployer-action="update" owner-guid="nobody-asks"/>
<admin>
  <domains><domain name="d1.example" guid="g3" deployer-action="auxiliary"/></domains>
  <clients><client name="c1" deployer-action="update"/></clients>
  <resellers><reseller name="r1" deployer-action="update"/></resellers>
</admin>)",
     .calls = R"(reseller --update r1 -login r1
client --update c1 -login c1
domain --update d1.example -guid g3
reseller --update r2 -login r2
client --update c2 -login c2
domain --update d2.example -guid g6
)"},
    {.name = "OwnersAreFoundByTheirGuids",
     .before = "reseller --create rita -guid g-rita\nclient --create bob\nclient --create ann\n"
               "domain --create a.example\ndomain --create b.example\n",
     .dump = R"(
<client name="bob" deployer-action="change-owner" owner-guid="g-rita"/>
<client name="ann" deployer-action="change-owner" owner-guid="g-lost"/>
<client name="ann" deployer-action="change-owner" owner-guid=""/>
<domain name="a.example" deployer-action="change-owner" owner-guid="g-rita"/>
<domain name="b.example" deployer-action="change-owner" owner-guid="g-lost"/>
<domain name="b.example" deployer-action="change-owner"/>)",
     .calls = R"(objectInfo --getinfo -property-names name -guid g-rita
client --change-owner bob -owner rita
client --update bob -login bob
objectInfo --getinfo -property-names name -guid g-lost
client --change-owner ann -owner admin
client --update ann -login ann
objectInfo --getinfo -property-names name -guid g-rita
domain --change-owner a.example -owner rita
domain --update a.example
domain_pref --update a.example -www true
objectInfo --getinfo -property-names name -guid g-lost
domain --change-owner b.example -owner admin
domain --update b.example
domain_pref --update b.example -www true
)",
     .result =
         result(unknownParent("g-lost", "objectInfo: there is no object with guid g-lost\n") +
                unknownParent("g-lost", "objectInfo: there is no object with guid g-lost\n"))},
    {.name = "TheAnswerAboutAnOwnerIsReadByLines",
     .before = "client --create bob\ndomain --create a.example\ndomain --create b.example\n",
     .faults = "match objectInfo --getinfo * * -guid g-1: "
               "stdout 'name=wrong\\r\\ntype\\nname=bob\\r\\nx=name=no\\n'; exit 0\n"
               "match objectInfo: stdout 'login=bob\\n'; exit 0\n",
     .dump = "<domain name='a.example' deployer-action='change-owner' owner-guid='g-1'/>"
             "<domain name='b.example' deployer-action='change-owner' owner-guid='g-2'/>",
     .calls = R"(objectInfo --getinfo -property-names name -guid g-1
domain --change-owner a.example -owner bob
domain --update a.example
domain_pref --update a.example -www true
objectInfo --getinfo -property-names name -guid g-2
)",
     .result = result(unknownParent("g-2", "'name' not found!"))},
    {.name = "NotifyLeavesTheNotificationsOn",
     .options = {"--notify"},
     .dump = R"(<client name="bob"><properties><password type="plain">secret-1</password>
</properties><domains><domain name="b.example"/></domains></client>)",
     .calls = R"(QRD_PASSWORD=secret-1 client --create bob -name bob -passwd '' -owner admin
QRD_PASSWORD=secret-1 client --update bob -login bob -passwd ''
domain --create b.example -owner bob
domain_pref --update b.example -www true
)"},
};
INSTANTIATE_TEST_SUITE_P(Whole, Run, ::testing::ValuesIn(kRuns), restoreName);

// Catches: a command that runs with more rights than the owner of the backup has, and a user whose
// restore touches the statistics of the whole server.
TEST(BackupUser, StandsBehindEveryUtilityOfThePanel) {
    Sandbox box;
    prepare(box,
            "<client name='bob' owner-guid='g-rita'><properties><password type='plain'>secret-1"
            "</password></properties></client>"
            "<domain name='a.example' deployer-action='auxiliary' guid='g-a'>"
            "<preferences><default-domain/></preferences></domain>",
            "reseller --create rita -guid g-rita\ndomain --create a.example\n");
    box.succeeds(
        deployOptions({"--backup-user", "rita", "--backup-user-type", "client", "--suspend"}));
    const std::string suspender =
        "bare xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
        "SuspendHandlerRunner.php ";
    EXPECT_EQ(callsOf(box),
              "ZELVO_SUID=rita objectInfo --getinfo -property-names name -guid g-rita\n"
              "QRD_PASSWORD=secret-1 ZELVO_SUID=rita client --create bob -name bob -notify false "
              "-passwd '' -owner rita\n"
              "QRD_PASSWORD=secret-1 ZELVO_SUID=rita client --update bob -login bob -passwd ''\n" +
                  suspender + "suspend a.example " + Sandbox::sessionPath() +
                  "\nZELVO_SUID=rita domain --update a.example -guid g-a\n" + suspender +
                  "unsuspend a.example " + Sandbox::sessionPath() + "\n");
    expectResult(box, result());
}

// ---- the addresses' default domains ----

std::string onAddress(const std::string& name, const std::string& address,
                      const std::string& hosting = "<shosting>http://x.example</shosting>") {
    return "<domain name='" + name + "'><properties><ip><ip-address>" + address +
           "</ip-address><ip-type>shared</ip-type></ip></properties>"
           "<preferences><default-domain/></preferences>" +
           hosting + "</domain>";
}

std::string createdOn(const std::string& name) {
    return "domain --create " + name + " -owner admin -notify false\ndomain_pref --update " + name +
           " -www true\n";
}

const Place kHosting{"tDomainDeployer::deployHosting", "./restore/domain_deployer.cpp"};

std::string hostedResult(const Lines& names, const std::string& atTheEnd = "") {
    std::string objects;
    for (const std::string& name : names) {
        objects += object(name, "domain", notSupported("shosting", kHosting));
    }
    return result(objects + atTheEnd);
}

// Catches: a default that is taken away from a domain, one for an address of another server, and
// the first of two domains instead of the last.
TEST(DefaultDomains, AreSetWhenAllObjectsStand) {
    const std::string dump =
        onAddress("e.example", "192.0.2.4") + onAddress("a.example", "192.0.2.1") +
        onAddress("b.example", "192.0.2.1") + onAddress("c.example", "192.0.2.2") +
        onAddress("d.example", "192.0.2.9") + onAddress("f.example", "192.0.2.5", "");
    const std::string created = createdOn("e.example") + createdOn("a.example") +
                                createdOn("b.example") + createdOn("c.example") +
                                createdOn("d.example") + createdOn("f.example") + kStatistics +
                                "ipmanage -xi\n";
    const Lines names{"e.example", "a.example", "b.example", "c.example", "d.example"};
    const struct {
        std::string faults;
        std::string atTheEnd;
        std::string failure;
    } kRows[] = {
        {"", "domain_pref -d b.example\ndomain_pref -d e.example\n", ""},
        {"match domain_pref -d b.example: exit 5\n",
         "domain_pref -d b.example\ndomain_pref -d e.example\n",
         failedCommand("domain_pref", "-d b.example", "", 5)},
        {"match ipmanage -xi: stdout '<ips/>'; exit 0\n", "",
         message("tError_WrongDoc", {"tXmlRmkDocument::initFileDoc", "./xml/xml_rmk_document.cpp"},
                 "The document has the wrong type, root node is &lt;ips&gt;, but &lt;ipinfo&gt; "
                 "was expected")},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.faults);
        Sandbox box;
        prepare(box, dump,
                "ipmanage -c 192.0.2.1\nipmanage -c 192.0.2.2\nipmanage -c 192.0.2.4\n"
                "ipmanage -c 192.0.2.5\ndomain --create x.example -ip 192.0.2.2\n"
                "domain_pref -d x.example\n",
                row.faults);
        box.succeeds(deployOptions());
        EXPECT_EQ(callsOf(box), created + row.atTheEnd);
        expectResult(box, hostedResult(names, row.failure));
    }
}

// ---- what is told of a run ----

struct Told {
    const char* name;
    std::string before;
    std::string dump;
    int accounts, ofAccounts, domains, ofDomains;
    std::string object, type;
};
void PrintTo(const Told& told, std::ostream* out) { *out << told.name; }

class Status : public ::testing::TestWithParam<Told> {};

// Catches: a progress bar that stays short of its end, runs past it or names the wrong object.
TEST_P(Status, CountsWhatWasHandled) {
    const Told& row = GetParam();
    Sandbox box;
    prepare(box, row.dump, row.before);
    box.succeeds(deployOptions());
    expectStatus(box, row.accounts, row.ofAccounts, row.domains, row.ofDomains, row.object,
                 row.type);
}

const Told kTold[] = {
    {"Nothing", "", "", 0, 0, 0, 0, "", ""},
    {"ResellerAndClient", "",
     R"(<reseller name="rita"><clients><client name="bob"/></clients><domains>
<domain name="a.example"/></domains></reseller><domain name="b.example"/>)",
     2, 2, 2, 2, "b.example", "domain"},
    {"LeftAloneIsNotCounted", "domain --create a.example\n",
     R"(<reseller name="rita" deployer-action="auxiliary"><clients>
<client name="bob" deployer-action="rejected-delete"/></clients></reseller>
<domain name="a.example" deployer-action="auxiliary"/>)",
     0, 2, 1, 1, "a.example", "domain"},
    {"FailedCounts", "client --create bob\ndomain --create a.example\n",
     R"(<client name="bob"><domains><domain name="a.example"/></domains></client>)", 1, 1, 1, 1,
     "bob", "account"},
    {"DeletedAccountCountsAndDeletedDomainDoesNot",
     "client --create bob\ndomain --create a.example\n",
     R"(<client name="bob" deployer-action="delete"/>
<domain name="a.example" deployer-action="delete"/>)",
     1, 1, 0, 1, "a.example", "domain"},
    {"LostOwnerIsNotReached", "", R"(<client name="bob" owner-guid="g-lost"/>)", 0, 1, 0, 0, "",
     ""},
};
INSTANTIATE_TEST_SUITE_P(Progress, Status, ::testing::ValuesIn(kTold),
                         [](const auto& row) { return std::string(row.param.name); });

// The messages of the log that mark where a run is, without the commands and their answers.
Lines marksOf(const Sandbox& box) {
    const std::regex mark(
        R"(p\.log: ((?:=> |\+\+ |Restore of |Deployment of |Migration |Empty |Suspend |Resume ).*))");
    Lines marks;
    std::istringstream log(box.logText());
    for (std::string line; std::getline(log, line);) {
        std::smatch found;
        if (std::regex_search(line, found, mark)) marks.push_back(found[1]);
    }
    return marks;
}

// Catches: a mark missing, out of its place or in other words.
TEST(DebugLog, MarksTheWayOfARun) {
    Sandbox box;
    prepare(box, R"(<reseller name="rita"><clients><client name="bob"/></clients></reseller>
<domain name="a.example" deployer-action="update"/>
<domain name="b.example" deployer-action="delete"/>)",
            "domain --create a.example\ndomain --create b.example\n");
    box.succeeds(deployOptions({"--suspend"}));
    EXPECT_EQ(
        marksOf(box),
        Lines({"=> rita reseller", "=> bob client", "Restore of client 'bob' is complete",
               "++ bob client", "Restore of reseller 'rita' is complete", "++ rita reseller",
               "Empty parent Guid. Map to admin", "=> a.example domain", "Suspend domain a.example",
               "Deployment of domain 'a.example' is complete", "Resume domain a.example",
               "++ a.example domain", "Empty parent Guid. Map to admin", "=> b.example domain",
               "Suspend domain b.example", "Resume domain b.example", "++ b.example domain",
               "Migration finished"}));
}

}  // namespace
