// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of adding, changing and removing records.
#include "storage/BulkInsert.h"
#include "storage/DataBase.h"
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
const QString Year = QStringLiteral("NINTEGERFORMAT_Anno");
const QString Weight = QStringLiteral("NREALFORMAT_Peso");
const QString Price = QStringLiteral("NMONEYFORMAT_Prezzo");
const QString Author = QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Nome");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString forbidden(const QString &name)
{
    return text("Il nome '") + name +
           text("' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
}

QString insertFailed(const QString &table, const QString &reason)
{
    return text("ERRORE: Impossibile aggiungere un elemento alla tabella ") + table + text("!\n") +
           reason;
}

/// Unquoted, it would turn an update of this table into one of all books.
const QString BendingTable = QStringLiteral("libri SET NINTEGERFORMAT_Anno = '7' --");

const QString IdsUsedUp = QStringLiteral("Il numero più grande possibile è già usato come Id.");

void addBook(const QString &id)
{
    Sql::run(text("INSERT INTO libri (RINTEGERFORMAT_Id) VALUES (") + id + text(")"));
}

} // namespace

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void bulkInsertTakesIds();
    void bulkInsertWhenNoIdIsLeft();
    void bulkInsertWritesWholeRecords();
    void bulkInsertOfOtherTables_data();
    void bulkInsertOfOtherTables();

    void insertRecordHoldsZeros();
    void newIds_data();
    void newIds();
    void newIdsOfTextsAreComparedAsNumbers();
    void noIdAfterTheLargest();
    void insertRecordFails_data();
    void insertRecordFails();
    void insertRecordReportsAReadThatFails();

    void updateField_data();
    void updateField();
    void updateFieldKeepsOddTexts_data();
    void updateFieldKeepsOddTexts();
    void updateFieldChangesOneRecordOnly();
    void updateFieldOfALabelLikeANumber();
    void updateFieldFails_data();
    void updateFieldFails();
    void updateFieldReportsTheDriversText();
    void updateFieldOfAnUnreadableDatabase();
    void changingTheIdAsksFirst();
    void changingTheIdIsDeclined_data();
    void changingTheIdIsDeclined();
    void changingTheIdToItselfAsksNothing();
    void changingTheIdToATakenOneFails();

    void deleteRecord();
    void deleteRecordFails_data();
    void deleteRecordFails();

    void insertWholeComposesAsUpdateFieldWould();
    void insertWholeEqualsInsertAndUpdates();
    void insertWholeFailsSilently_data();
    void insertWholeFailsSilently();
    void updateWhole();
    void updateWholeOfNothingSucceeds();
    void updateWholeFailsSilently_data();
    void updateWholeFailsSilently();

private:
    QStringList books() const { return Sql::table(Books); }

    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<DataBase> db;
};

void TestRecords::init()
{
    workspace = std::make_unique<Workspace>();
    db = std::make_unique<DataBase>();
    QVERIFY(db->openDatabase(workspace->path(text("collezione.db"))));
    QVERIFY(db->createTable(Books, {{Title, text("text")},
                                    {Year, text("text")},
                                    {Weight, text("text")},
                                    {Price, text("text")},
                                    {Author, text("Integer")}}));
}

void TestRecords::cleanup()
{
    db.reset();
    workspace.reset();
}

void TestRecords::insertRecordHoldsZeros()
{
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    QCOMPARE(books(), QStringList(text("1|'0'|'0'|'0'|'0'|0")));
}

void TestRecords::newIds_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<bool>("keepId");
    QTest::addColumn<int>("wished");
    QTest::addColumn<int>("id");
    const QStringList none;
    const QStringList some = {text("3"), text("10"), text("9")};
    QTest::newRow("an empty table begins with 1") << none << false << 0 << 1;
    QTest::newRow("a free Id is kept") << none << true << 7 << 7;
    QTest::newRow("a free Id below the largest is kept") << some << true << 5 << 5;
    QTest::newRow("a taken Id becomes the largest + 1") << some << true << 9 << 11;
    QTest::newRow("an Id that is not to be kept is ignored") << some << false << 5 << 11;
    QTest::newRow("a wished Id of 0 is none") << some << true << 0 << 11;
    QTest::newRow("a wished Id below zero is none") << some << true << -5 << 11;
    QTest::newRow("the largest possible Id can be kept")
        << some << true << 2147483647 << 2147483647;
    QTest::newRow("Ids below zero do not count") << QStringList{text("-8")} << false << 0 << 1;
    QTest::newRow("the last Id is given")
        << QStringList{text("2147483646")} << false << 0 << 2147483647;
    QTest::newRow("an Id of 64 bits is no taken one of 32")
        << QStringList{text("4294967301")} << true << 5 << 5;
}

