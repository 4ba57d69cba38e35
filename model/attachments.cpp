// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Stored paths of attached files and icons: how they are built, and which may be followed.
#include "model/attachments.h"

#include "model/formats.h"
#include "model/markers.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace
{

/// The clean path with the symbolic links of its existing part followed; empty when a link on it
/// leads nowhere, because writing there would make the file that it names.
QString resolved(const QString &path)
{
    QFileInfo info(QDir::current().absoluteFilePath(path));
    QString missing;
    while (!info.exists()) {
        if (info.isSymLink() || info.isRoot()) {
            return {};
        }
        missing.prepend(QLatin1Char('/') + info.fileName());
        info.setFile(info.path());
    }
    return QDir::cleanPath(info.canonicalFilePath() + missing);
}

QString withFinalSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

/// True when the text alone shows that a path stays below the folder it is appended to.
bool readsAsInside(const QString &storedPath)
{
    // ":" at the start names Qt's built-in files; after a NUL the system reads no further, so
    // that what is tested would not be what is opened.
    return !storedPath.startsWith(QLatin1Char('/')) && !storedPath.startsWith(QLatin1Char(':')) &&
           !storedPath.contains(QChar::Null) &&
           !storedPath.split(QLatin1Char('/')).contains(QLatin1String(".."));
}

bool hasRunnableSuffix(const QString &path)
{
    static const QStringList runnable =
        QStringLiteral("desktop exe com bat cmd scr msi lnk ps1 hta js vbs jar sh appimage")
            .split(QLatin1Char(' '));
    return runnable.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

} // namespace

namespace Attachments
{

QString documentPath(QString name)
{
    static const QLatin1String unwanted("'?!.,;:<>/\\\"*[]");
    for (const char character : unwanted) {
        name.remove(QLatin1Char(character));
    }
    if (name.contains(Formats::SubTable)) {
        name.remove(Markers::HiddenTable)
            .remove(Formats::SubTable)
            .remove(Markers::SubTableConfig)
            .replace(Markers::SubTableUser, QLatin1String("_"))
            .remove(Markers::SubTable);
    }
    return Markers::AttachmentsFolder + QLatin1Char('/') + name;
}

QString recordFolder(const QString &table, const QString &title)
{
    QString name = table + QLatin1Char('_') + title;
    return documentPath(name.replace(QLatin1Char(' '), QLatin1Char('_')));
}

QString fileName(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

bool isInside(const QString &base, const QString &storedPath)
{
    if (!readsAsInside(storedPath)) {
        return false;
    }
    const QString folder = resolved(base);
    const QString path = resolved(base + storedPath);
    return path.startsWith(withFinalSlash(folder));
}

bool mayBeOpened(const QString &base, const QString &storedPath)
{
    if (!isInside(base, storedPath)) {
        return false;
    }
    // Whoever opens a pipe waits, and a device may never end.
    const QFileInfo file(base + storedPath);
    if (file.exists() && !file.isFile() && !file.isDir()) {
        return false;
    }
    // The target counts as well as the name: a link may call a script a picture.
    return !hasRunnableSuffix(QDir::cleanPath(storedPath)) &&
           !hasRunnableSuffix(resolved(base + storedPath));
}

} // namespace Attachments
