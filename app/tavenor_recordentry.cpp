// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the entry page for new and changed records, and deleting.
#include "app/Tavenor.h"

#include "app/buttontexts.h"
#include "app/pageforms.h"
#include "app/recordchoices.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/recordfields.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "ui_Tavenor.h"
#include "widgets/buttonkeys.h"
#include "widgets/inputDataForm.h"
#include "widgets/ownedwidgets.h"

#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

void Tavenor::setRecordEntryTexts()
{
    setButtonTexts(ui->pbNewUser, "Aggiungi", "Aggiungi un nuovo Record");
    setButtonTexts(ui->pbEditUser, "Modifica", "Modifica Record");
    setButtonTexts(ui->pbDeleteUser, "Elimina", "Elimina Record");
    setButtonTexts(ui->pbSaveNewUser, "Salva", "Salva Record");
    ui->pbCancelEdit->setText(QStringLiteral("Annulla"));
    ui->inputScroll->setAccessibleName(QStringLiteral("Record"));
    setButtonKey(ui->pbNewUser, QKeySequence::New);
    const auto meanTheLineInFocus = [this] {
        if (ui->userListWidget->hasFocus()) {
            showHighlighted();
        }
    };
    setButtonKey(ui->pbEditUser, QKeySequence(Qt::Key_F2), meanTheLineInFocus);
    setButtonKey(ui->pbDeleteUser, QKeySequence(Qt::CTRL + Qt::Key_Delete), meanTheLineInFocus);
    setButtonKey(ui->pbSaveNewUser, QKeySequence::Save);
}

void Tavenor::connectRecordEntry()
{
    connect(ui->pbNewUser, &QPushButton::clicked, this, &Tavenor::changeToNewUserPage);
    connect(ui->pbEditUser, &QPushButton::clicked, this, &Tavenor::updateUser);
    connect(ui->pbDeleteUser, &QPushButton::clicked, this, &Tavenor::deleteUser);
    connect(ui->pbSaveNewUser, &QPushButton::clicked, this, &Tavenor::newRecord);
    connect(ui->pbCancelEdit, &QPushButton::clicked, this, &Tavenor::cancelEntry);
    auto *const escape = new QShortcut(QKeySequence(Qt::Key_Escape), ui->newUserPage);
    connect(escape, &QShortcut::activated, this, &Tavenor::escapeEntry);
}

void Tavenor::changeToNewUserPage()
{
    if (!hasCurrentTable()) {
        return;
    }
    editing = false;
    if (!buildInputPage(0)) {
        return;
    }
    showEntryPage();
    ui->lbEdit->setText(QStringLiteral("Aggiungi"));
}

void Tavenor::updateUser()
{
    if (!hasCurrentTable()) {
        return;
    }
    editing = true;
    ui->lbEdit->setText(QStringLiteral("Modifica"));
    QString error;
    const bool exists = db->idExists(currentTable, currentId, &error);
    if (!error.isEmpty()) {
        warnUnreadable(currentTable, error);
        return;
    }
    if (!exists) {
        warn(QStringLiteral("ERRORE: Record non trovato!"));
        return;
    }
    if (buildInputPage(currentId)) {
        showEntryPage();
    }
}

bool Tavenor::buildInputPage(int id)
{
    QString error;
    const QStringList columns = db->fieldNames(currentTable, &error);
    const bool readsRecord = editing && error.isEmpty();
    const QSqlRecord record = readsRecord ? db->recordById(currentTable, id, &error) : QSqlRecord();
    // Where the attachment folder is what a new record is known by, each gets one of its own.
    const bool needsOwnName = !editing && columns.value(1) == Markers::UserPathColumn;
    const int ownName = needsOwnName ? db->maxId(currentTable, &error) + 1 : 0;
    if (!error.isEmpty() || columns.isEmpty()) {
        // Every table has columns; without any it is gone.
        warnUnreadable(currentTable, error.isEmpty() ? RowPass(currentTable).error() : error);
        return false;
    }
    clearInputPage();
    const QString folder = DataBase::recordValue(record, Markers::UserPathColumn).toString();
    attachmentFolder = folder == QLatin1String("0") ? QString() : folder;
    folderIsNew = false;
    UnreadTable unread;
    for (int i = 0; i < columns.size(); ++i) {
        const QVariant value = i == 1 && needsOwnName
                                   ? QVariant(QString::number(ownName))
                                   : DataBase::recordValue(record, columns.at(i));
        placeEditor(makeEditor(columns.at(i), value, &unread));
    }
    alignLabels(inputWidgets);
    if (!unread.reason.isEmpty()) {
        // Without its choices a field keeps what it holds; all others can be filled in.
        warnUnreadable(unread.table, unread.reason);
    }
    return true;
}

