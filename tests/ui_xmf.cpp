// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Export and import of records in Export Manager Files.
#include "tests/support/EntryPage.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/Sql.h"
#include "widgets/progressBarForm.h"

#include <QDir>
#include <QProgressBar>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <sys/stat.h>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Folder = QStringLiteral("ExportManagerFiles");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");
const QString CannotWrite = QStringLiteral("ERRORE: Impossibile scrivere sul file!");
const QString CannotOpen = QStringLiteral("ERRORE: Impossibile aprire il file!");
const QString UnknownTable = QStringLiteral("ERRORE: La Tabella non esiste!");
const QString Incompatible = QStringLiteral("ERRORE: Tabella Incompatibile!");

const char *const Commands[] = {"actionExport", "actionExport_Selected_Record_To_File",
                                "actionAutoExportAll",
                                "actionImport_From_File_Export_Manager_File"};

const QStringList BooksTables = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Anno text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nota text)"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Primo libro','1980'),(2,'L''anno #1 però',NULL)"),
};
const QByteArray BooksFile =
    "libri\n"
    "RINTEGERFORMAT_Id###1###RSTRINGFORMAT_Titolo###Primo libro###NINTEGERFORMAT_Anno###1980###\n"
    "RINTEGERFORMAT_Id###2###RSTRINGFORMAT_Titolo###L'anno #1 però###NINTEGERFORMAT_Anno######\n";

// A record's line of the table "libri".
QByteArray book(const QByteArray &id, const QByteArray &title, const QByteArray &year = "0")
{
    return "RINTEGERFORMAT_Id###" + id + "###RSTRINGFORMAT_Titolo###" + title +
           "###NINTEGERFORMAT_Anno###" + year + "###\n";
}

progressBarForm &progressForm()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const form = qobject_cast<progressBarForm *>(widget)) {
            return *form;
        }
    }
    qFatal("no progress dialog");
}

QString progressText()
{
    return Window::get<QLabel>(progressForm(), "lbProgressTitle")->text();
}

int progressValue()
{
    return Window::get<QProgressBar>(progressForm(), "progressBar")->value();
}

// Answers every box that comes with OK and keeps the texts.
class BoxCounter : public QObject
{
public:
    BoxCounter()
    {
        connect(&timer, &QTimer::timeout, this, [this] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                texts.append(box->text());
                box->done(QMessageBox::Ok);
            }
        });
        timer.start(0);
    }
    QStringList texts;

private:
    QTimer timer;
};

// The program over a database of its own, with files to import.
struct Program {
    explicit Program(const QStringList &statements = BooksTables)
    {
        here.sql(Books, statements);
        here.remember(Books);
        window = std::make_unique<Tavenor>();
    }
    // Imports these bytes as a file; the texts of the boxes that came.
    QStringList import(const QByteArray &bytes, int expectedBoxes = 0) const
    {
        here.write(QStringLiteral("import.xmf"), bytes);
        return importFiles({QStringLiteral("import.xmf")}, expectedBoxes);
    }
    QStringList importFiles(const QStringList &names, int expectedBoxes = 0) const
    {
        ModalResponder responder;
        QStringList paths;
        for (const QString &name : names) {
            paths.append(here.path(name));
        }
        responder.chooseFiles(paths);
        for (int i = 0; i < expectedBoxes; ++i) {
            responder.answer(QMessageBox::Ok);
        }
        trigger("actionImport_From_File_Export_Manager_File");
        return responder.takeTexts();
    }
    void trigger(const char *action) const { Window::action(*window, action)->trigger(); }
    QByteArray exported(const char *table) const
    {
        return here.read(Folder + QLatin1Char('/') + QString::fromUtf8(table) +
                         QStringLiteral(".xmf"));
    }
    QStringList rows(const char *table = "libri") const
    {
        return EntryPage::exactRows(here, Books, QString::fromUtf8(table));
    }

    Workspace here;
    std::unique_ptr<Tavenor> window;
};

QStringList texts(std::initializer_list<const char *> utf8)
{
    QStringList list;
    for (const char *const one : utf8) {
        list.append(QString::fromUtf8(one));
    }
    return list;
}

} // namespace

class Xmf : public QObject
{
    Q_OBJECT

private slots:
    void tableExport();
    void emptyTableExport();
    void cancelledExports_data();
    void cancelledExports();
    void singleRecordExport();
    void singleRecordExportOfAnyTable();
    void exportOfAMissingRecord();
    void exportOfEverything();
    void exportOfEverythingGoesOn();
    void exportOfEverythingReadsTheTablesAnew();
    void olderFileStaysOnAFullDisk();
    void openDatabaseIsNoFile_data();
    void openDatabaseIsNoFile();
    void lockedDatabaseExportsNothing();
    void hopelessImportEnds();
    void commandsWithoutATable();
    void commandsWithoutADatabase();
    void readOnlyCopies();
    void importDialog();
    void nothingChosen();
    void importIntoAnEmptyTable();
    void importingTwiceChangesNothing();
    void takenIdsAreLeftOut();
    void oddIds();
    void noIdIsLeft();
    void userPathIsMadeAnew_data();
    void userPathIsMadeAnew();
    void referencesAreRead();
    void referencesToTheTableItself();
    void incompatibleLines_data();
    void incompatibleLines();
    void recordsBeforeAnOffendingLineStay();
    void valuesOutsideTheFormatAreReported_data();
    void valuesOutsideTheFormatAreReported();
    void unknownTables_data();
    void unknownTables();
    void filesThatCannotBeOpened_data();
    void filesThatCannotBeOpened();
    void hugeLines();
    void severalFiles();
    void oneRecordFileWithoutRecord();
    void shownTableIsReloaded();
    void importWithoutACurrentTable();
    void importOfReservedTablesShows();
    void insertMessagesComeBack_data();
    void insertMessagesComeBack();
    void failedBatchIsDoneAgain();
    void foreignTablesRecordByRecord();
    void asRecordByRecord();
};

