// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Message boxes of a program that nobody sits in front of.
#include "samples/unattendedboxes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>

#include <utility>

UnattendedBoxes::UnattendedBoxes(Report report)
    : report(std::move(report))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool UnattendedBoxes::eventFilter(QObject *watched, QEvent *event)
{
    auto *const box = qobject_cast<QMessageBox *>(watched);
    if (box != nullptr && event->type() == QEvent::Show) {
        report(box->text().trimmed());
        // Later, because the box's own loop begins only after it is shown.
        QTimer::singleShot(0, box, &QMessageBox::reject);
    }
    return QObject::eventFilter(watched, event);
}
