#include "ui/controls/Chart.h"

#include "types/Convert.h"
#include "types/RunTimeError.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

/// A value as it is read off: as many of four decimals as it has, with thousands separators.
std::string readingText(double value, const LocaleData& locale) {
    constexpr int mostDecimals = 4;
    std::string text = formatGrouped(value, mostDecimals, locale);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with(locale.decimalSeparator)) {
        text.erase(text.size() - locale.decimalSeparator.size());
    }
    return text;
}

} // namespace

Chart::Chart(Form& form, std::string name, Setup setup)
    : Control(form, ControlKind::Chart, std::move(name)), title_(std::move(setup.title)) {
    setToolTip(std::move(setup.toolTip));
}

void Chart::setTitle(std::string title) {
    assign(title_, std::move(title), Property::Caption);
}

void Chart::setType(ChartType type) {
    assign(type_, type, Property::Drawing);
}

void Chart::setShowsLegend(bool shown) {
    assign(showsLegend_, shown, Property::Drawing);
}

void Chart::setAxis(ChartAxisId id, ChartAxis axis) {
    assign(axes_[indexOf(id)], std::move(axis), Property::Drawing);
}

void Chart::setColumnCount(int count) {
    if (count < 1 || count > mostColumns) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    columnCount_ = count;
}

void Chart::setRowCount(int count) {
    if (count < 0) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    for (auto& values : values_) {
        values.resize(static_cast<std::size_t>(count));
    }
    rowCount_ = count;
    if (readRow_ >= rowCount_) {
        setReadRow(none);
    }
}

const std::string& Chart::columnLabel(int column) const {
    return columnLabels_.at(static_cast<std::size_t>(column));
}

void Chart::setColumnLabel(int column, std::string label) {
    assign(columnLabels_.at(static_cast<std::size_t>(column)), std::move(label), Property::Drawing);
}

std::string Chart::rowLabel(int row) const {
    return rowLabels_ ? rowLabels_(row) : toText(Long(row) + 1);
}

void Chart::setData(int column, int row, double value) {
    if (column < 0 || column >= columnCount_ || row < 0 || row >= rowCount_) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    values_[static_cast<std::size_t>(column)][static_cast<std::size_t>(row)] = value;
}

void Chart::showData() {
    ++generation_;
    readRow_ = none;
    tell(Property::Drawing);
}

void Chart::setReadRow(int row) {
    assign(readRow_, row >= 0 && row < rowCount_ ? row : none, Property::Reading);
}

void Chart::moveReading(int rows) {
    if (rowCount_ == 0 || rows == 0) {
        return;
    }
    const std::int64_t from = readRow_ != none ? readRow_ : rows > 0 ? -1 : rowCount_;
    const std::int64_t step = readRow_ != none ? rows : rows > 0 ? 1 : -1;
    setReadRow(static_cast<int>(std::clamp<std::int64_t>(from + step, 0, rowCount_ - 1)));
}

std::string Chart::reading() const {
    if (readRow_ == none) {
        return {};
    }
    std::string text = rowLabel(readRow_) + ":";
    for (int column = 0; column < columnCount_; ++column) {
        text += column == 0 ? " " : "; ";
        const std::string& label = columnLabel(column);
        text += label.empty() ? label : label + " ";
        text += readingText(data(column, readRow_), locale_);
    }
    return text;
}

} // namespace tarvik
