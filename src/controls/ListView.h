#pragma once

#include "controls/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// A column of a list: what stands above it and where its texts stand.
struct ListColumn {
    std::string header;
    TextAlignment alignment = TextAlignment::Left;
};

/// What columns are made as wide as. They never cut their headers.
enum class ColumnFit { Headers, Contents };

/// A table of texts with a header, of which one row, or none, is selected. It keeps no row: whoever
/// fills it is asked for the texts that are to be seen, so that a million rows cost no more than a
/// screenful.
class ListView : public Control {
public:
    static constexpr int none = -1;

    struct Setup {
        std::vector<ListColumn> columns;
        const char* toolTip = "";
        const char* accessibleName = "";
    };

    /// The text in a row and column, both counted from 0.
    using Cell = std::function<std::string(int row, int column)>;

    ListView(ControlList& list, const char* name, const Setup& setup);

    /// Raised when another row has been selected, by the user or the program.
    Event<> Click;
    /// Raised when the user has clicked twice on a row, or pressed Enter on it.
    Event<> DblClick;

    const std::vector<ListColumn>& columns() const { return columns_; }
    int rowCount() const { return rowCount_; }
    /// Puts other rows in place of those that are there; none is selected then. Whoever fills the
    /// list knows the longest text of each column.
    void setRows(int count, Cell cell, std::vector<std::string> longestTexts = {});
    /// Empty outside the list.
    std::string cell(int row, int column) const;

    /// Position of the selected row from 0, or `none`.
    int selectedRow() const { return selectedRow_; }
    /// Selects a row or `none`; raises SubscriptOutOfRange (9) for any other position.
    void setSelectedRow(int row);

    /// Whether the headers look and work like buttons.
    bool headersClickable() const { return headersClickable_; }
    void setHeadersClickable(bool clickable);

    /// Sets the width of all columns.
    void fitColumns(ColumnFit fit);
    ColumnFit columnFit() const { return columnFit_; }
    /// Of each column; fewer than there are columns when they are not known.
    const std::vector<std::string>& longestTexts() const { return longestTexts_; }

private:
    std::vector<ListColumn> columns_;
    int rowCount_ = 0;
    Cell cell_;
    int selectedRow_ = none;
    bool headersClickable_ = true;
    ColumnFit columnFit_ = ColumnFit::Headers;
    std::vector<std::string> longestTexts_;
};

} // namespace tarvik
