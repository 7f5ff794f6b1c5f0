#include "history/mdlHistoryChart.h"

#include "forms/Forms.h"
#include "history/ChartValues.h"
#include "ports/Desktop.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

namespace {

FrmHistory& window() {
    return forms().frmHistory;
}

/// Nothing where the value could not be calculated; that has been reported.
using Value = std::optional<Currency>;

ChartView chosenView() {
    FrmHistory& w = window();
    return {.show = w.cboDataToShow.listIndex(),
            .kind = w.cboDataType.listIndex(),
            .unit = w.cboTransferUnit.listIndex()};
}

void SetAxis(const ChartView& view) {
    guarded("SetAxis", [&] {
        if (auto title = valueTitle(view)) {
            ChartAxis axis = window().mscHistory.axis(ChartAxisId::Y);
            axis.title = std::move(*title);
            window().mscHistory.setAxis(ChartAxisId::Y, std::move(axis));
        }
    });
}

Value valueOfLaterRecord(const ChartView& view, Long r, bool second) {
    return guarded("GetTransfer1stRow", Value(), [&](Value& result) {
        result = valueOfLater(window().data.log, view, r, second);
    });
}

Value valueOfFirstRecord(const ChartView& view, Long r, bool second) {
    return guarded("GetTransferNthRow", Value(), [&](Value& result) {
        result = valueOfFirst(window().data.log, view, r, second);
    });
}

Value cellValue(const ChartView& view, Long r, bool second) {
    return guarded("GetTransfer", Value(), [&](Value& result) {
        const Value value =
            r > Long(1) ? valueOfLaterRecord(view, r, second) : valueOfFirstRecord(view, r, second);
        result = value && !view.inPercent() ? inUnit(view, *value) : value;
    });
}

bool rangeFits(const HistoryData& data) {
    return data.log.sent.size() == data.log.rcvd.size() && data.start >= Long(1) &&
           data.stop <= Long(static_cast<std::int32_t>(data.log.rcvd.size()));
}

using Columns = std::vector<std::vector<double>>;

/// The values of all rows, or of those before the first that could not be calculated; nothing when
/// the chart was filled anew while events were handled, as by another choice in a list.
std::optional<Columns> calculate(const ChartView& view, std::size_t columnCount) {
    constexpr int recordsBetweenEvents = 10;
    HistoryData& data = window().data;
    const std::uint32_t plot = ++data.plots;
    Columns columns(columnCount);
    for (Long r = data.start; r <= data.stop; r = r + 1) {
        if (r.value() % recordsBetweenEvents == 0) {
            platform().desktop.processEvents();
            if (data.plots != plot || !data.imported) {
                return std::nullopt;
            }
        }
        for (std::size_t column = 0; column < columnCount; ++column) {
            const Value value = cellValue(view, r, column == 1);
            if (!value) {
                columns.front().resize(columns.back().size()); // a row is there as a whole
                return columns;
            }
            columns[column].push_back(value->toDouble());
        }
    }
    return columns;
}

/// Date and time of the record at that place, as far as they were recorded.
std::string momentOf(std::size_t place) {
    const ImportedHistory& log = window().data.log;
    if (place >= log.date.size() || place >= log.time.size()) {
        return {};
    }
    const std::string date(log.date[place]);
    const std::string time(log.time[place]);
    return date + (date.empty() || time.empty() ? "" : " ") + time;
}

/// Shows the columns in a row for each record of the range; where they end early, the other rows
/// stay empty.
void fill(const ChartView& view, const Columns& columns, const std::vector<std::string>& labels) {
    Chart& chart = window().mscHistory;
    const HistoryData& data = window().data;
    const auto rows = static_cast<int>(columns.front().size());
    const std::int32_t start = data.start.value();
    chart.setReadRow(Chart::none);
    chart.setLocale(platform().locale.data());
    chart.setColumnCount(static_cast<int>(columns.size()));
    chart.setRowCount(0); // no value of the ones before stays
    chart.setRowCount((data.stop - data.start + 1).value());
    chart.setFilledRows(rows);
    chart.setFirstRow(start);
    chart.setRowNotes([start, imports = data.imports](int row) {
        // The next import may be there already, and its values not yet.
        const bool same = window().data.imports == imports;
        const int place = start - 1 + row;
        return same ? momentOf(static_cast<std::size_t>(place)) : std::string();
    });
    chart.setUnit(unitOfValues(view));
    chart.setEmptyText("Record " + chart.rowName(0) + " could not be calculated.");
    for (int column = 0; column < chart.columnCount(); ++column) {
        const auto place = static_cast<std::size_t>(column);
        chart.setColumnLabel(column, labels[place]);
        for (int row = 0; row < rows; ++row) {
            chart.setData(column, row, columns[place][static_cast<std::size_t>(row)]);
        }
    }
    chart.showData();
}

} // namespace

void InitDiagram() {
    guarded("InitDiagram", [] {
        Chart& chart = window().mscHistory;
        chart.setShowsLegend(false);
        ChartAxis axis{.title = "connections",
                       .majorPen = GridPen::Ditted,
                       .minorPen = GridPen::Ditted,
                       .majorDivisions = 10,
                       .minorDivisions = 1};
        chart.setAxis(ChartAxisId::X, axis);
        axis.title = "transfer (bytes)";
        chart.setAxis(ChartAxisId::Y, axis);
        chart.setAxis(ChartAxisId::SecondY, {});
    });
}

void PlotRows() {
    guarded("PlotRows", [] {
        if (!window().data.imported) {
            return;
        }
        if (!rangeFits(window().data)) {
            MsgBox(std::string("The data imported seems to be corrupt.") + CR +
                       "Therefore it cannot be plotted.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
            return;
        }
        const ChartView view = chosenView();
        SetAxis(view);
        const std::vector<std::string> labels = columnLabels(view);
        if (const auto columns = calculate(view, labels.size())) {
            fill(view, *columns, labels);
        }
    });
}

void ClearDiagram() {
    ++window().data.plots; // whoever fills the chart at this moment does it for other records
    Chart& chart = window().mscHistory;
    chart.setRowCount(0);
    chart.setEmptyText(FrmHistory::chartHint);
    chart.showData();
}

void SetAxis() {
    SetAxis(chosenView());
}

Currency GetTransfer(Long r, bool Second) {
    return cellValue(chosenView(), r, Second).value_or(Currency(0));
}

Currency GetTransfer1stRow(Long r, bool Second) {
    return valueOfLaterRecord(chosenView(), r, Second).value_or(Currency(0));
}

Currency GetTransferNthRow(Long r, bool Second) {
    return valueOfFirstRecord(chosenView(), r, Second).value_or(Currency(0));
}

} // namespace tarvik
