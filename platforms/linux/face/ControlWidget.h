#pragma once

#include "common/ControlPeer.h"
#include "common/ReturningFocus.h"
#include "controls/Control.h"
#include "linux/face/Handle.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>

namespace tarvik::face {

/// The peer of one control: a widget, or none for a control that is not seen.
class ControlWidget : public ControlPeer {
public:
    /// `widget` belongs to its parent; null for a control that is not seen.
    ControlWidget(Control& control, QWidget* widget, FaceContext& context);

    QWidget* widget() const { return widget_; }
    std::uint32_t handle() const override { return handle_.number(); }

    /// The width that an item of so many characters needs; 0: what the widget itself says.
    virtual int widthFor(int characters) const;
    /// The user has left the control for another one of its window.
    virtual void onLeave() {}

    /// Where the focus goes when the control is enabled again; shared by all of one window, which
    /// outlive none of them.
    void shareFocus(ReturningFocus<QWidget*>& focus) { focus_ = &focus; }
    /// Runs whatever shows or hides the widget, for one whose room comes and goes with it.
    void changeRoomBy(std::function<void(const std::function<void()>& change)> run) {
        changeRoom_ = std::move(run);
    }

private:
    bool refreshShared(Property changed) final;
    void showEnabled();
    void showVisible();

    QPointer<QWidget> widget_;
    ReturningFocus<QWidget*>* focus_ = nullptr;
    std::function<void(const std::function<void()>&)> changeRoom_;
    Handle handle_;
};

/// The peer for a control of any kind; null for a kind that is only shown when it is opened.
std::unique_ptr<ControlWidget> makeControlWidget(Control& control, QWidget& parent,
                                                 FaceContext& context);

// One maker for each kind.
std::unique_ptr<ControlWidget> makeLabel(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeTextBox(Control&, QWidget&, FaceContext&);
/// For a text box of several lines.
std::unique_ptr<ControlWidget> makeTextArea(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeOptionButton(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeListView(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeCheckBox(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeCommandButton(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeComboBox(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeChart(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeProgressBar(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeFrame(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makePicture(Control&, QWidget&, FaceContext&);
std::unique_ptr<ControlWidget> makeTimer(Control&, QWidget&, FaceContext&);

} // namespace tarvik::face
