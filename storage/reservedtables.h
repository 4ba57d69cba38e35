// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The columns of the program's own tables.
#pragma once

#include "model/columns.h"
#include "model/latin1.h"

#include <QLatin1String>

namespace ReservedTables
{

namespace Settings
{
constexpr QLatin1String TableName = Latin1::text("RSTRINGFORMAT_tableName");
constexpr QLatin1String IconPath = Latin1::text("RSTRINGFORMAT_iconPath");
} // namespace Settings

namespace Filters
{
constexpr QLatin1String Name = Latin1::text("RSTRINGFORMAT_filterName");
constexpr QLatin1String TableName = Latin1::text("NSTRINGFORMAT_filterTableName");
constexpr QLatin1String FieldName = Latin1::text("NSTRINGFORMAT_filterFieldName");
constexpr QLatin1String FieldValue = Latin1::text("NSTRINGFORMAT_filterFieldValue");
constexpr QLatin1String FieldType = Latin1::text("NSTRINGFORMAT_filterFieldType");
constexpr QLatin1String Condition = Latin1::text("NSTRINGFORMAT_filterFieldCondition");
constexpr QLatin1String AndOr = Latin1::text("NSTRINGFORMAT_filterFieldConditionAndOr");
} // namespace Filters

namespace SubTablesConfigs
{
constexpr QLatin1String Name = Latin1::text("RSTRINGFORMAT_subConfigName");
constexpr QLatin1String FieldName = Latin1::text("NSTRINGFORMAT_subConfigFieldName");
constexpr QLatin1String FieldType = Latin1::text("NSTRINGFORMAT_subConfigFieldType");
} // namespace SubTablesConfigs

/// Columns of "settings" (one icon per table), without the Id.
ColumnDefinitions settingsColumns();
/// Columns of "filters" (one row per condition of a saved filter), without the Id.
ColumnDefinitions filtersColumns();
/// Columns of "subtablesconfigs" (one row per column of a sub-table), without the Id.
ColumnDefinitions subTablesConfigsColumns();

} // namespace ReservedTables
