// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One column of a table that is being designed.
#include "widgets/newTableElement.h"

#include "ui_newTableElement.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "widgets/ownedwidgets.h"
#include "widgets/plaintooltip.h"
#include "widgets/wheelguard.h"

#include <QScrollArea>
#include <QTimer>

namespace
{

const QString CopiedType = QStringLiteral("Integer");

/// The formats that people can choose, in the order of the list. Long texts are missing
/// because only the program itself makes such columns.
const QStringList &offeredFormats()
{
    static const QStringList offered = {Formats::String, Formats::Date,  Formats::Integer,
                                        Formats::Real,   Formats::Money, Formats::Image,
                                        Formats::Pdf,    Formats::Bool,  Formats::Mail,
                                        Formats::Link,   Formats::Url,   Formats::SubTable};
    return offered;
}

/// The tables that are not the program's own, as people see their names.
QStringList shownTables(const QStringList &tables)
{
    QStringList shown;
    for (const QString &table : tables) {
        if (!Names::isReservedTable(table)) {
            shown.append(Names::tableDisplayName(table));
        }
    }
    return shown;
}

QString firstOrdinaryTable(const QStringList &tables)
{
    for (const QString &table : tables) {
        if (!Names::isReservedTable(table)) {
            return table;
        }
    }
    return QString();
}

/// Scrolls the page that `row` stands on to it, once the row has its place there.
void bringIntoView(QWidget *row)
{
    QTimer::singleShot(0, row, [row] {
        QWidget *around = row->parentWidget();
        while (around != nullptr && qobject_cast<QScrollArea *>(around) == nullptr) {
            around = around->parentWidget();
        }
        if (auto *page = qobject_cast<QScrollArea *>(around)) {
            // The layouts around a new row ask each other for room by posted events.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            page->ensureWidgetVisible(row, 0, 8);
        }
    });
}

} // namespace

newTableElement::newTableElement(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::newTableElement>())
{
    ui->setupUi(this);
    ui->tableElementsPages->setCurrentWidget(ui->newElemPage);
    ui->subFrame->hide();
    showLinkTargets(false);
    ui->verticalLayout->setAlignment(Qt::AlignTop);
    dimNumber();
    alignColumns();
    fillTypes();
    connectEditors();
    setTexts();
    QComboBox *const boxes[] = {ui->cbType, ui->cbExistList, ui->cbExistField, ui->cbExistList2};
    for (QComboBox *box : boxes) {
        WheelGuard::protect(box);
    }
}

newTableElement::~newTableElement() = default;

void newTableElement::fillTypes()
{
    for (const QString &format : offeredFormats()) {
        formats.append(format);
        sqlTypes.append(Names::sqlColumnType(format));
        ui->cbType->insertItem(typeCount, Names::formatWord(format));
        ++typeCount;
    }
}

void newTableElement::connectEditors()
{
    connect(ui->pbAddNew, &QPushButton::clicked, this, &newTableElement::sendNewAdd);
    connect(ui->leName, &QLineEdit::returnPressed, this, &newTableElement::sendNewAdd);
    connect(ui->cbFromTable, &QCheckBox::toggled, this, &newTableElement::changeNewFieldType);
    connect(ui->cbExistList, &QComboBox::currentTextChanged, this,
            &newTableElement::changeSelectedTable);
    connect(ui->cbType, &QComboBox::currentTextChanged, this, &newTableElement::changeFieldType);
}

void newTableElement::setTexts()
{
    ui->cbFromTable->setText(QStringLiteral("Inserisci Campo Da Tabella"));
    ui->cbRequired->setText(QStringLiteral("Richiesto"));
    ui->pbAddNew->setText(QStringLiteral("+"));
    ui->pbAddNew->setToolTip(QStringLiteral("Aggiungi un nuovo campo alla tabella"));
    ui->leName->setPlaceholderText(QStringLiteral("Nome del campo"));
    nameControls();
}

