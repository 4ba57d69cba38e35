// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program by keys alone: every shortcut, and where the focus is afterwards.
#include "tests/support/DesignerPage.h"
#include "tests/support/EntryPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/ModalResponder.h"
#include "widgets/AboutForm.h"
#include "widgets/ImageBox.h"
#include "widgets/SearchLine.h"

#include <QMenuBar>
#include <QSet>
#include <QShortcut>

namespace
{

using EntryPage::Started;

const QStringList Library = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Pagine text,NIMAGEFORMAT_Foto text,"
                   "Xautori_XDTX_RSTRINGFORMAT_Nome Integer)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NSTRINGFORMAT_Nato text,NSTRINGFORMAT_Morto text)"),
    QStringLiteral("INSERT INTO autori VALUES (1,'Svevo','Trieste','Motta')"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Agostino','150','','1')"),
    QStringLiteral("INSERT INTO libri VALUES (2,'Barone rampante','250','','1')"),
    QStringLiteral("INSERT INTO libri VALUES (3,'Coscienza','400','','1')"),
    QStringLiteral("INSERT INTO libri VALUES (4,'Barone di Munchausen','99','','1')"),
};
const QString Agostino = QStringLiteral("Agostino");
const QString Munchausen = QStringLiteral("Barone di Munchausen");
const QString Rampante = QStringLiteral("Barone rampante");
const QString Titolo = QStringLiteral("Titolo");
// Their line opens the later one of them.
const QString EqualTitles = QStringLiteral("INSERT INTO libri VALUES (11,'Zeta','11','','1'),"
                                           "(12,'Zeta','12','','1')");
const QString Zeta = QStringLiteral("Zeta");
constexpr int FirstZeta = 11;
constexpr int MostLines = 1000000;

enum Page { DesignerPlace, CalculatorPlace, RecordsPlace, EntryPlace, FiltersPlace };

// Where the focus is: the name of the widget, or of the field or table that it belongs to.
QString focus()
{
    const QWidget *const focused = QApplication::focusWidget();
    if (focused == nullptr) {
        return QStringLiteral("nowhere");
    }
    for (const QWidget *widget = focused; widget != nullptr; widget = widget->parentWidget()) {
        if (const auto *const field = qobject_cast<const inputDataForm *>(widget)) {
            return field->label() + QLatin1Char(' ') + focused->objectName();
        }
        if (const auto *const field = qobject_cast<const outputDataForm *>(widget)) {
            return Window::get<QLabel>(*field, "lbTitle")->text() + QLatin1Char(' ') +
                   focused->objectName();
        }
        if (const auto *const entry = qobject_cast<const ListButtonForm *>(widget)) {
            return QStringLiteral("entry ") + entry->tableName() + entry->savedFilterName();
        }
        if (qobject_cast<const newTableElement *>(widget) != nullptr) {
            return QStringLiteral("row ") + focused->objectName();
        }
    }
    return focused->objectName();
}

// A key, pressed where the focus is.
void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
}

// A box makes the window inactive, and no window manager makes it active again.
void activate(const Started &program)
{
    QApplication::setActiveWindow(program.window.get());
}

// What Tab stops at, from where the focus is, up to the widget of this name.
QStringList walk(const QString &last)
{
    QStringList stops = {focus()};
    while (stops.last() != last && stops.size() < 60) {
        press(Qt::Key_Tab);
        stops.append(focus());
    }
    return stops;
}

// The program with "libri" listed, its window active and the list in focus.
struct Running : Started {
    Running()
        : Started(Library)
    {
        window->administratorModeEnabled(true);
        isShown = show();
        window->changeTable(QStringLiteral("libri"));
    }
    int page() const { return FilterPage::page(*window); }
    bool isShown = false;
};

} // namespace

class Keyboard : public QObject
{
    Q_OBJECT

private slots:
    // Records
    void startsInTheList();
    void stepsThroughRecords();
    void newRecordAndBack();
    void savedRecordIsShown();
    void editsFromTheList_data();
    void editsFromTheList();
    void emptyListEditsNothing();
    void deletesFromTheRecordsPageOnly();
    void deleteKeyEditsTheSearch();
    void actsOnTheLineInFocus_data();
    void actsOnTheLineInFocus();
    void clickShowsTheLine();
    void foundLineIsShown();
    void reloads();
    void reloadedListIsSearchedOn();
    void stepsAtOnce();

