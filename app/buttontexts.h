// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A button's text and tool tip in one line.
#pragma once

#include <QPushButton>

/// Sets both from UTF-8.
inline void setButtonTexts(QPushButton *button, const char *text, const char *toolTip)
{
    button->setText(QString::fromUtf8(text));
    button->setToolTip(QString::fromUtf8(toolTip));
}
