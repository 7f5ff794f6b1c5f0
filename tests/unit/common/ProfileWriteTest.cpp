#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_view_literals;

using ProfileWriteTest = ProfileTest;

TEST_F(ProfileWriteTest, TheFirstWriteMakesTheFile) {
    EXPECT_TRUE(write("Settings", "IsLocked", "1"));
    EXPECT_EQ(bytes(), "[Settings]\nIsLocked=1\n");
}

TEST_F(ProfileWriteTest, AnExistingKeyIsReplacedInPlace) {
    given("[a]\nx=1\ny=2\nz=3\n");
    EXPECT_TRUE(write("a", "y", "new"));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=new\nz=3\n");
}

TEST_F(ProfileWriteTest, AReplacedKeyKeepsItsSpellingAndTheBlanksBeforeItsValue) {
    given("[A]\n  KeY \t= \"old\" \nz=3\n");
    EXPECT_TRUE(write("a", "kEy", "new"));
    EXPECT_EQ(bytes(), "[A]\n  KeY \t=new\nz=3\n");
}

TEST_F(ProfileWriteTest, AKeyWithoutAValueGetsOneInItsPlace) {
    given("[a]\r\n x \r\nx=1\r\n");
    EXPECT_TRUE(write("a", "x", "7"));
    EXPECT_EQ(bytes(), "[a]\r\n x=7\r\nx=1\r\n");
    EXPECT_EQ(value("a", "x"), "7");
}

TEST_F(ProfileWriteTest, AKeyWithoutAValueInAWrittenSectionGetsOneInItsPlace) {
    engine.beginUpdate(file);
    EXPECT_TRUE(writeSection("a", std::string("x\0", 2)));
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_TRUE(write("a", "x", "7"));
    EXPECT_EQ(value("a", "x"), "7");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(bytes(), "[a]\nx=7\n");
}

TEST_F(ProfileWriteTest, OnlyTheFirstOfEqualKeysIsReplaced) {
    given("[a]\nx=1\nx=2\n[a]\nx=3\n");
    EXPECT_TRUE(write("a", "x", "new"));
    EXPECT_EQ(bytes(), "[a]\nx=new\nx=2\n[a]\nx=3\n");
}

TEST_F(ProfileWriteTest, ANewKeyGoesToTheEndOfItsSection) {
    given("[a]\nx=1\n[b]\nz=3\n");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n[b]\nz=3\n");
}

TEST_F(ProfileWriteTest, ANewKeyGoesBeforeTheBlankLinesThatEndItsSection) {
    given("[a]\nx=1\n\n;note\n\n \t\n\n[b]\n");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\n\n;note\ny=2\n\n \t\n\n[b]\n");
}

TEST_F(ProfileWriteTest, ANewKeyOfAnEmptySectionFollowsItsHeader) {
    given("[a]\n\n[b]\nx=1\n");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\ny=2\n\n[b]\nx=1\n");
}

TEST_F(ProfileWriteTest, ANewKeyGoesIntoTheFirstOfEqualSections) {
    given("[a]\n[b]\n[a]\nx=1\n");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=2\n[b]\n[a]\nx=1\n");
}

