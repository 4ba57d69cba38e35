// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Editors that leave the wheel to the page while they do not have the focus.
#pragma once

class QWidget;

/// People scroll long pages with the pointer anywhere on them. An editor that changes its value
/// under the passing pointer falsifies a record without anybody noticing.
namespace WheelGuard
{

/// From now on the wheel over `editor` scrolls what lies around it, unless it has the focus; the
/// wheel alone no longer gives it the focus. For an area that scrolls itself, `target` is its
/// viewport, which is where wheel events arrive.
void protect(QWidget *editor, QWidget *target = nullptr);

} // namespace WheelGuard
