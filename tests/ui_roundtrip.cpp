// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What is designed, entered and carried over in files comes out as it went in: the sample
// collection, and tables under names of every kind.
#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/sqlnames.h"
#include "samples/SampleCollection.h"
#include "samples/tableplan.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"

#include <QDir>
#include <QRandomGenerator>

#include <algorithm>

namespace
{

constexpr quint32 Start = 20250712;
constexpr int LongestTableName = 100;
constexpr int LongestLabel = 200;

const QString Fresh = QStringLiteral("altrove/nuova.db");
const QString Folder = QStringLiteral("ExportManagerFiles/");
const QString FreshExports = QStringLiteral("altrove/ExportManagerFiles/");
const QStringList Reserved = {QStringLiteral("settings"), QStringLiteral("filters"),
                              QStringLiteral("subtablesconfigs")};

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

// A working directory with the sample collection in a folder of its own and, elsewhere, an empty
// database, which is the one that the program opens.
struct Library {
    Library()
    {
        SampleCollection collection;
        if (collection.makeIn(here.path(folder)) != SampleCollection::Outcome::Made) {
            qFatal("%s", qPrintable(collection.problem()));
        }
        here.write(Fresh, QByteArray());
        here.remember(Fresh);
    }
    // The folder that its files are exported to.
    QString exports() const { return folder + QLatin1Char('/') + Folder; }
    // The names of the collection's tables of loans.
    QStringList loans() const
    {
        return here.column(database, text("SELECT name FROM sqlite_master WHERE name LIKE "
                                          "'HIDDENTABLE_libri%' ORDER BY rowid"));
    }

    const Workspace here;
    const QString folder = text("campione");
    const QString database = text("campione/biblioteca.db");
};

TablePlan planOf(const QString &table)
{
    for (const TablePlan &plan : TablePlans::tables()) {
        if (plan.table == table) {
            return plan;
        }
    }
    qFatal("no plan of %s", qPrintable(table));
}

// Makes a row of the designer ask for this column.
void fillRow(const newTableElement &row, const QString &column)
{
    const QString type = Columns::formatWord(column);
    if (Columns::isReference(column)) {
        DesignerPage::fillCopied(row, Columns::reference(column).table, Columns::label(column));
        return;
    }
    if (type == QLatin1String("LINK")) {
        // The table that it leads to is not there yet, so its name is typed before the type is
        // chosen that takes the line away.
        EntryPage::pasteInto(DesignerPage::label(row), Columns::label(column));
        Window::get<QComboBox>(row, "cbType")->setCurrentText(type);
        return;
    }
    DesignerPage::fill(row, type, Columns::label(column), Columns::isRequired(column));
}

void fillSubRows(const newTableElement &row)
{
    int count = 0;
    for (const ColumnDefinition &column : TablePlans::loanColumns()) {
        // The program adds the folder of attachments by itself.
        if (Columns::isSystemLabel(Columns::label(column.first))) {
            continue;
        }
        if (row.subRows().size() <= count) {
            DesignerPage::addAfter(*row.subRows().last());
        }
        fillRow(*row.subRows().at(count), column.first);
        ++count;
    }
}

// Chooses the table's icon from the sample collection, and gives the page its name.
void fillHead(const Library &library, Tavenor &window, const TablePlan &plan)
{
    DesignerPage::openNew(window);
    QString name = plan.table;
    auto *const hides = Window::get<QCheckBox>(window, "cbHiddenTable");
    hides->setChecked(name.startsWith(Markers::HiddenTable));
    DesignerPage::typeName(window, name.remove(Markers::HiddenTable));
    ModalResponder responder;
    responder.chooseFile(
        library.here.path(library.folder + text("/DB_DATA/%1.png").arg(plan.source)));
    Window::click(window, "pbIconImage");
}

// Makes the table on the designer page, without the columns of this format.
void design(const Library &library, Tavenor &window, const TablePlan &plan,
            const QString &leftOut = QString())
{
    fillHead(library, window, plan);
    for (const ColumnDefinition &column : plan.columns) {
        if (Columns::isSystemLabel(Columns::label(column.first)) ||
            Columns::formatWord(column.first) == leftOut) {
            continue;
        }
        const newTableElement &row = DesignerPage::nextRow(window);
        fillRow(row, column.first);
        if (column.first.contains(Formats::SubTable)) {
            fillSubRows(row);
        }
    }
    DesignerPage::accept(window);
    QVERIFY2(!DesignerPage::isOpen(window), qPrintable(plan.table));
}

// Adds a book and opens its loans.
void openLoans(Tavenor &window, const QString &book)
{
    Window::pressTable(window, TablePlans::Books);
    EntryPage::openNew(window);
    EntryPage::enter(window, text("Titolo"), book);
    EntryPage::save(window);
    Window::click(*Window::field(window, TablePlans::LoansLabel), "pbSubTable");
}

QStringList iconPairs(const Workspace &here, const QString &database)
{
    return here.column(database, text("SELECT RSTRINGFORMAT_tableName||'|'||RSTRINGFORMAT_iconPath "
                                      "FROM settings ORDER BY 1"));
}

// "name type" of each column; SQLite's versions differ in the case of the type.
QStringList columnsOf(const Workspace &here, const QString &database, const QString &table)
{
    return here.column(
        database, text("SELECT name||' '||lower(type) FROM pragma_table_info('%1')").arg(table));
}

// Exports all records and all structures of the database that is open.
void exportAll(const Tavenor &window)
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionAutoExportAll")->trigger();
    Window::action(window, "actionExport_All_Tables_Structures")->trigger();
    QCOMPARE(responder.takeTexts(), QStringList(text("Esportazione Completata!")));
}

