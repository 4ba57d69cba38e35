// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What of a very long text has to be laid out to show it.
#pragma once

#include <QString>
#include <QTextOption>

/// The toolkit lays out a text whole whenever it measures or paints it, however little of it can
/// be seen, and breaks a word that is longer than its line in a time that grows with the square
/// of the word's length. Databases hold pictures as text, pasted files and other words of a
/// million characters, and a page that shows one must still come at once.
namespace LongText
{

/// What one line can show of `text` when its middle is left out: the text itself, or of one that
/// is longer than any line its beginning and its end. For measuring and painting only.
QString ends(const QString &text);

/// How to wrap `text`: between its words, or anywhere where one of them fills pages.
QTextOption::WrapMode wrapMode(const QString &text);

} // namespace LongText
