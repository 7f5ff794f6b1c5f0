#include "linux/LinuxPlatform.h"

#include <QIcon>

#include <string>
#include <vector>

namespace tarvik {

namespace {

QIcon applicationIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/icons/tarvik-%1.png").arg(size), QSize(size, size));
    }
    return icon;
}

/// What the toolkit has left of the arguments, without the program's name.
std::vector<std::string> remainingArguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

} // namespace

LinuxPlatform::LinuxPlatform(int& argc, char** argv)
    : application_(argc, argv), program_(remainingArguments(argc, argv)), files_(program_.folder()),
      endSignals_([this] { desktop_.endSession(); }) {
    QApplication::setApplicationName(QStringLiteral("velmars-tarvik"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tarvik"));
    QApplication::setWindowIcon(applicationIcon());
}

Platform LinuxPlatform::with(ConnectionProvider& connections) {
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
