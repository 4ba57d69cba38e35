// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of boxes of choices, for screen readers.
#pragma once

class QComboBox;
class QString;

/// Tells screen readers that the box is called `name`. Its accessible name does not reach them:
/// the toolkit tells the current choice in its place, and the name only as that of a label that
/// stands beside the box, inside the same parent. Where no such label is seen, a hidden one does.
void setSpokenLabel(QComboBox *box, const QString &name);
