// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The input form's parts: which editor each format shows, what a change does, the condition.
#include "widgets/inputDataForm.h"

#include "tests/support/ModalResponder.h"
#include "widgets/ChoiceBox.h"
#include "widgets/DateEdit.h"
#include "widgets/ImageBox.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QtTest>

class TestInputDataForm : public QObject
{
    Q_OBJECT

private slots:
    void startsInactiveAndEmpty();
    void showsTheEditorOfEachFormat_data();
    void showsTheEditorOfEachFormat();
    void referencesShowTheirChoices_data();
    void referencesShowTheirChoices();
    void systemFieldsStandOnOneLine();
    void showsTheUnitOfMoney();
    void wholeNumbersHaveTheirLimits();
    void buttonsStepTheNumber();
    void textsHaveNoLengthLimit();
    void showsTheLabelAsGiven_data();
    void showsTheLabelAsGiven();
    void marksRequiredFields_data();
    void marksRequiredFields();
    void namesItsControls();
    void alignsLabels();
    void focusGoesToTheEditor();
    void tabGoesFromEditorToButtons();

    void changingAnEditorTellsOnce_data();
    void changingAnEditorTellsOnce();
    void fillingTellsNothingButActivates_data();
    void fillingTellsNothingButActivates();
    void aChangeMeansEqual();
    void noChoiceMeansNoCondition();
    void clearsTheCondition();
    void buttonsExcludeEachOther_data();
    void buttonsExcludeEachOther();
    void theDifferentButtonLeavesActivityAlone();
    void readsTheFirstCheckedCondition();
    void setsConditionsByName_data();
    void setsConditionsByName();
    void settingAConditionLeavesTheDifferentButton();
    void joiningWordsExcludeEachOther();
    void setsJoiningWords_data();
    void setsJoiningWords();
    void conditionButtonsShowInTheirRoleOnly();
    void anActiveFieldIsMarked();

    void readsNumbers_data();
    void readsNumbers();
    void warnsOfWrongNumbersWhileActiveOnly();
    void savingWarnsOncePerCall();
    void knowsWhetherTheNumberIsValid_data();
    void knowsWhetherTheNumberIsValid();
    void theWheelScrollsThePage_data();
    void theWheelScrollsThePage();
    void theWheelChangesAFocusedEditor();
    void slotsAndSignalsKeepTheirSignatures();
};

namespace
{

template<typename T>
T *part(const inputDataForm &form, const char *name)
{
    return form.findChild<T *>(QLatin1String(name));
}

QPushButton *button(const inputDataForm &form, const char *name)
{
    return part<QPushButton>(form, name);
}

/// The names of the condition buttons that are checked, in their order.
QString checkedConditions(const inputDataForm &form)
{
    QStringList names;
    for (const char *name : {"pbEqual", "pbDiff", "pbMajor", "pbMinor", "pbNoFilter"}) {
        if (button(form, name)->isChecked()) {
            names.append(QLatin1String(name));
        }
    }
    return names.join(QLatin1Char(' '));
}

/// The names of those parts that are not hidden.
QString shownParts(const inputDataForm &form)
{
    QStringList names;
    for (const char *name :
         {"leData", "teData", "cbData", "cboxData", "sbNum", "deData", "lbType", "lbMissing",
          "buttonFrame", "pbViewImage", "pbViewPdf", "lbPreview", "compareFrame", "buttonFrame2"}) {
        if (!part<QWidget>(form, name)->isHidden()) {
            names.append(QLatin1String(name));
        }
    }
    return names.join(QLatin1Char(' '));
}

void fill(inputDataForm &form, const QString &format)
{
    if (format == QLatin1String("reference")) {
        form.setColumnName(QStringLiteral("XAutori_XDTX_NSTRINGFORMAT_Nome"));
        form.setChoices({{1, QStringLiteral("1 Eco")}, {2, QStringLiteral("2 Calvino")}});
        form.setReferenceValue(QVariant());
        return;
    }
    form.setLinkChoices({QStringLiteral("1 Eco"), QStringLiteral("2 Calvino")});
    form.setValue(format, QVariant());
}

/// Changes the shown editor to another value, as one step of a person's.
void change(const inputDataForm &form)
{
    QWidget *editor = form.editor();
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        QTest::keyClick(line, Qt::Key_1);
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(editor)) {
        QTest::keyClick(text, Qt::Key_1);
    } else if (auto *box = qobject_cast<QCheckBox *>(editor)) {
        box->click();
    } else if (auto *choices = qobject_cast<QComboBox *>(editor)) {
        QTest::keyClick(choices, Qt::Key_Down);
    } else {
        QTest::keyClick(editor, Qt::Key_Up);
    }
}

