#include "settings/LedgerLifeTest.h"

#include <optional>
#include <utility>
#include <vector>

namespace tarvik {
namespace {

/// Kills, and calls that fail, between the journal and the ledger.
class LedgerTroubleTest : public LedgerLifeTest {
protected:
    /// What lay on the disk at each moment of a file's use, while `action` ran.
    template <class Action>
    std::vector<ScriptedFiles> deathsIn(Action&& action) {
        std::vector<ScriptedFiles> deaths;
        machine.files.meanwhile = [&](const std::string& /*operation*/, const std::string&) {
            const auto watched = std::exchange(machine.files.meanwhile, nullptr);
            deaths.push_back(machine.files);
            machine.files.meanwhile = watched;
        };
        action();
        machine.files.meanwhile = nullptr;
        deaths.push_back(machine.files);
        return deaths;
    }
    void goBackTo(const ScriptedFiles& death) {
        world.reset();
        machine.files.goBackTo(death);
        machine.files.letAllGo();
    }
    /// Another start, and its end, whatever it may ask.
    void startAfter(const ScriptedFiles& death) {
        goBackTo(death);
        newWorld();
        machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
        start();
    }
    /// A kill when 70 bytes were added to the 5,000 of the same quarter hour, and the journal did
    /// not know it yet.
    void leaveTheJournalBehind() {
        countWithLedger(5000);
        endTheLine();
        ridge = machine.connections.connect("Ridge");
        tickAfter(10, 70);
        std::optional<ScriptedFiles> unknown;
        machine.files.meanwhile = [&](const std::string& operation, const std::string& file) {
            const auto watched = std::exchange(machine.files.meanwhile, nullptr);
            if (operation == "flushed" && file == ledgerPath) {
                unknown = machine.files;
            }
            machine.files.meanwhile = watched;
        };
        endTheLine();
        machine.files.meanwhile = nullptr;
        goBackTo(unknown.value());
    }
    /// The quarter hour is over, and the ledger is written.
    void endTheQuarterHour() { tickAfter(15 * 60, 300); }
};

TEST_F(LedgerTroubleTest, WhatItTakesAnewAfterAFailureIsInItOnceAfterAKill) {
    countWithLedger(5000);
    failing("flush", ledgerPath);
    endTheQuarterHour();
    nothingFails();
    pass(10, 70);
    tick();
    machine.connections.disconnect(ridge);

    restartAfterKill("/r");
    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5370U);
}

TEST_F(LedgerTroubleTest, WhatItTakesAnewAfterAFailureIsInItOnce) {
    countWithLedger(5000);
    failing("flush", ledgerPath);
    endTheQuarterHour();
    nothingFails();

    endTheQuarterHour();

    EXPECT_EQ(receivedOf("Ridge"), 5600U);
}

TEST_F(LedgerTroubleTest, AsLongAsTheJournalCannotBeWrittenItIsNotWrittenEither) {
    countWithLedger(5000);
    failing("write", path);
    endTheQuarterHour();
    EXPECT_EQ(receivedOf("Ridge"), 0U);
    nothingFails();

    tickAfter(60, 1);

    EXPECT_EQ(receivedOf("Ridge"), 5301U);
}

TEST_F(LedgerTroubleTest, AtTheEndItIsWrittenThoughTheJournalCannotBe) {
    countWithLedger(5000);
    failing("write", path);

    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5000U);
}

TEST_F(LedgerTroubleTest, AKillAtAnyCallOfTheStartThatFoldsItAddsNothingTwice) {
    leaveTheJournalBehind();
    const std::vector<ScriptedFiles> deaths = deathsIn([&] { restartAfterKill(); });
    ASSERT_EQ(written().entries.size(), 1U);

    for (const ScriptedFiles& death : deaths) {
        startAfter(death);
        endSession();
        EXPECT_EQ(receivedOf("Ridge"), 5070U);
    }
}

TEST_F(LedgerTroubleTest, AKillInTheMiddleOfATickLosesNothingOfALineThatIsGoneThen) {
    countWithLedger(5000);
    makeResetDue(false);
    pass(10, 300);
    const std::vector<ScriptedFiles> deaths = deathsIn([&] { tick(); });
    machine.connections.disconnect(ridge);
    int resets = 0;

    for (const ScriptedFiles& death : deaths) {
        startAfter(death);
        const bool isReset = received() == 0;
        resets += isReset ? 1 : 0;
        endSession();
        EXPECT_EQ(receivedOf("Ridge"), isReset ? 5300U : 5000U);
    }

    EXPECT_GT(resets, 0);
}

