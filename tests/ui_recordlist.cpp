// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The record list: lines, search, order, and how often it is read.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/progressBarForm.h"

#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>

#include <algorithm>
#include <utility>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

// Two tables, so that the first one is filled when the program starts.
QStringList booksWith(const QString &values)
{
    return {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                           "NSTRINGFORMAT_Titolo text,NSTRINGFORMAT_Nota text)"),
            QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                           "RSTRINGFORMAT_Nome text)"),
            QStringLiteral("INSERT INTO libri VALUES ") + values};
}

QStringList manyBooks(int count)
{
    return {booksWith(QString()).at(0), booksWith(QString()).at(1),
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                           "i<%1) INSERT INTO libri SELECT i,'Titolo '||(10000-i),'' FROM n")
                .arg(count)};
}

// A table whose titles take their time: each is made anew whenever it is read.
QStringList slowBooks()
{
    return {
        QStringLiteral(
            "CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
            "RSTRINGFORMAT_Titolo text AS (substr(hex(zeroblob(100000+RINTEGERFORMAT_Id)),1,1)||"
            "RINTEGERFORMAT_Id))"),
        booksWith(QString()).at(1),
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                       "i<3000) INSERT INTO libri SELECT i FROM n")};
}

const QString HiddenTable = QStringLiteral("CREATE TABLE HIDDENTABLE_%1 (RINTEGERFORMAT_Id "
                                           "integer primary key,RSTRINGFORMAT_Nota text)");

int currentRow(const QWidget &window)
{
    return Window::get<QListWidget>(window, "userListWidget")->currentRow();
}

void search(const QWidget &window, const QString &text)
{
    Window::get<QLineEdit>(window, "userSearchEdit")->setText(text);
}

QString note(const QWidget &window)
{
    return Window::shownText(window, QStringLiteral("Nota"));
}

QString count(const QWidget &window)
{
    return Window::get<QLabel>(window, "lbToolbar")->text();
}

progressBarForm *progressDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        if (auto *const dialog = qobject_cast<progressBarForm *>(widget)) {
            return dialog;
        }
    }
    qFatal("no progress dialog");
}

// Counts, from before the window is made, how often its parts do something.
class Watch : public QObject
{
public:
    Watch() { qApp->installEventFilter(this); }

    int readings = 0;     // a reading shows the progress dialog, off the screen at first
    int fieldsPlaced = 0; // fields put on the record page
    std::function<void()> whileReading; // runs during the next reading

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isProgress = watched->objectName() == QStringLiteral("progressBarForm");
        const bool isPage = watched->objectName() == QStringLiteral("datiContents");
        const bool isShown = isProgress && event->type() == QEvent::Show;
        const bool begins =
            isShown && static_cast<QWidget *>(watched)->testAttribute(Qt::WA_DontShowOnScreen);
        readings += begins ? 1 : 0;
        if (isPage && event->type() == QEvent::ChildAdded) {
            const QObject *const child = static_cast<QChildEvent *>(event)->child();
            fieldsPlaced += qobject_cast<const outputDataForm *>(child) != nullptr ? 1 : 0;
        }
        if (begins && whileReading) {
            // Once: what it does may begin a reading itself.
            const std::function<void()> action = std::exchange(whileReading, {});
            QMetaObject::invokeMethod(this, action, Qt::QueuedConnection);
        }
        return false;
    }
};

} // namespace

class RecordListPage : public QObject
{
    Q_OBJECT

private slots:
    void linesAndCount();
    void titlesAsTheyStand();
    void emptyTable();
    void oneRecordIsCountedInThePlural();
    void duplicateTitlesOpenTheLast_data();
    void duplicateTitlesOpenTheLast();
    void untitledLineMovesToFirstLine();
    void untitledFirstLineShowsEmptyRecord();
    void untitledNullIsALine();
    void searching_data();
    void searching();
    void shortSearchKeepsOlderMatches();
    void searchWithoutMatchForgetsOlderOnes();
    void steppingDoesNotWrap();
    void steppingWithoutSearch();
    void searchMarksAreTakenLetterForLetter();
    void matchesOfAnOlderListLeadNowhere();
    void matchesOfAnotherTableLeadNowhere();
    void sortButton();
    void sortKeepsTheRow();
    void sortAfterRecordsAreGone();
    void sortWithoutTable();
    void referenceTitles();
    void referenceTitleInIntegerColumn();
    void usersPageWithoutTable_data();
    void usersPageWithoutTable();
    void usersPageInAdvancedMode();
    void usersPageComesBack();
    void texts();
    void progressWhileReading();
    void progressCannotBeDismissed();
    void inputIsBlockedWhileReading();
    void listIsReadOnce();
    void listIsFilledInOneGo();
    void viewIsBuiltOncePerSelection();
    void deleteRereadsList();
    void damagedTableIsReported();
};

