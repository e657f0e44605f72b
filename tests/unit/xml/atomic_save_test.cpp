#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <sstream>
#include <thread>

#include "fault.h"
#include "panel_box.h"
#include "xml/xml_document.h"

namespace zelvo {
namespace {

using test::faultOf;

// A document big enough to be written in many pieces.
class BigDocument : public tXmlRmkDocument {
  public:
    explicit BigDocument(char letter) {
        initNewDoc("big");
        for (int count = 0; count < 2000; ++count) {
            newTextChild(root(), "item", std::string(100, letter));
        }
    }
};

// True for what saving such a document gives.
bool isWhole(const std::string& text) {
    static const std::set<std::string> whole = [] {
        std::set<std::string> texts;
        for (const char letter : {'a', 'b'}) {
            BigDocument document(letter);
            std::ostringstream stream;
            document.saveToStream(stream);
            texts.insert(stream.str());
        }
        return texts;
    }();
    return whole.contains(text);
}

// Catches a target that is written in place, and a temporary file that stays.
TEST(AtomicSave, ReadersSeeWholeDocumentsOnly) {
    const test::TempDir dir;
    const std::string path = (dir / "target").string();
    BigDocument first('a');
    BigDocument second('b');
    first.saveToFileAtomically(path);
    std::atomic<bool> isDone{false};
    std::atomic<int> torn{0};
    std::atomic<int> reads{0};
    std::thread reader([&] {
        while (!isDone) {
            torn += isWhole(test::readFile(path)) ? 0 : 1;
            ++reads;
        }
    });
    for (int round = 0; round < 50 || reads < 50; ++round) {
        (round % 2 == 0 ? second : first).saveToFileAtomically(path, Durability::kCached);
    }
    isDone = true;
    reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(test::namesIn(dir.path()), std::set<std::string>{"target"});
}

// Catches a target that is absent or partial when the process dies at any moment.
TEST(AtomicSave, TargetIsWholeWheneverTheProcessIsKilled) {
    const test::TempDir dir;
    const std::string path = (dir / "target").string();
    BigDocument document('a');
    document.saveToFileAtomically(path, Durability::kSynced);
    for (useconds_t delay = 0; delay < 20'000; delay += 800) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                document.saveToFileAtomically(path);
            }
        }
        usleep(delay);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        EXPECT_TRUE(isWhole(test::readFile(path))) << delay;
    }
}

// Catches a file that the panel cannot read, or that others can.
TEST(AtomicSave, BelongsToThePanelAlone) {
    const test::TempDir dir;
    const std::string path = (dir / "target").string();
    tXmlDocument().saveToFileAtomically(path, Durability::kSynced);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, test::kPanelUser);
    EXPECT_EQ(status.st_gid, test::kPanelGroup);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

// Catches a session that --delete-session has removed and that comes back, and the text that it
// ends with.
TEST(AtomicSave, NeedsTheDirectory) {
    const test::TempDir dir;
    const std::string path = (dir / "gone/target").string();
    const auto [code, message] = faultOf([&] { tXmlDocument().saveToFileAtomically(path); });
    EXPECT_EQ(code, "CantCreateTempFile");
    EXPECT_EQ(message, "Can not create temporary file with the template '" + path +
                           "XXXXXX': No such file or directory.");
    EXPECT_TRUE(test::namesIn(dir.path()).empty());
}

// Catches a failed rename that goes unnoticed or that harms the target.
TEST(AtomicSave, LeavesATargetThatItCannotReplace) {
    const test::TempDir dir;
    const std::string path = (dir / "target").string();
    test::writeFile(dir / "target/inside", "kept");
    const auto [code, message] = faultOf([&] { tXmlDocument().saveToFileAtomically(path); });
    EXPECT_EQ(code, "CantRenameFile");
    EXPECT_TRUE(message.starts_with("Cannot rename " + path)) << message;
    EXPECT_TRUE(message.ends_with(" to " + path + ": Is a directory")) << message;
    EXPECT_EQ(test::readFile(dir / "target/inside"), "kept");
}

}  // namespace
}  // namespace zelvo
