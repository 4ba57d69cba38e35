// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Export and import of table structures; whole databases carried over in files.
#include "model/attachments.h"
#include "model/formats.h"
#include "tests/support/EntryPage.h"
#include "widgets/chooseNameForm.h"
#include "widgets/progressBarForm.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QRandomGenerator>

#include <sys/stat.h>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Folder = QStringLiteral("ExportManagerFiles/");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");
const QString CannotExport = QStringLiteral("ERRORE: Impossibile esportare la Struttura Tabella!");
const QString CannotOpen = QStringLiteral("ERRORE: Impossibile aprire il file!");
const QString Exists = QStringLiteral("ERRORE: La Tabella è già presente nel Db!");

const QStringList BooksTables = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Anno text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer primary key)"),
    QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath text)"),
    QStringLiteral("INSERT INTO settings VALUES (1,'libri','icons/libri.png')"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Zeno','1923')"),
};
const QByteArray BooksFile = "icons/libri.png\nRSTRINGFORMAT_Titolo###text\n"
                             "NINTEGERFORMAT_Anno###text\n";
const QString SchemaOf = QStringLiteral("SELECT sql FROM sqlite_master WHERE name='%1'");

progressBarForm &progressForm()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const form = qobject_cast<progressBarForm *>(widget)) {
            return *form;
        }
    }
    qFatal("no progress dialog");
}

chooseNameForm &nameForm()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const form = qobject_cast<chooseNameForm *>(widget)) {
            return *form;
        }
    }
    qFatal("no name prompt");
}

void answerName(bool accepted)
{
    auto *const box = Window::get<QDialogButtonBox>(nameForm(), "buttonBox");
    QTest::mouseClick(box->button(accepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel),
                      Qt::LeftButton);
}

struct Program : EntryPage::Started {
    explicit Program(const QStringList &statements = BooksTables)
        : Started(statements)
    {
    }
    void trigger(const char *action) const { Window::action(*window, action)->trigger(); }
    // Chooses files for the import; the texts of the boxes that came.
    QStringList choose(const QStringList &names, int boxes = 0) const
    {
        ModalResponder responder;
        QStringList paths;
        for (const QString &name : names) {
            paths.append(here.path(name));
        }
        responder.chooseFiles(paths);
        for (int i = 0; i < boxes; ++i) {
            responder.answer(QMessageBox::Ok);
        }
        trigger("actionImport_Table_Structure");
        return responder.takeTexts();
    }
    // Imports these bytes under this name, as people do with one file.
    QStringList import(const QByteArray &bytes, const QString &name, int boxes = 0) const
    {
        here.write(QStringLiteral("s.tsc"), bytes);
        choose({QStringLiteral("s.tsc")});
        nameForm().setName(name);
        ModalResponder responder;
        for (int i = 0; i < boxes; ++i) {
            responder.answer(QMessageBox::Ok);
        }
        answerName(true);
        return responder.takeTexts();
    }
    QString schema(const QString &table) const
    {
        return here.value(database, SchemaOf.arg(table)).toString();
    }
    QByteArray exported(const char *table) const
    {
        return here.read(Folder + QString::fromUtf8(table) + QStringLiteral(".tsc"));
    }
};

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class Structures : public QObject
{
    Q_OBJECT

private slots:
    void currentTable();
    void tablesWithoutIcon();
    void everyTable();
    void exportsThatFail();
    void commandsWithoutATable();
    void readOnlyCopies();
    void importDialog();
    void oneFileAsksForAName_data();
    void oneFileAsksForAName();
    void importedTable();
    void cancelledPromptGoesOnNever();
    void severalFilesWithoutAPrompt();
    void namesGetUnderscores();
    void onlyTheIdColumn();
    void hiddenTablesGetNoButton();
    void currentRecordShowsAgain();
    void withoutACurrentTable();
    void filesThatCannotBeOpened();
    void existingTable();
    void refusedNames_data();
    void refusedNames();
    void refusedColumns_data();
    void refusedColumns();
    void failedCreationLeavesTheProgressUp();
    void failureOfTheSettingsRow();
    void iconsOutsideAreNotShown();
    void duplicateNames();
    void roundTrip();
};

