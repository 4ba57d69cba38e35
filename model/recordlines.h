// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The one-line texts that stand for a record.
#pragma once

#include "model/latin1.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace RecordLines
{

/// Shown for a record without a title, and where there is no record.
constexpr QLatin1String Empty = Latin1::text("----");

/// The record's line in the list: its title as it stands, or Empty's text.
QString listLine(const QString &title);

/// "%d %s": a record's Id and title, as link values and choice lists hold them.
QString idAndTitle(qint64 id, const QString &title);

/// The text of the count label, "%d Records".
QString countText(int lines);

/// Row numbers of `lines` in the order in which people read lists: the order of
/// QString::localeAwareCompare, equal lines in their given order. `step` is called again and
/// again meanwhile, so that the window of a long list does not stand still.
QVector<int> alphabeticalOrder(
    const QStringList &lines, const std::function<void()> &step = [] {});

} // namespace RecordLines
