// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured: what the program keeps in memory, in a process of its own.
#include "bench/memory.h"

#include "bench/bareexchange.h"
#include "bench/collection.h"
#include "bench/openwindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTextStream>

#include <benchmark/benchmark.h>

namespace
{

// A line of /proc/self/status, in bytes.
qint64 statusBytes(const QString &name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(name)) {
            return line.section(QLatin1Char(':'), 1)
                       .simplified()
                       .section(QLatin1Char(' '), 0, 0)
                       .toLongLong() *
                   1024;
        }
    }
    return 0;
}

/// What the process has needed since it began.
class Needed
{
public:
    Needed()
    {
        // From now on the peak is that of what follows.
        QFile file(QStringLiteral("/proc/self/clear_refs"));
        file.open(QIODevice::WriteOnly);
        file.write("5");
        file.close();
        before = statusBytes(QStringLiteral("VmRSS"));
    }
    void print() const
    {
        QTextStream(stdout) << statusBytes(QStringLiteral("VmRSS")) - before << ' '
                            << statusBytes(QStringLiteral("VmHWM")) - before << '\n';
    }

private:
    qint64 before;
};

void listLoad(const OpenWindow &window, const QString &)
{
    window->changeTable(Collection::table());
}

void exportTable(const OpenWindow &window, const QString &file)
{
    OpenWindow::chooseFile(file, [] {});
    window->exportToFile();
}

void exportReadable(const OpenWindow &window, const QString &file)
{
    OpenWindow::chooseFile(file, [] {});
    window->exportToFileHumanReading();
}

struct Operation {
    const char *name;
    void (*command)(const OpenWindow &window, const QString &file);
    void (BareExchange::*floor)(const QString &file);
    bool showsTable; // before it begins
};

const Operation Operations[] = {
    {"record list", listLoad, nullptr, false},
    {"table export", exportTable, &BareExchange::writeTable, true},
    {"readable export", exportReadable, &BareExchange::writeReadable, true},
};

// The part of the database that SQLite keeps is there before and after.
void fillCache(const QSqlDatabase &database)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT count(RSTRINGFORMAT_Titolo) FROM ") + Collection::table());
    query.next();
}

void measureWindow(const Operation &operation, const QString &database, const QString &file)
{
    const OpenWindow window(database, QStringLiteral("autori"));
    if (operation.showsTable) {
        window->changeTable(Collection::table());
        // The dialogs of the toolkit are loaded once.
        operation.command(window, file);
    }
    fillCache(QSqlDatabase::database());
    QCoreApplication::processEvents();
    const Needed needed;
    operation.command(window, file);
    QCoreApplication::processEvents();
    needed.print();
}

void measureFloor(const Operation &operation, const QString &database, const QString &file)
{
    BareExchange bare(database);
    (bare.*operation.floor)(file);
    const Needed needed;
    (bare.*operation.floor)(file);
    needed.print();
}

struct Bytes {
    double resident = 0;
    double peak = 0;
};

// The same program again: what this process has needed before would hide what it needs now.
Bytes measured(const QString &operation, int records)
{
    const QString database = Collection::path(records);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {QString::fromUtf8(Memory::Option), operation, database,
                   database + QStringLiteral(".out")});
    process.waitForFinished(-1);
    const QStringList numbers =
        QString::fromUtf8(process.readAllStandardOutput()).simplified().split(QLatin1Char(' '));
    if (numbers.size() != 2) {
        qFatal("memory of %s was not measured", qPrintable(operation));
    }
    return {numbers.at(0).toDouble(), numbers.at(1).toDouble()};
}

void listMemory(benchmark::State &state, bool peak)
{
    const int records = int(state.range(0));
    for (auto _ : state) {
        const Bytes bytes = measured(QStringLiteral("record list"), records);
        state.counters["bytes a record"] = (peak ? bytes.peak : bytes.resident) / records;
    }
}

void exportMemory(benchmark::State &state, const char *operation)
{
    for (auto _ : state) {
        const Bytes bytes = measured(QString::fromUtf8(operation), int(state.range(0)));
        state.counters["KiB"] = bytes.peak / 1024;
    }
}

void settings(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    // Once takes longer, so it stays at that.
    row->MinTime(1e-6);
}

// All rows, in the order in which the table shows them.
bool registerAll()
{
    const auto add = [](const std::string &name, auto... arguments) {
        settings(benchmark::RegisterBenchmark(("memory: " + name).c_str(), arguments...));
    };
    add("record list, resident", listMemory, false);
    add("record list, peak", listMemory, true);
    add("table export, peak|floor", exportMemory, "table export|floor");
    add("table export, peak", exportMemory, "table export");
    add("readable export, peak|floor", exportMemory, "readable export|floor");
    add("readable export, peak", exportMemory, "readable export");
    return true;
}

const bool registered = registerAll();

} // namespace

namespace Memory
{

void measure(const QStringList &arguments)
{
    const QString wanted = arguments.value(0);
    for (const Operation &operation : Operations) {
        const QString name = QString::fromUtf8(operation.name);
        if (wanted == name) {
            measureWindow(operation, arguments.value(1), arguments.value(2));
        } else if (wanted == name + QStringLiteral("|floor")) {
            measureFloor(operation, arguments.value(1), arguments.value(2));
        }
    }
}

} // namespace Memory
