// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of what the calculator sums, and how its sums are rounded.
#include "model/calculator.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace
{

// The sum as it is kept on a form: a text that every step reads and writes anew.
class SumAsText
{
public:
    explicit SumAsText(bool money)
        : money(money)
    {
    }
    void add(double value)
    {
        const double sum = text.toDouble() + value;
        text = money ? QString::asprintf("%.2f", sum) : QString::asprintf("%f", sum);
    }
    QString text = QStringLiteral("0");

private:
    bool money;
};

QString summed(bool money, const QVector<double> &values)
{
    Calculator::RunningSum sum(money);
    for (const double value : values) {
        sum.add(value);
    }
    return sum.text();
}

// Numbers of every size, many of them on or beside a tie between two roundings.
double unusualNumber(std::mt19937_64 &random)
{
    const auto upTo = [&random](qint64 end) { return double(qint64(random() % quint64(end))); };
    switch (random() % 8) {
    case 0: {
        const quint64 bits = random();
        double number = 0.0;
        std::memcpy(&number, &bits, sizeof number);
        return std::isfinite(number) ? number : 0.0;
    }
    case 1:
        return std::ldexp(upTo(1LL << 53) - double(1LL << 52), int(random() % 80) - 70);
    case 2:
        return (upTo(2000001) - 1000000) / 8;
    case 3:
        return upTo(20000000000) / 128;
    case 4:
        return (upTo(2000000) - 1000000) / 200;
    case 5:
        return (upTo(2000000000) + 0.5) / 1000000;
    case 6:
        return std::ldexp(1 + upTo(1LL << 52) / double(1LL << 52), 30 + int(random() % 20));
    default:
        break;
    }
    return std::nextafter((upTo(1000000) + 0.5) / 100, random() % 2 == 0 ? -1e9 : 1e9);
}

} // namespace

class TestCalculator : public QObject
{
    Q_OBJECT

private slots:
    void summedColumns_data();
    void summedColumns();
    void moneyColumns_data();
    void moneyColumns();
    void modes_data();
    void modes();
    void runningSums_data();
    void runningSums();
    void everySumIsTheOneKeptAsText();
    void everyStepIsTheOneKeptAsText();
};

void TestCalculator::summedColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("expected");
    QTest::newRow("whole numbers are summed") << "NINTEGERFORMAT_Anno" << true;
    QTest::newRow("required ones too") << "RINTEGERFORMAT_Anno" << true;
    QTest::newRow("real numbers are summed") << "NREALFORMAT_Peso" << true;
    QTest::newRow("amounts are summed") << "NMONEYFORMAT_Prezzo" << true;
    QTest::newRow("the Id is not") << "RINTEGERFORMAT_Id" << false;
    QTest::newRow("a whole number with Id in its label is not") << "NINTEGERFORMAT_Idoneo" << false;
    QTest::newRow("nor one with Id in the middle") << "NINTEGERFORMAT_NumeroId" << false;
    QTest::newRow("letter case counts in Id") << "NINTEGERFORMAT_idoneo" << true;
    QTest::newRow("a real number with Id in its label is summed") << "NREALFORMAT_Idoneo" << true;
    QTest::newRow("an amount with Id in its label is summed") << "NMONEYFORMAT_Id" << true;
    QTest::newRow("Id does not stop another format in the label")
        << "NINTEGERFORMAT_IdREALFORMAT" << true;
    QTest::newRow("a duplicate is summed") << "NREALFORMAT_Peso_XMLTYX_2" << true;
    QTest::newRow("texts are not") << "RSTRINGFORMAT_Titolo" << false;
    QTest::newRow("dates are not") << "NDATEFORMAT_Data" << false;
    QTest::newRow("yes and no are not") << "NBOOLFORMAT_Letto" << false;
    QTest::newRow("a text whose label holds a format's name is")
        << "NSTRINGFORMAT_REALFORMAT" << true;
    QTest::newRow("letter case counts in the format") << "NSTRINGFORMAT_realformat" << false;
    QTest::newRow("the word alone is no format") << "NSTRINGFORMAT_REAL" << false;
    QTest::newRow("a reference to a whole number is summed")
        << "Xlibri_XDTX_NINTEGERFORMAT_Anno" << true;
    QTest::newRow("a reference to a text is not") << "Xlibri_XDTX_RSTRINGFORMAT_Titolo" << false;
    QTest::newRow("a name without a rule is not") << "prezzo" << false;
    QTest::newRow("an empty name is not") << "" << false;
}

