// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What the calculator sums, and how its sums are rounded.
#include "model/calculator.h"

#include "model/formats.h"
#include "model/values.h"

#include <cmath>

namespace
{

// Steps in 1, and the number from which on doubles lie further apart than the steps: these are
// read back unchanged.
constexpr double MoneySteps = 100.0;
constexpr double MoneyLimit = 70368744177664.0; // 2^46
constexpr double RealSteps = 1000000.0;
constexpr double RealLimit = 8589934592.0; // 2^33

/// What a number becomes when it is written with so many decimals and read back: the nearest
/// step, ties away from zero, as the double next to it.
double writtenAndRead(double number, double steps, double limit)
{
    const double size = std::fabs(number);
    // Written so that "nan" passes too.
    if (!(size < limit)) {
        return number;
    }
    // A zero is written without a sign, whatever it has.
    if (number == 0.0) {
        return 0.0;
    }
    // Cutting through an integer costs less than a call of the library.
    const auto whole = static_cast<double>(static_cast<qint64>(size));
    const double rest = size - whole;
    const double scaled = rest * steps;
    auto count = static_cast<double>(static_cast<qint64>(scaled));
    const double over = scaled - count;
    // Where the product looks like a tie, what the multiplication cut off decides.
    if (over > 0.5 || (over == 0.5 && std::fma(rest, steps, -scaled) >= 0.0)) {
        count += 1.0;
    }
    // Below the limit the number of steps is a whole double, so only the division rounds.
    return std::copysign((whole * steps + count) / steps, number);
}

} // namespace

namespace Calculator
{

bool isSummed(const QString &column)
{
    // Deliberate: "Id" anywhere in the name keeps a whole number out, not only the record's own.
    if (column.contains(Formats::Integer) && !column.contains(QLatin1String("Id"))) {
        return true;
    }
    // Deliberate: a reference to a numeric column passes too, and its Ids are summed.
    return column.contains(Formats::Real) || isMoney(column);
}

bool isMoney(const QString &column)
{
    return column.contains(Formats::Money);
}

double addedTo(double total, double value, Mode mode)
{
    switch (mode) {
    case Plus:
        return total + value;
    case Minus:
        return total - value;
    case Exclude:
        break;
    }
    return total;
}

void RunningSum::add(double value)
{
    // Deliberate: the sum is rounded at every step. The last one stays exact, because text()
    // rounds it.
    const double shown = money ? writtenAndRead(sum, MoneySteps, MoneyLimit)
                               : writtenAndRead(sum, RealSteps, RealLimit);
    sum = shown + value;
    untouched = false;
}

QString RunningSum::text() const
{
    if (untouched) {
        return QStringLiteral("0");
    }
    return money ? Values::twoDecimals(sum) : Values::sixDecimals(sum);
}

} // namespace Calculator
