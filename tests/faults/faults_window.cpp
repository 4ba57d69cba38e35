// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The window under hands that know nothing: random clicks, keys and texts on every page, keys and
// closings in the middle of long operations, two copies on one file.
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/Monkey.h"
#include "tests/support/Sql.h"
#include "tests/support/UrlCatcher.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QSet>
#include <QStackedWidget>

#include <cstdio>
#include <functional>
#include <sys/stat.h>

namespace
{

const QString Database = QStringLiteral("casa/books.db");
const QString Lock = QStringLiteral("lockDb.dat");

// Names the folder of the copy that a second process of this test is.
constexpr const char *CopyFolder = "TAVENOR_MONKEY_FOLDER";

constexpr int FewSteps = 200;
// Records of the operations that are disturbed: at first, and where the machine is very fast.
constexpr int FewRecords = 4000;
constexpr int MostRecords = 512000;
constexpr int LifeLength = 30000; // of one life at full length, in milliseconds

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

// A library with a column of each format, links both ways, sub-tables and a hidden table.
QStringList library()
{
    QStringList statements = {
        text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
             "NLONGSTRINGFORMAT_Note text,NINTEGERFORMAT_Anno text,NREALFORMAT_Peso text,"
             "NMONEYFORMAT_Prezzo text,NDATEFORMAT_Data text,NBOOLFORMAT_Letto text,"
             "NMAILFORMAT_Posta text,NURLFORMAT_Sito text,NLONGSTRINGFORMAT_UserPath text,"
             "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text,NLINKFORMAT_autori text,"
             "NSUBTABLEFORMAT_Prestiti text,Xautori_XDTX_RSTRINGFORMAT_Nome Integer)"),
        text("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
             "RSTRINGFORMAT_Nome text,NLINKFORMAT_libri text,NDATEFORMAT_Nato text)"),
        text("CREATE TABLE HIDDENTABLE_Note (RINTEGERFORMAT_Id integer primary key,"
             "RSTRINGFORMAT_Testo text)"),
        text("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
             "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
             "NSTRINGFORMAT_subConfigFieldType text)"),
        text("INSERT INTO subtablesconfigs VALUES (1,'libri_Prestiti',"
             "'NSTRINGFORMAT_Amico','text')"),
        text("INSERT INTO autori VALUES (1,'Svevo','','19/12/1861'),(2,'D''Annunzio','','x')"),
    };
    for (int id = 1; id <= 12; ++id) {
        statements.append(
            text("INSERT INTO libri VALUES (%1,'Libro %1','riga',%1,'1.5','2.50','0%2/01/2020',"
                 "'TRUE','a@b.it','http://example.org/','TABLES_DOC/libri_Libro_%1',"
                 "'TABLES_DOC/foto.png','TABLES_DOC/a.pdf','','Prestiti',%3)")
                .arg(id)
                .arg(id % 9 + 1)
                .arg(id % 3));
    }
    return statements;
}

void makeFiles(const Workspace &here)
{
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    here.write(text("casa/TABLES_DOC/a.pdf"), "%PDF-1.4");
    picture.save(here.path(text("casa/TABLES_DOC/foto.png")));
    picture.save(here.path(text("altra.png")));
    here.write(text("b.pdf"), "%PDF-1.4");
    here.write(text("autori.xmf"), "autori\nRINTEGERFORMAT_Id###7###RSTRINGFORMAT_Nome###Eco###"
                                   "NLINKFORMAT_libri######NDATEFORMAT_Nato###05/01/1932###\n");
    here.write(text("rotto.xmf"), "autori\nRINTEGERFORMAT_Id###8###RSTRINGFORMAT_N");
    here.write(text("nuova.tsc"), "\nRSTRINGFORMAT_Nome###text\nNMONEYFORMAT_Costo###text\n");
    mkfifo(qPrintable(here.path(text("pipe"))), 0600);
}

// What file dialogs are answered with: files of every kind, and some that cannot be.
QStringList answers(const QString &folder)
{
    QStringList names =
        text("casa/books.db casa/seconda.db altra.png b.pdf autori.xmf rotto.xmf nuova.tsc "
             "fuori.xmf fuori.tsc fuori.txt pipe casa manca/x.xmf autori.xmf nuova.tsc altra.png")
            .split(QLatin1Char(' '));
    for (QString &name : names) {
        name.prepend(folder + QLatin1Char('/'));
    }
    return names;
}

// What a life reached.
struct Reached {
    QSet<int> pages;
    qint64 pageChanges = 0;
    qint64 writes = 0;  // steps that changed the database
    qint64 records = 0; // saved on the entry page
    qint64 tables = 0;  // made
    qint64 filters = 0; // applied
    qint64 programs = 0;
    qint64 locksLeft = 0;
    qint64 slowest = 0; // step, in milliseconds
    Monkey::Counts counts;