void TestRecords::newIds()
{
    QFETCH(QStringList, taken);
    QFETCH(bool, keepId);
    QFETCH(int, wished);
    QFETCH(int, id);
    const ModalResponder responder;
    for (const QString &other : qAsConst(taken)) {
        addBook(other);
    }
    QCOMPARE(db->insertRecord(Books, keepId, wished), id);
    QVERIFY(db->idExists(Books, id));
    QVERIFY(db->deleteRecord(Books, id));
    QCOMPARE(db->insertWhole(Books, keepId, wished, {}), id);
    QVERIFY(db->idExists(Books, id));
    QCOMPARE(db->rowCount(Books), taken.size() + 1);
}

void TestRecords::newIdsOfTextsAreComparedAsNumbers()
{
    // In a table of another program the Id need not be a number key.
    Sql::run(text("CREATE TABLE altra (RINTEGERFORMAT_Id text, a text)"));
    Sql::run(text("INSERT INTO altra VALUES ('9','x'),('10','y')"));
    QCOMPARE(db->insertWhole(text("altra"), false, 0, {}), 11);
    QCOMPARE(db->insertRecord(text("altra"), false, 0), 12);
}

void TestRecords::noIdAfterTheLargest()
{
    for (const char *largest : {"2147483647", "9999999999"}) {
        addBook(text(largest));
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        QCOMPARE(db->insertWhole(Books, false, 0, {}), -1);
        QCOMPARE(db->insertRecord(Books, false, 0), -1);
        QCOMPARE(responder.takeTexts(), QStringList(insertFailed(Books, IdsUsedUp)));
    }
    QCOMPARE(db->rowCount(Books), 2);
}

void TestRecords::insertRecordFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a missing table")
        << text("manca") << text("no such table: manca Unable to execute statement");
    QTest::newRow("an odd name of a table") << text("le cose") << forbidden(text("le cose"));
    QTest::newRow("a name that would bend the statement")
        << text("libri(RINTEGERFORMAT_Id)--") << forbidden(text("libri(RINTEGERFORMAT_Id)--"));
    QTest::newRow("an odd name of a column") << text("colonne") << forbidden(text("a b"));
    QTest::newRow("a table without the Id column")
        << text("senza") << text("La tabella non ha la colonna 'RINTEGERFORMAT_Id'.");
    QTest::newRow("a rule of the table")
        << text("regole") << text("CHECK constraint failed: a = 1 Unable to fetch row");
}

void TestRecords::insertRecordFails()
{
    QFETCH(QString, table);
    QFETCH(QString, reason);
    const QStringList tables = {text("\"le cose\""), text("colonne"), text("senza"),
                                text("regole")};
    Sql::run(text("CREATE TABLE \"le cose\" (RINTEGERFORMAT_Id integer primary key)"));
    Sql::run(text("CREATE TABLE colonne (RINTEGERFORMAT_Id integer primary key, \"a b\" text)"));
    Sql::run(text("CREATE TABLE senza (a text)"));
    Sql::run(text("CREATE TABLE regole (RINTEGERFORMAT_Id integer primary key,a CHECK (a = 1))"));
    ModalResponder responder;
    for (const bool keepId : {false, true}) {
        responder.answer(QMessageBox::Ok);
        QCOMPARE(db->insertWhole(table, keepId, 5, {}), -1);
        QCOMPARE(responder.takeTexts(), QStringList());
        QCOMPARE(db->insertRecord(table, keepId, 5), -1);
        QCOMPARE(responder.takeTexts(), QStringList(insertFailed(table, reason)));
    }
    for (const QString &made : tables) {
        QCOMPARE(Sql::table(made), QStringList());
    }
}

