// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The designer's row: what each format shows, which column it describes, its sub-table's rows.
#include "widgets/newTableElement.h"

#include "widgets/ElidedComboBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QtTest>

Q_DECLARE_METATYPE(newTableElement::Kind)

using Kind = newTableElement::Kind;

class TestNewTableElement : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void startsAsAnEmptyLineOfText();
    void offersTheFormatsInTheirOrder();
    void showsWhatTheFormatNeeds_data();
    void showsWhatTheFormatNeeds();
    void aSubTableProposesAName();
    void copyingAFieldShowsTheOtherPage();
    void copyingCanBeTakenAway();

    void describesTypedColumns_data();
    void describesTypedColumns();
    void everyFormatGivesItsKeyword_data();
    void everyFormatGivesItsKeyword();
    void aSubTableKeepsItsRequiredMark();
    void describesLinks_data();
    void describesLinks();
    void isASubTableUntilItBecomesAnotherThing();
    void describesCopiedFields_data();
    void describesCopiedFields();
    void copiesNothingFromATableWithoutFields();
    void subTableColumnsBeginWithTheFolder();
    void subTableColumnsKeepEmptyRows();

    void offersTables_data();
    void offersTables();
    void tellsTheTableWhenGivenTables_data();
    void tellsTheTableWhenGivenTables();
    void tellsTheTableWhenAPersonChooses();
    void offersTheFieldsOfATable_data();
    void offersTheFieldsOfATable();
    void newFieldsReplaceTheOldOnes();
    void withoutSubTablesTheFormatsKeepTheirKeywords();

    void subRowsAreNumberedAndKnowTheTables();
    void subRowsAskForFieldsThroughTheirRow();
    void askingForFieldsOfASubTable();
    void subRowsAddSubRows_data();
    void subRowsAddSubRows();
    void clearedSubRowsAreGoneAtOnceAndDeletedLater();
    void aSubRowMayGoInTheMiddleOfItsSignal();
    void aRowTakesItsSubRowsAlong();

    void asksForAnotherRow_data();
    void asksForAnotherRow();
    void theFocusGoesToTheFirstEditor_data();
    void theFocusGoesToTheFirstEditor();
    void theFocusedRowIsScrolledTo();
    void theTabKeyFollowsTheEye();
    void theWheelPassesOver_data();
    void theWheelPassesOver();
    void namesItsControls();
    void rowsOfAllKindsStandInColumns();
    void onANarrowPageTheSourceStandsBelow();
    void longTableNamesAreElidedByThePaintingAlone();
    void slotsAndSignalsKeepTheirSignatures();
};

