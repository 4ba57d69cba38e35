// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured: how long a person may wait for the window to be painted during an operation.
#include "bench/bareexchange.h"
#include "bench/collection.h"
#include "bench/openwindow.h"
#include "widgets/chooseNameForm.h"
#include "widgets/inputDataForm.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace
{

/// Takes the time between two passes of the event loop, which paint whatever has changed.
class Heartbeat
{
public:
    Heartbeat()
        : connection(QObject::connect(QAbstractEventDispatcher::instance(),
                                      &QAbstractEventDispatcher::awake, [this] { beat(); }))
    {
        restart();
    }
    ~Heartbeat() { QObject::disconnect(connection); }
    Heartbeat(const Heartbeat &) = delete;
    Heartbeat &operator=(const Heartbeat &) = delete;

    /// Forgets what was before: the time of a dialog is a person's own.
    void restart()
    {
        longest = 0;
        clock.start();
    }
    /// The longest time in seconds, the last painting included.
    double finish()
    {
        QCoreApplication::processEvents();
        beat();
        return double(longest) / 1e9;
    }

private:
    void beat()
    {
        longest = qMax(longest, clock.nsecsElapsed());
        clock.start();
    }

    const QMetaObject::Connection connection;
    QElapsedTimer clock;
    qint64 longest = 0;
};

constexpr int Records = 100000;

using Command = void (*)(const OpenWindow &window, Heartbeat &heart);

// The question that the next command asks is answered with Yes.
void confirmNext(Heartbeat &heart)
{
    QTimer::singleShot(0, qApp, [&heart] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        box->button(QMessageBox::Yes)->click();
        heart.restart();
    });
}

void chooseFile(const QString &fileName, Heartbeat &heart)
{
    OpenWindow::chooseFile(fileName, [&heart] { heart.restart(); });
}

QString outputFile()
{
    return Collection::path(1000) + QStringLiteral(".out");
}

void enterTitle(const OpenWindow &window)
{
    for (inputDataForm *const form : window->findChildren<inputDataForm *>()) {
        if (form->columnName() == QStringLiteral("RSTRINGFORMAT_Titolo")) {
            form->findChild<QLineEdit *>(QStringLiteral("leData"))
                ->setText(QStringLiteral("Zecchino"));
        }
    }
}

void changeTable(const OpenWindow &window, Heartbeat &heart)
{
    window->changeTable(QStringLiteral("autori"));
    heart.restart();
    window->changeTable(Collection::table());
}

void sort(const OpenWindow &window, Heartbeat &)
{
    window.get<QPushButton>("pbSort")->click();
}

void search(const OpenWindow &window, Heartbeat &)
{
    window.get<QLineEdit>("userSearchEdit")->setText(Collection::searchText());
}

void filter(const OpenWindow &window, Heartbeat &heart)
{
    window->changeToFilterPage();
    for (inputDataForm *const form : window->findChildren<inputDataForm *>()) {
        if (form->columnName() == QStringLiteral("NINTEGERFORMAT_Anno")) {
            form->setSetting({form->columnName(), Filters::comparedFormat(form->columnName()),
                              QStringLiteral("1910"), Filters::Comparison::Major, true, true,
                              false});
        }
    }
    heart.restart();
    window->enableFilters();
}

void calculate(const OpenWindow &window, Heartbeat &)
{
    window->changeToCalcPage();
}

void exportTable(const OpenWindow &window, Heartbeat &heart)
{
    chooseFile(outputFile(), heart);
    window->exportToFile();
}

void exportReadable(const OpenWindow &window, Heartbeat &heart)
{
    chooseFile(outputFile(), heart);
    window->exportToFileHumanReading();
}

void import(const OpenWindow &window, Heartbeat &heart)
{
    confirmNext(heart);
    window->clearTable();
    window->changeTable(QStringLiteral("autori"));
    chooseFile(ExchangeFiles::exported(Records), heart);
    window->importFromFile();
}

void importStructure(const OpenWindow &window, Heartbeat &heart)
{
    chooseFile(ExchangeFiles::structure(), heart);
    window->importTableStructure();
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        if (auto *const prompt = qobject_cast<chooseNameForm *>(widget)) {
            prompt->setName(QStringLiteral("nuova"));
            heart.restart();
            prompt->accept();
        }
    }
}

void saveNew(const OpenWindow &window, Heartbeat &heart)
{
    window->changeToNewUserPage();
    enterTitle(window);
    heart.restart();
    window->newRecord();
}

void saveChange(const OpenWindow &window, Heartbeat &heart)
{
    window->updateUser();
    enterTitle(window);
    heart.restart();
    window->newRecord();
}

void openEntry(const OpenWindow &window, Heartbeat &)
{
    window->updateUser();
}

void deleteRecord(const OpenWindow &window, Heartbeat &heart)
{
    confirmNext(heart);
    window->deleteUser();
}

void clearTable(const OpenWindow &window, Heartbeat &heart)
{
    confirmNext(heart);
    window->clearTable();
}

void removeTable(const OpenWindow &window, Heartbeat &heart)
{
    confirmNext(heart);
    window->removeTable();
}

void start(benchmark::State &state)
{
    for (auto _ : state) {
        const QString database = ExchangeFiles::copy(Records);
        Heartbeat heart;
        const OpenWindow window(database, Collection::table());
        state.SetIterationTime(heart.finish());
    }
}

void gapOf(benchmark::State &state, Command command)
{
    for (auto _ : state) {
        const OpenWindow window(ExchangeFiles::copy(Records), Collection::table());
        QCoreApplication::processEvents();
        Heartbeat heart;
        command(window, heart);
        state.SetIterationTime(heart.finish());
    }
}

struct Measured {
    const char *name;
    Command command;
};

const Measured Commands[] = {
    {"change table", changeTable},
    {"sort", sort},
    {"search", search},
    {"filter on", filter},
    {"calculator", calculate},
    {"table export", exportTable},
    {"readable export", exportReadable},
    {"import", import},
    {"structure import", importStructure},
    {"save a new record", saveNew},
    {"open a record to change", openEntry},
    {"save a changed record", saveChange},
    {"delete a record", deleteRecord},
    {"clear a table", clearTable},
    {"remove a table", removeTable},
};

void settings(benchmark::internal::Benchmark *row)
{
    row->Arg(Records)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
}

// All rows, in the order in which the table shows them.
bool registerAll()
{
    const std::string prefix = "longest gap: ";
    settings(benchmark::RegisterBenchmark((prefix + "start").c_str(), start));
    for (const Measured &measured : Commands) {
        settings(benchmark::RegisterBenchmark((prefix + measured.name).c_str(), gapOf,
                                              measured.command));
    }
    return true;
}

const bool registered = registerAll();

} // namespace
