// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the look-ups in records, of tables and of their columns.
#include "storage/DataBase.h"

#include "model/sqlnames.h"
#include "storage/sqltext.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"

#include <QSqlField>
#include <QtTest>

#include <memory>

namespace
{

const QString Books = QStringLiteral("libri");
const QString IdColumn = QStringLiteral("RINTEGERFORMAT_Id");
const QString Title = QStringLiteral("RSTRINGFORMAT_Titolo");
const QString Note = QStringLiteral("NSTRINGFORMAT_Nota");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList valuesOf(const QSqlRecord &record)
{
    QStringList values;
    for (int position = 0; position < record.count(); ++position) {
        values.append(record.isNull(position) ? text("NULL") : record.value(position).toString());
    }
    return values;
}

void addBook(int id, const QString &title, const QString &note)
{
    Sql::run(QStringLiteral("INSERT INTO libri VALUES (%1,%2,%3)").arg(id).arg(title, note));
}

} // namespace

class TestDataBase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tablesAreThoseOfTheUser();
    void tableExistsComparesExactly();
    void rowCount();
    void recordById_data();
    void recordById();
    void recordByIdTellsIdsOf64BitsApart();
    void recordByIdAlsoTestsTheFirstColumn();
    void fieldValueById_data();
    void fieldValueById();
    void recordAt_data();
    void recordAt();
    void recordValue();
    void findRecord_data();
    void findRecord();
    void findRecordComparesValues();
    void fieldNames();
    void hasFieldContaining_data();
    void hasFieldContaining();
    void countFields_data();
    void countFields();
    void titleExists_data();
    void titleExists();
    void titleExistsForOddTitles_data();
    void titleExistsForOddTitles();
    void titleExistsReadsTheSecondColumnOnly();
    void maxAndMinId_data();
    void maxAndMinId();
    void lookUpsOfAMissingTableAreEmptyAndSilent();
    void lookUpsWithoutADatabaseAreEmptyAndSilent();
    void lookUpsLeaveNothingInTheWayOfARemoval();

    void createTable();
    void createTableNumbersEqualNames();
    void createTableOfAnExistingOneChangesNothing();
    void createTableOfANameThatDiffersInCaseUsesTheOldOne();
    void createTableWithTwoEqualLinksFails();
    void createTableRefuses_data();
    void createTableRefuses();
    void addColumn_data();
    void addColumn();
    void addColumnFails_data();
    void addColumnFails();
    void dropTable();
    void dropTableFails_data();
    void dropTableFails();
    void clearTable();
    void clearTableFails_data();
    void clearTableFails();
    void changesWithoutADatabaseFail();
    void theBoxIsAPlainWarning();

private:
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<DataBase> db;
};

void TestDataBase::init()
{
    workspace = std::make_unique<Workspace>();
    db = std::make_unique<DataBase>();
    QVERIFY(db->openDatabase(workspace->path(text("collezione.db"))));
    QVERIFY(db->createTable(Books, {{Title, text("text")}, {Note, text("text")}}));
}

void TestDataBase::cleanup()
{
    db.reset();
    workspace.reset();
}

void TestDataBase::tablesAreThoseOfTheUser()
{
    Sql::run(text("CREATE VIEW vista AS SELECT * FROM libri"));
    Sql::run(text("CREATE TABLE \"con spazi\" (a integer primary key autoincrement)"));
    Sql::run(text("CREATE INDEX indice ON libri (RSTRINGFORMAT_Titolo)"));
    Sql::run(text("ANALYZE"));
    QCOMPARE(db->tables(), QStringList({Books, text("con spazi")}));
}

void TestDataBase::tableExistsComparesExactly()
{
    QVERIFY(db->tableExists(Books));
    QVERIFY(!db->tableExists(text("Libri")));
    QVERIFY(!db->tableExists(text("libri ")));
    QVERIFY(!db->tableExists(QString()));
}

