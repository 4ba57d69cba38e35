// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The only owner of the SQLite connection: reading and writing records.
#include "storage/DataBase.h"

#include "model/markers.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "storage/readfailure.h"
#include "storage/recordmessages.h"
#include "storage/sqltext.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>

#include <algorithm>
#include <limits>

namespace
{

constexpr qint64 LargestPossibleId = std::numeric_limits<int>::max();
// Far below the longest statement that SQLite takes.
constexpr int IdsOfAStatement = 10000;

int fittingId(qint64 id)
{
    return static_cast<int>(qBound<qint64>(std::numeric_limits<int>::min(), id, LargestPossibleId));
}

/// The form in which two titles are the same to people.
QString comparable(const QString &title)
{
    return title.toLower().simplified();
}

QString noSuchField(const QString &field)
{
    return QString::asprintf("ERRORE: Il campo '%s' non esiste!\n", qUtf8Printable(field));
}

QString firstFilled(const QStringList &texts)
{
    const auto filled = std::find_if(texts.begin(), texts.end(),
                                     [](const QString &text) { return !text.isEmpty(); });
    return filled == texts.end() ? QString() : *filled;
}

/// Why these values cannot be written into the record `id` by one statement: each must be a
/// text in order for a field of the table, and the Id can change only after a question.
QString refusalOf(const QStringList &fields, int id, const FieldPairs &values)
{
    for (const FieldPair &pair : values) {
        if (!fields.contains(pair.first)) {
            return noSuchField(pair.first);
        }
        if (pair.first == Markers::IdColumn && pair.second.toInt() != id) {
            return QStringLiteral("L'Id non può cambiare insieme agli altri campi.");
        }
        QString refusal = SqlText::valueRefusal(pair);
        if (!refusal.isEmpty()) {
            return refusal;
        }
    }
    return {};
}

/// Only a table with the program's Id column takes records.
QString missingId(const QStringList &fields)
{
    return fields.contains(Markers::IdColumn)
               ? QString()
               : QString::asprintf("La tabella non ha la colonna '%s'.", Markers::IdColumn.data());
}

} // namespace

int DataBase::rowCount(const QString &table) const
{
    QSqlQuery query = run(SqlText::selectAll(table));
    int count = 0;
    while (query.next()) {
        ++count;
    }
    return count;
}

/// Stands on the row of the Id, or behind the last row when there is none.
QSqlQuery DataBase::rowById(const QString &table, int id) const
{
    QSqlQuery query = run(SqlText::selectById(table, id));
    while (query.next()) {
        // In a foreign table the first column may be another one.
        if (query.value(0).toLongLong() == id) {
            break;
        }
    }
    return query;
}

QSqlRecord DataBase::recordById(const QString &table, int id, QString *error) const
{
    const QSqlQuery query = rowById(table, id);
    ReadFailure::tell(query, error);
    return query.record();
}

bool DataBase::idExists(const QString &table, int id, QString *error) const
{
    const QSqlQuery query = rowById(table, id);
    ReadFailure::tell(query, error);
    return query.isValid();
}

QVariant DataBase::fieldValueById(const QString &table, int id, const QString &fieldName,
                                  QString *error) const
{
    return recordValue(recordById(table, id, error), fieldName);
}

QSqlRecord DataBase::recordAt(const QString &table, int row) const
{
    QSqlQuery query = run(SqlText::selectAll(table));
    // Deliberate: a position before the first row means the first row.
    int position = 0;
    while (query.next() && position < row) {
        ++position;
    }
    return query.record();
}

QVariant DataBase::recordValue(const QSqlRecord &record, const QString &fieldName)
{
    return record.field(record.indexOf(fieldName)).value();
}

QSqlRecord DataBase::findRecord(const QString &table, const QString &fieldName,
                                const QVariant &value, QString *error) const
{
    QSqlQuery query = run(SqlText::selectByField(table, fieldName, value.toString()));
    const int position = query.record().indexOf(fieldName);
    while (position >= 0 && query.next()) {
        if (query.value(position) == value) {
            return query.record();
        }
    }
    ReadFailure::tell(query, error);
    return {};
}

