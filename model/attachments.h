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

/// True when base + storedPath names something inside the folder `base` (the current
/// folder when empty): relative, without a ".." component, and not led outside by a
/// symbolic link.
bool isInside(const QString &base, const QString &storedPath);

/// True when the stored path may be handed to the desktop: inside the folder, and not of a
/// kind that the desktop would run.
bool mayBeOpened(const QString &base, const QString &storedPath);

} // namespace Attachments