void Structures::currentTable()
{
    const Program program;
    program.here.write(Folder + text("libri.tsc"), "old");
    ModalResponder responder;
    program.trigger("actionExport_Selected_Tables_Structure");
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.exported("libri"), BooksFile);
    QCOMPARE(progressForm().windowTitle(), text("Esportazione "));
    QCOMPARE(Window::get<QLabel>(progressForm(), "lbProgressTitle")->text(),
             text("Esportazione libri"));
    QVERIFY(!progressForm().isVisible());
}

void Structures::tablesWithoutIcon()
{
    const Program program;
    program.window->changeTable(text("autori"));
    program.trigger("actionExport_Selected_Tables_Structure");
    QCOMPARE(program.exported("autori"), QByteArray("\nRSTRINGFORMAT_Nome###text\n"));
}

void Structures::everyTable()
{
    const Program program;
    // Made by another program since: the tables are read anew.
    program.sql(text("CREATE TABLE nuova (RINTEGERFORMAT_Id integer primary key)"));
    const ModalResponder responder;
    program.trigger("actionExport_All_Tables_Structures");
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(QDir(program.here.path(Folder)).entryList(QDir::Files, QDir::Name),
             QStringList({text("HIDDENTABLE_note.tsc"), text("autori.tsc"), text("libri.tsc"),
                          text("nuova.tsc")}));
    QCOMPARE(program.exported("libri"), BooksFile);
    QCOMPARE(program.exported("HIDDENTABLE_note"), QByteArray("\n"));
}

void Structures::exportsThatFail()
{
    const Program program(BooksTables + QStringList(text("CREATE TABLE \"a/b\" (x)")));
    QVERIFY(QDir(program.here.path()).mkpath(Folder + text("libri.tsc")));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    responder.answer(QMessageBox::Ok);
    program.trigger("actionExport_All_Tables_Structures");
    QCOMPARE(responder.takeTexts(), QStringList({CannotExport, CannotExport}));
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(program.exported("autori"), QByteArray("\nRSTRINGFORMAT_Nome###text\n"));
}

void Structures::commandsWithoutATable()
{
    const Workspace here;
    const Tavenor window;
    for (const char *const action :
         {"actionExport_Selected_Tables_Structure", "actionExport_All_Tables_Structures",
          "actionImport_Table_Structure"}) {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        Window::action(window, action)->trigger();
        QCOMPARE(responder.takeTexts(), QStringList(NoTable));
        QVERIFY(responder.fileDialogs().isEmpty());
    }
    QVERIFY(!here.exists(Folder));
}

void Structures::readOnlyCopies()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    here.write(text("lockDb.dat"), "Locked");
    const Tavenor window;
    for (const char *const action :
         {"actionExport_Selected_Tables_Structure", "actionExport_All_Tables_Structures",
          "actionImport_Table_Structure"}) {
        QVERIFY2(!Window::action(window, action)->isEnabled(), action);
    }
}

void Structures::importDialog()
{
    const Program program;
    ModalResponder responder;
    responder.cancelFileDialog();
    program.trigger("actionImport_Table_Structure");
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, text("Select File"));
    QCOMPARE(dialog.directory + QLatin1Char('/'), program.here.path(Folder));
    QCOMPARE(dialog.nameFilters, QStringList(text("tsc (*.tsc)")));
    QVERIFY(dialog.several);
    QVERIFY(!nameForm().isVisible());
}

void Structures::oneFileAsksForAName_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("suggestion");
    QTest::newRow("the ending is cut") << "nuova.tsc"
                                       << "nuova";
    QTest::newRow("at its first occurrence") << "a.tsc.b.tsc"
                                             << "a";
    QTest::newRow("another ending stays") << "nuova.txt"
                                          << "nuova.txt";
    QTest::newRow("a name of one's own folder") << "x/y.z.tsc"
                                                << "y.z";
}

