// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Keys that press buttons.
#include "widgets/buttonkeys.h"

#include <QPushButton>
#include <QShortcutEvent>

namespace
{

/// The toolkit presses a button a tenth of a second after its key, for the eye. By then
/// whatever was typed next has come first, and the button may be one that must not be pressed
/// any more.
class PressAtOnce : public QObject
{
public:
    explicit PressAtOnce(QPushButton *pressed)
        : QObject(pressed)
        , button(pressed)
    {
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Shortcut ||
            static_cast<QShortcutEvent *>(event)->isAmbiguous()) {
            return false;
        }
        button->click();
        return true;
    }

private:
    QPushButton *const button;
};

} // namespace

void setButtonKey(QPushButton *button, const QKeySequence &key)
{
    button->setShortcut(key);
    button->installEventFilter(new PressAtOnce(button));
}
