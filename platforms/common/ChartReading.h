#pragma once

#include "controls/Chart.h"

#include <string>

namespace tarvik::face {

// How a user reads values off a chart, on every desktop.

/// What the keys do: Left and Right, Page Up and Page Down, Home and End.
enum class ReadingStep { Back, On, PageBack, PageOn, First, Last };

void goOn(Chart& chart, ReadingStep step);

/// What a screen reader says of a chart: its title, and what is read off; while nothing is, what
/// the chart draws.
std::string spokenName(const Chart& chart);

} // namespace tarvik::face
