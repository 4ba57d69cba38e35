// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The two small files that the program keeps in its working directory.
#include "app/workingfiles.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

namespace WorkingFiles
{

namespace
{

const QString LastDatabaseFile = QStringLiteral("lastDb.dat");
const QString LockFile = QStringLiteral("lockDb.dat");
const QString LockMark = QStringLiteral("Locked");

// Longer than any path; keeps a huge file of garbage from being read whole.
constexpr qint64 LongestLine = 65536;

// A pipe or a device in the place of the file would block the start for ever.
bool isUsable(const QString &name)
{
    const QFileInfo info(name);
    return !info.exists() || info.isFile();
}

QString firstLine(QFile &file)
{
    QTextStream stream(&file);
    return stream.readLine(LongestLine);
}

} // namespace

QString lastDatabase()
{
    if (!isUsable(LastDatabaseFile)) {
        return QString();
    }
    QFile file(LastDatabaseFile);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Text) &&
        !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return QString();
    }
    return firstLine(file);
}

void setLastDatabase(const QString &path)
{
    if (!isUsable(LastDatabaseFile)) {
        return;
    }
    // Beside it first: half a path, or none, would let the next start find nothing.
    QSaveFile file(LastDatabaseFile);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return;
    }
    QTextStream stream(&file);
    stream << path;
    stream.flush();
    // The file itself does not know of what the stream could not write.
    if (stream.status() == QTextStream::Ok) {
        file.commit();
    }
}

bool isLocked()
{
    if (!isUsable(LockFile)) {
        return false;
    }
    QFile file(LockFile);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) && firstLine(file).contains(LockMark);
}

bool takeLock()
{
    if (isLocked()) {
        return false;
    }
    QFile file(LockFile);
    if (isUsable(LockFile) &&
        file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        QTextStream(&file) << LockMark;
    }
    return true;
}

void releaseLock()
{
    QFile::remove(LockFile);
}

} // namespace WorkingFiles