namespace
{

/// A row's own part: those of its sub-rows come after it.
template<typename T>
T *part(const newTableElement &row, const char *name)
{
    return row.findChild<T *>(QLatin1String(name));
}

QComboBox *box(const newTableElement &row, const char *name)
{
    return part<QComboBox>(row, name);
}

QCheckBox *check(const newTableElement &row, const char *name)
{
    return part<QCheckBox>(row, name);
}

QLineEdit *nameLine(const newTableElement &row)
{
    return part<QLineEdit>(row, "leName");
}

void chooseType(const newTableElement &row, const QString &word)
{
    box(row, "cbType")->setCurrentText(word);
}

QStringList items(const QComboBox *list)
{
    QStringList texts;
    for (int item = 0; item < list->count(); ++item) {
        texts.append(list->itemText(item));
    }
    return texts;
}

/// What the row shows and allows, such as "name requirable"; then the number of its sub-rows.
QString state(const newTableElement &row)
{
    QStringList words;
    if (!nameLine(row)->isHidden()) {
        words.append(QStringLiteral("name"));
    }
    if (!box(row, "cbExistList2")->isHidden()) {
        words.append(QStringLiteral("targets"));
    }
    if (!part<QWidget>(row, "subFrame")->isHidden()) {
        words.append(QStringLiteral("subtable"));
    }
    if (check(row, "cbRequired")->isEnabled()) {
        words.append(QStringLiteral("requirable"));
    }
    if (check(row, "cbRequired")->isChecked()) {
        words.append(QStringLiteral("required"));
    }
    words.append(QString::number(row.subRows().size()));
    return words.join(QLatin1Char(' '));
}

/// The tables of a small library, as its owner gives them.
QStringList someTables()
{
    return {QStringLiteral("settings"), QStringLiteral("libri"), QStringLiteral("HIDDENTABLE_Note"),
            QStringLiteral("filters"),
            QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Il_barone")};
}

QStringList someTargets()
{
    return {QStringLiteral("libri"), QStringLiteral("#Note")};
}

QStringList someFields()
{
    return {QStringLiteral("RINTEGERFORMAT_Id"), QStringLiteral("RSTRINGFORMAT_Titolo"),
            QStringLiteral("NDATEFORMAT_Comprato_il"), QStringLiteral("NSUBTABLEFORMAT_Prestiti"),
            QStringLiteral("Xautori_XDTX_NSTRINGFORMAT_Nome")};
}

/// Keeps what a row asks for, and answers as an owner does.
class Owner : public QObject
{
public:
    explicit Owner(newTableElement &row)
    {
        connect(&row, &newTableElement::changeTable, this,
                [this](newTableElement *subject, const QString &table) {
                    subjects.append(subject);
                    tables.append(table);
                    subject->setExistingFields(someFields());
                });
    }

    QList<newTableElement *> subjects;
    QStringList tables;
};

void waitForDeletions()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void press(QWidget *button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace

void TestNewTableElement::initTestCase()
{
    qRegisterMetaType<newTableElement *>();
}

void TestNewTableElement::cleanup()
{
    waitForDeletions();
}

void TestNewTableElement::startsAsAnEmptyLineOfText()
{
    const newTableElement row;
    QCOMPARE(state(row), QStringLiteral("name requirable 0"));
    QCOMPARE(box(row, "cbType")->currentText(), QStringLiteral("STRING"));
    QCOMPARE(nameLine(row)->text(), QString());
    QCOMPARE(part<QStackedWidget>(row, "tableElementsPages")->currentWidget()->objectName(),
             QStringLiteral("newElemPage"));
    QVERIFY(!part<QWidget>(row, "insertFromFrame")->isHidden());
    QVERIFY(!check(row, "cbFromTable")->isChecked());
    QCOMPARE(check(row, "cbFromTable")->text(), QStringLiteral("Inserisci Campo Da Tabella"));
    QCOMPARE(check(row, "cbRequired")->text(), QStringLiteral("Richiesto"));
    const auto *const add = part<QPushButton>(row, "pbAddNew");
    QCOMPARE(add->text(), QStringLiteral("+"));
    QCOMPARE(add->toolTip(), QStringLiteral("Aggiungi un nuovo campo alla tabella"));
    for (const char *list : {"cbExistList", "cbExistField", "cbExistList2"}) {
        QCOMPARE(box(row, list)->count(), 0);
    }
    QCOMPARE(part<QLabel>(row, "lbNumber")->text(), QString());
    QVERIFY(row.kind() == Kind::Empty);
    QCOMPARE(row.columnDefinition(), ColumnDefinition());
}

void TestNewTableElement::offersTheFormatsInTheirOrder()
{
    const newTableElement row;
    QCOMPARE(items(box(row, "cbType")).join(QLatin1Char(' ')),
             QStringLiteral("STRING DATE INTEGER REAL MONEY IMAGE PDF BOOL MAIL LINK URL "
                            "SUBTABLE"));
}

void TestNewTableElement::showsWhatTheFormatNeeds_data()
{
    // A "*" stands for a click on the required mark.
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *steps, const char *expected) {
        QTest::newRow(steps) << QString::fromLatin1(steps) << QString::fromLatin1(expected);
    };
    for (const char *ordinary :
         {"DATE", "INTEGER", "REAL", "MONEY", "BOOL", "MAIL", "URL", "STRING"}) {
        const QByteArray word(ordinary);
        add("* SUBTABLE " + word, "name requirable required 0");
        add("LINK " + word, "name requirable 0");
        add("PDF " + word, "name requirable 0");
    }
    add("* DATE", "name requirable required 0");
    add("* IMAGE", "name requirable 0");
    add("* PDF", "name 0");
    add("* SUBTABLE", "name subtable required 1");
    add("* LINK", "targets required 0");

    add("IMAGE * STRING", "name requirable required 0");
    add("IMAGE * PDF", "name 0");
    add("IMAGE * SUBTABLE", "name subtable required 1");
    add("IMAGE * LINK", "targets required 0");

    add("PDF * IMAGE", "name requirable 0");
    add("PDF * SUBTABLE", "name subtable 1");
    add("PDF * LINK", "targets 0");

    add("SUBTABLE IMAGE", "name requirable 0");
    add("SUBTABLE PDF", "name 0");
    add("SUBTABLE LINK", "targets 1");

    add("LINK * IMAGE", "name requirable 0");
    add("LINK PDF", "0");
    add("LINK SUBTABLE", "subtable 1");
    add("* LINK IMAGE", "name requirable 0");

    add("SUBTABLE LINK SUBTABLE", "subtable 2");
    add("SUBTABLE LINK SUBTABLE LINK SUBTABLE", "subtable 3");
    add("SUBTABLE LINK PDF", "0");
    add("SUBTABLE LINK IMAGE", "name requirable 0");
    add("SUBTABLE LINK STRING", "name requirable 0");
    add("LINK PDF SUBTABLE", "subtable 1");
    add("LINK PDF IMAGE", "name requirable 0");
    add("LINK SUBTABLE PDF", "0");
    add("SUBTABLE STRING SUBTABLE", "name subtable 1");
}

void TestNewTableElement::showsWhatTheFormatNeeds()
{
    QFETCH(QString, steps);
    QFETCH(QString, expected);
    const newTableElement row;
    const QStringList words = steps.split(QLatin1Char(' '));
    for (const QString &word : words) {
        if (word == QLatin1String("*")) {
            check(row, "cbRequired")->click();
        } else {
            chooseType(row, word);
        }
    }
    QCOMPARE(state(row), expected);
}

void TestNewTableElement::aSubTableProposesAName()
{
    const newTableElement row;
    nameLine(row)->setText(QStringLiteral("Titolo"));
    chooseType(row, QStringLiteral("SUBTABLE"));
    QCOMPARE(nameLine(row)->text(), QStringLiteral("Nuovo Nome"));
    chooseType(row, QStringLiteral("STRING"));
    QCOMPARE(nameLine(row)->text(), QStringLiteral("Nuovo Nome"));
}

void TestNewTableElement::copyingAFieldShowsTheOtherPage()
{
    const newTableElement row;
    chooseType(row, QStringLiteral("SUBTABLE"));
    const auto *const pages = part<QStackedWidget>(row, "tableElementsPages");
    check(row, "cbFromTable")->click();
    QCOMPARE(pages->currentWidget()->objectName(), QStringLiteral("existElemPage"));
    QVERIFY(!part<QWidget>(row, "subFrame")->isEnabled());
    QCOMPARE(state(row), QStringLiteral("name subtable 1"));
    check(row, "cbFromTable")->click();
    QCOMPARE(pages->currentWidget()->objectName(), QStringLiteral("newElemPage"));
    QVERIFY(part<QWidget>(row, "subFrame")->isEnabled());
}

void TestNewTableElement::copyingCanBeTakenAway()
{
    newTableElement row;
    row.hideInsertFromFrame();
    QVERIFY(part<QWidget>(row, "insertFromFrame")->isHidden());
}

void TestNewTableElement::describesTypedColumns_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("required");
    QTest::addColumn<QString>("name");
    QTest::newRow("an optional line") << QStringLiteral("STRING") << QStringLiteral("Titolo")
                                      << false << QStringLiteral("NSTRINGFORMAT_Titolo");
    QTest::newRow("a required date of several words")
        << QStringLiteral("DATE") << QStringLiteral("Data di acquisto") << true
        << QStringLiteral("RDATEFORMAT_Data_di_acquisto");
    QTest::newRow("each blank becomes its own sign")
        << QStringLiteral("MONEY") << QStringLiteral(" a  b ") << false
        << QStringLiteral("NMONEYFORMAT__a__b_");
    QTest::newRow("one blank is a label") << QStringLiteral("STRING") << QStringLiteral(" ")
                                          << false << QStringLiteral("NSTRINGFORMAT__");
    QTest::newRow("signs and letters stay as typed")
        << QStringLiteral("BOOL") << QStringLiteral("Perché l'ho \"letto\" #1 €") << true
        << QStringLiteral("RBOOLFORMAT_Perché_l'ho_\"letto\"_#1_€");
    QTest::newRow("a tab stays") << QStringLiteral("URL") << QStringLiteral("a\tb") << false
                                 << QStringLiteral("NURLFORMAT_a\tb");
    QTest::newRow("markers stay as typed")
        << QStringLiteral("STRING") << QStringLiteral("a FORMAT_b") << false
        << QStringLiteral("NSTRINGFORMAT_a_FORMAT_b");
}

void TestNewTableElement::describesTypedColumns()
{
    QFETCH(QString, type);
    QFETCH(QString, label);
    QFETCH(bool, required);
    QFETCH(QString, name);
    const newTableElement row;
    chooseType(row, type);
    nameLine(row)->setText(label);
    check(row, "cbRequired")->setChecked(required);
    QCOMPARE(row.columnDefinition(), ColumnDefinition(name, QStringLiteral("text")));
    QVERIFY(row.kind() == Kind::Typed);
    QCOMPARE(row.typedLabel(), label);

    nameLine(row)->clear();
    QCOMPARE(row.columnDefinition(), ColumnDefinition());
    QVERIFY(row.kind() == Kind::Empty);
    QCOMPARE(row.typedLabel(), QString());
}

void TestNewTableElement::everyFormatGivesItsKeyword_data()
{
    QTest::addColumn<QString>("word");
    const newTableElement row;
    const QStringList words = items(box(row, "cbType"));
    for (const QString &word : words) {
        QTest::newRow(qPrintable(word)) << word;
    }
}

void TestNewTableElement::everyFormatGivesItsKeyword()
{
    QFETCH(QString, word);
    const newTableElement row;
    chooseType(row, word);
    nameLine(row)->setText(QStringLiteral("x"));
    QCOMPARE(row.columnDefinition(),
             ColumnDefinition(QLatin1Char('N') + word + QStringLiteral("FORMAT_x"),
                              QStringLiteral("text")));
}

void TestNewTableElement::aSubTableKeepsItsRequiredMark()
{
    const newTableElement row;
    check(row, "cbRequired")->click();
    chooseType(row, QStringLiteral("SUBTABLE"));
    QCOMPARE(row.columnDefinition(), ColumnDefinition(QStringLiteral("RSUBTABLEFORMAT_Nuovo_Nome"),
                                                      QStringLiteral("text")));
}

void TestNewTableElement::describesLinks_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Kind>("kind");
    QTest::newRow("the target's name is the label")
        << 1 << QString() << QStringLiteral("NLINKFORMAT_libri") << Kind::Link;
    QTest::newRow("a typed label gives way to the target")
        << 1 << QStringLiteral("Autore") << QStringLiteral("NLINKFORMAT_libri") << Kind::Link;
    QTest::newRow("a hidden target as it is shown")
        << 2 << QString() << QStringLiteral("NLINKFORMAT_#Note") << Kind::Link;
    QTest::newRow("blanks of a target stay")
        << 3 << QString() << QStringLiteral("NLINKFORMAT_Vecchi libri") << Kind::Link;
    QTest::newRow("a link to nowhere describes nothing")
        << 0 << QString() << QString() << Kind::Empty;
    QTest::newRow("a link to nowhere takes the label typed before")
        << 0 << QStringLiteral("Vedi anche") << QStringLiteral("RLINKFORMAT_Vedi_anche")
        << Kind::Typed;
}

