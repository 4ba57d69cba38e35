// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Fonts for columns of numbers.
#include "widgets/figures.h"

#include <QFontDatabase>
#include <QFontMetrics>

namespace
{

bool hasEqualDigits(const QFont &font)
{
    const QFontMetrics metrics(font);
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (metrics.horizontalAdvance(QLatin1Char(digit)) !=
            metrics.horizontalAdvance(QLatin1Char('0'))) {
            return false;
        }
    }
    return true;
}

} // namespace

namespace Figures
{

QFont tabular(const QFont &font)
{
    if (hasEqualDigits(font)) {
        return font;
    }
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font.pointSizeF());
    fixed.setWeight(font.weight());
    return fixed;
}

} // namespace Figures
