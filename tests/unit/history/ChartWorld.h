#pragma once

#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryLog.h"
#include "support/WorldTest.h"

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tarvik {

/// What a test needs of a saved record.
struct ChartRecord {
    Currency sent;
    Currency rcvd;
    Currency duration;
};

/// The program has started; the history window holds the records that the test gives it.
class ChartWorld : public WorldTest {
protected:
    // Positions in the lists.
    enum Show { both = 0, received = 1, sent = 2, total = 3, duration = 4 };
    enum Type { asRecorded = 0, differential = 1, percentual = 2 };
    enum Unit { plain = 0, thousands = 1 }; ///< bytes or milliseconds, kilo-bytes or seconds
    static constexpr int none = -1;

    using Values = std::vector<double>;

    ChartWorld() { startQuietly(); }

    FrmHistory& window() { return world->forms.frmHistory; }
    HistoryData& data() { return window().data; }
    Chart& chart() { return window().mscHistory; }

    /// Puts these records in place as an import does, and chooses all of them; draws nothing.
    void hold(const std::vector<ChartRecord>& records) {
        ImportedHistory log;
        for (const ChartRecord& record : records) {
            log.sent.push_back(record.sent);
            log.rcvd.push_back(record.rcvd);
            log.duration.push_back(record.duration);
            log.date.add("16.11.2026");
            log.time.add("08:15:22");
            log.address.push_back(ImportedHistory::noAddress);
        }
        data().log = std::move(log);
        data().imported = true;
        const auto count = static_cast<std::int32_t>(records.size());
        data().start = 1;
        data().stop = count;
        ListRecords(count);
        window().cboTransferUnit.setEnabled(true);
    }
    /// So many records: record r has sent r, received 100 * r, and lasted 1000 * r.
    void holdRising(std::int32_t count) {
        std::vector<ChartRecord> records;
        for (std::int32_t r = 1; r <= count; ++r) {
            records.push_back({r, 100 * r, 1000 * r});
        }
        hold(records);
    }

    /// Chooses entries of the lists, or `none`; draws nothing.
    void choose(int show, int type = asRecorded, int unit = plain) {
        const bool imported = std::exchange(data().imported, false);
        window().cboDataToShow.setListIndex(show);
        window().cboDataType.setListIndex(type);
        window().cboTransferUnit.setListIndex(unit);
        data().imported = imported;
    }
    void range(std::int32_t start, std::int32_t stop) {
        data().start = start;
        data().stop = stop;
    }

    /// Chooses, draws, and gives back what a column shows.
    Values plotted(int show, int type = asRecorded, int unit = plain) {
        choose(show, type, unit);
        PlotRows();
        return column(0);
    }
    Values column(int which) { return chart().values(which); }
    std::string valueTitle() { return chart().axis(ChartAxisId::Y).title; }
    std::vector<std::string> rowLabels() {
        std::vector<std::string> labels;
        for (int row = 0; row < chart().rowCount(); ++row) {
            labels.push_back(chart().rowLabel(row));
        }
        return labels;
    }

    /// All that the chart shows but the title of its values.
    auto shown() {
        return std::tuple(chart().title(), chart().columnCount(), chart().rowCount(), rowLabels(),
                          chart().values(0), chart().values(1), chart().columnLabel(0),
                          chart().columnLabel(1));
    }

    /// Lets the user do that once, when events are handled for the first time.
    void whileFilling(std::function<void()> action) {
        machine.desktop.whileProcessing = [action = std::move(action), done = false]() mutable {
            if (!std::exchange(done, true)) {
                action();
            }
        };
    }

    static std::string corruptText() {
        return "The data imported seems to be corrupt.\rTherefore it cannot be plotted.";
    }
};

} // namespace tarvik
