// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The page of conditions, the filtered list, filters saved under a name.
#include "tests/support/EntryPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"
#include "widgets/progressBarForm.h"

#include <QProgressBar>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Titolo = QStringLiteral("Titolo");
const QString Autore = QStringLiteral("Autore");
const QString Pagine = QStringLiteral("Pagine");
const QString Prezzo = QStringLiteral("Prezzo");
const QString Letto = QStringLiteral("Letto");
const QString Comprato = QStringLiteral("Comprato");

// Every kind of column; titles in the order of the table are not those of the alphabet.
const QStringList Collection = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,Xautori_XDTX_RSTRINGFORMAT_Autore Integer,"
                   "NINTEGERFORMAT_Pagine text,NMONEYFORMAT_Prezzo text,NBOOLFORMAT_Letto text,"
                   "NDATEFORMAT_Comprato text,NLONGSTRINGFORMAT_UserPath,"
                   "NIMAGEFORMAT_Copertina text,NPDFFORMAT_Scheda text,"
                   "NLONGSTRINGFORMAT_Note_XMLTYX_2 text,NSUBTABLEFORMAT_Prestiti text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Autore text,NSTRINGFORMAT_Paese text)"),
    QStringLiteral("INSERT INTO autori VALUES (7,'Svevo','Italia'),(3,'Levi','Italia'),"
                   "(9,'','')"),
    QStringLiteral("INSERT INTO libri VALUES "
                   "(1,'Zeno',7,'428','12.50','TRUE','02/01/2020','','','','bello',''),"
                   "(2,'L''isola',3,'120','9.90','FALSE','01/02/2020','','','','',''),"
                   "(3,'Atlante',3,'','','','','','','','bello e raro',''),"
                   "(4,'',0,'50','100','true','31/12/2019','','','','','')"),
};

const QString Rows =
    QStringLiteral("SELECT RINTEGERFORMAT_Id||'|'||RSTRINGFORMAT_filterName||'|'||"
                   "NSTRINGFORMAT_filterTableName||'|'||NSTRINGFORMAT_filterFieldName||'|'||"
                   "NSTRINGFORMAT_filterFieldValue||'|'||NSTRINGFORMAT_filterFieldType||'|'||"
                   "NSTRINGFORMAT_filterFieldCondition||'|'||"
                   "NSTRINGFORMAT_filterFieldConditionAndOr FROM filters ORDER BY rowid");

const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

QString insertRow(const QString &values)
{
    return QStringLiteral("INSERT INTO filters (RSTRINGFORMAT_filterName,"
                          "NSTRINGFORMAT_filterTableName,NSTRINGFORMAT_filterFieldName,"
                          "NSTRINGFORMAT_filterFieldValue,NSTRINGFORMAT_filterFieldType,"
                          "NSTRINGFORMAT_filterFieldCondition,"
                          "NSTRINGFORMAT_filterFieldConditionAndOr) VALUES (%1)")
        .arg(values);
}

QStringList lines(const QWidget &window)
{
    QStringList texts = Window::lines(window);
    texts.sort();
    return texts;
}

// The program over the collection, changed by `further` statements; "libri" is shown.
struct Started {
    explicit Started(const QStringList &further = {})
    {
        here.sql(Books, Collection);
        // The reserved tables are made by the program.
        here.remember(Books);
        if (!further.isEmpty()) {
            const Tavenor first;
        }
        here.sql(Books, further);
        window = std::make_unique<Tavenor>();
    }
    QStringList rows() const { return here.column(Books, Rows); }

    Workspace here;
    std::unique_ptr<Tavenor> window;
};

QStringList savedRow(const QString &name)
{
    return {insertRow(QStringLiteral("'%1','libri','RSTRINGFORMAT_Titolo','Zeno','STRING',"
                                     "'Equal','And'")
                          .arg(name))};
}

} // namespace

class FiltersTest : public QObject
{
    Q_OBJECT

private slots:
    // The page
    void conditionForEachColumn();
    void startState();
    void choicesOfAReference();
    void choicesFollowTheRecords();
    void equalChoicesKeepTheirIds();
    void idIsAskedForInAdvancedModeOnly();
    void withoutATable();
    void onlyTable();
    void newColumnAppears();
    void columnsOfOtherPrograms();
    void keyboard();
    void choiceEndsWithReturn();

    // Conditions in force
    void applied();
    void nothingPasses();
    void noConditionNoLamp();
    void byFormat_data();
    void byFormat();
    void joinedFromLeftToRight();
    void idIsIgnored();
    void unequalAloneTakesNoPart();
    void unreadableNumberIsToldOnce();
    void progressForListedRecords();
    void steppingStaysInsideTheFilter();
    void steppingPassesWhatIsFilteredOut();
    void savedRecordMayLeaveTheList();
    void editsThatAreNotAppliedGo();
    void cancelRestores();
    void cancelAfterReset();
    void resetStaysOnThePage();
    void anotherTableLeavesTheFilter();
    void anotherDatabaseForgets();

    // Saved filters
    void rowsByteForByte();
    void savedAndLoadedAgain();
    void saveWithoutConditionAsksNothing();
    void cancelledPrompt();
    void promptRunsOnce();
    void emptyName_data();
    void emptyName();
    void nameTaken();
    void rowTaken();
    void nameWithMarker();
    void namesWithApostrophe();
    void savedInOneStep();
    void failedSave();
    void panel();
    void containment();
    void oddRows_data();
    void oddRows();
    void secondRowForAColumn();
    void tableGone();
    void deleteWithoutFilter();
    void deleteAsks();
    void deletesExactly();
    void savedOrLoadedNameIsTheOneToDelete();
    void readOnly();
};

void FiltersTest::conditionForEachColumn()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    QCOMPARE(FilterPage::page(window), 4);
    QCOMPARE(FilterPage::labels(window), (QStringList{Titolo, Autore, Pagine, Prezzo, Letto,
                                                      Comprato, QStringLiteral("Note2")}));
    QCOMPARE(FilterPage::conditions(window).size(), 8);
    for (const inputDataForm *const form : FilterPage::conditions(window)) {
        QVERIFY(Window::offers(*form, "compareFrame"));
        QVERIFY(Window::offers(*form, "buttonFrame2"));
        QCOMPARE(Window::get<QLabel>(*form, "lbRequired")->text(), QString());
    }
    // A long text is compared by what it contains, for which one line is enough.
    QCOMPARE(FilterPage::condition(window, QStringLiteral("Note2")).editor()->objectName(),
             QStringLiteral("leData"));
}

