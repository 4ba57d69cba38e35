// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of which names SQLite reads unquoted, held against SQLite itself.
#include "model/sqlnames.h"

#include "model/formats.h"
#include "tests/support/SqlKeywords.h"

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
    void whatNoNameHoldsIsLeftOut_data();
    void whatNoNameHoldsIsLeftOut();
    void everyCharacterIsMadeSafe();
    void tableRefusal_data();
    void tableRefusal();
    void reservedWordsMakeNoTable_data();
    void reservedWordsMakeNoTable();
    void labelRefusal_data();
    void labelRefusal();
    void everyAsciiCharacterTyped();
    void whatIsTypedAndTakenCanBeMade();
    void derivedRefusal_data();
    void derivedRefusal();
    void isSameName_data();
    void isSameName();
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
    for (const QString &word : sqlKeywords()) {
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
    for (const QString &word : sqlKeywords()) {
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

void TestSqlNames::whatNoNameHoldsIsLeftOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a family of joined signs")
        << QStringLiteral("x👨\u200d👩\u200d👧") << QStringLiteral("x👨👩👧");
    QTest::newRow("a soft hyphen") << QStringLiteral("co\u00adop") << "coop";
    QTest::newRow("a space without width") << QStringLiteral("a\u200bb") << "ab";
    QTest::newRow("a byte order mark") << QStringLiteral("\ufeffa") << "a";
    QTest::newRow("a mark for the direction") << QStringLiteral("a\u202eb") << "ab";
    QTest::newRow("a control character") << QStringLiteral("a\u0001b") << "ab";
    QTest::newRow("the last of ASCII") << QStringLiteral("a\u007f") << "a";
    QTest::newRow("a control character beyond ASCII") << QStringLiteral("a\u0090b") << "ab";
    QTest::newRow("a format character in two units")
        << QString::fromUtf8("a\xf3\xa0\x81\xa7z") << "az";
    QTest::newRow("no character") << QString(QChar(0xfffe)) + QLatin1Char('a') << "a";
    QTest::newRow("half a pair in front") << QString(QChar(0xdc00)) + QLatin1Char('a') << "a";
    QTest::newRow("half a pair at the end") << QLatin1Char('a') + QString(QChar(0xd800)) << "a";
    QTest::newRow("two first halves") << QString(2, QChar(0xd83d)) + QChar(0xdc68) << "👨";
    QTest::newRow("white space becomes lines")
        << QStringLiteral("a b\tc\u00a0d\u2028e") << "a_b_c_d_e";
    QTest::newRow("a sign for what could not be read stays")
        << QStringLiteral("a\ufffd") << QStringLiteral("a\ufffd");
}

void TestSqlNames::whatNoNameHoldsIsLeftOut()
{
    QFETCH(QString, text);
    QTEST(SqlNames::madeSafe(text), "expected");
}

void TestSqlNames::everyCharacterIsMadeSafe()
{
    // The planes that hold letters, signs and marks; the others have nothing of their own.
    for (uint code = 1; code < 0xe0200; code += code == 0x1ffff ? 0xc0001 : 1) {
        const QString text = code < 0x10000 ? QString(QChar(code)) : QString::fromUcs4(&code, 1);
        const QString safe = SqlNames::madeSafe(QStringLiteral("t_") + text);
        if (!SqlNames::canStandUnquoted(safe) || SqlNames::madeSafe(safe) != safe) {
            QFAIL(qPrintable(QString::number(code, 16)));
        }
    }
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

namespace
{

const QString Characters =
    QStringLiteral("Il nome '%1' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.");
const QString Letter = QStringLiteral("Il nome '%1' deve iniziare con una lettera.");
const QString Word = QStringLiteral("Il nome '%1' è una parola riservata.");
const QString Programs = QStringLiteral("Il nome '%1' contiene una parola riservata al programma.");
const QString Long = QStringLiteral("Il nome '%1' è troppo lungo.");
const QString NoName = QStringLiteral("Una riga non ha nome.");

const QStringList Marks = QStringLiteral("_XSBTX_ _XSBTUSRX_ _XSBCONFX_ _XFLTRX_ _XDTX_ "
                                         "_XMLTYX_ -> STRINGFORMAT DATEFORMAT INTEGERFORMAT "
                                         "REALFORMAT MONEYFORMAT IMAGEFORMAT PDFFORMAT BOOLFORMAT "
                                         "MAILFORMAT LINKFORMAT SUBTABLEFORMAT URLFORMAT "
                                         "LONGSTRINGFORMAT")
                              .split(QLatin1Char(' '));

// A reason with the name in it, as it can be written; empty for no reason.
QString about(const QString &reason, const QString &name)
{
    QString text = reason;
    return text.replace(QLatin1String("%1"), QString::fromUtf8(name.toUtf8()));
}

// The stored form of a typed table name.
QString stored(const QString &typed)
{
    return SqlNames::withoutBlanks(typed).replace(QLatin1Char('#'), QLatin1String("HIDDENTABLE_"));
}

QString sentence(const char *utf8, const QString &about)
{
    return QString::fromUtf8(utf8).arg(about);
}

} // namespace

void TestSqlNames::tableRefusal_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("reason");
    QTest::newRow("letters, digits, lines and dollars") << "Libri_2$" << QString();
    QTest::newRow("accents and other scripts") << "Città中🎲" << QString();
    QTest::newRow("blanks become lines") << "I miei libri" << QString();
    QTest::newRow("a blank alone") << " " << QString();
    QTest::newRow("a line in front") << "_1" << QString();
    QTest::newRow("a number sign hides") << "#Note" << QString();
    QTest::newRow("a number sign in the middle") << "A#B" << QString();
    QTest::newRow("the hidden mark itself") << "HIDDENTABLE_Note" << QString();
    QTest::newRow("a hidden table may begin with a digit") << "#1" << QString();
    QTest::newRow("a hidden table may be called like a word") << "#order" << QString();
    QTest::newRow("the words for numbers do no harm") << "REALI_INTEGER" << QString();
    QTest::newRow("a name like a field of the program") << "UserPath" << QString();
    QTest::newRow("part of a mark") << "XMLTY" << QString();
    QTest::newRow("a mark in small letters") << "a_xsbtx_b" << QString();
    QTest::newRow("part of a keyword") << "Formato_stringa" << QString();
    QTest::newRow("a word inside a name") << "Orders" << QString();
    QTest::newRow("a reserved table's name inside a name") << "settings2" << QString();

    QTest::newRow("an apostrophe") << "L'arte" << Characters;
    QTest::newRow("a tab") << "a\tb" << Characters;
    QTest::newRow("a no-break space") << QStringLiteral("a\u00a0b") << Characters;
    QTest::newRow("an invisible character") << QStringLiteral("a\u200bb") << Characters;
    QTest::newRow("a control character beyond ASCII")
        << QStringLiteral("a") + QChar(0x85) << Characters;
    QTest::newRow("a lone high surrogate") << QStringLiteral("a") + QChar(0xd83c) << Characters;
    QTest::newRow("a lone low surrogate") << QStringLiteral("a") + QChar(0xdfb2) << Characters;
    QTest::newRow("a bad character after a digit") << "1,2" << Characters;
    QTest::newRow("a digit in front") << "2Libri" << Letter;
    QTest::newRow("a dollar in front") << "$Libri" << Letter;
    QTest::newRow("SQLite's own prefix") << "sqlite_libri" << Word;
    QTest::newRow("SQLite's own prefix in capitals") << "SQLITE_" << Word;
    QTest::newRow("SQLite's own prefix with a blank") << "sqlite x" << Word;

    for (const QString &mark : Marks) {
        QTest::newRow(qPrintable(sentence("%1 is a mark", mark)))
            << QStringLiteral("a") + mark + QStringLiteral("b") << Programs;
    }
    // The name of a link's column holds them, and is read in any letter case.
    for (const QString &keyword : Formats::keywords()) {
        QTest::newRow(qPrintable(sentence("%1 in small letters", keyword)))
            << QStringLiteral("a") + keyword.toLower() + QStringLiteral("_b") << Programs;
    }
    QTest::newRow("a keyword in mixed letters") << "#SubTableFormat" << Programs;
    QTest::newRow("a keyword but for a letter that only looks like one")
        << QStringLiteral("lin\u212aformat") << QString();
    QTest::newRow("a mark made of blanks") << "a XSBTX b" << Programs;
    QTest::newRow("a mark that ends where the next begins") << "a_XSBTX" << Programs;
    QTest::newRow("a mark that begins where the name does") << "XSBTX_a" << Programs;
    QTest::newRow("a mark but for its lines") << "XDTX" << Programs;
    QTest::newRow("a mark beside a bad character") << "a'_XDTX_" << Programs;
    for (const QString &name :
         {QStringLiteral("settings"), QStringLiteral("filters"), QStringLiteral("subtablesconfigs"),
          QStringLiteral("Settings"), QStringLiteral("FILTERS"), QStringLiteral("SubTablesConfigs"),
          QStringLiteral("#settings"), QStringLiteral("##Filters"),
          QStringLiteral("HIDDENTABLE_SUBTABLESCONFIGS")}) {
        QTest::newRow(qPrintable(sentence("%1 is a reserved table", name))) << name << Programs;
    }

    QTest::newRow("100 letters") << QString(100, QLatin1Char('a')) << QString();
    QTest::newRow("101 letters") << QString(101, QLatin1Char('a')) << Long;
    QTest::newRow("50 letters of two bytes") << QString(50, QChar(0xe8)) << QString();
    QTest::newRow("51 letters of two bytes") << QString(51, QChar(0xe8)) << Long;
    QTest::newRow("25 letters of four bytes") << QStringLiteral("🎲").repeated(25) << QString();
    QTest::newRow("26 letters of four bytes") << QStringLiteral("🎲").repeated(26) << Long;
    QTest::newRow("what hides a table is not counted")
        << QLatin1Char('#') + QString(99, QLatin1Char('a')) << QString();
    QTest::newRow("too long comes first") << QString(101, QLatin1Char('\'')) << Long;
}

void TestSqlNames::tableRefusal()
{
    QFETCH(QString, typed);
    QFETCH(QString, reason);
    QCOMPARE(SqlNames::tableRefusal(typed, stored(typed)), about(reason, typed));
}

void TestSqlNames::reservedWordsMakeNoTable_data()
{
    reservedWordsAreThoseThatFailAsTables_data();
}

void TestSqlNames::reservedWordsMakeNoTable()
{
    QFETCH(QString, word);
    const QString mixed = word.left(1) + word.mid(1).toLower();
    for (const QString &name : {word, word.toLower(), mixed}) {
        const QString reason = worksAsTable(name) ? QString() : about(Word, name);
        QCOMPARE(SqlNames::tableRefusal(name, name), reason);
    }
    QVERIFY(SqlNames::labelRefusal(word, Formats::String).isEmpty());
    QVERIFY(SqlNames::tableRefusal(word + QLatin1Char('_'), word + QLatin1Char('_')).isEmpty());
}

void TestSqlNames::labelRefusal_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("reason");
    const QString text = Formats::String;
    QTest::newRow("letters, digits, lines and dollars") << "Titolo_2$" << text << QString();
    QTest::newRow("a digit in front") << "1" << text << QString();
    QTest::newRow("a dollar in front") << "$" << text << QString();
    QTest::newRow("accents and other scripts") << "Città中🎲" << text << QString();
    QTest::newRow("blanks become lines") << "Data di nascita" << text << QString();
    QTest::newRow("a blank alone") << " " << text << QString();
    QTest::newRow("what begins a label only") << "a FORMAT_b" << text << QString();
    QTest::newRow("a reserved table's name") << "settings" << text << QString();
    QTest::newRow("SQLite's own prefix") << "sqlite_a" << text << QString();
    QTest::newRow("Id inside a label") << "Idea" << text << QString();

    QTest::newRow("nothing") << "" << text << NoName;
    QTest::newRow("an apostrophe") << "Quant'è" << text << Characters;
    QTest::newRow("a number sign") << "#" << text << Characters;
    QTest::newRow("a tab") << "a\tb" << text << Characters;
    QTest::newRow("a no-break space") << QStringLiteral("a\u00a0b") << text << Characters;
    QTest::newRow("a lone surrogate") << QString(QChar(0xdfb2)) << text << Characters;

    for (const QString &mark : Marks) {
        QTest::newRow(qPrintable(sentence("%1 is a mark", mark)))
            << QStringLiteral("a") + mark + QStringLiteral("b") << text << Programs;
        // Records are shown by such words in any letter case.
        QTest::newRow(qPrintable(sentence("%1 in small letters", mark)))
            << QStringLiteral("a") + mark.toLower() + QStringLiteral("b") << text << Programs;
    }
    QTest::newRow("a keyword alone in small letters") << "linkformat" << text << Programs;
    QTest::newRow("a keyword in mixed letters") << "SubTableFormat" << text << Programs;
    QTest::newRow("the hidden mark in small letters") << "hiddentable" << text << Programs;
    QTest::newRow("a word of a keyword") << "format" << text << QString();
    QTest::newRow("a letter that only looks like one of a keyword")
        << QStringLiteral("lin\u212aformat") << text << QString();
    QTest::newRow("the hidden mark") << "aHIDDENTABLE_b" << text << Programs;
    QTest::newRow("the hidden mark that the next part completes")
        << "HIDDENTABLE" << text << Programs;
    QTest::newRow("a mark made of blanks") << "a XMLTYX 2" << text << Programs;
    QTest::newRow("a mark that begins where the label does") << "XMLTYX_2" << text << Programs;
    QTest::newRow("a mark that ends where the next begins") << "a_XSBTUSRX" << text << Programs;
    for (const QString &name :
         {QStringLiteral("Id"), QStringLiteral("ID"), QStringLiteral("id"), QStringLiteral("iD"),
          QStringLiteral("UserPath"), QStringLiteral("USERPATH"), QStringLiteral("userpath")}) {
        QTest::newRow(qPrintable(sentence("%1 is a field of the program", name)))
            << name << text << Programs;
    }

    QTest::newRow("a label of which only a field of the program is read")
        << "IdFORMAT_a" << text << Programs;

    for (const QString &format : Formats::keywords()) {
        const bool isInteger = format == Formats::Integer;
        const bool isReal = format == Formats::Real;
        QTest::newRow(qPrintable(sentence("INTEGER in %1", format)))
            << "a INTEGER" << format << (isInteger ? QString() : Programs);
        QTest::newRow(qPrintable(sentence("REAL in %1", format)))
            << "REALE" << format << (isInteger || isReal ? QString() : Programs);
        QTest::newRow(qPrintable(sentence("the words in small letters in %1", format)))
            << "Intero Integer Reale" << format << QString();
    }

    QTest::newRow("200 letters") << QString(200, QLatin1Char('a')) << text << QString();
    QTest::newRow("201 letters") << QString(201, QLatin1Char('a')) << text << Long;
    QTest::newRow("100 letters of two bytes") << QString(100, QChar(0xe8)) << text << QString();
    QTest::newRow("101 letters of two bytes") << QString(101, QChar(0xe8)) << text << Long;
}

