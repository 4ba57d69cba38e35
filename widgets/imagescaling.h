// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Sizes in which pictures are shown, and the only way in which picture files are read.
#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

/// Databases come from other people, so a picture's path may name anything. Everything here
/// reads regular files of raster formats only, asks the header before it decodes, and answers
/// with an empty picture (never a message) for what it refuses or cannot read.
namespace ImageScaling
{

/// Pictures of more pixels than this are not decoded.
constexpr qint64 MostPixels = 100'000'000;

/// The size of the picture in the file at `path`, read from its header; invalid when the
/// file is none that may be decoded.
QSize headerSize(const QString &path);

/// The whole picture in its own size; empty when it cannot be read.
QPixmap load(const QString &path);

/// The picture scaled, up or down, to fit `box`. A large one is decoded at that size, which
/// takes a fraction of the time and of the memory that the whole picture would need.
QPixmap preview(const QString &path, const QSize &box);

/// preview() by the smooth method: for drawings, whose lines would come out jagged.
QPixmap smoothPreview(const QString &path, const QSize &box);

/// The picture as the record view shows it: preview() in the previewBox() of its size.
QPixmap recordPreview(const QString &path);

/// The picture in the same room, but smooth, and with `scale` screen pixels for each of the
/// room's: for a page that shows few of them.
QPixmap thumbnail(const QString &path, double scale);

/// `picture` scaled to fit `box`, its proportions kept, by the fast method; an empty picture
/// or an empty box gives an empty picture, without a warning.
QPixmap scaledToFit(const QPixmap &picture, const QSize &box);

/// The size that scaledToFit() gives a picture of size `picture`: never below 1 x 1.
QSize fittedSize(const QSize &picture, const QSize &box);

/// The room for a picture's preview in the record view: 120 x 100 when it is wider than
/// high, otherwise (also for a square) 60 x 100.
QSize previewBox(const QSize &picture);

/// The size in which the image dialog first shows a picture: its own when both sides are
/// below 351 pixels, otherwise fitted into 350 x 350.
QSize firstShownSize(const QSize &picture);

/// The size in which a picture is shown in an area: its own when the area's width is at
/// least the picture's height and its height at least the picture's width, otherwise fitted
/// into the area.
/// Deliberate: the test is crossed (width against height); pictures keep the size that
/// people know from it.
QSize sizeInArea(const QSize &picture, const QSize &area);

/// The box for one step of zooming in, twice the size shown; invalid when one of its sides
/// would exceed 9999 pixels and the step is not to be made.
QSize zoomInBox(const QSize &shown);

/// The box for one step of zooming out, half the size shown; invalid when one of the sides
/// shown is not above 3 pixels and the step is not to be made.
QSize zoomOutBox(const QSize &shown);

} // namespace ImageScaling
