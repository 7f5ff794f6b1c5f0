#include "monkey/Monkey.h"

#include <array>

// What the line, the clock, the files and the desktop do meanwhile.

namespace tarvik::monkey {

namespace {

/// A log that is long enough to be imported in pieces, and some that are not well formed.
std::string records(int count) {
    std::string text = "[Settings]\r\nLastDateStamp=" + std::to_string(count) + "\r\n";
    for (int i = 1; i <= count; ++i) {
        text += "DateStamp" + std::to_string(i) + "=1.1.2025|" + std::to_string(i) + "\r\n";
    }
    for (int i = 1; i <= count; ++i) {
        text += "[1.1.2025|" + std::to_string(i) + "]\r\nSent=" + std::to_string(i * 100) +
                "\r\nRcvd=" + std::to_string(i * 1000) + "\r\nDuration=" + std::to_string(i) +
                "\r\nIPAddress=10.0." + std::to_string(i % 250) + ".1\r\n";
    }
    return text;
}

} // namespace

void Monkey::tick() {
    Timer& timer = world_->forms.frmMain.timUpdateStats;
    if (timer.enabled()) {
        note("tick");
        timer.fire();
    }
}

void Monkey::passTime() {
    const double seconds = oneIn(10)  ? (upTo(800) - 400) * 86'400.0
                           : oneIn(2) ? upTo(100'000)
                                      : upTo(60);
    note("the clock moves by " + std::to_string(seconds) + " s");
    machine().clock.advanceSeconds(seconds);
}

void Monkey::useLine() {
    for (const auto& one : std::vector(machine().connections.connections)) {
        const std::uint32_t rcvd =
            oneIn(20) ? anyNumber() : static_cast<std::uint32_t>(upTo(50'000));
        const std::uint32_t sent =
            oneIn(20) ? anyNumber() : static_cast<std::uint32_t>(upTo(5'000));
        const auto time = static_cast<std::uint32_t>(oneIn(20) ? upTo(86'000'000) : upTo(60'000));
        note("line " + std::to_string(one.handle) + ": " + std::to_string(rcvd) + " received, " +
             std::to_string(sent) + " sent, " + std::to_string(time) + " ms");
        machine().connections.transfer(one.handle, rcvd, sent, time);
    }
}

void Monkey::changeLine() {
    ScriptedConnections& line = machine().connections;
    if (line.connections.size() < 3 && oneIn(2)) {
        const std::uint32_t handle = line.connect(oneIn(2) ? "Harbour" : "Ridge");
        line.connection(handle)->state = oneIn(6) ? 0 : ras::connected;
        note("line " + std::to_string(handle) + " goes up");
    } else if (!line.connections.empty()) {
        note("line " + std::to_string(line.connections.front().handle) + " goes down");
        line.disconnect(line.connections.front().handle);
    } else {
        line.entries.resize(static_cast<std::size_t>(upTo(2)));
        for (auto& entry : line.entries) {
            entry.name = "Harbour";
        }
        note(std::to_string(line.entries.size()) + " entries");
    }
}

void Monkey::failLine() {
    static constexpr std::array<const char*, 7> operations{"RasEnumEntriesA",
                                                           "RasEnumConnectionsA",
                                                           "RasGetConnectStatusA",
                                                           "RasGetConnectionStatistics",
                                                           "RasDialA",
                                                           "RasHangUpA",
                                                           "RasGetEntryDialParamsA"};
    const char* const operation = operations.at(static_cast<std::size_t>(upTo(6)));
    note(std::string(operation) + " fails next");
    machine().connections.failNext(operation, static_cast<std::uint32_t>(600 + upTo(150)));
}

void Monkey::changeFiles() {
    ScriptedFiles& files = machine().files;
    static const std::string longLog = records(6000);
    static constexpr std::array<const char*, 6> names{
        "C:\\Prog\\Tarvik.ini",  "C:\\Prog\\long.ini", "C:\\Prog\\odd.ini",
        "C:\\Prog\\missing.ini", "C:\\Prog\\out.csv",  ""};
    machine().dialogs.chosen = names.at(static_cast<std::size_t>(upTo(5)));
    files.setFile("C:\\Prog\\long.ini", longLog);
    files.setFile("C:\\Prog\\odd.ini", "[Settings]\r\nLastDateStamp=" + std::to_string(upTo(9)) +
                                           "\r\nDateStamp1=x|\r\nDateStamp2=|\r\n[|]\r\nSent=x");
    files.replaceFailure = oneIn(6) ? FileResult(ErrorNumber::PermissionDenied) : FileResult();
    note("dialogs are left with \"" + machine().dialogs.chosen + "\"");
}

void Monkey::changeDesktop() {
    machine().notificationArea.present = !oneIn(4);
    machine().internet.connected = oneIn(2);
    machine().internet.flagWord = anyNumber() & 0x7FU;
    machine().sockets.hostNameFails = oneIn(4);
    note("the desktop changes");
}

} // namespace tarvik::monkey
