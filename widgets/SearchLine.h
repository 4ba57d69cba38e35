// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A line for a text that is searched for.
#pragma once

#include <QIcon>
#include <QLineEdit>

class QAction;

/// Carries a magnifier, and a button that empties the line. While nothing matches the text,
/// the magnifier is crossed out and the text pales.
class SearchLine : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchLine(QWidget *parent = nullptr);

    /// Shows that nothing matches, and tells those who hear the window with `description`; an
    /// empty one shows the line as usual.
    void setNoMatch(const QString &description);

    /// True while it is shown that nothing matches.
    bool hasNoMatch() const { return noMatch; }

    /// The picture at the line's start.
    QIcon sign() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void showState();

    QAction *magnifier;
    bool noMatch = false;
};
