#include "ledger/Ledger.h"
#include "ledger/LedgerTest.h"
#include "scripted/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

using Finding = Ledger::Finding;

class LedgerTest : public testing::Test {
protected:
    static constexpr const char* path = "C:\\Prog\\Tarvik.ledger";
    static constexpr const char* aside = "C:\\Prog\\Tarvik.2026-11-16.ledger";
    static constexpr const char* ini = "C:\\Prog\\Tarvik.ini";

    ScriptedPlatform machine;
    PlatformScope scope{machine.platform};
    ScriptedFiles& files = machine.files;
    Ledger ledger;

    Finding begin() { return ledger.begin(path, ini, day, 60min); }
    /// Bytes received that the next start finds; none where it finds no ledger.
    std::vector<std::uint64_t> found() {
        ledger.release();
        Ledger next;
        next.take(path);
        std::vector<std::uint64_t> result;
        for (const LedgerEntry& one : next.contents().entries) {
            result.push_back(one.traffic.rcvd);
        }
        return result;
    }
    void expectUntouched(Finding finding, const std::string& bytes) {
        EXPECT_EQ(ledger.take(path), finding);
        EXPECT_EQ(begin(), finding);
        EXPECT_FALSE(ledger.inUse());
        EXPECT_EQ(files.file(path), bytes);
        EXPECT_EQ(files.held(), 0);
    }
};

TEST_F(LedgerTest, NoneIsMadeUntilTheUserSaysSo) {
    EXPECT_EQ(ledger.take(path), Finding::Nothing);

    EXPECT_FALSE(ledger.inUse());
    EXPECT_TRUE(ledger.add({entryAt(day, 1)}));
    EXPECT_FALSE(files.exists(path));
}

TEST_F(LedgerTest, WhatIsAddedIsFoundAgain) {
    EXPECT_EQ(begin(), Finding::Taken);

    EXPECT_FALSE(ledger.add({entryAt(day, 1), entryAt(day + 15min, 2)}));
    EXPECT_FALSE(ledger.add({entryAt(day + 30min, 3)}));

    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1, 2, 3}));
}

TEST_F(LedgerTest, WhatIsAddedIsOnTheDisk) {
    begin();
    ledger.add({entryAt(day, 1)});

    files.cutPower();

    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1}));
}

TEST_F(LedgerTest, ItIsAsPrivateAsTheIniFile) {
    files.setFile(ini, "[Settings]\r\n");
    files.setPrivate(ini);

    begin();

    EXPECT_TRUE(files.isPrivate(path));
}

TEST_F(LedgerTest, OneThatWasBegunBeforeGoesOn) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.release();

    EXPECT_EQ(ledger.begin(path, ini, day + 1h, 0min), Finding::Taken);

    EXPECT_EQ(ledger.contents().head.begun, day);
    EXPECT_EQ(ledger.contents().entries.size(), 1U);
}

TEST_F(LedgerTest, ABeginningThatWasCutOffIsBegunAnew) {
    files.setFile(path, "0123456789ABCDEF Tarv");

    EXPECT_EQ(ledger.take(path), Finding::Nothing);
    EXPECT_EQ(begin(), Finding::Taken);

    EXPECT_EQ(ledger.size(), files.file(path).size());
    ledger.add({entryAt(day, 1)});
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1}));
}

TEST_F(LedgerTest, WhereItCannotBeWrittenNoneIsLeftBehind) {
    files.flushFailure = ErrorNumber::DiskFull;

    EXPECT_EQ(begin(), Finding::Unread);

    EXPECT_FALSE(files.exists(path));
    EXPECT_FALSE(ledger.inUse());
}

TEST_F(LedgerTest, SomebodysFileIsLeftAlone) {
    files.setFile(path, "Somebody's letter\n");
    expectUntouched(Finding::Refused, "Somebody's letter\n");
}

TEST_F(LedgerTest, AnotherVersionIsLeftAlone) {
    const std::string text = textOf(LedgerHead{.version = 2, .begun = day, .ahead = 0min});
    files.setFile(path, text);
    expectUntouched(Finding::OtherVersion, text);
}

TEST_F(LedgerTest, AnotherCopysIsLeftAlone) {
    files.setFile(path, "");
    files.heldElsewhere = true;
    expectUntouched(Finding::Busy, "");
}

TEST_F(LedgerTest, AFileOfTwoNamesIsLeftAlone) {
    files.setFile(path, "");
    files.setTwoNames(path);
    expectUntouched(Finding::Refused, "");
}

