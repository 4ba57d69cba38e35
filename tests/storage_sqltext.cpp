// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the text of every statement.
#include "storage/sqltext.h"

#include "model/sqlnames.h"

#include <QtTest>

namespace
{

const QString IdColumn = QStringLiteral("RINTEGERFORMAT_Id");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString updated(const QString &field, const QString &value)
{
    return SqlText::update(text("T"), 3, {{field, value}});
}

} // namespace

class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void statements_data();
    void statements();
    void createTable_data();
    void createTable();
    void updateWritesByTheFieldsName_data();
    void updateWritesByTheFieldsName();
    void insertNamesEveryField_data();
    void insertNamesEveryField();
    void rowInsertionIsTheSameStatement_data();
    void rowInsertionIsTheSameStatement();
    void rowInsertionRefuses();
    void percentSignsOfNamesAndValuesStay();
    void longValuesStayWhole();
    void textIsCutAtANulCharacter();
    void numbersDoNotFollowTheLocale();
    void refusal_data();
    void refusal();
    void typeRefusal_data();
    void typeRefusal();
    void wordsThatAreNoTypes();
    void valueRefusal_data();
    void valueRefusal();
};

void TestSqlText::statements_data()
{
    QTest::addColumn<QString>("made");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *claim, const QString &made, const char *expected) {
        QTest::newRow(claim) << made << text(expected);
    };
    row("all rows", SqlText::selectAll(text("T")), "SELECT * FROM T");
    row("a name with letters beyond ASCII stands bare", SqlText::selectAll(text("Città")),
        "SELECT * FROM Città");
    row("a blank in a table read gets quotes", SqlText::selectAll(text("le cose")),
        "SELECT * FROM \"le cose\"");
    row("a quote in a table read is doubled", SqlText::selectAll(text("a\"b")),
        "SELECT * FROM \"a\"\"b\"");
    row("a reserved word read gets quotes", SqlText::selectAll(text("order")),
        "SELECT * FROM \"order\"");
    row("an empty name gets quotes", SqlText::selectAll(QString()), "SELECT * FROM \"\"");
    row("named columns", SqlText::selectColumns(text("T"), {text("a"), text("b")}),
        "SELECT a,b FROM T NOT INDEXED");
    row("named columns of an odd table", SqlText::selectColumns(text("x,y"), {text("a")}),
        "SELECT a FROM \"x,y\" NOT INDEXED");
    row("texts that hold a part", SqlText::selectColumnHolding(text("T"), text("a"), text("v_r")),
        "SELECT a FROM T NOT INDEXED WHERE a LIKE '%v_r%' OR typeof(a) <> 'text'");
    row("the longest part that SQLite finds", SqlText::plainRun(text("il primo_7 x")), "pr_mo");
    row("a part ends at letters beyond ASCII", SqlText::plainRun(QString::fromUtf8("perònò")),
        "per");
    row("no part behind a NUL", SqlText::plainRun(text("a") + QChar(QChar::Null) + text("bcd")),
        "a");
    row("a part is not longer than fifty", SqlText::plainRun(QString(60, QLatin1Char('a'))),
        QByteArray(50, 'a'));
    row("no part of signs", SqlText::plainRun(text("?! '")), "");
    row("one row", SqlText::selectById(text("T"), 7),
        "SELECT * FROM T WHERE RINTEGERFORMAT_Id = 7");
    row("one row below zero", SqlText::selectById(text("T"), -7),
        "SELECT * FROM T WHERE RINTEGERFORMAT_Id = -7");
    row("rows of a value", SqlText::selectByField(text("T"), text("a"), text("v")),
        "SELECT * FROM T WHERE a = 'v'");
    row("the quotes of a value asked for are doubled",
        SqlText::selectByField(text("T"), text("a"), text("l'uva")),
        "SELECT * FROM T WHERE a = 'l''uva'");
    row("an odd field asked for gets quotes",
        SqlText::selectByField(text("T"), text("a b"), text("v")),
        "SELECT * FROM T WHERE \"a b\" = 'v'");
    row("a field named like today's date gets quotes",
        SqlText::selectByField(text("T"), text("current_date"), text("v")),
        "SELECT * FROM T WHERE \"current_date\" = 'v'");
    row("largest Id", SqlText::selectLargestId(text("T")), "SELECT max(RINTEGERFORMAT_Id) FROM T");
    row("number of rows", SqlText::countRows(text("T")), "SELECT count(*) FROM T");
    row("added column", SqlText::addColumn(text("T"), text("a"), text("text")),
        "ALTER TABLE T ADD COLUMN a text");
    row("an added column without a type keeps its blank",
        SqlText::addColumn(text("T"), text("a"), QString()), "ALTER TABLE T ADD COLUMN a ");
    row("a removed table keeps its blank", SqlText::dropTable(text("T")), "DROP TABLE T ");
    row("cleared table", SqlText::clearTable(text("T")), "DELETE FROM T");
    row("removed row", SqlText::deleteById(text("T"), 7),
        "DELETE FROM T WHERE RINTEGERFORMAT_Id = 7");
    row("removed rows", SqlText::deleteByIds(text("T"), {7, 2, 9}),
        "DELETE FROM T WHERE RINTEGERFORMAT_Id IN (7,2,9)");
    row("several fields", SqlText::update(text("T"), 3, {{text("a"), text("x")}, {text("b"), {}}}),
        "UPDATE T SET a = 'x',b = '' WHERE RINTEGERFORMAT_Id = 3");
    row("head of the file", SqlText::schemaVersion(), "PRAGMA schema_version");
    row("list of tables", SqlText::schemaEntries(), "SELECT count(*) FROM sqlite_master");
    row("no writing", SqlText::queryOnly(), "PRAGMA query_only = ON");
}

