// Prints what the program's work with its file costs on this face, beside the least that it can
// cost, as rows for the table of scripts/bench.sh: measure, own figure, floor, name of the floor.
//
//     bench_work [records, 100000 unless told]

#include "FaceUnderTest.h"
#include "Machine.h"
#include "RecordLog.h"
#include "controls/ChartPainter.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryExport.h"
#include "history/mdlHistoryImport.h"
#include "settings/mdlSettingsLog.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {
namespace {

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
    machine.goOnline({"Line"});
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
    row("import, ms", milliseconds([&] {
            machine.forms().frmHistory.data.imported = ImportHistory(GetNumRecords());
        }),
        milliseconds([&] { weighLines(bytesOf(file)); }), "reading the lines");
    const double exported = milliseconds([&] { ExportRecords(scratch); });
    const std::string bytes = bytesOf(scratch);
    row("export, flushed, ms", exported, milliseconds([&] { writeAndFlush(scratch, bytes); }),
        "the same bytes");
    PlotRows();
    ChartPainter painter(machine.forms().frmHistory.mscHistory);
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
