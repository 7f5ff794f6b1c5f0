#include "RunningProgram.h"

#include "forms/frmHistory.h"
#include "support/YearsOfDays.h"
#include "windows/face/ControlIds.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

#include <dlgs.h>

#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <vector>

namespace tarvik {
namespace {

constexpr const char* importQuestion =
    "Ok to import recorded transfers from the\rINI-file located in the application folder?\r\r"
    "(Press \"No\" to select another file.)";
constexpr int days = 1096;

using Section = std::map<std::string, std::string>;

std::map<std::string, Section> sectionsOf(const std::string& ini) {
    std::map<std::string, Section> sections;
    Section* section = nullptr;
    for (std::size_t at = 0, end = 0; (end = ini.find("\r\n", at)) != std::string::npos;
         at = end + 2) {
        const std::string line = ini.substr(at, end - at);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            section = &sections[line.substr(1, line.size() - 2)];
        } else if (section != nullptr && equals != std::string::npos) {
            section->emplace(line.substr(0, equals), line.substr(equals + 1));
        }
    }
    return sections;
}

struct Record {
    std::string stamp;
    std::string address;
    std::int64_t sent = 0;
    std::int64_t rcvd = 0;
    std::int64_t duration = 0;
};

std::vector<Record> recordsOf(const std::string& ini) {
    auto sections = sectionsOf(ini);
    std::vector<Record> records;
    for (int number = 1; number <= days; ++number) {
        const std::string stamp = sections["Settings"]["DateStamp" + std::to_string(number)];
        Section& values = sections[stamp];
        records.push_back({stamp, values["IPAddress"], std::stoll(values["Sent"]),
                           std::stoll(values["Rcvd"]), std::stoll(values["Duration"])});
    }
    return records;
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string durationText(std::int64_t milliseconds) {
    const std::int64_t seconds = milliseconds / 1000;
    return twoDigits(seconds / 3600) + ":" + twoDigits(seconds / 60 % 60) + ":" +
           twoDigits(seconds % 60) + ":" + std::to_string(1000 + milliseconds % 1000).substr(1);
}

std::string csvOf(const std::vector<Record>& records) {
    std::string text = "\"ID\";\"Date\";\"Time\";\"Duration\";\"Bytes sent\";\"Bytes rcvd\";"
                       "\"IP address\"\r\n";
    for (std::size_t i = 0; i < records.size(); ++i) {
        const Record& record = records[i];
        const std::size_t bar = record.stamp.find('|');
        text += std::to_string(i + 1) + ";" + record.stamp.substr(0, bar) + ";" +
                record.stamp.substr(bar + 1) + ";" + durationText(record.duration) + ";" +
                std::to_string(record.sent) + ";" + std::to_string(record.rcvd) + ";" +
                record.address + "\r\n";
    }
    return text;
}

/// A number that the program has written with the separators of its locale, "1,234.5".
double numberOf(std::string text) {
    std::erase(text, ',');
    double number = NAN;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The history window of the running program on a log of some years.
class HistoryTest : public testing::Test {
protected:
    void SetUp() override {
        installation.setIni(iniAfterDays(days));
        records = recordsOf(installation.ini());
        program.emplace(installation);
        ASSERT_TRUE(program->waitForMainWindow());
        program->click("cmdHistory");
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return window() != nullptr && IsWindowVisible(window()) != FALSE; }));
        click("cmdImport");
        ASSERT_TRUE(program->answer(importQuestion, MsgBoxAnswer::Yes));
        // The import has ended when there is something to read off.
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return lastReading().find(". 1,096 (") != std::string::npos; }));
    }

    HWND window() const {
        const std::vector<HWND> found =
            topLevelWindows("frmHistory", GetProcessId(program->process()));
        return found.empty() ? nullptr : found.front();
    }

    HWND control(const std::string& name) const {
        return GetDlgItem(window(), face::controlId(*numbers.control(name)));
    }

    bool isEnabled(const std::string& name) const {
        return IsWindowEnabled(control(name)) != FALSE;
    }

    void click(const std::string& name) const { PostMessageA(control(name), BM_CLICK, 0, 0); }

    void choose(const std::string& name, int place) const {
        const HWND combo = control(name);
        answerOf(combo, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
        answerOf(window(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
    }

    /// What is read off the last record: "Data sent. 1,096 (31.12.2026 20:15:00): Sent 1,234
    /// bytes".
    std::string lastReading() const {
        answerOf(control("mscHistory"), WM_KEYDOWN, VK_END, 1);
        return textOf(control("mscHistory"));
    }

    /// What the column shows of the last record, in bytes or milliseconds.
    double quantity(int shown, std::size_t column, bool difference) const {
        const auto of = [&](const Record& record) {
            switch (shown) {
            case 0:
                return column == 0 ? record.rcvd : record.sent;
            case 1:
                return record.rcvd;
            case 2:
                return record.sent;
            case 3:
                return record.sent + record.rcvd;
            default:
                return record.duration;
            }
        };
        const std::int64_t before = difference ? of(records[records.size() - 2]) : 0;
        return static_cast<double>(of(records.back()) - before);
    }

    void expectReading(int shown, int dataType, int unit) const {
        static const std::array<std::string, 5> titles{"Data sent/received", "Data received",
                                                       "Data sent", "Data total (received+sent)",
                                                       "Duration of connections"};
        static const std::array<std::vector<std::string>, 5> names{
            {{"Rcvd", "Sent"}, {"Rcvd"}, {"Sent"}, {"Total"}, {"Duration"}}};
        static constexpr std::array<double, 4> bytes{1, 1024, 1048576, 1073741824};
        static constexpr std::array<double, 4> times{1, 1000, 60000, 3600000};
        static const std::array<std::string, 4> byteNames{" bytes", " kilo-bytes", " mega-bytes",
                                                          " giga-bytes"};
        static const std::array<std::string, 4> timeNames{" milli-seconds", " seconds", " minutes",
                                                          " hours"};
        const auto place = static_cast<std::size_t>(shown);
        std::string rest = lastReading();
        std::string moment = records.back().stamp;
        moment.replace(moment.find('|'), 1, " ");
        const std::string begin = titles.at(place) + ". 1,096 (" + moment + "): ";
        ASSERT_TRUE(rest.starts_with(begin)) << rest;
        rest = rest.substr(begin.size()) + "; ";
        for (std::size_t column = 0; column < names.at(place).size(); ++column) {
            const std::size_t end = rest.find("; ");
            const std::string name = names.at(place)[column] + " ";
            ASSERT_TRUE(rest.starts_with(name)) << rest;
            const double divisor = (shown == 4 ? times : bytes).at(static_cast<std::size_t>(unit));
            const double wanted =
                dataType == 2 ? 100 : quantity(shown, column, dataType == 1) / divisor;
            std::string value = rest.substr(name.size(), end - name.size());
            const std::string ending = dataType == 2 ? "%"
                                       : shown == 4  ? timeNames.at(static_cast<std::size_t>(unit))
                                                     : byteNames.at(static_cast<std::size_t>(unit));
            ASSERT_TRUE(value.ends_with(ending)) << value;
            value.resize(value.size() - ending.size());
            EXPECT_NEAR(numberOf(value), wanted, 0.00005001);
            rest.erase(0, end + 2);
        }
        EXPECT_EQ(rest, "");
    }

    /// The user types a name into the dialog.
    void exportAs(const std::string& name) const {
        click("optStatistics");
        ASSERT_TRUE(RunningProgram::waitUntil([&] {
            RECT area{};
            GetClientRect(control("cmdExport"), &area);
            return IsWindowVisible(control("cmdExport")) != FALSE && area.right > 0;
        }));
        click("cmdExport");
        nameExport(name);
    }

    /// Enters a name in the dialog, once it is there.
    void nameExport(const std::string& name) const {
        HWND dialog = nullptr;
        ASSERT_TRUE(RunningProgram::waitUntil([&] {
            dialog = FindWindowA(nullptr, "Export history as CSV...");
            return dialog != nullptr && IsWindowVisible(dialog) != FALSE;
        }));
        SendDlgItemMessageA(
            dialog, cmb13, WM_SETTEXT, 0,
            reinterpret_cast<LPARAM>((installation.folder() + "\\" + name).c_str()));
        PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    }

    Installation installation{"tarvik-demo.exe"};
    std::vector<Record> records;
    FrmHistory numbers; ///< nobody shows it
    std::optional<RunningProgram> program;
};

TEST_F(HistoryTest, AllCombinationsShowWhatTheLogHolds) {
    for (int shown = 0; shown < 5; ++shown) {
        choose("cboDataToShow", shown);
        for (int dataType = 0; dataType < 3; ++dataType) {
            choose("cboDataType", dataType);
            EXPECT_EQ(isEnabled("cboTransferUnit"), dataType != 2);
            for (int chartType = 0; chartType < 4; ++chartType) {
                choose("cboChartType", chartType);
                for (int unit = 0; unit < 4; ++unit) {
                    SCOPED_TRACE(std::to_string(shown) + std::to_string(dataType) +
                                 std::to_string(chartType) + std::to_string(unit));
                    choose("cboTransferUnit", unit);
                    ASSERT_NO_FATAL_FAILURE(expectReading(shown, dataType, unit));
                    UpdateWindow(control("mscHistory"));
                }
            }
        }
    }
}

TEST_F(HistoryTest, BeforeAFileIsReplacedItsNameIsAskedAbout) {
    const std::string exported = installation.folder() + "\\history.csv";
    const std::vector<std::string_view> old{"of great value"};
    ASSERT_FALSE(WindowsFiles().replace(exported, old).has_value());
    const std::string question = "history.csv already exists.\rDo you want to replace it?";
    std::string text;

    ASSERT_NO_FATAL_FAILURE(exportAs("history"));
    ASSERT_TRUE(program->answer(question, MsgBoxAnswer::No));
    EXPECT_FALSE(WindowsFiles().read(exported, text).has_value());
    EXPECT_EQ(text, "of great value");

    // The dialog comes again, for another name or the same one.
    ASSERT_NO_FATAL_FAILURE(nameExport("history"));
    ASSERT_TRUE(program->answer(question, MsgBoxAnswer::Yes));
    ASSERT_TRUE(program->answer("All records have been successfully exported.", MsgBoxAnswer::Ok));
    EXPECT_FALSE(WindowsFiles().read(exported, text).has_value());
    EXPECT_EQ(text, csvOf(records));
}

TEST_F(HistoryTest, AFileWhoseWholeNameWasTypedIsAskedAboutOnce) {
    const std::string exported = installation.folder() + "\\history.csv";
    const std::vector<std::string_view> old{"of great value"};
    ASSERT_FALSE(WindowsFiles().replace(exported, old).has_value());

    ASSERT_NO_FATAL_FAILURE(exportAs("history.csv"));
    ASSERT_TRUE(program->answer("history.csv already exists.\rDo you want to replace it?",
                                MsgBoxAnswer::Yes));
    ASSERT_TRUE(program->answer("All records have been successfully exported.", MsgBoxAnswer::Ok));

    std::string text;
    EXPECT_FALSE(WindowsFiles().read(exported, text).has_value());
    EXPECT_EQ(text, csvOf(records));
}

TEST_F(HistoryTest, TheExportHoldsAllRecordsAndIsLeftForASpreadsheet) {
    const std::string exported = installation.folder() + "\\years.csv";
    ASSERT_NO_FATAL_FAILURE(exportAs("years"));
    ASSERT_TRUE(program->answer("All records have been successfully exported.", MsgBoxAnswer::Ok));

    std::string text;
    EXPECT_FALSE(WindowsFiles().read(exported, text).has_value());
    EXPECT_EQ(text, csvOf(records));
    CopyFileA(exported.c_str(), "exported.csv", FALSE);
    CopyFileA((installation.folder() + "\\Tarvik.ini").c_str(), "exported.ini", FALSE);
}

} // namespace
} // namespace tarvik
