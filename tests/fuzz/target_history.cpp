// The history window: imports any file, shows every chart of it, exports it, moves its range.
//
// Input: bytes for the locale and for what is pressed; then the file.

#include "FuzzWorld.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/ReferenceProfile.h"

#include <algorithm>

namespace tarvik::fuzz {
namespace {

constexpr const char* exportPath = "D:\\out.csv";

class History {
public:
    explicit History(Input& input) : input_(input) {
        fuzz_.machine.locale.conventions = localeOf(input.byte());
        fuzz_.machine.clock.secondsPerReading = 1;
        fuzz_.machine.connections.entries.push_back({.name = "Line"});
        fuzz_.answer = [](const MsgBoxRequest& request) {
            return request.buttons == MsgBoxButtons::OkOnly ? MsgBoxAnswer::Ok : MsgBoxAnswer::Yes;
        };
    }

    void play() {
        const std::uint8_t presses = input_.below(12);
        std::vector<std::uint8_t> pressed(presses);
        std::generate(pressed.begin(), pressed.end(), [&] { return input_.byte(); });
        const std::string file = input_.everything();
        fuzz_.machine.files.setFile(FuzzWorld::iniPath, file);
        Main();
        window().cmdImport.press();
        checkImport();
        for (const std::uint8_t press : pressed) {
            apply(press);
        }
        checkExport();
    }

private:
    FrmHistory& window() { return fuzz_.world.forms.frmHistory; }

    /// As many records as are whole from the first one on.
    static std::size_t wholeRecords(const ReferenceProfile& file, std::size_t count) {
        for (std::size_t number = 0; number < count; ++number) {
            const std::string key = "DateStamp" + std::to_string(number + 1);
            const std::string stamp = file.read("Settings", key).value_or("").substr(0, 127);
            if (stamp.find('|') == std::string::npos) {
                return number;
            }
        }
        return count;
    }

    void checkImport() {
        // The start has written to the file.
        const std::string bytes = fuzz_.machine.files.file(FuzzWorld::iniPath);
        if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
            require(!window().data.imported, "a file that is no text of bytes has no records");
            return;
        }
        const ReferenceProfile file(bytes, "\n");
        const auto count = static_cast<std::size_t>(GetNumRecords().value());
        const std::size_t whole = wholeRecords(file, count);
        require(window().data.imported == (count > 0 && whole == count),
                "an import succeeds when every record is whole");
        const ListView& list = window().lvwCompleteLog;
        require(list.rowCount() == static_cast<int>(whole), "every whole record is listed");
        for (std::size_t row = 0; row < whole; ++row) {
            checkRow(file, static_cast<int>(row));
        }
    }

    void checkRow(const ReferenceProfile& file, int row) {
        const std::string key = "DateStamp" + std::to_string(row + 1);
        const std::string stamp = file.read("Settings", key).value_or("").substr(0, 127);
        const std::size_t bar = stamp.find('|');
        const auto cell = [&](int column) { return window().lvwCompleteLog.cell(row, column); };
        const std::string date = stamp.substr(0, bar);
        const std::string time = stamp.substr(bar + 1);
        require(cell(0) == std::to_string(row + 1), "a row begins with its number");
        require(cell(1) == (date.empty() ? "(no date)" : date), "the date is listed");
        require(cell(2) == (time.empty() ? "(no time)" : time), "the time is listed");
        const std::string ip = file.read(stamp, "IPAddress").value_or("").substr(0, 127);
        require(cell(6) == (ip.empty() ? "[no IP logged]" : ip), "the address is listed");
        cell(3);
        cell(4);
        cell(5);
    }

    void apply(std::uint8_t press) {
        constexpr int chartTypes = 4;
        const int chosen = press >> 4U;
        switch (press & 15U) {
        case 0:
            window().cboChartType.setListIndex(chosen % chartTypes);
            break;
        case 1:
            window().cboDataType.setListIndex(chosen % 3);
            break;
        case 2:
            window().cboDataToShow.setListIndex(chosen % 5);
            break;
        case 3:
            window().cboTransferUnit.setListIndex(chosen % 4);
            break;
        case 4:
            window().lvwCompleteLog.setSelectedRow(
                chosen % (window().lvwCompleteLog.rowCount() + 1) - 1);
            window().cmdSetStart.press();
            break;
        case 5:
            window().lvwCompleteLog.setSelectedRow(
                chosen % (window().lvwCompleteLog.rowCount() + 1) - 1);
            window().cmdSetStop.press();
            break;
        case 6:
            window().cmdSortByIP.press();
            break;
        case 7:
            window().cmdSortByTime.press();
            break;
        case 8:
            window().cmdImport.press();
            break;
        case 9:
            SaveState();
            break;
        default:
            window().chkShowXLines.setValue(static_cast<std::uint8_t>(chosen % 2));
            break;
        }
        const HistoryData& data = window().data;
        require(!data.imported || (data.start >= Long(1) && data.start <= data.stop),
                "the range has a first and a last record");
    }

    void checkExport() {
        fuzz_.machine.dialogs.chosen = exportPath;
        fuzz_.machine.dialogs.chosenFilter = 2;
        if (!window().data.imported) {
            return;
        }
        window().cmdExport.press();
        const std::string text = fuzz_.machine.files.file(exportPath);
        const std::size_t records = window().data.log.sent.size();
        std::size_t lines = 0;
        for (std::size_t at = text.find("\r\n"); at != std::string::npos;
             at = text.find("\r\n", at + 2)) {
            ++lines;
        }
        require(lines == records + 1, "every record is exported");
        for (std::size_t place = 0; place < records; ++place) {
            const std::string begin = "\r\n" + std::to_string(place + 1) + ";" +
                                      std::string(window().data.log.date[place]) + ";";
            require(text.find(begin) != std::string::npos, "a line tells its record");
        }
    }

    Input& input_;
    FuzzWorld fuzz_;
};

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::Input input(data, size);
    tarvik::fuzz::History(input).play();
    return 0;
}
