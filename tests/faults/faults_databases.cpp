// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Thousands of damaged and foreign databases: looked at from end to end, and left as they are.
#include "app/Tavenor.h"
#include "tests/faults/tools/OddDatabase.h"
#include "tests/support/Campaign.h"
#include "tests/support/EntryPage.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"

#include <QDialog>
#include <QPointer>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <sys/time.h>
#include <unistd.h>

#include <cstdio>

namespace
{

const QString Database = QStringLiteral("far/odd.db");
const QString Lock = QStringLiteral("lockDb.dat");

// A table may keep the program busy for so long; a crowded machine gives it a share only.
constexpr int MostSeconds = 10;
constexpr unsigned MostSecondsOfWaiting = 120;
// A person gives up on a program that says more than this about one file.
constexpr int MostBoxes = 60;
constexpr int MostTables = 4;
constexpr int TablesWithPages = 2;
constexpr int MostLines = 2;
constexpr int MostRows = 200;

QString textOf(const QVariant &value)
{
    return QString::fromLatin1(value.typeName()) + QLatin1Char(' ') +
           QString::fromLatin1(value.toByteArray().toHex());
}

QStringList rowsOf(const QSqlDatabase &database, const QString &statement)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(statement);
    QStringList rows;
    while (rows.size() < MostRows && query.next()) {
        QStringList values;
        for (int i = 0; i < query.record().count(); ++i) {
            // The program fills an empty link with the name of the table that it leads to.
            const bool isLink = query.record().fieldName(i).contains(QLatin1String("LINKFORMAT"));
            values.append(isLink ? QString() : textOf(query.value(i)));
        }
        rows.append(values.join(QLatin1Char('|')));
    }
    rows.append(query.lastError().nativeErrorCode());
    return rows;
}

// Everything that can be read of the file but the program's own tables.
QStringList contents(const Workspace &here)
{
    const QString name = QStringLiteral("reader");
    QStringList all;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(here.path(Database));
        database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        database.open();
        const QString others =
            QStringLiteral("FROM sqlite_master WHERE lower(name) NOT IN ('settings','filters',"
                           "'subtablesconfigs') AND name NOT LIKE 'sqlite_%'");
        all = rowsOf(database, QStringLiteral("SELECT type,name,sql ") + others);
        QSqlQuery tables(database);
        tables.setForwardOnly(true);
        tables.exec(QStringLiteral("SELECT name %1 AND type='table'").arg(others));
        for (int i = 0; i < MostRows && tables.next(); ++i) {
            const QString table = OddDatabase::quoted(tables.value(0).toString());
            all.append(rowsOf(database, QStringLiteral("SELECT * FROM ") + table));
        }
    }
    QSqlDatabase::removeDatabase(name);
    return all;
}

// Says no to every question and closes every box; a person would.
class Dismisser : public QObject
{
public:
    Dismisser() { startTimer(1); }
    int boxes() const { return count; }

protected:
    void timerEvent(QTimerEvent *) override
    {
        auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == last) {
            return;
        }
        last = dialog;
        ++count;
        connect(dialog, &QDialog::finished, this, [this] { last = nullptr; });
        QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
    }

private:
    QPointer<QDialog> last;
    int count = 0;
};

void press(const QWidget &window, const char *name)
{
    Window::get<QAbstractButton>(window, name)->click();
}

// What a curious person does with a table; nothing of it asks for a change.
void lookAtTable(Tavenor &window)
{
    for (int row = 0; row < qMin(Window::lines(window).size(), MostLines); ++row) {
        Window::get<QListWidget>(window, "userListWidget")->setCurrentRow(row);
    }
    for (const char *const button : {"pbSort", "pbNext", "pbPrev", "pbSort"}) {
        press(window, button);
    }
    auto *const search = Window::get<QLineEdit>(window, "userSearchEdit");
    search->setText(QStringLiteral("libro"));
    press(window, "pbUserNext");
    search->clear();
}

// The pages that read a table in ways of their own.
void openPages(Tavenor &window)
{
    press(window, "pbFilter");
    press(window, "pbCancelFilters");
    press(window, "pbCalc");
    press(window, "pbExitCalc");
    press(window, "pbEditUser");
    press(window, "pbCancelEdit");
}

// Gives the next step its time.
void watch()
{
    const itimerval limit = {{0, 0}, {MostSeconds, 0}};
    setitimer(ITIMER_PROF, &limit, nullptr);
    alarm(MostSecondsOfWaiting);
}

void lookAround(Tavenor &window, bool isShown)
{
    // Painting takes most of the time, and has little to do with what is wrong with a file.
    window.setVisible(isShown);
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
    const int tables = qMin(Window::buttons(window).size(), MostTables);
    std::printf("tables %d\n", tables);
    for (int table = 0; table < tables; ++table) {
        watch();
        press(*Window::buttons(window).at(table), "pbList");
        lookAtTable(window);
        if (table < TablesWithPages) {
            openPages(window);
        }
        EntryPage::forgetOldPages();
    }
    for (const ListButtonForm *const button : Window::buttons(window, "filtersButtonLayout")) {
        press(*button, "pbList");
    }
}

