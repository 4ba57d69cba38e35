// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of opening databases, and what cannot be opened as one.
#include "storage/DataBase.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QtTest>

#include <memory>
#include <sys/stat.h>

namespace
{

const QString Name = QStringLiteral("collezione.db");
const QString Failed = QStringLiteral("ERRORE: Impossibile aprire il Db!");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Collects what the toolkit's database code prints.
class SqlWarnings
{
public:
    SqlWarnings()
        : before(qInstallMessageHandler(take))
    {
        printed().clear();
    }
    ~SqlWarnings() { qInstallMessageHandler(before); }

    static QStringList &printed()
    {
        static QStringList texts;
        return texts;
    }

private:
    static void take(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        if (message.contains(text("QSql"))) {
            printed().append(message);
        }
    }

    QtMessageHandler before;
};

} // namespace

class TestOpen : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensAnExistingFile();
    void makesAMissingFile();
    void takesAnEmptyFile();
    void takesOddPaths_data();
    void takesOddPaths();
    void registersTheDefaultConnection();
    void opensOneAfterTheOther();
    void opensTheSameFileAgain();
    void closesWithTheObject();
    void fails_data();
    void fails();
    void failsWithoutADatabaseBefore();
    void failsOnALockedFile();
    void waitsForALockThatGoes();
    void showsTheBoxOnceAsAPlainWarning();

    void readOnlyReads();
    void readOnlyWritesNothing();
    void readOnlyMakesNoFile_data();
    void readOnlyMakesNoFile();
    void readOnlyTakesAnEmptyFile();
    void readOnlyCountsFromTheNextOpening();
    void readOnlyTakesAWriteAheadLog();
    void undoesTheHalfDoneStepOfAKilledWriter_data();
    void undoesTheHalfDoneStepOfAKilledWriter();
    void readOnlyFailsOnAnUnreadableFileWithAJournal();

private:
    QString path(const QString &name = Name) const { return workspace->path(name); }
    void makeBooks(const QString &name) const;
    void makeHotJournal(const QString &name) const;
    void verifyFails(const QString &file);

    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<DataBase> db;
};

void TestOpen::init()
{
    workspace = std::make_unique<Workspace>();
    db = std::make_unique<DataBase>();
}

void TestOpen::cleanup()
{
    db.reset();
    workspace.reset();
}

void TestOpen::makeBooks(const QString &name) const
{
    workspace->sql(name, {text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                               "RSTRINGFORMAT_Titolo text)"),
                          text("INSERT INTO libri VALUES (1,'uno')")});
}

/// Copies a database and its journal out of the middle of a writer's transaction, as a killed
/// writer leaves them.
void TestOpen::makeHotJournal(const QString &name) const
{
    const QString source = text("scritto.db");
    workspace->sql(source,
                   {text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,a text)"),
                    text("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 500)"
                         " INSERT INTO libri SELECT i,hex(zeroblob(200)) FROM n")});
    {
        QSqlDatabase writer = QSqlDatabase::addDatabase(text("QSQLITE"), text("writer"));
        writer.setDatabaseName(path(source));
        QVERIFY(writer.open());
        QSqlQuery query(writer);
        QVERIFY(query.exec(text("PRAGMA cache_size = 2")));
        QVERIFY(query.exec(text("BEGIN")));
        QVERIFY(query.exec(text("UPDATE libri SET a = 'half done' || a")));
        workspace->write(name, workspace->read(source));
        workspace->write(name + text("-journal"), workspace->read(source + text("-journal")));
        QVERIFY(query.exec(text("ROLLBACK")));
    }
    QSqlDatabase::removeDatabase(text("writer"));
    QVERIFY(workspace->read(name).contains("half done"));
}

void TestOpen::opensAnExistingFile()
{
    makeBooks(Name);
    const ModalResponder responder;
    QVERIFY(!db->isOpen());
    QVERIFY(db->openDatabase(path()));
    QVERIFY(db->isOpen());
    QCOMPARE(Sql::table(text("libri")), QStringList(text("1|'uno'")));
}

