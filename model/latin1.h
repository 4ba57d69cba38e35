// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Named texts of ASCII characters that are ready before the program starts.
#pragma once

#include <QLatin1String>

namespace Latin1
{

/// The literal as a constant. QLatin1String's own constructor counts the characters with
/// strlen(), which not every compiler accepts in a constant expression.
template<int Size>
constexpr QLatin1String text(const char (&literal)[Size])
{
    return QLatin1String(literal, Size - 1);
}

} // namespace Latin1
