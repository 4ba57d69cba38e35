// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of which names SQLite reads unquoted, held against SQLite itself.
#include "model/sqlnames.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

class TestSqlNames : public QObject
{
    Q_OBJECT

private slots:
    void refusalNamesTheReason_data();
    void refusalNamesTheReason();
    void init();
    void cleanup();
    void canStandUnquoted_data();
    void canStandUnquoted();
    void asciiAsSqliteReadsIt();
    void charactersBeyondAsciiAsSqliteReadsThem();
    void reservedWordsAreThoseThatFailAsTables_data();
    void reservedWordsAreThoseThatFailAsTables();
    void canBeRead_data();
    void canBeRead();
    void madeSafe_data();
    void madeSafe();
    void everySafeTextCanBeTurnedBack();
};

namespace
{

bool run(const QString &statement)
{
    QSqlQuery query;
    return query.exec(statement);
}

/// True when every kind of statement takes the unquoted name for the table of that name.
bool worksAsTable(const QString &name)
{
    const auto works = [&name](const char *pattern) {
        return run(QString::fromLatin1(pattern).arg(name));
    };
    const bool made = works("CREATE TABLE IF NOT EXISTS %1 (id integer primary key,x text)") &&
                      QSqlDatabase::database().tables() == QStringList(name) &&
                      works("INSERT INTO %1 (id,x) VALUES (1,0)") &&
                      works("UPDATE %1 SET x = 'a' WHERE id = 1") &&
                      works("SELECT id,x FROM %1 NOT INDEXED") &&
                      works("ALTER TABLE %1 ADD COLUMN y text") &&
                      works("DELETE FROM %1 WHERE id = 1") && works("DROP TABLE %1 ");
    return made && QSqlDatabase::database().tables().isEmpty();
}

/// True when the unquoted name, read as a column, gives that column's value.
bool canBeSelected(const QString &name)
{
    if (!run(QStringLiteral("CREATE TABLE t (id integer primary key,%1 text)").arg(name)) ||
        !run(QStringLiteral("INSERT INTO t (id,%1) VALUES (1,'mine')").arg(name))) {
        return false;
    }
    QSqlQuery query;
    return query.exec(QStringLiteral("SELECT id,%1 FROM t WHERE %1 = 'mine'").arg(name)) &&
           query.next() && query.record().fieldName(1) == name &&
           query.value(1).toString() == QLatin1String("mine");
}

/// All keywords of SQLite 3.40.
QStringList keywords()
{
    return QStringLiteral(
               "ABORT ACTION ADD AFTER ALL ALTER ALWAYS ANALYZE AND AS ASC ATTACH AUTOINCREMENT "
               "BEFORE BEGIN BETWEEN BY CASCADE CASE CAST CHECK COLLATE COLUMN COMMIT CONFLICT "
               "CONSTRAINT CREATE CROSS CURRENT CURRENT_DATE CURRENT_TIME CURRENT_TIMESTAMP "
               "DATABASE DEFAULT DEFERRABLE DEFERRED DELETE DESC DETACH DISTINCT DO DROP EACH "
               "ELSE END ESCAPE EXCEPT EXCLUDE EXCLUSIVE EXISTS EXPLAIN FAIL FILTER FIRST "
               "FOLLOWING FOR FOREIGN FROM FULL GENERATED GLOB GROUP GROUPS HAVING IF IGNORE "
               "IMMEDIATE IN INDEX INDEXED INITIALLY INNER INSERT INSTEAD INTERSECT INTO IS "
               "ISNULL JOIN KEY LAST LEFT LIKE LIMIT MATCH MATERIALIZED NATURAL NO NOT NOTHING "
               "NOTNULL NULL NULLS OF OFFSET ON OR ORDER OTHERS OUTER OVER PARTITION PLAN PRAGMA "
               "PRECEDING PRIMARY QUERY RAISE RANGE RECURSIVE REFERENCES REGEXP REINDEX RELEASE "
               "RENAME REPLACE RESTRICT RETURNING RIGHT ROLLBACK ROW ROWS SAVEPOINT SELECT SET "
               "TABLE TEMP TEMPORARY THEN TIES TO TRANSACTION TRIGGER UNBOUNDED UNION UNIQUE "
               "UPDATE USING VACUUM VALUES VIEW VIRTUAL WHEN WHERE WINDOW WITH WITHOUT")
        .split(QLatin1Char(' '));
}

} // namespace