void RecordListPage::linesAndCount()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(3,'zeta',''),(1,'Zeta',''),(2,'alfa','')")));
    here.remember(Books);
    const Tavenor window;
    // Ordered as the language of the system orders texts; here by code.
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Zeta"), QStringLiteral("alfa"), QStringLiteral("zeta")}));
    QCOMPARE(count(window), QStringLiteral("3 Records"));
}

void RecordListPage::titlesAsTheyStand()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,' 100%s %d ',''),(2,'<b>x</b>',''),"
                                             "(3,'Perché ''no''','')")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral(" 100%s %d "), QStringLiteral("<b>x</b>"),
                          QStringLiteral("Perché 'no'")}));
    Window::selectLine(window, 1);
    QCOMPARE(Window::heading(window), QStringLiteral("<b>x</b>"));
    QCOMPARE(Window::get<QLabel>(window, "lbViewInfo")->textFormat(), Qt::PlainText);
}

void RecordListPage::emptyTable()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta','')")));
    here.remember(Books);
    const Tavenor window;
    Window::pressTable(window, QStringLiteral("autori"));
    QVERIFY(Window::lines(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QCOMPARE(count(window), QStringLiteral("0 Records"));
}

void RecordListPage::oneRecordIsCountedInThePlural()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta','')")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(count(window), QStringLiteral("1 Records"));
}

void RecordListPage::duplicateTitlesOpenTheLast_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("shown");
    QTest::newRow("first of the equal lines") << 1 << QStringLiteral("last");
    QTest::newRow("second of the equal lines") << 2 << QStringLiteral("last");
    QTest::newRow("third of the equal lines") << 3 << QStringLiteral("last");
    QTest::newRow("another line") << 4 << QStringLiteral("other");
}

void RecordListPage::duplicateTitlesOpenTheLast()
{
    QFETCH(int, row);
    QFETCH(QString, shown);
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Bis','first'),(2,'Bis','second'),(9,'Zeta',"
                                             "'other'),(4,'Alfa','a'),(5,'Bis','last')")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window).size(), 5);
    QCOMPARE(count(window), QStringLiteral("5 Records"));
    Window::selectLine(window, row);
    QCOMPARE(note(window), shown);
    // Of equal lines the first one is marked.
    QCOMPARE(Window::selectedRows(window), QList<int>{row < 4 ? 1 : 4});
}

void RecordListPage::untitledLineMovesToFirstLine()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'','empty'),(2,'#first','one'),"
                                             "(3,'Zeta','two')")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window), (QStringList{QStringLiteral("#first"), QStringLiteral("----"),
                                                 QStringLiteral("Zeta")}));
    Window::selectLine(window, 2);
    QCOMPARE(note(window), QStringLiteral("two"));
    Window::selectLine(window, 1);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::heading(window), QStringLiteral("#first"));
    QCOMPARE(note(window), QStringLiteral("one"));
}

void RecordListPage::untitledFirstLineShowsEmptyRecord()
{
    const Workspace here;
    here.sql(Books,
             {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                             "NSTRINGFORMAT_Titolo text,NSTRINGFORMAT_Nota text,"
                             "NSUBTABLEFORMAT_Prestiti text)"),
              booksWith(QString()).at(1),
              QStringLiteral("INSERT INTO libri VALUES (1,'','empty',''),(2,'Zeta','two','')")});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Prestiti")});
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    Window::selectLine(window, 1);
    QCOMPARE(note(window), QStringLiteral("two"));
    Window::selectLine(window, 0);
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Prestiti")});
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
}

