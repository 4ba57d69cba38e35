// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Awkward names wherever a person types one: made exactly as typed, or refused with one box;
// nothing else in the database changes.
#include "model/sqlnames.h"
#include "model/values.h"
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/Sql.h"
#include "tests/support/SqlKeywords.h"
#include "tests/support/UrlCatcher.h"

#include <QDir>
#include <QDirIterator>
#include <QMimeData>

#include <algorithm>
#include <functional>
#include <random>

namespace
{

// So many names share a window: a database with hundreds of tables is slow to show.
constexpr int NamesPerWindow = 40;
constexpr int FewNames = 8;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList asciiNames()
{
    QStringList names;
    for (char character = 1; character > 0; ++character) {
        names.append(QString(QLatin1Char(character)));
        names.append(text("a") + QLatin1Char(character) + text("b"));
    }
    return names;
}

// Names that the database gives back in another form.
QStringList changedByStorage()
{
    return {text("a") + QChar(0xd800), text("b") + QChar(0xfffe)};
}

QStringList awkwardNames()
{
    QStringList names =
        text("'; DROP TABLE altri; --|a'b|''|\"a\"|`a`|[a]|a]b|a,b|a;b|a--|a -- "
             "b|/*|a/*b*/c|a.b|main.x|"
             "altri.Nome|x AS SELECT 1|x(a)|a)b|%|%s|%n%s%d|100%|a%b|\\|a\\b|\\n|a/b|/|..|../x|"
             "../../etc/passwd|~|$HOME|$(id)|`id`|&|&amp;|&x|a & b|<b>|<img src='pipe'>|<a "
             "href='x'>y</a>|"
             "#|##|###|#x|a#b|a###b|->|a->b|a->b->c|----|---|-|- "
             "-|_|__|___|_x|x_|$|$a|a$|0|1|42|-1|1e9|"
             "1a|a1|0x10|nan|inf|true|NULL|null|Id|ID|id|UserPath|userpath|rowid|oid|_rowid_|"
             "sqlite_x|"
             "SQLITE_master|sqlite_master|settings|Filters|SUBTABLESCONFIGS|altri|ALTRI|Altri|"
             "HIDDENTABLE_x|HIDDENTABLE_|hiddentable_x|_XSBTX_|a_XSBTUSRX_b|_XFLTRX_|_XDTX_|a_"
             "XMLTYX_2|"
             "_xmltyx_|XDTX|X|N|R|FORMAT_|FORMAT|STRINGFORMAT_|stringformat_x|linkformat_|INTEGER|"
             "REAL|"
             "Realtà|integer|DATEFORMAT|Xaltri_XDTX_RSTRINGFORMAT_Nome| |  |   a| a |a |a  "
             "b|città|perché|"
             "ß|İstanbul|ı|Ω|漢字|かな|한글|שלום|ال|ไทย|e\u0301|\u00e9|📚|"
             "🏳\u200d🌈|"
             "a\u200bb|"
             "a\u00a0b|"
             "a\u202eb|\u2028|\ufeffa|\u3000|＃|＇|Ａ|½|²|№|€|a\tb|a\nb|a\r\nb|con|nul.txt|a.exe|."
             "a|a.|"
             "-rf|--help|libri.db|books.db|lockDb.dat")
            .split(QLatin1Char('|'));
    names.append(text("|"));
    names.append(QString(QChar(0xd800)));
    names.append(text("a") + QChar(0xdc00));
    names.append(QString(QChar(0xffff)));
    names.append(changedByStorage());
    names.append(QString());
    for (const int length : {100, 101, 200, 201, 255, 300, 5000}) {
        names.append(QString(length, QLatin1Char('l')));
    }
    names.append(text("è").repeated(50));
    names.append(text("è").repeated(51));
    names.append(text("📚").repeated(50));
    names.append(text("📚").repeated(51));
    return names;
}

// Everything in the database of the window, one text an object and one a record.
using Contents = QMap<QString, QStringList>;
Contents contents()
{
    Contents all;
    all.insert(QString(), Sql::lines(text("SELECT type,name,sql FROM sqlite_master ORDER BY 1,2")));
    QSqlQuery names(text("SELECT name FROM sqlite_master WHERE type='table'"));
    while (names.next()) {
        QString quoted = names.value(0).toString();
        quoted.replace(QLatin1Char('"'), text("\"\""));
        all.insert(names.value(0).toString(),
                   Sql::lines(text("SELECT * FROM \"") + quoted + text("\" ORDER BY 1")));
    }
    return all;
}

// What differs between two states, told in short; empty when nothing does. Records that were
// only added to these tables are no difference, nor is a table of the name `made`.
QString difference(const Contents &before, const Contents &after, const QStringList &growing = {},
                   const QString &made = QString())
{
    QStringList told;
    for (auto it = before.begin(); it != before.end(); ++it) {
        QStringList left = after.value(it.key());
        if (!after.contains(it.key())) {
            told.append(text("lost ") + it.key());
            continue;
        }
        QStringList missing;
        for (const QString &line : it.value()) {
            if (!left.removeOne(line)) {
                missing.append(line);
            }
        }
        const bool grows = growing.contains(it.key()) || (it.key().isEmpty() && !made.isNull());
        if (!missing.isEmpty() || (!grows && !left.isEmpty())) {
            told.append(it.key() + text(": -") + missing.join(QLatin1Char('/')) + text(" +") +
                        left.join(QLatin1Char('/')));
        }
    }
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (!before.contains(it.key()) && (made.isNull() || it.key() != made)) {
            told.append(text("new ") + it.key());
        }
    }
    return told.join(text("; ")).left(300);
}

