// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How long a fault test runs, and where it writes down what it did.
#pragma once

#include <QElapsedTimer>
#include <QString>

/// The tests under tests/faults run in a short form with every test run, and at full length when
/// `scripts/campaign.sh` starts them. The environment tells which:
///
///   TAVENOR_CAMPAIGN         "full" for the full length
///   TAVENOR_CAMPAIGN_START   start of the random numbers; a fixed one when not set
///   TAVENOR_CAMPAIGN_REPORT  file that each test appends its rows of the campaign's table to
namespace Campaign
{

/// True at full length.
bool isFull();

/// How many cases to run: `usual` in the short form, `full` at full length.
int cases(int usual, int full);

/// The start of the test's random numbers, so that a failure can be repeated.
quint32 start();

/// A row of the campaign's table, counted while a test function runs: it is made where the
/// function begins. Those of the same name are one row of the table.
///
/// A function that has failed by then adds a failure when the row goes out of scope, also when it
/// counted none itself, and one that has tried nothing fails.
class Row
{
public:
    /// `what` tells what is tried.
    explicit Row(const QString &what);
    ~Row();
    Row(const Row &) = delete;
    Row &operator=(const Row &) = delete;

    /// So many more cases have been run.
    void ran(qint64 more = 1) { casesRun += more; }
    /// So many of them went wrong.
    void failed(qint64 more) { failures += more; }
    /// What else is told about the row; the last remark stays.
    void remark(const QString &text) { remarked = text; }
    /// The cases that this function has run.
    qint64 cases() const { return casesRun; }

private:
    const QString what;
    QString remarked;
    qint64 casesRun = 0;
    qint64 failures = 0;
    QElapsedTimer timer;
};

/// Tells of all rows, and appends them to the campaign's table when one is asked for: what was
/// tried, how many cases were run, what was found ("0 failures") and the seconds that it took. To
/// be called by a test's cleanupTestCase().
void report();

} // namespace Campaign
