// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A menu of what the buttons of a field do.
#include "widgets/buttonmenu.h"

#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

namespace
{

/// What the button says; its tool tip where it shows an icon only.
QString textOf(const QPushButton &button)
{
    return button.text().isEmpty() ? button.toolTip() : button.text().trimmed();
}

} // namespace

bool ButtonMenu::exec(const QPoint &place, const QList<QPushButton *> &buttons, QLineEdit *line)
{
    QList<QAction *> entries;
    QList<QPointer<QPushButton>> shown;
    // The page may go while its menu is open, and takes the menu with it.
    const QPointer<QMenu> menu(line == nullptr ? new QMenu(buttons.first()->window())
                                               : line->createStandardContextMenu());
    for (QPushButton *const button : buttons) {
        if (!button->isVisible()) {
            continue;
        }
        auto *const entry = new QAction(button->icon(), textOf(*button), menu);
        entry->setEnabled(button->isEnabled());
        entries.append(entry);
        shown.append(button);
    }
    if (entries.isEmpty()) {
        delete menu;
        return false;
    }
    QAction *const first = menu->actions().value(0);
    menu->insertActions(first, entries);
    if (first != nullptr) {
        menu->insertSeparator(first);
    }
    const QPointer<QPushButton> chosen = shown.value(entries.indexOf(menu->exec(place)));
    // Before the button, which may take its page, the line and itself away.
    delete menu;
    if (chosen != nullptr) {
        chosen->click();
    }
    return true;
}
