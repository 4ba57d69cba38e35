// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Composes the text of every statement.
#include "storage/sqltext.h"

#include "model/markers.h"
#include "model/sqlnames.h"
#include "model/values.h"

#include <QHash>

#include <algorithm>

namespace
{

/// Few texts share that much, and SQLite refuses long ones.
constexpr int LongestRun = 50;

/// `name` as it may stand in a reading statement.
QString quotedUnless(bool plain, const QString &name)
{
    if (plain) {
        return name;
    }
    QString inside = name;
    inside.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inside + QLatin1Char('"');
}

QString tableToRead(const QString &table)
{
    return quotedUnless(SqlNames::canStandUnquoted(table), table);
}

using SqlText::ValueKind;

ValueKind kindOf(const QString &field)
{
    if (field.contains(Markers::IntegerWord)) {
        return field == Markers::IdColumn ? ValueKind::Id : ValueKind::Integer;
    }
    return field.contains(Markers::RealWord) ? ValueKind::Real : ValueKind::Text;
}

/// Adds the value to a statement.
void appendLiteral(QString *statement, ValueKind kind, const QString &value)
{
    const QLatin1Char quote('\'');
    *statement += quote;
    if (kind == ValueKind::Real) {
        *statement += QString::asprintf("%f", value.toDouble());
    } else if (kind != ValueKind::Text) {
        *statement += QString::number(value.toInt());
    } else if (value.isValidUtf16() && !value.contains(QChar(0))) {
        *statement += value;
    } else {
        // Cut at a NUL character and without halves of pairs: SQLite would misread both.
        *statement += QString::fromUtf8(value.toUtf8().constData());
    }
    *statement += quote;
}

/// The value as it stands in a statement.
QString literal(const QString &field, const QString &value)
{
    QString text;
    appendLiteral(&text, kindOf(field), value);
    return text;
}

QString textRefusal(const QString &value)
{
    if (!value.contains(QLatin1Char('\''))) {
        return {};
    }
    QString rest = value;
    rest.remove(QLatin1String("''"));
    return rest.contains(QLatin1Char('\''))
               ? QStringLiteral("Il valore contiene un apice non raddoppiato.")
               : QString();
}

/// What a new row gets for a field: of equal names the last one counts, as if they were
/// written one after the other.
QString insertedValue(const QString &field, int id, const FieldPairs &values)
{
    if (field == Markers::IdColumn) {
        return QString::number(id);
    }
    const auto given =
        std::find_if(values.rbegin(), values.rend(),
                     [&field](const FieldPair &pair) { return pair.first == field; });
    return given == values.rend() ? QStringLiteral("0") : literal(field, given->second);
}

} // namespace

