// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The files that stand beside the sample database.
#include "samples/attachedfiles.h"

#include "model/attachments.h"
#include "model/markers.h"
#include "samples/covers.h"
#include "samples/sampledata.h"
#include "samples/sheets.h"
#include "samples/tableplan.h"

#include <QDir>
#include <QFile>

#include <functional>

namespace
{

QString notWritten(const QString &path)
{
    return QStringLiteral("Impossibile scrivere %1").arg(path);
}

/// Calls `write` with the path of the file of each row of `list`.
QString writeForBooks(const QString &folder, const TabFile &list,
                      const std::function<bool(int row, const QString &path)> &write)
{
    for (int row = 0; row < list.rowCount(); ++row) {
        const QString title = list.value(row, QStringLiteral("Titolo"));
        const QString place =
            folder + QLatin1Char('/') + Attachments::recordFolder(TablePlans::Books, title);
        const QString path = place + QLatin1Char('/') + list.value(row, QStringLiteral("File"));
        if (!QDir().mkpath(place) || !write(row, path)) {
            return notWritten(path);
        }
    }
    return {};
}

QString copyIcons(const QString &folder, const SampleData &data)
{
    QStringList names = {SampleFiles::Loans};
    for (const TablePlan &plan : TablePlans::tables()) {
        names.append(plan.source);
    }
    const QString place = folder + QLatin1Char('/') + Markers::IconsFolder;
    QDir().mkpath(place);
    for (const QString &name : qAsConst(names)) {
        const QString path = QStringLiteral("%1/%2.png").arg(place, name);
        // A file copied out of the program would stay read-only without this.
        if (!QFile::copy(data.iconPath(name), path) ||
            !QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                             QFile::ReadOther)) {
            return notWritten(path);
        }
    }
    return {};
}

} // namespace

namespace AttachedFiles
{

QString make(const QString &folder, const SampleData &data)
{
    QString problem = copyIcons(folder, data);
    if (problem.isEmpty()) {
        problem = writeForBooks(folder, data.file(SampleFiles::Covers),
                                [&data](int row, const QString &path) {
                                    return Covers::picture(data.cover(row)).save(path);
                                });
    }
    if (problem.isEmpty()) {
        problem = writeForBooks(
            folder, data.file(SampleFiles::Sheets),
            [&data](int row, const QString &path) { return Sheets::write(path, data.sheet(row)); });
    }
    return problem;
}

} // namespace AttachedFiles