    void add(const Reached &other)
    {
        pages += other.pages;
        pageChanges += other.pageChanges;
        writes += other.writes;
        records += other.records;
        tables += other.tables;
        filters += other.filters;
        programs += other.programs;
        locksLeft += other.locksLeft;
        slowest = qMax(slowest, other.slowest);
        counts.steps += other.counts.steps;
        counts.boxes += other.counts.boxes;
        counts.fileDialogs += other.counts.fileDialogs;
        counts.menus += other.counts.menus;
        counts.actions += other.counts.actions;
        counts.disturbances += other.counts.disturbances;
    }
    QString told() const
    {
        return text("%1 steps, %2 pages visited in %3 changes, %4 writes, %5 records saved, %6 "
                    "tables made, %7 filters applied, %8 boxes, %9 file dialogs, ")
                   .arg(counts.steps)
                   .arg(pages.size())
                   .arg(pageChanges)
                   .arg(writes)
                   .arg(records)
                   .arg(tables)
                   .arg(filters)
                   .arg(counts.boxes)
                   .arg(counts.fileDialogs) +
               text("%1 menus, %2 commands, %3 disturbed moments, %4 programs, slowest step %5 ms")
                   .arg(counts.menus)
                   .arg(counts.actions)
                   .arg(counts.disturbances)
                   .arg(programs)
                   .arg(slowest);
    }
};

int firstNumber(const char *query)
{
    return Sql::lines(text(query)).value(0).toInt();
}

// Makes the library the database that the program opens next: it may have opened another.
void rememberLibrary()
{
    QFile file(text("lastDb.dat"));
    if (!file.open(QIODevice::WriteOnly) || file.write(QFile::encodeName(Database)) < 0) {
        qFatal("cannot write lastDb.dat");
    }
}

// A monkey at the program's window, with a look at what it reached after each step. Who closes
// the window starts the program again.
class Life
{
public:
    Life(quint32 start, const QString &folder)
        : monkey(start, answers(folder))
    {
        startProgram();
    }
    void step()
    {
        const int page = FilterPage::page(*window);
        const int changes = firstNumber("SELECT total_changes()");
        const int tables = firstNumber("SELECT count(*) FROM sqlite_master");
        QElapsedTimer clock;
        clock.start();
        monkey.step();
        reached.slowest = qMax(reached.slowest, clock.elapsed());
        const bool writes = firstNumber("SELECT total_changes()") > changes;
        const int now = FilterPage::page(*window);
        reached.writes += writes ? 1 : 0;
        reached.tables += firstNumber("SELECT count(*) FROM sqlite_master") > tables ? 1 : 0;
        reached.pages.insert(now);
        reached.pageChanges += now != page ? 1 : 0;
        reached.records += page == EntryPage && now == RecordsPage && writes ? 1 : 0;
        reached.filters += page == FiltersPage && now == RecordsPage ? 1 : 0;
        reached.counts = monkey.counts();
        if (!window->isVisible()) {
            startProgram();
        }
    }
    const Reached &result() const { return reached; }
    const QStringList &markupBoxes() const { return monkey.markupBoxes(); }

private:
    enum Page { RecordsPage = 2, EntryPage = 3, FiltersPage = 4 };

    void startProgram()
    {
        ++reached.programs;
        window.reset();
        // The lock of a copy that has ended would make this one read-only.
        reached.locksLeft += QFile::exists(Lock) ? 1 : 0;
        rememberLibrary();
        window = std::make_unique<Tavenor>();
        window->show();
        window->administratorModeEnabled(true);
        reached.pages.insert(FilterPage::page(*window));
    }

    Monkey monkey;
    Reached reached;
    std::unique_ptr<Tavenor> window;
};

// What hands that start at this number reach.
Reached live(quint32 start, const QString &folder, QStringList *markup)
{
    Life life(start, folder);
    QElapsedTimer clock;
    clock.start();
    for (int step = 0; Campaign::isFull() ? clock.elapsed() < LifeLength : step < FewSteps;
         ++step) {
        life.step();
    }
    *markup = life.markupBoxes();
    return life.result();
}

QStringList damage(const Workspace &here)
{
    QStringList found;
    const QDir folder(here.path(text("casa")));
    for (const QString &name : folder.entryList({text("*.db")}, QDir::Files)) {
        const QString file = text("casa/") + name;
        const QString state = here.value(file, text("PRAGMA integrity_check")).toString();
        if (state != QLatin1String("ok")) {
            found.append(file + text(": ") + state);
        }
    }
    for (const QString &name : folder.entryList({text("*-journal")}, QDir::Files)) {
        found.append(name);
    }
    return found;
}

