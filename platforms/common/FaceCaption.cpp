#include "common/FaceCaption.h"

#include "types/Text.h"

namespace tarvik::face {

namespace {

std::size_t placeOf(const std::string& caption, char letter) {
    const std::size_t place = caption.find(letter);
    if (place != std::string::npos) {
        return place;
    }
    return upperCase(caption).find(upperCase(std::string(1, letter)));
}

} // namespace

std::string markedCaption(const std::string& caption, char mnemonic) {
    const std::size_t marked = mnemonic == 0 ? std::string::npos : placeOf(caption, mnemonic);
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (i == marked || caption[i] == '&') {
            text += '&';
        }
        text += caption[i];
    }
    return text;
}

} // namespace tarvik::face
