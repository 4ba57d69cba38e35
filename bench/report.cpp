// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The benchmark's table: every operation beside its floor and the bare pass of the same run.
#include "bench/report.h"

#include <QFile>
#include <QSysInfo>
#include <QTextStream>

namespace
{

const QString Pass = QStringLiteral("bare pass");
const QString Floor = QStringLiteral("|floor");
const QString None = QStringLiteral("-");

// The value of the first line of a file of the system that begins with `name`.
QString systemValue(const QString &fileName, const QString &name)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(name)) {
            return line.section(QLatin1Char(':'), 1).trimmed();
        }
    }
    return QStringLiteral("unknown");
}

QString machine(int cores)
{
    return systemValue(QStringLiteral("/proc/cpuinfo"), QStringLiteral("model name")) +
           QStringLiteral(", %1 cores, memory %2, %3, Qt %4")
               .arg(cores)
               .arg(systemValue(QStringLiteral("/proc/meminfo"), QStringLiteral("MemTotal")),
                    QSysInfo::prettyProductName(), QString::fromLatin1(qVersion()));
}

QString ratio(double value, double base)
{
    return base > 0 ? QString::asprintf("%.2f", value / base) : None;
}

} // namespace

Report::Report(const QString &command)
    : command(command)
{
}

bool Report::ReportContext(const Context &context)
{
    text = QStringLiteral("Machine: %1  \nCommand: `%2`\n\n")
               .arg(machine(context.cpu_info.num_cpus), command);
    QTextStream(stdout) << text;
    return true;
}

void Report::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        const QString operation = QString::fromStdString(run.run_name.function_name);
        const int records = QString::fromStdString(run.run_name.args).toInt();
        values[operation][records] = run.GetAdjustedRealTime();
        for (const auto &counter : run.counters) {
            units[operation] = QString::fromStdString(counter.first);
            values[operation][records] = counter.second.value;
        }
        if (!operation.endsWith(Floor) && !operations.contains(operation)) {
            operations.append(operation);
        }
    }
}

void Report::Finalize()
{
    QString table = QString::fromUtf8(
        "| Operation | Records | measured | floor | ratio to floor | growth | ratio to bare pass | "
        "µs a record |\n|---|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const QString &operation : qAsConst(operations)) {
        for (const int records : values.value(operation).keys()) {
            table += row(operation, records);
        }
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    out << table;
    text += table;
}

bool Report::write(const QString &fileName) const
{
    if (fileName.isEmpty()) {
        return true;
    }
    QFile file(fileName);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

double Report::value(const QString &operation, int records) const
{
    return values.value(operation).value(records);
}

QString Report::row(const QString &operation, int records) const
{
    const QString unit = units.value(operation, QStringLiteral("ms"));
    const bool isTime = !units.contains(operation);
    const auto shown = [&](double value) {
        return QString::asprintf(isTime ? "%.2f " : "%.0f ", value) + unit;
    };
    const double spent = value(operation, records);
    const double floor = value(operation + Floor, records);
    const bool hasFloor = values.value(operation + Floor).contains(records);
    const QStringList cells = {operation,
                               QString::number(records),
                               shown(spent),
                               hasFloor ? shown(floor) : None,
                               ratio(spent, floor),
                               ratio(spent, value(operation, records / 10)),
                               isTime ? ratio(spent, value(Pass, records)) : None,
                               isTime ? QString::asprintf("%.2f", spent * 1000 / records) : None};
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}