void Xmf::tableExport()
{
    const Program program;
    ModalResponder responder;
    responder.chooseFile(program.here.path(QStringLiteral("mine.xmf")));
    program.trigger("actionExport");
    QCOMPARE(responder.fileDialogs().size(), 1);
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Save File"));
    QCOMPARE(dialog.directory, program.here.path(Folder));
    QCOMPARE(dialog.proposedName, QStringLiteral("libri.xmf"));
    QCOMPARE(dialog.nameFilters, QStringList(QStringLiteral("Export Manager File (*.xmf)")));
    QVERIFY(dialog.saving);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.here.read(QStringLiteral("mine.xmf")), BooksFile);
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Esportazione "));
    QCOMPARE(progressText(), QStringLiteral("Esportazione libri"));
    // Before the last of six values.
    QCOMPARE(progressValue(), 83);
    QVERIFY(!progressForm().isVisible());
    QVERIFY(!progressForm().isHeld());
}

void Xmf::emptyTableExport()
{
    const Program program;
    ModalResponder responder;
    program.window->changeTable(QStringLiteral("autori"));
    responder.chooseFile(program.here.path(QStringLiteral("a.txt")));
    program.trigger("actionExport");
    // The dialog's answer is taken as it is.
    QCOMPARE(program.here.read(QStringLiteral("a.txt")), QByteArray("autori\n"));
    responder.chooseFile(program.here.path(QStringLiteral("a.txt")));
    program.trigger("actionExport_Selected_Record_To_File");
    QCOMPARE(program.here.read(QStringLiteral("a.txt")), QByteArray("autori\n"));
    QVERIFY(responder.boxes().isEmpty());
}

void Xmf::cancelledExports_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("title");
    QTest::newRow("a table") << QByteArray("actionExport") << "Esportazione ";
    QTest::newRow("a record") << QByteArray("actionExport_Selected_Record_To_File")
                              << "Importazione ";
}

void Xmf::cancelledExports()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, title);
    const Program program;
    ModalResponder responder;
    responder.cancelFileDialog();
    responder.answer(QMessageBox::Ok);
    program.trigger(action);
    QCOMPARE(responder.takeTexts(), QStringList(CannotWrite));
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(progressForm().windowTitle(), title);
    QCOMPARE(progressText(), QStringLiteral("Esportazione libri"));
    QCOMPARE(progressValue(), 0);
    QCOMPARE(QDir(program.here.path(Folder)).entryList(QDir::Files), QStringList());
}

void Xmf::singleRecordExport()
{
    const Program program;
    Window::selectLine(*program.window, 0);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("L'anno #1 però"));
    ModalResponder responder;
    responder.chooseFile(program.here.path(QStringLiteral("one.xmf")));
    program.trigger("actionExport_Selected_Record_To_File");
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Save File"));
    QCOMPARE(dialog.directory, program.here.path(Folder));
    QCOMPARE(dialog.proposedName, QStringLiteral("libri.xmf"));
    QCOMPARE(dialog.nameFilters, QStringList(QStringLiteral("Export Manager File (*.xmf)")));
    QCOMPARE(program.here.read(QStringLiteral("one.xmf")),
             QByteArray("libri\nRINTEGERFORMAT_Id###2###RSTRINGFORMAT_Titolo###L'anno #1 però###"
                        "NINTEGERFORMAT_Anno######"));
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Importazione "));
    QCOMPARE(progressText(), QStringLiteral("Esportazione libri"));
    // The third value of six: the total is that of the whole table.
    QCOMPARE(progressValue(), 33);
    QVERIFY(!progressForm().isVisible());
}

void Xmf::singleRecordExportOfAnyTable()
{
    Program program;
    program.here.sql(Books, {QStringLiteral("INSERT INTO HIDDENTABLE_note VALUES (7,'sette')")});
    QVERIFY(QMetaObject::invokeMethod(program.window.get(), "exportingSingleToFile",
                                      Q_ARG(QString, program.here.path(QStringLiteral("n.xmf"))),
                                      Q_ARG(QString, QStringLiteral("HIDDENTABLE_note")),
                                      Q_ARG(int, 7)));
    QCOMPARE(program.here.read(QStringLiteral("n.xmf")),
             QByteArray("HIDDENTABLE_note\nRINTEGERFORMAT_Id###7###RSTRINGFORMAT_Nota###sette###"));
}

void Xmf::exportOfAMissingRecord()
{
    const Program program;
    const QString name = program.here.path(QStringLiteral("n.xmf"));
    program.window->exportingSingleToFile(name, QStringLiteral("libri"), 99);
    QCOMPARE(program.here.read(QStringLiteral("n.xmf")), QByteArray("libri\n"));
}

