// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A label on one line that shortens its text only when it paints it.
#pragma once

#include <QLabel>

/// Names can be longer than their column. text() and what screen readers hear stay whole;
/// only the painting leaves out the middle, because the ends tell similar names apart. A text
/// that does not fit is told whole to a pointer that rests on it, unless the label has a tool
/// tip of its own.
/// Deliberately shows plain text only.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /// The width of the text, or of as much as could be seen of a very long one.
    QSize sizeHint() const override;

    /// The width of a few letters: the label gives way to whatever stands beside it.
    QSize minimumSizeHint() const override;

    /// True while a part of the text is left out.
    bool isElided() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
