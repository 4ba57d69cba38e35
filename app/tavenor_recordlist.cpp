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
#include "widgets/ListButtonForm.h"
#include "widgets/buttonkeys.h"
#include "widgets/icons.h"
#include "widgets/outputDataForm.h"

#include <QSignalBlocker>
#include <QStringMatcher>

#include <algorithm>

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
    setButtonKey(ui->pbUserNext, QKeySequence(Qt::Key_F3));
    setButtonKey(ui->pbUserPrev, QKeySequence(Qt::SHIFT + Qt::Key_F3));
    connect(ui->userListWidget, &RecordListWidget::menuRequested, this, &Tavenor::showListMenu);
    connect(ui->userListWidget, &QListWidget::itemSelectionChanged, this,
            &Tavenor::userSelectionChange);
    // A click on the line that is selected already changes no selection.
    connect(ui->userListWidget, &QListWidget::itemClicked, this, &Tavenor::showHighlighted);
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
        ui->userListWidget->addLines(listLines);
    }
    if (listLines.isEmpty()) {
        ui->lbViewInfo->setText(RecordLines::Empty);
    }
    ui->lbToolbar->setText(RecordLines::countText(listLines.size()));
    // A list that is shorter than the table must not pass for the whole of it. A detail table that
    // could not be made has been reported already.
    listIsUnread = !content.error.isEmpty() && (allTables.contains(table) || mayBeThere(table));
    explainEmptyList(!listIsUnread);
    if (listIsUnread) {
        warnUnreadable(table, content.error);
    }
}

bool Tavenor::mayBeThere(const QString &table) const
{
    QString error;
    return db->tableExists(table, &error) || !error.isEmpty();
}

void Tavenor::warnUnreadable(const QString &table, const QString &reason)
{
    warn(QString::asprintf("ERRORE: Impossibile leggere la tabella %s!\n%s",
                           qUtf8Printable(Names::tableDisplayName(table)), qUtf8Printable(reason)));
}

RecordListContent Tavenor::readRecordList(const QString &table)
{
    const Progress progress(*this, QStringLiteral("Elaborazione"), table);
    listedConditions = conditionsInForce();
    RecordListContent content;
    const QStringList columns = db->fieldNames(table, &content.error);
    if (!content.error.isEmpty()) {
        // Each further attempt would wait as long for the lock of another program.
        return content;
    }
    const int total = RowPass::count(table);
    const RecordListContent::Steps steps = {
        [this, total](int done) { updateProgress(done, total); }, [this] { keepPainting(); }};
    content = RecordListContent::read(table, columns, steps, filterPredicate(columns));
    if (ui->pbSort->isChecked()) {
        content.sort(steps);
    }
    content.index(steps);
    return content;
}

void Tavenor::explainEmptyList(bool tableWasRead)
{
    if (currentTable.isEmpty()) {
        ui->userListWidget->setPlaceholder(QStringLiteral("Nessuna Tabella Caricata!"),
                                           waysToATable(),
                                           Icons::shared(QStringLiteral(":/listIcon")));
    } else if (tableWasRead && listLines.isEmpty()) {
        const bool filtered = !listedConditions.isEmpty();
        ui->userListWidget->setPlaceholder(RecordLines::countText(0), waysToARecord(filtered),
                                           filtered ? Icons::shared(QStringLiteral(":/filterIcon"))
                                                    : tableIcon(currentTable));
    } else {
        ui->userListWidget->setPlaceholder(QString(), {});
    }
}

QStringList Tavenor::waysToARecord(bool filtered) const
{
    if (filtered) {
        const QStringList buttons = {ui->pbFilter->text(), ui->pbResetFilters->text(),
                                     ui->pbSaveFilters->text()};
        return {buttons.join(QStringLiteral(" › "))};
    }
    return readOnly ? QStringList() : QStringList{ui->pbNewUser->toolTip()};
}

QStringList Tavenor::waysToATable() const
{
    if (!db->isOpen()) {
        return {QStringLiteral("File › Apri Db"),
                QStringLiteral("Opzioni › Modo Amministratore, poi File › Nuovo Db")};
    }
    for (const ListButtonForm *const button : listButtons) {
        // Nobody keeps records in the program's own tables, which the advanced mode lists.
        if (!Names::isReservedTable(button->tableName())) {
            return {showListAction->text() + QStringLiteral(" › ") +
                    Names::tableDisplayName(button->tableName())};
        }
    }
    if (readOnly) {
        return {};
    }
    return {administratorMode ? QStringLiteral("Opzioni › Crea Tabella")
                              : QStringLiteral("Opzioni › Modo Amministratore, "
                                               "poi Opzioni › Crea Tabella")};
}

void Tavenor::clearRecordList()
{
    listIdMap.clear();
    listLines.clear();
    lineIds.clear();
    listIsUnread = false;
    unreadId = 0;
    // Matches found in lines that are gone lead nowhere.
    searchResults.clear();
    ui->userSearchEdit->setNoMatch(QString());
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

bool Tavenor::isLineOfShown(int row) const
{
    const int own = lineIds.indexOf(currentId);
    return recordOfRow(row) == currentId || (own >= 0 && listLines.at(own) == listLines.at(row));
}

void Tavenor::showHighlighted()
{
    const int row = ui->userListWidget->currentRow();
    // After a jump to a record that shares its line with another, the first line is selected.
    if (row >= 0 && !isLineOfShown(row)) {
        userSelectionChange();
    }
}

void Tavenor::selectRow(int row)
{
    const QSignalBlocker quiet(ui->userListWidget);
    ui->userListWidget->revealRow(row);
}

void Tavenor::showRecordOf(const QString &table, int id)
{
    listTable(table);
    currentRow = 0;
    currentId = id;
    if (listIsUnread) {
        // The record could not be read either.
        showCurrentRecord();
        return;
    }
    selectRow(0);
    vwRecord(id);
}

void Tavenor::showFirstRecord()
{
    currentRow = 0;
    if (listLines.isEmpty()) {
        currentId = 0;
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
        ui->userSearchEdit->setNoMatch(QString());
        return;
    }
    findLines(userName);
    showSearchResult(0);
}

void Tavenor::findLines(const QString &text)
{
    searchResults.clear();
    const QStringMatcher matcher(text, Qt::CaseInsensitive);
    for (int row = 0; row < listLines.size(); ++row) {
        if (matcher.indexIn(listLines.at(row)) >= 0) {
            searchResults.append(row);
        }
    }
    ui->userSearchEdit->setNoMatch(searchResults.isEmpty() ? RecordLines::countText(0) : QString());
}

void Tavenor::searchAgain()
{
    const QString text = ui->userSearchEdit->text();
    if (text.length() < ShortestSearch) {
        return;
    }
    findLines(text);
    // The next match is the one below the line that is selected.
    const auto below = std::upper_bound(searchResults.begin(), searchResults.end(),
                                        ui->userListWidget->currentRow());
    searchIndex = int(below - searchResults.begin()) - 1;
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
    ui->userListWidget->revealRow(searchResults.at(index));
    showHighlighted();
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
    focusRecords();
}
