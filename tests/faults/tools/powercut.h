// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What a disk may hold after the power was cut while files were written.
#pragma once

#include "tests/faults/tools/faultio.h"
#include "tests/faults/tools/scenarios.h"

#include <QHash>
#include <QRandomGenerator>
#include <QVector>

/// Takes the files as they were, all on the disk, and the log of what was done to them since, and
/// rebuilds the files as after a power cut at any place of the log:
///
/// - What a file held when it was last synchronised is kept.
/// - Of each later write, every sector that it touches is kept or lost by itself. Bytes of a
///   sector that a write does not name never change.
/// - Later changes of a file's length happen in their order up to some point; where a file has
///   become longer and its bytes are lost, there are zeros.
/// - Names that were made, changed or removed are kept up to some point, in their order. What was
///   done before a folder was last synchronised is kept.
///
/// This is what file systems with a journal of names and lengths do, and what SQLite expects.
class PowerCut
{
public:
    /// `folder` is the absolute path of the files.
    PowerCut(const Workspace &here, const Scenarios::Files &files);

    /// How much of what was not synchronised is kept.
    enum class Keeps { Nothing, Some, Everything };

    /// Takes the next event of the log.
    void add(const FaultIo::Event &event);

    /// The files as after a cut at this place.
    Scenarios::Files image(Keeps keeps, QRandomGenerator &random) const;

private:
    struct Change {
        bool isLength = false;
        qint64 place = 0; ///< or the length
        QByteArray bytes;
    };
    struct File {
        QByteArray durable;
        QVector<Change> later;
    };
    struct NameChange {
        FaultIo::Event::Kind kind;
        int file;
        QString name;
        QString other;
    };
    using Names = QMap<QString, int>;

    int fileOf(ino_t number);
    QString relative(const std::string &path) const;
    static void apply(const NameChange &change, Names &names, QStringList &folders);
    static QByteArray cut(const File &file, Keeps keeps, QRandomGenerator &random);

    QString folder;
    QVector<File> contents;
    QHash<quint64, int> numbers;
    Names durableNames;
    QStringList durableFolders;
    QVector<NameChange> laterNames;
};
