#include "ledger/LedgerEntry.h"
#include "ledger/LedgerTest.h"
#include "types/CheckSum.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace tarvik {
namespace {

constexpr Moment morning = day + 7h + 15min;

LedgerEntry quarterOfRidge() {
    return {.at = morning, .ahead = 1h, .line = "Ridge", .traffic = {5120, 4096, 900'000}};
}

LedgerEntry dayOfHarbour() {
    return {.span = LedgerEntry::Span::Day,
            .inside = true,
            .at = std::chrono::sys_days(2025y / 10 / 26) + 15h + 30min,
            .ahead = -(3h + 30min),
            .line = "Harbour line",
            .traffic = {UINT64_MAX, 0, 1}};
}

/// The line as it stands, and as anybody can reckon its sum.
std::string lineOf(const std::string& text) {
    std::array<char, 17> sum{};
    std::snprintf(sum.data(), sum.size(), "%08X%08X", static_cast<unsigned>(checkSum(text) >> 32U),
                  static_cast<unsigned>(checkSum(text)));
    return std::string(sum.data()) + " " + text;
}

/// What is read of that text behind the right sum.
LedgerLine reading(const std::string& text) {
    return readLedgerLine(lineOf(text));
}

bool isNothing(const LedgerLine& line) {
    return std::holds_alternative<std::monostate>(line);
}

TEST(LedgerEntryTest, AQuarterHourIsOneLine) {
    EXPECT_EQ(textOf(quarterOfRidge()),
              lineOf("Q 2026-11-16T07:15Z +01:00 5120 4096 900000 own Ridge") + "\n");
}

TEST(LedgerEntryTest, ADayIsToldByTheUsersCalendar) {
    EXPECT_EQ(textOf(dayOfHarbour()),
              lineOf("D 2025-10-26 -03:30 18446744073709551615 0 1 inside Harbour line") + "\n");
}

TEST(LedgerEntryTest, TheFirstLineTellsTheVersionAndTheBeginning) {
    EXPECT_EQ(textOf(LedgerHead{.version = 1, .begun = morning + 22s, .ahead = 60min}),
              lineOf("Tarvik ledger 1 2026-11-16T07:15:22Z +01:00") + "\n");
}

TEST(LedgerEntryTest, WhatTheUserSaidIsOneLineEach) {
    LedgerNote note{.at = morning + 22s, .ahead = 60min, .plan = 2, .what = {}};

    note.what = ProvidersFigure{.measure = Measure::Bytes, .told = 31, .counted = 29};
    EXPECT_EQ(textOf(note), lineOf("P 2026-11-16T07:15:22Z +01:00 2 bytes 31 29") + "\n");
    note.what = Extension{.bytes = 500, .milliseconds = 0, .today = true};
    EXPECT_EQ(textOf(note), lineOf("X 2026-11-16T07:15:22Z +01:00 2 today 500 0") + "\n");
    note.what = TakenBack{.extension = true, .at = morning};
    EXPECT_EQ(textOf(note),
              lineOf("T 2026-11-16T07:15:22Z +01:00 2 X 2026-11-16T07:15:00Z") + "\n");
}

TEST(LedgerEntryTest, WhatWasWrittenIsReadBack) {
    const auto read = [](std::string text) {
        text.pop_back();
        return readLedgerLine(text);
    };
    const LedgerNote figure{
        .at = morning, .ahead = 0min, .plan = 9, .what = ProvidersFigure{Measure::Time, 5, 7}};
    const LedgerNote extension{
        .at = morning, .ahead = 24h, .plan = 1, .what = Extension{1, 2, false}};
    const LedgerNote back{
        .at = morning, .ahead = -24h, .plan = 1, .what = TakenBack{false, morning - 1s}};
    const LedgerHead head{.version = 1, .begun = morning, .ahead = 0min};

    EXPECT_EQ(read(textOf(quarterOfRidge())), LedgerLine(quarterOfRidge()));
    EXPECT_EQ(read(textOf(dayOfHarbour())), LedgerLine(dayOfHarbour()));
    EXPECT_EQ(read(textOf(figure)), LedgerLine(figure));
    EXPECT_EQ(read(textOf(extension)), LedgerLine(extension));
    EXPECT_EQ(read(textOf(back)), LedgerLine(back));
    EXPECT_EQ(read(textOf(head)), LedgerLine(head));
}

TEST(LedgerEntryTest, ALineMayHaveAnyName) {
    for (const std::string& name :
         {std::string(), std::string(" two  blanks "), std::string("a\r\nb\tc\x7F"),
          std::string("100 %0A"), std::string("\xC3\xA4\xFF"), std::string("a\0b", 3)}) {
        LedgerEntry entry = quarterOfRidge();
        entry.line = name;
        const std::string text = textOf(entry);

        EXPECT_EQ(text.find('\n'), text.size() - 1);
        EXPECT_EQ(readLedgerLine(text.substr(0, text.size() - 1)), LedgerLine(entry));
    }
}

TEST(LedgerEntryTest, EveryByteThatIsAnotherIsNoticed) {
    const std::string whole = lineOf("Q 2026-11-16T07:15Z +01:00 5120 4096 900000 own Ridge");

    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int flip : {0x01, 0x20, 0x80}) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ flip);
            EXPECT_TRUE(isNothing(readLedgerLine(damaged))) << damaged;
        }
        EXPECT_TRUE(isNothing(readLedgerLine(whole.substr(0, i)))) << i;
        EXPECT_TRUE(isNothing(readLedgerLine(whole.substr(i + 1)))) << i;
    }
}

