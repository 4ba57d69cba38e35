// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The progress window of long operations.
#include "widgets/progressBarForm.h"

#include "ui_progressBarForm.h"

#include <QCloseEvent>

progressBarForm::progressBarForm(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::progressBarForm>())
{
    ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

progressBarForm::~progressBarForm() = default;

void progressBarForm::setProgressValue(int percent)
{
    ui->progressBar->setValue(percent);
}

void progressBarForm::setProgressText(QString text)
{
    ui->lbProgressTitle->setText(text);
    ui->progressBar->setAccessibleName(text);
}

void progressBarForm::setTitle(QString title)
{
    setWindowTitle(title);
}

void progressBarForm::reject()
{
    if (!held) {
        QDialog::reject();
    }
}

void progressBarForm::closeEvent(QCloseEvent *event)
{
    if (held) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}