void Xmf::exportOfEverything()
{
    const Program program;
    program.here.write(Folder + QStringLiteral("/libri.xmf"), "old");
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    program.trigger("actionAutoExportAll");
    QCOMPARE(responder.takeTexts(), QStringList(QStringLiteral("Esportazione Completata!")));
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Information);
    QCOMPARE(responder.boxes().first().title, QStringLiteral("DB Administration Tool"));
    QCOMPARE(QDir(program.here.path(Folder)).entryList(QDir::Files, QDir::Name),
             texts({"HIDDENTABLE_note.xmf", "autori.xmf", "filters.xmf", "libri.xmf",
                    "settings.xmf", "subtablesconfigs.xmf"}));
    QCOMPARE(program.exported("libri"), BooksFile);
    QCOMPARE(program.exported("HIDDENTABLE_note"), QByteArray("HIDDENTABLE_note\n"));
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Esportazione "));
}

void Xmf::exportOfEverythingGoesOn()
{
    Program program(BooksTables + QStringList{QStringLiteral("CREATE TABLE \"../a\" (x)"),
                                              QStringLiteral("CREATE TABLE \"..\" (x)")});
    QVERIFY(QDir(program.here.path()).mkpath(Folder + QStringLiteral("/autori.xmf")));
    ModalResponder responder;
    for (int i = 0; i < 4; ++i) {
        responder.answer(QMessageBox::Ok);
    }
    program.trigger("actionAutoExportAll");
    QCOMPARE(responder.takeTexts(), QStringList({CannotWrite, CannotWrite, CannotWrite,
                                                 QStringLiteral("Esportazione Completata!")}));
    QCOMPARE(program.exported("libri"), BooksFile);
    QVERIFY(!program.here.exists(QStringLiteral("a.xmf")));
}

void Xmf::exportOfEverythingReadsTheTablesAnew()
{
    Program program;
    program.here.sql(Books, {QStringLiteral("CREATE TABLE nuova (RINTEGERFORMAT_Id integer "
                                            "primary key)"),
                             QStringLiteral("DROP TABLE autori")});
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    program.trigger("actionAutoExportAll");
    QCOMPARE(program.exported("nuova"), QByteArray("nuova\n"));
    QVERIFY(!program.here.exists(Folder + QStringLiteral("/autori.xmf")));
    // The list of tables is left as it was.
    QCOMPARE(Window::tables(*program.window), texts({"libri", "autori"}));
}

void Xmf::olderFileStaysOnAFullDisk()
{
    const Program program;
    QStringList rows;
    for (int id = 10; id < 2000; ++id) {
        rows.append(QStringLiteral("INSERT INTO libri VALUES (%1,'%2','1')")
                        .arg(id)
                        .arg(QString(100, QLatin1Char('x'))));
    }
    program.here.sql(Books, rows);
    program.here.write(QStringLiteral("old.xmf"), "vecchio");
    ModalResponder responder;
    responder.chooseFile(program.here.path(QStringLiteral("old.xmf")));
    responder.answer(QMessageBox::Ok);
    {
        const SmallDisk disk(50000);
        program.trigger("actionExport");
    }
    QCOMPARE(responder.takeTexts(), QStringList(CannotWrite));
    QCOMPARE(program.here.read(QStringLiteral("old.xmf")), QByteArray("vecchio"));
    QVERIFY(!progressForm().isVisible());
}

void Xmf::openDatabaseIsNoFile_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("message");
    QTest::newRow("export") << QByteArray("actionExport") << CannotWrite;
    QTest::newRow("export of a record")
        << QByteArray("actionExport_Selected_Record_To_File") << CannotWrite;
    QTest::newRow("readable export") << QByteArray("actionExport_To_File") << CannotWrite;
    QTest::newRow("readable export of a record")
        << QByteArray("actionExport_Selected_Record_To_File_txt") << CannotWrite;
    QTest::newRow("import") << QByteArray("actionImport_From_File_Export_Manager_File")
                            << CannotOpen;
}

void Xmf::openDatabaseIsNoFile()
{
    // It would be replaced, or lose its locks; also under another name.
    QFETCH(QByteArray, action);
    QFETCH(QString, message);
    const Program program;
    const QString link = program.here.path(QStringLiteral("link.xmf"));
    QVERIFY(QFile::link(program.here.path(Books), link));
    const QByteArray before = program.here.read(Books);
    for (const QString &name : {program.here.path(Books), link}) {
        ModalResponder responder;
        responder.chooseFile(name);
        responder.answer(QMessageBox::Ok);
        program.trigger(action.constData());
        QCOMPARE(responder.takeTexts(), QStringList(message));
        QVERIFY(program.here.read(Books) == before);
    }
}

