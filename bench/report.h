// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The benchmark's table: every operation beside its floor and the bare pass of the same run.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

/// Collects the times of a run and prints one table when it is over, as Markdown, so that it
/// can be read on the terminal and pasted into a document.
class Report : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

private:
    double time(const QString &operation, int records) const;
    QString row(const QString &operation, int records) const;

    QStringList operations;
    QMap<QString, QMap<int, double>> times; // operation -> records -> milliseconds
};
