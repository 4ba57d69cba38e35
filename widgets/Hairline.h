// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The thin line between two fields or two entries.
#pragma once

#include <QFrame>

/// One pixel high, in a faint shade of the text's colour, so that it fits light and dark
/// palettes alike.
class Hairline : public QFrame
{
    Q_OBJECT

public:
    explicit Hairline(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
