// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#pragma once

#include "widgets/placeholder.h"

#include <QListWidget>
#include <QStringList>

/// A list that says why it is empty, and what can be done about it, in the place where its
/// lines would stand. Screen readers hear the same as the list's description. A line that is
/// cut short tells its whole text to a pointer that rests on it.
class RecordListWidget : public QListWidget
{
    Q_OBJECT

public:
    explicit RecordListWidget(QWidget *parent = nullptr);
    ~RecordListWidget() override;

    /// Adds lines at the end. They are those of addItems(), in three quarters of the memory: a
    /// line shares its text with `texts`.
    void addLines(const QStringList &texts);

    /// What stands in the empty list: `text`, and in smaller type one line for each of
    /// `hints`, under a picture when one is given. An empty text shows nothing.
    void setPlaceholder(const QString &text, const QStringList &hints,
                        const QIcon &picture = QIcon());

    /// The whole text of the line at `index` when it does not fit, else nothing.
    QString hiddenText(const QModelIndex &index) const;

    /// Makes the line at `row` the current one. A line that was out of sight comes to the middle,
    /// where its neighbours are seen too.
    void revealRow(int row);

signals:
    /// A menu is asked for at `place` on the screen: for the line at `row`, which is the one
    /// under the mouse, or the current one when a key asks; -1 beside the lines.
    void menuRequested(int row, QPoint place);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void describePlaceholder();

    Placeholder placeholder;
};
