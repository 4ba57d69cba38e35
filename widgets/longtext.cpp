// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What of a very long text has to be laid out to show it.
#include "widgets/longtext.h"

#include <QTextBoundaryFinder>

namespace
{

/// Half of a line shows fewer, on any screen.
constexpr int MostCharactersInHalfALine = 1000;

/// A word of this length takes some fifty lines.
constexpr int LongestWord = 5000;

} // namespace

QString LongText::ends(const QString &text)
{
    if (text.size() <= 2 * MostCharactersInHalfALine) {
        return text;
    }
    return text.left(MostCharactersInHalfALine) + QChar(0x2026) +
           text.right(MostCharactersInHalfALine);
}

QTextOption::WrapMode LongText::wrapMode(const QString &text)
{
    if (text.size() > LongestWord) {
        QTextBoundaryFinder places(QTextBoundaryFinder::Line, text);
        int begin = 0;
        for (int end = places.toNextBoundary(); end >= 0; end = places.toNextBoundary()) {
            if (end - begin > LongestWord) {
                return QTextOption::WrapAnywhere;
            }
            begin = end;
        }
    }
    return QTextOption::WrapAtWordBoundaryOrAnywhere;
}
