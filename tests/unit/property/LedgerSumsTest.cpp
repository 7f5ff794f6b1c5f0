#include "ledger/LedgerContents.h"
#include "property/RandomUserTest.h"
#include "settings/mdlSettingsLedger.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// What lines have carried, by their names.
using Sums = std::map<std::string, std::uint64_t>;

/// A random user with up to three lines, whose program is killed, ended, sent to sleep, and now and
/// then finds no room on its disk. What a line has carried is stated apart from the program: each
/// tick sees all of it.
class LedgerSumsTest : public RandomUserTest {
protected:
    LedgerSumsTest() {
        begin({"Harbour", "Ridge", "Quay"});
        EXPECT_TRUE(BeginLedger());
    }

    /// All that was carried while the program was away.
    bool countsTheSession() override { return true; }

    std::vector<ScriptedConnections::Connection>& up() { return machine.connections.connections; }

    void connect() {
        for (const char* entry : {"Harbour", "Ridge", "Quay"}) {
            if (below(3) == 0 && std::none_of(up().begin(), up().end(), [&](const auto& one) {
                    return one.entryName == entry;
                })) {
                machine.connections.connect(entry);
            }
        }
        tick();
    }

    void carry() {
        const std::uint32_t seconds = 1 + below(2'000);
        machine.clock.advanceSeconds(seconds);
        for (const auto& one : up()) {
            const std::uint32_t bytes = below(3) == 0 ? 0 : below(700'000);
            carried_[one.entryName] += bytes;
            machine.connections.transfer(one.handle, bytes, 0, seconds * 1000);
        }
        tick();
    }

    void disconnect() {
        if (!up().empty()) {
            machine.connections.disconnect(
                up().at(below(static_cast<std::uint32_t>(up().size()))).handle);
        }
        tick();
    }

    void runOutOfRoom() {
        machine.files.holdFailure = ErrorNumber::DiskFull;
        carry();
        machine.files.holdFailure.reset();
        carry();
    }

    void kill() {
        newWorld();
        start("/r");
        tick();
    }

    /// A line that is up would be asked about, and count from its beginning once more.
    void end() {
        while (!up().empty()) {
            disconnect();
        }
        frmMain().unload(UnloadMode::AppWindows);
    }
    void restart() {
        end();
        newWorld();
        start("/r");
    }

    void step() {
        switch (below(16)) {
        case 0:
        case 1:
            return connect();
        case 2:
            return disconnect();
        case 3:
            return kill();
        case 4:
            return machine.desktop.pause();
        case 5:
            return below(6) == 0 ? restart() : carry();
        case 6:
            return runOutOfRoom();
        default:
            return carry();
        }
    }

    Sums written() const {
        Sums sums;
        for (const LedgerEntry& one :
             readLedger(machine.files.file("C:\\Prog\\Tarvik.ledger")).contents.entries) {
            sums[one.line] += one.traffic.rcvd;
        }
        std::erase_if(sums, [](const auto& one) { return one.second == 0; });
        return sums;
    }

    Sums carried() const {
        Sums sums = carried_;
        std::erase_if(sums, [](const auto& one) { return one.second == 0; });
        return sums;
    }

private:
    Sums carried_;
};

TEST_P(LedgerSumsTest, TheLedgerTellsWhatTheLinesHaveCarriedToTheByte) {
    for (int i = 0; i < 150; ++i) {
        step();
    }

    end();

    EXPECT_EQ(written(), carried());
}

INSTANTIATE_TEST_SUITE_P(Seeds, LedgerSumsTest, testing::Range(1U, 41U));

} // namespace
} // namespace tarvik
