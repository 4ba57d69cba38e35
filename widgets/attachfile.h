// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Files that are attached to a record: copied into its folder, never over another file.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

class QMimeData;

/// `base` is the database's folder with its final "/", `folder` the record's folder relative to
/// it. Nothing here shows a message: a copy that failed shows as a missing file in its field.
namespace AttachFile
{

/// True when `path` is a regular file. Folders are no attachments, and reading a FIFO or a
/// device might wait for ever.
bool isRegularFile(const QString &path);

/// Makes the record's folder (its last level only) and copies the file `source` there under its
/// own name; a file that is there already stays and is used. The result is the path to store,
/// also when there is nothing to copy or the copying fails. Empty, and nothing is written, when
/// the path would leave the database's folder or name a program.
QString copyIn(const QString &base, const QString &folder, const QString &source);

/// Copies the file `source` to `target`, whole or not at all: when it has its name, all of it is on
/// the disk. False, and nothing is written, when a file of that name is there already; also when
/// the copying fails.
bool copyWhole(const QString &source, const QString &target);

/// Saves `picture` as a PNG file under a name that is free in the record's folder, which it
/// makes when missing. The result is the path to store; empty when nothing could be saved.
QString savePicture(const QString &base, const QString &folder, const QImage &picture);

/// The suffixes of the pictures that can be attached, in lower case.
QStringList pictureSuffixes();

/// The first local file among the addresses of `data` whose name ends in one of `suffixes` (lower
/// case, without the point); empty when there is none.
QString fileIn(const QMimeData *data, const QStringList &suffixes);

} // namespace AttachFile
