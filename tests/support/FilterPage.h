// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Handles on the page of conditions and on the panel of saved filters.
#pragma once

#include "app/Tavenor.h"
#include "tests/support/Window.h"
#include "widgets/chooseNameForm.h"
#include "widgets/inputDataForm.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QSpinBox>
#include <QStackedWidget>

/// What a person does with filters. Conditions are named by the label that they show.
namespace FilterPage
{

/// The number of the page in front.
inline int page(const QWidget &window)
{
    return Window::get<QStackedWidget>(window, "stPages")->currentIndex();
}

/// Presses the button that opens the page.
inline void open(const QWidget &window)
{
    Window::click(window, "pbFilter");
}

/// The conditions of the page, from the top, those hidden among them.
inline QList<inputDataForm *> conditions(const QWidget &window)
{
    QList<inputDataForm *> forms;
    const QLayout *const layout = window.findChild<QLayout *>(QStringLiteral("filterDataLayout"));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *const form = qobject_cast<inputDataForm *>(layout->itemAt(i)->widget())) {
            forms.append(form);
        }
    }
    return forms;
}

/// The labels of the conditions that a person sees, from the top.
inline QStringList labels(const QWidget &window)
{
    QStringList texts;
    for (const inputDataForm *const form : conditions(window)) {
        if (!form->isHidden()) {
            texts.append(form->label());
        }
    }
    return texts;
}

/// The condition with this label; ends the test program when there is none.
inline inputDataForm &condition(const QWidget &window, const QString &label)
{
    for (inputDataForm *const form : conditions(window)) {
        if (form->label() == label) {
            return *form;
        }
    }
    qFatal("no condition %s", qPrintable(label));
}

template<typename Widget>
Widget *part(const QWidget &window, const QString &label, const char *name)
{
    return Window::get<Widget>(condition(window, label), name);
}

/// Puts a text into the condition's line.
inline void enter(const QWidget &window, const QString &label, const QString &text)
{
    part<QLineEdit>(window, label, "leData")->setText(text);
}

/// Presses a button of the condition.
inline void press(const QWidget &window, const QString &label, const char *name)
{
    part<QAbstractButton>(window, label, name)->click();
}

/// What takes part: one text a condition, "Titolo Equal Zeno And".
inline QStringList active(const QWidget &window)
{
    QStringList texts;
    for (const inputDataForm *const form : conditions(window)) {
        if (form->isActive()) {
            texts.append(form->label() + QLatin1Char(' ') + form->conditionName() +
                         QLatin1Char(' ') + form->rawText() + QLatin1Char(' ') +
                         form->joiningWord());
        }
    }
    return texts;
}

/// Whether the lamp on the filter button is lit.
inline bool isLit(const QWidget &window)
{
    const QSize size(16, 16);
    const QImage shown =
        Window::get<QAbstractButton>(window, "pbFilter")->icon().pixmap(size).toImage();
    const auto image = [&size](const char *name) {
        return QIcon(QString::fromUtf8(name)).pixmap(size).toImage();
    };
    if (shown != image(":/ledOnIcon") && shown != image(":/ledOffIcon")) {
        qFatal("the button has neither lamp");
    }
    return shown == image(":/ledOnIcon");
}

inline void apply(const QWidget &window)
{
    Window::click(window, "pbSaveFilters");
}

/// The window's name prompt.
inline chooseNameForm &prompt()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        if (auto *const form = qobject_cast<chooseNameForm *>(widget)) {
            return *form;
        }
    }
    qFatal("no name prompt");
}

/// Types a name into the prompt and accepts it.
inline void acceptName(const QString &name)
{
    Window::get<QLineEdit>(prompt(), "leName")->setText(name);
    Window::get<QDialogButtonBox>(prompt(), "buttonBox")->button(QDialogButtonBox::Ok)->click();
}

/// Saves what is on the page under a name.
inline void save(const QWidget &window, const QString &name)
{
    Window::click(window, "pbNewFilter");
    acceptName(name);
}

/// The names on the buttons of the saved filters, from the top; the current one in brackets.
inline QStringList savedFilters(const QWidget &window)
{
    QStringList names;
    for (const ListButtonForm *const button : Window::buttons(window, "filtersButtonLayout")) {
        const QString name = Window::get<QLabel>(*button, "lbListName")->text();
        names.append(button->isCurrent() ? QLatin1Char('[') + name + QLatin1Char(']') : name);
    }
    return names;
}

/// Presses the button of a saved filter.
inline void load(const QWidget &window, const QString &name)
{
    for (const ListButtonForm *const button : Window::buttons(window, "filtersButtonLayout")) {
        if (button->savedFilterName() == name) {
            Window::click(*button, "pbList");
            return;
        }
    }
    qFatal("no saved filter %s", qPrintable(name));
}

} // namespace FilterPage
