// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people do in the window while the disk fails, and the collection that they do it to.
#include "tests/faults/tools/scenarios.h"

#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"
#include "widgets/ImageBox.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace Scenarios
{

namespace
{

const QString Database = QStringLiteral("books.db");
const QString OtherDatabase = QStringLiteral("altri/altri.db");
const QString Lock = QStringLiteral("lockDb.dat");
const QString Copies = QStringLiteral("copia/");
const QString Journal = QStringLiteral("-journal");
const QChar FolderEnd = QLatin1Char('/');
const QString PictureFile = QStringLiteral("da/foto.png");
const QString PdfFile = QStringLiteral("da/scheda.pdf");
const QString ImportFile = QStringLiteral("da/nuovi.xmf");
const QString Titolo = QStringLiteral("Titolo");
const QString Note = QStringLiteral("Note");
const QString Anno = QStringLiteral("Anno");
const QString Foto = QStringLiteral("Foto");
const QString Scheda = QStringLiteral("Scheda");
const QString NewTitle = QStringLiteral("Nuovo");
const QString FilterName = QStringLiteral("Scaduti");

constexpr int Books = 30;
constexpr int Authors = 20;
constexpr int ImportedRecords = 2500;
constexpr int BatchSize = 1000;
constexpr int PictureSide = 90;

// A text that takes several pages of the file, so that a save is many writes.
QString longText(char letter, int usualLength = 9000)
{
    const int length = usualLength * Campaign::cases(1, 3);
    QString text(length, QLatin1Char(letter));
    // In lines, as people write: laying out one endless word takes long.
    for (int i = 80; i < length; i += 80) {
        text[i] = QLatin1Char('\n');
    }
    return text;
}

QByteArray noisyPicture()
{
    QImage picture(PictureSide, PictureSide, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < PictureSide; ++y) {
        for (int x = 0; x < PictureSide; ++x) {
            picture.setPixel(x, y, random.generate() | 0xff000000U);
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

QByteArray importedFile()
{
    QByteArray bytes = "autori\n";
    for (int id = 1001; id <= 1000 + ImportedRecords; ++id) {
        const QByteArray number = QByteArray::number(id);
        bytes += "RINTEGERFORMAT_Id###" + number + "###RSTRINGFORMAT_Nome###Autore " + number +
                 "###NLONGSTRINGFORMAT_Vita###" + QByteArray(60, 'v') + "###\n";
    }
    return bytes;
}

// Attaches a picture through its dialog, as a person does.
void attachPicture(Stage &stage, const Tavenor &window)
{
    EntryPage::part<QAbstractButton>(window, Foto, "pbViewImage")->click();
    const auto *const box = EntryPage::field(window, Foto).findChild<ImageBox *>();
    stage.answers().chooseFile(stage.workspace().path(PictureFile));
    Window::click(*box, "pbAddReplace");
    Window::get<QDialogButtonBox>(*box, "buttonBox")->button(QDialogButtonBox::Ok)->click();
}

void attachPdf(Stage &stage, const Tavenor &window)
{
    stage.answers().chooseFile(stage.workspace().path(PdfFile));
    Window::click(EntryPage::field(window, Scheda), "pbViewPdf");
}

bool isMissing(const Tavenor &window, const QString &label)
{
    return Window::offers(EntryPage::field(window, label), "lbMissing");
}

// What is not there although it was chosen is chosen again.
void attachWhatIsMissing(Stage &stage, const Tavenor &window)
{
    if (isMissing(window, Foto)) {
        attachPicture(stage, window);
    }
    if (isMissing(window, Scheda)) {
        attachPdf(stage, window);
    }
}

void saveRecord(Stage &stage)
{
    Tavenor window;
    EntryPage::openNew(window);
    EntryPage::enter(window, Titolo, NewTitle);
    EntryPage::enter(window, Note, longText('n'));
    EntryPage::enter(window, Anno, QStringLiteral("1951"));
    stage.begin();
    attachPicture(stage, window);
    attachPdf(stage, window);
    EntryPage::save(window);
    stage.end();
    if (!EntryPage::isOpen(window)) {
        // It is saved; its files are looked at again.
        EntryPage::openEdit(window);
    }
    if (EntryPage::shown(window, Titolo) != NewTitle ||
        EntryPage::shown(window, Note) != longText('n')) {
        stage.say(lostTyping());
    }
    attachWhatIsMissing(stage, window);
    EntryPage::save(window);
}

void changeRecord(Stage &stage)
{
    Tavenor window;
    EntryPage::openEdit(window);
    const QString title = QStringLiteral("Argonauti");
    EntryPage::enter(window, Titolo, title);
    EntryPage::enter(window, Note, longText('c'));
    EntryPage::enter(window, Anno, QStringLiteral("1898"));
    stage.begin();
    EntryPage::save(window);
    stage.end();
    if (!EntryPage::isOpen(window)) {
        EntryPage::openEdit(window);
    }
    if (EntryPage::shown(window, Titolo) != title ||
        EntryPage::shown(window, Note) != longText('c')) {
        stage.say(lostTyping());
    }
    EntryPage::save(window);
}

void deleteRecord(Stage &stage)
{
    Tavenor window;
    const QString first = Window::lines(window).first();
    stage.begin();
    Window::click(window, "pbDeleteUser");
    stage.end();
    // A list that could not be read again is empty.
    Window::pressTable(window, QStringLiteral("libri"));
    if (Window::lines(window).first() == first) {
        Window::click(window, "pbDeleteUser");
    }
}

// Labels of fields; long ones make the schema large.
QStringList labels(const char *start, int count)
{
    QStringList labels;
    for (int i = 1; i <= count; ++i) {
        const QString end(Campaign::cases(2, 180), QLatin1Char('x'));
        labels.append(QStringLiteral("%1_%2_%3").arg(QLatin1String(start)).arg(i).arg(end));
    }
    return labels;
}

// Adds rows for some texts and for a sub-table.
void addRows(const Tavenor &window)
{
    for (const QString &label : labels("Testo", Campaign::cases(1, 12))) {
        DesignerPage::add(window, QStringLiteral("STRING"), label);
    }
    const QStringList columns =
        labels("Chi", Campaign::cases(3, 15))
            .replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("STRING "));
    DesignerPage::addSubTable(window, QStringLiteral("Prestiti"), columns);
}

void createTable(Stage &stage)
{
    Tavenor window;
    DesignerPage::openNew(window);
    DesignerPage::typeName(window, QStringLiteral("dischi"));
    DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Nome"), true);
    DesignerPage::add(window, QStringLiteral("IMAGE"), QStringLiteral("Copertina"));
    addRows(window);
    const auto chooseIcon = [&stage, &window] {
        stage.answers().chooseFile(stage.workspace().path(PictureFile));
        Window::click(window, "pbIconImage");
    };
    stage.begin();
    chooseIcon();
    DesignerPage::accept(window);
    stage.end();
    if (DesignerPage::isOpen(window)) {
        chooseIcon();
        DesignerPage::accept(window);
    } else {
        Window::pressTable(window, QStringLiteral("dischi"));
        stage.answers().chooseFile(stage.workspace().path(PictureFile));
        window.changeTableIcon();
    }
}

void addFields(Stage &stage)
{
    Tavenor window;
    const auto add = [&window] {
        DesignerPage::openAdd(window);
        DesignerPage::add(window, QStringLiteral("STRING"), QStringLiteral("Editore"));
        DesignerPage::add(window, QStringLiteral("MONEY"), QStringLiteral("Prezzo"));
        addRows(window);
    };
    add();
    stage.begin();
    DesignerPage::accept(window);
    stage.end();
    EntryPage::openNew(window);
    const bool isDone = EntryPage::labels(window).contains(QStringLiteral("Editore"));
    Window::click(window, "pbCancelEdit");
    if (!isDone) {
        add();
        DesignerPage::accept(window);
    }
}

void saveFilter(Stage &stage)
{
    Tavenor window;
    const auto save = [&window] {
        FilterPage::open(window);
        FilterPage::enter(window, Titolo, QString(longText('t')).remove(QLatin1Char('\n')));
        FilterPage::enter(window, Note, longText('q'));
        FilterPage::press(window, Titolo, "pbEqual");
        FilterPage::press(window, Note, "pbMajor");
        FilterPage::save(window, FilterName);
    };
    stage.begin();
    save();
    stage.end();
    if (FilterPage::savedFilters(window).filter(FilterName).isEmpty()) {
        save();
    }
}

void importRecords(Stage &stage)
{
    Tavenor window;
    stage.begin();
    stage.answers().chooseFile(stage.workspace().path(ImportFile));
    window.importFromFile();
    stage.end();
    // What is there already is left out.
    stage.answers().chooseFile(stage.workspace().path(ImportFile));
    window.importFromFile();
}

// A command that does no harm when it is given a second time.
void twice(Stage &stage, void (Tavenor::*command)())
{
    Tavenor window;
    stage.begin();
    (window.*command)();
    stage.end();
    (window.*command)();
}

void clearTable(Stage &stage)
{
    twice(stage, &Tavenor::clearTable);
}

void clearAllTables(Stage &stage)
{
    twice(stage, &Tavenor::clearAllTables);
}

void removeTable(Stage &stage)
{
    Tavenor window;
    stage.begin();
    window.removeTable();
    stage.end();
    if (Window::tables(window).contains(QStringLiteral("libri"))) {
        Window::pressTable(window, QStringLiteral("libri"));
        window.removeTable();
    }
}

void removeAllTables(Stage &stage)
{
    twice(stage, &Tavenor::deleteAll);
}

void exportAll(Tavenor &window, Stage &stage)
{
    window.autoExportAll();
    window.autoExportAllStructures();
    stage.answers().chooseFile(stage.workspace().path(QStringLiteral("Exports/libri.txt")));
    window.exportToFileHumanReading();
}

void exportEverything(Stage &stage)
{
    Tavenor window;
    stage.begin();
    exportAll(window, stage);
    stage.end();
    exportAll(window, stage);
}

void changeIcon(Stage &stage)
{
    Tavenor window;
    stage.begin();
    stage.answers().chooseFile(stage.workspace().path(PictureFile));
    window.changeTableIcon();
    stage.end();
    stage.answers().chooseFile(stage.workspace().path(PictureFile));
    window.changeTableIcon();
}

void openAnother(Stage &stage)
{
    Tavenor window;
    stage.begin();
    stage.answers().chooseFile(stage.workspace().path(OtherDatabase));
    window.openDb();
    stage.end();
    stage.answers().chooseFile(stage.workspace().path(OtherDatabase));
    window.openDb();
}

void startFirst(Stage &stage)
{
    stage.begin();
    {
        const Tavenor window;
    }
    stage.end();
    // It may have stayed where it could not be removed.
    QFile::remove(stage.workspace().path(Lock));
    const Tavenor window;
}

QStringList contents(const QString &path)
{
    const QString connection = QStringLiteral("contents");
    QStringList lines;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(path);
        if (!database.open()) {
            return {QStringLiteral("cannot be opened")};
        }
        const auto read = [&database, &lines](const QString &statement) {
            QSqlQuery query(database);
            query.setForwardOnly(true);
            if (!query.exec(statement)) {
                lines.append(query.lastError().text());
            }
            QStringList first;
            while (query.next()) {
                first.append(query.value(0).toString());
            }
            return first;
        };
        lines = read(QStringLiteral("PRAGMA integrity_check"));
        const QStringList tables =
            read(QStringLiteral("SELECT name FROM sqlite_master ORDER BY name"));
        for (const QString &table : tables) {
            lines.append(table);
            QStringList values;
            for (const QString &column :
                 read(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table))) {
                values.append(QStringLiteral("typeof(%1)||':'||quote(%1)").arg(column));
            }
            lines.append(read(QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid")
                                  .arg(values.join(QLatin1String("||'|'||")), table)));
        }
        database.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return lines;
}

// True when `now` is `after` with only the first whole batches of what an import adds.
bool holdsWholeBatches(const QStringList &now, const QStringList &before, const QStringList &after)
{
    const int added = now.size() - before.size();
    if (added < 0 || added % BatchSize != 0 || after.size() - before.size() != ImportedRecords) {
        return false;
    }
    int start = 0;
    while (start < before.size() && before.at(start) == after.at(start)) {
        ++start;
    }
    const int cutFrom = start + added;
    QStringList expected = after.mid(0, cutFrom);
    expected += after.mid(start + ImportedRecords);
    return now == expected;
}

// Names that the toolkit gives to what is not complete yet.
bool isUnfinished(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("\\.[A-Za-z]{6}$"));
    return pattern.match(name).hasMatch();
}

} // namespace

Stage::Stage(const Workspace &here, const Moment &begin, const Moment &end)
    : here(here)
    , beginning(begin)
    , ending(end)
{
}

QString lostTyping()
{
    return QStringLiteral("what was typed is gone");
}

const QVector<Scenario> &all()
{
    static const QVector<Scenario> scenarios = {
        {"record saved with attachments", saveRecord},
        {"record changed", changeRecord},
        {"record deleted", deleteRecord},
        {"table created", createTable},
        {"fields added", addFields},
        {"filter saved", saveFilter},
        {"file imported", importRecords},
        {"table cleared", clearTable},
        {"all tables cleared", clearAllTables},
        {"table removed", removeTable},
        {"all tables removed", removeAllTables},
        {"everything exported", exportEverything},
        {"icon changed", changeIcon},
        {"other database opened", openAnother},
        // One that the program has never opened.
        {"database started first", startFirst, "altri/altri.db"},
    };
    return scenarios;
}

void makeCollection(const Workspace &here, int pageSize)
{
    const QString pages = QStringLiteral("PRAGMA page_size = %1").arg(pageSize);
    QStringList statements = {
        pages,
        QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_Note text,"
                       "NINTEGERFORMAT_Anno text,NLONGSTRINGFORMAT_UserPath text,"
                       "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text)"),
        QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Nome text,NLONGSTRINGFORMAT_Vita text)"),
        QStringLiteral(
            "INSERT INTO libri VALUES (3,'Argo','%1',NULL,'TABLES_DOC/libri_Argo','','')")
            .arg(longText('a')),
    };
    for (int id = 10; id < 10 + Books; ++id) {
        statements.append(QStringLiteral("INSERT INTO libri VALUES (%1,'Libro %1','%2','1923',"
                                         "'TABLES_DOC/libri_Libro_%1','','')")
                              .arg(id)
                              .arg(longText('b', 10 * id)));
    }
    for (int id = 1; id <= Authors; ++id) {
        statements.append(QStringLiteral("INSERT INTO autori VALUES (%1,'Autore %1','%2')")
                              .arg(id)
                              .arg(longText('v', 10 * id)));
    }
    here.sql(Database, statements);
    here.write(OtherDatabase, QByteArray());
    here.sql(OtherDatabase,
             {pages,
              QStringLiteral("CREATE TABLE carte (RINTEGERFORMAT_Id integer primary key,"
                             "RSTRINGFORMAT_Nome text)"),
              QStringLiteral("CREATE TABLE luoghi (RINTEGERFORMAT_Id integer primary key,"
                             "RSTRINGFORMAT_Nome text)"),
              QStringLiteral("INSERT INTO carte VALUES (1,'Mappa')")});
    here.write(PictureFile, noisyPicture());
    here.write(PdfFile, "%PDF-1.4\n" + QByteArray(40000, 'p'));
    here.write(ImportFile, importedFile());
    for (const char *const table : {"libri", "autori", "settings"}) {
        here.write(QStringLiteral("ExportManagerFiles/%1.xmf").arg(QLatin1String(table)),
                   "vecchio");
    }
    here.write(QStringLiteral("Exports/libri.txt"), "vecchio");
    here.remember(Database);
    // Makes the program's own tables and folders.
    const Tavenor window;
}

