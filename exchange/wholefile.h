// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A text file that is written whole or not at all.
#pragma once

#include <QSaveFile>
#include <QString>
#include <QTextStream>

/// Writes beside the file and puts the result in its place at the end, so that a full disk or
/// the end of the program in between leaves the older file as it was. The text has the system's
/// own encoding and line ends.
class WholeFile
{
public:
    /// Begins to write. An empty name, a folder and anything else that is not an ordinary file
    /// are refused.
    explicit WholeFile(const QString &fileName);

    /// False when nothing can be written there.
    bool isOpen() const { return file.isOpen(); }

    QTextStream &stream() { return text; }

    /// Puts what was written in the place of the file. False when something of it could not be
    /// written; the older file is then still there.
    bool commit();

private:
    QSaveFile file;
    QTextStream text;
};