// Chooses these files in the dialog of an import; fails the test when a box comes.
void import(const Tavenor &window, const char *action, const QStringList &paths)
{
    ModalResponder responder;
    responder.chooseFiles(paths);
    Window::action(window, action)->trigger();
    QCOMPARE(responder.takeTexts(), QStringList());
}

// The files of this ending, by their names.
QMap<QString, QByteArray> filesIn(const Workspace &here, const QString &folder,
                                  const QString &ending)
{
    QMap<QString, QByteArray> files;
    const QDir place(here.path(folder));
    for (const QString &name : place.entryList({QLatin1Char('*') + ending}, QDir::Files)) {
        files.insert(name, here.read(folder + name));
    }
    return files;
}

// The lines that a person finds under each table and each saved filter.
QMap<QString, QStringList> linesSeen(Tavenor &window)
{
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
    QMap<QString, QStringList> seen;
    for (const QString &table : Window::tables(window)) {
        Window::pressTable(window, table);
        seen.insert(table, Window::lines(window));
    }
    for (const QString &filter : FilterPage::savedFilters(window)) {
        FilterPage::load(window, filter);
        seen.insert(text("filter ") + filter, Window::lines(window));
    }
    return seen;
}

// Exports the whole collection; what its window showed.
QMap<QString, QStringList> exportCollection(const Library &library)
{
    library.here.remember(library.database);
    Tavenor window;
    exportAll(window);
    return linesSeen(window);
}

// Imports the collection's structures and these tables' records into the empty database and
// exports them from there; what its window then showed.
QMap<QString, QStringList> importCollection(const Library &library, const QStringList &tables)
{
    const Workspace &here = library.here;
    QStringList structures;
    QStringList records;
    for (const QString &name : filesIn(here, library.exports(), text(".tsc")).keys()) {
        structures.append(here.path(library.exports() + name));
    }
    for (const QString &table : tables) {
        records.append(here.path(library.exports() + table + text(".xmf")));
    }
    here.remember(Fresh);
    {
        const Tavenor window;
        import(window, "actionImport_Table_Structure", structures);
        import(window, "actionImport_From_File_Export_Manager_File", records);
        exportAll(window);
    }
    // Saved filters show when the database is opened again.
    Tavenor window;
    return linesSeen(window);
}

// A structure file calls the type of every column "text".
QString asImported(QString statement)
{
    return statement.replace(text(" Integer"), text(" text"))
        .replace(text("_UserPath "), text("_UserPath text"));
}

// The exact rows of a table of whose references only the digits are kept, because a column of
// texts holds them.
QStringList rowsAsImported(const Workspace &here, const QString &database, const QString &table)
{
    QStringList values;
    for (const QString &column :
         here.column(database, text("SELECT name FROM pragma_table_info('%1')").arg(table))) {
        const QString value =
            Columns::isReference(column) ? text("CAST(%1 AS text)").arg(column) : column;
        values.append(text("typeof(%1)||':'||quote(%1)").arg(value));
    }
    return here.column(
        database,
        text("SELECT %1 FROM %2 ORDER BY rowid").arg(values.join(text("||'|'||")), table));
}

