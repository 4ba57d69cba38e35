// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Conditions: their names, what matches in each format, how they are joined.
#include "model/filters.h"

#include "model/columns.h"
#include "model/formats.h"

#include <QRandomGenerator>
#include <QtTest>

#include <array>

using Filters::Comparison;

namespace
{

// The letters of the comparisons that let the value pass, in the order "EDMm".
QString passing(const QString &format, const QString &wanted, const QString &value,
                bool followsLink = false)
{
    const QString letters = QStringLiteral("EDMm");
    QString result;
    for (int i = 0; i < letters.size(); ++i) {
        const Filters::Condition condition(format, Filters::comparisons().at(i), wanted,
                                           followsLink);
        if (condition.matches(value)) {
            result.append(letters.at(i));
        }
    }
    return result;
}

// One condition of the walk below, as plain values.
struct Plain {
    int column;
    int comparison; // 0 to 3
    QString value;
    bool isAnd;
};

// The columns of the walk: every format that compares, two that do not, and the program's own.
const QStringList Walked = {QStringLiteral("RINTEGERFORMAT_Id"),
                            QStringLiteral("RSTRINGFORMAT_Titolo"),
                            QStringLiteral("NDATEFORMAT_Nato"),
                            QStringLiteral("NINTEGERFORMAT_Pagine"),
                            QStringLiteral("NREALFORMAT_Peso"),
                            QStringLiteral("NMONEYFORMAT_Prezzo"),
                            QStringLiteral("NBOOLFORMAT_Letto"),
                            QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                            QStringLiteral("NLONGSTRINGFORMAT_Note"),
                            QStringLiteral("NLINKFORMAT_autori"),
                            QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Nome")};

// A day as a number that grows with it; -1 for what is no date.
int dayNumber(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    if (text.size() != 10 || parts.size() != 3 || parts.at(0).size() != 2 ||
        parts.at(1).size() != 2) {
        return -1;
    }
    const QDate date(parts.at(2).toInt(), parts.at(1).toInt(), parts.at(0).toInt());
    return date.isValid() ? int(date.toJulianDay()) : -1;
}

bool inOrder(double value, double wanted, int comparison)
{
    const std::array<bool, 4> answers = {!(value < wanted) && !(value > wanted),
                                         value < wanted || value > wanted,
                                         wanted<value, wanted> value};
    return answers.at(size_t(comparison));
}

// What one condition says of a value, worked out apart from the code under test.
bool verdict(const Plain &condition, const QString &value)
{
    const QString name = Walked.at(condition.column);
    if (name.contains(QStringLiteral("LINK"))) {
        return true;
    }
    if (name.contains(QStringLiteral("BOOL"))) {
        const bool isNo = value.isEmpty() || value == QStringLiteral("0") ||
                          value.toLower() == QStringLiteral("false");
        const bool wantsNo = condition.value != QStringLiteral("TRUE");
        return (isNo == wantsNo) != (condition.comparison == 1);
    }
    if (name.contains(QStringLiteral("DATE"))) {
        return inOrder(dayNumber(value), dayNumber(condition.value), condition.comparison);
    }
    const bool counts =
        name.startsWith(QLatin1Char('X')) || name.contains(QStringLiteral("INTEGER")) ||
        name.contains(QStringLiteral("REAL")) || name.contains(QStringLiteral("MONEY"));
    if (counts) {
        return inOrder(value.toDouble(), condition.value.toDouble(), condition.comparison);
    }
    if (condition.comparison < 2) {
        return (value.compare(condition.value) == 0) == (condition.comparison == 0);
    }
    return value.indexOf(condition.value) >= 0;
}

// The whole set's answer: the conditions lined up by column, then folded from the left.
bool foldedVerdict(const QVector<Plain> &conditions, const QStringList &record)
{
    QVector<QPair<bool, bool>> answers; // what it says, whether it is joined by "And"
    for (int column = 1; column < Walked.size(); ++column) {
        for (const Plain &condition : conditions) {
            const bool isOwn = Walked.at(column).endsWith(QStringLiteral("UserPath"));
            if (condition.column == column && !isOwn) {
                answers.append({verdict(condition, record.at(column)), condition.isAnd});
            }
        }
    }
    bool result = answers.isEmpty() || answers.first().first;
    for (const QPair<bool, bool> &answer : answers.mid(1)) {
        result = answer.second ? result && answer.first : result || answer.first;
    }
    return result;
}

QString anyText(QRandomGenerator &random, int column)
{
    static const QVector<QStringList> pools = {
        {QStringLiteral("1"), QStringLiteral("2")},
        {QString(), QStringLiteral("Zeno"), QStringLiteral("L''isola"), QStringLiteral("isola"),
         QStringLiteral("zeno"), QStringLiteral("''")},
        {QString(), QStringLiteral("02/01/2020"), QStringLiteral("01/02/2020"),
         QStringLiteral("31/12/2019"), QStringLiteral("2/1/2020"), QStringLiteral("30/02/2020"),
         QStringLiteral("domani")},
        {QString(), QStringLiteral("0"), QStringLiteral("12"), QStringLiteral("-3"),
         QStringLiteral("120"), QStringLiteral("molte")},
        {QString(), QStringLiteral("0.500000"), QStringLiteral("12.25"), QStringLiteral("-3"),
         QStringLiteral("0.5"), QStringLiteral("1234,5")},
        {QString(), QStringLiteral("12.50"), QStringLiteral("9.90"), QStringLiteral("12.5"),
         QStringLiteral("gratis")},
        {QString(), QStringLiteral("TRUE"), QStringLiteral("FALSE"), QStringLiteral("0"),
         QStringLiteral("false"), QStringLiteral("1")},
        {QString(), QStringLiteral("TABLES_DOC/libri_Zeno")},
        {QString(), QStringLiteral("bello"), QStringLiteral("non bello"),
         QStringLiteral("dell''800")},
        {QString(), QStringLiteral("3 Svevo"), QStringLiteral("autori")},
        {QString(), QStringLiteral("1"), QStringLiteral("12"), QStringLiteral("3")}};
    const QStringList &pool = pools.at(column);
    return pool.at(random.bounded(pool.size()));
}

} // namespace

class TestFilters : public QObject
{
    Q_OBJECT

private slots:
    void names();
    void comparisonNamed_data();
    void comparisonNamed();
    void joiningWords();
    void comparedFormat_data();
    void comparedFormat();
    void isOffered_data();
    void isOffered();
    void matches_data();
    void matches();
    void textFormatsAreAlike();
    void someFormatsPassEverything();
    void linkThatIsFollowedComparesTexts();
    void withoutComparisonEverythingPasses();
    void joinedFromLeftToRight_data();
    void joinedFromLeftToRight();
    void whatCannotChangeTheResultIsNotAsked();
    void columnsDecideTheOrder();
    void ownColumnsAndMissingOnesAreLeftOut();
    void quotesOfARecordAreDoubled();
    void numbersOfAnyTypeAreRead();
    void agreesWithAPlainEvaluation();
    void settingsCompareWhole();
};

void TestFilters::names()
{
    QStringList all;
    for (const Comparison comparison : Filters::comparisons()) {
        all.append(Filters::comparisonName(comparison));
    }
    QCOMPARE(all, (QStringList{QStringLiteral("Equal"), QStringLiteral("Disequal"),
                               QStringLiteral("Major"), QStringLiteral("Minor")}));
    QCOMPARE(Filters::comparisonName(Comparison::None), QStringLiteral("NoCondition"));
}

void TestFilters::comparisonNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("expected");
    const auto add = [](const char *name, Comparison expected) {
        QTest::newRow(*name == '\0' ? "nothing" : name) << QString::fromUtf8(name) << int(expected);
    };
    add("Equal", Comparison::Equal);
    add("Disequal", Comparison::Disequal);
    add("Major", Comparison::Major);
    add("Minor", Comparison::Minor);
    add("mAJOR", Comparison::Major);
    add("NO FILTER", Comparison::None);
    add("NoCondition", Comparison::None);
    add("Equal ", Comparison::None);
    add("", Comparison::None);
}