void FiltersTest::startState()
{
    const Started started;
    const Tavenor &window = *started.window;
    QVERIFY(!FilterPage::isLit(window));
    QVERIFY(FilterPage::active(window).isEmpty());
    const QVector<QPair<const char *, const char *>> texts = {{"pbSaveFilters", "Applica"},
                                                              {"pbNewFilter", "Salva Filtro"},
                                                              {"pbResetFilters", "Azzera"},
                                                              {"pbCancelFilters", "Annulla"},
                                                              {"pbFiltersPage", "Filtri"}};
    for (const auto &text : texts) {
        QCOMPARE(Window::get<QPushButton>(window, text.first)->text(),
                 QString::fromUtf8(text.second));
    }
    QVERIFY(Window::get<QPushButton>(window, "pbSaveFilters")->isDefault());
    QVERIFY(Window::get<QPushButton>(window, "pbFiltersPage")->isCheckable());
    for (const inputDataForm *const form : FilterPage::conditions(window)) {
        QCOMPARE(form->conditionName(), QStringLiteral("NoCondition"));
        QCOMPARE(form->joiningWord(), QStringLiteral("And"));
    }
}

void FiltersTest::choicesOfAReference()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    const auto *const box = FilterPage::part<QComboBox>(window, Autore, "cboxData");
    QStringList choices;
    for (int row = 0; row < box->count(); ++row) {
        choices.append(box->itemText(row) + QLatin1Char('=') + box->itemData(row).toString());
    }
    QCOMPARE(choices, (QStringList{QStringLiteral("---="), QStringLiteral("Levi=3"),
                                   QStringLiteral("Svevo=7"), QStringLiteral("=9")}));
    // The entry page has the Ids in its lines.
    Window::click(window, "pbCancelFilters");
    EntryPage::openNew(window);
    QCOMPARE(EntryPage::choices(window, Autore),
             (QStringList{QStringLiteral("---"), QStringLiteral("3 Levi"),
                          QStringLiteral("7 Svevo"), QStringLiteral("9 ")}));
}

void FiltersTest::choicesFollowTheRecords()
{
    // The table refers to itself: what is added while its filter page is kept can be chosen.
    Workspace here;
    here.sql(Books, {QStringLiteral("CREATE TABLE persone (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Nome text,"
                                    "Xpersone_XDTX_RSTRINGFORMAT_Nome Integer)"),
                     QStringLiteral("CREATE TABLE altro (RINTEGERFORMAT_Id integer primary key)"),
                     QStringLiteral("INSERT INTO persone VALUES (1,'Anna',0)")});
    here.remember(Books);
    const Tavenor window;
    FilterPage::open(window);
    const auto choices = [&window] {
        return FilterPage::conditions(window).last()->findChild<QComboBox *>("cboxData")->count();
    };
    QCOMPARE(choices(), 2);
    FilterPage::apply(window);
    here.sql(Books, {QStringLiteral("INSERT INTO persone VALUES (2,'Bruno',1)")});
    FilterPage::open(window);
    QCOMPARE(choices(), 3);
}

void FiltersTest::equalChoicesKeepTheirIds()
{
    const Started started({QStringLiteral("UPDATE autori SET RSTRINGFORMAT_Autore='Levi'")});
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::part<QComboBox>(window, Autore, "cboxData")->setCurrentIndex(2);
    FilterPage::apply(window);
    QCOMPARE(lines(window), QStringList{QStringLiteral("Zeno")});
    // The choice is the same one after the page was left.
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("x"));
    Window::click(window, "pbCancelFilters");
    FilterPage::open(window);
    QCOMPARE(FilterPage::part<QComboBox>(window, Autore, "cboxData")->currentIndex(), 2);
}

void FiltersTest::idIsAskedForInAdvancedModeOnly()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    QVERIFY(!FilterPage::labels(window).contains(QStringLiteral("Id")));
    EntryPage::setAdvancedMode(window, true);
    QCOMPARE(FilterPage::labels(window).first(), QStringLiteral("Id"));
    EntryPage::setAdvancedMode(window, false);
    QVERIFY(!FilterPage::labels(window).contains(QStringLiteral("Id")));
}

void FiltersTest::withoutATable()
{
    const Workspace here;
    Tavenor window;
    ModalResponder responder;
    const std::array<void (Tavenor::*)(), 4> commands = {
        &Tavenor::changeToFilterPage, &Tavenor::enableFilters, &Tavenor::createNewFilter,
        &Tavenor::cancelFilterOperation};
    for (const auto command : commands) {
        responder.answer(QMessageBox::Ok);
        (window.*command)();
        QCOMPARE(responder.takeTexts(), QStringList{NoTable});
    }
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(responder.takeTexts(), QStringList{NoTable});
    window.disableFilters();
    QCOMPARE(FilterPage::page(window), 2);
    QVERIFY(FilterPage::conditions(window).isEmpty());
}

void FiltersTest::onlyTable()
{
    // With one table nothing is listed at the start, but its conditions are there.
    const Workspace here;
    here.sql(Books, {Collection.at(1), Collection.at(2)});
    here.remember(Books);
    const Tavenor window;
    QVERIFY(Window::lines(window).isEmpty());
    FilterPage::open(window);
    QCOMPARE(FilterPage::labels(window), (QStringList{Autore, QStringLiteral("Paese")}));
    FilterPage::enter(window, Autore, QStringLiteral("Levi"));
    FilterPage::apply(window);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Levi")});
}

void FiltersTest::newColumnAppears()
{
    const Started started;
    Tavenor &window = *started.window;
    window.changeTable(QStringLiteral("autori"));
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Paese"), QStringLiteral("Italia"));
    FilterPage::apply(window);
    QVERIFY(Sql::run(QStringLiteral("ALTER TABLE autori ADD COLUMN NDATEFORMAT_Nato text")));
    FilterPage::open(window);
    QCOMPARE(FilterPage::labels(window),
             (QStringList{Autore, QStringLiteral("Paese"), QStringLiteral("Nato")}));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Paese Equal Italia And")});
}

