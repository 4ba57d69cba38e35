// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The icons of all tables, from one reading of "settings".
#include "app/tableicons.h"

#include "model/attachments.h"
#include "model/markers.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "widgets/icons.h"
#include "widgets/imagescaling.h"

namespace
{

// Large enough for every place that shows an icon, at twice the resolution.
const QSize LargestIcon(200, 100);

} // namespace

TableIcons::TableIcons(const QString &folder)
    : folder(folder)
{
    RowPass rows(Markers::SettingsTable,
                 {ReservedTables::Settings::TableName, ReservedTables::Settings::IconPath});
    while (rows.next()) {
        const QString table = rows.value(0).toString();
        // Of several rows for one table the first counts.
        if (!paths.contains(table)) {
            paths.insert(table, rows.value(1).toString());
        }
    }
}

QIcon TableIcons::icon(const QString &table) const
{
    const QString path = paths.value(table);
    if (path.isEmpty()) {
        return Icons::shared(QStringLiteral(":generalIcon"));
    }
    if (!Attachments::isInside(folder, path)) {
        return QIcon();
    }
    return QIcon(ImageScaling::smoothPreview(folder + path, LargestIcon));
}