void TestNewTableElement::describesLinks()
{
    QFETCH(int, target);
    QFETCH(QString, label);
    QFETCH(QString, name);
    QFETCH(Kind, kind);
    newTableElement row;
    row.setTables({}, someTargets() + QStringList(QStringLiteral("Vecchi libri")));
    check(row, "cbRequired")->click();
    nameLine(row)->setText(label);
    chooseType(row, QStringLiteral("LINK"));
    box(row, "cbExistList2")->setCurrentIndex(target);
    const QString type = name.isEmpty() ? QString() : QStringLiteral("text");
    QCOMPARE(row.columnDefinition(), ColumnDefinition(name, type));
    QVERIFY(row.kind() == kind);
    QCOMPARE(row.typedLabel(), kind == Kind::Typed ? label : QString());
    QCOMPARE(row.linkPlace(), target - 1);
}

void TestNewTableElement::isASubTableUntilItBecomesAnotherThing()
{
    newTableElement row;
    QVERIFY(!row.isSubTable());
    chooseType(row, QStringLiteral("SUBTABLE"));
    nameLine(row)->clear();
    QVERIFY(row.isSubTable());
    check(row, "cbFromTable")->click();
    QVERIFY(!row.isSubTable());
    check(row, "cbFromTable")->click();
    chooseType(row, QStringLiteral("LINK"));
    QVERIFY(!row.isSubTable());
}