void TestDataBase::rowCount()
{
    QCOMPARE(db->rowCount(Books), 0);
    addBook(1, text("'a'"), text("''"));
    addBook(5, text("'b'"), text("''"));
    QCOMPARE(db->rowCount(Books), 2);
}

void TestDataBase::recordById_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QStringList>("values");
    const QStringList none = {text("NULL"), text("NULL"), text("NULL")};
    QTest::newRow("an Id of the table gives its row")
        << 2 << true << QStringList{text("2"), text("due"), text("nota")};
    QTest::newRow("an Id that is not there gives empty values") << 3 << false << none;
    QTest::newRow("zero is no Id") << 0 << false << none;
    QTest::newRow("an Id below zero is looked for")
        << -4 << true << QStringList{text("-4"), text("meno"), text("NULL")};
}

void TestDataBase::recordById()
{
    QFETCH(int, id);
    QFETCH(bool, exists);
    QFETCH(QStringList, values);
    addBook(1, text("'uno'"), text("'x'"));
    addBook(2, text("'due'"), text("'nota'"));
    addBook(-4, text("'meno'"), text("NULL"));
    QCOMPARE(valuesOf(db->recordById(Books, id)), values);
    QCOMPARE(db->idExists(Books, id), exists);
}

void TestDataBase::recordByIdTellsIdsOf64BitsApart()
{
    Sql::run(text("INSERT INTO libri VALUES (4294967297,'grande','')"));
    QVERIFY(!db->idExists(Books, 1));
    QVERIFY(db->recordById(Books, 1).isNull(Title));
}

void TestDataBase::recordByIdAlsoTestsTheFirstColumn()
{
    Sql::run(text("CREATE TABLE altra (a text, RINTEGERFORMAT_Id integer)"));
    Sql::run(text("INSERT INTO altra VALUES ('2',1),(4294967297,1),('1',1)"));
    QCOMPARE(valuesOf(db->recordById(text("altra"), 1)), QStringList({text("1"), text("1")}));
    QVERIFY(!db->idExists(text("altra"), 2));
}

void TestDataBase::fieldValueById_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("a field of the record") << 1 << Title << QVariant(text("uno"));
    QTest::newRow("the Id is a 64-bit number") << 1 << IdColumn << QVariant(qlonglong(1));
    QTest::newRow("letter case does not matter") << 1 << Title.toLower() << QVariant(text("uno"));
    QTest::newRow("a field that is not there") << 1 << text("altro") << QVariant();
    QTest::newRow("a record that is not there") << 9 << Title << QVariant(QVariant::String);
}

void TestDataBase::fieldValueById()
{
    QFETCH(int, id);
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    addBook(1, text("'uno'"), text("''"));
    const QVariant found = db->fieldValueById(Books, id, field);
    QCOMPARE(found, value);
    QCOMPARE(found.isNull(), value.isNull());
}

void TestDataBase::recordAt_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("title");
    QTest::newRow("rows are counted from 0") << 0 << text("uno");
    QTest::newRow("the last row") << 2 << text("sette");
    QTest::newRow("behind the last row stands an empty record") << 3 << QString();
    QTest::newRow("before the first row stands the first") << -1 << text("uno");
}

void TestDataBase::recordAt()
{
    QFETCH(int, row);
    QFETCH(QString, title);
    addBook(7, text("'sette'"), text("''"));
    addBook(1, text("'uno'"), text("''"));
    addBook(2, text("'due'"), text("''"));
    const QSqlRecord record = db->recordAt(Books, row);
    QCOMPARE(record.count(), 3);
    QCOMPARE(record.value(Title).toString(), title);
}

void TestDataBase::recordValue()
{
    QSqlRecord record;
    QSqlField field(Title);
    field.setValue(text("uno"));
    record.append(field);
    QCOMPARE(DataBase::recordValue(record, Title), QVariant(text("uno")));
    QCOMPARE(DataBase::recordValue(record, text("altro")), QVariant());
    QCOMPARE(DataBase::recordValue(QSqlRecord(), Title), QVariant());
}

