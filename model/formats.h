// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The thirteen field formats, their order and their short words.
#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringList>

namespace Formats
{

constexpr QLatin1String String("STRINGFORMAT");
constexpr QLatin1String Date("DATEFORMAT");
constexpr QLatin1String Integer("INTEGERFORMAT");
constexpr QLatin1String Real("REALFORMAT");
constexpr QLatin1String Money("MONEYFORMAT");
constexpr QLatin1String Image("IMAGEFORMAT");
constexpr QLatin1String Pdf("PDFFORMAT");
constexpr QLatin1String Bool("BOOLFORMAT");
constexpr QLatin1String Mail("MAILFORMAT");
constexpr QLatin1String Link("LINKFORMAT");
constexpr QLatin1String SubTable("SUBTABLEFORMAT");
constexpr QLatin1String Url("URLFORMAT");
constexpr QLatin1String LongString("LONGSTRINGFORMAT");

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
