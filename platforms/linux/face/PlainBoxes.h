#pragma once

#include <QObject>

namespace tarvik::face {

/// Every box and every tool tip that the toolkit itself puts up shows its text as it stands, and a
/// box fits the screen. Names of files stand in them, and a name may hold what the toolkit would
/// take for markup: a question before overwriting could then seem to tell another name. Works while
/// it lives.
class PlainBoxes : public QObject {
public:
    PlainBoxes();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarvik::face
