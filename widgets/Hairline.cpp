// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The thin line between two fields or two entries.
#include "widgets/Hairline.h"

#include <QPainter>

namespace
{

constexpr int FaintAlpha = 38;

} // namespace

Hairline::Hairline(QWidget *parent)
    : QFrame(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize Hairline::sizeHint() const
{
    return QSize(1, 1);
}

void Hairline::paintEvent(QPaintEvent *)
{
    QColor faint = palette().color(QPalette::WindowText);
    faint.setAlpha(FaintAlpha);
    QPainter(this).fillRect(rect(), faint);
}
