// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The thirteen field formats, their order and their short words.
#pragma once

#include "model/latin1.h"

#include <QString>
#include <QStringList>

namespace Formats
{

constexpr QLatin1String String = Latin1::text("STRINGFORMAT");
constexpr QLatin1String Date = Latin1::text("DATEFORMAT");
constexpr QLatin1String Integer = Latin1::text("INTEGERFORMAT");
constexpr QLatin1String Real = Latin1::text("REALFORMAT");
constexpr QLatin1String Money = Latin1::text("MONEYFORMAT");
constexpr QLatin1String Image = Latin1::text("IMAGEFORMAT");
constexpr QLatin1String Pdf = Latin1::text("PDFFORMAT");
constexpr QLatin1String Bool = Latin1::text("BOOLFORMAT");
constexpr QLatin1String Mail = Latin1::text("MAILFORMAT");
constexpr QLatin1String Link = Latin1::text("LINKFORMAT");
constexpr QLatin1String SubTable = Latin1::text("SUBTABLEFORMAT");
constexpr QLatin1String Url = Latin1::text("URLFORMAT");
constexpr QLatin1String LongString = Latin1::text("LONGSTRINGFORMAT");

/// What a format word means; Other is any word that is none of the thirteen.
enum class Kind {
    String,
    Date,
    Integer,
    Real,
    Money,
    Image,
    Pdf,
    Bool,
    Mail,
    Link,
    SubTable,
    Url,
    LongString,
    Other
};

/// The thirteen keywords in the program's order.
const QStringList &keywords();

/// The kind of a short word such as "STRING" or "SUBTABLE", compared exactly.
Kind kindOf(const QString &word);

} // namespace Formats
