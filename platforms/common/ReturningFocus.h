#pragma once

namespace tarvik::face {

/// Which control of one window is to have the focus again: one that lost it because it was
/// disabled, as soon as it is enabled, unless the user has moved the focus meanwhile.
///
/// Desktops give the focus of a disabled control to a neighbour or to nobody and leave it there.
/// `Place` is by what a face knows a control; an empty one stands for none.
template <class Place>
class ReturningFocus {
public:
    /// A control has been disabled. `before` had the focus until then, `now` has it since.
    void disabled(Place control, Place before, Place now) {
        if (before != control) {
            return;
        }
        // Who holds the focus for another and loses it in turn does not get it back.
        if (owner_ == Place{} || holder_ != control) {
            owner_ = control;
        }
        holder_ = now;
    }

    /// A control has been enabled while `now` has the focus. True when it is to have it again.
    bool enabled(Place control, Place now) {
        if (owner_ != control || control == Place{}) {
            return false;
        }
        owner_ = Place{};
        return holder_ == now;
    }

private:
    Place owner_{};  ///< lost the focus and is disabled still; empty for none
    Place holder_{}; ///< was given the focus instead
};

} // namespace tarvik::face
