#pragma once

#include "common/RasRecords.h"
#include "ports/ConnectionProvider.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik {

/// A dial-up service whose entries, connections, counters and failures the test sets.
class ScriptedConnections : public ConnectionProvider {
public:
    using Entry = RasEntry;

    struct Connection {
        std::uint32_t handle = 0;
        std::string entryName;
        std::string deviceType = "modem";
        std::string deviceName = "Line 1";
        std::uint32_t state = ras::connected;
        RAS_STATS statistics{};
        std::optional<Traffic> totals; ///< for a line whose service counts beyond 32 bits
        std::uint32_t carrier = 0;     ///< handle of the connection that it lies within
        /// As long as it is not 0, every call for its status, or for its statistics, answers this.
        std::uint32_t statusFailure = 0;
        std::uint32_t statisticsFailure = 0;
    };

    std::vector<Entry> entries;
    std::vector<Connection> connections;
    /// Entry record sizes that are accepted; any other is answered with 632.
    std::set<std::uint32_t> entrySizes{532, 264, 28};
    /// Texts for codes, where the common ones are not wanted.
    std::map<std::uint32_t, std::string> errorTexts;
    /// Leaves this handle behind a failed dial; 0 leaves none.
    std::uint32_t handleOfFailedDial = 0;
    /// A dial of an entry that is up gives the handle of that connection, as the system's service
    /// does; else it makes another.
    bool joinsRunning = false;
    /// Asks for room for one connection more at each enumeration that is too small, until all fit;
    /// else for the whole room at once.
    bool asksForOneMore = false;
    /// Answers every enumeration of connections with 603, however large the buffer.
    bool neverSatisfied = false;
    /// Gives a connection that stays up another handle now and then; the test does so.
    bool renumbersConnections = true;
    /// Fills whole name fields, without a NUL at the end.
    bool namesWithoutNul = false;
    /// What the service tells of a connection for another process to know it by; a connection is
    /// the one of that mark as long as its own is the same.
    std::map<std::uint32_t, std::string> marks;
    /// Runs while a dial is under way.
    std::function<void()> whileDialling;

    /// Names of the calls so far, in order.
    std::vector<std::string> calls;
    /// What `RasDialA` and `RasGetEntryDialParamsA` were given, as it stood at the call.
    std::vector<RASDIALPARAMSA> dialled;
    std::vector<RASDIALPARAMSA> parametersAsked;
    std::vector<RASDIALEXTENSIONS> extensionsSeen;
    /// The caller's own record of the last dial. Valid until that ends.
    const RASDIALPARAMSA* recordOfDial = nullptr;
    /// Sizes in bytes that enumerations of connections were offered.
    std::vector<std::uint32_t> sizesOffered;

    /// The next call of that operation answers this code. More than one may wait.
    void failNext(const std::string& operation, std::uint32_t code);

    /// Puts a connection up, counters 0; returns its handle.
    std::uint32_t connect(const std::string& entryName);
    void disconnect(std::uint32_t handle);
    /// Adds to a connection's counters.
    void transfer(std::uint32_t handle, std::uint32_t rcvd, std::uint32_t sent,
                  std::uint32_t milliseconds);
    /// Null when there is none of that handle. Valid until a connection is made or ended.
    Connection* connection(std::uint32_t handle);
    /// How often an operation was called.
    int countOf(const std::string& operation) const;

    std::string sessionMark(std::uint32_t handle) override {
        return marks.contains(handle) ? marks.at(handle) : std::string();
    }
    bool resume(std::uint32_t handle, const std::string& mark) override {
        return sessionMark(handle) == mark && !readSinceListed_.contains(handle);
    }
    std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                  std::uint32_t* bytes, std::uint32_t* count) override;
    std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                      std::uint32_t* count) override;
    std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) override;
    std::uint32_t RasGetConnectionStatistics(std::uint32_t handle, RAS_STATS* statistics) override;
    std::optional<Traffic> lineTotals(std::uint32_t handle) override;
    std::uint32_t carrierOf(std::uint32_t handle) override;
    bool renumbers() const override { return renumbersConnections; }
    std::uint32_t RasGetEntryDialParamsA(const char* phoneBook, RASDIALPARAMSA* parameters,
                                         bool* passwordFound) override;
    std::uint32_t RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                           RASDIALPARAMSA* parameters, std::uint32_t notifierType, void* notifier,
                           std::uint32_t* handle) override;
    std::uint32_t RasHangUpA(std::uint32_t handle) override;
    std::uint32_t RasGetErrorStringA(std::uint32_t code, char* buffer, std::uint32_t size) override;

private:
    /// Notes the call; the code that it is to fail with, or 0.
    std::uint32_t called(const std::string& operation);
    /// Whether an entry has that name, as the record's field holds it: cut to 256 bytes.
    bool hasEntry(const char* name) const;

    std::map<std::string, std::deque<std::uint32_t>> failures_;
    std::set<std::uint32_t> readSinceListed_;
    std::uint32_t lastHandle_ = 0;
};

} // namespace tarvik
