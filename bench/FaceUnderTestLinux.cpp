#include "FaceUnderTest.h"
#include "linux/face/QtCanvas.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <fcntl.h>
#include <unistd.h>

namespace tarvik {

void onSheet(const std::function<void(Canvas&)>& work) {
    static const bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = offscreen ? 1 : 0;
    static char name[] = "bench_work";
    static char* arguments[] = {name, nullptr};
    static const QGuiApplication application(count, arguments);
    static QImage image(sheetWidth, sheetHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    face::QtCanvas canvas(painter, image.size(), QGuiApplication::font());
    work(canvas);
}

void writeAndFlush(const std::string& path, std::string_view bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written <= 0) {
            break;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    fsync(file);
    close(file);
}

bool writeKeyBySystem(const std::string&, const std::string&, const std::string&,
                      const std::string&) {
    return false;
}

} // namespace tarvik
