// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which names may stand in a statement without quotes.
#include "model/sqlnames.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QVector>

#include <algorithm>

namespace
{

using Words = QSet<QByteArray>;

Words wordsOf(const char *text)
{
    const QList<QByteArray> list = QByteArray(text).split(' ');
    return Words(list.begin(), list.end());
}

/// The words that SQLite takes for its own where the name of a table stands. It reads all its
/// other keywords as names there.
const Words &reservedWords()
{
    static const Words words = wordsOf(
        "ADD ALL ALTER AND AS AUTOINCREMENT BETWEEN CASE CHECK COLLATE COMMIT CONSTRAINT CREATE "
        "DEFAULT DEFERRABLE DELETE DISTINCT DROP ELSE ESCAPE EXCEPT EXISTS FOREIGN FROM GROUP "
        "HAVING IF IN INDEX INSERT INTERSECT INTO IS ISNULL JOIN LIMIT NOT NOTHING NOTNULL NULL "
        "ON OR ORDER PRIMARY REFERENCES RETURNING SELECT SET TABLE THEN TO TRANSACTION UNION "
        "UNIQUE UPDATE USING VALUES WHEN WHERE");
    return words;
}

/// The further words that mean something else where a column is read: a function, or the time.
const Words &wordsOfExpressions()
{
    static const Words words = wordsOf("CAST CURRENT_DATE CURRENT_TIME CURRENT_TIMESTAMP RAISE");
    return words;
}

/// The name as SQLite compares it with its words: in capitals, but of ASCII letters only.
QByteArray asWord(const QString &name)
{
    return name.toUtf8().toUpper();
}

bool isAsciiDigit(uint character)
{
    return character >= '0' && character <= '9';
}

bool isAsciiLetter(uint character)
{
    const uint lower = character | 0x20;
    return lower >= 'a' && lower <= 'z';
}

bool isAllowedBeyondAscii(uint character)
{
    if (QChar::isSpace(character) || QChar::isNonCharacter(character)) {
        return false;
    }
    const QChar::Category category = QChar::category(character);
    return category != QChar::Other_Control && category != QChar::Other_Format;
}

bool isAllowed(uint character)
{
    if (character > 0x7f) {
        return isAllowedBeyondAscii(character);
    }
    return isAsciiLetter(character) || isAsciiDigit(character) || character == '_' ||
           character == '$';
}

constexpr ushort FullWidth = 0xfee0;
constexpr ushort FirstPrintable = 0x21;
constexpr ushort LastPrintable = 0x7e;

bool isForbiddenAscii(ushort character)
{
    return character >= FirstPrintable && character <= LastPrintable && !isAllowed(character);
}

} // namespace

namespace SqlNames
{

bool canStandUnquoted(const QString &name)
{
    // Half a surrogate pair would come out of toUcs4() as an ordinary character.
    if (name.isEmpty() || !name.isValidUtf16() || reservedWords().contains(asWord(name))) {
        return false;
    }
    const QVector<uint> characters = name.toUcs4();
    if (isAsciiDigit(characters.first()) || characters.first() == '$') {
        return false;
    }
    return std::all_of(characters.begin(), characters.end(), isAllowed);
}

QString refusal(const QString &name)
{
    if (canStandUnquoted(name)) {
        return QString();
    }
    const QByteArray utf8 = name.toUtf8();
    if (reservedWords().contains(asWord(name))) {
        return QString::asprintf("Il nome '%s' è una parola riservata.", utf8.constData());
    }
    const QVector<uint> characters = name.toUcs4();
    if (std::all_of(characters.begin(), characters.end(), isAllowed) && !name.isEmpty()) {
        return QString::asprintf("Il nome '%s' deve iniziare con una lettera.", utf8.constData());
    }
    return QString::asprintf(
        "Il nome '%s' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.",
        utf8.constData());
}

bool canBeRead(const QString &column)
{
    return canStandUnquoted(column) && !wordsOfExpressions().contains(asWord(column));
}

QString madeSafe(const QString &text)
{
    QString safe = text;
    for (QChar &character : safe) {
        if (isForbiddenAscii(character.unicode())) {
            character = QChar(ushort(character.unicode() + FullWidth));
        }
    }
    return safe;
}

QString madePlain(const QString &text)
{
    QString plain = text;
    for (QChar &character : plain) {
        const ushort code = character.unicode();
        if (code >= FullWidth && isForbiddenAscii(ushort(code - FullWidth))) {
            character = QChar(ushort(code - FullWidth));
        }
    }
    return plain;
}

} // namespace SqlNames
