// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The least exports and imports, and the files to measure them with.
#include "bench/bareexchange.h"

#include "bench/collection.h"

#include <QFile>
#include <QHash>
#include <QSaveFile>
#include <QSet>
#include <QSqlRecord>
#include <QTextStream>
#include <QVariant>

namespace
{

const QString Connection = QStringLiteral("exchange");
constexpr int RecordsOfABatch = 1000;

QStringList columnsOf(const QSqlQuery &query)
{
    QStringList names;
    for (int i = 0; i < query.record().count(); ++i) {
        names.append(query.record().fieldName(i));
    }
    return names;
}

QString selectAll()
{
    return QStringLiteral("SELECT * FROM ") + Collection::table();
}

QString insertOf(const QStringList &parts)
{
    QString names;
    QString values;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString value = parts.at(i + 1);
        value.replace(QLatin1Char('\''), QLatin1String("''"));
        names += (i > 0 ? QStringLiteral(",") : QString()) + parts.at(i);
        values += (i > 0 ? QStringLiteral(",'") : QStringLiteral("'")) + value + QLatin1Char('\'');
    }
    return QStringLiteral("INSERT INTO ") + Collection::table() + QLatin1String(" (") + names +
           QLatin1String(") VALUES (") + values + QLatin1Char(')');
}

void finish(QSaveFile &file, QTextStream &stream)
{
    stream.flush();
    if (!file.commit()) {
        qFatal("not written");
    }
}

// A copy of the collection, made once and put back for every use.
QString freshCopy(int records, const QString &ending, const QString &change)
{
    const QString kept = Collection::path(records) + ending;
    if (!QFile::exists(kept)) {
        QFile::copy(Collection::path(records), kept);
        if (!change.isEmpty()) {
            BareExchange bare(kept);
            bare.query(change);
            bare.query(QStringLiteral("VACUUM"));
        }
    }
    const QString name = Collection::path(records) + QStringLiteral(".target");
    QFile::remove(name);
    QFile::copy(kept, name);
    return name;
}

} // namespace

BareExchange::BareExchange(const QString &databasePath)
    : database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection))
{
    database.setDatabaseName(databasePath);
    database.open();
}

BareExchange::~BareExchange()
{
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(Connection);
}

QSqlQuery BareExchange::query(const QString &statement)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(statement)) {
        qFatal("%s", qPrintable(statement));
    }
    return query;
}

void BareExchange::writeTable(const QString &fileName)
{
    QSaveFile file(fileName);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    QSqlQuery rows = query(selectAll());
    QStringList starts;
    for (const QString &name : columnsOf(rows)) {
        starts.append(name + QLatin1String("###"));
    }
    stream << Collection::table() << '\n';
    while (rows.next()) {
        for (int i = 0; i < starts.size(); ++i) {
            stream << starts.at(i) << rows.value(i).toString() << "###";
        }
        stream << '\n';
    }
    finish(file, stream);
}

void BareExchange::writeReadable(const QString &fileName)
{
    QHash<int, QString> authors;
    for (QSqlQuery rows = query(QStringLiteral("SELECT RINTEGERFORMAT_Id,RSTRINGFORMAT_Nome "
                                               "FROM autori"));
         rows.next();) {
        authors.insert(rows.value(0).toInt(), rows.value(1).toString());
    }
    QSaveFile file(fileName);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    QSqlQuery rows = query(selectAll());
    QStringList labels;
    for (const QString &name : columnsOf(rows)) {
        labels.append(name.section(QStringLiteral("FORMAT_"), 1, 1));
    }
    while (rows.next()) {
        for (int i = 0; i < labels.size(); ++i) {
            const QString text =
                i == 2 ? authors.value(rows.value(i).toInt()) : rows.value(i).toString();
            stream << labels.at(i) << ';' << text << ';';
        }
        stream << '\n';
    }
    finish(file, stream);
}

void BareExchange::readTable(const QString &fileName)
{
    QSet<int> taken;
    for (QSqlQuery rows =
             query(QStringLiteral("SELECT RINTEGERFORMAT_Id FROM ") + Collection::table());
         rows.next();) {
        taken.insert(rows.value(0).toInt());
    }
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    QTextStream stream(&file);
    stream.readLine();
    QSqlQuery query(database);
    for (int count = 0; !stream.atEnd(); ++count) {
        if (count % RecordsOfABatch == 0) {
            database.commit();
            database.transaction();
        }
        const QStringList parts = stream.readLine().split(QStringLiteral("###"));
        if (!taken.contains(parts.value(1).toInt()) && !query.exec(insertOf(parts))) {
            qFatal("not added");
        }
    }
    query.finish();
    database.commit();
}

namespace ExchangeFiles
{

QString exported(int records)
{
    const QString name = Collection::path(records) + QStringLiteral(".xmf");
    if (!QFile::exists(name)) {
        BareExchange(Collection::path(records)).writeTable(name);
    }
    return name;
}

QString copy(int records)
{
    return freshCopy(records, QStringLiteral(".copy"), QString());
}

QString emptiedCopy(int records)
{
    return freshCopy(records, QStringLiteral(".empty"),
                     QStringLiteral("DELETE FROM ") + Collection::table());
}

QString fullCopy(int records)
{
    return freshCopy(records, QStringLiteral(".full"),
                     QStringLiteral("UPDATE %1 SET RINTEGERFORMAT_Id = RINTEGERFORMAT_Id + %2")
                         .arg(Collection::table())
                         .arg(records));
}

QString structure()
{
    const QString name = Collection::path(1000) + QStringLiteral(".tsc");
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    file.write("\nRSTRINGFORMAT_Titolo###text\nNINTEGERFORMAT_Anno###text\n");
    return name;
}

} // namespace ExchangeFiles
