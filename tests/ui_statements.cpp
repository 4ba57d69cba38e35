// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What each command asks of the database and of the disk, however many records there are.
#include "model/markers.h"
#include "storage/reservedtables.h"
#include "storage/sqltext.h"
#include "tests/shim/databasecounts.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"

#include <QCoreApplication>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace
{

using DatabaseCounts::Counts;

const QString Database = QStringLiteral("books.db");
const QString Detail = QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_");

// Every command is counted with the fewer and with the more records in every table.
constexpr int Fewer = 30;
constexpr int More = 120;

// SQLite synchronises its journal (twice), the journal's folder and the database.
constexpr int SyncsOfACommit = 4;

// Fills a table with this many records, made of the expression.
QString filled(const QString &table, const QString &values, int records)
{
    return QStringLiteral("INSERT INTO %1 WITH RECURSIVE c(i) AS (VALUES(1) UNION ALL SELECT i+1 "
                          "FROM c WHERE i<%2) SELECT i,%3 FROM c")
        .arg(table)
        .arg(records)
        .arg(values);
}

QStringList collection(int records)
{
    const QString id = QStringLiteral(" (RINTEGERFORMAT_Id integer primary key,");
    const auto made = [&id](const QString &table, const char *columns) {
        return QStringLiteral("CREATE TABLE ") + table + id + QString::fromUtf8(columns) +
               QLatin1Char(')');
    };
    const QString libri = QStringLiteral("libri");
    const QString autori = QStringLiteral("autori");
    const QString note = QStringLiteral("HIDDENTABLE_note");
    const QString detail = Detail + QStringLiteral("Libro_1");
    return {
        made(libri, "RSTRINGFORMAT_Titolo text,Xautori_XDTX_RSTRINGFORMAT_Nome Integer,"
                    "NINTEGERFORMAT_Anno text,NMONEYFORMAT_Prezzo text,NLINKFORMAT_autori text,"
                    "NSUBTABLEFORMAT_Prestiti text,NLONGSTRINGFORMAT_UserPath"),
        made(autori, "RSTRINGFORMAT_Nome text,NSTRINGFORMAT_Paese text,NLINKFORMAT_libri text,"
                     "NSUBTABLEFORMAT_Premi text"),
        made(note, "RSTRINGFORMAT_Nota text"),
        made(detail, "NSTRINGFORMAT_Socio text"),
        SqlText::createTable(Markers::SettingsTable, ReservedTables::settingsColumns()),
        SqlText::createTable(Markers::FiltersTable, ReservedTables::filtersColumns()),
        SqlText::createTable(Markers::SubTablesConfigsTable,
                             ReservedTables::subTablesConfigsColumns()),
        filled(libri,
               QStringLiteral("'Libro '||i,1+i%20,'19'||i%100,i||'.50','autori','0','libri_'||i"),
               records),
        filled(autori, QStringLiteral("'Autore '||i,'Italia','libri','0'"), records),
        filled(note, QStringLiteral("'Nota '||i"), records),
        filled(detail, QStringLiteral("'Socio '||i"), records),
        filled(Markers::SettingsTable, QStringLiteral("'autori',''"), records),
        filled(Markers::FiltersTable,
               QStringLiteral("'f'||i,'autori','NSTRINGFORMAT_A','x','STRING','Equal','And'"),
               records),
        filled(Markers::SubTablesConfigsTable,
               QStringLiteral("'autori_Premi_XSBCONFX_'||i,'NSTRINGFORMAT_A','text'"), records),
        QStringLiteral("INSERT INTO subtablesconfigs VALUES (NULL,'libri_Prestiti',"
                       "'RSTRINGFORMAT_Socio','text')"),
    };
}

// The counts of the commands, by their names.
using Report = QMap<QString, Counts>;

// The program over a collection of so many records, counted command by command.
class Counted
{
public:
    Counted(int records, Report &report)
        : report(report)
    {
        here.sql(Database, collection(records));
        here.remember(Database);
    }

    /// Runs a command and adds its counts to the report.
    template<typename Command>
    void count(const char *name, const Command &command)
    {
        DatabaseCounts::start();
        command();
        QCoreApplication::processEvents();
        report.insert(QString::fromUtf8(name), DatabaseCounts::stop());
    }
    void countTrigger(const char *name, const char *action)
    {
        count(name, [&] { trigger(action); });
    }
    /// The same for a command that asks a question first, answered with Yes.
    void countConfirmed(const char *name, const char *action)
    {
        ModalResponder responder;
        responder.answer(QMessageBox::Yes);
        countTrigger(name, action);
    }
    /// The same for a command that asks for a file.
    void countWithFile(const char *name, const char *action, const QString &file)
    {
        ModalResponder responder;
        responder.chooseFile(here.path(file));
        countTrigger(name, action);
    }
    void start() { window = std::make_unique<Tavenor>(); }
    void open(const char *table) { window->changeTable(QString::fromUtf8(table)); }
    void trigger(const char *action) { Window::action(*window, action)->trigger(); }
    QListWidget &list() const { return *Window::get<QListWidget>(*window, "userListWidget"); }

    const Workspace here;
    std::unique_ptr<Tavenor> window;

private:
    Report &report;
};

void browse(Counted &program)
{
    program.count("start", [&] { program.start(); });
    Tavenor &window = *program.window;
    program.count("change table", [&] { Window::pressTable(window, QStringLiteral("autori")); });
    program.open("libri");
    program.count("sort", [&] { Window::click(window, "pbSort"); });
    auto *const search = Window::get<QLineEdit>(window, "userSearchEdit");
    program.count("search", [&] { search->setText(QStringLiteral("Libro")); });
    program.count("next match", [&] { Window::click(window, "pbUserNext"); });
    program.count("previous match", [&] { Window::click(window, "pbUserPrev"); });
    program.count("next record", [&] { Window::click(window, "pbNext"); });
    program.count("previous record", [&] { Window::click(window, "pbPrev"); });
    program.count("select a line", [&] { program.list().setCurrentRow(20); });
    program.count("show a record", [&] { window.vwRecord(17); });
    program.count("show hidden tables", [&] { program.trigger("actionShow_Hidden_Tables"); });
    program.count("calculate", [&] { Window::click(window, "pbCalc"); });
    program.count("calculate again", [&] { Window::click(window, "pbRecalc"); });
    program.count("leave the calculator", [&] { Window::click(window, "pbExitCalc"); });
}

void follow(Counted &program)
{
    program.start();
    program.open("libri");
    Tavenor &window = *program.window;
    window.vwRecord(1);
    const auto press = [&window](const char *label, const char *button) {
        outputDataForm *const field = Window::field(window, QString::fromUtf8(label));
        if (field == nullptr) {
            qFatal("no field %s", label);
        }
        Window::click(*field, button);
    };
    program.count("follow a reference", [&] { press("Nome", "pbXView"); });
    program.count("go back", [&] { Window::click(window, "pbReturn"); });
    program.count("follow a link", [&] { press("autori", "pbLink"); });
    program.open("libri");
    window.vwRecord(1);
    program.count("open details", [&] { press("Prestiti", "pbSubTable"); });
    program.open("libri");
    window.vwRecord(2);
    program.count("open first details", [&] { press("Prestiti", "pbSubTable"); });
}

void enter(Counted &program)
{
    program.start();
    program.open("libri");
    Tavenor &window = *program.window;
    const auto setTitle = [&window](const char *text) {
        EntryPage::enter(window, QStringLiteral("Titolo"), QString::fromUtf8(text));
    };
    program.count("open an empty record", [&] { EntryPage::openNew(window); });
    setTitle("Zeno");
    EntryPage::choose(window, QStringLiteral("Nome"), 1);
    EntryPage::choose(window, QStringLiteral("autori"), 1);
    program.count("save a new record", [&] { EntryPage::save(window); });
    program.count("open a record to change", [&] { EntryPage::openEdit(window); });
    setTitle("Zeno Cosini");
    program.count("save a changed record", [&] { EntryPage::save(window); });
    EntryPage::openEdit(window);
    program.count("save without a change", [&] { EntryPage::save(window); });
    EntryPage::openEdit(window);
    program.count("leave an entry", [&] { Window::click(window, "pbCancelEdit"); });
    EntryPage::openNew(window);
    setTitle("Malombra");
    EntryPage::choose(window, QStringLiteral("Nome"), 1);
    program.count("save a record with an empty link", [&] { EntryPage::save(window); });
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    program.count("delete a record", [&] { Window::click(window, "pbDeleteUser"); });
}

void filter(Counted &program)
{
    program.start();
    program.open("libri");
    Tavenor &window = *program.window;
    program.count("open the conditions", [&] { FilterPage::open(window); });
    FilterPage::enter(window, QStringLiteral("Titolo"), QStringLiteral("Libro"));
    FilterPage::press(window, QStringLiteral("Titolo"), "pbMajor");
    program.count("switch conditions on", [&] { FilterPage::apply(window); });
    program.count("next filtered record", [&] { Window::click(window, "pbNext"); });
    FilterPage::open(window);
    program.count("leave the conditions", [&] { Window::click(window, "pbCancelFilters"); });
    FilterPage::open(window);
    program.count("ask for a filter's name", [&] { Window::click(window, "pbNewFilter"); });
    program.count("save a filter", [&] { FilterPage::acceptName(QStringLiteral("Miei")); });
    FilterPage::open(window);
    program.count("drop the conditions", [&] { Window::click(window, "pbResetFilters"); });
    program.count("load a filter", [&] { FilterPage::load(window, QStringLiteral("Miei")); });
    program.countConfirmed("delete a filter", "actionDeleteFilter");
}

void exportAndImport(Counted &program)
{
    program.start();
    program.open("libri");
    const QString records = QStringLiteral("libri.xmf");
    program.countWithFile("export a table", "actionExport", records);
    program.countWithFile("export a record", "actionExport_Selected_Record_To_File",
                          QStringLiteral("one.xmf"));
    program.countWithFile("export readable", "actionExport_To_File", QStringLiteral("libri.txt"));
    program.countWithFile("export a record readable", "actionExport_Selected_Record_To_File_txt",
                          QStringLiteral("one.txt"));
    {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        program.countTrigger("export everything", "actionAutoExportAll");
    }
    program.countTrigger("export a structure", "actionExport_Selected_Tables_Structure");
    program.countTrigger("export all structures", "actionExport_All_Tables_Structures");
    program.countWithFile("import what is there", "actionImport_From_File_Export_Manager_File",
                          records);
    program.here.sql(Database, {QStringLiteral("DELETE FROM libri")});
    program.countWithFile("import", "actionImport_From_File_Export_Manager_File", records);
    {
        ModalResponder responder;
        responder.chooseFile(program.here.path(QStringLiteral("ExportManagerFiles/libri.tsc")));
        program.trigger("actionImport_Table_Structure");
    }
    program.count("import a structure",
                  [] { FilterPage::acceptName(QStringLiteral("libri_nuovi")); });
}

void design(Counted &program)
{
    program.start();
    program.open("libri");
    Tavenor &window = *program.window;
    program.count("open the designer", [&] { DesignerPage::openNew(window); });
    DesignerPage::typeName(window, QStringLiteral("Clienti"));
    DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    DesignerPage::addSubTable(window, QStringLiteral("Ordini"),
                              {QStringLiteral("STRING Articolo"), QStringLiteral("DATE Data")});
    program.count("make a table", [&] { DesignerPage::accept(window); });
    program.count("open the designer for fields", [&] { DesignerPage::openAdd(window); });
    DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Editore"));
    DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Luogo"));
    program.count("add fields", [&] { DesignerPage::accept(window); });
    window.changeTable(Detail + QStringLiteral("Libro_1"));
    DesignerPage::openAdd(window);
    DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Citta"));
    program.count("add a field to details", [&] { DesignerPage::accept(window); });
}

void maintain(Counted &program)
{
    program.start();
    program.open("libri");
    Tavenor &window = *program.window;
    window.administratorModeEnabled(true);
    for (const char *const name : {"one.png", "two.png"}) {
        QImage(8, 8, QImage::Format_RGB32).save(program.here.path(QString::fromUtf8(name)));
    }
    program.countWithFile("choose an icon", "actionChange_Table_Icon", QStringLiteral("one.png"));
    program.countWithFile("change an icon", "actionChange_Table_Icon", QStringLiteral("two.png"));
    program.open("autori");
    program.count("switch the advanced mode on", [&] { EntryPage::setAdvancedMode(window, true); });
    program.count("switch the advanced mode off",
                  [&] { EntryPage::setAdvancedMode(window, false); });
    program.countConfirmed("clear a table", "actionClear_Selected_List");
    program.countConfirmed("remove a table", "actionRemove_Table");
    program.countConfirmed("clear all tables", "actionClear_All_Tables");
    program.countConfirmed("remove all tables", "actionDelete_All_Database");
}

Report reportFor(int records)
{
    Report report;
    for (void (*const part)(Counted &) :
         {browse, follow, enter, filter, exportAndImport, design, maintain}) {
        Counted program(records, report);
        part(program);
    }
    return report;
}

// A copied icon waits for its bytes, its folder and the folder above.
constexpr int SyncsOfACopy = 3;

// What a command may cost: commits, exactly, and further waits for files that are written whole.
struct Expected {
    const char *name;
    int commits = 0;
    int syncs = 0;
};

const Expected Commands[] = {
    {"start"},
    {"change table"},
    {"sort"},
    {"search"},
    {"next match"},
    {"previous match"},
    {"next record"},
    {"previous record"},
    {"select a line"},
    {"show a record"},
    {"show hidden tables"},
    {"calculate"},
    {"calculate again"},
    {"leave the calculator"},
    {"follow a reference"},
    {"go back"},
    {"follow a link"},
    {"open details"},
    {"open first details", 1},
    {"open an empty record"},
    {"save a new record", 1},
    {"open a record to change"},
    {"save a changed record", 1},
    {"save without a change"},
    {"leave an entry"},
    // The record view writes the table's name into the link.
    {"save a record with an empty link", 2},
    {"delete a record", 1},
    {"open the conditions"},
    {"switch conditions on"},
    {"next filtered record"},
    {"leave the conditions"},
    {"ask for a filter's name"},
    {"save a filter", 1},
    {"drop the conditions"},
    {"load a filter"},
    {"delete a filter", 1},
    {"export a table", 0, 1},
    {"export a record", 0, 1},
    {"export readable", 0, 1},
    {"export a record readable", 0, 1},
    {"export everything", 0, 7},
    {"export a structure", 0, 1},
    {"export all structures", 0, 4},
    {"import", 1},
    {"import what is there"},
    {"import a structure", 1},
    {"open the designer"},
    {"make a table", 1},
    {"open the designer for fields"},
    {"add fields", 1},
    {"add a field to details", 1},
    {"choose an icon", 1, SyncsOfACopy},
    {"change an icon", 1, SyncsOfACopy},
    {"switch the advanced mode on"},
    {"switch the advanced mode off"},
    {"clear a table", 1},
    {"remove a table", 1},
    {"clear all tables", 1},
    {"remove all tables", 1},
};

// The same statement for another record, or for a list of them, has the same text.
QStringList withoutNumbers(QStringList statements)
{
    static const QRegularExpression Number(QStringLiteral("[0-9]+(,[0-9]+)*"));
    return statements.replaceInStrings(Number, QStringLiteral("0"));
}

// Takes the statements that add a record out of the list, if `meant`; how many there were.
int takeInsertions(QStringList &statements, bool meant)
{
    const int before = statements.size();
    const auto isInsertion = [](const QString &text) {
        return text.startsWith(QStringLiteral("INSERT"));
    };
    if (meant) {
        statements.erase(std::remove_if(statements.begin(), statements.end(), isInsertion),
                         statements.end());
    }
    return before - statements.size();
}

} // namespace