void Tavenor::clearInputPage()
{
    retireWidgets(ui->inputDataLayout, inputWidgets);
    setTyped(false);
}

inputDataForm *Tavenor::makeEditor(const QString &column, const QVariant &value,
                                   UnreadTable *unread)
{
    auto *const editor = new inputDataForm;
    inputWidgets.append(editor);
    editor->setLabel(Columns::shownName(column));
    editor->setColumnName(column);
    editor->setBasePath(databaseFolder);
    editor->setAttachmentFolderSource([this] { return entryFolder(); });
    fillEditor(editor, value, unread);
    connect(editor, &inputDataForm::touched, this, [this] { setTyped(true); });
    return editor;
}

void Tavenor::fillEditor(inputDataForm *editor, const QVariant &value, UnreadTable *unread)
{
    const QString column = editor->columnName();
    if (Columns::isReference(column)) {
        editor->setChoices(referenceChoices(column, unread));
        editor->setReferenceValue(value);
        editor->clearCondition();
        return;
    }
    const QString format = Columns::formatWord(column);
    if (Formats::kindOf(format) == Formats::Kind::Link) {
        editor->setLinkChoices(linkChoices(column, unread));
    }
    editor->setValue(format, value);
    editor->clearCondition();
}

QVector<QPair<int, QString>> Tavenor::referenceChoices(const QString &column,
                                                       UnreadTable *unread) const
{
    if (!unread->reason.isEmpty()) {
        return {};
    }
    unread->table = Columns::reference(column).table;
    const QStringList columns = db->fieldNames(unread->table, &unread->reason);
    return unread->reason.isEmpty()
               ? RecordChoices::idsAndTitles(unread->table, columns, &unread->reason)
               : QVector<QPair<int, QString>>();
}

QStringList Tavenor::linkChoices(const QString &column, UnreadTable *unread) const
{
    if (!unread->reason.isEmpty()) {
        return {};
    }
    unread->table = Columns::linkTarget(column);
    const QStringList columns = db->fieldNames(unread->table, &unread->reason);
    return RecordChoices::linkLines(unread->table, columns, &unread->reason);
}

void Tavenor::placeEditor(inputDataForm *editor)
{
    if (!advancedMode && Columns::isSystemLabel(Columns::label(editor->columnName()))) {
        return;
    }
    ui->inputDataLayout->addWidget(editor);
    editor->show();
}

void Tavenor::showEntryPage()
{
    rememberFocus();
    ui->stPages->setCurrentIndex(EntryPage);
    ui->inputScroll->verticalScrollBar()->setValue(0);
    const QList<inputDataForm *> placed = placedForms(inputWidgets);
    if (placed.isEmpty()) {
        return;
    }
    // The buttons were made before the fields and would come before them.
    QWidget::setTabOrder(lastTabStop(placed.last()), ui->pbCancelEdit);
    QWidget::setTabOrder(ui->pbCancelEdit, ui->pbSaveNewUser);
    const auto first = std::find_if(placed.begin(), placed.end(), [](const inputDataForm *form) {
        return form->editor() != nullptr;
    });
    if (first != placed.end()) {
        (*first)->focusEditor();
    }
}

