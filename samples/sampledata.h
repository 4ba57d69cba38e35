// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Everything that the sample collection is made from.
#pragma once

#include "samples/tabfile.h"

#include <QMap>
#include <QString>

struct Cover;
struct Sheet;

/// The data files of the collection and what they say about covers and sheets.
class SampleData
{
public:
    /// `folder` holds the folders "data" and "icons".
    explicit SampleData(const QString &folder);

    /// Reads all data files. False, with problem() set, when one is missing or malformed.
    bool read();

    /// What went wrong in read(), for people.
    QString problem() const { return complaint; }

    /// The data file of this name (without ending); one without rows when it was not read.
    TabFile file(const QString &name) const { return files.value(name); }

    /// Path of the icon of this name (without ending).
    QString iconPath(const QString &name) const;

    /// The cover that row `row` of the covers' file describes.
    Cover cover(int row) const;

    /// The sheet that row `row` of the sheets' file describes.
    Sheet sheet(int row) const;

private:
    QString source;
    QMap<QString, TabFile> files;
    QString complaint;
};

namespace SampleFiles
{
extern const QString Loans;
extern const QString Filters;
extern const QString Covers;
extern const QString Sheets;
} // namespace SampleFiles
