// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The input form as a condition: what it matches, what it hands on and takes back.
#include "widgets/inputDataForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace
{

template<typename Widget>
Widget *part(const inputDataForm &form, const char *name)
{
    auto *const found = form.findChild<Widget *>(QString::fromUtf8(name));
    if (found == nullptr) {
        qFatal("no widget %s", name);
    }
    return found;
}

void press(const inputDataForm &form, const char *name)
{
    QTest::mouseClick(part<QPushButton>(form, name), Qt::LeftButton);
}

// A condition as the filter page makes it.
void prepare(inputDataForm &form, const QString &column, const QString &format)
{
    form.setFilterRole(true);
    form.setColumnName(column);
    form.setValue(format, QVariant());
    form.clearCondition();
    form.show();
}

Filters::Setting setting(const QString &format, const QString &value)
{
    Filters::Setting setting;
    setting.format = format;
    setting.value = value;
    setting.comparison = Filters::Comparison::Equal;
    setting.active = true;
    return setting;
}

const QString StringColumn = QStringLiteral("NSTRINGFORMAT_Titolo");
const QString String = QStringLiteral("STRING");

} // namespace

class TestConditions : public QObject
{
    Q_OBJECT

private slots:
    void withoutAConditionEverythingPasses();
    void unequalAloneLetsEverythingPass();
    void firstCheckedButtonCounts();
    void quotesAreDoubledOnBothSides();
    void wholeNumberComesFromTheSpinBox();
    void yesComesFromTheCheckBox();
    void dateMatches();
    void amountsAreReadAsTyped();
    void unreadableNumberMatchesWithoutABox();
    void referenceMatchesById();
    void linkPassesUnlessFollowed();
    void changesByHandEndFollowing_data();
    void changesByHandEndFollowing();
    void settingsGoRound_data();
    void settingsGoRound();
    void settingReplacesEveryButton();
    void settingWithoutComparison();
    void unknownFormatShowsTheColumnsEditor();
    void referenceKeepsItsIdWithoutChoices();
    void namesOfTheButtons();
    void shortChoicesBesideTheButtons();
};

void TestConditions::withoutAConditionEverythingPasses()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    QVERIFY(form.match(String, QStringLiteral("x")));
    QVERIFY(form.match(String, QVariant()));
    part<QLineEdit>(form, "leData")->setText(QStringLiteral("Zeno"));
    QVERIFY(!form.match(String, QStringLiteral("x")));
    form.setActive(false);
    QVERIFY(form.match(String, QStringLiteral("x")));
    // Taking part without a comparison compares nothing.
    form.clearCondition();
    form.setActive(true);
    QVERIFY(form.match(String, QStringLiteral("x")));
}

void TestConditions::unequalAloneLetsEverythingPass()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    press(form, "pbDiff");
    QVERIFY(!form.isActive());
    QVERIFY(form.match(String, QString()));
    part<QLineEdit>(form, "leData")->setText(QStringLiteral("Zeno"));
    press(form, "pbDiff");
    QVERIFY(!form.match(String, QStringLiteral("Zeno")));
    QVERIFY(form.match(String, QStringLiteral("x")));
}

void TestConditions::firstCheckedButtonCounts()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    form.setSetting(setting(String, QStringLiteral("en")));
    form.setConditionName(QStringLiteral("Disequal"));
    form.setConditionName(QStringLiteral("Major"));
    // The button of "Disequal" stays down and comes first.
    QVERIFY(!form.match(String, QStringLiteral("en")));
    QVERIFY(form.match(String, QStringLiteral("x")));
}

void TestConditions::quotesAreDoubledOnBothSides()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    part<QLineEdit>(form, "leData")->setText(QStringLiteral("L'isola"));
    QVERIFY(form.match(String, QStringLiteral("L''isola")));
    QVERIFY(!form.match(String, QStringLiteral("L'isola")));
    press(form, "pbMinor");
    QVERIFY(form.match(String, QStringLiteral("Su L''isola")));
}