void TestSqlNames::labelRefusal()
{
    QFETCH(QString, typed);
    QFETCH(QString, format);
    QFETCH(QString, reason);
    QCOMPARE(SqlNames::labelRefusal(typed, format), about(reason, typed));
}

void TestSqlNames::everyAsciiCharacterTyped()
{
    const QString allowed =
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_$ ");
    for (ushort code = 1; code <= 0x7f; ++code) {
        const QChar character(code);
        const bool mayStand = allowed.contains(character);
        const bool hides = character == QLatin1Char('#');
        const QString inside = QStringLiteral("a") + character + QStringLiteral("b");
        const QString reason = mayStand ? QString() : about(Characters, inside);
        QCOMPARE(SqlNames::tableRefusal(inside, stored(inside)), hides ? QString() : reason);
        QCOMPARE(SqlNames::labelRefusal(inside, Formats::String), reason);

        const QString front = character + QStringLiteral("b");
        const bool begins = mayStand && !character.isDigit() && character != QLatin1Char('$');
        const QString atFront = about(mayStand ? Letter : Characters, front);
        QCOMPARE(SqlNames::tableRefusal(front, stored(front)),
                 begins || hides ? QString() : atFront);
    }
}

void TestSqlNames::whatIsTypedAndTakenCanBeMade()
{
    for (ushort code = 1; code <= 0x7f; ++code) {
        const QString name = QStringLiteral("a") + QChar(code);
        if (SqlNames::tableRefusal(name, stored(name)).isEmpty()) {
            QVERIFY2(worksAsTable(stored(name)), qPrintable(name));
        }
        if (SqlNames::labelRefusal(name, Formats::String).isEmpty()) {
            QVERIFY2(
                canBeSelected(QStringLiteral("NSTRINGFORMAT_") + SqlNames::withoutBlanks(name)),
                qPrintable(name));
            QVERIFY(run(QStringLiteral("DROP TABLE t")));
        }
    }
}

