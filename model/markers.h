// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Every marker and reserved word that table and column names may carry.
#pragma once

#include "model/latin1.h"

namespace Markers
{

constexpr QLatin1String HiddenTable = Latin1::text("HIDDENTABLE_");
constexpr QLatin1String SubTable = Latin1::text("_XSBTX_");
constexpr QLatin1String SubTableUser = Latin1::text("_XSBTUSRX_");
constexpr QLatin1String SubTableConfig = Latin1::text("_XSBCONFX_");
constexpr QLatin1String SavedFilter = Latin1::text("_XFLTRX_");
constexpr QLatin1String Reference = Latin1::text("_XDTX_");
constexpr QLatin1String Duplicate = Latin1::text("_XMLTYX_");
constexpr QLatin1String ReferencePrefix = Latin1::text("X");
constexpr QLatin1String RequiredFlag = Latin1::text("R");
constexpr QLatin1String OptionalFlag = Latin1::text("N");

/// Ends every format keyword.
constexpr QLatin1String Format = Latin1::text("FORMAT");
/// Stands between a column's format and its label.
constexpr QLatin1String FormatEnd = Latin1::text("FORMAT_");

/// Deliberate: a column is written as a whole number or as a real one when its name holds one of
/// these words anywhere, in the label too. The first is looked for first.
constexpr QLatin1String IntegerWord = Latin1::text("INTEGER");
constexpr QLatin1String RealWord = Latin1::text("REAL");

/// How a hidden table's prefix and a sub-table's parts read to a person.
constexpr QLatin1String ShownHidden = Latin1::text("#");
constexpr QLatin1String ShownArrow = Latin1::text("->");

/// First column of every table, its integer primary key.
constexpr QLatin1String IdColumn = Latin1::text("RINTEGERFORMAT_Id");
/// Column that holds the folder of a record's attachments.
constexpr QLatin1String UserPathColumn = Latin1::text("NLONGSTRINGFORMAT_UserPath");

constexpr QLatin1String SettingsTable = Latin1::text("settings");
constexpr QLatin1String FiltersTable = Latin1::text("filters");
constexpr QLatin1String SubTablesConfigsTable = Latin1::text("subtablesconfigs");

/// Folders beside the database file: attachments of records, icons of tables.
constexpr QLatin1String AttachmentsFolder = Latin1::text("TABLES_DOC");
constexpr QLatin1String IconsFolder = Latin1::text("DB_DATA");
/// Folders beside the database file, with their final "/": the program's own exchange files,
/// texts for people to read.
constexpr QLatin1String ExportsFolder = Latin1::text("ExportManagerFiles/");
constexpr QLatin1String ReadableFolder = Latin1::text("Exports/");

} // namespace Markers