void Xmf::lockedDatabaseExportsNothing()
{
    const Program program;
    program.here.write(Folder + QStringLiteral("/libri.xmf"), "older");
    QVERIFY(Sql::run(QStringLiteral("PRAGMA busy_timeout = 10")));
    {
        QSqlDatabase other =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(program.here.path(Books));
        QVERIFY(other.open());
        QSqlQuery query(other);
        QVERIFY(query.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        ModalResponder responder;
        // The tables are known from before; one answer each, and the last box.
        for (int box = 0; box < 4; ++box) {
            responder.answer(QMessageBox::Ok);
        }
        program.trigger("actionAutoExportAll");
        QCOMPARE(responder.takeTexts(), QStringList({CannotWrite, CannotWrite, CannotWrite,
                                                     QStringLiteral("Esportazione Completata!")}));
        QVERIFY(query.exec(QStringLiteral("ROLLBACK")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    QCOMPARE(program.here.read(Folder + QStringLiteral("/libri.xmf")), QByteArray("older"));
}

void Xmf::hopelessImportEnds()
{
    // What keeps five records in a row out keeps out all that follow.
    const Program program(BooksTables +
                          QStringList(QStringLiteral(
                              "CREATE TRIGGER no BEFORE INSERT ON autori WHEN "
                              "NEW.RINTEGERFORMAT_Id > 2 BEGIN SELECT raise(FAIL,'chiuso'); END")));
    QByteArray file = "autori\n";
    for (int id = 1; id <= 3000; ++id) {
        file += "RINTEGERFORMAT_Id###" + QByteArray::number(id) + "###RSTRINGFORMAT_Nome###n###\n";
    }
    const QString refused =
        QStringLiteral("ERRORE: Impossibile aggiungere un elemento alla tabella autori!\n"
                       "chiuso Unable to fetch row");
    program.here.write(QStringLiteral("import.xmf"), file);
    const QStringList shown = program.importFiles({QStringLiteral("import.xmf")}, 5);
    QCOMPARE(shown, QStringList({refused, refused, refused, refused, refused}));
    QCOMPARE(program.here.column(Books, QStringLiteral("SELECT RINTEGERFORMAT_Id FROM autori")),
             (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
}

void Xmf::commandsWithoutATable()
{
    // A database with reserved tables only.
    const Program program({QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer "
                                          "primary key,RSTRINGFORMAT_tableName text,"
                                          "RSTRINGFORMAT_iconPath text)")});
    for (const char *const action : {"actionExport", "actionExport_Selected_Record_To_File"}) {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        program.trigger(action);
        QCOMPARE(responder.takeTexts(), QStringList(NoTable));
        QVERIFY(responder.fileDialogs().isEmpty());
    }
    QVERIFY(!program.here.exists(Folder));
}

void Xmf::commandsWithoutADatabase()
{
    const Workspace here;
    const Tavenor window;
    for (const char *const action : Commands) {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        Window::action(window, action)->trigger();
        QCOMPARE(responder.takeTexts(), QStringList(NoTable));
        QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
        QVERIFY(responder.fileDialogs().isEmpty());
    }
    QVERIFY(!here.exists(Folder));
}

void Xmf::readOnlyCopies()
{
    {
        const Program writing;
        for (const char *const action : Commands) {
            QVERIFY2(Window::action(*writing.window, action)->isEnabled(), action);
        }
    }
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const Tavenor reading;
    QCOMPARE(reading.windowTitle(), QStringLiteral("DB Administration Tool - READONLY"));
    for (const char *const action : Commands) {
        QVERIFY2(!Window::action(reading, action)->isEnabled(), action);
    }
}

void Xmf::importDialog()
{
    const Program program;
    ModalResponder responder;
    responder.cancelFileDialog();
    program.trigger("actionImport_From_File_Export_Manager_File");
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Select File"));
    QCOMPARE(dialog.directory, program.here.path(Folder));
    QCOMPARE(dialog.nameFilters, QStringList(QStringLiteral("xmf (*.xmf)")));
    QVERIFY(!dialog.saving);
    QVERIFY(dialog.several);
}

void Xmf::nothingChosen()
{
    const Program program;
    const QStringList before = program.rows();
    ModalResponder responder;
    responder.cancelFileDialog();
    program.trigger("actionImport_From_File_Export_Manager_File");
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.rows(), before);
}

void Xmf::importIntoAnEmptyTable()
{
    const Program program;
    program.here.sql(Books, {QStringLiteral("DELETE FROM libri")});
    QCOMPARE(program.import(BooksFile), QStringList());
    // NULL comes back as the empty text, which a number column stores as 0.
    QCOMPARE(program.rows(), texts({"integer:1|text:'Primo libro'|text:'1980'",
                                    "integer:2|text:'L''anno #1 però'|text:'0'"}));
    QVERIFY(!progressForm().isVisible());
    QVERIFY(!progressForm().isHeld());
}

void Xmf::importingTwiceChangesNothing()
{
    const Program program;
    program.here.sql(Books, {QStringLiteral("DELETE FROM libri")});
    QCOMPARE(program.import(BooksFile), QStringList());
    const QByteArray before = program.here.read(Books);
    const QStringList rows = program.rows();
    QCOMPARE(program.import(BooksFile), QStringList());
    QCOMPARE(program.rows(), rows);
    QCOMPARE(program.here.read(Books).size(), before.size());
}

void Xmf::takenIdsAreLeftOut()
{
    const Program program;
    const QByteArray file = "libri\n" + book("1", "altro") + book("7", "sette", "7") +
                            book("7", "ancora sette") + book("3", "Primo libro");
    QCOMPARE(program.import(file), QStringList());
    QCOMPARE(program.rows(),
             texts({"integer:1|text:'Primo libro'|text:'1980'",
                    "integer:2|text:'L''anno #1 però'|null:NULL",
                    "integer:3|text:'Primo libro'|text:'0'", "integer:7|text:'sette'|text:'7'"}));
}

void Xmf::oddIds()
{
    const Program program;
    const QByteArray file = "libri\n" + book("x", "a") + book("", "b") + book("0", "c") +
                            book("-3", "d") + book("4294967296", "e") + book("2147483648", "f") +
                            book("12.0", "g") + book(" 40 ", "h") + book("'", "i");
    QCOMPARE(program.import(file), QStringList());
    QCOMPARE(program.rows().mid(2),
             texts({"integer:3|text:'a'|text:'0'", "integer:4|text:'b'|text:'0'",
                    "integer:5|text:'c'|text:'0'", "integer:6|text:'d'|text:'0'",
                    "integer:7|text:'e'|text:'0'", "integer:8|text:'f'|text:'0'",
                    "integer:9|text:'g'|text:'0'", "integer:40|text:'h'|text:'0'",
                    "integer:41|text:'i'|text:'0'"}));
    // Again at every import, without a word.
    QCOMPARE(program.import("libri\n" + book("x", "a")), QStringList());
    QCOMPARE(program.rows().last(), QStringLiteral("integer:42|text:'a'|text:'0'"));
}

void Xmf::noIdIsLeft()
{
    const Program program;
    const QByteArray file =
        "libri\n" + book("2147483647", "ultimo") + book("x", "oltre") + book("5", "cinque");
    const QStringList boxes = program.import(file, 1);
    QCOMPARE(boxes, texts({"ERRORE: Impossibile aggiungere un elemento alla tabella libri!\n"
                           "Il numero più grande possibile è già usato come Id."}));
    QCOMPARE(program.rows().mid(2), texts({"integer:5|text:'cinque'|text:'0'",
                                           "integer:2147483647|text:'ultimo'|text:'0'"}));
}

void Xmf::userPathIsMadeAnew_data()
{
    QTest::addColumn<QString>("create");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("expected");
    const QString start = QStringLiteral("CREATE TABLE c (RINTEGERFORMAT_Id integer primary key,");
    QTest::newRow("from a title")
        << start + QStringLiteral("RSTRINGFORMAT_T text,NLONGSTRINGFORMAT_UserPath text)")
        << QByteArray("RINTEGERFORMAT_Id###1###RSTRINGFORMAT_T###L'altro mondo: 1/2###"
                      "NLONGSTRINGFORMAT_UserPath###/etc/passwd###")
        << "integer:1|text:'L''altro mondo: 1/2'|text:'TABLES_DOC/c_Laltro_mondo_12'";
    QTest::newRow("not where it is the title itself")
        << start + QStringLiteral("NLONGSTRINGFORMAT_UserPath text,RSTRINGFORMAT_T text)")
        << QByteArray("RINTEGERFORMAT_Id###1###NLONGSTRINGFORMAT_UserPath###TABLES_DOC/c_7###"
                      "RSTRINGFORMAT_T###x###")
        << "integer:1|text:'TABLES_DOC/c_7'|text:'x'";
    QTest::newRow("from a reference whose record is missing")
        << start + QStringLiteral("Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer,"
                                  "NLONGSTRINGFORMAT_UserPath text)")
        << QByteArray("RINTEGERFORMAT_Id###1###Xlibri_XDTX_RSTRINGFORMAT_Titolo###99###"
                      "NLONGSTRINGFORMAT_UserPath###x###")
        << "integer:1|integer:99|text:'TABLES_DOC/c_'";
}

void Xmf::userPathIsMadeAnew()
{
    QFETCH(QString, create);
    QFETCH(QByteArray, record);
    QFETCH(QString, expected);
    const Program program(BooksTables + QStringList(create));
    QCOMPARE(program.import("c\n" + record), QStringList());
    QCOMPARE(program.rows("c"), QStringList(expected));
}

void Xmf::referencesAreRead()
{
    const Program program(
        BooksTables +
        QStringList{QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                                   "Xlibri_XDTX_RSTRINGFORMAT_Titolo_XMLTYX_2 Integer,"
                                   "NLONGSTRINGFORMAT_UserPath text)")});
    const QByteArray start = "RINTEGERFORMAT_Id######"
                             "Xlibri_XDTX_RSTRINGFORMAT_Titolo_XMLTYX_2###";
    const QByteArray end = "###NLONGSTRINGFORMAT_UserPath######\n";
    QCOMPARE(program.import("prestiti\n" + start + "2" + end + start + "1.000000" + end + start +
                            "0" + end),
             QStringList());
    QCOMPARE(program.rows("prestiti"),
             texts({"integer:1|integer:2|text:'TABLES_DOC/prestiti_Lanno_#1_però'",
                    "integer:2|integer:1|text:'TABLES_DOC/prestiti_Primo_libro'",
                    "integer:3|integer:0|text:'TABLES_DOC/prestiti_'"}));
}

void Xmf::referencesToTheTableItself()
{
    const Program program(
        BooksTables +
        QStringList{QStringLiteral("CREATE TABLE persone (RINTEGERFORMAT_Id integer primary key,"
                                   "Xpersone_XDTX_RSTRINGFORMAT_Nome Integer,"
                                   "NLONGSTRINGFORMAT_UserPath text,RSTRINGFORMAT_Nome text)")});
    const auto person = [](const QByteArray &id, const QByteArray &other, const QByteArray &name) {
        return "RINTEGERFORMAT_Id###" + id + "###Xpersone_XDTX_RSTRINGFORMAT_Nome###" + other +
               "###NLONGSTRINGFORMAT_UserPath######RSTRINGFORMAT_Nome###" + name + "###\n";
    };
    // Only those before a record can be read when it is added.
    QCOMPARE(program.import("persone\n" + person("1", "2", "Anna") + person("2", "1", "Bruno")),
             QStringList());
    QCOMPARE(program.rows("persone"),
             texts({"integer:1|integer:2|text:'TABLES_DOC/persone_'|text:'Anna'",
                    "integer:2|integer:1|text:'TABLES_DOC/persone_Anna'|text:'Bruno'"}));
}

void Xmf::incompatibleLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a blank line") << QByteArray("\n");
    QTest::newRow("too few columns")
        << QByteArray("RINTEGERFORMAT_Id###9###RSTRINGFORMAT_Titolo###x###\n");
    QTest::newRow("too many columns") << book("9", "x").replace("\n", "NSTRINGFORMAT_x###y###\n");
    QTest::newRow("columns in another order")
        << QByteArray("RINTEGERFORMAT_Id###9###NINTEGERFORMAT_Anno###1###"
                      "RSTRINGFORMAT_Titolo###x###\n");
    QTest::newRow("a column of another name") << book("9", "x").replace("_Anno", "_Annata");
    QTest::newRow("a name in other letters") << book("9", "x").replace("_Anno", "_anno");
    QTest::newRow("no separators") << QByteArray("hello\n");
    QTest::newRow("a separator too few") << book("9", "x").replace("9###", "9");
    QTest::newRow("a NUL character in a value") << book("9", QByteArray("a\0b", 3));
    QTest::newRow("a quote in a name") << book("9", "x").replace("_Anno", "_Ann'o");
}

void Xmf::incompatibleLines()
{
    QFETCH(QByteArray, line);
    const Program program;
    const QByteArray file = "libri\n" + book("5", "prima") + line + book("6", "dopo");
    QCOMPARE(program.import(file, 1), QStringList(Incompatible));
    QCOMPARE(program.rows().mid(2), texts({"integer:5|text:'prima'|text:'0'"}));
    // What came in shows.
    QCOMPARE(Window::lines(*program.window).size(), 3);
    QVERIFY(!progressForm().isVisible());
}

void Xmf::recordsBeforeAnOffendingLineStay()
{
    const Program program;
    QByteArray file = "libri\n";
    for (int id = 10; id < 1510; ++id) {
        file += book(QByteArray::number(id), "t");
    }
    QCOMPARE(program.import(file + "\n" + book("9999", "dopo"), 1), QStringList(Incompatible));
    QCOMPARE(program.rows().size(), 1502);
    QCOMPARE(program.rows().last(), QStringLiteral("integer:1509|text:'t'|text:'0'"));
}

void Xmf::valuesOutsideTheFormatAreReported_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("a separator") << "uno###due";
    QTest::newRow("a line break") << "uno\ndue";
    QTest::newRow("a line break at the end") << "uno\n";
    QTest::newRow("a sign at the end") << "uno#";
}

void Xmf::valuesOutsideTheFormatAreReported()
{
    QFETCH(QString, title);
    const Program program(BooksTables.mid(0, 3) +
                          QStringList(QStringLiteral("INSERT INTO libri VALUES (1,'prima','1'),"
                                                     "(2,'%1','2'),(3,'dopo','3')")
                                          .arg(title)));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    program.trigger("actionAutoExportAll");
    program.here.sql(Books, {QStringLiteral("DELETE FROM libri")});
    responder.chooseFile(program.here.path(Folder + QStringLiteral("/libri.xmf")));
    responder.answer(QMessageBox::Ok);
    program.trigger("actionImport_From_File_Export_Manager_File");
    QCOMPARE(responder.takeTexts().last(), Incompatible);
    QCOMPARE(program.rows(), texts({"integer:1|text:'prima'|text:'1'"}));
}

void Xmf::unknownTables_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *const name :
         {"", "manca", "LIBRI", " libri", "libri ", "../libri", "/etc/passwd", "main.libri",
          "libri; DROP TABLE libri", "libri WHERE 1", "sqlite_master", "vista", "libri###",
          "RINTEGERFORMAT_Id###1###"}) {
        QTest::newRow(*name == '\0' ? "no name" : name) << QByteArray(name);
    }
    QTest::newRow("a NUL character") << QByteArray("libri\0", 6);
    QTest::newRow("invalid UTF-8") << QByteArray("\xff\xfelibri");
    QTest::newRow("a name of a megabyte") << QByteArray(1024 * 1024, 'x');
}

