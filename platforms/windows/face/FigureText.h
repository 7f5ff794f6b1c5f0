#pragma once

#include "windows/services/SystemHeader.h"

#include <optional>
#include <string>
#include <utility>

namespace tarvik::face {

/// The text of a box that only shows something and changes with every tick. To set a box's text and
/// to have it painted costs many times what its letters cost: they are drawn here, where and as the
/// box draws them, and the box takes the text over as soon as it is asked for anything.
class FigureText {
public:
    /// `text` is the one that the box has.
    FigureText(HWND box, bool toTheRight, std::string text)
        : box_(box), toTheRight_(toTheRight), text_(std::move(text)) {}

    void show(const std::string& text);

    /// Before the box sees the message: it then has its text, unless the message is none of its
    /// text's business. True when the message is answered.
    bool answers(UINT message);

private:
    struct Place {
        int x = 0; ///< of the left edge, or of the right one
        int y = 0;
        int width = 0; ///< that there is room for
    };

    bool canDraw(const std::string& text) const;
    void handOver();
    void findPlace();
    bool draw(HDC context, const std::string& text) const;

    HWND box_;
    bool toTheRight_;
    std::string text_;
    bool ahead_ = false; ///< of the text that the box has
    std::optional<Place> place_;
};

} // namespace tarvik::face
