// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the page on which tables are designed and fields added to them.
#include "app/Tavenor.h"

#include "app/pageforms.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "storage/schemamessages.h"
#include "ui_Tavenor.h"
#include "widgets/icons.h"
#include "widgets/newTableElement.h"
#include "widgets/ownedwidgets.h"

#include <QShortcut>

#include <algorithm>

namespace
{

// What people know the row's column by: what they typed, the table that it leads to, or the
// names that a copied field is made of.
QString nameOf(const newTableElement &row)
{
    QString column = row.columnDefinition().first;
    switch (row.kind()) {
    case newTableElement::Kind::Typed:
        return row.typedLabel();
    case newTableElement::Kind::Link:
        return column.mid(column.indexOf(Markers::FormatEnd) + Markers::FormatEnd.size());
    case newTableElement::Kind::Copied:
    case newTableElement::Kind::Empty:
        break;
    }
    return column;
}

// The column's name as it can be stored. Only the name of a linked table may need it: what was
// typed is found good before anything is stored.
QString storedColumn(const newTableElement &row)
{
    return SqlNames::madeSafe(row.columnDefinition().first);
}

// Why no link can lead from this column to the table.
QString linkRefusal(const QString &shownTable, const QString &column, const QString &table)
{
    const QString reason = SqlNames::derivedRefusal(shownTable, column);
    if (!reason.isEmpty() || Columns::linkTarget(column) == table) {
        return reason;
    }
    // Once it stands in a column's name, what is shown reads as another table.
    const QString ofTable = SqlNames::derivedRefusal(shownTable, table);
    return ofTable.isEmpty() ? SqlNames::programsWord(shownTable) : ofTable;
}

// Why no column can be made of the row, which may lead to one of the targets; empty when one can,
// or when it describes none.
QString refusalOf(const newTableElement &row, const QStringList &targets)
{
    const QString column = row.columnDefinition().first;
    switch (row.kind()) {
    case newTableElement::Kind::Typed:
        return SqlNames::labelRefusal(row.typedLabel(), Names::formatKeyword(column));
    case newTableElement::Kind::Link:
        return linkRefusal(nameOf(row), storedColumn(row), targets.value(row.linkPlace()));
    case newTableElement::Kind::Copied:
        return SqlNames::derivedRefusal(column, column);
    case newTableElement::Kind::Empty:
        break;
    }
    return QString();
}

// A row of the page, or of a sub-table, and what is wrong with it.
struct Fault {
    newTableElement *row = nullptr;
    QString reason;
};

// What is wrong with the row or with the columns of its sub-table.
Fault faultOf(newTableElement *row, const QStringList &targets)
{
    QString reason = refusalOf(*row, targets);
    if (!reason.isEmpty() || !row->columnDefinition().first.contains(Formats::SubTable)) {
        return {row, reason};
    }
    QStringList earlier;
    for (newTableElement *const candidate : row->subRows()) {
        const QString column = storedColumn(*candidate);
        reason = refusalOf(*candidate, targets);
        if (reason.isEmpty() && Columns::isRepeatedLink(column, earlier)) {
            reason = SqlNames::taken(nameOf(*candidate));
        }
        if (!reason.isEmpty()) {
            return {candidate, reason};
        }
        earlier.append(column);
    }
    return {};
}

// True when nobody filled in the sub-table of a row without a name, or when it has none.
bool isUnused(const newTableElement &row)
{
    if (!row.isSubTable()) {
        return true;
    }
    const QList<newTableElement *> &rows = row.subRows();
    return std::all_of(rows.begin(), rows.end(), [](const newTableElement *subRow) {
        return subRow->kind() == newTableElement::Kind::Empty;
    });
}

// True when the table, with these columns, cannot have the new one: two SUBTABLE fields of one
// name would share their detail tables, and a link that is added to a detail table is written
// down for later ones before the database can refuse it.
bool isTaken(const QString &column, const QString &table, const QStringList &columns)
{
    if (table.contains(Formats::SubTable) && Columns::isRepeatedLink(column, columns)) {
        return true;
    }
    return std::any_of(columns.begin(), columns.end(), [&column](const QString &other) {
        return SubTables::isSameField(column, other);
    });
}

// The columns with names that can be stored.
ColumnDefinitions storable(ColumnDefinitions columns)
{
    for (ColumnDefinition &column : columns) {
        column.first = SqlNames::madeSafe(column.first);
    }
    return columns;
}

} // namespace

