// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What everything that files can be dropped on has in common.
#include "widgets/droptarget.h"

#include <QApplication>
#include <QDropEvent>
#include <QWidget>

bool DropTarget::isBlocked(const QWidget &widget)
{
    const QWidget *const modal = QApplication::activeModalWidget();
    return modal != nullptr && modal != widget.window();
}

void DropTarget::acceptCopy(QDropEvent &event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}
