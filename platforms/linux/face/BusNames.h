#pragma once

#include <QDBusMessage>
#include <QString>

#include <optional>

namespace tarvik::face {

/// What the session bus itself knows of a name. It answers at once, unless it is halted: then
/// nothing is known after 50 ms. Where there is no session bus, no name is on it.
class BusNames {
public:
    static std::optional<bool> isOwned(const QString& name);
    /// The bus would start a program for a call to that name.
    static std::optional<bool> isStartable(const QString& name);

    /// A call to the bus itself.
    static QDBusMessage callToBus(const QString& method);
};

} // namespace tarvik::face
