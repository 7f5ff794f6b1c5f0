#include "common/RasRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tarvik {
namespace {

const std::vector<RasEntry> two{{.name = "One", .flags = 2, .phoneBookPath = "C:\\b.pbk"},
                                {.name = "A name of more than twenty characters"}};

TEST(RasRecordsTest, ATextIsCutSoThatANulFollows) {
    std::array<char, 6> bytes{'z', 'z', 'z', 'z', 'z', 'z'};
    char field[5];

    putText(field, "abcdefg");
    std::copy(std::begin(field), std::end(field), bytes.begin());

    EXPECT_EQ(std::string(bytes.data(), 6), std::string("abcd\0z", 6));
}

TEST(RasRecordsTest, AShortTextIsFollowedByNuls) {
    char field[5] = {'z', 'z', 'z', 'z', 'z'};

    putText(field, "a");

    EXPECT_EQ(std::string(field, 5), std::string("a\0\0\0\0", 5));
}

TEST(RasRecordsTest, TheNewestFormHasFlagsAndPath) {
    std::array<RASENTRYNAMEA, 2> records{};
    records[0].dwSize = 532;
    std::uint32_t bytes = sizeof records;
    std::uint32_t count = 0;

    EXPECT_EQ(listEntries(two, records.data(), &bytes, &count), 0U);

    EXPECT_EQ(bytes, 1064U);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(records[0].dwFlags, 2U);
    EXPECT_STREQ(records[0].szPhonebookPath, "C:\\b.pbk");
    EXPECT_STREQ(records[1].szEntryName, "A name of more than twenty characters");
    EXPECT_EQ(records[1].dwSize, 532U);
}

TEST(RasRecordsTest, TheOldestFormCutsTheName) {
    std::array<RASENTRYNAMEA_28, 2> records{};
    records[0].dwSize = 28;
    std::uint32_t bytes = sizeof records;
    std::uint32_t count = 0;

    EXPECT_EQ(listEntries(two, records.data(), &bytes, &count), 0U);

    EXPECT_STREQ(records[1].szEntryName, "A name of more than ");
}

TEST(RasRecordsTest, ABufferThatIsTooSmallIsToldTheSizeAndStays) {
    std::array<RASENTRYNAMEA_264, 1> records{};
    records[0].dwSize = 264;
    std::uint32_t bytes = sizeof records;
    std::uint32_t count = 0;

    EXPECT_EQ(listEntries(two, records.data(), &bytes, &count), 603U);

    EXPECT_EQ(bytes, 528U);
    EXPECT_EQ(count, 2U);
    EXPECT_STREQ(records[0].szEntryName, "");
}

TEST(RasRecordsTest, WithoutEntriesNoRoomIsNeeded) {
    RASENTRYNAMEA_264 record{};
    record.dwSize = 264;
    std::uint32_t bytes = 0;
    std::uint32_t count = 9;

    EXPECT_EQ(listEntries({}, &record, &bytes, &count), 0U);

    EXPECT_EQ(bytes, 0U);
    EXPECT_EQ(count, 0U);
}

TEST(RasRecordsTest, AnErrorTextIsCutToItsBuffer) {
    char buffer[4] = {'z', 'z', 'z', 'z'};

    EXPECT_EQ(answerErrorText("busy line", buffer, sizeof buffer), 0U);

    EXPECT_STREQ(buffer, "bus");
}

TEST(RasRecordsTest, WithoutATextOrRoomTheBufferStays) {
    char buffer[4] = {'z', 'z', 'z', 'z'};

    EXPECT_EQ(answerErrorText(nullptr, buffer, sizeof buffer), 87U);
    EXPECT_EQ(answerErrorText("text", buffer, 0), 87U);

    EXPECT_EQ(std::string(buffer, 4), "zzzz");
}

} // namespace
} // namespace tarvik
