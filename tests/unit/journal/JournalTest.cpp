#include "journal/JournalTest.h"

#include <algorithm>
#include <string>

namespace tarvik {
namespace {

using FoundKind = JournalFinding::Kind;

TEST_F(JournalTest, WithoutAFileNothingIsFoundAndNoneIsMade) {
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Nothing);

    EXPECT_TRUE(journal.inUse());
    EXPECT_FALSE(machine.files.exists(path));
}

TEST_F(JournalTest, TheFirstEntryMakesTheFile) {
    Journal journal = taken();

    EXPECT_TRUE(journal.keep(entryOf(5), false));

    EXPECT_EQ(machine.files.file(path).size(), journalPlaces * journalPlace);
    journal.leave();
    EXPECT_EQ(found(), 5);
}

TEST_F(JournalTest, WhatAStartShowsAnywayMakesNoFile) {
    Journal journal = taken();
    journal.needNot(entryOf(5));

    journal.keep(entryOf(5), true);

    EXPECT_FALSE(machine.files.exists(path));
}

TEST_F(JournalTest, TheSameIsNotWrittenTwice) {
    Journal journal = taken();
    journal.keep(entryOf(5), true);
    const int writes = machine.files.writesInPlace;
    const int flushes = machine.files.flushes;

    for (int i = 0; i < 100; ++i) {
        machine.clock.advanceSeconds(10);
        journal.keep(entryOf(5), false);
    }

    EXPECT_EQ(machine.files.writesInPlace, writes);
    EXPECT_EQ(machine.files.flushes, flushes);
}

TEST_F(JournalTest, ItIsFlushedEveryHalfMinuteAtMost) {
    Journal journal = taken();
    for (int second = 0; second < 300; second += 5) {
        journal.keep(entryOf(second), false);
        machine.clock.advanceSeconds(5);
    }

    EXPECT_EQ(machine.files.writesInPlace, 60);
    EXPECT_EQ(machine.files.flushes, 10);
}

TEST_F(JournalTest, WhatWasWrittenLastIsFlushedWhenItsTimeHasCome) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.clock.advanceSeconds(5);
    journal.keep(entryOf(2), false);
    EXPECT_EQ(machine.files.flushes, 1);

    machine.clock.advanceSeconds(25);
    journal.keep(entryOf(2), false);

    EXPECT_EQ(machine.files.flushes, 2);
}

TEST_F(JournalTest, ItIsDueAfterFiveSeconds) {
    Journal journal = taken();
    EXPECT_TRUE(journal.isDue());
    journal.keep(entryOf(1), false);

    machine.clock.advanceSeconds(4.9);
    EXPECT_FALSE(journal.isDue());
    machine.clock.advanceSeconds(0.2);
    EXPECT_TRUE(journal.isDue());
}

/// However many writes came since the last flush, what was flushed is still there.
TEST_F(JournalTest, APowerCutLeavesWhatWasFlushedLast) {
    for (int unflushed = 0; unflushed < 5; ++unflushed) {
        for (const std::size_t kept : {std::size_t{0}, std::size_t{10}, std::size_t{200},
                                       journalPlace, journalPlace + 10, journalPlace + 100}) {
            Journal journal = taken();
            journal.keep(entryOf(1), true);
            journal.keep(entryOf(2), true);
            for (int i = 0; i < unflushed; ++i) {
                journal.keep(entryOf(3 + i), false);
            }
            journal.leave();

            machine.files.cutPower(kept);

            const std::int64_t shown = found();
            EXPECT_GE(shown, 2) << unflushed << " " << kept;
            machine.files.remove(path);
        }
    }
}

