// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The least work that an operation can do: the same result by a bare program.
#include "bench/floors.h"

#include "bench/collection.h"

#include <QCollator>
#include <QCoreApplication>
#include <QSqlField>
#include <QSqlRecord>
#include <QVBoxLayout>
#include <QVariant>

#include <algorithm>
#include <numeric>

namespace
{

const QString Connection = QStringLiteral("floor");

QStringList sorted(const QStringList &lines)
{
    const QCollator collator;
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(lines.size()));
    for (const QString &line : lines) {
        keys.push_back(collator.sortKey(line));
    }
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&keys](int a, int b) { return keys[size_t(a)].compare(keys[size_t(b)]) < 0; });
    QStringList result;
    result.reserve(lines.size());
    for (const int row : order) {
        result.append(lines.at(row));
    }
    return result;
}

} // namespace

BareWindow::BareWindow(const QString &databasePath)
    : BareWindow(databasePath, &ownList, new QVBoxLayout)
{
    list->resize(280, 600);
    list->show();
    auto *const content = new QWidget;
    content->setLayout(layout);
    ownPage.setWidget(content);
    ownPage.setWidgetResizable(true);
    ownPage.resize(680, 600);
    ownPage.show();
}

BareWindow::BareWindow(const QString &databasePath, QListWidget *list, QVBoxLayout *layout)
    : database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection))
    , list(list)
    , layout(layout)
{
    database.setDatabaseName(databasePath);
    database.open();
    list->setUniformItemSizes(true);
}

BareWindow::~BareWindow()
{
    database.close();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(Connection);
}

void BareWindow::readAll()
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT * FROM ") + Collection::table());
    const int columns = query.record().count();
    qint64 characters = 0;
    while (query.next()) {
        for (int column = 0; column < columns; ++column) {
            characters += query.value(column).toString().size();
        }
    }
    if (characters == 0) {
        qFatal("nothing was read");
    }
}

void BareWindow::loadList()
{
    lines.clear();
    map.clear();
    list->clear();
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT RINTEGERFORMAT_Id,RSTRINGFORMAT_Titolo FROM ") +
               Collection::table());
    while (query.next()) {
        const QString line = query.value(1).toString();
        map.insert(line, query.value(0).toInt());
        lines.append(line);
    }
    showLines();
}

int BareWindow::loadFilteredList()
{
    lines.clear();
    map.clear();
    list->clear();
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT RINTEGERFORMAT_Id,RSTRINGFORMAT_Titolo,"
                              "NDATEFORMAT_Acquistato,NINTEGERFORMAT_Anno,NSTRINGFORMAT_Luogo "
                              "FROM ") +
               Collection::table());
    const QString place = QStringLiteral("Scaffale 1");
    while (query.next()) {
        const bool early = query.value(2).toString().midRef(6).toInt() < 2013;
        if ((early && query.value(3).toString().toInt() > 1950) ||
            query.value(4).toString().contains(place)) {
            const QString line = query.value(1).toString();
            map.insert(line, query.value(0).toInt());
            lines.append(line);
        }
    }
    showLines();
    return firstRecord();
}

int BareWindow::firstRecord() const
{
    return map.value(lines.value(0));
}

void BareWindow::showLines()
{
    lines = sorted(lines);
    list->addItems(lines);
    QCoreApplication::processEvents();
}

void BareWindow::showRecord(int id)
{
    forms.clear();
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT * FROM %1 WHERE RINTEGERFORMAT_Id = %2")
                   .arg(Collection::table())
                   .arg(id));
    query.next();
    const QSqlRecord record = query.record();
    for (int column = 0; column < record.count(); ++column) {
        if (query.value(column).toString().isEmpty()) {
            continue;
        }
        const QString name = record.fieldName(column);
        forms.push_back(std::make_unique<outputDataForm>());
        outputDataForm *const form = forms.back().get();
        form->setTitle(true, name.section(QStringLiteral("FORMAT_"), 1, 1));
        form->setValue(name.mid(1).section(QStringLiteral("FORMAT_"), 0, 0), query.value(column));
        layout->addWidget(form);
        form->show();
    }
    QCoreApplication::processEvents();
}

double BareWindow::sumColumns()
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(
        QStringLiteral("SELECT NINTEGERFORMAT_Anno,NREALFORMAT_Peso,NMONEYFORMAT_Prezzo FROM ") +
        Collection::table());
    double sum = 0.0;
    while (query.next()) {
        for (int column = 0; column < 3; ++column) {
            sum += query.value(column).toDouble();
        }
    }
    return sum;
}

int BareWindow::search(const QString &text) const
{
    return int(std::count_if(lines.begin(), lines.end(), [&text](const QString &line) {
        return line.contains(text, Qt::CaseInsensitive);
    }));
}