void TestOpen::makesAMissingFile()
{
    const ModalResponder responder;
    QVERIFY(db->openDatabase(path()));
    QVERIFY(db->tables().isEmpty());
    QVERIFY(QFileInfo(path()).isFile());
    QVERIFY(db->createTable(text("libri"), {}));
    db.reset();
    QVERIFY(workspace->read(Name).startsWith("SQLite format 3"));
}

void TestOpen::takesAnEmptyFile()
{
    workspace->write(Name, QByteArray());
    const ModalResponder responder;
    QVERIFY(db->openDatabase(path()));
    QVERIFY(db->tables().isEmpty());
    QVERIFY(db->createTable(text("libri"), {}));
}

void TestOpen::takesOddPaths_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks and letters beyond ASCII") << text("le città €/la mia raccolta.db");
    QTest::newRow("signs of placeholders and of addresses") << text("100%s?mode=ro&x=1#y.db");
    QTest::newRow("quotes") << text("l'uva \"fragola\".db");
    QTest::newRow("no ending") << text("raccolta");
    QTest::newRow("signs of options") << text("a;QSQLITE_OPEN_READONLY");
}

void TestOpen::takesOddPaths()
{
    QFETCH(QString, name);
    QDir().mkpath(QFileInfo(path(name)).path());
    const ModalResponder responder;
    QVERIFY(db->openDatabase(path(name)));
    QVERIFY(db->createTable(text("libri"), {}));
    QVERIFY(QFileInfo(path(name)).size() > 0);
    QVERIFY(db->openDatabase(name));
    QVERIFY(db->tableExists(text("libri")));
}

void TestOpen::registersTheDefaultConnection()
{
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(QSqlDatabase::connectionNames(),
             QStringList(QLatin1String(QSqlDatabase::defaultConnection)));
    const QSqlDatabase connection = QSqlDatabase::database();
    QCOMPARE(connection.driverName(), text("QSQLITE"));
    QCOMPARE(connection.hostName(), text("127.0.0.1"));
    QCOMPARE(connection.databaseName(), path());
}

void TestOpen::opensOneAfterTheOther()
{
    makeBooks(text("a.db"));
    workspace->sql(text("b.db"), {text("CREATE TABLE dischi (a)")});
    const SqlWarnings warnings;
    const ModalResponder responder;
    for (int round = 0; round < 3; ++round) {
        QVERIFY(db->openDatabase(path(text("a.db"))));
        QCOMPARE(db->tables(), QStringList(text("libri")));
        QVERIFY(db->openDatabase(path(text("b.db"))));
        QCOMPARE(db->tables(), QStringList(text("dischi")));
    }
    db.reset();
    QCOMPARE(SqlWarnings::printed(), QStringList());
}

void TestOpen::opensTheSameFileAgain()
{
    makeBooks(Name);
    QVERIFY(db->openDatabase(path()));
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(db->insertRecord(text("libri"), false, 0), 2);
    QCOMPARE(db->rowCount(text("libri")), 2);
}

void TestOpen::closesWithTheObject()
{
    const SqlWarnings warnings;
    QVERIFY(db->openDatabase(path()));
    db.reset();
    QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    db = std::make_unique<DataBase>();
    QVERIFY(!db->isOpen());
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(SqlWarnings::printed(), QStringList());
}

void TestOpen::fails_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind :
         {"a text", "a picture", "garbage in the head", "a file cut within its first page",
          "a file cut after its first page", "a list of tables that is no SQL", "a folder",
          "a named pipe", "a device", "a missing folder", "a path of 5,000 bytes",
          "a link that leads in a circle"}) {
        QTest::newRow(kind) << text(kind);
    }
}

