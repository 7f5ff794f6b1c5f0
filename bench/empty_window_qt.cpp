#include <QApplication>
#include <QTimer>
#include <QWidget>

/// The floor that the program is measured against: a window of the same size with nothing in it,
/// which wakes as often: every so many milliseconds, 100 unless told.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Empty window"));
    window.resize(660, 280);
    window.show();
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    constexpr int usual = 100;
    timer.start(argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : usual);
    return QApplication::exec();
}