// What there is beside the tables that the names are tried on.
const QStringList Others = {
    text("CREATE TABLE altri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text,"
         "NLINKFORMAT_libri text)"),
    text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
         "NSUBTABLEFORMAT_Prestiti text,NLONGSTRINGFORMAT_UserPath text,NPDFFORMAT_Scheda text)"),
    text("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
         "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
         "NSTRINGFORMAT_subConfigFieldType text)"),
    text("INSERT INTO subtablesconfigs VALUES (1,'libri_Prestiti',"
         "'RSTRINGFORMAT_Amico','text')"),
    text("INSERT INTO altri VALUES (1,'Zeno','libri'),(2,'l''altro','libri')"),
    text("INSERT INTO libri VALUES (1,'Uno','Prestiti','TABLES_DOC/libri_Uno','')"),
};

// A window on that database, which answers boxes with "Ok" or "Yes" and counts them.
struct Place {
    Place()
        : program(Others)
    {
        Window::action(*program.window, "actionShow_Hidden_Tables")->trigger();
        EntryPage::forgetOldPages();
    }
    Tavenor &window() const { return *program.window; }

    EntryPage::Started program;
};

// What became of a name at a place. Some cannot be tried everywhere.
enum class Fate { Untried, Refused, Taken };

// What went wrong with a name at a place; nothing when all is well.
using Attempt = std::function<QString(const Place &, const QString &name, Fate *fate)>;

// Presses "Ok" on the designer page and tells what came of it: boxes that were not one, changes
// by a refused name.
QString acceptPage(const Place &place, const Contents &before, Fate *fate)
{
    ModalResponder responder;
    responder.answerOthers(QMessageBox::Ok);
    DesignerPage::accept(place.window());
    const int boxes = responder.boxes().size();
    *fate = DesignerPage::isOpen(place.window()) ? Fate::Refused : Fate::Taken;
    if (*fate == Fate::Taken) {
        return boxes == 0 ? QString() : text("%1 boxes although it was taken").arg(boxes);
    }
    if (boxes != 1) {
        return text("%1 boxes").arg(boxes);
    }
    const QString changed = difference(before, contents());
    DesignerPage::cancel(place.window());
    return changed;
}

// The names of the columns of a table.
QStringList columnsOf(const QString &table)
{
    return Sql::lines(text("SELECT name FROM pragma_table_info('%1')").arg(table));
}

// Removes the current table by the command; what then differs from before it was made.
QString removeAgain(const Place &place, const Contents &before)
{
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(place.window(), "actionRemove_Table")->trigger();
    const QString left = difference(before, contents());
    return left.isEmpty() ? left : text("after the removal: ") + left;
}

// Adds a record whose title is "x".
QString addRecord(const Place &place)
{
    EntryPage::openNew(place.window());
    if (EntryPage::editors(place.window()).isEmpty()) {
        return text("no record can be entered");
    }
    EntryPage::pasteInto(EntryPage::editors(place.window()).first()->editor(), text("x"));
    EntryPage::save(place.window());
    if (!EntryPage::isOpen(place.window())) {
        return QString();
    }
    Window::click(place.window(), "pbCancelEdit");
    return text("no record can be added");
}

