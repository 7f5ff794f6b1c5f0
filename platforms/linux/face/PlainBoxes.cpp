#include "linux/face/PlainBoxes.h"

#include "linux/face/BoxText.h"
#include "linux/face/FaceText.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>

#include <algorithm>
#include <array>

namespace tarvik::face {

namespace {

/// What the toolkit says about a file, and how it goes on behind the name. A name may break lines,
/// too: it is told in one.
struct ToolkitText {
    QString name;
    QString end;
};

/// How such texts end, as far as they have lines of their own.
const std::array ends{
    QStringLiteral("\nDo you want to replace it?"),
    QStringLiteral("\nDo you want to delete it anyway?"),
    QStringLiteral("\nFile not found.\nPlease verify the correct file name was given."),
    QStringLiteral("\nDirectory not found.\nPlease verify the correct directory name was given."),
};

ToolkitText toolkitText(const QString& text) {
    // One about a name that cannot be used begins with a line in bold. No name holds a slash, so
    // that this end of it is none of a name.
    const QString bold = QStringLiteral("<b>");
    const QString boldEnd = QStringLiteral("</b><p>");
    const qsizetype place = text.lastIndexOf(boldEnd);
    if (text.startsWith(bold) && place >= 0) {
        return {.name = text.mid(bold.size(), place - bold.size()),
                .end = QLatin1Char('\n') + text.mid(place + boldEnd.size())};
    }
    const auto end = std::find_if(ends.begin(), ends.end(),
                                  [&](const QString& each) { return text.endsWith(each); });
    return end == ends.end() ? ToolkitText{.name = text, .end = {}}
                             : ToolkitText{.name = text.chopped(end->size()), .end = *end};
}

void makePlain(QMessageBox& box) {
    box.setTextFormat(Qt::PlainText);
    const ToolkitText text = toolkitText(box.text());
    box.setText(boxText(entered(shownName(text.name) + text.end)));
}

bool isProgramsOwn(const QMessageBox& box) {
    return box.objectName() == shown(programsBox);
}

} // namespace

PlainBoxes::PlainBoxes() {
    qApp->installEventFilter(this);
}

bool PlainBoxes::eventFilter(QObject* watched, QEvent* event) {
    // Once in a window's life, before it is measured and shown; a tool tip is polished while it is
    // made, and gets its text later.
    if (event->type() == QEvent::Polish) {
        auto* box = qobject_cast<QMessageBox*>(watched);
        if (box != nullptr && !isProgramsOwn(*box)) {
            makePlain(*box);
        } else if (watched->inherits("QTipLabel")) {
            static_cast<QLabel*>(watched)->setTextFormat(Qt::PlainText);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvik::face
