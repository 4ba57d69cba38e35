// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people read when a record cannot be written.
#pragma once

#include <QString>

/// The same words whether SQLite refuses a statement or what it depends on could not be read;
/// `reason` is the driver's text or our own.
namespace RecordMessages
{

/// The record could not be added.
QString insertFailed(const QString &table, const QString &reason);

/// A field of the record could not be written.
QString updateFailed(const QString &reason);

/// The record could not be removed.
QString deleteFailed(const QString &reason);

} // namespace RecordMessages
