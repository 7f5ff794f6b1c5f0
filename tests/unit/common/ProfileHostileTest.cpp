#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class ProfileHostileTest : public ProfileTest {
protected:
    void expectUnusable() {
        EXPECT_EQ(value("a", "x"), "none");
        EXPECT_EQ(engine.GetPrivateProfileIntA("a", "x", 4, file), 4);
        EXPECT_FALSE(write("a", "x", "2"));
        engine.beginUpdate(file);
        write("a", "x", "2");
        EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Failed);
        EXPECT_EQ(files.replaces, 0);
    }
};

TEST_F(ProfileHostileTest, ADirectoryInItsPlaceIsNeitherReadNorWritten) {
    files.putOther(file, FileKind::Directory);
    expectUnusable();
}

TEST_F(ProfileHostileTest, ADeviceInItsPlaceIsNeitherReadNorWritten) {
    files.putOther(file, FileKind::Other);
    expectUnusable();
}

TEST_F(ProfileHostileTest, AnUnreadableFileIsNeitherReadNorWritten) {
    given("[a]\nx=1\n");
    files.readsFail = true;
    expectUnusable();
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileHostileTest, AFileThatDoesNotFitTheMemoryIsNeitherReadNorWritten) {
    given("[a]\nx=1\n");
    files.memoryIsShort = true;
    expectUnusable();
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileHostileTest, AFileLongerThanAnyLogIsRefusedBeforeItIsRead) {
    given("[a]\nx=1\n");
    files.sizeTold = ProfileEngine::longestFile + 1;

    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_FALSE(engine.beginReading(file));
    EXPECT_FALSE(write("a", "x", "2"));

    EXPECT_EQ(files.reads, 0);
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileHostileTest, TheLongestFileIsRead) {
    given("[a]\nx=1\n");
    files.sizeTold = ProfileEngine::longestFile;

    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileHostileTest, AFileThatGrowsBeforeItIsReadIsRefusedAndReadOnce) {
    given("[a]\nx=1\n[b]\n");
    files.sizeTold = 8;
    ProfileEngine strict(files, "\n", {}, ProfileEngine::mostLines, 11);

    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4);
    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4);
    EXPECT_FALSE(strict.WritePrivateProfileStringA("a", "x", "2", file));

    EXPECT_EQ(files.reads, 1);
    EXPECT_EQ(files.replaces, 0);
}

TEST_F(ProfileHostileTest, AFileOfMoreLinesThanAnyLogIsRefusedAndReadOnce) {
    given("[a]\r\nx=1\r\n\r\n[b]\r\n");
    ProfileEngine strict(files, "\n", {}, 3);

    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4);
    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "y", 4, file), 4);
    EXPECT_FALSE(strict.beginReading(file));
    EXPECT_FALSE(strict.WritePrivateProfileStringA("a", "x", "2", file));

    EXPECT_EQ(files.reads, 1);
    EXPECT_EQ(files.replaces, 0);
}

TEST_F(ProfileHostileTest, AFileOfTheMostLinesIsReadWhateverEndsThem) {
    for (const std::string& text : {"[a]\r\nx=1\r\n\r\n[b]\r\n"s, "[a]\rx=1\r\r[b]\r"s,
                                    "[a]\nx=1\n\n[b]\n"s, "[a]\nx=1\n\r[b]\n"s}) {
        given(text);
        ProfileEngine exact(files, "\n", {}, 4);
        ProfileEngine strict(files, "\n", {}, 3);

        EXPECT_EQ(exact.GetPrivateProfileIntA("a", "x", 4, file), 1) << text;
        EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4) << text;
    }
}

TEST_F(ProfileHostileTest, ALineEndOfTwoCharactersIsOneWhereverItLies) {
    for (std::size_t length = 0; length < 300; ++length) {
        given("[a]\r\nx=1\r\n;" + std::string(length, '-') + "\r\n");
        ProfileEngine exact(files, "\n", {}, 3);
        ProfileEngine strict(files, "\n", {}, 2);

        EXPECT_EQ(exact.GetPrivateProfileIntA("a", "x", 4, file), 1) << length;
        EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4) << length;
    }
}

