#include "history/HistoryTest.h"

namespace tarvik {

namespace {

std::string shown(const ComboBox& combo) {
    std::string text = std::to_string(combo.listIndex());
    for (const std::string& entry : combo.items()) {
        text += "/" + entry;
    }
    return text;
}

std::string shown(const ListView& list) {
    std::string text = std::to_string(list.rowCount()) + "@" + std::to_string(list.selectedRow());
    for (int row = 0; row < list.rowCount(); ++row) {
        for (int column = 0; column < static_cast<int>(list.columns().size()); ++column) {
            text += "/" + list.cell(row, column);
        }
    }
    return text;
}

std::string shown(const Chart& chart) {
    std::string text = chart.title() + "/" + chart.axis(ChartAxisId::Y).title;
    for (int column = 0; column < chart.columnCount(); ++column) {
        for (int row = 0; row < chart.rowCount(); ++row) {
            text += "/" + chart.rowLabel(row) + ":" + std::to_string(chart.data(column, row));
        }
    }
    return text;
}

std::string shown(const Control& control) {
    switch (control.kind()) {
    case ControlKind::TextBox:
        return static_cast<const TextBox&>(control).text();
    case ControlKind::CheckBox:
        return static_cast<const CheckBox&>(control).ticked() ? "x" : "-";
    case ControlKind::OptionButton:
        return static_cast<const OptionButton&>(control).value() ? "o" : "-";
    case ControlKind::ComboBox:
        return shown(static_cast<const ComboBox&>(control));
    case ControlKind::ListView:
        return shown(static_cast<const ListView&>(control));
    case ControlKind::Chart:
        return shown(static_cast<const Chart&>(control));
    case ControlKind::ProgressBar:
        return std::to_string(static_cast<const ProgressBar&>(control).value());
    default:
        return {};
    }
}

} // namespace

HistoryTest::HistoryTest() {
    startQuietly();
    machine.desktop.changesTold.clear();
    machine.files.replacements = 0;
}

std::string HistoryTest::fileOf(const Log& log) {
    std::string index = "[Settings]\r\n";
    std::string sections;
    for (std::size_t i = 0; i < log.size(); ++i) {
        const LoggedRecord& record = log[i];
        index += "DateStamp" + std::to_string(i + 1) + "=" + record.stamp + "\r\n";
        sections += "[" + record.stamp + "]\r\nSent=" + record.sent + "\r\nRcvd=" + record.rcvd +
                    "\r\nDuration=" + record.duration + "\r\nIPAddress=" + record.address + "\r\n";
    }
    return index + "LastDateStamp=" + std::to_string(log.size()) + "\r\n" + sections;
}

Log HistoryTest::numberedLog(int count) {
    Log log;
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        log.push_back({"d" + number + "|t" + number, std::to_string(8000 + i),
                       std::to_string(9000 + i), number, "10.0.0." + number});
    }
    return log;
}

Row HistoryTest::numberedRow(int number) {
    const std::string text = std::to_string(number);
    const std::string milliseconds = std::string("00") + std::to_string(number % 1000);
    return {text,
            "d" + text,
            "t" + text,
            "00:00:0" + std::to_string(number / 1000) + ":" +
                milliseconds.substr(milliseconds.size() - 3),
            std::to_string(8000 + number),
            std::to_string(9000 + number),
            "10.0.0." + text};
}

void HistoryTest::expectQuestion(MsgBoxAnswer answer, std::function<void()> meanwhile) {
    expectBox("Ok to import recorded transfers from the\r"
              "INI-file located in the application folder?\r\r"
              "(Press \"No\" to select another file.)",
              MsgBoxButtons::YesNoCancel, MsgBoxIcon::Question, answer, std::move(meanwhile));
}

void HistoryTest::expectNoRecords(std::function<void()> meanwhile) {
    expectBox("Error: The INI-File does not contain any recorded transfers.", MsgBoxButtons::OkOnly,
              MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok, std::move(meanwhile));
}

void HistoryTest::expectInformation(std::string text, std::function<void()> meanwhile) {
    expectBox(std::move(text), MsgBoxButtons::OkOnly, MsgBoxIcon::Information, MsgBoxAnswer::Ok,
              std::move(meanwhile));
}

void HistoryTest::import() {
    expectQuestion(MsgBoxAnswer::Yes);
    window().cmdImport.press();
}

void HistoryTest::import(const Log& log) {
    setIni(fileOf(log));
    import();
}

void HistoryTest::importNothing() {
    expectQuestion(MsgBoxAnswer::Yes);
    expectNoRecords();
    window().cmdImport.press();
}

void HistoryTest::importPicked(const Log& log) {
    machine.files.setFile(otherPath, fileOf(log));
    machine.dialogs.chosen = otherPath;
    expectQuestion(MsgBoxAnswer::No);
    window().cmdImport.press();
}

Row HistoryTest::row(int number) {
    const ListView& list = window().lvwCompleteLog;
    Row texts;
    for (int column = 0; column < static_cast<int>(list.columns().size()); ++column) {
        texts.push_back(list.cell(number - 1, column));
    }
    return texts;
}

std::vector<Row> HistoryTest::rows() {
    std::vector<Row> all;
    for (int number = 1; number <= window().lvwCompleteLog.rowCount(); ++number) {
        all.push_back(row(number));
    }
    return all;
}

Texts HistoryTest::enabledControls() {
    Texts names;
    for (const Control* control : window().controls()) {
        if (control->enabled()) {
            names.push_back(control->name());
        }
    }
    return names;
}

Texts HistoryTest::everything() {
    Texts all;
    for (const Control* control : window().controls()) {
        all.push_back(control->name() + (control->enabled() ? " enabled" : " disabled") +
                      (control->visible() ? " visible: " : " hidden: ") + shown(*control));
    }
    all.push_back("imported " + std::to_string(data().imported));
    all.push_back("from " + std::to_string(data().start.value()) + " to " +
                  std::to_string(data().stop.value()) + " of " +
                  std::to_string(data().log.sent.size()));
    return all;
}

} // namespace tarvik
