// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of how value texts become numbers, dates and shown texts.
#include "model/values.h"

#include <QLocale>
#include <QtTest>

#include <limits>

class TestValues : public QObject
{
    Q_OBJECT

private slots:
    void recordIdsThatFit();
    void initTestCase();
    void moneyText_data();
    void moneyText();
    void decimals_data();
    void decimals();
    void isYes_data();
    void isYes();
    void date_data();
    void date();
    void datesAreReadAsTheToolkitReadsThem();
    void anInvalidDateHasNoText();
    void everyDateIsReadBack();
    void typedNumber_data();
    void typedNumber();
    void wholePart_data();
    void wholePart();
    void oneCharacterId_data();
    void oneCharacterId();
    void percent_data();
    void percent();
    void number_data();
    void number();
    void leadingWhole_data();
    void leadingWhole();
    void asStored_data();
    void asStored();
    void quotesDoubled_data();
    void quotesDoubled();
};

void TestValues::initTestCase()
{
    // Numbers and dates must not follow the language: it writes decimals with a comma.
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
}

void TestValues::moneyText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a whole amount") << QVariant(3) << "3.00€";
    QTest::newRow("a stored text") << QVariant("12.5") << "12.50€";
    QTest::newRow("further decimals are rounded") << QVariant("2.678") << "2.68€";
    QTest::newRow("thousands stand together") << QVariant("1234567.891") << "1234567.89€";
    QTest::newRow("a negative amount") << QVariant(-0.5) << "-0.50€";
    QTest::newRow("an empty text is zero") << QVariant("") << "0.00€";
    QTest::newRow("no value is zero") << QVariant() << "0.00€";
    QTest::newRow("a text that is no number is zero") << QVariant("tanto") << "0.00€";
    QTest::newRow("a comma makes no number") << QVariant("1,5") << "0.00€";
    QTest::newRow("not-a-number is zero") << QVariant("nan") << "0.00€";
    QTest::newRow("infinity is zero") << QVariant("-inf") << "0.00€";
    QTest::newRow("a number beyond all bounds is zero") << QVariant("1e999") << "0.00€";
    QTest::newRow("an infinite number is zero")
        << QVariant(std::numeric_limits<double>::infinity()) << "0.00€";
    QTest::newRow("a percent sign is no placeholder") << QVariant("%s") << "0.00€";
}

void TestValues::moneyText()
{
    QFETCH(QVariant, value);
    QTEST(Values::moneyText(value), "expected");
}

void TestValues::decimals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("two");
    QTest::addColumn<QString>("six");
    QTest::newRow("zero") << 0.0 << "0.00"
                          << "0.000000";
    QTest::newRow("a whole number") << 3.0 << "3.00"
                                    << "3.000000";
    QTest::newRow("further decimals are rounded") << 1.2345678 << "1.23"
                                                  << "1.234568";
    QTest::newRow("little is zero") << 0.004 << "0.00"
                                    << "0.004000";
    QTest::newRow("a large negative number") << -1234567.5 << "-1234567.50"
                                             << "-1234567.500000";
}

void TestValues::decimals()
{
    QFETCH(double, value);
    QTEST(Values::twoDecimals(value), "two");
    QTEST(Values::sixDecimals(value), "six");
}

void TestValues::isYes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("TRUE") << QVariant("TRUE") << true;
    QTest::newRow("any other text") << QVariant("forse") << true;
    QTest::newRow("one") << QVariant("1") << true;
    QTest::newRow("a blank") << QVariant(" ") << true;
    QTest::newRow("zero with decimals") << QVariant("0.0") << true;
    QTest::newRow("FALSE") << QVariant("FALSE") << false;
    QTest::newRow("false in mixed letters") << QVariant("fAlse") << false;
    QTest::newRow("zero") << QVariant("0") << false;
    QTest::newRow("an empty text") << QVariant("") << false;
    QTest::newRow("no value") << QVariant() << false;
    QTest::newRow("the number zero") << QVariant(0) << false;
    QTest::newRow("another number") << QVariant(7) << true;
}

void TestValues::isYes()
{
    QFETCH(QVariant, value);
    QTEST(Values::isYes(value), "expected");
}

void TestValues::date_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("expected");
    QTest::newRow("day, month and year") << "02/01/2020" << QDate(2020, 1, 2);
    QTest::newRow("a leap day") << "29/02/2024" << QDate(2024, 2, 29);
    QTest::newRow("an early year") << "01/01/0020" << QDate(20, 1, 1);
    QTest::newRow("single digits are no date") << "2/1/2020" << QDate();
    QTest::newRow("a short year is no date") << "02/01/20" << QDate();
    QTest::newRow("a day that does not exist is no date") << "30/02/2024" << QDate();
    QTest::newRow("a month beyond December is no date") << "01/13/2024" << QDate();
    QTest::newRow("another order is no date") << "2020-01-02" << QDate();
    QTest::newRow("further text is no date") << "02/01/2020 " << QDate();
    QTest::newRow("nothing is no date") << "" << QDate();
}

