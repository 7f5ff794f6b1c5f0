#include "OtherParsers.h"

#include <glib.h>

#include <chrono>
#include <memory>
#include <vector>

namespace tarvik {

namespace {

using Clock = std::chrono::steady_clock;
using Text = std::unique_ptr<char, decltype(&g_free)>;

double millisecondsSince(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

/// The values of a record as the import keeps them.
struct Record {
    std::int64_t sent;
    std::int64_t rcvd;
    std::int64_t duration;
    Text stamp;
    Text address;
};

Record recordOf(GKeyFile* file, int number) {
    const std::string key = "DateStamp" + std::to_string(number);
    Text stamp(g_key_file_get_string(file, "Settings", key.c_str(), nullptr), &g_free);
    const auto value = [&](const char* name) {
        return g_key_file_get_int64(file, stamp.get(), name, nullptr);
    };
    Text address(g_key_file_get_string(file, stamp.get(), "IPAddress", nullptr), &g_free);
    return {.sent = value("Sent"),
            .rcvd = value("Rcvd"),
            .duration = value("Duration"),
            .stamp = std::move(stamp),
            .address = std::move(address)};
}

} // namespace

LogReading readByKeyFile(const std::string& file, int records) {
    LogReading reading;
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_free)> parsed(g_key_file_new(),
                                                                       &g_key_file_free);
    auto start = Clock::now();
    if (g_key_file_load_from_file(parsed.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) == 0) {
        return reading;
    }
    reading.load = millisecondsSince(start);
    start = Clock::now();
    std::vector<Record> log;
    log.reserve(static_cast<std::size_t>(records));
    for (int number = 1; number <= records; ++number) {
        log.push_back(recordOf(parsed.get(), number));
    }
    reading.values = millisecondsSince(start);
    for (const Record& record : log) {
        reading.sum += record.sent + record.rcvd + record.duration;
    }
    return reading;
}

} // namespace tarvik
