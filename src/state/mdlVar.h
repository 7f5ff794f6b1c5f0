#pragma once

#include "ports/ConnectionProvider.h"
#include "state/TickReports.h"
#include "types/Amount.h"
#include "types/Counter.h"
#include "types/Currency.h"
#include "types/Current.h"
#include "types/Date.h"
#include "types/Long.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// Display unit of byte counts: each step is a factor of 1024. Stored as its number, which a file
/// may put outside the named ones.
enum class TransferUnit : std::uint8_t { Bytes = 0, KiloBytes = 1, MegaBytes = 2, GigaBytes = 3 };
/// The named ones.
inline constexpr int transferUnitCount = 4;

/// When the totals are reset: the middle or the end of a period.
enum class enDateCalc : std::uint8_t {
    MiddleOfDay = 0,
    MiddleOfWeek = 1,
    MiddleOfMonth = 2,
    MiddleOfQuarter = 3,
    MiddleOfHalfYear = 4,
    MiddleOfYear = 5,
    EndOfDay = 6,
    EndOfWeek = 7,
    EndOfMonth = 8,
    EndOfQuarter = 9,
    EndOfHalfYear = 10,
    EndOfYear = 11,
};

/// A session: a connection as it was last read, its figures carried on beyond the record's 32 bits,
/// and what of them counts. Of the session whose figures are the current ones the counters and
/// offsets of the state tell what counts; these here follow at each reading.
struct LineSession {
    RASCONNA connection{};
    RAS_STATS last{};
    Traffic totals;           ///< since it was established
    Amount offset;            ///< of it, what is not to be counted
    Amount counted;           ///< the rest, as long as no total has it
    Traffic noted;            ///< of it, what the ledger was told of, or is never to be
    std::int64_t readAt = 0;  ///< when these figures were first read, universal milliseconds
    std::int64_t notedAt = 0; ///< when it was last told, the same; 0 for never
    bool within = false;      ///< another session, as last read, which carried the same once more
    bool renumbered = false;  ///< not read again since the service gave it another handle
    bool hungUp = false;      ///< by the program: whatever comes next is another session
    /// It was up before the program was started again, and nobody is asked about it. Until the end
    /// of the tick that found it.
    bool resumed = false;
    bool inTotals = false; ///< what counted of it before that start still stands in the totals
};

/// A session as it was when the program last ran.
struct FormerSession {
    LineSession session;
    std::string mark; ///< see `ConnectionProvider::sessionMark`
};

/// Everything the program knows while it runs, apart from what its windows show. Everything is
/// zero until `InitApplicationStatus` writes the defaults. Only the user-interface thread touches
/// it.
struct State {
    /// The connections that are up, as last enumerated; the first is index 0. May be longer than
    /// their count.
    std::vector<RASCONNA> RasConnections;
    /// Name and address of this computer, once they were obtained.
    std::string HostName;
    std::string IPAddress;

    // The session under way, as the line statistics report it. The part that is counted is always
    // current minus offset: what the user declined to count, what another connection carried and
    // counts, or what a total has already.
    Counter BytesRcvdCurrent; ///< bytes since the connection was established
    Counter BytesSentCurrent; ///< bytes since the connection was established
    Counter BytesRcvdOffset;
    Counter BytesSentOffset;
    Counter DurationCurrent; ///< milliseconds since the connection was established
    Counter DurationOffset;

    /// The connections that were read while they were up.
    std::vector<LineSession> LineSessions;
    /// The handle of the one whose figures the current ones are; 0 before the first.
    std::uint32_t CountedConnection = 0;
    /// The handle that the program's own dial gave, until a tick finds it up; 0 for none.
    std::uint32_t DialledConnection = 0;
    /// The handles that the tick under way has still to read.
    std::vector<std::uint32_t> UnreadConnections;
    /// Those of which it could not be told yet whether they are sessions of the run before.
    std::vector<std::uint32_t> UnsureConnections;
    /// The handles that the program has hung up since the tick began.
    std::vector<std::uint32_t> HungUpConnections;

    /// The sessions that were up when the program last ran and did not end in order, until a tick
    /// has looked for them. What counted of them is in the totals.
    std::vector<FormerSession> FormerSessions;

    // All finished sessions since the last reset.
    Currency BytesRcvdTotal; ///< bytes
    Currency BytesSentTotal; ///< bytes
    Currency DurationTotal;  ///< milliseconds
    /// The overall transfer at which the ticker last fired or was armed, bytes.
    Currency TickerBase;

    bool AppInitialised = false;
    bool MonitoringActive = false;
    bool ConnectionActive = false;  ///< a connection was up at the last tick
    bool FirstOnlineUpdate = false; ///< no online tick has been handled in this run
    bool DialInStarted = false;     ///< the program dialled the connection itself
    bool DeclinedInTick = false;    ///< in this tick the user declined to count what had passed
    /// What counts has changed by more than a line has carried since: the journal is due at once.
    bool SessionOver = false;
    bool WasReset = false;          ///< in this tick, the totals
    bool AddressAsked = false;      ///< the computer's address, in this run
    bool QuestionOpen = false;      ///< the user has not answered yet whether the session counts
    bool LimitWarningArmed = false; ///< the limit warning may be shown
    bool OnlyInstance = false;      ///< at the start no other copy of the program was running
    bool ArgRun = false;
    bool ArgMinimise = false;
    bool ArgHelp = false;
    /// Settings and totals could not be read when they were to be loaded: what stands here is not
    /// what the file holds, and is not written over it.
    bool IniFileUnread = false;
    /// The user was told that a reset waits until the file can be copied.
    bool ResetWaitTold = false;

    // Settings, named as their keys in the file. Bytes that are flags hold 0 or 1.
    TransferUnit UnitTransferCurrent = TransferUnit::Bytes;
    TransferUnit UnitTransferTotal = TransferUnit::Bytes;
    std::uint8_t StartUpRunMonitoring = 0;
    std::uint8_t StartUpMinimise = 0;
    std::uint8_t TransferLimit = 0;
    Currency TransferLimitValue; ///< bytes
    std::uint8_t DurationLimit = 0;
    Long DurationLimitHr;
    Long DurationLimitMin;
    std::uint8_t TransferLimitWarning = 0;
    std::uint8_t TransferLimitHangUp = 0;
    std::uint8_t TransferResetEnable = 0;
    enDateCalc TransferReset = enDateCalc::MiddleOfDay;
    std::uint8_t TransferResetBackup = 0;
    Date TransferResetLast;
    Long RefreshInterval; ///< milliseconds
    std::uint8_t LogIPAddress = 0;
    std::uint8_t TransferTicker = 0;
    Long TransferTickerValue; ///< mega-bytes

    /// The file from which `TransferResetLast` was loaded, where the date there cannot be the one
    /// that was meant: another language may have written it. Empty where it can.
    std::string FileOfDoubtfulReset;

    /// The unexpected errors of the ticks.
    TickReports ErrorsOfTicks;

    /// Full path of the file in use; empty until `SetIniFileName` sets it.
    std::string IniFileName;
    /// Handle of the single-instance object; below 1 when none is held.
    std::int32_t InstanceMutex = 0;
};

/// The state in use. One must be in place (see `Current`).
State& state();

using StateScope = Current<State>;

} // namespace tarvik
