// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Keys that press buttons.
#include "widgets/buttonkeys.h"

#include <QPushButton>
#include <QShortcutEvent>

#include <utility>

namespace
{

/// The toolkit presses a button a tenth of a second after its key, for the eye. By then
/// whatever was typed next has come first, and the button may be one that must not be pressed
/// any more.
class PressAtOnce : public QObject
{
public:
    PressAtOnce(QPushButton *pressed, std::function<void()> callBefore)
        : QObject(pressed)
        , button(pressed)
        , before(std::move(callBefore))
    {
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Shortcut ||
            static_cast<QShortcutEvent *>(event)->isAmbiguous()) {
            return false;
        }
        if (before) {
            before();
        }
        button->click();
        return true;
    }

private:
    QPushButton *const button;
    const std::function<void()> before;
};

} // namespace

void setButtonKey(QPushButton *button, const QKeySequence &key, const std::function<void()> &before)
{
    button->setShortcut(key);
    button->installEventFilter(new PressAtOnce(button, before));
}
