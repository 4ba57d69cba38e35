// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the names of sub-tables.
#include "model/subtables.h"

#include "model/names.h"

#include <QtTest>

class TestSubTables : public QObject
{
    Q_OBJECT

private slots:
    void composedName();
    void storedName_data();
    void storedName();
    void theShownNameLeadsBack();
    void parts_data();
    void parts();
    void isSameField_data();
    void isSameField();
    void configurationNames();
    void belongsToConfiguration_data();
    void belongsToConfiguration();
};

void TestSubTables::composedName()
{
    QCOMPARE(SubTables::composedName(QStringLiteral("Le  spese"), QStringLiteral("Lista %1"),
                                     QStringLiteral(" Casa")),
             QStringLiteral("HIDDENTABLE_Le  spese_XSBTX_SUBTABLEFORMAT_Lista %1_XSBTUSRX_ Casa"));
}

void TestSubTables::storedName_data()
{
    QTest::addColumn<QString>("owner");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("blanks become lines")
        << "Spese"
        << "Lista spesa"
        << "Casa 1"
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX_Casa_1";
    QTest::newRow("several blanks, tabs and breaks become one line, at the end none")
        << "Spese"
        << "Lista"
        << "  Casa \t\n 1  "
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_XSBTUSRX__Casa_1";
    QTest::newRow("a hidden owner keeps its marker")
        << "HIDDENTABLE_P"
        << "f"
        << "s"
        << "HIDDENTABLE_HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s";
    QTest::newRow("an empty title leaves its place empty")
        << "P"
        << "f"
        << ""
        << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_";
    QTest::newRow("placeholders in a title are text")
        << "P"
        << "f"
        << "100%s %1"
        << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_100%s_%1";
    QTest::newRow("other characters stay") << "P"
                                           << "f"
                                           << "l'è"
                                           << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_l'è";
}

void TestSubTables::storedName()
{
    QFETCH(QString, owner);
    QFETCH(QString, label);
    QFETCH(QString, title);
    QTEST(SubTables::storedName(owner, label, title), "expected");
}

void TestSubTables::theShownNameLeadsBack()
{
    const QString stored = SubTables::storedName(
        QStringLiteral("Spese"), QStringLiteral("Lista spesa"), QStringLiteral("Casa 1"));
    QCOMPARE(Names::tableDisplayName(stored), QStringLiteral("#Spese->Casa_1->Lista_spesa"));
    QCOMPARE(Names::tableStoredName(Names::tableDisplayName(stored)), stored);
}

void TestSubTables::parts_data()
{
    QTest::addColumn<QString>("storedName");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a sub-table") << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_XSBTUSRX_Casa_1"
                                 << QStringList{"Spese", "Lista", "Casa_1"};
    QTest::newRow("a hidden owner keeps its marker")
        << "HIDDENTABLE_HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s"
        << QStringList{"HIDDENTABLE_P", "f", "s"};
    QTest::newRow("a title that holds a marker")
        << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_a_XSBTUSRX_b"
        << QStringList{"P", "f", "a_XSBTUSRX_b"};
    QTest::newRow("no title") << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_"
                              << QStringList{"P", "f", ""};
    QTest::newRow("an ordinary table has none") << "libri" << QStringList{"", "", ""};
}

void TestSubTables::parts()
{
    QFETCH(QString, storedName);
    const SubTables::Parts parts = SubTables::parts(storedName);
    QTEST(QStringList({parts.owner, parts.label, parts.name}), "expected");
}

void TestSubTables::configurationNames()
{
    const QString base =
        SubTables::configurationBase(QStringLiteral("Clienti"), QStringLiteral("Ordini"));
    QCOMPARE(base, QStringLiteral("Clienti_Ordini"));
    QCOMPARE(SubTables::configurationName(base, 12), QStringLiteral("Clienti_Ordini_XSBCONFX_12"));
}

void TestSubTables::isSameField_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the same column") << "NSUBTABLEFORMAT_Ordini" << true;
    QTest::newRow("another letter case") << "NSUBTABLEFORMAT_ORDINI" << true;
    QTest::newRow("another flag") << "RSUBTABLEFORMAT_Ordini" << true;
    QTest::newRow("a duplicate") << "NSUBTABLEFORMAT_Ordini_XMLTYX_2" << true;
    QTest::newRow("a label that begins alike") << "NSUBTABLEFORMAT_OrdiniFORMAT_b" << true;
    QTest::newRow("another label") << "NSUBTABLEFORMAT_Ordini2" << false;
    QTest::newRow("another format") << "NSTRINGFORMAT_Ordini" << false;
    QTest::newRow("a copy of such a field") << "Xa_XDTX_NSUBTABLEFORMAT_Ordini" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestSubTables::isSameField()
{
    QFETCH(QString, column);
    const QString field = QStringLiteral("NSUBTABLEFORMAT_Ordini");
    QTEST(SubTables::isSameField(column, field), "expected");
    QTEST(SubTables::isSameField(field, column), "expected");
    QVERIFY(!SubTables::isSameField(QString(), QString()));
}

void TestSubTables::belongsToConfiguration_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the base itself") << "Clienti_Ordini" << true;
    QTest::newRow("the base with a number") << "Clienti_Ordini_XSBCONFX_1" << true;
    QTest::newRow("with a long number") << "Clienti_Ordini_XSBCONFX_120" << true;
    QTest::newRow("without the number") << "Clienti_Ordini_XSBCONFX_" << false;
    QTest::newRow("with no number") << "Clienti_Ordini_XSBCONFX_1a" << false;
    QTest::newRow("a longer base") << "Clienti_OrdiniVecchi" << false;
    QTest::newRow("a longer base with a number") << "Clienti_OrdiniVecchi_XSBCONFX_1" << false;
    QTest::newRow("a base that ends alike") << "VecchiClienti_Ordini" << false;
    QTest::newRow("another letter case") << "clienti_ordini" << false;
    QTest::newRow("a base inside the number's") << "Clienti_Ordini_XSBCONFX_1_XSBCONFX_1" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestSubTables::belongsToConfiguration()
{
    QFETCH(QString, name);
    QTEST(SubTables::belongsToConfiguration(name, QStringLiteral("Clienti_Ordini")), "expected");
}

QTEST_GUILESS_MAIN(TestSubTables)
#include "model_subtables.moc"