void TestOpen::fails()
{
    QFETCH(QString, kind);
    const QString bad = text("altro.db");
    QString file = path(bad);
    makeBooks(Name);
    makeBooks(text("intero.db"));
    const QByteArray whole = workspace->read(text("intero.db"));
    if (kind == text("a text")) {
        workspace->write(bad, QByteArray("Questo non è un database.\n").repeated(100));
    } else if (kind == text("a picture")) {
        QVERIFY(QImage(50, 50, QImage::Format_RGB32).save(file, "PNG"));
    } else if (kind == text("garbage in the head")) {
        workspace->write(bad, QByteArray("SQLite format 3").leftJustified(16, '\0') +
                                  QByteArray(2000, 'x'));
    } else if (kind == text("a file cut within its first page")) {
        workspace->write(bad, whole.left(700));
    } else if (kind == text("a file cut after its first page")) {
        workspace->write(bad, whole.left(4096));
    } else if (kind == text("a list of tables that is no SQL")) {
        workspace->write(bad, QByteArray(whole).replace("CREATE TABLE", "CREATE TAXXX"));
    } else if (kind == text("a folder")) {
        QVERIFY(QDir().mkpath(file));
    } else if (kind == text("a named pipe")) {
        QCOMPARE(mkfifo(file.toUtf8().constData(), 0600), 0);
    } else if (kind == text("a device")) {
        file = text("/dev/null");
    } else if (kind == text("a missing folder")) {
        file = path(text("manca/altro.db"));
    } else if (kind == text("a path of 5,000 bytes")) {
        file = path(QString(5000, QLatin1Char('x')));
    } else {
        QVERIFY(QFile::link(file, file));
    }
    verifyFails(file);
}

/// The file cannot be opened, and the database that was open stays as it was.
void TestOpen::verifyFails(const QString &file)
{
    const SqlWarnings warnings;
    QVERIFY(db->openDatabase(path()));
    const bool existed = QFileInfo::exists(file);
    const qint64 size = QFileInfo(file).size();
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->openDatabase(file));
    QCOMPARE(responder.takeTexts(), QStringList(Failed));
    QVERIFY(db->isOpen());
    QCOMPARE(QSqlDatabase::database().databaseName(), path());
    QCOMPARE(db->insertRecord(text("libri"), false, 0), 2);
    QCOMPARE(QFileInfo::exists(file), existed);
    QCOMPARE(QFileInfo(file).size(), size);
    QCOMPARE(SqlWarnings::printed(), QStringList());
}

void TestOpen::failsWithoutADatabaseBefore()
{
    workspace->write(Name, "Questo non è un database, ma una lettera.");
    const SqlWarnings warnings;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->openDatabase(path()));
    QVERIFY(!db->isOpen());
    QVERIFY(db->tables().isEmpty());
    QCOMPARE(db->rowCount(text("libri")), 0);
    QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    QCOMPARE(SqlWarnings::printed(), QStringList());
}

void TestOpen::failsOnALockedFile()
{
    makeBooks(Name);
    makeBooks(text("chiuso.db"));
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(text("QSQLITE"), text("other"));
        other.setDatabaseName(path(text("chiuso.db")));
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(text("BEGIN EXCLUSIVE")));
        verifyFails(path(text("chiuso.db")));
    }
    QSqlDatabase::removeDatabase(text("other"));
}

void TestOpen::waitsForALockThatGoes()
{
    makeBooks(Name);
    QProcess other;
    other.start(text("sqlite3"), {path()});
    QVERIFY2(other.waitForStarted(), "needs the sqlite3 program");
    other.write("BEGIN EXCLUSIVE;\nSELECT 'locked';\n");
    QVERIFY(other.waitForReadyRead());
    QCOMPARE(other.readAllStandardOutput().trimmed(), QByteArray("locked"));
    // The other program goes on at once, but only after this one began to wait.
    other.write(".shell sleep 0.3\nCOMMIT;\n.quit\n");
    other.waitForBytesWritten();
    const ModalResponder responder;
    QVERIFY(db->openDatabase(path()));
    QVERIFY(other.waitForFinished());
}

void TestOpen::showsTheBoxOnceAsAPlainWarning()
{
    ModalResponder responder;
    responder.pressReturn();
    QVERIFY(!db->openDatabase(path(QString())));
    QCOMPARE(responder.boxes().size(), 1);
    const ModalResponder::Box box = responder.boxes().constFirst();
    QCOMPARE(box.text, Failed);
    QCOMPARE(box.title, text("DB Administration Tool"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

void TestOpen::readOnlyReads()
{
    makeBooks(Name);
    const ModalResponder responder;
    db->setReadOnly(true);
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(Sql::table(text("libri")), QStringList(text("1|'uno'")));
}

void TestOpen::readOnlyWritesNothing()
{
    makeBooks(Name);
    const QByteArray bytes = workspace->read(Name);
    db->setReadOnly(true);
    QVERIFY(db->openDatabase(path()));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->clearTable(text("libri")));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile pulire la tabella libri!\n"
                              "attempt to write a readonly database Unable to fetch row")));
    db.reset();
    QCOMPARE(workspace->read(Name), bytes);
    QCOMPARE(QDir(path(QString())).entryList(QDir::Files), QStringList(Name));
}

