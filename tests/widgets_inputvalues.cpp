// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Value texts: what an untouched field gives back, and what a typed value becomes.
#include "widgets/inputDataForm.h"

#include "widgets/ChoiceBox.h"
#include "widgets/DateEdit.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

class TestInputValues : public QObject
{
    Q_OBJECT

private slots:
    void untouchedFieldsKeepTheirStoredText_data();
    void untouchedFieldsKeepTheirStoredText();
    void emptyFieldsHaveAValueOfTheirFormat_data();
    void emptyFieldsHaveAValueOfTheirFormat();
    void shows_data();
    void shows();
    void typedTextsBecomeValues_data();
    void typedTextsBecomeValues();
    void wholeNumbersAreDigits();
    void lettersStayOutOfNumbers_data();
    void lettersStayOutOfNumbers();
    void storedNonsenseCanBeCorrected();
    void longTextsAreKeptInStep();
    void aLongTextKeepsItsCharacters();
    void endlessWordsAreBrokenAnywhere();
    void yesAndNoAreWords();
    void datesAreWrittenInFull();
    void aBlankDateIsAValue();
    void linksGiveTheirLine();
    void referencesGiveTheirId();
    void numbersIgnoreTheLocale();
    void settingAgainForgetsTheChange();
    void rawTextsAreNotDoubled();
};

namespace
{

QLineEdit *line(const inputDataForm &form)
{
    return form.findChild<QLineEdit *>(QStringLiteral("leData"));
}

QPlainTextEdit *longText(const inputDataForm &form)
{
    return form.findChild<QPlainTextEdit *>(QStringLiteral("teData"));
}

const QStringList &formats()
{
    static const QStringList words =
        QStringLiteral("STRING DATE INTEGER REAL MONEY IMAGE PDF BOOL MAIL LINK SUBTABLE URL "
                       "LONGSTRING reference")
            .split(QLatin1Char(' '));
    return words;
}

void fill(inputDataForm &form, const QString &format, const QVariant &stored)
{
    if (format == QLatin1String("reference")) {
        form.setChoices({{3, QStringLiteral("3 Eco")}, {12, QStringLiteral("12 Calvino")}});
        form.setReferenceValue(stored);
        return;
    }
    form.setLinkChoices({QStringLiteral("3 Eco"), QStringLiteral("12 Dell'Aquila")});
    form.setValue(format, stored);
}

QString doubled(QString text)
{
    return text.replace(QStringLiteral("'"), QStringLiteral("''"));
}

} // namespace

void TestInputValues::untouchedFieldsKeepTheirStoredText_data()
{
    QTest::addColumn<QString>("stored");
    const auto add = [](const char *name, const QString &stored) { QTest::newRow(name) << stored; };
    add("nought, as unfilled fields hold", QStringLiteral("0"));
    add("an apostrophe", QStringLiteral("l'isola"));
    add("doubled apostrophes", QStringLiteral("l''isola'"));
    add("blanks around", QStringLiteral("  x  "));
    add("only a blank", QStringLiteral(" "));
    add("lines", QStringLiteral("a\nb\n"));
    add("lines of another system", QStringLiteral("a\r\nb\rc"));
    add("a tab", QStringLiteral("a\tb"));
    add("percent signs", QStringLiteral("100%s %1 %"));
    add("markup", QStringLiteral("<b>x</b> &amp;"));
    add("no date", QStringLiteral("31/02/2020"));
    add("a short date", QStringLiteral("2/1/2020"));
    add("a date before all calendars", QStringLiteral("01/01/0044"));
    add("a date", QStringLiteral("29/02/2020"));
    add("beyond the spin box", QStringLiteral("1000000000"));
    add("beyond 32 bits", QStringLiteral("3000000000"));
    add("far below", QStringLiteral("-99999999999999999999"));
    add("a whole number as a real one", QStringLiteral("12.000000"));
    add("more decimals than money has", QStringLiteral("3.14159"));
    add("a comma", QStringLiteral("1 234,5"));
    add("no finite number", QStringLiteral("inf"));
    add("no number", QStringLiteral("nan"));
    add("an exponent", QStringLiteral("1e300"));
    add("yes", QStringLiteral("TRUE"));
    add("yes in small letters", QStringLiteral("true"));
    add("neither yes nor no", QStringLiteral("forse"));
    add("a line on offer", QStringLiteral("12 Dell'Aquila"));
    add("a line that is gone", QStringLiteral("99 Perduto"));
    add("no choice", QStringLiteral("---"));
    add("a path outside", QStringLiteral("../../etc/passwd"));
    add("an address to run", QStringLiteral("javascript:alert('x')"));
    add("letters of many kinds", QStringLiteral("è€日本😀\u00a0\u2028x"));
    add("longer than a line edit's usual limit", QStringLiteral("l'").repeated(40000));
}