void TestDataBase::findRecord_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("id");
    QTest::newRow("the first of equal values") << Note << QVariant(text("x")) << 1;
    QTest::newRow("letter case matters") << Note << QVariant(text("X")) << 3;
    QTest::newRow("an apostrophe is found") << Title << QVariant(text("l'uva")) << 2;
    QTest::newRow("signs of placeholders are found") << Note << QVariant(text(":a ? %s")) << 2;
    QTest::newRow("a number is found by its text") << IdColumn << QVariant(3) << 3;
    QTest::newRow("a value that is not there") << Note << QVariant(text("y")) << 0;
    QTest::newRow("a field that is not there") << text("altro") << QVariant(text("x")) << 0;
    QTest::newRow("an odd field that is not there, named like its value")
        << text("x y") << QVariant(text("x y")) << 0;
    QTest::newRow("a value that would bend the statement")
        << Note << QVariant(text("y' OR '1'='1")) << 0;
}

void TestDataBase::findRecord()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    QFETCH(int, id);
    addBook(1, text("'uno'"), text("'x'"));
    addBook(2, text("'l''uva'"), text("':a ? %s'"));
    addBook(3, text("'tre'"), text("'X'"));
    addBook(4, text("'quattro'"), text("'x'"));
    const QSqlRecord record = db->findRecord(Books, field, value);
    QCOMPARE(record.isEmpty(), id == 0);
    QCOMPARE(record.value(IdColumn).toInt(), id);
}

void TestDataBase::findRecordComparesValues()
{
    // SQLite finds the row by the text before the NUL character, which is not the value asked.
    addBook(1, text("'uno'"), text("'x'"));
    QVERIFY(db->findRecord(Books, Note, text("x") + QChar(0) + text("y")).isEmpty());
}

void TestDataBase::fieldNames()
{
    QCOMPARE(db->fieldNames(Books), QStringList({IdColumn, Title, Note}));
}

void TestDataBase::hasFieldContaining_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<bool>("has");
    QTest::newRow("the whole name") << Title << true;
    QTest::newRow("a part of a name") << text("FORMAT_Tit") << true;
    QTest::newRow("letter case matters") << text("titolo") << false;
    QTest::newRow("no name holds it") << text("IMAGEFORMAT") << false;
    QTest::newRow("every name holds the empty text") << QString() << true;
}

void TestDataBase::hasFieldContaining()
{
    QFETCH(QString, part);
    QFETCH(bool, has);
    QCOMPARE(db->hasFieldContaining(part, Books), has);
}

void TestDataBase::countFields_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("cutSuffix");
    QTest::addColumn<int>("count");
    const QString a = text("NSTRINGFORMAT_a");
    QTest::newRow("cut names count together") << a << true << 3;
    QTest::newRow("uncut names count alone") << a << false << 1;
    QTest::newRow("letter case and white space around do not matter")
        << text(" nstringFORMAT_A\t") << false << 1;
    QTest::newRow("the asked name is not cut") << a + text("_XMLTYX_2") << true << 0;
    QTest::newRow("a suffixed name counts uncut") << a + text("_XMLTYX_2") << false << 1;
    QTest::newRow("another name") << text("NSTRINGFORMAT_b") << true << 0;
}

void TestDataBase::countFields()
{
    QFETCH(QString, name);
    QFETCH(bool, cutSuffix);
    QFETCH(int, count);
    const ColumnDefinition a = {text("NSTRINGFORMAT_a"), text("text")};
    QVERIFY(db->createTable(text("T"), {a, a, a}));
    QCOMPARE(db->countFields(text("T"), name, cutSuffix), count);
}

