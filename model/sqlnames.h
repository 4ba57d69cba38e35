// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which names may stand in a statement without quotes.
#pragma once

#include <QString>

namespace SqlNames
{

/// True when SQLite reads `name`, unquoted, as exactly this table or column name: letters,
/// digits, "_" and "$" of ASCII, printable characters above U+007F, beginning with neither
/// a digit nor "$", and none of the words that SQLite reserves.
bool canStandUnquoted(const QString &name);

} // namespace SqlNames
