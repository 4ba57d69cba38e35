// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which names may stand in a statement without quotes.
#include "model/sqlnames.h"

#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"

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

/// True for names that SQLite keeps for itself although they could stand in a statement.
bool isInternal(const QString &name)
{
    return name.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive);
}

constexpr int LongestTableName = 100;
constexpr int LongestLabel = 200;

// The templates name what was typed.
QString tooLong(const QString &typed)
{
    return QString::asprintf("Il nome '%s' è troppo lungo.", qUtf8Printable(typed));
}

QString reservedWord(const QString &typed)
{
    return QString::asprintf("Il nome '%s' è una parola riservata.", qUtf8Printable(typed));
}

QString notALetterInFront(const QString &typed)
{
    return QString::asprintf("Il nome '%s' deve iniziare con una lettera.", qUtf8Printable(typed));
}

QString forbiddenCharacters(const QString &typed)
{
    return QString::asprintf(
        "Il nome '%s' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.",
        qUtf8Printable(typed));
}

bool holdsOnlyAllowed(const QString &name)
{
    // Half a surrogate pair would come out of toUcs4() as an ordinary character.
    if (!name.isValidUtf16()) {
        return false;
    }
    const QVector<uint> characters = name.toUcs4();
    return std::all_of(characters.begin(), characters.end(), isAllowed);
}

/// The name with its ASCII letters in capitals, as the marks are. Letters beyond ASCII make none.
QString inCapitals(QString name)
{
    for (QChar &character : name) {
        if (character >= QLatin1Char('a') && character <= QLatin1Char('z')) {
            character = character.toUpper();
        }
    }
    return name;
}

/// True when a name holds a format's keyword in any letter case: records are shown by the words
/// that a column's name holds, whatever their case, and the name of a link's column holds its
/// table's name.
bool holdsKeyword(const QString &name)
{
    const QString capitals = inCapitals(name);
    const QStringList &keywords = Formats::keywords();
    return std::any_of(keywords.begin(), keywords.end(),
                       [&capitals](const QString &keyword) { return capitals.contains(keyword); });
}

/// True when a name holds a mark, or would complete one where it is joined to others.
bool holdsMarker(const QString &name)
{
    const QString joined = QLatin1Char('_') + name + QLatin1Char('_');
    const QLatin1String markers[] = {
        Markers::SubTable,  Markers::SubTableUser, Markers::SubTableConfig, Markers::SavedFilter,
        Markers::Reference, Markers::Duplicate,    Markers::ShownArrow};
    const auto isInside = [&joined](const auto &marker) { return joined.contains(marker); };
    return std::any_of(std::begin(markers), std::end(markers), isInside) || holdsKeyword(name);
}

/// As holdsMarker(), but in any letter case.
bool holdsMarkerInAnyCase(const QString &label)
{
    const QString capitals = inCapitals(label);
    return holdsMarker(capitals) || (capitals + QLatin1Char('_')).contains(Markers::HiddenTable);
}

/// True when the label would have the field's values written in another way than its format
/// asks for.
bool changesWriting(const QString &label, const QString &format)
{
    if (format == Formats::Integer) {
        return false;
    }
    return label.contains(Markers::IntegerWord) ||
           (format != Formats::Real && label.contains(Markers::RealWord));
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

bool isReservedWord(const QString &name)
{
    return reservedWords().contains(asWord(name));
}

bool canStandUnquoted(const QString &name)
{
    if (name.isEmpty() || isReservedWord(name)) {
        return false;
    }
    const ushort first = name.at(0).unicode();
    return !isAsciiDigit(first) && first != '$' && holdsOnlyAllowed(name);
}

QString refusal(const QString &name)
{
    if (canStandUnquoted(name)) {
        return QString();
    }
    if (isReservedWord(name)) {
        return reservedWord(name);
    }
    return holdsOnlyAllowed(name) && !name.isEmpty() ? notALetterInFront(name)
                                                     : forbiddenCharacters(name);
}

QString tableRefusal(const QString &typed, const QString &stored)
{
    if (typed.toUtf8().size() > LongestTableName) {
        return tooLong(typed);
    }
    if (holdsMarker(stored) || isNameOfReservedTable(stored)) {
        return programsWord(typed);
    }
    if (!holdsOnlyAllowed(stored) || stored.isEmpty()) {
        return forbiddenCharacters(typed);
    }
    if (isInternal(stored) || isReservedWord(stored)) {
        return reservedWord(typed);
    }
    return canStandUnquoted(stored) ? QString() : notALetterInFront(typed);
}

QString labelRefusal(const QString &typed, const QString &format)
{
    const QString label = withoutBlanks(typed);
    if (label.isEmpty()) {
        return missingName();
    }
    if (typed.toUtf8().size() > LongestLabel) {
        return tooLong(typed);
    }
    if (holdsMarkerInAnyCase(label) || changesWriting(label, format) ||
        Columns::isSystemLabel(label.section(Markers::FormatEnd, 0, 0))) {
        return programsWord(typed);
    }
    return holdsOnlyAllowed(label) ? QString() : forbiddenCharacters(typed);
}

QString derivedRefusal(const QString &source, const QString &column)
{
    if (!canStandUnquoted(column)) {
        return forbiddenCharacters(source);
    }
    const bool isLink = column.contains(Formats::Link) && !Columns::isReference(column);
    if (!isLink) {
        return QString();
    }
    const QString label = column.mid(column.indexOf(Formats::Link) + Formats::Link.size());
    return changesWriting(label, Formats::Link) || holdsKeyword(label) ? programsWord(source)
                                                                       : QString();
}

QString programsWord(const QString &typed)
{
    return QString::asprintf("Il nome '%s' contiene una parola riservata al programma.",
                             qUtf8Printable(typed));
}

QString missingName()
{
    return QStringLiteral("Una riga non ha nome.");
}

QString taken(const QString &typed)
{
    return QString::asprintf("Il nome '%s' è già stato usato.", qUtf8Printable(typed));
}

QString withoutBlanks(QString text)
{
    return text.replace(QLatin1Char(' '), QLatin1Char('_'));
}

bool isSameName(const QString &name, const QString &other)
{
    return asWord(name) == asWord(other);
}

bool isNameOfReservedTable(const QString &stored)
{
    QString plain = stored;
    plain.remove(Markers::HiddenTable);
    return isSameName(plain, Markers::SettingsTable) || isSameName(plain, Markers::FiltersTable) ||
           isSameName(plain, Markers::SubTablesConfigsTable);
}

bool canBeRead(const QString &column)
{
    return canStandUnquoted(column) && !wordsOfExpressions().contains(asWord(column));
}

QString madeSafe(const QString &text)
{
    QString safe;
    safe.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        const bool isPair =
            character.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair) {
            ++i;
            if (isAllowed(QChar::surrogateToUcs4(character, text.at(i)))) {
                safe += character;
                safe += text.at(i);
            }
        } else if (character.isSpace()) {
            safe += QLatin1Char('_');
        } else if (isForbiddenAscii(character.unicode())) {
            safe += QChar(ushort(character.unicode() + FullWidth));
        } else if (!character.isSurrogate() && isAllowed(character.unicode())) {
            safe += character;
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