void FiltersTest::columnsOfOtherPrograms()
{
    const Workspace here;
    here.sql(Books, {QStringLiteral("CREATE TABLE coins (RINTEGERFORMAT_Id integer primary key,"
                                    "name text,\"a b\" text,\"select\" text,Xtra text,year "
                                    "integer)"),
                     QStringLiteral("INSERT INTO coins VALUES (1,'lira','x','y','z',1950),"
                                    "(2,'euro','x''s','y','w',2002)"),
                     QStringLiteral("CREATE TABLE other (id integer primary key)")});
    here.remember(Books);
    const Tavenor window;
    FilterPage::open(window);
    QCOMPARE(FilterPage::labels(window),
             (QStringList{QStringLiteral("name"), QStringLiteral("a b"), QStringLiteral("select"),
                          QStringLiteral("Xtra"), QStringLiteral("year")}));
    FilterPage::enter(window, QStringLiteral("a b"), QStringLiteral("x's"));
    FilterPage::enter(window, QStringLiteral("select"), QStringLiteral("y"));
    FilterPage::enter(window, QStringLiteral("Xtra"), QStringLiteral("w"));
    FilterPage::enter(window, QStringLiteral("year"), QStringLiteral("2002"));
    FilterPage::save(window, QStringLiteral("Euro"));
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("euro")});
    const QStringList conditions = FilterPage::active(window);
    Window::pressTable(window, QStringLiteral("other"));
    FilterPage::load(window, QStringLiteral("Euro"));
    QCOMPARE(FilterPage::active(window), conditions);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("euro")});
}

void FiltersTest::keyboard()
{
    const Started started;
    Tavenor &window = *started.window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    FilterPage::open(window);
    QWidget *const editor = FilterPage::condition(window, Titolo).editor();
    QVERIFY(editor->hasFocus());
    QTest::keyClicks(editor, QStringLiteral("Zeno"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(FilterPage::page(window), 2);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});

    FilterPage::open(window);
    QTest::keyClicks(FilterPage::condition(window, Titolo).editor(), QStringLiteral("x"));
    QTest::keyClick(FilterPage::condition(window, Titolo).editor(), Qt::Key_Escape);
    QCOMPARE(FilterPage::page(window), 2);
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Titolo Equal Zeno And")});

    // From the last condition to the buttons, the main one last; Return presses the one it is on.
    FilterPage::open(window);
    FilterPage::part<QWidget>(window, QStringLiteral("Note2"), "pbOr")->setFocus();
    for (const char *const name :
         {"pbResetFilters", "pbCancelFilters", "pbNewFilter", "pbSaveFilters"}) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QCOMPARE(window.focusWidget()->objectName(), QString::fromUtf8(name));
    }
    Window::get<QWidget>(window, "pbResetFilters")->setFocus();
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    QCOMPARE(FilterPage::page(window), 4);
    QVERIFY(FilterPage::active(window).isEmpty());
}

void FiltersTest::choiceEndsWithReturn()
{
    const Started started;
    Tavenor &window = *started.window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    FilterPage::open(window);
    auto *const box = FilterPage::part<QComboBox>(window, Autore, "cboxData");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(FilterPage::page(window), 4);
}

void FiltersTest::applied()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Note2"), QStringLiteral("bello"));
    FilterPage::press(window, QStringLiteral("Note2"), "pbMajor");
    FilterPage::apply(window);
    QCOMPARE(FilterPage::page(window), 2);
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Atlante"), QStringLiteral("Zeno")}));
    QCOMPARE(Window::get<QLabel>(window, "lbToolbar")->text(), QStringLiteral("2 Records"));
    QVERIFY(FilterPage::isLit(window));
    QCOMPARE(Window::heading(window), QStringLiteral("Atlante"));
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::shownText(window, Titolo), QStringLiteral("Atlante"));
    // Sorting reads the list again.
    Window::click(window, "pbSort");
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Zeno"), QStringLiteral("Atlante")}));
}

void FiltersTest::nothingPasses()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Nessuno"));
    FilterPage::apply(window);
    QVERIFY(Window::lines(window).isEmpty());
    QVERIFY(Window::fields(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QCOMPARE(Window::get<QLabel>(window, "lbToolbar")->text(), QStringLiteral("0 Records"));
    QVERIFY(FilterPage::isLit(window));
    FilterPage::open(window);
    Window::click(window, "pbCancelFilters");
    QVERIFY(Window::fields(window).isEmpty());
}

void FiltersTest::noConditionNoLamp()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::part<QAbstractButton>(window, Titolo, "pbNoFilter")->pressed();
    FilterPage::press(window, Titolo, "pbNoFilter");
    FilterPage::apply(window);
    QVERIFY(!FilterPage::isLit(window));
    QCOMPARE(Window::lines(window).size(), 4);
}

void FiltersTest::byFormat_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *claim, const QString &label, const QVariant &value,
                        const char *button, const char *expected) {
        QTest::newRow(claim) << label << value << button << QString::fromUtf8(expected);
    };
    add("an apostrophe", Titolo, "L'isola", "pbEqual", "L'isola");
    add("part of a text with an apostrophe", Titolo, "'is", "pbMinor", "L'isola");
    add("another text", Titolo, "Zeno", "pbDiff", "----,Atlante,L'isola");
    add("an integer", Pagine, 120, "pbMajor", "Zeno");
    add("an empty integer counts as 0", Pagine, 60, "pbMinor", "----,Atlante");
    add("an amount", Prezzo, "12,5", "pbEqual", "Zeno");
    add("amounts are numbers", Prezzo, "12.5", "pbMajor", "----");
    add("yes", Letto, true, "pbEqual", "----,Zeno");
    add("yes, more", Letto, true, "pbMajor", "----,Zeno");
    add("not yes", Letto, true, "pbDiff", "Atlante,L'isola");
    add("dates are no texts", Comprato, QDate(2020, 2, 1), "pbMinor", "----,Atlante,Zeno");
    add("a later date", Comprato, QDate(2020, 1, 2), "pbMajor", "L'isola");
    add("a reference by its Id", Autore, 1, "pbEqual", "Atlante,L'isola");
    add("a higher Id", Autore, 1, "pbMajor", "Zeno");
}

