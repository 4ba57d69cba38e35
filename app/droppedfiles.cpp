// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What files that are dragged onto the window would do there.
#include "app/droppedfiles.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace
{

DroppedFiles::Kind kindOf(const QString &file)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix == QLatin1String("db")) {
        return DroppedFiles::Kind::Database;
    }
    if (suffix == QLatin1String("xmf")) {
        return DroppedFiles::Kind::Records;
    }
    return suffix == QLatin1String("tsc") ? DroppedFiles::Kind::Structures
                                          : DroppedFiles::Kind::None;
}

} // namespace

DroppedFiles DroppedFiles::in(const QMimeData &data)
{
    DroppedFiles dropped;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        const QString file = url.toLocalFile();
        // A pipe would be waited for, and a device may never end.
        const Kind kind = QFileInfo(file).isFile() ? kindOf(file) : Kind::None;
        const bool isFirst = dropped.files.isEmpty();
        if (kind == Kind::None || (!isFirst && kind != dropped.kind)) {
            return {};
        }
        dropped.kind = kind;
        dropped.files.append(file);
    }
    const bool isTooMany = dropped.kind == Kind::Database && dropped.files.size() > 1;
    return isTooMany ? DroppedFiles() : dropped;
}