void TestRecords::insertRecordReportsAReadThatFails()
{
    // A table that can be read in part only must not look like a shorter one.
    Sql::run(text("CREATE VIEW vista AS SELECT 1 AS RINTEGERFORMAT_Id UNION ALL "
                  "SELECT abs(-9223372036854775807 - 1)"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QCOMPARE(db->insertWhole(text("vista"), false, 0, {}), -1);
    QCOMPARE(db->insertRecord(text("vista"), false, 0), -1);
    QCOMPARE(
        responder.takeTexts(),
        QStringList(insertFailed(text("vista"), text("integer overflow Unable to fetch row"))));
}

void TestRecords::updateField_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("row");
    const auto row = [](const char *claim, const QString &field, const char *value,
                        const char *expected) {
        QTest::newRow(claim) << field << text(value) << text(expected);
    };
    row("a text", Title, "Il primo", "2|'Il primo'|'0'|'0'|'0'|0");
    row("a text with doubled quotes", Title, "l''uva e l''''altra",
        "2|'l'uva e l''altra'|'0'|'0'|'0'|0");
    row("an empty text", Title, "", "2|''|'0'|'0'|'0'|0");
    row("a whole number", Year, "1984", "2|'0'|'1984'|'0'|'0'|0");
    row("a text for a whole number", Year, "abc", "2|'0'|'0'|'0'|'0'|0");
    row("a real number", Weight, "2.5", "2|'0'|'0'|'2.500000'|'0'|0");
    row("an empty real number", Weight, "", "2|'0'|'0'|'0.000000'|'0'|0");
    row("an amount is a text", Price, "3,50 circa", "2|'0'|'0'|'0'|'3,50 circa'|0");
    row("a reference turns into a number", Author, "12", "2|'0'|'0'|'0'|'0'|12");
    row("a name in another letter case is the same field", Title.toLower(), "x",
        "2|'x'|'0'|'0'|'0'|0");
}

void TestRecords::updateField()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, row);
    const ModalResponder responder;
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    QCOMPARE(db->insertRecord(Books, false, 0), 2);
    QVERIFY(db->updateField(Books, 2, field, value));
    QCOMPARE(books(), QStringList({text("1|'0'|'0'|'0'|'0'|0"), row}));
}

void TestRecords::updateFieldKeepsOddTexts_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("stored");
    const auto same = [](const char *claim, const QString &value) {
        QTest::newRow(claim) << value << value;
    };
    same("percent signs", text("100% %s %n %d"));
    same("signs of placeholders", text(":name ? @a $b ?1"));
    same("signs of comments", text("a -- b /* c */ ; DROP TABLE libri"));
    same("double quotes", text("\"detto\""));
    same("back slashes", text("a\\'").remove(QLatin1Char('\'')));
    same("line breaks and tabs", text("uno\ndue\r\n\ttre"));
    same("signs beyond ASCII", text("però €, 漢字, 😀"));
    same("100 KB", QString(100 * 1024, QLatin1Char('x')));
    QTest::newRow("a NUL character cuts the text")
        << text("prima") + QChar(0) + text("dopo") << text("prima");
    QTest::newRow("quotes that are doubled cannot bend the statement")
        << text("x'' WHERE 1 -- ") << text("x' WHERE 1 -- ");
}

void TestRecords::updateFieldKeepsOddTexts()
{
    QFETCH(QString, value);
    QFETCH(QString, stored);
    const ModalResponder responder;
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    QVERIFY(db->updateField(Books, 1, Title, value));
    QCOMPARE(db->fieldValueById(Books, 1, Title).toString(), stored);
    QCOMPARE(db->insertWhole(Books, false, 0, {{Title, value}}), 2);
    QCOMPARE(db->fieldValueById(Books, 2, Title).toString(), stored);
    QVERIFY(db->updateWhole(Books, 1, {{Price, value}}));
    QCOMPARE(db->fieldValueById(Books, 1, Price).toString(), stored);
}

