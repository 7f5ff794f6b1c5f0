#pragma once

#include "common/FaceContext.h"
#include "ui/controls/Control.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace tarvik::face {

/// The picture of one control. It keeps no state of its own: each refresh asks the control.
class ControlWidget : public ControlView {
public:
    /// `widget` belongs to its parent; null for a control that is not seen.
    ControlWidget(Control& control, QWidget* widget, FaceContext& context);
    ~ControlWidget() override;
    ControlWidget(const ControlWidget&) = delete;
    ControlWidget& operator=(const ControlWidget&) = delete;

    void refresh(Property changed) final;

    Control& control() const { return control_; }
    QWidget* widget() const { return widget_; }

    /// The width that an item of so many characters needs; 0: what the widget itself says.
    virtual int widthFor(int characters) const;

protected:
    /// Shows a property that not all controls have.
    virtual void refreshOwn(Property changed) = 0;

    /// Hands what the user did to the model, unless it is the echo of a refresh or the program is
    /// busy; the picture then follows the model, whatever became of it.
    template <class Action>
    void fromUser(Property affected, Action&& action) {
        if (refreshing_) {
            return;
        }
        if (context_.takesInput()) {
            action();
        }
        if (!detached_) {
            refresh(affected);
        }
    }

    FaceContext& context() const { return context_; }

    /// Ends all connection with the control; the widget may live a little longer.
    friend class FormWindow;
    void detach();

private:
    /// Shows a property that every widget has; false for any other.
    bool refreshShared(Property changed);

    Control& control_;
    QPointer<QWidget> widget_;
    FaceContext& context_;
    bool refreshing_ = false;
    bool detached_ = false;
};

/// The picture for a control of any kind; null for a kind that is only shown when it is opened.
std::unique_ptr<ControlWidget> makeControlWidget(Control& control, QWidget& parent,
                                                 FaceContext& context);

// One maker for each kind.
std::unique_ptr<ControlWidget> makeLabel(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeTextBox(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeCheckBox(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeCommandButton(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeComboBox(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeFrame(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makePicture(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeTimer(Control&, QWidget&, FaceContext&);

} // namespace tarvik::face