Files filesOf(const Workspace &here)
{
    Files files;
    QDirIterator names(here.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (names.hasNext()) {
        const QString name = QDir(here.path()).relativeFilePath(names.next());
        if (names.fileInfo().isDir()) {
            files.insert(name + FolderEnd, QByteArray());
        } else {
            files.insert(name, here.read(name));
        }
    }
    return files;
}

void restore(const Workspace &here, const Files &files)
{
    const QStringList names = filesOf(here).keys();
    // From the end, so that a folder comes after what is in it.
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (files.contains(*name)) {
            continue;
        }
        if (name->endsWith(FolderEnd)) {
            QDir().rmdir(here.path(*name));
        } else {
            QFile::remove(here.path(*name));
        }
    }
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (file.key().endsWith(FolderEnd)) {
            QDir().mkpath(here.path(file.key()));
        } else if (!here.exists(file.key()) || here.read(file.key()) != *file) {
            here.write(file.key(), *file);
        }
    }
}

State stateOf(const Workspace &here)
{
    State state;
    const Files files = filesOf(here);
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (!file.key().endsWith(FolderEnd) && file.key() != Lock) {
            state.files.insert(file.key(), *file);
        }
    }
    for (const QString &name : {Database, OtherDatabase}) {
        const QString copy = Copies + QString(name).replace(QLatin1Char('/'), QLatin1Char('_'));
        here.write(copy, state.files.take(name));
        QFile::remove(here.path(copy + Journal));
        if (state.files.contains(name + Journal)) {
            here.write(copy + Journal, state.files.take(name + Journal));
        }
        state.databases.insert(name, contents(here.path(copy)));
    }
    QDir(here.path(Copies)).removeRecursively();
    return state;
}