class StatementCounts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCommandIsExpected();
    void manyRecordsAskAsMuchAsFew_data();
    void manyRecordsAskAsMuchAsFew();
    void importCommitsInBatches();

private:
    Report fewer;
    Report more;
};

void StatementCounts::initTestCase()
{
    DatabaseCounts::watchConnections();
    fewer = reportFor(Fewer);
    more = reportFor(More);
}

void StatementCounts::everyCommandIsExpected()
{
    QStringList expected;
    for (const Expected &command : Commands) {
        expected.append(QString::fromUtf8(command.name));
    }
    expected.sort();
    QCOMPARE(fewer.keys(), expected);
}

void StatementCounts::manyRecordsAskAsMuchAsFew_data()
{
    QTest::addColumn<int>("commits");
    QTest::addColumn<int>("syncs");
    QTest::addColumn<bool>("addsRecords");
    for (const Expected &command : Commands) {
        const bool addsRecords = qstrcmp(command.name, "import") == 0;
        QTest::newRow(command.name) << command.commits << command.syncs << addsRecords;
    }
}

void StatementCounts::manyRecordsAskAsMuchAsFew()
{
    QFETCH(const int, commits);
    QFETCH(const int, syncs);
    QFETCH(const bool, addsRecords);
    const QString command = QString::fromUtf8(QTest::currentDataTag());
    Counts few = fewer.value(command);
    Counts many = more.value(command);
    QCOMPARE(takeInsertions(few.statements, addsRecords), addsRecords ? Fewer : 0);
    QCOMPARE(takeInsertions(many.statements, addsRecords), addsRecords ? More : 0);
    QCOMPARE(withoutNumbers(many.statements), withoutNumbers(few.statements));
    QCOMPARE(few.commits, commits);
    QCOMPARE(many.commits, commits);
    QCOMPARE(many.syncs, few.syncs);
    QVERIFY2(many.syncs <= commits * SyncsOfACommit + syncs,
             qPrintable(QString::number(many.syncs)));
}

void StatementCounts::importCommitsInBatches()
{
    constexpr int Records = 2500;
    Report report;
    Counted program(Fewer, report);
    QByteArray lines = "HIDDENTABLE_note\n";
    for (int id = Fewer + 1; id <= Fewer + Records; ++id) {
        lines += "RINTEGERFORMAT_Id###" + QByteArray::number(id) + "###RSTRINGFORMAT_Nota###n###\n";
    }
    program.here.write(QStringLiteral("note.xmf"), lines);
    program.start();
    program.countWithFile("import", "actionImport_From_File_Export_Manager_File",
                          QStringLiteral("note.xmf"));
    Counts counts = report.value(QStringLiteral("import"));
    QCOMPARE(takeInsertions(counts.statements, true), Records);
    QVERIFY2(counts.commits <= 1 + Records / 500, qPrintable(QString::number(counts.commits)));
    QVERIFY(counts.commits >= 1);
}

QTEST_MAIN(StatementCounts)

#include "ui_statements.moc"
