// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The window's first size and columns, and what it shows while there is nothing to show.
#include "app/Tavenor.h"
#include "app/firstsize.h"
#include "tests/support/EntryPage.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/SearchLine.h"
#include "widgets/inputDataForm.h"

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>

namespace
{

const QString Books = QStringLiteral("books.db");

QStringList twoTables(const QString &values)
{
    QStringList statements = {
        QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Anno integer)"),
        QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Nome text)")};
    if (!values.isEmpty()) {
        statements.append(QStringLiteral("INSERT INTO libri VALUES ") + values);
    }
    return statements;
}

const QString ThreeBooks =
    QStringLiteral("(1,'Dracula',1897),(2,'Emma',1815),(3,'La casa degli spiriti',1982)");

/// What the empty list says, as heard.
QString said(const QWidget &window)
{
    return Window::get<QListWidget>(window, "userListWidget")->accessibleDescription();
}

SearchLine *searchLine(const QWidget &window)
{
    return Window::get<SearchLine>(window, "userSearchEdit");
}

QImage joiningWord(const inputDataForm &form)
{
    return Window::get<QPushButton>(form, "pbAnd")->grab().toImage();
}

} // namespace

class LookTest : public QObject
{
    Q_OBJECT

private slots:
    void firstSize_data();
    void firstSize();
    void smallScreens_data();
    void smallScreens();
    void columnsFillTheWindow_data();
    void columnsFillTheWindow();
    void columnsKeepTheirWidths();
    void theSaveButtonIsTheMainOne();
    void anUnsuccessfulSearchIsSeen();
    void anOldSearchSaysNothingOfANewList();
    void anEmptyTableSaysHowToFillIt();
    void anEmptyFilteredListSaysWhy();
    void aReadOnlyListOffersNothing();
    void aNewDatabaseSaysHowToMakeATable();
    void aNewTableIsPointedAt();
    void withoutATableThereIsNothingToFilter();
    void anEmptyPanelOfFiltersSaysHowToMakeOne();
    void aNewTableIsDesignedUnderNoOtherName();
    void theFirstConditionsWordIsPale();
    void aPanelThatIsOffHasTheWindowsGround();
    void theRuleOverTheTotalEndsWithTheColumns();
};

void LookTest::firstSize_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QSize>("window");
    QTest::newRow("a small screen is filled") << QSize(1024, 600) << QSize(1016, 560);
    QTest::newRow("a notebook's screen at twice the scale") << QSize(960, 540) << QSize(952, 500);
    QTest::newRow("a usual screen") << QSize(1366, 768) << QSize(1180, 728);
    QTest::newRow("a larger one") << QSize(1920, 1080) << QSize(1180, 760);
    QTest::newRow("a large screen gives more room") << QSize(2560, 1440) << QSize(1536, 864);
    QTest::newRow("cards do not get wider for ever") << QSize(5120, 2880) << QSize(1600, 1000);
    QTest::newRow("an upright screen") << QSize(1080, 1920) << QSize(1072, 1000);
}

void LookTest::firstSize()
{
    QFETCH(QSize, screen);
    QTEST(FirstSize::window(screen), "window");
}

void LookTest::smallScreens_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<bool>("panel");
    QTest::addColumn<bool>("scrolls");
    QTest::newRow("1024 x 600 at twice the scale") << QSize(512, 300) << false << true;
    QTest::newRow("1024 x 600 at one and a half") << QSize(683, 400) << false << false;
    QTest::newRow("1366 x 768 at twice the scale") << QSize(683, 384) << false << false;
    QTest::newRow("800 x 600") << QSize(800, 600) << true << false;
}