void TestConditions::wholeNumberComesFromTheSpinBox()
{
    const QString format = QStringLiteral("INTEGER");
    inputDataForm form;
    prepare(form, QStringLiteral("NINTEGERFORMAT_Pagine"), format);
    form.setSetting(setting(format, QStringLiteral("1500000000")));
    // As far as the box goes.
    QCOMPARE(form.rawText(), QStringLiteral("1500000000"));
    QVERIFY(form.match(format, QStringLiteral("999999999")));
    part<QSpinBox>(form, "sbNum")->setValue(12);
    QVERIFY(form.match(format, QStringLiteral("12")));
    press(form, "pbMinor");
    QVERIFY(form.match(format, QStringLiteral("9")));
    QVERIFY(!form.match(format, QStringLiteral("120")));
}

void TestConditions::yesComesFromTheCheckBox()
{
    const QString format = QStringLiteral("BOOL");
    inputDataForm form;
    prepare(form, QStringLiteral("NBOOLFORMAT_Letto"), format);
    // What the box does not show as yes is no, whatever the text.
    form.setSetting(setting(format, QStringLiteral("forse")));
    QVERIFY(form.match(format, QStringLiteral("FALSE")));
    part<QCheckBox>(form, "cbData")->setChecked(true);
    QVERIFY(form.match(format, QStringLiteral("TRUE")));
    QVERIFY(form.match(format, QStringLiteral("forse")));
    QVERIFY(!form.match(format, QStringLiteral("0")));
}

void TestConditions::dateMatches()
{
    const QString format = QStringLiteral("DATE");
    inputDataForm form;
    prepare(form, QStringLiteral("NDATEFORMAT_Nato"), format);
    part<QDateEdit>(form, "deData")->setDate(QDate(2020, 2, 1));
    press(form, "pbMinor");
    QVERIFY(form.match(format, QStringLiteral("02/01/2020")));
    QVERIFY(!form.match(format, QStringLiteral("01/03/2020")));
}

void TestConditions::amountsAreReadAsTyped()
{
    const QString format = QStringLiteral("MONEY");
    inputDataForm form;
    prepare(form, QStringLiteral("NMONEYFORMAT_Prezzo"), format);
    part<QLineEdit>(form, "leData")->setText(QStringLiteral("1 234,5"));
    QVERIFY(form.match(format, QStringLiteral("1234.50")));
    QVERIFY(!form.match(format, QStringLiteral("1234,5")));
}

void TestConditions::unreadableNumberMatchesWithoutABox()
{
    const QString format = QStringLiteral("REAL");
    inputDataForm form;
    prepare(form, QStringLiteral("NREALFORMAT_Peso"), format);
    part<QLineEdit>(form, "leData")->setText(QStringLiteral("1,2,3"));
    // A box would wait here for somebody to answer it.
    QVERIFY(form.isActive());
    QVERIFY(form.match(format, QStringLiteral("0.000000")));
    QCOMPARE(form.setting().value, QStringLiteral("0.000000"));
    QVERIFY(!form.findChild<QMessageBox *>()->isVisible());
}

void TestConditions::referenceMatchesById()
{
    const QString column = QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Nome");
    const QString format = QStringLiteral("autori_XDTX_RSTRING");
    inputDataForm form;
    prepare(form, column, format);
    form.setChoices({{7, QStringLiteral("Levi")}, {3, QStringLiteral("Levi")}});
    part<QComboBox>(form, "cboxData")->setCurrentIndex(2);
    QVERIFY(form.match(format, QStringLiteral("3")));
    QVERIFY(!form.match(format, QStringLiteral("7")));
    press(form, "pbMajor");
    QVERIFY(form.match(format, QStringLiteral("7.000000")));
    part<QComboBox>(form, "cboxData")->setCurrentIndex(0);
    QVERIFY(form.match(format, QStringLiteral("1")));
}

