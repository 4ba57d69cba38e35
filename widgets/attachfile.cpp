// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Files that are attached to a record: copied into its folder, never over another file.
#include "widgets/attachfile.h"

#include "model/attachments.h"
#include "model/values.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace
{

constexpr int MostNamesTried = 10000;

/// The name of a pasted picture: the first one plain, the others numbered from 2.
QString pictureName(int number)
{
    return number == 1 ? QStringLiteral("immagine.png")
                       : QStringLiteral("immagine_%1.png").arg(number);
}

QString storedPath(const QString &folder, const QString &name)
{
    return folder + QLatin1Char('/') + name;
}

/// Writes into `file`, which has just been made and is removed again on failure.
bool writePicture(QFile &file, const QImage &picture)
{
    const bool isWritten = picture.save(&file, "PNG") && file.flush();
    file.close();
    if (!isWritten) {
        file.remove();
    }
    return isWritten;
}

} // namespace

namespace AttachFile
{

bool isRegularFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

QString copyIn(const QString &base, const QString &folder, const QString &source)
{
    // The copy must be found again by the name that the record keeps.
    const QString name = Values::asStored(Attachments::fileName(source));
    QString path = storedPath(folder, name);
    if (name.isEmpty() || !Attachments::mayBeOpened(base, path)) {
        return {};
    }
    QDir().mkdir(base + folder);
    if (isRegularFile(source)) {
        QFile::copy(source, base + path);
    }
    return path;
}

QString savePicture(const QString &base, const QString &folder, const QImage &picture)
{
    if (picture.isNull() || !Attachments::isInside(base, storedPath(folder, pictureName(1)))) {
        return {};
    }
    QDir().mkdir(base + folder);
    for (int number = 1; number <= MostNamesTried; ++number) {
        const QString path = storedPath(folder, pictureName(number));
        QFile file(base + path);
        // NewOnly: another copy of the program may take the same name at this moment.
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            return writePicture(file, picture) ? path : QString();
        }
        if (!QFileInfo::exists(base + path)) {
            return {};
        }
    }
    return {};
}

QString fileIn(const QMimeData *data, const QStringList &suffixes)
{
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && suffixes.contains(QFileInfo(url.path()).suffix().toLower())) {
            return url.toLocalFile();
        }
    }
    return {};
}

} // namespace AttachFile
