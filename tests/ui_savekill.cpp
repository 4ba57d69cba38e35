// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A program that is killed while it saves leaves each record as it was or as it was to be.
#include "tests/support/EntryPage.h"

#include <QDir>
#include <QProcess>
#include <QTimer>

namespace
{

const QString Database = QStringLiteral("books.db");
const QString Journal = QStringLiteral("books.db-journal");
const QString Titolo = QStringLiteral("Titolo");
const QString Note = QStringLiteral("Note");
const QString TaskOption = QStringLiteral("--task=");

// A text that takes several pages of the file, so that a save is many writes.
QString longText(char letter)
{
    return QString(9000, QLatin1Char(letter));
}

const QStringList Books = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_Note text,"
                   "NINTEGERFORMAT_Anno text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO libri VALUES (3,'Argo','%1',NULL),(7,'Zeno','corta','1923'),"
                   "(9,'Zibaldone','%2','1898')")
        .arg(longText('a'), longText('z')),
    QStringLiteral("INSERT INTO autori VALUES (1,'Svevo')"),
};

// What the child does in the window before it ends. The record shown first is "Argo".

void addRecord(QWidget &window)
{
    EntryPage::openNew(window);
    EntryPage::enter(window, Titolo, QStringLiteral("Nuovo"));
    EntryPage::enter(window, Note, longText('n'));
    EntryPage::save(window);
}

void changeRecord(QWidget &window)
{
    EntryPage::openEdit(window);
    EntryPage::enter(window, Titolo, QStringLiteral("Argonauti"));
    EntryPage::enter(window, Note, longText('c'));
    EntryPage::enter(window, QStringLiteral("Anno"), QStringLiteral("1951"));
    EntryPage::save(window);
}

void deleteRecord(QWidget &window)
{
    Window::click(window, "pbDeleteUser");
}

// Starting alone makes the program's own tables.
void start(QWidget & /*window*/)
{
}

void pressYes()
{
    auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box != nullptr) {
        box->done(QMessageBox::Yes);
    }
}

int runTask(const QString &task)
{
    const QMap<QString, void (*)(QWidget &)> tasks = {{QStringLiteral("new"), addRecord},
                                                      {QStringLiteral("change"), changeRecord},
                                                      {QStringLiteral("delete"), deleteRecord},
                                                      {QStringLiteral("start"), start}};
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, pressYes);
    answers.start(1);
    Tavenor window;
    tasks.value(task)(window);
    return EntryPage::isOpen(window) ? 1 : 0;
}

// Everything that a database holds.
QStringList contents(const Workspace &here, const QString &database)
{
    QStringList result = here.column(database, QStringLiteral("PRAGMA integrity_check"));
    const QStringList tables =
        here.column(database, QStringLiteral("SELECT name FROM sqlite_master ORDER BY name"));
    for (const QString &table : tables) {
        result.append(table);
        result.append(EntryPage::exactRows(here, database, table));
    }
    return result;
}

} // namespace

class SaveKill : public QObject
{
    Q_OBJECT

private slots:
    void everyMomentLeavesOldOrNew_data();
    void everyMomentLeavesOldOrNew();

private:
    /// Puts the database back as it was, without what an earlier child has left.
    static void restore(const Workspace &here, const QByteArray &database);
    /// Runs the task in a child that is killed at its write number `at`, never for 0. True when
    /// it came to its end.
    static bool survives(const Workspace &here, const QString &task, int at, bool half);
    /// What another program would find after the child's end.
    static QStringList contentsLeft(const Workspace &here);
    /// The lines of the list after the next start, of a second copy when `readOnly`.
    static QStringList linesAfterStart(const Workspace &here, bool readOnly);
};

void SaveKill::restore(const Workspace &here, const QByteArray &database)
{
    QFile::remove(here.path(Journal));
    QFile::remove(here.path(QStringLiteral("lockDb.dat")));
    here.write(Database, database);
}