QString asTableName(const Place &place, const QString &name, Fate *fate)
{
    const Contents before = contents();
    if (before.contains(name)) {
        return QString(); // adds fields to that table
    }
    DesignerPage::openNew(place.window());
    DesignerPage::typeName(place.window(), name);
    const QString typed = Window::get<QLineEdit>(place.window(), "leTableName")->text();
    DesignerPage::add(place.window(), text("STRING"), text("Nome"));
    const QString fault = acceptPage(place, before, fate);
    if (!fault.isEmpty() || *fate == Fate::Refused) {
        return fault;
    }
    QString stored = SqlNames::withoutBlanks(typed);
    stored.replace(QLatin1Char('#'), text("HIDDENTABLE_"));
    const QString changed = difference(before, contents(), {text("settings")}, stored);
    if (!changed.isEmpty()) {
        return changed;
    }
    if (columnsOf(stored).size() != 3) {
        return text("columns: ") + columnsOf(stored).join(QLatin1Char(','));
    }
    place.window().changeTable(stored);
    const QString added = addRecord(place);
    return added.isEmpty() ? removeAgain(place, before) : added;
}

const QStringList &formats()
{
    static const QStringList all =
        text("STRING MAIL URL INTEGER REAL MONEY DATE BOOL IMAGE PDF SUBTABLE")
            .split(QLatin1Char(' '));
    return all;
}

// As the label of a field of this format, in a table of its own.
QString asLabel(const Place &place, const QString &format, const QString &name, Fate *fate)
{
    const Contents before = contents();
    DesignerPage::openNew(place.window());
    DesignerPage::typeName(place.window(), text("prova"));
    DesignerPage::add(place.window(), text("STRING"), text("Nome"), true);
    const newTableElement &row = DesignerPage::add(place.window(), format, name);
    const QString typed = DesignerPage::label(row)->text();
    if (format == QLatin1String("SUBTABLE")) {
        DesignerPage::fill(*row.subRows().first(), text("STRING"), text("Cosa"));
    }
    const QString fault = acceptPage(place, before, fate);
    if (!fault.isEmpty() || *fate == Fate::Refused) {
        return fault;
    }
    const QString changed =
        difference(before, contents(), {text("settings"), text("subtablesconfigs")}, text("prova"));
    const QString column =
        QLatin1Char('N') + format + text("FORMAT_") + SqlNames::withoutBlanks(typed);
    if (!changed.isEmpty() ||
        !columnsOf(text("prova")).contains(QLatin1Char('\'') + column + QLatin1Char('\''))) {
        return changed + text(" columns: ") + columnsOf(text("prova")).join(QLatin1Char(','));
    }
    place.window().changeTable(text("prova"));
    const QString added = addRecord(place);
    return added.isEmpty() ? removeAgain(place, before) : added;
}

QString asLabels(const Place &place, const QString &name, Fate *fate)
{
    static int turn = 0;
    const int tried = Campaign::isFull() ? formats().size() : 1;
    for (int i = 0; i < tried; ++i) {
        Fate once = Fate::Untried;
        const QString format = formats().at(turn++ % formats().size());
        const QString fault = asLabel(place, format, name, &once);
        *fate = qMax(*fate, once);
        if (!fault.isEmpty()) {
            return format + text(": ") + fault;
        }
    }
    return QString();
}

QString asFilterName(const Place &place, const QString &name, Fate *fate)
{
    Tavenor &window = place.window();
    Window::pressTable(window, text("altri"));
    if (!FilterPage::savedFilters(window).contains(text("Altro"))) {
        FilterPage::open(window);
        FilterPage::enter(window, text("Nome"), text("Zeno"));
        FilterPage::save(window, text("Altro"));
    }
    FilterPage::open(window);
    FilterPage::enter(window, text("Nome"), text("l'altro"));
    const Contents before = contents();
    ModalResponder responder;
    responder.answerOthers(QMessageBox::Ok);
    FilterPage::save(window, name);
    const int boxes = responder.boxes().size();
    const QString typed = Window::get<QLineEdit>(FilterPage::prompt(), "leName")->text();
    const Contents after = contents();
    const int added = after.value(text("filters")).size() - before.value(text("filters")).size();
    *fate = added > 0 ? Fate::Taken : Fate::Refused;
    if (added == 0) {
        const bool silent = typed.trimmed().isEmpty();
        return boxes == (silent ? 0 : 1) ? difference(before, after) : text("%1 boxes").arg(boxes);
    }
    const QString changed = difference(before, after, {text("filters")});
    if (!changed.isEmpty() || boxes != 0 || added != 3) {
        return changed + text(" %1 boxes, %2 rows").arg(boxes).arg(added);
    }
    const QStringList saved = FilterPage::savedFilters(window);
    FilterPage::load(window, QString(saved.last()).remove(0, 1).chopped(1));
    if (!Window::lines(window).contains(text("l'altro"))) {
        return text("loaded, it lists ") + Window::lines(window).join(QLatin1Char(','));
    }
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionDeleteFilter")->trigger();
    return difference(before, contents());
}

