#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_view_literals;

class ProfileUpdateTest : public ProfileTest {
protected:
    const std::string other = "/here/Other.ini";
};

TEST_F(ProfileUpdateTest, AReadingAnswersFromOneStateOfTheFileWithoutLookingAgain) {
    given("[a]\nx=1\ny=1\n");
    EXPECT_EQ(value("a", "x"), "1");
    given("[a]\nx=2\ny=2\n");
    {
        const ProfileReading reading(engine, file);
        EXPECT_EQ(value("a", "x"), "2");
        const int before = files.stamps;
        given("[a]\nx=3\ny=3\n");
        EXPECT_EQ(value("a", "y"), "2");
        EXPECT_EQ(files.stamps, before);
    }
    EXPECT_EQ(value("a", "y"), "3");
}

TEST_F(ProfileUpdateTest, AReadingSeesWhatItsOwnScopeWritesOnTopOfWhatOthersWrote) {
    given("[a]\nx=1\n");
    const ProfileReading reading(engine, file);
    given("[a]\nx=1\nother=1\n");

    EXPECT_TRUE(write("a", "y", "5"));

    EXPECT_EQ(value("a", "y"), "5");
    EXPECT_EQ(value("a", "other"), "1");
    EXPECT_EQ(bytes(), "[a]\nx=1\nother=1\ny=5\n");
}

TEST_F(ProfileUpdateTest, AReadingOfAFileThatIsNotThereFindsNothing) {
    const ProfileReading reading(engine, file);

    EXPECT_EQ(value("a", "x"), "none");
}

TEST_F(ProfileUpdateTest, AReadingThatRunsOutOfMemoryReadsAsWithoutOne) {
    given("[a]\nx=1\n");
    files.memoryIsShort = true;
    const ProfileReading reading(engine, file);
    files.memoryIsShort = false;

    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileUpdateTest, AnUpdateThatCouldNotReadAKeyWritesNothing) {
    given("[a]\nnewest=7\n");
    engine.beginUpdate(file);
    files.readsFail = true;
    EXPECT_EQ(value("a", "newest"), "none");
    files.readsFail = false;
    write("a", "newest", "1");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Failed);

    EXPECT_EQ(bytes(), "[a]\nnewest=7\n");
}

TEST_F(ProfileUpdateTest, TheUpdateAfterOneThatCouldNotReadIsWritten) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    files.readsFail = true;
    value("a", "x");
    files.readsFail = false;
    engine.commitUpdate();

    engine.beginUpdate(file);
    write("a", "x", "2");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(bytes(), "[a]\nx=2\n");
}

TEST_F(ProfileUpdateTest, AKeyThatIsNotThereHoldsNoUpdateUp) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "y"), "none");
    write("a", "y", "2");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);

    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
}

TEST_F(ProfileUpdateTest, AFileIsReadOnceForManyReads) {
    given("[a]\nx=1\ny=2\n");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "y"), "2");
    EXPECT_EQ(number("z"), -77);
    EXPECT_EQ(files.reads, 1);
}

TEST_F(ProfileUpdateTest, AFileThatWasReleasedIsReadAgain) {
    given("[a]\nx=1\n");
    EXPECT_EQ(value("a", "x"), "1");

    engine.release();

    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(files.reads, 2);
}

TEST_F(ProfileUpdateTest, TheStampIsAskedAtEachRead) {
    given("[a]\nx=1\n");
    value("a", "x");
    const int before = files.stamps;
    value("a", "x");
    EXPECT_EQ(files.stamps, before + 1);
}

TEST_F(ProfileUpdateTest, AChangeByAnotherProgramIsSeenByTheNextRead) {
    given("[a]\nx=1\n");
    EXPECT_EQ(value("a", "x"), "1");
    given("[a]\nx=2\n");
    EXPECT_EQ(value("a", "x"), "2");
}

TEST_F(ProfileUpdateTest, AFileThatAppearsOrVanishesIsNoticed) {
    EXPECT_EQ(value("a", "x"), "none");
    given("[a]\nx=2\n");
    EXPECT_EQ(value("a", "x"), "2");
    files.Kill(file);
    EXPECT_EQ(value("a", "x"), "none");
}

TEST_F(ProfileUpdateTest, TwoFilesAreKeptApart) {
    given("[a]\nx=1\n");
    files.put(other, "[a]\nx=2\n");
    std::array<char, 8> buffer{};
    engine.GetPrivateProfileStringA("a", "x", "", buffer.data(), 8, other);
    EXPECT_STREQ(buffer.data(), "2");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileUpdateTest, AnUpdateReachesTheFileInOneReplacement) {
    given("[Settings]\nIsLocked=1\n");
    engine.beginUpdate(file);
    EXPECT_TRUE(writeSection("r1", "Sent=5\0\0"sv));
    EXPECT_TRUE(write("Settings", "LastState", "r1"));
    EXPECT_TRUE(write("Settings", "IsLocked", "0"));
    EXPECT_EQ(files.replaces, 0);
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(files.replaces, 1);
    EXPECT_EQ(bytes(), "[Settings]\nIsLocked=0\nLastState=r1\n[r1]\nSent=5\n");
}

TEST_F(ProfileUpdateTest, AnUpdateReadsTheFileOnce) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    value("a", "x");
    write("a", "x", "2");
    value("a", "y");
    engine.commitUpdate();
    EXPECT_EQ(files.reads, 1);
}