// What went wrong with the file that these numbers give; empty when nothing did. Every fourth
// file is looked at by a copy that must not write.
QString triedFile(OddDatabase &maker, OddDatabase::Kind kind, int number)
{
    QRandomGenerator random(Campaign::start() + quint32(number) * 8 + quint32(kind));
    const Workspace here;
    here.write(QStringLiteral("far/keep"), "");
    maker.write(here.path(Database), kind, random);
    here.remember(Database);
    const bool isReadOnly = number % 4 == 3;
    if (isReadOnly) {
        here.write(Lock, "Locked");
    }
    const QByteArray bytesBefore = here.read(Database);
    const QStringList before = contents(here);
    const Dismisser dismisser;
    {
        Tavenor window;
        lookAround(window, number % 5 == 3);
        window.close();
    }
    if (dismisser.boxes() > MostBoxes) {
        return QStringLiteral("%1 boxes").arg(dismisser.boxes());
    }
    const bool isSame = here.read(Database) == bytesBefore;
    if (isReadOnly && !isSame) {
        return QStringLiteral("a copy that must not write has written");
    }
    return isSame || contents(here) == before ? QString() : QStringLiteral("contents changed");
}

// The child: tries `count` files of a kind, and says which one it is at.
int tryFiles(int kind, int first, int count)
{
    OddDatabase maker;
    for (int number = first; number < first + count; ++number) {
        std::printf("at %d\n", number);
        std::fflush(stdout);
        watch();
        const QString fault = triedFile(maker, OddDatabase::Kind(kind), number);
        if (!fault.isEmpty()) {
            std::printf("fault %d %s\n", number, qPrintable(fault));
        }
    }
    return 0;
}

// A run of the child, read from the outside.
struct Outcome {
    int next = 0;   ///< the first number that it did not come to
    int tables = 0; ///< the tables that it opened
    QStringList faults;
};

Outcome outcomeOf(int kind, int first, int count)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--files"), QString::number(kind), QString::number(first),
                 QString::number(count)});
    child.waitForFinished(-1);
    Outcome outcome;
    outcome.next = first;
    const QStringList lines =
        QString::fromUtf8(child.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("at "))) {
            outcome.next = line.mid(3).toInt() + 1;
        } else if (line.startsWith(QLatin1String("fault "))) {
            outcome.faults.append(line);
        } else if (line.startsWith(QLatin1String("tables "))) {
            outcome.tables += line.mid(7).toInt();
        }
    }
    const bool isWell = child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0;
    if (!isWell) {
        outcome.faults.append(
            QStringLiteral("fault %1 ended by %2\n%3")
                .arg(QString::number(outcome.next - 1), QString::number(child.exitCode()),
                     QString::fromUtf8(child.readAllStandardError().right(6000))));
    } else if (outcome.next != first + count) {
        outcome.faults.append(QStringLiteral("fault %1 stopped").arg(outcome.next - 1));
    }
    return outcome;
}

} // namespace

class Databases : public QObject
{
    Q_OBJECT

private slots:
    void oddFilesAreLookedAtAndLeft_data();
    void oddFilesAreLookedAtAndLeft();
    void cleanupTestCase();
};

void Databases::oddFilesAreLookedAtAndLeft_data()
{
    QTest::addColumn<int>("kind");
    const QStringList kinds = OddDatabase::kinds();
    for (int kind = 0; kind < kinds.size(); ++kind) {
        QTest::newRow(qUtf8Printable(kinds.at(kind))) << kind;
    }
}

void Databases::oddFilesAreLookedAtAndLeft()
{
    QFETCH(int, kind);
    Campaign::Row row(QStringLiteral("databases: ") + OddDatabase::kinds().at(kind));
    // In the short form, two that can be opened: one by a copy that must not write, one shown.
    const int first = Campaign::cases(7, 0);
    const int files = Campaign::cases(2, 1000);
    // A child is started anew now and then, so that what it piles up stays small.
    constexpr int Chunk = 50;
    QStringList faults;
    int tables = 0;
    for (int number = first; number < first + files;) {
        const Outcome outcome = outcomeOf(kind, number, qMin(Chunk, first + files - number));
        faults.append(outcome.faults);
        tables += outcome.tables;
        row.ran(outcome.next - number);
        number = qMax(outcome.next, number + 1);
    }
    row.failed(faults.size());
    row.remark(QStringLiteral("%1 tables opened").arg(tables));
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    QCOMPARE(row.cases(), files);
    // What cannot be opened at all shows little of the program; many files can.
    QVERIFY(tables >= files / 2);
}

void Databases::cleanupTestCase()
{
    Campaign::report();
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--files")) {
        return tryFiles(arguments.value(2).toInt(), arguments.value(3).toInt(),
                        arguments.value(4).toInt());
    }
    // The toolkit ends a test after five minutes by itself.
    qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number(6 * 3600 * 1000));
    Databases test;
    return QTest::qExec(&test, argc, argv);
}

#include "faults_databases.moc"
