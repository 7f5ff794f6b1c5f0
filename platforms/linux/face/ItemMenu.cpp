#include "linux/face/ItemMenu.h"

#include "linux/face/ItemTypes.h"
#include "linux/face/TrayMenu.h"

#include <QAction>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEvent>
#include <QStringList>

#include <utility>

namespace tarvik::face {

namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

/// An underscore marks the mnemonic letter here, as an ampersand does in the toolkit.
QString labelOf(const QAction& action) {
    const auto ampersand = QString(QChar(QChar::Null)); // stands for one that is meant as it stands
    QString label = action.text();
    label.replace(QStringLiteral("_"), QStringLiteral("__"));
    label.replace(QStringLiteral("&&"), ampersand);
    label.replace(QStringLiteral("&"), QStringLiteral("_"));
    label.replace(ampersand, QStringLiteral("&"));
    return label;
}

QVariantMap menuProperties() {
    return {{QStringLiteral("Version"), 3U},
            {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
            {QStringLiteral("Status"), QStringLiteral("normal")},
            {QStringLiteral("IconThemePath"), QStringList()}};
}

/// The argument of that place; none where the caller sent fewer.
QVariant argumentOf(const QDBusMessage& message, qsizetype place) {
    return message.arguments().value(place);
}

/// The list, which is of that type on the bus; an empty one where the caller sent anything else.
/// The library ends the program that reads what is not there.
template <class Type>
Type listOf(const QVariant& argument, QLatin1String type) {
    const auto list = argument.value<QDBusArgument>();
    return argument.canConvert<QDBusArgument>() && list.currentSignature() == type
               ? qdbus_cast<Type>(list)
               : Type();
}

} // namespace

const QString ItemMenu::path = QStringLiteral("/MenuBar");

ItemMenu::ItemMenu(QMenu& menu, QDBusConnection bus) : menu_(menu), bus_(std::move(bus)) {
    registerItemTypes();
    bus_.registerVirtualObject(path, this);
    menu_.installEventFilter(this);
}

ItemMenu::~ItemMenu() {
    bus_.unregisterObject(path);
}

QString ItemMenu::introspect(const QString&) const {
    return QStringLiteral(
        "<interface name=\"com.canonical.dbusmenu\">"
        "<property name=\"Version\" type=\"u\" access=\"read\"/>"
        "<property name=\"TextDirection\" type=\"s\" access=\"read\"/>"
        "<property name=\"Status\" type=\"s\" access=\"read\"/>"
        "<property name=\"IconThemePath\" type=\"as\" access=\"read\"/>"
        "<method name=\"GetLayout\"><arg type=\"i\" direction=\"in\"/>"
        "<arg type=\"i\" direction=\"in\"/><arg type=\"as\" direction=\"in\"/>"
        "<arg type=\"u\" direction=\"out\"/><arg type=\"(ia{sv}av)\" direction=\"out\"/></method>"
        "<method name=\"GetGroupProperties\"><arg type=\"ai\" direction=\"in\"/>"
        "<arg type=\"as\" direction=\"in\"/><arg type=\"a(ia{sv})\" direction=\"out\"/></method>"
        "<method name=\"GetProperty\"><arg type=\"i\" direction=\"in\"/>"
        "<arg type=\"s\" direction=\"in\"/><arg type=\"v\" direction=\"out\"/></method>"
        "<method name=\"Event\"><arg type=\"i\" direction=\"in\"/><arg type=\"s\" "
        "direction=\"in\"/>"
        "<arg type=\"v\" direction=\"in\"/><arg type=\"u\" direction=\"in\"/></method>"
        "<method name=\"EventGroup\"><arg type=\"a(isvu)\" direction=\"in\"/>"
        "<arg type=\"ai\" direction=\"out\"/></method>"
        "<method name=\"AboutToShow\"><arg type=\"i\" direction=\"in\"/>"
        "<arg type=\"b\" direction=\"out\"/></method>"
        "<method name=\"AboutToShowGroup\"><arg type=\"ai\" direction=\"in\"/>"
        "<arg type=\"ai\" direction=\"out\"/><arg type=\"ai\" direction=\"out\"/></method>"
        "<signal name=\"LayoutUpdated\"><arg type=\"u\"/><arg type=\"i\"/></signal>"
        "</interface>");
}

bool ItemMenu::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    if (message.interface() == propertiesInterface) {
        const QVariantMap all = menuProperties();
        if (message.member() == QStringLiteral("GetAll")) {
            return bus.send(message.createReply(QVariant(all)));
        }
        const QString name = argumentOf(message, 1).toString();
        if (message.member() == QStringLiteral("Get") && all.contains(name)) {
            return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(all[name]))));
        }
        return false;
    }
    static const QStringList known{
        QStringLiteral("GetLayout"),       QStringLiteral("GetGroupProperties"),
        QStringLiteral("GetProperty"),     QStringLiteral("Event"),
        QStringLiteral("EventGroup"),      QStringLiteral("AboutToShow"),
        QStringLiteral("AboutToShowGroup")};
    if (message.interface() != menuInterface || !known.contains(message.member())) {
        return false;
    }
    return bus.send(message.createReply(answer(message)));
}

