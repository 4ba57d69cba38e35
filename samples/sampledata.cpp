// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Everything that the sample collection is made from.
#include "samples/sampledata.h"

#include "model/values.h"
#include "samples/covers.h"
#include "samples/sheets.h"
#include "samples/tableplan.h"

namespace
{

const QString Title = QStringLiteral("Titolo");
const QString Author = QStringLiteral("autori");

/// What a sheet tells about a book, in its order; a fact that the book lacks is left out.
QVector<QPair<QString, QString>> factsOf(const TabFile &books, int book, const TabFile &authors)
{
    const int author = authors.find(QStringLiteral("Autore"), books.value(book, Author));
    const QVector<QPair<QString, QString>> all = {
        {QStringLiteral("Anno"), books.value(book, QStringLiteral("Anno"))},
        {QStringLiteral("Genere"), books.value(book, QStringLiteral("Genere"))},
        {QStringLiteral("Pagine"), books.value(book, QStringLiteral("Pagine"))},
        {QStringLiteral("Prezzo"), Values::moneyText(books.value(book, QStringLiteral("Prezzo")))},
        {QStringLiteral("Autore nato"),
         author < 0 ? QString() : authors.value(author, QStringLiteral("Nato_il"))},
        {QStringLiteral("Paese"),
         author < 0 ? QString() : authors.value(author, QStringLiteral("Paese"))},
    };
    QVector<QPair<QString, QString>> known;
    for (const auto &fact : all) {
        if (!fact.second.isEmpty()) {
            known.append(fact);
        }
    }
    return known;
}

} // namespace

namespace SampleFiles
{
const QString Loans = QStringLiteral("prestiti");
const QString Filters = QStringLiteral("filtri");
const QString Covers = QStringLiteral("copertine");
const QString Sheets = QStringLiteral("schede");
} // namespace SampleFiles

SampleData::SampleData(const QString &folder)
    : source(folder)
{
}

bool SampleData::read()
{
    QStringList names = {SampleFiles::Loans, SampleFiles::Filters, SampleFiles::Covers,
                         SampleFiles::Sheets};
    for (const TablePlan &plan : TablePlans::tables()) {
        names.append(plan.source);
    }
    for (const QString &name : qAsConst(names)) {
        TabFile &file = files[name];
        if (!file.read(QStringLiteral("%1/data/%2.tsv").arg(source, name))) {
            complaint = file.problem();
            return false;
        }
    }
    return true;
}

QString SampleData::iconPath(const QString &name) const
{
    return QStringLiteral("%1/icons/%2.png").arg(source, name);
}

Cover SampleData::cover(int row) const
{
    const TabFile covers = file(SampleFiles::Covers);
    const TabFile books = file(TablePlans::Books);
    const auto color = [&covers, row](const QString &column) {
        return QColor(covers.value(row, column));
    };
    const QString title = covers.value(row, Title);
    return {title,
            books.value(books.find(Title, title), Author),
            covers.value(row, QStringLiteral("Motivo")),
            {color(QStringLiteral("Sfondo")), color(QStringLiteral("Tinta")),
             color(QStringLiteral("Accento"))},
            color(QStringLiteral("Testo"))};
}

Sheet SampleData::sheet(int row) const
{
    const TabFile sheets = file(SampleFiles::Sheets);
    const TabFile books = file(TablePlans::Books);
    const QString title = sheets.value(row, Title);
    const int book = books.find(Title, title);
    const int coverRow = file(SampleFiles::Covers).find(Title, title);
    return {title, books.value(book, Author), factsOf(books, book, file(Author)),
            sheets.value(row, QStringLiteral("Testo")), coverRow < 0 ? Cover() : cover(coverRow)};
}