TEST_F(LedgerTest, WhatCannotBeReadIsLeftAlone) {
    files.setFile(path, "");
    files.setUnreadable(path);
    expectUntouched(Finding::Unread, "");
}

TEST_F(LedgerTest, WhatCouldNotBeAddedIsAddedLaterAndOnce) {
    begin();
    files.flushFailure = ErrorNumber::DiskFull;
    EXPECT_EQ(ledger.add({entryAt(day, 1)}), ErrorNumber::DiskFull);
    EXPECT_TRUE(ledger.contents().entries.empty());
    files.flushFailure = {};

    EXPECT_FALSE(ledger.add({entryAt(day, 1)}));

    files.cutPower();
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1}));
}

TEST_F(LedgerTest, OfARemainderThatWasBeingAddedTheRestIsMissing) {
    begin();
    ledger.remainder.end = files.file(path).size();
    ledger.remainder.lines = textOf(entryAt(day, 1)) + textOf(entryAt(day + 15min, 2));

    ledger.add({entryAt(day, 1)});

    EXPECT_EQ(ledger.missing(), (std::vector{entryAt(day + 15min, 2)}));
}

TEST_F(LedgerTest, WhatIsAddedBehindATornTailIsNotMissing) {
    begin();
    ledger.release();
    files.setFile(path, files.file(path) + "torn");
    ledger.take(path);
    ledger.remainder.end = files.file(path).size();
    ledger.remainder.lines = textOf(entryAt(day, 1));

    ledger.add({entryAt(day, 1)});

    EXPECT_EQ(ledger.missing(), std::vector<LedgerEntry>());
}

TEST_F(LedgerTest, WhatStandsBeforeTheRemaindersPlaceIsNoneOfIt) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.remainder.end = files.file(path).size();
    ledger.remainder.lines = textOf(entryAt(day, 1));

    EXPECT_EQ(ledger.missing(), (std::vector{entryAt(day, 1)}));
}

TEST_F(LedgerTest, WhereItCannotBeReadNobodyKnowsWhatIsMissing) {
    begin();
    ledger.remainder.lines = textOf(entryAt(day, 1));

    files.setUnreadable(path);

    EXPECT_FALSE(ledger.missing());
}

TEST_F(LedgerTest, OneThatSomebodyDeletesIsNotMadeAnew) {
    begin();
    files.remove(path);

    EXPECT_EQ(ledger.add({entryAt(day, 1)}), ErrorNumber::FileNotFound);

    EXPECT_FALSE(ledger.inUse());
    EXPECT_FALSE(files.exists(path));
}

TEST_F(LedgerTest, NotesStandBesideTheEntries) {
    begin();
    const LedgerNote note{.at = day, .ahead = 0min, .plan = 3, .what = Extension{.bytes = 5}};

    EXPECT_FALSE(ledger.add(note));

    ledger.release();
    ledger.take(path);
    EXPECT_EQ(ledger.contents().notes, std::vector<LedgerNote>{note});
}

TEST_F(LedgerTest, AClockThatShowsNoYearOfFourDigitsIsTakenForTheNearest) {
    ledger.begin(path, ini, Moment(-1s), 0min);
    ledger.add({.at = lastMoment + 72h, .ahead = 0min, .plan = 1, .what = Extension{.bytes = 5}});

    ledger.release();

    EXPECT_EQ(ledger.take(path), Finding::Taken);
    EXPECT_EQ(ledger.contents().head.begun, firstMoment);
    ASSERT_EQ(ledger.contents().notes.size(), 1U);
    EXPECT_EQ(ledger.contents().notes[0].at, lastMoment);
}

TEST_F(LedgerTest, FoldingReplacesTheFileByOneThatSaysTheSame) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.add({entryAt(day, 2)});
    const std::size_t before = ledger.size();

    EXPECT_FALSE(ledger.fold(today));

    EXPECT_LT(ledger.size(), before);
    EXPECT_EQ(ledger.size(), files.file(path).size());
    EXPECT_TRUE(ledger.inUse());
    ledger.add({entryAt(day + 1h, 4)});
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{3, 4}));
}

TEST_F(LedgerTest, WhatIsFoldedIsNotReplaced) {
    begin();
    ledger.add({entryAt(day, 1)});
    const int before = files.replacements;

    ledger.fold(today);

    EXPECT_EQ(files.replacements, before);
}

