#include "history/ChartValues.h"

#include "state/mdlVar.h"
#include "types/RunTimeError.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarvik {

namespace {

// Of units of time there are as many.
constexpr std::size_t unitCount = transferUnitCount;
constexpr std::array<double, unitCount> bytesOfUnit{1, 1024, 1024.0 * 1024, 1024.0 * 1024 * 1024};
constexpr std::array<double, unitCount> millisecondsOfUnit{1, 1000, 60.0 * 1000, 60.0 * 60 * 1000};

Currency at(const std::vector<Currency>& values, Long k) {
    if (k < Long(1) || static_cast<std::size_t>(k.value()) > values.size()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    return values[static_cast<std::size_t>(k.value() - 1)];
}

/// What of record `k` is asked for.
Currency quantity(const ImportedHistory& log, const ChartView& view, Long k, bool second) {
    if (second) {
        return at(log.sent, k);
    }
    switch (view.show) {
    case ChartView::RcvdAndSent:
    case ChartView::ReceivedOnly:
        return at(log.rcvd, k);
    case ChartView::SentOnly:
        return at(log.sent, k);
    case ChartView::Total:
        return at(log.sent, k) + at(log.rcvd, k);
    case ChartView::Duration:
        return at(log.duration, k);
    default:
        return {};
    }
}

/// Record `k` as a part of the last record of the whole log.
Currency percentage(const ImportedHistory& log, const ChartView& view, Long k, bool second) {
    if (!second && !view.asksForQuantity()) {
        return {};
    }
    const Long last = static_cast<std::int32_t>(log.sent.size());
    const Currency reference = quantity(log, view, last, second);
    if (reference == Currency(0)) {
        raise(ErrorNumber::DivisionByZero);
    }
    constexpr double whole = 100;
    return Currency::fromDouble(quantity(log, view, k, second).toDouble() / reference.toDouble() *
                                whole);
}

std::optional<std::size_t> unitOf(const ChartView& view) {
    const auto unit = static_cast<std::size_t>(view.unit);
    return unit < unitCount && view.asksForQuantity() ? std::optional(unit) : std::nullopt;
}

} // namespace

Currency valueOfLater(const ImportedHistory& log, const ChartView& view, Long r, bool second) {
    switch (view.kind) {
    case ChartView::TotalTransfer:
        return quantity(log, view, r, second);
    case ChartView::DifferentialTransfer:
        return quantity(log, view, r, second) - quantity(log, view, r - 1, second);
    case ChartView::Percentual:
        return percentage(log, view, r, second);
    default:
        return {};
    }
}

Currency valueOfFirst(const ImportedHistory& log, const ChartView& view, Long r, bool second) {
    return view.inPercent() ? percentage(log, view, r, second) : quantity(log, view, r, second);
}

Currency inUnit(const ChartView& view, Currency value) {
    const auto unit = unitOf(view);
    if (!unit || *unit == 0) {
        return value;
    }
    const auto& units = view.ofTime() ? millisecondsOfUnit : bytesOfUnit;
    return Currency::fromDouble(value.toDouble() / units[*unit]);
}

std::vector<std::string> columnLabels(const ChartView& view) {
    switch (view.show) {
    case ChartView::RcvdAndSent:
        return {"Rcvd", "Sent"};
    case ChartView::ReceivedOnly:
        return {"Rcvd"};
    case ChartView::SentOnly:
        return {"Sent"};
    case ChartView::Total:
        return {"Total"};
    case ChartView::Duration:
        return {"Duration"};
    default:
        return {""};
    }
}

std::string unitOfValues(const ChartView& view) {
    static constexpr std::array<const char*, unitCount> bytes{"bytes", "kilo-bytes", "mega-bytes",
                                                              "giga-bytes"};
    static constexpr std::array<const char*, unitCount> times{"milli-seconds", "seconds", "minutes",
                                                              "hours"};
    if (view.inPercent()) {
        return "%";
    }
    const auto unit = unitOf(view);
    return !unit ? "" : view.ofTime() ? times[*unit] : bytes[*unit];
}

std::optional<std::string> valueTitle(const ChartView& view) {
    static constexpr std::array<const char*, unitCount> bytes{"(bytes)", "(kilo-bytes)",
                                                              "(mega-bytes)", "(giga-bytes)"};
    static constexpr std::array<const char*, unitCount> times{"(milli-secs)", "(seconds)",
                                                              "(minutes)", "(hours)"};
    if (!view.asksForQuantity()) {
        return std::nullopt;
    }
    const std::string what = view.ofTime() ? "duration " : "transfer ";
    if (view.inPercent()) {
        return what + "(percent)";
    }
    const auto unit = unitOf(view);
    if (!unit) {
        return std::nullopt;
    }
    return what + (view.ofTime() ? times[*unit] : bytes[*unit]);
}

} // namespace tarvik
