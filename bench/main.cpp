// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The scale benchmark: what the program's operations cost, beside a bare program's.
#include "bench/memory.h"
#include "bench/report.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Lists are ordered as for the people who use the program, which costs more than by codes.
    qputenv("LC_ALL", "it_IT.UTF-8");
    QApplication application(argc, argv);
    const QStringList given = QCoreApplication::arguments();
    if (given.value(1) == QString::fromUtf8(Memory::Option)) {
        Memory::measure(given.mid(2));
        return 0;
    }
    // Takes its own options out of the list.
    benchmark::Initialize(&argc, argv);
    QStringList own;
    for (int i = 0; i < argc; ++i) {
        own.append(QString::fromLocal8Bit(argv[i]));
    }
    QCommandLineParser options;
    const QCommandLineOption markdown(QStringLiteral("markdown"),
                                      QStringLiteral("Writes the table to this file too."),
                                      QStringLiteral("file"));
    options.addOption(markdown);
    options.process(own);
    Report report(given.join(QLatin1Char(' ')));
    benchmark::RunSpecifiedBenchmarks(&report);
    return report.write(options.value(markdown)) ? 0 : 1;
}
