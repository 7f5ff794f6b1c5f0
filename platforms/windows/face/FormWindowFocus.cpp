#include "windows/face/FormWindow.h"

#include <algorithm>
#include <utility>

namespace tarvik::face {

// The system takes the focus away from a control that is disabled or hidden, and gives it to
// nobody: no key reaches the form then. The form therefore knows who had it, keeps it itself
// meanwhile, and gives it back.

bool FormWindow::tookFocus(const ControlWindow& control) {
    if (detached_) {
        return false;
    }
    const ControlWindow* const left = focusOrder_.empty() ? nullptr : focusOrder_.front();
    setHolder(control);
    const bool came = !std::exchange(arrivalKnown_, true) || left != &control;
    if (left != nullptr && left != &control) {
        tellLeaving(*left);
    }
    // Whoever was told of the leaving may have moved the focus on, disabled the control, or ended
    // the form.
    return came && !detached_ && focusOrder_.front() == &control && canTake(control.window());
}

void FormWindow::setHolder(const ControlWindow& control) {
    std::erase(focusOrder_, &control);
    focusOrder_.insert(focusOrder_.begin(), &control);
}

/// Told is it when the focus has come to another control of the form: what the window as a whole
/// does is no leaving, and a handler may change whatever it likes by then. One that was hidden or
/// disabled has not been left by the user.
void FormWindow::tellLeaving(const ControlWindow& left) {
    if (tellsLeaving_ && canTake(left.window())) {
        tellsLeaving_ = false;
        childOf(&left.control())->onLeave();
        tellsLeaving_ = true;
    }
}

void FormWindow::focusOn(Control& control) {
    if (form_.visible() && !form_.minimised() && !changePending_) {
        moveFocusTo(control);
    } else {
        focusWanted_ = &control;
    }
}

void FormWindow::moveFocusTo(const Control& control) {
    const ControlWindow* const own = childOf(&control);
    if (own == nullptr || !canTake(own->window())) {
        return;
    }
    if (GetActiveWindow() == window_ && IsIconic(window_) == FALSE) {
        moveFocus(window_, own->window());
    } else {
        setHolder(*own); // it is given when the window comes back
    }
}

bool FormWindow::canTake(HWND control) const {
    // What is seen of a window that is hidden itself is told by the styles alone.
    return (GetWindowLongA(control, GWL_STYLE) & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE &&
           GetParent(control) == window_;
}

/// Who has the focus, or gets it as soon as it can be used: the last one that is seen.
const ControlWindow* FormWindow::focusHolder() const {
    const auto seen =
        std::find_if(focusOrder_.begin(), focusOrder_.end(), [](const ControlWindow* each) {
            return (GetWindowLongA(each->window(), GWL_STYLE) & WS_VISIBLE) != 0;
        });
    return seen == focusOrder_.end() ? nullptr : *seen;
}

void FormWindow::moveFocus(HWND form, HWND control) {
    if ((SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0) {
        SetFocus(control); // the system's rules for dialogs would select all of its text
    } else {
        DefDlgProcA(form, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    }
}

/// Where the keyboard belongs: to who has it, to nobody but the form while that one is disabled,
/// or, in a window that has just been opened, to who can take it.
HWND FormWindow::placeOfFocus() const {
    const ControlWindow* holder = focusHolder();
    if (holder != nullptr && canTake(holder->window())) {
        return holder->window();
    }
    if (arrivalKnown_) {
        return window_;
    }
    const ControlWindow* first = childOf(form_.initialFocus());
    const HWND place = first != nullptr && canTake(first->window())
                           ? first->window()
                           : GetNextDlgTabItem(window_, nullptr, FALSE);
    return place != nullptr && canTake(place) ? place : window_;
}

void FormWindow::giveFocus() {
    const HWND place = placeOfFocus();
    if (place != window_) {
        moveFocus(window_, place);
    } else if (GetFocus() != window_) {
        SetFocus(window_);
    }
}

void FormWindow::focusMayMove() {
    if (detached_ || window_ == nullptr || GetActiveWindow() != window_ ||
        IsIconic(window_) != FALSE) {
        return; // it is given when the window comes back
    }
    const HWND focus = GetFocus();
    const bool lost =
        focus == nullptr || focus == window_ || (GetParent(focus) == window_ && !canTake(focus));
    if (lost) {
        giveFocus();
    }
}

void FormWindow::onActivation(WPARAM how) {
    const bool minimised = HIWORD(how) != 0;
    if (LOWORD(how) != WA_INACTIVE && !minimised) {
        context_.active = &form_;
        giveFocus();
    }
}

void FormWindow::onNextControl(WPARAM which, bool isControl) {
    if (isControl) {
        passOn(WM_NEXTDLGCTL, which, TRUE);
        return;
    }
    // From the form itself on goes where the focus would be.
    const ControlWindow* holder = focusHolder();
    const HWND focus = GetFocus();
    const HWND from = focus != window_ && focus != nullptr ? focus
                      : holder != nullptr                  ? holder->window()
                                                           : nullptr;
    const HWND next = GetNextDlgTabItem(window_, from, which != 0 ? TRUE : FALSE);
    if (next != nullptr) {
        passOn(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
}

} // namespace tarvik::face