void RecordListPage::untitledNullIsALine()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,NULL,'a'),(2,'','b'),(3,NULL,'c')")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("----"), QStringLiteral("----"), QStringLiteral("----")}));
    QCOMPARE(count(window), QStringLiteral("3 Records"));
    Window::click(window, "pbNext");
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
}

void RecordListPage::searching_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("found");
    const QString start = QStringLiteral("Alfabeto");
    QTest::newRow("no letter does nothing") << QString() << start;
    QTest::newRow("one letter does nothing") << QStringLiteral("n") << start;
    QTest::newRow("two letters do nothing") << QStringLiteral("no") << start;
    QTest::newRow("two letters and nothing more are too short") << QStringLiteral("Ro") << start;
    QTest::newRow("three letters find") << QStringLiteral("nom") << QStringLiteral("Il nome");
    QTest::newRow("capitals find") << QStringLiteral("NOM") << QStringLiteral("Il nome");
    QTest::newRow("mixed letters find") << QStringLiteral("rOsA") << QStringLiteral("La Rosa");
    QTest::newRow("blanks count as letters") << QStringLiteral("a R") << QStringLiteral("La Rosa");
    QTest::newRow("whole line finds") << QStringLiteral("La Rosa") << QStringLiteral("La Rosa");
    QTest::newRow("accents in any case find")
        << QStringLiteral("CITTÀ") << QStringLiteral("Le città");
    QTest::newRow("no match leaves the selection") << QStringLiteral("xyz") << start;
}

void RecordListPage::searching()
{
    QFETCH(QString, text);
    QFETCH(QString, found);
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Alfabeto',''),(2,'Il nome',''),"
                                             "(3,'La Rosa',''),(4,'Le città','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, text);
    QCOMPARE(Window::heading(window), found);
    QCOMPARE(Window::lines(window).value(currentRow(window)), found);
}

void RecordListPage::shortSearchKeepsOlderMatches()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Alfa',''),(2,'Casa uno',''),(3,'Casa due','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("casa"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa due"));
    search(window, QStringLiteral("al"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa due"));
    Window::click(window, "pbUserNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Casa uno"));
}

void RecordListPage::searchWithoutMatchForgetsOlderOnes()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Alfa',''),(2,'Casa uno',''),(3,'Casa due','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("casa"));
    search(window, QStringLiteral("casale"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa due"));
    Window::click(window, "pbUserNext");
    Window::click(window, "pbUserPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Casa due"));
}

void RecordListPage::steppingDoesNotWrap()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Casa 1',''),(2,'Casa 2',''),(3,'Villa',''),"
                                             "(4,'La casa 3','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("casa"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 1"));
    const QStringList steps = {QStringLiteral("Casa 2"), QStringLiteral("La casa 3"),
                               QStringLiteral("La casa 3")};
    for (const QString &step : steps) {
        Window::click(window, "pbUserNext");
        QCOMPARE(Window::heading(window), step);
    }
    const QStringList back = {QStringLiteral("Casa 2"), QStringLiteral("Casa 1"),
                              QStringLiteral("Casa 1")};
    for (const QString &step : back) {
        Window::click(window, "pbUserPrev");
        QCOMPARE(Window::heading(window), step);
    }
    // The limits were not counted past: one step leads on at once.
    Window::click(window, "pbUserNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 2"));
    // A new search begins at its first match.
    search(window, QStringLiteral("CASA"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 1"));
    Window::click(window, "pbUserPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 1"));
}

void RecordListPage::steppingWithoutSearch()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Casa 1',''),(2,'Casa 2','')")));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    Window::click(window, "pbUserNext");
    Window::click(window, "pbUserPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 2"));
}

void RecordListPage::searchMarksAreTakenLetterForLetter()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Alfa',''),(2,'Betaaa',''),(3,'100 %a*.?','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("a.*"));
    search(window, QStringLiteral("???"));
    Window::selectLine(window, 1);
    search(window, QStringLiteral("a*.?"));
    QCOMPARE(Window::heading(window), QStringLiteral("100 %a*.?"));
}

