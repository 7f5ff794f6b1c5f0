#pragma once

#include "ledger/Ledger.h"
#include "settings/JournalRestartTest.h"
#include "settings/mdlSettingsLedger.h"

#include <cstdint>
#include <map>
#include <string>

namespace tarvik {

/// A program whose user keeps a ledger.
class LedgerLifeTest : public JournalRestartTest {
protected:
    static constexpr const char* ledgerPath = "C:\\Prog\\Tarvik.ledger";
    static constexpr const char* ledgerAside = "C:\\Prog\\Tarvik.2026-11-16.ledger";

    bool ledgerIsThere() const { return machine.files.exists(ledgerPath); }

    /// What the file says.
    LedgerContents written() const { return readLedger(machine.files.file(ledgerPath)).contents; }
    /// What it says of each line, by its name; of one within another with a mark before it.
    std::map<std::string, Traffic> sums() const {
        std::map<std::string, Traffic> result;
        for (const LedgerEntry& one : written().entries) {
            Traffic& sum = result[(one.inside ? "within " : "") + one.line];
            sum = sum + one.traffic;
        }
        return result;
    }
    std::uint64_t receivedOf(const std::string& line) const {
        const auto all = sums();
        const auto found = all.find(line);
        return found == all.end() ? 0 : found->second.rcvd;
    }

    /// The program monitors, and its user begins a ledger, before any line is up.
    void startWithLedger() {
        setIni("[Settings]\r\nIsLocked=0\r\n");
        start("/r");
        EXPECT_TRUE(BeginLedger());
    }
    /// The same, and a session has carried so much since its beginning.
    void countWithLedger(std::uint32_t bytes) {
        startWithLedger();
        ridge = machine.connections.connect("Ridge");
        tick();
        tickAfter(10, bytes);
    }
    /// From now on one thing that is done with a file ends so: "hold", "write" or "flush".
    void failing(const std::string& operation, const std::string& file,
                 ErrorNumber failure = ErrorNumber::DiskFull) {
        machine.files.meanwhile = [=, this](const std::string& done, const std::string& with) {
            machine.files.holdFailure =
                done == operation && with == file ? FileResult(failure) : std::nullopt;
        };
    }
    void nothingFails() {
        machine.files.meanwhile = nullptr;
        machine.files.holdFailure.reset();
    }
    void endTheLine() {
        machine.connections.disconnect(ridge);
        tick();
    }
};

} // namespace tarvik
