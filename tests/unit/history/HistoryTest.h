#pragma once

#include "support/WorldTest.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// A record as the file holds it.
struct LoggedRecord {
    std::string stamp; ///< date, "|", time: also the name of the record's section
    std::string sent = "0";
    std::string rcvd = "0";
    std::string duration = "0";
    std::string address = {};
};

using Log = std::vector<LoggedRecord>;
using Row = std::vector<std::string>;
using Texts = std::vector<std::string>;

/// The program has started; nothing has been imported yet.
class HistoryTest : public WorldTest {
protected:
    HistoryTest();

    static constexpr const char* otherPath = "D:\\Old.ini";

    FrmHistory& window() { return world->forms.frmHistory; }
    HistoryData& data() { return window().data; }

    /// The file that holds these records.
    static std::string fileOf(const Log& log);
    /// So many records that differ from each other: number 7 sent 8007 bytes and received 9007 in
    /// 7 ms, on "d7|t7", from 10.0.0.7.
    static Log numberedLog(int count);
    /// The row of such a record.
    static Row numberedRow(int number);

    // Announce the boxes of the window.
    void expectQuestion(MsgBoxAnswer answer, std::function<void()> meanwhile = {});
    void expectNoRecords(std::function<void()> meanwhile = {});
    void expectInformation(std::string text, std::function<void()> meanwhile = {});

    /// Imports what the program's own file holds, or from now on holds.
    void import();
    void import(const Log& log);
    /// The same for a file without records; announces that too.
    void importNothing();
    /// Puts the records into another file and lets the user pick that.
    void importPicked(const Log& log);

    Row row(int number);
    std::vector<Row> rows();
    void select(int number) { window().lvwCompleteLog.setSelectedRow(number - 1); }

    /// Names of the controls that are enabled, in the order of the form.
    Texts enabledControls();
    /// All that the window shows and remembers, one text for each control.
    Texts everything();
};

} // namespace tarvik