void FiltersTest::byFormat()
{
    QFETCH(QString, label);
    QFETCH(QVariant, value);
    QFETCH(QString, button);
    QFETCH(QString, expected);
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    QWidget *const editor = FilterPage::condition(window, label).editor();
    if (auto *const box = qobject_cast<QComboBox *>(editor)) {
        box->setCurrentIndex(value.toInt());
    } else if (auto *const number = qobject_cast<QSpinBox *>(editor)) {
        number->setValue(value.toInt());
    } else if (auto *const date = qobject_cast<QDateEdit *>(editor)) {
        date->setDate(value.toDate());
    } else if (auto *const check = qobject_cast<QAbstractButton *>(editor)) {
        check->setChecked(value.toBool());
    } else {
        FilterPage::enter(window, label, value.toString());
    }
    FilterPage::press(window, label, button.toUtf8().constData());
    FilterPage::apply(window);
    QCOMPARE(lines(window).join(QLatin1Char(',')), expected);
}

void FiltersTest::joinedFromLeftToRight()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    // (Levi and more than 100 pages) or bought on that day.
    FilterPage::part<QComboBox>(window, Autore, "cboxData")->setCurrentIndex(1);
    FilterPage::press(window, Autore, "pbOr");
    FilterPage::part<QSpinBox>(window, Pagine, "sbNum")->setValue(100);
    FilterPage::press(window, Pagine, "pbMajor");
    FilterPage::part<QDateEdit>(window, Comprato, "deData")->setDate(QDate(2020, 1, 2));
    FilterPage::press(window, Comprato, "pbOr");
    FilterPage::apply(window);
    QCOMPARE(lines(window), (QStringList{QStringLiteral("L'isola"), QStringLiteral("Zeno")}));
    // (Levi or more than 100 pages) and bought on that day.
    FilterPage::open(window);
    FilterPage::press(window, Pagine, "pbOr");
    FilterPage::press(window, Comprato, "pbAnd");
    FilterPage::apply(window);
    QCOMPARE(lines(window), QStringList{QStringLiteral("Zeno")});
}

void FiltersTest::idIsIgnored()
{
    const Started started;
    const Tavenor &window = *started.window;
    EntryPage::setAdvancedMode(window, true);
    FilterPage::open(window);
    FilterPage::part<QSpinBox>(window, QStringLiteral("Id"), "sbNum")->setValue(2);
    FilterPage::apply(window);
    QCOMPARE(Window::lines(window).size(), 4);
    QVERIFY(FilterPage::isLit(window));
}

void FiltersTest::unequalAloneTakesNoPart()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::press(window, Titolo, "pbDiff");
    FilterPage::apply(window);
    QVERIFY(!FilterPage::isLit(window));
    QCOMPARE(Window::lines(window).size(), 4);
}

void FiltersTest::unreadableNumberIsToldOnce()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Prezzo, QStringLiteral("1,2,3"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    FilterPage::apply(window);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Valore numerico non valido")});
    // It counts as 0, and so does no amount at all.
    QCOMPARE(lines(window), QStringList{QStringLiteral("Atlante")});
    Window::click(window, "pbSort");
    FilterPage::open(window);
    Window::click(window, "pbCancelFilters");
    QVERIFY(responder.takeTexts().isEmpty());
}

void FiltersTest::progressForListedRecords()
{
    const Started started;
    const Tavenor &window = *started.window;
    const auto *const form = [] {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *const widget : widgets) {
            if (auto *const found = qobject_cast<progressBarForm *>(widget)) {
                return found;
            }
        }
        qFatal("no progress dialog");
    }();
    const auto *const bar = Window::get<QProgressBar>(*form, "progressBar");
    QCOMPARE(bar->value(), 75);
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("L'isola"));
    FilterPage::apply(window);
    // The second of four is the last that is listed.
    QCOMPARE(bar->value(), 25);
}

void FiltersTest::steppingStaysInsideTheFilter()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Note2"), QStringLiteral("bello"));
    FilterPage::press(window, QStringLiteral("Note2"), "pbMajor");
    FilterPage::apply(window);
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Atlante"));
}

void FiltersTest::steppingPassesWhatIsFilteredOut()
{
    // Records that were changed elsewhere since the list was read no longer pass.
    const Started started(
        {QStringLiteral("UPDATE libri SET RSTRINGFORMAT_Titolo='Dune' WHERE RINTEGERFORMAT_Id=4")});
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::part<QSpinBox>(window, Pagine, "sbNum")->setValue(-1);
    FilterPage::press(window, Pagine, "pbMajor");
    FilterPage::apply(window);
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Atlante"), QStringLiteral("Dune"),
                          QStringLiteral("L'isola"), QStringLiteral("Zeno")}));
    const auto leave = [](const QString &title) {
        return Sql::run(QStringLiteral("UPDATE libri SET NINTEGERFORMAT_Pagine='-5' WHERE "
                                       "RSTRINGFORMAT_Titolo='%1'")
                            .arg(title));
    };
    Window::selectLine(window, 1);
    QVERIFY(leave(QStringLiteral("L''isola")));
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Dune"));
    // Where no other passes, the record stays.
    QVERIFY(leave(QStringLiteral("Zeno")) && leave(QStringLiteral("Atlante")));
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("Dune"));
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Dune"));
}

void FiltersTest::savedRecordMayLeaveTheList()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::apply(window);
    EntryPage::openEdit(window);
    EntryPage::enter(window, Titolo, QStringLiteral("La coscienza"));
    EntryPage::save(window);
    QVERIFY(Window::lines(window).isEmpty());
    QVERIFY(FilterPage::isLit(window));
}

void FiltersTest::editsThatAreNotAppliedGo()
{
    const Started started;
    Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::apply(window);
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Atlante"));
    // Whatever else leads back to the records.
    window.changeToUsersPage();
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Titolo Equal Zeno And")});
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});
}