TEST_F(ProfileHostileTest, NothingIsWrittenThatWouldBeTooLongToBeReadAgain) {
    given("[a]\nx=1\n");
    ProfileEngine strict(files, "\n", {}, ProfileEngine::mostLines, 12);

    EXPECT_TRUE(strict.WritePrivateProfileStringA("a", "y", "2", file));
    EXPECT_FALSE(strict.WritePrivateProfileStringA("a", "y", "23", file));
    strict.beginUpdate(file);
    strict.WritePrivateProfileStringA("b", "z", "3", file);
    EXPECT_EQ(strict.commitUpdate(), UpdateOutcome::Failed);

    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "y", 4, file), 2);
}

TEST_F(ProfileHostileTest, NothingIsWrittenThatWouldHaveTooManyLinesToBeReadAgain) {
    given("[a]\r\nx=1\r\n");
    ProfileEngine strict(files, "\n", {}, 3);

    EXPECT_TRUE(strict.WritePrivateProfileStringA("a", "y", "2", file));
    EXPECT_FALSE(strict.WritePrivateProfileStringA("a", "z", "3", file));

    EXPECT_EQ(bytes(), "[a]\r\nx=1\r\ny=2\r\n");
    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "y", 4, file), 2);
}

TEST_F(ProfileHostileTest, TheLengthOfAWideFileIsThatOfItsBytes) {
    given("\xFF\xFE[\0a\0]\0\n\0x\0=\0\x31\0\n\0"s);
    ProfileEngine strict(files, "\n", {}, ProfileEngine::mostLines, 26);

    EXPECT_TRUE(strict.WritePrivateProfileStringA("a", "y", "2", file));
    EXPECT_FALSE(strict.WritePrivateProfileStringA("a", "y", "23", file));

    EXPECT_EQ(bytes().size(), 26U);
}

TEST_F(ProfileHostileTest, ARefusedFileIsReadOnceItIsAnother) {
    given("[a]\nx=1\n\n\n");
    ProfileEngine strict(files, "\n", {}, 3);
    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4);

    given("[a]\nx=1\n\n");

    EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 1);
}

TEST_F(ProfileHostileTest, TheRefusalOfOneFileHoldsWhileAnotherIsRead) {
    given("[a]\nx=1\n\n\n");
    const std::string other = "/here/other.ini";
    files.put(other, "[a]\nx=2\n");
    ProfileEngine strict(files, "\n", {}, 3);

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, file), 4);
        EXPECT_EQ(strict.GetPrivateProfileIntA("a", "x", 4, other), 2);
    }

    EXPECT_EQ(files.reads, 2);
}

TEST_F(ProfileHostileTest, ALargeFileThatDidNotFitTheMemoryIsNotTriedAgainUntilItIsAnother) {
    given("[a]\nx=1\n");
    files.sizeTold = ProfileEngine::longestRetried + 1;
    files.memoryIsShort = true;
    EXPECT_EQ(value("a", "x"), "none");
    files.memoryIsShort = false;

    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_FALSE(write("a", "x", "2"));
    EXPECT_EQ(files.reads, 1);

    given("[a]\nx=3\n");
    EXPECT_EQ(value("a", "x"), "3");
}