void TestSqlNames::derivedRefusal_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a link") << "#Note"
                            << "NLINKFORMAT_＃Note" << QString();
    QTest::newRow("a copied field") << "Autori"
                                    << "XAutori_XDTX_RSTRINGFORMAT_Nome" << QString();
    QTest::newRow("a copied number holds an Id") << "Autori"
                                                 << "XAutori_XDTX_RINTEGERFORMAT_Anni" << QString();
    QTest::newRow("a copied link holds an Id") << "Autori"
                                               << "XREALI_XDTX_NLINKFORMAT_Autori" << QString();
    QTest::newRow("a table of another program") << "my table"
                                                << "NLINKFORMAT_my table" << Characters;
    QTest::newRow("a field of another program") << "Autori"
                                                << "XAutori_XDTX_NSTRINGFORMAT_l'età" << Characters;
    QTest::newRow("a link that would be written as a number") << "REALI"
                                                              << "NLINKFORMAT_REALI" << Programs;
    QTest::newRow("a link that would be written as a whole number")
        << "INTEGER"
        << "NLINKFORMAT_INTEGER" << Programs;
    for (const QString &keyword : Formats::keywords()) {
        const QString table = QStringLiteral("vecchi_") + keyword.toLower();
        QTest::newRow(qPrintable(sentence("a link to a table named after %1", keyword)))
            << table << QStringLiteral("NLINKFORMAT_") + table << Programs;
    }
    QTest::newRow("a copied link of such a table holds an Id")
        << "linkformat"
        << "Xlinkformat_XDTX_NLINKFORMAT_Autori" << QString();
}

