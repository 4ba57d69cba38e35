// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The only owner of the SQLite connection: opening, running, reporting.
#include "storage/DataBase.h"

#include "storage/Transaction.h"
#include "storage/sqltext.h"

#include <QFileInfo>
#include <QScopedValueRollback>
#include <QSqlError>
#include <QSqlQuery>

namespace
{

const QString &driverName()
{
    static const QString name = QStringLiteral("QSQLITE");
    return name;
}

QString connectOptions(bool readOnly)
{
    return readOnly ? QStringLiteral("QSQLITE_OPEN_READONLY") : QString();
}

/// True when the file can be opened and all `statements` run on it. This is tried on a
/// connection of its own, so that the open database stays as it is.
bool canRun(const QString &path, const QString &options, const QStringList &statements)
{
    const QString name = QStringLiteral("tavenor-probe");
    bool done = false;
    {
        QSqlDatabase probe = QSqlDatabase::addDatabase(driverName(), name);
        probe.setDatabaseName(path);
        probe.setConnectOptions(options);
        done = probe.open();
        for (const QString &statement : statements) {
            done = done && QSqlQuery(probe).exec(statement);
        }
    }
    QSqlDatabase::removeDatabase(name);
    return done;
}

bool canBeRead(const QString &path, bool readOnly)
{
    return canRun(path, connectOptions(readOnly),
                  {SqlText::schemaVersion(), SqlText::schemaEntries()});
}

/// A program that was killed while it wrote leaves a journal, with which SQLite undoes the
/// half-done step. A connection for reading only may not do that, so it cannot read the file.
/// This lets SQLite do it, and nothing else.
bool undoHalfDoneStep(const QString &path)
{
    return QFileInfo::exists(path + QLatin1String("-journal")) &&
           canRun(path, connectOptions(false), {SqlText::queryOnly(), SqlText::schemaEntries()});
}

bool canBeOpened(const QString &path, bool readOnly)
{
    const QFileInfo file(path);
    // SQLite would wait for ever at a pipe, and make a missing file even to read it later.
    const bool fits = file.exists() ? file.isFile() : !readOnly;
    if (!fits) {
        return false;
    }
    return canBeRead(path, readOnly) ||
           (readOnly && undoHalfDoneStep(path) && canBeRead(path, readOnly));
}

} // namespace

DataBase::DataBase()
{
    errorBox.setIcon(QMessageBox::Warning);
    errorBox.setWindowTitle(QStringLiteral("DB Administration Tool"));
    errorBox.setTextFormat(Qt::PlainText);
}

DataBase::~DataBase()
{
    // Another object may have opened a database of its own since.
    if (connection.isValid()) {
        closeConnection();
    }
}

void DataBase::setReadOnly(bool on)
{
    readOnly = on;
}

bool DataBase::openDatabase(const QString &path)
{
    if (canBeOpened(path, readOnly)) {
        const QString previous = connection.databaseName();
        const bool wasOpen = connection.isOpen();
        if (connect(path)) {
            return true;
        }
        // The file has changed since it was tried.
        if (wasOpen) {
            connect(previous);
        }
    }
    report(QStringLiteral("ERRORE: Impossibile aprire il Db!"));
    return false;
}

/// Makes the file the one of the default connection.
bool DataBase::connect(const QString &path)
{
    closeConnection();
    connection = QSqlDatabase::addDatabase(driverName());
    connection.setHostName(QStringLiteral("127.0.0.1"));
    connection.setDatabaseName(path);
    connection.setConnectOptions(connectOptions(readOnly));
    return connection.open();
}

/// Takes the connection out of the toolkit's list too: a held or a second one of the same name
/// would make it print warnings.
void DataBase::closeConnection()
{
    connection.close();
    connection = QSqlDatabase();
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
}

bool DataBase::isOpen() const
{
    return connection.isOpen();
}

/// The query after its run; inactive when it failed. It ends with the variable that holds it,
/// so no operation leaves one behind to stand in the way of later changes.
QSqlQuery DataBase::run(const QString &statement) const
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (connection.isOpen()) {
        query.exec(statement);
    }
    return query;
}

/// Runs a writing statement, unless there is a reason against it. What goes wrong is shown
/// with `message`, or not at all when there is none.
bool DataBase::change(const QString &refusal, const QString &statement, const Message &message,
                      int *changedRows)
{
    // SQLite may have rolled back the step already, and would then write beside it.
    if (quiet && failed) {
        return false;
    }
    QString reason = refusal;
    if (reason.isEmpty()) {
        const QSqlQuery query = run(statement);
        if (query.isActive()) {
            *changedRows = query.numRowsAffected();
            return true;
        }
        reason = query.lastError().text();
    }
    noteFailure();
    if (message) {
        report(message(reason));
    }
    return false;
}

bool DataBase::change(const QString &refusal, const QString &statement, const Message &message)
{
    int changedRows = 0;
    return change(refusal, statement, message, &changedRows);
}

void DataBase::report(const QString &text)
{
    noteFailure();
    if (!quiet) {
        errorBox.setText(text);
        errorBox.exec();
    }
}

bool DataBase::inOneStep(const std::function<bool()> &commands)
{
    if (stepping) {
        return commands();
    }
    const QScopedValueRollback<bool> step(stepping, true);
    return trySilently(commands) || commands();
}

bool DataBase::trySilently(const std::function<bool()> &commands)
{
    Transaction transaction(connection);
    if (!transaction.isOpen()) {
        return false;
    }
    const QScopedValueRollback<bool> silence(quiet, true);
    failed = false;
    return commands() && !failed && transaction.commit();
}

bool DataBase::isQuiet() const
{
    return quiet;
}

void DataBase::noteFailure()
{
    failed = true;
}
