// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How large the window and its columns are when the program starts.
#pragma once

#include <QList>
#include <QSize>

namespace FirstSize
{

/// No page is laid out wider, however wide the window is.
constexpr int WidestPage = 1000;

/// The window's size on a screen with so much room for windows: all of a small screen, three
/// fifths of a large one, within limits in which a card can be read. Never larger than the room.
QSize window(const QSize &available);

/// False for a window so narrow that a record cannot be read beside the table panel.
bool hasRoomForPanel(int windowWidth);

/// The widths of the table panel and of what stands beside it, in a window so wide.
QList<int> panelAndPages(int windowWidth);

/// The widths of the record list and of the record, in a window so wide. In narrow windows the
/// list gives way first.
QList<int> listAndRecord(int windowWidth);

} // namespace FirstSize
