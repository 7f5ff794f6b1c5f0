#include "journal/JournalTest.h"

namespace tarvik {
namespace {

TEST_F(JournalTest, AFlushThatFailedIsNotBelievedAtTheSecondTry) {
    Journal journal = taken();
    journal.keep(entryOf(5), true);
    machine.files.flushFailure = ErrorNumber::PathFileAccess;
    EXPECT_FALSE(journal.keep(entryOf(6), true));
    machine.files.flushFailure.reset();
    for (const std::int32_t received : {6, 7}) {
        machine.clock.advanceSeconds(30);
        journal.keep(entryOf(received), false);
    }

    machine.files.cutPower();
    journal.leave();
    EXPECT_EQ(found(), 7);
}

TEST_F(JournalTest, AFlushIsDueAfterThirtySecondsWheneverTheLastLookWas) {
    Journal journal = taken();
    journal.keep(entryOf(5), true);
    machine.clock.advanceSeconds(28);
    journal.keep(entryOf(6), false);
    machine.clock.advanceSeconds(1.9);
    EXPECT_FALSE(journal.isDue());

    machine.clock.advanceSeconds(0.2);

    EXPECT_TRUE(journal.isDue());
    journal.keep(entryOf(6), false);
    EXPECT_FALSE(journal.isDue());
}

} // namespace
} // namespace tarvik