void TestNewTableElement::describesCopiedFields_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("name");
    QTest::newRow("of an ordinary table")
        << 0 << 0 << QStringLiteral("Xlibri_XDTX_RSTRINGFORMAT_Titolo");
    QTest::newRow("the second field")
        << 0 << 1 << QStringLiteral("Xlibri_XDTX_NDATEFORMAT_Comprato_il");
    QTest::newRow("of a hidden table")
        << 1 << 0 << QStringLiteral("XHIDDENTABLE_Note_XDTX_RSTRINGFORMAT_Titolo");
    QTest::newRow("of a sub-table")
        << 2 << 0
        << QStringLiteral("XHIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Il_barone"
                          "_XDTX_RSTRINGFORMAT_Titolo");
    QTest::newRow("a sub-table of a table")
        << 0 << 2 << QStringLiteral("Xlibri_XDTX_NSUBTABLEFORMAT_Prestiti");
    QTest::newRow("a field that is copied itself")
        << 0 << 3 << QStringLiteral("Xlibri_XDTX_Xautori_XDTX_NSTRINGFORMAT_Nome");
}

void TestNewTableElement::describesCopiedFields()
{
    QFETCH(int, table);
    QFETCH(int, field);
    QFETCH(QString, name);
    newTableElement row;
    const Owner owner(row);
    row.setTables(someTables(), someTargets());
    nameLine(row)->setText(QStringLiteral("Titolo"));
    check(row, "cbRequired")->click();
    check(row, "cbFromTable")->click();
    box(row, "cbExistList")->setCurrentIndex(table);
    box(row, "cbExistField")->setCurrentIndex(field);
    QCOMPARE(row.columnDefinition(), ColumnDefinition(name, QStringLiteral("Integer")));
    QVERIFY(row.kind() == Kind::Copied);
    QCOMPARE(row.typedLabel(), QString());
}

void TestNewTableElement::copiesNothingFromATableWithoutFields()
{
    newTableElement row;
    row.setTables(someTables(), someTargets());
    nameLine(row)->setText(QStringLiteral("Titolo"));
    check(row, "cbFromTable")->click();
    row.setExistingFields({QStringLiteral("RINTEGERFORMAT_Id")});
    QVERIFY(row.kind() == Kind::Empty);
    QCOMPARE(row.columnDefinition(), ColumnDefinition());
}

void TestNewTableElement::subTableColumnsBeginWithTheFolder()
{
    newTableElement row;
    const ColumnDefinition folder(QStringLiteral("NLONGSTRINGFORMAT_UserPath"), QString());
    QCOMPARE(row.subTableColumns(), ColumnDefinitions({folder}));
    chooseType(row, QStringLiteral("SUBTABLE"));
    row.addNewTableElement();
    nameLine(*row.subRows().at(0))->setText(QStringLiteral("Socio"));
    chooseType(*row.subRows().at(1), QStringLiteral("DATE"));
    nameLine(*row.subRows().at(1))->setText(QStringLiteral("Reso il"));
    check(*row.subRows().at(1), "cbRequired")->click();
    QCOMPARE(row.subTableColumns(),
             ColumnDefinitions({folder,
                                {QStringLiteral("NSTRINGFORMAT_Socio"), QStringLiteral("text")},
                                {QStringLiteral("RDATEFORMAT_Reso_il"), QStringLiteral("text")}}));
}

void TestNewTableElement::subTableColumnsKeepEmptyRows()
{
    newTableElement row;
    chooseType(row, QStringLiteral("SUBTABLE"));
    row.addNewTableElement();
    nameLine(*row.subRows().at(1))->setText(QStringLiteral("Socio"));
    QCOMPARE(row.subTableColumns(),
             ColumnDefinitions({{QStringLiteral("NLONGSTRINGFORMAT_UserPath"), QString()},
                                {QString(), QString()},
                                {QStringLiteral("NSTRINGFORMAT_Socio"), QStringLiteral("text")}}));
}

void TestNewTableElement::offersTables_data()
{
    QTest::addColumn<QStringList>("tables");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("none") << QStringList() << QStringList();
    QTest::newRow("as people see their names")
        << someTables()
        << QStringList({QStringLiteral("libri"), QStringLiteral("#Note"),
                        QStringLiteral("#libri->Il_barone->Prestiti")});
    QTest::newRow("not the program's own")
        << QStringList({QStringLiteral("settings"), QStringLiteral("filters"),
                        QStringLiteral("subtablesconfigs")})
        << QStringList();
    QTest::newRow("an ordinary one of a similar name")
        << QStringList({QStringLiteral("Settings"), QStringLiteral("filters2")})
        << QStringList({QStringLiteral("Settings"), QStringLiteral("filters2")});
}

void TestNewTableElement::offersTables()
{
    QFETCH(QStringList, tables);
    QFETCH(QStringList, shown);
    newTableElement row;
    row.setTables(tables, {});
    QCOMPARE(items(box(row, "cbExistList")), shown);
    QCOMPARE(items(box(row, "cbExistList2")), QStringList(QString()));

    row.setTables({}, tables);
    QCOMPARE(items(box(row, "cbExistList")), QStringList());
    QCOMPARE(items(box(row, "cbExistList2")), QStringList(QString()) + shown);
    QCOMPARE(box(row, "cbExistList2")->currentText(), QString());
}