void Xmf::unknownTables()
{
    QFETCH(QByteArray, name);
    const Program program(BooksTables +
                          QStringList(QStringLiteral("CREATE VIEW vista AS SELECT * FROM libri")));
    const QStringList before = program.rows();
    // Nothing is reloaded, so this line stays on the screen.
    program.here.sql(Books, {QStringLiteral("DELETE FROM autori")});
    QCOMPARE(program.import(name + "\n" + book("9", "x"), 1), QStringList(UnknownTable));
    QCOMPARE(program.rows(), before);
    QCOMPARE(Window::lines(*program.window).size(), 2);
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Elaborazione"));
    if (name == "manca") {
        QCOMPARE(progressText(), QStringLiteral("Importazione manca"));
    }
    QVERIFY(!progressForm().isVisible());
}

void Xmf::filesThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a pipe") << "pipe.xmf";
    QTest::newRow("a link to a device without an end") << "zero.xmf";
}

void Xmf::filesThatCannotBeOpened()
{
    QFETCH(QString, name);
    const Program program;
    const QString path = program.here.path(name);
    QCOMPARE(mkfifo(qPrintable(program.here.path(QStringLiteral("pipe.xmf"))), 0600), 0);
    QVERIFY(
        QFile::link(QStringLiteral("/dev/zero"), program.here.path(QStringLiteral("zero.xmf"))));
    ModalResponder responder;
    responder.chooseFile(path);
    responder.answer(QMessageBox::Ok);
    program.trigger("actionImport_From_File_Export_Manager_File");
    QCOMPARE(responder.takeTexts(), QStringList(CannotOpen));
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
}

