// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Makes the sample collection in a folder.
#include "samples/SampleCollection.h"

#include "model/markers.h"
#include "samples/attachedfiles.h"
#include "samples/databasefilling.h"
#include "samples/placing.h"
#include "samples/sampledata.h"
#include "storage/DataBase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>

/// The linker leaves a static library's resources out unless somebody asks for them; Qt wants
/// the request outside any namespace.
static void takeInBuiltInData()
{
    Q_INIT_RESOURCE(data);
}

SampleCollection::SampleCollection(const QString &source)
    : source(source)
{
    if (source.isEmpty()) {
        takeInBuiltInData();
        this->source = QStringLiteral(":/samples");
    }
}

QString SampleCollection::databasePath(const QString &folder)
{
    return QDir(folder).absoluteFilePath(QStringLiteral("biblioteca.db"));
}

SampleCollection::Outcome SampleCollection::makeIn(const QString &folder)
{
    const QFileInfo database(databasePath(folder));
    if (database.exists() || database.isSymLink()) {
        return Outcome::AlreadyThere;
    }
    complaint.clear();
    if (!QDir().mkpath(folder)) {
        complain(QStringLiteral("Impossibile creare la cartella %1").arg(folder));
        return Outcome::Failed;
    }
    // Inside the folder, because only a move on the same disk is done at once.
    const QTemporaryDir workshop(
        QDir(folder).absoluteFilePath(QStringLiteral(".biblioteca-XXXXXX")));
    if (!workshop.isValid()) {
        complain(QStringLiteral("Impossibile scrivere in %1").arg(folder));
        return Outcome::Failed;
    }
    const bool made =
        build(workshop.path()) && place(workshop.path(), folder) && rememberDatabase(folder);
    return made ? Outcome::Made : Outcome::Failed;
}

bool SampleCollection::build(const QString &folder)
{
    SampleData data(source);
    if (!data.read()) {
        return complain(data.problem());
    }
    const QString problem = AttachedFiles::make(folder, data);
    if (!problem.isEmpty()) {
        return complain(problem);
    }
    DataBase database;
    if (!database.openDatabase(databasePath(folder))) {
        return complain(QStringLiteral("Impossibile creare il database"));
    }
    DatabaseFilling filling(database, data);
    return filling.fill() || complain(filling.problem());
}

bool SampleCollection::place(const QString &from, const QString &folder)
{
    for (const QString &name :
         {QString(Markers::AttachmentsFolder), QString(Markers::IconsFolder)}) {
        const QString target = QDir(folder).absoluteFilePath(name);
        if (!QDir().mkpath(target) ||
            !Placing::moveContents(QDir(from).absoluteFilePath(name), target)) {
            return complain(QStringLiteral("Impossibile scrivere in %1").arg(target));
        }
    }
    // The database last: where it stands, everything that it names stands too.
    return QFile::rename(databasePath(from), databasePath(folder)) ||
           complain(QStringLiteral("Impossibile scrivere %1").arg(databasePath(folder)));
}

bool SampleCollection::rememberDatabase(const QString &folder)
{
    QFile file(QDir(folder).absoluteFilePath(QStringLiteral("lastDb.dat")));
    if (file.exists() && file.size() > 0) {
        return true;
    }
    // The program reads the path in the system's own encoding.
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream stream(&file);
        stream << databasePath(folder);
        stream.flush();
        if (stream.status() == QTextStream::Ok && file.flush()) {
            return true;
        }
    }
    return complain(QStringLiteral("Impossibile scrivere %1").arg(file.fileName()));
}

bool SampleCollection::complain(const QString &text)
{
    complaint = text;
    return false;
}
