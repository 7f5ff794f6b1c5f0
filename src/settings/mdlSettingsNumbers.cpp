#include "settings/mdlSettingsNumbers.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace tarvik {

namespace {

std::int64_t rawValue(const Setting& setting, const State& s) {
    return std::visit(
        ByKind{[&](const auto& small) { return std::int64_t{smallOf(s.*small.value)}; },
               [&](const BytesSetting& bytes) { return (s.*bytes.value).scaled(); },
               [&](const NumberSetting& number) {
                   return static_cast<std::int64_t>((s.*number.value).value());
               },
               [&](const DaySetting& day) {
                   return std::bit_cast<std::int64_t>((s.*day.value).serial());
               }},
        setting.kind);
}

template <class Number>
bool fits(std::int64_t value) {
    return value >= std::numeric_limits<Number>::min() &&
           value <= std::numeric_limits<Number>::max();
}

bool canHave(const Setting& setting, std::int64_t value) {
    return std::visit(
        ByKind{[](const BytesSetting&) { return true; },
               [&](const NumberSetting& number) {
                   return fits<std::int32_t>(value) &&
                          number.within(static_cast<std::int32_t>(value)) ==
                              Long(static_cast<std::int32_t>(value));
               },
               [&](const DaySetting&) { return canBeKept(Date(std::bit_cast<double>(value))); },
               [&](const auto&) { return fits<std::uint8_t>(value); }},
        setting.kind);
}

} // namespace

SettingNumbers settingsAsNumbers(const State& s) {
    SettingNumbers numbers{};
    std::transform(settings().begin(), settings().end(), numbers.begin(),
                   [&](const Setting& setting) { return rawValue(setting, s); });
    return numbers;
}

bool canBeMeant(const SettingNumbers& numbers) {
    const auto& all = settings();
    return std::equal(
        all.begin(), all.end(), numbers.begin(),
        [](const Setting& setting, std::int64_t value) { return canHave(setting, value); });
}

void takeNumber(const Setting& setting, std::int64_t value, State& s) {
    std::visit(
        ByKind{
            [&](const auto& small) { setSmall(s.*small.value, static_cast<std::uint8_t>(value)); },
            [&](const BytesSetting& bytes) { s.*bytes.value = Currency::fromScaled(value); },
            [&](const NumberSetting& number) {
                s.*number.value = static_cast<std::int32_t>(value);
            },
            [&](const DaySetting& day) { s.*day.value = Date(std::bit_cast<double>(value)); }},
        setting.kind);
}

} // namespace tarvik