void TestRecords::updateFieldChangesOneRecordOnly()
{
    ModalResponder responder;
    for (int id = 1; id <= 200; ++id) {
        addBook(QString::number(id));
    }
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->updateField(Books, 1, Title, text("x' WHERE 1 -- ")));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile aggiornare il Record!\n"
                                                     "Il valore contiene un apice non "
                                                     "raddoppiato.")));
    QCOMPARE(Sql::lines(text("SELECT count(*) FROM libri WHERE RSTRINGFORMAT_Titolo NOT NULL")),
             QStringList(text("0")));
}

void TestRecords::updateFieldOfALabelLikeANumber()
{
    // Deliberate: a label that holds the word REAL makes a text column a number.
    const QString field = text("NSTRINGFORMAT_REALE");
    QVERIFY(db->createTable(text("T"), {{field, text("text")}}));
    QCOMPARE(db->insertRecord(text("T"), false, 0), 1);
    QVERIFY(db->updateField(text("T"), 1, field, text("ciao")));
    QCOMPARE(Sql::table(text("T")), QStringList(text("1|'0.000000'")));
}

void TestRecords::updateFieldFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("message");
    QTest::newRow("a missing table is named")
        << text("manca%s") << 1 << Title << text("ERRORE: La Tabella 'manca%s' non esiste!\n");
    QTest::newRow("a table's letter case matters")
        << text("LIBRI") << 1 << Title << text("ERRORE: La Tabella 'LIBRI' non esiste!\n");
    QTest::newRow("the table is tested before the Id")
        << text("manca") << 9 << Title << text("ERRORE: La Tabella 'manca' non esiste!\n");
    QTest::newRow("a missing Id is named")
        << Books << 9 << Title << text("ERRORE: L'Id 9 non è presente nella Tabella!\n");
    QTest::newRow("the Id is tested before the field")
        << Books << -9 << text("altro") << text("ERRORE: L'Id -9 non è presente nella Tabella!\n");
    QTest::newRow("a missing field is named")
        << Books << 1 << text("altro") << text("ERRORE: Il campo 'altro' non esiste!\n");
    QTest::newRow("a field that would bend the statement is missing")
        << Books << 1 << text("RSTRINGFORMAT_Titolo = 1,NINTEGERFORMAT_Anno")
        << text("ERRORE: Il campo 'RSTRINGFORMAT_Titolo = 1,NINTEGERFORMAT_Anno' non esiste!\n");
    QTest::newRow("a field that is there with a suffix only")
        << text("colonne") << 1 << text("NSTRINGFORMAT_c")
        << text("ERRORE: Il campo 'NSTRINGFORMAT_c' non esiste!\n");
    QTest::newRow("the row number of SQLite is no field")
        << Books << 1 << text("rowid") << text("ERRORE: Il campo 'rowid' non esiste!\n");
    QTest::newRow("an odd name of a table")
        << text("le cose") << 1 << text("a")
        << text("ERRORE: Impossibile aggiornare il Record!\n") + forbidden(text("le cose"));
    QTest::newRow("an odd name of a table is refused before the question about the Id")
        << text("le cose") << 1 << IdColumn
        << text("ERRORE: Impossibile aggiornare il Record!\n") + forbidden(text("le cose"));
    QTest::newRow("an odd name of a column")
        << text("colonne") << 1 << text("a b")
        << text("ERRORE: Impossibile aggiornare il Record!\n") + forbidden(text("a b"));
}

void TestRecords::updateFieldFails()
{
    QFETCH(QString, table);
    QFETCH(int, id);
    QFETCH(QString, field);
    QFETCH(QString, message);
    Sql::run(text("CREATE TABLE \"le cose\" (RINTEGERFORMAT_Id integer primary key, a text)"));
    Sql::run(text("CREATE TABLE colonne (RINTEGERFORMAT_Id integer primary key, \"a b\" text, "
                  "NSTRINGFORMAT_c_XMLTYX_2 text)"));
    Sql::run(text("INSERT INTO \"le cose\" VALUES (1,'x')"));
    Sql::run(text("INSERT INTO colonne VALUES (1,'x','y')"));
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->updateField(table, id, field, text("5")));
    QCOMPARE(responder.takeTexts(), QStringList(message));
    QCOMPARE(books(), QStringList(text("1|'0'|'0'|'0'|'0'|0")));
    QCOMPARE(Sql::table(text("\"le cose\"")), QStringList(text("1|'x'")));
    QCOMPARE(Sql::table(text("colonne")), QStringList(text("1|'x'|'y'")));
}