void Tavenor::setDesignerTexts()
{
    QPushButton *const cancel = ui->bbNewTable->button(QDialogButtonBox::Cancel);
    cancel->setText(QStringLiteral("Annulla"));
    // The icons of the other pages instead of the desktop's.
    cancel->setIcon(Icons::shared(QStringLiteral(":/cancelIcon")));
    ui->bbNewTable->button(QDialogButtonBox::Ok)
        ->setIcon(Icons::shared(QStringLiteral(":/saveIcon")));
    ui->newElementScroll->setAccessibleName(QStringLiteral("Campi"));
}

void Tavenor::connectDesigner()
{
    connect(ui->actionTable, &QAction::triggered, this, &Tavenor::newTable);
    connect(ui->actionAdd_Field, &QAction::triggered, this, &Tavenor::addField);
    connect(ui->pbIconImage, &QPushButton::clicked, this, &Tavenor::addTableIcon);
    connect(ui->bbNewTable, &QDialogButtonBox::accepted, this, &Tavenor::acceptedNewTable);
    connect(ui->bbNewTable, &QDialogButtonBox::rejected, this, &Tavenor::cancelNewTable);
    auto *const escape = new QShortcut(QKeySequence(Qt::Key_Escape), ui->newTable);
    connect(escape, &QShortcut::activated, this, &Tavenor::escapeDesigner);
    // Whatever takes the page away, its rows go with it.
    connect(ui->stPages, &QStackedWidget::currentChanged, this, [this](int page) {
        if (page != DesignerPage) {
            clearDesignerRows();
        }
        updateTableHead();
    });
}

void Tavenor::newTable()
{
    if (!hasDatabase() || !mayDiscardTyped()) {
        return;
    }
    addingFields = false;
    ui->lbDesigner->setText(ui->actionTable->text());
    ui->leTableName->clear();
    ui->leIconData->clear();
    showDesigner();
    appendDesignerRow();
    ui->leTableName->setFocus();
}

void Tavenor::addField()
{
    if (!hasCurrentTable() || !mayDiscardTyped()) {
        return;
    }
    addingFields = true;
    ui->lbDesigner->setText(ui->actionAdd_Field->text());
    ui->leTableName->setText(Names::tableDisplayName(currentTable));
    ui->leTableName->setCursorPosition(0);
    ui->leIconData->clear();
    showDesigner();
    appendFieldRow()->focusName();
}

void Tavenor::showDesigner()
{
    rememberFocus();
    clearDesignerRows();
    ui->leTableName->setEnabled(!addingFields);
    ui->leIconData->setEnabled(!addingFields);
    ui->pbIconImage->setVisible(!addingFields);
    ui->cbHiddenTable->setChecked(false);
    ui->cbHiddenTable->setVisible(!addingFields);
    ui->stPages->setCurrentIndex(DesignerPage);
    updateTableHead();
    // Once for all rows: each table is asked for its columns.
    designerTargets = linkTargets();
    // The entry page is left for good, if it was open.
    clearInputPage();
    putHeadBeforeRows();
}

void Tavenor::updateTableHead()
{
    const bool ofTable = addingFields || ui->stPages->currentIndex() != DesignerPage;
    ui->lbListIcon->setVisible(ofTable);
    ui->lbListName->setVisible(ofTable);
    if (!ofTable) {
        ui->headerLayout->insertWidget(0, ui->lbDesigner, 1);
    } else if (ui->lbDesigner->parentWidget() != ui->newTable) {
        ui->newTablePageLayout->insertWidget(0, ui->lbDesigner);
    }
}

// Rows come last in the keyboard's order, wherever the rest of the page stands in it.
void Tavenor::putHeadBeforeRows()
{
    QWidget *last = previousInFocusChain();
    while ((last->focusPolicy() & Qt::TabFocus) == 0) {
        last = last->previousInFocusChain();
    }
    for (QWidget *const control :
         {static_cast<QWidget *>(ui->leTableName), static_cast<QWidget *>(ui->cbHiddenTable),
          static_cast<QWidget *>(ui->leIconData), static_cast<QWidget *>(ui->pbIconImage)}) {
        setTabOrder(last, control);
        last = control;
    }
}

