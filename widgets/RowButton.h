// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A push button that is a whole row: an icon, and whatever its layout holds beside it.
#pragma once

#include <QPushButton>

/// One entry of a column of choices. Everything laid out inside is part of the button: a
/// click on it presses the button. The row of the choice in force is marked like a selected
/// line of a list.
class RowButton : public QPushButton
{
    Q_OBJECT

public:
    explicit RowButton(QWidget *parent = nullptr);

    /// Marks the row as the choice in force, or takes the mark away.
    void setCurrent(bool on);
    bool isCurrent() const { return current; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintFocus(QPainter &painter) const;
    void paintIcon(QPainter &painter) const;

    bool current = false;
};
