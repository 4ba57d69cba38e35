// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of commands whose writes become durable together.
#include "storage/DataBase.h"
#include "storage/RowPass.h"
#include "storage/Transaction.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"

#include <QtTest>

#include <memory>

namespace
{

const QString Books = QStringLiteral("libri");
const QString IdColumn = QStringLiteral("RINTEGERFORMAT_Id");
const QString Title = QStringLiteral("RSTRINGFORMAT_Titolo");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class TestOneStep : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void success();
    void othersSeeNothingBeforeTheEnd();
    void aFailingCommandIsDoneAgainPlainly();
    void theWritesThatSucceedOnTheSecondRunStay();
    void boxesComeWhileNoTransactionIsOpen();
    void aResultOfFalseIsDoneAgain();
    void aNotedFailureIsDoneAgain();
    void failuresOfSilentWritesAreDoneAgain_data();
    void failuresOfSilentWritesAreDoneAgain();
    void nothingIsWrittenAfterAFailureOfTheTry();
    void aFailingCommitIsDoneAgain();
    void aFullDiskIsDoneAgain();
    void theQuestionAboutAnIdComesInTheSecondRun();
    void nestedCommandsSimplyRun();
    void withoutADatabaseTheCommandsRunOnce();
    void insideAnotherTransactionTheCommandsRunOnce();
    void theNextStepStartsAfresh();
    void tablesAreMadeAndRemovedInOneStep();
    void severalRecordsAreRemovedTogether();
    void eachRecordThatStaysIsTold();
    void aWalkMayStandOpen();

    void aTransactionRollsBackAtTheEndOfItsScope();
    void aTransactionIsCommittedOnce();
    void aTransactionWithoutADatabaseIsNotOpen();

private:
    /// Adds a book in a way that shows its failures.
    bool add(const QString &title)
    {
        const int id = db->insertRecord(Books, false, 0);
        return id > 0 && db->updateField(Books, id, Title, title);
    }

    /// What another program sees of the table.
    QStringList seenByOthers() const
    {
        return workspace->column(text("collezione.db"),
                                 text("SELECT RSTRINGFORMAT_Titolo FROM libri"));
    }

    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<DataBase> db;
};

void TestOneStep::init()
{
    workspace = std::make_unique<Workspace>();
    db = std::make_unique<DataBase>();
    QVERIFY(db->openDatabase(workspace->path(text("collezione.db"))));
    QVERIFY(db->createTable(Books, {{Title, text("text")}}));
}

void TestOneStep::cleanup()
{
    db.reset();
    workspace.reset();
}

void TestOneStep::success()
{
    const ModalResponder responder;
    int runs = 0;
    bool quiet = false;
    QVERIFY(!db->isQuiet());
    QVERIFY(db->inOneStep([&] {
        ++runs;
        quiet = db->isQuiet();
        return add(text("a")) && add(text("b"));
    }));
    QCOMPARE(runs, 1);
    QVERIFY(quiet);
    QVERIFY(!db->isQuiet());
    QCOMPARE(seenByOthers(), QStringList({text("a"), text("b")}));
}

void TestOneStep::othersSeeNothingBeforeTheEnd()
{
    QStringList seen = {text("not looked")};
    QVERIFY(db->inOneStep([&] {
        const bool added = add(text("a"));
        seen = seenByOthers();
        return added;
    }));
    QCOMPARE(seen, QStringList());
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::aFailingCommandIsDoneAgainPlainly()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVector<bool> quiet;
    QVector<int> boxes;
    QVERIFY(!db->inOneStep([&] {
        quiet.append(db->isQuiet());
        const bool added = add(text("a"));
        const bool dropped = db->dropTable(text("manca"));
        boxes.append(responder.boxes().size());
        return added && dropped;
    }));
    QCOMPARE(quiet, QVector<bool>({true, false}));
    QCOMPARE(boxes, QVector<int>({0, 1}));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile cancellare la tabella "
                                                     "manca!\nno such table: manca Unable to "
                                                     "execute statement")));
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::theWritesThatSucceedOnTheSecondRunStay()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(db->inOneStep([this] {
        add(text("a"));
        db->dropTable(text("manca"));
        add(text("b"));
        return true;
    }));
    QCOMPARE(responder.boxes().size(), 1);
    QCOMPARE(Sql::table(Books), QStringList({text("1|'a'"), text("2|'b'")}));
}

