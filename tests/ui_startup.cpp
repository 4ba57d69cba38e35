// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Start-up, the lock, opening and creating databases.
#include "app/Tavenor.h"
#include "app/workingfiles.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QStackedWidget>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Coins = QStringLiteral("coins.db");
const QString CannotOpen = QStringLiteral("ERRORE: Impossibile aprire il Db!");

const QStringList BooksTables = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Zeno'),(2,'Atlante')"),
};
const QStringList CoinsTables = {
    QStringLiteral("CREATE TABLE monete (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("CREATE TABLE zecche (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO monete VALUES (1,'Lira')"),
};

const QStringList WritingButtons = {QStringLiteral("pbNewUser"), QStringLiteral("pbEditUser"),
                                    QStringLiteral("pbDeleteUser")};

} // namespace

class StartUp : public QObject
{
    Q_OBJECT

private slots:
    void firstStartRemembersNothing();
    void firstStartTellsWhatToDo();
    void endReleasesLock();
    void secondCopyIsReadOnly();
    void readOnlyCopyWritesNothing();
    void readOnlyCopyCreatesNoDatabase();
    void lockFileStates_data();
    void lockFileStates();
    void remembersDatabase();
    void newFileGetsReservedTablesInOrder();
    void secondOpeningCreatesNothing();
    void reservedTablesAreListedLater();
    void onlyReservedTables();
    void oneTableFillsNothing();
    void firstTableIsShown();
    void dataFolders();
    void relativePathsKeepFoldersHere();
    void cancelledDialogsChangeNothing();
    void openReplacesDatabase();
    void olderPathStaysOnAFullDisk();
    void openLeavesTheEntryPage();
    void newCreatesDatabase();
    void openCreatesMissingFile();
    void unusableFiles_data();
    void unusableFiles();
    void failedOpenKeepsDatabase();
    void pathLine();
    void tablePanel();
    void foreignReservedTableOfOtherCase();
};

void StartUp::firstStartRemembersNothing()
{
    const Workspace here;
    const Tavenor window;
    QCOMPARE(window.windowTitle(), QStringLiteral("DB Administration Tool"));
    QVERIFY(here.exists(QStringLiteral("lastDb.dat")));
    QCOMPARE(here.read(QStringLiteral("lastDb.dat")), QByteArray());
    QCOMPARE(here.read(QStringLiteral("lockDb.dat")), QByteArray("Locked"));
    QVERIFY(Window::tables(window).isEmpty());
    QVERIFY(!here.exists(QStringLiteral("TABLES_DOC")));
    QVERIFY(!here.exists(QStringLiteral("DB_DATA")));
}

void StartUp::firstStartTellsWhatToDo()
{
    const Workspace here;
    const Tavenor window;
    const QString shown =
        Window::get<QListWidget>(window, "userListWidget")->accessibleDescription();
    QVERIFY(shown.contains(QStringLiteral("Nessuna Tabella Caricata!")));
    QVERIFY(shown.contains(QStringLiteral("File › Apri Db")));
    QVERIFY(shown.contains(QStringLiteral("Opzioni › Modo Amministratore, poi File › Nuovo Db")));
}

void StartUp::endReleasesLock()
{
    const Workspace here;
    {
        const Tavenor window;
        QVERIFY(here.exists(QStringLiteral("lockDb.dat")));
    }
    QVERIFY(!here.exists(QStringLiteral("lockDb.dat")));
}

void StartUp::secondCopyIsReadOnly()
{
    const Workspace here;
    auto first = std::make_unique<Tavenor>();
    QVERIFY(Window::action(*first, "actionChange_Table_Icon")->isEnabled());
    {
        const Tavenor second;
        QCOMPARE(second.windowTitle(), QStringLiteral("DB Administration Tool - READONLY"));
        for (const QString &name : WritingButtons) {
            QVERIFY2(!Window::get<QPushButton>(second, name.toUtf8().constData())->isEnabled(),
                     qPrintable(name));
        }
        for (const char *const name :
             {"actionAdministrator_Mode", "actionNew_Db", "actionTable", "actionAdd_Field",
              "actionRemove_Table", "actionChange_Table_Icon", "actionDeleteFilter",
              "actionClear_Selected_List", "actionClear_All_Tables", "actionExport",
              "actionExport_To_File", "actionExport_Selected_Record_To_File",
              "actionExport_Selected_Record_To_File_txt", "actionExport_All_Tables_Structures",
              "actionExport_Selected_Tables_Structure", "actionImport_Table_Structure",
              "actionImport_From_File_Export_Manager_File", "actionAutoExportAll",
              "actionDelete_All_Database"}) {
            QVERIFY2(!Window::action(second, name)->isEnabled(), name);
        }
        for (const char *const name : {"actionOpen_Db", "actionExit", "actionTool"}) {
            QVERIFY2(Window::action(second, name)->isEnabled(), name);
        }
    }
    QVERIFY(here.exists(QStringLiteral("lockDb.dat")));
    first.reset();
    QVERIFY(!here.exists(QStringLiteral("lockDb.dat")));
}

void StartUp::readOnlyCopyWritesNothing()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const QByteArray before = here.read(Books);
    {
        const Tavenor window;
        QCOMPARE(Window::lines(window),
                 (QStringList{QStringLiteral("Atlante"), QStringLiteral("Zeno")}));
        Window::selectLine(window, 1);
        QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    }
    QCOMPARE(here.read(Books), before);
    QVERIFY(!here.exists(QStringLiteral("TABLES_DOC")));
    QVERIFY(!here.exists(QStringLiteral("DB_DATA")));
    QCOMPARE(here.read(QStringLiteral("lockDb.dat")), QByteArray("Locked"));
}

