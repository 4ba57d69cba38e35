// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the calculator page.
#include "app/Tavenor.h"

#include "app/buttontexts.h"
#include "app/pageforms.h"
#include "app/tavenor_progress.h"
#include "model/calculator.h"
#include "model/formats.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "ui_Tavenor.h"
#include "widgets/buttonkeys.h"
#include "widgets/calcForm.h"
#include "widgets/figures.h"
#include "widgets/ownedwidgets.h"

#include <QScrollBar>
#include <QShortcut>

namespace
{

// One column while the rows are walked: what it counts for, and its sum so far.
struct SummedColumn {
    Calculator::Mode mode;
    Calculator::RunningSum sum;
};

} // namespace

void Tavenor::setCalculatorTexts()
{
    ui->lbCalc->setText(ui->pbCalc->text());
    ui->lbNoColumns->setText(QStringLiteral("Nessuna colonna numerica in questa tabella."));
    ui->lbTotal->setText(QStringLiteral("Totale"));
    ui->leResult->setValueName(ui->lbTotal->text());
    ui->lbTotal->setBuddy(ui->leResult);
    ui->pbExitCalc->setText(QStringLiteral("Chiudi"));
    setButtonTexts(ui->pbRecalc, "Ricalcola", "Ricalcola il risultato");
    ui->calcScroll->setAccessibleName(ui->pbCalc->text());
}

void Tavenor::setCalculatorLook()
{
    QFont figures = Figures::tabular(font());
    ui->leResult->setFixedWidth(calcForm::resultWidth(figures));
    figures.setWeight(QFont::DemiBold);
    ui->leResult->setFont(figures);
    ui->lbTotal->setFont(figures);
}

void Tavenor::connectCalculator()
{
    connect(ui->pbCalc, &QPushButton::clicked, this, &Tavenor::changeToCalcPage);
    connect(ui->pbRecalc, &QPushButton::clicked, this, &Tavenor::calcResult);
    connect(ui->pbExitCalc, &QPushButton::clicked, this, &Tavenor::leaveCalculator);
    setButtonKey(ui->pbRecalc, QKeySequence(Qt::Key_F5));
    auto *const escape = new QShortcut(QKeySequence(Qt::Key_Escape), ui->calcPage);
    connect(escape, &QShortcut::activated, this, &Tavenor::leaveCalculator);
}

void Tavenor::changeToCalcPage()
{
    if (!db->isOpen()) {
        hasCurrentTable();
        return;
    }
    clearCalculator();
    QString error;
    const QStringList columns = db->fieldNames(currentTable, &error);
    for (const QString &column : columns) {
        if (Calculator::isSummed(column)) {
            addCalcForm(column);
        }
    }
    alignCalculator();
    showCalculator();
    if (!hasCurrentTable()) {
        return;
    }
    if (columns.isEmpty()) {
        warnUnreadable(currentTable, error.isEmpty() ? RowPass(currentTable).error() : error);
        return;
    }
    calcResult();
}

void Tavenor::clearCalculator()
{
    retireWidgets(ui->calcLayout, calcWidgets);
    ui->leResult->clear();
}

void Tavenor::clearResults()
{
    // The sums of a part would pass for those of the whole.
    for (calcForm *const form : qAsConst(calcWidgets)) {
        form->reset();
    }
    ui->leResult->clear();
}

void Tavenor::addCalcForm(const QString &column)
{
    auto *const form = new calcForm;
    calcWidgets.append(form);
    if (Calculator::isMoney(column)) {
        form->setFormat(Formats::Money);
    }
    form->setField(column);
    ui->calcLayout->addWidget(form);
    form->show();
}

void Tavenor::alignCalculator()
{
    int width = ui->lbTotal->sizeHint().width();
    for (const calcForm *const form : qAsConst(calcWidgets)) {
        width = qMax(width, form->labelWidthHint());
    }
    for (calcForm *const form : qAsConst(calcWidgets)) {
        form->setLabelWidth(width);
    }
    if (!calcWidgets.isEmpty()) {
        calcWidgets.last()->hideLine();
    }
    ui->lbTotal->setFixedWidth(width);
    ui->lbNoColumns->setVisible(calcWidgets.isEmpty());
    // The total follows the last line, and stays in sight when the lines need to be scrolled.
    ui->calcScroll->setMaximumHeight(ui->calcContents->sizeHint().height());
}

void Tavenor::showCalculator()
{
    rememberFocus();
    ui->stPages->setCurrentIndex(CalculatorPage);
    ui->calcScroll->verticalScrollBar()->setValue(0);
    if (calcWidgets.isEmpty()) {
        ui->pbExitCalc->setFocus();
        return;
    }
    // What stands under the lines was made before them and would come before them.
    QWidget::setTabOrder(lastTabStop(calcWidgets.last()), ui->leResult);
    QWidget::setTabOrder(ui->leResult, ui->pbExitCalc);
    QWidget::setTabOrder(ui->pbExitCalc, ui->pbRecalc);
    ui->pbRecalc->setFocus();
}

void Tavenor::calcResult()
{
    QStringList names;
    std::vector<SummedColumn> columns;
    for (calcForm *const form : qAsConst(calcWidgets)) {
        const QString name = form->getFieldName();
        names.append(name);
        columns.push_back({static_cast<Calculator::Mode>(form->mode()),
                           Calculator::RunningSum(Calculator::isMoney(name))});
    }
    double total = 0.0;
    QString error;
    // All records count, also those that a filter keeps out of the list. A walk that names no
    // column would read them all for nothing.
    if (!names.isEmpty()) {
        const Progress progress(*this, QStringLiteral("Elaborazione"), currentTable);
        const int records = RowPass::count(currentTable);
        RowPass rows(currentTable, names);
        for (int done = 0; rows.next(); ++done) {
            updateProgress(done, records);
            for (std::size_t place = 0; place < columns.size(); ++place) {
                const double value = Values::finiteNumber(rows.value(static_cast<int>(place)));
                total = Calculator::addedTo(total, value, columns[place].mode);
                columns[place].sum.add(value);
            }
        }
        error = rows.error();
    }
    if (!error.isEmpty()) {
        clearResults();
        warnUnreadable(currentTable, error);
        return;
    }
    for (std::size_t place = 0; place < columns.size(); ++place) {
        calcWidgets.at(static_cast<int>(place))->showResult(columns[place].sum.text());
    }
    ui->leResult->showOneLine(Values::sixDecimals(total));
}

void Tavenor::leaveCalculator()
{
    changeToUsersPage();
    showCurrentRecord();
    restoreFocus();
}
