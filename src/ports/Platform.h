#pragma once

#include "types/Current.h"

namespace tarvik {

class Clock;
class CommonDialogs;
class ConnectionProvider;
class Desktop;
class Files;
class InternetState;
class Locale;
class NotificationArea;
class PrivateProfile;
class Program;
class SingleInstance;
class Sockets;
class SystemErrorText;

/// Every service of the machine that the program uses, one reference each. The services outlive
/// the program's world.
struct Platform {
    ConnectionProvider& connections;
    SystemErrorText& systemErrors;
    InternetState& internet;
    Sockets& sockets;
    PrivateProfile& profile;
    Files& files;
    SingleInstance& instances;
    NotificationArea& notificationArea;
    CommonDialogs& dialogs;
    Desktop& desktop;
    Clock& clock;
    Locale& locale;
    Program& program;
};

/// The platform in use. One must be in place (see `Current`).
Platform& platform();

using PlatformScope = Current<Platform>;

} // namespace tarvik