bool DataBase::titleExists(const QString &table, const QString &text, QString *error) const
{
    // Deliberate: the stored titles are not doubled, so one with an apostrophe is never found.
    const QString wanted = comparable(Values::quotesDoubled(text));
    const QStringList columns = fieldNames(table, error);
    if (columns.size() < 2) {
        return false;
    }
    // SQLite goes past most of them much faster than they are fetched and compared.
    RowPass titles(table, columns.at(1), SqlText::plainRun(wanted));
    while (titles.next()) {
        if (comparable(titles.value(0).toString()) == wanted) {
            return true;
        }
    }
    if (error != nullptr && !titles.unreadable().isEmpty()) {
        *error = titles.unreadable();
    }
    return false;
}

/// Reads the Ids of all rows; both are 0 for an empty table.
DataBase::IdRange DataBase::idRange(const QString &table, QString *error) const
{
    RowPass ids(table, {Markers::IdColumn});
    IdRange range;
    for (bool first = true; ids.next(); first = false) {
        const qint64 id = ids.value(0).toLongLong();
        range.smallest = first ? id : qMin(range.smallest, id);
        range.largest = first ? id : qMax(range.largest, id);
    }
    const QString failure = ids.unreadable();
    if (!failure.isEmpty()) {
        *error = failure;
    }
    return range;
}

int DataBase::maxId(const QString &table, QString *error) const
{
    QString failure;
    const qint64 largest = largestIdAtOnce(table, error == nullptr ? &failure : error);
    return fittingId(largest);
}

int DataBase::minId(const QString &table) const
{
    QString error;
    return fittingId(idRange(table, &error).smallest);
}

/// The same largest Id without reading the rows, where the table's key allows it.
qint64 DataBase::largestIdAtOnce(const QString &table, QString *error) const
{
    QSqlQuery query = run(SqlText::selectLargestId(table));
    const QVariant largest = query.next() ? query.value(0) : QVariant();
    if (largest.isNull() || largest.type() == QVariant::LongLong) {
        ReadFailure::tell(query, error);
        return largest.toLongLong();
    }
    // Texts have another order than the numbers that they are read as.
    return idRange(table, error).largest;
}

/// The Id of a record to add: the wished one, where it is kept and free, else the one after the
/// largest. Records are counted from 1.
DataBase::NewId DataBase::newId(const QString &table, bool keepId, int wished) const
{
    QString error;
    const bool isKept = keepId && wished >= 1 && !idExists(table, wished, &error);
    if (isKept && error.isEmpty()) {
        return {wished, {}};
    }
    // An Id that could not be looked up may be taken.
    const qint64 largest = error.isEmpty() ? largestIdAtOnce(table, &error) : 0;
    if (!error.isEmpty()) {
        return {-1, error};
    }
    if (largest >= LargestPossibleId) {
        return {-1, QStringLiteral("Il numero più grande possibile è già usato come Id.")};
    }
    return {static_cast<int>(qMax<qint64>(largest, 0)) + 1, {}};
}

int DataBase::insert(const QString &table, const NewId &newId, const FieldPairs &values,
                     const Message &message)
{
    QSqlQuery query = run(SqlText::selectAll(table));
    const QStringList fields = namesIn(query);
    const QString readError = query.lastError().text();
    query.finish();
    const QString reason =
        firstFilled({SqlText::refusal(QStringList(table) + fields), readError, newId.reason,
                     missingId(fields), refusalOf(fields, newId.id, values)});
    return change(reason, SqlText::insert(table, fields, newId.id, values), message) ? newId.id
                                                                                     : -1;
}

int DataBase::insertRecord(const QString &table, bool keepId, int id)
{
    const auto message = [&table](const QString &reason) {
        return RecordMessages::insertFailed(table, reason);
    };
    return insert(table, newId(table, keepId, id), {}, message);
}

int DataBase::insertWhole(const QString &table, bool keepId, int id, const FieldPairs &values)
{
    return insert(table, newId(table, keepId, id), values, {});
}