void TestSqlText::statements()
{
    QFETCH(QString, made);
    QFETCH(QString, expected);
    QCOMPARE(made, expected);
}

void TestSqlText::createTable_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("expected");
    const QString start =
        text("CREATE TABLE IF NOT EXISTS T (RINTEGERFORMAT_Id integer primary key");
    QTest::newRow("no columns: the Id alone") << QStringList() << start + text(")");
    QTest::newRow("two columns") << QStringList{text("a"), text("b")}
                                 << start + text(",a text,b text)");
    QTest::newRow("equal names are numbered from 2")
        << QStringList{text("NSTRINGFORMAT_Nome"), text("NSTRINGFORMAT_Nome"),
                       text("NSTRINGFORMAT_Nome")}
        << start + text(",NSTRINGFORMAT_Nome text,NSTRINGFORMAT_Nome_XMLTYX_2 text,"
                        "NSTRINGFORMAT_Nome_XMLTYX_3 text)");
    QTest::newRow("equal links are not numbered")
        << QStringList{text("NLINKFORMAT_libri"), text("NLINKFORMAT_libri")}
        << start + text(",NLINKFORMAT_libri text,NLINKFORMAT_libri text)");
    QTest::newRow("names that differ in letter case are not equal")
        << QStringList{text("NSTRINGFORMAT_a"), text("NSTRINGFORMAT_A")}
        << start + text(",NSTRINGFORMAT_a text,NSTRINGFORMAT_A text)");
}

void TestSqlText::createTable()
{
    QFETCH(QStringList, names);
    QFETCH(QString, expected);
    ColumnDefinitions columns;
    for (const QString &name : qAsConst(names)) {
        columns.append({name, text("text")});
    }
    QCOMPARE(SqlText::createTable(text("T"), columns), expected);
}

