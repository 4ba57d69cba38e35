// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Stored paths of attached files and icons: how they are built, and which may be followed.
#pragma once

#include <QString>

namespace Attachments
{

/// The folder of a table's (or record's) attachments, relative to the database's folder:
/// "TABLES_DOC/" and the name without the characters and markers that a folder name must
/// not carry.
QString documentPath(QString name);

/// The folder of the record titled `title` in `table`, relative to the database's folder.
QString recordFolder(const QString &table, const QString &title);

/// The part of a path after its last "/".
QString fileName(const QString &path);

/// True when base + storedPath names something inside the folder `base` (which ends with "/",
/// or is empty for the current folder): relative, without a ".." component, and not led outside
/// by a symbolic link. The file need not exist yet. An empty path names no file: false.
bool isInside(const QString &base, const QString &storedPath);

/// True when the stored path may be handed to the desktop: inside the folder, and not of a
/// kind that the desktop would run, neither by its own suffix (in any letter case) nor by that
/// of the file that a link leads to, and neither a pipe nor a device.
bool mayBeOpened(const QString &base, const QString &storedPath);

} // namespace Attachments