void TestNewTableElement::tellsTheTableWhenGivenTables_data()
{
    QTest::addColumn<QStringList>("tables");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("none") << QStringList() << QStringList(QString());
    QTest::newRow("only the program's own")
        << QStringList(QStringLiteral("settings")) << QStringList(QString());
    QTest::newRow("the first one, by the list and by its stored name")
        << someTables() << QStringList({QStringLiteral("libri"), QStringLiteral("libri")});
    QTest::newRow("a hidden one")
        << QStringList({QStringLiteral("HIDDENTABLE_Note"), QStringLiteral("libri")})
        << QStringList({QStringLiteral("HIDDENTABLE_Note"), QStringLiteral("HIDDENTABLE_Note")});
    const QString subTable = someTables().last();
    QTest::newRow("a sub-table") << QStringList(subTable) << QStringList({subTable, subTable});
}

void TestNewTableElement::tellsTheTableWhenGivenTables()
{
    QFETCH(QStringList, tables);
    QFETCH(QStringList, told);
    newTableElement row;
    const Owner owner(row);
    row.setTables(tables, {});
    QCOMPARE(owner.tables, told);
    QCOMPARE(owner.subjects.count(&row), told.size());
    QCOMPARE(box(row, "cbExistList")->toolTip(), told.last());
    QCOMPARE(box(row, "cbExistField")->count(), 4);
}

void TestNewTableElement::tellsTheTableWhenAPersonChooses()
{
    newTableElement row;
    row.setTables(someTables(), {});
    const Owner owner(row);
    box(row, "cbExistList")->setCurrentIndex(1);
    QCOMPARE(owner.tables, QStringList(QStringLiteral("HIDDENTABLE_Note")));
    QCOMPARE(box(row, "cbExistList")->toolTip(), QStringLiteral("HIDDENTABLE_Note"));
    box(row, "cbExistList")->setCurrentIndex(2);
    QCOMPARE(owner.tables.last(), someTables().last());
    QCOMPARE(box(row, "cbExistList")->toolTip(), someTables().last());
    box(row, "cbExistList")->setCurrentIndex(2);
    QCOMPARE(owner.tables.size(), 2);
    QCOMPARE(owner.subjects.count(&row), 2);
}

void TestNewTableElement::offersTheFieldsOfATable_data()
{
    QTest::addColumn<bool>("inSubTable");
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QStringList>("labels");
    const QStringList unusual = {QStringLiteral("XNote_XDTX_RINTEGERFORMAT_Id"),
                                 QStringLiteral("RINTEGERFORMAT_Ident"),
                                 QStringLiteral("RINTEGERFORMAT_id"),
                                 QStringLiteral("NSTRINGFORMAT_Nota_XMLTYX_2"),
                                 QStringLiteral("NSTRINGFORMAT_a_xdtx_b"),
                                 QStringLiteral("nome")};
    QTest::newRow("all but the Id")
        << false << someFields()
        << QStringList({QStringLiteral("Titolo"), QStringLiteral("Comprato_il"),
                        QStringLiteral("Prestiti"), QStringLiteral("Nome")});
    QTest::newRow("in a sub-table neither sub-tables nor references")
        << true << someFields()
        << QStringList({QStringLiteral("Titolo"), QStringLiteral("Comprato_il")});
    QTest::newRow("names that hold the Id's are left out, in its letter case")
        << false << unusual
        << QStringList({QStringLiteral("id"), QStringLiteral("Nota_XMLTYX_2"),
                        QStringLiteral("a_xdtx_b"), QString()});
    QTest::newRow("none") << false << QStringList() << QStringList();
}

void TestNewTableElement::offersTheFieldsOfATable()
{
    QFETCH(bool, inSubTable);
    QFETCH(QStringList, columns);
    QFETCH(QStringList, labels);
    newTableElement row;
    chooseType(row, QStringLiteral("SUBTABLE"));
    newTableElement &asked = inSubTable ? *row.subRows().first() : row;
    asked.setExistingFields(columns);
    QCOMPARE(items(box(asked, "cbExistField")), labels);
}

void TestNewTableElement::newFieldsReplaceTheOldOnes()
{
    newTableElement row;
    row.setTables(someTables(), {});
    check(row, "cbFromTable")->click();
    row.setExistingFields(someFields());
    row.setExistingFields({QStringLiteral("NMONEYFORMAT_Prezzo")});
    QCOMPARE(items(box(row, "cbExistField")), QStringList(QStringLiteral("Prezzo")));
    QCOMPARE(row.columnDefinition().first, QStringLiteral("Xlibri_XDTX_NMONEYFORMAT_Prezzo"));
}

void TestNewTableElement::withoutSubTablesTheFormatsKeepTheirKeywords()
{
    newTableElement row;
    row.removeSubtableType();
    row.removeSubtableType();
    const QStringList words = items(box(row, "cbType"));
    QCOMPARE(words.join(QLatin1Char(' ')),
             QStringLiteral("STRING DATE INTEGER REAL MONEY IMAGE PDF BOOL MAIL LINK URL"));
    nameLine(row)->setText(QStringLiteral("x"));
    for (const QString &word : words) {
        chooseType(row, word);
        QCOMPARE(row.columnDefinition().first,
                 QLatin1Char('N') + word + QStringLiteral("FORMAT_x"));
    }
}

void TestNewTableElement::subRowsAreNumberedAndKnowTheTables()
{
    newTableElement row;
    row.setNumber(7);
    row.setTables(someTables(), someTargets());
    chooseType(row, QStringLiteral("SUBTABLE"));
    row.addNewTableElement();
    row.addNewTableElement();
    QCOMPARE(part<QLabel>(row, "lbNumber")->text(), QStringLiteral("7"));
    QCOMPARE(row.subRows().size(), 3);
    auto *const layout = row.findChild<QVBoxLayout *>(QStringLiteral("subLayout"));
    QCOMPARE(layout->count(), 3);
    for (int place = 0; place < 3; ++place) {
        const newTableElement &sub = *row.subRows().at(place);
        QCOMPARE(layout->itemAt(place)->widget(), static_cast<const QWidget *>(&sub));
        QCOMPARE(part<QLabel>(sub, "lbNumber")->text(), QString::number(place + 1));
        QVERIFY(!items(box(sub, "cbType")).contains(QStringLiteral("SUBTABLE")));
        QCOMPARE(items(box(sub, "cbExistList")), items(box(row, "cbExistList")));
        QCOMPARE(items(box(sub, "cbExistList2")), items(box(row, "cbExistList2")));
    }
}