void TestSqlNames::init()
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(QStringLiteral(":memory:"));
    QVERIFY(database.open());
}

void TestSqlNames::cleanup()
{
    const QString connection = QSqlDatabase::database().connectionName();
    QSqlDatabase::removeDatabase(connection);
}

void TestSqlNames::canStandUnquoted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a plain name") << "Libri_2$" << true;
    QTest::newRow("a name beginning with a line") << "_a" << true;
    QTest::newRow("an encoded column") << "NSTRINGFORMAT_Città" << true;
    QTest::newRow("a sub-table") << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s" << true;
    QTest::newRow("accents, signs and other scripts") << "però€中" << true;
    QTest::newRow("a character beyond U+FFFF") << "🎲" << true;
    QTest::newRow("a full-width apostrophe") << "L＇isola" << true;
    QTest::newRow("a word inside a name") << "TABLES" << true;
    QTest::newRow("a word in letters that only look capital") << "ıf" << true;
    QTest::newRow("a keyword that SQLite reads as a name") << "Cast" << true;
    QTest::newRow("SQLite's own tables can be read") << "sqlite_sequence" << true;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("a digit in front") << "2Libri" << false;
    QTest::newRow("a $ in front") << "$Libri" << false;
    QTest::newRow("a blank") << "a b" << false;
    QTest::newRow("a quote") << "l'isola" << false;
    QTest::newRow("two columns") << "a,b" << false;
    QTest::newRow("a quoted name") << "[a]" << false;
    QTest::newRow("a comment") << "a--" << false;
    QTest::newRow("a schema") << "main.x" << false;
    QTest::newRow("half a statement") << "x AS SELECT 1" << false;
    QTest::newRow("a line break at the end") << "a\n" << false;
    QTest::newRow("a NUL") << QString(QStringLiteral("a") + QChar(0)) << false;
    QTest::newRow("a no-break space") << QStringLiteral("a\u00a0b") << false;
    QTest::newRow("an ideographic space") << QStringLiteral("a\u3000b") << false;
    QTest::newRow("a line separator") << QStringLiteral("a\u2028b") << false;
    QTest::newRow("a padding character") << QStringLiteral("a") + QChar(0x80) << false;
    QTest::newRow("a control character beyond ASCII") << QStringLiteral("a") + QChar(0x85) << false;
    QTest::newRow("an invisible character") << QStringLiteral("a\u200bb") << false;
    QTest::newRow("a character that turns the writing around")
        << QStringLiteral("a\u202eb") << false;
    QTest::newRow("a soft hyphen") << QStringLiteral("a\u00adb") << false;
    QTest::newRow("half a character") << QStringLiteral("a") + QChar(0xd83c) << false;
    QTest::newRow("a reserved word") << "TABLE" << false;
    QTest::newRow("a reserved word in mixed letters") << "Order" << false;
}

void TestSqlNames::canStandUnquoted()
{
    QFETCH(QString, name);
    QTEST(SqlNames::canStandUnquoted(name), "expected");
}

void TestSqlNames::asciiAsSqliteReadsIt()
{
    for (char code = 1; code > 0 && code <= 0x7e; ++code) {
        const QString character(QLatin1Char{code});
        for (const QString &name : {character, QLatin1Char('a') + character,
                                    QLatin1Char('a') + character + QLatin1Char('b')}) {
            const bool works = worksAsTable(name);
            QVERIFY2(SqlNames::canStandUnquoted(name) == works, qPrintable(name));
            cleanup();
            init();
        }
    }
}

void TestSqlNames::charactersBeyondAsciiAsSqliteReadsThem()
{
    constexpr uint End = 0x20000;
    constexpr int ColumnsPerTable = 1000;
    QStringList columns;
    for (uint code = 0x80; code <= End; ++code) {
        const QString name = QString::fromUcs4(&code, 1);
        if (SqlNames::canStandUnquoted(name)) {
            columns += name;
        }
        if (columns.size() == ColumnsPerTable || code == End) {
            QVERIFY(run(QStringLiteral("CREATE TABLE t (%1)").arg(columns.join(QLatin1Char(',')))));
            const QSqlRecord record = QSqlDatabase::database().record(QStringLiteral("t"));
            QCOMPARE(record.count(), columns.size());
            for (int i = 0; i < record.count(); ++i) {
                QCOMPARE(record.fieldName(i), columns.at(i));
            }
            QVERIFY(run(QStringLiteral("DROP TABLE t")));
            columns.clear();
        }
    }
}