void TestValues::date()
{
    QFETCH(QString, text);
    QFETCH(QDate, expected);
    QCOMPARE(Values::date(text), expected);
    if (expected.isValid()) {
        QCOMPARE(Values::dateText(expected), text);
    }
}

void TestValues::datesAreReadAsTheToolkitReadsThem()
{
    const QString pattern = QStringLiteral("dd/MM/yyyy");
    QStringList texts = {QStringLiteral("01-02/2020"),   QStringLiteral("01/02-2020"),
                         QStringLiteral("+1/02/2020"),   QStringLiteral("01/ 2/2020"),
                         QStringLiteral("01/02/20 0"),   QStringLiteral("01/02/-020"),
                         QStringLiteral("aa/02/2020"),   QStringLiteral("01/02/20200"),
                         QString::fromUtf8("٠١/٠٢/٢٠٢٠")};
    for (const char *const year :
         {"0000", "0001", "0099", "1899", "1900", "2000", "2023", "9999"}) {
        for (int month = 0; month <= 13; ++month) {
            for (int day = 0; day <= 32; ++day) {
                texts.append(QString::asprintf("%02d/%02d/%s", day, month, year));
            }
        }
    }
    for (const QString &text : qAsConst(texts)) {
        QVERIFY2(Values::date(text) == QDate::fromString(text, pattern), qPrintable(text));
    }
}

void TestValues::anInvalidDateHasNoText()
{
    QCOMPARE(Values::dateText(QDate()), QString());
}

void TestValues::everyDateIsReadBack()
{
    const QDate end(2101, 1, 1);
    for (QDate day(1899, 12, 1); day < end; day = day.addDays(13)) {
        QCOMPARE(Values::date(Values::dateText(day)), day);
    }
}

void TestValues::typedNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isNumber");
    QTest::addColumn<double>("expected");
    QTest::newRow("blanks between thousands and a comma") << "1 234,5" << true << 1234.5;
    QTest::newRow("a point") << "1234.5" << true << 1234.5;
    QTest::newRow("blanks around and inside") << "  - 1 2 " << true << -12.0;
    QTest::newRow("an exponent") << "1,5e3" << true << 1500.0;
    QTest::newRow("a comma in front") << ",5" << true << 0.5;
    QTest::newRow("a plus sign") << "+7" << true << 7.0;
    QTest::newRow("points between thousands make no number") << "1.234,5" << false << 0.0;
    QTest::newRow("a unit makes no number") << "12 kg" << false << 0.0;
    QTest::newRow("letters make no number") << "abc" << false << 0.0;
    QTest::newRow("not-a-number is none") << "nan" << false << 0.0;
    QTest::newRow("infinity is none") << "inf" << false << 0.0;
    QTest::newRow("negative infinity is none") << "-inf" << false << 0.0;
    QTest::newRow("beyond all bounds is none") << "1e999" << false << 0.0;
    QTest::newRow("nothing is none") << "" << false << 0.0;
    QTest::newRow("blanks are none") << "   " << false << 0.0;
}

void TestValues::typedNumber()
{
    QFETCH(QString, text);
    QFETCH(bool, isNumber);
    QFETCH(double, expected);
    bool ok = !isNumber;
    QCOMPARE(Values::typedNumber(text, &ok), expected);
    QCOMPARE(ok, isNumber);
}

void TestValues::wholePart_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("a whole number") << QVariant("12") << 12;
    QTest::newRow("written with decimals") << QVariant("12.000000") << 12;
    QTest::newRow("decimals are cut") << QVariant("7.9") << 7;
    QTest::newRow("decimals of a negative number are cut") << QVariant("-7.9") << -7;
    QTest::newRow("a number variant") << QVariant(qint64(5)) << 5;
    QTest::newRow("the largest Id") << QVariant("2147483647") << 2147483647;
    QTest::newRow("the largest Id with decimals") << QVariant("2147483647.5") << 2147483647;
    QTest::newRow("one more does not fit") << QVariant("2147483648") << 0;
    QTest::newRow("one less than the smallest does not fit") << QVariant("-2147483649") << 0;
    QTest::newRow("far beyond does not fit") << QVariant("1e300") << 0;
    QTest::newRow("text after the number makes it none") << QVariant("12 Rossi") << 0;
    QTest::newRow("not-a-number is none") << QVariant("nan") << 0;
    QTest::newRow("infinity is none") << QVariant("inf") << 0;
    QTest::newRow("an empty text is none") << QVariant("") << 0;
    QTest::newRow("no value is none") << QVariant() << 0;
}

void TestValues::wholePart()
{
    QFETCH(QVariant, value);
    QTEST(Values::wholePart(value), "expected");
}

