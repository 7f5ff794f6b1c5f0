#pragma once

#include "journal/Journal.h"
#include "state/mdlTransfers.h"
#include "support/WorldTest.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// A program that was counting, is killed, and is started again.
class JournalRestartTest : public WorldTest {
protected:
    static constexpr const char* path = "C:\\Prog\\Tarvik.journal";
    /// Where a journal goes that is set aside on the day of these tests.
    static constexpr const char* aside = "C:\\Prog\\Tarvik.2026-11-16.journal";
    /// The system's error for a name of a single copy that another one has.
    static constexpr std::uint32_t alreadyExists = 183;

    std::uint32_t ridge = 0;
    std::uint32_t harbour = 0; // where two lines are up

    JournalRestartTest() { phoneBook({"Ridge", "Harbour"}); }

    bool journalIsThere() const { return machine.files.exists(path); }
    std::int64_t received() { return Rcvd().overall().integralPart(); }

    /// A tick that many seconds after the one before, in which the line carried so many bytes.
    void tickAfter(int seconds, std::uint32_t bytes = 0) {
        pass(seconds, bytes);
        tick();
    }
    void pass(int seconds, std::uint32_t bytes = 0) {
        machine.clock.advanceSeconds(seconds);
        if (machine.connections.connection(ridge) != nullptr) {
            machine.connections.transfer(ridge, bytes, 0,
                                         static_cast<std::uint32_t>(seconds) * 1000);
        }
    }
    /// The program is started and counts that many bytes of a session that it sees begin.
    void startAndCount(std::uint32_t bytes) {
        start("/r");
        ridge = machine.connections.connect("Ridge");
        tick();
        tickAfter(10, bytes);
    }
    /// The program has counted that many bytes of a session that was there from its first moment.
    void count(std::uint32_t bytes) {
        setIni("[Settings]\r\nIsLocked=0\r\n");
        startAndCount(bytes);
    }
    /// The same of a first run, which makes no INI file.
    void countInFirstRun(std::uint32_t bytes) {
        expectFirstRunBoxes();
        startAndCount(bytes);
    }
    /// 5,000 bytes of one line and 830 of another are counted, each from its first moment.
    void countTwoLines(const std::string& settings = {}) {
        setIni("[Settings]\r\n" + settings);
        start("/r");
        ridge = machine.connections.connect("Ridge");
        harbour = machine.connections.connect("Harbour");
        tick();
        machine.connections.transfer(harbour, 830, 0, 10'000);
        tickAfter(10, 5000);
    }
    void restartAfterKill(const std::string& commandLine = {}) {
        newWorld();
        expectInstanceQuestion();
        start(commandLine);
    }
    void restartAfterPowerCut(const std::string& commandLine = {}) {
        machine.files.cutPower();
        restartAfterKill(commandLine);
    }
    /// A kill and a start that monitors and asks about a session of that many bytes.
    void restartAsking(const std::string& bytes, MsgBoxAnswer answer) {
        newWorld();
        expectInstanceQuestion();
        expectSessionQuestion(bytes, answer);
        start("/r");
        tick();
    }
    /// An INI file whose only record has that many bytes, with more settings.
    void setRecord(const std::string& bytes, const std::string& settings = {}) {
        setIni("[Settings]\r\nLastState=a\r\nDateStamp1=a\r\nLastDateStamp=1\r\n" + settings +
               "[a]\r\nSent=0\r\nRcvd=" + bytes + "\r\nDuration=5\r\n");
    }
    /// The values are reset on demand.
    void reset() {
        expectBox("Are you really sure you want to reset the (overall) values?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes);
        frmOptions().cmdResetValues.press();
    }
    /// 7,000 bytes are on record; they are reset, and the program is left.
    void resetAndQuit() {
        setRecord("7000");
        start();
        EXPECT_EQ(received(), 7000);
        reset();
        frmMain().cmdQuit.press();
    }
    /// The next tick finds a reset by the calendar to be due.
    void makeResetDue(bool withBackup) {
        state().TransferResetEnable = 1;
        state().TransferReset = enDateCalc::EndOfMonth;
        state().TransferResetBackup = withBackup ? 1 : 0;
    }
    /// Announces the question about a reset whose backup failed, with its answer.
    void expectBackupQuestion(MsgBoxAnswer answer) {
        expectBox("The criteria to reset the transfer records has been reached.\rHowever - An "
                  "error occured while trying to create the backup-file.\rDo you want to reset the "
                  "transfers recorded anyway?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
    }
    /// Somebody writes another interval into the INI file, by hand.
    void editInterval() {
        std::string text = ini();
        const std::string before = "RefreshInterval=1000";
        ASSERT_NE(text.find(before), std::string::npos);
        setIni(text.replace(text.find(before), before.size(), "RefreshInterval=200"));
    }
    void endSession() { frmMain().unload(UnloadMode::AppWindows); }
};

} // namespace tarvik