void TestNewTableElement::subRowsAskForFieldsThroughTheirRow()
{
    newTableElement row;
    row.setTables(someTables(), someTargets());
    const Owner owner(row);
    chooseType(row, QStringLiteral("SUBTABLE"));
    newTableElement *const sub = row.subRows().first();
    QCOMPARE(owner.subjects, QList<newTableElement *>({sub, sub}));
    QCOMPARE(owner.tables, QStringList({QStringLiteral("libri"), QStringLiteral("libri")}));
    // The answers came to a row that knew what it is.
    QCOMPARE(items(box(*sub, "cbExistField")),
             QStringList({QStringLiteral("Titolo"), QStringLiteral("Comprato_il")}));

    box(*sub, "cbExistList")->setCurrentIndex(1);
    QCOMPARE(owner.subjects.size(), 3);
    QCOMPARE(owner.subjects.last(), sub);
    QCOMPARE(owner.tables.last(), QStringLiteral("HIDDENTABLE_Note"));
    check(*sub, "cbFromTable")->click();
    QCOMPARE(row.subTableColumns().last(),
             ColumnDefinition(QStringLiteral("XHIDDENTABLE_Note_XDTX_RSTRINGFORMAT_Titolo"),
                              QStringLiteral("Integer")));
}

void TestNewTableElement::askingForFieldsOfASubTable()
{
    newTableElement row;
    newTableElement other;
    const Owner owner(row);
    row.changeElementSelectedSubTable(&other, QStringLiteral("#libri->Il_barone->Prestiti"));
    QCOMPARE(owner.subjects, QList<newTableElement *>({&other}));
    QCOMPARE(owner.tables, QStringList(someTables().last()));
}

void TestNewTableElement::subRowsAddSubRows_data()
{
    QTest::addColumn<bool>("byEnter");
    QTest::newRow("with their button") << false;
    QTest::newRow("with Enter") << true;
}

void TestNewTableElement::subRowsAddSubRows()
{
    QFETCH(bool, byEnter);
    newTableElement row;
    QSignalSpy asked(&row, &newTableElement::addNewElem);
    chooseType(row, QStringLiteral("SUBTABLE"));
    row.show();
    QApplication::setActiveWindow(&row);
    QApplication::processEvents(); // places the sub-row
    newTableElement &first = *row.subRows().first();
    if (byEnter) {
        QTest::keyClick(nameLine(first), Qt::Key_Return);
    } else {
        press(part<QPushButton>(first, "pbAddNew"));
    }
    QCOMPARE(row.subRows().size(), 2);
    QTRY_VERIFY(nameLine(*row.subRows().at(1))->hasFocus());
    QCOMPARE(asked.size(), 0);
}

void TestNewTableElement::clearedSubRowsAreGoneAtOnceAndDeletedLater()
{
    newTableElement row;
    chooseType(row, QStringLiteral("SUBTABLE"));
    row.addNewTableElement();
    const QPointer<newTableElement> first = row.subRows().at(0);
    const QPointer<newTableElement> second = row.subRows().at(1);
    row.clearSubElements();
    QVERIFY(row.subRows().isEmpty());
    QVERIFY(row.findChildren<newTableElement *>().isEmpty());
    QCOMPARE(row.subTableColumns().size(), 1);
    waitForDeletions();
    QVERIFY(first.isNull());
    QVERIFY(second.isNull());
}

void TestNewTableElement::aSubRowMayGoInTheMiddleOfItsSignal()
{
    newTableElement row;
    chooseType(row, QStringLiteral("SUBTABLE"));
    QPointer<newTableElement> sub = row.subRows().first();
    connect(sub, &newTableElement::addNewElem, &row, &newTableElement::clearSubElements);
    press(part<QPushButton>(*sub, "pbAddNew"));
    QVERIFY(row.subRows().isEmpty());
    waitForDeletions();
    QVERIFY(sub.isNull());
}

void TestNewTableElement::aRowTakesItsSubRowsAlong()
{
    QPointer<newTableElement> sub;
    {
        newTableElement row;
        chooseType(row, QStringLiteral("SUBTABLE"));
        sub = row.subRows().first();
        chooseType(row, QStringLiteral("LINK"));
        QVERIFY(!sub.isNull());
    }
    QVERIFY(sub.isNull());
}

void TestNewTableElement::asksForAnotherRow_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("with the button") << QStringLiteral("button");
    QTest::newRow("with Enter in the label") << QStringLiteral("enter");
    QTest::newRow("by the slot") << QStringLiteral("slot");
}

void TestNewTableElement::asksForAnotherRow()
{
    QFETCH(QString, way);
    newTableElement row;
    QSignalSpy asked(&row, &newTableElement::addNewElem);
    if (way == QLatin1String("button")) {
        press(part<QPushButton>(row, "pbAddNew"));
    } else if (way == QLatin1String("enter")) {
        QTest::keyClick(nameLine(row), Qt::Key_Return);
    } else {
        row.sendNewAdd();
    }
    QCOMPARE(asked.size(), 1);
    QCOMPARE(row.subRows().size(), 0);
}

