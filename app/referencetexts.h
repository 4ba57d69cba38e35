// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The texts that a reference column's Ids stand for.
#pragma once

#include "model/columns.h"

#include <QHash>
#include <QString>
#include <QVariant>

/// One field of every record of a referenced table, read once so that a walk over the
/// referring table needs no look-up per row.
class ReferenceTexts
{
public:
    /// Reads the referenced field of every record in one pass.
    static ReferenceTexts read(const Columns::Reference &reference);

    /// The text for a stored reference value; empty when its record is gone.
    QString text(const QVariant &stored) const;

    /// The same, but `missing` when the record is gone.
    QString textOr(const QVariant &stored, const QString &missing) const;

    /// True when the referenced table is there but could not be read, or not to its end.
    bool failed() const { return !unreadable.isEmpty(); }
    /// The driver's text then.
    QString error() const { return unreadable; }

private:
    QString unreadable;
    QHash<int, QString> texts;
};
