// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How long a fault test runs, and where it writes down what it did.
#include "tests/support/Campaign.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStringList>

namespace Campaign
{

namespace
{

QElapsedTimer started()
{
    QElapsedTimer timer;
    timer.start();
    return timer;
}

// Since the program's start or the row before.
QElapsedTimer sinceLastRow = started();

} // namespace

bool isFull()
{
    return qEnvironmentVariable("TAVENOR_CAMPAIGN") == QStringLiteral("full");
}

int cases(int usual, int full)
{
    return isFull() ? full : usual;
}

quint32 start()
{
    bool isGiven = false;
    const quint32 given = qEnvironmentVariable("TAVENOR_CAMPAIGN_START").toUInt(&isGiven);
    return isGiven ? given : 20200229;
}

void report(const QString &what, qint64 casesRun, const QString &found)
{
    const QString name = qEnvironmentVariable("TAVENOR_CAMPAIGN_REPORT");
    if (name.isEmpty()) {
        return;
    }
    const QStringList cells = {what, QString::number(casesRun), found,
                               QString::number(sinceLastRow.restart() / 1000)};
    QFile file(name);
    if (!file.open(QIODevice::Append) ||
        file.write(cells.join(QLatin1Char('\t')).toUtf8() + '\n') < 0) {
        qFatal("the campaign's table cannot be written");
    }
}

} // namespace Campaign
