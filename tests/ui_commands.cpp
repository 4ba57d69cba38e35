// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Menu actions, the two modes, the second door, the shared dialogs.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/AboutForm.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace
{

const QString Books = QStringLiteral("books.db");

const QStringList BooksTables = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_UserPath)"),
    QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nota text)"),
    QStringLiteral("INSERT INTO libri VALUES (7,'Zeno','TABLES_DOC/libri_Zeno')"),
};

// Object name, text and tool tip of every action, in the order of the form.
struct Expected {
    const char *name;
    const char *text;
    const char *toolTip;
};
const Expected Actions[] = {
    {"actionTable", "Crea Tabella", "Crea Nuova Tabella"},
    {"actionAdd_Field", "Aggiungi Campo", "Aggiungi un campo alla tabella selezionata"},
    {"actionRemove_Table", "Elimina Tabella", "Elimina la tabella selezionata"},
    {"actionTool", "About", nullptr},
    {"actionTech_Mod", "Modo Avanzato", nullptr},
    {"actionDelete_All_Database", "Elimina Tutte Le Tabelle",
     "Elimina tutte le tabelle dal database"},
    {"actionExport", "Esporta su file (Export Manager File)", nullptr},
    {"actionExport_To_File", "Esporta su file (Tabella leggibile)", nullptr},
    {"actionAutoExportAll", "Esporta Tutto (Export Manager File)",
     "Esporta tutte le tabelle (Export Manager File)"},
    {"actionClear_Selected_List", "Pulisci La Tabella Selezionata",
     "Pulisci la tabella selezionata"},
    {"actionImport_From_File_Export_Manager_File", "Importa da File (Export Manager File)",
     nullptr},
    {"actionNew_Db", "Nuovo Db", nullptr},
    {"actionOpen_Db", "Apri Db", nullptr},
    {"actionShow_Hidden_Tables", "Mostra Tabelle Nascoste", "Mostra le tabella nascoste"},
    {"actionImport_Table_Structure", "Importa Strutture", "Importa strutture di tabelle"},
    {"actionAdministrator_Mode", "Modo Amministratore", nullptr},
    {"actionChange_Table_Icon", "Cambia Icona Tabella", "Cambia l'icona della tabella"},
    {"actionExit", "Chiudi", "Chiudi il programma"},
    {"actionDeleteFilter", "Elimina filtro", "Elimina il filtro attivo"},
    {"actionClear_All_Tables", "Pulisci Database", "Cancella tutti i dati del database"},
    {"actionExport_Selected_Record_To_File", "Esporta Record su file (Export Manager File)",
     "Esporta il Record Selezionato su file (Export Manager File)"},
    {"actionExport_All_Tables_Structures", "Esporta Strutture",
     "Esporta tutte le Strutture Tabella"},
    {"actionExport_Selected_Tables_Structure", "Esporta Struttura Tabella",
     "Esporta la Struttura Tabella selezionata"},
    {"actionExport_Selected_Record_To_File_txt", "Esporta Record su file (Formato Leggibile)",
     "Esporta il Record Selezionato su file (Formato Leggibile)"},
};

const QStringList SecondDoor = {QStringLiteral("Crea Tabella"), QStringLiteral("Aggiungi Campo"),
                                QStringLiteral("Modo Avanzato"),
                                QStringLiteral("Esporta Strutture"),
                                QStringLiteral("Esporta Struttura Tabella")};

// The entries that a person sees in the menu.
QStringList visibleTexts(const Tavenor &window, const char *menu)
{
    QStringList texts;
    for (const QAction *const action : Window::get<QMenu>(window, menu)->actions()) {
        if (action->isVisible() && !action->isSeparator()) {
            texts.append(action->text());
        }
    }
    return texts;
}

QAction *menuEntry(const Tavenor &window, const char *menu, const QString &text)
{
    for (QAction *const action : Window::get<QMenu>(window, menu)->actions()) {
        if (action->isVisible() && action->text() == text) {
            return action;
        }
    }
    return nullptr;
}

} // namespace

class Commands : public QObject
{
    Q_OBJECT

private slots:
    void actionsAreDeclaredInOrder();
    void everyActionHasItsPlace();
    void checkableActions();
    void administratorModeShowsCommands();
    void administratorModeTwice();
    void secondDoorFollowsAdministratorMode();
    void secondDoorWithoutDatabase();
    void secondDoorWhenReadOnly();
    void advancedModeAsks();
    void advancedModeThroughSecondDoor();
    void advancedModeShowsOwnFields();
    void aboutBox();
    void exitCloses();
    void closingHidesParentlessDialogs();
};

