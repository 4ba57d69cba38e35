// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One column on the calculator page.
#include "model/calculator.h"
#include "widgets/calcForm.h"
#include "widgets/figures.h"

#include <QFontMetrics>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <random>

namespace
{

QPushButton *button(const calcForm &form, const char *name)
{
    return form.findChild<QPushButton *>(QString::fromUtf8(name));
}

QString result(const calcForm &form)
{
    return form.findChild<QLineEdit *>("leResult")->text();
}

QLabel *label(const calcForm &form, const char *name)
{
    return form.findChild<QLabel *>(QString::fromUtf8(name));
}

// The names of the buttons that are checked.
QStringList checked(const calcForm &form)
{
    QStringList names;
    for (const char *const name : {"pbPlus", "pbMinus", "pbExclude"}) {
        if (button(form, name)->isChecked()) {
            names.append(QString::fromUtf8(name));
        }
    }
    return names;
}

} // namespace

class TestCalcForm : public QObject
{
    Q_OBJECT

private slots:
    void startsWithZeroAndPlus();
    void fieldShowsItsLabel_data();
    void fieldShowsItsLabel();
    void onlyMoneyHasASign_data();
    void onlyMoneyHasASign();
    void modes_data();
    void modes();
    void exactlyOneButtonIsChecked();
    void arrowKeysChoose();
    void addsAsTextsDo_data();
    void addsAsTextsDo();
    void resetWritesZero();
    void sumsMadeElsewhereReadTheSame();
    void showsWhatItIsGiven();
    void controlsHaveNames();
    void sumsStandUnderEachOther();
    void longLabelsAreShortened();
    void digitsHaveOneWidth();
};

void TestCalcForm::startsWithZeroAndPlus()
{
    const calcForm form;
    QCOMPARE(form.objectName(), QStringLiteral("calcForm"));
    QCOMPARE(result(form), QStringLiteral("0"));
    QCOMPARE(checked(form), QStringList{QStringLiteral("pbPlus")});
    QCOMPARE(form.mode(), 0);
    QVERIFY(label(form, "lbType")->isHidden());
    QVERIFY(form.findChild<QFrame *>("line") != nullptr);
    QVERIFY(form.findChild<QLineEdit *>("leResult")->isReadOnly());
    const auto *const frame = form.findChild<QFrame *>("frame");
    QVERIFY(frame->isAncestorOf(label(form, "lbType")));
    QVERIFY(frame->isAncestorOf(form.findChild<QLineEdit *>("leResult")));
}

void TestCalcForm::fieldShowsItsLabel_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the label") << "NMONEYFORMAT_Prezzo"
                               << "Prezzo";
    QTest::newRow("a duplicate as it is stored") << "NREALFORMAT_Peso_XMLTYX_2"
                                                 << "Peso_XMLTYX_2";
    QTest::newRow("a reference's field") << "Xlibri_XDTX_NINTEGERFORMAT_Anno"
                                         << "Anno";
    QTest::newRow("markup is text") << "NREALFORMAT_<b>&x"
                                    << "<b>&x";
}

void TestCalcForm::fieldShowsItsLabel()
{
    QFETCH(QString, column);
    calcForm form;
    form.setField(column);
    QCOMPARE(form.getFieldName(), column);
    QTEST(label(form, "lbName")->text(), "expected");
    QCOMPARE(label(form, "lbName")->textFormat(), Qt::PlainText);
}

void TestCalcForm::onlyMoneyHasASign_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("sign");
    QTest::addColumn<QString>("sum");
    QTest::newRow("money") << "MONEYFORMAT"
                           << "€"
                           << "12.50";
    QTest::newRow("a real number") << "REALFORMAT"
                                   << ""
                                   << "12.500000";
    QTest::newRow("more than the word") << "NMONEYFORMAT"
                                        << ""
                                        << "12.500000";
    QTest::newRow("the short word") << "MONEY"
                                    << ""
                                    << "12.500000";
    QTest::newRow("another letter case") << "moneyformat"
                                         << ""
                                         << "12.500000";
}

void TestCalcForm::onlyMoneyHasASign()
{
    QFETCH(QString, format);
    QFETCH(QString, sign);
    calcForm form;
    form.setFormat(format);
    QCOMPARE(label(form, "lbType")->text(), sign);
    QCOMPARE(label(form, "lbType")->isHidden(), sign.isEmpty());
    form.add(12.5);
    QTEST(result(form), "sum");
}

void TestCalcForm::modes_data()
{
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<int>("expected");
    QTest::newRow("plus") << "pbPlus" << 0;
    QTest::newRow("minus") << "pbMinus" << 1;
    QTest::newRow("exclude") << "pbExclude" << 2;
}

void TestCalcForm::modes()
{
    QFETCH(QString, pressed);
    calcForm form;
    form.show();
    QPushButton *const wanted = button(form, pressed.toUtf8().constData());
    QTest::mouseClick(wanted, Qt::LeftButton);
    QTEST(form.mode(), "expected");
    QCOMPARE(checked(form), QStringList{pressed});
    // A second click leaves it down.
    QTest::mouseClick(wanted, Qt::LeftButton);
    QCOMPARE(checked(form), QStringList{pressed});
}

void TestCalcForm::exactlyOneButtonIsChecked()
{
    const calcForm form;
    for (const char *const name : {"pbMinus", "pbExclude", "pbPlus", "pbExclude"}) {
        button(form, name)->setChecked(true);
        QCOMPARE(checked(form), QStringList{QString::fromUtf8(name)});
        button(form, name)->setChecked(false);
        QCOMPARE(checked(form), QStringList{QString::fromUtf8(name)});
    }
}