/// The cut destroys each sector of 4 KiB that was being written to, with all that stood in it.
TEST_F(JournalTest, ASectorThatAPowerCutDestroysHoldsNothingThatWasFlushed) {
    constexpr std::size_t sector = 4096;
    for (int unflushed = 1; unflushed < 5; ++unflushed) {
        Journal journal = taken();
        journal.keep(entryOf(1), true);
        journal.keep(entryOf(2), true);
        const std::string flushed = machine.files.file(path);
        for (int i = 0; i < unflushed; ++i) {
            journal.keep(entryOf(3 + i), false);
        }
        journal.leave();
        std::string left = machine.files.file(path);
        for (std::size_t i = 0; i < left.size(); i += sector) {
            const std::size_t size = std::min(sector, left.size() - i);
            if (left.compare(i, size, flushed, i, size) != 0) {
                left.replace(i, size, size, '\xA5');
            }
        }
        machine.files.setFile(path, left);

        EXPECT_EQ(found(), 2) << unflushed;
        machine.files.remove(path);
    }
}

TEST_F(JournalTest, AKillLeavesWhatWasWrittenLast) {
    for (int writes = 1; writes < 9; ++writes) {
        Journal journal = taken();
        for (int i = 1; i <= writes; ++i) {
            journal.keep(entryOf(i), i % 3 == 0);
        }
        journal.leave();

        EXPECT_EQ(found(), writes);
        machine.files.remove(path);
    }
}

/// Nothing of what a write has begun is of use to anybody, wherever it goes.
TEST_F(JournalTest, AWriteThatIsCutOffLeavesTheOneBefore) {
    for (int writes = 1; writes < 12; ++writes) {
        Journal journal = taken();
        for (int i = 1; i <= writes; ++i) {
            journal.keep(entryOf(i), i % 4 == 1);
        }
        const std::string before = machine.files.file(path);
        journal.keep(entryOf(writes + 1), false);
        std::string torn = machine.files.file(path);
        journal.leave();
        for (std::size_t i = 0, changed = 0; i < torn.size(); ++i) {
            // The second half of what has changed is as it was.
            changed += torn[i] != before[i] ? 1U : 0U;
            torn[i] = changed > 10 ? before[i] : torn[i];
        }
        machine.files.setFile(path, torn);

        EXPECT_EQ(found(), writes);
        machine.files.remove(path);
    }
}

TEST_F(JournalTest, TheNextRunGoesOnWhereTheLastStopped) {
    std::int32_t last = 0;
    for (int run = 0; run < 6; ++run) {
        Journal journal;
        EXPECT_EQ(journal.take(path, ini).entry.totals.rcvd, Currency(last));
        for (int i = 0; i < run; ++i) {
            journal.keep(entryOf(++last), i % 2 == 0);
        }
    }
    EXPECT_EQ(found(), last);
}

TEST_F(JournalTest, WhatTheLastRunDidNotFlushIsFlushedBeforeItIsReliedOn) {
    leaveEntries({{1, true}, {2, false}});
    Journal next = taken();
    next.leave();

    machine.files.cutPower();

    EXPECT_EQ(found(), 2);
}

TEST_F(JournalTest, AnotherCopyThatHasItIsNotDisturbed) {
    Journal first = taken();
    first.keep(entryOf(1), true);
    const std::string before = machine.files.file(path);

    Journal second;
    EXPECT_EQ(second.take(path, ini).kind, FoundKind::Busy);

    EXPECT_FALSE(second.inUse());
    EXPECT_EQ(machine.files.file(path), before);
}

TEST_F(JournalTest, AFileThatAnotherCopyHasMadeMeanwhileIsLeftToIt) {
    Journal second = taken();
    Journal first = taken();
    first.keep(entryOf(1), true);
    const std::string before = machine.files.file(path);

    EXPECT_FALSE(second.keep(entryOf(2), true));
    first.leave();
    EXPECT_FALSE(second.keep(entryOf(3), true));

    EXPECT_FALSE(second.inUse());
    EXPECT_EQ(machine.files.file(path), before);
}

TEST_F(JournalTest, OneThatCouldNotBeMadeForAnotherProgramIsMadeWhenThatLetsGo) {
    Journal journal = taken();
    machine.files.setFile(path, "");
    machine.files.heldElsewhere = true;
    EXPECT_FALSE(journal.keep(entryOf(1), true));
    machine.files.heldElsewhere = false;

    EXPECT_TRUE(journal.keep(entryOf(2), true));

    journal.leave();
    EXPECT_EQ(found(), 2);
}