QVariantList ItemMenu::answer(const QDBusMessage& message) {
    const QString method = message.member();
    const QVariant first = argumentOf(message, 0);
    if (method == QStringLiteral("GetLayout")) {
        return {revision_, layout(first.toInt(), argumentOf(message, 1).toInt())};
    }
    if (method == QStringLiteral("GetGroupProperties")) {
        // An empty list asks for all.
        QList<int> wanted = listOf<QList<int>>(first, QLatin1String("ai"));
        if (wanted.isEmpty()) {
            wanted = numbers();
            wanted.prepend(0);
        }
        QList<ItemMenuProperties> group;
        for (const int number : wanted) {
            group.append(ItemMenuProperties{number, properties(number)});
        }
        return {QVariant::fromValue(group)};
    }
    if (method == QStringLiteral("GetProperty")) {
        const QVariant value = properties(first.toInt()).value(argumentOf(message, 1).toString());
        return {QVariant::fromValue(QDBusVariant(value.isValid() ? value : QString()))};
    }
    if (method == QStringLiteral("Event")) {
        take(first.toInt(), argumentOf(message, 1).toString());
        return {};
    }
    if (method == QStringLiteral("EventGroup")) {
        QList<int> unknown;
        for (const ItemMenuEvent& event :
             listOf<QList<ItemMenuEvent>>(first, QLatin1String("a(isvu)"))) {
            if (!take(event.number, event.what)) {
                unknown.append(event.number);
            }
        }
        return {QVariant::fromValue(unknown)};
    }
    if (method == QStringLiteral("AboutToShow")) {
        return {false}; // what changes is told when it does
    }
    return {QVariant::fromValue(QList<int>()), QVariant::fromValue(QList<int>())};
}

QList<int> ItemMenu::numbers() const {
    QList<int> all;
    for (const QAction* const entry : menu_.actions()) {
        all.append(numberOf(*entry) + 1);
    }
    return all;
}

QAction* ItemMenu::action(int number) const {
    return menu_.actions().value(numbers().indexOf(number));
}

QVariantMap ItemMenu::properties(int number) const {
    if (number == 0) {
        return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    }
    const QAction* const entry = action(number);
    if (entry == nullptr) {
        return {};
    }
    if (entry->isSeparator()) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    return {{QStringLiteral("label"), labelOf(*entry)},
            {QStringLiteral("enabled"), entry->isEnabled()}};
}

QVariant ItemMenu::layout(int number, int depth) const {
    ItemMenuLayout result{number, properties(number), {}};
    if (number == 0 && depth != 0) {
        for (const int child : numbers()) {
            result.children.append(layout(child, 0));
        }
    }
    return QVariant::fromValue(result);
}

bool ItemMenu::take(int number, const QString& what) {
    QAction* const entry = action(number);
    if (entry != nullptr && what == QStringLiteral("clicked")) {
        entry->trigger();
    }
    return number == 0 || entry != nullptr;
}

bool ItemMenu::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &menu_ && (type == QEvent::ActionChanged || type == QEvent::ActionAdded ||
                              type == QEvent::ActionRemoved)) {
        QDBusMessage changed =
            QDBusMessage::createSignal(path, menuInterface, QStringLiteral("LayoutUpdated"));
        changed << ++revision_ << 0;
        bus_.send(changed);
    }
    return false;
}

} // namespace tarvik::face
