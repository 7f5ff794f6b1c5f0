#pragma once

#include "controls/Colour.h"
#include "controls/Control.h"
#include "types/LocaleData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// How a chart draws its values, as charting libraries number it.
enum class ChartType { Bar = 1, Line = 3, Area = 5, Step = 7 };

/// The axes by their numbers.
enum class ChartAxisId { X = 0, Y = 1, SecondY = 2 };

/// How grid lines are drawn, as charting libraries number it.
enum class GridPen { None = 0, Ditted = 6 };

/// One axis of a chart.
struct ChartAxis {
    std::string title;
    GridPen majorPen = GridPen::None;
    GridPen minorPen = GridPen::None;
    /// Parts that the scale of values is divided into, and lines within each part.
    int majorDivisions = 10;
    int minorDivisions = 1;

    friend bool operator==(const ChartAxis&, const ChartAxis&) = default;
};

/// A chart of one or two columns of values (series) over rows (categories). Rows and columns are
/// counted from 0. Values are written cell by cell and shown by `showData`.
class Chart : public Control {
public:
    static constexpr int none = -1;
    static constexpr int mostColumns = 2;

    struct Setup {
        const char* title = "";
        const char* toolTip = "";
    };

    using RowText = std::function<std::string(int row)>;

    Chart(ControlList& list, const char* name, const Setup& setup);

    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    /// The title that belongs to the values that are shown; without values the present one. So a
    /// title that is set before its values are there does not stand above other ones.
    const std::string& drawnTitle() const;
    /// The same of the title of the values' axis.
    const std::string& drawnValueTitle() const;
    ChartType type() const { return type_; }
    void setType(ChartType type);
    /// Whether a key names the columns.
    bool showsLegend() const { return showsLegend_; }
    void setShowsLegend(bool shown);
    const ChartAxis& axis(ChartAxisId id) const { return axes_[indexOf(id)]; }
    void setAxis(ChartAxisId id, ChartAxis axis);
    /// Separators of the numbers that are shown.
    const LocaleData& locale() const { return locale_; }
    void setLocale(const LocaleData& locale) { locale_ = locale; }

    int columnCount() const { return columnCount_; }
    int rowCount() const { return rowCount_; }
    /// 1 or 2, else SubscriptOutOfRange (9). Values that are there stay.
    void setColumnCount(int count);
    /// Values of rows that are there stay; new ones are 0. Raises SubscriptOutOfRange (9) below 0.
    void setRowCount(int count);
    const std::string& columnLabel(int column) const;
    void setColumnLabel(int column, std::string label);
    /// What the values are measured in, "bytes" or "%"; may be empty.
    void setUnit(std::string unit) { unit_ = std::move(unit); }
    /// The number of row 0, which the others count on from; 1 unless set.
    void setFirstRow(int number) { firstRow_ = number; }
    /// The number of a row.
    std::int64_t rowNumber(int row) const { return std::int64_t{firstRow_} + row; }
    /// A row by its number, as decimal text.
    std::string rowLabel(int row) const;
    /// The same as the user writes numbers.
    std::string rowName(int row) const;
    /// Asked for more about a row (date and time, say) when its values are read off; may be empty.
    void setRowNotes(RowText notes) { rowNotes_ = std::move(notes); }

    /// Raises SubscriptOutOfRange (9) outside rows and columns. Seen after `showData`.
    void setData(int column, int row, double value);
    double data(int column, int row) const { return values(column)[static_cast<std::size_t>(row)]; }
    /// All values of a column.
    const std::vector<double>& values(int column) const {
        return values_[static_cast<std::size_t>(column)];
    }
    /// Only so many of the rows, from the first on, have values: the others have a place and
    /// nothing in it. All rows after `setRowCount`. Raises SubscriptOutOfRange (9) outside the
    /// rows.
    void setFilledRows(int count);
    int filledRows() const { return filledRows_; }
    /// Shows what was written. Nothing is read off any more.
    void showData();
    /// Stands on the sheet while no row has a value.
    const std::string& emptyText() const { return emptyText_; }
    void setEmptyText(std::string text);
    /// Grows with each `showData`.
    std::uint32_t generation() const { return generation_; }

    /// The row whose values are read off, or `none`.
    int readRow() const { return readRow_; }
    /// A row outside the chart, or without values, is `none`.
    void setReadRow(int row);
    /// Goes on by so many rows, but not beyond the ends. The first step of all leads to the first
    /// row, or, backwards, to the last.
    void moveReading(int rows);
    /// What is read off: "17 (16.11.2026 08:15:22): Sent 1,234 bytes"; empty for nothing.
    std::string reading() const;
    /// The same piece by piece: the row, and each value.
    std::vector<std::string> readingLines() const;
    /// What the chart draws, in words: kind, rows, and from where to where the values reach.
    std::string summary() const;

private:
    static std::size_t indexOf(ChartAxisId id) { return static_cast<std::size_t>(id); }
    std::string valueText(double value) const;
    std::string withUnit(std::string value) const;
    std::string rangeText(int column) const;

    std::string title_;
    ChartType type_ = ChartType::Line;
    bool showsLegend_ = true;
    std::array<ChartAxis, 3> axes_;
    LocaleData locale_;
    int columnCount_ = 1;
    int rowCount_ = 0;
    int filledRows_ = 0;
    int firstRow_ = 1;
    std::array<std::string, mostColumns> columnLabels_;
    std::string unit_;
    RowText rowNotes_;
    std::string emptyText_;
    std::string shownTitle_;      ///< of the values that were shown last
    std::string shownValueTitle_; ///< the same
    std::array<std::vector<double>, mostColumns> values_;
    std::uint32_t generation_ = 0;
    int readRow_ = none;
};

} // namespace tarvik
