// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How much of a file is taken for one line.
#pragma once

#include <QString>
#include <QTextStream>

namespace LineLimit
{

/// No line of the program's own files comes near this; without a limit a file without line ends
/// would fill the memory.
/// In bytes.
constexpr int LongestLine = 64 * 1024 * 1024;

/// True when the line is not longer than that in the file.
inline bool fits(const QString &line)
{
    // A character takes four bytes at most, so short lines need no count.
    return line.size() <= LongestLine / 4 ||
           (line.size() <= LongestLine && line.toLocal8Bit().size() <= LongestLine);
}

/// Reads the next line. One that is longer than `longest` comes out one character longer than
/// that, and the rest of it is left.
inline bool read(QTextStream &stream, QString *line, int longest = LongestLine)
{
    return stream.readLineInto(line, longest + 1);
}

} // namespace LineLimit
