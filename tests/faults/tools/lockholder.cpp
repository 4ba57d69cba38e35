// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Another program that uses a database: holds a lock on it for as long as it is told.
#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTextStream>

namespace
{

// The statements that take each lock.
QStringList statementsFor(const QString &lock)
{
    if (lock == QLatin1String("shared")) {
        return {QStringLiteral("BEGIN"), QStringLiteral("SELECT count(*) FROM sqlite_master")};
    }
    return {lock == QLatin1String("reserved") ? QStringLiteral("BEGIN IMMEDIATE")
                                              : QStringLiteral("BEGIN EXCLUSIVE")};
}

bool runAll(const QStringList &statements)
{
    for (const QString &statement : statements) {
        QSqlQuery query;
        if (!query.exec(statement) || (query.isSelect() && !query.next())) {
            return false;
        }
    }
    return true;
}

} // namespace

/// Reads lines from its input: "open PATH", "shared", "reserved", "exclusive", "release"; answers
/// each with "done" or "failed". Ends with its input.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream in(stdin);
    QTextStream out(stdout);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    for (QString line; in.readLineInto(&line);) {
        bool done = false;
        if (line.startsWith(QLatin1String("open "))) {
            database.close();
            database.setDatabaseName(line.mid(5));
            // Who asks for a lock that cannot be had is told so at once.
            database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
            done = database.open();
        } else if (line == QLatin1String("release")) {
            done = runAll({QStringLiteral("ROLLBACK")});
        } else {
            done = runAll(statementsFor(line));
        }
        out << (done ? "done\n" : "failed\n") << Qt::flush;
    }
    return 0;
}
