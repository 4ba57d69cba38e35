// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A database file's path taken apart.
#pragma once

#include <QString>

namespace DatabasePath
{

/// The file's folder with its final "/"; empty when the path holds no "/" after its first
/// character, so that the data folders then belong to the working directory.
QString folder(const QString &path);

/// The part after the last "/".
QString fileName(const QString &path);

/// True when a file beside others can carry the table's name: a "/" or ".." would lead into
/// another folder.
bool canBeFileName(const QString &table);

} // namespace DatabasePath
