#include "report/migration_status.h"

#include <gtest/gtest.h>

#include "report/progress_report.h"
#include "report/result_log.h"
#include "run.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

class Status : public testing::Test {
  protected:
    // The status document as it stands on the disk, without its first line.
    std::string onDisk() const {
        const std::string text = session_.file("migration.status");
        const std::string head = "<?xml version=\"1.0\"?>\n";
        EXPECT_TRUE(text.starts_with(head)) << text;
        return text.substr(head.size());
    }
    static std::string document(const std::string& inside, const std::string& attributes = "") {
        return "<migration-status" + attributes + ">" + inside + "</migration-status>\n";
    }

    test::Session session_;
    test::MemoryLog debugLog_;
};

struct StateCase {
    const char* name;
    void (*set)(MigrationStatus& status);
    const char* inside;
};

// One row for each form of the document. All rows follow each other in one record, so that what an
// earlier state left behind would show.
const StateCase kStates[] = {
    {"new", [](MigrationStatus&) {}, "<idle/>"},
    {"agent deploys",
     [](MigrationStatus& status) {
         status.setAgentParams("old.tst");
         status.setAgentOperation(agentOperation::deploy);
     },
     "<agent action=\"deploy\"><host>old.tst</host></agent>"},
    {"agent waits", [](MigrationStatus& status) { status.setAgentOperation(agentOperation::wait); },
     "<agent action=\"wait\"><host>old.tst</host></agent>"},
    {"dump", [](MigrationStatus& status) { status.setTransferDump(); },
     "<transfer><host>old.tst</host><dumpfile/></transfer>"},
    {"dump with speed", [](MigrationStatus& status) { status.setTransferSpeed("12"); },
     "<transfer speed=\"12\"><host>old.tst</host><dumpfile/></transfer>"},
    {"files without size", [](MigrationStatus& status) { status.setTransferTotals("3", ""); },
     "<transfer speed=\"12\"><host>old.tst</host><files total=\"3\" left=\"3\"/></transfer>"},
    {"files", [](MigrationStatus& status) { status.setTransferTotals("3", "900"); },
     "<transfer speed=\"12\"><host>old.tst</host>"
     "<files total=\"3\" left=\"3\" size-total=\"900\" size-left=\"900\"/></transfer>"},
    {"file without size",
     [](MigrationStatus& status) {
         status.setTransferFilesLeft("2");
         status.setTransferSizeLeft("600");
         status.setCurrentFile("a<&>b", "");
     },
     "<transfer speed=\"12\"><host>old.tst</host>"
     "<files total=\"3\" left=\"2\" size-total=\"900\" size-left=\"600\">"
     "<current-file>a&lt;&amp;&gt;b</current-file></files></transfer>"},
    {"file", [](MigrationStatus& status) { status.setCurrentFile("b", "300"); },
     "<transfer speed=\"12\"><host>old.tst</host>"
     "<files total=\"3\" left=\"2\" size-total=\"900\" size-left=\"600\">"
     "<current-file size=\"300\" size-left=\"300\">b</current-file></files></transfer>"},
    {"part of a file",
     [](MigrationStatus& status) {
         status.setTranslate();
         status.setTransferCurrentFileSizeLeft("100");
     },
     "<transfer speed=\"12\"><host>old.tst</host>"
     "<files total=\"3\" left=\"2\" size-total=\"900\" size-left=\"600\">"
     "<current-file size=\"300\" size-left=\"100\">b</current-file></files></transfer>"},
    {"translation", [](MigrationStatus& status) { status.setTranslate(); }, "<translate/>"},
    {"idle again", [](MigrationStatus& status) { status.setIdle(); }, "<idle/>"},
};

TEST_F(Status, EachStateHasItsDocument) {
    const auto status = createMigrationStatusFile();
    EXPECT_FALSE(session_.has("migration.status"));
    for (const StateCase& state : kStates) {
        state.set(*status);
        status->saveFile();
        EXPECT_EQ(onDisk(), document(state.inside)) << state.name;
    }
}

// Catches numbers above the totals, attributes that double or go, and an object of the wrong kind.
TEST_F(Status, DeploymentIsCounted) {
    const auto attributes = [](const std::string& accounts, const std::string& domains) {
        return " total-accounts=\"2\" total-domains=\"1\" completed-accounts=\"" + accounts +
               "\" completed-domains=\"" + domains + "\"";
    };
    const auto status = createMigrationStatusFile();
    tDeployProgressReport report(status.get(), 2, 1);
    EXPECT_EQ(onDisk(), "<migration-status" + attributes("2", "1") + "/>\n");
    report.updateProgressStats("jo", objectType::account);
    EXPECT_EQ(onDisk(), document("<current-object type=\"account\">jo</current-object>",
                                 attributes("0", "0")));
    report.completedAccounts = 1;
    report.completedDomains = 5;
    report.updateProgressStats("a&b.tst", objectType::domain);
    EXPECT_EQ(onDisk(), document("<current-object type=\"domain\">a&amp;b.tst</current-object>",
                                 attributes("1", "1")));
    status->setIdle();
    status->saveFile();
    EXPECT_EQ(onDisk(), document("<idle/>", attributes("1", "1")));
}

TEST_F(Status, ReportNeedsARecord) {
    EXPECT_EQ(faultOf([] { tDeployProgressReport(nullptr, 0, 0); }),
              Fault("AssertionFailed", "Assertion failed: log_ptr_"));
}

// Catches a last state that does not reach the disk.
TEST_F(Status, LastStateIsSavedAtTheEnd) {
    createMigrationStatusFile()->setTranslate();
    EXPECT_EQ(onDisk(), document("<translate/>"));
}

// Catches a failed save that is swallowed, or that ends the process behind another failure.
TEST_F(Status, FailedSavesAreTold) {
    LogLifetimeController controller;
    session_.remove();
    const Fault seen = faultOf([] {
        const auto status = createMigrationStatusFile();
        tDeployProgressReport report(status.get(), 0, 0);
    });
    EXPECT_EQ(seen.first, "CantCreateTempFile");
    ASSERT_EQ(debugLog_.lines.size(), 1U);
    EXPECT_TRUE(debugLog_.lines[0].starts_with("CantCreateTempFile: ")) << debugLog_.lines[0];
    std::filesystem::create_directory(session_.path);
    controller.finish();
    EXPECT_NE(session_.file("migration.result").find("code=\"CantCreateTempFile\""),
              std::string::npos);
}

}  // namespace
}  // namespace zelvo
