// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Editors that take dragged texts, but no dragged files.
#pragma once

class QWidget;

/// Lets files that are dragged over `target`, a line or the viewport of a longer editor, pass to
/// the widget behind it: in a text, nobody wants the path. Texts and web addresses are taken as
/// before.
void letFilesPass(QWidget *target);