void LookTest::smallScreens()
{
    QFETCH(QSize, screen);
    QFETCH(bool, panel);
    QFETCH(bool, scrolls);
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    const QSize size = FirstSize::window(screen);
    QCOMPARE(FirstSize::hasRoomForPanel(size.width()), panel);
    window.hideShowList(panel);
    window.resize(size);
    window.show();
    const auto *const room = Window::get<QScrollArea>(window, "roomScroll");
    auto *const pages = Window::get<QStackedWidget>(window, "stPages");
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), size);
        QCOMPARE(room->horizontalScrollBar()->maximum() > 0, scrolls);
        // What is not seen at once can be scrolled to.
        const QSize reach = room->viewport()->size() + QSize(room->horizontalScrollBar()->maximum(),
                                                             room->verticalScrollBar()->maximum());
        QCOMPARE(reach, room->widget()->size());
        QCOMPARE(room->widget()->size(),
                 room->widget()->minimumSizeHint().expandedTo(room->viewport()->size()));
    }
}

void LookTest::columnsFillTheWindow_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<int>>("panel");
    QTest::addColumn<QList<int>>("list");
    QTest::newRow("usual") << 1180 << QList<int>{220, 960} << QList<int>{280, 680};
    QTest::newRow("the list gives way first")
        << 1016 << QList<int>{200, 816} << QList<int>{238, 578};
    QTest::newRow("the list stays readable") << 800 << QList<int>{200, 600} << QList<int>{200, 400};
    QTest::newRow("wide") << 1600 << QList<int>{220, 1380} << QList<int>{340, 1040};
}

void LookTest::columnsFillTheWindow()
{
    QFETCH(int, width);
    QTEST(FirstSize::panelAndPages(width), "panel");
    QTEST(FirstSize::listAndRecord(width), "list");
}

void LookTest::columnsKeepTheirWidths()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    window.resize(1180, 760);
    window.show();
    auto *const columns = Window::get<QSplitter>(window, "mainSplitter");
    auto *const pages = Window::get<QSplitter>(window, "recordSplitter");
    columns->setSizes({260, 900});
    pages->setSizes({333, 500});
    const QList<int> chosen = columns->sizes();
    const QList<int> chosenInside = pages->sizes();
    const auto *const pageArea = Window::get<QWidget>(window, "mainArea");
    const int shared = pageArea->width();
    window.hideShowList(false);
    QTRY_VERIFY(pageArea->width() > shared);
    window.hideShowList(true);
    QTRY_COMPARE(columns->sizes(), chosen);
    Window::click(window, "pbHideList");
    Window::click(window, "pbHideList");
    QCOMPARE(pages->sizes(), chosenInside);
    window.changeToNewUserPage();
    window.changeToUsersPage();
    QCOMPARE(columns->sizes(), chosen);
    QCOMPARE(pages->sizes(), chosenInside);
}

void LookTest::theSaveButtonIsTheMainOne()
{
    const Workspace here;
    const Tavenor window;
    for (const char *const name : {"pbSaveNewUser", "pbSaveFilters", "pbRecalc"}) {
        QVERIFY2(Window::get<QPushButton>(window, name)->isDefault(), name);
    }
}

void LookTest::anUnsuccessfulSearchIsSeen()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    const Tavenor window;
    SearchLine *const line = searchLine(window);
    line->setText(QStringLiteral("zz"));
    QVERIFY(!line->hasNoMatch());
    line->setText(QStringLiteral("zzz"));
    QVERIFY(line->hasNoMatch());
    QCOMPARE(line->accessibleDescription(), QStringLiteral("0 Records"));
    QCOMPARE(Window::heading(window), QStringLiteral("Dracula"));
    line->setText(QStringLiteral("casa"));
    QVERIFY(!line->hasNoMatch());
    QCOMPARE(Window::heading(window), QStringLiteral("La casa degli spiriti"));
    line->setText(QStringLiteral("casax"));
    QVERIFY(line->hasNoMatch());
    line->clear();
    QVERIFY(!line->hasNoMatch());
}

void LookTest::anOldSearchSaysNothingOfANewList()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    const Tavenor window;
    searchLine(window)->setText(QStringLiteral("zzz"));
    QVERIFY(searchLine(window)->hasNoMatch());
    Window::pressTable(window, QStringLiteral("autori"));
    QVERIFY(!searchLine(window)->hasNoMatch());
    QCOMPARE(searchLine(window)->text(), QStringLiteral("zzz"));
}