    // Search
    void findsTheSearch();
    void walksMatches();
    void leavesTheSearch();

    // Pages
    void filterPageAndBack();
    void appliesFromTheFilterPage();
    void calculatorAndBack();
    void returnsWhereItCameFrom_data();
    void returnsWhereItCameFrom();
    void designerAndBack();
    void designerAsksBeforeItDropsRows();
    void keysAskBeforeTheyLeaveTheDesigner_data();
    void keysAskBeforeTheyLeaveTheDesigner();
    void followsALinkAndReturns();

    // Window
    void opensTables();
    void opensTablesOfAHiddenPanel();
    void changesAreas();
    void areaInFocusIsSeen();
    void changesAreasOnAPage();
    void areasThatCannotBeUsedAreSkipped();
    void hidesThePanel();
    void hiddenPanelHandsTheFocusOn();
    void opensADatabase();
    void opensTheMenus();
    void quits();

    // When keys do nothing
    void typedValuesHoldTheKeys();
    void readOnlyCopy();
    void keysRestDuringAnOperation();
    void keysRestBehindABox();
    void noKeyIsTwice();

    // Order and dialogs
    void tabFollowsTheEyeOnTheRecordsPage();
    void rebuiltPanelKeepsItsPlace();
    void dialogsByKeys();
};

void Keyboard::startsInTheList()
{
    Started program(Library);
    QVERIFY(program.show());
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::stepsThroughRecords()
{
    const Running program;
    QVERIFY(program.isShown);
    QCOMPARE(Window::heading(*program.window), Agostino);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(Window::heading(*program.window), Agostino);

    // Who reads a field stays with the record.
    Window::get<QWidget>(*Window::field(*program.window, Titolo), "leData")->setFocus();
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    QCOMPARE(focus(), QStringLiteral("datiScroll"));
}

void Keyboard::newRecordAndBack()
{
    const Running program;
    press(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Aggiungi"));
    QCOMPARE(focus(), QStringLiteral("Titolo leData"));
    press(Qt::Key_Escape);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::savedRecordIsShown()
{
    const Running program;
    press(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Novelle"));
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Novelle"));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    // The arrows go on from the record saved.
    press(Qt::Key_Up);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Coscienza"));
}

void Keyboard::editsFromTheList_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("F2") << int(Qt::Key_F2);
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void Keyboard::editsFromTheList()
{
    QFETCH(int, key);
    const Running program;
    press(Qt::Key_Down);
    press(key);
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Modifica"));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), Munchausen);
    QCOMPARE(focus(), QStringLiteral("Titolo leData"));
}

void Keyboard::emptyListEditsNothing()
{
    const Running program;
    program.sql(QStringLiteral("DELETE FROM libri"));
    press(Qt::Key_F5);
    QCOMPARE(Window::lines(*program.window), QStringList());
    const ModalResponder responder; // a box would fail the test
    press(Qt::Key_Return);
    QCOMPARE(program.page(), int(RecordsPlace));
}

void Keyboard::deletesFromTheRecordsPageOnly()
{
    const Running program;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    press(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare questo elemento?")});
    activate(program);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));

    press(Qt::Key_F2);
    press(Qt::Key_Home);
    press(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("di Munchausen"));
}

void Keyboard::deleteKeyEditsTheSearch()
{
    const Running program;
    const ModalResponder responder; // a box would fail the test
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("barone di"));
    press(Qt::Key_Home);
    press(Qt::Key_Delete, Qt::ControlModifier);
    auto *const search = Window::get<QLineEdit>(*program.window, "userSearchEdit");
    QCOMPARE(search->text(), QStringLiteral("di"));
    // Once more than there are words.
    press(Qt::Key_Delete, Qt::ControlModifier);
    press(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(search->text(), QString());
    QCOMPARE(Window::lines(*program.window).size(), 4);
}

void Keyboard::actsOnTheLineInFocus_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("F2") << int(Qt::Key_F2);
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Delete") << int(Qt::Key_Delete);
}

void Keyboard::actsOnTheLineInFocus()
{
    QFETCH(int, key);
    const Running program;
    program.sql(EqualTitles);
    program.window->goToRequest(QStringLiteral("libri"), FirstZeta);
    QCOMPARE(Window::heading(*program.window), Zeta);
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{0});
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    if (key == Qt::Key_Delete) {
        ModalResponder responder;
        responder.answer(QMessageBox::Yes, [&program](const QMessageBox &) {
            QCOMPARE(Window::heading(*program.window), Agostino);
        });
        press(key, Qt::ControlModifier);
        QVERIFY(!Window::lines(*program.window).contains(Agostino));
        QCOMPARE(Window::lines(*program.window).count(Zeta), 2);
    } else {
        press(key);
        QCOMPARE(EntryPage::shown(*program.window, Titolo), Agostino);
    }
}

void Keyboard::clickShowsTheLine()
{
    const Running program;
    program.sql(EqualTitles);
    program.window->goToRequest(QStringLiteral("libri"), FirstZeta);
    // The buttons under the record are about what it shows, also by their keys.
    Window::get<QWidget>(*program.window, "datiScroll")->setFocus();
    press(Qt::Key_F2);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Pagine")), QStringLiteral("11"));
    press(Qt::Key_Escape);
    program.window->goToRequest(QStringLiteral("libri"), FirstZeta);
    QCOMPARE(Window::heading(*program.window), Zeta);
    const auto *const list = Window::get<QListWidget>(*program.window, "userListWidget");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(0)).center());
    QCOMPARE(Window::heading(*program.window), Agostino);
}