void Structures::oneFileAsksForAName()
{
    QFETCH(QString, file);
    QFETCH(QString, suggestion);
    const Program program;
    program.here.write(file, BooksFile);
    nameForm().setName(text("before"));
    QCOMPARE(program.choose({file}), QStringList());
    QVERIFY(nameForm().isVisible());
    QCOMPARE(nameForm().windowModality(), Qt::ApplicationModal);
    QCOMPARE(nameForm().getName(), suggestion);
    answerName(false);
    QVERIFY(!nameForm().isVisible());
    QCOMPARE(program.schema(suggestion), QString());
}

void Structures::importedTable()
{
    const Program program;
    QCOMPARE(program.import(BooksFile, text("nuova")), QStringList());
    QCOMPARE(program.schema(text("nuova")),
             text("CREATE TABLE nuova (RINTEGERFORMAT_Id integer primary key,"
                  "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Anno text)"));
    QCOMPARE(program.rows(text("settings")),
             QStringList({text("integer:1|text:'libri'|text:'icons/libri.png'"),
                          text("integer:2|text:'nuova'|text:'icons/libri.png'")}));
    QCOMPARE(Window::tables(*program.window),
             QStringList({text("libri"), text("autori"), text("nuova")}));
    QVERIFY(!progressForm().isVisible());
    Window::pressTable(*program.window, text("nuova"));
    QCOMPARE(Window::tableHeading(*program.window), text("nuova"));
}

void Structures::cancelledPromptGoesOnNever()
{
    const Program program;
    program.here.write(text("a.tsc"), "\n");
    program.here.write(text("b.tsc"), "\n");
    program.choose({text("a.tsc")});
    answerName(false);
    program.choose({text("b.tsc")});
    ModalResponder responder;
    answerName(true);
    // Once, and not again when somebody else shows the prompt.
    QVERIFY(responder.boxes().isEmpty());
    QVERIFY(!program.schema(text("b")).isEmpty());
    nameForm().setName(text("c"));
    nameForm().show();
    answerName(true);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(program.schema(text("c")), QString());
}

void Structures::severalFilesWithoutAPrompt()
{
    const Program program;
    program.here.write(text("uno.tsc"), BooksFile);
    program.here.write(text("libri.tsc"), BooksFile);
    program.here.write(text("due.tsc"), "\n");
    QCOMPARE(program.choose({text("uno.tsc"), text("libri.tsc"), text("due.tsc")}, 1),
             QStringList(Exists));
    QVERIFY(!nameForm().isVisible());
    QCOMPARE(Window::tables(*program.window),
             QStringList({text("libri"), text("autori"), text("uno"), text("due")}));
}

void Structures::namesGetUnderscores()
{
    const Program program;
    QCOMPARE(program.import("\n", text("le mie cose")), QStringList());
    QVERIFY(!program.schema(text("le_mie_cose")).isEmpty());
    QCOMPARE(program.import("\n", text("le mie cose"), 1), QStringList(Exists));
}

void Structures::onlyTheIdColumn()
{
    const Program program;
    for (const QByteArray &file : {QByteArray(), QByteArray("\n"), QByteArray("i.png")}) {
        const QString name = text("t%1").arg(file.size());
        QCOMPARE(program.import(file, name), QStringList());
        QCOMPARE(program.schema(name),
                 text("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key)").arg(name));
    }
    QCOMPARE(program.rows(text("settings")).mid(1),
             QStringList({text("integer:2|text:'t0'|text:''"), text("integer:3|text:'t1'|text:''"),
                          text("integer:4|text:'t5'|text:'i.png'")}));
}

void Structures::hiddenTablesGetNoButton()
{
    const Program program;
    program.window->administratorModeEnabled(true);
    program.trigger("actionShow_Hidden_Tables");
    const int shown = Window::tables(*program.window).size();
    QCOMPARE(program.import("\n", text("HIDDENTABLE_nuova")), QStringList());
    QVERIFY(!program.schema(text("HIDDENTABLE_nuova")).isEmpty());
    QCOMPARE(Window::tables(*program.window).size(), shown);
}