// A table of so many records, each with a number and a date.
QStringList longTable(int records)
{
    return {text("CREATE TABLE grande (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome "
                 "text,NINTEGERFORMAT_Anno text,NMONEYFORMAT_Prezzo text,NDATEFORMAT_Data text)"),
            text("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<%1) INSERT "
                 "INTO grande SELECT i,'Nome '||i,i%2000,(i%100)||'.25','01/02/2020' FROM n")
                .arg(records)};
}

// A long operation, and what it left.
using Operation = std::function<QStringList(Tavenor &, const Workspace &)>;

QStringList loadsList(Tavenor &window, const Workspace &)
{
    Window::pressTable(window, text("autori"));
    Window::pressTable(window, text("grande"));
    return Window::lines(window);
}

QStringList adds(Tavenor &window, const Workspace &)
{
    Window::pressTable(window, text("grande"));
    Window::click(window, "pbCalc");
    Window::click(window, "pbRecalc");
    const QString total = Window::get<QLineEdit>(window, "leResult")->text();
    Window::click(window, "pbExitCalc");
    return {total};
}

QStringList filters(Tavenor &window, const Workspace &)
{
    Window::pressTable(window, text("grande"));
    FilterPage::open(window);
    FilterPage::enter(window, text("Prezzo"), text("7.25"));
    FilterPage::apply(window);
    return Window::lines(window);
}

QStringList exportsRecords(Tavenor &window, const Workspace &here)
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::action(window, "actionAutoExportAll")->trigger();
    return {QString::fromUtf8(here.read(text("casa/ExportManagerFiles/grande.xmf")))};
}

QStringList exportsText(Tavenor &window, const Workspace &here)
{
    Window::pressTable(window, text("grande"));
    ModalResponder responder;
    responder.chooseFile(here.path(text("fuori.txt")));
    Window::action(window, "actionExport_To_File")->trigger();
    return {QString::fromUtf8(here.read(text("fuori.txt")))};
}

QStringList carriesOver(Tavenor &window, const Workspace &here)
{
    Window::pressTable(window, text("grande"));
    ModalResponder responder;
    responder.chooseFile(here.path(text("fuori.xmf")));
    Window::action(window, "actionExport")->trigger();
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionClear_Selected_List")->trigger();
    responder.chooseFile(here.path(text("fuori.xmf")));
    Window::action(window, "actionImport_From_File_Export_Manager_File")->trigger();
    return EntryPage::exactRows(here, Database, text("grande"));
}

// What the second copy does; 0 when it did something and wrote nothing.
int beSecondCopy()
{
    QDir::setCurrent(qEnvironmentVariable(CopyFolder));
    const UrlCatcher catcher;
    Life life(Campaign::start(), QDir::currentPath());
    QElapsedTimer clock;
    clock.start();
    for (int step = 0; Campaign::isFull() ? clock.elapsed() < LifeLength : step < FewSteps / 2;
         ++step) {
        life.step();
    }
    std::puts(qPrintable(life.result().told()));
    const Reached &reached = life.result();
    const bool isLively = reached.counts.steps >= FewSteps / 2 && reached.pages.size() > 1;
    return isLively && reached.writes == 0 ? 0 : 1;
}

} // namespace

Q_DECLARE_METATYPE(Operation)

class FaultsWindow : public QObject
{
    Q_OBJECT

private slots:
    void randomHands_data();
    void randomHands();
    void disturbedOperations_data();
    void disturbedOperations();
    void secondCopyWritesNothing();
    void cleanupTestCase();

private:
    /// Does the operation over so many records while it is disturbed, in each round another way;
    /// adds how often something was done meanwhile.
    static void disturb(const Operation &operation, int records, Campaign::Row &row,
                        qint64 &disturbances);

    Reached total;
};

void FaultsWindow::randomHands_data()
{
    QTest::addColumn<quint32>("start");
    const int lives = Campaign::cases(1, 20);
    for (int life = 0; life < lives; ++life) {
        const quint32 start = Campaign::start() + quint32(life);
        QTest::addRow("hands that start at %u", start) << start;
    }
}

void FaultsWindow::randomHands()
{
    QFETCH(const quint32, start);
    Campaign::Row row(text("random hands on every page"));
    qInfo("TAVENOR_CAMPAIGN_START=%u", start);
    const Workspace here;
    makeFiles(here);
    here.sql(Database, library());
    here.remember(Database);
    const UrlCatcher catcher;
    QStringList markup;
    const Reached life = live(start, here.path(), &markup);
    total.add(life);
    row.ran(life.counts.steps);
    row.remark(total.told());
    QVERIFY(life.counts.steps >= FewSteps && life.pages.size() > 1 && life.pageChanges > 0);
    QVERIFY(life.counts.actions > 0 && life.counts.boxes > 0);
    QCOMPARE(markup, QStringList());
    QVERIFY(!here.exists(Lock));
    QCOMPARE(total.locksLeft, 0);
    QCOMPARE(damage(here), QStringList());
}

