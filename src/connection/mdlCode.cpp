#include "connection/mdlCode.h"

#include "ports/ConnectionProvider.h"
#include "ports/Platform.h"
#include "ports/SystemErrorText.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tarvik {

namespace {

/// Newest record form of a phone-book entry first.
constexpr std::array<std::uint32_t, 3> entrySizes{RASENTRYNAMEA::size, RASENTRYNAMEA_264::size,
                                                  RASENTRYNAMEA_28::size};

/// A service that is still not satisfied with this many records more than it counted never will be.
constexpr std::size_t spareRecords = 8;

template <std::size_t size>
std::string textOf(const char (&field)[size]) {
    return {field, std::find(field, field + size, '\0')};
}

template <class Record>
Record recordAt(const std::vector<char>& buffer, std::size_t offset) {
    Record record;
    std::memcpy(&record, buffer.data() + offset, sizeof record);
    return record;
}

PhoneBookEntry entryAt(const std::vector<char>& buffer, std::size_t offset,
                       std::uint32_t recordSize) {
    switch (recordSize) {
    case RASENTRYNAMEA_28::size:
        return {.name = textOf(recordAt<RASENTRYNAMEA_28>(buffer, offset).szEntryName)};
    case RASENTRYNAMEA_264::size:
        return {.name = textOf(recordAt<RASENTRYNAMEA_264>(buffer, offset).szEntryName)};
    default: {
        const auto record = recordAt<RASENTRYNAMEA>(buffer, offset);
        return {.name = textOf(record.szEntryName),
                .flags = record.dwFlags,
                .phoneBookPath = textOf(record.szPhonebookPath)};
    }
    }
}

/// The phone-book entries as the service writes them: records of one form, one after the other.
class EntryBuffer {
public:
    explicit EntryBuffer(const std::string& phoneBook)
        : phoneBook_(phoneBook.empty() ? nullptr : phoneBook.c_str()) {}

    /// Finds the newest record form that the service knows, and how many bytes all entries need.
    void probe() {
        for (const std::uint32_t size : entrySizes) {
            recordSize_ = size;
            if (enumerate(size) != ras::invalidSize) {
                return;
            }
        }
    }

    std::uint32_t bytesNeeded() const { return bytes_; }

    std::uint32_t fill() { return enumerate(bytes_); }

    std::vector<PhoneBookEntry> entries() const {
        std::vector<PhoneBookEntry> result;
        const std::size_t held = buffer_.size() / recordSize_;
        for (std::size_t i = 0; i < std::min<std::size_t>(count_, held); ++i) {
            result.push_back(entryAt(buffer_, i * recordSize_, recordSize_));
        }
        return result;
    }

private:
    std::uint32_t enumerate(std::uint32_t bytes) {
        buffer_.assign(std::max(bytes, recordSize_), '\0');
        std::memcpy(buffer_.data(), &recordSize_, sizeof recordSize_);
        bytes_ = bytes;
        count_ = 0;
        return platform().connections.RasEnumEntriesA(nullptr, phoneBook_, buffer_.data(), &bytes_,
                                                      &count_);
    }

    const char* phoneBook_;
    std::uint32_t recordSize_ = RASENTRYNAMEA::size;
    std::uint32_t bytes_ = 0;
    std::uint32_t count_ = 0;
    std::vector<char> buffer_;
};

std::uint32_t enumerateConnections(std::uint32_t& size, std::uint32_t& count) {
    std::vector<RASCONNA>& connections = state().RasConnections;
    connections[0].dwSize = RASCONNA::size;
    // The service may need more than there is yet; it must never be told that there is more.
    std::uint32_t bytes =
        std::min(size, static_cast<std::uint32_t>(connections.size() * sizeof(RASCONNA)));
    const std::uint32_t code =
        platform().connections.RasEnumConnectionsA(connections.data(), &bytes, &count);
    size = bytes;
    return code;
}

} // namespace

bool RasGetAllEntries(std::vector<PhoneBookEntry>& Entries, const std::string& PhoneBook) {
    return guarded("RasGetAllEntries", false, [&](bool& result) {
        Entries.clear();
        EntryBuffer buffer(PhoneBook);
        buffer.probe();
        if (buffer.bytesNeeded() == 0) {
            return;
        }
        const std::uint32_t code = buffer.fill();
        if (code != ras::success) {
            ShowRasErrorMessage("RasEnumEntries", code);
            return;
        }
        Entries = buffer.entries();
        result = !Entries.empty();
    });
}

std::uint32_t InitRas(std::uint32_t Size, std::uint32_t& Count) {
    constexpr auto notYetAsked = static_cast<std::uint32_t>(-1);
    return guarded("InitRas", notYetAsked, [&](std::uint32_t& result) {
        std::vector<RASCONNA>& connections = state().RasConnections;
        connections.assign(2, RASCONNA{});
        std::uint32_t code = enumerateConnections(Size, Count);
        while (code == ras::bufferTooSmall && Count >= 1 &&
               connections.size() < Count + spareRecords) {
            connections.emplace_back();
            code = enumerateConnections(Size, Count);
        }
        if (code != ras::success) {
            ShowRasErrorMessage("RasEnumConnections", code);
        }
        result = code;
    });
}

std::uint32_t ReadStatus(std::uint32_t Handle, bool& Connected) {
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;
    const std::uint32_t code = platform().connections.RasGetConnectStatusA(Handle, &status);
    Connected = code == ras::success && status.rasconnstate == ras::connected;
    return code;
}

std::uint32_t ReadStatistics(std::uint32_t Handle, RAS_STATS& Statistics) {
    Statistics = {};
    Statistics.dwSize = RAS_STATS::size;
    return platform().connections.RasGetConnectionStatistics(Handle, &Statistics);
}

std::string RasErrorMessage(std::uint32_t Code) {
    return guarded("RasErrorMessage", std::string("Unknown error."), [&](std::string& result) {
        constexpr std::uint32_t lastSystemCode = 600;
        std::array<char, 512> buffer{};
        const std::uint32_t answer =
            Code > lastSystemCode
                ? platform().connections.RasGetErrorStringA(Code, buffer.data(), buffer.size())
                : platform().systemErrors.FormatMessageA(SystemErrorText::fromSystem, nullptr, Code,
                                                         0, buffer.data(), buffer.size(), nullptr);
        const auto end = std::find(buffer.begin(), buffer.end(), '\0');
        if (answer != 0) {
            result = "Error obtaining error message from system.";
        } else if (end != buffer.begin() && end != buffer.end()) {
            result.assign(buffer.begin(), end);
        }
    });
}

void ShowRasErrorMessage(const std::string& FunctionName, std::uint32_t Code) {
    guarded("ShowRasErrorMessage", [&] {
        MsgBox("Error: " + FunctionName + " failed with " + wholeToText(Code) + ":" + CR +
                   RasErrorMessage(Code),
               MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
    });
}

void CopyStringToByte(std::span<char> Target, std::string_view Text, std::size_t Size) {
    guarded("CopyStringToByte", [&] {
        for (std::size_t i = 0; i <= Size; ++i) {
            if (i >= Target.size()) {
                raise(ErrorNumber::SubscriptOutOfRange);
            }
            Target[i] = i < Size && i < Text.size() ? Text[i] : '\0';
        }
    });
}

} // namespace tarvik