void TestOneStep::boxesComeWhileNoTransactionIsOpen()
{
    ModalResponder responder;
    QStringList seen;
    responder.answer(QMessageBox::Ok, [&](const QMessageBox &) { seen = seenByOthers(); });
    QVERIFY(db->inOneStep([this] {
        add(text("a"));
        db->clearTable(text("manca"));
        return true;
    }));
    QCOMPARE(seen, QStringList(text("a")));
}

void TestOneStep::aResultOfFalseIsDoneAgain()
{
    const ModalResponder responder;
    int runs = 0;
    QVERIFY(db->inOneStep([&] {
        add(text("a"));
        return ++runs == 2;
    }));
    QCOMPARE(runs, 2);
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::aNotedFailureIsDoneAgain()
{
    const ModalResponder responder;
    int runs = 0;
    QVERIFY(db->inOneStep([&] {
        add(text("a"));
        if (db->isQuiet()) {
            db->noteFailure();
        }
        ++runs;
        return true;
    }));
    QCOMPARE(runs, 2);
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::failuresOfSilentWritesAreDoneAgain_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("field");
    QTest::newRow("a field that is not there") << 1 << text("altro");
    QTest::newRow("a change of no row") << 9 << Title;
}

void TestOneStep::failuresOfSilentWritesAreDoneAgain()
{
    QFETCH(int, id);
    QFETCH(QString, field);
    const ModalResponder responder;
    int runs = 0;
    QVERIFY(db->inOneStep([&] {
        ++runs;
        add(text("a"));
        db->updateWhole(Books, id, {{field, text("x")}});
        return true;
    }));
    QCOMPARE(runs, 2);
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::nothingIsWrittenAfterAFailureOfTheTry()
{
    // What would be written there stood beside the step once SQLite has rolled it back.
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVector<int> ids;
    db->inOneStep([&] {
        ids.append(db->insertWhole(Books, false, 0, {}));
        db->clearTable(text("manca"));
        ids.append(db->insertWhole(Books, false, 0, {}));
        ids.append(db->rowCount(Books));
        return true;
    });
    QCOMPARE(ids, QVector<int>({1, -1, 1, 1, 2, 2}));
}

void TestOneStep::aFailingCommitIsDoneAgain()
{
    Sql::run(text("PRAGMA foreign_keys = ON"));
    Sql::run(text("CREATE TABLE figli (RINTEGERFORMAT_Id integer primary key,padre text REFERENCES "
                  "libri (RINTEGERFORMAT_Id) DEFERRABLE INITIALLY DEFERRED)"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    bool addedQuietly = false;
    QVERIFY(!db->inOneStep([&] {
        add(text("a"));
        const bool added = db->insertRecord(text("figli"), false, 0) > 0;
        addedQuietly = addedQuietly || added;
        return added;
    }));
    QVERIFY(addedQuietly);
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile aggiungere un elemento alla tabella figli!\n"
                              "FOREIGN KEY constraint failed Unable to fetch row")));
    QCOMPARE(seenByOthers(), QStringList(text("a")));
    QCOMPARE(Sql::table(text("figli")), QStringList());
}

void TestOneStep::aFullDiskIsDoneAgain()
{
    Sql::run(text("PRAGMA max_page_count = 10"));
    const QString large(15000, QLatin1Char('x'));
    const QString small = text("b");
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(db->inOneStep([&] {
        add(large);
        add(large);
        add(large);
        add(small);
        return true;
    }));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile aggiornare il Record!\n"
                              "database or disk is full Unable to fetch row")));
    // The plain run keeps what fits; the record that does not keeps its zero.
    QCOMPARE(seenByOthers(), QStringList({large, large, text("0"), small}));
}

void TestOneStep::theQuestionAboutAnIdComesInTheSecondRun()
{
    QVERIFY(add(text("a")));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    int runs = 0;
    QVERIFY(db->inOneStep([&] {
        ++runs;
        return db->updateField(Books, 1, IdColumn, text("5"));
    }));
    QCOMPARE(runs, 2);
    QCOMPARE(Sql::table(Books), QStringList(text("5|'a'")));
}

void TestOneStep::nestedCommandsSimplyRun()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVector<bool> innerQuiet;
    QVERIFY(!db->inOneStep([&] {
        const bool first = db->inOneStep([&] {
            innerQuiet.append(db->isQuiet());
            return add(text("a"));
        });
        return db->dropTable(text("manca")) && first;
    }));
    QCOMPARE(innerQuiet, QVector<bool>({true, false}));
    QCOMPARE(responder.boxes().size(), 1);
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::withoutADatabaseTheCommandsRunOnce()
{
    db.reset();
    DataBase closed;
    QVector<bool> quiet;
    QVERIFY(closed.inOneStep([&] {
        quiet.append(closed.isQuiet());
        return true;
    }));
    QCOMPARE(quiet, QVector<bool>({false}));
}