void Tavenor::addNewTableElement()
{
    appendFieldRow()->focusName();
}

newTableElement *Tavenor::appendFieldRow()
{
    newTableElement *const row = appendDesignerRow();
    if (currentTable.contains(Formats::SubTable)) {
        row->removeSubtableType();
    }
    return row;
}

newTableElement *Tavenor::appendDesignerRow()
{
    auto *const row = new newTableElement;
    designerRows.append(row);
    connect(row, &newTableElement::addNewElem, this, &Tavenor::addNewTableElement);
    connect(row, &newTableElement::changeTable, this, &Tavenor::changeElementSelectedTable);
    row->setNumber(designerRows.size());
    QStringList shownTargets;
    for (const QString &name : qAsConst(designerTargets)) {
        shownTargets.append(Names::tableDisplayName(name));
    }
    row->setTables(allTables, shownTargets);
    ui->newTableLayout->addWidget(row);
    row->show();
    QPushButton *const cancel = ui->bbNewTable->button(QDialogButtonBox::Cancel);
    setTabOrder(lastTabStop(row), cancel);
    setTabOrder(cancel, ui->bbNewTable->button(QDialogButtonBox::Ok));
    return row;
}

QStringList Tavenor::linkTargets() const
{
    QStringList targets;
    for (const QString &name : allTables) {
        // Deliberate: while a table is current, only tables that name it in a column are offered.
        if (!Names::isReservedTable(name) && db->hasFieldContaining(currentTable, name)) {
            targets.append(name);
        }
    }
    return targets;
}

void Tavenor::changeElementSelectedTable(newTableElement *nTe, QString table)
{
    nTe->setExistingFields(db->fieldNames(table));
}

void Tavenor::clearDesignerRows()
{
    retireWidgets(ui->newTableLayout, designerRows);
}

void Tavenor::addTableIcon()
{
    ui->leIconData->setText(chooseTableIcon());
}

void Tavenor::acceptedNewTable()
{
    const QString table = designedTable();
    if (table.isEmpty()) {
        warn(QStringLiteral("ERRORE: La Tabella è vuota!"));
        return;
    }
    QString error;
    const bool exists = addingFields || db->tableExists(table, &error);
    if (!error.isEmpty()) {
        warn(SchemaMessages::createFailed(ui->leTableName->text(), error));
        return;
    }
    if (refuseTableName(table) || refuseRows(table, exists)) {
        return;
    }
    if (exists) {
        // Deliberate: the page is left even when a field could not be added.
        addDesignedFields(table);
    } else if (!createDesignedTable(table)) {
        return;
    }
    cancelNewTable();
}

void Tavenor::cancelNewTable()
{
    clearDesignerRows();
    changeToUsersPage();
    showCurrentRecord();
    restoreFocus();
}

bool Tavenor::isDesigned() const
{
    if (ui->stPages->currentIndex() != DesignerPage) {
        return false;
    }
    const bool isNamed = !addingFields && !ui->leTableName->text().isEmpty();
    return isNamed || designerRows.size() > 1 ||
           std::any_of(designerRows.begin(), designerRows.end(), [](const newTableElement *row) {
               return row->kind() != newTableElement::Kind::Empty;
           });
}

bool Tavenor::mayDropDesign()
{
    return !isDesigned() || confirm(QStringLiteral("Chiudere senza salvare le modifiche?"));
}

void Tavenor::escapeDesigner()
{
    if (mayDropDesign()) {
        cancelNewTable();
    }
}

QString Tavenor::designedTable() const
{
    if (addingFields) {
        return currentTable;
    }
    const QString name = SqlNames::withoutBlanks(Names::tableStoredName(ui->leTableName->text()));
    const bool hides = ui->cbHiddenTable->isChecked() && !name.isEmpty();
    return hides ? Markers::HiddenTable + name : name;
}

