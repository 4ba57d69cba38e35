// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the forward walk over a table.
#include "storage/DataBase.h"
#include "storage/RowPass.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"

#include <QtTest>

#include <memory>

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The values of a walk over these columns, one line for each row.
QStringList walked(const QString &table, const QStringList &columns, int width)
{
    QStringList lines;
    RowPass rows(table, columns);
    while (rows.next()) {
        QStringList values;
        for (int position = 0; position < width; ++position) {
            values.append(rows.value(position).toString());
        }
        lines.append(values.join(QLatin1Char('|')));
    }
    return lines;
}

} // namespace

class TestRowPass : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void walksAllColumns();
    void walksNamedColumns_data();
    void walksNamedColumns();
    void missingThingsGiveNoRows_data();
    void missingThingsGiveNoRows();
    void withoutADatabaseThereAreNoRows();
    void keepsTheTablesOrder_data();
    void keepsTheTablesOrder();
    void walksUnusualTables_data();
    void walksUnusualTables();
    void valuesKeepTheirTypes();
    void endsQuietly();
    void tellsWhenTheTableCannotBeReadToItsEnd();
    void leavesNothingInTheWay_data();
    void leavesNothingInTheWay();
    void twoWalksStandBesideEachOther();
    void oneRecord_data();
    void oneRecord();
    void failures();
    void count_data();
    void count();

private:
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<DataBase> db;
};

void TestRowPass::init()
{
    workspace = std::make_unique<Workspace>();
    db = std::make_unique<DataBase>();
    QVERIFY(db->openDatabase(workspace->path(text("collezione.db"))));
    Sql::run(text("CREATE TABLE T (id integer primary key,a text,b text)"));
    Sql::run(text("INSERT INTO T VALUES (3,'z','p'),(1,'y','q'),(2,'x','r')"));
    Sql::run(text("CREATE TABLE \"le, cose\" (id integer primary key,\"a b\" text,c text,"
                  "\"select\" text,current_date text)"));
    Sql::run(text("INSERT INTO \"le, cose\" VALUES (1,'v','w','x','y')"));
}

void TestRowPass::cleanup()
{
    db.reset();
    workspace.reset();
}

void TestRowPass::walksAllColumns()
{
    RowPass rows(text("T"));
    while (rows.next()) {
    }
    QCOMPARE(rows.error(), QString());
    QCOMPARE(walked(text("T"), {}, 3), QStringList({text("1|y|q"), text("2|x|r"), text("3|z|p")}));
}

void TestRowPass::walksNamedColumns_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QStringList>("lines");
    const QString odd = text("le, cose");
    QTest::newRow("one column") << text("T") << QStringList{text("a")}
                                << QStringList{text("y"), text("x"), text("z")};
    QTest::newRow("in the order asked for") << text("T") << QStringList{text("b"), text("id")}
                                            << QStringList{text("q|1"), text("r|2"), text("p|3")};
    QTest::newRow("the same column twice") << text("T") << QStringList{text("a"), text("a")}
                                           << QStringList{text("y|y"), text("x|x"), text("z|z")};
    QTest::newRow("plain columns of an odd table")
        << odd << QStringList{text("id")} << QStringList{text("1")};
    QTest::newRow("a name with a blank")
        << odd << QStringList{text("a b")} << QStringList{text("v")};
    QTest::newRow("names that are words of SQL")
        << odd << QStringList{text("current_date"), text("id"), text("select")}
        << QStringList{text("y|1|x")};
}

void TestRowPass::walksNamedColumns()
{
    QFETCH(QString, table);
    QFETCH(QStringList, columns);
    QFETCH(QStringList, lines);
    QCOMPARE(walked(table, columns, columns.size()), lines);
}

void TestRowPass::missingThingsGiveNoRows_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("columns");
    QTest::newRow("a missing table") << text("manca") << QStringList();
    QTest::newRow("an odd missing table") << text("T,T") << QStringList();
    QTest::newRow("a missing column") << text("T") << QStringList{text("a"), text("altro")};
    QTest::newRow("an odd missing column") << text("T") << QStringList{text("a"), text("x y")};
    QTest::newRow("a column that would bend the statement")
        << text("T") << QStringList{text("a FROM T --")};
    QTest::newRow("a missing column named like today's date")
        << text("T") << QStringList{text("current_date")};
    QTest::newRow("an empty column name") << text("T") << QStringList{QString()};
}

