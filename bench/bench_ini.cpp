// Prints what the private-profile engine costs for record logs of growing length: reading and
// indexing the file, a single read, a save as the program does it, and the memory it needs.
//
//     bench_ini [most records, 1000000 unless told]

#include "CountedMemory.h"
#include "RecordLog.h"
#include "common/ProfileEngine.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>

namespace tarvik {
namespace {

using Clock = std::chrono::steady_clock;

/// One file in memory. What replaces it is taken as written and thrown away.
class MemoryFiles : public Files {
public:
    explicit MemoryFiles(const std::string& bytes) : bytes_(bytes) {}

    FileKind Dir(const std::string&) override { return FileKind::File; }
    std::optional<FileStamp> stamp(const std::string&) override { return stamp_; }
    FileResult read(const std::string&, std::string& bytes) override {
        bytes = bytes_;
        return std::nullopt;
    }
    FileResult replaceIf(const std::string&, const std::vector<std::string_view>& pieces,
                         const LastLook&) override {
        for (const std::string_view piece : pieces) {
            stamp_.size += piece.size();
        }
        ++stamp_.modified;
        return std::nullopt;
    }
    FileResult FileCopy(const std::string&, const std::string&) override { return std::nullopt; }
    FileResult Name(const std::string&, const std::string&) override { return std::nullopt; }
    FileResult Kill(const std::string&) override { return std::nullopt; }
    Holding hold(const std::string&) override { return {}; }
    Holding holdOrMake(const std::string&, std::size_t, const std::string&) override { return {}; }

private:
    const std::string& bytes_;
    FileStamp stamp_;
};

/// A file on the disk, written beside itself and renamed, but not flushed.
class DiskFiles : public Files {
public:
    FileKind Dir(const std::string& path) override {
        return std::filesystem::exists(path) ? FileKind::File : FileKind::None;
    }
    std::optional<FileStamp> stamp(const std::string& path) override {
        const auto time = std::filesystem::last_write_time(path).time_since_epoch();
        return FileStamp{.identity = 1,
                         .size = std::filesystem::file_size(path),
                         .modified = static_cast<std::int64_t>(time.count()),
                         .changed = 0};
    }
    FileResult read(const std::string& path, std::string& bytes) override {
        bytes.resize(static_cast<std::size_t>(std::filesystem::file_size(path)));
        std::ifstream file(path, std::ios::binary);
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file ? std::nullopt : FileResult(ErrorNumber::PathFileAccess);
    }
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook&) override {
        std::ofstream file(path + ".new", std::ios::binary);
        for (const std::string_view piece : pieces) {
            file.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        }
        file.close();
        std::filesystem::rename(path + ".new", path);
        return file ? std::nullopt : FileResult(ErrorNumber::DiskFull);
    }
    FileResult FileCopy(const std::string&, const std::string&) override { return std::nullopt; }
    FileResult Name(const std::string&, const std::string&) override { return std::nullopt; }
    FileResult Kill(const std::string&) override { return std::nullopt; }
    Holding hold(const std::string&) override { return {}; }
    Holding holdOrMake(const std::string&, std::size_t, const std::string&) override { return {}; }
};

std::string valueOf(ProfileEngine& engine, const std::string& section, const std::string& key,
                    const std::string& file) {
    std::array<char, 128> buffer{};
    const std::uint32_t count =
        engine.GetPrivateProfileStringA(section, key, "", buffer.data(), 128, file);
    return {buffer.data(), count};
}

/// One record section, three index keys and nineteen settings in one update.
bool save(ProfileEngine& engine, const std::string& file, int number) {
    using namespace std::string_view_literals;
    ProfileUpdate update(engine, file);
    const std::string name = recordName(number);
    engine.WritePrivateProfileSectionA(
        name, "Sent=1204455\0Rcvd=9876501\0Duration=3600\0IPAddress=10.0.0.17\0\0"sv, file);
    engine.WritePrivateProfileStringA("Settings", "LastState", name, file);
    engine.WritePrivateProfileStringA("Settings", "DateStamp" + std::to_string(number), name, file);
    engine.WritePrivateProfileStringA("Settings", "LastDateStamp", std::to_string(number), file);
    for (int i = 0; i < 19; ++i) {
        engine.WritePrivateProfileStringA("Settings", "Setting" + std::to_string(i), "1", file);
    }
    return update.commit() == UpdateOutcome::Written;
}

double milliseconds(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

void measure(Files& files, const char* kind, const std::string& file, int records,
             std::size_t size) {
    const std::size_t before = bytesHeld();
    forgetMostBytes();
    ProfileEngine engine(files, "\r\n");

    auto start = Clock::now();
    const bool found = !valueOf(engine, "Settings", "LastDateStamp", file).empty();
    const double firstRead = milliseconds(start);
    const std::size_t held = bytesHeld() - before;

    constexpr int reads = 20'000;
    std::mt19937 source(7);
    std::size_t bytesRead = 0;
    start = Clock::now();
    for (int i = 0; i < reads / 2; ++i) {
        const auto number = 1 + source() % static_cast<unsigned>(records);
        const std::string name =
            valueOf(engine, "Settings", "DateStamp" + std::to_string(number), file);
        bytesRead += valueOf(engine, name, "Rcvd", file).size();
    }
    const double read = milliseconds(start) * 1000 / reads;

    start = Clock::now();
    const bool saved = save(engine, file, records + 1);
    const double saving = milliseconds(start);

    const double perByte = 1.0 / static_cast<double>(size);
    std::cout << std::setw(9) << records << std::setw(8) << kind << std::fixed
              << std::setprecision(1) << std::setw(10) << static_cast<double>(size) / 1e6
              << std::setw(14) << firstRead << std::setprecision(2) << std::setw(10) << read
              << std::setprecision(1) << std::setw(10) << saving << std::setprecision(2)
              << std::setw(10) << static_cast<double>(held) * perByte << std::setw(10)
              << static_cast<double>(mostBytesHeld() - before) * perByte
              << (found && bytesRead > 0 && saved ? "" : "  failed") << '\n';
}

} // namespace
} // namespace tarvik

int main(int count, char** arguments) {
    const int most = count > 1 ? std::atoi(arguments[1]) : 1'000'000;
    std::cout
        << "  records   where   size MB  first read ms   read us   save ms  held x    most x\n";
    const auto folder = std::filesystem::temp_directory_path() / "tarvik-bench-ini";
    std::filesystem::create_directories(folder);
    for (int records = 1000; records <= most; records *= 10) {
        const std::string bytes = tarvik::logOf(records);
        tarvik::MemoryFiles memory(bytes);
        tarvik::measure(memory, "memory", "Tarvik.ini", records, bytes.size());
        const std::string file = (folder / "Tarvik.ini").string();
        std::ofstream(file, std::ios::binary) << bytes;
        tarvik::DiskFiles disk;
        tarvik::measure(disk, "disk", file, records, bytes.size());
    }
    std::filesystem::remove_all(folder);
    std::cout << "held and most: memory after the first read and the most at any time, as\n"
                 "multiples of the file's size. The disk is not flushed.\n";
}
