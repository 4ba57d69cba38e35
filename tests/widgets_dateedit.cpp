// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The date edit that can hold no date: what makes it blank, and what starts from there.
#include "widgets/DateEdit.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionComboBox>
#include <QtTest>

class TestDateEdit : public QObject
{
    Q_OBJECT

private slots:
    void startsBlank();
    void showsTheChosenDate();
    void isBlankForDatesItCannotHold_data();
    void isBlankForDatesItCannotHold();
    void typingStartsFromToday();
    void typingChangesADate();
    void theFirstStepFromBlankIsToday_data();
    void theFirstStepFromBlankIsToday();
    void laterStepsCountDays();
    void theCalendarStartsFromToday();
    void closingTheCalendarLeavesBlank();
    void aDayOfTheCalendarIsTaken_data();
    void aDayOfTheCalendarIsTaken();
    void theCalendarShowsTheChosenDate();
    void deletingTheWholeDateMakesBlank_data();
    void deletingTheWholeDateMakesBlank();
    void deletingAPartKeepsADate();
    void deletingInABlankOneTellsNothing();
    void pastesDatesOnly_data();
    void pastesDatesOnly();
};

namespace
{

const QDate SomeDate(2020, 1, 31);

/// Presses the arrow that opens the calendar.
void openCalendar(DateEdit &edit)
{
    QStyleOptionComboBox option;
    option.initFrom(&edit);
    option.editable = true;
    option.subControls = QStyle::SC_All;
    const QRect arrow =
        edit.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &edit);
    QTest::mouseMove(&edit, arrow.center());
    QTest::mousePress(&edit, Qt::LeftButton, {}, arrow.center());
}

void showAndActivate(QWidget &widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

} // namespace

void TestDateEdit::startsBlank()
{
    const DateEdit edit;
    QVERIFY(edit.isBlank());
    QCOMPARE(edit.chosenDate(), QDate());
    QCOMPARE(edit.date(), edit.minimumDate());
    QCOMPARE(edit.text().trimmed(), QString());
    QCOMPARE(edit.displayFormat(), QStringLiteral("dd/MM/yyyy"));
    QCOMPARE(edit.currentSection(), QDateTimeEdit::DaySection);
    QVERIFY(edit.calendarPopup());
}

void TestDateEdit::showsTheChosenDate()
{
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    QVERIFY(!edit.isBlank());
    QCOMPARE(edit.chosenDate(), SomeDate);
    QCOMPARE(edit.text(), QStringLiteral("31/01/2020"));
    edit.setChosenDate(QDate());
    QVERIFY(edit.isBlank());
}

void TestDateEdit::isBlankForDatesItCannotHold_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("isBlank");
    QTest::newRow("no date") << QDate() << true;
    QTest::newRow("30 February") << QDate(2020, 2, 30) << true;
    QTest::newRow("the year 99") << QDate(99, 12, 31) << true;
    QTest::newRow("the first date of all") << QDate(100, 1, 1) << true;
    QTest::newRow("the day after it") << QDate(100, 1, 2) << false;
    QTest::newRow("long before the calendar's usual start") << QDate(1492, 10, 12) << false;
    QTest::newRow("the last of four digits") << QDate(9999, 12, 31) << false;
    QTest::newRow("the year 10000") << QDate(10000, 1, 1) << true;
}

void TestDateEdit::isBlankForDatesItCannotHold()
{
    QFETCH(QDate, date);
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    edit.setChosenDate(date);
    QTEST(edit.isBlank(), "isBlank");
    QCOMPARE(edit.chosenDate(), edit.isBlank() ? QDate() : date);
}

void TestDateEdit::typingStartsFromToday()
{
    DateEdit edit;
    const QDate today = QDate::currentDate();
    QTest::keyClicks(&edit, QStringLiteral("05"));
    QCOMPARE(edit.chosenDate(), QDate(today.year(), today.month(), 5));
}

void TestDateEdit::typingChangesADate()
{
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    edit.setSelectedSection(QDateTimeEdit::DaySection);
    QTest::keyClicks(&edit, QStringLiteral("15031999"));
    QCOMPARE(edit.chosenDate(), QDate(1999, 3, 15));
}

void TestDateEdit::theFirstStepFromBlankIsToday_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("up") << int(Qt::Key_Up);
    QTest::newRow("down") << int(Qt::Key_Down);
    QTest::newRow("page up") << int(Qt::Key_PageUp);
}

void TestDateEdit::theFirstStepFromBlankIsToday()
{
    QFETCH(int, key);
    DateEdit edit;
    QSignalSpy changed(&edit, &QDateEdit::dateChanged);
    QTest::keyClick(&edit, static_cast<Qt::Key>(key));
    QCOMPARE(edit.chosenDate(), QDate::currentDate());
    QCOMPARE(changed.size(), 1);
}