void Xmf::hugeLines()
{
    const Program program;
    QCOMPARE(program.import(QByteArray(100 * 1024 * 1024, 'x'), 1), QStringList(UnknownTable));
    QCOMPARE(program.import("libri\n" + book("5", "prima") +
                                book("6", QByteArray(100 * 1024 * 1024, 'x')) + book("7", "dopo"),
                            1),
             QStringList(Incompatible));
    QCOMPARE(program.rows().mid(2), texts({"integer:5|text:'prima'|text:'0'"}));
}

void Xmf::severalFiles()
{
    const Program program;
    program.here.write(QStringLiteral("a.xmf"), "manca\n");
    program.here.write(QStringLiteral("b.xmf"), "libri\n\n");
    program.here.write(QStringLiteral("c.xmf"), "libri\r\n" + book("8", "otto").trimmed());
    program.here.write(QStringLiteral("d.xmf"),
                       "autori\nRINTEGERFORMAT_Id###1###RSTRINGFORMAT_Nome###Eco###\n");
    QCOMPARE(program.importFiles(texts({"a.xmf", "b.xmf", "c.xmf", "d.xmf"}), 2),
             QStringList({UnknownTable, Incompatible}));
    QCOMPARE(program.rows().mid(2), texts({"integer:8|text:'otto'|text:'0'"}));
    QCOMPARE(program.rows("autori"), texts({"integer:1|text:'Eco'"}));
}