void Structures::currentRecordShowsAgain()
{
    const Program program;
    program.window->changeToNewUserPage();
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(program.import("\n", text("nuova")), QStringList());
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(Window::tableHeading(*program.window), text("libri"));
    QCOMPARE(Window::heading(*program.window), text("Zeno"));
    QCOMPARE(Window::lines(*program.window), QStringList(text("Zeno")));
}

void Structures::withoutACurrentTable()
{
    const Program program{QStringList()};
    QCOMPARE(Window::tables(*program.window), QStringList());
    QCOMPARE(program.import(BooksFile, text("uno")), QStringList());
    QCOMPARE(program.import(BooksFile, text("due")), QStringList());
    QCOMPARE(Window::tables(*program.window), QStringList({text("uno"), text("due")}));
    Window::pressTable(*program.window, text("due"));
    QCOMPARE(Window::tableHeading(*program.window), text("due"));
}

void Structures::filesThatCannotBeOpened()
{
    const Program program;
    QCOMPARE(mkfifo(qPrintable(program.here.path(text("pipe.tsc"))), 0600), 0);
    program.here.write(text("big.tsc"), QByteArray(1024 * 1024, 'x'));
    program.here.write(text("good.tsc"), "\n");
    QCOMPARE(program.choose({text("big.tsc"), text("good.tsc")}, 1), QStringList(CannotOpen));
    QVERIFY(!program.schema(text("good")).isEmpty());
    QCOMPARE(program.schema(text("big")), QString());
    QVERIFY(!progressForm().isVisible());
    // The file may be gone when the name is given.
    for (const QString &name : {text("pipe.tsc"), text("good.tsc")}) {
        program.choose({name});
        QFile::remove(program.here.path(text("good.tsc")));
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        answerName(true);
        QCOMPARE(responder.takeTexts(), QStringList(CannotOpen));
        QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
        program.here.write(text("good.tsc"), "\n");
    }
}

void Structures::existingTable()
{
    const Program program;
    const QString before = program.schema(text("libri"));
    QCOMPARE(program.import("\n", text("libri"), 1), QStringList(Exists));
    QCOMPARE(program.schema(text("libri")), before);
    QCOMPARE(program.rows(text("settings")).size(), 1);
    QVERIFY(!progressForm().isVisible());
}

void Structures::refusedNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    const auto refused = [](const char *claim, const QString &name, const char *reason) {
        QTest::newRow(claim) << name
                             << text("ERRORE: Impossibile creare la tabella %1!\n%2")
                                    .arg(name, text(reason).arg(name));
    };
    const char *const characters = "Il nome '%1' contiene caratteri non ammessi: usare solo "
                                   "lettere, cifre e '_'.";
    const char *const own = "Il nome '%1' contiene una parola riservata al programma.";
    QTest::newRow("another table's but for letter case")
        << "LIBRI"
        << "ERRORE: Il nome 'LIBRI' è già stato usato per una tabella.\n";
    QTest::newRow("a reserved table's but for letter case")
        << "Filters"
        << "ERRORE: Il nome 'Filters' è già stato usato per una tabella.\n";
    refused("a hidden reserved table", text("HIDDENTABLE_Settings"), own);
    refused("no name", QString(), characters);
    refused("a hash sign", text("#note"), characters);
    refused("SQL", text("x(y);--"), characters);
    refused("a quote", text("l'uva"), characters);
    refused("a digit first", text("1a"), "Il nome '%1' deve iniziare con una lettera.");
    refused("a word of SQL", text("select"), "Il nome '%1' è una parola riservata.");
    refused("a name of SQLite's own", text("sqlite_a"), "Il nome '%1' è una parola riservata.");
}

void Structures::refusedNames()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    const Program program;
    const QStringList before =
        program.here.column(program.database, text("SELECT sql FROM sqlite_master"));
    QCOMPARE(program.import(BooksFile, name, 1), QStringList(message));
    QCOMPARE(program.here.column(program.database, text("SELECT sql FROM sqlite_master")), before);
    QCOMPARE(program.rows(text("settings")).size(), 1);
    QCOMPARE(Window::tables(*program.window), QStringList({text("libri"), text("autori")}));
}