void TestInputValues::untouchedFieldsKeepTheirStoredText()
{
    QFETCH(QString, stored);
    for (const QString &format : formats()) {
        inputDataForm form;
        fill(form, format, stored);
        QVERIFY2(form.valueText() == doubled(stored), qPrintable(format));
        QVERIFY2(form.rawText() == stored, qPrintable(format));
        QVERIFY2(!form.isTouched(), qPrintable(format));
    }
}

void TestInputValues::emptyFieldsHaveAValueOfTheirFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("value");
    for (const QString &format : formats()) {
        const QString value = format == QLatin1String("INTEGER")    ? QStringLiteral("0")
                              : format == QLatin1String("BOOL")     ? QStringLiteral("FALSE")
                              : format == QLatin1String("SUBTABLE") ? QStringLiteral("L'etichetta")
                                                                    : QString();
        QTest::newRow(qPrintable(format)) << format << value;
    }
}

void TestInputValues::emptyFieldsHaveAValueOfTheirFormat()
{
    QFETCH(QString, format);
    QFETCH(QString, value);
    for (const QVariant &nothing : {QVariant(QString()), QVariant(), QVariant(QVariant::String)}) {
        inputDataForm form;
        form.setLabel(QStringLiteral("L'etichetta"));
        fill(form, format, nothing);
        QCOMPARE(form.rawText(), value);
        QCOMPARE(form.valueText(), doubled(value));
    }
}

void TestInputValues::shows_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("shown");
    const auto add = [](const char *name, const char *format, const QVariant &stored,
                        const QString &shown) {
        QTest::newRow(name) << QString::fromLatin1(format) << stored << shown;
    };
    add("text as it is", "STRING", QStringLiteral(" x "), QStringLiteral(" x "));
    add("a path whole", "IMAGE", QStringLiteral("TABLES_DOC/a/b.png"),
        QStringLiteral("TABLES_DOC/a/b.png"));
    add("a real number as stored", "REAL", QStringLiteral("1,50"), QStringLiteral("1,50"));
    add("money with two decimals", "MONEY", QStringLiteral("3.14159"), QStringLiteral("3.14"));
    add("money that is a number", "MONEY", 2.5, QStringLiteral("2.50"));
    add("money that is no number", "MONEY", QStringLiteral("abc"), QStringLiteral("0.00"));
    add("an integer", "INTEGER", QStringLiteral("-12"), QStringLiteral("-12"));
    add("a 64-bit integer", "INTEGER", 7LL, QStringLiteral("7"));
    add("an integer that is none", "INTEGER", QStringLiteral("12 Rossi"), QStringLiteral("0"));
    add("an integer beyond 32 bits", "INTEGER", 3000000000LL, QStringLiteral("0"));
    add("yes", "BOOL", QStringLiteral("tRuE"), QStringLiteral("yes"));
    add("1 is not the word", "BOOL", QStringLiteral("1"), QStringLiteral("no"));
    add("blanks are not the word", "BOOL", QStringLiteral(" TRUE"), QStringLiteral("no"));
    add("a date", "DATE", QStringLiteral("29/02/2020"), QStringLiteral("29/02/2020"));
    add("no date", "DATE", QStringLiteral("30/02/2020"), QStringLiteral(" "));
    add("a short date", "DATE", QStringLiteral("2/1/2020"), QStringLiteral(" "));
    add("a link", "LINK", QStringLiteral("12 Dell'Aquila"), QStringLiteral("12 Dell'Aquila"));
    add("a link that is gone", "LINK", QStringLiteral("99 Perduto"), QStringLiteral("99 Perduto"));
    add("no link", "LINK", QString(), QStringLiteral("---"));
}

