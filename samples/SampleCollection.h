// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Makes the sample collection in a folder.
#pragma once

#include <QString>

/// A small library of books, authors, members and loans on which people can try the program.
class SampleCollection
{
public:
    enum class Outcome {
        Made,         ///< the collection is complete
        AlreadyThere, ///< the folder has a database of this name; nothing was touched
        Failed        ///< problem() says why
    };

    /// Makes the collection from the folders "data" and "icons" in `source`; from those built
    /// into the program when it is empty.
    explicit SampleCollection(const QString &source = QString());

    /// The database's path in `folder`.
    static QString databasePath(const QString &folder);

    /// Makes the collection in `folder`, which is made when missing. The database appears last
    /// and at once, so a run that was interrupted leaves none. A program started in the folder
    /// opens it, unless the folder remembers another database already. It uses the default
    /// database connection, and needs a QApplication.
    Outcome makeIn(const QString &folder);

    /// What went wrong in makeIn(), for people.
    QString problem() const { return complaint; }

private:
    bool build(const QString &folder);
    bool place(const QString &from, const QString &folder);
    bool rememberDatabase(const QString &folder);
    bool complain(const QString &text);

    QString source;
    QString complaint;
};
