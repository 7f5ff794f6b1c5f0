#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMenu>
#include <QVariantMap>

namespace tarvik::face {

/// A menu that a panel shows by itself: told over the bus, entry by entry, and told again when it
/// changes. An entry's number is one more than the model's, so that it stays its own when others
/// come and go; 0 is the menu itself.
class ItemMenu : public QDBusVirtualObject {
public:
    static const QString path;

    /// The menu must outlive this.
    ItemMenu(QMenu& menu, QDBusConnection bus);
    ~ItemMenu() override;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<int> numbers() const;
    /// The action of that number; null for none.
    QAction* action(int number) const;
    QVariantMap properties(int number) const;
    QVariant layout(int number, int depth) const;
    QVariantList answer(const QDBusMessage& message);
    bool take(int number, const QString& what);

    QMenu& menu_;
    QDBusConnection bus_;
    unsigned revision_ = 1;
};

} // namespace tarvik::face