void TestRecords::updateFieldReportsTheDriversText()
{
    Sql::run(text("CREATE TABLE regole (RINTEGERFORMAT_Id integer primary key,a CHECK (a < 9))"));
    QCOMPARE(db->insertRecord(text("regole"), false, 0), 1);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->updateField(text("regole"), 1, text("a"), text("x")));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile aggiornare il Record!\n"
                              "CHECK constraint failed: a < 9 Unable to fetch row")));
}

void TestRecords::updateFieldOfAnUnreadableDatabase()
{
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    workspace->write(text("collezione.db"), QByteArray(8192, 'x'));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->updateField(Books, 1, Title, text("Zeno")));
    // Not that there is no such table.
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile aggiornare il Record!\n"
                              "file is not a database Unable to fetch row")));
}

void TestRecords::changingTheIdAsksFirst()
{
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    QVERIFY(db->updateField(Books, 1, IdColumn, text("8")));
    QCOMPARE(books(), QStringList(text("8|'0'|'0'|'0'|'0'|0")));
    const ModalResponder::Box box = responder.boxes().constFirst();
    QCOMPARE(box.text, text("Vuoi veramente aggiornare l'Id 1 con il nuovo Id 8? Questa operazione "
                            "può essere molto dannosa!"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.title, text("DB Administration Tool"));
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.escapeButton, QMessageBox::No);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

void TestRecords::changingTheIdIsDeclined_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("by No") << 0;
    QTest::newRow("by Esc") << int(Qt::Key_Escape);
    QTest::newRow("by Return") << int(Qt::Key_Return);
}

void TestRecords::changingTheIdIsDeclined()
{
    QFETCH(int, key);
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    ModalResponder responder;
    if (key == 0) {
        responder.answer(QMessageBox::No);
    } else if (key == Qt::Key_Escape) {
        responder.pressEscape();
    } else {
        responder.pressReturn();
    }
    QVERIFY(db->updateField(Books, 1, IdColumn, text("8")));
    QCOMPARE(books(), QStringList(text("1|'0'|'0'|'0'|'0'|0")));
    QCOMPARE(responder.boxes().size(), 1);
}

void TestRecords::changingTheIdToItselfAsksNothing()
{
    QCOMPARE(db->insertRecord(Books, true, 4), 4);
    const ModalResponder responder;
    QVERIFY(db->updateField(Books, 4, IdColumn, text("4")));
    QCOMPARE(books(), QStringList(text("4|'0'|'0'|'0'|'0'|0")));
}

void TestRecords::changingTheIdToATakenOneFails()
{
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    QCOMPARE(db->insertRecord(Books, false, 0), 2);
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->updateField(Books, 1, IdColumn, text("2")));
    QCOMPARE(responder.takeTexts().last(),
             text("ERRORE: Impossibile aggiornare il Record!\nUNIQUE constraint failed: "
                  "libri.RINTEGERFORMAT_Id Unable to fetch row"));
    QCOMPARE(db->rowCount(Books), 2);
}

void TestRecords::deleteRecord()
{
    for (const char *id : {"1", "2", "3"}) {
        addBook(text(id));
    }
    const ModalResponder responder;
    QVERIFY(db->deleteRecord(Books, 2));
    QVERIFY(db->deleteRecord(Books, 9));
    QCOMPARE(Sql::lines(text("SELECT RINTEGERFORMAT_Id FROM libri")),
             QStringList({text("1"), text("3")}));
}

void TestRecords::deleteRecordFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a missing table")
        << text("manca") << text("no such table: manca Unable to execute statement");
    QTest::newRow("a name that would bend the statement")
        << text("libri WHERE 1 --") << forbidden(text("libri WHERE 1 --"));
    QTest::newRow("an odd name of a table") << text("le cose") << forbidden(text("le cose"));
}