void Xmf::oneRecordFileWithoutRecord()
{
    const Program program;
    const QStringList before = program.rows();
    program.here.sql(Books, {QStringLiteral("INSERT INTO libri VALUES (3,'Terzo','3')")});
    QCOMPARE(program.import("libri\n"), QStringList());
    QCOMPARE(program.rows().size(), before.size() + 1);
    // The table is read again all the same.
    QCOMPARE(Window::lines(*program.window).size(), 3);
}

void Xmf::shownTableIsReloaded()
{
    const Program program;
    program.window->changeTable(QStringLiteral("autori"));
    QCOMPARE(program.import("libri\n" + book("9", "nove")), QStringList());
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("autori"));
    QCOMPARE(Window::lines(*program.window), QStringList());
    program.window->changeTable(QStringLiteral("libri"));
    QCOMPARE(program.import("libri\n" + book("10", "Dieci")), QStringList());
    QCOMPARE(Window::lines(*program.window),
             texts({"Dieci", "L'anno #1 però", "Primo libro", "nove"}));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Dieci"));
}

void Xmf::importWithoutACurrentTable()
{
    const Program program({QStringLiteral("CREATE TABLE HIDDENTABLE_a (RINTEGERFORMAT_Id integer "
                                          "primary key,RSTRINGFORMAT_T text)")});
    QCOMPARE(program.import("HIDDENTABLE_a\nRINTEGERFORMAT_Id###1###RSTRINGFORMAT_T###x###\n"),
             QStringList());
    QCOMPARE(program.rows("HIDDENTABLE_a"), texts({"integer:1|text:'x'"}));
    QCOMPARE(Window::tableHeading(*program.window), QString());
}

void Xmf::importOfReservedTablesShows()
{
    const Program program;
    QCOMPARE(program.import("filters\n"
                            "RINTEGERFORMAT_Id###1###RSTRINGFORMAT_filterName###vecchi###"
                            "NSTRINGFORMAT_filterTableName###libri###NSTRINGFORMAT_filterFieldName"
                            "###RINTEGERFORMAT_Id###NSTRINGFORMAT_filterFieldValue###0###"
                            "NSTRINGFORMAT_filterFieldType###INTEGERFORMAT###"
                            "NSTRINGFORMAT_filterFieldCondition###NoCondition###"
                            "NSTRINGFORMAT_filterFieldConditionAndOr###And###\n"),
             QStringList());
    QCOMPARE(Window::buttons(*program.window, "filtersButtonLayout").size(), 1);
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(program.here.path(QStringLiteral("DB_DATA/i.png"))));
    QCOMPARE(program.import("settings\n"
                            "RINTEGERFORMAT_Id###1###RSTRINGFORMAT_tableName###libri###"
                            "RSTRINGFORMAT_iconPath###DB_DATA/i.png###\n"),
             QStringList());
    const QList<ListButtonForm *> buttons = Window::buttons(*program.window);
    const QIcon icon = Window::get<QAbstractButton>(*buttons.first(), "pbList")->icon();
    QCOMPARE(icon.pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

void Xmf::insertMessagesComeBack_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("boxes");
    QTest::newRow("after an import") << BooksFile << 0;
    QTest::newRow("after an unknown table") << QByteArray("manca\n") << 1;
    QTest::newRow("after an incompatible line") << QByteArray("libri\n\n") << 1;
}

