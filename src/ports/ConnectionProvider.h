#pragma once

#include "types/Traffic.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

// The records that cross this port keep the layouts of the oldest interface versions that the
// program supports. Their first field is always their own size in bytes: the caller sets it, the
// service checks it. Texts are NUL-terminated inside fixed fields, bytes in the system's code page.

/// Codes of the remote-access service that the program tests by number.
namespace ras {
constexpr std::uint32_t success = 0;
constexpr std::uint32_t bufferTooSmall = 603;
constexpr std::uint32_t invalidSize = 632;
/// The connection state of a line that is up.
constexpr std::uint32_t connected = 8192;
} // namespace ras

/// One connection that is up or being made.
struct RASCONNA {
    static constexpr std::uint32_t size = 412;
    std::uint32_t dwSize;
    std::uint32_t hrasconn; ///< handle of the connection, 1 or more
    char szEntryName[257];
    char szDeviceType[17];
    char szDeviceName[129];
};
static_assert(sizeof(RASCONNA) == RASCONNA::size);

/// The state of one connection.
struct RASCONNSTATUSA {
    static constexpr std::uint32_t size = 160;
    std::uint32_t dwSize;
    std::uint32_t rasconnstate; ///< `ras::connected` when the line is up
    std::uint32_t dwError;
    char szDeviceType[17];
    char szDeviceName[129];
};
static_assert(sizeof(RASCONNSTATUSA) == RASCONNSTATUSA::size);

/// Line statistics since the connection was established. Counters wrap at 2^32.
struct RAS_STATS {
    static constexpr std::uint32_t size = 60;
    std::uint32_t dwSize;
    std::uint32_t dwBytesXmited;
    std::uint32_t dwBytesRcved;
    std::uint32_t dwFramesXmited;
    std::uint32_t dwFramesRcved;
    std::uint32_t dwCrcErr;
    std::uint32_t dwTimeoutErr;
    std::uint32_t dwAlignmentErr;
    std::uint32_t dwHardwareOverrunErr;
    std::uint32_t dwFramingErr;
    std::uint32_t dwBufferOverrunErr;
    std::uint32_t dwCompressionRatioIn;
    std::uint32_t dwCompressionRatioOut;
    std::uint32_t dwBps;             ///< bits per second
    std::uint32_t dwConnectDuration; ///< milliseconds
};
static_assert(sizeof(RAS_STATS) == RAS_STATS::size);

/// A phone-book entry in the newest form: with flags and the path of its phone book.
struct RASENTRYNAMEA {
    static constexpr std::uint32_t size = 532;
    std::uint32_t dwSize;
    char szEntryName[257];
    std::uint32_t dwFlags;
    char szPhonebookPath[261];
};
static_assert(sizeof(RASENTRYNAMEA) == RASENTRYNAMEA::size);

/// A phone-book entry without flags and path.
struct RASENTRYNAMEA_264 {
    static constexpr std::uint32_t size = 264;
    std::uint32_t dwSize;
    char szEntryName[257];
};
static_assert(sizeof(RASENTRYNAMEA_264) == RASENTRYNAMEA_264::size);

/// A phone-book entry in the oldest form: names of 20 characters.
struct RASENTRYNAMEA_28 {
    static constexpr std::uint32_t size = 28;
    std::uint32_t dwSize;
    char szEntryName[21];
};
static_assert(sizeof(RASENTRYNAMEA_28) == RASENTRYNAMEA_28::size);

/// What is needed to dial an entry.
struct RASDIALPARAMSA {
    static constexpr std::uint32_t size = 1052;
    std::uint32_t dwSize;
    char szEntryName[257];
    char szPhoneNumber[129];
    char szCallbackNumber[129];
    char szUserName[257];
    char szPassword[257];
    char szDomain[16];
};
static_assert(sizeof(RASDIALPARAMSA) == RASDIALPARAMSA::size);

/// Options of a dial; the program leaves all but the size 0.
struct RASDIALEXTENSIONS {
    static constexpr std::uint32_t size = 16;
    std::uint32_t dwSize;
    std::uint32_t dwfOptions;
    std::uint32_t hwndParent;
    std::uint32_t reserved;
};
static_assert(sizeof(RASDIALEXTENSIONS) == RASDIALEXTENSIONS::size);