void TestFilters::comparisonNamed()
{
    QFETCH(QString, name);
    QTEST(int(Filters::comparisonNamed(name)), "expected");
}

void TestFilters::joiningWords()
{
    QVERIFY(Filters::isAnd(QStringLiteral("And")));
    QVERIFY(Filters::isAnd(QStringLiteral("AND")));
    QVERIFY(!Filters::isAnd(QStringLiteral("Or")));
    QVERIFY(!Filters::isAnd(QString()));
    QVERIFY(!Filters::isAnd(QStringLiteral("Xor")));
}

void TestFilters::comparedFormat_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("format");
    QTest::newRow("a plain column") << "NDATEFORMAT_Nato"
                                    << "DATE";
    QTest::newRow("the Id") << "RINTEGERFORMAT_Id"
                            << "INTEGER";
    QTest::newRow("a reference") << "Xautori_XDTX_NSTRINGFORMAT_Nome"
                                 << "autori_XDTX_NSTRING";
    QTest::newRow("a reference to a detail table")
        << "XHIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_b_XSBTUSRX_c_XDTX_NDATEFORMAT_x"
        << "HIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_b_XSBTUSRX_c_XDTX_NDATE";
    QTest::newRow("a foreign column that begins with X") << "Xtra"
                                                         << "";
    QTest::newRow("a foreign column") << "colour"
                                      << "olour";
    QTest::newRow("a label with the marker of references") << "NSTRINGFORMAT_a_XDTX_b"
                                                           << "STRING";
}