void Keyboard::foundLineIsShown()
{
    const Running program;
    program.sql(EqualTitles);
    program.window->goToRequest(QStringLiteral("libri"), FirstZeta);
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), Agostino);
    QCOMPARE(Window::heading(*program.window), Agostino);
}

void Keyboard::reloads()
{
    const Running program;
    press(Qt::Key_Down);
    program.sql(QStringLiteral("INSERT INTO libri VALUES (5,'Aaa','1','','1')"));
    press(Qt::Key_F5);
    QCOMPARE(Window::lines(*program.window).size(), 5);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::reloadedListIsSearchedOn()
{
    const Running program;
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("barone"));
    QCOMPARE(Window::heading(*program.window), Munchausen);
    const QString above = QStringLiteral("Barone A");
    program.sql(QStringLiteral("INSERT INTO libri VALUES (5,'Barone A','1','','1')"));
    press(Qt::Key_F5);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    press(Qt::Key_F3);
    QCOMPARE(Window::heading(*program.window), Rampante);
    press(Qt::Key_F3, Qt::ShiftModifier);
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(Window::heading(*program.window), above);
    // With the search line at nothing more to find.
    program.sql(QStringLiteral("DELETE FROM libri WHERE RSTRINGFORMAT_Titolo LIKE 'Barone%'"));
    press(Qt::Key_F5);
    QVERIFY(Window::get<SearchLine>(*program.window, "userSearchEdit")->hasNoMatch());
    press(Qt::Key_F3);
    QCOMPARE(Window::heading(*program.window), Agostino);
}

void Keyboard::stepsAtOnce()
{
    // The toolkit would wait a tenth of a second after each key, and lose those in between.
    const Running program;
    press(Qt::Key_PageDown, Qt::ControlModifier);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Coscienza"));
}

void Keyboard::findsTheSearch()
{
    const Running program;
    Window::click(*program.window, "pbHideList");
    QVERIFY(!Window::get<QWidget>(*program.window, "userListWidget")->isVisible());
    press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(Window::get<QWidget>(*program.window, "userListWidget")->isVisible());
    QCOMPARE(focus(), QStringLiteral("userSearchEdit"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Cos"));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Coscienza"));
    QCOMPARE(focus(), QStringLiteral("userSearchEdit"));
    // The text is selected, so that the next search takes its place.
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Ago"));
    QCOMPARE(Window::heading(*program.window), Agostino);
}

