#include "linux/face/ItemTypes.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

#include <cstddef>

namespace tarvik::face {

void registerItemTypes() {
    qDBusRegisterMetaType<ItemPixmap>();
    qDBusRegisterMetaType<QList<ItemPixmap>>();
    qDBusRegisterMetaType<ItemToolTip>();
    qDBusRegisterMetaType<ItemMenuLayout>();
    qDBusRegisterMetaType<ItemMenuProperties>();
    qDBusRegisterMetaType<QList<ItemMenuProperties>>();
    qDBusRegisterMetaType<ItemMenuEvent>();
    qDBusRegisterMetaType<QList<ItemMenuEvent>>();
    qDBusRegisterMetaType<QList<int>>();
}

QList<ItemPixmap> pixmapsOf(const QIcon& icon) {
    QList<ItemPixmap> pixmaps;
    for (const QSize size : icon.availableSizes()) {
        const QImage image = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        QByteArray points(image.sizeInBytes(), '\0');
        qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, points.data());
        pixmaps.append(ItemPixmap{image.width(), image.height(), points});
    }
    return pixmaps;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.points;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.points;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemToolTip& tip) {
    argument.beginStructure();
    argument << tip.iconName << tip.pixmaps << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemToolTip& tip) {
    argument.beginStructure();
    argument >> tip.iconName >> tip.pixmaps >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuLayout& layout) {
    argument.beginStructure();
    argument << layout.number << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const QVariant& child : layout.children) {
        argument << QDBusVariant(child);
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuLayout& layout) {
    argument.beginStructure();
    argument >> layout.number >> layout.properties;
    argument.beginArray();
    layout.children.clear();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(QVariant::fromValue(
            qdbus_cast<ItemMenuLayout>(child.variant().value<QDBusArgument>())));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuProperties& properties) {
    argument.beginStructure();
    argument << properties.number << properties.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuProperties& properties) {
    argument.beginStructure();
    argument >> properties.number >> properties.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemMenuEvent& event) {
    argument.beginStructure();
    argument << event.number << event.what << QDBusVariant(QString()) << 0U;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemMenuEvent& event) {
    QDBusVariant data;
    unsigned time = 0;
    argument.beginStructure();
    argument >> event.number >> event.what >> data >> time;
    argument.endStructure();
    return argument;
}

} // namespace tarvik::face
