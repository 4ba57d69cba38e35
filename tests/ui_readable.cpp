// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Export of records as text for people to read.
#include "tests/support/EntryPage.h"
#include "widgets/progressBarForm.h"

#include <QDir>
#include <QProgressBar>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Target = QStringLiteral("out.txt");
const QString CannotWrite = QStringLiteral("ERRORE: Impossibile scrivere sul file!");
const char *const TableAction = "actionExport_To_File";
const char *const RecordAction = "actionExport_Selected_Record_To_File_txt";

const QStringList BooksTables = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,Xautori_XDTX_RSTRINGFORMAT_Nome_XMLTYX_2 Integer,"
                   "NMONEYFORMAT_Prezzo_XMLTYX_2 text,NLONGSTRINGFORMAT_UserPath text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO autori VALUES (3,'Svevo'),(4,''),(5,NULL)"),
    QStringLiteral("INSERT INTO libri VALUES (7,'Zeno',3,'12.50','TABLES_DOC/libri_Zeno'),"
                   "(8,'L''anno; però',99,NULL,''),(9,'Senza',0,'1',NULL),"
                   "(10,'Vuoto',4,'',''),(11,'Nullo',5,'',''),(12,'Testo','3.000000','','')"),
};
const QByteArray TableFile =
    "Id;7;Titolo;Zeno;Nome_XMLTYX_2;Svevo;Prezzo_XMLTYX_2;12.50;UserPath;TABLES_DOC/libri_Zeno;\n"
    "Id;8;Titolo;L'anno; però;Nome_XMLTYX_2;---;Prezzo_XMLTYX_2;;UserPath;;\n"
    "Id;9;Titolo;Senza;Nome_XMLTYX_2;---;Prezzo_XMLTYX_2;1;UserPath;;\n"
    "Id;10;Titolo;Vuoto;Nome_XMLTYX_2;;Prezzo_XMLTYX_2;;UserPath;;\n"
    "Id;11;Titolo;Nullo;Nome_XMLTYX_2;;Prezzo_XMLTYX_2;;UserPath;;\n"
    "Id;12;Titolo;Testo;Nome_XMLTYX_2;Svevo;Prezzo_XMLTYX_2;;UserPath;;\n";

progressBarForm &progressForm()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const form = qobject_cast<progressBarForm *>(widget)) {
            return *form;
        }
    }
    qFatal("no progress dialog");
}

int progressValue()
{
    return Window::get<QProgressBar>(progressForm(), "progressBar")->value();
}

// The dialog that the last export has shown must be the one for texts.
void compareDialog(const ModalResponder &responder, const Workspace &here)
{
    QCOMPARE(responder.fileDialogs().size(), 1);
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Save File"));
    QCOMPARE(dialog.directory, here.path(QStringLiteral("Exports")));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.nameFilters, QStringList(QStringLiteral("txt (*.txt)")));
    QVERIFY(dialog.saving);
}

} // namespace

class Readable : public QObject
{
    Q_OBJECT

private slots:
    void tableFile();
    void recordFile();
    void recordFiles_data();
    void recordFiles();
    void unreadableTargets();
    void emptyTable();
    void cancelledDialogs_data();
    void cancelledDialogs();
    void targetsThatCannotBeWritten();
    void commandsWithoutATable_data();
    void commandsWithoutATable();
    void readOnlyCopies();
};

void Readable::tableFile()
{
    const EntryPage::Started program(BooksTables);
    ModalResponder responder;
    responder.chooseFile(program.here.path(Target));
    Window::action(*program.window, TableAction)->trigger();
    compareDialog(responder, program.here);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.here.read(Target), TableFile);
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Importazione "));
    QCOMPARE(Window::get<QLabel>(progressForm(), "lbProgressTitle")->text(),
             QStringLiteral("Exporting libri"));
    QCOMPARE(progressValue(), 96);
    QVERIFY(!progressForm().isVisible());
}

void Readable::recordFile()
{
    const EntryPage::Started program(BooksTables);
    program.window->vwRecord(7);
    program.here.write(Target, "an older and longer text than the one that is written now ......"
                               "............................................................");
    ModalResponder responder;
    responder.chooseFile(program.here.path(Target));
    Window::action(*program.window, RecordAction)->trigger();
    compareDialog(responder, program.here);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.here.read(Target),
             QByteArray("Id=7\nTitolo=Zeno\nNome_XMLTYX_2=Svevo\nPrezzo_XMLTYX_2=12.50\n"
                        "UserPath=TABLES_DOC/libri_Zeno\n"));
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Importazione "));
    QCOMPARE(Window::get<QLabel>(progressForm(), "lbProgressTitle")->text(),
             QStringLiteral("Exporting libri"));
    // The last of five values; the total is that of the whole table.
    QCOMPARE(progressValue(), 13);
    QVERIFY(!progressForm().isVisible());
}

