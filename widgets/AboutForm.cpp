// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The About box.
#include "widgets/AboutForm.h"

#include "ui_AboutForm.h"

#include "model/addresses.h"

#include <QDesktopServices>
#include <QUrl>

AboutForm::AboutForm(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::AboutForm>())
{
    ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui->label_5->setPixmap(QIcon(QStringLiteral(":/listIcon")).pixmap(ui->label_5->minimumSize()));
    ui->lbType->clear();
    ui->lbLink->setText(Addresses::linkMarkup(QStringLiteral(TAVENOR_SITE)));
    ui->lbLinkQt->setText(Addresses::linkMarkup(QStringLiteral("https://www.qt.io/")));
    connect(ui->lbLink, &QLabel::linkActivated, this, &AboutForm::linkActivated);
    connect(ui->lbLinkQt, &QLabel::linkActivated, this, &AboutForm::linkActivated);
    connect(ui->pbClose, &QPushButton::clicked, this, &AboutForm::close);
}

AboutForm::~AboutForm() = default;

void AboutForm::setTitle(QString title)
{
    ui->lbTitol->setText(title);
}

void AboutForm::setVersion(QString version)
{
    ui->lbVersion->setText(version);
}

void AboutForm::setAuthor(QString author)
{
    ui->lbAutor->setText(author);
}

void AboutForm::linkActivated(QString link)
{
    QDesktopServices::openUrl(QUrl(link));
}
