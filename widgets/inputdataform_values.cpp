// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Field to be entered: the value text, and numbers.
#include "widgets/inputDataForm.h"

#include "ui_inputDataForm.h"

#include "model/values.h"

#include <QMessageBox>

QString inputDataForm::valueText() const
{
    return Values::quotesDoubled(hasNumberToRead() ? numberText(numericValue()) : rawText());
}

QString inputDataForm::rawText() const
{
    return isChanged ? editorText() : storedText();
}

/// What an untouched field is worth: the stored text, even where the editor cannot show it.
QString inputDataForm::storedText() const
{
    if (!stored.isEmpty()) {
        return stored;
    }
    switch (editorKind) {
    case Editor::Whole:
        return QStringLiteral("0");
    case Editor::YesNo:
        return Values::NoText;
    case Editor::None:
        return label();
    default:
        return {};
    }
}

QString inputDataForm::editorText() const
{
    switch (editorKind) {
    case Editor::Number: {
        bool isNumber = false;
        const double number = Values::typedNumber(ui->leData->text(), &isNumber);
        return hasNumberToRead() ? numberText(number) : QString();
    }
    case Editor::Whole:
        return QString::number(ui->sbNum->value());
    case Editor::YesNo:
        return ui->cbData->isChecked() ? Values::YesText : Values::NoText;
    case Editor::Date:
        return Values::dateText(ui->deData->chosenDate());
    case Editor::Link:
        return ui->cboxData->chosenLine();
    case Editor::Reference:
        return chosenId() == 0 ? QString() : QString::number(chosenId());
    case Editor::File:
        return imagePath;
    default:
        return ui->leData->text();
    }
}

QString inputDataForm::numberText(double number) const
{
    return kind == Formats::Kind::Money ? Values::twoDecimals(number) : Values::sixDecimals(number);
}

/// True when the value is a number that a person has typed; a blank text is no value.
bool inputDataForm::hasNumberToRead() const
{
    return isChanged && editorKind == Editor::Number && !ui->leData->text().trimmed().isEmpty();
}

double inputDataForm::numericValue() const
{
    bool isNumber = false;
    const double number = Values::typedNumber(ui->leData->text(), &isNumber);
    // Deliberate: a field that does not take part reads as 0 without a word.
    if (!isNumber && active) {
        messageBox->setText(QStringLiteral("ERRORE: Valore numerico non valido"));
        messageBox->exec();
    }
    return number;
}

bool inputDataForm::numberIsValid() const
{
    bool isNumber = false;
    Values::typedNumber(ui->leData->text(), &isNumber);
    return isNumber || !hasNumberToRead();
}

void inputDataForm::intPlus()
{
    ui->sbNum->stepUp();
}

void inputDataForm::intMinus()
{
    ui->sbNum->stepDown();
}
