// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The benchmark's table: every operation beside its floor and the bare pass of the same run.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

/// Collects what a run measures and prints one table when it is over, as Markdown, so that it
/// can be read on the terminal and kept in a document.
class Report : public benchmark::BenchmarkReporter
{
public:
    /// `command` is how the benchmark was started.
    explicit Report(const QString &command);

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

    /// Writes what was printed to a file too, unless its name is empty; false when that fails.
    bool write(const QString &fileName) const;

private:
    double value(const QString &operation, int records) const;
    QString row(const QString &operation, int records) const;

    QString text;
    QString command;
    QStringList operations;
    QMap<QString, QString> units;            // of operations that are not measured in milliseconds
    QMap<QString, QMap<int, double>> values; // operation -> records -> value
};
