#pragma once

#include "common/FaceContext.h"
#include "controls/Control.h"

#include <cstdint>
#include <utility>

namespace tarvik::face {

/// What shows one control on any desktop. It keeps no state of the control's: each refresh asks
/// the control. What a refresh does to the toolkit's own widget comes back as if the user had done
/// it; that echo is stopped here.
class ControlPeer : public ControlView {
public:
    ControlPeer(Control& control, FaceContext& context) : control_(control), context_(context) {
        control_.attach(this);
    }
    ~ControlPeer() override { detach(); }
    ControlPeer(const ControlPeer&) = delete;
    ControlPeer& operator=(const ControlPeer&) = delete;

    void refresh(Property changed) final {
        if (resting_) {
            missed_ |= bitOf(changed);
            return;
        }
        const bool nested = refreshing_;
        refreshing_ = true;
        if (!refreshShared(changed)) {
            refreshOwn(changed);
        }
        refreshing_ = nested;
    }

    Control& control() const { return control_; }

    /// From here on nobody sees what shows the control: it follows no change.
    void rest() { resting_ = true; }

    /// It is seen again, and shows what has changed meanwhile.
    void wake() {
        resting_ = false;
        const std::uint32_t missed = std::exchange(missed_, 0);
        for (int number = 0; missed >> number != 0; ++number) {
            const auto property = static_cast<Property>(number);
            if ((missed & bitOf(property)) != 0) {
                refresh(property);
            }
        }
    }

    /// Ends all connection with the control; what shows it may live a little longer.
    void detach() {
        if (!detached_) {
            detached_ = true;
            control_.attach(nullptr);
        }
    }

protected:
    /// Shows a property that all controls have; false for any other.
    virtual bool refreshShared(Property changed) = 0;
    /// Shows a property that not all controls have.
    virtual void refreshOwn(Property changed) = 0;

    /// Hands what the user did to the model, unless it is an echo or the program is busy; the
    /// peer then follows the model, whatever became of it.
    template <class Action>
    void fromUser(Property affected, Action&& action) {
        if (refreshing_ || detached_) {
            return;
        }
        if (context_.takesInput()) {
            const AskingScope asking(context_, &control_.list());
            action();
        }
        if (!detached_) {
            refresh(affected);
        }
    }

    FaceContext& context() const { return context_; }

private:
    static constexpr std::uint32_t bitOf(Property property) {
        return std::uint32_t{1} << static_cast<int>(property);
    }

    Control& control_;
    FaceContext& context_;
    bool refreshing_ = false;
    bool detached_ = false;
    bool resting_ = false;
    std::uint32_t missed_ = 0; ///< what has changed since it rests: a bit for each property
};

} // namespace tarvik::face
