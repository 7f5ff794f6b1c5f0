#include "wiring/NumericField.h"

#include "ports/Desktop.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "types/Text.h"

#include <algorithm>

namespace tarvik {

namespace {

const LocaleData& locale() {
    return platform().locale.data();
}

std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

std::string numberText(Long number) {
    return toText(number);
}

std::string numberText(Currency number) {
    return toText(number, locale());
}

std::string handlerName(const TextBox& field, const char* event) {
    return field.name() + "_" + event;
}

void onGotFocus(TextBox& field) {
    guarded(handlerName(field, "GotFocus").c_str(), [&] {
        field.setText(std::string(trimSpaces(field.text())));
        field.select(0, static_cast<int>(field.text().size()));
    });
}

template <class Number>
void onKeyDown(const TextBox& field, Number& remembered, Long standard) {
    guarded(handlerName(field, "KeyDown").c_str(), [&] {
        const std::string text = withoutBlanks(field.text());
        remembered = isNumeric(text, locale()) ? textToLong(text, locale()) : standard;
    });
}

template <class Number>
void onKeyUp(TextBox& field, const Number& remembered) {
    guarded(handlerName(field, "KeyUp").c_str(), [&] {
        if (!ValidValue(field)) {
            field.setText(numberText(remembered));
        }
    });
}

template <class Number>
void connect(TextBox& field, Number& remembered, Long standard) {
    remembered = standard;
    field.GotFocus.connect([&field] { onGotFocus(field); });
    field.KeyDown.connect(
        [&field, &remembered, standard] { onKeyDown(field, remembered, standard); });
    field.KeyUp.connect([&field, &remembered] { onKeyUp(field, remembered); });
}

} // namespace

void connectNumericField(TextBox& field, Long& remembered, Long standard) {
    connect(field, remembered, standard);
}

void connectNumericField(TextBox& field, Currency& remembered, Long standard) {
    connect(field, remembered, standard);
}

bool ValidValue(const TextBox& Field) {
    return guarded("ValidValue", false, [&](bool& result) {
        const std::string_view text = trimSpaces(Field.text());
        result = isNumeric(text, locale());
        if (!result && !text.empty()) {
            platform().desktop.beep();
        }
    });
}

} // namespace tarvik
