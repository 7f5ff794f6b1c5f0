#pragma once

#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <array>

namespace tarvik {

/// Keeps what the toolkit says about its platform without a display out of the output of tests: it
/// comes with every window and tells nothing about the program. Everything else is written as ever.
inline void quietToolkit() {
    static constexpr std::array<const char*, 5> known{
        "This plugin does not support propagateSizeHints()",
        "This plugin does not support raise()",
        "This plugin does not support grabbing the keyboard",
        "QObject::connect: No such signal "
        "QPlatformNativeInterface::systemTrayWindowChanged(QScreen*)",
        "QStandardPaths: XDG_RUNTIME_DIR not set",
    };
    static QtMessageHandler before = nullptr;
    before = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            const bool isKnown = std::any_of(known.begin(), known.end(), [&](const char* line) {
                return text.startsWith(QLatin1String(line));
            });
            if (!isKnown) {
                before(type, context, text);
            }
        });
}

} // namespace tarvik