// The tables that are there after something and were not before.
QStringList newTables(const Contents &before, const Contents &after)
{
    QStringList names;
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (!before.contains(it.key())) {
            names.append(it.key());
        }
    }
    return names;
}

QString asTitle(const Place &place, const QString &name, Fate *fate)
{
    Tavenor &window = place.window();
    Window::pressTable(window, text("libri"));
    EntryPage::openNew(window);
    EntryPage::enter(window, text("Titolo"), name);
    const QString typed = EntryPage::shown(window, text("Titolo"));
    const Contents before = contents();
    ModalResponder responder;
    responder.answerOthers(QMessageBox::Ok);
    EntryPage::save(window);
    *fate = EntryPage::isOpen(window) ? Fate::Refused : Fate::Taken;
    if (*fate == Fate::Refused) {
        Window::click(window, "pbCancelEdit");
        const bool isOne = responder.boxes().size() == 1;
        return isOne ? difference(before, contents()) : text("not one box");
    }
    const Contents saved = contents();
    const QString changed = difference(before, saved, {text("libri")});
    const int more = saved.value(text("libri")).size() - before.value(text("libri")).size();
    if (!changed.isEmpty() || more != 1 || !responder.boxes().isEmpty()) {
        return changed + text(" %1 more records").arg(more);
    }
    Window::click(*Window::field(window, text("Prestiti")), "pbSubTable");
    const Contents opened = contents();
    const QStringList made = newTables(saved, opened);
    if (made.size() > 1 || responder.boxes().size() > (made.isEmpty() ? 1 : 0)) {
        return text("made: ") + made.join(QLatin1Char(','));
    }
    const QString fault = difference(saved, opened, {text("settings")}, made.value(0));
    // Titles that differ in characters that no name can hold share a table.
    return fault.isEmpty() && !made.isEmpty() ? addRecord(place) : fault;
}

// Files, by their path under the folder of the test.
QStringList filesIn(const Workspace &here)
{
    QStringList names;
    QDirIterator it(here.path(), QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        names.append(QDir(here.path()).relativeFilePath(it.next()));
    }
    names.sort();
    return names;
}

bool canNameFile(const QString &name)
{
    const QByteArray bytes = name.toUtf8();
    return !name.isEmpty() && name.isValidUtf16() && bytes.size() < 240 &&
           !name.contains(QLatin1Char('/')) && name != QLatin1String(".") &&
           name != QLatin1String("..");
}

// Attaches a file of this name to a new record: it must come out under its name and unchanged.
QString asAttachment(const Place &place, const QString &name, Fate *fate)
{
    if (!canNameFile(name)) {
        return QString();
    }
    Tavenor &window = place.window();
    const Workspace &here = place.program.here;
    const QString file = name + text(".pdf");
    here.write(text("src/") + file, "%PDF " + name.toUtf8());
    Window::pressTable(window, text("libri"));
    static int number = 0;
    const QString title = text("Libro %1").arg(++number);
    EntryPage::openNew(window);
    EntryPage::enter(window, text("Titolo"), title);
    const QStringList before = filesIn(here);
    auto *const data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(here.path(text("src/") + file))});
    QGuiApplication::clipboard()->setMimeData(data);
    QTest::keyClick(EntryPage::field(window, text("Scheda")).editor(), Qt::Key_V,
                    Qt::ControlModifier);
    EntryPage::save(window);
    if (EntryPage::isOpen(window)) {
        return text("not saved");
    }
    QStringList after = filesIn(here);
    const QString folder = text("TABLES_DOC/libri_Libro_%1/").arg(number);
    const QString stored =
        here.value(place.program.database,
                   text("SELECT NPDFFORMAT_Scheda FROM libri ORDER BY rowid DESC LIMIT 1"))
            .toString();
    const QString kept = folder + Values::asStored(file);
    const bool isKept = stored == kept;
    *fate = isKept ? Fate::Taken : Fate::Refused;
    const bool isCopied = here.read(kept) == "%PDF " + name.toUtf8();
    after.removeOne(kept);
    if (after != before) {
        return text("other files: ") + after.join(QLatin1Char(','));
    }
    return isKept && isCopied ? QString() : text("stored as ") + stored;
}