TEST_F(ProfileHostileTest, AfterAShortageOfMemoryTheFileIsReadAgain) {
    given("[a]\nx=1\n");
    files.memoryIsShort = true;
    EXPECT_FALSE(write("a", "x", "2"));
    files.memoryIsShort = false;
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileHostileTest, AFileThatCanBeReadAgainIsRead) {
    given("[a]\nx=1\n");
    files.readsFail = true;
    EXPECT_EQ(value("a", "x"), "none");
    files.readsFail = false;
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileHostileTest, NulBytesAnywhereSurviveAWrite) {
    given("\0[a]\0\nx=1\0\n\0\n[b]\0]\ny\0=2\n"s);
    EXPECT_EQ(value("b", "x"), "none");
    EXPECT_TRUE(write("b", "z", "3"));
    EXPECT_EQ(bytes(), "\0[a]\0\nx=1\0\n\0\n[b]\0]\ny\0=2\n[b]\nz=3\n"s);
}

TEST_F(ProfileHostileTest, NulBytesAreCharactersOfNamesAndValues) {
    given("[a\0b]\nx\0y=1\0002\n"s);
    EXPECT_EQ(value("a\0b"sv, "x\0y"sv), "1\0002"s);
}

TEST_F(ProfileHostileTest, LinesOfAMegabyteAreReadAndKept) {
    const std::string longText(1 << 20, 'v');
    const std::string before = "[a]\n" + longText + "\nx=" + longText + "\nw" + longText + "=1\n";
    given(before + "y=2\n");
    EXPECT_EQ(value("a", "y"), "2");
    EXPECT_EQ(value("a", "w" + longText), "1");
    EXPECT_EQ(value("a", "x"), std::string(4095, 'v'));
    EXPECT_TRUE(write("a", "y", "3"));
    EXPECT_EQ(bytes(), before + "y=3\n");
}

TEST_F(ProfileHostileTest, AValueOfAMegabyteCanBeReplaced) {
    given("[a]\nx=" + std::string(1 << 20, 'v') + "\ny=2\n");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
}

TEST_F(ProfileHostileTest, AHundredThousandEqualKeysAreNoHindrance) {
    std::string text = "[a]\nx=" + std::string(1 << 20, 'v') + "\n";
    for (int i = 0; i < 100'000; ++i) {
        text += "x=1\n";
    }
    given(text + "y=2\n");
    EXPECT_EQ(value("a", "y"), "2");
}

TEST_F(ProfileHostileTest, AHundredThousandEqualSectionsAreNoHindrance) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += "[a]\r";
    }
    given(text + "[b]\ry=2\r");
    EXPECT_EQ(value("b", "y"), "2");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "[a]\rx=1\r" + text.substr(4) + "[b]\ry=2\r");
}

TEST_F(ProfileHostileTest, InALongSectionTheFirstOfEqualKeysIsFoundToo) {
    std::string text = "[a]\n ; Key=0\n=0\n";
    for (int i = 0; i < 500; ++i) {
        text += "filler" + std::to_string(i) + "=1\n";
    }
    given(text + "  KEY = first\nkey=second\n[b]\nonly=1\n");
    EXPECT_EQ(value("a", "key"), "first");
    EXPECT_EQ(value("a", "FILLER499"), "1");
    EXPECT_EQ(value("a", "filler500"), "none");
    EXPECT_EQ(value("a", "only"), "none");
    EXPECT_EQ(value("a", "; key"), "none");
}

TEST_F(ProfileHostileTest, TextsOfOnlyMarksAndLineEndsHaveNoKeys) {
    for (const std::string& text :
         {""s, "\n"s, "\r"s, "\r\n\r\n"s, "["s, "]"s, "[]"s, "="s, ";"s, "\xEF\xBB"s, "\xFF"s}) {
        given(text);
        EXPECT_EQ(value("a", "x"), "none");
    }
}

TEST_F(ProfileHostileTest, OddShortTextsKeepTheirBytesAndTakeANewSection) {
    given("[");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "[\n[a]\nx=1\n");
    given("\xFF");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "\xFF\n[a]\nx=1\n");
    given("\xEF\xBB");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "\xEF\xBB\n[a]\nx=1\n");
    given("\r");
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_EQ(bytes(), "\r[a]\rx=1\r");
}

} // namespace
} // namespace tarvik