void addFormats(bool withReference)
{
    QTest::addColumn<QString>("format");
    for (const char *format : {"STRING", "LONGSTRING", "INTEGER", "REAL", "MONEY", "BOOL", "DATE",
                               "LINK", "MAIL", "URL"}) {
        QTest::newRow(format) << QString::fromLatin1(format);
    }
    if (withReference) {
        QTest::newRow("reference") << QStringLiteral("reference");
    }
}

} // namespace

void TestInputDataForm::startsInactiveAndEmpty()
{
    const inputDataForm form;
    QVERIFY(!form.isActive());
    QVERIFY(!form.isTouched());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbNoFilter"));
    QCOMPARE(form.conditionName(), QStringLiteral("NoCondition"));
    QCOMPARE(form.joiningWord(), QStringLiteral("And"));
    QCOMPARE(shownParts(form), QStringLiteral("leData"));
    QCOMPARE(form.valueText(), QString());
    QCOMPARE(button(form, "pbViewImage")->text(), QStringLiteral("Visualizza"));
    QCOMPARE(button(form, "pbViewImage")->toolTip(), QStringLiteral("Visualizza Immagine"));
    QCOMPARE(button(form, "pbViewPdf")->text(), QStringLiteral("Aggiungi/Sostituisci PDF"));
}

void TestInputDataForm::showsTheEditorOfEachFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("editor");
    const auto add = [](const char *format, const char *shown, const char *editor) {
        QTest::newRow(format) << QString::fromLatin1(format) << QString::fromLatin1(shown)
                              << QString::fromLatin1(editor);
    };
    add("STRING", "leData", "leData");
    add("LONGSTRING", "teData", "teData");
    add("INTEGER", "sbNum buttonFrame", "sbNum");
    add("REAL", "leData", "leData");
    add("MONEY", "leData lbType", "leData");
    add("BOOL", "cbData", "cbData");
    add("DATE", "deData", "deData");
    add("IMAGE", "leData pbViewImage", "leData");
    add("PDF", "leData pbViewPdf", "leData");
    add("LINK", "cboxData", "cboxData");
    add("MAIL", "leData", "leData");
    add("URL", "leData", "leData");
    add("SUBTABLE", "", "");
    add("UNKNOWN", "leData", "leData");
    add("bool", "leData", "leData");
}

void TestInputDataForm::showsTheEditorOfEachFormat()
{
    QFETCH(QString, format);
    QFETCH(QString, editor);
    inputDataForm form;
    form.setValue(QStringLiteral("INTEGER"), 1); // what was shown before must go
    form.setValue(format, QVariant());
    QTEST(shownParts(form), "shown");
    QCOMPARE(form.editor(), editor.isEmpty() ? nullptr : form.findChild<QWidget *>(editor));
    QCOMPARE(form.format(), format);
    const bool isFile = format == QLatin1String("IMAGE") || format == QLatin1String("PDF");
    QCOMPARE(part<QLineEdit>(form, "leData")->isReadOnly(), isFile);
    QCOMPARE(form.findChildren<ImageBox *>().size(), format == QLatin1String("IMAGE") ? 1 : 0);
}

void TestInputDataForm::referencesShowTheirChoices_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("id");
    QTest::newRow("a text") << QVariant(QStringLiteral("12")) << 12;
    QTest::newRow("a number") << QVariant(12) << 12;
    QTest::newRow("a 64-bit number") << QVariant(12LL) << 12;
    QTest::newRow("a line") << QVariant(QStringLiteral("12 Rossi")) << 12;
    QTest::newRow("a real number") << QVariant(QStringLiteral("12.000000")) << 12;
    QTest::newRow("blanks around it") << QVariant(QStringLiteral(" 12 ")) << 12;
    QTest::newRow("letters after it") << QVariant(QStringLiteral("12Rossi")) << 0;
    QTest::newRow("no number") << QVariant(QStringLiteral("Rossi 12")) << 0;
    QTest::newRow("an Id that is not offered") << QVariant(QStringLiteral("13")) << 0;
    QTest::newRow("unfilled") << QVariant(QStringLiteral("0")) << 0;
    QTest::newRow("empty") << QVariant(QString()) << 0;
    QTest::newRow("nothing") << QVariant() << 0;
}

