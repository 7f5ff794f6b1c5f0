#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QWidget>

#include <set>
#include <string>
#include <vector>

class QMessageBox;

namespace tarvik::scenarios {

/// Looks at the windows as a person does and notes what is wrong with them.
class QtEyes : public QObject {
public:
    QtEyes();

    /// The user acts in that window from now on; null: in none.
    void userActsIn(QWidget* window) { actor_ = window; }
    /// The user gives windows other sizes: how large they are now is how they have to stay.
    void acceptSizes() { compareSizes(false); }

    /// Looks at what must hold whenever everything that waited was handled: nothing but the user
    /// changes the size of a window, and the window he works in has the keyboard somewhere.
    void look();
    /// Looks at a box that has just opened: it stands before the window that asked.
    void lookAtBox(const QMessageBox& box);

    /// Everything noted since the last call, and what is wrong with the windows that are seen now
    /// and were painted since: texts that are cut, and disabled ones that do not look so. Empty
    /// when nothing is.
    std::string complaints();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Known {
        QPointer<QWidget> window;
        QSize size;
        bool hasPlanLine = false;
    };

    void compareSizes(bool complain);
    std::vector<QWidget*> windowsThatMayAsk() const;

    std::vector<Known> known_;
    QPointer<QWidget> actor_;
    QPointer<QWidget> active_;         ///< the last one that was
    std::set<const QWidget*> painted_; ///< windows; some may be gone
    std::string noted_;
};

} // namespace tarvik::scenarios