// Names of every kind, the same ones in every run.
class NameMaker
{
public:
    explicit NameMaker(quint32 start)
        : random(start)
    {
    }

    // A name that may be typed for a field.
    QString label() { return made(1, 14); }
    // A name that may be typed for a table.
    QString tableName() { return piece(Letters) + made(0, 7); }
    // A name that fills this many bytes of UTF-8.
    QString filled(QString name, int bytes)
    {
        while (name.toUtf8().size() < bytes) {
            const QString more = name + piece(random.bounded(Kinds));
            name = more.toUtf8().size() > bytes ? name + QLatin1Char('z') : more;
        }
        return name;
    }
    // The name with something in it that no name may hold, and the reason that people are given.
    QPair<QString, QString> spoilt(const QString &name)
    {
        static const QStringList characters =
            splitUp("'|''|\"|;|%|%s|%1|,|.|:|(|)|[|]|{|}|/|\\|*|?|!|<|=|&|+|-|--|~|^|`|@|/*|\u00a0|"
                    "\u200b|\u200d|\u202e|\u3000|\ufeff|'; DROP TABLE altri; --");
        static const QStringList words =
            splitUp("_XDTX_|_XSBTX_|_XSBTUSRX_|_XSBCONFX_|_XFLTRX_|_XMLTYX_|->|DATEFORMAT");
        const QStringList &choice = turn++ % 4 == 3 ? words : characters;
        const QString bad =
            QString(name).insert(placeIn(name), choice.at(turn / 2 % choice.size()));
        const QString reason = &choice == &words
                                   ? text("' contiene una parola riservata al programma.")
                                   : text("' contiene caratteri non ammessi: usare solo lettere, "
                                          "cifre e '_'.");
        return {bad, text("Il nome '") + bad + reason};
    }

private:
    enum Kind { Letters, Accented, Ideographs, Pictures, Digits, Signs, FullWidth, Kinds };

    static QStringList splitUp(const char *utf8) { return text(utf8).split(QLatin1Char('|')); }
    QString piece(int kind)
    {
        static const QVector<QStringList> pieces = {
            splitUp("a|Z|x|R|N|X|ABC|Titolo|LINKS|FORMAT|IMAGES|Nome"),
            splitUp("à|É|ç|ñ|ß|Ø|ø|Ω|ж|İ|ı|e\u0301|ά|ü"),
            splitUp("漢|字|かな|カ|한글|𠮷|ע|ال|ไทย"),
            splitUp("📚|🎲|🙂|☕|♥|€|½|№"),
            splitUp("0|1|9|42|٣|²"),
            splitUp("_|$| |__|$$|  |_ _"),
            splitUp("＃|＇|％|Ａ|１|＿|＄|（|，|－")};
        const QStringList &choice = pieces.at(kind);
        return choice.at(random.bounded(choice.size()));
    }
    QString made(int fewest, int most)
    {
        QString name;
        for (int i = random.bounded(fewest, most + 1); i > 0; --i) {
            name += piece(random.bounded(Kinds));
        }
        return name;
    }
    // A place between two whole characters.
    int placeIn(const QString &name)
    {
        const int place = random.bounded(name.size() + 1);
        return place < name.size() && name.at(place).isLowSurrogate() ? place - 1 : place;
    }

    QRandomGenerator random;
    int turn = 0;
};

// Types a table with two fields of these names into the designer page.
void typeTable(Tavenor &window, const QString &table, const QString &title, const QString &type,
               const QString &label)
{
    DesignerPage::openNew(window);
    DesignerPage::typeName(window, table);
    DesignerPage::add(window, text("STRING"), title, true);
    DesignerPage::add(window, type, label);
}

// What is to be found in the database after a table was accepted.
QString statementFor(const QString &table, const QString &title, const QString &type,
                     const QString &label)
{
    const QStringList parts = {text("CREATE TABLE "),
                               SqlNames::withoutBlanks(table),
                               text(" (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_"),
                               SqlNames::withoutBlanks(title),
                               text(" text,N"),
                               type,
                               text("FORMAT_"),
                               SqlNames::withoutBlanks(label),
                               text(" text,NLONGSTRINGFORMAT_UserPath )")};
    return parts.join(QString());
}

