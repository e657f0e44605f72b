#include "report/migration_status.h"

#include "report/progress_report.h"
#include "run.h"

namespace zelvo {
namespace {

const std::string kHead = "<?xml version=\"1.0\"?>\n<migration-status";
const std::string kTail = "</migration-status>\n";

const std::string kTransfer = R"(<transfer speed="12"><host>h</host>)";
// One row for each form of the document. All rows follow each other in one record, so that what an
// earlier state left behind would show.
const std::pair<void (*)(MigrationStatus&), std::string> kStates[] = {
    {[](auto& s) {
         s.setAgentParams("h");
         s.setAgentOperation(agentOperation::wait);
     },
     R"(<agent action="wait"><host>h</host></agent>)"},
    {[](auto& s) {
         s.setTransferDump();
         s.setTransferSpeed("12");
     },
     kTransfer + "<dumpfile/></transfer>"},
    {[](auto& s) {
         s.setTransferTotals("3", "9");
         s.setTransferFilesLeft("2");
         s.setTransferSizeLeft("6");
         s.setCurrentFile("a<&>b", "5");
         s.setTransferCurrentFileSizeLeft("1");
     },
     kTransfer + R"(<files total="3" left="2" size-total="9" size-left="6">)" +
         R"(<current-file size="5" size-left="1">a&lt;&amp;&gt;b</current-file></files></transfer>)"},
    {[](auto& s) { s.setTranslate(); }, "<translate/>"},
    {[](auto& s) { s.setIdle(); }, "<idle/>"},
};

TEST(Status, EachStateHasItsDocument) {
    const test::Session session;
    const auto status = createMigrationStatusFile();
    for (const auto& [set, inside] : kStates) {
        set(*status);
        status->saveFile();
        EXPECT_EQ(session.file("migration.status"), kHead + ">" + inside + kTail);
    }
}

// Catches numbers above the totals, attributes that double or go, an object of the wrong kind, and
// a last state that does not reach the disk.
TEST(Status, DeploymentIsCounted) {
    const test::Session session;
    auto status = createMigrationStatusFile();
    const auto saved = [&] { return session.file("migration.status").substr(kHead.size()); };
    tDeployProgressReport report(status.get(), 2, 1);
    const std::string totals = R"( total-accounts="2" total-domains="1" completed-accounts=")";
    EXPECT_EQ(saved(), totals + "2\" completed-domains=\"1\"/>\n");
    report.completedAccounts = 1;
    report.completedDomains = 5;
    report.updateProgressStats("a&b.tst", objectType::domain);
    const std::string object = R"(<current-object type="domain">a&amp;b.tst</current-object>)";
    EXPECT_EQ(saved(), totals + "1\" completed-domains=\"1\">" + object + kTail);
    status->setIdle();
    status.reset();
    EXPECT_EQ(saved(), totals + "1\" completed-domains=\"1\"><idle/>" + kTail);
}

// Catches a failed save that is swallowed, or that ends the process behind another failure.
TEST(Status, FailedSavesAreTold) {
    const test::Session session;
    const RecordingLog debugLog;
    session.remove();
    const std::string seen = test::faultOf([] {
        const auto status = createMigrationStatusFile();
        tDeployProgressReport(status.get(), 0, 0);
    });
    EXPECT_TRUE(seen.starts_with("CantCreateTempFile: ")) << seen;
    EXPECT_EQ(debugLog.lines, std::vector<std::string>{"failure " + seen});
}

}  // namespace
}  // namespace zelvo
