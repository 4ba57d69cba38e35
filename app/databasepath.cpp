// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A database file's path taken apart.
#include "app/databasepath.h"

namespace DatabasePath
{

QString folder(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return slash >= 1 ? path.left(slash) + QLatin1Char('/') : QString();
}

QString fileName(const QString &path)
{
    return path.right(path.length() - path.lastIndexOf(QLatin1Char('/')) - 1);
}

bool canBeFileName(const QString &table)
{
    return !table.contains(QLatin1Char('/')) && table != QLatin1String("..");
}

} // namespace DatabasePath
