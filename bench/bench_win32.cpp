#include "RunningProgram.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <vector>

// Size, time to the first window, memory and processor time per tick of the program, beside an
// empty window in the same run. Both must lie beside this program.
//
// Under Wine memory and processor time are taken from the system beneath, whose files Wine shows:
// Wine itself counts neither.

namespace tarvik {
namespace {

constexpr int starts = 7;
constexpr DWORD measured = 20'000; // milliseconds of ticks
constexpr DWORD interval = 100;    // milliseconds of one tick

struct Figures {
    double size = 0;         ///< KiB of the file
    double firstWindow = 0;  ///< milliseconds
    double resident = 0;     ///< KiB
    double proportional = 0; ///< KiB, what is shared counted in parts
    double idleTick = 0;     ///< microseconds of processor time
    double busyTick = 0;
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

const std::filesystem::path hostProcesses = "Z:\\proc";

std::string textOfFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The folder in which the system beneath tells of the process that runs that program.
std::filesystem::path hostFolder(const Installation& installation) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(hostProcesses, ignored)) {
        if (textOfFile(entry.path() / "cmdline").find(installation.program()) !=
            std::string::npos) {
            return entry.path();
        }
    }
    return {};
}

double hostKilobytes(const std::filesystem::path& folder, const std::string& name) {
    const std::string text = textOfFile(folder / "smaps_rollup");
    const std::size_t place = text.find("\n" + name);
    return place == std::string::npos ? 0 : std::stod(text.substr(place + name.size() + 1));
}

double hostMicroseconds(const std::filesystem::path& folder) {
    double nanoseconds = 0;
    std::error_code ignored;
    for (const auto& task : std::filesystem::directory_iterator(folder / "task", ignored)) {
        nanoseconds += std::stod("0" + textOfFile(task.path() / "schedstat"));
    }
    return nanoseconds / 1000;
}

double perTick(const Installation& installation) {
    const auto folder = hostFolder(installation);
    const double before = hostMicroseconds(folder);
    Sleep(measured);
    return (hostMicroseconds(folder) - before) / (measured / interval);
}

void measureStarts(const Installation& installation, const std::string& mainClass,
                   Figures& figures) {
    std::vector<double> times;
    std::vector<double> sets;
    std::vector<double> own;
    for (int i = 0; i < starts; ++i) {
        installation.setIni("[Settings]\r\nIsLocked=0\r\nRefreshInterval=100\r\n");
        const ULONGLONG begin = GetTickCount64();
        const RunningProgram program(installation, "", mainClass);
        while (program.mainWindow() == nullptr || IsWindowVisible(program.mainWindow()) == FALSE) {
            Sleep(1);
        }
        times.push_back(static_cast<double>(GetTickCount64() - begin));
        Sleep(500); // what is loaded after the first paint counts too
        const auto folder = hostFolder(installation);
        sets.push_back(hostKilobytes(folder, "Rss:"));
        own.push_back(hostKilobytes(folder, "Pss:"));
    }
    figures.size = static_cast<double>(std::filesystem::file_size(installation.program())) / 1024;
    figures.firstWindow = median(times);
    figures.resident = median(sets);
    figures.proportional = median(own);
}

Figures measureEmptyWindow() {
    const Installation installation("empty_window.exe");
    Figures figures;
    measureStarts(installation, "emptyWindow", figures);
    const RunningProgram program(installation, "", "emptyWindow");
    program.waitForMainWindow();
    figures.idleTick = figures.busyTick = perTick(installation);
    return figures;
}

Figures measureProgram() {
    const Installation installation("tarvik.exe");
    Figures figures;
    measureStarts(installation, "frmMain", figures);
    installation.setIni("[Settings]\r\nIsLocked=0\r\nRefreshInterval=100\r\n");
    const RunningProgram program(installation, "/run");
    program.waitForMainWindow();
    figures.idleTick = perTick(installation);
    program.choose("cboConnections", 0);
    program.click("cmdConnect");
    RunningProgram::waitUntil([&] { return program.read("txtActiveConnection") != ""; });
    figures.busyTick = perTick(installation);
    return figures;
}

/// As a line of its own table, or as a row of the one for all faces.
void print(const char* name, double own, double bare, bool asRow) {
    if (asRow) {
        std::cout << name << '\t' << own << '\t' << bare << "\tempty window\n";
        return;
    }
    std::cout << std::left << std::setw(46) << name << std::right << std::fixed
              << std::setprecision(1) << std::setw(12) << own << std::setw(14) << bare << '\n';
}

} // namespace
} // namespace tarvik

int main(int count, char** arguments) {
    const bool rows = count > 1 && std::strcmp(arguments[1], "rows") == 0;
    const tarvik::Figures own = tarvik::measureProgram();
    const tarvik::Figures bare = tarvik::measureEmptyWindow();
    if (!rows) {
        std::cout << std::setw(58) << "tarvik.exe" << std::setw(14) << "empty window" << '\n';
    }
    tarvik::print("size of the file, KiB", own.size, bare.size, rows);
    tarvik::print("time to the first window, ms", own.firstWindow, bare.firstWindow, rows);
    tarvik::print("resident memory, KiB", own.resident, bare.resident, rows);
    tarvik::print("proportional memory, KiB", own.proportional, bare.proportional, rows);
    tarvik::print("processor time per 100 ms, no line up, us", own.idleTick, bare.idleTick, rows);
    tarvik::print("processor time per 100 ms, line up, us", own.busyTick, bare.busyTick, rows);
}