void RecordListPage::matchesOfAnOlderListLeadNowhere()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(3,'Casa 1',''),(2,'Casa 2',''),(1,'Alfa','')")));
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("casa"));
    QCOMPARE(currentRow(window), 1);
    Window::click(window, "pbSort");
    const QString shown = Window::heading(window);
    Window::click(window, "pbUserNext");
    Window::click(window, "pbUserPrev");
    QCOMPARE(Window::heading(window), shown);
    QCOMPARE(currentRow(window), 1);
    // A new search works again.
    search(window, QStringLiteral("casa 1"));
    QCOMPARE(Window::heading(window), QStringLiteral("Casa 1"));
}

void RecordListPage::matchesOfAnotherTableLeadNowhere()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Casa 1',''),(2,'Casa 2',''),(3,'Casa 3','')")));
    here.sql(Books, {QStringLiteral("INSERT INTO autori VALUES (1,'Svevo')")});
    here.remember(Books);
    const Tavenor window;
    search(window, QStringLiteral("casa"));
    Window::pressTable(window, QStringLiteral("autori"));
    Window::click(window, "pbUserNext");
    Window::click(window, "pbUserNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Svevo"));
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
}

void RecordListPage::sortButton()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta',''),(2,'Alfa',''),(3,'Mu','')")));
    here.remember(Books);
    const Tavenor window;
    const auto *const button = Window::get<QPushButton>(window, "pbSort");
    QVERIFY(button->isCheckable());
    QVERIFY(button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("A-Z"));
    QCOMPARE(button->toolTip(), QStringLiteral("Ordina per nome o inserimento"));
    const QStringList ordered = {QStringLiteral("Alfa"), QStringLiteral("Mu"),
                                 QStringLiteral("Zeta")};
    QCOMPARE(Window::lines(window), ordered);

    Window::click(window, "pbSort");
    QCOMPARE(button->text(), QStringLiteral("1-N"));
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Zeta"), QStringLiteral("Alfa"), QStringLiteral("Mu")}));
    Window::click(window, "pbSort");
    QCOMPARE(button->text(), QStringLiteral("A-Z"));
    QCOMPARE(Window::lines(window), ordered);
}

void RecordListPage::sortKeepsTheRow()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta',''),(2,'Alfa',''),(3,'Mu','')")));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 2);
    QCOMPARE(Window::heading(window), QStringLiteral("Zeta"));
    // The place in the list stays, and with it another record is shown.
    Window::click(window, "pbSort");
    QCOMPARE(Window::selectedRows(window), QList<int>{2});
    QCOMPARE(Window::heading(window), QStringLiteral("Mu"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("Mu"));
}

void RecordListPage::sortAfterRecordsAreGone()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta',''),(2,'Alfa',''),(3,'Mu','')")));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 2);
    QVERIFY(Sql::run(QStringLiteral("DELETE FROM libri WHERE RINTEGERFORMAT_Id < 3")));
    Window::click(window, "pbSort");
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Mu")});
    QVERIFY(Window::selectedRows(window).isEmpty());
    QVERIFY(Sql::run(QStringLiteral("DELETE FROM libri")));
    Window::click(window, "pbSort");
    QCOMPARE(count(window), QStringLiteral("0 Records"));
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
}

void RecordListPage::sortWithoutTable()
{
    const Workspace here;
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::click(window, "pbSort");
    QCOMPARE(responder.takeTexts(), QStringList{NoTable});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(responder.boxes().first().title, QStringLiteral("DB Administration Tool"));
    QVERIFY(Window::lines(window).isEmpty());
}

void RecordListPage::referenceTitles()
{
    // The suffix tells two columns of one table apart; the field read is the same one.
    const Workspace here;
    here.sql(Books,
             {QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                             "Xlibri_XDTX_NSTRINGFORMAT_Titolo_XMLTYX_2 Integer,"
                             "NSTRINGFORMAT_Nota text)"),
              booksWith(QString()).at(0),
              QStringLiteral("INSERT INTO libri VALUES (4,'Zeno',''),(5,'Atlante',''),(6,'','')"),
              QStringLiteral("INSERT INTO prestiti VALUES (1,4,'a'),(2,5,'b'),(3,99,'gone'),"
                             "(7,4,'again'),(8,NULL,'none'),(9,6,'untitled')")});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window), (QStringList{QStringLiteral("----"), QStringLiteral("----"),
                                                 QStringLiteral("----"), QStringLiteral("Atlante"),
                                                 QStringLiteral("Zeno"), QStringLiteral("Zeno")}));
    QCOMPARE(count(window), QStringLiteral("6 Records"));
    Window::selectLine(window, 4);
    QCOMPARE(note(window), QStringLiteral("again"));
    // The empty text keeps an entry of its own, which no line leads to.
    Window::selectLine(window, 2);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QVERIFY(note(window).isNull());
}

