#include "common/RasRecords.h"

namespace tarvik {

namespace {

template <class Record>
Record recordOf(const RasEntry& entry) {
    Record record{};
    record.dwSize = Record::size;
    putText(record.szEntryName, entry.name);
    return record;
}

void writeEntry(char* target, std::uint32_t size, const RasEntry& entry) {
    if (size == RASENTRYNAMEA_28::size) {
        const auto record = recordOf<RASENTRYNAMEA_28>(entry);
        std::memcpy(target, &record, sizeof record);
    } else if (size == RASENTRYNAMEA_264::size) {
        const auto record = recordOf<RASENTRYNAMEA_264>(entry);
        std::memcpy(target, &record, sizeof record);
    } else {
        auto record = recordOf<RASENTRYNAMEA>(entry);
        record.dwFlags = entry.flags;
        putText(record.szPhonebookPath, entry.phoneBookPath);
        std::memcpy(target, &record, sizeof record);
    }
}

} // namespace

std::uint32_t sizeFieldOf(const void* record) {
    std::uint32_t size = 0;
    std::memcpy(&size, record, sizeof size);
    return size;
}

std::uint32_t listEntries(const std::vector<RasEntry>& entries, void* buffer, std::uint32_t* bytes,
                          std::uint32_t* count) {
    const std::uint32_t size = sizeFieldOf(buffer);
    const std::uint32_t held = *bytes;
    *count = static_cast<std::uint32_t>(entries.size());
    *bytes = *count * size;
    if (held < *bytes) {
        return ras::bufferTooSmall;
    }
    auto* target = static_cast<char*>(buffer);
    for (const RasEntry& entry : entries) {
        writeEntry(target, size, entry);
        target += size;
    }
    return ras::success;
}

std::uint32_t answerErrorText(const char* text, char* buffer, std::uint32_t size) {
    if (text == nullptr || size == 0) {
        return ras::invalidParameter;
    }
    buffer[std::string_view(text).copy(buffer, size - 1)] = '\0';
    return ras::success;
}

} // namespace tarvik