/// Tells screen readers what each control is for, and of which row.
void newTableElement::nameControls()
{
    const QString row = number > 0 ? QStringLiteral(" %1").arg(number) : QString();
    ui->leName->setAccessibleName(QStringLiteral("Nome del campo") + row);
    ui->cbType->setAccessibleName(QStringLiteral("Tipo del campo") + row);
    ui->cbRequired->setAccessibleName(QStringLiteral("Campo richiesto") + row);
    ui->cbExistList2->setAccessibleName(QStringLiteral("Tabella collegata al campo") + row);
    ui->cbFromTable->setAccessibleName(ui->cbFromTable->text() + row);
    ui->cbExistList->setAccessibleName(QStringLiteral("Tabella da cui copiare il campo") + row);
    ui->cbExistField->setAccessibleName(QStringLiteral("Campo da copiare nel campo") + row);
    ui->pbAddNew->setAccessibleName(ui->pbAddNew->toolTip());
    // A box of choices is told by the name of its label.
    for (QLabel *const label : {ui->lbType, ui->lbExistList, ui->lbExistList2, ui->lbExistField}) {
        label->setAccessibleName(label->buddy()->accessibleName());
    }
}

void newTableElement::setNumber(int place)
{
    number = place;
    ui->lbNumber->setText(QString::number(number));
    nameControls();
}

void newTableElement::setTableName(const QString &table)
{
    tableName = table;
}

void newTableElement::hideInsertFromFrame()
{
    ui->insertFromFrame->hide();
}

void newTableElement::setTables(const QStringList &tables, const QStringList &targets)
{
    allTables = tables;
    linkTables = targets;
    ui->cbExistList->clear();
    ui->cbExistList->addItems(shownTables(allTables));
    ui->cbExistList2->clear();
    ui->cbExistList2->addItem(QString()); // leads nowhere
    ui->cbExistList2->addItems(shownTables(linkTables));
    // Deliberate: filling the list has sent the first table's name already.
    changeSelectedTable(firstOrdinaryTable(allTables));
}

void newTableElement::setExistingFields(const QStringList &columns)
{
    ui->cbExistField->clear();
    existFieldNames.clear();
    for (const QString &column : columns) {
        const bool nests =
            column.contains(Formats::SubTable) || column.contains(Markers::Reference);
        if ((isSubElement && nests) || column.contains(Markers::IdColumn)) {
            continue;
        }
        existFieldNames.append(column);
        ui->cbExistField->addItem(Names::fieldLabel(column));
    }
}

void newTableElement::removeSubtableType()
{
    const QString word = Names::formatWord(Formats::SubTable);
    for (int item = 0; item < ui->cbType->count(); ++item) {
        if (ui->cbType->itemText(item) == word) {
            ui->cbType->removeItem(item);
        }
    }
}

newTableElement::Kind newTableElement::kind() const
{
    if (ui->cbFromTable->isChecked()) {
        return ui->cbExistField->currentIndex() < 0 ? Kind::Empty : Kind::Copied;
    }
    const bool leadsToTable =
        ui->cbType->currentText().contains(Names::formatWord(Formats::Link)) &&
        !ui->cbExistList2->currentText().isEmpty();
    if (leadsToTable) {
        return Kind::Link;
    }
    // Deliberate: a link that leads nowhere takes the label that was typed before.
    return ui->leName->text().isEmpty() ? Kind::Empty : Kind::Typed;
}

QString newTableElement::typedLabel() const
{
    return kind() == Kind::Typed ? ui->leName->text() : QString();
}

bool newTableElement::isSubTable() const
{
    return !ui->cbFromTable->isChecked() &&
           ui->cbType->currentText() == Names::formatWord(Formats::SubTable);
}

int newTableElement::linkPlace() const
{
    return ui->cbExistList2->currentIndex() - 1; // the first item leads nowhere
}

