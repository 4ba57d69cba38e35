// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The outline around what belongs together on a page.
#include "widgets/CardFrame.h"

#include <QPainter>

namespace
{

constexpr int TintAlpha = 8;
constexpr int OutlineAlpha = 56;
constexpr double Radius = 4;

} // namespace

CardFrame::CardFrame(QWidget *parent)
    : QFrame(parent)
{
}

void CardFrame::paintEvent(QPaintEvent *)
{
    QColor tint = palette().color(QPalette::WindowText);
    QColor outline = tint;
    tint.setAlpha(TintAlpha);
    outline.setAlpha(OutlineAlpha);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outline);
    painter.setBrush(tint);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}
