// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#include "widgets/RecordListWidget.h"

#include "widgets/plaintooltip.h"

#include <QHelpEvent>
#include <QToolTip>

RecordListWidget::RecordListWidget(QWidget *parent)
    : QListWidget(parent)
{
    const auto describe = [this]() { describePlaceholder(); };
    connect(model(), &QAbstractItemModel::rowsInserted, this, describe);
    connect(model(), &QAbstractItemModel::rowsRemoved, this, describe);
    connect(model(), &QAbstractItemModel::modelReset, this, describe);
}

RecordListWidget::~RecordListWidget()
{
    // The base class takes the lines away when the members here are gone already.
    disconnect(model(), nullptr, this, nullptr);
}

void RecordListWidget::setPlaceholder(const QString &text, const QStringList &hints,
                                      const QIcon &picture)
{
    placeholder = {picture, text, hints};
    describePlaceholder();
    viewport()->update();
}

QString RecordListWidget::hiddenText(const QModelIndex &index) const
{
    const bool fits = sizeHintForIndex(index).width() <= viewport()->width();
    return fits ? QString() : index.data().toString();
}

void RecordListWidget::revealRow(int row)
{
    const bool wasSeen = viewport()->rect().contains(visualItemRect(item(row)));
    setCurrentRow(row);
    if (!wasSeen) {
        scrollToItem(currentItem(), PositionAtCenter);
    }
}

void RecordListWidget::describePlaceholder()
{
    const QString description = count() == 0 ? placeholder.description() : QString();
    if (description != accessibleDescription()) {
        setAccessibleDescription(description);
    }
}

void RecordListWidget::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() == 0 && !placeholder.text.isEmpty()) {
        placeholder.paint(viewport(), viewport()->rect());
    }
}

bool RecordListWidget::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QListWidget::viewportEvent(event);
    }
    const auto *const help = static_cast<QHelpEvent *>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString hidden = index.isValid() ? hiddenText(index) : QString();
    if (hidden.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(help->globalPos(), PlainToolTip::markupFor(hidden), viewport(),
                           visualRect(index));
    }
    return true;
}
