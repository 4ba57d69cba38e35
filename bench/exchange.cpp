// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: export and import of records.
#include "bench/collection.h"
#include "bench/openwindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QHash>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTextStream>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace
{

const QString Connection = QStringLiteral("exchange");
constexpr int RecordsOfABatch = 1000;

// A connection of the bare program.
class Bare
{
public:
    explicit Bare(const QString &path)
        : database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection))
    {
        database.setDatabaseName(path);
        database.open();
    }
    ~Bare()
    {
        database.close();
        database = QSqlDatabase();
        QSqlDatabase::removeDatabase(Connection);
    }
    QSqlQuery query(const QString &statement)
    {
        QSqlQuery query(database);
        query.setForwardOnly(true);
        if (!query.exec(statement)) {
            qFatal("%s", qPrintable(statement));
        }
        return query;
    }
    QSqlDatabase database;
};

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

// The least export: one pass that puts every value on a stream.
void writeBare(Bare &bare, const QString &fileName)
{
    QFile file(fileName);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    QSqlQuery query = bare.query(selectAll());
    QStringList starts;
    for (const QString &name : columnsOf(query)) {
        starts.append(name + QLatin1String("###"));
    }
    stream << Collection::table() << '\n';
    while (query.next()) {
        for (int i = 0; i < starts.size(); ++i) {
            stream << starts.at(i) << query.value(i).toString() << "###";
        }
        stream << '\n';
    }
}

// The least readable export; the texts of the referenced records are read first.
void writeReadableBare(Bare &bare, const QString &fileName)
{
    QHash<int, QString> authors;
    for (QSqlQuery query =
             bare.query(QStringLiteral("SELECT RINTEGERFORMAT_Id,RSTRINGFORMAT_Nome FROM autori"));
         query.next();) {
        authors.insert(query.value(0).toInt(), query.value(1).toString());
    }
    QFile file(fileName);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    QSqlQuery query = bare.query(selectAll());
    QStringList labels;
    for (const QString &name : columnsOf(query)) {
        labels.append(name.section(QStringLiteral("FORMAT_"), 1, 1));
    }
    while (query.next()) {
        for (int i = 0; i < labels.size(); ++i) {
            const QString text =
                i == 2 ? authors.value(query.value(i).toInt()) : query.value(i).toString();
            stream << labels.at(i) << ';' << text << ';';
        }
        stream << '\n';
    }
}

QString insertOf(const QString &line)
{
    const QStringList parts = line.split(QStringLiteral("###"));
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

// The least import: each line cut once and added with one statement, in batches.
void readBare(Bare &bare, const QString &fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    QTextStream stream(&file);
    stream.readLine();
    QSqlQuery query(bare.database);
    for (int count = 0; !stream.atEnd(); ++count) {
        if (count % RecordsOfABatch == 0) {
            bare.database.commit();
            bare.database.transaction();
        }
        if (!query.exec(insertOf(stream.readLine()))) {
            qFatal("not added");
        }
    }
    query.finish();
    bare.database.commit();
}

// The exported file of a collection, made on first use.
QString exportedFile(int records)
{
    const QString name = Collection::path(records) + QStringLiteral(".xmf");
    if (!QFile::exists(name)) {
        Bare bare(Collection::path(records));
        writeBare(bare, name);
    }
    return name;
}

// A copy of a collection whose records are gone.
QString emptiedCollection(int records)
{
    const QString name = Collection::path(records) + QStringLiteral(".empty");
    if (!QFile::exists(name)) {
        QFile::copy(Collection::path(records), name);
        Bare bare(name);
        bare.query(QStringLiteral("DELETE FROM ") + Collection::table());
        bare.query(QStringLiteral("VACUUM"));
    }
    return name;
}

QString freshCopy(int records)
{
    const QString name = Collection::path(records) + QStringLiteral(".target");
    QFile::remove(name);
    QFile::copy(emptiedCollection(records), name);
    return name;
}

// Seconds of a command from the moment on at which its file dialog is gone.
template<typename Command>
double secondsAfterDialog(const QString &fileName, const Command &command)
{
    QElapsedTimer clock;
    QTimer::singleShot(0, [&] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(fileName);
        QObject::connect(dialog, &QObject::destroyed, qApp, [&clock] { clock.start(); });
        QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
    });
    command();
    return double(clock.nsecsElapsed()) / 1e9;
}

template<typename Write>
void exportFloor(benchmark::State &state, const Write &write)
{
    Bare bare(Collection::path(int(state.range(0))));
    const QTemporaryDir folder;
    for (auto _ : state) {
        const QString name = folder.filePath(QStringLiteral("out"));
        QFile::remove(name);
        QElapsedTimer clock;
        clock.start();
        write(bare, name);
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
    }
}

void exportThrough(benchmark::State &state, void (Tavenor::*command)())
{
    const OpenWindow window(Collection::path(int(state.range(0))), QStringLiteral("autori"));
    window->changeTable(Collection::table());
    const QTemporaryDir folder;
    for (auto _ : state) {
        const QString name = folder.filePath(QStringLiteral("out"));
        QFile::remove(name);
        state.SetIterationTime(
            secondsAfterDialog(name, [&] { ((*window.operator->()).*command)(); }));
    }
}

void tableExportFloor(benchmark::State &state)
{
    exportFloor(state, writeBare);
}

void tableExport(benchmark::State &state)
{
    exportThrough(state, &Tavenor::exportToFile);
}

void readableExportFloor(benchmark::State &state)
{
    exportFloor(state, writeReadableBare);
}

void readableExport(benchmark::State &state)
{
    exportThrough(state, &Tavenor::exportToFileHumanReading);
}

void importFloor(benchmark::State &state)
{
    const int records = int(state.range(0));
    const QString file = exportedFile(records);
    for (auto _ : state) {
        Bare bare(freshCopy(records));
        QElapsedTimer clock;
        clock.start();
        readBare(bare, file);
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
    }
}

void import(benchmark::State &state)
{
    const int records = int(state.range(0));
    const QString file = exportedFile(records);
    for (auto _ : state) {
        const OpenWindow window(freshCopy(records), QStringLiteral("autori"));
        state.SetIterationTime(secondsAfterDialog(file, [&] { window->importFromFile(); }));
    }
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(1.5);
}

BENCHMARK(tableExportFloor)->Name("table export|floor")->Apply(sizes);
BENCHMARK(tableExport)->Name("table export")->Apply(sizes);
BENCHMARK(readableExportFloor)->Name("readable export|floor")->Apply(sizes);
BENCHMARK(readableExport)->Name("readable export")->Apply(sizes);
BENCHMARK(importFloor)->Name("import|floor")->Apply(sizes);
BENCHMARK(import)->Name("import")->Apply(sizes);

} // namespace
