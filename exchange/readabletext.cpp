// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Records as text for people to read.
#include "exchange/readabletext.h"

#include "model/names.h"

namespace ReadableText
{

QString missingText()
{
    return QStringLiteral("---");
}

Writer::Writer(QTextStream &stream, const QStringList &columns)
    : stream(stream)
{
    for (const QString &column : columns) {
        labels.append(Names::fieldLabel(column));
    }
}

void Writer::addLine(const QString &value)
{
    stream << labels.at(next) << '=' << value << '\n';
    ++next;
}

void Writer::addCell(const QString &value)
{
    line += labels.at(next);
    line += QLatin1Char(';');
    line += value;
    line += QLatin1Char(';');
    ++next;
}

void Writer::endRecord()
{
    line += QLatin1Char('\n');
    stream << line;
    line.resize(0);
    next = 0;
}

} // namespace ReadableText