TEST_F(JournalTest, WhatSomebodyHasTakenAwayIsWrittenAgainThoughNothingIsNew) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.files.remove(path);

    EXPECT_TRUE(journal.keep(entryOf(1), false));

    journal.leave();
    EXPECT_EQ(found(), 1);
}

TEST_F(JournalTest, WhatSomebodyHasCutOffIsWrittenAgainThoughNothingIsNew) {
    leaveEntries({{1, true}, {2, true}});
    Journal journal = taken();
    machine.files.cutOff(path, 100);

    EXPECT_TRUE(journal.keep(entryOf(2), true));

    journal.leave();
    EXPECT_EQ(found(), 2);
}

TEST_F(JournalTest, AShortFileThatAPowerCutHasLeftIsNotWrittenAgain) {
    leaveEntries({{1, true}});
    machine.files.setFile(path, machine.files.file(path).substr(0, journalPlace));
    Journal journal = taken();
    const int before = machine.files.writesInPlace;

    EXPECT_TRUE(journal.keep(entryOf(1), false));

    EXPECT_EQ(machine.files.writesInPlace, before);
}

TEST_F(JournalTest, WhatHasTakenItsNameInMidRunIsLeftAloneAndTold) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.files.remove(path);
    machine.files.setFile(path, "somebody's");

    EXPECT_FALSE(journal.keep(entryOf(2), false));

    EXPECT_FALSE(journal.inUse());
    EXPECT_EQ(machine.files.file(path), "somebody's");
}

TEST_F(JournalTest, WhatIsNoJournalIsLeftAlone) {
    machine.files.setFile(path, "no journal at all");
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Refused);

    EXPECT_FALSE(journal.inUse());
    EXPECT_EQ(machine.files.file(path), "no journal at all");
}

TEST_F(JournalTest, ADirectoryOfItsNameIsLeftAlone) {
    machine.files.setKind(path, FileKind::Directory);
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Refused);

    EXPECT_FALSE(journal.inUse());
}

TEST_F(JournalTest, WhatCannotBeWrittenIsTold) {
    Journal journal = taken();
    machine.files.holdFailure = ErrorNumber::DiskFull;
    EXPECT_FALSE(journal.keep(entryOf(1), false));

    machine.files.holdFailure.reset();
    EXPECT_TRUE(journal.keep(entryOf(1), false));

    journal.leave();
    EXPECT_EQ(found(), 1);
}

TEST_F(JournalTest, AFileThatWasDeletedIsMadeAnew) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.files.remove(path);

    EXPECT_TRUE(journal.keep(entryOf(2), false));

    journal.leave();
    EXPECT_EQ(found(), 2);
}

TEST_F(JournalTest, WhatItSaidLastIsWrittenAgainWhereTheFileWasDeleted) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.files.remove(path);
    machine.files.holdFailure = ErrorNumber::FileNotFound;
    EXPECT_FALSE(journal.keep(entryOf(2), true));
    machine.files.holdFailure.reset();

    EXPECT_TRUE(journal.keep(entryOf(1), true));

    journal.leave();
    EXPECT_EQ(found(), 1);
}

TEST_F(JournalTest, AFileThatWasLetGoIsNotFlushed) {
    leaveEntries({{1, true}, {2, false}});
    machine.files.meanwhile = [this](const std::string& operation, const std::string&) {
        machine.files.holdFailure =
            operation == "flush" ? FileResult(ErrorNumber::PathFileAccess) : std::nullopt;
    };
    Journal journal;
    ASSERT_EQ(journal.take(path, ini).kind, FoundKind::Entry);
    machine.files.meanwhile = nullptr;
    machine.files.holdFailure.reset();

    journal.release();
    machine.files.remove(path);
    journal.needNot(entryOf(2));

    EXPECT_TRUE(journal.keep(entryOf(2), true));
    EXPECT_FALSE(machine.files.exists(path));
}

TEST_F(JournalTest, WhatCannotBeMadeIsTriedLaterAndLater) {
    Journal journal = taken();
    machine.files.holdFailure = ErrorNumber::DiskFull;
    int attempts = 0;
    machine.files.meanwhile = [&](const std::string& operation, const std::string&) {
        attempts += operation == "hold" ? 1 : 0;
    };

    for (int second = 0; second < 3600; second += 5) {
        EXPECT_FALSE(journal.keep(entryOf(second), false));
        machine.clock.advanceSeconds(5);
    }

    EXPECT_GT(attempts, 10);
    EXPECT_LT(attempts, 20);
}

