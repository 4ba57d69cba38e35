// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the record shown, field by field.
#include "app/Tavenor.h"

#include "app/pageforms.h"
#include "app/buttontexts.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/values.h"
#include "ui_Tavenor.h"
#include "widgets/buttonkeys.h"
#include "widgets/outputDataForm.h"
#include "widgets/ownedwidgets.h"

namespace
{

// A linked table with this many columns has nothing to show beyond its title.
constexpr int ColumnsOfATitleList = 3;

bool containsFormat(const QString &column, QLatin1String format)
{
    return column.mid(1).contains(format, Qt::CaseInsensitive);
}

} // namespace

void Tavenor::setRecordViewTexts()
{
    setButtonTexts(ui->pbPrev, "Precedente", "Record Precedente");
    setButtonTexts(ui->pbNext, "Prossimo", "Prossimo Record");
    setButtonTexts(ui->pbHideList, "Mostra Lista", "Mostra la Lista");
    ui->datiScroll->setAccessibleName(QStringLiteral("Record"));
}

void Tavenor::connectRecordView()
{
    connect(ui->pbNext, &QPushButton::clicked, this, &Tavenor::nextRecord);
    connect(ui->pbPrev, &QPushButton::clicked, this, &Tavenor::prevRecord);
    connect(ui->pbHideList, &QPushButton::toggled, ui->recordListFrame, &QWidget::setVisible);
    setButtonKey(ui->pbNext, QKeySequence(Qt::CTRL + Qt::Key_PageDown));
    setButtonKey(ui->pbPrev, QKeySequence(Qt::CTRL + Qt::Key_PageUp));
    ui->recordFrame->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui->recordFrame, &QWidget::customContextMenuRequested, this, &Tavenor::showRecordMenu);
}

void Tavenor::vwRecord(int id)
{
    const int listed = rowOfRecord(id);
    const int row = listed < 0 && !listLines.isEmpty() ? 0 : listed;
    if (listed < 0 && row >= 0 && !ui->userListWidget->item(row)->isSelected()) {
        // The selection shows the record of the first line instead.
        ui->userListWidget->setCurrentRow(row);
        return;
    }
    // One that shares its line with another record is shown under its own; one that is not in the
    // list at all gives way to the record of the first line.
    const int ownRow = lineIds.indexOf(id);
    const bool isListed = ownRow >= 0 || row < 0;
    // What is shown is what editing and deleting work on, however it came to be shown.
    currentId = isListed ? id : recordOfRow(row);
    buildRecordView(currentId, currentTable);
    if (row >= 0) {
        currentRow = row;
        selectRow(row);
        ui->lbViewInfo->setText(listLines.at(isListed ? ownRow : row));
    }
}

void Tavenor::showCurrentRecord()
{
    if (listLines.isEmpty()) {
        // What is not shown must not be edited or deleted.
        unreadId = listIsUnread ? currentId : 0;
        currentId = 0;
        clearRecordView();
    } else {
        vwRecord(currentId);
    }
}

void Tavenor::nextRecord()
{
    currentRow = qMax(rowOfRecord(currentId), 0);
    // Deliberate: the entries of the map count, so lines that share an entry are not reached.
    if (currentRow >= listIdMap.size() - 1) {
        return;
    }
    const int start = currentId;
    int row = currentRow + 1;
    while (row < listIdMap.size() && !passesFilter(currentTable, recordOfRow(row))) {
        ++row;
    }
    vwRecord(row < listIdMap.size() ? recordOfRow(row) : start);
}

void Tavenor::prevRecord()
{
    currentRow = qMax(rowOfRecord(currentId), 0);
    if (currentRow < 1) {
        return;
    }
    const int start = currentId;
    int row = currentRow - 1;
    while (row >= 0 && !passesFilter(currentTable, recordOfRow(row))) {
        --row;
    }
    vwRecord(row >= 0 ? recordOfRow(row) : start);
}

void Tavenor::clearRecordView()
{
    if (ui->datiContents->isAncestorOf(focusWidget())) {
        // The field with the focus goes; who was reading the record stays with it.
        ui->datiScroll->setFocus();
    }
    retireWidgets(ui->datiLayout, viewWidgets);
    linkFields.clear();
}

void Tavenor::buildRecordView(int id, const QString &table)
{
    clearRecordView();
    QString error;
    const QStringList columns = db->fieldNames(table, &error);
    const QSqlRecord record = error.isEmpty() ? db->recordById(table, id, &error) : QSqlRecord();
    if (!error.isEmpty()) {
        // A link that was not read must not pass for an empty one, which is filled.
        warnUnreadable(table, error);
        return;
    }
    const QString title = DataBase::recordValue(record, columns.value(1)).toString();
    UnreadTable unread;
    for (const QString &column : columns) {
        const QVariant stored = DataBase::recordValue(record, column);
        outputDataForm *form = nullptr;
        if (Columns::isReference(column)) {
            form = makeReference(column, stored, &unread);
        } else if (containsFormat(column, Formats::Link)) {
            const QVariant value = linkValueOf(id, column, stored, &unread);
            form = makeLink(column, value, &unread);
        } else {
            form = makeField(column, stored);
        }
        if (form != nullptr) {
            form->setRecordId(id);
            form->setOwnerTable(table);
            form->setRecordTitle(title);
        }
    }
    showFields();
    if (!unread.reason.isEmpty()) {
        // A field that is missing on the page must not pass for an empty one.
        warnUnreadable(unread.table, unread.reason);
    }
}

