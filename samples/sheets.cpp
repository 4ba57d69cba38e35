// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One-page PDF sheets about the sample books.
#include "samples/sheets.h"

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

namespace
{

// The page is laid out in points of A4 paper, of which there are 72 to the inch. Letters are set
// on a finer grid, because whole points would leave uneven gaps between them.
constexpr int Fineness = 20;
constexpr int Resolution = 72 * Fineness;
constexpr QRect Page(0, 0, 595, 842);
constexpr int Left = 60;
constexpr int Right = Page.width() - 60;
constexpr QRect CoverPlace(Right - 160, 78, 160, 240);
constexpr int HeadWidth = CoverPlace.left() - 30 - Left;
constexpr int TextTop = 356;

const QColor Ink(0x2b, 0x26, 0x22);
const QColor Faint(0x8a, 0x81, 0x78);

/// Writes words into `box` from its top and returns the height that they took.
qreal paragraph(QPainter &painter, const QRectF &box, const QString &text)
{
    QRectF used;
    painter.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, Covers::typeset(text),
                     &used);
    return used.height();
}

void paintHead(QPainter &painter, const Sheet &sheet)
{
    QFont font = Covers::bookFace(30);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Ink);
    const qreal height = paragraph(painter, QRectF(Left, 72, HeadWidth, 120), sheet.title);
    font = Covers::bookFace(16);
    font.setItalic(true);
    painter.setFont(font);
    paragraph(painter, QRectF(Left, 76 + height, HeadWidth, 24), sheet.author);
    painter.fillRect(QRectF(Left, 108 + height, 48, 3), sheet.cover.palette.tint);
}

void paintFacts(QPainter &painter, const Sheet &sheet)
{
    painter.setFont(Covers::bookFace(12));
    const int lineHeight = 17;
    qreal top = CoverPlace.bottom() - sheet.facts.size() * lineHeight;
    for (const auto &fact : sheet.facts) {
        painter.setPen(Faint);
        painter.drawText(QPointF(Left, top + 14), fact.first);
        painter.setPen(Ink);
        painter.drawText(QPointF(Left + 84, top + 14), Covers::typeset(fact.second));
        top += lineHeight;
    }
}

void paintText(QPainter &painter, const Sheet &sheet)
{
    painter.fillRect(QRectF(Left, TextTop, Right - Left, 0.6), Faint);
    painter.save();
    painter.translate(Left, TextTop + 20);
    QTextDocument document;
    document.setDefaultFont(Covers::bookFace(14));
    document.setDocumentMargin(0);
    document.setTextWidth(Right - Left);
    document.setHtml(QStringLiteral("<p style=\"line-height:150%; color:%1\">%2</p>")
                         .arg(Ink.name(), Covers::typeset(sheet.text).toHtmlEscaped()));
    document.drawContents(&painter);
    painter.restore();
}

void paintFoot(QPainter &painter)
{
    painter.setFont(Covers::bookFace(10));
    painter.setPen(Faint);
    painter.drawText(QRectF(Left, Page.height() - 62, Right - Left, 16), Qt::AlignRight,
                     QStringLiteral("Biblioteca di esempio"));
}

} // namespace

namespace Sheets
{

bool write(const QString &path, const Sheet &sheet)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QPdfWriter writer(&file);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(Resolution);
    writer.setTitle(sheet.title);
    writer.setCreator(QStringLiteral("Tavenor"));
    QPainter painter;
    if (!painter.begin(&writer)) {
        return false;
    }
    painter.scale(Fineness, Fineness);
    paintHead(painter, sheet);
    paintFacts(painter, sheet);
    const bool drawn = Covers::paint(painter, CoverPlace, sheet.cover);
    paintText(painter, sheet);
    paintFoot(painter);
    // A full disk shows only when the last bytes are written.
    return painter.end() && drawn && file.flush() && file.error() == QFileDevice::NoError;
}

} // namespace Sheets
