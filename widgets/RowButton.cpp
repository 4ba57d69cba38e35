// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A push button that is a whole row: an icon, and whatever its layout holds beside it.
#include "widgets/RowButton.h"

#include <QLayout>
#include <QPainter>
#include <QStyle>

namespace
{

constexpr int Inset = 8;
constexpr int CornerRadius = 4;
constexpr int HoverAlpha = 28;
constexpr int PressedAlpha = 64;
constexpr int FocusAlpha = 200;
constexpr double FocusWidth = 1.5;

/// The colour behind a row; invalid when nothing is painted there.
QColor rowColour(const RowButton &row)
{
    QColor colour = row.palette().color(QPalette::Highlight);
    if (row.isCurrent() && !row.isEnabled()) {
        // A palette's pale highlight can be any grey, even the one of the text upon it.
        colour = row.palette().color(QPalette::Active, QPalette::Highlight);
        colour.setAlpha(PressedAlpha);
        return colour;
    }
    if (row.isCurrent()) {
        return row.isDown() ? colour.darker(115) : colour;
    }
    if (row.isDown()) {
        colour.setAlpha(PressedAlpha);
        return colour;
    }
    if (row.underMouse() && row.isEnabled()) {
        colour.setAlpha(HoverAlpha);
        return colour;
    }
    return QColor();
}

} // namespace

RowButton::RowButton(QWidget *parent)
    : QPushButton(parent)
{
    setFlat(true);
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
}

void RowButton::setCurrent(bool on)
{
    current = on;
    update();
}

QSize RowButton::sizeHint() const
{
    return layout() != nullptr ? layout()->totalSizeHint() : QPushButton::sizeHint();
}

QSize RowButton::minimumSizeHint() const
{
    return layout() != nullptr ? layout()->totalMinimumSize() : QPushButton::minimumSizeHint();
}

void RowButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor behind = rowColour(*this);
    if (behind.isValid()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(behind);
        painter.drawRoundedRect(rect(), CornerRadius, CornerRadius);
    }
    if (hasFocus()) {
        paintFocus(painter);
    }
    paintIcon(painter);
}

void RowButton::paintFocus(QPainter &painter) const
{
    const auto role = current ? QPalette::HighlightedText : QPalette::Highlight;
    QColor ring = palette().color(role);
    ring.setAlpha(FocusAlpha);
    painter.setPen(QPen(ring, FocusWidth));
    painter.setBrush(Qt::NoBrush);
    const QRectF room = QRectF(rect()).adjusted(2, 2, -2, -2);
    painter.drawRoundedRect(room, CornerRadius, CornerRadius);
}

void RowButton::paintIcon(QPainter &painter) const
{
    const QSize size = iconSize();
    const QRect left(QPoint(Inset, (height() - size.height()) / 2), size);
    const QRect place = QStyle::visualRect(layoutDirection(), rect(), left);
    if (current && !icon().isNull()) {
        // Icons are drawn for the usual ground and would drown in the mark's colour.
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawRoundedRect(place.adjusted(-2, -2, 2, 2), CornerRadius, CornerRadius);
    }
    icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}
