// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Answers whatever the program asks while calls fail, when nobody knows how much it will ask.
#include "tests/faults/tools/answers.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

Answers::Answers()
{
    connect(&timer, &QTimer::timeout, this, &Answers::answer);
    timer.start(0);
}

void Answers::answer()
{
    QWidget *const asking = QApplication::activeModalWidget();
    if (auto *const box = qobject_cast<QMessageBox *>(asking)) {
        const bool asks = (box->standardButtons() & QMessageBox::Yes) != 0;
        if (!asks) {
            texts.append(box->text());
        }
        box->button(asks ? QMessageBox::Yes : QMessageBox::Ok)->click();
        return;
    }
    auto *const dialog = qobject_cast<QFileDialog *>(asking);
    if (dialog == nullptr || dialog == answered) {
        return;
    }
    // Once for each dialog: it takes its time to close.
    answered = dialog;
    if (files.isEmpty()) {
        QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
        return;
    }
    dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(files.dequeue());
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
}
