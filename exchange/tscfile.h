// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Table structure files: a table's icon and columns as text.
#pragma once

#include "model/columns.h"

#include <QString>
#include <QStringList>

#include <functional>

class QTextStream;

/// The first line is the path of the table's icon, relative to the database's folder, or empty.
/// Each further line is a column: its name, "###", its SQL type.
namespace TscFile
{

/// Called with the number of lines done and their total.
using Step = std::function<void(int done, int total)>;

/// What a structure file says.
struct Structure {
    QString iconPath;
    ColumnDefinitions columns;
};

/// Writes a structure. Of `columns` the Id is left out, because every table has it; the type
/// is always "text". `step` is called after each line of a column, with the number of those
/// before it and the number of all columns.
void write(QTextStream &stream, const QString &iconPath, const QStringList &columns,
           const Step &step);

/// Reads a structure; no line is skipped, a blank one is a column without a name. `step` is
/// called before each line of a column, with the number of those before it and the number of
/// all lines. False for a file that cannot be a structure: one with a line much longer, or with
/// more lines, than a table can take.
bool read(QTextStream &stream, Structure *structure, const Step &step);

} // namespace TscFile
