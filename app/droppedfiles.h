// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What files that are dragged onto the window would do there.
#pragma once

#include <QStringList>

class QMimeData;

/// Files of one kind, as one of the window's commands takes them.
struct DroppedFiles {
    enum class Kind { None, Database, Records, Structures };

    Kind kind = Kind::None;
    QStringList files;

    /// None, unless all that is dragged is regular files of this machine and of one kind, told
    /// by their suffixes in any letter case; of databases, one file.
    static DroppedFiles in(const QMimeData &data);
};
