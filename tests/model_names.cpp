// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the naming utilities.
#include "model/names.h"

#include <QRandomGenerator>
#include <QtTest>

class TestNames : public QObject
{
    Q_OBJECT

private slots:
    void formatWord_data();
    void formatWord();
    void fieldLabel_data();
    void fieldLabel();
    void formatKeyword_data();
    void formatKeyword();
    void flagAndType_data();
    void flagAndType();
    void joinName_data();
    void joinName();
    void sqlColumnType_data();
    void sqlColumnType();
    void isReservedTable_data();
    void isReservedTable();
    void tableDisplayName_data();
    void tableDisplayName();
    void tableStoredName_data();
    void tableStoredName();
    void storedAndShownNamesUndoEachOther_data();
    void storedAndShownNamesUndoEachOther();
    void aSubTableOfAHiddenTableLosesItsParentsMarker();
};

namespace
{

void textColumns()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
}

void row(const char *claim, const char *name, const char *expected)
{
    QTest::newRow(claim) << QString::fromUtf8(name) << QString::fromUtf8(expected);
}

/// A part of a name as people may type it: without any marker and without "#" and "->".
QString namePart(QRandomGenerator &random)
{
    static const QStringList pieces = {
        QStringLiteral("a"),      QStringLiteral("Z"),      QStringLiteral("9"),
        QStringLiteral("_"),      QStringLiteral("_X"),     QStringLiteral(" "),
        QStringLiteral("-"),      QStringLiteral("'"),      QStringLiteral("è"),
        QStringLiteral("€"),      QStringLiteral("FORMAT"), QStringLiteral("HIDDEN"),
        QStringLiteral("TABLE "), QStringLiteral("％"),     QStringLiteral("🎲"),
        QStringLiteral("%s"),     QStringLiteral(".")};
    QString part;
    const int length = random.bounded(1, 9);
    for (int i = 0; i < length; ++i) {
        part += pieces.at(random.bounded(pieces.size()));
    }
    return part;
}

} // namespace

void TestNames::formatWord_data()
{
    textColumns();
    row("a keyword loses its ending", "STRINGFORMAT", "STRING");
    row("a long keyword loses its ending", "LONGSTRINGFORMAT", "LONGSTRING");
    row("a flag in front stays", "RSTRINGFORMAT", "RSTRING");
    row("every FORMAT is removed", "FORMATaFORMATbFORMAT", "ab");
    row("lower case stays", "StringFormat", "StringFormat");
    row("nothing gives nothing", "", "");
}

void TestNames::formatWord()
{
    QFETCH(QString, name);
    QTEST(Names::formatWord(name), "expected");
}

void TestNames::fieldLabel_data()
{
    textColumns();
    row("the label follows the format", "RINTEGERFORMAT_Id", "Id");
    row("a label may hold blanks and underscores", "NSTRINGFORMAT_Nome _ e", "Nome _ e");
    row("a label is cut at a second FORMAT_", "NSTRINGFORMAT_a FORMAT_b", "a ");
    row("the duplicate suffix belongs to it", "NREALFORMAT_x_XMLTYX_2", "x_XMLTYX_2");
    row("FORMAT without _ does not separate", "NSTRINGFORMATNome", "");
    row("a name without a format has none", "Nome", "");
    row("an empty label is empty", "NSTRINGFORMAT_", "");
    row("of a reference column it is the referenced label", "XLibri_XDTX_NSTRINGFORMAT_a", "a");
}

void TestNames::fieldLabel()
{
    QFETCH(QString, name);
    QTEST(Names::fieldLabel(name), "expected");
}

void TestNames::formatKeyword_data()
{
    textColumns();
    row("a required column", "RINTEGERFORMAT_Id", "INTEGERFORMAT");
    row("a column that may stay empty", "NLONGSTRINGFORMAT_UserPath", "LONGSTRINGFORMAT");
    row("without a flag the first letter is lost", "INTEGERFORMAT_Id", "NTEGERFORMAT");
    row("what follows a second FORMAT_ does not matter", "NDATEFORMAT_aFORMAT_b", "DATEFORMAT");
    row("a FORMAT without _ belongs to the word", "NaFORMATbFORMAT_c", "aFORMATbFORMAT");
    row("a name without a format gets one", "Nome", "omeFORMAT");
    row("nothing gives FORMAT", "", "FORMAT");
}

void TestNames::formatKeyword()
{
    QFETCH(QString, name);
    QTEST(Names::formatKeyword(name), "expected");
}

void TestNames::flagAndType_data()
{
    textColumns();
    row("the flag and the word", "RSTRINGFORMAT_x", "RSTRING");
    row("a flag and keyword without a label", "NMONEYFORMAT", "NMONEY");
    row("it ends at the first FORMAT, with or without _", "NaFORMATbFORMAT_c", "Na");
    row("a name without a format stays", "Nome", "Nome");
    row("nothing gives nothing", "", "");
}

void TestNames::flagAndType()
{
    QFETCH(QString, name);
    QTEST(Names::flagAndType(name), "expected");
}

void TestNames::joinName_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a line between both") << "DATEFORMAT"
                                         << "Nato il"
                                         << "DATEFORMAT_Nato il";
    QTest::newRow("lines that are there stay") << "a_"
                                               << "_b"
                                               << "a___b";
    QTest::newRow("nothing and nothing give the line") << ""
                                                       << ""
                                                       << "_";
}