TEST_F(LedgerTroubleTest, WhatAJournalOfAnotherFileTellsIsNotLostByAKillWhileThatIsPutAside) {
    countWithLedger(5000);
    machine.connections.disconnect(ridge);
    newWorld();
    setRecord("7000");
    const std::vector<ScriptedFiles> deaths = deathsIn([&] { start(); });
    ASSERT_TRUE(machine.files.exists(aside));

    for (const ScriptedFiles& death : deaths) {
        startAfter(death);
        endSession();
        EXPECT_EQ(receivedOf("Ridge"), 5000U);
    }
}

TEST_F(LedgerTroubleTest, AKillLosesNothingOfTwoLongLinesThatAreFoundUpAtOnce) {
    startWithLedger();
    machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
    ridge = machine.connections.connect("Ridge");
    harbour = machine.connections.connect("Harbour");
    machine.connections.transfer(ridge, 8'000'000, 800, 8 * 3'600'000);
    machine.connections.transfer(harbour, 12'000'000, 1200, 12 * 3'600'000);
    const std::vector<ScriptedFiles> deaths = deathsIn([&] { tickAfter(10); });
    const std::map<std::string, Traffic> all = sums();
    ASSERT_EQ(all.size(), 2U);
    machine.connections.disconnect(ridge);
    machine.connections.disconnect(harbour);
    int told = 0;

    for (const ScriptedFiles& death : deaths) {
        startAfter(death);
        endSession();
        EXPECT_TRUE(sums() == all || sums().empty());
        told += sums().empty() ? 0 : 1;
    }

    EXPECT_GT(told, 4);
}

TEST_F(LedgerTroubleTest, AKillLosesNothingOfMoreLinesThanTheJournalHasRoomFor) {
    startWithLedger();
    machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
    std::vector<std::uint32_t> lines;
    for (int i = 0; i < 20; ++i) {
        const std::string name(200, static_cast<char>('a' + i));
        machine.connections.entries.push_back({.name = name});
        lines.push_back(machine.connections.connect(name));
        machine.connections.transfer(lines.back(), 1000 + static_cast<std::uint32_t>(i), 0, 60'000);
    }
    const auto sum = [&] {
        std::uint64_t received = 0;
        for (const auto& [name, one] : sums()) {
            received += one.rcvd;
        }
        return received;
    };
    const std::vector<ScriptedFiles> deaths = deathsIn([&] { tickAfter(10); });
    endSession();
    ASSERT_EQ(sum(), 20'190U);
    ASSERT_EQ(sums().size(), 20U);
    for (const std::uint32_t one : lines) {
        machine.connections.disconnect(one);
    }
    int told = 0;

    for (const ScriptedFiles& death : deaths) {
        startAfter(death);
        endSession();
        EXPECT_TRUE(sum() == 20'190U || sum() == 0U) << sum();
        told += sum() == 0 ? 0 : 1;
    }

    EXPECT_GT(told, 4);
}

TEST_F(LedgerTroubleTest, WhereALookForItFailsAndThereIsNoneItCanBeBegun) {
    setIni("[Settings]\r\nIsLocked=0\r\n");
    machine.files.setFile(ledgerPath, "");
    machine.files.setUnreadable(ledgerPath);
    start("/r");
    machine.files.remove(ledgerPath);

    EXPECT_TRUE(BeginLedger());

    EXPECT_TRUE(ledgerIsThere());
}

TEST_F(LedgerTroubleTest, WhereALookForItFailsAndThereIsNoneNothingIsCollected) {
    setIni("[Settings]\r\nIsLocked=0\r\n");
    machine.files.setFile(ledgerPath, "");
    machine.files.setUnreadable(ledgerPath);
    startAndCount(5000);
    machine.files.remove(ledgerPath);

    endTheLine();

    EXPECT_FALSE(ledger().isKept);
    EXPECT_TRUE(ledger().unwritten.entries().empty());
}

TEST_F(LedgerTroubleTest, WhileTheJournalIsOutOfReachItIsNotTouched) {
    countWithLedger(5000);
    newWorld();
    failing("hold", path, ErrorNumber::PathFileAccess);
    const std::string before = machine.files.file(ledgerPath);
    expectInstanceQuestion();
    expectSessionQuestion("5000", MsgBoxAnswer::Yes);
    start("/r");
    tick();

    endTheQuarterHour();

    EXPECT_EQ(machine.files.file(ledgerPath), before);
}

TEST_F(LedgerTroubleTest, WhatAJournalThatIsLeftAloneTellsIsInItOnceWhenThatIsReadAgain) {
    leaveTheJournalBehind();
    const std::string journal = machine.files.file(path);
    machine.files.setTwoNames(path);
    restartAfterKill();
    endSession();
    newWorld();
    machine.files.remove(path);
    machine.files.setFile(path, journal);

    start();
    endSession();

    EXPECT_EQ(receivedOf("Ridge"), 5070U);
}

} // namespace
} // namespace tarvik
