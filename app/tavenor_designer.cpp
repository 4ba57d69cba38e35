// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the page on which tables are designed and fields added to them.
#include "app/Tavenor.h"

#include "app/ownedwidgets.h"
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

// Why no column can be made of the row; empty when one can, or when it describes none.
QString refusalOf(const newTableElement &row)
{
    const QString column = row.columnDefinition().first;
    switch (row.kind()) {
    case newTableElement::Kind::Typed:
        return SqlNames::labelRefusal(row.typedLabel(), Names::formatKeyword(column));
    case newTableElement::Kind::Link:
        return SqlNames::derivedRefusal(nameOf(row), SqlNames::madeSafe(column));
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
Fault faultOf(newTableElement *row)
{
    QList<newTableElement *> rows = {row};
    if (row->columnDefinition().first.contains(Formats::SubTable)) {
        rows += row->subRows();
    }
    for (newTableElement *const candidate : qAsConst(rows)) {
        const QString reason = refusalOf(*candidate);
        if (!reason.isEmpty()) {
            return {candidate, reason};
        }
    }
    return {};
}

// The columns with names that can be stored. Only the name of a linked table may need it: what
// was typed has been found good.
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
    // Whatever takes the page away, its rows go with it.
    connect(ui->stPages, &QStackedWidget::currentChanged, this, [this](int page) {
        if (page != DesignerPage) {
            clearDesignerRows();
        }
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
    clearDesignerRows();
    ui->leTableName->setEnabled(!addingFields);
    ui->leIconData->setEnabled(!addingFields);
    ui->pbIconImage->setVisible(!addingFields);
    ui->cbHiddenTable->setChecked(false);
    ui->cbHiddenTable->setVisible(!addingFields);
    ui->stPages->setCurrentIndex(DesignerPage);
    // The entry page is left for good, if it was open.
    clearInputPage();
    putHeadBeforeRows();
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
    row->setTables(allTables, linkTargets());
    ui->newTableLayout->addWidget(row);
    row->show();
    QPushButton *const cancel = ui->bbNewTable->button(QDialogButtonBox::Cancel);
    setTabOrder(lastTabStop(row), cancel);
    setTabOrder(cancel, ui->bbNewTable->button(QDialogButtonBox::Ok));
    return row;
}

QStringList Tavenor::linkTargets() const
{
    QStringList shown;
    for (const QString &name : allTables) {
        // Deliberate: while a table is current, only tables that name it in a column are offered.
        if (!Names::isReservedTable(name) && db->hasFieldContaining(currentTable, name)) {
            shown.append(Names::tableDisplayName(name));
        }
    }
    return shown;
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
    const bool exists = addingFields || db->tableExists(table);
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
    const QString reason = SqlNames::tableRefusal(typed, table);
    if (!reason.isEmpty()) {
        warn(SchemaMessages::createFailed(typed, reason));
    } else if (existingTable(table) != table) {
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
    for (newTableElement *const row : qAsConst(designerRows)) {
        Fault fault = faultOf(row);
        if (row->kind() == newTableElement::Kind::Empty) {
            // An added row that nobody filled in asks for nothing.
            fault = {row, exists ? QString() : SqlNames::missingName()};
        } else if (fault.reason.isEmpty()) {
            // Another program may have named the table so that no statement can change it.
            fault = {row, SqlNames::refusal(table)};
        }
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
            const ColumnDefinition column = storable({row->columnDefinition()}).first();
            if (!column.first.isEmpty()) {
                addFieldToTable(table, column.first, column.second);
            }
            if (column.first.contains(Formats::SubTable)) {
                createSubTableConfig(table, column.first, storable(row->subTableColumns()));
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
            const QString column = storable({row->columnDefinition()}).first().first;
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
        if (subConfigColumns(base).isEmpty()) {
            // The sub-table's name is made safe, that of its field in an older file may not be.
            base = SqlNames::madePlain(base);
        }
        addSubConfigRow(SubTables::configurationName(base, subConfigColumns(base).size()),
                        {column, type});
    }
    db->addColumn(table, column, type);
}
