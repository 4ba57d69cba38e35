// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: starting the program.
#include "bench/answers.h"
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"
#include "ui_Tavenor.h"

#include <QDir>
#include <QFile>

namespace
{

// A working directory in which the program remembers a database, or none.
class WorkingDirectory
{
public:
    explicit WorkingDirectory(const QString &databasePath = QString())
        : before(QDir::currentPath())
    {
        QDir::setCurrent(directory.path());
        if (!databasePath.isEmpty()) {
            QFile remembered(QStringLiteral("lastDb.dat"));
            remembered.open(QIODevice::WriteOnly);
            remembered.write(databasePath.toUtf8());
        }
    }
    ~WorkingDirectory() { QDir::setCurrent(before); }

private:
    QTemporaryDir directory;
    QString before;
};

// The program's form with nothing behind it.
struct BareForm {
    BareForm() { form.setupUi(&window); }

    QMainWindow window;
    Ui::Tavenor form;
};

void startEmptyFloor(benchmark::State &state)
{
    for (auto _ : state) {
        std::unique_ptr<BareForm> bare;
        state.SetIterationTime(Answers::seconds([&bare] {
            bare = std::make_unique<BareForm>();
            bare->window.show();
        }));
    }
}

void startFloor(benchmark::State &state)
{
    const QString path = Collection::path(int(state.range(0)));
    for (auto _ : state) {
        std::unique_ptr<BareForm> bare;
        std::unique_ptr<BareWindow> content;
        state.SetIterationTime(Answers::seconds([&] {
            bare = std::make_unique<BareForm>();
            content = std::make_unique<BareWindow>(path, bare->form.userListWidget,
                                                   bare->form.datiLayout);
            bare->window.show();
            content->loadList();
            content->showRecord(content->firstRecord());
        }));
        content.reset();
    }
}

void startProgram(benchmark::State &state)
{
    for (auto _ : state) {
        std::unique_ptr<Tavenor> window;
        state.SetIterationTime(Answers::seconds([&window] {
            window = std::make_unique<Tavenor>();
            window->show();
        }));
    }
}

void startEmpty(benchmark::State &state)
{
    const WorkingDirectory here;
    startProgram(state);
}

void start(benchmark::State &state)
{
    const WorkingDirectory here(Collection::path(int(state.range(0))));
    // The first start makes the program's own tables.
    Tavenor().show();
    startProgram(state);
}

void sizes(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    row->UseManualTime();
}

void noSize(benchmark::internal::Benchmark *row)
{
    row->Arg(0)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(0.4);
}

BENCHMARK(startEmptyFloor)->Name("start, no database|floor")->Apply(noSize);
BENCHMARK(startEmpty)->Name("start, no database")->Apply(noSize);
BENCHMARK(startFloor)->Name("start|floor")->Apply(sizes);
BENCHMARK(start)->Name("start")->Apply(sizes);

} // namespace