void TestSqlText::updateWritesByTheFieldsName_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("assignment");
    const auto row = [](const char *claim, const char *field, const char *value,
                        const char *assignment) {
        QTest::newRow(claim) << text(field) << text(value) << text(assignment);
    };
    row("a text stands in quotes", "NSTRINGFORMAT_a", "ciao", "NSTRINGFORMAT_a = 'ciao'");
    row("doubled quotes stay doubled", "NSTRINGFORMAT_a", "l''uva", "NSTRINGFORMAT_a = 'l''uva'");
    row("an amount is a text", "NMONEYFORMAT_a", "3,50", "NMONEYFORMAT_a = '3,50'");
    row("an integer", "NINTEGERFORMAT_a", "12", "NINTEGERFORMAT_a = '12'");
    row("an integer with blanks around", "NINTEGERFORMAT_a", " 12 ", "NINTEGERFORMAT_a = '12'");
    row("an integer below zero", "NINTEGERFORMAT_a", "-12", "NINTEGERFORMAT_a = '-12'");
    row("an integer that begins a text is none", "NINTEGERFORMAT_a", "12 Rossi",
        "NINTEGERFORMAT_a = '0'");
    row("an integer with decimals is none", "NINTEGERFORMAT_a", "7.9", "NINTEGERFORMAT_a = '0'");
    row("an empty integer is zero", "NINTEGERFORMAT_a", "", "NINTEGERFORMAT_a = '0'");
    row("an integer beyond the range is zero", "NINTEGERFORMAT_a", "2147483648",
        "NINTEGERFORMAT_a = '0'");
    row("a real", "NREALFORMAT_a", "1.5", "NREALFORMAT_a = '1.500000'");
    row("an empty real is zero", "NREALFORMAT_a", "", "NREALFORMAT_a = '0.000000'");
    row("a real with a comma is none", "NREALFORMAT_a", "1,5", "NREALFORMAT_a = '0.000000'");
    row("a huge real is written out", "NREALFORMAT_a", "1e20",
        "NREALFORMAT_a = '100000000000000000000.000000'");
    row("the word INTEGER in a label counts", "NSTRINGFORMAT_INTEGER", "x",
        "NSTRINGFORMAT_INTEGER = '0'");
    row("the word REAL in a label counts", "NSTRINGFORMAT_REALE", "x",
        "NSTRINGFORMAT_REALE = '0.000000'");
    row("INTEGER goes before REAL", "NREALFORMAT_INTEGER", "1.5", "NREALFORMAT_INTEGER = '0'");
    row("the words count in capitals only", "NSTRINGFORMAT_integer_real", "x",
        "NSTRINGFORMAT_integer_real = 'x'");
    row("the Id is an integer", "RINTEGERFORMAT_Id", "9", "RINTEGERFORMAT_Id = '9'");
    row("signs of placeholders stay", "NSTRINGFORMAT_a", ":name ? @a $b",
        "NSTRINGFORMAT_a = ':name ? @a $b'");
    row("several lines stay", "NLONGSTRINGFORMAT_a", "uno\ndue",
        "NLONGSTRINGFORMAT_a = 'uno\ndue'");
    row("signs beyond ASCII stay", "NSTRINGFORMAT_a", "però €", "NSTRINGFORMAT_a = 'però €'");
}

void TestSqlText::updateWritesByTheFieldsName()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, assignment);
    QCOMPARE(updated(field, value),
             text("UPDATE T SET ") + assignment + text(" WHERE RINTEGERFORMAT_Id = 3"));
}

void TestSqlText::insertNamesEveryField_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<FieldPairs>("values");
    QTest::addColumn<QString>("expected");
    const QString a = text("NSTRINGFORMAT_a");
    const QString n = text("NINTEGERFORMAT_n");
    const QStringList fields = {IdColumn, a, n};
    const QString start =
        text("INSERT INTO T (RINTEGERFORMAT_Id,NSTRINGFORMAT_a,NINTEGERFORMAT_n) VALUES ");
    QTest::newRow("an empty record holds bare zeros")
        << fields << FieldPairs() << start + text("(5,0,0)");
    QTest::newRow("values stand in the table's order")
        << fields << FieldPairs{{n, text("7")}, {a, text("x")}} << start + text("(5,'x','7')");
    QTest::newRow("fields without a value hold a bare zero")
        << fields << FieldPairs{{a, text("x")}} << start + text("(5,'x',0)");
    QTest::newRow("an empty value is a value")
        << fields << FieldPairs{{a, {}}, {n, {}}} << start + text("(5,'','0')");
    QTest::newRow("of two values of a field the last one counts")
        << fields << FieldPairs{{a, text("x")}, {a, text("y")}} << start + text("(5,'y',0)");
    QTest::newRow("the Id is the chosen one whatever the values say")
        << fields << FieldPairs{{IdColumn, text("9")}} << start + text("(5,0,0)");
    QTest::newRow("the Id need not stand first")
        << QStringList{a, IdColumn} << FieldPairs()
        << text("INSERT INTO T (NSTRINGFORMAT_a,RINTEGERFORMAT_Id) VALUES (0,5)");
}

