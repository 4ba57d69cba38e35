// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A date edit that can also hold no date.
#include "widgets/DateEdit.h"

#include "model/values.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace
{

/// The earliest date that Qt's editor takes; no collection needs it as a date.
const QDate EarliestDate(100, 1, 1);

bool isDigit(const QKeyEvent &event)
{
    return !event.text().isEmpty() && event.text().at(0).isDigit();
}

} // namespace

DateEdit::DateEdit(QWidget *parent)
    : QDateEdit(parent)
{
    setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    setCalendarPopup(true);
    setMinimumDate(EarliestDate);
    // An empty text would mean that the earliest date is shown like any other.
    setSpecialValueText(QStringLiteral(" "));
    setDate(EarliestDate);
    setCurrentSection(QDateTimeEdit::DaySection);
}

bool DateEdit::isBlank() const
{
    return date() == minimumDate();
}

QDate DateEdit::chosenDate() const
{
    return isBlank() ? QDate() : date();
}

void DateEdit::setChosenDate(const QDate &date)
{
    const bool canHold = date.isValid() && date >= minimumDate() && date <= maximumDate();
    setDate(canHold ? date : minimumDate());
}

void DateEdit::stepBy(int steps)
{
    if (isBlank()) {
        startFromToday();
        return;
    }
    QDateEdit::stepBy(steps);
}

QAbstractSpinBox::StepEnabled DateEdit::stepEnabled() const
{
    return isBlank() ? StepUpEnabled | StepDownEnabled : QDateEdit::stepEnabled();
}

void DateEdit::keyPressEvent(QKeyEvent *event)
{
    const bool isDelete = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (isDelete && (isBlank() || isWholeDateSelected())) {
        setDate(minimumDate());
        event->accept();
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        pasteDate();
        event->accept();
        return;
    }
    if (isBlank() && isDigit(*event)) {
        startFromToday();
    }
    QDateEdit::keyPressEvent(event);
}

void DateEdit::mousePressEvent(QMouseEvent *event)
{
    QDateEdit::mousePressEvent(event);
    if (isBlank()) {
        showTodayInCalendar();
    }
}

bool DateEdit::focusNextPrevChild(bool next)
{
    // The Tab key walks through day, month and year, and would stay for ever in a blank editor,
    // which shows none of them.
    return isBlank() ? QWidget::focusNextPrevChild(next) : QDateEdit::focusNextPrevChild(next);
}

bool DateEdit::isWholeDateSelected() const
{
    return lineEdit()->hasSelectedText() && lineEdit()->selectedText() == lineEdit()->text();
}

void DateEdit::startFromToday()
{
    setDate(QDate::currentDate());
    setSelectedSection(QDateTimeEdit::DaySection);
}

/// A date that is pasted replaces the one shown, whatever part of it is selected; any other
/// text is left alone.
void DateEdit::pasteDate()
{
    const QDate date = Values::date(QGuiApplication::clipboard()->text().trimmed());
    if (date.isValid() && !isReadOnly()) {
        setChosenDate(date);
    }
}

/// The calendar opens at the editor's date, which for a blank one is far in the past. It is
/// moved without its signals, so that closing it again leaves the editor blank.
void DateEdit::showTodayInCalendar()
{
    const QSignalBlocker blocker(calendarWidget());
    calendarWidget()->setSelectedDate(QDate::currentDate());
}