void TestValues::oneCharacterId_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("code");
    QTest::newRow("the first row") << 0 << 1;
    QTest::newRow("the tenth row is a line end") << 9 << 10;
    QTest::newRow("the last code of a round") << 254 << 255;
    QTest::newRow("a full round begins with no sign") << 255 << 0;
    QTest::newRow("a second round") << 256 << 1;
}

void TestValues::oneCharacterId()
{
    QFETCH(int, rows);
    const QString text = Values::oneCharacterId(rows);
    QCOMPARE(text.size(), 1);
    QTEST(int(text.at(0).unicode()), "code");
}

void TestValues::percent_data()
{
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("total");
    QTest::addColumn<int>("expected");
    QTest::newRow("nothing done") << 0 << 7 << 0;
    QTest::newRow("two of three are cut, not rounded") << 2 << 3 << 66;
    QTest::newRow("all done") << 3 << 3 << 100;
    QTest::newRow("29 of 100 falls just short") << 29 << 100 << 28;
    QTest::newRow("58 of 100 falls just short") << 58 << 100 << 57;
    QTest::newRow("more than all") << 5 << 2 << 250;
    QTest::newRow("numbers that fill an int") << 2147483646 << 2147483647 << 99;
    QTest::newRow("a result beyond an int stays an int") << 2147483647 << 1 << 2147483647;
    QTest::newRow("no total") << 5 << 0 << 0;
    QTest::newRow("a negative total") << 5 << -1 << 0;
}

void TestValues::percent()
{
    QFETCH(int, done);
    QFETCH(int, total);
    QTEST(Values::percent(done, total), "expected");
}

void TestValues::number_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<double>("expected");
    QTest::newRow("a stored text") << QVariant("12.5") << 12.5;
    QTest::newRow("a number") << QVariant(-3) << -3.0;
    QTest::newRow("a comma makes no number") << QVariant("12,5") << 0.0;
    QTest::newRow("nothing is 0") << QVariant("") << 0.0;
    QTest::newRow("no value is 0") << QVariant() << 0.0;
    QTest::newRow("not-a-number is 0") << QVariant("nan") << 0.0;
    QTest::newRow("infinity is 0") << QVariant("inf") << 0.0;
}

void TestValues::number()
{
    QFETCH(QVariant, value);
    QTEST(Values::number(value), "expected");
}

void TestValues::leadingWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("a number") << "12" << 12;
    QTest::newRow("a stored real") << "12.000000" << 12;
    QTest::newRow("Id and title") << "12 Rossi" << 12;
    QTest::newRow("blanks around") << " 12 " << 12;
    QTest::newRow("a title") << "Rossi 12" << 0;
    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("beyond all Ids") << "99999999999 Rossi" << 0;
}

void TestValues::leadingWhole()
{
    QFETCH(QString, text);
    QTEST(Values::leadingWhole(text), "expected");
}

void TestValues::asStored_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QString high(QChar(0xd83d));
    const QString low(QChar(0xdcda));
    QTest::newRow("what people type stays")
        << QStringLiteral("l'anno, 漢 📚\u202e\ufeff") << QStringLiteral("l'anno, 漢 📚\u202e\ufeff");
    QTest::newRow("nothing comes after a NUL character")
        << QStringLiteral("a") + QChar(0) + QStringLiteral("b") << QStringLiteral("a");
    QTest::newRow("halves of a pair are question marks")
        << low + high + QLatin1Char('x') + high << QStringLiteral("??x?");
    QTest::newRow("a pair after a half stays")
        << high + high + low << QLatin1Char('?') + high + low;
    QTest::newRow("characters that are none are replaced")
        << QStringLiteral("a") + QChar(0xfffe) + QChar(0xffff) + QChar(0xfffd)
        << QStringLiteral("a\ufffd\ufffd\ufffd");
}

void TestValues::asStored()
{
    QFETCH(QString, text);
    QTEST(Values::asStored(text), "expected");
}

void TestValues::quotesDoubled_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("an apostrophe") << "l'isola"
                                   << "l''isola";
    QTest::newRow("several in a row") << "''"
                                      << "''''";
    QTest::newRow("double quotes stay") << "a\"b"
                                        << "a\"b";
    QTest::newRow("a text without") << "isola"
                                    << "isola";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestValues::quotesDoubled()
{
    QFETCH(QString, text);
    QTEST(Values::quotesDoubled(text), "expected");
}

void TestValues::recordIdsThatFit()
{
    QCOMPARE(Values::recordId(QVariant(7LL)), 7);
    QCOMPARE(Values::recordId(QVariant(2147483647LL)), 2147483647);
    QCOMPARE(Values::recordId(QVariant(-3LL)), -3);
    // Cut to 32 bits it would be another record's Id.
    QCOMPARE(Values::recordId(QVariant(4294967297LL)), 0);
    QCOMPARE(Values::recordId(QVariant(QStringLiteral("x"))), 0);
    QCOMPARE(Values::recordId(QVariant()), 0);
}

QTEST_GUILESS_MAIN(TestValues)
#include "model_values.moc"
