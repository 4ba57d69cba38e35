// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What everything that files can be dropped on has in common.
#pragma once

class QDropEvent;
class QWidget;

namespace DropTarget
{

/// True while a dialog blocks the window of `widget`: drags reach it all the same, unlike keys and
/// clicks.
bool isBlocked(const QWidget &widget);

/// Takes what is dropped, or dragged over, as a copy: whoever drags might delete a moved file.
void acceptCopy(QDropEvent &event);

} // namespace DropTarget
