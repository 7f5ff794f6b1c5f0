#include "common/ProfileTest.h"
#include "common/Utf16.h"
#include "support/ReferenceProfile.h"

#include <random>

namespace tarvik {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

/// The units' bytes behind their mark, the low byte of each first or last.
std::string fileOf(std::u16string_view units, bool little) {
    std::string bytes(little ? "\xFF\xFE" : "\xFE\xFF");
    for (const char16_t unit : units) {
        const auto low = static_cast<char>(unit & 0xFF);
        const auto high = static_cast<char>(unit >> 8);
        bytes += little ? low : high;
        bytes += little ? high : low;
    }
    return bytes;
}

/// Files of two bytes a character, with either byte first.
class ProfileWideTest : public ProfileTest, public testing::WithParamInterface<bool> {
protected:
    void givenUnits(std::u16string_view units) { given(fileOf(units, GetParam())); }
    void expectUnits(std::u16string_view units) const {
        EXPECT_EQ(bytes(), fileOf(units, GetParam()));
    }
};

TEST_P(ProfileWideTest, KeysAreRead) {
    givenUnits(u"; note\r\n[Settings]\r\nx= \"1234,5\" \r\n[s]\r\nn=12abc\r\n");

    EXPECT_EQ(value("settings", "X"), "1234,5");
    EXPECT_EQ(number("n"), 12);
    EXPECT_EQ(value("settings", "y"), "none");
}

TEST_P(ProfileWideTest, AKeyIsReplacedInTheFilesOwnForm) {
    givenUnits(u"[a]\r\nx=old\r\ny=2\r\n");

    EXPECT_TRUE(write("a", "x", "new"));

    expectUnits(u"[a]\r\nx=new\r\ny=2\r\n");
}

TEST_P(ProfileWideTest, KeysAndSectionsAreAddedInTheFilesOwnForm) {
    givenUnits(u"[a]\r\nx=1");

    EXPECT_TRUE(write("a", "y", "2"));
    EXPECT_TRUE(writeSection("16.11.2026|08:15:22", "Sent=1\0Rcvd=2\0\0"sv));

    expectUnits(u"[a]\r\nx=1\r\ny=2\r\n[16.11.2026|08:15:22]\r\nSent=1\r\nRcvd=2\r\n");
}

TEST_P(ProfileWideTest, AnUpdateIsOneReplacementInTheFilesOwnForm) {
    givenUnits(u"[a]\nx=1\n");
    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "x"), "1");
    write("a", "x", "2");
    write("b", "y", "3");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);

    expectUnits(u"[a]\nx=2\n[b]\ny=3\n");
    EXPECT_EQ(files.replaces, 1);
}

TEST_P(ProfileWideTest, WhatIsNotWrittenKeepsEveryUnit) {
    // A pair, its halves alone and the wrong way round, a NUL, and what is no character at all.
    const std::u16string odd = u"\xD83D\xDE00 \xD83D \xDE00\xD83D \uFFFF\u4E2D"s + u'\0' + u"\r\n";
    givenUnits(odd + u"[a]\r\nx=1\r\n[" + odd);

    EXPECT_TRUE(write("a", "x", "2"));

    expectUnits(odd + u"[a]\r\nx=2\r\n[" + odd);
}