void FiltersTest::cancelRestores()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("L'isola"));
    FilterPage::press(window, Titolo, "pbMinor");
    FilterPage::part<QComboBox>(window, Autore, "cboxData")->setCurrentIndex(1);
    FilterPage::press(window, Autore, "pbOr");
    FilterPage::part<QAbstractButton>(window, Letto, "cbData")->setChecked(true);
    FilterPage::press(window, Letto, "pbDiff");
    FilterPage::apply(window);
    Window::selectLine(window, 1);
    const QStringList before = FilterPage::active(window);
    QCOMPARE(before, (QStringList{QStringLiteral("Titolo Minor L'isola And"),
                                  QStringLiteral("Autore Equal 3 Or"),
                                  QStringLiteral("Letto Disequal TRUE And")}));
    // Twice: quotes are not doubled again and again.
    for (int i = 0; i < 2; ++i) {
        FilterPage::open(window);
        FilterPage::enter(window, Titolo, QStringLiteral("altro"));
        FilterPage::press(window, Autore, "pbMinor");
        FilterPage::press(window, Letto, "pbOr");
        FilterPage::part<QSpinBox>(window, Pagine, "sbNum")->setValue(3);
        Window::click(window, "pbCancelFilters");
        QCOMPARE(FilterPage::active(window), before);
        QCOMPARE(FilterPage::page(window), 2);
        QCOMPARE(Window::heading(window), QStringLiteral("L'isola"));
        QCOMPARE(Window::selectedRows(window), QList<int>{1});
        QVERIFY(FilterPage::isLit(window));
    }
    FilterPage::open(window);
    FilterPage::apply(window);
    QCOMPARE(lines(window), (QStringList{QStringLiteral("Atlante"), QStringLiteral("L'isola")}));
}

void FiltersTest::cancelAfterReset()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::apply(window);
    FilterPage::open(window);
    Window::click(window, "pbResetFilters");
    QVERIFY(!FilterPage::isLit(window));
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});
    Window::click(window, "pbCancelFilters");
    QVERIFY(FilterPage::active(window).isEmpty());
    QCOMPARE(Window::lines(window).size(), 4);
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(Window::selectedRows(window), QList<int>{3});
}

void FiltersTest::resetStaysOnThePage()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    Window::click(window, "pbResetFilters");
    QCOMPARE(FilterPage::page(window), 4);
    QVERIFY(FilterPage::active(window).isEmpty());
    QCOMPARE(FilterPage::condition(window, Titolo).rawText(), QString());
    QCOMPARE(FilterPage::part<QComboBox>(window, Autore, "cboxData")->count(), 4);
}

void FiltersTest::anotherTableLeavesTheFilter()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::apply(window);
    FilterPage::open(window);
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(FilterPage::page(window), 2);
    QVERIFY(!FilterPage::isLit(window));
    QCOMPARE(Window::lines(window).size(), 3);
    FilterPage::open(window);
    QCOMPARE(FilterPage::labels(window), (QStringList{Autore, QStringLiteral("Paese")}));
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 4);
}

void FiltersTest::anotherDatabaseForgets()
{
    const Started started;
    const Tavenor &window = *started.window;
    // Another file with tables and columns of the same names, and one with a single table.
    started.here.sql(QStringLiteral("others.db"), Collection);
    started.here.sql(QStringLiteral("one.db"), {Collection.at(1), Collection.at(2)});
    for (const char *const other : {"others.db", "one.db"}) {
        FilterPage::open(window);
        FilterPage::enter(window, Titolo, QStringLiteral("Nessuno"));
        FilterPage::save(window, QString::fromUtf8(other));
        QVERIFY(Window::lines(window).isEmpty());
        ModalResponder responder;
        responder.chooseFile(started.here.path(QString::fromUtf8(other)));
        Window::action(window, "actionOpen_Db")->trigger();
        QVERIFY(!FilterPage::isLit(window));
        QVERIFY(FilterPage::active(window).isEmpty());
        QVERIFY(FilterPage::savedFilters(window).isEmpty());
        responder.answer(QMessageBox::Ok);
        Window::action(window, "actionDeleteFilter")->trigger();
        QCOMPARE(responder.takeTexts(),
                 QStringList{QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n")});
    }
}

void FiltersTest::rowsByteForByte()
{
    const Started started(savedRow(QStringLiteral("Altro")));
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("L'isola"));
    FilterPage::press(window, Titolo, "pbMajor");
    FilterPage::part<QComboBox>(window, Autore, "cboxData")->setCurrentIndex(2);
    FilterPage::press(window, Autore, "pbOr");
    FilterPage::enter(window, Prezzo, QStringLiteral("12,5"));
    FilterPage::save(window, QStringLiteral("Scaduti"));
    QCOMPARE(started.rows().mid(1),
             (QStringList{
                 QStringLiteral("2|Scaduti|libri|RINTEGERFORMAT_Id|0|INTEGER|NoCondition|And"),
                 QStringLiteral("3|Scaduti_XFLTRX_1|libri|RSTRINGFORMAT_Titolo|L'isola|STRING|"
                                "Major|And"),
                 QStringLiteral("4|Scaduti_XFLTRX_2|libri|Xautori_XDTX_RSTRINGFORMAT_Autore|7|"
                                "autori_XDTX_RSTRING|Equal|Or"),
                 QStringLiteral("5|Scaduti_XFLTRX_3|libri|NINTEGERFORMAT_Pagine|0|INTEGER|"
                                "NoCondition|And"),
                 QStringLiteral("6|Scaduti_XFLTRX_4|libri|NMONEYFORMAT_Prezzo|12.50|MONEY|"
                                "Equal|And"),
                 QStringLiteral("7|Scaduti_XFLTRX_5|libri|NBOOLFORMAT_Letto|FALSE|BOOL|"
                                "NoCondition|And"),
                 QStringLiteral("8|Scaduti_XFLTRX_6|libri|NDATEFORMAT_Comprato||DATE|"
                                "NoCondition|And"),
                 QStringLiteral("9|Scaduti_XFLTRX_7|libri|NLONGSTRINGFORMAT_Note_XMLTYX_2||"
                                "LONGSTRING|NoCondition|And"),
             }));
}

void FiltersTest::savedAndLoadedAgain()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("L'isola"));
    FilterPage::part<QComboBox>(window, Autore, "cboxData")->setCurrentIndex(2);
    FilterPage::press(window, Autore, "pbOr");
    // "no" and 0 are values like others.
    FilterPage::part<QAbstractButton>(window, Letto, "cbData")->setChecked(true);
    FilterPage::part<QAbstractButton>(window, Letto, "cbData")->setChecked(false);
    FilterPage::part<QSpinBox>(window, Pagine, "sbNum")->setValue(1);
    FilterPage::part<QSpinBox>(window, Pagine, "sbNum")->setValue(0);
    FilterPage::press(window, Pagine, "pbMajor");
    FilterPage::part<QDateEdit>(window, Comprato, "deData")->setDate(QDate(2019, 1, 1));
    FilterPage::press(window, Comprato, "pbDiff");
    const QStringList conditions = FilterPage::active(window);
    QCOMPARE(conditions.size(), 5);
    FilterPage::save(window, QStringLiteral("Vecchi"));
    const QStringList listed = Window::lines(window);
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("[Vecchi]")});

    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("Vecchi")});
    FilterPage::load(window, QStringLiteral("Vecchi"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("libri")});
    QCOMPARE(FilterPage::page(window), 2);
    QCOMPARE(FilterPage::active(window), conditions);
    QCOMPARE(Window::lines(window), listed);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::heading(window), listed.first());
    QVERIFY(FilterPage::isLit(window));
    // What was loaded is what a cancel goes back to.
    FilterPage::open(window);
    QCOMPARE(FilterPage::part<QComboBox>(window, Autore, "cboxData")->currentText(),
             QStringLiteral("Svevo"));
    FilterPage::enter(window, Titolo, QStringLiteral("x"));
    Window::click(window, "pbCancelFilters");
    QCOMPARE(FilterPage::active(window), conditions);
}

