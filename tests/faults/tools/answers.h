// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Answers whatever the program asks while calls fail, when nobody knows how much it will ask.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QQueue>
#include <QStringList>
#include <QTimer>

/// While it lives every message box is answered: questions with Yes, all others with OK. A file
/// dialog gets the next of the files named beforehand, and is cancelled when none is left.
class Answers : public QObject
{
public:
    Answers();

    /// The file (absolute path) that the next file dialog is answered with.
    void chooseFile(const QString &path) { files.enqueue(path); }

    /// The texts of the boxes that told of something, so of all but the questions.
    const QStringList &told() const { return texts; }

private:
    void answer();

    QTimer timer;
    QQueue<QString> files;
    QStringList texts;
    QPointer<QDialog> answered;
};