void TestInputDataForm::referencesShowTheirChoices()
{
    QFETCH(QVariant, stored);
    QFETCH(int, id);
    const QVector<QPair<int, QString>> choices = {{1, QStringLiteral("1 Bianchi")},
                                                  {12, QStringLiteral("12 Rossi")}};
    inputDataForm form;
    form.setChoices(choices);
    form.setReferenceValue(1);
    form.setReferenceValue(stored);
    auto *box = part<ChoiceBox>(form, "cboxData");
    QCOMPARE(shownParts(form), QStringLiteral("cboxData"));
    QCOMPARE(box->itemText(0), QStringLiteral("---"));
    QCOMPARE(box->itemText(1), QStringLiteral("1 Bianchi"));
    QCOMPARE(box->itemText(2), QStringLiteral("12 Rossi"));
    QCOMPARE(form.chosenId(), id);
    QCOMPARE(box->currentIndex(), id == 0 ? 0 : 2);
    QVERIFY(!form.isTouched());

    form.setReferenceValue(1);
    form.setValue(QStringLiteral("STRING"), stored);
    QCOMPARE(form.chosenId(), id);
    QCOMPARE(shownParts(form), QStringLiteral("cboxData"));
    QCOMPARE(form.rawText(), stored.toString());
}

void TestInputDataForm::systemFieldsStandOnOneLine()
{
    inputDataForm path;
    path.setColumnName(QStringLiteral("NLONGSTRINGFORMAT_UserPath"));
    path.setValue(QStringLiteral("LONGSTRING"), QStringLiteral("TABLES_DOC/x"));
    QCOMPARE(shownParts(path), QStringLiteral("leData"));
    inputDataForm id;
    id.setColumnName(QStringLiteral("RINTEGERFORMAT_Id"));
    id.setValue(QStringLiteral("INTEGER"), 4);
    QCOMPARE(shownParts(id), QStringLiteral("sbNum buttonFrame"));
    QCOMPARE(part<QSpinBox>(id, "sbNum")->value(), 4);
}

void TestInputDataForm::showsTheUnitOfMoney()
{
    inputDataForm form;
    form.setValue(QStringLiteral("MONEY"), QStringLiteral("3"));
    QCOMPARE(part<QLabel>(form, "lbType")->text(), QStringLiteral("€"));
    QCOMPARE(part<QLineEdit>(form, "leData")->text(), QStringLiteral("3.00"));
    form.setValue(QStringLiteral("MONEY"), QString());
    QCOMPARE(part<QLineEdit>(form, "leData")->text(), QString());
    form.setValue(QStringLiteral("MONEY"), QVariant());
    QCOMPARE(part<QLineEdit>(form, "leData")->text(), QString());
}

void TestInputDataForm::wholeNumbersHaveTheirLimits()
{
    const inputDataForm form;
    const auto *number = part<QSpinBox>(form, "sbNum");
    QCOMPARE(number->minimum(), -999999999);
    QCOMPARE(number->maximum(), 999999999);
    QVERIFY(number->hasFrame());
    QVERIFY(!number->isAccelerated());
    QCOMPARE(number->buttonSymbols(), QAbstractSpinBox::UpDownArrows);
}

void TestInputDataForm::buttonsStepTheNumber()
{
    inputDataForm form;
    form.setValue(QStringLiteral("INTEGER"), QStringLiteral("999999998"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    const auto *number = part<QSpinBox>(form, "sbNum");
    button(form, "pbPlus")->click();
    QCOMPARE(number->value(), 999999999);
    button(form, "pbPlus")->click();
    QCOMPARE(number->value(), 999999999);
    QCOMPARE(touched.size(), 1);
    button(form, "pbMinus")->click();
    QCOMPARE(number->value(), 999999998);
    QCOMPARE(touched.size(), 2);
    form.setValue(QStringLiteral("INTEGER"), QStringLiteral("-999999999"));
    form.intMinus();
    QCOMPARE(number->value(), -999999999);
    form.intPlus();
    QCOMPARE(number->value(), -999999998);
}

void TestInputDataForm::textsHaveNoLengthLimit()
{
    const QString text = QStringLiteral("0123456789").repeated(5000);
    inputDataForm form;
    form.setValue(QStringLiteral("STRING"), QString());
    auto *line = part<QLineEdit>(form, "leData");
    line->setText(text);
    QCOMPARE(form.rawText().size(), 50000);
    QTest::keyClick(line, Qt::Key_End);
    QTest::keyClick(line, Qt::Key_X);
    QCOMPARE(form.rawText(), text + QLatin1Char('x'));
}

void TestInputDataForm::showsTheLabelAsGiven_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("hasBuddy");
    QTest::newRow("plain") << QStringLiteral("Titolo") << true;
    QTest::newRow("with an ampersand") << QStringLiteral("Usi & costumi") << false;
    QTest::newRow("looking like markup") << QStringLiteral("<b>x</b>") << true;
    QTest::newRow("with underscores") << QStringLiteral("Data_di_nascita") << true;
}

void TestInputDataForm::showsTheLabelAsGiven()
{
    QFETCH(QString, label);
    inputDataForm form;
    form.setColumnName(QStringLiteral("RSTRINGFORMAT_x"));
    form.setValue(QStringLiteral("STRING"), QString());
    form.setLabel(label);
    const auto *title = part<QLabel>(form, "lbTitle");
    QCOMPARE(form.label(), label);
    QCOMPARE(title->text(), label);
    QCOMPARE(title->textFormat(), Qt::PlainText);
    QFETCH(bool, hasBuddy);
    QCOMPARE(title->buddy(), hasBuddy ? form.editor() : nullptr);
}

void TestInputDataForm::marksRequiredFields_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("isRequired");
    QTest::newRow("required") << QStringLiteral("RSTRINGFORMAT_x") << true;
    QTest::newRow("not required") << QStringLiteral("NSTRINGFORMAT_x") << false;
    QTest::newRow("a reference to a required field")
        << QStringLiteral("XAltra_XDTX_RSTRINGFORMAT_x") << false;
}

