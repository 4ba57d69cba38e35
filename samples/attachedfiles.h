// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The files that stand beside the sample database.
#pragma once

#include <QString>

class SampleData;

namespace AttachedFiles
{

/// Makes the covers, the sheets and the icons below `folder`, where the records look for them.
/// Returns what went wrong, for people; empty when all went well.
QString make(const QString &folder, const SampleData &data);

} // namespace AttachedFiles