void TestSqlNames::reservedWordsAreThoseThatFailAsTables_data()
{
    QTest::addColumn<QString>("word");
    for (const QString &word : keywords()) {
        QTest::newRow(qPrintable(word)) << word;
    }
}

void TestSqlNames::reservedWordsAreThoseThatFailAsTables()
{
    QFETCH(QString, word);
    for (const QString &name : {word, word.toLower()}) {
        QCOMPARE(SqlNames::canStandUnquoted(name), worksAsTable(name));
    }
}

void TestSqlNames::canBeRead_data()
{
    QTest::addColumn<QString>("word");
    for (const QString &word : keywords()) {
        QTest::newRow(qPrintable(word)) << word;
    }
    QTest::newRow("a plain name") << "nome";
    QTest::newRow("a name of two words") << "a b";
    QTest::newRow("another name of the key") << "rowid";
    QTest::newRow("a value") << "true";
}

void TestSqlNames::canBeRead()
{
    QFETCH(QString, word);
    // IF can be read as a column, but not as a table; it is refused for both.
    const bool expected = canBeSelected(word) && word != QLatin1String("IF");
    QCOMPARE(SqlNames::canBeRead(word), expected);
    QCOMPARE(SqlNames::canBeRead(word.toLower()), expected);
}

void TestSqlNames::madeSafe_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a name that may stand stays") << "Casa_1$è中"
                                                 << "Casa_1$è中";
    QTest::newRow("an apostrophe becomes full-width") << "L'isola"
                                                      << "L＇isola";
    QTest::newRow("a number sign becomes full-width") << "#Note"
                                                      << "＃Note";
    QTest::newRow("every forbidden sign of ASCII becomes full-width")
        << "!\"%&()*+,-./:;<=>?@[\\]^`{|}~"
        << "！＂％＆（）＊＋，－．／：；＜＝＞？＠［＼］＾｀｛｜｝～";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestSqlNames::madeSafe()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(SqlNames::madeSafe(text), expected);
    QCOMPARE(SqlNames::madePlain(expected), text);
}

void TestSqlNames::everySafeTextCanBeTurnedBack()
{
    for (char code = 0x21; code <= 0x7e; ++code) {
        const QString plain = QLatin1Char('_') + QString(QLatin1Char{code});
        const QString safe = SqlNames::madeSafe(plain);
        QVERIFY2(SqlNames::canStandUnquoted(safe), qPrintable(plain));
        QCOMPARE(SqlNames::madePlain(safe), plain);
    }
    // Full-width letters and digits were typed by somebody and are not touched.
    QCOMPARE(SqlNames::madePlain(QStringLiteral("Ａ１")), QStringLiteral("Ａ１"));
}

void TestSqlNames::refusalNamesTheReason_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    const QString characters = QStringLiteral(
        "Il nome '%1' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
    const QString letter = QStringLiteral("Il nome '%1' deve iniziare con una lettera.");
    const QString word = QStringLiteral("Il nome '%1' è una parola riservata.");
    QTest::newRow("a good name has none") << QStringLiteral("libri") << QString();
    QTest::newRow("blank") << QStringLiteral("i libri") << characters;
    QTest::newRow("quote") << QStringLiteral("l'arte") << characters;
    QTest::newRow("nothing") << QString() << characters;
    QTest::newRow("digit and sign") << QStringLiteral("1,2") << characters;
    QTest::newRow("leading digit") << QStringLiteral("1abc") << letter;
    QTest::newRow("leading dollar") << QStringLiteral("$abc") << letter;
    QTest::newRow("word") << QStringLiteral("order") << word;
    QTest::newRow("word in capitals") << QStringLiteral("TABLE") << word;
}

void TestSqlNames::refusalNamesTheReason()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QCOMPARE(SqlNames::refusal(name), reason.isEmpty() ? QString() : reason.arg(name));
}

QTEST_GUILESS_MAIN(TestSqlNames)
#include "model_sqlnames.moc"
