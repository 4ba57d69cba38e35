// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A date edit that can also hold no date.
#pragma once

#include <QDateEdit>

/// Many dates are not known. The earliest date that the editor can hold stands for "no date"
/// and is shown as blank. From there typing, the arrows, the wheel and the calendar start at
/// today; Delete or Backspace on the whole selected date makes it blank again. Every change,
/// to and from blank too, is told by dateChanged().
class DateEdit : public QDateEdit
{
    Q_OBJECT

public:
    /// Starts blank, with the calendar to pop up and dates shown as "dd/MM/yyyy".
    explicit DateEdit(QWidget *parent = nullptr);

    bool isBlank() const;

    /// The date shown; invalid while the editor is blank.
    QDate chosenDate() const;

    /// Shows `date`; blank when it is invalid or none that the editor can hold.
    void setChosenDate(const QDate &date);

    void stepBy(int steps) override;

protected:
    StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    bool isWholeDateSelected() const;
    void startFromToday();
    void pasteDate();
    void showTodayInCalendar();
};
