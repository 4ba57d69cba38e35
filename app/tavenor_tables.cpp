// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: table buttons, table icons, saved-filter buttons.
#include "app/Tavenor.h"

#include "app/databasepath.h"
#include "app/ownedwidgets.h"
#include "app/tableicons.h"
#include "model/attachments.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/recordlines.h"
#include "model/subtables.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

#include <algorithm>

namespace
{

const QSize HeadIconSize(100, 50);
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

// Takes the buttons that are meant away, as retireWidgets() does.
template<typename Meant>
void retireWhere(QLayout *layout, QList<ListButtonForm *> &buttons, const Meant &meant)
{
    const auto firstGone =
        std::stable_partition(buttons.begin(), buttons.end(),
                              [&meant](const ListButtonForm *button) { return !meant(button); });
    const int kept = static_cast<int>(firstGone - buttons.begin());
    QList<ListButtonForm *> gone = buttons.mid(kept);
    buttons = buttons.mid(0, kept);
    retireWidgets(layout, gone);
}

// The Ids of the rows whose text in this column is wanted.
template<typename Wanted>
QVector<int> idsOfRows(const QString &table, const QString &column, const Wanted &wanted)
{
    QVector<int> ids;
    RowPass rows(table, {Markers::IdColumn, column});
    while (rows.next()) {
        const int id = Values::recordId(rows.value(0));
        if (id > 0 && wanted(rows.value(1).toString())) {
            ids.append(id);
        }
    }
    return ids;
}

} // namespace

void Tavenor::setTableTexts()
{
    ui->pbFiltersPage->setText(QStringLiteral("Filtri"));
    ui->pbReturn->setText(QStringLiteral("Indietro"));
    ui->pbCalc->setText(QStringLiteral("Calcola"));
    ui->tablesScroll->setAccessibleName(QStringLiteral("Tabelle"));
    ui->filtersScroll->setAccessibleName(QStringLiteral("Filtri"));
    ui->leDbName->setAccessibleName(QStringLiteral("Database"));
}

void Tavenor::connectTables()
{
    ui->listFrame->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui->listFrame, &QWidget::customContextMenuRequested, this, &Tavenor::showTableMenu);
}

void Tavenor::fillTableList()
{
    const TableIcons icons(databaseFolder);
    for (const QString &name : qAsConst(allTables)) {
        if (Names::isReservedTable(name) && !advancedMode) {
            continue;
        }
        if (name.contains(Markers::HiddenTable) && !showHidden) {
            continue;
        }
        const QIcon icon = icons.icon(name);
        addTableButton(name, icon);
        // Deliberate: the head shows the icon of the first table listed in the file, whichever
        // table is current.
        if (name == allTables.first()) {
            ui->lbListIcon->setPixmap(icon.pixmap(HeadIconSize));
        }
    }
    markCurrentTable();
}

void Tavenor::rebuildTableList()
{
    retireWidgets(ui->listButtonLayout, listButtons);
    fillTableList();
}

void Tavenor::addTableButton(const QString &table, const QIcon &icon)
{
    auto *const button = new ListButtonForm;
    listButtons.append(button);
    button->setTableName(table);
    button->setIcon(icon);
    ui->listButtonLayout->addWidget(button);
    connect(button, &ListButtonForm::changeList, this, &Tavenor::changeTable);
}

void Tavenor::addToTableList(const QString &table, bool listed)
{
    allTables.append(table);
    if (listed) {
        addTableButton(table, tableIcon(table));
    }
}

FieldPairs Tavenor::settingsRow(const QString &table, const QString &iconPath) const
{
    return {{Markers::IdColumn, Values::oneCharacterId(db->rowCount(Markers::SettingsTable))},
            {ReservedTables::Settings::TableName, Values::quotesDoubled(table)},
            {ReservedTables::Settings::IconPath, Values::quotesDoubled(iconPath)}};
}

bool Tavenor::hasCurrentTable()
{
    if (currentTable.isEmpty()) {
        warn(NoTable);
        return false;
    }
    return true;
}

bool Tavenor::hasDatabase()
{
    if (!db->isOpen()) {
        warn(NoTable);
        return false;
    }
    return true;
}

