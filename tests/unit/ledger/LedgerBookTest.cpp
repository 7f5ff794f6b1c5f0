#include "ledger/LedgerBook.h"
#include "ledger/LedgerTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

using Kind = LedgerReading::Kind;

constexpr std::chrono::months thirteen{13};

LedgerBook someBook() {
    LedgerBook book;
    book.head = {.version = 1, .begun = day, .ahead = 1h};
    book.entries = {entryAt(day, 1), entryAt(day + 15min, 2), entryAt(day + 30min, 3)};
    book.notes = {{.at = day + 1min, .ahead = 1h, .plan = 1, .what = Extension{.bytes = 5}}};
    return book;
}

TEST(LedgerBookTest, WhatWasWrittenIsReadBack) {
    const LedgerReading reading = readLedger(textOf(someBook()));

    ASSERT_EQ(reading.kind, Kind::Book);
    EXPECT_EQ(reading.book.head, someBook().head);
    EXPECT_EQ(reading.book.entries, someBook().entries);
    EXPECT_EQ(reading.book.notes, someBook().notes);
    EXPECT_EQ(reading.damaged, "");
}

TEST(LedgerBookTest, WhereverATailIsCutOffTheLinesBeforeItHold) {
    const std::string whole = textOf(someBook());
    const std::size_t head = textOf(someBook().head).size();

    for (std::size_t kept = head; kept < whole.size(); ++kept) {
        const LedgerReading reading = readLedger(whole.substr(0, kept));
        const std::size_t end = whole.rfind('\n', kept - 1) + 1;
        ASSERT_EQ(reading.kind, Kind::Book) << kept;
        EXPECT_EQ(reading.damaged, whole.substr(end, kept - end)) << kept;
        EXPECT_EQ(textOf(reading.book), whole.substr(0, end)) << kept;
    }
}

TEST(LedgerBookTest, AFirstLineThatIsNotWholeIsNothingYet) {
    const std::string head = textOf(someBook().head);

    for (std::size_t kept = 0; kept < head.size(); ++kept) {
        EXPECT_EQ(readLedger(head.substr(0, kept)).kind, Kind::Nothing) << kept;
    }
    EXPECT_EQ(readLedger(std::string(4096, '\0')).kind, Kind::Nothing);
}

TEST(LedgerBookTest, WhatIsNoLedgerIsLeftAlone) {
    EXPECT_EQ(readLedger("Somebody's letter\n").kind, Kind::Foreign);
    EXPECT_EQ(readLedger("\n").kind, Kind::Foreign);
    EXPECT_EQ(readLedger("0123456789ABCDEF Tarvik ledger 1\nand more\n").kind, Kind::Foreign);
}

TEST(LedgerBookTest, AnotherVersionIsLeftAloneWhateverFollows) {
    LedgerBook book = someBook();
    book.head.version = 2;

    EXPECT_EQ(readLedger(textOf(book)).kind, Kind::OtherVersion);
}

TEST(LedgerBookTest, ALineThatSomebodyChangedIsTakenOutAndTheOthersHold) {
    std::string text = textOf(someBook());
    const std::size_t first = text.find("Ridge");
    text.replace(first, 5, "Bridge");

    const LedgerReading reading = readLedger(text);

    EXPECT_EQ(reading.book.entries.size(), 2U);
    EXPECT_NE(reading.damaged.find("Bridge\n"), std::string::npos);
    EXPECT_EQ(reading.damaged.find("Ridge\n"), std::string::npos);
}

TEST(LedgerBookTest, WithoutAFirstLineItBeganWithItsEarliestEntry) {
    const std::string text = textOf(someBook()).substr(1);

    const LedgerReading reading = readLedger(text);

    EXPECT_EQ(reading.kind, Kind::Book);
    EXPECT_EQ(reading.book.head, someBook().head);
    EXPECT_EQ(reading.damaged, text.substr(0, text.find('\n') + 1));
}

TEST(LedgerBookTest, EntriesAreReadInTheOrderOfTheirMoments) {
    LedgerBook book = someBook();
    std::swap(book.entries.front(), book.entries.back());

    EXPECT_EQ(readLedger(textOf(book)).book.entries[0].at, day);
}

TEST(LedgerBookTest, WhatIsEnteredLaterComesToItsPlace) {
    LedgerBook book = someBook();

    enter(book, {entryAt(day + 15min, 20), entryAt(day - 15min, 10)});

    std::vector<std::uint64_t> received;
    for (const LedgerEntry& one : book.entries) {
        received.push_back(one.traffic.rcvd);
    }
    EXPECT_EQ(received, (std::vector<std::uint64_t>{10, 1, 2, 20, 3}));
}

TEST(LedgerBookTest, BetweenTwoMomentsTheFirstBelongsAndTheSecondDoesNot) {
    const LedgerBook book = someBook();

    EXPECT_EQ(entriesBetween(book, day, day + 30min).size(), 2U);
    EXPECT_EQ(entriesBetween(book, day + 1s, day + 30min + 1s).size(), 2U);
    EXPECT_EQ(entriesBetween(book, day + 30min, day).size(), 0U);
    EXPECT_EQ(entriesBetween(book, firstMoment, lastMoment).size(), 3U);
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
    LedgerBook book = someBook();
    const LocalDay later = std::chrono::local_days(12'000y / 1 / 1);

    book.entries = folded({first, last}, later, thirteen);

    EXPECT_EQ(readLedger(textOf(book)).book.entries, book.entries);
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