void TestSqlText::insertNamesEveryField()
{
    QFETCH(QStringList, fields);
    QFETCH(FieldPairs, values);
    QFETCH(QString, expected);
    QCOMPARE(SqlText::insert(text("T"), fields, 5, values), expected);
}

void TestSqlText::rowInsertionIsTheSameStatement_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    for (const char *value : {"12", " 12 ", "1.5", "1e20", "nan", "inf", "x", "l''uva", "100%s %n",
                              "però €", "😀", ":a ? @b $c", "2147483648", "-0.0000001"}) {
        QTest::newRow(value) << text(value);
    }
    QTest::newRow("a NUL character") << text("prima") + QChar(0) + text("dopo");
    QTest::newRow("the first half of a pair") << text("a") + QChar(0xd83d);
    QTest::newRow("the second half of a pair") << QChar(0xde00) + text("a");
}

void TestSqlText::rowInsertionIsTheSameStatement()
{
    QFETCH(QString, value);
    const QStringList fields = {IdColumn, text("NSTRINGFORMAT_a"), text("NINTEGERFORMAT_b"),
                                text("NREALFORMAT_c"), text("NMONEYFORMAT_INTEGER")};
    FieldPairs values;
    for (const QString &field : fields) {
        values.append({field, value});
    }
    const SqlText::RowInsertion insertion(text("T"), fields);
    QCOMPARE(insertion.refusal(), QString());
    QCOMPARE(insertion.valuesRefusal(values), QString());
    const QString statement = insertion.statement(7, values);
    QCOMPARE(statement, SqlText::insert(text("T"), fields, 7, values));
    QVERIFY(statement.isValidUtf16());
}

void TestSqlText::rowInsertionRefuses()
{
    const QString a = text("NSTRINGFORMAT_a");
    const QString n = text("NINTEGERFORMAT_n");
    QCOMPARE(SqlText::RowInsertion(text("T"), {a, text("a b")}).refusal(),
             SqlNames::refusal(text("a b")));
    const SqlText::RowInsertion insertion(text("T"), {a, n});
    QCOMPARE(insertion.valuesRefusal({{a, text("l'uva")}, {n, text("1")}}),
             SqlText::valueRefusal({a, text("l'uva")}));
    QVERIFY(!SqlText::valueRefusal({a, text("l'uva")}).isEmpty());
    QCOMPARE(insertion.valuesRefusal({{a, text("x")}, {n, text("l'uva")}}), QString());
}

void TestSqlText::percentSignsOfNamesAndValuesStay()
{
    const QString odd = text("100%s %d %n %");
    QCOMPARE(updated(text("a"), odd),
             text("UPDATE T SET a = '100%s %d %n %' WHERE RINTEGERFORMAT_Id = 3"));
    QCOMPARE(SqlText::insert(text("T"), {text("a")}, 1, {{text("a"), odd}}),
             text("INSERT INTO T (a) VALUES ('100%s %d %n %')"));
    QCOMPARE(SqlText::selectByField(odd, odd, odd),
             text("SELECT * FROM \"100%s %d %n %\" WHERE \"100%s %d %n %\" = '100%s %d %n %'"));
    QCOMPARE(SqlText::refusal({odd}), text("Il nome '100%s %d %n %' contiene caratteri non "
                                           "ammessi: usare solo lettere, cifre e '_'."));
}

void TestSqlText::longValuesStayWhole()
{
    const QString value(100 * 1024, QChar(0x20ac));
    QCOMPARE(updated(text("a"), value),
             text("UPDATE T SET a = '") + value + text("' WHERE RINTEGERFORMAT_Id = 3"));
}

