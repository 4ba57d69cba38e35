// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The outline around what belongs together on a page.
#pragma once

#include <QFrame>

/// Faintly tinted, with a thin rounded outline, both in a shade of the text's colour: a style's
/// own panel can hardly be seen in dark palettes, and loses sides at odd scale factors.
class CardFrame : public QFrame
{
    Q_OBJECT

public:
    explicit CardFrame(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
