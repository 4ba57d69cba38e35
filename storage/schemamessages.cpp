// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people read when a table cannot be made, changed or removed.
#include "storage/schemamessages.h"

namespace SchemaMessages
{

QString createFailed(const QString &table, const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile creare la tabella %s!\n%s", qUtf8Printable(table),
                             qUtf8Printable(reason));
}

QString addColumnFailed(const QString &table, const QString &field, const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile aggiungere il campo %s alla tabella %s!\n%s",
                             qUtf8Printable(field), qUtf8Printable(table), qUtf8Printable(reason));
}

QString dropFailed(const QString &table, const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile cancellare la tabella %s!\n%s",
                             qUtf8Printable(table), qUtf8Printable(reason));
}

} // namespace SchemaMessages