QString Tavenor::firstOrdinaryTable() const
{
    for (const QString &name : qAsConst(allTables)) {
        if (!Names::isReservedTable(name) && !name.contains(Markers::HiddenTable)) {
            return name;
        }
    }
    return QString();
}

QString Tavenor::tableAt(int place) const
{
    const QString name = allTables.value(place);
    return Names::isReservedTable(name) && !advancedMode ? firstOrdinaryTable() : name;
}

void Tavenor::markCurrentTable()
{
    for (ListButtonForm *const button : qAsConst(listButtons)) {
        button->setCurrent(button->tableName() == currentTable);
    }
}

QIcon Tavenor::tableIcon(const QString &table) const
{
    return TableIcons(databaseFolder).icon(table);
}

void Tavenor::showTableHead(const QString &table)
{
    ui->lbListName->setText(Names::tableDisplayName(table));
    ui->lbListIcon->setPixmap(tableIcon(table).pixmap(HeadIconSize));
}

void Tavenor::changeTable(QString table)
{
    showTableHead(table);
    currentTable = table;
    markCurrentTable();
    changeToUsersPage();
    currentRow = 0;
    if (listLines.isEmpty()) {
        showCurrentRecord();
        return;
    }
    currentId = recordOfRow(0);
    selectRow(0);
    vwRecord(currentId);
}

void Tavenor::showHiddenTable()
{
    allTables = db->tables();
    showHidden = ui->actionShow_Hidden_Tables->isChecked();
    rebuildTableList();
}

void Tavenor::changeTableIcon()
{
    if (!hasCurrentTable()) {
        return;
    }
    // Deliberate: a cancelled dialog goes on with an empty name, which leaves the table with
    // an empty icon.
    const QString chosen =
        QFileDialog::getOpenFileName(this, tr("Open File"), QStringLiteral("/home"),
                                     tr("Images (*.png *.jpg *.jpeg *.bmp *.tif)"));
    const QString fileName = DatabasePath::fileName(chosen);
    const QString storedPath = dataFolderName + QLatin1Char('/') + fileName;
    if (QFileInfo(chosen).isFile() && Attachments::mayBeOpened(databaseFolder, storedPath)) {
        // Deliberate: an icon that is there already is never overwritten.
        QFile::copy(chosen, databaseFolder + storedPath);
    }

    const QString iconPath = Values::quotesDoubled(storedPath);
    const QString iconColumn = ReservedTables::Settings::IconPath;
    const QSqlRecord settings =
        db->findRecord(Markers::SettingsTable, ReservedTables::Settings::TableName, currentTable);
    if (settings.isEmpty()) {
        addRecord(Markers::SettingsTable,
                  {{ReservedTables::Settings::TableName, Values::quotesDoubled(currentTable)},
                   {iconColumn, iconPath}},
                  false);
    } else {
        const int id = DataBase::recordValue(settings, Markers::IdColumn).toInt();
        db->updateField(Markers::SettingsTable, id, iconColumn, iconPath);
    }
    rebuildTableList();
    showTableHead(currentTable);
}

void Tavenor::showTableMenu(const QPoint &place)
{
    if (!administratorMode) {
        return;
    }
    QMenu menu;
    menu.addActions(secondDoor.mid(1));
    menu.exec(ui->listFrame->mapToGlobal(place));
}

void Tavenor::rebuildFilterButtons()
{
    retireWidgets(ui->filtersButtonLayout, filterButtons);
    const TableIcons icons(databaseFolder);
    RowPass rows(Markers::FiltersTable,
                 {ReservedTables::Filters::Name, ReservedTables::Filters::TableName});
    while (rows.next()) {
        const QString name = rows.value(0).toString();
        if (name.contains(Markers::SavedFilter)) {
            continue;
        }
        const QString table = rows.value(1).toString();
        auto *const button = new ListButtonForm;
        filterButtons.append(button);
        button->setSavedFilter(table, name);
        button->setIcon(icons.icon(table));
        ui->filtersButtonLayout->addWidget(button);
    }
}

