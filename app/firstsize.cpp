// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How large the window and its columns are when the program starts.
#include "app/firstsize.h"

namespace
{

constexpr QSize Usual(1180, 760);
constexpr QSize Largest(1600, 1000);
constexpr double ShareOfLargeScreen = 0.6;
/// What window managers add around a window.
constexpr QSize Frame(8, 40);

constexpr int UsualPanel = 220;
constexpr int NarrowPanel = 200;
constexpr int NarrowWindow = 1100;
constexpr int NarrowestWithPanel = 720;
constexpr int UsualList = 280;
constexpr int WideList = 340;
constexpr int LeastList = 200;

int panelWidth(int windowWidth)
{
    return windowWidth < NarrowWindow ? NarrowPanel : UsualPanel;
}

int listWidth(int windowWidth)
{
    if (windowWidth < NarrowWindow) {
        return qMax(LeastList, UsualList - (NarrowWindow - windowWidth) / 2);
    }
    return windowWidth > Usual.width() ? qMin(WideList, UsualList * windowWidth / Usual.width())
                                       : UsualList;
}

} // namespace

QSize FirstSize::window(const QSize &available)
{
    const QSize share = available * ShareOfLargeScreen;
    return share.boundedTo(Largest).expandedTo(Usual).boundedTo(available - Frame);
}

bool FirstSize::hasRoomForPanel(int windowWidth)
{
    return windowWidth >= NarrowestWithPanel;
}

QList<int> FirstSize::panelAndPages(int windowWidth)
{
    const int panel = panelWidth(windowWidth);
    return {panel, windowWidth - panel};
}

QList<int> FirstSize::listAndRecord(int windowWidth)
{
    const int list = listWidth(windowWidth);
    return {list, windowWidth - panelWidth(windowWidth) - list};
}
