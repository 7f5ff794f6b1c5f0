// Prints what the history window's work costs for logs of growing length: importing one, beside
// other parsers that read the same values from the same file, exporting, sorting, and the chart.
// A parser that is not installed is left out.
//
//     bench_history [most records, 1000000 unless told [most for configparser, 100000 [ROWS]]]
//
// ROWS is a file to which rows for the table of scripts/bench.sh are added.

#include "CountedMemory.h"
#include "OtherParsers.h"
#include "RecordLog.h"
#include "common/ProfileEngine.h"
#include "controls/ChartPainter.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryExport.h"
#include "history/mdlHistoryImport.h"
#include "history/mdlIPAddresses.h"
#include "linux/face/QtCanvas.h"
#include "linux/services/LinuxFiles.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettingsLog.h"
#include "ui/mdlGUILists.h"
#include "wiring/World.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int sheetWidth = 1600;
constexpr int sheetHeight = 900;

double milliseconds(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A machine whose files are real and whose other services do nothing, with a world on it.
class Machine {
public:
    explicit Machine(const std::string& file) {
        world_.state.IniFileName = file;
        PreInitHistory();
        InitDiagram();
    }

    /// As the import button does it, from a file that nothing is known of.
    void importLog() { history().data.imported = ImportHistory(GetNumRecords()); }

    FrmHistory& history() { return world_.forms.frmHistory; }

    std::int64_t sum() {
        const ImportedHistory& log = history().data.log;
        std::int64_t result = 0;
        for (std::size_t place = 0; place < log.sent.size(); ++place) {
            result += (log.sent[place] + log.rcvd[place] + log.duration[place]).integralPart();
        }
        return result;
    }

private:
    ScriptedPlatform scripted_;
    LinuxFiles files_;
    ProfileEngine profile_{files_, "\n"};
    Platform platform_ = scripted_.withFiles(profile_, files_);
    World world_{platform_};
};

/// Takes whatever is drawn and throws it away.
class NoCanvas : public Canvas {
public:
    CanvasSize size() const override { return {sheetWidth, sheetHeight}; }
    double scale() const override { return 1; }
    void line(std::span<const CanvasPoint>, const Stroke&) override {}
    void polygon(std::span<const CanvasPoint>, const Colour&) override {}
    void text(CanvasPoint, const std::string&, const Colour&) override {}
    CanvasSize textSize(const std::string& text) const override {
        return {7.0 * static_cast<double>(text.size()), 16};
    }
};

/// One row of the table for each thing measured, one column for each length of the log.
class Table {
public:
    void beginColumn(int records) { columns_.push_back(records); }

    void add(const std::string& row, std::optional<double> figure) {
        std::ostringstream text;
        text << std::fixed << std::setprecision(2);
        figure ? text << *figure : text << "-";
        auto found = std::find_if(rows_.begin(), rows_.end(),
                                  [&](const Row& known) { return known.name == row; });
        if (found == rows_.end()) {
            found = rows_.insert(rows_.end(), {.name = row, .figures = {}});
        }
        found->figures.push_back(text.str());
    }

    /// One row for the table of all faces: of a measure, for the longest log, beside another one.
    void addRow(std::ostream& rows, const std::string& measure, const std::string& beside) const {
        const std::string own = lastOf(measure);
        const std::string floor = lastOf(beside);
        if (floor != "-") {
            rows << measure << ", " << columns_.back() << " records\t" << own << '\t' << floor
                 << '\t' << beside << '\n';
        }
    }

    void print() const {
        std::cout << std::left << std::setw(nameWidth) << "records" << std::right;
        for (const int records : columns_) {
            std::cout << std::setw(figureWidth) << records;
        }
        for (const Row& row : rows_) {
            std::cout << '\n' << std::left << std::setw(nameWidth) << row.name << std::right;
            for (const std::string& figure : row.figures) {
                std::cout << std::setw(figureWidth) << figure;
            }
        }
        std::cout << '\n';
    }

private:
    static constexpr int nameWidth = 46;
    static constexpr int figureWidth = 12;

    struct Row {
        std::string name;
        std::vector<std::string> figures;
    };

    std::string lastOf(const std::string& name) const {
        const auto found = std::find_if(rows_.begin(), rows_.end(),
                                        [&](const Row& row) { return row.name == name; });
        return found == rows_.end() ? "-" : found->figures.back();
    }

    std::vector<int> columns_;
    std::vector<Row> rows_;
};

/// Measures one log.
class Measurement {
public:
    Measurement(Table& table, const std::filesystem::path& folder, int records)
        : table_(table), folder_(folder), file_((folder / "Tarvik.ini").string()),
          records_(records), runs_(records >= 1'000'000 ? 3 : 7) {
        const std::string bytes = logOf(records);
        std::ofstream(file_, std::ios::binary) << bytes;
        size_ = static_cast<double>(bytes.size());
        table_.beginColumn(records);
        table_.add("size of the log, MB", size_ / 1e6);
    }

    void all(int mostForConfigParser) {
        plainRead();
        importing();
        keyFile();
        configParser(mostForConfigParser);
        afterImport();
    }

private:
    double timesOf(const std::function<double()>& once) const {
        std::vector<double> times;
        for (int i = 0; i < runs_; ++i) {
            times.push_back(once());
        }
        return median(times);
    }

    void plainRead() {
        table_.add("reading the bytes of the file, ms", timesOf([&] {
                       std::string bytes;
                       return milliseconds([&] { LinuxFiles().read(file_, bytes); });
                   }));
    }

    void importing() {
        table_.add("import by the program, ms", timesOf([&] {
                       Machine machine(file_);
                       const std::size_t before = bytesHeld();
                       forgetMostBytes();
                       const double time = milliseconds([&] { machine.importLog(); });
                       held_ = static_cast<double>(bytesHeld() - before);
                       most_ = static_cast<double>(mostBytesHeld() - before);
                       sum_ = machine.sum();
                       return time;
                   }));
    }

    void check(const LogReading& reading, const char* parser) const {
        if (reading.sum != sum_) {
            std::cout << parser << " failed or read other values than the program.\n";
        }
    }

    void keyFile() {
        std::optional<double> load;
        std::optional<double> whole;
#ifdef TARVIK_BENCH_KEY_FILE
        std::vector<double> loads;
        whole = timesOf([&] {
            const LogReading reading = readByKeyFile(file_, records_);
            check(reading, "GLib's key file");
            loads.push_back(reading.load);
            return reading.load + reading.values;
        });
        load = median(loads);
#endif
        table_.add("GLib's key file: load alone, ms", load);
        table_.add("GLib's key file: load and values, ms", whole);
    }

    void configParser(int most) {
        std::optional<double> load;
        std::optional<double> whole;
        if (records_ <= most) {
            const LogReading reading = readByConfigParser(file_, folder_.string());
            check(reading, "configparser");
            load = reading.load;
            whole = reading.load + reading.values;
        }
        table_.add("Python's configparser: load alone, ms", load);
        table_.add("Python's configparser: load and values, ms", whole);
    }

    void afterImport() {
        Machine machine(file_);
        machine.importLog();
        const std::string target = (folder_ / "export.csv").string();
        table_.add("export to a file, flushed, ms",
                   timesOf([&] { return milliseconds([&] { ExportRecords(target); }); }));
        table_.add("sorting by address, ms",
                   timesOf([] { return milliseconds([] { UpdateIPAddresses(true); }); }));
        table_.add("PlotRows, ms", timesOf([] { return milliseconds(PlotRows); }));
        drawing(machine.history().mscHistory);
        table_.add("memory held after the import, x the log", held_ / size_);
        table_.add("most memory in the import, x the log", most_ / size_);
    }

    void drawing(Chart& chart) {
        const ChartPalette palette = ChartPalette::on({255, 255, 255}, {0, 0, 0});
        NoCanvas nowhere;
        table_.add("first drawing of new values, no canvas, ms", timesOf([&] {
                       ChartPainter painter(chart);
                       return milliseconds([&] { painter.draw(nowhere, palette); });
                   }));
        ChartPainter painter(chart);
        painter.draw(nowhere, palette);
        table_.add("redraw, no canvas, ms",
                   timesOf([&] { return milliseconds([&] { painter.draw(nowhere, palette); }); }));
        for (const auto& [type, name] : {std::pair(ChartType::Line, "lines"),
                                         {ChartType::Bar, "bars"},
                                         {ChartType::Area, "areas"},
                                         {ChartType::Step, "steps"}}) {
            chart.setType(type);
            table_.add(std::string("redraw as ") + name + " into an image, ms", timesOf([&] {
                           return milliseconds([&] { drawIntoImage(painter, palette); });
                       }));
        }
    }

    void drawIntoImage(ChartPainter& drawn, const ChartPalette& palette) {
        QPainter painter(&image_);
        face::QtCanvas canvas(painter, image_.size(), QGuiApplication::font());
        drawn.draw(canvas, palette);
    }

    Table& table_;
    const std::filesystem::path folder_;
    const std::string file_;
    const int records_;
    const int runs_;
    double size_ = 0; ///< bytes of the log
    double held_ = 0; ///< bytes
    double most_ = 0; ///< bytes
    std::int64_t sum_ = 0;
    QImage image_{sheetWidth, sheetHeight, QImage::Format_RGB32};
};

} // namespace
} // namespace tarvik

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    const int most = count > 1 ? std::atoi(arguments[1]) : 1'000'000;
    const int mostForConfigParser = count > 2 ? std::atoi(arguments[2]) : 100'000;
    std::string folder = (std::filesystem::temp_directory_path() / "tarvik-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        return 1;
    }
    tarvik::Table table;
    for (int records = 1000; records <= most; records *= 10) {
        tarvik::Measurement(table, folder, records).all(mostForConfigParser);
    }
    std::filesystem::remove_all(folder);
    table.print();
    if (count > 3) {
        std::ofstream rows(arguments[3], std::ios::app);
        table.addRow(rows, "import by the program, ms", "GLib's key file: load and values, ms");
        table.addRow(rows, "redraw as lines into an image, ms", "redraw, no canvas, ms");
    }
    std::cout << "Medians of several runs; the desktop has nothing to do meanwhile, and the system "
                 "holds the log\nin memory. The program's memory is what it takes by new. "
                 "configparser reads once, and only\nlogs of at most "
              << mostForConfigParser << " records.\n";
}