TEST_P(ProfileWideTest, LettersBeyondAsciiAreNamesAndValues) {
    givenUnits(u"[\u00C4rger]\n\u4E2D=\u00E9\n");

    EXPECT_EQ(value("\xC3\x84rger", "\xE4\xB8\xAD"), "\xC3\xA9");
    EXPECT_TRUE(write("\xC3\x84rger", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"));

    expectUnits(u"[\u00C4rger]\n\u4E2D=\xD83D\xDE00\n");
}

TEST_P(ProfileWideTest, TheMarkAloneIsAnEmptyFile) {
    givenUnits(u"");

    EXPECT_TRUE(write("a", "x", "1"));

    expectUnits(u"[a]\nx=1\n");
}

TEST_P(ProfileWideTest, HalfAUnitAtTheEndIsLeftOut) {
    given(fileOf(u"[a]\nx=1\n", GetParam()) + "\x5B");

    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_TRUE(write("a", "y", "2"));

    expectUnits(u"[a]\nx=1\ny=2\n");
}

INSTANTIATE_TEST_SUITE_P(Each, ProfileWideTest, testing::Bool(), [](const auto& given) {
    return given.param ? "LowByteFirst" : "HighByteFirst";
});

/// An engine on a system whose code page has one byte a character, here those below 256.
class ProfileCodePageTest : public ProfileTest {
protected:
    static std::string toUtf8(std::string_view text) {
        std::u16string units;
        for (const char byte : text) {
            units += static_cast<char16_t>(static_cast<unsigned char>(byte));
        }
        return utf8Of(units);
    }
    static std::string fromUtf8(std::string_view text) {
        std::string bytes;
        for (const char16_t unit : utf16Of(text)) {
            bytes += unit < 256 ? static_cast<char>(unit) : '?';
        }
        return bytes;
    }
    std::string ofCodePage(std::string_view section, std::string_view key) {
        std::array<char, 128> buffer{};
        const std::uint32_t count =
            paged.GetPrivateProfileStringA(section, key, "none", buffer.data(), 128, file);
        return {buffer.data(), count};
    }

    ProfileEngine paged{files, "\r\n", CodePage{.toUtf8 = toUtf8, .fromUtf8 = fromUtf8}};
};

TEST_F(ProfileCodePageTest, NamesAndValuesGoInAndOutInTheCodePage) {
    given(fileOf(u"[\u00C4rger]\r\n\u00E9t\u00E9=caf\u00E9 \u4E2D\r\n", true));

    EXPECT_EQ(ofCodePage("\xC4rger", "\xE9t\xE9"), "caf\xE9 ?");
    EXPECT_TRUE(paged.WritePrivateProfileStringA("\xC4rger", "\xFC", "\xDF", file));

    EXPECT_EQ(bytes(),
              fileOf(u"[\u00C4rger]\r\n\u00E9t\u00E9=caf\u00E9 \u4E2D\r\n\u00FC=\u00DF\r\n", true));
}

TEST_F(ProfileCodePageTest, WhatAnUpdateCollectedIsReadInTheCodePage) {
    given(fileOf(u"[\u00C4]\r\n\u00E9=1\r\n", true));
    paged.beginUpdate(file);
    paged.WritePrivateProfileStringA("\xC4", "\xE9", "\xFC", file);

    EXPECT_EQ(ofCodePage("\xC4", "\xE9"), "\xFC");
    EXPECT_EQ(paged.commitUpdate(), UpdateOutcome::Written);

    EXPECT_EQ(bytes(), fileOf(u"[\u00C4]\r\n\u00E9=\u00FC\r\n", true));
}

TEST_F(ProfileCodePageTest, AFileOfBytesIsNotConverted) {
    given("[\xC4]\n\xE9=\x80\n");

    EXPECT_EQ(ofCodePage("\xC4", "\xE9"), "\x80");
    EXPECT_TRUE(paged.WritePrivateProfileStringA("\xC4", "x", "\xFF", file));

    EXPECT_EQ(bytes(), "[\xC4]\n\xE9=\x80\nx=\xFF\n");
}

TEST(Utf16Test, EveryRowOfUnitsComesBack) {
    std::mt19937 source{20261122};
    const std::u16string units = u"a[=\n\u0080\u07FF\u0800\xD800\xDBFF\xDC00\xDFFF\uE000\uFFFF";
    for (int round = 0; round < 2000; ++round) {
        std::u16string text;
        for (std::size_t i = source() % 12; i > 0; --i) {
            text += units[source() % units.size()];
        }
        ASSERT_EQ(utf16Of(utf8Of(text)), text);
    }
}

TEST(Utf16Test, TextsAreThoseOfTheStandard) {
    EXPECT_EQ(utf8Of(u"z\u00E9\u20AC\xD83D\xDE00"), "z\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf16Of("z\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), u"z\u00E9\u20AC\xD83D\xDE00");
}

TEST(Utf16Test, AByteOfNoCharacterBecomesTheReplacement) {
    EXPECT_EQ(utf16Of("\x80z"), u"\uFFFDz");
    EXPECT_EQ(utf16Of("\xC3"), u"\uFFFD");
    EXPECT_EQ(utf16Of("\xC0\xAF"), u"\uFFFD\uFFFD");   // too long for its code
    EXPECT_EQ(utf16Of("\xE2\x82z"), u"\uFFFD\uFFFDz"); // broken off
    EXPECT_EQ(utf16Of("\xF4\x90\x80\x80").size(), 4U); // beyond all codes
}

} // namespace
} // namespace tarvik
