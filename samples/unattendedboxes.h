// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Message boxes of a program that nobody sits in front of.
#pragma once

#include <QObject>
#include <QString>

#include <functional>

/// While it lives, every message box is passed on as text and closed at once, so that a program
/// run from a script never waits for somebody to press a button.
class UnattendedBoxes : public QObject
{
    Q_OBJECT

public:
    using Report = std::function<void(const QString &text)>;

    /// `report` is given the text of each box. The application must exist and outlive this.
    explicit UnattendedBoxes(Report report);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Report report;
};
