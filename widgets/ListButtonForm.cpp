// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One entry of the list of tables, or of saved filters.
#include "widgets/ListButtonForm.h"

#include "ui_ListButtonForm.h"

#include "model/names.h"
#include "widgets/plaintooltip.h"

#include <QEvent>

ListButtonForm::ListButtonForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ListButtonForm>())
{
    ui->setupUi(this);
    setFocusProxy(ui->pbList);
    // Without it the entry keeps its place in the order of the Tab key, whatever is asked.
    setFocusPolicy(Qt::StrongFocus);
    connect(ui->pbList, &QPushButton::clicked, this, &ListButtonForm::pushed);
}

ListButtonForm::~ListButtonForm() = default;

void ListButtonForm::setTableName(const QString &name)
{
    table = name;
    const QString shown = Names::tableDisplayName(name);
    setShownName(shown, shown);
}

void ListButtonForm::setSavedFilter(const QString &table, const QString &filterName)
{
    filterTable = table;
    this->filterName = filterName;
    filter = true;
    setShownName(filterName, Names::tableDisplayName(table));
}

void ListButtonForm::setIcon(const QIcon &icon)
{
    ui->pbList->setIcon(icon);
}

void ListButtonForm::setCurrent(bool on)
{
    ui->pbList->setCurrent(on);
    ui->pbList->setAccessibleDescription(on ? QStringLiteral("corrente") : QString());
    updateNameColour();
}

bool ListButtonForm::isCurrent() const
{
    return ui->pbList->isCurrent();
}

void ListButtonForm::pushed()
{
    if (filter) {
        emit changeListAndFilter(filterTable, filterName);
    } else {
        emit changeList(table);
    }
}

void ListButtonForm::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        updateNameColour();
    }
}

void ListButtonForm::updateNameColour()
{
    // While it is switched off, the mark lets the window's colour through.
    const bool isOnMark = isCurrent() && isEnabled();
    ui->lbListName->setForegroundRole(isOnMark ? QPalette::HighlightedText : QPalette::WindowText);
}

void ListButtonForm::setShownName(const QString &name, const QString &tip)
{
    ui->lbListName->setText(name);
    ui->pbList->setAccessibleName(name);
    PlainToolTip::set(ui->pbList, tip);
    PlainToolTip::set(this, tip);
    // Without one of its own, a label that is cut short tells its text.
    PlainToolTip::set(ui->lbListName, tip);
}
