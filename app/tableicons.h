// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The icons of all tables, from one reading of "settings".
#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

/// Lists of tables ask for many icons; a look-up in "settings" for each would read it again and
/// again.
class TableIcons
{
public:
    /// Reads which icon each table has; `folder` is the database's folder.
    explicit TableIcons(const QString &folder);

    /// The table's icon: the file recorded for it, empty when that cannot be shown, the built-in
    /// one when none is recorded.
    QIcon icon(const QString &table) const;

private:
    QString folder;
    QHash<QString, QString> paths; // table -> path relative to the folder
};
