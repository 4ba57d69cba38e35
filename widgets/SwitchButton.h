// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A button that stays down, and shows it in light and dark palettes alike.
#pragma once

#include <QPushButton>

/// The toolkit's own styles hardly tell a checked button from the others on a dark page. This
/// one is tinted with the accent colour, faintly or, when it matters, in full.
class SwitchButton : public QPushButton
{
    Q_OBJECT

public:
    explicit SwitchButton(QWidget *parent = nullptr);

    /// With emphasis the checked button shows the full accent colour.
    void setEmphasis(bool on);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool hasEmphasis = false;
};
