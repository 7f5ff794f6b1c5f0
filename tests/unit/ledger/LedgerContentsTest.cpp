#include "ledger/LedgerContents.h"
#include "ledger/LedgerTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

using Kind = LedgerReading::Kind;

constexpr std::chrono::months thirteen{13};

LedgerContents someContents() {
    LedgerContents contents;
    contents.head = {.version = 1, .begun = day, .ahead = 1h};
    contents.entries = {entryAt(day, 1), entryAt(day + 15min, 2), entryAt(day + 30min, 3)};
    contents.notes = {{.at = day + 1min, .ahead = 1h, .plan = 1, .what = Extension{.bytes = 5}}};
    return contents;
}

TEST(LedgerContentsTest, WhatWasWrittenIsReadBack) {
    const LedgerReading reading = readLedger(textOf(someContents()));

    ASSERT_EQ(reading.kind, Kind::Ledger);
    EXPECT_EQ(reading.contents.head, someContents().head);
    EXPECT_EQ(reading.contents.entries, someContents().entries);
    EXPECT_EQ(reading.contents.notes, someContents().notes);
    EXPECT_EQ(reading.damaged, "");
}

TEST(LedgerContentsTest, WhereverATailIsCutOffTheLinesBeforeItHold) {
    const std::string whole = textOf(someContents());
    const std::size_t head = textOf(someContents().head).size();

    for (std::size_t kept = head; kept < whole.size(); ++kept) {
        const LedgerReading reading = readLedger(whole.substr(0, kept));
        const std::size_t end = whole.rfind('\n', kept - 1) + 1;
        ASSERT_EQ(reading.kind, Kind::Ledger) << kept;
        EXPECT_EQ(reading.damaged, whole.substr(end, kept - end)) << kept;
        EXPECT_EQ(textOf(reading.contents), whole.substr(0, end)) << kept;
    }
}

TEST(LedgerContentsTest, AFirstLineThatIsNotWholeIsNothingYet) {
    const std::string head = textOf(someContents().head);

    for (std::size_t kept = 0; kept < head.size(); ++kept) {
        EXPECT_EQ(readLedger(head.substr(0, kept)).kind, Kind::Nothing) << kept;
    }
    EXPECT_EQ(readLedger(std::string(4096, '\0')).kind, Kind::Nothing);
}

TEST(LedgerContentsTest, WhatIsNoLedgerIsLeftAlone) {
    EXPECT_EQ(readLedger("Somebody's letter\n").kind, Kind::Foreign);
    EXPECT_EQ(readLedger("\n").kind, Kind::Foreign);
    EXPECT_EQ(readLedger("0123456789ABCDEF Tarvik ledger 1\nand more\n").kind, Kind::Foreign);
}

TEST(LedgerContentsTest, AnotherVersionIsLeftAloneWhateverFollows) {
    LedgerContents contents = someContents();
    contents.head.version = 2;

    EXPECT_EQ(readLedger(textOf(contents)).kind, Kind::OtherVersion);
}

TEST(LedgerContentsTest, ALineThatSomebodyChangedIsTakenOutAndTheOthersHold) {
    std::string text = textOf(someContents());
    const std::size_t first = text.find("Ridge");
    text.replace(first, 5, "Bridge");

    const LedgerReading reading = readLedger(text);

    EXPECT_EQ(reading.contents.entries.size(), 2U);
    EXPECT_NE(reading.damaged.find("Bridge\n"), std::string::npos);
    EXPECT_EQ(reading.damaged.find("Ridge\n"), std::string::npos);
}

TEST(LedgerContentsTest, WithoutAFirstLineItBeganWithItsEarliestEntry) {
    const std::string text = textOf(someContents()).substr(1);

    const LedgerReading reading = readLedger(text);

    EXPECT_EQ(reading.kind, Kind::Ledger);
    EXPECT_EQ(reading.contents.head, someContents().head);
    EXPECT_EQ(reading.damaged, text.substr(0, text.find('\n') + 1));
}

TEST(LedgerContentsTest, EntriesAreReadInTheOrderOfTheirMoments) {
    LedgerContents contents = someContents();
    std::swap(contents.entries.front(), contents.entries.back());

    EXPECT_EQ(readLedger(textOf(contents)).contents.entries[0].at, day);
}

TEST(LedgerContentsTest, WhatIsEnteredLaterComesToItsPlace) {
    LedgerContents contents = someContents();

    enter(contents, {entryAt(day + 15min, 20), entryAt(day - 15min, 10)});

    std::vector<std::uint64_t> received;
    for (const LedgerEntry& one : contents.entries) {
        received.push_back(one.traffic.rcvd);
    }
    EXPECT_EQ(received, (std::vector<std::uint64_t>{10, 1, 2, 20, 3}));
}