void Keyboard::walksMatches()
{
    const Running program;
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("barone"));
    QCOMPARE(Window::heading(*program.window), Munchausen);
    press(Qt::Key_Return);
    QCOMPARE(Window::heading(*program.window), Rampante);
    press(Qt::Key_Return);
    QCOMPARE(Window::heading(*program.window), Rampante);
    press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    press(Qt::Key_F3);
    QCOMPARE(Window::heading(*program.window), Rampante);
    // From the list too.
    press(Qt::Key_Escape);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(Window::heading(*program.window), Munchausen);
    press(Qt::Key_F3);
    QCOMPARE(Window::heading(*program.window), Rampante);
}

void Keyboard::leavesTheSearch()
{
    const Running program;
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Down}) {
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(focus(), QStringLiteral("userSearchEdit"));
        press(key);
        QCOMPARE(focus(), QStringLiteral("userListWidget"));
        QCOMPARE(Window::heading(*program.window), Agostino);
    }
}

void Keyboard::filterPageAndBack()
{
    const Running program;
    press(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(program.page(), int(FiltersPlace));
    QCOMPARE(focus(), QStringLiteral("Titolo leData"));
    press(Qt::Key_Escape);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::appliesFromTheFilterPage()
{
    const Running program;
    press(Qt::Key_L, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), Rampante);
    press(Qt::Key_Return);
    QCOMPARE(Window::lines(*program.window), QStringList{Rampante});
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::calculatorAndBack()
{
    const Running program;
    auto *const button = Window::get<QPushButton>(*program.window, "pbCalc");
    button->setFocus();
    press(Qt::Key_Space);
    QCOMPARE(program.page(), int(CalculatorPlace));
    QCOMPARE(focus(), QStringLiteral("pbRecalc"));
    const auto *const total = program.window->findChild<QWidget *>(QStringLiteral("calcPage"))
                                  ->findChild<QLineEdit *>(QStringLiteral("leResult"));
    program.sql(QStringLiteral("DELETE FROM libri"));
    press(Qt::Key_F5);
    QCOMPARE(total->text(), QStringLiteral("0.000000"));
    press(Qt::Key_Escape);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(focus(), QStringLiteral("pbCalc"));
}

void Keyboard::returnsWhereItCameFrom_data()
{
    QTest::addColumn<QString>("from");
    QTest::newRow("the list") << QStringLiteral("userListWidget");
    QTest::newRow("the search") << QStringLiteral("userSearchEdit");
    QTest::newRow("the record") << QStringLiteral("datiScroll");
    QTest::newRow("the order") << QStringLiteral("pbSort");
    QTest::newRow("the database's name") << QStringLiteral("pbDbName");
}

void Keyboard::returnsWhereItCameFrom()
{
    QFETCH(QString, from);
    const Running program;
    for (const auto &page :
         {qMakePair(Qt::Key_F2, Qt::NoModifier), qMakePair(Qt::Key_N, Qt::ControlModifier),
          qMakePair(Qt::Key_L, Qt::ControlModifier)}) {
        program.window->findChild<QWidget *>(from)->setFocus();
        press(page.first, page.second);
        QVERIFY(program.page() != RecordsPlace);
        press(Qt::Key_Escape);
        QCOMPARE(program.page(), int(RecordsPlace));
        QCOMPARE(focus(), from);
    }
}

void Keyboard::designerAndBack()
{
    const Running program;
    press(Qt::Key_T, Qt::ControlModifier);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(focus(), QStringLiteral("leTableName"));
    press(Qt::Key_Escape);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));

    press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(focus(), QStringLiteral("row leName"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Anno"));
    // The row's own controls and "Annulla" stand before the button that ends it.
    const QWidget *const ok =
        Window::get<QDialogButtonBox>(*program.window, "bbNewTable")->button(QDialogButtonBox::Ok);
    for (int stop = 0; stop < 10 && QApplication::focusWidget() != ok; ++stop) {
        press(Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), ok);
    press(Qt::Key_Space);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    QVERIFY(program.rows(QStringLiteral("libri")).first().endsWith(QStringLiteral("null:NULL")));
}

void Keyboard::designerAsksBeforeItDropsRows()
{
    const Running program;
    ModalResponder responder;
    press(Qt::Key_T, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("film"));
    responder.answer(QMessageBox::No);
    press(Qt::Key_Escape);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leTableName")->text(),
             QStringLiteral("film"));
    activate(program);
    responder.answer(QMessageBox::Yes);
    press(Qt::Key_Escape);
    QVERIFY(!DesignerPage::isOpen(*program.window));
    const QString question = QStringLiteral("Chiudere senza salvare le modifiche?");
    QCOMPARE(responder.takeTexts(), (QStringList{question, question}));
}

void Keyboard::keysAskBeforeTheyLeaveTheDesigner_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("another new table") << int(Qt::Key_T) << int(Qt::ControlModifier);
    QTest::newRow("new fields") << int(Qt::Key_T) << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("a table") << int(Qt::Key_2) << int(Qt::ControlModifier);
    QTest::newRow("the filter page") << int(Qt::Key_L) << int(Qt::ControlModifier);
    QTest::newRow("the way back") << int(Qt::Key_Left) << int(Qt::AltModifier);
    QTest::newRow("another database") << int(Qt::Key_O) << int(Qt::ControlModifier);
    QTest::newRow("the end") << int(Qt::Key_Q) << int(Qt::ControlModifier);
}