void TestDataBase::titleExists_data()
{
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("exists");
    QTest::newRow("the same text") << text("Il  Primo") << true;
    QTest::newRow("letter case and white space do not matter") << text(" il primo\n") << true;
    QTest::newRow("letters beyond ASCII have cases too") << text("CITTÀ") << true;
    QTest::newRow("a part of a title") << text("Primo") << false;
    QTest::newRow("a title with an apostrophe is never found") << text("l'uva") << false;
    QTest::newRow("a stored doubled quote is found by a single one") << text("due'quote") << true;
    QTest::newRow("an empty title is found by an empty text") << QString() << true;
}

void TestDataBase::titleExists()
{
    QFETCH(QString, asked);
    QFETCH(bool, exists);
    addBook(1, text("' Il Primo '"), text("''"));
    addBook(2, text("'città'"), text("''"));
    addBook(3, text("'l''uva'"), text("''"));
    addBook(4, text("'due''''quote'"), text("''"));
    addBook(5, text("NULL"), text("''"));
    QCOMPARE(db->titleExists(Books, asked), exists);
}

// The rule without a database: doubled quotes, letter case and white space.
static bool isSameTitle(const QString &stored, const QString &asked)
{
    QString doubled = asked;
    doubled.replace(text("'"), text("''"));
    return stored.toLower().simplified() == doubled.toLower().simplified();
}

void TestDataBase::titleExistsForOddTitles_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("asked");
    const auto row = [](const char *name, const QString &value, const QString &asked) {
        QTest::newRow(name) << value << asked;
    };
    row("the Kelvin sign is a k", QString::fromUtf8("'300 \xe2\x84\xaa.'"), text("300 k."));
    row("the dotted capital i", QString::fromUtf8("'\u0130zmir'"),
        QString::fromUtf8("i\u0307zmir"));
    row("the dotted capital i is no plain i", QString::fromUtf8("'\u0130zmir'"), text("izmir"));
    row("the long s is no s", QString::fromUtf8("'\u017Fole'"), text("sole"));
    row("other white space", QString::fromUtf8("'il\u00A0\u2003primo'"), text("Il primo"));
    row("signs with a meaning to SQLite", text("'100% a_b \\'"), text("100% A_B \\"));
    row("a sign with a meaning stands for itself", text("'100 axb'"), text("100% a_b"));
    row("a whole number", text("12"), text("12"));
    row("a number with a fraction", text("12.0"), text("12"));
    row("a large number", text("1e20"), text("1e+20"));
    row("bytes", text("x'756e6f'"), text("Uno"));
    row("NULL and nothing", text("NULL"), QString());
    row("nothing but signs", text("'?!'"), text("?!"));
    row("a NUL", text("CAST(x'756e6f00647565' AS TEXT)"),
        text("uno") + QChar(QChar::Null) + text("due"));
    row("a text behind a NUL is not passed over", text("CAST(x'7500756e6f' AS TEXT)"), text("uno"));
    row("a very long title",
        QLatin1Char('\'') + QString(70000, QLatin1Char('A')) + QLatin1Char('\''),
        QString(70000, QLatin1Char('a')));
}

void TestDataBase::titleExistsForOddTitles()
{
    QFETCH(QString, value);
    QFETCH(QString, asked);
    Sql::run(text("CREATE TABLE T (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo)"));
    Sql::run(text("INSERT INTO T VALUES (1,") + value + text(")"));
    const QSqlRecord record = db->recordById(text("T"), 1);
    const QString stored = DataBase::recordValue(record, text("RSTRINGFORMAT_Titolo")).toString();
    QCOMPARE(db->titleExists(text("T"), asked), isSameTitle(stored, asked));
    QVERIFY(db->titleExists(text("T"), stored) || stored.contains(QLatin1Char('\'')));
    // A name that SQL would misread is found among all columns.
    Sql::run(text("ALTER TABLE T RENAME COLUMN RSTRINGFORMAT_Titolo TO \"a b\""));
    QCOMPARE(db->titleExists(text("T"), asked), isSameTitle(stored, asked));
}

