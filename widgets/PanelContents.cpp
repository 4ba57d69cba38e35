// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The inside of a panel of buttons, with a word of its own while there is none.
#include "widgets/PanelContents.h"

#include <QChildEvent>

#include <algorithm>

PanelContents::PanelContents(QWidget *parent)
    : QWidget(parent)
{
}

void PanelContents::setPlaceholder(const Placeholder &shown)
{
    placeholder = shown;
    describePlaceholder();
    update();
}

bool PanelContents::isEmpty() const
{
    const QObjectList &held = children();
    return std::none_of(held.begin(), held.end(),
                        [](const QObject *child) { return child->isWidgetType(); });
}

void PanelContents::describePlaceholder()
{
    const QString description = isEmpty() ? placeholder.description() : QString();
    if (description != accessibleDescription()) {
        setAccessibleDescription(description);
    }
}

void PanelContents::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    describePlaceholder();
    update();
}

void PanelContents::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (isEmpty()) {
        placeholder.paint(this, rect());
    }
}
