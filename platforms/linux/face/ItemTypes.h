#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QIcon>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace tarvik::face {

// What panels and items of the StatusNotifier kind tell each other, as it goes over the bus.

/// Of every object on the bus.
inline const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// An image of an icon: 32 bits for each point, alpha first, in the order of the network.
struct ItemPixmap {
    int width = 0;
    int height = 0;
    QByteArray points;
};

struct ItemToolTip {
    QString iconName;
    QList<ItemPixmap> pixmaps;
    QString title;
    QString text;
};

/// An entry of a menu with those below it.
struct ItemMenuLayout {
    int number = 0;
    QVariantMap properties;
    QVariantList children; ///< each an ItemMenuLayout
};

struct ItemMenuProperties {
    int number = 0;
    QVariantMap properties;
};

/// Something that happened to an entry of a menu.
struct ItemMenuEvent {
    int number = 0;
    QString what;
};

/// Makes these types known to the bus; may be called again.
void registerItemTypes();

/// The icon in the sizes that panels use.
QList<ItemPixmap> pixmapsOf(const QIcon& icon);

QDBusArgument& operator<<(QDBusArgument& argument, const ItemPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemToolTip& tip);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuEvent& event);

} // namespace tarvik::face
