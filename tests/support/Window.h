// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Handles on the real window: widgets by name, lines of the list, fields of the page.
#pragma once

#include "app/Tavenor.h"
#include "widgets/ListButtonForm.h"
#include "widgets/outputDataForm.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QtTest>

/// What a person could point at in the window. Everything is looked up by object name when
/// asked, so pages may be rebuilt in between.
namespace Window
{

/// The widget of this name; ends the test program when there is none.
template<typename Widget>
Widget *get(const QWidget &parent, const char *name)
{
    auto *const found = parent.findChild<Widget *>(QString::fromUtf8(name));
    if (found == nullptr) {
        qFatal("no widget %s", name);
    }
    return found;
}

/// The menu action of this name.
inline QAction *action(const QWidget &window, const char *name)
{
    auto *const found = window.findChild<QAction *>(QString::fromUtf8(name));
    if (found == nullptr) {
        qFatal("no action %s", name);
    }
    return found;
}

/// Presses a button as a person does.
inline void click(const QWidget &parent, const char *name)
{
    QTest::mouseClick(get<QAbstractButton>(parent, name), Qt::LeftButton);
}

/// The texts of the record list, from the top.
inline QStringList lines(const QWidget &window)
{
    const auto *const list = get<QListWidget>(window, "userListWidget");
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        texts.append(list->item(row)->text());
    }
    return texts;
}

/// Selects a line of the record list as a click does.
inline void selectLine(const QWidget &window, int row)
{
    auto *const list = get<QListWidget>(window, "userListWidget");
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

/// The heading of the record shown.
inline QString heading(const QWidget &window)
{
    return get<QLabel>(window, "lbViewInfo")->text();
}

/// The fields on the record page, from the top.
inline QList<outputDataForm *> fields(const QWidget &window)
{
    QList<outputDataForm *> forms;
    const QLayout *const layout = window.findChild<QLayout *>(QStringLiteral("datiLayout"));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *const form = qobject_cast<outputDataForm *>(layout->itemAt(i)->widget())) {
            forms.append(form);
        }
    }
    return forms;
}

/// The labels of the fields on the record page, from the top.
inline QStringList labels(const QWidget &window)
{
    QStringList texts;
    for (const outputDataForm *const form : fields(window)) {
        texts.append(get<QLabel>(*form, "lbTitle")->text());
    }
    return texts;
}

/// The field with this label; null when it is not on the page.
inline outputDataForm *field(const QWidget &window, const QString &label)
{
    for (outputDataForm *const form : fields(window)) {
        if (get<QLabel>(*form, "lbTitle")->text() == label) {
            return form;
        }
    }
    return nullptr;
}

/// The text that the field with this label shows in its line; null text when it is not there.
inline QString shownText(const QWidget &window, const QString &label)
{
    const outputDataForm *const form = field(window, label);
    return form == nullptr ? QString() : get<QLineEdit>(*form, "leData")->text();
}

/// The buttons of the table list (or of another list of such buttons), from the top.
inline QList<ListButtonForm *> buttons(const QWidget &window,
                                       const char *layoutName = "listButtonLayout")
{
    QList<ListButtonForm *> forms;
    const QLayout *const layout = window.findChild<QLayout *>(QString::fromUtf8(layoutName));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *const form = qobject_cast<ListButtonForm *>(layout->itemAt(i)->widget())) {
            forms.append(form);
        }
    }
    return forms;
}

/// The names on the table buttons, from the top.
inline QStringList tables(const QWidget &window)
{
    QStringList names;
    for (const ListButtonForm *const button : buttons(window)) {
        names.append(get<QLabel>(*button, "lbListName")->text());
    }
    return names;
}

/// Presses the button of the table shown as `name`.
inline void pressTable(const QWidget &window, const QString &name)
{
    for (const ListButtonForm *const button : buttons(window)) {
        if (get<QLabel>(*button, "lbListName")->text() == name) {
            click(*button, "pbList");
            return;
        }
    }
    qFatal("no table button %s", qPrintable(name));
}

/// True when the part of a field named `name` is on the screen whenever the field is.
inline bool offers(const QWidget &form, const char *name)
{
    return !get<QWidget>(form, name)->isHidden();
}

/// The heading over the record list: the name of the current table.
inline QString tableHeading(const QWidget &window)
{
    return get<QLabel>(*get<QWidget>(window, "mainArea"), "lbListName")->text();
}

/// The icon beside that heading; null when there is none.
inline QImage tableHeadIcon(const QWidget &window)
{
    return get<QLabel>(window, "lbListIcon")->pixmap(Qt::ReturnByValue).toImage();
}

/// The names on the table buttons that are marked as current.
inline QStringList markedTables(const QWidget &window)
{
    QStringList names;
    for (const ListButtonForm *const button : buttons(window)) {
        if (button->isCurrent()) {
            names.append(get<QLabel>(*button, "lbListName")->text());
        }
    }
    return names;
}

/// The selected rows of the record list.
inline QList<int> selectedRows(const QWidget &window)
{
    const auto *const list = get<QListWidget>(window, "userListWidget");
    QList<int> rows;
    for (const QListWidgetItem *const item : list->selectedItems()) {
        rows.append(list->row(item));
    }
    return rows;
}

} // namespace Window