void TestCalcForm::arrowKeysChoose()
{
    calcForm form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QPushButton *const plus = button(form, "pbPlus");
    plus->setFocus();
    QTest::keyClick(plus, Qt::Key_Right);
    QCOMPARE(checked(form), QStringList{QStringLiteral("pbMinus")});
}

void TestCalcForm::addsAsTextsDo_data()
{
    QTest::addColumn<bool>("money");
    QTest::addColumn<QVector<double>>("values");
    QTest::addColumn<QString>("expected");
    QTest::newRow("money") << true << QVector<double>{10.0, 2.5} << "12.50";
    QTest::newRow("other numbers") << false << QVector<double>{10.0, 2.5} << "12.500000";
    QTest::newRow("money rounds at every step")
        << true << QVector<double>{0.004, 0.004, 0.004} << "0.00";
    QTest::newRow("a negative sum") << true << QVector<double>{-3.0} << "-3.00";
}

void TestCalcForm::addsAsTextsDo()
{
    QFETCH(bool, money);
    QFETCH(QVector<double>, values);
    calcForm form;
    form.setFormat(money ? QStringLiteral("MONEYFORMAT") : QStringLiteral("REALFORMAT"));
    for (const double value : values) {
        form.add(value);
    }
    QTEST(result(form), "expected");
}

void TestCalcForm::resetWritesZero()
{
    calcForm form;
    form.setFormat(QStringLiteral("MONEYFORMAT"));
    form.add(5.0);
    form.reset();
    QCOMPARE(result(form), QStringLiteral("0"));
    form.add(1.0);
    QCOMPARE(result(form), QStringLiteral("1.00"));
}

void TestCalcForm::sumsMadeElsewhereReadTheSame()
{
    std::mt19937 random(7);
    for (const bool money : {true, false}) {
        calcForm form;
        form.setFormat(money ? QStringLiteral("MONEYFORMAT") : QStringLiteral("REALFORMAT"));
        Calculator::RunningSum sum(money);
        for (int step = 0; step < 500; ++step) {
            const double value = (double(random() % 2000001) - 1000000) / 1024;
            form.add(value);
            sum.add(value);
            QCOMPARE(sum.text(), result(form));
        }
    }
}

void TestCalcForm::showsWhatItIsGiven()
{
    calcForm form;
    form.showResult(QStringLiteral("12.50"));
    QCOMPARE(result(form), QStringLiteral("12.50"));
    form.add(1.0);
    QCOMPARE(result(form), QStringLiteral("13.500000"));
}

void TestCalcForm::controlsHaveNames()
{
    calcForm form;
    form.setField(QStringLiteral("NMONEYFORMAT_Prezzo"));
    QCOMPARE(form.findChild<QLineEdit *>("leResult")->accessibleName(), QStringLiteral("Prezzo"));
    QCOMPARE(button(form, "pbPlus")->toolTip(), QStringLiteral("Somma"));
    QCOMPARE(button(form, "pbMinus")->toolTip(), QStringLiteral("Sottrai"));
    QCOMPARE(button(form, "pbExclude")->toolTip(), QStringLiteral("Escludi"));
    QCOMPARE(button(form, "pbPlus")->accessibleName(), QStringLiteral("Prezzo Somma"));
    QCOMPARE(button(form, "pbMinus")->accessibleName(), QStringLiteral("Prezzo Sottrai"));
    QCOMPARE(button(form, "pbExclude")->accessibleName(), QStringLiteral("Prezzo Escludi"));
}

void TestCalcForm::sumsStandUnderEachOther()
{
    calcForm money;
    money.setField(QStringLiteral("NMONEYFORMAT_Prezzo"));
    money.setFormat(QStringLiteral("MONEYFORMAT"));
    calcForm weight;
    weight.setField(QStringLiteral("NREALFORMAT_P"));
    calcForm *const forms[] = {&money, &weight};
    for (calcForm *const form : forms) {
        form->setLabelWidth(qMax(money.labelWidthHint(), weight.labelWidthHint()));
        form->resize(700, form->sizeHint().height());
        form->show();
    }
    for (const char *const name : {"leResult", "pbPlus"}) {
        const QRect first = money.findChild<QWidget *>(QString::fromUtf8(name))->rect();
        const auto place = [name](const calcForm &form) {
            return form.findChild<QWidget *>(QString::fromUtf8(name))->mapTo(&form, QPoint());
        };
        QCOMPARE(place(money), place(weight));
        QCOMPARE(weight.findChild<QWidget *>(QString::fromUtf8(name))->width(), first.width());
    }
    QVERIFY((money.findChild<QLineEdit *>("leResult")->alignment() & Qt::AlignRight) != 0);
}

void TestCalcForm::longLabelsAreShortened()
{
    const QString name = QStringLiteral("Valore_stimato_secondo_il_catalogo_italiano_del_2026");
    calcForm form;
    form.setField(QStringLiteral("NMONEYFORMAT_") + name);
    QCOMPARE(form.labelWidthHint(), 224);
    form.setLabelWidth(form.labelWidthHint());
    QCOMPARE(label(form, "lbName")->width(), 224);
    QCOMPARE(label(form, "lbName")->text(), name);
    QCOMPARE(label(form, "lbName")->toolTip(), name);
    form.setField(QStringLiteral("NMONEYFORMAT_Peso"));
    form.setLabelWidth(form.labelWidthHint());
    QCOMPARE(label(form, "lbName")->toolTip(), QString());
}

void TestCalcForm::digitsHaveOneWidth()
{
    const QFontMetrics metrics(Figures::tabular(QFont()));
    for (char digit = '1'; digit <= '9'; ++digit) {
        QCOMPARE(metrics.horizontalAdvance(QLatin1Char(digit)),
                 metrics.horizontalAdvance(QLatin1Char('0')));
    }
}

QTEST_MAIN(TestCalcForm)
#include "widgets_calcform.moc"
