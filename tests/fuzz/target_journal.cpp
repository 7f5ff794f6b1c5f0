// The journal at the program's start: any bytes. Neither crash nor a state that no journal can have
// meant; and what the program then keeps, the next start shows.
//
// Input: one byte that tells whether the sums are put right, then the file.

#include "FuzzWorld.h"
#include "journal/Journal.h"
#include "settings/mdlSettingsJournal.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTransfers.h"

#include <algorithm>
#include <memory>

namespace tarvik::fuzz {
namespace {

constexpr const char* path = "C:\\Prog\\Tarvik.journal";
constexpr std::size_t lengthAt = 12;
constexpr std::size_t sumSize = 8;

/// Of what stands in the place that begins there.
void putSumRight(std::string& bytes, std::size_t begin) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        length |= std::size_t{static_cast<unsigned char>(bytes[begin + lengthAt + i])} << (8 * i);
    }
    if (length < sumSize || length > journalPlace) {
        return;
    }
    std::uint64_t sum = ~std::uint64_t{0};
    for (std::size_t i = 0; i + sumSize < length; ++i) {
        sum ^= std::uint64_t{static_cast<unsigned char>(bytes[begin + i])} << 56U;
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum << 1U) ^ ((sum >> 63U) != 0 ? 0x42F0'E1EB'A9EA'3693U : 0U);
        }
    }
    for (std::size_t i = 0; i < sumSize; ++i) {
        bytes[begin + length - sumSize + i] = static_cast<char>(~sum >> (8 * i));
    }
}

/// Of every place that something stands in, so that what comes behind the check is reached, and the
/// choice among them.
void putSumsRight(std::string& bytes) {
    const std::size_t places =
        std::clamp<std::size_t>((bytes.size() + journalPlace - 1) / journalPlace, 1, journalPlaces);
    bytes.resize(std::max(bytes.size(), places * journalPlace), '\0');
    for (std::size_t i = 0; i < places; ++i) {
        putSumRight(bytes, i * journalPlace);
    }
}

void requireSense(const State& s) {
    const Currency zero(0);
    require(s.BytesRcvdTotal >= zero && s.BytesSentTotal >= zero && s.DurationTotal >= zero,
            "totals are not below zero");
    require(s.RefreshInterval >= Long(100) && s.RefreshInterval <= Long(50'000),
            "the timer's interval is one of those that can be set");
    require(s.TransferTickerValue >= Long(1) && s.TransferTickerValue <= Long(9999),
            "the ticker's step is one of those that can be set");
    s.TransferResetLast.civil(); // raises for what is no day
    Amount counted;
    for (const FormerSession& one : s.FormerSessions) {
        counted = counted + one.session.counted;
    }
    require(counted.rcvd <= s.BytesRcvdTotal && counted.sent <= s.BytesSentTotal &&
                counted.duration <= s.DurationTotal,
            "the totals hold what counts of the sessions");
}

void play(Input input) {
    auto fuzz = std::make_unique<FuzzWorld>();
    const bool right = input.flag();
    std::string bytes = input.everything();
    if (right) {
        putSumsRight(bytes);
    }
    fuzz->machine.files.setFile(path, bytes);
    fuzz->machine.files.setFile(FuzzWorld::iniPath, "[Settings]\r\nRefreshInterval=1000\r\n"
                                                    "TransferTickerValue=100\r\n");
    fuzz->machine.connections.entries.push_back({.name = "Line"});
    fuzz->machine.program.arguments = "/r";
    Main();
    requireSense(fuzz->world.state);
    fuzz->world.forms.frmMain.timUpdateStats.fire();
    fuzz->machine.connections.connect("Line");
    fuzz->world.forms.frmMain.timUpdateStats.fire();
    require(!fuzz->toldError(), "a journal brings no error about");
    requireSense(fuzz->world.state);
    KeepJournal(KeepWhen::AtOnce);
    if (!fuzz->world.journal.inUse() || !fuzz->world.journal.isThere()) {
        return;
    }
    fuzz->world.journal.release();
    Journal next;
    const JournalFinding found = next.take(path, FuzzWorld::iniPath);
    require(found.kind == JournalFinding::Kind::Entry &&
                found.entry.totals.rcvd >= Rcvd().overall(),
            "what is kept is found again");
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
