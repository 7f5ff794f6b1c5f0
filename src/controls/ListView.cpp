#include "controls/ListView.h"

#include "types/RunTimeError.h"

namespace tarvik {

ListView::ListView(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::ListView, name), columns_(setup.columns) {
    setToolTip(setup.toolTip);
    setAccessibleName(setup.accessibleName);
}

void ListView::setRows(int count, Cell cell, std::vector<std::string> longestTexts) {
    rowCount_ = count;
    cell_ = std::move(cell);
    longestTexts_ = std::move(longestTexts);
    selectedRow_ = none;
    tell(Property::Items);
}

std::string ListView::cell(int row, int column) const {
    const bool known =
        row >= 0 && row < rowCount_ && column >= 0 && column < static_cast<int>(columns_.size());
    return known && cell_ ? cell_(row, column) : std::string();
}

void ListView::setSelectedRow(int row) {
    if (row < none || row >= rowCount_) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    if (assign(selectedRow_, row, Property::ListIndex)) {
        Click.raise();
    }
}

void ListView::setHeadersClickable(bool clickable) {
    assign(headersClickable_, clickable, Property::Headers);
}

void ListView::fitColumns(ColumnFit fit) {
    columnFit_ = fit;
    // Told each time: the user may have made columns wider or narrower.
    tell(Property::ColumnWidths);
}

} // namespace tarvik
