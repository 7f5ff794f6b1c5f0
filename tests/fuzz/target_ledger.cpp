// The ledger at the program's start: any bytes. What is no ledger is left as it is; of what is one,
// nothing is lost by putting aside what is damaged, by adding to it and by folding it.
//
// Input: one byte that tells whether the sums are put right, then the file.

#include "Fuzz.h"
#include "ledger/Ledger.h"
#include "scripted/ScriptedPlatform.h"
#include "types/CheckSum.h"

#include <algorithm>
#include <map>

namespace tarvik::fuzz {
namespace {

using Finding = Ledger::Finding;

constexpr const char* path = "C:\\Prog\\Tarvik.ledger";
constexpr const char* aside = "C:\\Prog\\Tarvik.2026-11-16.ledger";
constexpr const char* ini = "C:\\Prog\\Tarvik.ini";
constexpr LocalDay today = std::chrono::local_days(std::chrono::year(2026) / 11 / 16);

/// Of every line, so that what comes behind the check is reached.
std::string withSumsRight(const std::string& bytes) {
    constexpr std::size_t sumDigits = 16;
    std::string result;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        const std::string text = bytes.substr(begin, end - begin);
        std::uint64_t sum = checkSum(text);
        std::string digits(sumDigits, '0');
        for (std::size_t i = sumDigits; i > 0; --i, sum /= 16) {
            digits[i - 1] = "0123456789ABCDEF"[sum % 16];
        }
        result += digits + " " + text + (end < bytes.size() ? "\n" : "");
        begin = end + 1;
    }
    return result;
}

/// What each line has carried inside another or not.
using Sums = std::map<std::pair<std::string, bool>, Traffic>;

Sums sumsOf(const LedgerContents& contents) {
    Sums sums;
    for (const LedgerEntry& one : contents.entries) {
        Traffic& sum = sums[{one.line, one.inside}];
        sum = sum + one.traffic;
    }
    return sums;
}

/// What stands in the file is what the ledger says, and every line of it is as it would be written.
void requireSame(const ScriptedPlatform& machine, const Ledger& ledger) {
    const LedgerReading reading = readLedger(machine.files.file(path));
    require(reading.kind == LedgerReading::Kind::Ledger, "what was written is a ledger");
    require(reading.contents.entries == ledger.contents().entries,
            "the entries are those of the file");
    require(reading.contents.notes == ledger.contents().notes, "the notes are those of the file");
    require(reading.contents.head == ledger.contents().head, "the first line is that of the file");
}

void work(ScriptedPlatform& machine, Ledger& ledger) {
    const Sums before = sumsOf(ledger.contents());
    const std::size_t notes = ledger.contents().notes.size();
    require(!ledger.mend(aside) && ledger.damaged().empty(), "what is damaged is put aside");
    require(readLedger(machine.files.file(path)).damaged.empty(), "nothing damaged is left");
    requireSame(machine, ledger);
    require(!ledger.fold(today), "a ledger is folded");
    require(sumsOf(ledger.contents()) == before, "no figure is lost in folding");
    const auto once = ledger.contents().entries;
    require(!ledger.fold(today) && ledger.contents().entries == once, "what is folded stays so");
    require(!ledger.add({{.at = firstMoment, .line = "Line", .traffic = {1, 2, 3}}}),
            "a ledger is added to");
    require(ledger.contents().notes.size() == notes, "no note is lost");
    requireSame(machine, ledger);
}

void play(Input input) {
    const bool right = input.flag();
    const std::string bytes = right ? withSumsRight(input.everything()) : input.everything();
    ScriptedPlatform machine;
    const PlatformScope scope(machine.platform);
    machine.files.setFile(path, bytes);
    Ledger ledger;
    if (ledger.take(path) == Finding::Taken) {
        work(machine, ledger);
        return;
    }
    require(machine.files.file(path) == bytes, "what is no ledger is left alone");
    const bool begun = ledger.begin(path, ini, firstMoment, {}) == Finding::Taken;
    require(begun || machine.files.file(path) == bytes, "also when one is to be begun");
    if (begun) {
        work(machine, ledger);
    }
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