void FaultsWindow::disturbedOperations_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::newRow("the list is loaded") << Operation(loadsList);
    QTest::newRow("columns are added up") << Operation(adds);
    QTest::newRow("a filter is applied") << Operation(filters);
    QTest::newRow("records are exported") << Operation(exportsRecords);
    QTest::newRow("a readable text is written") << Operation(exportsText);
    QTest::newRow("records are exported and imported") << Operation(carriesOver);
}

void FaultsWindow::disturbedOperations()
{
    QFETCH(const Operation, operation);
    Campaign::Row row(text("operations disturbed by keys, clicks and closings, ") +
                      text(QTest::currentDataTag()));
    // An operation that ends before the first events pass cannot be disturbed: how many records it
    // takes to be noticed depends on the machine.
    qint64 disturbances = 0;
    for (int records = Campaign::cases(FewRecords, 15000);
         disturbances == 0 && records <= MostRecords; records *= 2) {
        disturb(operation, records, row, disturbances);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
    row.remark(text("disturbed %1 times").arg(disturbances));
    QVERIFY2(disturbances > 0, "nothing disturbed it");
}

void FaultsWindow::disturb(const Operation &operation, int records, Campaign::Row &row,
                           qint64 &disturbances)
{
    const Workspace here;
    here.write(text("casa/keep"), "");
    here.sql(Database, library() + longTable(records));
    here.remember(Database);
    Tavenor window;
    window.show();
    const QStringList expected = operation(window, here);
    QVERIFY(!expected.isEmpty() && expected != QStringList(QString()));
    for (int round = 0; round < Campaign::cases(1, 5); ++round) {
        const Disturbance disturbance(Campaign::start() + quint32(round));
        const QStringList found = operation(window, here);
        const QString told = text("round %1, %2 lines instead of %3: %4")
                                 .arg(round)
                                 .arg(found.size())
                                 .arg(expected.size())
                                 .arg(found.join(QLatin1Char(',')).left(200));
        QVERIFY2(found == expected, qPrintable(told));
        QVERIFY(window.isVisible());
        for (const QWidget *const widget : QApplication::topLevelWidgets()) {
            QVERIFY(widget == &window || !widget->isVisible());
        }
        row.ran();
        disturbances += disturbance.count();
    }
    QCOMPARE(damage(here), QStringList());
}

void FaultsWindow::secondCopyWritesNothing()
{
    Campaign::Row row(text("records saved while a second copy is used at random"));
    const Workspace here;
    makeFiles(here);
    here.sql(Database, library());
    here.remember(Database);
    int saved = 0;
    {
        const Tavenor window;
        Window::pressTable(window, text("autori"));
        QProcess copy;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text(CopyFolder), here.path());
        copy.setProcessEnvironment(environment);
        copy.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        copy.start(QCoreApplication::applicationFilePath(), QStringList());
        QVERIFY(copy.waitForStarted());
        const ModalResponder responder;
        while (!copy.waitForFinished(50) && copy.state() != QProcess::NotRunning) {
            EntryPage::openNew(window);
            EntryPage::enter(window, text("Nome"), text("Autore %1").arg(++saved));
            EntryPage::save(window);
            QVERIFY(!EntryPage::isOpen(window));
            row.ran();
            EntryPage::forgetOldPages();
        }
        row.remark(text("second copy: ") +
                   QString::fromUtf8(copy.readAllStandardOutput()).trimmed());
        QCOMPARE(copy.exitStatus(), QProcess::NormalExit);
        QCOMPARE(copy.exitCode(), 0);
        QVERIFY(here.exists(Lock));
    }
    QVERIFY(!here.exists(Lock));
    QVERIFY(saved > 0);
    QCOMPARE(here.value(Database, text("SELECT count(*) FROM autori")).toInt(), 2 + saved);
    QCOMPARE(damage(here), QStringList());
}

void FaultsWindow::cleanupTestCase()
{
    Campaign::report();
    QVERIFY(!Campaign::isFull() || total.counts.steps == 0 || total.pages.size() == 5);
}

int main(int argc, char *argv[])
{
    if (Campaign::isFull()) {
        // The toolkit's own limit is less than what all lives take together.
        qputenv("QTEST_FUNCTION_TIMEOUT", "3600000");
    }
    const QApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(CopyFolder)) {
        return beSecondCopy();
    }
    FaultsWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "faults_window.moc"