TEST(LedgerEntryTest, WhatNobodyCanHaveMeantIsNotTaken) {
    for (const char* text : {"",
                             "Q",
                             "Q ",
                             "Z 2026-11-16T07:15Z +01:00 1 2 3 own Ridge",
                             "Q2026-11-16T07:15Z +01:00 1 2 3 own Ridge",
                             "Q 2026-11-16T07:14Z +01:00 1 2 3 own R",
                             "Q 2026-02-30T07:15Z +01:00 1 2 3 own R",
                             "Q 2026-11-16T24:15Z +01:00 1 2 3 own R",
                             "Q 2026-11-16T07:15Z +01:60 1 2 3 own R",
                             "Q 2026-11-16T07:15Z +24:01 1 2 3 own R",
                             "Q 2026-11-16T07:15Z -00:00 1 2 3 own R",
                             "Q 2026-11-16T07:15Z 01:00 1 2 3 own R",
                             "Q 2026-11-16T07:15Z +01:00 1 2 own R",
                             "Q 2026-11-16T07:15Z +01:00 -1 2 3 own R",
                             "Q 2026-11-16T07:15Z +01:00 01 2 3 own R",
                             "Q 2026-11-16T07:15Z +01:00 1 2 3 other R",
                             "Q 2026-11-16T07:15Z +01:00 18446744073709551616 2 3 own R",
                             "Q 2026-11-16T07:15Z +01:00 1 2 3 own",
                             "Q 2026-11-16T07:15Z +01:00 1 2 3 own R%",
                             "Q 2026-11-16T07:15Z +01:00 1 2 3 own %0a",
                             "Q 2026-11-16T07:15Z +01:00 1 2 3 own %41",
                             "Q 1968-11-16T07:15Z +01:00 1 2 3 own R",
                             "D 2026-11-16T07:15Z +01:00 1 2 3 own R",
                             "P 2026-11-16T07:15:22Z +01:00 0 bytes 1 2",
                             "P 2026-11-16T07:15:22Z +01:00 10 bytes 1 2",
                             "P 2026-11-16T07:15:22Z +01:00 1 bytes 1 2 ",
                             "P 2026-11-16T07:15:22Z +01:00 1 hours 1 2",
                             "X 2026-11-16T07:15:22Z +01:00 1 today 1",
                             "T 2026-11-16T07:15:22Z +01:00 1 Q 1",
                             "T 2026-11-16T07:15:60Z +01:00 1 P 2026-11-16T07:15:22Z",
                             "Tarvik ledger 0 2026-11-16T07:15:22Z +01:00",
                             "Tarvik ledger 1 2026-11-16T07:15:22Z",
                             "Tarvik ledger 1 2026-11-16T07:15:22Z +01:00 more"}) {
        EXPECT_TRUE(isNothing(reading(text))) << text;
    }
}

TEST(LedgerEntryTest, AnotherVersionIsKnownForOneHoweverItGoesOn) {
    EXPECT_EQ(reading("Tarvik ledger 2 whatever"), LedgerLine(LedgerHead{.version = 2}));
    EXPECT_EQ(reading("Tarvik ledger 2"), LedgerLine(LedgerHead{.version = 2}));
}

TEST(LedgerEntryTest, ABeginningOfAFirstLineIsKnown) {
    const std::string head = textOf(LedgerHead{.version = 1, .begun = morning, .ahead = 0min});

    for (std::size_t kept = 0; kept < head.size(); ++kept) {
        EXPECT_TRUE(mayBeginLedger(head.substr(0, kept))) << kept;
        EXPECT_TRUE(mayBeginLedger(head.substr(0, kept) + std::string(99, '\0'))) << kept;
    }
    EXPECT_FALSE(mayBeginLedger("Somebody's file"));
    EXPECT_FALSE(mayBeginLedger("0123456789ABCDEF Tarvik's file"));
}

TEST(LedgerEntryTest, AQuarterHourBeginsEveryFifteenMinutes) {
    EXPECT_EQ(quarterOf(morning), morning);
    EXPECT_EQ(quarterOf(morning + 14min + 59s), morning);
    EXPECT_EQ(quarterOf(morning - 1s), morning - 15min);
    EXPECT_EQ(quarterOf(Moment() - 1s), Moment() - 15min);
}

} // namespace
} // namespace tarvik
