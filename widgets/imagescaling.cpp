// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Sizes in which pictures are shown, and the only way in which picture files are read.
#include "widgets/imagescaling.h"

#include <QFileInfo>
#include <QImageReader>

namespace
{

constexpr QSize WidePreview(120, 100);
constexpr QSize HighPreview(60, 100);
constexpr QSize FirstShownBox(350, 350);
constexpr int MostZoomedSide = 9999;
constexpr int LeastZoomedSide = 3;

/// Pictures up to this size are decoded whole and scaled by the fast method; beyond it the
/// decoder's own scaling is worth its slightly different pixels.
constexpr qint64 MostPixelsDecodedWhole = 1'000'000;

qint64 pixels(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

/// Formats that hold pixels. Drawings (SVG) are left out: they can name further files, which
/// their reader would open without asking whether they are regular ones.
bool isRasterFormat(const QByteArray &format)
{
    static const QList<QByteArray> formats = {"png", "jpg",  "jpeg", "bmp", "tif", "tiff",
                                              "gif", "webp", "ico",  "cur", "tga", "jp2",
                                              "xpm", "xbm",  "pbm",  "pgm", "ppm", "icns"};
    return formats.contains(format);
}

/// True when the file may be opened at all: opening a FIFO or a device could wait for ever.
bool isRegularFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

/// The size told by the header that `reader` stands at; invalid when it must not be decoded.
QSize decodableSize(QImageReader &reader)
{
    if (!isRasterFormat(reader.format())) {
        return QSize();
    }
    const QSize size = reader.size();
    if (size.isEmpty() || pixels(size) > ImageScaling::MostPixels) {
        return QSize();
    }
    return size;
}

/// The picture of `reader`, whose size is known to be `size`, scaled to fit `box`.
QPixmap readFitted(QImageReader &reader, const QSize &size, const QSize &box)
{
    if (pixels(size) <= MostPixelsDecodedWhole) {
        return ImageScaling::scaledToFit(QPixmap::fromImage(reader.read()), box);
    }
    reader.setScaledSize(ImageScaling::fittedSize(size, box));
    return QPixmap::fromImage(reader.read());
}

} // namespace

QSize ImageScaling::headerSize(const QString &path)
{
    if (!isRegularFile(path)) {
        return QSize();
    }
    QImageReader reader(path);
    return decodableSize(reader);
}

QPixmap ImageScaling::load(const QString &path)
{
    if (!isRegularFile(path)) {
        return QPixmap();
    }
    QImageReader reader(path);
    return decodableSize(reader).isValid() ? QPixmap::fromImage(reader.read()) : QPixmap();
}

QPixmap ImageScaling::preview(const QString &path, const QSize &box)
{
    if (!isRegularFile(path) || box.isEmpty()) {
        return QPixmap();
    }
    QImageReader reader(path);
    const QSize size = decodableSize(reader);
    return size.isValid() ? readFitted(reader, size, box) : QPixmap();
}

QPixmap ImageScaling::smoothPreview(const QString &path, const QSize &box)
{
    const QSize size = box.isEmpty() ? QSize() : headerSize(path);
    if (!size.isValid()) {
        return QPixmap();
    }
    QImageReader reader(path);
    if (pixels(size) > MostPixelsDecodedWhole) {
        return readFitted(reader, size, box);
    }
    return QPixmap::fromImage(
        reader.read().scaled(fittedSize(size, box), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

QPixmap ImageScaling::recordPreview(const QString &path)
{
    if (!isRegularFile(path)) {
        return QPixmap();
    }
    QImageReader reader(path);
    const QSize size = decodableSize(reader);
    return size.isValid() ? readFitted(reader, size, previewBox(size)) : QPixmap();
}

QPixmap ImageScaling::thumbnail(const QString &path, double scale)
{
    QPixmap picture = smoothPreview(path, previewBox(headerSize(path)) * scale);
    picture.setDevicePixelRatio(scale);
    return picture;
}

QPixmap ImageScaling::scaledToFit(const QPixmap &picture, const QSize &box)
{
    if (picture.isNull() || box.isEmpty()) {
        return QPixmap();
    }
    return picture.scaled(box, Qt::KeepAspectRatio, Qt::FastTransformation);
}

QSize ImageScaling::fittedSize(const QSize &picture, const QSize &box)
{
    return picture.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

QSize ImageScaling::previewBox(const QSize &picture)
{
    return picture.width() > picture.height() ? WidePreview : HighPreview;
}

QSize ImageScaling::firstShownSize(const QSize &picture)
{
    const bool isSmall =
        picture.width() <= FirstShownBox.width() && picture.height() <= FirstShownBox.height();
    return isSmall ? picture : fittedSize(picture, FirstShownBox);
}

QSize ImageScaling::sizeInArea(const QSize &picture, const QSize &area)
{
    const bool hasRoom = area.width() >= picture.height() && area.height() >= picture.width();
    return hasRoom ? picture : fittedSize(picture, area);
}

QSize ImageScaling::zoomInBox(const QSize &shown)
{
    const QSize box = shown * 2;
    return box.width() <= MostZoomedSide && box.height() <= MostZoomedSide ? box : QSize();
}

QSize ImageScaling::zoomOutBox(const QSize &shown)
{
    if (shown.width() <= LeastZoomedSide || shown.height() <= LeastZoomedSide) {
        return QSize();
    }
    // QSize's own division rounds; the step is a whole half.
    return QSize(shown.width() / 2, shown.height() / 2);
}
