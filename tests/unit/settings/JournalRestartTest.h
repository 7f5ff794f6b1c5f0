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

    std::uint32_t ridge = 0;

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
    /// The program has counted that many bytes of a session that was there from its first moment.
    void count(std::uint32_t bytes) {
        setIni("[Settings]\r\nIsLocked=0\r\n");
        start("/r");
        ridge = machine.connections.connect("Ridge");
        tick();
        tickAfter(10, bytes);
    }
    void restartAfterKill(const std::string& commandLine = {}) {
        newWorld();
        expectInstanceQuestion();
        start(commandLine);
    }
    /// 7,000 bytes are on record; they are reset, and the program is left.
    void resetAndQuit() {
        setIni("[Settings]\r\nLastState=a\r\nDateStamp1=a\r\nLastDateStamp=1\r\n[a]\r\nSent=0\r\n"
               "Rcvd=7000\r\nDuration=5\r\n");
        start();
        EXPECT_EQ(received(), 7000);
        expectBox("Are you really sure you want to reset the (overall) values?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes);
        frmOptions().cmdResetValues.press();
        frmMain().cmdQuit.press();
    }
    void endSession() { frmMain().unload(UnloadMode::AppWindows); }
};

} // namespace tarvik