void TestCalculator::summedColumns()
{
    QFETCH(QString, column);
    QTEST(Calculator::isSummed(column), "expected");
}

void TestCalculator::moneyColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("expected");
    QTest::newRow("an amount") << "NMONEYFORMAT_Prezzo" << true;
    QTest::newRow("a reference to an amount") << "Xlibri_XDTX_NMONEYFORMAT_Prezzo" << true;
    QTest::newRow("a real number") << "NREALFORMAT_Prezzo" << false;
    QTest::newRow("a whole number") << "NINTEGERFORMAT_MONEY" << false;
}

void TestCalculator::moneyColumns()
{
    QFETCH(QString, column);
    QTEST(Calculator::isMoney(column), "expected");
}

void TestCalculator::modes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("expected");
    QTest::newRow("0 adds") << 0 << 12.5;
    QTest::newRow("1 subtracts") << 1 << 7.5;
    QTest::newRow("2 leaves alone") << 2 << 10.0;
}

void TestCalculator::modes()
{
    QFETCH(int, mode);
    QTEST(Calculator::addedTo(10.0, 2.5, static_cast<Calculator::Mode>(mode)), "expected");
}

void TestCalculator::runningSums_data()
{
    const double tooMuch = std::numeric_limits<double>::max();
    QTest::addColumn<bool>("money");
    QTest::addColumn<QVector<double>>("values");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing added is 0") << true << QVector<double>{} << "0";
    QTest::newRow("nothing added is 0 without a sign of money too")
        << false << QVector<double>{} << "0";
    QTest::newRow("money has two decimals") << true << QVector<double>{10.0, 2.5} << "12.50";
    QTest::newRow("all else has six") << false << QVector<double>{10.0, 2.5} << "12.500000";
    QTest::newRow("what is lost at a step stays lost")
        << true << QVector<double>{0.004, 0.004, 0.004} << "0.00";
    QTest::newRow("six decimals keep it")
        << false << QVector<double>{0.004, 0.004, 0.004} << "0.012000";
    QTest::newRow("six decimals lose the seventh")
        << false << QVector<double>{4e-7, 4e-7, 4e-7} << "0.000000";
    QTest::newRow("a tie goes away from zero") << true << QVector<double>{0.125} << "0.13";
    QTest::newRow("also below zero") << true << QVector<double>{-0.125} << "-0.13";
    QTest::newRow("a tie between steps") << true << QVector<double>{0.125, 0.125} << "0.26";
    QTest::newRow("what only looks like a tie is none") << true << QVector<double>{1.005} << "1.00";
    QTest::newRow("a small loss keeps its sign") << true << QVector<double>{-0.001} << "-0.00";
    QTest::newRow("and forgets it at the next step")
        << true << QVector<double>{-0.001, 0.0} << "0.00";
    QTest::newRow("large sums keep every digit that a double has")
        << false << QVector<double>{9007199254740992.0, 1.0} << "9007199254740992.000000";
    QTest::newRow("an overflow is told")
        << false << QVector<double>{tooMuch, tooMuch} << QStringLiteral("inf");
    QTest::newRow("and cannot be taken back")
        << false << QVector<double>{tooMuch, tooMuch, -tooMuch} << QStringLiteral("inf");
}

void TestCalculator::runningSums()
{
    QFETCH(bool, money);
    QFETCH(QVector<double>, values);
    QTEST(summed(money, values), "expected");
}

void TestCalculator::everySumIsTheOneKeptAsText()
{
    std::mt19937_64 random(4711);
    for (int series = 0; series < 3000; ++series) {
        const bool money = series % 2 == 0;
        Calculator::RunningSum sum(money);
        SumAsText expected(money);
        for (int step = 0; step < 10; ++step) {
            const double value = unusualNumber(random);
            sum.add(value);
            expected.add(value);
            QCOMPARE(sum.text(), expected.text);
        }
    }
}

void TestCalculator::everyStepIsTheOneKeptAsText()
{
    // Two steps from one number: the second shows what the first was rounded to.
    std::mt19937_64 random(42);
    for (int number = 0; number < 30000; ++number) {
        const double first = unusualNumber(random);
        for (const bool money : {true, false}) {
            SumAsText expected(money);
            expected.add(first);
            expected.add(1e-9);
            QCOMPARE(summed(money, {first, 1e-9}), expected.text);
        }
    }
}

QTEST_APPLESS_MAIN(TestCalculator)
#include "model_calculator.moc"