void Keyboard::keysAskBeforeTheyLeaveTheDesigner()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    const Running program;
    program.window->goToRequest(QStringLiteral("libri"), 1);
    ModalResponder responder;
    press(Qt::Key_T, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("film"));
    responder.answer(QMessageBox::No);
    press(key, Qt::KeyboardModifiers(modifiers));
    QVERIFY(DesignerPage::isOpen(*program.window));
    QVERIFY(program.window->isVisible());
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leTableName")->text(),
             QStringLiteral("film"));
    activate(program);
    responder.answer(QMessageBox::Yes);
    if (key == Qt::Key_O) {
        responder.cancelFileDialog();
    }
    press(key, Qt::KeyboardModifiers(modifiers));
    const QString question = QStringLiteral("Chiudere senza salvare le modifiche?");
    QCOMPARE(responder.takeTexts(), (QStringList{question, question}));
    QCOMPARE(responder.pending(), 0);
}

void Keyboard::followsALinkAndReturns()
{
    const Running program;
    Window::get<QWidget>(*Window::field(*program.window, QStringLiteral("Nome")), "pbXView")
        ->setFocus();
    press(Qt::Key_Space);
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("autori"));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    press(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    // There is one way back only.
    press(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
}

void Keyboard::opensTables()
{
    const Running program;
    const QStringList tables = Window::tables(*program.window);
    QCOMPARE(tables.size(), 2);
    for (int place : {0, 1, 0}) {
        press(Qt::Key_1 + place, Qt::ControlModifier);
        QCOMPARE(Window::tableHeading(*program.window), tables.at(place));
        QCOMPARE(focus(), QStringLiteral("userListWidget"));
    }
    press(Qt::Key_9, Qt::ControlModifier);
    QCOMPARE(Window::tableHeading(*program.window), tables.first());

    // From the panel itself as well: what comes next is a record.
    Window::buttons(*program.window).last()->setFocus();
    press(Qt::Key_Space);
    QCOMPARE(Window::tableHeading(*program.window), tables.last());
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::opensTablesOfAHiddenPanel()
{
    const Running program;
    press(Qt::Key_F9);
    const QStringList tables = Window::tables(*program.window);
    for (int place : {1, 0}) {
        press(Qt::Key_1 + place, Qt::ControlModifier);
        QCOMPARE(Window::tableHeading(*program.window), tables.at(place));
    }
}

void Keyboard::changesAreas()
{
    const Running program;
    const QStringList forward = {QStringLiteral("datiScroll"), QStringLiteral("entry libri"),
                                 QStringLiteral("userListWidget")};
    for (const QString &area : forward) {
        press(Qt::Key_F6);
        QCOMPARE(focus(), area);
    }
    const QStringList backward = {QStringLiteral("entry libri"), QStringLiteral("datiScroll"),
                                  QStringLiteral("userListWidget")};
    for (const QString &area : backward) {
        press(Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(focus(), area);
    }
    // What belongs to no area comes before the first.
    Window::get<QWidget>(*program.window, "pbCalc")->setFocus();
    press(Qt::Key_F6);
    QCOMPARE(focus(), QStringLiteral("entry libri"));
    Window::get<QWidget>(*program.window, "pbCalc")->setFocus();
    press(Qt::Key_F6, Qt::ShiftModifier);
    QCOMPARE(focus(), QStringLiteral("datiScroll"));
}

void Keyboard::areaInFocusIsSeen()
{
    const Running program;
    auto *const record = Window::get<QFrame>(*program.window, "datiScroll");
    const auto edge = [record] { return record->grab().toImage().pixelColor(0, 5); };
    const QColor without = edge();
    press(Qt::Key_F6);
    QCOMPARE(focus(), QStringLiteral("datiScroll"));
    QCOMPARE(edge(), record->palette().color(QPalette::Highlight));
    press(Qt::Key_F6);
    QCOMPARE(edge(), without);
}

void Keyboard::changesAreasOnAPage()
{
    const Running program;
    press(Qt::Key_L, Qt::ControlModifier);
    press(Qt::Key_Tab);
    const QString before = focus();
    press(Qt::Key_F6);
    QCOMPARE(focus(), QStringLiteral("entry libri"));
    press(Qt::Key_F6);
    QCOMPARE(focus(), before);
    // Esc works wherever the focus is.
    press(Qt::Key_F6);
    press(Qt::Key_Escape);
    QCOMPARE(program.page(), int(RecordsPlace));
}

void Keyboard::areasThatCannotBeUsedAreSkipped()
{
    const Running program;
    press(Qt::Key_F9);
    Window::click(*program.window, "pbHideList");
    Window::get<QWidget>(*program.window, "pbCalc")->setFocus();
    for (int time = 0; time < 2; ++time) {
        press(Qt::Key_F6);
        QCOMPARE(focus(), QStringLiteral("datiScroll"));
    }
    // With the list hidden a table change ends at the record.
    press(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(focus(), QStringLiteral("datiScroll"));
}

void Keyboard::hidesThePanel()
{
    const Running program;
    QWidget *const panel = Window::get<QWidget>(*program.window, "listFrame");
    press(Qt::Key_F9);
    QVERIFY(!panel->isVisible());
    press(Qt::Key_F9);
    QVERIFY(panel->isVisible());
}

void Keyboard::hiddenPanelHandsTheFocusOn()
{
    const Running program;
    Window::buttons(*program.window).first()->setFocus();
    press(Qt::Key_F9);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
    press(Qt::Key_F9);
    press(Qt::Key_L, Qt::ControlModifier);
    press(Qt::Key_Tab);
    const QString before = focus();
    Window::buttons(*program.window).first()->setFocus();
    press(Qt::Key_F9);
    QCOMPARE(focus(), before);
    // Who is elsewhere stays there.
    press(Qt::Key_Escape);
    press(Qt::Key_F9);
    Window::get<QWidget>(*program.window, "pbSort")->setFocus();
    press(Qt::Key_F9);
    QCOMPARE(focus(), QStringLiteral("pbSort"));
}

void Keyboard::opensADatabase()
{
    const Running program;
    ModalResponder responder;
    responder.cancelFileDialog();
    press(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(responder.fileDialogs().size(), 1);
    QVERIFY(!responder.fileDialogs().first().saving);
}

void Keyboard::opensTheMenus()
{
    const Running program;
    press(Qt::Key_F10);
    auto *const menus = Window::get<QMenuBar>(*program.window, "menuBar");
    QCOMPARE(menus->activeAction(), menus->actions().first());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTest::keyClick(menus, Qt::Key_Escape);
    QCOMPARE(menus->activeAction(), nullptr);
    QCOMPARE(focus(), QStringLiteral("userListWidget"));
}

void Keyboard::quits()
{
    const Running program;
    press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!program.window->isVisible());
}

void Keyboard::typedValuesHoldTheKeys()
{
    const Running program;
    press(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    const ModalResponder responder; // a box or a file dialog would fail the test
    for (const auto &key :
         {qMakePair(Qt::Key_N, Qt::ControlModifier), qMakePair(Qt::Key_L, Qt::ControlModifier),
          qMakePair(Qt::Key_O, Qt::ControlModifier), qMakePair(Qt::Key_T, Qt::ControlModifier),
          qMakePair(Qt::Key_1, Qt::ControlModifier), qMakePair(Qt::Key_2, Qt::ControlModifier),
          qMakePair(Qt::Key_Left, Qt::AltModifier), qMakePair(Qt::Key_F2, Qt::NoModifier),
          qMakePair(Qt::Key_F5, Qt::NoModifier), qMakePair(Qt::Key_F6, Qt::NoModifier)}) {
        press(key.first, key.second);
        QCOMPARE(program.page(), int(EntryPlace));
        QCOMPARE(focus(), QStringLiteral("Titolo leData"));
        QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("x"));
    }
}

void Keyboard::readOnlyCopy()
{
    Started first(Library);
    first.window = nullptr;
    first.here.write(QStringLiteral("lockDb.dat"), "Locked");
    first.window = std::make_unique<Tavenor>();
    QVERIFY(first.show());
    ModalResponder responder; // a box would fail the test
    for (const auto &key :
         {qMakePair(Qt::Key_N, Qt::ControlModifier), qMakePair(Qt::Key_Delete, Qt::ControlModifier),
          qMakePair(Qt::Key_F2, Qt::NoModifier), qMakePair(Qt::Key_Return, Qt::NoModifier),
          qMakePair(Qt::Key_T, Qt::ControlModifier)}) {
        press(key.first, key.second);
        QCOMPARE(FilterPage::page(*first.window), int(RecordsPlace));
    }
    press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(FilterPage::page(*first.window), int(RecordsPlace));
    // Reading is free.
    const QStringList tables = Window::tables(*first.window);
    for (int place : {1, 0}) {
        press(Qt::Key_1 + place, Qt::ControlModifier);
        QCOMPARE(Window::tableHeading(*first.window), tables.at(place));
    }
    responder.cancelFileDialog();
    press(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(responder.fileDialogs().size(), 1);
    QApplication::setActiveWindow(first.window.get());
    press(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(FilterPage::page(*first.window), int(FiltersPlace));
}

void Keyboard::keysRestDuringAnOperation()
{
    const Running program;
    bool pressed = false;
    QTimer::singleShot(0, program.window.get(), [&program, &pressed] {
        pressed = true;
        QTest::keyClick(program.window.get(), Qt::Key_N, Qt::ControlModifier);
        QTest::keyClick(program.window.get(), Qt::Key_2, Qt::ControlModifier);
    });
    // Events are processed while the list is read, once that takes long enough for the progress
    // to be painted, whatever the machine.
    int lines = 0;
    for (int more = 20000; !pressed && lines < MostLines; more = lines) {
        program.sql(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT %1 UNION ALL SELECT i+1 FROM n "
                                   "WHERE i<%2) INSERT INTO libri SELECT i,'Libro '||i,1,'','1' "
                                   "FROM n")
                        .arg(100 + lines)
                        .arg(99 + lines + more));
        lines += more;
        program.window->sort(true);
    }
    QVERIFY(pressed);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
    // Afterwards they work again.
    press(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(program.page(), int(EntryPlace));
}

void Keyboard::keysRestBehindABox()
{
    const Running program;
    ModalResponder responder;
    responder.answer(QMessageBox::No, [&program](const QMessageBox &) {
        QTest::keyClick(program.window.get(), Qt::Key_N, Qt::ControlModifier);
        QTest::keyClick(program.window.get(), Qt::Key_2, Qt::ControlModifier);
    });
    press(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(program.page(), int(RecordsPlace));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
}

void Keyboard::noKeyIsTwice()
{
    // Two that are in force at the same time would both do nothing.
    const Running program;
    for (int page = DesignerPlace; page <= FiltersPlace; ++page) {
        Window::get<QStackedWidget>(*program.window, "stPages")->setCurrentIndex(page);
        QSet<QString> keys;
        const auto add = [&keys](const QKeySequence &key) {
            const QString text = key.toString();
            const bool isNew = text.isEmpty() || !keys.contains(text);
            keys.insert(text);
            return isNew;
        };
        for (const auto *const shortcut : program.window->findChildren<QShortcut *>()) {
            const bool isSeen = qobject_cast<QWidget *>(shortcut->parent())->isVisible();
            QVERIFY2(!isSeen || shortcut->context() == Qt::WidgetShortcut || add(shortcut->key()),
                     qPrintable(shortcut->key().toString()));
        }
        for (const auto *const button : program.window->findChildren<QAbstractButton *>()) {
            QVERIFY2(!button->isVisible() || add(button->shortcut()),
                     qPrintable(button->objectName()));
        }
        for (const auto *const action : program.window->findChildren<QAction *>()) {
            const bool isOfAMenu = qobject_cast<QLineEdit *>(action->parent()) == nullptr;
            QVERIFY2(!isOfAMenu || !action->isVisible() || add(action->shortcut()),
                     qPrintable(action->text()));
        }
    }
}

void Keyboard::tabFollowsTheEyeOnTheRecordsPage()
{
    const Running program;
    const QStringList eye = {QStringLiteral("tablesScroll"),   QStringLiteral("entry autori"),
                             QStringLiteral("entry libri"),    QStringLiteral("pbFiltersPage"),
                             QStringLiteral("pbDbName"),       QStringLiteral("pbCalc"),
                             QStringLiteral("pbFilter"),       QStringLiteral("userSearchEdit"),
                             QStringLiteral("pbUserPrev"),     QStringLiteral("pbUserNext"),
                             QStringLiteral("userListWidget"), QStringLiteral("pbSort"),
                             QStringLiteral("pbPrev"),         QStringLiteral("pbNext"),
                             QStringLiteral("datiScroll"),     QStringLiteral("Titolo leData"),
                             QStringLiteral("Pagine leData"),  QStringLiteral("Nome leData"),
                             QStringLiteral("Nome pbXView"),   QStringLiteral("pbHideList"),
                             QStringLiteral("pbDeleteUser"),   QStringLiteral("pbEditUser"),
                             QStringLiteral("pbNewUser")};
    QStringList tables = eye;
    if (Window::tables(*program.window).first() == QStringLiteral("libri")) {
        tables.swapItemsAt(1, 2);
    }
    // Also for a record that was built later.
    for (int time = 0; time < 2; ++time) {
        Window::get<QWidget>(*program.window, "tablesScroll")->setFocus();
        QCOMPARE(walk(QStringLiteral("pbNewUser")).join(QLatin1Char('\n')),
                 tables.join(QLatin1Char('\n')));
        press(Qt::Key_PageDown, Qt::ControlModifier);
    }
}

void Keyboard::rebuiltPanelKeepsItsPlace()
{
    const Running program;
    Window::buttons(*program.window).first()->setFocus();
    program.window->showHiddenTable();
    QCOMPARE(focus(), QStringLiteral("entry libri"));
    Window::buttons(*program.window).last()->setFocus();
    press(Qt::Key_Tab);
    QCOMPARE(focus(), QStringLiteral("pbFiltersPage"));
}

void Keyboard::dialogsByKeys()
{
    const Running program;
    Window::action(*program.window, "actionTool")->trigger();
    auto *const about = program.window->findChild<AboutForm *>();
    QApplication::setActiveWindow(about);
    QTest::keyClick(about, Qt::Key_Escape);
    QVERIFY(!about->isVisible());

    activate(program);
    press(Qt::Key_F2);
    const inputDataForm &field = EntryPage::field(*program.window, QStringLiteral("Foto"));
    Window::get<QWidget>(field, "pbViewImage")->setFocus();
    press(Qt::Key_Space);
    auto *const box = field.findChild<ImageBox *>();
    QApplication::setActiveWindow(box);
    QTest::keyClick(box, Qt::Key_Tab);
    QSet<QString> stops;
    for (int time = 0; time < 12; ++time) {
        stops.insert(QApplication::focusWidget()->objectName());
        press(Qt::Key_Tab);
    }
    for (const char *const name : {"pbAddReplace", "pbzoomplus", "pbZoomFit", "pbzoomminus"}) {
        QVERIFY2(stops.contains(QString::fromLatin1(name)), name);
    }
    press(Qt::Key_Escape);
    QVERIFY(!box->isVisible());
}

QTEST_MAIN(Keyboard)
#include "ui_keyboard.moc"
