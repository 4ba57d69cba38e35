// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Field to be entered: the condition of a filter.
#include "widgets/inputDataForm.h"

#include "ui_inputDataForm.h"

#include "model/columns.h"
#include "model/markers.h"
#include "model/values.h"

#include <QPainter>

namespace
{

constexpr int LettersBesideButtons = 8;
constexpr int TintAlpha = 32;
constexpr int RoomInsideTint = 8;

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
    connect(ui->pbAnd, &QPushButton::clicked, this, [this] { setJoiningWord(Filters::And); });
    connect(ui->pbOr, &QPushButton::clicked, this, [this] { setJoiningWord(Filters::Or); });
    for (SwitchButton *button : switches()) {
        // A condition that a person has changed is no longer the one of the jump.
        connect(button, &QPushButton::clicked, this, [this] { followsLink = false; });
    }
}

void inputDataForm::setFilterRole(bool on)
{
    isCondition = on;
    ui->compareFrame->setVisible(on);
    ui->buttonFrame2->setVisible(on);
    ui->activeMark->setVisible(on);
    // Nothing is required of a condition.
    ui->lbRequired->setVisible(!on);
    QMargins margins = ui->horizontalLayout->contentsMargins();
    margins.setRight(on ? RoomInsideTint : 0);
    ui->horizontalLayout->setContentsMargins(margins);
    if (on) {
        // The buttons need the room.
        ui->cboxData->setMinimumContentsLength(LettersBesideButtons);
    }
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
    std::size_t position = 0;
    for (const Filters::Comparison comparison : Filters::comparisons()) {
        if (conditionButtons().at(position++)->isChecked()) {
            return Filters::comparisonName(comparison);
        }
    }
    return Filters::comparisonName(Filters::Comparison::None);
}

void inputDataForm::setConditionName(const QString &name)
{
    const auto buttons = conditionButtons();
    for (QPushButton *button : buttons) {
        // Deliberate: pbDiff stays as it is.
        button->setChecked(button == ui->pbDiff && button->isChecked());
    }
    const int position = Filters::comparisons().indexOf(Filters::comparisonNamed(name));
    if (position >= 0) {
        buttons.at(std::size_t(position))->setChecked(true);
        return;
    }
    ui->pbNoFilter->setChecked(true);
    setActive(false);
}

void inputDataForm::setActive(bool on)
{
    const bool changes = active != on;
    active = on;
    ui->activeMark->setAutoFillBackground(on);
    update();
    showEmphasis();
    if (changes) {
        emit activeChanged();
    }
}

void inputDataForm::setJoins(bool on)
{
    joins = on;
    showEmphasis();
}

void inputDataForm::showEmphasis()
{
    for (SwitchButton *button : switches()) {
        const bool isWord = button == ui->pbAnd || button == ui->pbOr;
        button->setEmphasis(active && (joins || !isWord));
    }
    describeEditor();
}

/// Tints the conditions that take part, so that they are seen at a glance among the others.
void inputDataForm::paintEvent(QPaintEvent *)
{
    if (isCondition && active) {
        QColor tint = palette().color(QPalette::Highlight);
        tint.setAlpha(TintAlpha);
        QPainter(this).fillRect(rect(), tint);
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
    return ui->pbAnd->isChecked() ? Filters::And : Filters::Or;
}

void inputDataForm::setJoiningWord(const QString &word)
{
    const bool isAnd = Filters::isAnd(word);
    ui->pbAnd->setChecked(isAnd);
    ui->pbOr->setChecked(!isAnd);
}

Filters::Setting inputDataForm::setting() const
{
    Filters::Setting setting;
    setting.column = column;
    setting.format = formatName;
    setting.value = rawText();
    setting.comparison = Filters::comparisonNamed(conditionName());
    setting.active = active;
    setting.joinsWithAnd = Filters::isAnd(joiningWord());
    setting.followsLink = followsLink;
    return setting;
}

void inputDataForm::setSetting(const Filters::Setting &setting)
{
    const bool isKnown = Formats::kindOf(setting.format) != Formats::Kind::Other ||
                         setting.format.contains(Markers::Reference);
    setValue(isKnown ? setting.format : Filters::comparedFormat(column), setting.value);
    clearCondition();
    setConditionName(Filters::comparisonName(setting.comparison));
    setActive(setting.active);
    setJoiningWord(setting.joinsWithAnd ? Filters::And : Filters::Or);
    setFollowsLink(setting.followsLink);
}

/// What records are compared with: the value as the editor shows it.
QString inputDataForm::comparedText() const
{
    switch (editorKind) {
    case Editor::Whole:
        return QString::number(ui->sbNum->value());
    case Editor::YesNo:
        return ui->cbData->isChecked() ? Values::YesText : Values::NoText;
    default:
        return Values::quotesDoubled(rawText());
    }
}

Filters::Condition inputDataForm::condition(const QString &format) const
{
    const Filters::Comparison comparison =
        active ? Filters::comparisonNamed(conditionName()) : Filters::Comparison::None;
    return {format, comparison, comparedText(), followsLink};
}

bool inputDataForm::match(const QString &format, const QVariant &value) const
{
    return condition(format).matches(value.toString());
}