void FiltersTest::saveWithoutConditionAsksNothing()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    Window::click(window, "pbNewFilter");
    QVERIFY(!FilterPage::prompt().isVisible());
    QCOMPARE(FilterPage::page(window), 2);
    QVERIFY(started.rows().isEmpty());
}

void FiltersTest::cancelledPrompt()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    Window::click(window, "pbNewFilter");
    // The filter is in force already.
    QVERIFY(FilterPage::prompt().isVisible());
    QCOMPARE(FilterPage::prompt().getName(), QString());
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});
    QVERIFY(FilterPage::isLit(window));
    Window::get<QLineEdit>(FilterPage::prompt(), "leName")->setText(QStringLiteral("Mai"));
    FilterPage::prompt().reject();
    QVERIFY(started.rows().isEmpty());

    // The prompt that was left does not answer for the next one.
    FilterPage::open(window);
    Window::click(window, "pbNewFilter");
    QCOMPARE(FilterPage::prompt().getName(), QString());
    FilterPage::acceptName(QStringLiteral("Ora"));
    QCOMPARE(started.rows().size(), 8);
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("[Ora]")});
}

void FiltersTest::promptRunsOnce()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::save(window, QStringLiteral("Uno"));
    // Accepted again without having been asked for.
    FilterPage::prompt().show();
    FilterPage::acceptName(QStringLiteral("Due"));
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("[Uno]")});
}

void FiltersTest::emptyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << QStringLiteral("  ");
}

void FiltersTest::emptyName()
{
    QFETCH(QString, name);
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    const ModalResponder responder;
    FilterPage::save(window, name);
    QVERIFY(started.rows().isEmpty());
    QVERIFY(FilterPage::savedFilters(window).isEmpty());
    QVERIFY(responder.boxes().isEmpty());
}

void FiltersTest::nameTaken()
{
    const Started started(savedRow(QStringLiteral("Rossi")));
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Atlante"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    // Names are compared without regard to letter case.
    FilterPage::save(window, QStringLiteral("rossi"));
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: L'identificativo 'rossi' esiste già nella "
                                        "tabella filters.\n")});
    QCOMPARE(started.rows().size(), 1);
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("Rossi")});
}

void FiltersTest::rowTaken()
{
    const Started started(savedRow(QStringLiteral("Rossi_XFLTRX_2")));
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Atlante"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    FilterPage::save(window, QStringLiteral("Rossi"));
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: L'identificativo 'Rossi_XFLTRX_2' esiste già "
                                        "nella tabella filters.\n")});
    // What stood before the refused row is kept, nothing is tried after it.
    QCOMPARE(started.here.column(Books, QStringLiteral("SELECT RSTRINGFORMAT_filterName FROM "
                                                       "filters ORDER BY rowid")),
             (QStringList{QStringLiteral("Rossi_XFLTRX_2"), QStringLiteral("Rossi"),
                          QStringLiteral("Rossi_XFLTRX_1")}));
    QVERIFY(FilterPage::savedFilters(window).isEmpty());
}

void FiltersTest::nameWithMarker()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    FilterPage::save(window, QStringLiteral("a_XFLTRX_1"));
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("Il nome 'a_XFLTRX_1' contiene una parola riservata al "
                                        "programma.")});
    QVERIFY(started.rows().isEmpty());
}

void FiltersTest::namesWithApostrophe()
{
    const Started started;
    Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::save(window, QStringLiteral("Quest'anno"));
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("[Quest'anno]")});
    FilterPage::load(window, QStringLiteral("Quest'anno"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Titolo Equal Zeno And")});
    window.removeSavedFilter(QStringLiteral("Quest'anno"));
    QVERIFY(started.rows().isEmpty());
    QVERIFY(FilterPage::savedFilters(window).isEmpty());
}

void FiltersTest::savedInOneStep()
{
    const Started started;
    const Tavenor &window = *started.window;
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    const quint32 before = EntryPage::steps(started.here, Books);
    FilterPage::save(window, QStringLiteral("Uno"));
    QCOMPARE(EntryPage::steps(started.here, Books), before + 1);
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(EntryPage::steps(started.here, Books), before + 2);
    QVERIFY(started.rows().isEmpty());
}

void FiltersTest::failedSave()
{
    const Started started;
    const Tavenor &window = *started.window;
    QVERIFY(Sql::run(QStringLiteral("DROP TABLE filters")));
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    FilterPage::save(window, QStringLiteral("Uno"));
    QCOMPARE(responder.boxes().size(), 1);
    QVERIFY(responder.boxes().first().text.startsWith(
        QStringLiteral("ERRORE: Impossibile aggiungere un elemento alla tabella filters!\n")));
    QVERIFY(FilterPage::savedFilters(window).isEmpty());
}

void FiltersTest::panel()
{
    const Started started(savedRow(QStringLiteral("Rossi")));
    const Tavenor &window = *started.window;
    const auto *const panels = Window::get<QStackedWidget>(window, "sWControls");
    QCOMPARE(panels->currentWidget()->objectName(), QStringLiteral("tablesPage"));
    Window::click(window, "pbFiltersPage");
    QCOMPARE(panels->currentWidget()->objectName(), QStringLiteral("filtersPage"));
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("Rossi")});
    Window::click(window, "pbFiltersPage");
    QCOMPARE(panels->currentWidget()->objectName(), QStringLiteral("tablesPage"));
}

