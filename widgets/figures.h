// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Fonts for columns of numbers.
#pragma once

#include <QFont>

namespace Figures
{

/// `font` when all its digits have the same width, so that numbers under each other stand in
/// columns; otherwise the desktop's fixed-width font in the same size and weight.
QFont tabular(const QFont &font);

} // namespace Figures
