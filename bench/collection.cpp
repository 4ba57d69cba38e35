// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Databases of a given size to measure with.
#include "bench/collection.h"

#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

namespace Collection
{

namespace
{

const QString Connection = QStringLiteral("collection");
constexpr int Authors = 500;

const QString CreateAuthors =
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NSTRINGFORMAT_Paese text,"
                   "NLONGSTRINGFORMAT_UserPath)");
const QString CreateObjects = QStringLiteral(
    "CREATE TABLE oggetti (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
    "Xautori_XDTX_RSTRINGFORMAT_Nome Integer,NDATEFORMAT_Acquistato text,"
    "NINTEGERFORMAT_Anno text,NREALFORMAT_Peso text,NMONEYFORMAT_Prezzo text,"
    "NLONGSTRINGFORMAT_UserPath,NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text,"
    "NBOOLFORMAT_Esposto text,NMAILFORMAT_Posta text,NURLFORMAT_Pagina text,"
    "NSTRINGFORMAT_Luogo text,NSTRINGFORMAT_Stato text,NLONGSTRINGFORMAT_Note text)");

void run(QSqlQuery &query, const QString &statement)
{
    if (!query.exec(statement)) {
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    }
}

// Spread over the alphabet, and no two alike.
QString title(int number)
{
    const int shuffled = int((qint64(number) * 7919) % 1000003);
    const QString group = shuffled % 100 == 7 ? searchText() : QStringLiteral("moneta");
    return QStringLiteral("%1%2 %3 %4")
        .arg(QChar('A' + shuffled % 26))
        .arg(QChar('a' + shuffled % 19))
        .arg(group)
        .arg(shuffled);
}

void addAuthors(QSqlQuery &query)
{
    run(query, CreateAuthors);
    query.prepare(QStringLiteral("INSERT INTO autori VALUES (?,?,?,?)"));
    for (int id = 1; id <= Authors; ++id) {
        query.addBindValue(id);
        query.addBindValue(QStringLiteral("Autore %1").arg(id));
        query.addBindValue(QStringLiteral("Italia"));
        query.addBindValue(QStringLiteral("TABLES_DOC/autori_Autore_%1").arg(id));
        query.exec();
    }
}

void addObjects(QSqlQuery &query, int records)
{
    run(query, CreateObjects);
    query.prepare(QStringLiteral("INSERT INTO oggetti VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"));
    for (int id = 1; id <= records; ++id) {
        const QString name = title(id);
        const QVariantList values = {
            id,
            name,
            1 + id % Authors,
            QStringLiteral("%1/03/20%2")
                .arg(1 + id % 28, 2, 10, QLatin1Char('0'))
                .arg(id % 25, 2, 10, QLatin1Char('0')),
            QString::number(1900 + id % 120),
            QString::asprintf("%.6f", id * 0.25),
            QString::asprintf("%.2f", id % 500 + 0.5),
            QStringLiteral("TABLES_DOC/oggetti_%1").arg(id),
            QString(),
            QString(),
            id % 3 == 0 ? QStringLiteral("TRUE") : QStringLiteral("FALSE"),
            QStringLiteral("negozio%1@example.org").arg(id % 50),
            QStringLiteral("https://example.org/%1").arg(id),
            QStringLiteral("Scaffale %1").arg(id % 90),
            QStringLiteral("buono"),
            QStringLiteral("Una nota di media lunghezza sul numero %1.").arg(id)};
        for (const QVariant &value : values) {
            query.addBindValue(value);
        }
        query.exec();
    }
}

void make(const QString &path, int records)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection);
        database.setDatabaseName(path);
        database.open();
        database.transaction();
        QSqlQuery query(database);
        // The program starts with the first table.
        addObjects(query, records);
        addAuthors(query);
        query.finish();
        database.commit();
    }
    QSqlDatabase::removeDatabase(Connection);
}

} // namespace

QString path(int records)
{
    static const QTemporaryDir folder;
    static QSet<int> made;
    const QString file = folder.filePath(QStringLiteral("%1.db").arg(records));
    if (!made.contains(records)) {
        make(file, records);
        made.insert(records);
    }
    return file;
}

QString table()
{
    return QStringLiteral("oggetti");
}

QString searchText()
{
    return QStringLiteral("medaglia");
}

} // namespace Collection
