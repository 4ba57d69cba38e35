// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One column on the calculator page.
#include "widgets/calcForm.h"

#include "ui_calcForm.h"

#include "model/calculator.h"
#include "model/formats.h"
#include "model/names.h"
#include "model/values.h"
#include "widgets/figures.h"
#include "widgets/plaintooltip.h"

namespace
{

constexpr int MostLabelWidth = 224;
const QString Euro = QStringLiteral("€");

} // namespace

calcForm::calcForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::calcForm>())
{
    ui->setupUi(this);
    ui->leResult->setFont(Figures::tabular(font()));
    ui->leResult->setFixedWidth(resultWidth(font()));
    // The sums stand under each other whether a sign follows them or not.
    QSizePolicy policy = ui->lbType->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    ui->lbType->setSizePolicy(policy);
    ui->lbType->setFixedWidth(ui->lbType->fontMetrics().horizontalAdvance(Euro) + 2);
    ui->lbType->hide();
    SwitchButton *const buttons[] = {ui->pbPlus, ui->pbMinus, ui->pbExclude};
    for (SwitchButton *const button : buttons) {
        button->setEmphasis(true);
    }
    reset();
}

calcForm::~calcForm() = default;

void calcForm::setField(QString fieldName)
{
    this->fieldName = fieldName;
    // Deliberate: the label as it is stored, a duplicate's marker included.
    ui->lbName->setText(Names::fieldLabel(fieldName));
    nameControls();
}

void calcForm::setFormat(QString format)
{
    if (format == Formats::Money) {
        isMoney = true;
        ui->lbType->setText(Euro);
        ui->lbType->show();
    }
}

int calcForm::mode() const
{
    if (ui->pbPlus->isChecked()) {
        return Calculator::Plus;
    }
    return ui->pbMinus->isChecked() ? Calculator::Minus : Calculator::Exclude;
}

void calcForm::reset()
{
    showResult(QStringLiteral("0"));
}

void calcForm::add(double value)
{
    const double sum = ui->leResult->text().toDouble() + value;
    showResult(isMoney ? Values::twoDecimals(sum) : Values::sixDecimals(sum));
}

void calcForm::showResult(const QString &text)
{
    ui->leResult->showOneLine(text);
}

int calcForm::labelWidthHint() const
{
    const QLabel *const name = ui->lbName;
    return qMin(name->fontMetrics().horizontalAdvance(name->text()) + 2, MostLabelWidth);
}

void calcForm::setLabelWidth(int width)
{
    ui->lbName->setFixedWidth(width);
    const int wanted = ui->lbName->fontMetrics().horizontalAdvance(ui->lbName->text());
    PlainToolTip::set(ui->lbName, wanted > width ? ui->lbName->text() : QString());
}

void calcForm::hideLine()
{
    ui->line->hide();
}

int calcForm::resultWidth(const QFont &font)
{
    // Trillions with six decimals.
    const QString longest = QStringLiteral("-9999999999999.999999");
    return QFontMetrics(Figures::tabular(font)).horizontalAdvance(longest) + 8;
}

/// Tells screen readers which column each control belongs to.
void calcForm::nameControls()
{
    const QString label = ui->lbName->text();
    ui->leResult->setValueName(label);
    // A label with a buddy reads "&" as the mark of a shortcut key and does not paint it.
    ui->lbName->setBuddy(label.contains(QLatin1Char('&')) ? nullptr : ui->leResult);
    QPushButton *const buttons[] = {ui->pbPlus, ui->pbMinus, ui->pbExclude};
    for (QPushButton *const button : buttons) {
        button->setAccessibleName(label + QLatin1Char(' ') + button->toolTip());
    }
}
