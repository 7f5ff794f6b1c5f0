#pragma once

#include "controls/Chart.h"

#include <string>
#include <utility>

namespace tarvik::face {

// How a user reads values off a chart, on every desktop.

/// What the keys do: Left and Right, Page Up and Page Down, Home and End.
enum class ReadingStep { Back, On, PageBack, PageOn, First, Last };

void goOn(Chart& chart, ReadingStep step);

/// What a screen reader says of a chart: its title, and what is read off; while nothing is, what
/// the chart draws.
std::string spokenName(const Chart& chart);

/// Which row that is read off a face's chart shows.
class ShownReading {
public:
    /// Whether the chart looks or sounds different after that change: not when the pointer has
    /// moved within a row.
    bool differs(const Chart& chart, Property changed) {
        const int before = std::exchange(row_, chart.readRow());
        return changed != Property::Reading || before != row_;
    }

private:
    int row_ = Chart::none;
};

} // namespace tarvik::face