bool Tavenor::removeCurrentTable(bool batch)
{
    const QString table = currentTable;
    if (batch) {
        return db->dropTable(table);
    }
    const int buttons = filterButtons.size();
    const bool removed = db->inOneStep([this, &table] { return dropWithItsRows(table); });
    // The silent try may have taken buttons away whose filters are still there.
    if (removed || filterButtons.size() != buttons) {
        rebuildFilterButtons();
    }
    if (removed) {
        removeFromTableList(table);
        checkWayBack();
        showTableAfterRemoval();
    }
    return removed;
}

bool Tavenor::dropWithItsRows(const QString &table)
{
    // The columns tell of the configurations only while the table is there.
    const QStringList configurations = configurationsOf(table);
    // A table that stays keeps what belongs to it.
    if (!db->dropTable(table)) {
        return false;
    }
    removeConfigurations(configurations);
    removeSettingsOf(table);
    removeFiltersOfTable(table);
    return true;
}

QStringList Tavenor::tablesNow() const
{
    const QStringList names = db->tables();
    return names.isEmpty() ? allTables : names;
}

QStringList Tavenor::configurationsOf(const QString &table) const
{
    const QStringList others = db->tables();
    const QString shortName = table.section(Markers::HiddenTable, 1);
    const bool hasShortName = table.contains(Markers::HiddenTable) && !others.contains(shortName);
    QStringList bases;
    for (const QString &column : db->fieldNames(table)) {
        if (!column.contains(Formats::SubTable) || Columns::isReference(column)) {
            continue;
        }
        bases.append(SubTables::configurationBase(table, column));
        if (hasShortName) {
            bases.append(SubTables::configurationBase(shortName, column));
        }
    }
    // "Soci" with a field "Note_Prestiti" and "Soci_Note" with a field "Prestiti" share one.
    for (const QString &other : others) {
        if (bases.isEmpty() || other == table) {
            continue;
        }
        for (const QString &column : db->fieldNames(other)) {
            if (column.contains(Formats::SubTable)) {
                bases.removeAll(SubTables::configurationBase(other, column));
            }
        }
    }
    return bases;
}

void Tavenor::removeConfigurations(const QStringList &bases)
{
    const auto belongs = [&bases](const QString &name) {
        return std::any_of(bases.begin(), bases.end(), [&name](const QString &base) {
            return SubTables::belongsToConfiguration(name, base);
        });
    };
    for (const int id : idsOfRows(Markers::SubTablesConfigsTable,
                                  ReservedTables::SubTablesConfigs::Name, belongs)) {
        db->deleteRecord(Markers::SubTablesConfigsTable, id);
    }
}

void Tavenor::removeSettingsOf(const QString &table)
{
    for (const int id : idsOfRows(Markers::SettingsTable, ReservedTables::Settings::TableName,
                                  [&table](const QString &name) { return name == table; })) {
        db->deleteRecord(Markers::SettingsTable, id);
    }
}

void Tavenor::removeFiltersOfTable(const QString &table)
{
    for (const int id : idsOfRows(Markers::FiltersTable, ReservedTables::Filters::TableName,
                                  [&table](const QString &name) { return name == table; })) {
        db->deleteRecord(Markers::FiltersTable, id);
    }
    retireWhere(ui->filtersButtonLayout, filterButtons, [&table](const ListButtonForm *button) {
        return button->savedFilterTable() == table;
    });
}

void Tavenor::disableFilters()
{
    ui->pbFilter->setIcon(QIcon(QStringLiteral(":/ledOffIcon")));
}

void Tavenor::removeFromTableList(const QString &table)
{
    allTables.removeAll(table);
    retireWhere(ui->listButtonLayout, listButtons,
                [&table](const ListButtonForm *button) { return button->tableName() == table; });
}

void Tavenor::showTableAfterRemoval()
{
    // Deliberate: the second name of the list, whichever it is; nothing when there is one name
    // left.
    const QString next = allTables.size() < 2 ? QString() : tableAt(1);
    if (next.isEmpty()) {
        showNoTable();
    } else {
        changeTable(next);
    }
}

void Tavenor::showNoTable()
{
    currentTable.clear();
    currentId = 0;
    currentRow = 0;
    emptyPages();
    disableFilters();
    markCurrentTable();
    ui->lbListName->setText(RecordLines::Empty);
    ui->lbViewInfo->setText(RecordLines::Empty);
    explainEmptyList(false);
}