void StartUp::readOnlyCopyCreatesNoDatabase()
{
    const Workspace here;
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    here.remember(Books);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    const Tavenor window;
    QCOMPARE(responder.takeTexts(), QStringList{CannotOpen});
    QVERIFY(!here.exists(Books));
}

void StartUp::lockFileStates_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("readOnly");
    QTest::newRow("empty file is free") << QByteArray() << false;
    QTest::newRow("word alone locks") << QByteArray("Locked") << true;
    QTest::newRow("word inside the first line locks") << QByteArray("xx Locked yy\n") << true;
    QTest::newRow("word in another case is free") << QByteArray("locked") << false;
    QTest::newRow("word in the second line is free") << QByteArray("\nLocked") << false;
    QTest::newRow("garbage is free") << QByteArray("\0\xff\xfe", 3) << false;
}

void StartUp::lockFileStates()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, readOnly);
    const Workspace here;
    here.write(QStringLiteral("lockDb.dat"), content);
    const Tavenor window;
    QCOMPARE(window.windowTitle().endsWith(QStringLiteral(" - READONLY")), readOnly);
    QCOMPARE(here.read(QStringLiteral("lockDb.dat")), readOnly ? content : QByteArray("Locked"));
}

void StartUp::remembersDatabase()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.write(QStringLiteral("lastDb.dat"), here.path(Books).toUtf8() + "\nignored\n");
    const Tavenor window;
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("autori")}));
    QCOMPARE(Window::get<QLineEdit>(window, "leDbName")->text(), here.path(Books));
    QCOMPARE(Window::get<QPushButton>(window, "pbDbName")->text(), Books);
}

