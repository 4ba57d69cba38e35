// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Typographic covers of the sample books.
#pragma once

#include "samples/motifs.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

class QPainter;
class QRectF;

/// What stands on one cover.
struct Cover {
    QString title;
    QString author;
    QString motif; ///< a name that Motifs knows
    Motifs::Palette palette;
    QColor text;
};

namespace Covers
{

/// The type of titles and text: the first book face that the machine has.
QFont bookFace(int pixels);

/// `text` as printers set it: with curved apostrophes.
QString typeset(QString text);

/// Paints the cover into `target`, which is best 2 wide to 3 high. False when its motif is
/// unknown.
bool paint(QPainter &painter, const QRectF &target, const Cover &cover);

/// The cover as a picture of 400 x 600; a null picture when its motif is unknown.
QImage picture(const Cover &cover);

} // namespace Covers
