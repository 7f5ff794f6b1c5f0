#include "controls/Chart.h"

#include "types/RunTimeError.h"

#include <algorithm>
#include <utility>

namespace tarvik {

Chart::Chart(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::Chart, name), title_(setup.title) {
    setToolTip(setup.toolTip);
}

void Chart::setTitle(std::string title) {
    assign(title_, std::move(title), Property::Caption);
}

const std::string& Chart::drawnTitle() const {
    return filledRows_ > 0 ? shownTitle_ : title_;
}

const std::string& Chart::drawnValueTitle() const {
    return filledRows_ > 0 ? shownValueTitle_ : axis(ChartAxisId::Y).title;
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
    setFilledRows(count);
}

void Chart::setFilledRows(int count) {
    if (count < 0 || count > rowCount_) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    filledRows_ = count;
    if (readRow_ >= filledRows_) {
        setReadRow(none);
    }
}

void Chart::setEmptyText(std::string text) {
    assign(emptyText_, std::move(text), Property::Drawing);
}

const std::string& Chart::columnLabel(int column) const {
    return columnLabels_.at(static_cast<std::size_t>(column));
}

void Chart::setColumnLabel(int column, std::string label) {
    assign(columnLabels_.at(static_cast<std::size_t>(column)), std::move(label), Property::Drawing);
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
    shownTitle_ = title_;
    shownValueTitle_ = axis(ChartAxisId::Y).title;
    tell(Property::Drawing);
}

void Chart::setReadRow(int row) {
    assign(readRow_, row >= 0 && row < filledRows_ ? row : none, Property::Reading);
}

void Chart::moveReading(int rows) {
    if (filledRows_ == 0 || rows == 0) {
        return;
    }
    const std::int64_t from = readRow_ != none ? readRow_ : rows > 0 ? -1 : filledRows_;
    const std::int64_t step = readRow_ != none ? rows : rows > 0 ? 1 : -1;
    setReadRow(static_cast<int>(std::clamp<std::int64_t>(from + step, 0, filledRows_ - 1)));
}

} // namespace tarvik