void TestInputValues::shows()
{
    QFETCH(QString, format);
    QFETCH(QVariant, stored);
    inputDataForm form;
    fill(form, format, QStringLiteral("12")); // shown before
    fill(form, format, stored);
    QString shown;
    if (const auto *box = qobject_cast<QCheckBox *>(form.editor())) {
        shown = box->isChecked() ? QStringLiteral("yes") : QStringLiteral("no");
    } else if (const auto *choices = qobject_cast<QComboBox *>(form.editor())) {
        shown = choices->currentText();
    } else if (const auto *spin = qobject_cast<QAbstractSpinBox *>(form.editor())) {
        shown = spin->text();
    } else {
        shown = line(form)->text();
    }
    QTEST(shown, "shown");
}

void TestInputValues::typedTextsBecomeValues_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("value");
    const auto add = [](const char *name, const char *format, const char *typed,
                        const char *value) {
        QTest::newRow(name) << QString::fromLatin1(format) << QString::fromUtf8(typed)
                            << QString::fromUtf8(value);
    };
    add("text is not trimmed", "STRING", "  l'isola ", "  l''isola ");
    add("an address", "MAIL", "a@b.it", "a@b.it");
    add("a web address", "URL", "http://x/?a='1'", "http://x/?a=''1''");
    add("an unknown format is text", "OTHER", "x", "x");
    add("lines are kept", "LONGSTRING", "a'b\n\nc ", "a''b\n\nc ");
    add("a real number with a comma", "REAL", "1 234,5", "1234.500000");
    add("a real number with a point", "REAL", "-.25", "-0.250000");
    add("a real number of blanks", "REAL", "  ", "");
    add("money with a comma", "MONEY", "1 234,567", "1234.57");
    add("money without decimals", "MONEY", "+3", "3.00");
    add("money of blanks", "MONEY", " ", "");
    add("an integer", "INTEGER", "42", "42");
}

void TestInputValues::typedTextsBecomeValues()
{
    QFETCH(QString, format);
    QFETCH(QString, typed);
    inputDataForm form;
    fill(form, format, QString());
    if (auto *number = qobject_cast<QSpinBox *>(form.editor())) {
        number->selectAll();
    }
    QSignalSpy touched(&form, &inputDataForm::touched);
    for (const QChar letter : typed) {
        if (letter == QLatin1Char('\n')) {
            QTest::keyClick(form.editor(), Qt::Key_Return);
        } else {
            QTest::sendKeyEvent(QTest::Click, form.editor(), Qt::Key_unknown, QString(letter),
                                Qt::NoModifier);
        }
    }
    QTEST(form.valueText(), "value");
    QVERIFY(form.isTouched());
    QCOMPARE(touched.size(), typed.size());
}

void TestInputValues::wholeNumbersAreDigits()
{
    inputDataForm form;
    fill(form, QStringLiteral("INTEGER"), QStringLiteral("7"));
    auto *const number = qobject_cast<QSpinBox *>(form.editor());
    auto *const line = number->findChild<QLineEdit *>();
    for (const char *const text : {"1,5", "1.5", "1,234,567"}) {
        line->selectAll();
        line->insert(QString::fromLatin1(text));
        number->interpretText();
        QCOMPARE(form.valueText(), QStringLiteral("7"));
    }
    line->selectAll();
    line->insert(QStringLiteral("-15"));
    QCOMPARE(form.valueText(), QStringLiteral("-15"));
}

