// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Editors that leave the wheel to the page while they do not have the focus.
#include "widgets/wheelguard.h"

#include <QEvent>
#include <QWidget>

namespace
{

/// Answers the wheel events of one editor.
class WheelFilter : public QObject
{
public:
    explicit WheelFilter(QWidget *guarded)
        : QObject(guarded)
        , editor(guarded)
    {
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || editor->hasFocus()) {
            return false;
        }
        // An event that is kept here but not accepted goes on to the parent widget.
        event->ignore();
        return true;
    }

private:
    QWidget *const editor;
};

} // namespace

void WheelGuard::protect(QWidget *editor, QWidget *target)
{
    editor->setFocusPolicy(Qt::StrongFocus);
    (target != nullptr ? target : editor)->installEventFilter(new WheelFilter(editor));
}
