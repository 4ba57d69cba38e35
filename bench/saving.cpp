// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: saving and deleting a record.
#include "bench/answers.h"
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"
#include "bench/writing.h"
#include "storage/DataBase.h"
#include "widgets/inputDataForm.h"

#include <QCoreApplication>

namespace
{

FieldPairs fieldsOf(int number)
{
    const auto text = [number](const char *start) {
        return QString::fromUtf8(start) + QString::number(number);
    };
    return {{QStringLiteral("RSTRINGFORMAT_Titolo"), text("Nuovo ")},
            {QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Nome"), QStringLiteral("7")},
            {QStringLiteral("NDATEFORMAT_Acquistato"), QStringLiteral("01/02/2020")},
            {QStringLiteral("NINTEGERFORMAT_Anno"), QStringLiteral("1950")},
            {QStringLiteral("NREALFORMAT_Peso"), QStringLiteral("1.500000")},
            {QStringLiteral("NMONEYFORMAT_Prezzo"), QStringLiteral("12.50")},
            {QStringLiteral("NLONGSTRINGFORMAT_UserPath"), text("TABLES_DOC/oggetti_Nuovo_")},
            {QStringLiteral("NIMAGEFORMAT_Foto"), QString()},
            {QStringLiteral("NPDFFORMAT_Scheda"), QString()},
            {QStringLiteral("NBOOLFORMAT_Esposto"), QStringLiteral("TRUE")},
            {QStringLiteral("NMAILFORMAT_Posta"), QStringLiteral("negozio@example.org")},
            {QStringLiteral("NURLFORMAT_Pagina"), QStringLiteral("https://example.org/1")},
            {QStringLiteral("NSTRINGFORMAT_Luogo"), QStringLiteral("Scaffale 1")},
            {QStringLiteral("NSTRINGFORMAT_Stato"), QStringLiteral("buono")},
            {QStringLiteral("NLONGSTRINGFORMAT_Note"), text("Una nota sul numero ")}};
}

QStringList insertion(int number)
{
    QStringList names;
    QStringList values;
    for (const FieldPair &pair : fieldsOf(number)) {
        names.append(pair.first);
        values.append(QLatin1Char('\'') + pair.second + QLatin1Char('\''));
    }
    return {
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
            .arg(Collection::table(), names.join(QLatin1Char(',')), values.join(QLatin1Char(',')))};
}

QStringList removal(int id)
{
    return {QStringLiteral("DELETE FROM %1 WHERE RINTEGERFORMAT_Id = %2")
                .arg(Collection::table())
                .arg(id)};
}

void writeFloor(benchmark::State &state)
{
    BareWriter writer(writableCopy(int(state.range(0))));
    int number = 0;
    for (auto _ : state) {
        writer.run(insertion(++number));
    }
}

void write(benchmark::State &state)
{
    DataBase database;
    database.openDatabase(writableCopy(int(state.range(0))));
    int number = 0;
    for (auto _ : state) {
        if (database.insertWhole(Collection::table(), false, 0, fieldsOf(++number)) < 1) {
            qFatal("not saved");
        }
    }
}

void saveFloor(benchmark::State &state)
{
    const int records = int(state.range(0));
    const QString path = writableCopy(records);
    BareWindow bare(path);
    BareWriter writer(path);
    int number = 0;
    for (auto _ : state) {
        state.SetIterationTime(Answers::seconds([&] {
            writer.run(insertion(++number));
            bare.loadList();
            bare.showRecord(records + number);
        }));
    }
}

inputDataForm *editorOfTitle(const OpenWindow &window)
{
    for (inputDataForm *const form : window->findChildren<inputDataForm *>()) {
        if (form->columnName() == QStringLiteral("RSTRINGFORMAT_Titolo") && !form->isHidden()) {
            return form;
        }
    }
    qFatal("no editor");
}

void save(benchmark::State &state)
{
    const OpenWindow window(writableCopy(int(state.range(0))), Collection::table());
    int number = 0;
    for (auto _ : state) {
        window->changeToNewUserPage();
        QCoreApplication::processEvents();
        editorOfTitle(window)->setValue(QStringLiteral("STRING"),
                                        QStringLiteral("Nuovo %1").arg(++number));
        state.SetIterationTime(Answers::seconds([&window] { window->newRecord(); }));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void removeFloor(benchmark::State &state)
{
    const QString path = writableCopy(int(state.range(0)));
    BareWindow bare(path);
    BareWriter writer(path);
    bare.loadList();
    for (auto _ : state) {
        state.SetIterationTime(Answers::seconds([&] {
            writer.run(removal(bare.firstRecord()));
            bare.loadList();
            bare.showRecord(bare.firstRecord());
        }));
    }
}

void removeRecord(benchmark::State &state)
{
    const OpenWindow window(writableCopy(int(state.range(0))), Collection::table());
    for (auto _ : state) {
        state.SetIterationTime(Answers::secondsAfterYes([&window] { window->deleteUser(); }));
    }
}

void sizes(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    row->UseManualTime();
}

BENCHMARK(writeFloor)->Name("save, the write|floor")->Apply(OpenWindow::sizes);
BENCHMARK(write)->Name("save, the write")->Apply(OpenWindow::sizes);
BENCHMARK(saveFloor)->Name("save, until shown again|floor")->Apply(sizes);
BENCHMARK(save)->Name("save, until shown again")->Apply(sizes);
BENCHMARK(removeFloor)->Name("delete, until shown again|floor")->Apply(sizes);
BENCHMARK(removeRecord)->Name("delete, until shown again")->Apply(sizes);

} // namespace