void StartUp::newFileGetsReservedTablesInOrder()
{
    const Workspace here;
    here.remember(Books);
    {
        const Tavenor window;
        QVERIFY(Window::tables(window).isEmpty());
    }
    QCOMPARE(here.column(Books, QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid")),
             (QStringList{QStringLiteral("settings"), QStringLiteral("filters"),
                          QStringLiteral("subtablesconfigs")}));
    QCOMPARE(
        here.value(Books, QStringLiteral("SELECT sql FROM sqlite_master WHERE name='settings'"))
            .toString(),
        QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath text)"));
    QCOMPARE(here.value(Books, QStringLiteral("SELECT sql FROM sqlite_master WHERE name='filters'"))
                 .toString(),
             QStringLiteral("CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,"
                            "RSTRINGFORMAT_filterName text,NSTRINGFORMAT_filterTableName text,"
                            "NSTRINGFORMAT_filterFieldName text,"
                            "NSTRINGFORMAT_filterFieldValue text,"
                            "NSTRINGFORMAT_filterFieldType text,"
                            "NSTRINGFORMAT_filterFieldCondition text,"
                            "NSTRINGFORMAT_filterFieldConditionAndOr text)"));
    QCOMPARE(
        here.value(Books,
                   QStringLiteral("SELECT sql FROM sqlite_master WHERE name='subtablesconfigs'"))
            .toString(),
        QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                       "NSTRINGFORMAT_subConfigFieldType text)"));
}

void StartUp::secondOpeningCreatesNothing()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    {
        const Tavenor window;
    }
    const QByteArray before = here.read(Books);
    const ModalResponder responder;
    {
        const Tavenor window;
    }
    QCOMPARE(here.read(Books), before);
    QVERIFY(responder.boxes().isEmpty());
}

void StartUp::reservedTablesAreListedLater()
{
    // The table list is read before the reserved tables exist, so even the advanced mode, which
    // lists them, needs a fresh reading.
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionTech_Mod")->trigger();
    QCOMPARE(
        Window::tables(window),
        (QStringList{QStringLiteral("libri"), QStringLiteral("autori"), QStringLiteral("settings"),
                     QStringLiteral("filters"), QStringLiteral("subtablesconfigs")}));
}

void StartUp::onlyReservedTables()
{
    const Workspace here;
    here.remember(Books);
    {
        const Tavenor makesThem;
    }
    const ModalResponder responder;
    const Tavenor window;
    QVERIFY(Window::tables(window).isEmpty());
    QCOMPARE(Window::get<QWidget>(window, "mainArea")
                 ->findChild<QLabel *>(QStringLiteral("lbListName"))
                 ->text(),
             QString());
    QVERIFY(Window::lines(window).isEmpty());
}

void StartUp::oneTableFillsNothing()
{
    const Workspace here;
    here.sql(Books, {BooksTables.at(0), BooksTables.at(2)});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});
    QVERIFY(Window::lines(window).isEmpty());
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 2);
}

void StartUp::firstTableIsShown()
{
    const Workspace here;
    here.sql(Books, QStringList{QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id "
                                               "integer primary key,RSTRINGFORMAT_t text)")} +
                        BooksTables);
    here.remember(Books);
    const Tavenor window;
    const QWidget *const area = Window::get<QWidget>(window, "mainArea");
    QCOMPARE(Window::get<QLabel>(*area, "lbListName")->text(), QStringLiteral("libri"));
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Atlante"), QStringLiteral("Zeno")}));
    QCOMPARE(Window::heading(window), QStringLiteral("Atlante"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("Atlante"));
}

void StartUp::dataFolders()
{
    const Workspace here;
    here.write(QStringLiteral("far/keep"), "");
    here.sql(QStringLiteral("far/books.db"), BooksTables);
    here.remember(QStringLiteral("far/books.db"));
    const Tavenor window;
    QVERIFY(QFileInfo(here.path(QStringLiteral("far/TABLES_DOC"))).isDir());
    QVERIFY(QFileInfo(here.path(QStringLiteral("far/DB_DATA"))).isDir());
    QVERIFY(!here.exists(QStringLiteral("TABLES_DOC")));
}

