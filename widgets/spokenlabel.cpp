// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of boxes of choices, for screen readers.
#include "widgets/spokenlabel.h"

#include <QComboBox>
#include <QLabel>

void setSpokenLabel(QComboBox *box, const QString &name)
{
    const QString objectName = box->objectName() + QLatin1String("Label");
    QWidget *const parent = box->parentWidget();
    auto *label = parent->findChild<QLabel *>(objectName, Qt::FindDirectChildrenOnly);
    if (label == nullptr) {
        label = new QLabel(parent);
        label->setObjectName(objectName);
        label->setBuddy(box);
        label->hide();
    }
    label->setAccessibleName(name);
}
