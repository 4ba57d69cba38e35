// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the conditions of the record list, and filters saved under a name.
#include "app/Tavenor.h"

#include "app/buttontexts.h"
#include "app/pageforms.h"
#include "app/recordchoices.h"
#include "app/tableicons.h"
#include "app/tavenor_progress.h"
#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"
#include "widgets/buttonkeys.h"
#include "widgets/chooseNameForm.h"
#include "widgets/icons.h"
#include "widgets/inputDataForm.h"
#include "widgets/ownedwidgets.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace
{

const QString Saving = QStringLiteral("Salvataggio in corso");

// The name in the row of the condition at this place.
QString rowName(const QString &filterName, int place)
{
    return place == 0 ? filterName : filterName + Markers::SavedFilter + QString::number(place);
}

// True for the rows of exactly this filter.
bool isRowOf(const QString &filterName, const QString &name)
{
    return name == filterName || name.startsWith(filterName + Markers::SavedFilter);
}

} // namespace

void Tavenor::setFilterTexts()
{
    ui->lbFilterPage->setText(QStringLiteral("Filtra"));
    setButtonTexts(ui->pbFilter, "Filtra", "Filtra i Records");
    ui->pbFiltersPage->setText(QStringLiteral("Filtri"));
    ui->filtersScroll->setAccessibleName(QStringLiteral("Filtri"));
    ui->filterScroll->setAccessibleName(QStringLiteral("Condizioni"));
    setButtonTexts(ui->pbResetFilters, "Azzera", "Togli tutte le condizioni");
    setButtonTexts(ui->pbCancelFilters, "Annulla", "Lascia le condizioni come erano");
    setButtonTexts(ui->pbNewFilter, "Salva Filtro", "Applica le condizioni e salvale con un nome");
    setButtonTexts(ui->pbSaveFilters, "Applica", "Mostra i Records che passano");
    showLed(false);
}

void Tavenor::connectFilters()
{
    connect(ui->pbFilter, &QPushButton::clicked, this, &Tavenor::changeToFilterPage);
    connect(ui->pbSaveFilters, &QPushButton::clicked, this, &Tavenor::enableFilters);
    connect(ui->pbNewFilter, &QPushButton::clicked, this, &Tavenor::createNewFilter);
    connect(ui->pbResetFilters, &QPushButton::clicked, this, &Tavenor::disableFilters);
    connect(ui->pbCancelFilters, &QPushButton::clicked, this, &Tavenor::cancelFilterOperation);
    connect(ui->pbFiltersPage, &QPushButton::toggled, this, &Tavenor::switchToFilters);
    connect(ui->actionDeleteFilter, &QAction::triggered, this, &Tavenor::deleteFilter);
    setButtonKey(ui->pbFilter, QKeySequence(Qt::CTRL + Qt::Key_L));
    auto *const escape = new QShortcut(QKeySequence(Qt::Key_Escape), ui->filterPage);
    connect(escape, &QShortcut::activated, this, &Tavenor::cancelFilterOperation);
}

