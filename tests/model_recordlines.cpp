// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the one-line texts of records and of their order.
#include "model/recordlines.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <numeric>
#include <thread>

class TestRecordLines : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void listLine_data();
    void listLine();
    void idAndTitle_data();
    void idAndTitle();
    void countText_data();
    void countText();
    void orderOfKnownLines_data();
    void orderOfKnownLines();
    void orderIsThatOfLocaleAwareCompare_data();
    void orderIsThatOfLocaleAwareCompare();
    void orderingALongListTakesManySteps_data();
    void orderingALongListTakesManySteps();
};

namespace
{

/// Runs the function in a thread of its own: localeAwareCompare() keeps the language that a
/// thread had when it first compared.
template<typename Function>
void inLanguage(const QString &language, Function function)
{
    QLocale::setDefault(QLocale(language));
    std::thread(function).join();
}

QStringList ordered(const QStringList &lines)
{
    QStringList result;
    for (const int row : RecordLines::alphabeticalOrder(lines)) {
        result += lines.at(row);
    }
    return result;
}

QVector<int> orderByComparing(const QStringList &lines)
{
    QVector<int> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&lines](int a, int b) {
        return QString::localeAwareCompare(lines.at(a), lines.at(b)) < 0;
    });
    return order;
}

QStringList randomLines()
{
    const QString letters =
        QStringLiteral("aAbBàèéÈzZ 0129.-_'＇＃ßœ€中\u0301\u00ad\u200b") + QChar(1);
    QRandomGenerator random(99);
    QStringList lines;
    for (int i = 0; i < 3000; ++i) {
        QString line;
        for (int length = random.bounded(6); length > 0; --length) {
            line += random.bounded(8) == 0 ? QStringLiteral("😀")
                                           : QString(letters.at(random.bounded(letters.size())));
        }
        lines += line;
    }
    return lines;
}

} // namespace

void TestRecordLines::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void TestRecordLines::listLine_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a title as it stands") << "  Il però %s & \"altro\" "
                                          << "  Il però %s & \"altro\" ";
    QTest::newRow("line breaks stay") << "uno\ndue"
                                      << "uno\ndue";
    QTest::newRow("characters beyond U+FFFF") << "🎲 dadi"
                                              << "🎲 dadi";
    QTest::newRow("a blank is a title") << " "
                                        << " ";
    QTest::newRow("an empty title") << ""
                                    << "----";
    QTest::newRow("no title") << QString() << "----";
    QTest::newRow("a NUL cuts the line")
        << QString(QStringLiteral("uno") + QChar(0) + "due") << "uno";
    QTest::newRow("nothing before a NUL") << QString(QChar(0) + QStringLiteral("due")) << "----";
    QTest::newRow("half a character is replaced")
        << QString(QStringLiteral("uno") + QChar(0xd83c)) << "uno?";
    QTest::newRow("a byte order mark in front goes")
        << QString(QChar(QChar::ByteOrderMark) + QStringLiteral("uno")) << "uno";
    QTest::newRow("nothing but a byte order mark")
        << QString(QChar(QChar::ByteOrderMark)) << "----";
}

void TestRecordLines::listLine()
{
    QFETCH(QString, title);
    QTEST(RecordLines::listLine(title), "expected");
}

void TestRecordLines::idAndTitle_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Id, blank, title") << qint64(12) << "Rossi %d"
                                      << "12 Rossi %d";
    QTest::newRow("accents") << qint64(1) << "però"
                             << "1 però";
    QTest::newRow("an empty title leaves the blank") << qint64(3) << ""
                                                     << "3 ";
    QTest::newRow("an Id beyond 32 bits") << qint64(4294967297) << "x"
                                          << "4294967297 x";
}

void TestRecordLines::idAndTitle()
{
    QFETCH(qint64, id);
    QFETCH(QString, title);
    QTEST(RecordLines::idAndTitle(id, title), "expected");
}

void TestRecordLines::countText_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << 0 << "0 Records";
    QTest::newRow("one is no exception") << 1 << "1 Records";
    QTest::newRow("thousands stand together") << 100000 << "100000 Records";
}

void TestRecordLines::countText()
{
    QLocale::setDefault(QLocale(QStringLiteral("it_IT")));
    QFETCH(int, lines);
    QTEST(RecordLines::countText(lines), "expected");
}

void TestRecordLines::orderOfKnownLines_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("expected");
    const QStringList mixed = {QStringLiteral("zoo"), QStringLiteral("Zara"), QStringLiteral("èra"),
                               QStringLiteral("ara"), QStringLiteral("Ebro")};
    QTest::newRow("Italian goes by letters")
        << "it_IT" << mixed
        << QStringList{QStringLiteral("ara"), QStringLiteral("Ebro"), QStringLiteral("èra"),
                       QStringLiteral("Zara"), QStringLiteral("zoo")};
    QTest::newRow("no language goes by codes")
        << "C" << mixed
        << QStringList{QStringLiteral("Ebro"), QStringLiteral("Zara"), QStringLiteral("ara"),
                       QStringLiteral("zoo"), QStringLiteral("èra")};
    QTest::newRow("no language puts an emoji before full-width signs")
        << "C" << QStringList{QStringLiteral("＇a"), QStringLiteral("😀a")}
        << QStringList{QStringLiteral("😀a"), QStringLiteral("＇a")};
    QTest::newRow("no lines") << "it_IT" << QStringList() << QStringList();
}

void TestRecordLines::orderOfKnownLines()
{
    QFETCH(QString, language);
    QFETCH(QStringList, lines);
    QStringList result;
    inLanguage(language, [&]() { result = ordered(lines); });
    QTEST(result, "expected");
}

void TestRecordLines::orderIsThatOfLocaleAwareCompare_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("in Italian") << "it_IT";
    QTest::newRow("in Swedish, which sorts accents apart") << "sv_SE";
    QTest::newRow("without a language") << "C";
}

void TestRecordLines::orderIsThatOfLocaleAwareCompare()
{
    QFETCH(QString, language);
    const QStringList lines = randomLines();
    QVector<int> expected;
    QVector<int> order;
    inLanguage(language, [&]() {
        expected = orderByComparing(lines);
        order = RecordLines::alphabeticalOrder(lines);
    });
    // Many lines compare equal, so that this also shows that equal lines keep their order.
    QCOMPARE(order, expected);
}

void TestRecordLines::orderingALongListTakesManySteps_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("in Italian") << "it_IT";
    QTest::newRow("without a language") << "C";
}

void TestRecordLines::orderingALongListTakesManySteps()
{
    QFETCH(QString, language);
    QStringList lines;
    for (int i = 0; i < 20000; ++i) {
        lines.append(QString::number(i * 7919 % 20011));
    }
    int steps = 0;
    inLanguage(language, [&]() { RecordLines::alphabeticalOrder(lines, [&steps] { ++steps; }); });
    QVERIFY2(steps >= 100, qPrintable(QString::number(steps)));
    QVERIFY2(steps <= lines.size(), qPrintable(QString::number(steps)));
}

QTEST_GUILESS_MAIN(TestRecordLines)
#include "model_recordlines.moc"
