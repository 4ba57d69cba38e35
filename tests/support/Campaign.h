// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How long a fault test runs, and where it writes down what it did.
#pragma once

#include <QString>

/// The tests under tests/faults run in a short form with every test run, and at full length when
/// `scripts/campaign.sh` starts them. The environment tells which:
///
///   TAVENOR_CAMPAIGN         "full" for the full length
///   TAVENOR_CAMPAIGN_START   start of the random numbers; a fixed one when not set
///   TAVENOR_CAMPAIGN_REPORT  file that each test appends its row of the campaign's table to
namespace Campaign
{

/// True at full length.
bool isFull();

/// How many cases to run: `usual` in the short form, `full` at full length.
int cases(int usual, int full);

/// The start of the test's random numbers, so that a failure can be repeated.
quint32 start();

/// Adds a row to the campaign's table: what was tried, how many cases were run, what was found
/// (for instance "0 failures"), and the seconds since the row before. Does nothing when no table is
/// asked for.
void report(const QString &what, qint64 casesRun, const QString &found);

} // namespace Campaign
