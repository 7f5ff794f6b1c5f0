#include "linux/face/PlainBoxes.h"

#include "linux/face/FaceText.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>

namespace tarvik::face {

namespace {

/// The toolkit's own text about a name that cannot be used begins with a line in bold. No name
/// holds a slash, so that this end of it is none of a name.
QString withoutBoldLine(QString text) {
    const QString begin = QStringLiteral("<b>");
    const QString end = QStringLiteral("</b><p>");
    const qsizetype place = text.lastIndexOf(end);
    if (text.startsWith(begin) && place >= 0) {
        text.replace(place, end.size(), QStringLiteral("\n"));
        text.remove(0, begin.size());
    }
    return text;
}

void makePlain(QMessageBox& box) {
    box.setTextFormat(Qt::PlainText);
    const QString text = withVisibleDirections(withoutBoldLine(box.text()));
    if (text != box.text()) {
        box.setText(text);
    }
}

} // namespace

PlainBoxes::PlainBoxes() {
    qApp->installEventFilter(this);
}

bool PlainBoxes::eventFilter(QObject* watched, QEvent* event) {
    // Once in a window's life, before it is measured and shown; a tool tip is polished while it is
    // made, and gets its text later.
    if (event->type() == QEvent::Polish) {
        if (auto* box = qobject_cast<QMessageBox*>(watched)) {
            makePlain(*box);
        } else if (watched->inherits("QTipLabel")) {
            static_cast<QLabel*>(watched)->setTextFormat(Qt::PlainText);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvik::face
