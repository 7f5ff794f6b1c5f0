#include "controls/Form.h"

#include "ports/Desktop.h"

#include <algorithm>
#include <utility>

namespace tarvik {

Form::Form(const char* name, const char* caption) : ControlList(name), caption_(caption) {}

void Form::setLayout(LayoutNode root) {
    layout_ = column({std::move(root)});
}

void Form::load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    Initialize.raise();
    if (desktop_ != nullptr) {
        desktop_->realise(*this);
    }
}

bool Form::unload(UnloadMode mode) {
    if (!loaded_ || unloading_) {
        return false;
    }
    bool cancel = false;
    QueryUnload.raise(cancel, mode);
    if (cancel) {
        return false;
    }
    unloading_ = true;
    Unload.raise();
    unloading_ = false;
    loaded_ = false;
    visible_ = false;
    minimised_ = false;
    if (desktop_ != nullptr) {
        desktop_->withdraw(*this);
    }
    return true;
}

void Form::setVisible(bool visible) {
    if (visible) {
        load();
    }
    if (visible_ == visible && !(visible && minimised_)) {
        return;
    }
    visible_ = visible;
    minimised_ = false;
    if (view_ != nullptr) {
        view_->refreshVisibility();
    }
}

void Form::setMinimised(bool minimised) {
    if (minimised_ == minimised) {
        return;
    }
    minimised_ = minimised;
    if (view_ != nullptr) {
        view_->refreshVisibility();
    }
}

void Form::bringToFront() {
    if (view_ != nullptr) {
        view_->bringToFront();
    }
}

void Form::focusOn(Control& control) {
    if (view_ == nullptr || !control.enabled() || !takesKeys(control.kind())) {
        return;
    }
    const std::vector<Control*> seen = seenControlsInOrder(layout_);
    if (std::find(seen.begin(), seen.end(), &control) != seen.end()) {
        view_->focusOn(control);
    }
}

} // namespace tarvik