// Exports to a file of this name: it is made, and holds the records.
QString asExport(const Place &place, const QString &name, Fate *fate)
{
    // The file dialog itself takes a quote for the end of a name.
    if (!canNameFile(name) || name.contains(QLatin1Char('"'))) {
        return QString();
    }
    Tavenor &window = place.window();
    const Workspace &here = place.program.here;
    Window::pressTable(window, text("altri"));
    QDir(here.path()).mkdir(text("out"));
    const QStringList before = filesIn(here);
    ModalResponder responder;
    responder.chooseFile(here.path(text("out/") + name));
    Window::action(window, "actionExport")->trigger();
    QStringList after = filesIn(here);
    const QString file = text("out/") + name;
    *fate = after.removeOne(file) ? Fate::Taken : Fate::Refused;
    const bool isWhole = here.read(file).contains("Zeno");
    QFile::remove(here.path(file));
    return after == before && isWhole ? QString() : text("files: ") + after.join(QLatin1Char(','));
}

} // namespace

Q_DECLARE_METATYPE(Attempt)

class FaultsNames : public QObject
{
    Q_OBJECT

private slots:
    void keywordsAreAll();
    void names_data();
    void names();
    void cleanupTestCase();

private:
    QMap<QString, int> taken; // by place
};

void FaultsNames::keywordsAreAll()
{
    QCOMPARE(sqlKeywords().size(), 147);
    QStringList all = sqlKeywords();
    QCOMPARE(all.removeDuplicates(), 0);
    QVERIFY(awkwardNames().size() >= 100);
    QCOMPARE(asciiNames().size(), 254);
}

void FaultsNames::names_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<Attempt>("attempt");
    QTest::addColumn<QStringList>("names");
    const QVector<QPair<QString, Attempt>> places = {
        {text("table"), asTableName},          {text("label"), asLabels},
        {text("filter"), asFilterName},        {text("title with a detail table"), asTitle},
        {text("attached file"), asAttachment}, {text("exported file"), asExport}};
    QStringList all = awkwardNames() + sqlKeywords() + asciiNames();
    std::mt19937 random(Campaign::start());
    std::shuffle(all.begin(), all.end(), random);
    int first = 0;
    for (const auto &place : places) {
        const int count = Campaign::cases(FewNames, all.size());
        for (int done = 0; done < count; done += NamesPerWindow, ++first) {
            const QStringList names =
                Campaign::isFull() ? all.mid(done, NamesPerWindow)
                                   : all.mid(first * FewNames, FewNames) + changedByStorage();
            QTest::newRow(qPrintable(text("%1 %2").arg(place.first).arg(done)))
                << place.first << place.second << names;
        }
    }
}

void FaultsNames::names()
{
    QFETCH(const QString, place);
    QFETCH(const Attempt, attempt);
    QFETCH(const QStringList, names);
    Campaign::Row row(text("awkward names, as ") + place);
    const UrlCatcher catcher;
    const Place here;
    QStringList faults;
    for (const QString &name : names) {
        Fate fate = Fate::Untried;
        const QString fault = attempt(here, name, &fate);
        EntryPage::forgetOldPages();
        row.ran(fate == Fate::Untried ? 0 : 1);
        taken[place] += fate == Fate::Taken ? 1 : 0;
        if (!fault.isEmpty()) {
            faults.append(text("'%1': %2").arg(name.left(60), fault));
        }
    }
    row.remark(text("%1 taken").arg(taken.value(place)));
    row.failed(faults.size());
    QCOMPARE(faults.join(QLatin1Char('\n')), QString());
    QVERIFY(catcher.urls().isEmpty());
}

void FaultsNames::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(FaultsNames)
#include "faults_names.moc"