void Commands::actionsAreDeclaredInOrder()
{
    const Workspace here;
    const Tavenor window;
    QStringList declared;
    for (const QAction *const action : window.findChildren<QAction *>()) {
        if (action->objectName().startsWith(QStringLiteral("action"))) {
            declared.append(action->objectName());
        }
    }
    QStringList expected;
    for (const Expected &row : Actions) {
        expected.append(QString::fromUtf8(row.name));
        const QAction *const action = Window::action(window, row.name);
        QCOMPARE(action->text(), QString::fromUtf8(row.text));
        if (row.toolTip != nullptr) {
            QCOMPARE(action->toolTip(), QString::fromUtf8(row.toolTip));
        }
    }
    QCOMPARE(declared, expected);
}

void Commands::everyActionHasItsPlace()
{
    const Workspace here;
    const Tavenor window;
    const QList<QAction *> menus = Window::get<QMenuBar>(window, "menuBar")->actions();
    QCOMPARE(menus.size(), 2);
    QCOMPARE(menus.at(0)->text(), QStringLiteral("File"));
    QCOMPARE(menus.at(1)->text(), QStringLiteral("Opzioni"));
    const QList<QAction *> placed = menus.at(0)->menu()->actions() + menus.at(1)->menu()->actions();
    for (const Expected &row : Actions) {
        QVERIFY2(placed.contains(Window::action(window, row.name)), row.name);
    }
    QVERIFY(Window::get<QToolBar>(window, "mainToolBar")
                ->actions()
                .contains(Window::action(window, "actionOpen_Db")));
}

void Commands::checkableActions()
{
    const Workspace here;
    const Tavenor window;
    for (const Expected &row : Actions) {
        const QAction *const action = Window::action(window, row.name);
        const bool isSwitch = action->objectName() == QStringLiteral("actionTech_Mod") ||
                              action->objectName() == QStringLiteral("actionAdministrator_Mode") ||
                              action->objectName() == QStringLiteral("actionShow_Hidden_Tables");
        QCOMPARE(action->isCheckable(), isSwitch);
        QVERIFY(!action->isChecked());
    }
}

void Commands::administratorModeShowsCommands()
{
    const Workspace here;
    const Tavenor window;
    const QStringList shownByMode = {
        QStringLiteral("actionNew_Db"), QStringLiteral("actionRemove_Table"),
        QStringLiteral("actionDelete_All_Database"), QStringLiteral("actionShow_Hidden_Tables"),
        QStringLiteral("actionDeleteFilter")};
    const QStringList alwaysHidden = {
        QStringLiteral("actionAdd_Field"), QStringLiteral("actionExport_All_Tables_Structures"),
        QStringLiteral("actionExport_Selected_Tables_Structure"), QStringLiteral("actionTable"),
        QStringLiteral("actionTech_Mod")};
    for (const bool on : {false, true, false}) {
        if (Window::action(window, "actionAdministrator_Mode")->isChecked() != on) {
            Window::action(window, "actionAdministrator_Mode")->trigger();
        }
        for (const QString &name : shownByMode) {
            QCOMPARE(Window::action(window, name.toUtf8().constData())->isVisible(), on);
        }
        for (const QString &name : alwaysHidden) {
            QVERIFY(!Window::action(window, name.toUtf8().constData())->isVisible());
        }
        QVERIFY(Window::action(window, "actionChange_Table_Icon")->isVisible());
    }
}

void Commands::administratorModeTwice()
{
    const Workspace here;
    Tavenor window;
    // Whoever shows these two finds them untouched by switching on, hidden by switching off.
    Window::action(window, "actionTable")->setVisible(true);
    Window::action(window, "actionTech_Mod")->setVisible(true);
    window.administratorModeEnabled(true);
    QVERIFY(Window::action(window, "actionTable")->isVisible());
    QVERIFY(Window::action(window, "actionTech_Mod")->isVisible());
    window.administratorModeEnabled(false);
    QVERIFY(!Window::action(window, "actionTable")->isVisible());
    QVERIFY(!Window::action(window, "actionTech_Mod")->isVisible());
}

void Commands::secondDoorFollowsAdministratorMode()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    const Tavenor window;
    for (const QString &text : SecondDoor) {
        QVERIFY2(!visibleTexts(window, "menuOptions").contains(text), qPrintable(text));
    }
    Window::action(window, "actionAdministrator_Mode")->trigger();
    for (const QString &text : SecondDoor) {
        QCOMPARE(visibleTexts(window, "menuOptions").count(text), 1);
    }
    QCOMPARE(menuEntry(window, "menuOptions", QStringLiteral("Crea Tabella"))->toolTip(),
             QStringLiteral("Crea Nuova Tabella"));
    QCOMPARE(menuEntry(window, "menuOptions", QStringLiteral("Crea Tabella"))->shortcut(),
             QKeySequence(QStringLiteral("Ctrl+T")));
    QCOMPARE(menuEntry(window, "menuOptions", QStringLiteral("Aggiungi Campo"))->shortcut(),
             QKeySequence(QStringLiteral("Ctrl+Shift+T")));
    Window::action(window, "actionAdministrator_Mode")->trigger();
    QVERIFY(!visibleTexts(window, "menuOptions").contains(SecondDoor.first()));
}

