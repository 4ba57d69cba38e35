// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Writes the sample collection's records into a new database.
#pragma once

#include "model/columns.h"
#include "samples/sampledata.h"
#include "samples/tableplan.h"

#include <QHash>
#include <QString>
#include <QStringList>

class DataBase;

/// Fills an empty, open database with the tables, records, loans and saved filters of the
/// collection, each laid out as the program itself lays them out.
class DatabaseFilling
{
public:
    /// Both are used until fill() has returned.
    DatabaseFilling(DataBase &database, const SampleData &data);

    /// Writes everything in one step. False, with problem() set and nothing written, when a
    /// data file refers to something that is not there or a write fails.
    bool fill();

    /// What went wrong in fill(), for people.
    QString problem() const { return complaint; }

private:
    bool createTables();
    bool fillTables();
    bool fillTable(const TablePlan &plan);
    bool configureLoans();
    bool fillLoans();
    bool createLoanTable(const QString &table);
    bool addLoan(const TabFile &loans, int row, const QString &table);
    bool addIcon(const QString &table, const QString &source);
    bool fillFilters();
    bool fillFilter(const TabFile &filters, const QString &name, const QString &table);

    FieldPairs record(const ColumnDefinitions &columns, const TabFile &file, int row,
                      const QString &folder);
    QString valueText(const QString &column, const QString &cell, const QString &folder);
    QString idText(const QString &table, const QString &title);
    QStringList conditionColumns(const QString &table) const;
    int insert(const QString &table, const FieldPairs &values);
    bool complain(const QString &text);

    DataBase &db;
    const SampleData &data;
    QHash<QString, QHash<QString, int>> idsByTitle;
    QString complaint;
};
