#include "linux/face/TrayMenu.h"

#include "linux/face/FaceText.h"

#include <QAction>

namespace tarvik::face {

void fillMenu(QMenu& menu, const Menu& model, const std::function<void(int)>& choose) {
    identify(menu, model.name());
    const auto& entries = model.entries();
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const Menu::Entry& entry = entries[static_cast<std::size_t>(i)];
        QAction* action = entry.isSeparator() ? menu.addSeparator()
                                              : menu.addAction(withMnemonic(entry.caption, 0));
        action->setObjectName(shown(model.entryName()) + QString::number(i));
        action->setEnabled(entry.enabled);
        QObject::connect(action, &QAction::triggered, &menu, [choose, i] { choose(i); });
    }
}

TrayMenu::TrayMenu(Menu& model, const std::function<void(int)>& choose) : model_(&model) {
    fillMenu(*this, model, choose);
    model.attach(this);
}

TrayMenu::~TrayMenu() {
    detach();
}

void TrayMenu::detach() {
    if (model_ != nullptr) {
        model_->attach(nullptr);
        model_ = nullptr;
    }
}

void TrayMenu::refresh(Property changed) {
    if (changed != Property::Entries || model_ == nullptr) {
        return;
    }
    const auto& entries = model_->entries();
    const QList<QAction*> shownActions = actions();
    for (qsizetype i = 0; i < shownActions.size(); ++i) {
        const Menu::Entry& entry = entries[static_cast<std::size_t>(i)];
        if (!entry.isSeparator()) {
            shownActions[i]->setText(withMnemonic(entry.caption, 0));
            shownActions[i]->setEnabled(entry.enabled);
        }
    }
}

} // namespace tarvik::face