void TestDataBase::titleExistsReadsTheSecondColumnOnly()
{
    addBook(1, text("'uno'"), text("'nota'"));
    QVERIFY(!db->titleExists(Books, text("nota")));
    QVERIFY(!db->titleExists(Books, text("1")));
    QVERIFY(db->createTable(text("T"), {}));
    Sql::run(text("INSERT INTO T VALUES (1)"));
    QVERIFY(!db->titleExists(text("T"), QString()));
}

void TestDataBase::maxAndMinId_data()
{
    QTest::addColumn<QStringList>("ids");
    QTest::addColumn<int>("largest");
    QTest::addColumn<int>("smallest");
    const auto row = [](const char *claim, const char *ids, int largest, int smallest) {
        QTest::newRow(claim) << text(ids).split(QLatin1Char(' '), Qt::SkipEmptyParts) << largest
                             << smallest;
    };
    row("an empty table", "", 0, 0);
    row("one record", "7", 7, 7);
    row("several records", "3 10 9", 10, 3);
    row("all below zero", "-5 -3", -3, -5);
    row("beyond 32 bits the numbers end", "1 9999999999 -9999999999", 2147483647, -2147483647 - 1);
}

void TestDataBase::maxAndMinId()
{
    QFETCH(QStringList, ids);
    QFETCH(int, largest);
    QFETCH(int, smallest);
    for (const QString &id : qAsConst(ids)) {
        Sql::run(QStringLiteral("INSERT INTO libri VALUES (%1,'','')").arg(id));
    }
    QCOMPARE(db->maxId(Books), largest);
    QCOMPARE(db->minId(Books), smallest);
}

void TestDataBase::lookUpsOfAMissingTableAreEmptyAndSilent()
{
    const ModalResponder responder;
    for (const char *name : {"manca", "libri,libri", "libri WHERE 1", "main.libri", "", "select"}) {
        const QString table = text(name);
        QCOMPARE(db->rowCount(table), 0);
        QVERIFY(db->recordById(table, 1).isEmpty());
        QVERIFY(!db->idExists(table, 1));
        QVERIFY(!db->fieldValueById(table, 1, Title).isValid());
        QVERIFY(db->recordAt(table, 0).isEmpty());
        QVERIFY(db->findRecord(table, Title, text("x")).isEmpty());
        QVERIFY(db->fieldNames(table).isEmpty());
        QVERIFY(!db->hasFieldContaining(QString(), table));
        QCOMPARE(db->countFields(table, Title, true), 0);
        QVERIFY(!db->titleExists(table, text("x")));
        QCOMPARE(db->maxId(table), 0);
        QCOMPARE(db->minId(table), 0);
    }
    QVERIFY(responder.boxes().isEmpty());
}

void TestDataBase::lookUpsWithoutADatabaseAreEmptyAndSilent()
{
    const ModalResponder responder;
    DataBase closed;
    QVERIFY(!closed.isOpen());
    QVERIFY(closed.tables().isEmpty());
    QCOMPARE(closed.rowCount(Books), 0);
    QVERIFY(closed.recordById(Books, 1).isEmpty());
    QVERIFY(closed.fieldNames(Books).isEmpty());
    QCOMPARE(closed.maxId(Books), 0);
    QVERIFY(!closed.titleExists(Books, QString()));
    QVERIFY(responder.boxes().isEmpty());
}

void TestDataBase::lookUpsLeaveNothingInTheWayOfARemoval()
{
    addBook(1, text("'uno'"), text("'x'"));
    addBook(2, text("'due'"), text("'x'"));
    const ModalResponder responder;
    const QSqlRecord byId = db->recordById(Books, 1);
    const QSqlRecord at = db->recordAt(Books, 0);
    const QSqlRecord found = db->findRecord(Books, Note, text("x"));
    QVERIFY(db->titleExists(Books, text("uno")));
    QVERIFY(db->idExists(Books, 1));
    QCOMPARE(db->fieldNames(Books).size(), 3);
    QVERIFY(db->dropTable(Books));
    QCOMPARE(byId.value(Title), at.value(Title));
    QCOMPARE(found.value(Title), at.value(Title));
}

