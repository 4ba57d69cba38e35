// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured: what the program keeps in memory, in a process of its own.
#pragma once

#include <QStringList>

namespace Memory
{

/// The first argument of a process that is to measure; the others are measure()'s.
constexpr const char *Option = "--measure-memory";

/// Runs an operation in this process and prints how many bytes it has left behind, and how many
/// it needed while it ran. The arguments: the operation, a database and a file to read or write.
void measure(const QStringList &arguments);

} // namespace Memory
