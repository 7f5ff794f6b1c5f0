#include "ledger/LedgerContents.h"
#include "soak/Run.h"

#include <vector>

namespace tarvik::soak {

namespace {

using Sums = std::map<std::string, Amount>;

void add(Sums& sums, const std::vector<LedgerEntry>& entries) {
    for (const LedgerEntry& one : entries) {
        Amount& sum = sums[(one.inside ? "within " : "") + one.line];
        sum = sum + Amount{.rcvd = static_cast<std::int64_t>(one.traffic.rcvd),
                           .sent = static_cast<std::int64_t>(one.traffic.sent),
                           .time = static_cast<std::int64_t>(one.traffic.milliseconds)};
    }
}

Sums withoutNothing(Sums sums) {
    std::erase_if(sums, [](const auto& one) { return one.second == Amount(); });
    return sums;
}

std::string textOf(const Sums& sums) {
    std::string text;
    for (const auto& [line, sum] : sums) {
        text += "\n    " + line + ": " + sum.text();
    }
    return text;
}

} // namespace

/// Whether it was written, and what it tells by now. When that is due its own tests tell.
void Run::noteLedger(bool whileAsking) {
    std::string bytes = hasLedger_ ? machine_.files.file(ledgerPath) : std::string();
    if (bytes == ledgerBefore_) {
        return;
    }
    if (whileAsking) {
        expected_.ledgerWrittenWhileAsking();
    } else {
        starts_ ? expected_.ledgerFolded() : expected_.ledgerWritten();
    }
    ledgerBefore_ = std::move(bytes);
    const LedgerReading reading = readLedger(ledgerBefore_);
    demand(reading.damaged.empty(), "no part of the ledger is damaged");
    inLedger_.clear();
    add(inLedger_, reading.contents.entries);
}

/// What it tells and what is not in it yet is what the lines have carried and the user has not
/// declined.
void Run::expectLedger() {
    const bool wasKilled = !world_ || (starts_ && !expected_.running);
    if (!hasLedger_ || wasKilled) {
        return; // the journal has the rest, and the next start tells
    }
    Sums told = inLedger_;
    if (expected_.running) {
        add(told, world_->ledger.unwritten.entries());
    }
    told = withoutNothing(std::move(told));
    const Sums carried = withoutNothing(expected_.tally.carried);
    if (told != carried) {
        violated("the ledger tells" + textOf(told) + "\n  but it must be" + textOf(carried));
    }
}

} // namespace tarvik::soak
