// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How long a fault test runs, and where it writes down what it did.
#include "tests/support/Campaign.h"

#include <QFile>
#include <QStringList>
#include <QVector>
#include <QtTest>

#include <algorithm>

namespace Campaign
{

namespace
{

// What all rows of one name have come to.
struct Total {
    QString what;
    QString remark;
    qint64 cases = 0;
    qint64 failures = 0;
    qint64 milliseconds = 0;

    QString found() const
    {
        const QString counted = QStringLiteral("%1 failures").arg(failures);
        return remark.isEmpty() ? counted : counted + QStringLiteral(", ") + remark;
    }
};

QVector<Total> &totals()
{
    static QVector<Total> all;
    return all;
}

// The total of this name, begun when there is none.
Total &totalOf(const QString &what)
{
    QVector<Total> &all = totals();
    const auto isIt = [&what](const Total &total) { return total.what == what; };
    const auto found = std::find_if(all.begin(), all.end(), isIt);
    if (found != all.end()) {
        return *found;
    }
    all.append(Total());
    all.last().what = what;
    return all.last();
}

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

Row::Row(const QString &what)
    : what(what)
{
    timer.start();
}

Row::~Row()
{
    if (!QTest::currentTestFailed() && casesRun == 0) {
        QTest::qFail("no case was run", __FILE__, __LINE__);
    }
    Total &total = totalOf(what);
    total.cases += casesRun;
    total.failures += qMax(failures, qint64(QTest::currentTestFailed() ? 1 : 0));
    total.milliseconds += timer.elapsed();
    total.remark = remarked.isEmpty() ? total.remark : remarked;
}

void report()
{
    const QString name = qEnvironmentVariable("TAVENOR_CAMPAIGN_REPORT");
    QByteArray lines;
    for (const Total &total : qAsConst(totals())) {
        qInfo("%s: %lld cases, %s", qUtf8Printable(total.what), total.cases,
              qUtf8Printable(total.found()));
        const QStringList cells = {total.what, QString::number(total.cases), total.found(),
                                   QString::number(total.milliseconds / 1000)};
        lines += cells.join(QLatin1Char('\t')).toUtf8() + '\n';
    }
    QFile file(name);
    if (!name.isEmpty() &&
        (!file.open(QIODevice::Append) || file.write(lines) != lines.size() || !file.flush())) {
        qFatal("the campaign's table cannot be written");
    }
}

} // namespace Campaign
