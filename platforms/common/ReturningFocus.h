#pragma once

namespace tarvik::face {

/// Which control of one window is to have the focus again: one that lost it because it was
/// disabled, as soon as it is enabled, unless the user has moved the focus meanwhile.
///
/// Desktops give the focus of a disabled control to a neighbour or to nobody and leave it there.
/// `Id` is by what a face knows a control; an empty one stands for none.
template <class Id>
class ReturningFocus {
public:
    /// A control has been disabled. `before` had the focus until then, `now` has it since.
    void disabled(Id control, Id before, Id now) {
        if (before != control) {
            return;
        }
        // Who holds the focus for another and loses it in turn does not get it back.
        if (owner_ == Id{} || holder_ != control) {
            owner_ = control;
        }
        holder_ = now;
    }

    /// A control has been enabled while `now` has the focus. True when it is to have it again.
    bool enabled(Id control, Id now) {
        if (owner_ != control || control == Id{}) {
            return false;
        }
        owner_ = Id{};
        return holder_ == now;
    }

private:
    Id owner_{};  ///< lost the focus and is disabled still; empty for none
    Id holder_{}; ///< was given the focus instead
};

} // namespace tarvik::face
