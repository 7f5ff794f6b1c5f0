#include "Machine.h"

namespace tarvik {

Platform Machine::with(ConnectionProvider& connections) {
    return {.connections = connections,
            .systemErrors = systemErrors_,
            .internet = internet_,
            .sockets = sockets_,
            .profile = profile_,
            .files = files_,
            .instances = instances_,
            .notificationArea = notificationArea_,
            .dialogs = dialogs_,
            .desktop = desktop_,
            .clock = clock_,
            .locale = locale_,
            .program = program_};
}

} // namespace tarvik
