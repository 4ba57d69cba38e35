// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A list of names to choose from that shortens the chosen one only when it paints it.
#pragma once

#include <QComboBox>

/// Names of tables and fields can be longer than their place on a page. currentText() and what
/// screen readers hear stay whole; the painting leaves out the middle, and the opened list is as
/// wide as its longest line.
class ElidedComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ElidedComboBox(QWidget *parent = nullptr);

    void showPopup() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
