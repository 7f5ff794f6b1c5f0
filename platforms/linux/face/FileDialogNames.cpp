#include "linux/face/FileDialogNames.h"

#include "linux/face/FaceText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleOptionComboBox>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace tarvik::face {

namespace {

/// For lists of names; one that is changed in the list is taken as it stands.
class NameDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override {
        // The toolkit makes another line break of one.
        return shownName(value.userType() == QMetaType::QString
                             ? value.toString()
                             : QStyledItemDelegate::displayText(value, locale));
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const QString tip = index.data(Qt::ToolTipRole).toString();
        const QString told = shownName(tip);
        if (event->type() != QEvent::ToolTip || told == tip) {
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        }
        QToolTip::showText(event->globalPos(), told, view);
        return true;
    }
};

/// For the folder that a closed list shows.
class NameStyle : public QProxyStyle {
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (element != CE_ComboBoxLabel || combo == nullptr) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QStyleOptionComboBox told = *combo;
        told.currentText = shownName(combo->currentText);
        QProxyStyle::drawControl(element, &told, painter, widget);
    }
};

/// For the box of the name. A line that can be edited draws its own text only, so that another one
/// of the same looks is drawn in its place, as long as nobody writes there.
class NameBox : public QObject {
public:
    explicit NameBox(QLineEdit& box) : QObject(&box), box_(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QString told = shownName(box_.text());
        if (event->type() != QEvent::Paint || box_.hasFocus() || told == box_.text()) {
            return QObject::eventFilter(watched, event);
        }
        QLineEdit drawn(told);
        drawn.setFont(box_.font());
        drawn.setPalette(box_.palette());
        drawn.setStyle(box_.style());
        drawn.setEnabled(box_.isEnabled());
        drawn.setCursorPosition(0);
        drawn.resize(box_.size());
        // Into the box itself nothing but the box is drawn while it is being painted.
        QPixmap pixmap(box_.size() * box_.devicePixelRatioF());
        pixmap.setDevicePixelRatio(box_.devicePixelRatioF());
        pixmap.fill(Qt::transparent);
        drawn.render(&pixmap);
        QPainter(&box_).drawPixmap(0, 0, pixmap);
        return true;
    }

private:
    QLineEdit& box_;
};

} // namespace

void showNamesPlainly(QFileDialog& dialog) {
    auto* const delegate = new NameDelegate(&dialog);
    dialog.setItemDelegate(delegate);
    if (auto* folders = dialog.findChild<QComboBox*>(QStringLiteral("lookInCombo"))) {
        auto* const style = new NameStyle;
        style->setParent(folders);
        folders->setStyle(style);
        folders->setItemDelegate(delegate);
    }
    if (auto* places = dialog.findChild<QAbstractItemView*>(QStringLiteral("sidebar"))) {
        places->setItemDelegate(delegate);
    }
    if (auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        new NameBox(*name);
        if (QCompleter* completer = name->completer()) {
            completer->popup()->setItemDelegate(delegate);
        }
    }
}

} // namespace tarvik::face