// The second is part of the first, and yet another value.
const QStringList Awkward = {text("L'anno \"d'oro\" 100%; %1 %s -- ''è漢\\ <b>🎲"),
                             text("L'anno \"d'oro\" 100%; %1 %s -- ''è漢\\ <b>")};

// Enters a record: an awkward title, and what fits the second field.
void addRecord(const Tavenor &window, const QString &type, const QString &title)
{
    EntryPage::openNew(window);
    EntryPage::pasteInto(EntryPage::editors(window).at(0)->editor(), title);
    const bool isText = QStringList({text("STRING"), text("MAIL"), text("URL")}).contains(type);
    if (type != QLatin1String("DATE") && type != QLatin1String("BOOL")) {
        EntryPage::pasteInto(EntryPage::editors(window).at(1)->editor(),
                             isText ? title : text("7"));
    }
    EntryPage::save(window);
    QVERIFY(!EntryPage::isOpen(window));
}

// The lines that remain when the title must be this text.
QStringList filteredLines(const Tavenor &window, const QString &title)
{
    FilterPage::open(window);
    // The first condition is that of the Id.
    Window::get<QLineEdit>(*FilterPage::conditions(window).at(1), "leData")->setText(title);
    FilterPage::apply(window);
    return Window::lines(window);
}

// Names that the designer page refuses, and why.
struct Refused {
    QString table;
    QString title;
    QString reason;
};

const QStringList Others = {
    text("CREATE TABLE altri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text)"),
    text("INSERT INTO altri VALUES (1,'Zeno')")};

} // namespace

class RoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void designerMakesTheSampleTables();
    void linkIsAddedWhenItsTableIsThere();
    void sampleCollectionIsCarriedOver();
    void takenNamesSurvive_data();
    void takenNamesSurvive();
    void refusedNamesLeaveTheFile();
};

void RoundTrip::designerMakesTheSampleTables()
{
    const Library library;
    {
        Tavenor window;
        // Tables whose fields are copied come before those that copy them.
        for (const char *const name : {"autori", "soci", "libri", "HIDDENTABLE_Note"}) {
            design(library, window, planOf(text(name)));
        }
        const ModalResponder responder;
        for (const QString &loan : library.loans()) {
            const QString book = SqlNames::madePlain(loan.section(Markers::SubTableUser, 1));
            openLoans(window, QString(book).replace(QLatin1Char('_'), QLatin1Char(' ')));
        }
        QVERIFY(responder.boxes().isEmpty());
    }
    const Workspace &here = library.here;
    QCOMPARE(TablePlans::tables().size(), 4);
    for (const TablePlan &plan : TablePlans::tables()) {
        QCOMPARE(DesignerPage::statement(here, Fresh, plan.table),
                 DesignerPage::statement(here, library.database, plan.table));
    }
    QCOMPARE(library.loans().size(), 4);
    for (const QString &loan : library.loans()) {
        QCOMPARE(DesignerPage::statement(here, Fresh, loan),
                 DesignerPage::statement(here, library.database, loan));
    }
    // Nothing else was made.
    const QString names = text("SELECT name FROM sqlite_master ORDER BY 1");
    QCOMPARE(here.column(Fresh, names), here.column(library.database, names));
    for (const QString &table : Reserved) {
        QCOMPARE(DesignerPage::statement(here, Fresh, table),
                 DesignerPage::statement(here, library.database, table));
    }
    QCOMPARE(EntryPage::exactRows(here, Fresh, text("subtablesconfigs")),
             EntryPage::exactRows(here, library.database, text("subtablesconfigs")));
    // The designer gives no icon to the tables of loans; people choose one for them later.
    QStringList pairs = iconPairs(here, library.database);
    pairs.erase(
        std::remove_if(pairs.begin(), pairs.end(),
                       [](const QString &pair) { return pair.contains(Markers::SubTableUser); }),
        pairs.end());
    QCOMPARE(pairs.size(), 4);
    QCOMPARE(iconPairs(here, Fresh), pairs);
}

