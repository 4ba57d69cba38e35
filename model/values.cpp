// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How stored texts become numbers, dates and shown texts.
#include "model/values.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace
{

constexpr ushort FirstNonCharacter = 0xfffe;

const QString &datePattern()
{
    static const QString pattern = QStringLiteral("dd/MM/yyyy");
    return pattern;
}

/// The two digits at `position`; -1 where other characters stand.
int twoDigits(const QString &text, int position)
{
    const int tens = text.at(position).unicode() - '0';
    const int ones = text.at(position + 1).unicode() - '0';
    const bool areDigits = tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9;
    return areDigits ? tens * 10 + ones : -1;
}

} // namespace

namespace Values
{

QString moneyText(const QVariant &value)
{
    return QString::asprintf("%.2f%s", number(value), u8"€");
}

double finiteNumber(const QVariant &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber && qIsFinite(number) ? number : 0.0;
}

QString twoDecimals(double value)
{
    return QString::asprintf("%.2f", value);
}

QString sixDecimals(double value)
{
    return QString::asprintf("%f", value);
}

bool isYes(const QVariant &value)
{
    return value.toBool();
}

QDate date(const QString &text)
{
    constexpr int Length = 10;
    if (text.size() != Length) {
        return {};
    }
    const QLatin1Char slash('/');
    const int day = twoDigits(text, 0);
    const int month = twoDigits(text, 3);
    const int century = twoDigits(text, 6);
    const int year = twoDigits(text, 8);
    if (text.at(2) == slash && text.at(5) == slash && qMin(day, month) >= 0 &&
        qMin(century, year) >= 0) {
        // A walk over a table reads a date per record, and the toolkit's parser takes some forty
        // times as long.
        return {century * 100 + year, month, day};
    }
    return QDate::fromString(text, datePattern());
}

QString dateText(const QDate &date)
{
    // The C locale: stored dates keep plain digits whatever the system's language.
    return QLocale::c().toString(date, datePattern());
}

double typedNumber(const QString &text, bool *ok)
{
    QString plain = text;
    plain.remove(QLatin1Char(' ')).replace(QLatin1Char(','), QLatin1Char('.'));
    const double number = plain.toDouble(ok);
    *ok = *ok && qIsFinite(number);
    return *ok ? number : 0.0;
}

int wholePart(const QVariant &value)
{
    const double whole = std::trunc(number(value));
    const bool fits =
        whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(whole) : 0;
}

double number(const QVariant &value)
{
    bool isNumber = false;
    const double read = value.toDouble(&isNumber);
    // Qt reads "nan" and "inf" as numbers, people do not.
    return isNumber && qIsFinite(read) ? read : 0.0;
}

int leadingWhole(const QString &text)
{
    return wholePart(text.trimmed().section(QLatin1Char(' '), 0, 0));
}

int recordId(const QVariant &stored)
{
    const qint64 id = stored.toLongLong();
    return id == int(id) ? int(id) : 0;
}

int wishedId(const QString &text)
{
    return qMax(text.toInt(), 0);
}

QString oneCharacterId(int rows)
{
    return QString(QChar(ushort((rows + 1) % 256)));
}

int percent(int done, int total)
{
    if (total < 1) {
        return 0;
    }
    // Deliberate: divided first and cut, not rounded, so 29 of 100 reads 28.
    const double part = static_cast<double>(done) / total * 100;
    return static_cast<int>(
        qBound<double>(std::numeric_limits<int>::min(), part, std::numeric_limits<int>::max()));
}

QString asStored(QString text)
{
    text = text.section(QChar(0), 0, 0);
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (character.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (character.isSurrogate()) {
            text[i] = QLatin1Char('?');
        } else if (character.unicode() >= FirstNonCharacter) {
            text[i] = QChar::ReplacementCharacter;
        }
    }
    return text;
}

QString quotesDoubled(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("''"));
}

} // namespace Values
