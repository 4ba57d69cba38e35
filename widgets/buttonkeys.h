// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Keys that press buttons.
#pragma once

#include <QKeySequence>

#include <functional>

class QPushButton;

/// Lets `key` press the button, at once, whenever the button can be seen and pressed and its
/// window is the active one. The key is the button's shortcut(); setText() drops it. `before`,
/// when given, is called first, for the key only.
void setButtonKey(QPushButton *button, const QKeySequence &key,
                  const std::function<void()> &before = {});