void TestOpen::readOnlyMakesNoFile_data()
{
    QTest::addColumn<bool>("journal");
    QTest::newRow("where nothing is") << false;
    QTest::newRow("where a journal was left behind") << true;
}

void TestOpen::readOnlyMakesNoFile()
{
    QFETCH(bool, journal);
    if (journal) {
        workspace->write(Name + text("-journal"), "Questo non è un giornale.");
    }
    db->setReadOnly(true);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->openDatabase(path()));
    QCOMPARE(responder.takeTexts(), QStringList(Failed));
    QVERIFY(!workspace->exists(Name));
}

void TestOpen::readOnlyTakesAnEmptyFile()
{
    workspace->write(Name, QByteArray());
    const ModalResponder responder;
    db->setReadOnly(true);
    QVERIFY(db->openDatabase(path()));
    QVERIFY(db->tables().isEmpty());
    db.reset();
    QCOMPARE(QFileInfo(path()).size(), 0);
}

void TestOpen::readOnlyCountsFromTheNextOpening()
{
    makeBooks(Name);
    const ModalResponder responder;
    QVERIFY(db->openDatabase(path()));
    db->setReadOnly(true);
    QCOMPARE(db->insertRecord(text("libri"), false, 0), 2);
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(db->insertWhole(text("libri"), false, 0, {}), -1);
    db->setReadOnly(false);
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(db->insertRecord(text("libri"), false, 0), 3);
}

void TestOpen::readOnlyTakesAWriteAheadLog()
{
    makeBooks(Name);
    QProcess writer;
    writer.start(text("sqlite3"), {path(), text("PRAGMA journal_mode=WAL")});
    QVERIFY2(writer.waitForFinished(), "needs the sqlite3 program");
    const QByteArray bytes = workspace->read(Name);
    const ModalResponder responder;
    db->setReadOnly(true);
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(Sql::table(text("libri")), QStringList(text("1|'uno'")));
    db.reset();
    QCOMPARE(workspace->read(Name), bytes);
}

void TestOpen::undoesTheHalfDoneStepOfAKilledWriter_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::newRow("writing") << false;
    QTest::newRow("read-only") << true;
}

void TestOpen::undoesTheHalfDoneStepOfAKilledWriter()
{
    QFETCH(bool, readOnly);
    makeHotJournal(Name);
    const QByteArray before = workspace->read(text("scritto.db"));
    const SqlWarnings warnings;
    const ModalResponder responder;
    db->setReadOnly(readOnly);
    QVERIFY(db->openDatabase(path()));
    QCOMPARE(Sql::lines(text("SELECT count(*) FROM libri")), QStringList(text("500")));
    QCOMPARE(Sql::lines(text("SELECT count(*) FROM libri WHERE a LIKE 'half%'")),
             QStringList(text("0")));
    QCOMPARE(db->insertWhole(text("libri"), false, 0, {}), readOnly ? -1 : 501);
    db.reset();
    QVERIFY(!workspace->exists(Name + text("-journal")));
    QCOMPARE(workspace->read(Name) == before, readOnly);
    QCOMPARE(SqlWarnings::printed(), QStringList());
}

void TestOpen::readOnlyFailsOnAnUnreadableFileWithAJournal()
{
    workspace->write(Name, "Questo non è un database, ma una lettera.");
    workspace->write(Name + text("-journal"), "Questa è un'altra lettera.");
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    db->setReadOnly(true);
    QVERIFY(!db->openDatabase(path()));
    QCOMPARE(responder.takeTexts(), QStringList(Failed));
    QCOMPARE(workspace->read(Name), QByteArray("Questo non è un database, ma una lettera."));
}

QTEST_MAIN(TestOpen)
#include "storage_open.moc"