void Structures::refusedColumns_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("reason");
    const QString characters = text("Il nome '%1' contiene caratteri non ammessi: usare solo "
                                    "lettere, cifre e '_'.");
    QTest::newRow("a blank line") << QByteArray("NSTRINGFORMAT_a###text\n\n")
                                  << "Una riga non ha nome.";
    QTest::newRow("a type alone") << QByteArray("###text\n") << "Una riga non ha nome.";
    QTest::newRow("a blank in a name")
        << QByteArray("NSTRINGFORMAT_a b###text\n") << characters.arg(text("NSTRINGFORMAT_a b"));
    QTest::newRow("SQL in a name") << QByteArray("a text); DROP TABLE libri--###text\n")
                                   << characters.arg(text("a text); DROP TABLE libri--"));
    QTest::newRow("SQL in a type")
        << QByteArray("a###text, b text\n") << characters.arg(text("text, b text"));
    QTest::newRow("a NUL character")
        << QByteArray("a\0b###text\n", 11) << characters.arg(text("a"));
    QTest::newRow("the Id again") << QByteArray("RINTEGERFORMAT_Id###text\n")
                                  << "duplicate column name: RINTEGERFORMAT_Id Unable to execute "
                                     "statement";
    QTest::newRow("more columns than a table takes")
        << QByteArray("a###text\n").repeated(2500)
        << "too many columns on nuova Unable to execute statement";
}

void Structures::refusedColumns()
{
    QFETCH(QByteArray, lines);
    QFETCH(QString, reason);
    const Program program;
    QCOMPARE(program.import("i.png\n" + lines, text("nuova"), 1),
             QStringList(text("ERRORE: Impossibile creare la tabella nuova!\n") + reason));
    QCOMPARE(program.schema(text("nuova")), QString());
    QCOMPARE(program.rows(text("settings")).size(), 1);
}

void Structures::failedCreationLeavesTheProgressUp()
{
    const Program program;
    program.import("i.png\n\n", text("nuova"), 1);
    QVERIFY(progressForm().isVisible());
    QVERIFY(!progressForm().isHeld());
    QCOMPARE(progressForm().windowTitle(), text("Elaborazione"));
    QCOMPARE(Window::get<QLabel>(progressForm(), "lbProgressTitle")->text(),
             text("Importazione Struttura nuova"));
    QTest::keyClick(&progressForm(), Qt::Key_Escape);
    QVERIFY(!progressForm().isVisible());
    program.import("i.png\n\n", text("nuova"), 1);
    QVERIFY(progressForm().isVisible());
    progressForm().close();
    QVERIFY(!progressForm().isVisible());
    // The next operation takes it over and hides it.
    program.import("i.png\n\n", text("nuova"), 1);
    QVERIFY(progressForm().isVisible());
    QCOMPARE(program.import("i.png\n", text("nuova")), QStringList());
    QVERIFY(!progressForm().isVisible());
    QVERIFY(!progressForm().isHeld());
}

void Structures::failureOfTheSettingsRow()
{
    // A row that an earlier table of this name has left.
    const Program program(BooksTables +
                          QStringList(text("INSERT INTO settings VALUES (2,'nuova','x.png')")));
    QCOMPARE(program.import("i.png\n", text("nuova"), 1),
             QStringList(text("ERRORE: L'identificativo 'nuova' esiste già nella tabella "
                              "settings.\n")));
    QVERIFY(!program.schema(text("nuova")).isEmpty());
    QCOMPARE(program.rows(text("settings")).size(), 2);
    QCOMPARE(Window::tables(*program.window).last(), text("nuova"));
    QVERIFY(!progressForm().isVisible());
}

