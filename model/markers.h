// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Every marker and reserved word that table and column names may carry.
#pragma once

#include <QLatin1String>

namespace Markers
{

constexpr QLatin1String HiddenTable("HIDDENTABLE_");
constexpr QLatin1String SubTable("_XSBTX_");
constexpr QLatin1String SubTableUser("_XSBTUSRX_");
constexpr QLatin1String SubTableConfig("_XSBCONFX_");
constexpr QLatin1String SavedFilter("_XFLTRX_");
constexpr QLatin1String Reference("_XDTX_");
constexpr QLatin1String Duplicate("_XMLTYX_");
constexpr QLatin1String ReferencePrefix("X");
constexpr QLatin1String RequiredFlag("R");

/// Ends every format keyword.
constexpr QLatin1String Format("FORMAT");
/// Stands between a column's format and its label.
constexpr QLatin1String FormatEnd("FORMAT_");

/// How a hidden table's prefix and a sub-table's parts read to a person.
constexpr QLatin1String ShownHidden("#");
constexpr QLatin1String ShownArrow("->");

/// First column of every table, its integer primary key.
constexpr QLatin1String IdColumn("RINTEGERFORMAT_Id");
/// Column that holds the folder of a record's attachments.
constexpr QLatin1String UserPathColumn("NLONGSTRINGFORMAT_UserPath");

constexpr QLatin1String SettingsTable("settings");
constexpr QLatin1String FiltersTable("filters");
constexpr QLatin1String SubTablesConfigsTable("subtablesconfigs");

/// Folders beside the database file: attachments of records, icons of tables.
constexpr QLatin1String AttachmentsFolder("TABLES_DOC");
constexpr QLatin1String IconsFolder("DB_DATA");

} // namespace Markers