void TestInputValues::lettersStayOutOfNumbers_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("REAL") << QStringLiteral("REAL");
    QTest::newRow("MONEY") << QStringLiteral("MONEY");
}

void TestInputValues::lettersStayOutOfNumbers()
{
    QFETCH(QString, format);
    inputDataForm form;
    fill(form, format, QString());
    QTest::keyClicks(line(form), QStringLiteral("a1e 2,x5'+-.%"));
    QCOMPARE(line(form)->text(), QStringLiteral("1 2,5+-."));
    fill(form, QStringLiteral("STRING"), QString());
    QTest::keyClicks(line(form), QStringLiteral("abc"));
    QCOMPARE(line(form)->text(), QStringLiteral("abc"));
}

void TestInputValues::storedNonsenseCanBeCorrected()
{
    inputDataForm form;
    fill(form, QStringLiteral("REAL"), QStringLiteral("ab1"));
    QCOMPARE(line(form)->text(), QStringLiteral("ab1"));
    line(form)->home(false);
    QTest::keyClick(line(form), Qt::Key_Delete);
    QTest::keyClick(line(form), Qt::Key_Delete);
    QCOMPARE(form.valueText(), QStringLiteral("1.000000"));
}

void TestInputValues::longTextsAreKeptInStep()
{
    inputDataForm form;
    fill(form, QStringLiteral("LONGSTRING"), QStringLiteral("a\nb"));
    QCOMPARE(longText(form)->toPlainText(), QStringLiteral("a\nb"));
    QCOMPARE(line(form)->text(), QStringLiteral("a\nb"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    longText(form)->moveCursor(QTextCursor::End);
    QTest::keyClick(longText(form), Qt::Key_Return);
    QCOMPARE(line(form)->text(), QStringLiteral("a\nb\n"));
    QCOMPARE(touched.size(), 1);
    line(form)->setText(QStringLiteral("c\nd"));
    QCOMPARE(longText(form)->toPlainText(), QStringLiteral("c\nd"));
    QCOMPARE(form.valueText(), QStringLiteral("c\nd"));
    QCOMPARE(touched.size(), 2);
}

void TestInputValues::endlessWordsAreBrokenAnywhere()
{
    // Broken between words, the text would be laid out anew as a whole for each of its lines.
    inputDataForm form;
    const QString text(120000, QLatin1Char('x'));
    fill(form, QStringLiteral("LONGSTRING"), text);
    QCOMPARE(longText(form)->wordWrapMode(), QTextOption::WrapAnywhere);
    QCOMPARE(form.valueText(), text);
    line(form)->setText(QStringLiteral("Due parole"));
    QCOMPARE(longText(form)->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    longText(form)->selectAll();
    longText(form)->insertPlainText(text);
    QCOMPARE(longText(form)->wordWrapMode(), QTextOption::WrapAnywhere);
    QCOMPARE(form.valueText(), text);
}

void TestInputValues::aLongTextKeepsItsCharacters()
{
    inputDataForm form;
    const QString text = QStringLiteral("10\u00a0km\t") + QStringLiteral("parola ").repeated(9000);
    fill(form, QStringLiteral("LONGSTRING"), text);
    longText(form)->moveCursor(QTextCursor::End);
    QTest::keyClick(longText(form), Qt::Key_X);
    QCOMPARE(form.rawText(), text + QLatin1Char('x'));
}

void TestInputValues::yesAndNoAreWords()
{
    inputDataForm form;
    fill(form, QStringLiteral("BOOL"), QStringLiteral("true"));
    auto *box = form.findChild<QCheckBox *>(QStringLiteral("cbData"));
    box->click();
    QCOMPARE(form.valueText(), QStringLiteral("FALSE"));
    box->click();
    QCOMPARE(form.valueText(), QStringLiteral("TRUE"));
}

void TestInputValues::datesAreWrittenInFull()
{
    inputDataForm form;
    fill(form, QStringLiteral("DATE"), QString());
    auto *date = form.findChild<DateEdit *>(QStringLiteral("deData"));
    date->setDate(QDate(2020, 1, 2));
    QCOMPARE(form.valueText(), QStringLiteral("02/01/2020"));
    date->setDate(QDate(476, 9, 4));
    QCOMPARE(form.valueText(), QStringLiteral("04/09/0476"));
}

void TestInputValues::aBlankDateIsAValue()
{
    inputDataForm form;
    fill(form, QStringLiteral("DATE"), QStringLiteral("29/02/2020"));
    form.clearCondition();
    QSignalSpy touched(&form, &inputDataForm::touched);
    QTest::keySequence(form.editor(), QKeySequence(QKeySequence::SelectAll));
    QTest::keyClick(form.editor(), Qt::Key_Delete);
    QCOMPARE(form.valueText(), QString());
    QCOMPARE(touched.size(), 1);
    QVERIFY(form.isActive());
}

void TestInputValues::linksGiveTheirLine()
{
    inputDataForm form;
    fill(form, QStringLiteral("LINK"), QStringLiteral("99 Perduto"));
    auto *box = form.findChild<ChoiceBox *>(QStringLiteral("cboxData"));
    QCOMPARE(box->count(), 4);
    box->setCurrentIndex(2);
    QCOMPARE(form.valueText(), QStringLiteral("12 Dell''Aquila"));
    QCOMPARE(form.rawText(), QStringLiteral("12 Dell'Aquila"));
    box->setCurrentIndex(3);
    QCOMPARE(form.valueText(), QStringLiteral("99 Perduto"));
    box->setCurrentIndex(0);
    QCOMPARE(form.valueText(), QString());
}

void TestInputValues::referencesGiveTheirId()
{
    inputDataForm form;
    fill(form, QStringLiteral("reference"), QStringLiteral("3 Eco"));
    auto *box = form.findChild<ChoiceBox *>(QStringLiteral("cboxData"));
    QCOMPARE(form.chosenId(), 3);
    box->setCurrentIndex(2);
    QCOMPARE(form.valueText(), QStringLiteral("12"));
    box->setCurrentIndex(0);
    QCOMPARE(form.valueText(), QString());
    QVERIFY(form.isTouched());
}

void TestInputValues::numbersIgnoreTheLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Italian));
    inputDataForm form;
    fill(form, QStringLiteral("MONEY"), QStringLiteral("1234.5"));
    QCOMPARE(line(form)->text(), QStringLiteral("1234.50"));
    line(form)->setText(QStringLiteral("2,25"));
    QCOMPARE(form.valueText(), QStringLiteral("2.25"));
    inputDataForm whole;
    fill(whole, QStringLiteral("INTEGER"), QStringLiteral("1234567"));
    auto *number = whole.findChild<QSpinBox *>(QStringLiteral("sbNum"));
    QCOMPARE(number->text(), QStringLiteral("1234567"));
    number->stepUp();
    QCOMPARE(whole.valueText(), QStringLiteral("1234568"));
    QLocale::setDefault(before);
}

void TestInputValues::settingAgainForgetsTheChange()
{
    inputDataForm form;
    fill(form, QStringLiteral("STRING"), QStringLiteral("x"));
    line(form)->setText(QStringLiteral("y"));
    QVERIFY(form.isTouched());
    fill(form, QStringLiteral("STRING"), QStringLiteral("z"));
    QVERIFY(!form.isTouched());
    QCOMPARE(form.valueText(), QStringLiteral("z"));
}

void TestInputValues::rawTextsAreNotDoubled()
{
    inputDataForm form;
    fill(form, QStringLiteral("STRING"), QString());
    line(form)->setText(QStringLiteral("l'isola"));
    QCOMPARE(form.rawText(), QStringLiteral("l'isola"));
    QCOMPARE(form.valueText(), QStringLiteral("l''isola"));
    QCOMPARE(line(form)->text(), QStringLiteral("l'isola"));
}

QTEST_MAIN(TestInputValues)
#include "widgets_inputvalues.moc"