void TestConditions::linkPassesUnlessFollowed()
{
    const QString format = QStringLiteral("LINK");
    inputDataForm form;
    prepare(form, QStringLiteral("NLINKFORMAT_autori"), format);
    Filters::Setting jump = setting(format, QStringLiteral("3 D'Annunzio"));
    form.setSetting(jump);
    QVERIFY(form.match(format, QStringLiteral("x")));
    jump.followsLink = true;
    form.setSetting(jump);
    QVERIFY(!form.match(format, QStringLiteral("x")));
    QVERIFY(form.match(format, QStringLiteral("3 D''Annunzio")));
    // A new value is another condition.
    form.setValue(format, QStringLiteral("3 D'Annunzio"));
    QVERIFY(!form.setting().followsLink);
}

void TestConditions::changesByHandEndFollowing_data()
{
    QTest::addColumn<QString>("button");
    for (const char *const name :
         {"pbEqual", "pbDiff", "pbMajor", "pbMinor", "pbNoFilter", "pbAnd", "pbOr"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
    QTest::newRow("another line") << QString();
}

void TestConditions::changesByHandEndFollowing()
{
    QFETCH(QString, button);
    const QString format = QStringLiteral("LINK");
    inputDataForm form;
    prepare(form, QStringLiteral("NLINKFORMAT_autori"), format);
    form.setLinkChoices({QStringLiteral("1 Levi"), QStringLiteral("2 Svevo")});
    Filters::Setting jump = setting(format, QStringLiteral("1 Levi"));
    jump.followsLink = true;
    form.setSetting(jump);
    QVERIFY(form.setting().followsLink);
    if (button.isEmpty()) {
        part<QComboBox>(form, "cboxData")->setCurrentIndex(2);
    } else {
        press(form, button.toUtf8().constData());
    }
    QVERIFY(!form.setting().followsLink);
}

void TestConditions::settingsGoRound_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("value");
    const auto add = [](const char *claim, const char *column, const char *format,
                        const char *value) {
        QTest::newRow(claim) << QString::fromUtf8(column) << QString::fromUtf8(format)
                             << QString::fromUtf8(value);
    };
    add("a text with quotes", "NSTRINGFORMAT_a", "STRING", "L'isola ''di''");
    add("a long text", "NLONGSTRINGFORMAT_a", "LONGSTRING", "una\nriga");
    add("a mail address", "NMAILFORMAT_a", "MAIL", "a@b.it");
    add("an address", "NURLFORMAT_a", "URL", "https://a.it");
    add("an integer", "NINTEGERFORMAT_a", "INTEGER", "12");
    add("an integer that cannot be shown", "NINTEGERFORMAT_a", "INTEGER", "tante");
    add("a number", "NREALFORMAT_a", "REAL", "0.5");
    add("an amount with more decimals", "NMONEYFORMAT_a", "MONEY", "12.505");
    add("yes", "NBOOLFORMAT_a", "BOOL", "TRUE");
    add("no", "NBOOLFORMAT_a", "BOOL", "FALSE");
    add("a date", "NDATEFORMAT_a", "DATE", "02/01/2020");
    add("a date that cannot be read", "NDATEFORMAT_a", "DATE", "ieri");
    add("a link", "NLINKFORMAT_a", "LINK", "12 L'isola");
    add("a reference", "Xa_XDTX_NSTRINGFORMAT_b", "a_XDTX_NSTRING", "12");
    add("another column's format", "NINTEGERFORMAT_a", "STRING", "12");
}

void TestConditions::settingsGoRound()
{
    QFETCH(QString, column);
    QFETCH(QString, format);
    QFETCH(QString, value);
    Filters::Setting given = setting(format, value);
    given.column = column;
    given.comparison = Filters::Comparison::Minor;
    given.joinsWithAnd = false;
    given.followsLink = true;
    inputDataForm first;
    prepare(first, column, format);
    first.setSetting(given);
    QVERIFY(first.setting() == given);
    // Handed from form to form nothing is doubled or lost.
    inputDataForm second;
    prepare(second, column, format);
    second.setSetting(first.setting());
    QVERIFY(second.setting() == given);
    QCOMPARE(second.conditionName(), QStringLiteral("Minor"));
    QCOMPARE(second.joiningWord(), QStringLiteral("Or"));
    QVERIFY(!second.isTouched());
}

void TestConditions::settingReplacesEveryButton()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    form.setSetting(setting(String, QStringLiteral("a")));
    press(form, "pbDiff");
    Filters::Setting other = setting(String, QStringLiteral("a"));
    other.comparison = Filters::Comparison::Major;
    form.setSetting(other);
    QVERIFY(!part<QPushButton>(form, "pbDiff")->isChecked());
    QCOMPARE(form.conditionName(), QStringLiteral("Major"));
}

