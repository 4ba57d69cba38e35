// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Moves finished files into place without replacing anything.
#include "samples/placing.h"

#include <QDir>
#include <QFileInfo>

namespace
{

bool isTaken(const QFileInfo &place)
{
    // A link that leads nowhere is something of the user's too.
    return place.exists() || place.isSymLink();
}

bool moveOne(const QFileInfo &entry, const QString &to)
{
    const QFileInfo place(to + QLatin1Char('/') + entry.fileName());
    if (!isTaken(place)) {
        return QDir().rename(entry.filePath(), place.filePath());
    }
    return entry.isDir() == place.isDir() &&
           (!entry.isDir() || Placing::moveContents(entry.filePath(), place.filePath()));
}

} // namespace

namespace Placing
{

bool moveContents(const QString &from, const QString &to)
{
    bool moved = true;
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QFileInfo &entry : QDir(from).entryInfoList(everything)) {
        moved = moveOne(entry, to) && moved;
    }
    return moved;
}

} // namespace Placing