QString Tavenor::entryFolder()
{
    if (attachmentFolder.isEmpty() && inputWidgets.size() > 1) {
        const inputDataForm *const title = inputWidgets.at(1);
        FieldPair pair(title->columnName(), title->rawText());
        QString error;
        if (pair.second.isEmpty()) {
            pair = {QString(), QString::number(db->maxId(currentTable, &error) + 1)};
        }
        const QString folder = userPathFor(currentTable, pair, &error);
        if (!error.isEmpty()) {
            // It would be the folder of another record.
            warnUnreadable(currentTable, error);
            return QString();
        }
        attachmentFolder = folder;
        folderIsNew = true;
    }
    return attachmentFolder;
}

void Tavenor::newRecord()
{
    finishTyping();
    FieldPairs pairs;
    for (inputDataForm *const editor : qAsConst(inputWidgets)) {
        pairs.append({editor->columnName(), editor->valueText()});
    }
    if (refuseEmptyField(pairs)) {
        return;
    }
    if (editing) {
        editing = false;
        if (!saveChanges(pairs)) {
            // The next "Salva" must not add a copy of the record.
            editing = true;
            return;
        }
    } else {
        const int newId = addRecord(currentTable, pairs, false);
        if (newId < 1) {
            return;
        }
        currentId = newId;
    }
    showChangedButtons(currentTable);
    // The list is read again in the order that the sort button asks for.
    changeToUsersPage();
    showCurrentRecord();
}

bool Tavenor::refuseEmptyField(const FieldPairs &pairs)
{
    const int empty = RecordFields::lastEmptyRequired(pairs);
    if (empty < 0) {
        return false;
    }
    const QString label = RecordFields::requiredFieldName(pairs.at(empty).first);
    warn(QString::asprintf("Compila il campo %s prima di salvare il nuovo Record!",
                           label.toUtf8().constData()));
    inputDataForm *const editor = inputWidgets.at(empty);
    if (editor->parentWidget() != nullptr) {
        ui->inputScroll->ensureWidgetVisible(editor);
        editor->focusEditor();
    }
    return true;
}

bool Tavenor::saveChanges(const FieldPairs &pairs)
{
    // Only what was changed is written; everything else keeps its bytes.
    FieldPairs changes = pairs.mid(0, 1);
    bool folderTyped = false;
    for (int i = 1; i < pairs.size(); ++i) {
        if (inputWidgets.at(i)->isTouched()) {
            changes.append(pairs.at(i));
            folderTyped = folderTyped || pairs.at(i).first == Markers::UserPathColumn;
        }
    }
    const bool hasFolder = std::any_of(pairs.begin(), pairs.end(), [](const FieldPair &pair) {
        return pair.first == Markers::UserPathColumn;
    });
    if (folderIsNew && hasFolder && !folderTyped) {
        changes.append({Markers::UserPathColumn, Values::quotesDoubled(attachmentFolder)});
    }
    return updateRecordFields(currentId, changes);
}

void Tavenor::setTyped(bool on)
{
    if (typed == on) {
        return;
    }
    typed = on;
    updateCommands();
}

void Tavenor::finishTyping()
{
    QWidget *const editor = focusWidget();
    const bool isEditor = editor != nullptr && (ui->inputContents->isAncestorOf(editor) ||
                                                ui->filterContents->isAncestorOf(editor));
    if (isEditor) {
        // Half a date becomes one when its editor loses the focus, which neither a shortcut key
        // nor the window's close button takes away.
        editor->clearFocus();
        editor->setFocus();
    }
}

bool Tavenor::mayDiscardTyped()
{
    finishTyping();
    return !typed || confirm(QStringLiteral("Chiudere senza salvare le modifiche?"));
}

void Tavenor::cancelEntry()
{
    changeToUsersPage();
    showCurrentRecord();
    restoreFocus();
}

void Tavenor::escapeEntry()
{
    if (mayDiscardTyped()) {
        cancelEntry();
    }
}

void Tavenor::deleteUser()
{
    if (!hasCurrentTable()) {
        return;
    }
    if (!confirm(QStringLiteral("Eliminare questo elemento?"))) {
        return;
    }
    db->deleteRecord(currentTable, currentId);
    showChangedButtons(currentTable);
    loadUserList(currentTable);
    if (!listLines.isEmpty()) {
        currentId = recordOfRow(0);
    }
    showCurrentRecord();
    focusRecords();
}