void TestConditions::settingWithoutComparison()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    Filters::Setting none = setting(String, QStringLiteral("Zeno"));
    none.comparison = Filters::Comparison::None;
    none.active = false;
    form.setSetting(none);
    // Filling has switched it on meanwhile.
    QVERIFY(!form.isActive());
    QCOMPARE(form.conditionName(), QStringLiteral("NoCondition"));
    QCOMPARE(part<QLineEdit>(form, "leData")->text(), QStringLiteral("Zeno"));
}

void TestConditions::unknownFormatShowsTheColumnsEditor()
{
    for (const char *const word : {"", "NUMERO", "integer"}) {
        inputDataForm form;
        prepare(form, QStringLiteral("NINTEGERFORMAT_Pagine"), QStringLiteral("INTEGER"));
        form.setSetting(setting(QString::fromUtf8(word), QStringLiteral("12")));
        QCOMPARE(form.editor()->objectName(), QStringLiteral("sbNum"));
        QCOMPARE(part<QSpinBox>(form, "sbNum")->value(), 12);
        QCOMPARE(form.format(), QStringLiteral("INTEGER"));
    }
    // A column of another program that begins like a reference.
    inputDataForm form;
    prepare(form, QStringLiteral("Xtra"), QString());
    QCOMPARE(form.editor()->objectName(), QStringLiteral("leData"));
}

void TestConditions::referenceKeepsItsIdWithoutChoices()
{
    const QString column = QStringLiteral("Xa_XDTX_NSTRINGFORMAT_b");
    const QString format = QStringLiteral("a_XDTX_NSTRING");
    inputDataForm form;
    prepare(form, column, format);
    form.setSetting(setting(format, QStringLiteral("12 Rossi")));
    QVERIFY(form.match(format, QStringLiteral("12")));
    // The choices come later.
    const Filters::Setting kept = form.setting();
    form.setChoices({{7, QStringLiteral("Levi")}, {12, QStringLiteral("Rossi")}});
    form.setSetting(kept);
    QCOMPARE(part<QComboBox>(form, "cboxData")->currentText(), QStringLiteral("Rossi"));
    QVERIFY(form.match(format, QStringLiteral("12")));
}

void TestConditions::namesOfTheButtons()
{
    inputDataForm form;
    prepare(form, StringColumn, String);
    const QVector<QPair<const char *, const char *>> tips = {
        {"pbEqual", "Uguale"},
        {"pbDiff", "Diverso"},
        {"pbMajor", "Maggiore"},
        {"pbMinor", "Minore"},
        {"pbNoFilter", "Nessuna condizione"},
        {"pbAnd", "Insieme alle condizioni precedenti"},
        {"pbOr", "In alternativa alle condizioni precedenti"}};
    for (const auto &tip : tips) {
        QCOMPARE(part<QPushButton>(form, tip.first)->toolTip(), QString::fromUtf8(tip.second));
    }
}

void TestConditions::shortChoicesBesideTheButtons()
{
    const auto width = [](bool isCondition) {
        inputDataForm form;
        if (isCondition) {
            form.setFilterRole(true);
        }
        form.setLinkChoices({QStringLiteral("1 Levi")});
        return part<QComboBox>(form, "cboxData")->minimumSizeHint().width();
    };
    QVERIFY(width(true) < width(false));
}

QTEST_MAIN(TestConditions)
#include "widgets_conditions.moc"
