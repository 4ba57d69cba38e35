// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A label on one line that shortens its text only when it paints it.
#include "widgets/ElidedLabel.h"

#include "widgets/longtext.h"
#include "widgets/plaintooltip.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QStyle>
#include <QStylePainter>
#include <QToolTip>

namespace
{

constexpr int LeastLetters = 4;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::sizeHint() const
{
    const QString measured = LongText::ends(text());
    if (measured == text()) {
        return QLabel::sizeHint();
    }
    const QSize frame = size() - contentsRect().size();
    return QSize(fontMetrics().horizontalAdvance(measured), fontMetrics().height()) + frame;
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int letters = fontMetrics().averageCharWidth() * LeastLetters;
    const int frame = width() - contentsRect().width();
    return QSize(letters + frame, sizeHint().height());
}

bool ElidedLabel::isElided() const
{
    return fontMetrics().horizontalAdvance(LongText::ends(text())) > contentsRect().width();
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isElided()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           PlainToolTip::markupFor(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    const QRect room = contentsRect();
    const QString shown =
        fontMetrics().elidedText(LongText::ends(text()), Qt::ElideMiddle, room.width());
    const int flags = int(alignment()) | Qt::TextSingleLine;
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(), shown, foregroundRole());
}