void TestDataBase::createTable()
{
    const ModalResponder responder;
    QVERIFY(db->createTable(text("Città_2"),
                            {{Title, text("text")},
                             {text("Xlibri_XDTX_RSTRINGFORMAT_Titolo"), text("Integer")},
                             {text("senza"), QString()}}));
    QCOMPARE(Sql::schema().last(),
             text("CREATE TABLE Città_2 (RINTEGERFORMAT_Id integer primary key,"
                  "RSTRINGFORMAT_Titolo text,Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer,senza )"));
    QVERIFY(db->createTable(text("vuota"), {}));
    QCOMPARE(Sql::schema().last(),
             text("CREATE TABLE vuota (RINTEGERFORMAT_Id integer primary key)"));
}

void TestDataBase::createTableNumbersEqualNames()
{
    const ColumnDefinition name = {text("NSTRINGFORMAT_Nome"), text("text")};
    QVERIFY(db->createTable(text("T"), {name, name}));
    QCOMPARE(Sql::schema().last(),
             text("CREATE TABLE T (RINTEGERFORMAT_Id integer primary key,"
                  "NSTRINGFORMAT_Nome text,NSTRINGFORMAT_Nome_XMLTYX_2 text)"));
}

void TestDataBase::createTableOfAnExistingOneChangesNothing()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->createTable(Books, {{text("b"), text("text")}}));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: La Tabella libri è già presente nel Db!\n")));
    QCOMPARE(db->fieldNames(Books), QStringList({IdColumn, Title, Note}));
}

void TestDataBase::createTableOfANameThatDiffersInCaseUsesTheOldOne()
{
    const ModalResponder responder;
    QVERIFY(db->createTable(text("LIBRI"), {{text("b"), text("text")}}));
    QCOMPARE(db->tables(), QStringList(Books));
    QCOMPARE(db->fieldNames(Books), QStringList({IdColumn, Title, Note}));
}

void TestDataBase::createTableWithTwoEqualLinksFails()
{
    const ColumnDefinition link = {text("NLINKFORMAT_libri"), text("text")};
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->createTable(text("T"), {link, link}));
    QCOMPARE(responder.takeTexts(),
             QStringList(text("ERRORE: Impossibile creare la tabella T!\nduplicate column name: "
                              "NLINKFORMAT_libri Unable to execute statement")));
    QVERIFY(!db->tableExists(text("T")));
}

void TestDataBase::createTableRefuses_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<ColumnDefinitions>("columns");
    QTest::addColumn<QString>("reason");
    const ColumnDefinition good = {text("a"), text("text")};
    for (const char *name : {"le cose", "a,b", "a(b", "main.T", "T AS SELECT * FROM libri", "T--",
                             "1a", "order", "it's", "100%s"}) {
        QTest::newRow(QByteArray("the table ") + name)
            << text(name) << ColumnDefinitions{good} << SqlNames::refusal(text(name));
    }
    for (const char *name : {"sqlite_x", "SQLITE_x"}) {
        QTest::newRow(QByteArray("the table ") + name)
            << text(name) << ColumnDefinitions{good}
            << text("Il nome '%1' è una parola riservata.").arg(text(name));
    }
    for (const char *name : {"a b", "a,b text", "a text)--", "2a", "check"}) {
        QTest::newRow(QByteArray("the column ") + name)
            << text("T") << ColumnDefinitions{good, {text(name), text("text")}}
            << SqlNames::refusal(text(name));
    }
    QTest::newRow("a column without a name")
        << text("T") << ColumnDefinitions{good, {QString(), text("text")}}
        << text("Una riga non ha nome.");
    QTest::newRow("a blank line") << text("T") << ColumnDefinitions{good, {}}
                                  << text("Una riga non ha nome.");
    QTest::newRow("the first reason is told")
        << text("T") << ColumnDefinitions{{text("b"), text("text,c")}, {}}
        << SqlText::typeRefusal(text("text,c"));
    QTest::newRow("the type") << text("T") << ColumnDefinitions{good, {text("b"), text("text,c")}}
                              << text("Il nome 'text,c' contiene caratteri non ammessi: usare solo "
                                      "lettere, cifre e '_'.");
}