bool DataBase::insertRow(const SqlText::RowInsertion &insertion, int id, const FieldPairs &values)
{
    const QString reason = firstFilled({insertion.refusal(), insertion.valuesRefusal(values)});
    return change(reason, insertion.statement(id, values), {});
}

/// What an update of this field lacks, as people read it; empty when nothing is missing. What
/// could not be looked up is not missing.
QString DataBase::missingFor(const QString &table, int id, const QString &field) const
{
    QString error;
    if (!tableExists(table, &error) && error.isEmpty()) {
        return QString::asprintf("ERRORE: La Tabella '%s' non esiste!\n", qUtf8Printable(table));
    }
    if (error.isEmpty() && !idExists(table, id, &error) && error.isEmpty()) {
        return QString::asprintf("ERRORE: L'Id %d non è presente nella Tabella!\n", id);
    }
    if (error.isEmpty() && countFields(table, field, false, &error) == 0 && error.isEmpty()) {
        return noSuchField(field);
    }
    return error.isEmpty() ? QString() : RecordMessages::updateFailed(error);
}

bool DataBase::updateField(const QString &table, int id, const QString &field, const QString &value)
{
    const QString missing = missingFor(table, id, field);
    if (!missing.isEmpty()) {
        report(missing);
        return false;
    }
    const QString refusal =
        firstFilled({SqlText::refusal({table, field}), SqlText::valueRefusal({field, value})});
    if (refusal.isEmpty() && field == Markers::IdColumn && value.toInt() != id) {
        if (!confirmIdChange(id, value.toInt())) {
            return !quiet;
        }
    }
    return change(refusal, SqlText::update(table, id, {{field, value}}),
                  RecordMessages::updateFailed);
}

/// Asks whether a record gets another Id. While no box may be shown the answer is no, and the
/// step is run again later.
bool DataBase::confirmIdChange(int id, int newId)
{
    if (quiet) {
        noteFailure();
        return false;
    }
    QMessageBox question(
        QMessageBox::Warning, errorBox.windowTitle(),
        QString::asprintf("Vuoi veramente aggiornare l'Id %d con il nuovo Id %d? Questa "
                          "operazione può essere molto dannosa!",
                          id, newId),
        QMessageBox::Yes | QMessageBox::No);
    question.setTextFormat(Qt::PlainText);
    question.setDefaultButton(QMessageBox::No);
    question.setEscapeButton(QMessageBox::No);
    return question.exec() == QMessageBox::Yes;
}

bool DataBase::updateWhole(const QString &table, int id, const FieldPairs &values)
{
    if (values.isEmpty()) {
        return true;
    }
    QStringList names = {table};
    for (const FieldPair &pair : values) {
        names.append(pair.first);
    }
    QString error;
    const QStringList fields = fieldNames(table, &error);
    const QString reason =
        firstFilled({error, SqlText::refusal(names), refusalOf(fields, id, values)});
    int changedRows = 0;
    if (!change(reason, SqlText::update(table, id, values), {}, &changedRows)) {
        return false;
    }
    if (changedRows < 1) {
        noteFailure();
    }
    return changedRows > 0;
}

bool DataBase::deleteRecord(const QString &table, int id)
{
    return change(SqlText::refusal({table}), SqlText::deleteById(table, id),
                  RecordMessages::deleteFailed);
}

bool DataBase::deleteRecords(const QString &table, const QVector<int> &ids)
{
    if (!quiet) {
        bool removed = true;
        for (const int id : ids) {
            removed = deleteRecord(table, id) && removed;
        }
        return removed;
    }
    // If one of them cannot be removed, each is tried again for itself.
    const QString refusal = SqlText::refusal({table});
    for (int start = 0; start < ids.size(); start += IdsOfAStatement) {
        const QVector<int> part = ids.mid(start, IdsOfAStatement);
        if (!change(refusal, SqlText::deleteByIds(table, part), {})) {
            return false;
        }
    }
    return true;
}
