// Prints what the program's work with its file costs on this face, beside the least that it can
// cost, as rows for the table of scripts/bench.sh: measure, own figure, floor, name of the floor.
//
//     bench_work [records, 100000 unless told]

#include "FaceUnderTest.h"
#include "RecordLog.h"
#include "common/ProfileEngine.h"
#include "controls/ChartPainter.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryExport.h"
#include "history/mdlHistoryImport.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {
namespace {

constexpr int runs = 7;

/// The median of several runs.
double milliseconds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

void row(const std::string& measure, double own, double floor, const std::string& floorName) {
    std::cout << measure << '\t' << own << '\t' << floor << '\t' << floorName << '\n';
}

std::string bytesOf(const std::string& path) {
    std::string bytes;
    FaceFiles().read(path, bytes);
    return bytes;
}

/// Looks at each character once, line by line.
void weighLines(const std::string& bytes) {
    volatile std::size_t weight = 0;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        weight = weight + std::hash<std::string_view>()({bytes.data() + begin, end - begin});
        begin = end + 1;
    }
}

/// A machine whose files are the face's and whose other services are played, with a world on it.
class Machine {
public:
    explicit Machine(const std::string& folder) {
        scripted_.program.folderPath = folder;
        scripted_.program.separator =
            std::filesystem::path::preferred_separator == '/' ? '/' : '\\';
        scripted_.connections.entries = {{.name = "Line"}};
        scripted_.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
        Main();
    }

    State& state() { return world_.state; }
    FrmHistory& history() { return world_.forms.frmHistory; }
    Timer& timer() { return world_.forms.frmMain.timUpdateStats; }

    /// A line that the program watches.
    void goOnline() {
        world_.forms.frmMain.cmdMonitor.press();
        state().DialInStarted = true;
        handle_ = scripted_.connections.connect("Line");
    }
    void transfer() { scripted_.connections.transfer(handle_, 15'001, 2'003, 100); }

private:
    ScriptedPlatform scripted_;
    FaceFiles files_;
    ProfileEngine profile_{files_, endOfLine};
    Platform platform_ = scripted_.withFiles(profile_, files_);
    World world_{platform_};
    std::uint32_t handle_ = 0;
};

/// What the six figures of a tick cost as plain digits.
void writeSixNumbers(int number) {
    constexpr int figures = 6;
    volatile std::size_t length = 0;
    for (int i = 0; i < figures; ++i) {
        length = length + std::to_string(number + i).size();
    }
}

/// What a tick costs without a face: the rules alone, beside the digits of its six figures.
void measureTick(Machine& machine) {
    constexpr int ticks = 20'000;
    constexpr double microseconds = 1000;
    machine.goOnline();
    const double own = milliseconds([&] {
        for (int i = 0; i < ticks; ++i) {
            machine.transfer();
            machine.timer().fire();
        }
    });
    const double floor = milliseconds([&] {
        for (int i = 0; i < ticks; ++i) {
            machine.transfer();
            writeSixNumbers(i);
        }
    });
    row("one tick, rules alone, us", own / ticks * microseconds, floor / ticks * microseconds,
        "six numbers");
}

/// Each save has another total, as it would be after a session.
void measureSave(Machine& machine, const std::string& file, const std::string& scratch) {
    const double own = milliseconds([&] {
        machine.state().BytesRcvdTotal = machine.state().BytesRcvdTotal + Currency(1);
        SaveState();
    });
    const std::string bytes = bytesOf(file);
    row("save a record, flushed, ms", own, milliseconds([&] { writeAndFlush(scratch, bytes); }),
        "the same bytes");
    if (writeKeyBySystem(scratch, "Settings", "LastState", "x")) {
        constexpr int keysOfSave = 26;
        row("save a record, flushed, ms", own, milliseconds([&] {
                for (int i = 0; i < keysOfSave; ++i) {
                    writeKeyBySystem(scratch, "Settings", "LastState", std::to_string(i));
                }
            }),
            "system's own keys");
    }
}

void measureHistory(Machine& machine, const std::string& file, const std::string& scratch) {
    machine.state().IniFileName = file;
    row("import, ms",
        milliseconds([&] { machine.history().data.imported = ImportHistory(GetNumRecords()); }),
        milliseconds([&] { weighLines(bytesOf(file)); }), "reading the lines");
    const double exported = milliseconds([&] { ExportRecords(scratch); });
    const std::string bytes = bytesOf(scratch);
    row("export, flushed, ms", exported, milliseconds([&] { writeAndFlush(scratch, bytes); }),
        "the same bytes");
    PlotRows();
    ChartPainter painter(machine.history().mscHistory);
    const ChartPalette palette = ChartPalette::on({255, 255, 255}, {0, 0, 0});
    const auto draw = [&](Canvas& canvas) { painter.draw(canvas, palette); };
    onSheet(draw);
    row("redraw of the chart, ms", milliseconds([&] { onSheet(draw); }), milliseconds([] {
            onSheet([](Canvas& canvas) {
                canvas.polygon(
                    std::vector<CanvasPoint>{
                        {0, 0}, {sheetWidth, 0}, {sheetWidth, sheetHeight}, {0, sheetHeight}},
                    {255, 255, 255});
            });
        }),
        "an empty sheet");
}

} // namespace
} // namespace tarvik

int main(int count, char** arguments) {
    const int records = count > 1 ? std::atoi(arguments[1]) : 100'000;
    const auto folder =
        std::filesystem::temp_directory_path() /
        ("tarvik-bench-" +
         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(folder);
    const std::string file = (folder / "Tarvik.ini").string();
    const std::string scratch = (folder / "scratch").string();
    std::ofstream(file, std::ios::binary) << tarvik::logOf(records);
    {
        tarvik::Machine machine(folder.string());
        tarvik::measureTick(machine);
        tarvik::measureSave(machine, file, scratch);
        tarvik::measureHistory(machine, file, scratch);
    }
    std::filesystem::remove_all(folder);
}