TEST_F(JournalTest, AtASpecialMomentTheFileIsTriedAtOnce) {
    Journal journal = taken();
    machine.files.holdFailure = ErrorNumber::DiskFull;
    for (int i = 0; i < 5; ++i) {
        journal.keep(entryOf(i), false);
    }
    machine.files.holdFailure.reset();
    EXPECT_FALSE(journal.keep(entryOf(7), false));

    EXPECT_TRUE(journal.keep(entryOf(7), true));
}

TEST_F(JournalTest, WhatCannotBeOpenedIsNotTakenForNothing) {
    machine.files.setFile(path, std::string(journalPlaces * journalPlace, '\0'));
    machine.files.setReadOnly(path);
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Unread);

    EXPECT_FALSE(journal.inUse());
}

TEST_F(JournalTest, TwoPlacesThatWereBegunHeldSomethingOnce) {
    leaveEntries({{1, true}, {2, true}});
    std::string bytes = machine.files.file(path);
    bytes[50] = static_cast<char>(bytes[50] ^ 1);
    bytes[journalPlace + 50] = static_cast<char>(bytes[journalPlace + 50] ^ 1);
    machine.files.setFile(path, bytes);
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Damaged);
}

TEST_F(JournalTest, WhatNobodyCanHaveMeantIsDamage) {
    machine.files.setFile(path, placeOf(bodyOf(entryOf(-1)), entryOf(0).moment, 1));
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::Damaged);
}

TEST_F(JournalTest, LongerEntriesOfAnotherVersionAreLeftAlone) {
    std::string bytes = placeOf(bodyOf(entryOf(1)), entryOf(1).moment, 1);
    bytes[8] = 2;
    bytes[14] = 1; // longer than the place
    machine.files.setFile(path, bytes);
    Journal journal;

    EXPECT_EQ(journal.take(path, ini).kind, FoundKind::OtherVersion);

    EXPECT_FALSE(journal.inUse());
    EXPECT_EQ(machine.files.file(path), bytes);
}

TEST_F(JournalTest, BesideAWholeEntryADamagedVersionIsNotBelieved) {
    leaveEntries({{1, true}, {2, true}});
    std::string bytes = machine.files.file(path);
    bytes[journalPlace + 8] = 2;
    machine.files.setFile(path, bytes);

    EXPECT_EQ(found(), 1);
}

TEST_F(JournalTest, TheEndDeletesIt) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);

    EXPECT_TRUE(journal.end());

    EXPECT_FALSE(journal.inUse());
    EXPECT_FALSE(machine.files.exists(path));
}

TEST_F(JournalTest, WhatCannotBeDeletedIsStillKept) {
    Journal journal = taken();
    journal.keep(entryOf(1), true);
    machine.files.killFailure = ErrorNumber::PermissionDenied;

    EXPECT_FALSE(journal.end());

    EXPECT_TRUE(journal.keep(entryOf(2), true));
    journal.leave();
    EXPECT_EQ(found(), 2);
}

TEST_F(JournalTest, WhatAPowerCutLeftOfTheFirstEntryIsTakenOver) {
    for (const std::size_t kept : {std::size_t{0}, std::size_t{3}, std::size_t{100}}) {
        machine.files.setFile(path, std::string(journalPlaces * journalPlace, '\0'));
        Journal journal = taken();
        journal.keep(entryOf(1), false);
        journal.leave();
        std::string bytes = machine.files.file(path);
        bytes.replace(kept, 400, std::string(400, '\0'));
        machine.files.setFile(path, bytes);

        Journal next;
        EXPECT_EQ(next.take(path, ini).kind, FoundKind::Nothing) << kept;

        EXPECT_TRUE(next.keep(entryOf(2), true));
        next.leave();
        EXPECT_EQ(found(), 2);
    }
}

} // namespace
} // namespace tarvik
