#include "settings/LedgerLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(LedgerLifeTest, WithoutTheUsersWishThereIsNone) {
    count(5000);
    endTheLine();
    endSession();

    EXPECT_FALSE(ledgerIsThere());
}

TEST_F(LedgerLifeTest, WhatALineHasCarriedIsInItWhenItIsOver) {
    countWithLedger(5000);

    endTheLine();

    const Traffic sum = sums()["Ridge"];
    EXPECT_EQ(sum, (Traffic{.rcvd = 5000, .sent = 0, .milliseconds = 10'000}));
}

TEST_F(LedgerLifeTest, WhatPassedBeforeItWasBegunIsNotInIt) {
    count(5000);
    ASSERT_TRUE(BeginLedger());
    tickAfter(10, 70);

    endTheLine();

    EXPECT_EQ(receivedOf("Ridge"), 70U);
}

TEST_F(LedgerLifeTest, BegunTwiceItIsTheSame) {
    startWithLedger();
    const std::string before = machine.files.file(ledgerPath);

    EXPECT_TRUE(BeginLedger());

    EXPECT_EQ(machine.files.file(ledgerPath), before);
}

TEST_F(LedgerLifeTest, WhereItCannotBeMadeThereIsNone) {
    setIni("[Settings]\r\n");
    start("/r");
    machine.files.holdFailure = ErrorNumber::PathFileAccess;

    EXPECT_FALSE(BeginLedger());

    EXPECT_FALSE(ledger().isKept);
}

TEST_F(LedgerLifeTest, WhatTheUserDeclinedIsNotInIt) {
    startWithLedger();
    newWorld();
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 1000, 0, 9000);
    expectInstanceQuestion();
    expectSessionQuestion("1000", MsgBoxAnswer::No);
    start("/r");
    tick();
    tickAfter(10, 70);

    endTheLine();

    EXPECT_EQ(receivedOf("Ridge"), 70U);
}

TEST_F(LedgerLifeTest, WhatTheUserCountsOfASessionThatWasThereIsInItFromItsBeginning) {
    startWithLedger();
    endSession();
    newWorld();
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 1000, 0, 1'800'000); // half an hour
    expectSessionQuestion("1000", MsgBoxAnswer::Yes);
    start("/r");
    tick();

    endTheLine();

    EXPECT_EQ(receivedOf("Ridge"), 1000U);
    EXPECT_EQ(written().entries.size(), 3U); // the two whole quarter hours begin within others
}

TEST_F(LedgerLifeTest, EachLineIsInItAndWhatRunsWithinAnotherIsMarked) {
    startWithLedger();
    ridge = machine.connections.connect("Ridge");
    harbour = machine.connections.connect("Harbour");
    machine.connections.connection(harbour)->carrier = ridge;
    tick();
    machine.connections.transfer(harbour, 830, 0, 10'000);
    tickAfter(10, 5000);

    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
    EXPECT_EQ(receivedOf("within Harbour"), 830U);
}

TEST_F(LedgerLifeTest, AMegabyteIsWrittenAMinuteAfterTheLastTime) {
    startWithLedger();
    ridge = machine.connections.connect("Ridge");
    tick();
    tickAfter(60, 1'000'000);
    ASSERT_EQ(receivedOf("Ridge"), 1'000'000U);

    tickAfter(59, 1'000'000);
    EXPECT_EQ(receivedOf("Ridge"), 1'000'000U);

    tickAfter(1, 0);
    EXPECT_EQ(receivedOf("Ridge"), 2'000'000U);
}

TEST_F(LedgerLifeTest, LessIsWrittenWhenTheQuarterHourIsOver) {
    countWithLedger(5000); // 16 November, a quarter past eight and 22 seconds
    tickAfter(14 * 60, 0);
    EXPECT_EQ(receivedOf("Ridge"), 0U);

    tickAfter(60, 0);

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
}

TEST_F(LedgerLifeTest, BeforeTheMachineSleepsAllIsWritten) {
    countWithLedger(5000);

    machine.desktop.pause();

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
}

TEST_F(LedgerLifeTest, AtTheEndAllIsWrittenAndNoJournalStays) {
    countWithLedger(5000);

    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
    EXPECT_FALSE(journalIsThere());
}

TEST_F(LedgerLifeTest, AfterAKillItGoesOnToTheByte) {
    countWithLedger(5000);
    pass(60, 700);

    restartAfterKill("/r");
    tickAfter(1, 30);
    endTheLine();

    EXPECT_EQ(receivedOf("Ridge"), 5730U);
}

TEST_F(LedgerLifeTest, WhatAKillLeftOfASessionThatIsOverIsWrittenByTheNextStart) {
    countWithLedger(5000);
    machine.connections.disconnect(ridge);

    restartAfterKill("/r");
    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
}

TEST_F(LedgerLifeTest, WhateverFileCallIsTheLastTheLedgerTellsAllOnce) {
    countWithLedger(5000);
    std::vector<ScriptedFiles> deaths;
    machine.files.meanwhile = [&](const std::string& /*operation*/, const std::string& /*path*/) {
        const auto watched = std::exchange(machine.files.meanwhile, nullptr);
        deaths.push_back(machine.files);
        machine.files.meanwhile = watched;
    };
    pass(1000, 300);
    tick(); // the quarter hour is over: the ledger is written
    machine.files.meanwhile = nullptr;
    ASSERT_EQ(receivedOf("Ridge"), 5300U);
    ASSERT_GT(deaths.size(), 8U);

    for (const ScriptedFiles& death : deaths) {
        world.reset();
        machine.files.goBackTo(death);
        machine.files.letAllGo();
        restartAfterKill("/r");
        tickAfter(1, 0);
        endSession();
        EXPECT_EQ(receivedOf("Ridge"), 5300U);
    }
}

TEST_F(LedgerLifeTest, WhatFindsNoRoomIsKeptAndWrittenLater) {
    countWithLedger(5000);
    machine.files.holdFailure = ErrorNumber::DiskFull;
    tickAfter(15 * 60, 1);
    tickAfter(60, 1);
    EXPECT_EQ(receivedOf("Ridge"), 0U);
    machine.files.holdFailure.reset();

    tickAfter(60, 1);

    EXPECT_EQ(receivedOf("Ridge"), 5003U);
}

TEST_F(LedgerLifeTest, ThatItCannotBeWrittenIsToldOnce) {
    countWithLedger(5000);
    failing("write", ledgerPath);

    for (int i = 0; i < 5; ++i) {
        tickAfter(15 * 60, 1);
    }

    const auto told = notes();
    EXPECT_EQ(std::count_if(told.begin(), told.end(),
                            [](const std::string& one) {
                                return one ==
                                       "The ledger cannot be written. What the lines carry is "
                                       "kept until it can.\rTarvik.ledger";
                            }),
              1);
}

TEST_F(LedgerLifeTest, OneThatTheUserDeletesIsNotMadeAnew) {
    countWithLedger(5000);
    machine.files.remove(ledgerPath);

    endTheLine();
    ridge = machine.connections.connect("Ridge");
    tickAfter(10, 70);
    endTheLine();

    EXPECT_FALSE(ledgerIsThere());
    EXPECT_FALSE(ledger().isKept);
}

TEST_F(LedgerLifeTest, WhatIsDamagedIsPutAsideAndTold) {
    countWithLedger(5000);
    endSession();
    const std::string torn = "0123456789ABCDEF Q 2026-11-";
    machine.files.setFile(ledgerPath, machine.files.file(ledgerPath) + torn);
    newWorld();

    start();

    EXPECT_EQ(machine.files.file(ledgerAside), torn);
    EXPECT_THAT(notes(), ElementsAre("A part of the ledger cannot be read. It is now "
                                     "in\rTarvik.2026-11-16.ledger"));
    EXPECT_EQ(receivedOf("Ridge"), 5000U);
}

TEST_F(LedgerLifeTest, WhereWhatIsDamagedCannotBePutAsideItStays) {
    countWithLedger(5000);
    endSession();
    machine.files.setFile(ledgerPath, machine.files.file(ledgerPath) + "torn");
    machine.files.setFile(ledgerAside, "of somebody else");
    newWorld();

    start();

    EXPECT_EQ(machine.files.file(ledgerAside), "of somebody else");
    EXPECT_THAT(notes(), ElementsAre("A part of the ledger cannot be read. It is left where it "
                                     "is.\rTarvik.ledger"));
}

TEST_F(LedgerLifeTest, OneOfAnotherVersionIsLeftAloneAndTold) {
    LedgerHead head{.version = 2, .begun = firstMoment, .ahead = {}};
    const std::string other = textOf(head);
    machine.files.setFile(ledgerPath, other);

    count(5000);
    endSession();

    EXPECT_EQ(machine.files.file(ledgerPath), other);
    EXPECT_THAT(notes(),
                ElementsAre(HasSubstr("The ledger is of another version of the program and is "
                                      "left alone. What the lines carry from now on is not in "
                                      "it.\rTarvik.ledger")));
}

TEST_F(LedgerLifeTest, WhatIsNoLedgerIsLeftAloneAndTold) {
    machine.files.setFile(ledgerPath, "of somebody else");

    count(5000);
    endSession();

    EXPECT_EQ(machine.files.file(ledgerPath), "of somebody else");
    EXPECT_THAT(notes(),
                ElementsAre("What has the name of the ledger is no ledger of the user's own and "
                            "is left alone. What the lines carry from now on is not in "
                            "it.\rTarvik.ledger"));
}

TEST_F(LedgerLifeTest, ASecondCopyWritesNothingIntoTheLedgerOfTheFirst) {
    startWithLedger();
    const std::string before = machine.files.file(ledgerPath);
    machine.instances.error = alreadyExists;
    machine.files.heldElsewhere = true;
    newWorld();
    expectInstanceQuestion();
    startAndCount(5000);

    endSession();

    EXPECT_EQ(machine.files.file(ledgerPath), before);
}

TEST_F(LedgerLifeTest, OneThatIsOutOfReachAtTheStartGetsAllThatWasCarriedMeanwhile) {
    startWithLedger();
    endSession();
    newWorld();
    machine.files.holdFailure = ErrorNumber::PathFileAccess;
    startAndCount(5000);
    machine.files.holdFailure.reset();

    tickAfter(15 * 60, 1);
    endTheLine();

    EXPECT_EQ(receivedOf("Ridge"), 5001U);
}

TEST_F(LedgerLifeTest, AtMidnightItIsFolded) {
    countWithLedger(5000);
    endTheLine();
    ridge = machine.connections.connect("Ridge");
    tickAfter(10, 70);
    endTheLine();
    ASSERT_EQ(written().entries.size(), 2U);

    tickAfter(16 * 60 * 60);

    EXPECT_EQ(written().entries.size(), 1U);
    EXPECT_EQ(receivedOf("Ridge"), 5070U);
}

TEST_F(LedgerLifeTest, ThatItWasWrittenJustBeforeMidnightDoesNotPutTheFoldingOff) {
    startWithLedger();
    constexpr int untilLate = 15 * 3'600 + 44 * 60; // 23:59:22
    pass(untilLate);
    for (const std::uint32_t bytes : {5000U, 70U}) {
        ridge = machine.connections.connect("Ridge");
        tick();
        tickAfter(5, bytes);
        endTheLine();
    }
    ASSERT_EQ(written().entries.size(), 2U);

    tickAfter(30);

    EXPECT_EQ(written().entries.size(), 1U);
    EXPECT_EQ(receivedOf("Ridge"), 5070U);
}

TEST_F(LedgerLifeTest, WhereALineCarriesNothingTheJournalIsNotWritten) {
    countWithLedger(5000);
    const std::string before = machine.files.file(path);

    machine.clock.advanceSeconds(10);
    tick();

    EXPECT_EQ(machine.files.file(path), before);
}

TEST_F(LedgerLifeTest, MoreQuarterHoursThanTheJournalHasRoomForAreAllInIt) {
    startWithLedger();
    machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 24'000'000, 0, 24 * 3'600'000);

    tick();
    endTheLine();

    EXPECT_EQ(written().entries.size(), 97U);
    EXPECT_EQ(receivedOf("Ridge"), 24'000'000U);
}

TEST_F(LedgerLifeTest, AtTheEndItIsNotFoldedForTheNextStartDoesThat) {
    countWithLedger(5000);
    endTheLine();
    ridge = machine.connections.connect("Ridge");
    tickAfter(10, 70);
    endTheLine();
    pass(16 * 60 * 60);

    endSession();

    EXPECT_EQ(written().entries.size(), 2U);
}

TEST_F(LedgerLifeTest, WhatRanWithinALineThatIsHungUpByTheLimitRanWithinIt) {
    startWithLedger();
    ridge = machine.connections.connect("Ridge");
    harbour = machine.connections.connect("Harbour");
    machine.connections.connection(harbour)->carrier = ridge;
    tick();
    state().TransferLimit = 1;
    state().TransferLimitHangUp = 1;
    state().TransferLimitValue = 1000;
    machine.connections.transfer(harbour, 830, 0, 10'000);

    tickAfter(10, 5000);
    ASSERT_EQ(machine.connections.connection(ridge), nullptr);
    endSession();

    EXPECT_EQ(receivedOf("within Harbour"), 830U);
}

TEST_F(LedgerLifeTest, ASessionAcrossAQuarterHourIsInBothWithItsShare) {
    startWithLedger(); // 8:15:22
    ridge = machine.connections.connect("Ridge");
    tick();
    tickAfter(878, 0); // 8:30:00
    tickAfter(900, 900);
    tickAfter(900, 1800);

    endTheLine();

    std::vector<std::uint64_t> received;
    for (const LedgerEntry& one : written().entries) {
        received.push_back(one.traffic.rcvd);
    }
    EXPECT_THAT(received, ElementsAre(0U, 900U, 1800U));
}

} // namespace
} // namespace tarvik