void TestFilters::comparedFormat()
{
    QFETCH(QString, column);
    QTEST(Filters::comparedFormat(column), "format");
}

void TestFilters::isOffered_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("offered");
    for (const QString &keyword : Formats::keywords()) {
        const bool offered =
            keyword != Formats::Image && keyword != Formats::Pdf && keyword != Formats::SubTable;
        QTest::newRow(qPrintable(keyword)) << QLatin1Char('N') + keyword + "_Campo" << offered;
    }
    QTest::newRow("the Id") << "RINTEGERFORMAT_Id" << true;
    QTest::newRow("the folder of attachments") << "NLONGSTRINGFORMAT_UserPath" << false;
    QTest::newRow("a reference") << "Xa_XDTX_NSTRINGFORMAT_b" << true;
    QTest::newRow("a reference to a picture") << "Xa_XDTX_NIMAGEFORMAT_b" << false;
    QTest::newRow("a foreign column") << "colour" << true;
}

void TestFilters::isOffered()
{
    QFETCH(QString, column);
    QTEST(Filters::isOffered(column), "offered");
}

// The rows of the table below: wanted, value, which of "EDMm" pass.
struct Row {
    const char *claim;
    const char *wanted;
    const char *value;
    const char *passing;
};

static void addRows(const char *format, std::initializer_list<Row> rows)
{
    for (const Row &row : rows) {
        QTest::addRow("%s: %s", format, row.claim)
            << QString::fromUtf8(format) << QString::fromUtf8(row.wanted)
            << QString::fromUtf8(row.value) << QString::fromUtf8(row.passing);
    }
}

