// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program that puts the sample collection into a folder.
#include "samples/SampleCollection.h"
#include "samples/unattendedboxes.h"

#include <QApplication>
#include <QTextStream>

namespace
{

constexpr int Failure = 1;
constexpr int WrongUse = 2;

/// Drawing needs Qt's windowing, but no screen.
void doWithoutScreen()
{
    const bool chosen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    const bool hasScreen =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!chosen && !hasScreen) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

void say(FILE *stream, const QString &text)
{
    QTextStream(stream) << text << '\n';
}

} // namespace

int main(int argc, char *argv[])
{
    doWithoutScreen();
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2 || arguments.at(1).startsWith(QLatin1Char('-'))) {
        say(stderr, QStringLiteral("Uso: tavenor-sample CARTELLA"));
        return WrongUse;
    }
    const UnattendedBoxes boxes([](const QString &text) { say(stderr, text); });
    const QString &folder = arguments.at(1);
    SampleCollection collection;
    switch (collection.makeIn(folder)) {
    case SampleCollection::Outcome::Made:
        say(stdout, QStringLiteral("Creata la collezione di esempio: %1")
                        .arg(SampleCollection::databasePath(folder)));
        return 0;
    case SampleCollection::Outcome::AlreadyThere:
        say(stdout, QStringLiteral("%1 esiste già: non è stato toccato nulla.")
                        .arg(SampleCollection::databasePath(folder)));
        return 0;
    case SampleCollection::Outcome::Failed:
        break;
    }
    say(stderr, QStringLiteral("ERRORE: %1").arg(collection.problem()));
    return Failure;
}