/// The remote-access (dial-up) service: phone-book entries, connections, dialling.
///
/// All operations are called from the user-interface thread, except `RasDialA`, which may run on a
/// helper thread while the user-interface thread waits for it; never two at a time. Each returns 0
/// on success or the service's error code, which is 632 for a record of a size that is not known.
class ConnectionProvider {
public:
    virtual ~ConnectionProvider() = default;

    /// Lists the phone-book entries. `buffer` holds records of the size that its first record's
    /// size field tells; `bytes` is the buffer's size in, the size needed out; `count` the number
    /// of entries out. 632 when that record size is not known, 603 when the buffer is too small
    /// (`bytes` then tells the size needed), 0 with `bytes` 0 when there are no entries. A null
    /// phone book is the default one.
    virtual std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                          std::uint32_t* bytes, std::uint32_t* count) = 0;

    /// Lists the connections that are up or being made. Only the first record's size field need be
    /// set (412). 603 when `bytes` is too small: then `bytes` tells the size needed and `count` the
    /// number of connections; 632 when the record size is not known.
    virtual std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                              std::uint32_t* count) = 0;

    /// The state of a connection; 6 when the handle is not (any more) one of a connection.
    virtual std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) = 0;

    /// The line statistics of a connection since it was established.
    virtual std::uint32_t RasGetConnectionStatistics(std::uint32_t handle,
                                                     RAS_STATS* statistics) = 0;

    /// The figures of the last `RasGetConnectionStatistics` of that connection without wrapping:
    /// what it has carried since it was established.
    /// Nothing where the service has no more than the record's 32 bits.
    virtual std::optional<Traffic> lineTotals(std::uint32_t handle) {
        static_cast<void>(handle);
        return std::nullopt;
    }

    /// The handle of the connection that carries this one: what this one carries passes there, too.
    /// 0 where none does or the service does not tell. A connection that carries another is listed
    /// after it.
    virtual std::uint32_t carrierOf(std::uint32_t handle) {
        static_cast<void>(handle);
        return 0;
    }

    /// Whether a connection that stays up may get another handle. Where it never does, a new handle
    /// is a new connection.
    virtual bool renumbers() const { return true; }

    /// What the service needs to know a connection again, and to go on with its figures, when this
    /// process has ended and another one asks: bytes that mean something to the service alone, 512
    /// at most. Empty where it has nothing to tell.
    virtual std::string sessionMark(std::uint32_t handle) {
        static_cast<void>(handle);
        return {};
    }

    /// Whether a connection is the one that an earlier process got that mark for; if so, its
    /// figures go on from there, with what has passed meanwhile. Asked before the connection is
    /// first read.
    virtual bool resume(std::uint32_t handle, const std::string& mark) {
        static_cast<void>(handle);
        static_cast<void>(mark);
        return false;
    }

    /// Fills in the user name, password and domain stored for the entry that the record names;
    /// `passwordFound` tells whether a password is stored. 623 when there is no such entry.
    virtual std::uint32_t RasGetEntryDialParamsA(const char* phoneBook, RASDIALPARAMSA* parameters,
                                                 bool* passwordFound) = 0;

    /// Dials and returns only when the connection is up (0, `handle` out) or has failed. A failed
    /// dial may leave a handle in `handle`, else leaves it as it was.
    virtual std::uint32_t RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                                   RASDIALPARAMSA* parameters, std::uint32_t notifierType,
                                   void* notifier, std::uint32_t* handle) = 0;

    /// Ends a connection.
    virtual std::uint32_t RasHangUpA(std::uint32_t handle) = 0;

    /// The service's own text for one of its codes (600 and above), NUL-terminated in `buffer`.
    /// 0 on success; not 0, with the buffer untouched, for a code that it does not know.
    virtual std::uint32_t RasGetErrorStringA(std::uint32_t code, char* buffer,
                                             std::uint32_t size) = 0;
};

} // namespace tarvik