void TestInputDataForm::marksRequiredFields()
{
    QFETCH(QString, column);
    QFETCH(bool, isRequired);
    inputDataForm form;
    form.setColumnName(column);
    fill(form, QStringLiteral("STRING"));
    QCOMPARE(form.columnName(), column);
    const auto *mark = part<QLabel>(form, "lbRequired");
    QCOMPARE(mark->text(), isRequired ? QStringLiteral("*") : QString());
    QCOMPARE(mark->foregroundRole(), QPalette::Highlight);
    QCOMPARE(form.editor()->accessibleDescription(),
             isRequired ? QStringLiteral("obbligatorio") : QString());
    form.setFilterRole(true);
    QCOMPARE(mark->text(), QString());
    QCOMPARE(form.editor()->accessibleDescription(), QString());
}

void TestInputDataForm::namesItsControls()
{
    inputDataForm form;
    form.setLabel(QStringLiteral("Pagine"));
    const QList<QWidget *> controls = form.findChildren<QWidget *>();
    for (const QWidget *control : controls) {
        const bool isOurs = !control->objectName().startsWith(QLatin1String("qt_"));
        if (isOurs && control->window() == &form && control->focusPolicy() != Qt::NoFocus) {
            QVERIFY2(control->accessibleName().startsWith(QLatin1String("Pagine")),
                     qPrintable(control->objectName()));
        }
    }
    QCOMPARE(button(form, "pbPlus")->accessibleName(), QStringLiteral("Pagine Aumenta"));
    QCOMPARE(button(form, "pbEqual")->accessibleName(), QStringLiteral("Pagine Uguale"));
}

void TestInputDataForm::alignsLabels()
{
    inputDataForm form;
    form.setLabel(QStringLiteral("Titolo"));
    const auto *title = part<QLabel>(form, "lbTitle");
    const int needed = title->fontMetrics().horizontalAdvance(QStringLiteral("Titolo"));
    QVERIFY(form.labelWidthHint() >= needed);
    QVERIFY(form.labelWidthHint() < needed + 20);
    form.setLabelWidth(190);
    QCOMPARE(title->minimumWidth(), 190);
    QCOMPARE(title->maximumWidth(), 190);
    QCOMPARE(title->toolTip(), QString());
    const QString longLabel = QStringLiteral("parola ").repeated(60);
    form.setLabel(longLabel);
    QCOMPARE(form.labelWidthHint(), 224);
    QCOMPARE(title->maximumWidth(), 190);
    QCOMPARE(title->toolTip(), longLabel);
}

void TestInputDataForm::focusGoesToTheEditor()
{
    inputDataForm form;
    form.setValue(QStringLiteral("DATE"), QVariant());
    form.show();
    QApplication::setActiveWindow(&form);
    form.focusEditor();
    QVERIFY(part<DateEdit>(form, "deData")->hasFocus());
    form.setValue(QStringLiteral("SUBTABLE"), QVariant());
    form.focusEditor();
    QCOMPARE(form.editor(), nullptr);
}

void TestInputDataForm::tabGoesFromEditorToButtons()
{
    inputDataForm form;
    form.setValue(QStringLiteral("INTEGER"), QVariant());
    form.setFilterRole(true);
    form.show();
    QApplication::setActiveWindow(&form);
    form.focusEditor();
    QStringList visited;
    for (int step = 0; step < 10; ++step) {
        visited.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited.join(QLatin1Char(' ')),
             QStringLiteral("sbNum pbMinus pbPlus pbEqual pbDiff pbMajor pbMinor pbNoFilter "
                            "pbAnd pbOr"));
}

