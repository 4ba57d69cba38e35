// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A working directory of a test's own, with databases made and read by plain SQL.
#include "tests/support/Workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

namespace
{

const QString Connection = QStringLiteral("workspace");

// A connection that is gone again when the object is, so that it holds no lock on the file.
class Opened
{
public:
    explicit Opened(const QString &path)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection);
        database.setDatabaseName(path);
        if (!database.open()) {
            qFatal("cannot open %s", qPrintable(path));
        }
    }
    ~Opened()
    {
        database().close();
        QSqlDatabase::removeDatabase(Connection);
    }
    static QSqlDatabase database() { return QSqlDatabase::database(Connection); }
};

void run(QSqlQuery &query, const QString &statement)
{
    if (!query.exec(statement)) {
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    }
}

} // namespace

Workspace::Workspace()
    : before(QDir::currentPath())
{
    QDir::setCurrent(directory.path());
}

Workspace::~Workspace()
{
    QDir::setCurrent(before);
}

QString Workspace::path(const QString &name) const
{
    return name.isEmpty() ? directory.path() : directory.filePath(name);
}

void Workspace::write(const QString &name, const QByteArray &bytes) const
{
    const QString target = path(name);
    QDir().mkpath(QFileInfo(target).path());
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(target));
    }
}

QByteArray Workspace::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Workspace::exists(const QString &name) const
{
    return QFileInfo::exists(path(name));
}

void Workspace::remember(const QString &name) const
{
    write(QStringLiteral("lastDb.dat"), path(name).toUtf8());
}

void Workspace::sql(const QString &name, const QStringList &statements) const
{
    const Opened opened(path(name));
    QSqlDatabase database = Opened::database();
    database.transaction();
    for (const QString &statement : statements) {
        QSqlQuery query(database);
        run(query, statement);
    }
    database.commit();
}

QVector<QVariantList> Workspace::rows(const QString &name, const QString &query) const
{
    const Opened opened(path(name));
    QVector<QVariantList> result;
    QSqlQuery reader(Opened::database());
    run(reader, query);
    while (reader.next()) {
        QVariantList row;
        for (int i = 0; i < reader.record().count(); ++i) {
            row.append(reader.value(i));
        }
        result.append(row);
    }
    return result;
}

QVariant Workspace::value(const QString &name, const QString &query) const
{
    const QVector<QVariantList> all = rows(name, query);
    return all.isEmpty() ? QVariant() : all.first().value(0);
}

QStringList Workspace::column(const QString &name, const QString &query) const
{
    QStringList texts;
    for (const QVariantList &row : rows(name, query)) {
        texts.append(row.value(0).toString());
    }
    return texts;
}
