// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Conditions of a filter: their names, what matches, how they are joined.
#include "model/filters.h"

#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/values.h"

#include <tuple>

namespace
{

// The field that holds the folder of a record's attachments.
bool isFolder(const QString &label)
{
    return label == Names::fieldLabel(Markers::UserPathColumn);
}

} // namespace

namespace Filters
{

const QVector<Comparison> &comparisons()
{
    static const QVector<Comparison> all = {Comparison::Equal, Comparison::Disequal,
                                            Comparison::Major, Comparison::Minor};
    return all;
}

QString comparisonName(Comparison comparison)
{
    switch (comparison) {
    case Comparison::Equal:
        return QStringLiteral("Equal");
    case Comparison::Disequal:
        return QStringLiteral("Disequal");
    case Comparison::Major:
        return QStringLiteral("Major");
    case Comparison::Minor:
        return QStringLiteral("Minor");
    case Comparison::None:
        break;
    }
    return QStringLiteral("NoCondition");
}

Comparison comparisonNamed(const QString &name)
{
    for (const Comparison comparison : comparisons()) {
        if (name.compare(comparisonName(comparison), Qt::CaseInsensitive) == 0) {
            return comparison;
        }
    }
    return Comparison::None;
}

bool isAnd(const QString &word)
{
    return word.compare(And, Qt::CaseInsensitive) == 0;
}

QString comparedFormat(const QString &column)
{
    const QString word = Columns::formatWord(column);
    return column.contains(Markers::Reference) && Columns::isReference(column)
               ? Columns::reference(column).table + Markers::Reference +
                     Columns::described(column).section(Markers::FormatEnd, 0, 0)
               : word;
}

bool isOffered(const QString &column)
{
    switch (Formats::kindOf(Columns::formatWord(column))) {
    case Formats::Kind::Image:
    case Formats::Kind::Pdf:
    case Formats::Kind::SubTable:
        return false;
    default:
        return !isFolder(Columns::label(column));
    }
}

bool operator==(const Setting &one, const Setting &other)
{
    const auto parts = [](const Setting &setting) {
        return std::tie(setting.column, setting.format, setting.value, setting.comparison,
                        setting.active, setting.joinsWithAnd, setting.followsLink);
    };
    return parts(one) == parts(other);
}

bool operator!=(const Setting &one, const Setting &other)
{
    return !(one == other);
}

Condition::Rule Condition::ruleFor(const QString &format, bool followsLink)
{
    switch (Formats::kindOf(format)) {
    case Formats::Kind::Bool:
        return Rule::YesNo;
    case Formats::Kind::Date:
        return Rule::Date;
    case Formats::Kind::Integer:
        return Rule::Whole;
    case Formats::Kind::Real:
    case Formats::Kind::Money:
        return Rule::Number;
    case Formats::Kind::Image:
    case Formats::Kind::Pdf:
    case Formats::Kind::SubTable:
        return Rule::PassAll;
    case Formats::Kind::Link:
        return followsLink ? Rule::Text : Rule::PassAll;
    case Formats::Kind::Other:
        return format.contains(Markers::Reference) ? Rule::Reference : Rule::Text;
    default:
        return Rule::Text;
    }
}

Condition::Condition(const QString &format, Comparison comparison, const QString &value,
                     bool followsLink)
    : rule(comparison == Comparison::None ? Rule::PassAll : ruleFor(format, followsLink))
    , comparison(comparison)
    , text(value)
{
    switch (rule) {
    case Rule::YesNo:
        whole = value.compare(Values::YesText, Qt::CaseInsensitive) == 0 ? 1 : 0;
        break;
    case Rule::Date:
        whole = Values::date(value).toJulianDay();
        break;
    case Rule::Whole:
        whole = value.toInt();
        break;
    case Rule::Number:
        number = Values::number(value);
        break;
    case Rule::Reference:
        whole = Values::leadingWhole(value);
        break;
    default:
        break;
    }
}

bool Condition::matches(const QString &value) const
{
    switch (rule) {
    case Rule::YesNo: {
        // Deliberate: for yes and no, more and less mean the same as equal.
        const bool same = Values::isYes(value) == (whole != 0);
        return comparison == Comparison::Disequal ? !same : same;
    }
    case Rule::Date:
        // The day of a date that cannot be read lies before all others.
        return compares(Values::date(value).toJulianDay(), whole);
    case Rule::Whole:
        return compares<qint64>(value.toInt(), whole);
    case Rule::Number:
        return compares(Values::number(value), number);
    case Rule::Reference:
        return compares<qint64>(Values::wholePart(value), whole);
    case Rule::Text:
        return comparesText(value);
    case Rule::PassAll:
        break;
    }
    // Deliberate: attachments, sub-tables and links that were chosen by hand always pass.
    return true;
}

template<typename Value>
bool Condition::compares(Value value, Value wanted) const
{
    switch (comparison) {
    case Comparison::Equal:
        return value == wanted;
    case Comparison::Disequal:
        return value != wanted;
    case Comparison::Major:
        return value > wanted;
    default:
        return value < wanted;
    }
}

bool Condition::comparesText(const QString &value) const
{
    switch (comparison) {
    case Comparison::Equal:
        return value == text;
    case Comparison::Disequal:
        return value != text;
    default:
        // Deliberate: of a text, more and less both mean that it contains the other.
        return value.contains(text);
    }
}

Predicate::Predicate(const QStringList &columns, const QVector<Joined> &conditions)
{
    for (const QString &column : columns) {
        const QString label = Columns::label(column);
        if (label == Names::fieldLabel(Markers::IdColumn) || isFolder(label)) {
            continue;
        }
        for (const Joined &joined : conditions) {
            if (joined.column != column) {
                continue;
            }
            if (compared.isEmpty() || compared.last() != column) {
                compared.append(column);
            }
            steps.append({compared.size() - 1, joined.condition, joined.joinsWithAnd});
        }
    }
}

bool Predicate::passes(const std::function<QVariant(int position)> &valueAt) const
{
    bool result = true;
    bool first = true;
    for (const Step &step : steps) {
        // A true result can only be changed by "And", a false one only by "Or".
        if (first || step.joinsWithAnd == result) {
            result =
                step.condition.matches(Values::quotesDoubled(valueAt(step.position).toString()));
        }
        first = false;
    }
    return result;
}

} // namespace Filters