void TestInputDataForm::changingAnEditorTellsOnce_data()
{
    addFormats(true);
}

void TestInputDataForm::changingAnEditorTellsOnce()
{
    QFETCH(QString, format);
    inputDataForm form;
    fill(form, format);
    form.clearCondition();
    QSignalSpy touched(&form, &inputDataForm::touched);
    change(form);
    QCOMPARE(touched.size(), 1);
    QVERIFY(form.isTouched());
    QVERIFY(form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbEqual"));
    change(form);
    QCOMPARE(touched.size(), format == QLatin1String("BOOL") || form.editor() != nullptr ? 2 : 1);
    fill(form, format);
    QVERIFY(!form.isTouched());
    QCOMPARE(touched.size(), 2);
}

void TestInputDataForm::fillingTellsNothingButActivates_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("value");
    QTest::newRow("STRING") << QStringLiteral("STRING") << QStringLiteral("x");
    QTest::newRow("LONGSTRING") << QStringLiteral("LONGSTRING") << QStringLiteral("x\ny");
    QTest::newRow("INTEGER") << QStringLiteral("INTEGER") << QStringLiteral("5");
    QTest::newRow("REAL") << QStringLiteral("REAL") << QStringLiteral("5.5");
    QTest::newRow("MONEY") << QStringLiteral("MONEY") << QStringLiteral("5.5");
    QTest::newRow("BOOL") << QStringLiteral("BOOL") << QStringLiteral("TRUE");
    QTest::newRow("DATE") << QStringLiteral("DATE") << QStringLiteral("01/02/2003");
    QTest::newRow("LINK") << QStringLiteral("LINK") << QStringLiteral("2 Calvino");
}