void TestRecords::deleteRecordFails()
{
    QFETCH(QString, table);
    QFETCH(QString, reason);
    Sql::run(text("CREATE TABLE \"le cose\" (RINTEGERFORMAT_Id integer primary key)"));
    Sql::run(text("INSERT INTO \"le cose\" VALUES (1)"));
    addBook(text("1"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->deleteRecord(table, 1));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile cancellare il record!\n") + reason));
    QCOMPARE(db->rowCount(Books), 1);
    QCOMPARE(db->rowCount(text("le cose")), 1);
}

void TestRecords::insertWholeComposesAsUpdateFieldWould()
{
    const FieldPairs values = {
        {Price, text("3,50")}, {Title, text("l''uva")}, {Year, text("abc")}, {Weight, text("1.5")}};
    QCOMPARE(db->insertWhole(Books, true, 6, values), 6);
    QCOMPARE(books(), QStringList(text("6|'l'uva'|'0'|'1.500000'|'3,50'|0")));
    QCOMPARE(db->insertWhole(Books, false, 0, {{IdColumn, text("7")}, {Author, text("6")}}), 7);
    QCOMPARE(books().last(), text("7|'0'|'0'|'0'|'0'|6"));
}

void TestRecords::insertWholeEqualsInsertAndUpdates()
{
    const FieldPairs values = {{Title, {}},           {Year, {}},          {Weight, {}},
                               {Price, {}},           {Author, text("x")}, {Title, text("1e3")},
                               {Price, text(" 0012")}};
    const int whole = db->insertWhole(Books, false, 0, values);
    const int plain = db->insertRecord(Books, false, 0);
    for (const FieldPair &pair : values) {
        QVERIFY(db->updateField(Books, plain, pair.first, pair.second));
    }
    const QStringList rows = books();
    QCOMPARE(rows.at(0).section(QLatin1Char('|'), 1), rows.at(1).section(QLatin1Char('|'), 1));
    QCOMPARE(whole + 1, plain);
}

void TestRecords::insertWholeFailsSilently_data()
{
    QTest::addColumn<FieldPairs>("values");
    QTest::newRow("a field unknown to the table") << FieldPairs{{text("altro"), text("x")}};
    QTest::newRow("a field in another letter case") << FieldPairs{{Title.toLower(), text("x")}};
    QTest::newRow("a value with a single quote") << FieldPairs{{Title, text("x',9,9,9,9)--")}};
    QTest::newRow("another Id than the chosen one") << FieldPairs{{IdColumn, text("9")}};
}

void TestRecords::insertWholeFailsSilently()
{
    QFETCH(FieldPairs, values);
    const ModalResponder responder;
    QCOMPARE(db->insertWhole(Books, false, 0, values), -1);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(books(), QStringList());
}

void TestRecords::updateWhole()
{
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    QCOMPARE(db->insertRecord(Books, false, 0), 2);
    QVERIFY(db->updateWhole(
        Books, 2,
        {{IdColumn, text("2")}, {Weight, {}}, {Title, text("l''uva")}, {Year, text("12")}}));
    QCOMPARE(books(),
             QStringList({text("1|'0'|'0'|'0'|'0'|0"), text("2|'l'uva'|'12'|'0.000000'|'0'|0")}));
}

void TestRecords::updateWholeOfNothingSucceeds()
{
    const ModalResponder responder;
    QVERIFY(db->updateWhole(Books, 9, {}));
    QVERIFY(db->updateWhole(text("manca"), 9, {}));
}

void TestRecords::updateWholeFailsSilently_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("id");
    QTest::addColumn<FieldPairs>("values");
    const FieldPair good = {Year, text("5")};
    QTest::newRow("a missing table") << text("manca") << 1 << FieldPairs{good};
    QTest::newRow("an odd name of a table") << text("libri AS l") << 1 << FieldPairs{good};
    QTest::newRow("a table whose name would bend the statement")
        << BendingTable << 1 << FieldPairs{good};
    QTest::newRow("an Id that is not there") << Books << 9 << FieldPairs{good};
    QTest::newRow("a field unknown to the table")
        << Books << 1 << FieldPairs{good, {text("altro"), text("x")}};
    QTest::newRow("the row number of SQLite")
        << Books << 1 << FieldPairs{good, {text("rowid"), text("7")}};
    QTest::newRow("a value with a single quote")
        << Books << 1 << FieldPairs{good, {Title, text("x' WHERE 1 -- ")}};
    QTest::newRow("another Id") << Books << 1 << FieldPairs{good, {IdColumn, text("7")}};
}

