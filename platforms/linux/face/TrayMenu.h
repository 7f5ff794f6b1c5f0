#pragma once

#include "controls/Controls.h"

#include <QMenu>

#include <functional>

namespace tarvik::face {

/// Puts an action for each entry of the model into the menu; `choose` gets the chosen one's number.
void fillMenu(QMenu& menu, const Menu& model, const std::function<void(int)>& choose);

/// The number in the model of an entry of such a menu.
int numberOf(const QAction& entry);

/// A menu of the model that a panel shows by itself, and that follows the model meanwhile.
class TrayMenu : public QMenu, public ControlView {
public:
    /// `choose` gets the number of a chosen entry.
    TrayMenu(Menu& model, std::function<void(int)> choose);
    ~TrayMenu() override;

    /// Ends all connection with the model; the menu may live a little longer.
    void detach();
    void refresh(Property changed) override;

private:
    Menu* model_;
    std::function<void(int)> choose_;
};

} // namespace tarvik::face