void TestRowPass::missingThingsGiveNoRows()
{
    QFETCH(QString, table);
    QFETCH(QStringList, columns);
    const ModalResponder responder;
    RowPass rows(table, columns);
    QVERIFY(!rows.next());
    QVERIFY(!rows.next());
    QVERIFY(responder.boxes().isEmpty());
}

void TestRowPass::withoutADatabaseThereAreNoRows()
{
    db.reset();
    RowPass rows(text("T"));
    QVERIFY(!rows.next());
    QCOMPARE(RowPass::count(text("T")), 0);
}

void TestRowPass::keepsTheTablesOrder_data()
{
    QTest::addColumn<QString>("index");
    QTest::newRow("an index of the column asked for") << text("CREATE INDEX i ON T (a)");
    QTest::newRow("an index of all columns") << text("CREATE INDEX i ON T (a,b)");
    QTest::newRow("a rule of uniqueness") << text("CREATE UNIQUE INDEX i ON T (a)");
}

void TestRowPass::keepsTheTablesOrder()
{
    QFETCH(QString, index);
    QVERIFY(Sql::run(index));
    QVERIFY(Sql::run(text("ANALYZE")));
    QCOMPARE(walked(text("T"), {text("a")}, 1), QStringList({text("y"), text("x"), text("z")}));
    QCOMPARE(walked(text("T"), {text("id"), text("a")}, 2),
             QStringList({text("1|y"), text("2|x"), text("3|z")}));
}

void TestRowPass::walksUnusualTables_data()
{
    QTest::addColumn<QString>("made");
    QTest::newRow("a table without row numbers")
        << text("CREATE TABLE U (k text primary key,a text) WITHOUT ROWID");
    QTest::newRow("a full-text table") << text("CREATE VIRTUAL TABLE U USING fts5(k,a)");
    QTest::newRow("a strict table") << text("CREATE TABLE U (k text,a text) STRICT");
    QTest::newRow("a table with a computed column")
        << text("CREATE TABLE U (k text,a text,c text AS (k || a))");
}

void TestRowPass::walksUnusualTables()
{
    QFETCH(QString, made);
    QVERIFY(Sql::run(made));
    QVERIFY(Sql::run(text("INSERT INTO U (k,a) VALUES ('1','x'),('2','y')")));
    QCOMPARE(walked(text("U"), {text("a"), text("k")}, 2), QStringList({text("x|1"), text("y|2")}));
    QCOMPARE(walked(text("U"), {}, 2), QStringList({text("1|x"), text("2|y")}));
    QCOMPARE(RowPass::count(text("U")), 2);
}

void TestRowPass::valuesKeepTheirTypes()
{
    Sql::run(text("CREATE TABLE V (i integer,r real,s text,n text)"));
    Sql::run(text("INSERT INTO V VALUES (4294967297,1.5,'0',NULL)"));
    for (const QStringList &columns :
         {QStringList(), QStringList{text("i"), text("r"), text("s"), text("n")}}) {
        RowPass rows(text("V"), columns);
        QVERIFY(rows.next());
        QCOMPARE(rows.value(0), QVariant(qlonglong(4294967297)));
        QCOMPARE(rows.value(1), QVariant(1.5));
        QCOMPARE(rows.value(2), QVariant(text("0")));
        QVERIFY(rows.value(3).isNull());
    }
}

void TestRowPass::endsQuietly()
{
    RowPass rows(text("T"));
    for (int row = 0; row < 3; ++row) {
        QVERIFY(rows.next());
    }
    QVERIFY(!rows.next());
    QVERIFY(!rows.next());
}

void TestRowPass::leavesNothingInTheWay_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<QStringList>("columns");
    QTest::newRow("not begun") << 0 << QStringList();
    QTest::newRow("half walked") << 1 << QStringList();
    QTest::newRow("half walked over named columns") << 1 << QStringList{text("a")};
    QTest::newRow("half walked with a missing odd column") << 1 << QStringList{text("a b")};
}