namespace SqlText
{

QString refusal(const QStringList &names)
{
    const auto refused = std::find_if_not(names.begin(), names.end(), SqlNames::canStandUnquoted);
    return refused == names.end() ? QString() : SqlNames::refusal(*refused);
}

QString typeRefusal(const QString &type)
{
    const bool fits = std::all_of(type.begin(), type.end(), [](QChar character) {
        return character.unicode() < 0x80 && character.isLetter();
    });
    if (fits && SqlNames::isReservedWord(type)) {
        // It would say something else about the column, such as UNIQUE.
        return SqlNames::refusal(type);
    }
    return fits ? QString()
                : QString::asprintf("Il nome '%s' contiene caratteri non ammessi: usare solo "
                                    "lettere, cifre e '_'.",
                                    qUtf8Printable(type));
}

QString columnRefusal(const ColumnDefinition &column)
{
    if (column.first.isEmpty()) {
        return SqlNames::missingName();
    }
    const QString badName = refusal({column.first});
    return badName.isEmpty() ? typeRefusal(column.second) : badName;
}

QString valueRefusal(const FieldPair &pair)
{
    return kindOf(pair.first) == ValueKind::Text ? textRefusal(pair.second) : QString();
}

QString selectAll(const QString &table)
{
    return QString::asprintf("SELECT * FROM %s", qUtf8Printable(tableToRead(table)));
}

QString selectColumns(const QString &table, const QStringList &columns)
{
    // An index that holds all the columns would otherwise decide the order of the rows.
    return QString::asprintf("SELECT %s FROM %s NOT INDEXED",
                             qUtf8Printable(columns.join(QLatin1Char(','))),
                             qUtf8Printable(tableToRead(table)));
}

QString selectColumnHolding(const QString &table, const QString &column, const QString &run)
{
    const QByteArray name = column.toUtf8();
    // Numbers and bytes may read otherwise in SQLite than here; NULL is like nothing there.
    return QString::asprintf("%s WHERE %s LIKE '%%%s%%' OR typeof(%s) <> 'text'",
                             qUtf8Printable(selectColumns(table, {column})), name.constData(),
                             qUtf8Printable(run), name.constData());
}

QString plainRun(const QString &lowerCaseText)
{
    // SQLite reads a text to its first NUL.
    const QString text = lowerCaseText.section(QChar::Null, 0, 0);
    QString longest;
    QString run;
    for (const QChar character : text) {
        const bool isPlain = character.unicode() < 0x80 && character.isLetterOrNumber();
        // The Kelvin sign is another capital "k", the dotted capital "İ" becomes an "i" and a dot.
        const bool hasOtherCapitals =
            character == QLatin1Char('k') || character == QLatin1Char('i');
        run = isPlain ? run + (hasOtherCapitals ? QLatin1Char('_') : character) : QString();
        if (run.size() > longest.size()) {
            longest = run;
        }
        if (longest.size() == LongestRun) {
            break;
        }
    }
    return longest;
}

QString selectById(const QString &table, int id)
{
    return QString::asprintf("SELECT * FROM %s WHERE %s = %d", qUtf8Printable(tableToRead(table)),
                             Markers::IdColumn.data(), id);
}

QString selectByField(const QString &table, const QString &field, const QString &text)
{
    return QString::asprintf("SELECT * FROM %s WHERE %s = '%s'", qUtf8Printable(tableToRead(table)),
                             qUtf8Printable(quotedUnless(SqlNames::canBeRead(field), field)),
                             qUtf8Printable(Values::quotesDoubled(text)));
}

QString selectLargestId(const QString &table)
{
    return QString::asprintf("SELECT max(%s) FROM %s", Markers::IdColumn.data(),
                             qUtf8Printable(tableToRead(table)));
}

QString countRows(const QString &table)
{
    return QString::asprintf("SELECT count(*) FROM %s", qUtf8Printable(tableToRead(table)));
}

QString createTable(const QString &table, const ColumnDefinitions &columns)
{
    QString list;
    QHash<QString, int> earlier;
    for (const ColumnDefinition &column : columns) {
        const QString name = Columns::withDuplicateSuffix(column.first, earlier[column.first]++);
        list += QLatin1Char(',') + name + QLatin1Char(' ') + column.second;
    }
    return QString::asprintf("CREATE TABLE IF NOT EXISTS %s (%s integer primary key%s)",
                             qUtf8Printable(table), Markers::IdColumn.data(), qUtf8Printable(list));
}

QString addColumn(const QString &table, const QString &name, const QString &type)
{
    return QString::asprintf("ALTER TABLE %s ADD COLUMN %s %s", qUtf8Printable(table),
                             qUtf8Printable(name), qUtf8Printable(type));
}

QString dropTable(const QString &table)
{
    // Deliberate: the blank at the end belongs to the statement.
    return QString::asprintf("DROP TABLE %s ", qUtf8Printable(table));
}

QString clearTable(const QString &table)
{
    return QString::asprintf("DELETE FROM %s", qUtf8Printable(table));
}

QString insert(const QString &table, const QStringList &fields, int id, const FieldPairs &values)
{
    QStringList literals;
    literals.reserve(fields.size());
    for (const QString &field : fields) {
        literals.append(insertedValue(field, id, values));
    }
    return QString::asprintf("INSERT INTO %s (%s) VALUES (%s)", qUtf8Printable(table),
                             qUtf8Printable(fields.join(QLatin1Char(','))),
                             qUtf8Printable(literals.join(QLatin1Char(','))));
}

RowInsertion::RowInsertion(const QString &table, const QStringList &fields)
    : start(QString::asprintf("INSERT INTO %s (%s) VALUES (", qUtf8Printable(table),
                              qUtf8Printable(fields.join(QLatin1Char(',')))))
    , namesRefusal(SqlText::refusal(QStringList(table) + fields))
{
    for (const QString &field : fields) {
        kinds.append(kindOf(field));
    }
}

QString RowInsertion::valuesRefusal(const FieldPairs &values) const
{
    for (int i = 0; i < kinds.size(); ++i) {
        const bool isText = kinds.at(i) == ValueKind::Text;
        const QString reason = isText ? textRefusal(values.at(i).second) : QString();
        if (!reason.isEmpty()) {
            return reason;
        }
    }
    return {};
}

QString RowInsertion::statement(int id, const FieldPairs &values) const
{
    // Room for the values and what stands around them.
    int size = start.size() + 64;
    for (const FieldPair &pair : values) {
        size += pair.second.size() + 12;
    }
    QString text;
    text.reserve(size);
    text += start;
    for (int i = 0; i < kinds.size(); ++i) {
        if (i > 0) {
            text += QLatin1Char(',');
        }
        if (kinds.at(i) == ValueKind::Id) {
            text += QString::number(id);
        } else {
            appendLiteral(&text, kinds.at(i), values.at(i).second);
        }
    }
    text += QLatin1Char(')');
    return text;
}

QString update(const QString &table, int id, const FieldPairs &values)
{
    QStringList assignments;
    assignments.reserve(values.size());
    for (const FieldPair &pair : values) {
        assignments.append(pair.first + QLatin1String(" = ") + literal(pair.first, pair.second));
    }
    return QString::asprintf("UPDATE %s SET %s WHERE %s = %d", qUtf8Printable(table),
                             qUtf8Printable(assignments.join(QLatin1Char(','))),
                             Markers::IdColumn.data(), id);
}

QString deleteById(const QString &table, int id)
{
    return QString::asprintf("DELETE FROM %s WHERE %s = %d", qUtf8Printable(table),
                             Markers::IdColumn.data(), id);
}

QString deleteByIds(const QString &table, const QVector<int> &ids)
{
    QStringList numbers;
    numbers.reserve(ids.size());
    for (const int id : ids) {
        numbers.append(QString::number(id));
    }
    return QString::asprintf("DELETE FROM %s WHERE %s IN (%s)", qUtf8Printable(table),
                             Markers::IdColumn.data(),
                             qUtf8Printable(numbers.join(QLatin1Char(','))));
}

QString schemaVersion()
{
    return QStringLiteral("PRAGMA schema_version");
}

QString tableNames()
{
    return QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' UNION ALL "
                          "SELECT name FROM sqlite_temp_master WHERE type='table'");
}

QString schemaEntries()
{
    return QStringLiteral("SELECT count(*) FROM sqlite_master");
}

QString queryOnly()
{
    return QStringLiteral("PRAGMA query_only = ON");
}

} // namespace SqlText
