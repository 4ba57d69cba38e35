// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A list of names to choose from that shortens the chosen one only when it paints it.
#include "widgets/ElidedComboBox.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace
{

constexpr int RoomForScrollBar = 32;

} // namespace

ElidedComboBox::ElidedComboBox(QWidget *parent)
    : QComboBox(parent)
{
}

void ElidedComboBox::showPopup()
{
    const int longest = view()->sizeHintForColumn(0) + RoomForScrollBar;
    view()->setMinimumWidth(qMin(longest, screen()->availableSize().width() / 2));
    QComboBox::showPopup();
}

void ElidedComboBox::paintEvent(QPaintEvent *)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText =
        option.fontMetrics.elidedText(option.currentText, Qt::ElideMiddle, field.width() - 2);
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