void TestInputDataForm::fillingTellsNothingButActivates()
{
    QFETCH(QString, format);
    QFETCH(QString, value);
    inputDataForm form;
    fill(form, format);
    form.clearCondition();
    QSignalSpy touched(&form, &inputDataForm::touched);
    form.setValue(format, value);
    QVERIFY(form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbEqual"));
    QVERIFY(!form.isTouched());
    QCOMPARE(touched.size(), 0);
    form.clearCondition();
    form.setValue(format, value);
    QVERIFY(!form.isActive()); // the same value again changes nothing
}

void TestInputDataForm::aChangeMeansEqual()
{
    inputDataForm form;
    fill(form, QStringLiteral("STRING"));
    button(form, "pbMajor")->click();
    QTest::keyClicks(part<QLineEdit>(form, "leData"), QStringLiteral("x"));
    QCOMPARE(checkedConditions(form), QStringLiteral("pbEqual"));
    QCOMPARE(form.conditionName(), QStringLiteral("Equal"));
    button(form, "pbDiff")->click();
    form.activated();
    QCOMPARE(checkedConditions(form), QStringLiteral("pbEqual"));
}

void TestInputDataForm::noChoiceMeansNoCondition()
{
    inputDataForm form;
    fill(form, QStringLiteral("reference"));
    auto *box = part<ChoiceBox>(form, "cboxData");
    box->setCurrentIndex(2);
    QVERIFY(form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbEqual"));
    box->setCurrentIndex(0);
    QVERIFY(!form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbNoFilter"));
    form.cbActivated(1);
    QVERIFY(form.isActive());
    form.cbActivated(-1);
    QVERIFY(!form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbNoFilter"));
}

void TestInputDataForm::clearsTheCondition()
{
    inputDataForm form;
    fill(form, QStringLiteral("STRING"));
    QTest::keyClicks(part<QLineEdit>(form, "leData"), QStringLiteral("x"));
    button(form, "pbDiff")->click();
    form.clearCondition();
    QVERIFY(!form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbNoFilter"));
    QCOMPARE(form.valueText(), QStringLiteral("x"));
    QVERIFY(form.isTouched());
}

void TestInputDataForm::buttonsExcludeEachOther_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("condition");
    QTest::addColumn<bool>("isActive");
    QTest::newRow("equal") << QStringLiteral("pbEqual") << QStringLiteral("Equal") << true;
    QTest::newRow("major") << QStringLiteral("pbMajor") << QStringLiteral("Major") << true;
    QTest::newRow("minor") << QStringLiteral("pbMinor") << QStringLiteral("Minor") << true;
    QTest::newRow("none") << QStringLiteral("pbNoFilter") << QStringLiteral("NoCondition") << false;
}

void TestInputDataForm::buttonsExcludeEachOther()
{
    QFETCH(QString, name);
    QFETCH(bool, isActive);
    for (const char *before : {"pbEqual", "pbDiff", "pbMajor", "pbMinor", "pbNoFilter"}) {
        inputDataForm form;
        form.setActive(!isActive);
        button(form, before)->click();
        auto *pressed = form.findChild<QPushButton *>(name);
        pressed->click();
        QCOMPARE(checkedConditions(form), name);
        QTEST(form.conditionName(), "condition");
        QCOMPARE(form.isActive(), isActive);
        pressed->click();
        QCOMPARE(checkedConditions(form), name);
        QCOMPARE(form.isActive(), isActive);
    }
}

void TestInputDataForm::theDifferentButtonLeavesActivityAlone()
{
    inputDataForm form;
    button(form, "pbDiff")->click();
    QVERIFY(!form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbDiff"));
    QCOMPARE(form.conditionName(), QStringLiteral("Disequal"));
    button(form, "pbEqual")->click();
    button(form, "pbDiff")->click();
    QVERIFY(form.isActive());
    QCOMPARE(checkedConditions(form), QStringLiteral("pbDiff"));
}

void TestInputDataForm::readsTheFirstCheckedCondition()
{
    const inputDataForm form;
    for (const char *name : {"pbEqual", "pbDiff", "pbMajor", "pbMinor"}) {
        button(form, name)->setChecked(true);
    }
    QCOMPARE(form.conditionName(), QStringLiteral("Equal"));
    button(form, "pbEqual")->setChecked(false);
    QCOMPARE(form.conditionName(), QStringLiteral("Disequal"));
    button(form, "pbDiff")->setChecked(false);
    QCOMPARE(form.conditionName(), QStringLiteral("Major"));
    button(form, "pbMajor")->setChecked(false);
    QCOMPARE(form.conditionName(), QStringLiteral("Minor"));
    button(form, "pbMinor")->setChecked(false);
    QCOMPARE(form.conditionName(), QStringLiteral("NoCondition"));
}

void TestInputDataForm::setsConditionsByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("checked");
    QTest::addColumn<bool>("staysActive");
    const auto add = [](const char *name, const char *checked, bool staysActive) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(checked)
                            << staysActive;
    };
    add("Equal", "pbEqual", true);
    add("Disequal", "pbDiff", true);
    add("Major", "pbMajor", true);
    add("Minor", "pbMinor", true);
    add("major", "pbMajor", true);
    add("DISEQUAL", "pbDiff", true);
    add("NoCondition", "pbNoFilter", false);
    add("NO FILTER", "pbNoFilter", false);
    add("", "pbNoFilter", false);
    add("Equal ", "pbNoFilter", false);
}

void TestInputDataForm::setsConditionsByName()
{
    QFETCH(QString, name);
    QFETCH(bool, staysActive);
    inputDataForm form;
    form.setConditionName(QStringLiteral("Minor"));
    QVERIFY(!form.isActive()); // the name alone does not make the field take part
    form.setActive(true);
    form.setConditionName(name);
    QTEST(checkedConditions(form), "checked");
    QCOMPARE(form.isActive(), staysActive);
}

void TestInputDataForm::settingAConditionLeavesTheDifferentButton()
{
    inputDataForm form;
    form.setConditionName(QStringLiteral("Disequal"));
    form.setConditionName(QStringLiteral("Minor"));
    QCOMPARE(checkedConditions(form), QStringLiteral("pbDiff pbMinor"));
    QCOMPARE(form.conditionName(), QStringLiteral("Disequal"));
    form.setConditionName(QStringLiteral("nothing"));
    QCOMPARE(checkedConditions(form), QStringLiteral("pbDiff pbNoFilter"));
    form.clearCondition();
    QCOMPARE(checkedConditions(form), QStringLiteral("pbNoFilter"));
}

void TestInputDataForm::joiningWordsExcludeEachOther()
{
    const inputDataForm form;
    QVERIFY(button(form, "pbAnd")->isChecked());
    QVERIFY(!button(form, "pbOr")->isChecked());
    for (int click = 0; click < 2; ++click) {
        button(form, "pbOr")->click();
        QCOMPARE(form.joiningWord(), QStringLiteral("Or"));
        QVERIFY(!button(form, "pbAnd")->isChecked());
        QVERIFY(button(form, "pbOr")->isChecked());
    }
    for (int click = 0; click < 2; ++click) {
        button(form, "pbAnd")->click();
        QCOMPARE(form.joiningWord(), QStringLiteral("And"));
        QVERIFY(button(form, "pbAnd")->isChecked());
        QVERIFY(!button(form, "pbOr")->isChecked());
    }
    QVERIFY(!form.isActive());
}

void TestInputDataForm::setsJoiningWords_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("joiningWord");
    QTest::newRow("And") << QStringLiteral("And") << QStringLiteral("And");
    QTest::newRow("and") << QStringLiteral("and") << QStringLiteral("And");
    QTest::newRow("Or") << QStringLiteral("Or") << QStringLiteral("Or");
    QTest::newRow("any other word") << QStringLiteral("Xor") << QStringLiteral("Or");
    QTest::newRow("no word") << QString() << QStringLiteral("Or");
}

void TestInputDataForm::setsJoiningWords()
{
    QFETCH(QString, word);
    inputDataForm form;
    form.setJoiningWord(word);
    QTEST(form.joiningWord(), "joiningWord");
    QVERIFY(button(form, "pbAnd")->isChecked() != button(form, "pbOr")->isChecked());
}

void TestInputDataForm::conditionButtonsShowInTheirRoleOnly()
{
    inputDataForm form;
    form.setValue(QStringLiteral("STRING"), QString());
    QCOMPARE(shownParts(form), QStringLiteral("leData"));
    form.setFilterRole(true);
    QCOMPARE(shownParts(form), QStringLiteral("leData compareFrame buttonFrame2"));
    form.setFilterRole(false);
    QCOMPARE(shownParts(form), QStringLiteral("leData"));
}

void TestInputDataForm::anActiveFieldIsMarked()
{
    inputDataForm form;
    const auto *mark = part<QWidget>(form, "activeMark");
    QVERIFY(mark->isHidden());
    form.setFilterRole(true);
    QVERIFY(!mark->isHidden());
    QVERIFY(!mark->autoFillBackground());
    button(form, "pbMajor")->click();
    QVERIFY(mark->autoFillBackground());
    QCOMPARE(mark->backgroundRole(), QPalette::Highlight);
    const auto edgeColour = [&form] {
        return form.grab().toImage().pixelColor(form.width() - 2, 1);
    };
    const QColor tinted = edgeColour();
    button(form, "pbNoFilter")->click();
    QVERIFY(!mark->autoFillBackground());
    QVERIFY(edgeColour() != tinted);
}

void TestInputDataForm::readsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("a point") << QStringLiteral("1234.5") << 1234.5;
    QTest::newRow("a comma") << QStringLiteral("1234,5") << 1234.5;
    QTest::newRow("blanks and a comma") << QStringLiteral("1 234,5") << 1234.5;
    QTest::newRow("a sign") << QStringLiteral(" -7 ") << -7.0;
    QTest::newRow("no number") << QStringLiteral("abc") << 0.0;
    QTest::newRow("two points") << QStringLiteral("1.234,5") << 0.0;
    QTest::newRow("nothing") << QString() << 0.0;
    QTest::newRow("not a number") << QStringLiteral("nan") << 0.0;
    QTest::newRow("infinite") << QStringLiteral("inf") << 0.0;
}

void TestInputDataForm::readsNumbers()
{
    QFETCH(QString, text);
    inputDataForm form;
    form.setValue(QStringLiteral("REAL"), text);
    form.clearCondition();
    const ModalResponder responder; // a box would fail the test
    QTEST(form.numericValue(), "number");
    QCOMPARE(responder.boxes().size(), 0);
}

void TestInputDataForm::warnsOfWrongNumbersWhileActiveOnly()
{
    inputDataForm form;
    form.setValue(QStringLiteral("REAL"), QStringLiteral("abc"));
    ModalResponder responder;
    form.setActive(false);
    QCOMPARE(form.numericValue(), 0.0);
    QCOMPARE(responder.boxes().size(), 0);
    form.setActive(true);
    responder.answer(QMessageBox::Ok);
    QCOMPARE(form.numericValue(), 0.0);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Valore numerico non valido")});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(responder.boxes().first().textFormat, Qt::PlainText);
    form.setValue(QStringLiteral("REAL"), QStringLiteral("12"));
    form.setActive(true);
    QCOMPARE(form.numericValue(), 12.0);
    QCOMPARE(responder.boxes().size(), 1);
}

void TestInputDataForm::savingWarnsOncePerCall()
{
    inputDataForm form;
    form.setValue(QStringLiteral("MONEY"), QString());
    form.clearCondition();
    QTest::keyClicks(part<QLineEdit>(form, "leData"), QStringLiteral("1.2.3"));
    ModalResponder responder;
    QVERIFY(form.isTouched());
    QVERIFY(!form.numberIsValid());
    QCOMPARE(form.rawText(), QStringLiteral("0.00"));
    QCOMPARE(responder.boxes().size(), 0);
    responder.answer(QMessageBox::Ok);
    QCOMPARE(form.valueText(), QStringLiteral("0.00"));
    QCOMPARE(responder.boxes().size(), 1);
}

void TestInputDataForm::knowsWhetherTheNumberIsValid_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isValid");
    const QString real = QStringLiteral("REAL");
    QTest::newRow("untouched nonsense") << real << QStringLiteral("abc") << QString() << true;
    QTest::newRow("a number") << real << QString() << QStringLiteral("1,5") << true;
    QTest::newRow("blanks only") << real << QString() << QStringLiteral("  ") << true;
    QTest::newRow("a sign only") << real << QString() << QStringLiteral("-") << false;
    QTest::newRow("two points") << QStringLiteral("MONEY") << QString() << QStringLiteral("1..2")
                                << false;
    QTest::newRow("a text") << QStringLiteral("STRING") << QString() << QStringLiteral("abc")
                            << true;
}

