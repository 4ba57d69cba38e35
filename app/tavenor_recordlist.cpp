// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the record list, its search and its order.
#include "app/Tavenor.h"

#include "app/recordlistcontent.h"
#include "app/tavenor_progress.h"
#include "model/names.h"
#include "model/recordlines.h"
#include "storage/RowPass.h"
#include "ui_Tavenor.h"
#include "widgets/outputDataForm.h"

#include <QSignalBlocker>
#include <QStringMatcher>

namespace
{

constexpr int ShortestSearch = 3;

QString sortText(bool alphabetical)
{
    return alphabetical ? QStringLiteral("A-Z") : QStringLiteral("1-N");
}

} // namespace

void Tavenor::setRecordListTexts()
{
    ui->pbUserPrev->setToolTip(QStringLiteral("Torna al precedente"));
    ui->pbUserNext->setToolTip(QStringLiteral("Vai al prossimo"));
    ui->pbUserPrev->setAccessibleName(ui->pbUserPrev->toolTip());
    ui->pbUserNext->setAccessibleName(ui->pbUserNext->toolTip());
    ui->pbSort->setText(sortText(true));
    ui->pbSort->setToolTip(QStringLiteral("Ordina per nome o inserimento"));
    ui->userSearchEdit->setAccessibleName(QStringLiteral("Trova Records"));
    ui->userListWidget->setAccessibleName(QStringLiteral("Records"));
}

void Tavenor::connectRecordList()
{
    connect(ui->userSearchEdit, &QLineEdit::textChanged, this, &Tavenor::userSearch);
    connect(ui->pbUserNext, &QPushButton::clicked, this, &Tavenor::userSearchNext);
    connect(ui->pbUserPrev, &QPushButton::clicked, this, &Tavenor::userSearchPrev);
    connect(ui->pbSort, &QPushButton::toggled, this, &Tavenor::sort);
    connect(ui->userListWidget, &QListWidget::itemSelectionChanged, this,
            &Tavenor::userSelectionChange);
}

void Tavenor::loadUserList(const QString &table)
{
    if (table.isEmpty()) {
        warn(QStringLiteral("Nessuna Tabella Caricata!"));
        return;
    }
    clearRecordList();
    const RecordListContent content = readRecordList(table);
    listIdMap = content.map;
    listLines = content.lines;
    lineIds = content.ids;
    {
        const QSignalBlocker quiet(ui->userListWidget);
        ui->userListWidget->addItems(listLines);
    }
    if (listLines.isEmpty()) {
        ui->lbViewInfo->setText(RecordLines::Empty);
    }
    ui->lbToolbar->setText(RecordLines::countText(listLines.size()));
    explainEmptyList(true);
    // A list that is shorter than the table must not pass for the whole of it. A detail table that
    // could not be made has been reported already.
    const bool exists = allTables.contains(table) || db->tableExists(table);
    if (exists && !content.error.isEmpty()) {
        warnUnreadable(table, content.error);
    }
}

void Tavenor::warnUnreadable(const QString &table, const QString &reason)
{
    warn(QString::asprintf("ERRORE: Impossibile leggere la tabella %s!\n%s",
                           qUtf8Printable(Names::tableDisplayName(table)), qUtf8Printable(reason)));
}

RecordListContent Tavenor::readRecordList(const QString &table)
{
    const Progress progress(*this, QStringLiteral("Elaborazione"), table);
    const int total = RowPass::count(table);
    RecordListContent content = RecordListContent::read(
        table, db->fieldNames(table), [this, total](int done) { updateProgress(done, total); },
        filterPredicate(table));
    listedConditions = conditionsInForce();
    if (ui->pbSort->isChecked()) {
        content.sort();
    }
    content.index();
    return content;
}

