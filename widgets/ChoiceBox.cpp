// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A list of records to choose from, found by typing any part of a line.
#include "widgets/ChoiceBox.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>
#include <QListView>
#include <QStandardItemModel>

namespace
{

constexpr int LinesShown = 12;
constexpr int UsualLetters = 20;

/// Without this a list view asks the size of each of its lines before it opens.
void expectUniformLines(QAbstractItemView *view)
{
    if (auto *list = qobject_cast<QListView *>(view)) {
        list->setUniformItemSizes(true);
    }
}

} // namespace

ChoiceBox::ChoiceBox(QWidget *parent)
    : QComboBox(parent)
{
    // The width must not depend on the lines: measuring all of them takes longer than all else.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(UsualLetters);
    setMaxVisibleItems(LinesShown);
}

void ChoiceBox::setRecords(const QVector<QPair<int, QString>> &records)
{
    QStringList lines;
    QVector<int> ids;
    lines.reserve(records.size());
    ids.reserve(records.size());
    for (const QPair<int, QString> &record : records) {
        ids.append(record.first);
        lines.append(record.second);
    }
    fill(lines, ids);
}

void ChoiceBox::setLines(const QStringList &lines)
{
    fill(lines, {});
}

void ChoiceBox::chooseId(int id)
{
    setCurrentIndex(qMax(0, id == 0 ? 0 : findData(id)));
}

void ChoiceBox::chooseLine(const QString &line)
{
    if (count() == 0) {
        fill({}, {});
    }
    dropFurtherChoice();
    if (line.isEmpty()) {
        setCurrentIndex(0);
        return;
    }
    for (int row = 1; row < offered; ++row) {
        if (itemText(row) == line) {
            setCurrentIndex(row);
            return;
        }
    }
    addItem(line);
    setCurrentIndex(offered);
}

QString ChoiceBox::chosenLine() const
{
    return currentIndex() > 0 ? itemText(currentIndex()) : QString();
}

void ChoiceBox::focusInEvent(QFocusEvent *event)
{
    QComboBox::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason && isEditable()) {
        // After the click that gives the focus, so that typing begins a new search.
        QMetaObject::invokeMethod(lineEdit(), &QLineEdit::selectAll, Qt::QueuedConnection);
    }
}

/// Done when lines first come: on a page with many fields most boxes are never used.
void ChoiceBox::prepareSearch()
{
    if (isEditable()) {
        return;
    }
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    expectUniformLines(view());

    auto *search = new QCompleter(model(), this);
    search->setCompletionMode(QCompleter::PopupCompletion);
    search->setFilterMode(Qt::MatchContains);
    search->setCaseSensitivity(Qt::CaseInsensitive);
    search->setMaxVisibleItems(LinesShown);
    expectUniformLines(search->popup());
    setCompleter(search);

    // The toolkit would choose a line whose whole text was typed; here typing only searches.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(lineEdit(), &QLineEdit::editingFinished, this, &ChoiceBox::showChoice);
}

/// `ids` are those of the lines, or none at all.
void ChoiceBox::fill(const QStringList &lines, const QVector<int> &ids)
{
    prepareSearch();
    QList<QStandardItem *> items;
    items.reserve(lines.size() + 1);
    items.append(new QStandardItem(QStringLiteral("---")));
    for (int line = 0; line < lines.size(); ++line) {
        items.append(new QStandardItem(lines.at(line)));
        if (!ids.isEmpty()) {
            items.last()->setData(ids.at(line), Qt::UserRole);
        }
    }
    clear();
    offered = items.size();
    // One insertion of all lines: one by one they would take a hundred times as long.
    static_cast<QStandardItemModel *>(model())->invisibleRootItem()->appendRows(items);
    showChoice();
}

void ChoiceBox::dropFurtherChoice()
{
    if (count() > offered) {
        removeItem(offered);
    }
}

/// Shows the beginning of the current line in place of what was typed.
void ChoiceBox::showChoice()
{
    setEditText(itemText(currentIndex()));
    lineEdit()->home(false);
}
