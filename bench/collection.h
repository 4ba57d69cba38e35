// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Databases of a given size to measure with.
#pragma once

#include <QString>

/// One database of a given number of records, made once per run in a temporary directory.
/// Its table "oggetti" has the Id and 15 columns of mixed formats, one of them a reference to
/// the table "autori"; titles come in no order.
namespace Collection
{

/// The path of the database with `records` records; made on first use.
QString path(int records);

/// The name of the table that is measured.
QString table();

/// Part of the title of about one record in a hundred.
QString searchText();

} // namespace Collection
