// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The inside of a panel of buttons, with a word of its own while there is none.
#pragma once

#include "widgets/placeholder.h"

#include <QWidget>

/// Shows a placeholder for as long as no widget is laid out in it. Screen readers hear it as
/// the panel's description.
class PanelContents : public QWidget
{
    Q_OBJECT

public:
    explicit PanelContents(QWidget *parent = nullptr);

    /// What stands in the empty panel.
    void setPlaceholder(const Placeholder &shown);

    /// True while the panel holds no widget.
    bool isEmpty() const;

protected:
    void childEvent(QChildEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void describePlaceholder();

    Placeholder placeholder;
};
