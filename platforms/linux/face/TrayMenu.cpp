#include "linux/face/TrayMenu.h"

#include "linux/face/FaceText.h"

#include <QAction>

#include <utility>

namespace tarvik::face {

void fillMenu(QMenu& menu, const Menu& model, const std::function<void(int)>& choose) {
    identify(menu, model.name());
    for (const int number : model.order()) {
        const Menu::Entry& entry = model.entry(number);
        QAction* action = entry.isSeparator() ? menu.addSeparator()
                                              : menu.addAction(withMnemonic(entry.caption, 0));
        action->setObjectName(shown(model.entryName()) + QString::number(number));
        action->setData(number);
        action->setEnabled(entry.enabled);
        QObject::connect(action, &QAction::triggered, &menu, [choose, number] { choose(number); });
    }
}

int numberOf(const QAction& entry) {
    return entry.data().toInt();
}

TrayMenu::TrayMenu(Menu& model, std::function<void(int)> choose)
    : model_(&model), choose_(std::move(choose)) {
    fillMenu(*this, model, choose_);
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
    const QList<QAction*> shownActions = actions();
    if (shownActions.size() != static_cast<qsizetype>(model_->entries().size())) {
        clear();
        fillMenu(*this, *model_, choose_);
        return;
    }
    for (QAction* const action : shownActions) {
        const Menu::Entry& entry = model_->entry(numberOf(*action));
        if (!entry.isSeparator()) {
            action->setText(withMnemonic(entry.caption, 0));
            action->setEnabled(entry.enabled);
        }
    }
}

} // namespace tarvik::face
