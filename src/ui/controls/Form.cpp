#include "ui/controls/Form.h"

#include "ports/Desktop.h"
#include "ports/Platform.h"

#include <algorithm>

namespace tarvik {

Form::Form(std::string name, std::string caption)
    : name_(std::move(name)), caption_(std::move(caption)) {}

Control* Form::control(const std::string& name) const {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(),
                     [&](const Control* control) { return control->name() == name; });
    return found == controls_.end() ? nullptr : *found;
}

void Form::setLayout(LayoutNode root) {
    layout_ = column({std::move(root)});
}

void Form::load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    Initialize.raise();
    platform().desktop.realise(*this);
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
    platform().desktop.withdraw(*this);
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

} // namespace tarvik