void FiltersTest::containment()
{
    const Started started(
        {insertRow(QStringLiteral("'Rosso','libri','RSTRINGFORMAT_Titolo','Zeno','STRING',"
                                  "'Equal','And'")),
         insertRow(QStringLiteral("'Rossonero','libri','NINTEGERFORMAT_Pagine','120','INTEGER',"
                                  "'Equal','Or'")),
         insertRow(QStringLiteral("'ROSSO 2','libri','NBOOLFORMAT_Letto','TRUE','BOOL','Equal',"
                                  "'Or'"))});
    const Tavenor &window = *started.window;
    FilterPage::load(window, QStringLiteral("Rosso"));
    QCOMPARE(FilterPage::active(window), (QStringList{QStringLiteral("Titolo Equal Zeno And"),
                                                      QStringLiteral("Pagine Equal 120 Or")}));
    QCOMPARE(lines(window), (QStringList{QStringLiteral("L'isola"), QStringLiteral("Zeno")}));
    FilterPage::load(window, QStringLiteral("Rossonero"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Pagine Equal 120 Or")});
}

void FiltersTest::oddRows_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("active");
    QTest::addColumn<QString>("expected");
    const QString all = QStringLiteral("----,Atlante,L'isola,Zeno");
    const auto add = [](const char *claim, const char *row, const QString &active,
                        const QString &expected) {
        QTest::newRow(claim) << QString::fromUtf8(row) << active << expected;
    };
    add("a column that is gone", "'NSTRINGFORMAT_Via','x','STRING','Equal','And'", {}, all);
    add("a column in another case", "'RSTRINGFORMAT_titolo','x','STRING','Equal','And'", {}, all);
    add("an unknown condition", "'RSTRINGFORMAT_Titolo','x','STRING','Simile','And'", {}, all);
    add("no condition", "'RSTRINGFORMAT_Titolo','x','STRING','NoCondition','And'", {}, all);
    add("a condition in another case", "'RSTRINGFORMAT_Titolo','Zeno','STRING','EQUAL','And'",
        QStringLiteral("Titolo Equal Zeno And"), QStringLiteral("Zeno"));
    add("an empty value", "'RSTRINGFORMAT_Titolo','','STRING','Equal','And'", {}, all);
    add("NULL everywhere", "NULL,NULL,NULL,NULL,NULL", {}, all);
    add("NULL beside a value", "'RSTRINGFORMAT_Titolo','Zeno',NULL,NULL,NULL", {}, all);
    add("an unknown word means Or", "'RSTRINGFORMAT_Titolo','Zeno','STRING','Equal','Xor'",
        QStringLiteral("Titolo Equal Zeno Or"), QStringLiteral("Zeno"));
    add("an unknown format", "'NINTEGERFORMAT_Pagine','120','NUMERO','Equal','And'",
        QStringLiteral("Pagine Equal 120 And"), QStringLiteral("L'isola"));
    add("no format", "'NBOOLFORMAT_Letto','TRUE','','Equal','And'",
        QStringLiteral("Letto Equal TRUE And"), QStringLiteral("----,Zeno"));
    add("another column's format", "'NINTEGERFORMAT_Pagine','120','STRING','Equal','And'",
        QStringLiteral("Pagine Equal 120 And"), QStringLiteral("L'isola"));
    add("a number that cannot be read", "'NINTEGERFORMAT_Pagine','tante','INTEGER','Equal','And'",
        QStringLiteral("Pagine Equal tante And"), QStringLiteral("Atlante"));
    add("an amount that cannot be read", "'NMONEYFORMAT_Prezzo','poco','MONEY','Equal','And'",
        QStringLiteral("Prezzo Equal poco And"), QStringLiteral("Atlante"));
    add("a date that cannot be read", "'NDATEFORMAT_Comprato','ieri','DATE','Equal','And'",
        QStringLiteral("Comprato Equal ieri And"), QStringLiteral("Atlante"));
    add("no is a value", "'NBOOLFORMAT_Letto','FALSE','BOOL','Equal','And'",
        QStringLiteral("Letto Equal FALSE And"), QStringLiteral("Atlante,L'isola"));
    add("a reference whose record is gone",
        "'Xautori_XDTX_RSTRINGFORMAT_Autore','55','autori_XDTX_RSTRING','Equal','And'",
        QStringLiteral("Autore Equal 55 And"), QString());
    add("a reference saved with its field's format",
        "'Xautori_XDTX_RSTRINGFORMAT_Autore','7','STRING','Equal','And'",
        QStringLiteral("Autore Equal 7 And"), QStringLiteral("Zeno"));
    add("the folder has no condition",
        "'NLONGSTRINGFORMAT_UserPath','x','LONGSTRING','Equal','And'", {}, all);
}

void FiltersTest::oddRows()
{
    QFETCH(QString, row);
    QFETCH(QString, active);
    QFETCH(QString, expected);
    const Started started({insertRow(QStringLiteral("'Mio','libri',") + row)});
    const Tavenor &window = *started.window;
    const ModalResponder responder;
    FilterPage::load(window, QStringLiteral("Mio"));
    QCOMPARE(FilterPage::active(window).join(QLatin1Char(',')), active);
    QCOMPARE(lines(window).join(QLatin1Char(',')), expected);
    QVERIFY(FilterPage::isLit(window));
    // The page shows it, applies it and gives it back.
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("x"));
    Window::click(window, "pbCancelFilters");
    QCOMPARE(FilterPage::active(window).join(QLatin1Char(',')), active);
    FilterPage::open(window);
    FilterPage::apply(window);
    QCOMPARE(lines(window).join(QLatin1Char(',')), expected);
    QVERIFY(responder.boxes().isEmpty());
}

