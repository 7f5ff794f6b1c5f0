#include "common/ChartReading.h"

#include <algorithm>

namespace tarvik::face {

void goOn(Chart& chart, ReadingStep step) {
    constexpr int pages = 20;
    const int page = std::max(1, chart.rowCount() / pages);
    switch (step) {
    case ReadingStep::Back:
        return chart.moveReading(-1);
    case ReadingStep::On:
        return chart.moveReading(1);
    case ReadingStep::PageBack:
        return chart.moveReading(-page);
    case ReadingStep::PageOn:
        return chart.moveReading(page);
    case ReadingStep::First:
        return chart.setReadRow(0);
    case ReadingStep::Last:
        return chart.setReadRow(chart.filledRows() - 1);
    }
}

std::string spokenName(const Chart& chart) {
    const std::string reading = chart.reading();
    const std::string said = reading.empty() ? chart.summary() : reading;
    const bool both = !chart.drawnTitle().empty() && !said.empty();
    return chart.drawnTitle() + (both ? ". " : "") + said;
}

} // namespace tarvik::face