bool SaveKill::survives(const Workspace &here, const QString &task, int at, bool half)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(KILL_SHIM));
    environment.insert(QStringLiteral("TAVENOR_KILL_FILE"), Database);
    environment.insert(QStringLiteral("TAVENOR_KILL_AT"), QString::number(at));
    environment.insert(QStringLiteral("TAVENOR_KILL_HALF"), QString::number(half ? 1 : 0));
    // The address sanitizer otherwise refuses to start behind a preloaded library.
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       QStringLiteral("detect_leaks=0:verify_asan_link_order=0"));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setWorkingDirectory(here.path());
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {TaskOption + task});
    if (!child.waitForFinished(60000)) {
        child.kill();
        child.waitForFinished();
        qFatal("the child does not end");
    }
    const bool ended = child.exitStatus() == QProcess::NormalExit;
    if (ended && child.exitCode() != 0) {
        qFatal("the child could not save");
    }
    return ended;
}

QStringList SaveKill::contentsLeft(const Workspace &here)
{
    // On a copy: the program itself shall be the first to open what is left.
    const QString copy = QStringLiteral("copia/books.db");
    here.write(copy, here.read(Database));
    const QString journal = QStringLiteral("copia/") + Journal;
    QFile::remove(here.path(journal));
    if (here.exists(Journal)) {
        here.write(journal, here.read(Journal));
    }
    return contents(here, copy);
}

QStringList SaveKill::linesAfterStart(const Workspace &here, bool readOnly)
{
    if (!readOnly) {
        QFile::remove(here.path(QStringLiteral("lockDb.dat")));
    }
    const Tavenor window;
    return Window::lines(window);
}

void SaveKill::everyMomentLeavesOldOrNew_data()
{
    QTest::addColumn<QString>("task");
    QTest::addColumn<QStringList>("linesBefore");
    QTest::addColumn<QStringList>("linesAfter");
    QTest::addColumn<bool>("half");
    const QString argo = QStringLiteral("Argo");
    const QString zeno = QStringLiteral("Zeno");
    const QString zibaldone = QStringLiteral("Zibaldone");
    const QStringList books{argo, zeno, zibaldone};
    for (const bool half : {false, true}) {
        const char *const moment = half ? "in the middle of a write" : "before a write";
        QTest::addRow("new record, %s", moment)
            << "new" << books << QStringList{argo, QStringLiteral("Nuovo"), zeno, zibaldone}
            << half;
        QTest::addRow("changed record, %s", moment)
            << "change" << books << QStringList{QStringLiteral("Argonauti"), zeno, zibaldone}
            << half;
        QTest::addRow("deleted record, %s", moment)
            << "delete" << books << QStringList{zeno, zibaldone} << half;
        QTest::addRow("first start, %s", moment) << "start" << books << books << half;
    }
}

void SaveKill::everyMomentLeavesOldOrNew()
{
    QFETCH(QString, task);
    QFETCH(QStringList, linesBefore);
    QFETCH(QStringList, linesAfter);
    QFETCH(bool, half);
    const Workspace here;
    here.sql(Database, Books);
    here.remember(Database);
    if (task != QStringLiteral("start")) {
        // Makes the program's own tables, so that the child writes nothing but the record.
        const Tavenor window;
    }
    const QByteArray before = here.read(Database);
    const QStringList oldContents = contents(here, Database);
    QCOMPARE(oldContents.first(), QStringLiteral("ok"));
    QVERIFY(survives(here, task, 0, half));
    const QStringList newContents = contents(here, Database);
    QCOMPARE(newContents.first(), QStringLiteral("ok"));
    QVERIFY(newContents != oldContents);

    int writes = 0;
    bool isSaved = false;
    bool survived = false;
    while (!survived) {
        restore(here, before);
        ++writes;
        survived = survives(here, task, writes, half);
        const QStringList left = contentsLeft(here);
        // Once it is saved it stays so, and nothing stands in between.
        isSaved = isSaved || left == newContents;
        QVERIFY2(left == (isSaved ? newContents : oldContents),
                 qPrintable(QStringLiteral("write %1").arg(writes)));
        // The lock of a program that was killed is still there: the next one only reads.
        const bool readOnly = !survived && writes % 2 == 0;
        QCOMPARE(linesAfterStart(here, readOnly), isSaved ? linesAfter : linesBefore);
        QCOMPARE(linesAfterStart(here, false), isSaved ? linesAfter : linesBefore);
    }
    QVERIFY(isSaved);
    // Fewer would mean that the child is not watched: a journal, its header, pages, removal.
    QVERIFY2(writes > 6, qPrintable(QString::number(writes)));
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QString option = QCoreApplication::arguments().value(1);
    if (option.startsWith(TaskOption)) {
        return runTask(option.mid(TaskOption.size()));
    }
    SaveKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "ui_savekill.moc"
