#include "journal/JournalEntry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace tarvik {
namespace {

using Kind = JournalPlace::Kind;

FormerSession sessionOf(const char* entry, std::int32_t counted) {
    FormerSession former;
    former.session.connection.dwSize = RASCONNA::size;
    former.session.connection.hrasconn = 7;
    std::strncpy(former.session.connection.szEntryName, entry, 256);
    std::strncpy(former.session.connection.szDeviceType, "modem", 16);
    std::strncpy(former.session.connection.szDeviceName, "Standard modem", 128);
    former.session.last.dwSize = RAS_STATS::size;
    former.session.last.dwBytesRcved = 4'000'000'001;
    former.session.last.dwBytesXmited = 2;
    former.session.last.dwFramesRcved = 3;
    former.session.last.dwFramesXmited = 4;
    former.session.last.dwConnectDuration = 5;
    former.session.readAt = 1'794'816'920'000;
    former.session.totals = {.rcvd = 13'000'000'000, .sent = 12, .milliseconds = 14};
    former.session.offset = {.rcvd = 1, .sent = 2, .duration = 3};
    former.session.counted = {.rcvd = counted, .sent = 0, .duration = 0};
    former.mark = std::string("any\0bytes", 9);
    return former;
}

JournalEntry fullEntry() {
    JournalEntry entry;
    entry.moment = Date::fromCivil({2026, 11, 16, 8, 15, 22});
    entry.standsOn = {.exists = true, .lastState = "16.11.2026|08:00:00", .lastDateStamp = 31};
    entry.ended = true;
    entry.resetIfGone = Date::fromCivil({2026, 11, 16});
    entry.totals = {.rcvd = Currency::fromWhole(9'876'501'000), .sent = 77, .duration = 3600};
    entry.tickerBase = 123;
    for (std::size_t i = 0; i < entry.settings.size(); ++i) {
        entry.settings[i] = static_cast<std::int64_t>(i) * 1'000'000'007 - 5;
    }
    entry.address = "10.0.0.17";
    entry.sessions = {sessionOf("Ridge", 5000), sessionOf("Harbour", 830)};
    return entry;
}

std::string placeOf(const JournalEntry& entry, std::uint64_t number = 1) {
    return placeOf(bodyOf(entry), entry.moment, number);
}

TEST(JournalEntryTest, WhatWasWrittenIsReadBack) {
    const JournalPlace place = readPlace(placeOf(fullEntry(), 99));

    ASSERT_EQ(place.kind, Kind::Whole);
    EXPECT_EQ(place.number, 99U);
    const JournalEntry& read = place.entry;
    EXPECT_EQ(read.moment, fullEntry().moment);
    EXPECT_EQ(read.standsOn, fullEntry().standsOn);
    EXPECT_TRUE(read.ended);
    EXPECT_EQ(read.resetIfGone, fullEntry().resetIfGone);
    EXPECT_EQ(read.totals, fullEntry().totals);
    EXPECT_EQ(read.tickerBase, Currency(123));
    EXPECT_EQ(read.settings, fullEntry().settings);
    EXPECT_EQ(read.address, "10.0.0.17");
    ASSERT_EQ(read.sessions.size(), 2U);
    const LineSession& ridge = read.sessions[0].session;
    EXPECT_STREQ(ridge.connection.szEntryName, "Ridge");
    EXPECT_STREQ(ridge.connection.szDeviceType, "modem");
    EXPECT_STREQ(ridge.connection.szDeviceName, "Standard modem");
    EXPECT_EQ(ridge.connection.hrasconn, 7U);
    EXPECT_EQ(ridge.last.dwBytesRcved, 4'000'000'001U);
    EXPECT_EQ(ridge.last.dwBytesXmited, 2U);
    EXPECT_EQ(ridge.last.dwFramesRcved, 3U);
    EXPECT_EQ(ridge.last.dwFramesXmited, 4U);
    EXPECT_EQ(ridge.last.dwConnectDuration, 5U);
    EXPECT_EQ(ridge.readAt, 1'794'816'920'000);
    EXPECT_EQ(ridge.totals, (Traffic{.rcvd = 13'000'000'000, .sent = 12, .milliseconds = 14}));
    EXPECT_EQ(ridge.offset, (Amount{1, 2, 3}));
    EXPECT_EQ(ridge.counted, (Amount{5000, 0, 0}));
    EXPECT_EQ(read.sessions[0].mark, std::string("any\0bytes", 9));
    EXPECT_STREQ(read.sessions[1].session.connection.szEntryName, "Harbour");
}

TEST(JournalEntryTest, EveryByteThatIsAnotherIsNoticed) {
    const std::string whole = placeOf(fullEntry());

    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ flip);
            EXPECT_NE(readPlace(damaged).kind, Kind::Whole) << i;
        }
    }
}

TEST(JournalEntryTest, EveryEndThatIsMissingIsNoticed) {
    const std::string whole = placeOf(fullEntry());

    for (std::size_t kept = 1; kept < whole.size(); ++kept) {
        std::string cut = whole.substr(0, kept);
        EXPECT_EQ(readPlace(cut).kind, Kind::Torn) << kept;
        cut.resize(journalPlace, '\0');
        EXPECT_EQ(readPlace(cut).kind, Kind::Torn) << kept;
    }
}

TEST(JournalEntryTest, EveryBeginningThatIsMissingIsNoticed) {
    const std::string whole = placeOf(fullEntry());

    for (std::size_t lost = 8; lost < whole.size(); ++lost) {
        EXPECT_EQ(readPlace(std::string(lost, '\0') + whole.substr(lost)).kind, Kind::Torn);
    }
}

TEST(JournalEntryTest, WhatStandsBehindAnEntryIsNotPartOfIt) {
    std::string place = placeOf(fullEntry());
    place.resize(journalPlace, 'x');

    EXPECT_EQ(readPlace(place).kind, Kind::Whole);
}

TEST(JournalEntryTest, ZerosAreAPlaceThatWasNeverWritten) {
    EXPECT_EQ(readPlace(std::string(journalPlace, '\0')).kind, Kind::Empty);
    EXPECT_EQ(readPlace("").kind, Kind::Empty);
}

TEST(JournalEntryTest, AnythingElseIsForeign) {
    EXPECT_EQ(readPlace("Dear diary, today").kind, Kind::Foreign);
    EXPECT_EQ(readPlace("x").kind, Kind::Foreign);
}

/// The sum of the whole entry again, so that nothing but the change is found fault with.
std::string withSum(std::string place) {
    // The same polynomial, one bit after the other.
    std::uint64_t sum = ~std::uint64_t{0};
    for (std::size_t i = 0; i + 8 < place.size(); ++i) {
        sum ^= std::uint64_t{static_cast<unsigned char>(place[i])} << 56U;
        for (int bit = 0; bit < 8; ++bit) {
            const bool high = (sum >> 63U) != 0;
            sum = (sum << 1U) ^ (high ? 0x42F0'E1EB'A9EA'3693U : 0U);
        }
    }
    sum = ~sum;
    for (std::size_t i = 0; i < 8; ++i) {
        place[place.size() - 8 + i] = static_cast<char>(sum >> (8 * i));
    }
    return place;
}

TEST(JournalEntryTest, TheSumIsThatOfThePublishedPolynomial) {
    EXPECT_EQ(withSum(placeOf(fullEntry())), placeOf(fullEntry()));
}

TEST(JournalEntryTest, AnUnknownVersionIsToldFromADamagedOne) {
    std::string place = placeOf(fullEntry());
    place[8] = 2;
    EXPECT_EQ(readPlace(place).kind, Kind::Unsure);

    EXPECT_EQ(readPlace(withSum(place)).kind, Kind::OtherVersion);
}

TEST(JournalEntryTest, AnotherVersionMayHaveLongerEntries) {
    std::string place = placeOf(fullEntry());
    place[8] = 2;
    place[14] = 1; // 65,536 bytes longer than the place

    EXPECT_EQ(readPlace(place).kind, Kind::Unsure);
}

TEST(JournalEntryTest, ANumberThatNoneComesAfterIsNoEntry) {
    EXPECT_EQ(readPlace(placeOf(fullEntry(), UINT64_MAX)).kind, Kind::Impossible);
    EXPECT_EQ(readPlace(placeOf(fullEntry(), UINT64_MAX - 1)).kind, Kind::Whole);
}

TEST(JournalEntryTest, WhatNobodyCanHaveMeantIsNoEntry) {
    JournalEntry below = fullEntry();
    below.totals.sent = -1;
    EXPECT_EQ(readPlace(placeOf(below)).kind, Kind::Impossible) << "totals below zero";

    JournalEntry noDay = fullEntry();
    noDay.moment = Date(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(readPlace(placeOf(noDay)).kind, Kind::Impossible) << "a moment that is none";

    JournalEntry stamp = fullEntry();
    stamp.standsOn.lastDateStamp = -1;
    EXPECT_EQ(readPlace(placeOf(stamp)).kind, Kind::Impossible) << "a record before the first";

    std::string longer = placeOf(bodyOf(fullEntry()) + "x", fullEntry().moment, 1);
    EXPECT_EQ(readPlace(longer).kind, Kind::Impossible) << "something behind the last session";
}

TEST(JournalEntryTest, ASessionThatCountsMoreThanTheTotalsHoldIsLeftOut) {
    JournalEntry entry = fullEntry();
    entry.totals.rcvd = 5829;

    const JournalPlace place = readPlace(placeOf(entry));

    ASSERT_EQ(place.kind, Kind::Whole);
    ASSERT_EQ(place.entry.sessions.size(), 1U);
    EXPECT_STREQ(place.entry.sessions[0].session.connection.szEntryName, "Ridge");
}

TEST(JournalEntryTest, MoreSessionsThanFindRoomAreLeftOutWhole) {
    JournalEntry entry = fullEntry();
    entry.sessions.assign(100, sessionOf(std::string(256, 'n').c_str(), 1));

    const std::string place = placeOf(entry);
    const JournalPlace read = readPlace(place);

    EXPECT_LE(place.size(), journalPlace);
    EXPECT_GT(place.size() + 1000, journalPlace);
    ASSERT_EQ(read.kind, Kind::Whole);
    EXPECT_GT(read.entry.sessions.size(), 2U);
}

TEST(JournalEntryTest, TheLongestTextsFindRoom) {
    JournalEntry entry = fullEntry();
    entry.standsOn.lastState = std::string(127, 's');
    entry.address = std::string(300, 'a');
    entry.sessions.clear();

    const JournalPlace read = readPlace(placeOf(entry));

    ASSERT_EQ(read.kind, Kind::Whole);
    EXPECT_EQ(read.entry.standsOn.lastState, std::string(127, 's'));
    EXPECT_EQ(read.entry.address, std::string(255, 'a'));
}

TEST(JournalEntryTest, LinesOfTheLedgerThatHaveTheRoomAreReadBackBesideAllSessions) {
    JournalEntry entry = fullEntry();
    const std::string lines = std::string(roomForLedger(entry) - 1, 'l') + "\n";
    entry.ledger = {.end = 99, .lines = lines};

    const JournalPlace read = readPlace(placeOf(entry));

    ASSERT_EQ(read.kind, Kind::Whole);
    EXPECT_EQ(read.entry.ledger->lines, lines);
    EXPECT_EQ(read.entry.sessions.size(), 2U);
}

TEST(JournalEntryTest, LinesOfTheLedgerComeBeforeSessionsThatFindNoRoomBesideThem) {
    JournalEntry entry = fullEntry();
    const std::string lines = std::string(roomForLedger(entry), 'l') + "\n";
    entry.ledger = {.end = 99, .lines = lines};

    const JournalPlace read = readPlace(placeOf(entry));

    ASSERT_EQ(read.kind, Kind::Whole);
    EXPECT_EQ(read.entry.ledger->lines, lines);
    EXPECT_EQ(read.entry.sessions.size(), 1U);
}

TEST(JournalEntryTest, TheMomentIsNoPartOfWhatAnEntrySays) {
    JournalEntry later = fullEntry();
    later.moment = Date(later.moment.serial() + 1);

    EXPECT_EQ(bodyOf(later), bodyOf(fullEntry()));
}

} // namespace
} // namespace tarvik
