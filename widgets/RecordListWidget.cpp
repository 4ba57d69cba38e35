// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#include "widgets/RecordListWidget.h"

#include "widgets/longtext.h"
#include "widgets/plaintooltip.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace
{

/// A line that holds nothing but its text. The toolkit's own keeps a list of whatever may be
/// known of it, even if that is a text only.
class Line : public QListWidgetItem
{
public:
    explicit Line(const QString &text)
        : ownText(text)
    {
    }
    QListWidgetItem *clone() const override { return new Line(*this); }
    QVariant data(int role) const override
    {
        return isText(role) ? QVariant(ownText) : QListWidgetItem::data(role);
    }
    void setData(int role, const QVariant &value) override
    {
        if (isText(role)) {
            ownText = value.toString();
        }
        // Tells the list of the change.
        QListWidgetItem::setData(role, value);
    }

private:
    static bool isText(int role) { return role == Qt::DisplayRole || role == Qt::EditRole; }

    QString ownText;
};

/// Paints and measures of a very long line only as much as can be seen.
class LinePainter : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &locale) const override
    {
        return QStyledItemDelegate::displayText(LongText::ends(value.toString()), locale);
    }
};

/// Emits a signal about `lines` lines from `first` on, as the model itself does for one. False when
/// the model has no such signal.
bool tellOf(QAbstractItemModel &model, const char *signal, int first, int lines)
{
    return QMetaObject::invokeMethod(&model, signal, Qt::DirectConnection,
                                     Q_ARG(QModelIndex, QModelIndex()), Q_ARG(int, first),
                                     Q_ARG(int, first + lines - 1));
}

} // namespace

RecordListWidget::RecordListWidget(QWidget *parent)
    : QListWidget(parent)
{
    setItemDelegate(new LinePainter(this));
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

void RecordListWidget::addLines(const QStringList &texts)
{
    if (texts.isEmpty()) {
        return;
    }
    const int first = count();
    if (!tellOf(*model(), "rowsAboutToBeInserted", first, texts.size())) {
        // Another release of the toolkit: its own way takes more memory, and is always right.
        addItems(texts);
        return;
    }
    {
        // Otherwise each line would be told of for itself.
        const QSignalBlocker quiet(model());
        for (const QString &text : texts) {
            addItem(new Line(text));
        }
    }
    tellOf(*model(), "rowsInserted", first, texts.size());
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

void RecordListWidget::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        emit menuRequested(indexAt(event->pos()).row(), event->globalPos());
        return;
    }
    const QRect line = visualRect(currentIndex()).intersected(viewport()->rect());
    const QPoint place = line.isEmpty() ? QPoint(0, 0) : QPoint(line.center().x(), line.bottom());
    emit menuRequested(currentRow(), viewport()->mapToGlobal(place));
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
