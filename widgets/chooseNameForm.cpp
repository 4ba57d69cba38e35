// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A prompt for one name.
#include "widgets/chooseNameForm.h"

#include "ui_chooseNameForm.h"

chooseNameForm::chooseNameForm(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::chooseNameForm>())
{
    ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

chooseNameForm::~chooseNameForm() = default;

QString chooseNameForm::getName() const
{
    return ui->leName->text();
}

void chooseNameForm::clearName()
{
    ui->leName->clear();
}

void chooseNameForm::setName(QString name)
{
    ui->leName->setText(name);
}

void chooseNameForm::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    ui->leName->setFocus();
    ui->leName->selectAll();
}
