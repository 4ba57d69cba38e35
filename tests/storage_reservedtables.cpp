// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the program's own tables as they stand in the database.
#include "model/markers.h"
#include "storage/DataBase.h"
#include "storage/reservedtables.h"
#include "tests/support/Sql.h"
#include "tests/support/Workspace.h"

#include <QtTest>

class TestReservedTables : public QObject
{
    Q_OBJECT

private slots:
    void areStoredAs_data();
    void areStoredAs();
};

void TestReservedTables::areStoredAs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ColumnDefinitions>("columns");
    QTest::addColumn<QString>("stored");
    QTest::newRow("settings") << QString(Markers::SettingsTable)
                              << ReservedTables::settingsColumns()
                              << QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer "
                                                "primary key,RSTRINGFORMAT_tableName text,"
                                                "RSTRINGFORMAT_iconPath text)");
    QTest::newRow("filters") << QString(Markers::FiltersTable) << ReservedTables::filtersColumns()
                             << QStringLiteral(
                                    "CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_filterName text,"
                                    "NSTRINGFORMAT_filterTableName text,"
                                    "NSTRINGFORMAT_filterFieldName text,"
                                    "NSTRINGFORMAT_filterFieldValue text,"
                                    "NSTRINGFORMAT_filterFieldType text,"
                                    "NSTRINGFORMAT_filterFieldCondition text,"
                                    "NSTRINGFORMAT_filterFieldConditionAndOr text)");
    QTest::newRow("subtablesconfigs")
        << QString(Markers::SubTablesConfigsTable) << ReservedTables::subTablesConfigsColumns()
        << QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                          "RSTRINGFORMAT_subConfigName text,"
                          "NSTRINGFORMAT_subConfigFieldName text,"
                          "NSTRINGFORMAT_subConfigFieldType text)");
}

void TestReservedTables::areStoredAs()
{
    QFETCH(QString, name);
    QFETCH(ColumnDefinitions, columns);
    QFETCH(QString, stored);
    const Workspace workspace;
    DataBase db;
    QVERIFY(db.openDatabase(workspace.path(QStringLiteral("collezione.db"))));
    QVERIFY(db.createTable(name, columns));
    QCOMPARE(Sql::schema(), QStringList(stored));
}

QTEST_MAIN(TestReservedTables)
#include "storage_reservedtables.moc"
