// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How page widgets leave their page.
#pragma once

#include <QLayout>
#include <QWidget>

/// Takes every widget of `widgets` out of `layout` and away from the screen at once, deletes
/// it when control is back in the event loop, and empties the list. A page may be rebuilt
/// from inside a signal of one of its own widgets, so none is deleted here and now.
template<typename List>
void retireWidgets(QLayout *layout, List &widgets)
{
    const List retired = widgets;
    widgets.clear();
    for (QWidget *widget : retired) {
        layout->removeWidget(widget);
        widget->hide();
        widget->setParent(nullptr);
        widget->deleteLater();
    }
}