void RecordListPage::referenceTitleInIntegerColumn()
{
    const Workspace here;
    here.sql(Books, {QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                                    "Xlibri_XDTX_NREALFORMAT_Titolo Integer)"),
                     QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                                    "NREALFORMAT_Titolo text)"),
                     QStringLiteral("INSERT INTO libri VALUES (4,'2.500000')"),
                     QStringLiteral("INSERT INTO prestiti VALUES (1,'4.000000'),(2,'4')")});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("2.500000"), QStringLiteral("2.500000")}));
}

void RecordListPage::usersPageWithoutTable_data()
{
    QTest::addColumn<QStringList>("tables");
    QTest::addColumn<QString>("later");
    QTest::addColumn<QStringList>("expected");
    const QString fill = QStringLiteral("INSERT INTO HIDDENTABLE_c VALUES (1,'third')");
    const QString settings = QStringLiteral("CREATE TABLE settings (a,b)");
    const QString filters = QStringLiteral("CREATE TABLE filters (a,b)");
    const QString configs = QStringLiteral("CREATE TABLE subtablesconfigs (a,b)");
    const QString ordinary = QStringLiteral("CREATE TABLE libri AS SELECT 1 AS "
                                            "RINTEGERFORMAT_Id,'seen' AS NSTRINGFORMAT_Titolo");
    QTest::newRow("no tables: nothing") << QStringList() << QString() << QStringList();
    QTest::newRow("two tables: nothing") << QStringList{HiddenTable.arg(QStringLiteral("a")),
                                                        HiddenTable.arg(QStringLiteral("c")), fill}
                                         << QString() << QStringList();
    QTest::newRow("three tables: the third, hidden or not")
        << QStringList{HiddenTable.arg(QStringLiteral("a")), HiddenTable.arg(QStringLiteral("b")),
                       HiddenTable.arg(QStringLiteral("c")), fill}
        << QString() << QStringList{QStringLiteral("third")};
    QTest::newRow("four tables: the third")
        << QStringList{HiddenTable.arg(QStringLiteral("a")), HiddenTable.arg(QStringLiteral("b")),
                       HiddenTable.arg(QStringLiteral("c")), HiddenTable.arg(QStringLiteral("d")),
                       fill}
        << QString() << QStringList{QStringLiteral("third")};
    QTest::newRow("third is reserved and no other is seen: nothing")
        << QStringList{settings, filters, configs} << QString() << QStringList();
    QTest::newRow("third is reserved: the first that people see")
        << QStringList{HiddenTable.arg(QStringLiteral("a")), settings, filters, configs} << ordinary
        << QStringList{QStringLiteral("seen")};
}

void RecordListPage::usersPageWithoutTable()
{
    QFETCH(QStringList, tables);
    QFETCH(QString, later);
    QFETCH(QStringList, expected);
    const Workspace here;
    here.sql(Books, tables);
    here.remember(Books);
    Tavenor window;
    if (!later.isEmpty()) {
        // Made while the program runs, so that no table is current.
        QVERIFY(Sql::run(later));
        window.administratorModeEnabled(true);
        Window::action(window, "actionShow_Hidden_Tables")->trigger();
    }
    auto *const pages = Window::get<QStackedWidget>(window, "stPages");
    pages->setCurrentIndex(3);
    const ModalResponder responder;
    window.changeToUsersPage();
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(Window::lines(window), expected);
    QCOMPARE(pages->currentIndex(), 2);
}

