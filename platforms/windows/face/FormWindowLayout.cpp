#include "windows/face/FormWindow.h"

#include "windows/face/WindowMessages.h"

#include <algorithm>
#include <utility>

namespace tarvik::face {

namespace {

// Distances as the system's guidelines give them, in their units.
constexpr int related = 4;
constexpr int margin = 7;
constexpr int frameSide = 6;
constexpr int frameTop = 11;

constexpr int widestTip = 60; // characters

/// Where the control stands among them; nowhere if it does not.
LayoutRect rectIn(const std::vector<PlacedControl>& placed, const Control* control) {
    const auto found = std::find_if(placed.begin(), placed.end(), [&](const PlacedControl& one) {
        return one.control == control;
    });
    return found == placed.end() ? LayoutRect() : found->rect;
}

} // namespace

void FormWindow::useFont(int resolution) {
    auto font = std::make_unique<FaceFont>(resolution);
    dotsPerInch_ = resolution;
    for (const auto& own : children_) {
        if (own->window() != nullptr) {
            SendMessageA(own->window(), WM_SETFONT, reinterpret_cast<WPARAM>(font->handle()),
                         FALSE);
        }
    }
    if (tips_ != nullptr) {
        tips_->setWidth(font->charactersWidth(widestTip));
    }
    font_ = std::move(font); // the old one only goes when nobody uses it any more
    leastSize_.reset();
    InvalidateRect(window_, nullptr, TRUE);
}

const LayoutSize& FormWindow::leastSize() const {
    if (!leastSize_) {
        leastSize_ = minimumSize(*form_.layout(), metrics());
    }
    return *leastSize_;
}

LayoutMetrics FormWindow::metrics() const {
    const FaceFont& font = *font_;
    return {.measure =
                [this](const Control& control, int characters, int lines) {
                    return childOf(&control)->measure(*font_, characters, lines);
                },
            .horizontalGap = font.horizontalUnits(related),
            .verticalGap = font.verticalUnits(related),
            .margin = font.verticalUnits(margin),
            .frameLeft = font.horizontalUnits(frameSide),
            .frameTop = font.verticalUnits(frameTop),
            .frameRight = font.horizontalUnits(frameSide),
            .frameBottom = font.verticalUnits(margin)};
}

SIZE FormWindow::frameSize() const {
    // Not from its sizes of now: one that comes back is as small as its symbol still.
    return face::frameSize(window_, dotsPerInch_);
}

void FormWindow::onSmallestSize(MINMAXINFO& info) const {
    if (font_ == nullptr || IsIconic(window_) != FALSE) {
        return;
    }
    const LayoutSize& least = leastSize();
    const SIZE frame = frameSize();
    info.ptMinTrackSize = {least.width + frame.cx, least.height + frame.cy};
}

void FormWindow::layOutAgain() {
    leastSize_.reset();
    if (!layoutPending_ && font_ != nullptr) {
        layoutPending_ = true;
        PostMessageA(window_, layOutMessage, 0, 0);
    }
}

void FormWindow::layOut() {
    layoutPending_ = false;
    if (font_ == nullptr || IsIconic(window_) != FALSE) {
        return; // a window that comes back is told its size again
    }
    const LayoutSize least = leastSize();
    RECT area{};
    GetClientRect(window_, &area);
    RECT outer{};
    GetWindowRect(window_, &outer);
    const LONG before = outer.bottom - outer.top;
    const LONG width = outer.right - outer.left + std::max(least.width - area.right, 0L);
    const LONG height = followsLeastHeight(least, before)
                            ? least.height + frameSize().cy
                            : before + std::max(least.height - area.bottom, 0L);
    if (width == outer.right - outer.left && height == before) {
        placeControls();
        return;
    }
    SetWindowPos(window_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// A window that stands at its least height keeps to that when something has collapsed in it, or no
/// longer is; any other only gets as high as it must.
bool FormWindow::followsLeastHeight(const LayoutSize& least, LONG height) {
    std::vector<const LayoutNode*> collapsed = collapsedNodes(*form_.layout());
    const bool follows = collapsed != collapsed_ && IsZoomed(window_) == FALSE &&
                         height <= leastHeight_ + frameSize().cy;
    collapsed_ = std::move(collapsed);
    leastHeight_ = least.height;
    return follows;
}

void FormWindow::placeControls() {
    if (font_ == nullptr) {
        return;
    }
    RECT area{};
    GetClientRect(window_, &area);
    const auto before = std::exchange(
        placed_, solveLayout(*form_.layout(), metrics(),
                             {static_cast<int>(area.right), static_cast<int>(area.bottom)}));
    HDWP moves = BeginDeferWindowPos(static_cast<int>(placed_.size()));
    // Frames leave what they hold to the form, which must paint it anew: no more than that, or a
    // text that changes every second makes the whole window flicker.
    for (const PlacedControl& each : placed_) {
        const LayoutRect from = rectIn(before, each.control);
        const LayoutRect& to = each.rect;
        if (from != to) {
            moves = DeferWindowPos(moves, childOf(each.control)->window(), nullptr, to.left, to.top,
                                   to.width, to.height, SWP_NOZORDER | SWP_NOACTIVATE);
            paintAnew(from);
            paintAnew(to);
        }
    }
    EndDeferWindowPos(moves);
    showWhatIsSeen();
}

void FormWindow::paintAnew(const LayoutRect& rect) const {
    const RECT area{rect.left, rect.top, rect.left + rect.width, rect.top + rect.height};
    InvalidateRect(window_, &area, TRUE);
}

void FormWindow::showWhatIsSeen() {
    // What a hidden frame holds stands beside it, not in it: it has to be hidden on its own.
    const std::vector<Control*> seenControls = seenControlsInOrder(*form_.layout());
    for (const Control* control : controlsInOrder(*form_.layout())) {
        const bool seen =
            std::find(seenControls.begin(), seenControls.end(), control) != seenControls.end();
        const HWND window = childOf(control)->window();
        if (seen != ((GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE) != 0)) {
            ShowWindow(window, seen ? SW_SHOWNA : SW_HIDE);
            paintAnew(rectIn(placed_, control));
        }
    }
    focusMayMove();
}

void FormWindow::onResolution(int resolution, const RECT& place) {
    if (font_ != nullptr) {
        useFont(resolution);
    }
    SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    layOut();
}

} // namespace tarvik::face
