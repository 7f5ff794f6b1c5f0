#include "history/mdlHistoryChart.h"

#include "forms/Forms.h"
#include "ports/Desktop.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

namespace {

// Positions in the lists of the window.
enum DataToShow { RcvdAndSent = 0, ReceivedOnly = 1, SentOnly = 2, Total = 3, Duration = 4 };
enum DataType { TotalTransfer = 0, DifferentialTransfer = 1, Percentual = 2 };

constexpr std::size_t unitCount = 4;
constexpr std::array<double, unitCount> bytesOfUnit{1, 1024, 1024.0 * 1024, 1024.0 * 1024 * 1024};
constexpr std::array<double, unitCount> millisecondsOfUnit{1, 1000, 60.0 * 1000, 60.0 * 60 * 1000};

FrmHistory& window() {
    return forms().frmHistory;
}

/// Nothing where the value could not be calculated; that has been reported.
using Value = std::optional<Currency>;

/// The value of record `k`; raises SubscriptOutOfRange (9) for a record that there is not.
Currency at(const std::vector<Currency>& values, Long k) {
    if (k < Long(1) || static_cast<std::size_t>(k.value()) > values.size()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    return values[static_cast<std::size_t>(k.value() - 1)];
}

/// Whether the lists of the window ask for anything.
bool asksForQuantity(bool second) {
    const int shown = window().cboDataToShow.listIndex();
    return second || (shown >= RcvdAndSent && shown <= Duration);
}

/// What of record `k` the lists of the window ask for.
Currency quantity(Long k, bool second) {
    const ImportedHistory& log = window().data.log;
    if (second) {
        return at(log.sent, k);
    }
    switch (window().cboDataToShow.listIndex()) {
    case RcvdAndSent:
    case ReceivedOnly:
        return at(log.rcvd, k);
    case SentOnly:
        return at(log.sent, k);
    case Total:
        return at(log.sent, k) + at(log.rcvd, k);
    case Duration:
        return at(log.duration, k);
    default:
        return {};
    }
}

/// Record `k` as a part of the last record of the whole log.
Currency percentage(Long k, bool second) {
    if (!asksForQuantity(second)) {
        return {};
    }
    const Long last = static_cast<std::int32_t>(window().data.log.sent.size());
    const Currency reference = quantity(last, second);
    if (reference == Currency(0)) {
        raise(ErrorNumber::DivisionByZero);
    }
    constexpr double whole = 100;
    return Currency::fromDouble(quantity(k, second).toDouble() / reference.toDouble() * whole);
}

Value valueOfLaterRecord(Long r, bool second) {
    return guarded("GetTransfer1stRow", Value(), [&](Value& result) {
        switch (window().cboDataType.listIndex()) {
        case TotalTransfer:
            result = quantity(r, second);
            break;
        case DifferentialTransfer:
            result = quantity(r, second) - quantity(r - 1, second);
            break;
        case Percentual:
            result = percentage(r, second);
            break;
        default:
            result = Currency(0);
        }
    });
}

Value valueOfFirstRecord(Long r, bool second) {
    return guarded("GetTransferNthRow", Value(), [&](Value& result) {
        const bool percentual = window().cboDataType.listIndex() == Percentual;
        result = percentual ? percentage(r, second) : quantity(r, second);
    });
}

Currency inUnit(Currency value) {
    const auto unit = static_cast<std::size_t>(window().cboTransferUnit.listIndex());
    if (unit == 0 || unit >= unitCount || !asksForQuantity(false)) {
        return value;
    }
    const bool duration = window().cboDataToShow.listIndex() == Duration;
    const auto& units = duration ? millisecondsOfUnit : bytesOfUnit;
    return Currency::fromDouble(value.toDouble() / units[unit]);
}

Value cellValue(Long r, bool second) {
    return guarded("GetTransfer", Value(), [&](Value& result) {
        const Value value =
            r > Long(1) ? valueOfLaterRecord(r, second) : valueOfFirstRecord(r, second);
        const bool percentual = window().cboDataType.listIndex() == Percentual;
        result = value && !percentual ? inUnit(*value) : value;
    });
}

bool rangeFits(const HistoryData& data) {
    return data.log.sent.size() == data.log.rcvd.size() && data.start >= Long(1) &&
           data.stop <= Long(static_cast<std::int32_t>(data.log.rcvd.size()));
}

/// What each column shows, for the key and for reading values off.
std::vector<std::string> columnLabels() {
    switch (window().cboDataToShow.listIndex()) {
    case RcvdAndSent:
        return {"Rcvd", "Sent"};
    case ReceivedOnly:
        return {"Rcvd"};
    case SentOnly:
        return {"Sent"};
    case Total:
        return {"Total"};
    case Duration:
        return {"Duration"};
    default:
        return {""};
    }
}

using Columns = std::vector<std::vector<double>>;

/// The values of all rows, or of those before the first that could not be calculated; nothing when
/// the chart was filled anew while events were handled.
std::optional<Columns> calculate(std::size_t columnCount) {
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
            const Value value = cellValue(r, column == 1);
            if (!value) {
                columns.front().resize(columns.back().size()); // a row is there as a whole
                return columns;
            }
            columns[column].push_back(value->toDouble());
        }
    }
    return columns;
}

