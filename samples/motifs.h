// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The geometric drawings of the sample covers.
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <QStringList>

class QPainter;

namespace Motifs
{

/// The colours of one drawing.
struct Palette {
    QColor background;
    QColor tint;
    QColor accent;
};

/// The names that draw() knows.
QStringList names();

/// Draws the motif called `name` into `area`, always in the same way. False, with nothing
/// drawn, for a name that is unknown.
bool draw(const QString &name, QPainter &painter, const QRectF &area, const Palette &palette);

} // namespace Motifs
