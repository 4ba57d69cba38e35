// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: menus of what the mouse is on, or the focus.
#include "app/Tavenor.h"

#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"

#include <QMenu>

namespace
{

// The entry of the panel at this place; null beside the entries.
const ListButtonForm *entryAt(const QWidget &panel, const QPoint &place)
{
    const QWidget *widget = panel.childAt(place);
    while (widget != nullptr && qobject_cast<const ListButtonForm *>(widget) == nullptr) {
        widget = widget->parentWidget();
    }
    return qobject_cast<const ListButtonForm *>(widget);
}

// Adds what pressing the button does.
void addButton(QMenu &menu, const QPushButton *button)
{
    QAction *const entry = menu.addAction(button->icon(), button->text());
    entry->setShortcut(button->shortcut());
    entry->setEnabled(button->isEnabled());
    QObject::connect(entry, &QAction::triggered, button, &QPushButton::click);
}

} // namespace

void Tavenor::connectMenus()
{
    ui->listFrame->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui->listFrame, &QWidget::customContextMenuRequested, this, &Tavenor::showTableMenu);
}

void Tavenor::showTableMenu(const QPoint &place)
{
    QMenu menu(this);
    const ListButtonForm *const entry = entryAt(*ui->listFrame, place);
    if (entry != nullptr && entry->isFilter()) {
        fillFilterMenu(menu, *entry);
    } else {
        fillTableMenu(menu, entry == nullptr ? QString() : entry->tableName());
    }
    if (!menu.isEmpty()) {
        menu.exec(ui->listFrame->mapToGlobal(place));
    }
}

void Tavenor::fillTableMenu(QMenu &menu, const QString &table)
{
    if (!table.isEmpty()) {
        addForTable(menu, ui->actionExport, table);
        addForTable(menu, ui->actionExport_To_File, table);
        menu.addSeparator();
        addForTable(menu, ui->actionChange_Table_Icon, table);
        addForTable(menu, ui->actionClear_Selected_List, table);
        addForTable(menu, ui->actionRemove_Table, table);
    }
    if (!administratorMode) {
        return;
    }
    menu.addSeparator();
    for (QAction *const command : secondDoor.mid(1)) {
        const bool isForTable =
            command->text() == ui->actionAdd_Field->text() ||
            command->text() == ui->actionExport_Selected_Tables_Structure->text();
        if (isForTable) {
            addForTable(menu, command, table);
        } else {
            menu.addAction(command);
        }
    }
}

void Tavenor::addForTable(QMenu &menu, QAction *command, const QString &table)
{
    if (!command->isVisible()) {
        return;
    }
    QAction *const entry = menu.addAction(command->icon(), command->text());
    entry->setShortcut(command->shortcut());
    entry->setEnabled(command->isEnabled() && db->isOpen());
    // Only now: looking at a menu must not take the page away. What is asked then names the table.
    connect(entry, &QAction::triggered, this, [this, command, table] {
        if (!table.isEmpty() && table != currentTable) {
            changeTable(table);
        }
        command->trigger();
    });
}

void Tavenor::fillFilterMenu(QMenu &menu, const ListButtonForm &button)
{
    const QString table = button.savedFilterTable();
    const QString name = button.savedFilterName();
    QAction *const load = menu.addAction(ui->pbSaveFilters->icon(), ui->pbSaveFilters->text());
    connect(load, &QAction::triggered, this,
            [this, table, name] { changeTableAndFilter(table, name); });
    const QAction *const command = ui->actionDeleteFilter;
    if (command->isVisible()) {
        QAction *const remove = menu.addAction(command->icon(), command->text());
        remove->setEnabled(command->isEnabled());
        connect(remove, &QAction::triggered, this, [this, name] { deleteSavedFilter(name); });
    }
}

void Tavenor::showListMenu(int row, const QPoint &place)
{
    if (row >= 0) {
        ui->userListWidget->setCurrentRow(row);
        showHighlighted();
    }
    // A line without a title opens no record of its own, so nothing must happen to another one.
    execRecordMenu(place, row >= 0 && recordOfRow(row) != 0 && isLineOfShown(row));
}

void Tavenor::showRecordMenu(const QPoint &place)
{
    // Not asked of the fields: those without a value are not shown.
    execRecordMenu(ui->recordFrame->mapToGlobal(place), currentId != 0 && !listLines.isEmpty());
}

void Tavenor::execRecordMenu(const QPoint &place, bool isRecord)
{
    QMenu menu(this);
    if (isRecord) {
        addButton(menu, ui->pbEditUser);
        addButton(menu, ui->pbDeleteUser);
        menu.addSeparator();
        menu.addActions({ui->actionExport_Selected_Record_To_File,
                         ui->actionExport_Selected_Record_To_File_txt});
        menu.addSeparator();
    }
    addButton(menu, ui->pbNewUser);
    menu.exec(place);
}
