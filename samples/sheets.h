// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One-page PDF sheets about the sample books.
#pragma once

#include "samples/covers.h"

#include <QPair>
#include <QString>
#include <QVector>

/// What stands on one sheet.
struct Sheet {
    QString title;
    QString author;
    QVector<QPair<QString, QString>> facts; ///< label and value, in the order shown
    QString text;
    Cover cover;
};

namespace Sheets
{

/// Writes the sheet as a PDF file of one A4 page. False when it cannot be written.
bool write(const QString &path, const Sheet &sheet);

} // namespace Sheets
