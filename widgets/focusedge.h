// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// An edge that shows where the focus is.
#pragma once

class QWidget;

/// Paints an edge in the accent colour around `area` while it has the focus itself; a scrolled
/// page looks the same with and without it otherwise. The edge takes no room.
void showFocusEdge(QWidget *area);