TEST_F(LedgerTest, WhereFoldingFailsTheFileGoesOnAsItWas) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.add({entryAt(day, 2)});
    files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_EQ(ledger.fold(today), ErrorNumber::DiskFull);

    EXPECT_EQ(ledger.contents().entries.size(), 2U);
    EXPECT_FALSE(ledger.add({entryAt(day, 4)}));
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1, 2, 4}));
}

TEST_F(LedgerTest, AnErrorBehindTheFoldingLeavesTheFoldedFile) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.add({entryAt(day, 2)});
    files.lateFailure = ErrorNumber::PathFileAccess;

    EXPECT_FALSE(ledger.fold(today));

    ledger.add({entryAt(day + 1h, 4)});
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{3, 4}));
}

TEST_F(LedgerTest, WhoeverTakesItWhileItIsFoldedHasIt) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.add({entryAt(day, 2)});
    Ledger other;
    files.meanwhile = [&](const std::string& operation, const std::string& /*path*/) {
        if (operation == "LastLook" && other.take(path) == Finding::Taken) {
            other.add({entryAt(day, 4)});
        }
    };

    EXPECT_TRUE(ledger.fold(today));

    files.meanwhile = nullptr;
    EXPECT_FALSE(ledger.inUse());
    other.release();
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1, 2, 4}));
}

class TornLedgerTest : public LedgerTest {
protected:
    const std::string torn = "0123456789ABCDEF Q 2026-11-";

    TornLedgerTest() {
        begin();
        ledger.add({entryAt(day, 1)});
        ledger.release();
        files.setFile(path, files.file(path) + torn);
        ledger.take(path);
    }
};

TEST_F(TornLedgerTest, TheTailIsPutAsideOnce) {
    EXPECT_EQ(ledger.damaged(), torn);

    EXPECT_FALSE(ledger.mend(aside));

    EXPECT_EQ(files.file(aside), torn);
    EXPECT_EQ(ledger.damaged(), "");
    ledger.release();
    EXPECT_EQ(ledger.take(path), Finding::Taken);
    EXPECT_EQ(ledger.damaged(), "");
    EXPECT_EQ(ledger.contents().entries.size(), 1U);
}

TEST_F(TornLedgerTest, WhatIsAddedBeforeIsNotLost) {
    ledger.add({entryAt(day, 2)});
    ledger.add({entryAt(day, 4)});

    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1, 2, 4}));
}

TEST_F(TornLedgerTest, WhatIsAddedAfterItStandsInTheMendedFile) {
    ledger.mend(aside);

    ledger.add({entryAt(day, 2)});

    EXPECT_EQ(found(), (std::vector<std::uint64_t>{1, 2}));
}

TEST_F(TornLedgerTest, ItIsNotFoldedBefore) {
    ledger.add({entryAt(day, 2)});

    ledger.fold(today);

    EXPECT_NE(files.file(path).find(torn), std::string::npos);
}

TEST_F(TornLedgerTest, AnotherFileOfThatNameStays) {
    files.setFile(aside, "of last week");

    EXPECT_EQ(ledger.mend(aside), ErrorNumber::FileAlreadyExists);

    EXPECT_EQ(files.file(aside), "of last week");
}

TEST_F(TornLedgerTest, WhereAKillCameBetweenItIsNotPutAsideTwice) {
    files.setFile(aside, torn);
    const int before = files.replacements;

    EXPECT_FALSE(ledger.mend(aside));

    EXPECT_EQ(files.replacements, before + 1);
}

TEST_F(TornLedgerTest, WhereItCannotBePutAsideTheFileStaysAsItIs) {
    files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_EQ(ledger.mend(aside), ErrorNumber::DiskFull);

    EXPECT_EQ(ledger.damaged(), torn);
    EXPECT_NE(files.file(path).find(torn), std::string::npos);
}

TEST_F(LedgerTest, AFirstLineThatIsGoneStandsThereAgainBeforeAnythingIsAdded) {
    begin();
    ledger.add({entryAt(day, 1)});
    ledger.release();
    const std::string whole = files.file(path);
    files.setFile(path, whole.substr(whole.find('\n') + 1));
    ledger.take(path);
    const LedgerHead head = ledger.contents().head;

    EXPECT_FALSE(ledger.mend(aside));

    EXPECT_EQ(files.Dir(aside), FileKind::None);
    ledger.add({entryAt(day - 24h, 2)});
    EXPECT_EQ(readLedger(files.file(path)).contents.head, head);
    EXPECT_EQ(found(), (std::vector<std::uint64_t>{2, 1}));
}

} // namespace
} // namespace tarvik
