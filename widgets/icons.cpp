// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's icons, each read once.
#include "widgets/icons.h"

#include <QCoreApplication>
#include <QHash>

namespace
{

QHash<QString, QIcon> &store()
{
    static QHash<QString, QIcon> icons;
    return icons;
}

/// Pictures must not outlive the application.
void clearStore()
{
    store().clear();
}

} // namespace

QIcon Icons::shared(const QString &name)
{
    QHash<QString, QIcon> &icons = store();
    auto found = icons.find(name);
    if (found == icons.end()) {
        if (icons.isEmpty()) {
            qAddPostRoutine(clearStore);
        }
        found = icons.insert(name, QIcon(name));
    }
    return *found;
}