ColumnDefinition newTableElement::columnDefinition() const
{
    const int type = ui->cbType->currentIndex();
    switch (kind()) {
    case Kind::Typed: {
        const QString flag =
            ui->cbRequired->isChecked() ? Markers::RequiredFlag : Markers::OptionalFlag;
        const QString label = typedLabel().replace(QLatin1Char(' '), QLatin1Char('_'));
        return {Names::joinName(flag + formats.value(type), label), sqlTypes.value(type)};
    }
    case Kind::Link:
        return {Names::joinName(Markers::OptionalFlag + formats.value(type),
                                ui->cbExistList2->currentText()),
                sqlTypes.value(type)};
    case Kind::Copied:
        return {Markers::ReferencePrefix + Names::tableStoredName(ui->cbExistList->currentText()) +
                    Markers::Reference + existFieldNames.value(ui->cbExistField->currentIndex()),
                CopiedType};
    case Kind::Empty:
        break;
    }
    return {};
}

ColumnDefinitions newTableElement::subTableColumns() const
{
    ColumnDefinitions columns = {{Markers::UserPathColumn, QString()}};
    for (const newTableElement *row : subElements) {
        columns.append(row->columnDefinition());
    }
    return columns;
}

void newTableElement::clearSubElements()
{
    retireWidgets(ui->subLayout, subElements);
}

void newTableElement::focusName()
{
    QWidget *const editors[] = {ui->leName, ui->cbExistList2, ui->cbExistList};
    QWidget *editor = ui->cbType;
    for (QWidget *candidate : editors) {
        if (candidate->isVisibleTo(this)) {
            editor = candidate;
            break;
        }
    }
    editor->setFocus(Qt::TabFocusReason); // selects the text of a line
    bringIntoView(this);
}

void newTableElement::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        alignColumns();
    } else if (event->type() == QEvent::PaletteChange) {
        dimNumber();
    }
}

/// By colour and not by role: the placeholder's brush may be one that paints nothing.
void newTableElement::dimNumber()
{
    QPalette dimmed;
    dimmed.setColor(QPalette::WindowText, palette().color(QPalette::PlaceholderText));
    ui->lbNumber->setPalette(dimmed);
}

/// Gives the number and the name the same room in every row, whatever stands there, so that the
/// controls of all rows stand in columns.
void newTableElement::alignColumns()
{
    const QFontMetrics metrics = ui->lbNumber->fontMetrics();
    ui->lbNumber->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("00")));
    ui->nameFrame->setMinimumWidth(ui->lbExistList2->sizeHint().width() +
                                   ui->nameLayout->spacing() +
                                   ui->cbExistList2->minimumSizeHint().width());
}

/// What the card needs for everything but insertFromFrame in one line.
int newTableElement::widthWithoutSource() const
{
    const QMargins margins = ui->cardLayout->contentsMargins();
    int width = margins.left() + margins.right() + 2 * ui->card->frameWidth();
    for (const QWidget *part : {static_cast<const QWidget *>(ui->lbNumber),
                                static_cast<const QWidget *>(ui->tableElementsPages)}) {
        width += part->minimumSizeHint().width() + ui->columnLayout->horizontalSpacing();
    }
    return width + ui->pbAddNew->sizeHint().width();
}

QSize newTableElement::minimumSizeHint() const
{
    const QMargins margins = ui->cardLayout->contentsMargins();
    const int subRowsWidth = ui->subFrame->isHidden() ? 0
                                                      : ui->subFrame->minimumSizeHint().width() +
                                                            margins.left() + margins.right();
    return {qMax(widthWithoutSource(), subRowsWidth), QWidget::minimumSizeHint().height()};
}

void newTableElement::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeSource();
}