void TestInputDataForm::knowsWhetherTheNumberIsValid()
{
    QFETCH(QString, format);
    QFETCH(QString, stored);
    QFETCH(QString, typed);
    inputDataForm form;
    form.setValue(format, stored);
    QTest::keyClicks(form.editor(), typed);
    const ModalResponder responder;
    QTEST(form.numberIsValid(), "isValid");
    QCOMPARE(responder.boxes().size(), 0);
}

void TestInputDataForm::theWheelScrollsThePage_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("INTEGER") << QStringLiteral("INTEGER");
    QTest::newRow("DATE") << QStringLiteral("DATE");
    QTest::newRow("LINK") << QStringLiteral("LINK");
    QTest::newRow("reference") << QStringLiteral("reference");
    QTest::newRow("LONGSTRING") << QStringLiteral("LONGSTRING");
}

namespace
{

/// Turns the wheel over the middle of `widget`.
void turnWheel(QWidget *widget)
{
    QWidget *child = widget->childAt(widget->rect().center());
    QWidget *target = child != nullptr ? child : widget;
    const QPoint middle = target->rect().center();
    QWheelEvent event(middle, target->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only events of the window system go on to the parent of a widget that ignores them.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(target, &event);
}

/// A page higher than its view, with one form on it.
struct ScrolledPage {
    explicit ScrolledPage(const QString &format)
    {
        auto *contents = new QWidget;
        auto *layout = new QVBoxLayout(contents);
        other = new QLineEdit;
        form = new inputDataForm;
        layout->addWidget(other);
        layout->addWidget(form);
        layout->addSpacing(3000);
        area.setWidgetResizable(true);
        area.setWidget(contents);
        area.resize(800, 400);
        fill(*form, format);
        if (format == QLatin1String("LONGSTRING")) {
            form->setValue(format, QStringLiteral("riga\n").repeated(100));
        }
        form->clearCondition();
        area.show();
        QApplication::setActiveWindow(&area);
        other->setFocus();
        QApplication::processEvents();
    }

    QScrollArea area;
    QLineEdit *other = nullptr;
    inputDataForm *form = nullptr;
};

} // namespace

void TestInputDataForm::theWheelScrollsThePage()
{
    QFETCH(QString, format);
    const ScrolledPage page(format);
    const QString before = page.form->rawText();
    turnWheel(page.form->editor());
    QVERIFY(page.area.verticalScrollBar()->value() > 0);
    QVERIFY(!page.form->isTouched());
    QVERIFY(!page.form->isActive());
    QCOMPARE(page.form->rawText(), before);
    QVERIFY(page.other->hasFocus());
}

void TestInputDataForm::theWheelChangesAFocusedEditor()
{
    const ScrolledPage page(QStringLiteral("INTEGER"));
    page.form->focusEditor();
    turnWheel(page.form->editor());
    QCOMPARE(page.form->rawText(), QStringLiteral("-1"));
    QCOMPARE(page.area.verticalScrollBar()->value(), 0);
}

void TestInputDataForm::slotsAndSignalsKeepTheirSignatures()
{
    const QMetaObject &meta = inputDataForm::staticMetaObject;
    QStringList slotNames;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        if (method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Public) {
            slotNames.append(QString::fromLatin1(method.methodSignature()) + QLatin1Char(' ') +
                             QString::fromLatin1(method.parameterNames().join(' ')));
        }
    }
    QCOMPARE(slotNames,
             QStringList({QStringLiteral("viewImageBox() "), QStringLiteral("addPdf() "),
                          QStringLiteral("setNewImage(QString) fileName"),
                          QStringLiteral("activated() "), QStringLiteral("cbActivated(int) pos"),
                          QStringLiteral("activatedByButton() "),
                          QStringLiteral("deactivatedByButton() "), QStringLiteral("intPlus() "),
                          QStringLiteral("intMinus() ")}));
}

QTEST_MAIN(TestInputDataForm)
#include "widgets_inputdataform.moc"
