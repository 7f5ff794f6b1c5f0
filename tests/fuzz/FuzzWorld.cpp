#include "FuzzWorld.h"

#include <algorithm>
#include <array>

namespace tarvik::fuzz {

namespace {

/// The run-time errors that the rules raise; every other one is a fault.
constexpr std::array expectedErrors{5, 6, 9, 11, 13, 53, 61, 70, 75, 76};

bool isFault(const std::string& text) {
    if (!text.starts_with("Error ")) {
        return false;
    }
    return std::none_of(expectedErrors.begin(), expectedErrors.end(), [&](int number) {
        return text.starts_with("Error " + std::to_string(number) + " (");
    });
}

} // namespace

LocaleData localeOf(std::uint8_t number) {
    switch (number % 8) {
    case 0:
        return germanLocale();
    case 1:
        return americanLocale();
    case 2:
        return swedishLocale();
    case 3:
        return frenchLocale();
    case 4:
        return swissLocale();
    case 5:
        return finnishLocale();
    case 6:
        return japaneseLocale();
    default:
        return {};
    }
}

FuzzWorld::FuzzWorld() {
    machine.desktop.answerAny = [this](const MsgBoxRequest& request) {
        require(!isFault(request.text), "no other than run-time errors come: " + request.text);
        boxes.push_back(request.text);
        return answer ? answer(request) : MsgBoxAnswer::Ok;
    };
}

bool FuzzWorld::told(const std::string& beginning) const {
    return std::any_of(boxes.begin(), boxes.end(),
                       [&](const std::string& text) { return text.starts_with(beginning); });
}

bool FuzzWorld::toldError() const {
    return std::any_of(boxes.begin(), boxes.end(),
                       [](const std::string& text) { return text.starts_with("Error "); });
}

} // namespace tarvik::fuzz
