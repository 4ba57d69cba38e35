// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What a record must hold before it may be saved.
#pragma once

#include "model/columns.h"

namespace RecordFields
{

/// The place of the last required field (a name beginning with "R") whose value is empty; -1
/// when every required field is filled.
int lastEmptyRequired(const FieldPairs &pairs);

/// A required column as the refused save names it: the text after the first "_", its first
/// duplicate marker cut out.
QString requiredFieldName(const QString &column);

} // namespace RecordFields