void Tavenor::keyPressEvent(QKeyEvent *event)
{
    // Return in a condition is the page's main button; in a list of choices it ends a search.
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QWidget *const focused = focusWidget();
    if (isReturn && ui->filterContents->isAncestorOf(focused) &&
        qobject_cast<const QComboBox *>(focused) == nullptr) {
        enableFilters();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

void Tavenor::rebuildFilterButtons()
{
    QVector<QPair<QString, QString>> filters;
    RowPass rows(Markers::FiltersTable,
                 {ReservedTables::Filters::Name, ReservedTables::Filters::TableName});
    while (rows.next()) {
        const QString name = rows.value(0).toString();
        if (!name.isEmpty() && !name.contains(Markers::SavedFilter)) {
            filters.append({name, rows.value(1).toString()});
        }
    }
    // Filters that cannot be read now have not gone, unless they are another database's.
    if (!rows.unreadable().isEmpty() && filterButtonsFile == ui->leDbName->text()) {
        return;
    }
    filterButtonsFile = ui->leDbName->text();
    const bool hadFocus = ui->filtersContents->isAncestorOf(focusWidget());
    retireWidgets(ui->filtersButtonLayout, filterButtons);
    const TableIcons icons(databaseFolder);
    for (const auto &filter : qAsConst(filters)) {
        addFilterButton(filter.second, filter.first, icons.icon(filter.second));
    }
    if (hadFocus) {
        focusPanel();
    }
}

void Tavenor::addFilterButton(const QString &table, const QString &filterName, const QIcon &icon)
{
    auto *const button = new ListButtonForm;
    filterButtons.append(button);
    button->setSavedFilter(table, filterName);
    button->setIcon(icon);
    button->setCurrent(!activeFilterName.isEmpty() && filterName == activeFilterName);
    ui->filtersButtonLayout->addWidget(button);
    orderLast(filterButtons, ui->filtersScroll);
    connect(button, &ListButtonForm::changeListAndFilter, this, &Tavenor::changeTableAndFilter);
}

void Tavenor::setActiveFilterName(const QString &filterName)
{
    activeFilterName = filterName;
    for (ListButtonForm *const button : qAsConst(filterButtons)) {
        button->setCurrent(!filterName.isEmpty() && button->savedFilterName() == filterName);
    }
}

void Tavenor::showLed(bool on)
{
    ui->pbFilter->setIcon(
        Icons::shared(on ? QStringLiteral(":/ledOnIcon") : QStringLiteral(":/ledOffIcon")));
    // For those who do not see the lamp.
    ui->pbFilter->setAccessibleDescription(on ? QStringLiteral("acceso")
                                              : QStringLiteral("spento"));
}

void Tavenor::explainEmptyFilters()
{
    QStringList ways;
    // Without a table there is nothing to filter.
    if (!readOnly && !currentTable.isEmpty()) {
        ways.append(ui->pbFilter->text() + QStringLiteral(" › ") + ui->pbNewFilter->text());
    }
    ui->filtersContents->setPlaceholder(
        {Icons::shared(QStringLiteral(":/filterIcon")), QString(), ways});
}

void Tavenor::markFirstCondition()
{
    bool isFirst = true;
    for (inputDataForm *const widget : qAsConst(filterWidgets)) {
        const bool counts = widget->isActive() && !Columns::isSystemLabel(widget->label());
        widget->setJoins(!(counts && isFirst));
        isFirst = isFirst && !counts;
    }
}

void Tavenor::forgetFilters()
{
    retireWidgets(ui->filterDataLayout, filterWidgets);
    activeFilters.clear();
    setActiveFilterName(QString());
    showLed(false);
}

void Tavenor::buildFilterPage(const QStringList &columns)
{
    retireWidgets(ui->filterDataLayout, filterWidgets);
    hasFilterChoices = false;
    for (const QString &column : columns) {
        if (Filters::isOffered(column)) {
            inputDataForm *const widget = makeCondition(column);
            ui->filterDataLayout->addWidget(widget);
            widget->show();
        }
    }
    showSystemConditions();
    alignLabels(filterWidgets);
}

inputDataForm *Tavenor::makeCondition(const QString &column)
{
    auto *const widget = new inputDataForm;
    filterWidgets.append(widget);
    widget->setFilterRole(true);
    connect(widget, &inputDataForm::activeChanged, this, &Tavenor::markFirstCondition);
    widget->setLabel(Columns::shownName(column));
    widget->setColumnName(column);
    widget->setValue(Filters::comparedFormat(column), QVariant());
    widget->clearCondition();
    return widget;
}

bool Tavenor::refreshFilterPage()
{
    QString error;
    QStringList offered = db->fieldNames(currentTable, &error);
    if (!error.isEmpty()) {
        warnUnreadable(currentTable, error);
        return false;
    }
    offered.erase(std::remove_if(offered.begin(), offered.end(),
                                 [](const QString &name) { return !Filters::isOffered(name); }),
                  offered.end());
    QStringList shown;
    for (const inputDataForm *const widget : qAsConst(filterWidgets)) {
        shown.append(widget->columnName());
    }
    if (shown != offered) {
        buildFilterPage(offered);
        setConditions(activeFilters);
    }
    return true;
}

void Tavenor::fillFilterChoices()
{
    if (hasFilterChoices) {
        return;
    }
    UnreadTable unread;
    for (inputDataForm *const widget : qAsConst(filterWidgets)) {
        const QString column = widget->columnName();
        const Filters::Setting kept = widget->setting();
        if (column.contains(Markers::Reference) && Columns::isReference(column)) {
            const Columns::Reference reference = Columns::reference(column);
            const auto choices = RecordChoices::fieldValues(reference, &unread.reason);
            if (!unread.reason.isEmpty()) {
                unread.table = reference.table;
                break;
            }
            widget->setChoices(choices);
        } else if (Formats::kindOf(Columns::formatWord(column)) == Formats::Kind::Link) {
            const QStringList choices = linkChoices(column, &unread);
            if (!unread.reason.isEmpty()) {
                break;
            }
            widget->setLinkChoices(choices);
        } else {
            continue;
        }
        widget->setSetting(kept);
    }
    hasFilterChoices = unread.reason.isEmpty();
    if (!hasFilterChoices) {
        // The rest is read when the page is opened again.
        warnUnreadable(unread.table, unread.reason);
    }
}

void Tavenor::showSystemConditions()
{
    for (inputDataForm *const widget : qAsConst(filterWidgets)) {
        widget->setVisible(advancedMode ||
                           !Columns::isSystemLabel(Columns::label(widget->columnName())));
    }
}

void Tavenor::restoreConditions(const QVector<Filters::Setting> &settings)
{
    QString error;
    const QStringList columns = db->fieldNames(currentTable, &error);
    // The page of a table that cannot be read now stays; without it the conditions would be lost.
    if (error.isEmpty()) {
        buildFilterPage(columns);
    }
    setConditions(settings);
}

void Tavenor::setConditions(const QVector<Filters::Setting> &settings)
{
    const QVector<Filters::Setting> kept = settings;
    for (const Filters::Setting &setting : kept) {
        for (inputDataForm *const widget : qAsConst(filterWidgets)) {
            if (widget->columnName() == setting.column) {
                widget->setSetting(setting);
            }
        }
    }
    activeFilters = filterSettings();
}

QVector<Filters::Setting> Tavenor::filterSettings() const
{
    QVector<Filters::Setting> settings;
    settings.reserve(filterWidgets.size());
    for (const inputDataForm *const widget : filterWidgets) {
        settings.append(widget->setting());
    }
    return settings;
}

QVector<Filters::Setting> Tavenor::conditionsInForce() const
{
    QVector<Filters::Setting> settings = filterSettings();
    settings.erase(std::remove_if(settings.begin(), settings.end(),
                                  [](const Filters::Setting &setting) { return !setting.active; }),
                   settings.end());
    return settings;
}

Filters::Predicate Tavenor::filterPredicate(const QStringList &columns) const
{
    QVector<Filters::Joined> conditions;
    for (const inputDataForm *const widget : filterWidgets) {
        if (widget->isActive()) {
            const QString column = widget->columnName();
            conditions.append({column, widget->condition(Filters::comparedFormat(column)),
                               Filters::isAnd(widget->joiningWord())});
        }
    }
    return conditions.isEmpty() ? Filters::Predicate() : Filters::Predicate(columns, conditions);
}

bool Tavenor::passesFilter(const QString &table, int id) const
{
    if (conditionsInForce().isEmpty()) {
        return true;
    }
    QString error;
    const Filters::Predicate predicate = filterPredicate(db->fieldNames(table, &error));
    if (predicate.isEmpty()) {
        return true;
    }
    const QSqlRecord record = db->recordById(table, id, &error);
    return !error.isEmpty() || predicate.passes([&record, &predicate](int position) {
        return DataBase::recordValue(record, predicate.columns().at(position));
    });
}

void Tavenor::changeToFilterPage()
{
    if (!hasCurrentTable()) {
        return;
    }
    if (!refreshFilterPage()) {
        return;
    }
    rememberFocus();
    ui->stPages->setCurrentIndex(FiltersPage);
    ui->filterScroll->verticalScrollBar()->setValue(0);
    prepareFilterPage();
}

void Tavenor::prepareFilterPage()
{
    fillFilterChoices();
    showSystemConditions();
    QWidget *before = nullptr;
    for (inputDataForm *const widget : qAsConst(filterWidgets)) {
        if (before == nullptr && !widget->isHidden()) {
            widget->focusEditor();
        }
        before = widget->isHidden() ? before : lastTabStop(widget);
    }
    // The buttons were made before the fields and would come before them.
    for (QWidget *const button :
         {ui->pbResetFilters, ui->pbCancelFilters, ui->pbNewFilter, ui->pbSaveFilters}) {
        if (before != nullptr) {
            QWidget::setTabOrder(before, button);
        }
        before = button;
    }
}

void Tavenor::reportUnreadableNumbers()
{
    for (const inputDataForm *const widget : qAsConst(filterWidgets)) {
        if (widget->isActive() && !widget->numberIsValid()) {
            widget->numericValue();
        }
    }
}

void Tavenor::enableFilters()
{
    if (!hasCurrentTable()) {
        return;
    }
    finishTyping();
    reportUnreadableNumbers();
    activeFilters = filterSettings();
    showLed(!conditionsInForce().isEmpty());
    changeToUsersPage();
    showFirstRecord();
}

void Tavenor::disableFilters()
{
    forgetFilters();
    // Most tables are left before anybody looks at their conditions.
    if (ui->stPages->currentIndex() == FiltersPage) {
        refreshFilterPage();
        prepareFilterPage();
    }
}

void Tavenor::cancelFilterOperation()
{
    if (!hasCurrentTable()) {
        return;
    }
    restoreConditions(activeFilters);
    ui->stPages->setCurrentIndex(RecordsPage);
    if (conditionsInForce() != listedConditions) {
        loadUserList(currentTable);
    }
    showCurrentRecord();
    restoreFocus();
}

void Tavenor::createNewFilter()
{
    if (!hasCurrentTable()) {
        return;
    }
    enableFilters();
    int active = 0;
    {
        const Progress progress(*this, Saving, Saving);
        for (int place = 0; place < filterWidgets.size(); ++place) {
            updateProgress(place, filterWidgets.size());
            active += filterWidgets.at(place)->isActive() ? 1 : 0;
        }
    }
    if (active > 0) {
        askName(QString(), &Tavenor::waitForName);
    }
}

void Tavenor::waitForName()
{
    // The button must have the name that the rows have.
    const QString name = Values::asStored(nameForm->getName());
    if (name.trimmed().isEmpty()) {
        return;
    }
    if (name.contains(Markers::SavedFilter)) {
        // It could not be told from the further rows of another filter.
        warn(SqlNames::programsWord(name));
        return;
    }
    const Progress progress(*this, Saving, Saving);
    if (db->inOneStep([this, &name] { return saveConditions(name); })) {
        setActiveFilterName(name);
        addFilterButton(currentTable, name, tableIcon(currentTable));
    }
}

bool Tavenor::saveConditions(const QString &filterName)
{
    namespace Column = ReservedTables::Filters;
    // Deliberate: counted once, so all rows of a filter give the same character.
    const QString id = Values::oneCharacterId(db->rowCount(Markers::FiltersTable));
    for (int place = 0; place < filterWidgets.size(); ++place) {
        const Filters::Setting setting = filterWidgets.at(place)->setting();
        const FieldPairs row = {
            {Markers::IdColumn, id},
            {Column::Name, Values::quotesDoubled(rowName(filterName, place))},
            {Column::TableName, Values::quotesDoubled(currentTable)},
            {Column::FieldName, Values::quotesDoubled(setting.column)},
            {Column::FieldValue, Values::quotesDoubled(setting.value)},
            {Column::FieldType, Values::quotesDoubled(setting.format)},
            {Column::Condition, Filters::comparisonName(setting.comparison)},
            {Column::AndOr, setting.joinsWithAnd ? Filters::And : Filters::Or},
        };
        if (addRecord(Markers::FiltersTable, row, false) < 1) {
            return false;
        }
        updateProgress(place + 1, filterWidgets.size());
    }
    return true;
}

void Tavenor::switchToFilters(bool on)
{
    ui->sWControls->setCurrentWidget(on ? ui->filtersPage : ui->tablesPage);
}

void Tavenor::changeTableAndFilter(QString table, QString filterName)
{
    QString error;
    const bool exists = db->tableExists(table, &error);
    if (!error.isEmpty()) {
        warnUnreadable(table, error);
        return;
    }
    if (!exists) {
        // The filter can still be deleted.
        setActiveFilterName(filterName);
        warn(QString::asprintf("ERRORE: La Tabella '%s' non esiste!\n",
                               Names::tableDisplayName(table).toUtf8().constData()));
        return;
    }
    const QStringList columns = db->fieldNames(table, &error);
    if (!error.isEmpty()) {
        warnUnreadable(table, error);
        return;
    }
    showTableHead(table);
    currentTable = table;
    markCurrentTable();
    buildFilterPage(columns);
    const bool isRead = readSavedFilter(filterName);
    setActiveFilterName(isRead ? filterName : QString());
    showLed(isRead);
    changeToUsersPage();
    showFirstRecord();
}

bool Tavenor::readSavedFilter(const QString &filterName)
{
    namespace Column = ReservedTables::Filters;
    RowPass rows(Markers::FiltersTable, {Column::Name, Column::FieldName, Column::FieldValue,
                                         Column::FieldType, Column::Condition, Column::AndOr});
    while (rows.next()) {
        // Deliberate: a name that occurs inside another filter's takes that one's rows too, and
        // a row without a value leaves its condition alone.
        Filters::Setting setting;
        setting.value = rows.value(2).toString();
        if (!rows.value(0).toString().contains(filterName) || setting.value.isEmpty()) {
            continue;
        }
        setting.column = rows.value(1).toString();
        setting.format = rows.value(3).toString();
        setting.comparison = Filters::comparisonNamed(rows.value(4).toString());
        setting.active = setting.comparison != Filters::Comparison::None;
        setting.joinsWithAnd = Filters::isAnd(rows.value(5).toString());
        for (inputDataForm *const widget : qAsConst(filterWidgets)) {
            if (widget->columnName() == setting.column) {
                widget->setSetting(setting);
            }
        }
    }
    if (!rows.unreadable().isEmpty()) {
        // A part of the conditions would show other records than the filter does.
        forgetFilters();
        warnUnreadable(Markers::FiltersTable, rows.unreadable());
        return false;
    }
    activeFilters = filterSettings();
    return true;
}

void Tavenor::deleteFilter()
{
    if (!db->isOpen() && !hasCurrentTable()) {
        return;
    }
    if (activeFilterName.isEmpty()) {
        warn(QStringLiteral("ERRORE: Non è stato selezionato nessun filtro!\n"));
        return;
    }
    deleteSavedFilter(activeFilterName);
}

void Tavenor::deleteSavedFilter(QString filterName)
{
    if (!confirm(QString::asprintf("Eliminare %s?", filterName.toUtf8().constData()))) {
        return;
    }
    const bool isInForce = filterName == activeFilterName;
    removeSavedFilter(filterName);
    if (!isInForce) {
        return;
    }
    forgetFilters();
    if (!currentTable.isEmpty()) {
        changeToUsersPage();
        showCurrentRecord();
    }
}

void Tavenor::removeSavedFilter(QString filterName)
{
    QVector<int> ids;
    bool isThere = false;
    RowPass rows(Markers::FiltersTable, {Markers::IdColumn, ReservedTables::Filters::Name});
    while (rows.next()) {
        const QString name = rows.value(1).toString();
        if (isRowOf(filterName, name)) {
            ids.append(Values::recordId(rows.value(0)));
            isThere = isThere || name == filterName;
        }
    }
    if (!rows.unreadable().isEmpty()) {
        warnUnreadable(Markers::FiltersTable, rows.unreadable());
        return;
    }
    db->inOneStep([this, &ids] { return db->deleteRecords(Markers::FiltersTable, ids); });
    if (isThere && filterName == activeFilterName) {
        setActiveFilterName(QString());
    }
    rebuildFilterButtons();
}