void Commands::secondDoorWithoutDatabase()
{
    const Workspace here;
    Tavenor window;
    window.administratorModeEnabled(true);
    for (const QString &text : SecondDoor) {
        QVERIFY(!menuEntry(window, "menuOptions", text)->isEnabled());
    }
}

void Commands::secondDoorWhenReadOnly()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    Tavenor window;
    window.administratorModeEnabled(true);
    for (const QString &text : SecondDoor) {
        QVERIFY(!menuEntry(window, "menuOptions", text)->isEnabled());
    }
}

void Commands::advancedModeAsks()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    const Tavenor window;
    QAction *const mode = Window::action(window, "actionTech_Mod");
    ModalResponder responder;

    responder.answer(QMessageBox::No);
    mode->trigger();
    QVERIFY(!mode->isChecked());
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});

    responder.pressEscape();
    mode->trigger();
    QVERIFY(!mode->isChecked());

    responder.answer(QMessageBox::Yes);
    mode->trigger();
    QVERIFY(mode->isChecked());
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("settings"),
                          QStringLiteral("filters"), QStringLiteral("subtablesconfigs")}));

    // Switching off asks nothing.
    mode->trigger();
    QVERIFY(!mode->isChecked());
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});

    const QString question = QStringLiteral("Nel Modo Avanzato è possibile danneggiare il "
                                            "Database. Abilitare il Modo Avanzato?");
    QCOMPARE(responder.takeTexts(), (QStringList{question, question, question}));
    const ModalResponder::Box box = responder.boxes().first();
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::No | QMessageBox::Yes);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

void Commands::advancedModeThroughSecondDoor()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    Tavenor window;
    window.administratorModeEnabled(true);
    QAction *const entry = menuEntry(window, "menuOptions", QStringLiteral("Modo Avanzato"));
    QVERIFY(entry->isEnabled());
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    entry->trigger();
    QVERIFY(!entry->isChecked());
    responder.answer(QMessageBox::Yes);
    entry->trigger();
    QVERIFY(entry->isChecked());
    QVERIFY(Window::action(window, "actionTech_Mod")->isChecked());
    QVERIFY(Window::tables(window).contains(QStringLiteral("settings")));
    entry->trigger();
    QVERIFY(!entry->isChecked());
    QVERIFY(!Window::tables(window).contains(QStringLiteral("settings")));
}

void Commands::advancedModeShowsOwnFields()
{
    const Workspace here;
    here.sql(Books, BooksTables);
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Titolo")});
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionTech_Mod")->trigger();
    QCOMPARE(Window::labels(window), (QStringList{QStringLiteral("Id"), QStringLiteral("Titolo"),
                                                  QStringLiteral("UserPath")}));
    QCOMPARE(Window::shownText(window, QStringLiteral("Id")), QStringLiteral("7"));
    Window::action(window, "actionTech_Mod")->trigger();
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Titolo")});
}

void Commands::aboutBox()
{
    const Workspace here;
    const Tavenor window;
    auto *const box = window.findChild<AboutForm *>();
    QVERIFY(box != nullptr);
    QVERIFY(!box->isVisible());
    Window::action(window, "actionTool")->trigger();
    QVERIFY(box->isVisible());
    QVERIFY(box->isModal());
    QCOMPARE(Window::get<QLabel>(*box, "lbTitol")->text(),
             QStringLiteral("DB Administration Tool"));
    QCOMPARE(Window::get<QLabel>(*box, "lbVersion")->text(), QStringLiteral("4.4.5"));
    QVERIFY(!Window::get<QLabel>(*box, "lbAutor")->text().isEmpty());
    Window::click(*box, "pbClose");
    QVERIFY(!box->isVisible());
}

void Commands::exitCloses()
{
    const Workspace here;
    Tavenor window;
    window.show();
    Window::action(window, "actionExit")->trigger();
    QVERIFY(!window.isVisible());
}

void Commands::closingHidesParentlessDialogs()
{
    const Workspace here;
    Tavenor window;
    window.show();
    for (QWidget *const dialog : QApplication::topLevelWidgets()) {
        const QString name = dialog->objectName();
        if (name == QStringLiteral("progressBarForm") || name == QStringLiteral("chooseNameForm")) {
            dialog->show();
        }
    }
    window.close();
    for (const QWidget *const dialog : QApplication::topLevelWidgets()) {
        QVERIFY2(!dialog->isVisible(), qPrintable(dialog->objectName()));
    }
}

QTEST_MAIN(Commands)
#include "ui_commands.moc"