/// What the values are measured in; empty for a unit that there is not.
std::string unitOfValues() {
    static constexpr std::array<const char*, unitCount> bytes{"bytes", "kilo-bytes", "mega-bytes",
                                                              "giga-bytes"};
    static constexpr std::array<const char*, unitCount> times{"milli-seconds", "seconds", "minutes",
                                                              "hours"};
    if (window().cboDataType.listIndex() == Percentual) {
        return "%";
    }
    const auto unit = static_cast<std::size_t>(window().cboTransferUnit.listIndex());
    if (unit >= unitCount || !asksForQuantity(false)) {
        return {};
    }
    return window().cboDataToShow.listIndex() == Duration ? times[unit] : bytes[unit];
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
void fill(const Columns& columns, const std::vector<std::string>& labels) {
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
    chart.setUnit(unitOfValues());
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

/// What the values are called; nothing for a unit that there is not.
std::optional<std::string> valueTitle() {
    static constexpr std::array<const char*, unitCount> bytes{"(bytes)", "(kilo-bytes)",
                                                              "(mega-bytes)", "(giga-bytes)"};
    static constexpr std::array<const char*, unitCount> times{"(milli-secs)", "(seconds)",
                                                              "(minutes)", "(hours)"};
    if (!asksForQuantity(false)) {
        return std::nullopt;
    }
    const bool duration = window().cboDataToShow.listIndex() == Duration;
    const std::string what = duration ? "duration " : "transfer ";
    if (window().cboDataType.listIndex() == Percentual) {
        return what + "(percent)";
    }
    const auto unit = static_cast<std::size_t>(window().cboTransferUnit.listIndex());
    if (unit >= unitCount) {
        return std::nullopt;
    }
    return what + (duration ? times[unit] : bytes[unit]);
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
        SetAxis();
        const std::vector<std::string> labels = columnLabels();
        if (const auto columns = calculate(labels.size())) {
            fill(*columns, labels);
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
    guarded("SetAxis", [] {
        if (auto title = valueTitle()) {
            ChartAxis axis = window().mscHistory.axis(ChartAxisId::Y);
            axis.title = std::move(*title);
            window().mscHistory.setAxis(ChartAxisId::Y, std::move(axis));
        }
    });
}

Currency GetTransfer(Long r, bool Second) {
    return cellValue(r, Second).value_or(Currency(0));
}

Currency GetTransfer1stRow(Long r, bool Second) {
    return valueOfLaterRecord(r, Second).value_or(Currency(0));
}

Currency GetTransferNthRow(Long r, bool Second) {
    return valueOfFirstRecord(r, Second).value_or(Currency(0));
}

} // namespace tarvik