void Tavenor::explainEmptyList(bool tableWasRead)
{
    if (currentTable.isEmpty()) {
        ui->userListWidget->setPlaceholder(
            QStringLiteral("Nessuna Tabella Caricata!"),
            {QStringLiteral("File › Apri Db"),
             QStringLiteral("Opzioni › Modo Amministratore, poi File › Nuovo Db")});
    } else if (tableWasRead) {
        ui->userListWidget->setPlaceholder(RecordLines::countText(0),
                                           readOnly ? QStringList()
                                                    : QStringList{ui->pbNewUser->toolTip()});
    } else {
        ui->userListWidget->setPlaceholder(QString(), {});
    }
}

void Tavenor::clearRecordList()
{
    listIdMap.clear();
    listLines.clear();
    lineIds.clear();
    // Matches found in lines that are gone lead nowhere.
    searchResults.clear();
    const QSignalBlocker quiet(ui->userListWidget);
    ui->userListWidget->clear();
}

int Tavenor::rowOfRecord(int id) const
{
    const int row = lineIds.indexOf(id);
    if (row < 0) {
        return -1;
    }
    const QString &line = listLines.at(row);
    // Of records with equal lines only the last one listed has the line; one without a title
    // has none.
    if (listIdMap.value(line) != id) {
        return -1;
    }
    // With as many entries as lines no two are equal, but for an untitled one and the title "----".
    const bool isAlone = listIdMap.size() == listLines.size() && line != RecordLines::Empty;
    return isAlone ? row : listLines.indexOf(line);
}

int Tavenor::recordOfRow(int row) const
{
    return listIdMap.value(listLines.value(row));
}

void Tavenor::selectRow(int row)
{
    const QSignalBlocker quiet(ui->userListWidget);
    ui->userListWidget->setCurrentRow(row);
}

void Tavenor::showRecordOf(const QString &table, int id)
{
    listTable(table);
    currentRow = 0;
    selectRow(0);
    currentId = id;
    vwRecord(id);
}

void Tavenor::showFirstRecord()
{
    currentRow = 0;
    if (listLines.isEmpty()) {
        showCurrentRecord();
        return;
    }
    currentId = recordOfRow(0);
    selectRow(0);
    vwRecord(currentId);
}

void Tavenor::userSearch(QString userName)
{
    if (userName.length() < ShortestSearch) {
        return;
    }
    searchResults.clear();
    const QStringMatcher matcher(userName, Qt::CaseInsensitive);
    for (int row = 0; row < listLines.size(); ++row) {
        if (matcher.indexIn(listLines.at(row)) >= 0) {
            searchResults.append(row);
        }
    }
    showSearchResult(0);
}

void Tavenor::userSearchNext()
{
    showSearchResult(qMin(searchIndex + 1, searchResults.size() - 1));
}

void Tavenor::userSearchPrev()
{
    showSearchResult(qMax(searchIndex - 1, 0));
}

void Tavenor::showSearchResult(int index)
{
    if (searchResults.isEmpty()) {
        return;
    }
    searchIndex = index;
    ui->userListWidget->setCurrentRow(searchResults.at(index));
}

void Tavenor::sort(bool on)
{
    ui->pbSort->setText(sortText(on));
    loadUserList(currentTable);
    ui->userListWidget->setCurrentRow(currentRow);
}

void Tavenor::userSelectionChange()
{
    const QList<QListWidgetItem *> selected = ui->userListWidget->selectedItems();
    if (selected.isEmpty()) {
        return;
    }
    currentId = recordOfRow(ui->userListWidget->row(selected.first()));
    vwRecord(currentId);
}

void Tavenor::changeToUsersPage()
{
    if (currentTable.isEmpty()) {
        // Deliberate: without a current table it is the third of the list, hidden or not.
        currentTable = tableAt(2);
        if (!currentTable.isEmpty()) {
            showTableHead(currentTable);
            markCurrentTable();
        }
    }
    if (!currentTable.isEmpty()) {
        if (filterSettings() != activeFilters) {
            // Conditions that were changed and not applied go with their page.
            restoreConditions(activeFilters);
        }
        loadUserList(currentTable);
    }
    // Records may be others when the filter page is opened again.
    hasFilterChoices = false;
    ui->stPages->setCurrentIndex(RecordsPage);
    // Afterwards: an editor with the focus tells of its last change when its page goes.
    setTyped(false);
}