void TestDataBase::createTableRefuses()
{
    QFETCH(QString, table);
    QFETCH(ColumnDefinitions, columns);
    QFETCH(QString, reason);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->createTable(table, columns));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile creare la tabella ") +
                                                table + text("!\n") + reason));
    QCOMPARE(Sql::schema().size(), 1);
}

void TestDataBase::addColumn_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("stored");
    QTest::newRow("a new name") << text("NSTRINGFORMAT_b") << text("text")
                                << text("NSTRINGFORMAT_b text");
    QTest::newRow("a taken name is numbered")
        << Note << text("text") << text("NSTRINGFORMAT_Nota_XMLTYX_2 text");
    QTest::newRow("a name taken in another letter case is numbered")
        << Note.toLower() << text("text") << text("nstringformat_nota_XMLTYX_2 text");
    QTest::newRow("without a type") << text("b") << QString() << text("b");
    QTest::newRow("a reference") << text("Xaltri_XDTX_RSTRINGFORMAT_a") << text("Integer")
                                 << text("Xaltri_XDTX_RSTRINGFORMAT_a Integer");
}

void TestDataBase::addColumn()
{
    QFETCH(QString, name);
    QFETCH(QString, type);
    QFETCH(QString, stored);
    const ModalResponder responder;
    QVERIFY(db->addColumn(Books, name, type));
    const QString made = Sql::schema().constFirst();
    QCOMPARE(made.section(QLatin1Char(','), -1).simplified(), stored + text(")"));
    const QStringList names = db->fieldNames(Books);
    QCOMPARE(names.size(), 4);
    QVERIFY(db->addColumn(Books, name, type));
    QCOMPARE(db->fieldNames(Books).last().right(9),
             names.last().contains(text("_XMLTYX_2")) ? text("_XMLTYX_3") : text("_XMLTYX_2"));
}

void TestDataBase::addColumnFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *claim, const char *table, const char *name, const char *type,
                        const char *message) {
        QTest::newRow(claim) << text(table) << text(name) << text(type) << text(message);
    };
    row("a missing table", "manca", "a", "text",
        "ERRORE: Impossibile aggiungere il campo a alla tabella manca!\n"
        "no such table: manca Unable to execute statement");
    row("a second link to the same table", "legami", "NLINKFORMAT_libri", "text",
        "ERRORE: Impossibile aggiungere il campo NLINKFORMAT_libri alla tabella legami!\n"
        "duplicate column name: NLINKFORMAT_libri Unable to execute statement");
    row("an odd name of a table", "le cose", "b", "text",
        "ERRORE: Impossibile aggiungere il campo b alla tabella le cose!\nIl nome 'le cose' "
        "contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
    row("an odd name of a column", "libri", "a b", "text",
        "ERRORE: Impossibile aggiungere il campo a b alla tabella libri!\nIl nome 'a b' "
        "contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
    row("an odd type", "libri", "a", "text default 1",
        "ERRORE: Impossibile aggiungere il campo a alla tabella libri!\nIl nome 'text default 1' "
        "contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
}

void TestDataBase::addColumnFails()
{
    QFETCH(QString, table);
    QFETCH(QString, name);
    QFETCH(QString, type);
    QFETCH(QString, message);
    Sql::run(text("CREATE TABLE \"le cose\" (a)"));
    Sql::run(text("CREATE TABLE legami (NLINKFORMAT_libri text)"));
    const QStringList before = Sql::schema();
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->addColumn(table, name, type));
    QCOMPARE(responder.takeTexts(), QStringList(message));
    QCOMPARE(Sql::schema(), before);
}

void TestDataBase::dropTable()
{
    const ModalResponder responder;
    QVERIFY(db->dropTable(Books));
    QVERIFY(db->tables().isEmpty());
}

void TestDataBase::dropTableFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a missing table")
        << text("manca") << text("no such table: manca Unable to execute statement");
    QTest::newRow("a view")
        << text("vista") << text("use DROP VIEW to delete view vista Unable to execute statement");
    for (const char *name :
         {"le cose", "libri--", "main.libri", "libri;libri", "\"libri\"", "order"}) {
        QTest::newRow(name) << text(name) << SqlNames::refusal(text(name));
    }
}

