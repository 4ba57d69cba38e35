// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What stands in the middle of a place that has nothing to show.
#include "widgets/placeholder.h"

#include <QPainter>
#include <QVector>
#include <QWidget>

namespace
{

constexpr int Inset = 16;
constexpr int PictureSide = 48;
constexpr double PictureOpacity = 0.6;
constexpr int GapBelowPicture = 16;
constexpr int GapBelowText = 12;
constexpr int GapBelowHint = 6;
constexpr double HintScale = 0.85;
constexpr int Flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

/// One wrapped, centred piece of text.
struct Paragraph {
    QString text;
    QFont font;
    int height = 0;
    int gap = 0;
};

Paragraph paragraph(const QString &text, const QFont &font, int width, int gap)
{
    const QRect room(0, 0, width, QWIDGETSIZE_MAX);
    return {text, font, QFontMetrics(font).boundingRect(room, Flags, text).height(), gap};
}

QFont hintFont(QFont font)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * HintScale);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * HintScale));
    }
    return font;
}

QVector<Paragraph> paragraphs(const Placeholder &shown, const QFont &font, int width)
{
    QVector<Paragraph> parts;
    if (!shown.text.isEmpty()) {
        parts.append(paragraph(shown.text, font, width, GapBelowText));
    }
    for (const QString &hint : shown.hints) {
        parts.append(paragraph(hint, hintFont(font), width, GapBelowHint));
    }
    if (!parts.isEmpty()) {
        parts.last().gap = 0;
    }
    return parts;
}

int heightOf(const QVector<Paragraph> &parts)
{
    int height = 0;
    for (const Paragraph &part : parts) {
        height += part.height + part.gap;
    }
    return height;
}

} // namespace

QString Placeholder::description() const
{
    const QStringList words = text.isEmpty() ? hints : QStringList(text) + hints;
    return words.join(QLatin1Char('\n'));
}

void Placeholder::paint(QWidget *canvas, const QRect &room) const
{
    const QRect inner = room.adjusted(Inset, 0, -Inset, 0);
    const QVector<Paragraph> parts = paragraphs(*this, canvas->font(), inner.width());
    const int pictureHeight = picture.isNull() ? 0 : PictureSide + GapBelowPicture;
    int top = inner.top() + qMax(Inset, (inner.height() - pictureHeight - heightOf(parts)) / 2);

    QPainter painter(canvas);
    if (!picture.isNull()) {
        painter.setOpacity(PictureOpacity);
        picture.paint(&painter, QRect(inner.left(), top, inner.width(), PictureSide));
        painter.setOpacity(1);
        top += pictureHeight;
    }
    painter.setPen(canvas->palette().color(QPalette::PlaceholderText));
    for (const Paragraph &part : parts) {
        painter.setFont(part.font);
        painter.drawText(QRect(inner.left(), top, inner.width(), part.height), Flags, part.text);
        top += part.height + part.gap;
    }
}
