// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What the measured operations that write need: a copy to write to, and the bare statements.
#include "bench/writing.h"

#include "bench/collection.h"
#include "bench/openwindow.h"

#include <QFile>
#include <QSqlQuery>

#include <unistd.h>

namespace
{

const QString Connection = QStringLiteral("writer");

} // namespace

QString writableCopy(int records)
{
    const QString prepared = Collection::path(records) + QStringLiteral(".prepared");
    if (!QFile::exists(prepared)) {
        QFile::copy(Collection::path(records), prepared);
        const OpenWindow window(prepared, Collection::table());
    }
    const QString name = Collection::path(records) + QStringLiteral(".writable");
    QFile::remove(name);
    QFile::copy(prepared, name);
    // What is still to be written of the copy would be counted to the first command.
    QFile copy(name);
    copy.open(QIODevice::ReadOnly);
    ::fsync(copy.handle());
    return name;
}

BareWriter::BareWriter(const QString &databasePath)
    : database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection))
{
    database.setDatabaseName(databasePath);
    database.open();
}

BareWriter::~BareWriter()
{
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(Connection);
}

void BareWriter::run(const QStringList &statements)
{
    const bool several = statements.size() > 1;
    if (several) {
        database.transaction();
    }
    for (const QString &statement : statements) {
        QSqlQuery query(database);
        if (!query.exec(statement)) {
            qFatal("%s", qPrintable(statement));
        }
    }
    if (several) {
        database.commit();
    }
}
