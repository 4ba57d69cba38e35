// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A text file that is written whole or not at all.
#include "exchange/wholefile.h"

#include <QFileInfo>

WholeFile::WholeFile(const QString &fileName)
    : file(fileName)
{
    const QFileInfo target(fileName);
    // A device or a pipe would be replaced by a file.
    const bool fits = !target.exists() || target.isFile();
    if (!fileName.isEmpty() && fits && file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        text.setDevice(&file);
    }
}

bool WholeFile::commit()
{
    text.flush();
    // The file itself does not know of what the stream could not write.
    return text.status() == QTextStream::Ok && file.commit();
}
