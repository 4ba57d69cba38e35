// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The benchmark's table: every operation beside its floor and the bare pass of the same run.
#include "bench/report.h"

#include <QFile>
#include <QTextStream>

namespace
{

const QString Pass = QStringLiteral("bare pass");
const QString Floor = QStringLiteral("|floor");

QString processor()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    file.open(QIODevice::ReadOnly);
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QStringLiteral("model name"))) {
            return line.section(QLatin1Char(':'), 1).trimmed();
        }
    }
    return QStringLiteral("unknown processor");
}

QString ratio(double value, double base)
{
    return base > 0 ? QString::asprintf("%.2f", value / base) : QStringLiteral("-");
}

} // namespace

bool Report::ReportContext(const Context &context)
{
    QTextStream(stdout) << processor() << ", " << context.cpu_info.num_cpus << " cores\n\n";
    return true;
}

void Report::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        const QString operation = QString::fromStdString(run.run_name.function_name);
        const int records = QString::fromStdString(run.run_name.args).toInt();
        times[operation][records] = run.GetAdjustedRealTime();
        if (!operation.endsWith(Floor) && !operations.contains(operation)) {
            operations.append(operation);
        }
    }
}

void Report::Finalize()
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    out << QString::fromUtf8(
        "| Operation | Records | ms | floor, ms | ratio to floor | ratio to bare pass | µs a "
        "record |\n"
        "|---|---:|---:|---:|---:|---:|---:|\n");
    for (const QString &operation : qAsConst(operations)) {
        for (const int records : times.value(operation).keys()) {
            out << row(operation, records);
        }
    }
}

double Report::time(const QString &operation, int records) const
{
    return times.value(operation).value(records);
}

QString Report::row(const QString &operation, int records) const
{
    const double spent = time(operation, records);
    const double floor = time(operation + Floor, records);
    const QStringList cells = {operation,
                               QString::number(records),
                               QString::asprintf("%.2f", spent),
                               floor > 0 ? QString::asprintf("%.2f", floor) : QStringLiteral("-"),
                               ratio(spent, floor),
                               ratio(spent, time(Pass, records)),
                               QString::asprintf("%.2f", spent * 1000 / records)};
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}
