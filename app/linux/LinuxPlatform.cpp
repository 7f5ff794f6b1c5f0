#include "linux/LinuxPlatform.h"

#include <QIcon>
#include <QSessionManager>
#include <QStringList>

#include <algorithm>
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

/// The arguments as they were typed, without the program's name.
std::vector<std::string> typedArguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

} // namespace

LinuxPlatform::LinuxPlatform(int argc, char** argv)
    : onlyName_(std::min(argc, 1)), application_(onlyName_, argv),
      program_(typedArguments(argc, argv)), files_(program_.folder()),
      endSignals_([this] { desktop_.endSession(); }),
      loginWatch_([this](const LoginWatch::Release& release) { pause(release); }) {
    displayLoss_.finishWith([this] { desktop_.loseDisplay(); });
    QApplication::setApplicationName(QStringLiteral("velmars-tarvik"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tarvik"));
    QApplication::setWindowIcon(applicationIcon());
    // A session manager that starts the program again next time must not add a switch of its own.
    QStringList command;
    for (int i = 0; i < argc; ++i) {
        command << QString::fromLocal8Bit(argv[i]);
    }
    QObject::connect(&application_, &QGuiApplication::saveStateRequest, &application_,
                     [command](QSessionManager& manager) { manager.setRestartCommand(command); });
}

LinuxPlatform::~LinuxPlatform() {
    displayLoss_.workIsDone();
}

/// On the watch's thread.
void LinuxPlatform::pause(const LoginWatch::Release& release) {
    QMetaObject::invokeMethod(
        &application_,
        [this, release] {
            desktop_.pause();
            release();
        },
        Qt::QueuedConnection);
}

} // namespace tarvik
