// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A label on one line that shortens its text only when it paints it.
#include "widgets/ElidedLabel.h"

#include <QFontMetrics>
#include <QStyle>
#include <QStylePainter>

namespace
{

constexpr int LeastLetters = 4;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int letters = fontMetrics().averageCharWidth() * LeastLetters;
    const int frame = width() - contentsRect().width();
    return QSize(letters + frame, QLabel::minimumSizeHint().height());
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
    const int flags = int(alignment()) | Qt::TextSingleLine;
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(), shown, foregroundRole());
}
