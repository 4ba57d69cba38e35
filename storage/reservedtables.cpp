// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The columns of the program's own tables.
#include "storage/reservedtables.h"

#include "model/names.h"

#include <initializer_list>

namespace
{

ColumnDefinitions textColumns(std::initializer_list<QLatin1String> names)
{
    ColumnDefinitions columns;
    columns.reserve(static_cast<int>(names.size()));
    for (const QLatin1String &name : names) {
        columns.append({name, Names::sqlColumnType(Names::formatKeyword(name))});
    }
    return columns;
}

} // namespace

namespace ReservedTables
{

ColumnDefinitions settingsColumns()
{
    return textColumns({Settings::TableName, Settings::IconPath});
}

ColumnDefinitions filtersColumns()
{
    return textColumns({Filters::Name, Filters::TableName, Filters::FieldName, Filters::FieldValue,
                        Filters::FieldType, Filters::Condition, Filters::AndOr});
}

ColumnDefinitions subTablesConfigsColumns()
{
    return textColumns(
        {SubTablesConfigs::Name, SubTablesConfigs::FieldName, SubTablesConfigs::FieldType});
}

} // namespace ReservedTables
