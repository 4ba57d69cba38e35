// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Adds the records of a file to a table, in batches.
#include "app/recordimport.h"

#include "model/attachments.h"
#include "model/markers.h"
#include "model/values.h"
#include "storage/DataBase.h"

namespace
{

constexpr int BatchSize = 1000;
// Records of unusual length would otherwise fill the memory.
constexpr int MostCharacters = 32 * 1024 * 1024;
constexpr int TitlePosition = 1;
// What keeps so many records out, such as a full disk, would keep out all that follow, and each
// of them has a message.
constexpr int MostFailures = 5;

/// Where the attachment folder stands that is worked out anew. Where it is the title itself there
/// is nothing to make it of, so the file's is taken.
int computedPath(const QStringList &columns)
{
    const int position = columns.indexOf(Markers::UserPathColumn);
    return position > TitlePosition ? position : -1;
}

int charactersOf(const FieldPairs &record)
{
    int count = 0;
    for (const FieldPair &pair : record) {
        count += pair.second.size();
    }
    return count;
}

} // namespace

RecordImport::RecordImport(DataBase &db, const QString &table, const QStringList &columns,
                           const AddPlainly &addPlainly)
    : db(db)
    , table(table)
    , addPlainly(addPlainly)
    , bulk(db, table, columns)
    , pathPosition(computedPath(columns))
{
    batch.reserve(BatchSize);
}

void RecordImport::add(const FieldPairs &record)
{
    const int id = bulk.isPossible() ? bulk.takeId(Values::wishedId(record.first().second)) : 0;
    batch.append({id, record});
    characters += charactersOf(record);
    if (batch.size() >= BatchSize || characters > MostCharacters) {
        finish();
    }
}

void RecordImport::finish()
{
    if (batch.isEmpty() || stopped) {
        return;
    }
    bool isPlain = false;
    db.inOneStep([this, &isPlain] {
        isPlain = !db.isQuiet();
        if (!isPlain && bulk.isPossible()) {
            return writeQuietly();
        }
        addEachPlainly();
        return true;
    });
    batch.clear();
    characters = 0;
    if (isPlain) {
        // Not every record has got the Id that was meant for it.
        bulk.readIds();
    }
}

void RecordImport::addEachPlainly()
{
    int failuresInARow = 0;
    for (int i = 0; i < batch.size() && !stopped; ++i) {
        const Outcome outcome = addPlainly(batch.at(i).values);
        failuresInARow = outcome == Outcome::Kept ? 0 : failuresInARow + 1;
        stopped = failuresInARow == MostFailures || outcome == Outcome::Unreadable;
    }
}

bool RecordImport::writeQuietly()
{
    for (Row &row : batch) {
        if (row.id == 0) {
            continue;
        }
        if (pathPosition > 0) {
            // A record that is done again gets it worked out again.
            QString error;
            row.values[pathPosition].second = userPath(row.values.at(TitlePosition), &error);
            if (!error.isEmpty()) {
                return false;
            }
        }
        if (row.id < 0 || !bulk.insert(row.id, row.values)) {
            return false;
        }
    }
    return true;
}

QString RecordImport::userPath(const FieldPair &title, QString *error)
{
    if (!Columns::isReference(title.first)) {
        return Attachments::recordFolder(table, title.second);
    }
    const Columns::Reference reference = Columns::reference(title.first);
    if (reference.table.compare(table, Qt::CaseInsensitive) == 0) {
        // The record may be one that was just added.
        const int id = Values::wholePart(title.second);
        return Attachments::recordFolder(
            table, db.fieldValueById(reference.table, id, reference.field, error).toString());
    }
    if (!titlesAreRead) {
        titles = ReferenceTexts::read(reference);
        titlesAreRead = !titles.failed();
        *error = titles.error();
    }
    return Attachments::recordFolder(table, titles.text(title.second));
}
