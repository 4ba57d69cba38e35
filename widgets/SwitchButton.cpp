// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A button that stays down, and shows it in light and dark palettes alike.
#include "widgets/SwitchButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace
{

constexpr double FaintShare = 0.25;
constexpr int StrongerPercent = 120;

QColor mixed(const QColor &ground, const QColor &accent, double share)
{
    const auto part = [share](double of, double with) { return of + (with - of) * share; };
    return QColor::fromRgbF(part(ground.redF(), accent.redF()),
                            part(ground.greenF(), accent.greenF()),
                            part(ground.blueF(), accent.blueF()));
}

/// The accent further away from the colour of its text: styles pale what they paint a button
/// with, and a thin sign would no longer stand out from it.
QColor strengthened(const QColor &accent, const QColor &text)
{
    return text.lightness() > accent.lightness() ? accent.darker(StrongerPercent)
                                                 : accent.lighter(StrongerPercent);
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
        if (hasEmphasis) {
            const QColor text = palette().color(QPalette::HighlightedText);
            option.palette.setColor(QPalette::Button, strengthened(accent, text));
            option.palette.setColor(QPalette::ButtonText, text);
        } else {
            const QColor ground = palette().color(QPalette::Button);
            option.palette.setColor(QPalette::Button, mixed(ground, accent, FaintShare));
        }
    }
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}
