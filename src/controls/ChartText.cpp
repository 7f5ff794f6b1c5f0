#include "controls/Chart.h"
#include "types/Convert.h"

#include <algorithm>

// What a chart says in words.

namespace tarvik {

namespace {

const char* kindOf(ChartType type) {
    switch (type) {
    case ChartType::Bar:
        return "Bar chart";
    case ChartType::Area:
        return "Area chart";
    case ChartType::Step:
        return "Step chart";
    case ChartType::Line:
        break;
    }
    return "Line chart";
}

} // namespace

/// As many of four decimals as the value has, with thousands separators.
std::string Chart::valueText(double value) const {
    constexpr int mostDecimals = 4;
    std::string text = formatGrouped(value, mostDecimals, locale_);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with(locale_.decimalSeparator)) {
        text.erase(text.size() - locale_.decimalSeparator.size());
    }
    return text;
}

std::string Chart::withUnit(std::string value) const {
    if (!unit_.empty()) {
        value += unit_ == "%" ? unit_ : " " + unit_;
    }
    return value;
}

std::string Chart::rowLabel(int row) const {
    return wholeToText(rowNumber(row));
}

std::string Chart::rowName(int row) const {
    return formatGrouped(static_cast<double>(rowNumber(row)), 0, locale_);
}

std::vector<std::string> Chart::readingLines() const {
    if (readRow_ == none) {
        return {};
    }
    const std::string note = rowNotes_ ? rowNotes_(readRow_) : "";
    std::vector<std::string> lines{rowName(readRow_) + (note.empty() ? "" : " (" + note + ")")};
    for (int column = 0; column < columnCount_; ++column) {
        const std::string& label = columnLabel(column);
        lines.push_back((label.empty() ? label : label + " ") +
                        withUnit(valueText(data(column, readRow_))));
    }
    return lines;
}

std::string Chart::reading() const {
    const std::vector<std::string> lines = readingLines();
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += (i == 0 ? "" : i == 1 ? ": " : "; ") + lines[i];
    }
    return text;
}

/// From where to where the values of a column reach.
std::string Chart::rangeText(int column) const {
    const std::vector<double>& all = values(column);
    const auto [least, most] = std::minmax_element(all.begin(), all.begin() + filledRows_);
    const std::string& label = columnLabel(column);
    return (label.empty() ? "from " : label + " from ") + valueText(*least) + " to " +
           withUnit(valueText(*most));
}

std::string Chart::summary() const {
    if (filledRows_ == 0) {
        return emptyText_;
    }
    std::string text = kindOf(type_);
    if (!drawnValueTitle().empty()) {
        text += " of " + drawnValueTitle();
    }
    text += "; ";
    const std::string& rows = axis(ChartAxisId::X).title;
    text += (rows.empty() ? "" : rows + " ") + rowName(0) + " to " + rowName(filledRows_ - 1);
    text += ", " + formatGrouped(filledRows_, 0, locale_) + " in all";
    for (int column = 0; column < columnCount_; ++column) {
        text += "; " + rangeText(column);
    }
    return text;
}

} // namespace tarvik
