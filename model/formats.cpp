// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of field formats and the look-up of their short words.
#include "model/formats.h"

#include "model/markers.h"

namespace Formats
{

const QStringList &keywords()
{
    // In the order of Kind: kindOf() turns positions of this list into kinds.
    static const QStringList all = {String, Date, Integer, Real,     Money, Image,     Pdf,
                                    Bool,   Mail, Link,    SubTable, Url,   LongString};
    return all;
}

Kind kindOf(const QString &word)
{
    const int position = keywords().indexOf(word + Markers::Format);
    return position < 0 ? Kind::Other : static_cast<Kind>(position);
}

} // namespace Formats
