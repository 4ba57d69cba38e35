// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Field to be entered: the condition of a filter.
#include "widgets/inputDataForm.h"

#include "ui_inputDataForm.h"

namespace
{

const QLatin1String And("And");
const QLatin1String Or("Or");

/// The names of the conditions, in the order in which their buttons decide.
const std::array<QLatin1String, 4> &conditionNames()
{
    static const std::array<QLatin1String, 4> names = {
        QLatin1String("Equal"), QLatin1String("Disequal"), QLatin1String("Major"),
        QLatin1String("Minor")};
    return names;
}

} // namespace

void inputDataForm::connectConditions()
{
    // Deliberate: pressing pbDiff alone does not make the field take part.
    QPushButton *const activating[] = {ui->pbEqual, ui->pbMajor, ui->pbMinor};
    for (QPushButton *button : activating) {
        connect(button, &QPushButton::pressed, this, &inputDataForm::activatedByButton);
    }
    connect(ui->pbNoFilter, &QPushButton::pressed, this, &inputDataForm::deactivatedByButton);
    for (QPushButton *button : conditionButtons()) {
        connect(button, &QPushButton::clicked, this, [this, button] { checkOnly(button); });
    }
    connect(ui->pbAnd, &QPushButton::clicked, this, [this] { setJoiningWord(And); });
    connect(ui->pbOr, &QPushButton::clicked, this, [this] { setJoiningWord(Or); });
}

void inputDataForm::setFilterRole(bool on)
{
    isCondition = on;
    ui->compareFrame->setVisible(on);
    ui->buttonFrame2->setVisible(on);
    ui->activeMark->setVisible(on);
    nameControls();
}

/// Every button of the condition, those of the joining word included.
std::array<SwitchButton *, 7> inputDataForm::switches() const
{
    return {ui->pbEqual, ui->pbDiff, ui->pbMajor, ui->pbMinor, ui->pbNoFilter, ui->pbAnd, ui->pbOr};
}

std::array<QPushButton *, 5> inputDataForm::conditionButtons() const
{
    return {ui->pbEqual, ui->pbDiff, ui->pbMajor, ui->pbMinor, ui->pbNoFilter};
}

/// Checks one of the five buttons and unchecks the others; a click on the checked one leaves it
/// checked.
void inputDataForm::checkOnly(QPushButton *condition)
{
    for (QPushButton *button : conditionButtons()) {
        button->setChecked(button == condition);
    }
}

QString inputDataForm::conditionName() const
{
    const auto buttons = conditionButtons();
    for (std::size_t position = 0; position < conditionNames().size(); ++position) {
        if (buttons.at(position)->isChecked()) {
            return conditionNames().at(position);
        }
    }
    return QStringLiteral("NoCondition");
}

void inputDataForm::setConditionName(const QString &name)
{
    const auto buttons = conditionButtons();
    for (QPushButton *button : buttons) {
        // Deliberate: pbDiff stays as it is.
        button->setChecked(button == ui->pbDiff && button->isChecked());
    }
    for (std::size_t position = 0; position < conditionNames().size(); ++position) {
        if (name.compare(conditionNames().at(position), Qt::CaseInsensitive) == 0) {
            buttons.at(position)->setChecked(true);
            return;
        }
    }
    ui->pbNoFilter->setChecked(true);
    setActive(false);
}

void inputDataForm::setActive(bool on)
{
    active = on;
    ui->activeMark->setAutoFillBackground(on);
    for (SwitchButton *button : switches()) {
        button->setEmphasis(on);
    }
}

void inputDataForm::clearCondition()
{
    setActive(false);
    checkOnly(ui->pbNoFilter);
}

// Deliberate: every change of the value means the condition "Equal", whatever it was before.
void inputDataForm::activated()
{
    setActive(true);
    checkOnly(ui->pbEqual);
}

void inputDataForm::cbActivated(int pos)
{
    if (pos > 0) {
        activated();
    } else {
        clearCondition();
    }
}

void inputDataForm::activatedByButton()
{
    setActive(true);
}

void inputDataForm::deactivatedByButton()
{
    setActive(false);
}

QString inputDataForm::joiningWord() const
{
    return ui->pbAnd->isChecked() ? And : Or;
}

void inputDataForm::setJoiningWord(const QString &word)
{
    const bool isAnd = word.compare(And, Qt::CaseInsensitive) == 0;
    ui->pbAnd->setChecked(isAnd);
    ui->pbOr->setChecked(!isAnd);
}
