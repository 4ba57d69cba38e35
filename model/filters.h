// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Conditions of a filter: their names, what matches, how they are joined.
#pragma once

#include "model/latin1.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>

namespace Filters
{

/// How a record's value is compared with a condition's.
enum class Comparison { Equal, Disequal, Major, Minor, None };

/// How a condition is joined to those before it.
constexpr QLatin1String And = Latin1::text("And");
constexpr QLatin1String Or = Latin1::text("Or");

/// The four comparisons that have a button, in the order in which their buttons decide.
const QVector<Comparison> &comparisons();

/// "Equal", "Disequal", "Major", "Minor", or "NoCondition".
QString comparisonName(Comparison comparison);

/// The comparison called `name`, in any letter case; None for any other text.
Comparison comparisonNamed(const QString &name);

/// True for "And" in any letter case; every other word means "Or".
bool isAnd(const QString &word);

/// The format by which a column's values are compared: its short format word, and for a
/// reference column the word with its table before it ("autori_XDTX_NSTRING").
QString comparedFormat(const QString &column);

/// True when a column takes part in filters at all: attachments, sub-tables and the folder of
/// the attachments have nothing to compare.
bool isOffered(const QString &column);

/// What a condition holds, as it is kept, saved and put back.
struct Setting {
    QString column;
    QString format; ///< the short word of the editor that holds the value
    QString value;  ///< its quotes as they are
    Comparison comparison = Comparison::None;
    bool active = false;
    bool joinsWithAnd = true;
    bool followsLink = false; ///< set by a jump along a link, so that link texts are compared
};
bool operator==(const Setting &one, const Setting &other);
bool operator!=(const Setting &one, const Setting &other);

/// One comparison, its value read once, ready for any number of records.
class Condition
{
public:
    /// Compares as `format` asks for with `value`, whose quotes are doubled. Links are compared
    /// as texts with `followsLink`; otherwise every link passes.
    Condition(const QString &format, Comparison comparison, const QString &value,
              bool followsLink = false);

    /// True when a record's value, its quotes doubled, passes.
    bool matches(const QString &value) const;

private:
    enum class Rule { PassAll, YesNo, Date, Whole, Number, Reference, Text };

    static Rule ruleFor(const QString &format, bool followsLink);
    template<typename Value>
    bool compares(Value value, Value wanted) const;
    bool comparesText(const QString &value) const;

    Rule rule;
    Comparison comparison;
    QString text;
    double number = 0;
    qint64 whole = 0; // also a yes, an Id, a day
};

/// A condition in its place: on which column, and joined how.
struct Joined {
    QString column;
    Condition condition;
    bool joinsWithAnd;
};

/// All conditions on a table, ready to be asked for one record after the other.
class Predicate
{
public:
    /// Lets every record pass.
    Predicate() = default;

    /// `columns` are the table's, in its order; `conditions` those that take part, in theirs.
    /// The columns' order decides, then that of the conditions. Conditions on columns that the
    /// table does not have, on the Id and on the folder of the attachments are left out.
    Predicate(const QStringList &columns, const QVector<Joined> &conditions);

    /// True when every record passes.
    bool isEmpty() const { return steps.isEmpty(); }

    /// The columns that are compared, each once, in the table's order.
    const QStringList &columns() const { return compared; }

    /// Whether a record passes; `valueAt` gives its value of the column at a position of
    /// columns(). Conditions are joined from left to right, without precedence; the first
    /// one's joining word does not count. What cannot change the result is not looked at.
    bool passes(const std::function<QVariant(int position)> &valueAt) const;

private:
    struct Step {
        int position;
        Condition condition;
        bool joinsWithAnd;
    };

    QStringList compared;
    QVector<Step> steps;
};

} // namespace Filters