QString faultOf(const State &now, const State &before, const State &after, bool isWhole)
{
    bool isDone = true;
    for (auto database = now.databases.begin(); database != now.databases.end(); ++database) {
        const QStringList &older = before.databases[database.key()];
        const QStringList &newer = after.databases[database.key()];
        if (database->value(0) != QLatin1String("ok")) {
            return database.key() + QLatin1String(": ") + database->value(0);
        }
        isDone = isDone && *database == newer;
        if (*database != older && *database != newer &&
            !holdsWholeBatches(*database, older, newer)) {
            return database.key() + QLatin1String(": neither old nor new");
        }
    }
    for (auto file = now.files.begin(); file != now.files.end(); ++file) {
        const bool isOld = before.files.contains(file.key()) && before.files[file.key()] == *file;
        const bool isNew = after.files.contains(file.key()) && after.files[file.key()] == *file;
        if (!isOld && !isNew && !isUnfinished(file.key())) {
            return file.key() + QLatin1String(": neither old nor new");
        }
    }
    for (auto file = before.files.begin(); file != before.files.end(); ++file) {
        if (!now.files.contains(file.key())) {
            return file.key() + QLatin1String(": lost");
        }
    }
    for (auto file = after.files.begin(); isWhole && isDone && file != after.files.end(); ++file) {
        const bool belongsToRecord = file.key().startsWith(QLatin1String("TABLES_DOC")) ||
                                     file.key().startsWith(QLatin1String("DB_DATA"));
        if (belongsToRecord && now.files.value(file.key()) != *file) {
            return file.key() + QLatin1String(": missing or half filled");
        }
    }
    return QString();
}

QStringList linesAfterStart(const Workspace &here, bool keepsLock)
{
    if (!keepsLock) {
        QFile::remove(here.path(Lock));
    }
    const Tavenor window;
    return Window::lines(window);
}

} // namespace Scenarios
