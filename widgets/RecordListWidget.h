// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#pragma once

#include <QListWidget>
#include <QStringList>

/// A list that says why it is empty, and what can be done about it, in the place where its
/// lines would stand. Screen readers hear the same as the list's description.
class RecordListWidget : public QListWidget
{
    Q_OBJECT

public:
    explicit RecordListWidget(QWidget *parent = nullptr);
    ~RecordListWidget() override;

    /// What stands in the empty list: `text`, and in smaller type one line for each of
    /// `hints`. An empty text shows nothing.
    void setPlaceholder(const QString &text, const QStringList &hints);

signals:
    /// A menu is asked for at `place` on the screen: for the line at `row`, which is the one
    /// under the mouse, or the current one when a key asks; -1 beside the lines.
    void menuRequested(int row, QPoint place);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void describePlaceholder();
    void paintPlaceholder();

    QString placeholderText;
    QStringList placeholderHints;
};
