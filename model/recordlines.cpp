// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The one-line texts that stand for a record, and their order.
#include "model/recordlines.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <numeric>
#include <vector>

namespace
{

/// Calls a function at every so many of the steps that are counted.
class SlowSteps
{
public:
    explicit SlowSteps(const std::function<void()> &step)
        : step(step)
    {
    }
    void count()
    {
        if (++counted % StepsOfACall == 0) {
            step();
        }
    }

private:
    static constexpr int StepsOfACall = 1024;
    const std::function<void()> &step;
    unsigned counted = 0;
};

/// Sorts the row numbers by keys, which are made once for each line: comparing two keys costs
/// far less than comparing two texts by the rules of a language.
void sortByKeys(QVector<int> &order, const QStringList &lines, const QCollator &collator,
                SlowSteps &steps)
{
    std::vector<QCollatorSortKey> keys;
    keys.reserve(static_cast<std::size_t>(lines.size()));
    for (const QString &line : lines) {
        steps.count();
        keys.push_back(collator.sortKey(line));
    }
    std::stable_sort(order.begin(), order.end(), [&keys, &lines, &steps](int a, int b) {
        steps.count();
        const int difference =
            keys[static_cast<std::size_t>(a)].compare(keys[static_cast<std::size_t>(b)]);
        // Texts of control characters only have the key of the empty text, which comes first.
        return difference != 0 ? difference < 0 : lines.at(a).isEmpty() && !lines.at(b).isEmpty();
    });
}

/// True for a text that plain formatting gives back unchanged, which is found out in a tenth of
/// the time. Else it ends at a NUL, loses a byte order mark, or has halves of characters replaced.
bool staysAsItIs(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar character) {
        return character.isNull() || character.isSurrogate() ||
               character == QChar(QChar::ByteOrderMark);
    });
}

} // namespace

namespace RecordLines
{

QString listLine(const QString &title)
{
    const QString line =
        staysAsItIs(title) ? title : QString::asprintf("%s", title.toUtf8().constData());
    return line.isEmpty() ? QString(Empty) : line;
}

QString idAndTitle(qint64 id, const QString &title)
{
    return QString::asprintf("%lld %s", static_cast<long long>(id), title.toUtf8().constData());
}

QString countText(int lines)
{
    // Deliberate: one record reads "1 Records".
    return QString::asprintf("%d Records", lines);
}

QVector<int> alphabeticalOrder(const QStringList &lines, const std::function<void()> &step)
{
    SlowSteps steps(step);
    QVector<int> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    const QCollator collator;
    if (collator.locale().language() == QLocale::C) {
        // Without a language localeAwareCompare() goes by code units. The keys would go by code
        // points, which puts the characters beyond U+FFFF elsewhere.
        std::stable_sort(order.begin(), order.end(), [&lines, &steps](int a, int b) {
            steps.count();
            return lines.at(a) < lines.at(b);
        });
    } else {
        sortByKeys(order, lines, collator, steps);
    }
    return order;
}

} // namespace RecordLines