void TestFilters::matches_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");
    addRows("BOOL", {{"yes is yes", "TRUE", "TRUE", "EMm"},
                     {"no is not yes", "TRUE", "FALSE", "D"},
                     {"no is no", "FALSE", "FALSE", "EMm"},
                     {"nothing is no", "FALSE", "", "EMm"},
                     {"0 is no", "FALSE", "0", "EMm"},
                     {"any other text is yes", "TRUE", "forse", "EMm"},
                     {"1 is yes", "TRUE", "1", "EMm"},
                     {"a text with an apostrophe is yes", "FALSE", "l''altro", "D"},
                     {"false in capitals is no", "TRUE", "False", "D"}});
    addRows("DATE", {{"the same day", "02/01/2020", "02/01/2020", "E"},
                     {"dates are compared, not texts", "01/02/2020", "02/01/2020", "Dm"},
                     {"a later day", "01/02/2020", "01/01/2021", "DM"},
                     {"nothing lies before every date", "01/01/0100", "", "Dm"},
                     {"a day that does not exist lies before", "01/01/2020", "30/02/2021", "Dm"},
                     {"another order lies before", "01/01/2020", "2021-01-02", "Dm"},
                     {"an apostrophe lies before", "01/01/2020", "''21", "Dm"},
                     {"every date lies after none", "", "01/01/2020", "DM"},
                     {"what cannot be read is equal", "", "domani", "E"},
                     {"nothing equals an unreadable condition", "domani", "", "E"}});
    addRows("INTEGER", {{"the same number", "12", "12", "E"},
                        {"more", "12", "120", "DM"},
                        {"numbers are compared, not texts", "12", "9", "Dm"},
                        {"below zero", "-3", "-12", "Dm"},
                        {"nothing counts as 0", "0", "", "E"},
                        {"a text counts as 0", "5", "molte", "Dm"},
                        {"decimals count as 0", "0", "7.9", "E"},
                        {"an apostrophe counts as 0", "0", "12''", "E"},
                        {"blanks around it do not count", "12", " 12 ", "E"},
                        {"an unreadable condition counts as 0", "tante", "1", "DM"}});
    for (const char *const format : {"REAL", "MONEY"}) {
        addRows(format, {{"the same number in other digits", "12.500000", "12.5", "E"},
                         {"more", "12.50", "100", "DM"},
                         {"less", "12.50", "9.99", "Dm"},
                         {"nothing counts as 0", "0", "", "E"},
                         {"a text counts as 0", "1", "gratis", "Dm"},
                         {"a comma makes no number", "1234.5", "1234,5", "Dm"},
                         {"not a number counts as 0", "0", "nan", "E"},
                         {"infinity counts as 0", "0", "inf", "E"},
                         {"an apostrophe counts as 0", "-1", "12''", "DM"},
                         {"an unreadable condition counts as 0", "poco", "0.1", "DM"}});
    }
    addRows("autori_XDTX_NSTRING", {{"the same Id", "12", "12", "E"},
                                    {"the Id as a real column holds it", "12", "12.000000", "E"},
                                    {"Ids are compared as numbers", "12", "9", "Dm"},
                                    {"a higher Id", "12", "13", "DM"},
                                    {"no reference counts as 0", "12", "", "Dm"},
                                    {"no choice equals no reference", "", "0", "E"},
                                    {"a link's line stands for its Id", "12 Rossi", "12", "E"},
                                    {"a text counts as 0", "0", "Rossi", "E"},
                                    {"an apostrophe counts as 0", "0", "''", "E"}});
    addRows("STRING", {{"the same text", "Zeno", "Zeno", "EMm"},
                       {"letter case counts", "zeno", "Zeno", "D"},
                       {"a part of it", "en", "Zeno", "DMm"},
                       {"a part in another case", "EN", "Zeno", "D"},
                       {"the whole of it and more", "Zeno e altri", "Zeno", "D"},
                       {"nothing is equal to nothing", "", "", "EMm"},
                       {"every text contains nothing", "", "Zeno", "DMm"},
                       {"nothing contains no text", "Zeno", "", "D"},
                       {"an apostrophe is doubled on both sides", "L''isola", "L''isola", "EMm"},
                       {"a part with an apostrophe", "''isola", "L''isola", "DMm"},
                       {"an apostrophe alone", "''", "L''isola", "DMm"},
                       {"blanks count", "Zeno", "Zeno ", "DMm"}});
}

void TestFilters::matches()
{
    QFETCH(QString, format);
    QFETCH(QString, wanted);
    QFETCH(QString, value);
    QTEST(passing(format, wanted, value), "expected");
}

