// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Value texts: how stored texts become numbers, dates and shown texts.
#pragma once

#include "model/latin1.h"

#include <QDate>
#include <QString>
#include <QVariant>

namespace Values
{

/// Yes and no as they are stored.
constexpr QLatin1String YesText = Latin1::text("TRUE");
constexpr QLatin1String NoText = Latin1::text("FALSE");

/// An amount as people read it: two decimals, a point, the euro sign ("3.00€"). Text that
/// is no number, "nan" and "inf" among it, reads as zero.
QString moneyText(const QVariant &value);

/// `value` with two decimals and a point, without a sign ("3.00").
QString twoDecimals(double value);

/// `value` with six decimals and a point, as real columns are stored.
QString sixDecimals(double value);

/// The number that a stored value holds; 0 for text that is none, and for "nan" and "inf", which
/// the toolkit reads as numbers and people do not.
double finiteNumber(const QVariant &value);

/// Yes or no as the record view reads it: everything but "", "0" and "false" (any letter
/// case) is yes.
bool isYes(const QVariant &value);

/// The date in a text of the form "dd/MM/yyyy"; invalid for any other text.
QDate date(const QString &text);

/// The text of a date in the form "dd/MM/yyyy", empty for an invalid one.
QString dateText(const QDate &date);

/// A number as people type it ("1 234,5", "1234.5"): blanks are left out and commas read as
/// points. Sets *ok, which must be given, to whether the text is a finite number; the result is
/// 0 when it is not.
double typedNumber(const QString &text, bool *ok);

/// The whole part of a stored number ("12", "12.000000"), for Ids in reference columns; 0
/// for a text that is none or does not fit.
int wholePart(const QVariant &value);

/// The number that a stored value holds; 0 for text that is none, "nan" and "inf" among it.
double number(const QVariant &value);

/// The whole number at the beginning of "12", "12.000000" or "12 Rossi"; 0 for any other text.
int leadingWhole(const QString &text);

/// A record's stored Id; 0, which no record of ours has, for one that does not fit.
int recordId(const QVariant &stored);

/// The Id that a new record's text asks for; 0, which lets the program choose, for anything that
/// cannot be one.
int wishedId(const QString &text);

/// The text given as the Id of a new row of "settings" or "filters": one character, whose code is
/// (rows + 1) modulo 256. No row ever gets this Id; adding a row chooses its own.
QString oneCharacterId(int rows);

/// The integer part of done / total x 100, cut, not rounded; 0 when total is below 1.
int percent(int done, int total);

/// `text` as a database gives it back after a statement: cut at a NUL character, halves of
/// surrogate pairs as "?", U+FFFE and U+FFFF as the replacement character.
QString asStored(QString text);

/// `text` with every single quote doubled, ready to stand inside a quoted SQL value.
QString quotesDoubled(QString text);

} // namespace Values
