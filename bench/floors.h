// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The least work that an operation can do: the same result by a bare program.
#pragma once

#include "widgets/outputDataForm.h"

#include <QListWidget>
#include <QMap>
#include <QScrollArea>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include <memory>
#include <vector>

class QVBoxLayout;

/// A bare window over a database: no checks, no messages, no signals. What it does is what the
/// program cannot avoid doing.
class BareWindow
{
public:
    explicit BareWindow(const QString &databasePath);
    /// The same in widgets of somebody else.
    BareWindow(const QString &databasePath, QListWidget *list, QVBoxLayout *layout);
    ~BareWindow();

    /// One forward pass over every value of the table.
    void readAll();
    /// One forward pass over Id and title; the list filled, sorted, mapped and painted.
    void loadList();
    /// The same over the rows that pass three conditions (bought before 2013, and later than
    /// 1950, or in one of eleven places), which are compared on the way; gives the Id of the
    /// first line.
    int loadFilteredList();
    /// One record read by its Id, its fields built, placed and painted.
    void showRecord(int id);
    /// The Id of the first line.
    int firstRecord() const;
    /// One forward pass over the numeric columns of the table; the sum of all their values.
    double sumColumns();
    /// The rows whose line contains `text`, in plain strings.
    int search(const QString &text) const;

private:
    void showLines();

    QSqlDatabase database;
    QListWidget ownList;
    QScrollArea ownPage;
    QListWidget *list = nullptr;
    QVBoxLayout *layout = nullptr;
    QStringList lines;
    QMap<QString, int> map;
    std::vector<std::unique_ptr<outputDataForm>> forms;
};
