// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Handles on the page where tables are designed: its rows, filled in as people do.
#pragma once

#include "tests/support/EntryPage.h"
#include "widgets/newTableElement.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>

/// What a person does on the designer page.
namespace DesignerPage
{

/// True while the page is in front.
inline bool isOpen(const QWidget &window)
{
    auto *const page = Window::get<QWidget>(window, "newTable");
    return Window::get<QStackedWidget>(window, "stPages")->currentWidget() == page;
}

/// The entry with this text that the administrator mode shows in the "Opzioni" menu; ends the
/// test program when it cannot be used.
inline QAction *command(Tavenor &window, const QString &text)
{
    window.administratorModeEnabled(true);
    for (QAction *const action : Window::get<QMenu>(window, "menuOptions")->actions()) {
        if (action->isVisible() && action->isEnabled() && action->text() == text) {
            return action;
        }
    }
    qFatal("no command %s", qPrintable(text));
}

/// Opens the page for a new table.
inline void openNew(Tavenor &window)
{
    command(window, QStringLiteral("Crea Tabella"))->trigger();
}

/// Opens the page to add fields to the current table.
inline void openAdd(Tavenor &window)
{
    command(window, QStringLiteral("Aggiungi Campo"))->trigger();
}

/// The rows on the page, from the top.
inline QList<newTableElement *> rows(const QWidget &window)
{
    QList<newTableElement *> elements;
    const QLayout *const layout = window.findChild<QLayout *>(QStringLiteral("newTableLayout"));
    for (int i = 0; i < layout->count(); ++i) {
        elements.append(qobject_cast<newTableElement *>(layout->itemAt(i)->widget()));
    }
    return elements;
}

/// Types the table's name in place of what stands there.
inline void typeName(const QWidget &window, const QString &name)
{
    EntryPage::pasteInto(Window::get<QLineEdit>(window, "leTableName"), name);
}

/// The label in a row.
inline QLineEdit *label(const newTableElement &row)
{
    return Window::get<QLineEdit>(row, "leName");
}

/// Chooses a type and types a label in a row.
inline void fill(const newTableElement &row, const QString &type, const QString &text,
                 bool required = false)
{
    Window::get<QComboBox>(row, "cbType")->setCurrentText(type);
    EntryPage::pasteInto(label(row), text);
    Window::get<QCheckBox>(row, "cbRequired")->setChecked(required);
}

/// Makes a row a link to the table shown as `target`.
inline void fillLink(const newTableElement &row, const QString &target)
{
    Window::get<QComboBox>(row, "cbType")->setCurrentText(QStringLiteral("LINK"));
    Window::get<QComboBox>(row, "cbExistList2")->setCurrentText(target);
}

/// Makes a row a copy of a field of the table shown as `table`.
inline void fillCopied(const newTableElement &row, const QString &table, const QString &field)
{
    Window::get<QCheckBox>(row, "cbFromTable")->setChecked(true);
    Window::get<QComboBox>(row, "cbExistList")->setCurrentText(table);
    Window::get<QComboBox>(row, "cbExistField")->setCurrentText(field);
}

/// Presses the "+" of a row.
inline void addAfter(const newTableElement &row)
{
    Window::click(row, "pbAddNew");
}

/// The last row of the page, which is added first unless it is the only one and still empty.
inline newTableElement &nextRow(const QWidget &window)
{
    if (rows(window).size() > 1 || rows(window).last()->kind() != newTableElement::Kind::Empty) {
        addAfter(*rows(window).last());
    }
    return *rows(window).last();
}

/// Adds a row of this type and label.
inline newTableElement &add(const QWidget &window, const QString &type, const QString &text,
                            bool required = false)
{
    newTableElement &row = nextRow(window);
    fill(row, type, text, required);
    return row;
}

/// Adds a row of a sub-table with these columns, each a type and a label: "STRING Cosa".
inline newTableElement &addSubTable(const QWidget &window, const QString &text,
                                    const QStringList &columns)
{
    newTableElement &row = add(window, QStringLiteral("SUBTABLE"), text);
    for (int i = 0; i < columns.size(); ++i) {
        if (row.subRows().size() <= i) {
            addAfter(*row.subRows().last());
        }
        fill(*row.subRows().at(i), columns.at(i).section(QLatin1Char(' '), 0, 0),
             columns.at(i).section(QLatin1Char(' '), 1));
    }
    return row;
}

/// Presses the page's main button.
inline void accept(const QWidget &window)
{
    auto *const buttons = Window::get<QDialogButtonBox>(window, "bbNewTable");
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

/// Presses "Annulla".
inline void cancel(const QWidget &window)
{
    auto *const buttons = Window::get<QDialogButtonBox>(window, "bbNewTable");
    QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
}

/// The statement with which a table was made, as the database keeps it; empty when there is none.
inline QString statement(const Workspace &here, const QString &database, const QString &table)
{
    return here
        .value(database,
               QStringLiteral("SELECT sql FROM sqlite_master WHERE name = '%1'").arg(table))
        .toString();
}

/// The configuration rows of sub-tables: "name|field|type".
inline QStringList configurations(const Workspace &here, const QString &database)
{
    return here.column(database,
                       QStringLiteral("SELECT RSTRINGFORMAT_subConfigName||'|'||"
                                      "NSTRINGFORMAT_subConfigFieldName||'|'||"
                                      "NSTRINGFORMAT_subConfigFieldType FROM subtablesconfigs "
                                      "ORDER BY rowid"));
}

} // namespace DesignerPage
