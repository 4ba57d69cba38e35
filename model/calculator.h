// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What the calculator sums, and how its sums are rounded.
#pragma once

#include <QString>

namespace Calculator
{

/// What a column does to the grand total.
enum Mode { Plus, Minus, Exclude };

/// True when the column's values are summed: whole numbers, real numbers and amounts of money,
/// recognised by words anywhere in the column's complete name.
bool isSummed(const QString &column);

/// True when the column's sum is an amount of money.
bool isMoney(const QString &column);

/// The grand total after a value of a column in this mode.
double addedTo(double total, double value, Mode mode);

/// The sum of one column, shown with two decimals for money and six otherwise. Each step starts
/// from the sum as it is shown, so what a step loses by rounding stays lost. Keeps numbers, not
/// texts, for loops over many rows; the result is the same to the last digit.
class RunningSum
{
public:
    explicit RunningSum(bool money)
        : money(money)
    {
    }

    /// Adds to the sum as it is shown.
    void add(double value);

    /// The sum as people read it; "0" before anything was added.
    QString text() const;

private:
    bool money;
    bool untouched = true;
    double sum = 0.0;
};

} // namespace Calculator
