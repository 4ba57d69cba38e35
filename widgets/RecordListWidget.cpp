// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#include "widgets/RecordListWidget.h"

#include <QContextMenuEvent>
#include <QPainter>

namespace
{

constexpr int Inset = 16;
constexpr int GapBelowText = 12;
constexpr int GapBelowHint = 6;
constexpr double HintScale = 0.85;

/// One wrapped, centred piece of the placeholder.
struct Paragraph {
    QString text;
    QFont font;
    int height = 0;
    int gap = 0;
};

constexpr int Flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

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

} // namespace

RecordListWidget::RecordListWidget(QWidget *parent)
    : QListWidget(parent)
{
    const auto describe = [this]() { describePlaceholder(); };
    connect(model(), &QAbstractItemModel::rowsInserted, this, describe);
    connect(model(), &QAbstractItemModel::rowsRemoved, this, describe);
    connect(model(), &QAbstractItemModel::modelReset, this, describe);
}

RecordListWidget::~RecordListWidget()
{
    // The base class takes the lines away when the members here are gone already.
    disconnect(model(), nullptr, this, nullptr);
}

void RecordListWidget::setPlaceholder(const QString &text, const QStringList &hints)
{
    placeholderText = text;
    placeholderHints = hints;
    describePlaceholder();
    viewport()->update();
}

void RecordListWidget::describePlaceholder()
{
    const QStringList all = QStringList(placeholderText) + placeholderHints;
    const QString description = count() == 0 ? all.join(QLatin1Char('\n')) : QString();
    if (description != accessibleDescription()) {
        setAccessibleDescription(description);
    }
}

void RecordListWidget::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        emit menuRequested(indexAt(event->pos()).row(), event->globalPos());
        return;
    }
    const QRect line = visualRect(currentIndex()).intersected(viewport()->rect());
    const QPoint place = line.isEmpty() ? QPoint(0, 0) : QPoint(line.center().x(), line.bottom());
    emit menuRequested(currentRow(), viewport()->mapToGlobal(place));
}

void RecordListWidget::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() == 0 && !placeholderText.isEmpty()) {
        paintPlaceholder();
    }
}

void RecordListWidget::paintPlaceholder()
{
    const QRect room = viewport()->rect().adjusted(Inset, 0, -Inset, 0);
    QVector<Paragraph> paragraphs = {
        paragraph(placeholderText, font(), room.width(), GapBelowText)};
    for (const QString &hint : qAsConst(placeholderHints)) {
        paragraphs.append(paragraph(hint, hintFont(font()), room.width(), GapBelowHint));
    }
    paragraphs.last().gap = 0;
    int height = 0;
    for (const Paragraph &part : qAsConst(paragraphs)) {
        height += part.height + part.gap;
    }

    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    int top = qMax(Inset, (room.height() - height) / 2);
    for (const Paragraph &part : qAsConst(paragraphs)) {
        painter.setFont(part.font);
        painter.drawText(QRect(room.left(), top, room.width(), part.height), Flags, part.text);
        top += part.height + part.gap;
    }
}