void RoundTrip::linkIsAddedWhenItsTableIsThere()
{
    // Authors link to the books, whose authors are copied from them: who chooses the target from
    // the list makes the link last.
    const Library library;
    const QString authors = text("autori");
    {
        Tavenor window;
        design(library, window, planOf(authors), text("LINK"));
        design(library, window, planOf(text("soci")));
        design(library, window, planOf(TablePlans::Books));
        Window::pressTable(window, authors);
        DesignerPage::openAdd(window);
        const newTableElement &row = *DesignerPage::rows(window).first();
        auto *const targets = Window::get<QComboBox>(row, "cbExistList2");
        QCOMPARE(targets->count(), 2);
        QCOMPARE(targets->itemText(1), TablePlans::Books);
        DesignerPage::fillLink(row, TablePlans::Books);
        DesignerPage::accept(window);
        QVERIFY(!DesignerPage::isOpen(window));
    }
    QStringList expected = columnsOf(library.here, library.database, authors);
    const QString link = text("NLINKFORMAT_libri text");
    QVERIFY(expected.removeOne(link));
    expected.append(link);
    QCOMPARE(columnsOf(library.here, Fresh, authors), expected);
}

void RoundTrip::sampleCollectionIsCarriedOver()
{
    const Library library;
    const Workspace &here = library.here;
    // Tables that others refer to come first.
    const QStringList tables =
        QStringList({text("autori"), text("soci"), text("libri"), text("HIDDENTABLE_Note")}) +
        library.loans();
    QCOMPARE(tables.size(), 8);
    const QMap<QString, QStringList> seen = exportCollection(library);
    QVERIFY(seen.contains(text("filter Da leggere")));
    QCOMPARE(importCollection(library, tables + Reserved), seen);

    QStringList differing;
    for (const QString &table : tables) {
        // The values of references are whole numbers where the designer made the column, and
        // their digits where a structure file did.
        const QStringList rows = EntryPage::exactRows(here, Fresh, table);
        QVERIFY(!rows.isEmpty());
        QCOMPARE(rows, rowsAsImported(here, library.database, table));
        if (rows != EntryPage::exactRows(here, library.database, table)) {
            differing.append(table);
        }
        QCOMPARE(DesignerPage::statement(here, Fresh, table),
                 asImported(DesignerPage::statement(here, library.database, table)));
    }
    QCOMPARE(differing, QStringList(TablePlans::Books) + library.loans());
    for (const QString &table : Reserved.mid(1)) {
        QCOMPARE(EntryPage::exactRows(here, Fresh, table),
                 EntryPage::exactRows(here, library.database, table));
    }
    // A row of an icon gets its Id when the structure is imported.
    QCOMPARE(iconPairs(here, Fresh), iconPairs(here, library.database));
    QCOMPARE(iconPairs(here, Fresh).size(), tables.size());

    // What the new database exports are the same files.
    QMap<QString, QByteArray> before = filesIn(here, library.exports(), text(".xmf"));
    QMap<QString, QByteArray> after = filesIn(here, FreshExports, text(".xmf"));
    QVERIFY(before.remove(text("settings.xmf")) == 1 && after.remove(text("settings.xmf")) == 1);
    QCOMPARE(before.size(), tables.size() + 2);
    QCOMPARE(after, before);
    QCOMPARE(filesIn(here, FreshExports, text(".tsc")),
             filesIn(here, library.exports(), text(".tsc")));
}

void RoundTrip::takenNamesSurvive_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("label");
    const QStringList types =
        text("STRING MAIL URL INTEGER REAL MONEY DATE BOOL").split(QLatin1Char(' '));
    NameMaker names(Start);
    int count = 0;
    const auto row = [&](const QString &table, const QString &title, const QString &label) {
        const QString &type = types.at(count++ % types.size());
        QTest::newRow(qPrintable(text("%1 fits: ").arg(count) + table + text(" | ") + title))
            << table << title << type << label;
    };
    const auto fixed = [&](const char *table, const char *title, const char *label) {
        row(text(table), text(title), text(label));
    };
    // Words that SQL reserves for other places, and the program's own words where they mean
    // nothing.
    fixed("Key", "SELECT", "FROM");
    fixed("begin", "Order", "group");
    fixed("CURRENT_DATE", "NULL", "table");
    fixed("cast", "CURRENT_TIME", "INTEGER");
    fixed("rowid", "rowid", "REAL");
    fixed("_", "_", "$");
    fixed("integer", "1", "2020");
    fixed("X", "X", "XD");
    fixed("Settings2", "settings", "filters");
    fixed("main", "temp", "aFORMAT_b");
    row(names.filled(text("t"), LongestTableName), names.filled(text("l"), LongestLabel),
        text("x"));
    row(QString(LongestTableName, QLatin1Char('a')), QString(LongestLabel, QLatin1Char('1')),
        names.filled(text("m"), LongestLabel));
    while (count < 32) {
        const QString table = names.tableName();
        const QString title = names.label();
        row(table, title, names.label());
    }
}