void StartUp::relativePathsKeepFoldersHere()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.write(QStringLiteral("lastDb.dat"), "books.db");
    const Tavenor window;
    QCOMPARE(Window::get<QPushButton>(window, "pbDbName")->text(), Books);
    QVERIFY(QFileInfo(here.path(QStringLiteral("TABLES_DOC"))).isDir());
    QVERIFY(QFileInfo(here.path(QStringLiteral("DB_DATA"))).isDir());
}

void StartUp::cancelledDialogsChangeNothing()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    Tavenor window;
    window.administratorModeEnabled(true);
    const QByteArray remembered = here.read(QStringLiteral("lastDb.dat"));
    ModalResponder responder;
    responder.cancelFileDialog();
    responder.cancelFileDialog();
    Window::action(window, "actionOpen_Db")->trigger();
    Window::action(window, "actionNew_Db")->trigger();
    QCOMPARE(responder.fileDialogs().size(), 2);
    for (const ModalResponder::FileDialog &dialog : responder.fileDialogs()) {
        QCOMPARE(dialog.caption, QStringLiteral("Open File"));
        QCOMPARE(dialog.directory, QStringLiteral("/home"));
        QCOMPARE(dialog.nameFilters, QStringList{QStringLiteral("DataBase (*.db)")});
    }
    QVERIFY(!responder.fileDialogs().at(0).saving);
    QVERIFY(responder.fileDialogs().at(1).saving);
    QCOMPARE(here.read(QStringLiteral("lastDb.dat")), remembered);
    QCOMPARE(Window::tables(window).size(), 2);
    QCOMPARE(Window::lines(window).size(), 2);
}

void StartUp::openReplacesDatabase()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.sql(Coins, CoinsTables);
    here.remember(Books);
    const Tavenor window;
    ModalResponder responder;
    responder.chooseFile(here.path(Coins));
    Window::action(window, "actionOpen_Db")->trigger();
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("monete"), QStringLiteral("zecche")}));
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Lira")});
    QCOMPARE(Window::shownText(window, QStringLiteral("Nome")), QStringLiteral("Lira"));
    QCOMPARE(here.read(QStringLiteral("lastDb.dat")), here.path(Coins).toUtf8());
    QCOMPARE(window.windowTitle(), QStringLiteral("DB Administration Tool"));
}

void StartUp::olderPathStaysOnAFullDisk()
{
    const Workspace here;
    WorkingFiles::setLastDatabase(QStringLiteral("/dati/vecchio.db"));
    {
        const SmallDisk disk(4);
        WorkingFiles::setLastDatabase(QStringLiteral("/dati/nuovo.db"));
    }
    QCOMPARE(WorkingFiles::lastDatabase(), QStringLiteral("/dati/vecchio.db"));
    QCOMPARE(QDir(here.path()).entryList(QDir::Files), QStringList(QStringLiteral("lastDb.dat")));
}

void StartUp::openLeavesTheEntryPage()
{
    // A form for a record of the old database must not save into the new one.
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    const Tavenor window;
    Window::click(window, "pbNewUser");
    const auto *const pages = Window::get<QStackedWidget>(window, "stPages");
    QCOMPARE(pages->currentIndex(), 3);
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("new.db")));
    here.write(QStringLiteral("new.db"), "");
    Window::action(window, "actionOpen_Db")->trigger();
    QCOMPARE(pages->currentIndex(), 2);
    QCOMPARE(window.findChild<QLayout *>(QStringLiteral("inputDataLayout"))->count(), 0);
}

