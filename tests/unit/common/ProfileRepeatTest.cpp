#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_view_literals;

/// Keys that are read again, where the engine remembers what it found last.
class ProfileRepeatTest : public ProfileTest {
protected:
    const std::string other = "/here/Other.ini";

    /// A section that is long enough for an index of its keys.
    static std::string longSection(const std::string& name, const std::string& lines) {
        std::string text = "[" + name + "]\n" + lines;
        for (int i = 0; i < 300; ++i) {
            text += "filler" + std::to_string(i) + "=1\n";
        }
        return text;
    }
};

TEST_F(ProfileRepeatTest, AKeyOfALongSectionIsReadAgainAndAgain) {
    given(longSection("a", "x=1\ny=2\n"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "y"), "2");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "X"), "1");
}

TEST_F(ProfileRepeatTest, AMissingKeyOfALongSectionHasNotTheValueFoundBefore) {
    given(longSection("a", "x=1\n"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "y"), "none");
    EXPECT_EQ(value("a", "y"), "none");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, AKeyOfTwoLongSectionsHasAValueInEach) {
    given(longSection("a", "x=1\n") + longSection("b", "x=2\n"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("b", "x"), "2");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, AKeyOfALongAndAShortSectionHasAValueInEach) {
    given(longSection("a", "x=1\n") + "[b]\nx=2\n[c]\n");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("b", "x"), "2");
    EXPECT_EQ(value("c", "x"), "none");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, ASectionBehindTheOneReadLastIsNotReadWhenItHasTheNameOfAnEarlierOne) {
    given("[first]\n[a]\nx=1\n[b]\nx=2\n[a]\nx=3\n");
    EXPECT_EQ(value("b", "x"), "2");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, AWriteIsSeenByTheNextReadOfTheSameKey) {
    given(longSection("a", "x=1\n") + "[b]\nx=1\n");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_TRUE(write("a", "x", "22"));
    EXPECT_EQ(value("a", "x"), "22");
    EXPECT_EQ(value("b", "x"), "1");
    EXPECT_TRUE(writeSection("b", "x=2\0\0"sv));
    EXPECT_EQ(value("b", "x"), "2");
}

TEST_F(ProfileRepeatTest, AChangeByAnotherProgramIsSeenByTheNextReadOfTheSameKey) {
    given(longSection("a", "x=1\n"));
    EXPECT_EQ(value("a", "x"), "1");
    given(longSection("new", "x=3\n") + longSection("a", "x=2\n"));
    EXPECT_EQ(value("a", "x"), "2");
    given("[b]\nx=4\n");
    EXPECT_EQ(value("a", "x"), "none");
}

TEST_F(ProfileRepeatTest, TheSameKeyOfAnotherFileIsReadFromThere) {
    given(longSection("a", "x=1\n"));
    files.put(other, longSection("a", "x=2\n"));
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(engine.GetPrivateProfileIntA("a", "x", -1, other), 2);
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, WithinAnUpdateTheSameKeyIsReadAsCollected) {
    given(longSection("a", "x=1\ny=1\n"));
    EXPECT_EQ(value("a", "x"), "1");
    engine.beginUpdate(file);
    write("a", "x", "2");
    EXPECT_EQ(value("a", "x"), "2");
    EXPECT_EQ(value("a", "y"), "1");
    writeSection("a", "y=3\0\0"sv);
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_EQ(value("a", "y"), "3");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_EQ(value("a", "y"), "3");
}

TEST_F(ProfileRepeatTest, WithinAReadingAWriteIsSeenByTheNextReadOfTheSameKey) {
    given(longSection("a", "x=1\n"));
    const ProfileReading reading(engine, file);
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(value("a", "x"), "2");
}

TEST_F(ProfileRepeatTest, WithinAReadingTheSameKeyOfAnotherFileIsReadFromThere) {
    given(longSection("a", "x=1\n"));
    files.put(other, longSection("a", "x=2\n"));
    const ProfileReading reading(engine, file);
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(engine.GetPrivateProfileIntA("a", "x", -1, other), 2);
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileRepeatTest, ABracketBeginsASectionOnlyWhereALineBegins) {
    given(
        "\xEF\xBB\xBF\t [a]\nx=[b]\n;[b]\nw [b]\r \t[b]\rx=2\n[[c]\nx=3\n[open [d]\nx=4\n[e\n[f]");
    EXPECT_EQ(value("a", "x"), "[b]");
    EXPECT_EQ(value("b", "x"), "2");
    EXPECT_EQ(value("[c", "x"), "3");
    EXPECT_EQ(value("open [d", "x"), "4");
    EXPECT_EQ(value("d", "x"), "none");
}

} // namespace
} // namespace tarvik