void TestFilters::textFormatsAreAlike()
{
    // An unknown word, a foreign column's whole name and nothing at all are compared as texts.
    for (const char *const format :
         {"STRING", "LONGSTRING", "MAIL", "URL", "COLOUR", "string", "olour", ""}) {
        const QString word = QString::fromUtf8(format);
        QCOMPARE(passing(word, QStringLiteral("b"), QStringLiteral("b")), QStringLiteral("EMm"));
        QCOMPARE(passing(word, QStringLiteral("b"), QStringLiteral("abc")), QStringLiteral("DMm"));
        QCOMPARE(passing(word, QStringLiteral("b"), QStringLiteral("B")), QStringLiteral("D"));
    }
}

void TestFilters::someFormatsPassEverything()
{
    for (const char *const format : {"IMAGE", "PDF", "SUBTABLE", "LINK"}) {
        for (const char *const value : {"", "x", "3 Svevo", "l''altro"}) {
            QCOMPARE(passing(QString::fromUtf8(format), QStringLiteral("3 Svevo"),
                             QString::fromUtf8(value)),
                     QStringLiteral("EDMm"));
        }
    }
}

void TestFilters::linkThatIsFollowedComparesTexts()
{
    const QString link = QStringLiteral("LINK");
    const QString wanted = QStringLiteral("3 D''Annunzio");
    QCOMPARE(passing(link, wanted, wanted, true), QStringLiteral("EMm"));
    QCOMPARE(passing(link, wanted, QStringLiteral("3 Svevo"), true), QStringLiteral("D"));
    QCOMPARE(passing(link, wanted, QString(), true), QStringLiteral("D"));
    // On references the Id decides, followed or not.
    QCOMPARE(passing(QStringLiteral("a_XDTX_NSTRING"), wanted, QStringLiteral("3"), true),
             QStringLiteral("E"));
}

void TestFilters::withoutComparisonEverythingPasses()
{
    for (const QString &keyword : Formats::keywords()) {
        const Filters::Condition condition(QString(keyword).remove(QStringLiteral("FORMAT")),
                                           Comparison::None, QStringLiteral("x"));
        QVERIFY(condition.matches(QString()));
        QVERIFY(condition.matches(QStringLiteral("y")));
    }
}

void TestFilters::joinedFromLeftToRight_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("answers");
    QTest::addColumn<bool>("expected");
    // A the first, then B and C with the words given.
    QTest::newRow("the first word is ignored: And, false") << "&"
                                                           << "0" << false;
    QTest::newRow("the first word is ignored: Or, false") << "|"
                                                          << "0" << false;
    QTest::newRow("the first word is ignored: Or, true") << "|"
                                                         << "1" << true;
    QTest::newRow("no condition lets all pass") << ""
                                                << "" << true;
    QTest::newRow("A and B, both") << "&&"
                                   << "11" << true;
    QTest::newRow("A and B, one") << "&&"
                                  << "10" << false;
    QTest::newRow("A or B, one") << "&|"
                                 << "01" << true;
    QTest::newRow("A or B, none") << "&|"
                                  << "00" << false;
    QTest::newRow("(A and B) or C: C alone") << "&&|"
                                             << "001" << true;
    QTest::newRow("(A and B) or C: A and B") << "&&|"
                                             << "110" << true;
    QTest::newRow("(A and B) or C: A alone") << "&&|"
                                             << "100" << false;
    QTest::newRow("(A or B) and C, no precedence: A alone") << "&|&"
                                                            << "100" << false;
    QTest::newRow("(A or B) and C, no precedence: A and C") << "&|&"
                                                            << "101" << true;
}

void TestFilters::joinedFromLeftToRight()
{
    QFETCH(QString, words);
    QFETCH(QString, answers);
    QFETCH(bool, expected);
    QStringList columns;
    QVector<Filters::Joined> conditions;
    for (int i = 0; i < words.size(); ++i) {
        columns.append(QStringLiteral("NSTRINGFORMAT_%1").arg(i));
        conditions.append({columns.last(),
                           {QStringLiteral("STRING"), Comparison::Equal, QStringLiteral("1")},
                           words.at(i) == QLatin1Char('&')});
    }
    const Filters::Predicate predicate(columns, conditions);
    QCOMPARE(predicate.passes([&answers](int position) { return answers.mid(position, 1); }),
             expected);
}

