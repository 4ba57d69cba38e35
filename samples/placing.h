// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Moves finished files into place without replacing anything.
#pragma once

#include <QString>

namespace Placing
{

/// Moves everything in the folder `from` into the folder `to`, which is on the same disk. A
/// folder that is there already takes the contents of its namesake; a file that is there
/// already stays as it is. False when something could not be moved.
bool moveContents(const QString &from, const QString &to);

} // namespace Placing