void StartUp::newCreatesDatabase()
{
    const Workspace here;
    Tavenor window;
    window.administratorModeEnabled(true);
    ModalResponder responder;
    responder.chooseFile(here.path(Coins));
    Window::action(window, "actionNew_Db")->trigger();
    QCOMPARE(here.read(QStringLiteral("lastDb.dat")), here.path(Coins).toUtf8());
    QCOMPARE(here.column(Coins, QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid")),
             (QStringList{QStringLiteral("settings"), QStringLiteral("filters"),
                          QStringLiteral("subtablesconfigs")}));
}

void StartUp::openCreatesMissingFile()
{
    const Workspace here;
    here.remember(QStringLiteral("new.db"));
    const Tavenor window;
    QVERIFY(here.exists(QStringLiteral("new.db")));
}

void StartUp::unusableFiles_data()
{
    QTest::addColumn<QString>("remembered");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("text file") << QStringLiteral("text.db");
    QTest::newRow("picture") << QStringLiteral("picture.db");
    QTest::newRow("broken header") << QStringLiteral("broken.db");
    QTest::newRow("missing folder") << QStringLiteral("gone/books.db");
    QTest::newRow("path too long") << QString(5000, QLatin1Char('x'));
}

void StartUp::unusableFiles()
{
    QFETCH(QString, remembered);
    const Workspace here;
    here.write(QStringLiteral("folder/file"), "");
    here.write(QStringLiteral("text.db"), QByteArray("Caro diario, ").repeated(500));
    here.write(QStringLiteral("picture.db"),
               QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(4000, 'x'));
    here.sql(Books, BooksTables);
    QByteArray broken = here.read(Books);
    here.write(QStringLiteral("broken.db"), broken.replace(0, 16, "SQLite format 4\0"));
    here.remember(remembered);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    const Tavenor window;
    QCOMPARE(responder.takeTexts(), QStringList{CannotOpen});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QVERIFY(Window::tables(window).isEmpty());
    QCOMPARE(here.read(QStringLiteral("lockDb.dat")), QByteArray("Locked"));

    responder.chooseFile(here.path(Books));
    Window::action(window, "actionOpen_Db")->trigger();
    QCOMPARE(Window::lines(window).size(), 2);
}

void StartUp::failedOpenKeepsDatabase()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.write(QStringLiteral("text.db"), QByteArray("Caro diario, ").repeated(500));
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("text.db")));
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionOpen_Db")->trigger();
    QCOMPARE(responder.takeTexts(), QStringList{CannotOpen});
    // Remembered before it is known that it cannot be opened.
    QCOMPARE(here.read(QStringLiteral("lastDb.dat")),
             here.path(QStringLiteral("text.db")).toUtf8());
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(Window::get<QPushButton>(window, "pbDbName")->text(), Books);
    Window::pressTable(window, QStringLiteral("autori"));
    QVERIFY(Window::lines(window).isEmpty());
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 2);
}

void StartUp::pathLine()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    Tavenor window;
    window.show();
    const auto *const line = Window::get<QLineEdit>(window, "leDbName");
    QVERIFY(!line->isVisible());
    Window::click(window, "pbDbName");
    QVERIFY(line->isVisible());
    QVERIFY(Window::get<QPushButton>(window, "pbDbName")->isVisible());
    Window::click(window, "pbDbName");
    QVERIFY(!line->isVisible());
}

void StartUp::tablePanel()
{
    const Workspace here;
    Tavenor window;
    window.show();
    const auto *const panel = Window::get<QWidget>(window, "listFrame");
    QVERIFY(panel->isVisible());
    window.hideShowList(false);
    QVERIFY(!panel->isVisible());
    window.hideShowList(true);
    QVERIFY(panel->isVisible());
}

void StartUp::foreignReservedTableOfOtherCase()
{
    const Workspace here;
    here.sql(Books,
             BooksTables + QStringList{QStringLiteral("CREATE TABLE Settings (a text, b text)")});
    here.remember(Books);
    const ModalResponder responder;
    {
        const Tavenor window;
        QVERIFY(Window::tables(window).contains(QStringLiteral("Settings")));
    }
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(here.value(Books, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name "
                                              "LIKE 'settings'"))
                 .toInt(),
             1);
}

QTEST_MAIN(StartUp)
#include "ui_startup.moc"
