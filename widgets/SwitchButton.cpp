// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A button that stays down, and shows it in light and dark palettes alike.
#include "widgets/SwitchButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace
{

constexpr double FaintShare = 0.25;

QColor mixed(const QColor &ground, const QColor &accent, double share)
{
    const auto part = [share](double of, double with) { return of + (with - of) * share; };
    return QColor::fromRgbF(part(ground.redF(), accent.redF()),
                            part(ground.greenF(), accent.greenF()),
                            part(ground.blueF(), accent.blueF()));
}

} // namespace

SwitchButton::SwitchButton(QWidget *parent)
    : QPushButton(parent)
{
    setCheckable(true);
}

void SwitchButton::setEmphasis(bool on)
{
    hasEmphasis = on;
    update();
}

void SwitchButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    if (isChecked()) {
        const QColor accent = palette().color(QPalette::Highlight);
        const QColor ground = palette().color(QPalette::Button);
        option.palette.setColor(QPalette::Button,
                                hasEmphasis ? accent : mixed(ground, accent, FaintShare));
        if (hasEmphasis) {
            option.palette.setColor(QPalette::ButtonText,
                                    palette().color(QPalette::HighlightedText));
        }
    }
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}