bool Tavenor::refuseTableName(const QString &table)
{
    if (addingFields) {
        return false;
    }
    const QString typed = ui->leTableName->text();
    QString reason = SqlNames::tableRefusal(typed, table);
    const QString existing = existingTable(table, &reason);
    if (!reason.isEmpty()) {
        warn(SchemaMessages::createFailed(typed, reason));
    } else if (existing != table) {
        // To the database a name in other letter case is the same table.
        warnNameTaken(table);
    } else {
        return false;
    }
    ui->leTableName->setFocus();
    return true;
}

bool Tavenor::refuseRows(const QString &table, bool exists)
{
    const QString shownTable = ui->leTableName->text();
    QString error;
    QStringList columns = exists ? db->fieldNames(table, &error) : QStringList();
    if (!error.isEmpty()) {
        warn(SchemaMessages::addColumnFailed(shownTable, nameOf(*designerRows.first()), error));
        return true;
    }
    for (newTableElement *const row : qAsConst(designerRows)) {
        const QString column = storedColumn(*row);
        Fault fault = faultOf(row, designerTargets);
        if (row->kind() == newTableElement::Kind::Empty) {
            // An added row that nobody filled in asks for nothing.
            fault = {row, exists && isUnused(*row) ? QString() : SqlNames::missingName()};
        } else if (fault.reason.isEmpty() && isTaken(column, table, columns)) {
            fault = {row, SqlNames::taken(nameOf(*row))};
        } else if (fault.reason.isEmpty()) {
            // Another program may have named the table so that no statement can change it.
            fault = {row, SqlNames::refusal(table)};
        }
        columns.append(column);
        if (!fault.reason.isEmpty()) {
            warn(exists ? SchemaMessages::addColumnFailed(shownTable, nameOf(*row), fault.reason)
                        : SchemaMessages::createFailed(shownTable, fault.reason));
            fault.row->focusName();
            return true;
        }
    }
    return false;
}

void Tavenor::addDesignedFields(const QString &table)
{
    db->inOneStep([this, &table] {
        for (const newTableElement *const row : qAsConst(designerRows)) {
            const QString column = storedColumn(*row);
            if (!column.isEmpty()) {
                addFieldToTable(table, column, row->columnDefinition().second);
            }
            if (column.contains(Formats::SubTable)) {
                createSubTableConfig(table, column, storable(row->subTableColumns()));
            }
        }
        return true;
    });
}

bool Tavenor::createDesignedTable(const QString &table)
{
    ColumnDefinitions columns;
    for (const newTableElement *const row : qAsConst(designerRows)) {
        columns.append(row->columnDefinition());
    }
    columns = Columns::withUserPath(storable(columns));
    const bool made = db->inOneStep([this, &table, &columns] {
        // Deliberate: written first, so they stay when the table then cannot be made.
        for (const newTableElement *const row : qAsConst(designerRows)) {
            const QString column = storedColumn(*row);
            if (column.contains(Formats::SubTable)) {
                createSubTableConfig(table, column, storable(row->subTableColumns()));
            }
        }
        const FieldPairs settings = settingsRow(table, ui->leIconData->text());
        if (!createTableChecked(table, columns)) {
            return false;
        }
        addRecord(Markers::SettingsTable, settings, false);
        return true;
    });
    if (made) {
        // Deliberate: a name that was typed as hidden is listed until the list is built again.
        addToTableList(table, !ui->cbHiddenTable->isChecked() || showHidden);
    }
    return made;
}

void Tavenor::addFieldToTable(const QString &table, const QString &column, const QString &type)
{
    if (table.contains(Formats::SubTable)) {
        const SubTables::Parts parts = SubTables::parts(table);
        QString base = SubTables::configurationBase(parts.owner, parts.label);
        QString error;
        ColumnDefinitions known = subConfigColumns(base, &error);
        if (known.isEmpty()) {
            // The sub-table's name is made safe, that of its field in an older file may not be.
            base = SqlNames::madePlain(base);
            known = subConfigColumns(base, &error);
        }
        if (!error.isEmpty()) {
            warn(SchemaMessages::addColumnFailed(column, table, error));
            return;
        }
        addSubConfigRow(SubTables::configurationName(base, known.size()), {column, type});
    }
    db->addColumn(table, column, type);
}