void LookTest::anEmptyTableSaysHowToFillIt()
{
    const Workspace here;
    here.sql(Books, twoTables(QString()));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(said(window), QStringLiteral("0 Records\nAggiungi un nuovo Record"));
}

void LookTest::anEmptyFilteredListSaysWhy()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    window.changeToFilterPage();
    auto *const contents = Window::get<QWidget>(window, "filterContents");
    for (inputDataForm *const form : contents->findChildren<inputDataForm *>()) {
        if (form->label() == QStringLiteral("Titolo")) {
            Window::get<QLineEdit>(*form, "leData")->setText(QStringLiteral("zzz"));
        }
    }
    window.enableFilters();
    QVERIFY(Window::lines(window).isEmpty());
    QCOMPARE(said(window), QStringLiteral("0 Records\nFiltra › Azzera › Applica"));
    window.changeToFilterPage();
    window.disableFilters();
    window.enableFilters();
    QCOMPARE(Window::lines(window).size(), 3);
    QCOMPARE(said(window), QString());
}

void LookTest::aReadOnlyListOffersNothing()
{
    const Workspace here;
    here.sql(Books, twoTables(QString()));
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const Tavenor window;
    QCOMPARE(said(window), QStringLiteral("0 Records"));
}

void LookTest::aNewDatabaseSaysHowToMakeATable()
{
    const Workspace here;
    here.remember(Books);
    Tavenor window;
    const QString none = QStringLiteral("Nessuna Tabella Caricata!\n");
    QCOMPARE(said(window), none + QStringLiteral("Opzioni › Modo Amministratore, "
                                                 "poi Opzioni › Crea Tabella"));
    window.administratorModeEnabled(true);
    QCOMPARE(said(window), none + QStringLiteral("Opzioni › Crea Tabella"));
    window.administratorModeEnabled(false);
    QCOMPARE(said(window), none + QStringLiteral("Opzioni › Modo Amministratore, "
                                                 "poi Opzioni › Crea Tabella"));
}

void LookTest::aNewTableIsPointedAt()
{
    const Workspace here;
    here.remember(Books);
    Tavenor window;
    window.newTable();
    Window::get<QLineEdit>(window, "leTableName")->setText(QStringLiteral("Francobolli"));
    Window::get<QLineEdit>(*Window::get<QWidget>(window, "newElementContents"), "leName")
        ->setText(QStringLiteral("Nome"));
    window.acceptedNewTable();
    QCOMPARE(Window::tables(window), QStringList(QStringLiteral("Francobolli")));
    const QString way = QStringLiteral("Nessuna Tabella Caricata!\nTabelle › Francobolli");
    QCOMPARE(said(window), way);
    // The program's own tables, listed before it then, are nobody's.
    EntryPage::setAdvancedMode(window, true);
    QVERIFY(Window::tables(window).size() > 1);
    QVERIFY(Window::tables(window).first() != QStringLiteral("Francobolli"));
    QCOMPARE(said(window), way);
    EntryPage::setAdvancedMode(window, false);
    Window::pressTable(window, QStringLiteral("Francobolli"));
    QCOMPARE(said(window), QStringLiteral("0 Records\nAggiungi un nuovo Record"));
}

void LookTest::withoutATableThereIsNothingToFilter()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    Tavenor window;
    const auto *const panel = Window::get<QWidget>(window, "filtersContents");
    QCOMPARE(panel->accessibleDescription(), QString());
    window.administratorModeEnabled(true);
    ModalResponder responder;
    responder.chooseFile(here.path(Books));
    window.openDb();
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("Filtra › Salva Filtro"));
    responder.answer(QMessageBox::Yes);
    window.deleteAll();
    QVERIFY(Window::tables(window).isEmpty());
    QCOMPARE(panel->accessibleDescription(), QString());
}

void LookTest::anEmptyPanelOfFiltersSaysHowToMakeOne()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    const Tavenor window;
    const auto *const panel = Window::get<QWidget>(window, "filtersContents");
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("Filtra › Salva Filtro"));
    {
        const Tavenor reader;
        QCOMPARE(Window::get<QWidget>(reader, "filtersContents")->accessibleDescription(),
                 QString());
    }
}

