#include "settings/JournalRestartTest.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsLog.h"

namespace tarvik {
namespace {

/// Looks at the INI file's name that fail at the moment, and saves that the journal was not told
/// of.
class JournalLooksTest : public JournalRestartTest {
protected:
    /// That look at the INI file's name fails, from now on counted.
    void failLook(int which) {
        machine.files.meanwhile = [this, which, looks = 0](const std::string& operation,
                                                           const std::string& file) mutable {
            if (operation == "Dir" && file == iniPath && ++looks == which) {
                failThisLook();
            }
        };
    }
    /// The next thing that is done finds everything as it was.
    void failThisLook() {
        const bool isThere = machine.files.exists(iniPath);
        const std::string text = isThere ? ini() : "";
        machine.files.setKind(iniPath, FileKind::Other);
        machine.files.meanwhile = [this, isThere, text](const std::string&, const std::string&) {
            failed = true;
            machine.files.meanwhile = [](const std::string&, const std::string&) {};
            isThere ? setIni(text) : machine.files.remove(iniPath);
        };
    }

    bool failed = false;
};

/// Of those of a start after the first, which finds the name.
class LookOfStart : public JournalLooksTest, public testing::WithParamInterface<int> {};

TEST_P(LookOfStart, ThatFailsLosesNothing) {
    count(5000);

    failLook(GetParam());
    restartAfterKill();

    EXPECT_TRUE(failed);
    EXPECT_EQ(received(), 5000);
    EXPECT_FALSE(machine.files.exists(aside));
    EXPECT_TRUE(SaveState());
}

INSTANTIATE_TEST_SUITE_P(All, LookOfStart, testing::Values(3, 4));

TEST_F(JournalLooksTest, ALookThatFailsAfterTheFileWasPutAsideLosesNothing) {
    count(5000);
    makeResetDue(true);
    machine.files.meanwhile = [this, gone = false](const std::string& operation,
                                                   const std::string& file) mutable {
        gone = gone || (operation == "Kill" && file == iniPath);
        if (gone && operation == "Dir" && file == iniPath) {
            failThisLook();
        }
    };
    tickAfter(1);
    machine.files.meanwhile = nullptr;
    tickAfter(10, 100);
    ASSERT_EQ(received(), 5100) << "the whole session counts anew";

    newWorld();
    expectFirstRunBoxes();
    start();

    EXPECT_EQ(received(), 5100);
}

TEST_F(JournalLooksTest, ARecordWithoutTheLineBesideIsKnownForTheProgramsOwn) {
    countTwoLines();
    ASSERT_TRUE(SaveState()); // has 830, and is not noted

    restartAfterKill();

    EXPECT_EQ(received(), 5830);
}

TEST_F(JournalLooksTest, ARecordOfAnotherCopyIsNot) {
    setIni("[Settings]\r\n");
    start("/r");
    ridge = machine.connections.connect("Ridge");
    machine.connections.connect("Harbour");
    tick();
    tickAfter(10, 5000);
    state().BytesRcvdTotal = 77;
    ASSERT_TRUE(SaveState());

    restartAfterKill();

    EXPECT_EQ(received(), 77);
}

} // namespace
} // namespace tarvik