void Tavenor::showFields()
{
    const LayoutPause pause(ui->datiContents);
    for (outputDataForm *const form : qAsConst(viewWidgets)) {
        ui->datiLayout->addWidget(form);
    }
    alignLabels(viewWidgets);
    for (outputDataForm *const form : qAsConst(viewWidgets)) {
        form->show();
    }
    orderRecordView();
    ui->datiScroll->ensureVisible(0, 0);
}

void Tavenor::orderRecordView()
{
    // The buttons under the fields were made before them and would come before them.
    QWidget *before = viewWidgets.isEmpty() ? ui->datiScroll : lastTabStop(viewWidgets.last());
    for (QWidget *const button :
         {static_cast<QWidget *>(ui->pbHideList), static_cast<QWidget *>(ui->pbDeleteUser),
          static_cast<QWidget *>(ui->pbEditUser), static_cast<QWidget *>(ui->pbNewUser)}) {
        setTabOrder(before, button);
        before = button;
    }
}

outputDataForm *Tavenor::makeReference(const QString &column, const QVariant &stored,
                                       UnreadTable *unread)
{
    if (!unread->reason.isEmpty()) {
        // It would only be waited for once more.
        return nullptr;
    }
    const Columns::Reference reference = Columns::reference(column);
    const int linkedId = Values::wholePart(stored);
    const QVariant value =
        db->fieldValueById(reference.table, linkedId, reference.field, &unread->reason);
    unread->table = reference.table;
    outputDataForm *const form = makeField(column, value);
    if (form != nullptr) {
        form->setLinkTarget(reference.table, linkedId);
        form->setXViewVisible(db->fieldNames(reference.table).size() > ColumnsOfATitleList);
    }
    return form;
}

QVariant Tavenor::linkValueOf(int id, const QString &column, const QVariant &stored,
                              UnreadTable *unread)
{
    const QString text = stored.toString();
    const bool unfilled = text.isEmpty() || text == QLatin1String("0");
    if (!unfilled || !unread->reason.isEmpty() ||
        !db->idExists(currentTable, id, &unread->reason)) {
        return stored;
    }
    const QString target = Columns::linkTarget(column);
    unread->table = target;
    if (!db->tableExists(target, &unread->reason)) {
        return QVariant();
    }
    // A table of another program may have a name that no statement can write to.
    if (!readOnly && SqlNames::canStandUnquoted(currentTable)) {
        updateRecordFields(id, {{Markers::IdColumn, QString::number(id)},
                                {column, Values::quotesDoubled(target)}});
    }
    return target;
}

outputDataForm *Tavenor::makeLink(const QString &column, const QVariant &value, UnreadTable *unread)
{
    const QString target = Columns::linkTarget(column);
    const QString text = value.toString();
    linkFields.append({text, target});
    outputDataForm *const form = makeField(column, value);
    if (form == nullptr || !unread->reason.isEmpty()) {
        return form;
    }
    const int linkedId = text.section(QLatin1Char(' '), 0, 0).toInt();
    const bool leadsToRecord = text.contains(QLatin1Char(' ')) && linkedId > 0 &&
                               db->tableExists(target, &unread->reason) &&
                               db->idExists(target, linkedId, &unread->reason);
    unread->table = target;
    if (leadsToRecord) {
        form->setLinkTarget(target, linkedId);
        form->setXViewVisible(true);
    }
    if (linkedTable(text, &unread->reason).isEmpty() && unread->reason.isEmpty()) {
        // There is nothing to go to; what is stored can still be read.
        form->setValue(Names::formatWord(Formats::String), value);
    }
    return form;
}

outputDataForm *Tavenor::makeField(const QString &column, const QVariant &value)
{
    const bool alwaysShown = containsFormat(column, Formats::SubTable);
    const bool isHidden = !advancedMode && Columns::isSystemLabel(Columns::label(column));
    if (isHidden || (value.toString().isEmpty() && !alwaysShown)) {
        return nullptr;
    }
    auto *const form = new outputDataForm;
    viewWidgets.append(form);
    form->setTitle(true, Columns::shownName(column));
    form->setBasePath(databaseFolder);
    form->setValue(Columns::formatWord(column), value);
    connect(form, &outputDataForm::goToList, this, &Tavenor::goToRequest);
    connect(form, &outputDataForm::goToSubList, this, &Tavenor::goToSubTableRequest);
    connect(form, &outputDataForm::goToFilter, this, &Tavenor::callFilter);
    return form;
}