void TestDataBase::dropTableFails()
{
    QFETCH(QString, table);
    QFETCH(QString, reason);
    Sql::run(text("CREATE TABLE \"le cose\" (a)"));
    Sql::run(text("CREATE VIEW vista AS SELECT 1"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->dropTable(table));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile cancellare la tabella ") +
                                                table + text("!\n") + reason));
    QCOMPARE(db->tables(), QStringList({Books, text("le cose")}));
}

void TestDataBase::clearTable()
{
    addBook(1, text("'uno'"), text("''"));
    addBook(2, text("'due'"), text("''"));
    const ModalResponder responder;
    QVERIFY(db->clearTable(Books));
    QCOMPARE(Sql::table(Books), QStringList());
    QVERIFY(db->clearTable(Books));
    QVERIFY(db->tableExists(Books));
}

void TestDataBase::clearTableFails_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a missing table")
        << text("manca") << text("no such table: manca Unable to execute statement");
    for (const char *name : {"libri WHERE 1", "main.libri", "libri--", "[libri]"}) {
        QTest::newRow(name) << text(name)
                            << text("Il nome '") + text(name) +
                                   text("' contiene caratteri non ammessi: usare solo lettere, "
                                        "cifre e '_'.");
    }
}

void TestDataBase::clearTableFails()
{
    QFETCH(QString, table);
    QFETCH(QString, reason);
    addBook(1, text("'uno'"), text("''"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->clearTable(table));
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Impossibile pulire la tabella ") +
                                                table + text("!\n") + reason));
    QCOMPARE(db->rowCount(Books), 1);
}

void TestDataBase::changesWithoutADatabaseFail()
{
    db.reset();
    DataBase closed;
    ModalResponder responder;
    for (int box = 0; box < 6; ++box) {
        responder.answer(QMessageBox::Ok);
    }
    QVERIFY(!closed.createTable(text("T"), {}));
    QVERIFY(!closed.addColumn(text("T"), text("a"), text("text")));
    QCOMPARE(closed.insertRecord(text("T"), false, 0), -1);
    QVERIFY(!closed.deleteRecord(text("T"), 1));
    QVERIFY(!closed.dropTable(text("T")));
    QVERIFY(!closed.clearTable(text("T")));
    const QString reason = text("Driver not loaded Driver not loaded");
    QCOMPARE(
        responder.takeTexts(),
        QStringList({text("ERRORE: Impossibile creare la tabella T!\n") + reason,
                     text("ERRORE: Impossibile aggiungere il campo a alla tabella T!\n") + reason,
                     text("ERRORE: Impossibile aggiungere un elemento alla tabella T!\n") + reason,
                     text("ERRORE: Impossibile cancellare il record!\n") + reason,
                     text("ERRORE: Impossibile cancellare la tabella T!\n") + reason,
                     text("ERRORE: Impossibile pulire la tabella T!\n") + reason}));
}

void TestDataBase::theBoxIsAPlainWarning()
{
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(!db->dropTable(text("<b>manca</b>")));
    const ModalResponder::Box box = responder.boxes().constFirst();
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.title, text("DB Administration Tool"));
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.textFormat, Qt::PlainText);
}

QTEST_MAIN(TestDataBase)
#include "storage_database.moc"