void TestOneStep::insideAnotherTransactionTheCommandsRunOnce()
{
    QVERIFY(Sql::run(text("BEGIN")));
    QVector<bool> quiet;
    QVERIFY(db->inOneStep([&] {
        quiet.append(db->isQuiet());
        return add(text("a"));
    }));
    QCOMPARE(quiet, QVector<bool>({false}));
    QVERIFY(Sql::run(text("COMMIT")));
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::theNextStepStartsAfresh()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->inOneStep([this] { return db->dropTable(text("manca")); }));
    int runs = 0;
    QVERIFY(db->inOneStep([&] {
        ++runs;
        return add(text("a"));
    }));
    QCOMPARE(runs, 1);
    QCOMPARE(seenByOthers(), QStringList(text("a")));
}

void TestOneStep::tablesAreMadeAndRemovedInOneStep()
{
    const ModalResponder responder;
    QVERIFY(add(text("a")));
    QVERIFY(db->inOneStep([this] {
        return db->createTable(text("T"), {{Title, text("text")}}) &&
               db->addColumn(text("T"), text("NSTRINGFORMAT_b"), text("text")) &&
               db->insertWhole(text("T"), false, 0, {{Title, text("x")}}) == 1 &&
               db->titleExists(Books, text("a")) && db->dropTable(Books);
    }));
    QCOMPARE(db->tables(), QStringList(text("T")));
    QCOMPARE(Sql::table(text("T")), QStringList(text("1|'x'|'0'")));
}

void TestOneStep::severalRecordsAreRemovedTogether()
{
    const ModalResponder responder;
    for (const char *const title : {"a", "b", "c", "d"}) {
        add(text(title));
    }
    QVERIFY(db->inOneStep([&] { return db->deleteRecords(Books, {1, 3, 9}); }));
    QCOMPARE(seenByOthers(), QStringList({text("b"), text("d")}));
    QVERIFY(db->deleteRecords(Books, {2}));
    QVERIFY(db->inOneStep([&] { return db->deleteRecords(Books, {}); }));
    QCOMPARE(seenByOthers(), QStringList(text("d")));
}

void TestOneStep::eachRecordThatStaysIsTold()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    for (const char *const title : {"a", "b", "c"}) {
        add(text(title));
    }
    QVERIFY(Sql::run(text("CREATE TRIGGER keeps BEFORE DELETE ON libri WHEN "
                          "old.RINTEGERFORMAT_Id = 2 BEGIN SELECT RAISE(ABORT,'kept'); END")));
    QVERIFY(!db->inOneStep([&] { return db->deleteRecords(Books, {1, 2, 3}); }));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile cancellare il record!\n"
                                                     "kept Unable to fetch row")));
    QCOMPARE(seenByOthers(), QStringList(text("b")));
}

void TestOneStep::aWalkMayStandOpen()
{
    QVERIFY(add(text("a")));
    QVERIFY(add(text("b")));
    const ModalResponder responder;
    RowPass rows(Books);
    QVERIFY(rows.next());
    QVERIFY(db->inOneStep([this] { return add(text("c")); }));
    QCOMPARE(db->rowCount(Books), 3);
}

void TestOneStep::aTransactionRollsBackAtTheEndOfItsScope()
{
    {
        const Transaction transaction(QSqlDatabase::database());
        QVERIFY(transaction.isOpen());
        QVERIFY(add(text("a")));
    }
    QCOMPARE(seenByOthers(), QStringList());
    QVERIFY(Transaction(QSqlDatabase::database()).isOpen());
}

void TestOneStep::aTransactionIsCommittedOnce()
{
    Transaction transaction(QSqlDatabase::database());
    QVERIFY(add(text("a")));
    QVERIFY(transaction.commit());
    QVERIFY(!transaction.isOpen());
    QVERIFY(!transaction.commit());
    QCOMPARE(seenByOthers(), QStringList(text("a")));
    const Transaction outer(QSqlDatabase::database());
    QVERIFY(!Transaction(QSqlDatabase::database()).isOpen());
}

void TestOneStep::aTransactionWithoutADatabaseIsNotOpen()
{
    db.reset();
    Transaction transaction{QSqlDatabase()};
    QVERIFY(!transaction.isOpen());
    QVERIFY(!transaction.commit());
}

QTEST_MAIN(TestOneStep)
#include "storage_onestep.moc"