void RecordListPage::usersPageInAdvancedMode()
{
    const Workspace here;
    here.sql(Books, {QStringLiteral("CREATE TABLE settings (a,b)"),
                     QStringLiteral("CREATE TABLE filters (a,b)"),
                     QStringLiteral("CREATE TABLE subtablesconfigs (a,b)"),
                     QStringLiteral("INSERT INTO subtablesconfigs VALUES (1,'config')")});
    here.remember(Books);
    Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionTech_Mod")->trigger();
    window.changeToUsersPage();
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("config")});
}

void RecordListPage::usersPageComesBack()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta',''),(2,'Alfa','')")));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    const auto *const pages = Window::get<QStackedWidget>(window, "stPages");
    Window::click(window, "pbNewUser");
    QCOMPARE(pages->currentIndex(), 3);
    QVERIFY(Sql::run(QStringLiteral("INSERT INTO libri VALUES (3,'Mu','')")));
    Window::click(window, "pbCancelEdit");
    QCOMPARE(pages->currentIndex(), 2);
    QCOMPARE(count(window), QStringLiteral("3 Records"));
    QCOMPARE(Window::heading(window), QStringLiteral("Zeta"));
}

void RecordListPage::texts()
{
    const Workspace here;
    const Tavenor window;
    QCOMPARE(Window::get<QPushButton>(window, "pbUserPrev")->toolTip(),
             QStringLiteral("Torna al precedente"));
    QCOMPARE(Window::get<QPushButton>(window, "pbUserNext")->toolTip(),
             QStringLiteral("Vai al prossimo"));
    QVERIFY(Window::get<QListWidget>(window, "userListWidget")->uniformItemSizes());
}

void RecordListPage::progressWhileReading()
{
    const Workspace here;
    here.sql(Books, slowBooks());
    here.remember(Books);
    Watch watch;
    const Tavenor window;
    progressBarForm *const dialog = progressDialog();
    const auto *const bar = Window::get<QProgressBar>(*dialog, "progressBar");
    QVERIFY(!dialog->isVisible());
    bool seen = false;
    watch.whileReading = [&seen, dialog] {
        seen = true;
        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->isHeld());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Elaborazione"));
        QCOMPARE(Window::get<QLabel>(*dialog, "lbProgressTitle")->text(), QStringLiteral("libri"));
    };
    const QSignalSpy values(bar, &QProgressBar::valueChanged);
    Window::pressTable(window, QStringLiteral("libri"));
    QVERIFY(seen);
    QVERIFY(!dialog->isVisible());
    QVERIFY(!dialog->isHeld());
    // From 0 upwards, and never the whole: it is set before a record is read, and cut.
    QList<int> shown;
    for (const QList<QVariant> &value : values) {
        shown.append(value.first().toInt());
    }
    QVERIFY(shown.size() > 2);
    QCOMPARE(shown.first(), 0);
    QVERIFY(std::is_sorted(shown.begin(), shown.end()));
    QCOMPARE(bar->value(), 99);
}

void RecordListPage::progressCannotBeDismissed()
{
    const Workspace here;
    here.sql(Books, slowBooks());
    here.remember(Books);
    Watch watch;
    const Tavenor window;
    progressBarForm *const dialog = progressDialog();
    bool tried = false;
    watch.whileReading = [&tried, dialog] {
        tried = true;
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(dialog->isVisible());
        dialog->close();
        QVERIFY(dialog->isVisible());
    };
    Window::pressTable(window, QStringLiteral("libri"));
    QVERIFY(tried);
    QCOMPARE(Window::lines(window).size(), 3000);
    QVERIFY(!dialog->isVisible());
}

void RecordListPage::inputIsBlockedWhileReading()
{
    const Workspace here;
    here.sql(Books, slowBooks());
    here.remember(Books);
    Watch watch;
    Tavenor window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    bool tried = false;
    watch.whileReading = [&tried, &window] {
        tried = true;
        auto *const button = Window::get<QPushButton>(*Window::buttons(window).at(1), "pbList");
        // As the window system delivers it, which respects modal windows.
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          button->mapTo(&window, button->rect().center()));
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    };
    window.changeTable(QStringLiteral("libri"));
    QVERIFY(tried);
    QCOMPARE(watch.readings, 2);
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 3000);
    // The same click counts when the reading is over.
    auto *const button = Window::get<QPushButton>(*Window::buttons(window).at(1), "pbList");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      button->mapTo(&window, button->rect().center()));
    QTRY_COMPARE(Window::tableHeading(window), QStringLiteral("autori"));
}