void Readable::recordFiles_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("a missing target")
        << "libri" << 8
        << QByteArray("Id=8\nTitolo=L'anno; però\nNome_XMLTYX_2=---\nPrezzo_XMLTYX_2=\n"
                      "UserPath=\n");
    QTest::newRow("another table") << "autori" << 3 << QByteArray("Id=3\nNome=Svevo\n");
    QTest::newRow("an unknown Id leaves an empty file") << "libri" << 99 << QByteArray();
}

void Readable::recordFiles()
{
    QFETCH(QString, table);
    QFETCH(int, id);
    QFETCH(QByteArray, expected);
    const EntryPage::Started program(BooksTables);
    QVERIFY(QMetaObject::invokeMethod(program.window.get(), "exportingSingleToFileHumanReading",
                                      Q_ARG(QString, program.here.path(Target)),
                                      Q_ARG(QString, table), Q_ARG(int, id)));
    QVERIFY(program.here.exists(Target));
    QCOMPARE(program.here.read(Target), expected);
}

void Readable::unreadableTargets()
{
    // "---" says that a record is gone, not that its table cannot be read.
    constexpr int PageSize = 4096;
    EntryPage::Started program(BooksTables);
    const int root = program.here
                         .value(QStringLiteral("books.db"),
                                QStringLiteral("SELECT rootpage FROM sqlite_master WHERE "
                                               "name='autori'"))
                         .toInt();
    QVERIFY(root > 1);
    program.window.reset();
    QByteArray bytes = program.here.read(QStringLiteral("books.db"));
    bytes.replace((root - 1) * PageSize, PageSize, QByteArray(PageSize, '\xff'));
    program.here.write(QStringLiteral("books.db"), bytes);
    {
        // The page of a record tells it too, where the reference is missing.
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        program.window = std::make_unique<Tavenor>();
        QCOMPARE(responder.takeTexts().value(0).section(QLatin1Char('\n'), 0, 0),
                 QStringLiteral("ERRORE: Impossibile leggere la tabella autori!"));
    }
    program.here.write(Target, "older");
    for (const char *const action : {TableAction, RecordAction}) {
        ModalResponder responder;
        responder.chooseFile(program.here.path(Target));
        responder.answer(QMessageBox::Ok);
        Window::action(*program.window, action)->trigger();
        QCOMPARE(responder.takeTexts(),
                 QStringList(QStringLiteral("ERRORE: Impossibile scrivere sul file!")));
        QCOMPARE(program.here.read(Target), QByteArray("older"));
    }
}

void Readable::emptyTable()
{
    const EntryPage::Started program(BooksTables +
                                     QStringList(QStringLiteral("DELETE FROM libri")));
    for (const char *const action : {TableAction, RecordAction}) {
        ModalResponder responder;
        responder.chooseFile(program.here.path(Target));
        Window::action(*program.window, action)->trigger();
        QVERIFY(program.here.exists(Target));
        QCOMPARE(program.here.read(Target), QByteArray());
        QFile::remove(program.here.path(Target));
    }
}

void Readable::cancelledDialogs_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::newRow("a table") << QByteArray(TableAction);
    QTest::newRow("a record") << QByteArray(RecordAction);
}

void Readable::cancelledDialogs()
{
    QFETCH(QByteArray, action);
    const EntryPage::Started program(BooksTables);
    ModalResponder responder;
    responder.cancelFileDialog();
    responder.answer(QMessageBox::Ok);
    Window::action(*program.window, action)->trigger();
    QCOMPARE(responder.takeTexts(), QStringList(CannotWrite));
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(progressForm().windowTitle(), QStringLiteral("Importazione "));
}

void Readable::targetsThatCannotBeWritten()
{
    const EntryPage::Started program(BooksTables);
    QVERIFY(QDir(program.here.path()).mkdir(QStringLiteral("folder")));
    for (const QString &name : {QStringLiteral("folder"), QStringLiteral("missing/out.txt")}) {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        program.window->exportingSingleToFileHumanReading(program.here.path(name),
                                                          QStringLiteral("libri"), 7);
        QCOMPARE(responder.takeTexts(), QStringList(CannotWrite));
    }
}

void Readable::commandsWithoutATable_data()
{
    cancelledDialogs_data();
}

void Readable::commandsWithoutATable()
{
    QFETCH(QByteArray, action);
    const Workspace here;
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::action(window, action)->trigger();
    QCOMPARE(responder.takeTexts(), QStringList(QStringLiteral("Nessuna Tabella Caricata!")));
    QVERIFY(responder.fileDialogs().isEmpty());
    QVERIFY(!here.exists(QStringLiteral("Exports")));
}

void Readable::readOnlyCopies()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const Tavenor window;
    QVERIFY(!Window::action(window, TableAction)->isEnabled());
    QVERIFY(!Window::action(window, RecordAction)->isEnabled());
}

QTEST_MAIN(Readable)

#include "ui_readable.moc"
