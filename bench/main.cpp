// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The scale benchmark: what the program's operations cost, beside a bare program's.
#include "bench/report.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Report report;
    benchmark::RunSpecifiedBenchmarks(&report);
    return 0;
}