void TestDateEdit::laterStepsCountDays()
{
    DateEdit edit;
    edit.setChosenDate(QDate(2020, 1, 15));
    QTest::keyClick(&edit, Qt::Key_Up);
    QCOMPARE(edit.chosenDate(), QDate(2020, 1, 16));
    QTest::keyClick(&edit, Qt::Key_Down);
    QTest::keyClick(&edit, Qt::Key_Down);
    QCOMPARE(edit.chosenDate(), QDate(2020, 1, 14));
}

void TestDateEdit::theCalendarStartsFromToday()
{
    DateEdit edit;
    showAndActivate(edit);
    openCalendar(edit);
    QVERIFY(edit.calendarWidget()->isVisible());
    QCOMPARE(edit.calendarWidget()->selectedDate(), QDate::currentDate());
    QVERIFY(edit.isBlank());
}

void TestDateEdit::closingTheCalendarLeavesBlank()
{
    DateEdit edit;
    QSignalSpy changed(&edit, &QDateEdit::dateChanged);
    showAndActivate(edit);
    openCalendar(edit);
    QTest::keyClick(edit.calendarWidget()->window(), Qt::Key_Escape);
    QTRY_VERIFY(!edit.calendarWidget()->isVisible());
    QVERIFY(edit.isBlank());
    QCOMPARE(changed.size(), 0);
}

void TestDateEdit::aDayOfTheCalendarIsTaken_data()
{
    QTest::addColumn<QDate>("day");
    QTest::newRow("today, which is selected already") << QDate::currentDate();
    QTest::newRow("another day") << QDate::currentDate().addDays(40);
}

void TestDateEdit::aDayOfTheCalendarIsTaken()
{
    QFETCH(QDate, day);
    DateEdit edit;
    showAndActivate(edit);
    openCalendar(edit);
    edit.calendarWidget()->setSelectedDate(day);
    emit edit.calendarWidget()->activated(day);
    QCOMPARE(edit.chosenDate(), day);
    QTRY_VERIFY(!edit.calendarWidget()->isVisible());
    QCOMPARE(edit.chosenDate(), day);
}

void TestDateEdit::theCalendarShowsTheChosenDate()
{
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    showAndActivate(edit);
    openCalendar(edit);
    QCOMPARE(edit.calendarWidget()->selectedDate(), SomeDate);
}

void TestDateEdit::deletingTheWholeDateMakesBlank_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("delete") << int(Qt::Key_Delete);
    QTest::newRow("backspace") << int(Qt::Key_Backspace);
}

void TestDateEdit::deletingTheWholeDateMakesBlank()
{
    QFETCH(int, key);
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    QSignalSpy changed(&edit, &QDateEdit::dateChanged);
    QTest::keySequence(&edit, QKeySequence(QKeySequence::SelectAll));
    QTest::keyClick(&edit, static_cast<Qt::Key>(key));
    QVERIFY(edit.isBlank());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(edit.text().trimmed(), QString());
}

void TestDateEdit::deletingAPartKeepsADate()
{
    DateEdit edit;
    edit.setChosenDate(SomeDate);
    edit.setSelectedSection(QDateTimeEdit::YearSection);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QVERIFY(!edit.isBlank());
}

void TestDateEdit::deletingInABlankOneTellsNothing()
{
    DateEdit edit;
    QSignalSpy changed(&edit, &QDateEdit::dateChanged);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QVERIFY(edit.isBlank());
    QCOMPARE(changed.size(), 0);
    QTest::keyClicks(&edit, QStringLiteral("1"));
    QVERIFY(!edit.isBlank());
}

void TestDateEdit::pastesDatesOnly_data()
{
    QTest::addColumn<QDate>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("after");
    QTest::newRow("into blank") << QDate() << QStringLiteral("05/03/2021") << QDate(2021, 3, 5);
    QTest::newRow("blanks around it")
        << QDate() << QStringLiteral(" 05/03/2021\n") << QDate(2021, 3, 5);
    QTest::newRow("over a date") << SomeDate << QStringLiteral("05/03/2021") << QDate(2021, 3, 5);
    QTest::newRow("no date into blank") << QDate() << QStringLiteral("domani") << QDate();
    QTest::newRow("no date over a date") << SomeDate << QStringLiteral("31/02/2020") << SomeDate;
}

void TestDateEdit::pastesDatesOnly()
{
    QFETCH(QDate, before);
    QFETCH(QString, text);
    DateEdit edit;
    edit.setChosenDate(before);
    QGuiApplication::clipboard()->setText(text);
    QTest::keySequence(&edit, QKeySequence(QKeySequence::Paste));
    QTEST(edit.chosenDate(), "after");
}

QTEST_MAIN(TestDateEdit)
#include "widgets_dateedit.moc"
