// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Handles on the page where records are entered: its editors, typed into as people do.
#pragma once

#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/inputDataForm.h"

#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QtEndian>

#include <memory>

/// What a person does on the entry page. Fields are named by the label that they show.
namespace EntryPage
{

/// True while the page is in front.
inline bool isOpen(const QWidget &window)
{
    auto *const page = Window::get<QWidget>(window, "newUserPage");
    return Window::get<QStackedWidget>(window, "stPages")->currentWidget() == page;
}

/// The heading of the page: what is being done.
inline QString heading(const QWidget &window)
{
    return Window::get<QLabel>(window, "lbEdit")->text();
}

/// The editors on the page, from the top.
inline QList<inputDataForm *> editors(const QWidget &window)
{
    QList<inputDataForm *> forms;
    const QLayout *const layout = window.findChild<QLayout *>(QStringLiteral("inputDataLayout"));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *const form = qobject_cast<inputDataForm *>(layout->itemAt(i)->widget())) {
            forms.append(form);
        }
    }
    return forms;
}

/// The labels of the editors on the page, from the top.
inline QStringList labels(const QWidget &window)
{
    QStringList texts;
    for (const inputDataForm *const form : editors(window)) {
        texts.append(form->label());
    }
    return texts;
}

/// The field with this label; ends the test program when it is not on the page.
inline inputDataForm &field(const QWidget &window, const QString &label)
{
    for (inputDataForm *const form : editors(window)) {
        if (form->label() == label) {
            return *form;
        }
    }
    qFatal("no field %s", qPrintable(label));
}

/// A part of the field with this label, by its object name.
template<typename Widget>
Widget *part(const QWidget &window, const QString &label, const char *name)
{
    return Window::get<Widget>(field(window, label), name);
}

/// Types on top of what the field holds, key by key; for characters that a keyboard has.
inline void type(const QWidget &window, const QString &label, const QString &keys)
{
    QTest::keyClicks(field(window, label).editor(), keys);
}

/// Pastes a text into an editor in place of all that it holds.
inline void pasteInto(QWidget *editor, const QString &text)
{
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        QTest::keyClick(editor, Qt::Key_Delete);
        return;
    }
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
}

/// Pastes a text into the field with this label in place of all that it holds.
inline void enter(const QWidget &window, const QString &label, const QString &text)
{
    pasteInto(field(window, label).editor(), text);
}

/// Chooses the line at `row` of the field's list, where "---" is row 0.
inline void choose(const QWidget &window, const QString &label, int row)
{
    part<QComboBox>(window, label, "cboxData")->setCurrentIndex(row);
}

/// The lines that the field's list offers.
inline QStringList choices(const QWidget &window, const QString &label)
{
    const auto *const box = part<QComboBox>(window, label, "cboxData");
    QStringList lines;
    for (int row = 0; row < box->count(); ++row) {
        lines.append(box->itemText(row));
    }
    return lines;
}

/// The text that the field's editor shows, whatever its kind.
inline QString shown(const QWidget &window, const QString &label)
{
    const QWidget *const editor = field(window, label).editor();
    if (const auto *const text = qobject_cast<const QPlainTextEdit *>(editor)) {
        return text->toPlainText();
    }
    if (const auto *const number = qobject_cast<const QAbstractSpinBox *>(editor)) {
        return number->text();
    }
    if (const auto *const box = qobject_cast<const QComboBox *>(editor)) {
        return box->currentText();
    }
    if (const auto *const check = qobject_cast<const QAbstractButton *>(editor)) {
        return check->isChecked() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    }
    return qobject_cast<const QLineEdit *>(editor)->text();
}

/// Presses the button that opens the page for a new record.
inline void openNew(const QWidget &window)
{
    Window::click(window, "pbNewUser");
}

/// Presses the button that opens the page for the record shown.
inline void openEdit(const QWidget &window)
{
    Window::click(window, "pbEditUser");
}

/// Presses "Salva".
inline void save(const QWidget &window)
{
    Window::click(window, "pbSaveNewUser");
}

/// Switches the advanced mode on or off, answering its question.
inline void setAdvancedMode(const QWidget &window, bool on)
{
    QAction *const mode = Window::action(window, "actionTech_Mod");
    if (mode->isChecked() == on) {
        return;
    }
    ModalResponder responder;
    if (on) {
        responder.answer(QMessageBox::Yes);
    }
    mode->trigger();
}

/// Lets go of the pages that are gone. The program's event loop does that; a test that opens
/// hundreds of pages without one would drown in them.
inline void forgetOldPages()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Rows of a table that are the same only when every value has the same type and bytes: one
/// text a record, "integer:1|text:'Zeno'|null:NULL".
inline QStringList exactRows(const Workspace &here, const QString &database, const QString &table)
{
    QStringList values;
    for (const QString &column : here.column(
             database, QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table))) {
        values.append(QStringLiteral("typeof(%1)||':'||quote(%1)").arg(column));
    }
    return here.column(database, QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid")
                                     .arg(values.join(QLatin1String("||'|'||")), table));
}

/// How many steps have been written to the database file so far: SQLite counts them in its
/// header. Only for moments at which nobody writes.
inline quint32 steps(const Workspace &here, const QString &database)
{
    return qFromBigEndian<quint32>(here.read(database).mid(24, 4).constData());
}

/// The program, started on a database made by `statements`. The list is filled at the start
/// only when there are two tables or more.
struct Started {
    explicit Started(const QStringList &statements)
    {
        here.sql(database, statements);
        here.remember(database);
        window = std::make_unique<Tavenor>();
    }

    /// Shows the window and makes it the active one, for tests of keys and focus.
    bool show()
    {
        window->show();
        return QTest::qWaitForWindowActive(window.get());
    }
    /// Changes the database over a connection of its own, as another program would.
    void sql(const QString &statement) const { here.sql(database, {statement}); }
    QStringList rows(const QString &table) const { return exactRows(here, database, table); }
    quint32 steps() const { return EntryPage::steps(here, database); }

    const QString database = QStringLiteral("books.db");
    Workspace here;
    std::unique_ptr<Tavenor> window;
};

} // namespace EntryPage
