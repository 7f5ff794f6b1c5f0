#pragma once

#include "plan/Plan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

// The values of a plan's keys, the same in every locale. Each is read as it is written, nothing for
// every other text.

/// A whole number from `least` to `most`.
std::optional<int> readNumber(std::string_view text, int least, int most);

std::string textOf(LocalDay day);
std::optional<LocalDay> readDay(std::string_view text);

std::string textOf(Moment moment);
std::optional<Moment> readMoment(std::string_view text);

/// "Ridge|Harbour"
std::string textOf(const std::vector<std::string>& names);
std::optional<std::vector<std::string>> readNames(std::string_view text);

/// "100 note hangup+500MB+30min | C:\Tools\tell.exe"
std::string textOf(const Threshold& threshold);
std::optional<Threshold> readThreshold(std::string_view text);

/// "2026-11-01T00 50 80 100!": of each period what was said and, with a mark, what was hung up; the
/// periods with a semicolon between them.
std::string textOf(const std::vector<SaidInPeriod>& said);
std::optional<std::vector<SaidInPeriod>> readSaid(std::string_view text);

} // namespace tarvik
