// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: making, clearing and removing tables, saving filters.
#include "bench/answers.h"
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"
#include "bench/writing.h"
#include "model/filters.h"
#include "widgets/inputDataForm.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTextStream>
#include <QTimer>

namespace
{

constexpr int Columns = 40;
constexpr int Conditions = 15;

QStringList columnNames()
{
    QStringList names;
    for (int i = 0; i < Columns; ++i) {
        names.append(QStringLiteral("NSTRINGFORMAT_Campo_%1").arg(i));
    }
    return names;
}

QString structureFile(int records)
{
    const QString name = Collection::path(records) + QStringLiteral(".tsc");
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    stream << '\n';
    for (const QString &column : columnNames()) {
        stream << column << "###text\n";
    }
    return name;
}

// A floor of a command that ends with the list of the first table and its first record.
template<typename Statements>
void floorOf(benchmark::State &state, const Statements &statements, bool showsRecords)
{
    int number = 0;
    const QString path = writableCopy(int(state.range(0)));
    BareWindow bare(path);
    BareWriter writer(path);
    for (auto _ : state) {
        const QStringList all = statements(++number);
        state.SetIterationTime(Answers::seconds([&] {
            writer.run(all);
            if (showsRecords) {
                bare.loadList();
                bare.showRecord(bare.firstRecord());
            }
        }));
    }
}

void importFloor(benchmark::State &state)
{
    const QString columns = columnNames().join(QStringLiteral(" text,"));
    floorOf(
        state,
        [&columns](int number) {
            return QStringList{
                QStringLiteral("CREATE TABLE nuova%1 (RINTEGERFORMAT_Id integer primary key,"
                               "%2 text)")
                    .arg(number)
                    .arg(columns),
                QStringLiteral("INSERT INTO settings (RSTRINGFORMAT_tableName,"
                               "RSTRINGFORMAT_iconPath) VALUES ('nuova%1','')")
                    .arg(number)};
        },
        true);
}

void chooseFile(const QString &fileName)
{
    QTimer::singleShot(0, [fileName] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(fileName);
        QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
    });
}

void importStructure(benchmark::State &state)
{
    const int records = int(state.range(0));
    const QString file = structureFile(records);
    const OpenWindow window(writableCopy(records), Collection::table());
    int number = 0;
    for (auto _ : state) {
        chooseFile(file);
        window->importTableStructure();
        state.SetIterationTime(Answers::secondsAfterName(QStringLiteral("nuova%1").arg(++number)));
    }
}

void saveFilterFloor(benchmark::State &state)
{
    floorOf(
        state,
        [](int number) {
            QStringList rows;
            for (int i = 0; i < Conditions; ++i) {
                rows.append(QStringLiteral("INSERT INTO filters VALUES (NULL,'f%1_%2','oggetti',"
                                           "'NSTRINGFORMAT_Luogo','Scaffale','STRING',"
                                           "'Equal','And')")
                                .arg(number)
                                .arg(i));
            }
            return rows;
        },
        false);
}

void saveFilter(benchmark::State &state)
{
    const OpenWindow window(writableCopy(int(state.range(0))), Collection::table());
    int number = 0;
    window->changeToFilterPage();
    for (inputDataForm *const form : window->findChildren<inputDataForm *>()) {
        if (form->columnName() == QStringLiteral("NSTRINGFORMAT_Luogo")) {
            form->setSetting({form->columnName(), Filters::comparedFormat(form->columnName()),
                              QStringLiteral("Scaffale 1"), Filters::Comparison::Equal, true, true,
                              false});
        }
    }
    for (auto _ : state) {
        window->createNewFilter();
        state.SetIterationTime(Answers::secondsAfterName(QStringLiteral("f%1").arg(++number)));
    }
}

template<typename Statements>
void emptyingFloor(benchmark::State &state, const Statements &statements)
{
    for (auto _ : state) {
        const QString path = writableCopy(int(state.range(0)));
        BareWriter writer(path);
        state.SetIterationTime(Answers::seconds([&] { writer.run(statements()); }));
    }
}

void emptying(benchmark::State &state, void (Tavenor::*command)())
{
    for (auto _ : state) {
        const OpenWindow window(writableCopy(int(state.range(0))), Collection::table());
        state.SetIterationTime(
            Answers::secondsAfterYes([&] { ((*window.operator->()).*command)(); }));
    }
}

void clearFloor(benchmark::State &state)
{
    emptyingFloor(state, [] { return QStringList{QStringLiteral("DELETE FROM oggetti")}; });
}

void clear(benchmark::State &state)
{
    emptying(state, &Tavenor::clearTable);
}

void removeFloor(benchmark::State &state)
{
    emptyingFloor(state, [] {
        return QStringList{
            QStringLiteral("DROP TABLE oggetti"),
            QStringLiteral("DELETE FROM settings WHERE RSTRINGFORMAT_tableName='oggetti'"),
            QStringLiteral("DELETE FROM filters WHERE NSTRINGFORMAT_filterTableName='oggetti'")};
    });
}

void remove(benchmark::State &state)
{
    emptying(state, &Tavenor::removeTable);
}

void sizes(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    row->UseManualTime();
}

void fewTimes(benchmark::internal::Benchmark *row)
{
    row->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
    row->UseManualTime()->Iterations(10);
}

BENCHMARK(importFloor)->Name("structure import|floor")->Apply(sizes);
BENCHMARK(importStructure)->Name("structure import")->Apply(sizes);
BENCHMARK(saveFilterFloor)->Name("saving a filter|floor")->Apply(fewTimes);
BENCHMARK(saveFilter)->Name("saving a filter")->Apply(fewTimes);
BENCHMARK(clearFloor)->Name("clearing a table|floor")->Apply(fewTimes);
BENCHMARK(clear)->Name("clearing a table")->Apply(fewTimes);
BENCHMARK(removeFloor)->Name("removing a table|floor")->Apply(fewTimes);
BENCHMARK(remove)->Name("removing a table")->Apply(fewTimes);

} // namespace