void TestNewTableElement::theFocusGoesToTheFirstEditor_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<bool>("copied");
    QTest::addColumn<QString>("editor");
    const QString link = QStringLiteral("LINK");
    QTest::newRow("the label") << QStringList() << false << QStringLiteral("leName");
    QTest::newRow("a link's target")
        << QStringList(link) << false << QStringLiteral("cbExistList2");
    QTest::newRow("the table of a copied field")
        << QStringList() << true << QStringLiteral("cbExistList");
    QTest::newRow("a copied field's table, whatever the format")
        << QStringList(link) << true << QStringLiteral("cbExistList");
    QTest::newRow("the format while nothing else is shown")
        << QStringList({link, QStringLiteral("PDF")}) << false << QStringLiteral("cbType");
}

void TestNewTableElement::theFocusGoesToTheFirstEditor()
{
    QFETCH(QStringList, types);
    QFETCH(bool, copied);
    QFETCH(QString, editor);
    newTableElement row;
    nameLine(row)->setText(QStringLiteral("Titolo"));
    for (const QString &type : types) {
        chooseType(row, type);
    }
    check(row, "cbFromTable")->setChecked(copied);
    row.show();
    QApplication::setActiveWindow(&row);
    part<QPushButton>(row, "pbAddNew")->setFocus();
    row.focusName();
    QVERIFY(QApplication::focusWidget() != nullptr);
    QCOMPARE(QApplication::focusWidget()->objectName(), editor);
    QCOMPARE(nameLine(row)->selectedText(),
             editor == QLatin1String("leName") ? QStringLiteral("Titolo") : QString());
}

namespace
{

/// Rows on a page that scrolls, as the designer shows them.
struct Page {
    Page(int rowCount, int width)
    {
        auto *contents = new QWidget;
        auto *layout = new QVBoxLayout(contents);
        for (int place = 1; place <= rowCount; ++place) {
            rows.append(new newTableElement);
            rows.last()->setNumber(place);
            layout->addWidget(rows.last());
        }
        layout->addStretch();
        area.setWidgetResizable(true);
        area.setWidget(contents);
        area.resize(width, 400);
        area.show();
        QApplication::setActiveWindow(&area);
        QApplication::processEvents();
    }

    bool shows(const QWidget *widget) const
    {
        const QPoint place = widget->mapTo(area.viewport(), QPoint());
        return area.viewport()->rect().contains(QRect(place, widget->size()));
    }

    QScrollArea area;
    QList<newTableElement *> rows;
};

int leftOf(const newTableElement *row, const char *name)
{
    return part<QWidget>(*row, name)->mapTo(row, QPoint()).x();
}

} // namespace

void TestNewTableElement::theFocusedRowIsScrolledTo()
{
    const Page page(30, 1000);
    QVERIFY(!page.shows(page.rows.last()));
    page.rows.last()->focusName();
    QTRY_VERIFY(page.shows(page.rows.last()));

    // A row that was just added has no place of its own yet.
    newTableElement *const row = page.rows.last();
    chooseType(*row, QStringLiteral("SUBTABLE"));
    for (int count = 0; count < 12; ++count) {
        row->addNewTableElement();
    }
    QTRY_VERIFY(page.shows(row->subRows().last()));
    page.rows.first()->focusName();
    QTRY_VERIFY(page.shows(page.rows.first()));
}

