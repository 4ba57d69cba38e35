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
#include "widgets/attachfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>

namespace
{

QString notWritten(const QString &path)
{
    return QStringLiteral("Impossibile scrivere %1").arg(path);
}

/// Makes the file of each row of `list` with `write` and attaches it to its book in the way in
/// which the entry page does.
QString writeForBooks(const QString &folder, const TabFile &list,
                      const std::function<bool(int row, const QString &path)> &write)
{
    const QTemporaryDir made;
    const QString base = folder + QLatin1Char('/');
    QDir().mkdir(base + Markers::AttachmentsFolder);
    for (int row = 0; row < list.rowCount(); ++row) {
        const QString title = list.value(row, QStringLiteral("Titolo"));
        const QString path = made.filePath(list.value(row, QStringLiteral("File")));
        if (!write(row, path)) {
            return notWritten(path);
        }
        const QString record = Attachments::recordFolder(TablePlans::Books, title);
        const QString stored = AttachFile::copyIn(base, record, path);
        if (!QFileInfo::exists(base + stored) || stored.isEmpty()) {
            return notWritten(base + stored);
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