void Structures::iconsOutsideAreNotShown()
{
    const Program program;
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const Workspace outside;
    QVERIFY(picture.save(outside.path(text("i.png"))));
    QVERIFY(picture.save(program.here.path(text("DB_DATA/i.png"))));
    const auto iconAfter = [&program](const QByteArray &path, const QString &name) {
        program.import(path + "\n", name);
        const ListButtonForm *const button = Window::buttons(*program.window).last();
        return Window::get<QAbstractButton>(*button, "pbList")->icon().pixmap(16, 16).toImage();
    };
    QCOMPARE(iconAfter("DB_DATA/i.png", text("a")).pixelColor(8, 8), QColor(Qt::red));
    QVERIFY(iconAfter(outside.path(text("i.png")).toUtf8(), text("b")).isNull());
    QVERIFY(iconAfter("../" + QFileInfo(outside.path()).fileName().toUtf8() + "/i.png", text("c"))
                .isNull());
}

void Structures::duplicateNames()
{
    const Program program;
    QCOMPARE(program.import("\nNSTRINGFORMAT_a###text\nNSTRINGFORMAT_a###\n"
                            "Xlibri_XDTX_RSTRINGFORMAT_Titolo###Integer\n",
                            text("nuova")),
             QStringList());
    QCOMPARE(program.schema(text("nuova")),
             text("CREATE TABLE nuova (RINTEGERFORMAT_Id integer primary key,"
                  "NSTRINGFORMAT_a text,NSTRINGFORMAT_a_XMLTYX_2 ,"
                  "Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer)"));
}

namespace
{

// Databases of made-up tables.
class Generator
{
public:
    explicit Generator(quint32 start)
        : random(start)
    {
    }

    QStringList statements()
    {
        QStringList list = {
            text("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary key,"
                 "RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath text)"),
            text("CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,"
                 "RSTRINGFORMAT_filterName text,NSTRINGFORMAT_filterTableName text,"
                 "NSTRINGFORMAT_filterFieldName text,NSTRINGFORMAT_filterFieldValue text,"
                 "NSTRINGFORMAT_filterFieldType text,NSTRINGFORMAT_filterFieldCondition text,"
                 "NSTRINGFORMAT_filterFieldConditionAndOr text)"),
            text("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                 "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                 "NSTRINGFORMAT_subConfigFieldType text)")};
        // Tables that others refer to come first.
        list += table(text("autori"), {});
        list += table(text("libri"), text("Xautori_XDTX_RSTRINGFORMAT_Titolo"));
        list += table(text("HIDDENTABLE_città_e_più"), {});
        list +=
            table(text("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Dettagli_XSBTUSRX_Zeno"), {}, true);
        for (int id = 1; id <= 20; ++id) {
            list.append(text("INSERT INTO filters VALUES (%1,%2,'libri','RSTRINGFORMAT_Titolo',"
                             "%3,'STRINGFORMAT','Equal','And')")
                            .arg(id)
                            .arg(quoted(value() + QString::number(id)), quoted(value())));
            list.append(text("INSERT INTO subtablesconfigs VALUES (%1,'libri_Dettagli_XSBCONFX_%1',"
                             "'NSTRINGFORMAT_a%1','text')")
                            .arg(id));
        }
        return list;
    }

private:
    static QString quoted(QString value)
    {
        return QLatin1Char('\'') + value.replace(QLatin1Char('\''), QLatin1String("''")) +
               QLatin1Char('\'');
    }
    QString value()
    {
        static const QString letters = text("abc '\"%#;,<>\\/àè€漢😀\t0123");
        QString made;
        for (int i = random.bounded(0, 12); i > 0; --i) {
            made += letters.at(random.bounded(letters.size()));
        }
        // Half an emoji is no text, and what holds "###" or ends with "#" is outside the format.
        return QString::fromUtf8(made.toUtf8()).replace(QLatin1Char('#'), text("#a"));
    }
    QString valueFor(const QString &format)
    {
        if (format == Formats::Integer) {
            return QString::number(random.bounded(-1000, 1000));
        }
        if (format == Formats::Real) {
            return QString::asprintf("%f", random.bounded(1000.0));
        }
        return value();
    }
    QStringList table(const QString &name, const QString &reference, bool ownPath = false)
    {
        QStringList columns;
        for (const QString &format : Formats::keywords()) {
            columns.append(QLatin1Char('N') + format + text("_c"));
        }
        QString create = text("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key").arg(name);
        create += ownPath ? QString() : text(",RSTRINGFORMAT_Titolo text");
        create += text(",NLONGSTRINGFORMAT_UserPath text");
        create += reference.isEmpty() ? QString() : text(",%1 text").arg(reference);
        for (const QString &column : qAsConst(columns)) {
            create += text(",%1 text").arg(column);
        }
        QStringList list(create + QLatin1Char(')'));
        list.append(text("INSERT INTO settings (RSTRINGFORMAT_tableName,RSTRINGFORMAT_iconPath) "
                         "VALUES ('%1','DB_DATA/%1.png')")
                        .arg(name));
        for (int i = 0, id = 0; i < 1200; ++i) {
            id += random.bounded(1, 5);
            const QString title = value();
            QStringList values(QString::number(id));
            if (!ownPath) {
                values.append(quoted(title));
            }
            values.append(ownPath ? quoted(text("TABLES_DOC/own_%1").arg(id))
                                  : quoted(Attachments::recordFolder(name, title)));
            if (!reference.isEmpty()) {
                values.append(quoted(QString::number(random.bounded(1, 50))));
            }
            for (const QString &column : qAsConst(columns)) {
                values.append(quoted(valueFor(column.mid(1).section(text("_c"), 0, 0))));
            }
            list.append(text("INSERT INTO %1 VALUES (").arg(name) + values.join(QLatin1Char(',')) +
                        QLatin1Char(')'));
        }
        return list;
    }

