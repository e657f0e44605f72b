// What holds for a whole run: the order of its stages, whose objects they are, on whose behalf it
// works, what it leaves for the end and what it tells people.

#include "dumps.h"

namespace {

TEST(Run, GoesThroughItsStages) { runCases("options/runs.txt"); }
TEST(Run, SetsTheDefaultDomainsOfAddresses) { runCases("options/default_domains.txt"); }

// Catches: a command that runs with more rights than the owner of the backup has, and a user whose
// restore touches the statistics of the whole server.
TEST(Run, WorksOnBehalfOfTheBackupUser) {
    Sandbox box;
    prepare(box, {"",
                  {{"before", "reseller --create rita -guid g-rita\ndomain --create a.example\n"},
                   {"dump",
                    "<client name='bob' owner-guid='g-rita'><properties>"
                    "<password type='plain'>secret-1</password></properties></client>"
                    "<domain name='a.example' deployer-action='auxiliary' guid='g-a'/>"}}});
    box.succeeds(deployOptions("--backup-user rita --backup-user-type client --suspend"));
    EXPECT_EQ(callsOf(box),
              expand("ZELVO_SUID=rita objectInfo --getinfo -property-names name -guid g-rita\n"
                     "QRD_PASSWORD=secret-1 ZELVO_SUID=rita client --create bob -name bob "
                     "-notify false -passwd '' -owner rita\n"
                     "QRD_PASSWORD=secret-1 ZELVO_SUID=rita client --update bob -login bob "
                     "-passwd ''\n"
                     "$suspend a.example\n"
                     "ZELVO_SUID=rita domain --update a.example -guid g-a\n"
                     "$resume a.example\n"));
    expectResult(box, resultDocument(""));
}

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
TEST(Run, MarksItsWayInTheDebugLog) {
    Sandbox box;
    prepare(box, {"",
                  {{"before", "domain --create a.example\ndomain --create b.example\n"},
                   {"dump",
                    "<reseller name='rita'><clients><client name='bob'/></clients>"
                    "</reseller><domain name='a.example' deployer-action='update'/>"
                    "<domain name='b.example' deployer-action='delete'/>"}}});
    box.succeeds(deployOptions("--suspend"));
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
