// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What a disk may hold after the power was cut while files were written.
#include "tests/faults/tools/powercut.h"

#include <QFileInfo>

#include <sys/stat.h>

using FaultIo::Event;

namespace
{

constexpr qint64 Sector = 512; // bytes

bool isKept(PowerCut::Keeps keeps, QRandomGenerator &random)
{
    switch (keeps) {
    case PowerCut::Keeps::Nothing:
        return false;
    case PowerCut::Keeps::Everything:
        return true;
    case PowerCut::Keeps::Some:
        break;
    }
    return random.bounded(2) == 1;
}

/// How many of so many changes that happen in their order have happened.
int happened(int count, PowerCut::Keeps keeps, QRandomGenerator &random)
{
    switch (keeps) {
    case PowerCut::Keeps::Nothing:
        return 0;
    case PowerCut::Keeps::Everything:
        return count;
    case PowerCut::Keeps::Some:
        break;
    }
    return random.bounded(count + 1);
}

void setLength(QByteArray &bytes, qint64 length)
{
    const int before = bytes.size();
    bytes.resize(int(length));
    if (length > before) {
        std::fill(bytes.begin() + before, bytes.end(), '\0');
    }
}

} // namespace

PowerCut::PowerCut(const Workspace &here, const Scenarios::Files &files)
    : folder(here.path() + QLatin1Char('/'))
{
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (file.key().endsWith(QLatin1Char('/'))) {
            durableFolders.append(file.key());
            continue;
        }
        struct stat state {
        };
        lstat(here.path(file.key()).toUtf8().constData(), &state);
        numbers.insert(state.st_ino, contents.size());
        durableNames.insert(file.key(), contents.size());
        contents.append(File{*file, {}});
    }
}

/// The file of this number. One that the log has not made was there, unnoticed, before.
int PowerCut::fileOf(ino_t number)
{
    if (!numbers.contains(number)) {
        numbers.insert(number, contents.size());
        contents.append(File());
    }
    return numbers.value(number);
}

QString PowerCut::relative(const std::string &path) const
{
    const QString whole = QString::fromStdString(path);
    return whole.startsWith(folder) ? whole.mid(folder.size()) : whole;
}

void PowerCut::apply(const NameChange &change, Names &names, QStringList &folders)
{
    switch (change.kind) {
    case Event::Kind::Make:
    case Event::Kind::Link:
        names.insert(change.name, change.file);
        break;
    case Event::Kind::Rename:
        names.remove(change.other);
        names.insert(change.name, change.file);
        break;
    case Event::Kind::Unlink:
        names.remove(change.name);
        break;
    case Event::Kind::MakeFolder:
        folders.append(change.name + QLatin1Char('/'));
        break;
    case Event::Kind::Write:
    case Event::Kind::Truncate:
    case Event::Kind::Sync:
    case Event::Kind::SyncFolder:
        break;
    }
}

void PowerCut::add(const Event &event)
{
    switch (event.kind) {
    case Event::Kind::Make:
        // The number may be that of a file that is gone.
        numbers.insert(event.file, contents.size());
        contents.append(File());
        if (!event.path.empty()) {
            laterNames.append(
                NameChange{event.kind, contents.size() - 1, relative(event.path), {}});
        }
        break;
    case Event::Kind::Write:
        contents[fileOf(event.file)].later.append(
            Change{false, event.place, QByteArray::fromStdString(event.bytes)});
        break;
    case Event::Kind::Truncate:
        contents[fileOf(event.file)].later.append(Change{true, event.place, {}});
        break;
    case Event::Kind::Sync: {
        QRandomGenerator unused;
        File &file = contents[fileOf(event.file)];
        file = File{cut(file, Keeps::Everything, unused), {}};
        break;
    }
    case Event::Kind::SyncFolder:
        for (const NameChange &change : qAsConst(laterNames)) {
            apply(change, durableNames, durableFolders);
        }
        laterNames.clear();
        break;
    case Event::Kind::Unlink:
        laterNames.append(NameChange{event.kind, -1, relative(event.path), {}});
        break;
    case Event::Kind::Rename:
    case Event::Kind::Link:
        laterNames.append(NameChange{event.kind, fileOf(event.file), relative(event.other),
                                     relative(event.path)});
        break;
    case Event::Kind::MakeFolder:
        laterNames.append(NameChange{event.kind, -1, relative(event.path), {}});
        break;
    }
}

QByteArray PowerCut::cut(const File &file, Keeps keeps, QRandomGenerator &random)
{
    QByteArray bytes = file.durable;
    const int lengths = happened(file.later.size(), keeps, random);
    for (int i = 0; i < file.later.size(); ++i) {
        const Change &change = file.later.at(i);
        if (change.isLength) {
            if (i < lengths) {
                setLength(bytes, change.place);
            }
            continue;
        }
        const qint64 end = change.place + change.bytes.size();
        if (i < lengths && end > bytes.size()) {
            setLength(bytes, end);
        }
        const qint64 reach = qMin<qint64>(end, bytes.size());
        for (qint64 place = change.place; place < reach;) {
            const qint64 next = qMin(reach, (place / Sector + 1) * Sector);
            if (isKept(keeps, random)) {
                bytes.replace(int(place), int(next - place),
                              change.bytes.mid(int(place - change.place), int(next - place)));
            }
            place = next;
        }
    }
    return bytes;
}

Scenarios::Files PowerCut::image(Keeps keeps, QRandomGenerator &random) const
{
    Names names = durableNames;
    QStringList folders = durableFolders;
    const int kept = happened(laterNames.size(), keeps, random);
    for (int i = 0; i < kept; ++i) {
        apply(laterNames.at(i), names, folders);
    }
    Scenarios::Files files;
    for (const QString &name : qAsConst(folders)) {
        files.insert(name, QByteArray());
    }
    for (auto name = names.begin(); name != names.end(); ++name) {
        files.insert(name.key(), cut(contents.at(*name), keeps, random));
    }
    return files;
}