TEST(LedgerContentsTest, BetweenTwoMomentsTheFirstBelongsAndTheSecondDoesNot) {
    const LedgerContents contents = someContents();

    EXPECT_EQ(entriesBetween(contents, day, day + 30min).size(), 2U);
    EXPECT_EQ(entriesBetween(contents, day + 1s, day + 30min + 1s).size(), 2U);
    EXPECT_EQ(entriesBetween(contents, day + 30min, day).size(), 0U);
    EXPECT_EQ(entriesBetween(contents, firstMoment, lastMoment).size(), 3U);
}

TEST(FoldTest, ALineHasOneEntryForAQuarterHour) {
    const auto result =
        folded({entryAt(day, 1), entryAt(day, 10, "Harbour"), entryAt(day, 4)}, today, thirteen);

    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result[0].line, "Harbour");
    EXPECT_EQ(result[1].traffic, (Traffic{5, 2, 120'000}));
}

TEST(FoldTest, WhatRanInsideAnotherLineStaysApart) {
    LedgerEntry inside = entryAt(day, 7);
    inside.inside = true;

    EXPECT_EQ(folded({entryAt(day, 1), inside, inside}, today, thirteen).size(), 2U);
}

TEST(FoldTest, WhatIsOlderThanThirteenMonthsHasOneEntryForADay) {
    const Moment old = std::chrono::sys_days(2025y / 10 / 15) + 22h; // 23:00 for the user

    const auto result = folded(
        {entryAt(old, 1), entryAt(old + 45min, 2), entryAt(old + 1h, 4), entryAt(old + 25h, 8)},
        today, thirteen);

    ASSERT_EQ(result.size(), 3U);
    EXPECT_EQ(result[0], (LedgerEntry{.span = LedgerEntry::Span::Day,
                                      .at = std::chrono::sys_days(2025y / 10 / 15) + 11h,
                                      .ahead = 1h,
                                      .line = "Ridge",
                                      .traffic = {3, 2, 120'000}}));
    EXPECT_EQ(result[1].span, LedgerEntry::Span::Quarter);
    EXPECT_EQ(result[1].at, old + 1h);
    EXPECT_EQ(result[2].at, old + 25h);
}

TEST(FoldTest, ThirteenMonthsBeforeALastDayIsTheLastDay) {
    const LocalDay lastOfMarch = std::chrono::local_days(2027y / 3 / 31);
    const Moment lastOfFebruary = std::chrono::sys_days(2026y / 2 / 28) + 8h;

    const auto result = folded({entryAt(lastOfFebruary - 24h, 1), entryAt(lastOfFebruary, 2)},
                               lastOfMarch, thirteen);

    EXPECT_EQ(result[0].span, LedgerEntry::Span::Day);
    EXPECT_EQ(result[1].span, LedgerEntry::Span::Quarter);
}

TEST(FoldTest, WhatHasBeenFoldedStaysAsItIs) {
    std::vector<LedgerEntry> entries;
    for (int i = 0; i < 2000; ++i) {
        entries.push_back(entryAt(day - 10h * i, 1));
    }

    const auto once = folded(entries, today, thirteen);

    EXPECT_EQ(folded(once, today, thirteen), once);
    EXPECT_LT(once.size(), 2000U);
}

TEST(FoldTest, ADayAtTheEdgeOfWhatIsWrittenIsReadBack) {
    LedgerEntry first = entryAt(firstMoment, 1);
    first.ahead = -24h;
    LedgerEntry last = entryAt(lastMoment, 2);
    last.ahead = 24h;
    LedgerContents contents = someContents();
    const LocalDay later = std::chrono::local_days(12'000y / 1 / 1);

    contents.entries = folded({first, last}, later, thirteen);

    EXPECT_EQ(readLedger(textOf(contents)).contents.entries, contents.entries);
}

TEST(FoldTest, NothingIsLost) {
    std::vector<LedgerEntry> entries;
    for (unsigned i = 0; i < 3000; ++i) {
        entries.push_back(entryAt(day - (i * 7919 % 3000) * 15min * 20, i, i % 3 != 0 ? "A" : "B"));
    }
    const auto sum = [](const std::vector<LedgerEntry>& of, const std::string& line) {
        Traffic result;
        for (const LedgerEntry& one : of) {
            result = one.line == line ? result + one.traffic : result;
        }
        return result;
    };

    const auto result = folded(entries, today, thirteen);

    EXPECT_EQ(sum(result, "A"), sum(entries, "A"));
    EXPECT_EQ(sum(result, "B"), sum(entries, "B"));
}

TEST(FoldTest, OfNothingNothingIsLeft) {
    EXPECT_TRUE(folded({}, today, thirteen).empty());
}

} // namespace
} // namespace tarvik