void TestRowPass::leavesNothingInTheWay()
{
    QFETCH(int, steps);
    QFETCH(QStringList, columns);
    const ModalResponder responder;
    {
        RowPass rows(text("T"), columns);
        for (int step = 0; step < steps; ++step) {
            rows.next();
        }
    }
    QVERIFY(db->dropTable(text("T")));
    RowPass walkedToItsEnd(text("le, cose"));
    while (walkedToItsEnd.next()) {
    }
    QVERIFY(Sql::run(text("DROP TABLE \"le, cose\"")));
}

void TestRowPass::tellsWhenTheTableCannotBeReadToItsEnd()
{
    const QString file = text("rotta.db");
    workspace->sql(file, {text("CREATE TABLE T (id integer primary key,a text)"),
                          text("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                               "i<2000) INSERT INTO T SELECT i,'una riga di testo' FROM n")});
    QByteArray bytes = workspace->read(file);
    constexpr int PageSize = 4096;
    QVERIFY(bytes.size() > 8 * PageSize);
    bytes.replace(6 * PageSize, PageSize, QByteArray(PageSize, '\xff'));
    workspace->write(file, bytes);
    QVERIFY(db->openDatabase(workspace->path(file)));

    RowPass rows(text("T"), {text("a")});
    int walkedRows = 0;
    while (rows.next()) {
        ++walkedRows;
    }
    QVERIFY(walkedRows < 2000);
    QCOMPARE(rows.error(), text("database disk image is malformed Unable to fetch row"));
}

void TestRowPass::twoWalksStandBesideEachOther()
{
    RowPass outer(text("T"));
    int pairs = 0;
    while (outer.next()) {
        RowPass inner(text("T"));
        while (inner.next()) {
            ++pairs;
        }
    }
    QCOMPARE(pairs, 9);
}

void TestRowPass::oneRecord_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("line");
    QTest::newRow("the record of this Id") << 7 << text("7|sette");
    QTest::newRow("none") << 8 << QString();
    QTest::newRow("an Id below zero") << -7 << QString();
}

void TestRowPass::oneRecord()
{
    QFETCH(int, id);
    QFETCH(QString, line);
    Sql::run(text("CREATE TABLE R (RINTEGERFORMAT_Id integer primary key,a text)"));
    Sql::run(text("INSERT INTO R VALUES (6,'sei'),(7,'sette')"));
    RowPass rows(text("R"), id);
    QCOMPARE(rows.next(), !line.isEmpty());
    if (!line.isEmpty()) {
        QCOMPARE(rows.value(0).toString() + QLatin1Char('|') + rows.value(1).toString(), line);
        QVERIFY(!rows.next());
    }
    QVERIFY(!rows.failed());
}

void TestRowPass::failures()
{
    RowPass whole(text("T"));
    while (whole.next()) {
    }
    QVERIFY(!whole.failed());
    QVERIFY(RowPass(text("manca")).failed());
    QVERIFY(RowPass(text("manca"), 7).failed());
    // Fails at its second row.
    Sql::run(text("CREATE VIEW V AS SELECT id,abs(CASE id WHEN 2 THEN -9223372036854775808 ELSE "
                  "id END) AS a FROM T"));
    RowPass broken(text("V"));
    QVERIFY(broken.next());
    QVERIFY(!broken.next());
    QVERIFY(broken.failed());
}

void TestRowPass::count_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("rows");
    QTest::newRow("a table") << text("T") << 3;
    QTest::newRow("an odd table") << text("le, cose") << 1;
    QTest::newRow("a missing table") << text("manca") << 0;
    QTest::newRow("a name that would bend the statement") << text("T,T") << 0;
}

void TestRowPass::count()
{
    QFETCH(QString, table);
    QFETCH(int, rows);
    QCOMPARE(RowPass::count(table), rows);
    QCOMPARE(db->rowCount(table), rows);
}

QTEST_MAIN(TestRowPass)
#include "storage_rowpass.moc"
