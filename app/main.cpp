// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Starts the program.
#include "app/Tavenor.h"
#include "app/unixsignals.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace
{

// Standard buttons and file dialogs speak Italian where the system does.
void loadToolkitTexts(QTranslator &translator)
{
    const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    if (QLocale::system().language() == QLocale::Italian &&
        translator.load(QStringLiteral("qtbase_it"), folder)) {
        QCoreApplication::installTranslator(&translator);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tavenor"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/listIcon")));
    QTranslator toolkitTexts;
    loadToolkitTexts(toolkitTexts);

    const UnixSignals signalsOfTheSystem;
    Tavenor window;
    window.show();
    if (signalsOfTheSystem.endRequested()) {
        return 0;
    }
    return QApplication::exec();
}