void TestFilters::whatCannotChangeTheResultIsNotAsked()
{
    const QStringList columns = {QStringLiteral("NSTRINGFORMAT_a"),
                                 QStringLiteral("NSTRINGFORMAT_b"),
                                 QStringLiteral("NSTRINGFORMAT_c")};
    const auto asked = [&columns](bool bIsAnd, bool cIsAnd, const QStringList &values) {
        const Filters::Condition isOne(QStringLiteral("STRING"), Comparison::Equal,
                                       QStringLiteral("1"));
        const Filters::Predicate predicate(columns, {{columns.at(0), isOne, true},
                                                     {columns.at(1), isOne, bIsAnd},
                                                     {columns.at(2), isOne, cIsAnd}});
        QString positions;
        predicate.passes([&positions, &values](int position) {
            positions.append(QString::number(position));
            return values.at(position);
        });
        return positions;
    };
    const QString one = QStringLiteral("1");
    QCOMPARE(asked(true, true, {QString(), one, one}), QStringLiteral("0"));
    QCOMPARE(asked(true, true, {one, one, one}), QStringLiteral("012"));
    QCOMPARE(asked(false, false, {one, one, one}), QStringLiteral("0"));
    QCOMPARE(asked(false, true, {one, one, one}), QStringLiteral("02"));
    QCOMPARE(asked(true, false, {QString(), one, one}), QStringLiteral("02"));
}

void TestFilters::columnsDecideTheOrder()
{
    // B stands before A in the list of conditions, behind it in the table: A or, and B.
    const QStringList columns = {
        QStringLiteral("RINTEGERFORMAT_Id"), QStringLiteral("NSTRINGFORMAT_a"),
        QStringLiteral("NSTRINGFORMAT_x"), QStringLiteral("NSTRINGFORMAT_b")};
    const QString format = QStringLiteral("STRING");
    const auto is = [&format](const QString &value) {
        return Filters::Condition(format, Comparison::Equal, value);
    };
    const Filters::Predicate predicate(columns, {{columns.at(3), is(QStringLiteral("b")), true},
                                                 {columns.at(1), is(QStringLiteral("a")), false},
                                                 {columns.at(1), is(QStringLiteral("a2")), false}});
    QCOMPARE(predicate.columns(), (QStringList{columns.at(1), columns.at(3)}));
    const auto passes = [&predicate](const QStringList &values) {
        return predicate.passes([&values](int position) { return values.at(position); });
    };
    QVERIFY(passes({QStringLiteral("a"), QStringLiteral("b")}));
    QVERIFY(passes({QStringLiteral("a2"), QStringLiteral("b")}));
    QVERIFY(!passes({QStringLiteral("a"), QStringLiteral("c")}));
    QVERIFY(!passes({QStringLiteral("c"), QStringLiteral("b")}));
}

void TestFilters::ownColumnsAndMissingOnesAreLeftOut()
{
    const Filters::Condition never(QStringLiteral("STRING"), Comparison::Equal,
                                   QStringLiteral("never"));
    const QStringList columns = {QStringLiteral("RINTEGERFORMAT_Id"),
                                 QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                                 QStringLiteral("NSTRINGFORMAT_a")};
    const Filters::Predicate predicate(columns, {{columns.at(0), never, true},
                                                 {columns.at(1), never, true},
                                                 {QStringLiteral("NSTRINGFORMAT_A"), never, true},
                                                 {QStringLiteral("NSTRINGFORMAT_b"), never, true}});
    QVERIFY(predicate.isEmpty());
    QVERIFY(predicate.columns().isEmpty());
    QVERIFY(predicate.passes([](int) { return QVariant(); }));
    QVERIFY(Filters::Predicate().isEmpty());
    QVERIFY(Filters::Predicate({}, {{columns.at(2), never, true}}).passes([](int) {
        return QVariant();
    }));
}

