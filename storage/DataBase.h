// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The only owner of the SQLite connection.
#pragma once

#include "model/columns.h"

#include <QMessageBox>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class QSqlQuery;

namespace SqlText
{
class RowInsertion;
}

/// Composes and runs every statement on the default connection. Failures are shown here, at
/// once and once, in a modal warning box with the texts that people know; callers only test
/// the result. Reading operations show nothing: they give 0, false or an empty record. Whoever
/// writes on the strength of such an answer hands over an `error`, which gets the driver's text
/// when what is there could not be read (locked by another program, damaged) and is left alone
/// otherwise, also for a table or column that does not exist.
///
/// The single look-ups each run a statement of their own. A loop over a table never calls
/// them: it walks a RowPass.
class DataBase
{
public:
    DataBase();
    ~DataBase();
    DataBase(const DataBase &) = delete;
    DataBase &operator=(const DataBase &) = delete;

    /// From the next opening on, databases are opened for reading only: a missing file is
    /// not created and the file keeps its bytes.
    void setReadOnly(bool on);

    /// Opens the file on the default connection, creating it when missing. A file that
    /// SQLite cannot read as a database counts as one that cannot be opened. On failure
    /// shows "ERRORE: Impossibile aprire il Db!" and leaves the open database as it is.
    bool openDatabase(const QString &path);

    /// True while a database is open.
    bool isOpen() const;

    /// Names of the user tables, in the driver's order; no views, no system tables.
    QStringList tables(QString *error = nullptr) const;
    /// True when tables() holds exactly this name.
    bool tableExists(const QString &table, QString *error = nullptr) const;

    /// Number of rows, counted by stepping; 0 when the table cannot be read.
    int rowCount(const QString &table) const;
    /// The row whose first column equals id; empty values when there is none.
    QSqlRecord recordById(const QString &table, int id, QString *error = nullptr) const;
    /// True when a row's first column equals id.
    bool idExists(const QString &table, int id, QString *error = nullptr) const;
    /// The named field of the row whose first column equals id.
    QVariant fieldValueById(const QString &table, int id, const QString &fieldName,
                            QString *error = nullptr) const;
    /// The row at position `row` (from 0) in table order.
    QSqlRecord recordAt(const QString &table, int row) const;
    /// The value of the named field of a record; runs no statement.
    static QVariant recordValue(const QSqlRecord &record, const QString &fieldName);
    /// The first row whose field equals value, else an empty record.
    QSqlRecord findRecord(const QString &table, const QString &fieldName, const QVariant &value,
                          QString *error = nullptr) const;
    /// All column names in table order; empty when the table cannot be read.
    QStringList fieldNames(const QString &table, QString *error = nullptr) const;
    /// True when a column name contains `text`, case-sensitively.
    bool hasFieldContaining(const QString &text, const QString &table) const;
    /// How many columns carry `name`, compared lower-cased with white space simplified;
    /// existing names are cut before their duplicate suffix when cutSuffix is set.
    int countFields(const QString &table, const QString &name, bool cutSuffix,
                    QString *error = nullptr) const;
    /// True when a row's second column equals `text`, both lower-cased and simplified.
    /// Deliberate: only the asked text has its quotes doubled, so a stored title with an
    /// apostrophe is never found.
    bool titleExists(const QString &table, const QString &text, QString *error = nullptr) const;
    /// Largest Id of the table; 0 for an empty one.
    int maxId(const QString &table, QString *error = nullptr) const;
    /// Smallest Id of the table; 0 for an empty one.
    int minId(const QString &table) const;

    /// Creates the table with the Id column first and then `columns`; a repeated name gets
    /// the duplicate suffix. Shows a message and returns false when the table exists or the
    /// statement fails.
    bool createTable(const QString &table, const ColumnDefinitions &columns);
    /// Adds one column, with the duplicate suffix where its name is taken. Shows a message
    /// on failure.
    bool addColumn(const QString &table, const QString &name, const QString &type);
    /// Inserts an empty record ("0" in every field) and returns its Id: `id` when keepId is
    /// set and it is free and at least 1, else the largest Id + 1. Shows a message and
    /// returns -1 on failure.
    int insertRecord(const QString &table, bool keepId, int id);
    /// Writes one field of one record. Numeric columns take the value as a number, all others
    /// as it is, its quotes doubled by the caller. Asks before an Id is changed; declining
    /// counts as success. Shows a message and returns false on failure.
    bool updateField(const QString &table, int id, const QString &field, const QString &value);
    /// Removes one record. Shows a message on failure.
    bool deleteRecord(const QString &table, int id);
    /// Removes these records, in few statements where nothing fails. Shows a message for each
    /// that cannot be removed.
    bool deleteRecords(const QString &table, const QVector<int> &ids);
    /// Removes the table. Shows a message on failure.
    bool dropTable(const QString &table);
    /// Removes every record of the table. Shows a message on failure.
    bool clearTable(const QString &table);

    /// Inserts a whole record with one statement: the fields of `values` composed as
    /// updateField() would, "0" in all others. Silent. Returns the Id, or -1.
    int insertWhole(const QString &table, bool keepId, int id, const FieldPairs &values);
    /// Writes the fields of `values` into one record with one statement, composed as
    /// updateField() would. Silent. False when it fails or no row was changed.
    bool updateWhole(const QString &table, int id, const FieldPairs &values);

    /// Inserts one of many records whole, with the Id given. Silent. False when it fails.
    bool insertRow(const SqlText::RowInsertion &insertion, int id, const FieldPairs &values);

    /// Runs `commands` so that their writes become durable together: first silently inside
    /// one transaction; when anything fails there, everything is rolled back and the commands
    /// run again plainly, each failure with its message box. Returns the result of the run
    /// that counts. Inside another call the commands simply run.
    bool inOneStep(const std::function<bool()> &commands);

    /// True while inOneStep() runs its silent try: nobody must show a box now, and what goes
    /// wrong is noted with noteFailure() instead.
    bool isQuiet() const;
    /// Makes the silent try fail, so that the commands run again with their messages.
    void noteFailure();

private:
    /// Makes the text of a box of the reason why something could not be done.
    using Message = std::function<QString(const QString &reason)>;

    /// The smallest and the largest Id of a table.
    struct IdRange {
        qint64 smallest = 0;
        qint64 largest = 0;
    };
    /// The Id of a record to add, or why there is none.
    struct NewId {
        int id = -1;
        QString reason;
    };

    QSqlQuery run(const QString &statement) const;
    bool change(const QString &refusal, const QString &statement, const Message &message);
    bool change(const QString &refusal, const QString &statement, const Message &message,
                int *changedRows);
    void report(const QString &text);
    bool connect(const QString &path);
    void closeConnection();
    QSqlQuery rowById(const QString &table, int id) const;
    static QStringList namesIn(const QSqlQuery &query);
    IdRange idRange(const QString &table, QString *error) const;
    qint64 largestIdAtOnce(const QString &table, QString *error) const;
    NewId newId(const QString &table, bool keepId, int wished) const;
    int insert(const QString &table, const NewId &newId, const FieldPairs &values,
               const Message &message);
    QString missingFor(const QString &table, int id, const QString &field) const;
    bool confirmIdChange(int id, int newId);
    bool trySilently(const std::function<bool()> &commands);

    QSqlDatabase connection;
    QMessageBox errorBox;
    QString reserve;
    bool readOnly = false;
    bool stepping = false;
    bool quiet = false;
    bool failed = false;
};
