// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A menu of what the buttons of a field do.
#pragma once

#include <QList>
#include <QPoint>

class QLineEdit;
class QPushButton;

namespace ButtonMenu
{

/// Shows a menu at `place` on the screen with an entry for each of `buttons` that is shown, in
/// front of the entries of `line`, when there is one. The chosen button is pressed when the
/// menu is gone. False, with nothing shown, when none of the buttons is.
bool exec(const QPoint &place, const QList<QPushButton *> &buttons, QLineEdit *line = nullptr);

} // namespace ButtonMenu