/// On a narrow page the choice of copying a field stands in a line of its own.
void newTableElement::placeSource()
{
    const int wanted =
        ui->insertFromFrame->minimumSizeHint().width() + ui->columnLayout->horizontalSpacing();
    const bool isNarrow = width() < widthWithoutSource() + wanted;
    if (isNarrow == isSourceBelow) {
        return;
    }
    isSourceBelow = isNarrow;
    ui->columnLayout->removeWidget(ui->insertFromFrame);
    if (isNarrow) {
        ui->columnLayout->addWidget(ui->insertFromFrame, 1, 1);
    } else {
        ui->columnLayout->addWidget(ui->insertFromFrame, 0, 2);
    }
}

void newTableElement::sendNewAdd()
{
    emit addNewElem();
}

void newTableElement::changeNewFieldType(bool on)
{
    ui->tableElementsPages->setCurrentWidget(on ? ui->existElemPage : ui->newElemPage);
    // A copied field has no columns of its own, so rows that are shown do not count.
    ui->subFrame->setEnabled(!on);
}

void newTableElement::changeSelectedTable(QString table)
{
    const QString storedName = Names::tableStoredName(table);
    PlainToolTip::set(ui->cbExistList, storedName);
    emit changeTable(this, storedName);
}

void newTableElement::changeElementSelectedSubTable(newTableElement *nTe, QString table)
{
    emit changeTable(nTe, Names::tableStoredName(table));
}

void newTableElement::changeFieldType(QString selType)
{
    const Formats::Kind format = Formats::kindOf(selType);
    showLinkTargets(false);
    if (format == Formats::Kind::Image || format == Formats::Kind::Pdf) {
        ui->cbRequired->setChecked(false);
        ui->cbRequired->setEnabled(false);
        ui->subFrame->hide();
        clearSubElements();
    }
    if (format == Formats::Kind::Pdf) {
        // Deliberate: a name that LINK has hidden stays hidden, as it does for SUBTABLE.
        return;
    }
    if (format == Formats::Kind::SubTable) {
        ui->cbRequired->setEnabled(false);
        ui->subFrame->show();
        ui->leName->setText(QStringLiteral("Nuovo Nome"));
        appendSubRow();
        return;
    }
    if (format == Formats::Kind::Link) {
        // Deliberate: the rows of a sub-table are kept out of sight.
        ui->cbRequired->setEnabled(false);
        ui->subFrame->hide();
        showLinkTargets(true);
        ui->leName->hide();
        return;
    }
    // Deliberate: a picture comes here too, so it can be required after all, unlike a PDF.
    ui->cbRequired->setEnabled(true);
    ui->subFrame->hide();
    ui->leName->show();
    clearSubElements();
}

void newTableElement::showLinkTargets(bool on)
{
    ui->lbExistList2->setVisible(on);
    ui->cbExistList2->setVisible(on);
}

void newTableElement::addNewTableElement()
{
    appendSubRow()->focusName();
}

/// The signals are connected before the tables are given: the row asks for fields at once.
newTableElement *newTableElement::appendSubRow()
{
    const newTableElement &before = subElements.isEmpty() ? *this : *subElements.last();
    auto *const row = new newTableElement;
    subElements.append(row);
    row->removeSubtableType();
    row->isSubElement = true;
    connect(row, &newTableElement::addNewElem, this, &newTableElement::addNewTableElement);
    connect(row, &newTableElement::changeTable, this,
            &newTableElement::changeElementSelectedSubTable);
    row->setTables(allTables, linkTables);
    row->setNumber(subElements.size());
    ui->subLayout->addWidget(row);
    row->followInTabOrder(before);
    return row;
}

/// Without this the Tab key reaches a sub-row only after all that stands below its card.
void newTableElement::followInTabOrder(const newTableElement &before)
{
    QWidget *const controls[] = {ui->leName,      ui->cbExistList2, ui->cbType,      ui->cbRequired,
                                 ui->cbExistList, ui->cbExistField, ui->cbFromTable, ui->pbAddNew};
    QWidget *last = before.ui->pbAddNew;
    for (QWidget *control : controls) {
        setTabOrder(last, control);
        last = control;
    }
}