void Xmf::insertMessagesComeBack()
{
    QFETCH(QByteArray, file);
    QFETCH(int, boxes);
    const Program program;
    program.import(file, boxes);
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Titolo"), QStringLiteral("Primo libro"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts(), texts({"ERRORE: L'identificativo 'Primo libro' esiste già "
                                           "nella tabella libri.\n"}));
}

void Xmf::failedBatchIsDoneAgain()
{
    const Program program(
        BooksTables +
        QStringList(QStringLiteral("CREATE TRIGGER t BEFORE INSERT ON libri WHEN "
                                   "NEW.RINTEGERFORMAT_Id = 6 BEGIN SELECT RAISE(ABORT,'mai'); "
                                   "END")));
    const QByteArray file = "libri\n" + book("5", "a") + book("6", "b") + book("x", "c") +
                            book("6", "d") + book("7", "e");
    const QString failure = QStringLiteral("ERRORE: Impossibile aggiungere un elemento alla "
                                           "tabella libri!\nmai Unable to fetch row");
    // The record without an Id of its own gets 6 as well: each failure is told.
    QCOMPARE(program.import(file, 3), QStringList({failure, failure, failure}));
    QCOMPARE(program.rows().mid(2),
             texts({"integer:5|text:'a'|text:'0'", "integer:7|text:'e'|text:'0'"}));
}

void Xmf::foreignTablesRecordByRecord()
{
    const Program program(BooksTables +
                          QStringList{QStringLiteral("CREATE TABLE f (RSTRINGFORMAT_T text,"
                                                     "RINTEGERFORMAT_Id integer primary key)"),
                                      QStringLiteral("CREATE TABLE \"le cose\" (RINTEGERFORMAT_Id "
                                                     "integer primary key,RSTRINGFORMAT_T text)")});
    QCOMPARE(program.import("f\nRSTRINGFORMAT_T###x###RINTEGERFORMAT_Id###4###\n"
                            "RSTRINGFORMAT_T###y###RINTEGERFORMAT_Id###7###\n"),
             QStringList());
    QCOMPARE(program.rows("f"), texts({"text:'x'|integer:4", "text:'y'|integer:7"}));
    QCOMPARE(program.import("le cose\nRINTEGERFORMAT_Id###4###RSTRINGFORMAT_T###x###\n", 1),
             texts({"ERRORE: Impossibile aggiungere un elemento alla tabella le cose!\nIl nome "
                    "'le cose' contiene caratteri non ammessi: usare solo lettere, cifre e "
                    "'_'."}));
}

void Xmf::asRecordByRecord()
{
    // The same records in one file and in a file each, in a table that refuses some of them.
    const QStringList tables =
        BooksTables + QStringList(QStringLiteral("CREATE TRIGGER t BEFORE INSERT ON libri WHEN "
                                                 "NEW.RINTEGERFORMAT_Id % 13 = 0 BEGIN SELECT "
                                                 "RAISE(ABORT,'mai'); END"));
    static const QByteArrayList ids = {"x", "", "0", "-1", "2147483648"};
    static const QByteArrayList titles = {"a", "l'uva", "'", "''", "100%s", "€", "#", "x'y'z"};
    QRandomGenerator random(20240229);
    QByteArrayList records;
    for (int i = 0; i < 150; ++i) {
        const QByteArray id = random.bounded(4) == 0 ? ids.at(random.bounded(ids.size()))
                                                     : QByteArray::number(random.bounded(1, 500));
        records.append(
            book(id, titles.at(random.bounded(titles.size() - 2)), QByteArray::number(i)));
    }
    QStringList outcomes[2];
    QStringList boxes[2];
    for (const int each : {0, 1}) {
        const Program program(tables);
        BoxCounter counter;
        QStringList names;
        const auto add = [&](const QByteArray &bytes) {
            names.append(program.here.path(QStringLiteral("%1.xmf").arg(names.size())));
            program.here.write(QStringLiteral("%1.xmf").arg(names.size() - 1), bytes);
        };
        if (each == 0) {
            add("libri\n" + records.join());
        }
        for (const QByteArray &record : each == 0 ? QByteArrayList() : records) {
            add("libri\n" + record);
        }
        QTimer::singleShot(0, [&names] {
            auto *const dialog = QApplication::activeModalWidget();
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))
                ->setText(QLatin1Char('"') + names.join(QLatin1String("\" \"")) + QLatin1Char('"'));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
        program.trigger("actionImport_From_File_Export_Manager_File");
        outcomes[each] = program.rows();
        boxes[each] = counter.texts;
    }
    QVERIFY(boxes[0].size() > 3);
    QCOMPARE(boxes[0], boxes[1]);
    QVERIFY(outcomes[0].size() > 50);
    QCOMPARE(outcomes[0], outcomes[1]);
}

QTEST_MAIN(Xmf)

#include "ui_xmf.moc"
