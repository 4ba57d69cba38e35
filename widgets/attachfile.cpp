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
#include <QTemporaryFile>
#include <QUrl>

#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int MostNamesTried = 10000;
constexpr int CopiedAtOnce = 64 * 1024;
constexpr mode_t UsualMode = 0666;

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

/// The rights that the person's settings take from new files. Asking for them sets them for a
/// moment, so it is done once, before there is anything else that makes files.
mode_t creationMask()
{
    const mode_t mask = umask(0);
    umask(mask);
    return mask;
}

const mode_t CreationMask = creationMask();

/// Names that were given in the folder stay after a power cut.
void synchroniseFolder(const QString &folder)
{
    const int handle = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
}

/// Makes the file `target`, whole or not at all and never over another one: `fill` writes its
/// bytes to a file beside it that has no name of its own yet.
bool makeWhole(const QString &target, const std::function<bool(QIODevice &)> &fill)
{
    QTemporaryFile beside(QFileInfo(target).path() + QLatin1String("/qt_temp.XXXXXX"));
    // On the disk before it has its name: the record that names it may be there in a moment.
    if (!beside.open() || !fill(beside) || !beside.flush() || fsync(beside.handle()) != 0 ||
        !beside.rename(target)) {
        return false;
    }
    beside.setAutoRemove(false);
    // It was made for its owner alone.
    chmod(QFile::encodeName(target).constData(), UsualMode & ~CreationMask);
    const QString folder = QFileInfo(target).path();
    synchroniseFolder(folder);
    // The folder may have been made for this file.
    synchroniseFolder(QFileInfo(folder).path());
    return true;
}

bool copyBytes(QIODevice &from, QIODevice &to)
{
    QByteArray block(CopiedAtOnce, '\0');
    qint64 count = 0;
    do {
        count = from.read(block.data(), block.size());
        if (count > 0 && to.write(block.constData(), count) != count) {
            return false;
        }
    } while (count > 0);
    return count == 0;
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
        copyWhole(source, base + path);
    }
    return path;
}

bool copyWhole(const QString &source, const QString &target)
{
    QFile file(source);
    if (QFileInfo::exists(target) || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const bool isCopied =
        makeWhole(target, [&file](QIODevice &beside) { return copyBytes(file, beside); });
    if (isCopied) {
        // Some disks know no rights.
        QFile::setPermissions(target, file.permissions());
    }
    return isCopied;
}

QString savePicture(const QString &base, const QString &folder, const QImage &picture)
{
    if (picture.isNull() || !Attachments::isInside(base, storedPath(folder, pictureName(1)))) {
        return {};
    }
    QDir().mkdir(base + folder);
    for (int number = 1; number <= MostNamesTried; ++number) {
        const QString path = storedPath(folder, pictureName(number));
        if (QFileInfo::exists(base + path)) {
            continue;
        }
        const auto write = [&picture](QIODevice &file) { return picture.save(&file, "PNG"); };
        if (makeWhole(base + path, write)) {
            return path;
        }
        // Another copy of the program may have taken the same name at this moment.
        if (!QFileInfo::exists(base + path)) {
            return {};
        }
    }
    return {};
}

QStringList pictureSuffixes()
{
    return {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
            QStringLiteral("bmp"), QStringLiteral("tif")};
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