void TestNames::joinName()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QTEST(Names::joinName(a, b), "expected");
}

void TestNames::sqlColumnType_data()
{
    textColumns();
    row("texts are text", "STRINGFORMAT", "text");
    row("integers are text", "INTEGERFORMAT", "text");
    row("money is text", "MONEYFORMAT", "text");
    row("anything is text", "", "text");
}

void TestNames::sqlColumnType()
{
    QFETCH(QString, name);
    QTEST(Names::sqlColumnType(name), "expected");
}

void TestNames::isReservedTable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the settings") << "settings" << true;
    QTest::newRow("the filters") << "filters" << true;
    QTest::newRow("the configurations") << "subtablesconfigs" << true;
    QTest::newRow("a capital letter makes it ordinary") << "Settings" << false;
    QTest::newRow("part of a name does not count") << "settings2" << false;
    QTest::newRow("a hidden one is ordinary") << "HIDDENTABLE_filters" << false;
    QTest::newRow("nothing is ordinary") << "" << false;
}

void TestNames::isReservedTable()
{
    QFETCH(QString, name);
    QTEST(Names::isReservedTable(name), "expected");
}

void TestNames::tableDisplayName_data()
{
    textColumns();
    row("a plain name is shown as it is", "Libri rari", "Libri rari");
    row("a hidden table begins with #", "HIDDENTABLE_Notes", "#Notes");
    row("a doubly hidden table begins with ##", "HIDDENTABLE_HIDDENTABLE_x", "##x");
    row("the marker counts inside a name too", "aHIDDENTABLE_b", "a#b");
    row("the marker in small letters does not count", "hiddentable_x", "hiddentable_x");
    row("a sub-table shows its own name before the field",
        "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX_Casa_1",
        "#Spese->Casa_1->Lista_spesa");
    row("the hidden parent of a sub-table keeps its #",
        "HIDDENTABLE_HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s", "##P->s->f");
    row("a sub-table without the hidden marker has no #", "P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s",
        "P->s->f");
    row("a broken sub-table name shows empty parts", "P_XSBTX_q", "P->->");
    row("text after a second separator is dropped",
        "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s_XSBTUSRX_t", "#P->s->f");
    row("a field ends at a further SUBTABLEFORMAT",
        "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_SUBTABLEFORMAT_g_XSBTUSRX_s", "#P->s->f_");
    row("nothing is shown as nothing", "", "");
}

void TestNames::tableDisplayName()
{
    QFETCH(QString, name);
    QTEST(Names::tableDisplayName(name), "expected");
}

void TestNames::tableStoredName_data()
{
    textColumns();
    row("a plain name is stored as it is", "Libri rari", "Libri rari");
    row("# is the hidden marker", "#Notes", "HIDDENTABLE_Notes");
    row("# in the middle is it too", "A#B", "AHIDDENTABLE_B");
    row("every # is it", "##x", "HIDDENTABLE_HIDDENTABLE_x");
    row("a sub-table's field comes before its own name", "#Spese->Casa_1->Lista_spesa",
        "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX_Casa_1");
    row("every # and marker of a sub-table is removed first", "#H#HIDDENTABLE_P->#s->f#",
        "HIDDENTABLE_HP_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s");
    row("missing parts are empty", "P->s", "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT__XSBTUSRX_s");
    row("a fourth part is dropped", "#P->s->f->q",
        "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s");
    row("nothing is stored as nothing", "", "");
}

void TestNames::tableStoredName()
{
    QFETCH(QString, name);
    QTEST(Names::tableStoredName(name), "expected");
}

void TestNames::storedAndShownNamesUndoEachOther_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("shownPattern");
    QTest::newRow("plain tables") << "%1"
                                  << "%1";
    QTest::newRow("hidden tables") << "HIDDENTABLE_%1"
                                   << "#%1";
    QTest::newRow("sub-tables") << "HIDDENTABLE_%1_XSBTX_SUBTABLEFORMAT_%2_XSBTUSRX_%3"
                                << "#%1->%3->%2";
}

void TestNames::storedAndShownNamesUndoEachOther()
{
    QFETCH(QString, pattern);
    QFETCH(QString, shownPattern);
    const bool isSubTable = pattern.contains(QLatin1String("%3"));
    QRandomGenerator random(20260);
    for (int i = 0; i < 2000; ++i) {
        const QString first = namePart(random);
        const QString second = namePart(random);
        const QString third = namePart(random);
        const QString stored = isSubTable ? pattern.arg(first, second, third) : pattern.arg(first);
        const QString shown =
            isSubTable ? shownPattern.arg(first, second, third) : shownPattern.arg(first);
        QCOMPARE(Names::tableDisplayName(stored), shown);
        QCOMPARE(Names::tableStoredName(shown), stored);
    }
}

void TestNames::aSubTableOfAHiddenTableLosesItsParentsMarker()
{
    // What is shown cannot tell whose marker a "#" is, so these names cannot be read back.
    const QString stored =
        QStringLiteral("HIDDENTABLE_HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s");
    QCOMPARE(Names::tableStoredName(Names::tableDisplayName(stored)),
             QStringLiteral("HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s"));
}

QTEST_GUILESS_MAIN(TestNames)
#include "model_names.moc"