    QRandomGenerator random;
};

} // namespace

void Structures::roundTrip()
{
    const QStringList tables = {
        text("autori"), text("libri"), text("HIDDENTABLE_città_e_più"),
        text("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Dettagli_XSBTUSRX_Zeno")};
    const QStringList reserved = {text("settings"), text("filters"), text("subtablesconfigs")};
    const QString pairs = text("SELECT RSTRINGFORMAT_tableName||'|'||RSTRINGFORMAT_iconPath FROM "
                               "settings ORDER BY 1");
    Workspace here;
    here.sql(Books, Generator(7).statements());
    here.remember(Books);
    QMap<QString, QStringList> before;
    {
        const Tavenor window;
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        Window::action(window, "actionAutoExportAll")->trigger();
        Window::action(window, "actionExport_All_Tables_Structures")->trigger();
        for (const QString &table : tables + reserved) {
            before.insert(table, EntryPage::exactRows(here, Books, table));
        }
    }
    const QString fresh = text("fresh.db");
    here.write(fresh, QByteArray());
    here.remember(fresh);
    {
        const Tavenor window;
        ModalResponder responder;
        QStringList structures;
        QStringList files;
        for (const QString &table : tables) {
            structures.append(here.path(Folder + table + text(".tsc")));
        }
        for (const QString &table : tables + reserved) {
            files.append(here.path(Folder + table + text(".xmf")));
        }
        responder.chooseFiles(structures);
        Window::action(window, "actionImport_Table_Structure")->trigger();
        responder.chooseFiles(files);
        Window::action(window, "actionImport_From_File_Export_Manager_File")->trigger();
        QCOMPARE(responder.takeTexts(), QStringList());
        QCOMPARE(Window::tables(window), tables.mid(0, 2));
    }
    for (const QString &table : tables + reserved.mid(1)) {
        const QStringList rows = EntryPage::exactRows(here, fresh, table);
        QVERIFY(rows.size() >= 20);
        QCOMPARE(rows, before.value(table));
        QCOMPARE(here.column(fresh, SchemaOf.arg(table)), here.column(Books, SchemaOf.arg(table)));
    }
    QCOMPARE(here.column(fresh, pairs), here.column(Books, pairs));
    QCOMPARE(here.column(fresh, pairs).size(), 4);
}

QTEST_MAIN(Structures)

#include "ui_structures.moc"