TEST_F(ProfileWriteTest, ANewSectionGoesToTheEndOfTheFile) {
    given("[a]\nx=1\n\n");
    EXPECT_TRUE(write("b", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\n\n[b]\ny=2\n");
}

TEST_F(ProfileWriteTest, ALastLineWithoutItsEndGetsOneBeforeANewLine) {
    given("[a]\nx=1");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
    given("[a]\nx=1");
    EXPECT_TRUE(write("b", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\n[b]\ny=2\n");
    given("[a]");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\ny=2\n");
}

TEST_F(ProfileWriteTest, AReplacedLastLineStaysWithoutItsEnd) {
    given("[a]\nx=1");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=2");
    given("[a]\nx=");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=2");
}

TEST_F(ProfileWriteTest, NewLinesEndAsTheirNeighboursDo) {
    given("[a]\r\nx=1\r\n[b]\ny=2\n[c]\rz=3\r");
    EXPECT_TRUE(write("a", "k", "1"));
    EXPECT_TRUE(write("b", "k", "2"));
    EXPECT_TRUE(write("c", "k", "3"));
    EXPECT_TRUE(write("d", "k", "4"));
    EXPECT_EQ(bytes(), "[a]\r\nx=1\r\nk=1\r\n[b]\ny=2\nk=2\n[c]\rz=3\rk=3\r[d]\rk=4\r");
}

TEST_F(ProfileWriteTest, WhereTheNeighbourHasNoEndTheFirstLineTellsIt) {
    given("[a]\r\nx=1");
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(bytes(), "[a]\r\nx=1\r\ny=2\r\n");
}

TEST_F(ProfileWriteTest, AFileWithoutLinesTakesTheEngineLineEnd) {
    ProfileEngine other(files, "\r\n");
    EXPECT_TRUE(other.WritePrivateProfileStringA("a", "x", "1", file));
    EXPECT_EQ(bytes(), "[a]\r\nx=1\r\n");
    given("[a]");
    EXPECT_TRUE(other.WritePrivateProfileStringA("a", "x", "1", file));
    EXPECT_EQ(bytes(), "[a]\r\nx=1\r\n");
}

TEST_F(ProfileWriteTest, EverythingElseSurvivesByteForByte) {
    given("lost=1\r\n; note\n[?]\n\tjunk \xFF\x80\r[a]\nx=1 ; not a note\n\n=2\n[a]\n");
    EXPECT_TRUE(write("A", "X", "9"));
    EXPECT_EQ(bytes(), "lost=1\r\n; note\n[?]\n\tjunk \xFF\x80\r[a]\nx=9\n\n=2\n[a]\n");
}

TEST_F(ProfileWriteTest, AUtf8MarkIsKept) {
    given("\xEF\xBB\xBF[a]\nx=1\n");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(bytes(), "\xEF\xBB\xBF[a]\nx=2\n");
}

TEST_F(ProfileWriteTest, AFileOfOnlyAUtf8MarkGetsNoEmptyLine) {
    given("\xEF\xBB\xBF");
    EXPECT_TRUE(write("a", "x", "2"));
    EXPECT_EQ(bytes(), "\xEF\xBB\xBF[a]\nx=2\n");
}

TEST_F(ProfileWriteTest, AnEmptyValueCanBeWritten) {
    given("[a]\nx=1\n");
    EXPECT_TRUE(write("a", "x", ""));
    EXPECT_TRUE(write("a", "y", ""));
    EXPECT_EQ(bytes(), "[a]\nx=\ny=\n");
}

TEST_F(ProfileWriteTest, BlanksAroundTheNamesAreNotWritten) {
    EXPECT_TRUE(write(" a ", "\tx ", "1"));
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileWriteTest, ABracketInASectionNameIsReadBack) {
    EXPECT_TRUE(write("a]b", "x", "1"));
    EXPECT_EQ(bytes(), "[a]b]\nx=1\n");
    EXPECT_EQ(value("a]b", "x"), "1");
}

TEST_F(ProfileWriteTest, WhatCouldNotBeReadBackIsNotWritten) {
    given("[a]\nx=1\n");
    EXPECT_FALSE(write("", "x", "2"));
    EXPECT_FALSE(write(" ", "x", "2"));
    EXPECT_FALSE(write("a", "", "2"));
    EXPECT_FALSE(write("a", " \t", "2"));
    EXPECT_FALSE(write("a\n", "x", "2"));
    EXPECT_FALSE(write("a", "x\r", "2"));
    EXPECT_FALSE(write("a", "x", "2\n[b]"));
    EXPECT_FALSE(write("a", "x", "2\r3"));
    EXPECT_FALSE(write("a", "x", "2\0003"sv));
    EXPECT_FALSE(write("a\0b"sv, "x", "2"));
    EXPECT_FALSE(write("a", "x=y", "2"));
    EXPECT_FALSE(write("a", "[x", "2"));
    EXPECT_FALSE(write("a", ";x", "2"));
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
    EXPECT_EQ(files.replaces, 0);
}

TEST_F(ProfileWriteTest, AnEmptyFileNameCannotBeWritten) {
    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "1", ""));
    EXPECT_FALSE(engine.WritePrivateProfileSectionA("a", "x=1\0"sv, ""));
    EXPECT_EQ(files.replaces, 0);
}

TEST_F(ProfileWriteTest, ANewSectionIsWrittenWithItsLines) {
    given("[a]\nx=1\n");
    EXPECT_TRUE(writeSection("16.11.2026|08:15:22", "Sent=1\0Rcvd=2\0IPAddress=\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\n[16.11.2026|08:15:22]\nSent=1\nRcvd=2\nIPAddress=\n");
}

TEST_F(ProfileWriteTest, AReplacedSectionKeepsItsHeaderAndTheBlankLinesAfterIt) {
    given("[a]\nx=1\n [B] note\r\ny=2\r\n;gone\r\nz\r\n\r\n \r\n[c]\nw=4\n");
    EXPECT_TRUE(writeSection("b", "k=1\0l=2\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\n [B] note\r\nk=1\r\nl=2\r\n\r\n \r\n[c]\nw=4\n");
}

TEST_F(ProfileWriteTest, OnlyTheFirstOfEqualSectionsIsReplaced) {
    given("[a]\nx=1\n[a]\ny=2\n");
    EXPECT_TRUE(writeSection("a", "z=3\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\nz=3\n[a]\ny=2\n");
}

TEST_F(ProfileWriteTest, ASectionWithoutABodyIsFilled) {
    given("[a]\n\n[b]");
    EXPECT_TRUE(writeSection("a", "x=1\0\0"sv));
    EXPECT_TRUE(writeSection("b", "y=2\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\n\n[b]\ny=2\n");
}

TEST_F(ProfileWriteTest, ASectionCanBeEmptied) {
    given("[a]\nx=1\n\n[b]\ny=2\n");
    EXPECT_TRUE(writeSection("a", "\0"sv));
    EXPECT_TRUE(writeSection("c", ""));
    EXPECT_EQ(bytes(), "[a]\n\n[b]\ny=2\n[c]\n");
}

TEST_F(ProfileWriteTest, TheLastLineOfASectionTextNeedsNoNul) {
    EXPECT_TRUE(writeSection("a", "x=1\0y=2"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\ny=2\n");
}

TEST_F(ProfileWriteTest, WhatFollowsTheClosingNulOfASectionTextIsIgnored) {
    EXPECT_TRUE(writeSection("a", "x=1\0\0y=2\0"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileWriteTest, ASectionTextMayHoldComments) {
    EXPECT_TRUE(writeSection("a", "; note\0x=1\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\n; note\nx=1\n");
}

TEST_F(ProfileWriteTest, ASectionTextThatCouldNotBeReadBackIsNotWritten) {
    given("[a]\nx=1\n");
    EXPECT_FALSE(writeSection("a", "y=2\n[b]\0\0"sv));
    EXPECT_FALSE(writeSection("a", "y=2\0[b]\0\0"sv));
    EXPECT_FALSE(writeSection("a", "y=2\r\0\0"sv));
    EXPECT_FALSE(writeSection("a", "=2\0\0"sv));
    EXPECT_FALSE(writeSection("a", "y=2\0  \0\0"sv));
    EXPECT_FALSE(writeSection("", "y=2\0\0"sv));
    EXPECT_FALSE(writeSection("b\n", "y=2\0\0"sv));
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileWriteTest, EachWriteIsOneReplacementOfTheFile) {
    EXPECT_TRUE(write("a", "x", "1"));
    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_EQ(files.replaces, 2);
}

} // namespace
} // namespace tarvik
