#include "report/migration_status.h"

#include "report/progress_report.h"
#include "run.h"

namespace zelvo {
namespace {

const std::string kHead = "<?xml version=\"1.0\"?>\n<migration-status";
const std::string kTail = "</migration-status>\n";

const std::string kTransfer = kHead + R"(><transfer speed="12"><host>h</host>)";

// All forms of the document follow each other in one record, so that what an earlier state left
// behind would show.
TEST(Status, EachStateHasItsDocument) {
    const test::Session session;
    const auto status = createMigrationStatusFile();
    const auto saved = [&] {
        status->saveFile();
        return session.file("migration.status");
    };
    status->setAgentParams("h");
    status->setAgentOperation(agentOperation::wait);
    EXPECT_EQ(saved(), kHead + R"(><agent action="wait"><host>h</host></agent>)" + kTail);
    status->setTransferDump();
    status->setTransferSpeed("12");
    EXPECT_EQ(saved(), kTransfer + "<dumpfile/></transfer>" + kTail);
    status->setTransferTotals("3", "9");
    status->setTransferFilesLeft("2");
    status->setTransferSizeLeft("6");
    status->setCurrentFile("a<&>b", "5");
    status->setTransferCurrentFileSizeLeft("1");
    EXPECT_EQ(saved(),
              kTransfer + R"(<files total="3" left="2" size-total="9" size-left="6">)" +
                  R"(<current-file size="5" size-left="1">a&lt;&amp;&gt;b</current-file>)" +
                  "</files></transfer>" + kTail);
    status->setTranslate();
    EXPECT_EQ(saved(), kHead + "><translate/>" + kTail);
    status->setIdle();
    EXPECT_EQ(saved(), kHead + "><idle/>" + kTail);
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