void TestSqlNames::derivedRefusal()
{
    QFETCH(QString, source);
    QFETCH(QString, column);
    QFETCH(QString, reason);
    QCOMPARE(SqlNames::derivedRefusal(source, column), about(reason, source));
}

void TestSqlNames::isSameName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("other");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the same") << "libri"
                              << "libri" << true;
    QTest::newRow("another letter case") << "libri"
                                         << "LibRI" << true;
    QTest::newRow("another name") << "libri"
                                  << "libro" << false;
    QTest::newRow("part of a name") << "libri"
                                    << "libri2" << false;
    QTest::newRow("beyond ASCII the letter case counts") << "Città"
                                                         << "CittÀ" << false;
}

void TestSqlNames::isSameName()
{
    QFETCH(QString, name);
    QFETCH(QString, other);
    QFETCH(bool, expected);
    QCOMPARE(SqlNames::isSameName(name, other), expected);
    QCOMPARE(SqlNames::isSameName(other, name), expected);
    // SQLite sees it the same way.
    QVERIFY(run(QStringLiteral("CREATE TABLE %1 (a)").arg(name)));
    QCOMPARE(QSqlQuery().exec(QStringLiteral("CREATE TABLE %1 (a)").arg(other)), !expected);
}

QTEST_GUILESS_MAIN(TestSqlNames)
#include "model_sqlnames.moc"