void RecordListPage::listIsReadOnce()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta',''),(2,'Alfa','')")));
    here.remember(Books);
    const Watch watch;
    const Tavenor window;
    QCOMPARE(watch.readings, 1);
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(watch.readings, 2);
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(watch.readings, 3);
    Window::click(window, "pbSort");
    QCOMPARE(watch.readings, 4);
    Window::selectLine(window, 1);
    search(window, QStringLiteral("alfa"));
    Window::click(window, "pbNext");
    QCOMPARE(watch.readings, 4);
}

void RecordListPage::listIsFilledInOneGo()
{
    const Workspace here;
    here.sql(Books, manyBooks(500));
    here.remember(Books);
    const Tavenor window;
    auto *const list = Window::get<QListWidget>(window, "userListWidget");
    const QSignalSpy inserted(list->model(), &QAbstractItemModel::rowsInserted);
    int reordered = 0;
    connect(list->model(), &QAbstractItemModel::layoutChanged, this, [&reordered] { ++reordered; });
    const QSignalSpy selections(list, &QListWidget::itemSelectionChanged);
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.first().at(1).toInt(), 0);
    QCOMPARE(inserted.first().at(2).toInt(), 499);
    QCOMPARE(reordered, 0);
    QCOMPARE(selections.count(), 0);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
}

void RecordListPage::viewIsBuiltOncePerSelection()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta','z'),(2,'Alfa','a'),(3,'','e'),"
                                             "(4,'Alfa','b')")));
    here.remember(Books);
    Watch watch;
    const Tavenor window;
    // "----" comes first and shows nothing.
    QCOMPARE(watch.fieldsPlaced, 0);
    const auto placedBy = [&watch](const std::function<void()> &action) {
        watch.fieldsPlaced = 0;
        action();
        return watch.fieldsPlaced;
    };
    QCOMPARE(placedBy([&window] { Window::selectLine(window, 3); }), 2);
    QCOMPARE(placedBy([&window] { Window::selectLine(window, 1); }), 2);
    // The second of equal lines jumps to the first, for which the view is there already.
    QVERIFY(placedBy([&window] { Window::selectLine(window, 2); }) <= 2);
    QCOMPARE(placedBy([&window] { search(window, QStringLiteral("zet")); }), 2);
    QCOMPARE(placedBy([&window] { Window::click(window, "pbPrev"); }), 2);
    QCOMPARE(placedBy([&window] { Window::click(window, "pbSort"); }), 2);
    QCOMPARE(placedBy([&window] { Window::pressTable(window, QStringLiteral("libri")); }), 2);
}

void RecordListPage::deleteRereadsList()
{
    const Workspace here;
    here.sql(Books, booksWith(QStringLiteral("(1,'Zeta','z'),(2,'Alfa','a'),(3,'Mu','m')")));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(window, "pbDeleteUser");
    QCOMPARE(Window::lines(window), (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zeta")}));
    QCOMPARE(count(window), QStringLiteral("2 Records"));
    QCOMPARE(Window::heading(window), QStringLiteral("Alfa"));
    QCOMPARE(note(window), QStringLiteral("a"));
}

void RecordListPage::damagedTableIsReported()
{
    // A page in the middle of the table is overwritten; the file can still be opened.
    constexpr int PageSize = 4096;
    const Workspace here;
    here.sql(Books, manyBooks(3000));
    QByteArray bytes = here.read(Books);
    QVERIFY(bytes.size() > 12 * PageSize);
    bytes.replace(10 * PageSize, PageSize, QByteArray(PageSize, '\xff'));
    here.write(Books, bytes);
    here.remember(Books);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    const Tavenor window;
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Impossibile leggere la tabella libri!\n"
                                        "database disk image is malformed Unable to fetch row")});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    // What could be read is there to be used.
    const int lines = Window::lines(window).size();
    QVERIFY(lines > 0 && lines < 3000);
    QCOMPARE(count(window), QStringLiteral("%1 Records").arg(lines));
}

QTEST_MAIN(RecordListPage)
#include "ui_recordlist.moc"