TEST_F(ProfileUpdateTest, CollectedWritesAreSeenByTheReaders) {
    given("[a]\nx=1\ny=2\n[b]\nz=3\n");
    engine.beginUpdate(file);
    write("A", "X", " \"new\" ");
    write("c", "k", "4");
    writeSection("b", "; w=0\0w=5\0\0"sv);
    EXPECT_EQ(value("a", "x"), "new");
    EXPECT_EQ(value("a", "y"), "2");
    EXPECT_EQ(value("c", "k"), "4");
    EXPECT_EQ(value("b", "w"), "5");
    EXPECT_EQ(value("b", "; w"), "none");
    EXPECT_EQ(value("b", "z"), "none");
}

TEST_F(ProfileUpdateTest, CollectedNumbersAreSeenByTheReaders) {
    engine.beginUpdate(file);
    write("s", "n", "12");
    EXPECT_EQ(number("n"), 12);
}

TEST_F(ProfileUpdateTest, OfTwoCollectedWritesOfOneKeyTheLaterCounts) {
    engine.beginUpdate(file);
    write("a", "x", "1");
    write("a", "X", "2");
    engine.commitUpdate();
    EXPECT_EQ(bytes(), "[a]\nx=2\n");
}

TEST_F(ProfileUpdateTest, AKeyWrittenIntoACollectedSectionChangesItsLine) {
    engine.beginUpdate(file);
    writeSection("a", "; x=0\0Key =1\0\0"sv);
    write("a", "kEY", "2");
    write("a", "x", "3");
    engine.commitUpdate();
    EXPECT_EQ(bytes(), "[a]\n; x=0\nKey =2\nx=3\n");
}

TEST_F(ProfileUpdateTest, ACollectedSectionReplacesTheKeysCollectedBefore) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    write("a", "x", "2");
    writeSection("a", "y=3\0\0"sv);
    engine.commitUpdate();
    EXPECT_EQ(bytes(), "[a]\ny=3\n");
}

TEST_F(ProfileUpdateTest, AKeyAddedAfterANewSectionStillGoesIntoItsOwn) {
    given("[a]\nx=1");
    engine.beginUpdate(file);
    write("b", "k", "2");
    write("a", "y", "3");
    engine.commitUpdate();
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=3\n[b]\nk=2\n");
}

TEST_F(ProfileUpdateTest, AnEmptyLastValueAndANewKeyGoInOrder) {
    given("[a]\nx=");
    engine.beginUpdate(file);
    write("a", "y", "2");
    write("a", "x", "1");
    engine.commitUpdate();
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
}

TEST_F(ProfileUpdateTest, ManyValuesAnEmptyLastOneAndANewKeyGoInOrder) {
    std::string before = "[a]\n";
    std::string after = "[a]\n";
    engine.beginUpdate(file);
    for (int i = 0; i < 40; ++i) {
        const std::string key = std::string("k").append(std::to_string(i));
        before += key + "=old\n";
        after += key + "=new\n";
        write("a", key, "new");
    }
    given(before + "x=");
    write("a", "x", "1");
    write("a", "y", "2");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(bytes(), after + "x=1\ny=2\n");
}

TEST_F(ProfileUpdateTest, AnUpdateWithoutWritesLeavesTheFileAlone) {
    engine.beginUpdate(file);
    value("a", "x");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(files.replaces, 0);
    EXPECT_FALSE(files.exists(file));
}

TEST_F(ProfileUpdateTest, AnUpdateWithOnlyRefusedWritesLeavesTheFileAlone) {
    engine.beginUpdate(file);
    EXPECT_FALSE(write("a", "x", "\n"));
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(files.replaces, 0);
}

TEST_F(ProfileUpdateTest, AFailedUpdateForgetsItsWrites) {
    given("[a]\nx=1\n");
    files.replacesFail = true;
    engine.beginUpdate(file);
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Failed);
    EXPECT_EQ(value("a", "x"), "1");
    files.replacesFail = false;
    EXPECT_TRUE(write("a", "y", "3"));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=3\n");
}

TEST_F(ProfileUpdateTest, AFailedSingleWriteIsForgotten) {
    given("[a]\nx=1\n");
    files.replacesFail = true;
    EXPECT_FALSE(write("a", "x", "2"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileUpdateTest, AWriteToAnotherFileGoesThereAtOnceAndAlone) {
    engine.beginUpdate(file);
    write("a", "x", "1");
    EXPECT_TRUE(engine.WritePrivateProfileStringA("b", "y", "2", other));
    EXPECT_EQ(files.bytes(other), "[b]\ny=2\n");
    EXPECT_FALSE(files.exists(file));
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileUpdateTest, AWriteIsSeenByTheNextReadAfterIt) {
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(value("a", "x"), "2");
}

TEST_F(ProfileUpdateTest, AScopeWritesWhatItCollectedWhenItIsLeft) {
    {
        const ProfileUpdate update(engine, file);
        write("a", "x", "1");
    }
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileUpdateTest, AScopeThatWasCommittedWritesNothingMore) {
    {
        ProfileUpdate update(engine, file);
        write("a", "x", "1");
        EXPECT_EQ(update.commit(), UpdateOutcome::Written);
        EXPECT_EQ(update.commit(), UpdateOutcome::Written);
    }
    EXPECT_EQ(files.replaces, 1);
}

TEST_F(ProfileUpdateTest, AnUpdateOfNoFileCannotBeWritten) {
    engine.beginUpdate("");
    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "1", ""));
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(files.replaces, 0);
}

} // namespace
} // namespace tarvik