void RoundTrip::takenNamesSurvive()
{
    QFETCH(const QString, table);
    QFETCH(const QString, title);
    QFETCH(const QString, type);
    QFETCH(const QString, label);
    const EntryPage::Started program(Others);
    Tavenor &window = *program.window;
    const Workspace &here = program.here;
    const QString stored = SqlNames::withoutBlanks(table);
    ModalResponder responder;
    typeTable(window, table, title, type, label);
    DesignerPage::accept(window);
    QVERIFY(!DesignerPage::isOpen(window));
    const QString statement = statementFor(table, title, type, label);
    QCOMPARE(DesignerPage::statement(here, program.database, stored), statement);

    Window::pressTable(window, stored);
    for (const QString &value : Awkward) {
        addRecord(window, type, value);
    }
    const QStringList rows = program.rows(stored);
    QCOMPARE(rows.size(), Awkward.size());
    QCOMPARE(filteredLines(window, Awkward.last()), Awkward.mid(1));
    QCOMPARE(filteredLines(window, text("L'anno")), QStringList());

    responder.chooseFile(here.path(text("dati.xmf")));
    Window::action(window, "actionExport")->trigger();
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionClear_Selected_List")->trigger();
    QCOMPARE(program.rows(stored), QStringList());
    responder.chooseFile(here.path(text("dati.xmf")));
    Window::action(window, "actionImport_From_File_Export_Manager_File")->trigger();
    QCOMPARE(program.rows(stored), rows);

    Window::action(window, "actionExport_Selected_Tables_Structure")->trigger();
    const QByteArray structure = here.read(Folder + stored + text(".tsc"));
    responder.chooseFile(here.path(Folder + stored + text(".tsc")));
    Window::action(window, "actionImport_Table_Structure")->trigger();
    QCOMPARE(FilterPage::prompt().getName(), stored);
    FilterPage::acceptName(text("copia"));
    QCOMPARE(DesignerPage::statement(here, program.database, text("copia")),
             asImported(statementFor(text("copia"), title, type, label)));
    Window::pressTable(window, text("copia"));
    Window::action(window, "actionExport_Selected_Tables_Structure")->trigger();
    QCOMPARE(here.read(Folder + text("copia.tsc")), structure);
    QCOMPARE(program.rows(stored), rows);
    QCOMPARE(responder.boxes().size(), 1);
    EntryPage::forgetOldPages();
}

void RoundTrip::refusedNamesLeaveTheFile()
{
    const EntryPage::Started program(Others);
    Tavenor &window = *program.window;
    NameMaker names(Start + 1);
    const QString longTable = names.filled(text("t"), LongestTableName + 1);
    const QString longLabel = names.filled(text("l"), LongestLabel + 1);
    const QString tooLong = text("Il nome '%1' è troppo lungo.");
    QVector<Refused> all = {{longTable, text("Nome"), tooLong.arg(longTable)},
                            {text("soci"), longLabel, tooLong.arg(longLabel)}};
    while (all.size() < 60) {
        const QPair<QString, QString> table = names.spoilt(names.tableName());
        all.append({table.first, names.label(), table.second});
        const QPair<QString, QString> title = names.spoilt(names.label());
        all.append({names.tableName(), title.first, title.second});
    }
    typeTable(window, text("soci"), text("Nome"), text("STRING"), text("Altro"));
    const QByteArray before = program.here.read(program.database);
    QLineEdit *const label = DesignerPage::label(*DesignerPage::rows(window).first());
    for (const Refused &each : qAsConst(all)) {
        DesignerPage::typeName(window, each.table);
        EntryPage::pasteInto(label, each.title);
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        DesignerPage::accept(window);
        QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile creare la tabella ") +
                                                    each.table + text("!\n") + each.reason));
        QCOMPARE(program.here.read(program.database), before);
        QVERIFY(DesignerPage::isOpen(window));
        QCOMPARE(Window::get<QLineEdit>(window, "leTableName")->text(), each.table);
        QCOMPARE(label->text(), each.title);
    }
}

QTEST_MAIN(RoundTrip)
#include "ui_roundtrip.moc"
