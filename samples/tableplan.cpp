// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which tables the sample collection has.
#include "samples/tableplan.h"

#include "model/formats.h"
#include "model/markers.h"

namespace
{

const QString Authors = QStringLiteral("autori");
const QString Members = QStringLiteral("soci");
// A reference shows the label of the field that it refers to.
const QString AuthorName = QStringLiteral("Autore");
const QString MemberName = QStringLiteral("Socio");

ColumnDefinition column(const QString &flag, QLatin1String format, const QString &label)
{
    return {flag + format + QLatin1Char('_') + label, QStringLiteral("text")};
}

ColumnDefinition required(const QString &label)
{
    return column(Markers::RequiredFlag, Formats::String, label);
}

ColumnDefinition optional(QLatin1String format, const QString &label)
{
    return column(QStringLiteral("N"), format, label);
}

ColumnDefinition reference(const QString &table, const ColumnDefinition &field)
{
    return {Markers::ReferencePrefix + table + Markers::Reference + field.first,
            QStringLiteral("Integer")};
}

/// The folder of a record's attachments; the designer gives this column no type.
ColumnDefinition userPath()
{
    return {Markers::UserPathColumn, QString()};
}

ColumnDefinitions bookColumns()
{
    return {
        required(QStringLiteral("Titolo")),
        reference(Authors, required(AuthorName)),
        optional(Formats::Integer, QStringLiteral("Anno")),
        optional(Formats::String, QStringLiteral("Genere")),
        optional(Formats::Integer, QStringLiteral("Pagine")),
        optional(Formats::Money, QStringLiteral("Prezzo")),
        optional(Formats::Bool, QStringLiteral("Letto")),
        optional(Formats::Date, QStringLiteral("Comprato_il")),
        optional(Formats::Real, QStringLiteral("Valutazione")),
        optional(Formats::Url, QStringLiteral("Pagina_web")),
        optional(Formats::Mail, QStringLiteral("Posta_editore")),
        userPath(),
        optional(Formats::Image, QStringLiteral("Copertina")),
        optional(Formats::Pdf, QStringLiteral("Scheda")),
        optional(Formats::SubTable, TablePlans::LoansLabel),
    };
}

ColumnDefinitions authorColumns()
{
    return {
        required(AuthorName),
        optional(Formats::Date, QStringLiteral("Nato_il")),
        optional(Formats::String, QStringLiteral("Paese")),
        optional(Formats::Url, QStringLiteral("Pagina_web")),
        optional(Formats::Link, TablePlans::Books),
        userPath(),
    };
}

ColumnDefinitions memberColumns()
{
    return {
        required(MemberName),
        optional(Formats::Mail, QStringLiteral("Posta")),
        optional(Formats::String, QStringLiteral("Telefono")),
        optional(Formats::Date, QStringLiteral("Iscritto_il")),
        optional(Formats::Bool, QStringLiteral("Quota_pagata")),
        optional(Formats::Money, QStringLiteral("Quota")),
        userPath(),
    };
}

ColumnDefinitions noteColumns()
{
    return {
        required(QStringLiteral("Titolo")),
        optional(Formats::Date, QStringLiteral("Scritta_il")),
        optional(Formats::String, QStringLiteral("Testo")),
        userPath(),
    };
}

} // namespace

namespace TablePlans
{

const QString Books = QStringLiteral("libri");
const QString LoansLabel = QStringLiteral("Prestiti");

QVector<TablePlan> tables()
{
    // The books come first, because the first table is the one that opens at the start.
    return {
        {Books, Books, bookColumns()},
        {Authors, Authors, authorColumns()},
        {Members, Members, memberColumns()},
        {Markers::HiddenTable + QStringLiteral("Note"), QStringLiteral("note"), noteColumns()},
    };
}

ColumnDefinitions loanColumns()
{
    return {
        userPath(),
        reference(Members, required(MemberName)),
        optional(Formats::Date, QStringLiteral("Dal")),
        optional(Formats::Date, QStringLiteral("Al")),
        optional(Formats::Bool, QStringLiteral("Restituito")),
    };
}

QString heading(const QString &column)
{
    return Columns::isReference(column) ? Columns::reference(column).table : Columns::label(column);
}

} // namespace TablePlans