void TestRecords::updateWholeFailsSilently()
{
    QFETCH(QString, table);
    QFETCH(int, id);
    QFETCH(FieldPairs, values);
    Sql::run(text("CREATE TABLE \"") + BendingTable +
             text("\" (RINTEGERFORMAT_Id integer primary key,NINTEGERFORMAT_Anno text)"));
    QCOMPARE(db->insertRecord(Books, false, 0), 1);
    const ModalResponder responder;
    QVERIFY(!db->updateWhole(table, id, values));
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(books(), QStringList(text("1|'0'|'0'|'0'|'0'|0")));
}

void TestRecords::bulkInsertTakesIds()
{
    addBook(text("3"));
    addBook(text("7"));
    addBook(text("-4"));
    BulkInsert bulk(*db, Books, db->fieldNames(Books));
    QVERIFY(bulk.isPossible());
    QCOMPARE(bulk.takeId(5), 5);
    QCOMPARE(bulk.takeId(5), 0);
    QCOMPARE(bulk.takeId(7), 0);
    QCOMPARE(bulk.takeId(0), 8);
    QCOMPARE(bulk.takeId(20), 20);
    QCOMPARE(bulk.takeId(-4), 21);
    // Nothing of that was written.
    bulk.readIds();
    QCOMPARE(bulk.takeId(5), 5);
    QCOMPARE(bulk.takeId(0), 8);
}

void TestRecords::bulkInsertWhenNoIdIsLeft()
{
    addBook(text("4294967296"));
    BulkInsert bulk(*db, Books, db->fieldNames(Books));
    QCOMPARE(bulk.takeId(0), -1);
    QCOMPARE(bulk.takeId(2147483647), 2147483647);
    QCOMPARE(bulk.takeId(2147483647), 0);
    QCOMPARE(bulk.takeId(0), -1);
}

void TestRecords::bulkInsertWritesWholeRecords()
{
    const QStringList columns = db->fieldNames(Books);
    FieldPairs values;
    for (const QString &column : columns) {
        values.append({column, text("9")});
    }
    BulkInsert bulk(*db, Books, columns);
    const ModalResponder responder;
    QVERIFY(bulk.insert(4, values));
    QVERIFY(!bulk.insert(4, values));
    values[1].second = text("l'uva");
    QVERIFY(!bulk.insert(5, values));
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(books(), QStringList(text("4|'9'|'9'|'9.000000'|'9'|9")));
}

void TestRecords::bulkInsertOfOtherTables_data()
{
    QTest::addColumn<QString>("create");
    QTest::newRow("the Id stands elsewhere")
        << text("CREATE TABLE f (a text,RINTEGERFORMAT_Id integer primary key)");
    QTest::newRow("no Id") << text("CREATE TABLE f (a text)");
    QTest::newRow("Ids that are texts")
        << text("CREATE TABLE f AS SELECT 'x' AS RINTEGERFORMAT_Id,'y' AS a");
    QTest::newRow("a name that SQL would misread")
        << text("CREATE TABLE f (RINTEGERFORMAT_Id integer primary key,\"a b\" text)");
}

void TestRecords::bulkInsertOfOtherTables()
{
    QFETCH(QString, create);
    Sql::run(create);
    const BulkInsert bulk(*db, text("f"), db->fieldNames(text("f")));
    QVERIFY(!bulk.isPossible());
    QVERIFY(!BulkInsert(*db, text("manca"), {}).isPossible());
}

QTEST_MAIN(TestRecords)
#include "storage_records.moc"
