// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: adding records and writing fields of existing ones.
#include "app/Tavenor.h"

#include "model/attachments.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/values.h"
#include "storage/recordmessages.h"
#include "ui_Tavenor.h"

#include <algorithm>

namespace
{

// What a new record is told apart by: its first field that is not the Id.
FieldPair identifier(const FieldPairs &fields)
{
    const auto found = std::find_if(fields.begin(), fields.end(), [](const FieldPair &pair) {
        return pair.first != Markers::IdColumn;
    });
    return found == fields.end() ? FieldPair() : *found;
}

// The Id asked for; 0, which lets the program choose, for anything that cannot be one.
int wishedId(const FieldPairs &fields)
{
    for (const FieldPair &pair : fields) {
        if (pair.first == Markers::IdColumn) {
            return Values::wishedId(pair.second);
        }
    }
    return 0;
}

} // namespace

int Tavenor::addRecord(const QString &table, const FieldPairs &fields, bool keepId)
{
    if (fields.isEmpty() || !mayBeAdded(table, fields, keepId)) {
        return -1;
    }
    const int wished = wishedId(fields);
    FieldPairs values = fields;
    if (values.first().first == Markers::IdColumn) {
        values.removeFirst();
    }
    const bool takesOwnPath = keepId && values.value(0).first == Markers::UserPathColumn;
    QString error;
    for (FieldPair &pair : values) {
        if (pair.first == Markers::UserPathColumn && !takesOwnPath) {
            pair.second = userPathFor(table, values.first(), &error);
        }
    }
    if (!error.isEmpty()) {
        warn(RecordMessages::insertFailed(table, error));
        return -1;
    }

    const int quietId = db->insertWhole(table, keepId, wished, values);
    if (quietId > 0) {
        return quietId;
    }
    // Again in small steps, each of which tells what is wrong; what can be written is kept.
    const int newId = db->insertRecord(table, keepId, wished);
    if (newId > 0) {
        for (const FieldPair &pair : qAsConst(values)) {
            db->updateField(table, newId, pair.first, pair.second);
        }
    }
    return newId;
}

bool Tavenor::recordExists(const QString &table, const FieldPairs &fields, bool keepId,
                           QString *error) const
{
    const int wished = wishedId(fields);
    return keepId ? wished > 0 && db->idExists(table, wished, error)
                  : db->titleExists(table, identifier(fields).second, error);
}

bool Tavenor::mayBeAdded(const QString &table, const FieldPairs &fields, bool keepId)
{
    QString error;
    const bool taken = recordExists(table, fields, keepId, &error);
    if (!error.isEmpty()) {
        // Two records of one name would be there, if this one has it too.
        warn(RecordMessages::insertFailed(table, error));
        return false;
    }
    if (taken && reportInsertErrors) {
        const QString identity =
            keepId ? QString::number(wishedId(fields)) : identifier(fields).second;
        warn(QString::asprintf("ERRORE: L'identificativo '%s' esiste già nella tabella %s.\n",
                               identity.toUtf8().constData(),
                               Names::tableDisplayName(table).toUtf8().constData()));
    }
    return !taken;
}

QString Tavenor::userPathFor(const QString &table, const FieldPair &title, QString *error) const
{
    if (!Columns::isReference(title.first)) {
        return Attachments::recordFolder(table, title.second);
    }
    const Columns::Reference reference = Columns::reference(title.first);
    const QVariant text = db->fieldValueById(reference.table, Values::wholePart(title.second),
                                             reference.field, error);
    return Attachments::recordFolder(table, text.toString());
}

bool Tavenor::updateRecordFields(int id, const FieldPairs &pairs)
{
    QString error;
    if (!db->idExists(currentTable, id, &error)) {
        warn(error.isEmpty() ? QString::asprintf("L'Id %d non è valido!", id)
                             : RecordMessages::updateFailed(error));
        return false;
    }
    const FieldPairs fields = pairs.mid(1);
    bool written = db->updateWhole(currentTable, id, fields);
    if (!written) {
        // Again field by field, so that each failure is told and the others are written.
        written = true;
        for (const FieldPair &pair : fields) {
            written = db->updateField(currentTable, id, pair.first, pair.second) && written;
        }
    }
    // An Id that is the same as before is not written: a save without a change leaves the file
    // alone in this mode too.
    if (advancedMode && !pairs.isEmpty() && pairs.first().second.toInt() != id) {
        const FieldPair &idPair = pairs.first();
        written = db->updateField(currentTable, id, idPair.first, idPair.second) && written;
    }
    return written;
}
