// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The least exports and imports, and the files to measure them with.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

/// What a bare program does to write or read the records of a collection. Every file is replaced
/// whole and durably, as anybody must who keeps the older file until the new one is complete.
class BareExchange
{
public:
    explicit BareExchange(const QString &databasePath);
    ~BareExchange();

    /// One pass that puts every value on a stream.
    void writeTable(const QString &fileName);
    /// The same as readable text; the texts of the referenced records are read first.
    void writeReadable(const QString &fileName);
    /// Each line cut once and added with one statement, in batches; the Ids of the table are read
    /// first, and a record that is there already is left out.
    void readTable(const QString &fileName);
    /// Runs a statement.
    QSqlQuery query(const QString &statement);

private:
    QSqlDatabase database;
};

/// Files made of a collection on first use.
namespace ExchangeFiles
{

/// The exported records of the collection with so many records.
QString exported(int records);
/// A copy of that collection, to be changed.
QString copy(int records);
/// A copy whose records are gone.
QString emptiedCopy(int records);
/// A copy whose records have other Ids, so that those of the exported file can be added.
QString fullCopy(int records);
/// The structure of the table that is measured.
QString structure();

} // namespace ExchangeFiles