void FiltersTest::secondRowForAColumn()
{
    // The later row wins whole, also over a condition that the button leaves alone.
    const QString row = QStringLiteral("'%1','libri','RSTRINGFORMAT_Titolo','Zeno','STRING',%2");
    const Started started({insertRow(row.arg("Mio", "'Disequal','Or'")),
                           insertRow(row.arg("Mio_XFLTRX_1", "'Minor','And'"))});
    const Tavenor &window = *started.window;
    FilterPage::load(window, QStringLiteral("Mio"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("Titolo Minor Zeno And")});
}

void FiltersTest::tableGone()
{
    const Started started({insertRow(QStringLiteral("'Mio','HIDDENTABLE_via',"
                                                    "'RSTRINGFORMAT_Titolo','Zeno','STRING',"
                                                    "'Equal','And'")),
                           insertRow(QStringLiteral("'Senza',NULL,NULL,NULL,NULL,NULL,NULL"))});
    const Tavenor &window = *started.window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    FilterPage::load(window, QStringLiteral("Mio"));
    responder.answer(QMessageBox::Ok);
    FilterPage::load(window, QStringLiteral("Senza"));
    QCOMPARE(responder.takeTexts(),
             (QStringList{QStringLiteral("ERRORE: La Tabella '#via' non esiste!\n"),
                          QStringLiteral("ERRORE: La Tabella '' non esiste!\n")}));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 4);
    QVERIFY(!FilterPage::isLit(window));
    // It can be deleted like any other.
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare Senza?")});
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("Mio")});
}

void FiltersTest::deleteWithoutFilter()
{
    const Started started;
    const Tavenor &window = *started.window;
    const auto *const action = Window::action(window, "actionDeleteFilter");
    QCOMPARE(action->text(), QStringLiteral("Elimina filtro"));
    QCOMPARE(action->toolTip(), QStringLiteral("Elimina il filtro attivo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n")});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
}

void FiltersTest::deleteAsks()
{
    const Started started(savedRow(QStringLiteral("Rossi")));
    const Tavenor &window = *started.window;
    FilterPage::load(window, QStringLiteral("Rossi"));
    QCOMPARE(FilterPage::savedFilters(window), QStringList{QStringLiteral("[Rossi]")});
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare Rossi?")});
    const ModalResponder::Box box = responder.boxes().first();
    QCOMPARE(box.buttons, QMessageBox::No | QMessageBox::Yes);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(started.rows().size(), 1);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});

    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionDeleteFilter")->trigger();
    QVERIFY(started.rows().isEmpty());
    QVERIFY(FilterPage::savedFilters(window).isEmpty());
    // Nothing is in force any more.
    QVERIFY(!FilterPage::isLit(window));
    QCOMPARE(Window::lines(window).size(), 4);
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionDeleteFilter")->trigger();
    QCOMPARE(responder.boxes().last().text,
             QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n"));
}

void FiltersTest::deletesExactly()
{
    const QStringList names = {QStringLiteral("Rosso"),
                               QStringLiteral("Rosso_XFLTRX_1"),
                               QStringLiteral("Rosso_XFLTRX_12"),
                               QStringLiteral("Rossonero"),
                               QStringLiteral("Rossonero_XFLTRX_1"),
                               QStringLiteral("Il Rosso"),
                               QStringLiteral("rosso"),
                               QStringLiteral("Rosso_XFLTR")};
    QStringList further;
    for (const QString &name : names) {
        further.append(savedRow(name));
    }
    const Started started(further);
    Tavenor &window = *started.window;
    window.removeSavedFilter(QStringLiteral("Rosso"));
    QCOMPARE(
        started.here.column(Books, QStringLiteral("SELECT RSTRINGFORMAT_filterName FROM filters")),
        names.mid(3));
    QCOMPARE(FilterPage::savedFilters(window),
             (QStringList{QStringLiteral("Rossonero"), QStringLiteral("Il Rosso"),
                          QStringLiteral("rosso"), QStringLiteral("Rosso_XFLTR")}));
    // One that is not there.
    window.removeSavedFilter(QStringLiteral("Verde"));
    QCOMPARE(started.rows().size(), 5);
}

void FiltersTest::savedOrLoadedNameIsTheOneToDelete()
{
    const Started started;
    const Tavenor &window = *started.window;
    const auto toDelete = [&window] {
        ModalResponder responder;
        const bool isOne = FilterPage::savedFilters(window).join(QString()).contains('[');
        responder.answer(isOne ? QMessageBox::No : QMessageBox::Ok);
        Window::action(window, "actionDeleteFilter")->trigger();
        return responder.takeTexts().first();
    };
    FilterPage::open(window);
    FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
    FilterPage::save(window, QStringLiteral("Uno"));
    QCOMPARE(toDelete(), QStringLiteral("Eliminare Uno?"));
    FilterPage::open(window);
    FilterPage::save(window, QStringLiteral("Due"));
    QCOMPARE(toDelete(), QStringLiteral("Eliminare Due?"));
    FilterPage::load(window, QStringLiteral("Uno"));
    QCOMPARE(toDelete(), QStringLiteral("Eliminare Uno?"));
    FilterPage::open(window);
    Window::click(window, "pbResetFilters");
    QCOMPARE(toDelete(), QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n"));
    FilterPage::load(window, QStringLiteral("Due"));
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(toDelete(), QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n"));
}

void FiltersTest::readOnly()
{
    const Workspace here;
    here.sql(Books, Collection);
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const QByteArray before = here.read(Books);
    {
        const Tavenor window;
        QVERIFY(!Window::get<QWidget>(window, "pbNewFilter")->isEnabled());
        QVERIFY(!Window::action(window, "actionDeleteFilter")->isEnabled());
        FilterPage::open(window);
        FilterPage::enter(window, Titolo, QStringLiteral("Zeno"));
        FilterPage::apply(window);
        QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});
    }
    QCOMPARE(here.read(Books), before);
}

QTEST_MAIN(FiltersTest)
#include "ui_filters.moc"