void TestFilters::quotesOfARecordAreDoubled()
{
    const QString column = QStringLiteral("NSTRINGFORMAT_a");
    const Filters::Predicate predicate(
        {column}, {{column,
                    {QStringLiteral("STRING"), Comparison::Equal, QStringLiteral("L''isola")},
                    true}});
    QVERIFY(predicate.passes([](int) { return QVariant(QStringLiteral("L'isola")); }));
    QVERIFY(!predicate.passes([](int) { return QVariant(QStringLiteral("L''isola")); }));
}

void TestFilters::numbersOfAnyTypeAreRead()
{
    // Columns of other programs hold numbers as numbers.
    const QString whole = QStringLiteral("NINTEGERFORMAT_a");
    const QString real = QStringLiteral("NREALFORMAT_b");
    const Filters::Predicate predicate(
        {whole, real},
        {{whole, {QStringLiteral("INTEGER"), Comparison::Equal, QStringLiteral("12")}, true},
         {real, {QStringLiteral("REAL"), Comparison::Major, QStringLiteral("0.1")}, true}});
    const auto passes = [&predicate](const QVariantList &values) {
        return predicate.passes([&values](int position) { return values.at(position); });
    };
    QVERIFY(passes({qlonglong(12), 0.11}));
    QVERIFY(!passes({qlonglong(13), 0.11}));
    QVERIFY(!passes({qlonglong(12), 0.1}));
    QVERIFY(!passes({QVariant(), 0.11}));
}

void TestFilters::agreesWithAPlainEvaluation()
{
    QRandomGenerator random(20261121);
    int passed = 0;
    constexpr int Rounds = 4000;
    for (int round = 0; round < Rounds; ++round) {
        QVector<Plain> plain;
        QVector<Filters::Joined> conditions;
        for (int i = random.bounded(6); i >= 0; --i) {
            const int column = random.bounded(Walked.size());
            QString value = anyText(random, column);
            if (column == 6 && value != QStringLiteral("TRUE")) {
                value = QStringLiteral("FALSE");
            }
            const Plain condition = {column, random.bounded(4), value, random.bounded(2) == 1};
            plain.append(condition);
            conditions.append({Walked.at(column),
                               {Filters::comparedFormat(Walked.at(column)),
                                Filters::comparisons().at(condition.comparison), value},
                               condition.isAnd});
        }
        const Filters::Predicate predicate(Walked, conditions);
        for (int record = 0; record < 5; ++record) {
            QStringList doubled;
            for (int column = 0; column < Walked.size(); ++column) {
                doubled.append(anyText(random, column));
            }
            const bool expected = foldedVerdict(plain, doubled);
            const bool passes = predicate.passes([&](int position) {
                const int column = Walked.indexOf(predicate.columns().at(position));
                return QString(doubled.at(column))
                    .replace(QStringLiteral("''"), QStringLiteral("'"));
            });
            QVERIFY2(passes == expected, qPrintable(QString::number(round)));
            passed += expected ? 1 : 0;
        }
    }
    // Neither answer is rare.
    QVERIFY(passed > Rounds && passed < 4 * Rounds);
}

void TestFilters::settingsCompareWhole()
{
    const Filters::Setting setting;
    QVERIFY(setting == Filters::Setting());
    QVector<Filters::Setting> others(7);
    others[0].column = QStringLiteral("a");
    others[1].format = QStringLiteral("DATE");
    others[2].value = QStringLiteral("x");
    others[3].comparison = Comparison::Equal;
    others[4].active = true;
    others[5].joinsWithAnd = false;
    others[6].followsLink = true;
    for (const Filters::Setting &other : qAsConst(others)) {
        QVERIFY(setting != other);
        QVERIFY(!(setting == other));
    }
}

QTEST_APPLESS_MAIN(TestFilters)
#include "model_filters.moc"
