// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people read when a record cannot be written.
#include "storage/recordmessages.h"

namespace RecordMessages
{

QString insertFailed(const QString &table, const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile aggiungere un elemento alla tabella %s!\n%s",
                             qUtf8Printable(table), qUtf8Printable(reason));
}

QString updateFailed(const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile aggiornare il Record!\n%s",
                             qUtf8Printable(reason));
}

QString deleteFailed(const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile cancellare il record!\n%s",
                             qUtf8Printable(reason));
}

} // namespace RecordMessages
