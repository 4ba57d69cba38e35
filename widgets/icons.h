// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's icons, each read once.
#pragma once

#include <QIcon>
#include <QString>

/// The resource names carry no file ending, so Qt looks into the file to learn its kind each
/// time that an icon is made: as long as building a whole field of a record takes.
namespace Icons
{

/// The icon of the resource `name`, such as ":/mailIcon".
QIcon shared(const QString &name);

} // namespace Icons
