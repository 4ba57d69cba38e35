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

    /// Adds lines at the end. They are those of addItems(), in three quarters of the memory: a
    /// line shares its text with `texts`.
    void addLines(const QStringList &texts);

    /// What stands in the empty list: `text`, and in smaller type one line for each of
    /// `hints`. An empty text shows nothing.
    void setPlaceholder(const QString &text, const QStringList &hints);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void describePlaceholder();
    void paintPlaceholder();

    QString placeholderText;
    QStringList placeholderHints;
};