void TestNewTableElement::theTabKeyFollowsTheEye()
{
    const Page page(3, 1000);
    newTableElement &first = *page.rows.first();
    chooseType(first, QStringLiteral("SUBTABLE"));
    first.addNewTableElement();
    check(*first.subRows().at(1), "cbFromTable")->click();
    chooseType(*page.rows.at(1), QStringLiteral("LINK"));
    QApplication::processEvents();
    const newTableElement &last = *page.rows.last();
    QStringList reached;
    first.focusName();
    while (!nameLine(last)->hasFocus() && reached.size() < 30) {
        const QWidget *const control = QApplication::focusWidget();
        reached.append(control->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached.join(QLatin1Char(' ')),
             QStringLiteral("leName cbType cbFromTable pbAddNew "
                            "leName cbType cbRequired cbFromTable pbAddNew "
                            "cbExistList cbExistField cbFromTable pbAddNew "
                            "cbExistList2 cbType cbFromTable pbAddNew"));
}

void TestNewTableElement::theWheelPassesOver_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"cbType", "cbExistList", "cbExistField", "cbExistList2"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestNewTableElement::theWheelPassesOver()
{
    QFETCH(QString, name);
    newTableElement row;
    const Owner owner(row);
    row.setTables(someTables(), someTargets());
    row.show();
    QApplication::setActiveWindow(&row);
    nameLine(row)->setFocus();
    auto *const list = row.findChild<QComboBox *>(name);
    const auto turnWheel = [list] {
        QWheelEvent event(QPointF(5, 5), list->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(list, &event);
    };
    turnWheel();
    QCOMPARE(list->currentIndex(), 0);
    QVERIFY(nameLine(row)->hasFocus());

    check(row, "cbFromTable")
        ->setChecked(name == QLatin1String("cbExistList") || name == QLatin1String("cbExistField"));
    if (name == QLatin1String("cbExistList2")) {
        chooseType(row, QStringLiteral("LINK"));
    }
    list->setFocus();
    turnWheel();
    QCOMPARE(list->currentIndex(), 1);
}

void TestNewTableElement::namesItsControls()
{
    newTableElement row;
    QCOMPARE(nameLine(row)->accessibleName(), QStringLiteral("Nome del campo"));
    row.setNumber(3);
    const auto spoken = [&row](const char *name) {
        return part<QWidget>(row, name)->accessibleName();
    };
    QCOMPARE(spoken("leName"), QStringLiteral("Nome del campo 3"));
    QCOMPARE(spoken("cbType"), QStringLiteral("Tipo del campo 3"));
    QCOMPARE(spoken("cbRequired"), QStringLiteral("Campo richiesto 3"));
    QCOMPARE(spoken("cbExistList2"), QStringLiteral("Tabella collegata al campo 3"));
    QCOMPARE(spoken("cbFromTable"), QStringLiteral("Inserisci Campo Da Tabella 3"));
    QCOMPARE(spoken("cbExistList"), QStringLiteral("Tabella da cui copiare il campo 3"));
    QCOMPARE(spoken("cbExistField"), QStringLiteral("Campo da copiare nel campo 3"));
    QCOMPARE(spoken("pbAddNew"), QStringLiteral("Aggiungi un nuovo campo alla tabella"));
    QCOMPARE(nameLine(row)->placeholderText(), QStringLiteral("Nome del campo"));
    for (const char *name : {"lbType", "lbExistList", "lbExistField", "lbExistList2"}) {
        const auto *const label = part<QLabel>(row, name);
        QString editor = QLatin1String(name);
        QCOMPARE(label->buddy()->objectName(), editor.replace(0, 2, QStringLiteral("cb")));
    }
}

void TestNewTableElement::rowsOfAllKindsStandInColumns()
{
    const Page page(14, 1100);
    const QStringList words = items(box(*page.rows.first(), "cbType"));
    for (int place = 0; place < words.size(); ++place) {
        chooseType(*page.rows.at(place), words.at(place));
    }
    check(*page.rows.at(12), "cbFromTable")->click();
    QApplication::processEvents();
    const newTableElement *const first = page.rows.first();
    for (const newTableElement *row : page.rows) {
        QCOMPARE(leftOf(row, "tableElementsPages"), leftOf(first, "tableElementsPages"));
        QCOMPARE(leftOf(row, "cbFromTable"), leftOf(first, "cbFromTable"));
        QCOMPARE(leftOf(row, "pbAddNew"), leftOf(first, "pbAddNew"));
        if (row != page.rows.at(12)) {
            QCOMPARE(leftOf(row, "cbType"), leftOf(first, "cbType"));
            QCOMPARE(leftOf(row, "cbRequired"), leftOf(first, "cbRequired"));
        }
    }
    QVERIFY(leftOf(page.rows.at(11)->subRows().first(), "pbAddNew") > 0);
    const newTableElement *const sub = page.rows.at(11)->subRows().first();
    QVERIFY(sub->mapTo(page.rows.at(11), QPoint()).x() >= leftOf(first, "leName") - 8);
}

void TestNewTableElement::onANarrowPageTheSourceStandsBelow()
{
    Page page(2, 1100);
    newTableElement *const row = page.rows.first();
    chooseType(*row, QStringLiteral("SUBTABLE"));
    const auto topOf = [row](const char *name) {
        return part<QWidget>(*row, name)->mapTo(row, QPoint()).y();
    };
    const auto sourceIsBelow = [topOf] {
        return topOf("insertFromFrame") > topOf("tableElementsPages") + 8;
    };
    QApplication::processEvents();
    QVERIFY(!sourceIsBelow());
    const int oneLine = row->subRows().first()->height();

    page.area.resize(row->minimumSizeHint().width() + 60, 400);
    QTRY_VERIFY(sourceIsBelow());
    QTRY_VERIFY(row->subRows().first()->height() > oneLine);
    QCOMPARE(page.area.horizontalScrollBar()->maximum(), 0);
    QVERIFY(row->rect().contains(row->childrenRect()));

    page.area.resize(1100, 400);
    QTRY_VERIFY(!sourceIsBelow());
    QTRY_COMPARE(row->subRows().first()->height(), oneLine);
}

void TestNewTableElement::longTableNamesAreElidedByThePaintingAlone()
{
    const Page page(1, 900);
    newTableElement &row = *page.rows.first();
    check(row, "cbFromTable")->click();
    const int narrowest = row.minimumSizeHint().width();
    const QString longName = QStringLiteral("collezione_").repeated(30);
    row.setTables({longName}, {});
    row.setExistingFields({QStringLiteral("NSTRINGFORMAT_") + longName});
    QApplication::processEvents();
    QCOMPARE(row.minimumSizeHint().width(), narrowest);
    QCOMPARE(box(row, "cbExistList")->currentText(), longName);

    // Both ends of the name are painted: names that end differently look different.
    auto *const list = box(row, "cbExistList");
    const QImage before = list->grab().toImage();
    list->setItemText(0, longName + QStringLiteral("ZZZ"));
    QVERIFY(list->grab().toImage() != before);
    const QImage after = list->grab().toImage();
    list->setItemText(0, QStringLiteral("collezione_").repeated(29) + QStringLiteral("XX_") +
                             longName + QStringLiteral("ZZZ"));
    QCOMPARE(list->grab().toImage(), after);

    list->showPopup();
    QVERIFY(list->view()->width() > list->width());
    list->hidePopup();
}

void TestNewTableElement::slotsAndSignalsKeepTheirSignatures()
{
    const QMetaObject &meta = newTableElement::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods.append(QString::fromLatin1(method.methodSignature()) + QLatin1Char(' ') +
                       QString::fromLatin1(method.parameterNames().join(' ')));
    }
    QCOMPARE(
        methods,
        QStringList({QStringLiteral("addNewElem() "),
                     QStringLiteral("changeTable(newTableElement*,QString)  table"),
                     QStringLiteral("sendNewAdd() "), QStringLiteral("changeNewFieldType(bool) on"),
                     QStringLiteral("changeSelectedTable(QString) table"),
                     QStringLiteral("changeElementSelectedSubTable(newTableElement*,QString) "
                                    "nTe table"),
                     QStringLiteral("changeFieldType(QString) selType"),
                     QStringLiteral("addNewTableElement() ")}));
}

QTEST_MAIN(TestNewTableElement)
#include "widgets_newtableelement.moc"
