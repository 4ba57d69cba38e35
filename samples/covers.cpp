// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Typographic covers of the sample books.
#include "samples/covers.h"

#include <QPainter>

namespace
{

// A cover is laid out on this grid, whatever the size at which it is painted.
constexpr int Width = 400;
constexpr int Height = 600;
constexpr int Margin = 30;
constexpr int TitleTop = 64;
constexpr int TitleHeight = 116;
constexpr int MotifTop = 214;

/// The largest type in which the title's words fit into `box`.
QFont titleFont(const QString &title, const QRect &box, int flags)
{
    for (int pixels = 46; pixels > 18; pixels -= 2) {
        QFont font = Covers::bookFace(pixels);
        font.setBold(true);
        const QRect used = QFontMetrics(font).boundingRect(box, flags, title);
        if (box.contains(used)) {
            return font;
        }
    }
    return Covers::bookFace(18);
}

void paintAuthor(QPainter &painter, const Cover &cover)
{
    QFont font = Covers::bookFace(15);
    font.setCapitalization(QFont::AllUppercase);
    font.setLetterSpacing(QFont::PercentageSpacing, 116);
    painter.setFont(font);
    painter.drawText(QRect(Margin, 26, Width - 2 * Margin, 26), Qt::AlignLeft | Qt::AlignVCenter,
                     cover.author);
}

void paintTitle(QPainter &painter, const Cover &cover)
{
    const QString title = Covers::typeset(cover.title);
    const QRect box(Margin, TitleTop, Width - 2 * Margin, TitleHeight);
    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
    painter.setFont(titleFont(title, box, flags));
    painter.drawText(box, flags, title);
    painter.fillRect(QRectF(Margin, MotifTop - 22, 48, 4), cover.palette.accent);
}

} // namespace

namespace Covers
{

QFont bookFace(int pixels)
{
    QFont font;
    font.setFamilies({QStringLiteral("P052"), QStringLiteral("Palatino Linotype"),
                      QStringLiteral("Liberation Serif"), QStringLiteral("DejaVu Serif")});
    font.setStyleHint(QFont::Serif);
    // Hinted widths would set words apart unevenly when the drawing is scaled or printed.
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(pixels);
    return font;
}

QString typeset(QString text)
{
    return text.replace(QLatin1Char('\''), QChar(0x2019));
}

bool paint(QPainter &painter, const QRectF &target, const Cover &cover)
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(target.topLeft());
    painter.scale(target.width() / Width, target.height() / Height);
    painter.fillRect(QRect(0, 0, Width, Height), cover.palette.background);
    const bool known = Motifs::draw(cover.motif, painter,
                                    QRectF(0, MotifTop, Width, Height - MotifTop), cover.palette);
    painter.setPen(cover.text);
    paintAuthor(painter, cover);
    paintTitle(painter, cover);
    painter.restore();
    return known;
}

QImage picture(const Cover &cover)
{
    QImage image(Width, Height, QImage::Format_RGB32);
    QPainter painter(&image);
    return paint(painter, image.rect(), cover) ? image : QImage();
}

} // namespace Covers