void TestSqlText::textIsCutAtANulCharacter()
{
    const QString value = text("prima") + QChar(0) + text("dopo");
    QCOMPARE(updated(text("a"), value),
             text("UPDATE T SET a = 'prima' WHERE RINTEGERFORMAT_Id = 3"));
}

void TestSqlText::numbersDoNotFollowTheLocale()
{
    const QByteArray before = setlocale(LC_ALL, nullptr);
    setlocale(LC_ALL, "it_IT.UTF-8");
    const QLocale italian(QLocale::Italian, QLocale::Italy);
    QLocale::setDefault(italian);
    QCOMPARE(updated(text("REAL"), text("1.5")),
             text("UPDATE T SET REAL = '1.500000' WHERE RINTEGERFORMAT_Id = 3"));
    QLocale::setDefault(QLocale::system());
    setlocale(LC_ALL, before.constData());
}

void TestSqlText::refusal_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("refused");
    QTest::newRow("no names: nothing against them") << QStringList() << QString();
    QTest::newRow("plain names pass")
        << QStringList{text("T"), text("a_1$"), text("È")} << QString();
    QTest::newRow("the first bad one is named")
        << QStringList{text("T"), text("a b"), text("c d")} << text("a b");
    for (const char *bad : {"", "a,b", "[a]", "a--", "main.x", "x AS SELECT 1", "a;b", "a'b",
                            "a\"b", "(a)", "1a", "$a", "select", "TABLE", "a\tb"}) {
        QTest::newRow(QByteArray("refused: ") + bad) << QStringList{text(bad)} << text(bad);
    }
}

void TestSqlText::refusal()
{
    QFETCH(QStringList, names);
    QFETCH(QString, refused);
    QCOMPARE(SqlText::refusal(names), refused.isNull() ? QString() : SqlNames::refusal(refused));
}

void TestSqlText::typeRefusal_data()
{
    QTest::addColumn<bool>("passes");
    for (const char *good : {"text", "Integer", ""}) {
        QTest::newRow(QByteArray("passes: ") + good) << true;
    }
    for (const char *bad : {"text,b text", "text)", "text2", "te xt", "tè", "text--"}) {
        QTest::newRow(QByteArray("refused: ") + bad) << false;
    }
}

void TestSqlText::typeRefusal()
{
    QFETCH(bool, passes);
    const QString type = text(QTest::currentDataTag()).section(text(": "), 1);
    const QString reason =
        text("Il nome '") + type +
        text("' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
    QCOMPARE(SqlText::typeRefusal(type), passes ? QString() : reason);
}

void TestSqlText::wordsThatAreNoTypes()
{
    // They would put a condition on the column, which later records could not meet.
    for (const char *const word : {"UNIQUE", "unique", "PRIMARY", "NOT"}) {
        QCOMPARE(SqlText::typeRefusal(text(word)),
                 text("Il nome '") + text(word) + text("' è una parola riservata."));
    }
}

void TestSqlText::valueRefusal_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("passes");
    const QString a = text("NSTRINGFORMAT_a");
    QTest::newRow("no quote") << a << text("ciao") << true;
    QTest::newRow("a doubled quote") << a << text("l''uva") << true;
    QTest::newRow("two doubled quotes in a row") << a << text("''''") << true;
    QTest::newRow("a single quote") << a << text("l'uva") << false;
    QTest::newRow("three quotes in a row") << a << text("'''") << false;
    QTest::newRow("two single quotes apart") << a << text("x' OR '1=1") << false;
    QTest::newRow("two quotes around a NUL character")
        << a << text("'") + QChar(0) + text("'") << false;
    QTest::newRow("a number field never writes the text")
        << text("NINTEGERFORMAT_a") << text("l'uva") << true;
    QTest::newRow("a real field never writes the text")
        << text("NREALFORMAT_a") << text("l'uva") << true;
}

void TestSqlText::valueRefusal()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(bool, passes);
    QCOMPARE(SqlText::valueRefusal({field, value}),
             passes ? QString() : text("Il valore contiene un apice non raddoppiato."));
}

QTEST_GUILESS_MAIN(TestSqlText)
#include "storage_sqltext.moc"