void LookTest::aNewTableIsDesignedUnderNoOtherName()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    window.show();
    const auto *const name = Window::get<QLabel>(window, "lbListName");
    const auto *const icon = Window::get<QLabel>(window, "lbListIcon");
    const auto *const calculate = Window::get<QPushButton>(window, "pbCalc");
    const auto fromRight = [calculate] {
        return calculate->parentWidget()->width() - calculate->x();
    };
    const int place = fromRight();
    QVERIFY(name->isVisible() && icon->isVisible());
    window.newTable();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QVERIFY(!name->isVisible() && !icon->isVisible());
    const auto *const heading = Window::get<QLabel>(window, "lbDesigner");
    QTRY_VERIFY(heading->isVisible());
    QCOMPARE(heading->parentWidget(), name->parentWidget());
    QTRY_COMPARE(fromRight(), place);
    QCOMPARE(name->text(), QStringLiteral("libri"));
    window.cancelNewTable();
    QVERIFY(name->isVisible() && icon->isVisible());
    window.newTable();
    window.addField();
    QVERIFY(name->isVisible() && icon->isVisible());
    QTRY_VERIFY(heading->isVisible());
    QVERIFY(heading->parentWidget() != name->parentWidget());
    window.newTable();
    QVERIFY(!name->isVisible());
    Window::pressTable(window, QStringLiteral("autori"));
    QVERIFY(name->isVisible() && icon->isVisible());
}

void LookTest::aPanelThatIsOffHasTheWindowsGround()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    QPalette palette = window.palette();
    palette.setColor(QPalette::Disabled, QPalette::Window, Qt::red);
    window.setPalette(palette);
    window.show();
    Window::get<QWidget>(window, "listFrame")->setEnabled(false);
    const auto *const panel = Window::get<QScrollArea>(window, "tablesScroll");
    const QPoint corner(panel->width() / 2, panel->height() - 2);
    const QImage painted = window.grab().toImage();
    QCOMPARE(painted.pixelColor(panel->mapTo(&window, corner)),
             palette.color(QPalette::Active, QPalette::Window));
}

void LookTest::theRuleOverTheTotalEndsWithTheColumns()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    window.resize(2560, 1440);
    window.show();
    Window::click(window, "pbCalc");
    const auto *const columns = Window::get<QWidget>(window, "calcContents");
    const auto *const rule = Window::get<QWidget>(window, "totalLine");
    QTRY_VERIFY(rule->isVisible());
    QTRY_COMPARE(rule->width(), columns->width());
    QCOMPARE(rule->mapTo(&window, QPoint()).x(), columns->mapTo(&window, QPoint()).x());
}

void LookTest::theFirstConditionsWordIsPale()
{
    const Workspace here;
    here.sql(Books, twoTables(ThreeBooks));
    here.remember(Books);
    Tavenor window;
    window.changeToFilterPage();
    const auto forms =
        Window::get<QWidget>(window, "filterContents")->findChildren<inputDataForm *>();
    inputDataForm *id = nullptr;
    inputDataForm *title = nullptr;
    inputDataForm *year = nullptr;
    for (inputDataForm *const form : forms) {
        const QString label = form->label();
        (label == QStringLiteral("Id")       ? id
         : label == QStringLiteral("Titolo") ? title
                                             : year) = form;
    }
    QVERIFY(id != nullptr && title != nullptr && year != nullptr);
    const QImage pale = joiningWord(*year);
    year->setActive(true);
    QCOMPARE(joiningWord(*year), pale);
    title->setActive(true);
    QCOMPARE(joiningWord(*title), pale);
    QVERIFY(joiningWord(*year) != pale);
    title->clearCondition();
    QCOMPARE(joiningWord(*year), pale);
    // The Id's condition decides nothing, so it is no first one.
    id->setActive(true);
    QCOMPARE(joiningWord(*year), pale);
}

QTEST_MAIN(LookTest)
#include "ui_look.moc"
