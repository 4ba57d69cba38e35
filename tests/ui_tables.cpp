// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The table list, hidden tables, table icons, saved-filter buttons.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"

#include <QFile>
#include <QImage>
#include <QPushButton>
#include <QStackedWidget>

#include <sys/stat.h>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Coins = QStringLiteral("coins.db");

const QString Libri = QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                                     "RSTRINGFORMAT_Titolo text)");
const QString Autori = QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                                      "RSTRINGFORMAT_Nome text)");
const QString Note = QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer "
                                    "primary key,RSTRINGFORMAT_Nota text)");
const QString Loans =
    QStringLiteral("CREATE TABLE HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Zeno "
                   "(RINTEGERFORMAT_Id integer primary key,NLONGSTRINGFORMAT_UserPath)");
const QString Settings = QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary "
                                        "key,RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath "
                                        "text)");
const QString FiltersTable =
    QStringLiteral("CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_filterName text,NSTRINGFORMAT_filterTableName text,"
                   "NSTRINGFORMAT_filterFieldName text,NSTRINGFORMAT_filterFieldValue text,"
                   "NSTRINGFORMAT_filterFieldType text,NSTRINGFORMAT_filterFieldCondition text,"
                   "NSTRINGFORMAT_filterFieldConditionAndOr text)");
const QString TwoBooks = QStringLiteral("INSERT INTO libri VALUES (1,'Zeno'),(2,'Atlante')");
const QString SettingsRows = QStringLiteral("SELECT RINTEGERFORMAT_Id||'|'||"
                                            "RSTRINGFORMAT_tableName||'|'||RSTRINGFORMAT_iconPath "
                                            "FROM settings");

// A picture of one colour; returns the file's bytes.
QByteArray makePicture(const Workspace &here, const QString &name, const QColor &colour)
{
    here.write(name, QByteArray());
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(colour);
    if (!picture.save(here.path(name))) {
        qFatal("cannot write a picture");
    }
    return here.read(name);
}

QString iconRow(const QString &table, const QString &path)
{
    return QStringLiteral("INSERT INTO settings (RSTRINGFORMAT_tableName,RSTRINGFORMAT_iconPath) "
                          "VALUES ('%1','%2')")
        .arg(table, path);
}

const ListButtonForm *buttonOf(const Tavenor &window, const QString &shown)
{
    for (const ListButtonForm *const button : Window::buttons(window)) {
        if (Window::get<QLabel>(*button, "lbListName")->text() == shown) {
            return button;
        }
    }
    qFatal("no button %s", qPrintable(shown));
}

QImage iconOf(const Tavenor &window, const QString &shown)
{
    const auto *const button = Window::get<QAbstractButton>(*buttonOf(window, shown), "pbList");
    return button->icon().pixmap(32, 32).toImage();
}

// The colour in the middle of a picture; invalid for an empty one.
QColor colourOf(const QImage &picture)
{
    return picture.isNull() ? QColor() : picture.pixelColor(picture.rect().center());
}

QImage generalIcon(const QSize &size)
{
    return QIcon(QStringLiteral(":generalIcon")).pixmap(size).toImage();
}

void showHidden(Tavenor &window)
{
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
}

void chooseIcon(Tavenor &window)
{
    Window::action(window, "actionChange_Table_Icon")->trigger();
}

} // namespace

class Tables : public QObject
{
    Q_OBJECT

private slots:
    void listHoldsOrdinaryTables();
    void hiddenTablesOnRequest();
    void showingHiddenTablesReadsTheDatabaseAnew();
    void onlyReservedTables();
    void advancedModeListsReservedTables();
    void pressingMakesCurrent();
    void changeEndsOnFirstLine();
    void emptyTableClearsView();
    void markSurvivesRebuild();
    void firstEntryGivesHeadIcon();
    void unlistedFirstEntryLeavesHeadIcon();
    void noTableLoaded();
    void iconDialog();
    void iconRowIsCreatedThenUpdated();
    void sameImageForTwoTables();
    void newIconShowsInTheHead();
    void existingIconIsNotOverwritten();
    void cancelledIconDialog();
    void failedCopyIsRecorded();
    void runnableIconIsNotCopied();
    void tableNameWithApostrophe();
    void iconsFromSettings_data();
    void iconsFromSettings();
    void fifoAsIcon();
    void linkedIconOutside();
    void namesArePlainText();
    void savedFilterButtons();
    void savedFilterButtonsFollowDatabase();
};

void Tables::listHoldsOrdinaryTables()
{
    const Workspace here;
    here.sql(Books, {Note, Libri, Settings, FiltersTable, Autori, Loans,
                     QStringLiteral("CREATE TABLE Settings2 (a,b)")});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::tables(window), (QStringList{QStringLiteral("libri"), QStringLiteral("autori"),
                                                  QStringLiteral("Settings2")}));
}

void Tables::hiddenTablesOnRequest()
{
    const Workspace here;
    here.sql(Books, {Note, Libri, Settings, Autori, Loans});
    here.remember(Books);
    Tavenor window;
    showHidden(window);
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("#note"), QStringLiteral("libri"),
                          QStringLiteral("autori"), QStringLiteral("#libri->Zeno->Prestiti")}));
    QCOMPARE(buttonOf(window, QStringLiteral("#note"))->tableName(),
             QStringLiteral("HIDDENTABLE_note"));
    Window::pressTable(window, QStringLiteral("#libri->Zeno->Prestiti"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("#libri->Zeno->Prestiti"));
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("autori")}));
}

void Tables::showingHiddenTablesReadsTheDatabaseAnew()
{
    const Workspace here;
    here.sql(Books, {Libri, Note});
    here.remember(Books);
    Tavenor window;
    QVERIFY(Sql::run(Autori));
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});
    showHidden(window);
    QCOMPARE(Window::tables(window), (QStringList{QStringLiteral("libri"), QStringLiteral("#note"),
                                                  QStringLiteral("autori")}));
}

void Tables::onlyReservedTables()
{
    const Workspace here;
    here.sql(Books, {Settings, FiltersTable});
    here.remember(Books);
    Tavenor window;
    QVERIFY(Window::tables(window).isEmpty());
    showHidden(window);
    QVERIFY(Window::tables(window).isEmpty());
}

void Tables::advancedModeListsReservedTables()
{
    const Workspace here;
    here.sql(Books, {Settings, Note, Libri, FiltersTable});
    here.remember(Books);
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionTech_Mod")->trigger();
    QCOMPARE(Window::tables(window),
             (QStringList{QStringLiteral("settings"), QStringLiteral("libri"),
                          QStringLiteral("filters"), QStringLiteral("subtablesconfigs")}));
    Window::action(window, "actionTech_Mod")->trigger();
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});
}

void Tables::pressingMakesCurrent()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, Settings, TwoBooks,
                     QStringLiteral("INSERT INTO autori VALUES (5,'Svevo')"),
                     iconRow(QStringLiteral("autori"), QStringLiteral("DB_DATA/blue.png"))});
    makePicture(here, QStringLiteral("DB_DATA/blue.png"), Qt::blue);
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("libri")});

    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("autori")});
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Svevo")});
    QCOMPARE(Window::heading(window), QStringLiteral("Svevo"));
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::get<QStackedWidget>(window, "stPages")->currentIndex(), 2);
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::blue));
    QCOMPARE(Window::tableHeadIcon(window).size(), QSize(100, 50));

    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(Window::tableHeadIcon(window), generalIcon(QSize(100, 50)));
}

void Tables::changeEndsOnFirstLine()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, TwoBooks,
                     QStringLiteral("INSERT INTO autori VALUES (5,'Svevo'),(6,'Calvino')")});
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(Window::heading(window), QStringLiteral("Calvino"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Nome")), QStringLiteral("Calvino"));
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    // The current table again, from another line.
    Window::selectLine(window, 1);
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(Window::heading(window), QStringLiteral("Calvino"));
}

void Tables::emptyTableClearsView()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, TwoBooks});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Titolo")});
    Window::pressTable(window, QStringLiteral("autori"));
    QVERIFY(Window::lines(window).isEmpty());
    QVERIFY(Window::labels(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
}

void Tables::markSurvivesRebuild()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, Note, TwoBooks});
    here.remember(Books);
    Tavenor window;
    Window::pressTable(window, QStringLiteral("autori"));
    showHidden(window);
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("autori")});
    Window::pressTable(window, QStringLiteral("#note"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("#note")});
}

void Tables::firstEntryGivesHeadIcon()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, Settings,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/red.png")),
                     iconRow(QStringLiteral("autori"), QStringLiteral("DB_DATA/blue.png"))});
    makePicture(here, QStringLiteral("DB_DATA/red.png"), Qt::red);
    makePicture(here, QStringLiteral("DB_DATA/blue.png"), Qt::blue);
    here.remember(Books);
    Tavenor window;
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::blue));
    showHidden(window);
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::red));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
}

void Tables::unlistedFirstEntryLeavesHeadIcon()
{
    const Workspace here;
    here.sql(Books, {Settings, Libri, Autori,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/red.png")),
                     iconRow(QStringLiteral("autori"), QStringLiteral("DB_DATA/blue.png"))});
    makePicture(here, QStringLiteral("DB_DATA/red.png"), Qt::red);
    makePicture(here, QStringLiteral("DB_DATA/blue.png"), Qt::blue);
    here.remember(Books);
    Tavenor window;
    Window::pressTable(window, QStringLiteral("autori"));
    showHidden(window);
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::blue));
}

void Tables::noTableLoaded()
{
    const Workspace here;
    Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    chooseIcon(window);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Nessuna Tabella Caricata!")});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QVERIFY(responder.fileDialogs().isEmpty());
    QVERIFY(!here.exists(QStringLiteral("DB_DATA")));
}

void Tables::iconDialog()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori});
    here.remember(Books);
    makePicture(here, QStringLiteral("choice/red.png"), Qt::red);
    Tavenor window;
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/red.png")));
    chooseIcon(window);
    QCOMPARE(responder.fileDialogs().size(), 1);
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Open File"));
    QCOMPARE(dialog.directory, QStringLiteral("/home"));
    QCOMPARE(dialog.nameFilters,
             QStringList{QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp *.tif)")});
    QVERIFY(!dialog.saving);
    QVERIFY(!dialog.several);
}

void Tables::iconRowIsCreatedThenUpdated()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, TwoBooks});
    here.remember(Books);
    const QByteArray red = makePicture(here, QStringLiteral("choice/red.png"), Qt::red);
    makePicture(here, QStringLiteral("choice/blue.png"), Qt::blue);
    Tavenor window;
    Window::selectLine(window, 1);
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/red.png")));
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|libri|DB_DATA/red.png")});
    QCOMPARE(here.read(QStringLiteral("DB_DATA/red.png")), red);
    QCOMPARE(colourOf(iconOf(window, QStringLiteral("libri"))), QColor(Qt::red));
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::red));
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(Window::tables(window).size(), 2);

    responder.chooseFile(here.path(QStringLiteral("choice/blue.png")));
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|libri|DB_DATA/blue.png")});
    QCOMPARE(colourOf(iconOf(window, QStringLiteral("libri"))), QColor(Qt::blue));
    QVERIFY(responder.boxes().isEmpty());
}

void Tables::sameImageForTwoTables()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori});
    here.remember(Books);
    makePicture(here, QStringLiteral("choice/red.png"), Qt::red);
    Tavenor window;
    ModalResponder responder;
    for (const QString &table : {QStringLiteral("libri"), QStringLiteral("autori")}) {
        Window::pressTable(window, table);
        responder.chooseFile(here.path(QStringLiteral("choice/red.png")));
        chooseIcon(window);
    }
    QCOMPARE(here.column(Books, SettingsRows),
             (QStringList{QStringLiteral("1|libri|DB_DATA/red.png"),
                          QStringLiteral("2|autori|DB_DATA/red.png")}));
    QCOMPARE(QDir(here.path(QStringLiteral("DB_DATA"))).entryList(QDir::Files),
             QStringList{QStringLiteral("red.png")});
    // The head shows the current table's icon, not that of the list's first entry.
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::red));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("autori")});
}

void Tables::newIconShowsInTheHead()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, Settings,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/red.png"))});
    makePicture(here, QStringLiteral("DB_DATA/red.png"), Qt::red);
    makePicture(here, QStringLiteral("choice/blue.png"), Qt::blue);
    here.remember(Books);
    Tavenor window;
    Window::pressTable(window, QStringLiteral("autori"));
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/blue.png")));
    chooseIcon(window);
    // The rebuilt list put the icon of its first entry there for a moment.
    QCOMPARE(colourOf(Window::tableHeadIcon(window)), QColor(Qt::blue));
}

void Tables::existingIconIsNotOverwritten()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori});
    here.remember(Books);
    const QByteArray old = makePicture(here, QStringLiteral("DB_DATA/icon.png"), Qt::green);
    makePicture(here, QStringLiteral("choice/icon.png"), Qt::red);
    Tavenor window;
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/icon.png")));
    chooseIcon(window);
    QCOMPARE(here.read(QStringLiteral("DB_DATA/icon.png")), old);
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|libri|DB_DATA/icon.png")});
    QCOMPARE(colourOf(iconOf(window, QStringLiteral("libri"))), QColor(Qt::green));
    QVERIFY(responder.boxes().isEmpty());
}

void Tables::cancelledIconDialog()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori, Settings,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/red.png"))});
    here.remember(Books);
    makePicture(here, QStringLiteral("DB_DATA/red.png"), Qt::red);
    Tavenor window;
    ModalResponder responder;
    responder.cancelFileDialog();
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows), QStringList{QStringLiteral("1|libri|DB_DATA/")});
    QVERIFY(iconOf(window, QStringLiteral("libri")).isNull());
    QVERIFY(Window::tableHeadIcon(window).isNull());

    Window::pressTable(window, QStringLiteral("autori"));
    responder.cancelFileDialog();
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows), (QStringList{QStringLiteral("1|libri|DB_DATA/"),
                                                            QStringLiteral("2|autori|DB_DATA/")}));
    QVERIFY(iconOf(window, QStringLiteral("autori")).isNull());
    QVERIFY(responder.boxes().isEmpty());
}

void Tables::failedCopyIsRecorded()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori});
    here.remember(Books);
    makePicture(here, QStringLiteral("choice/red.png"), Qt::red);
    Tavenor window;
    QVERIFY(QDir(here.path(QStringLiteral("DB_DATA"))).removeRecursively());
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/red.png")));
    chooseIcon(window);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|libri|DB_DATA/red.png")});
    QVERIFY(iconOf(window, QStringLiteral("libri")).isNull());
}

void Tables::runnableIconIsNotCopied()
{
    const Workspace here;
    here.sql(Books, {Libri, Autori});
    here.remember(Books);
    here.write(QStringLiteral("choice/icon.sh"), "#!/bin/sh\n");
    Tavenor window;
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/icon.sh")));
    chooseIcon(window);
    QVERIFY(!here.exists(QStringLiteral("DB_DATA/icon.sh")));
}

void Tables::tableNameWithApostrophe()
{
    const Workspace here;
    here.sql(Books, {Libri, QStringLiteral("CREATE TABLE \"l'arte\" (RINTEGERFORMAT_Id integer "
                                           "primary key,RSTRINGFORMAT_Nome text)")});
    here.remember(Books);
    makePicture(here, QStringLiteral("choice/dell'arte.png"), Qt::red);
    makePicture(here, QStringLiteral("choice/blue.png"), Qt::blue);
    Tavenor window;
    Window::pressTable(window, QStringLiteral("l'arte"));
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("choice/dell'arte.png")));
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|l'arte|DB_DATA/dell'arte.png")});
    QCOMPARE(colourOf(iconOf(window, QStringLiteral("l'arte"))), QColor(Qt::red));
    responder.chooseFile(here.path(QStringLiteral("choice/blue.png")));
    chooseIcon(window);
    QCOMPARE(here.column(Books, SettingsRows),
             QStringList{QStringLiteral("1|l'arte|DB_DATA/blue.png")});
    QCOMPARE(colourOf(iconOf(window, QStringLiteral("l'arte"))), QColor(Qt::blue));
}

void Tables::iconsFromSettings_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("general");
    QTest::newRow("empty path shows the general icon") << QString() << true;
    QTest::newRow("missing file shows nothing") << QStringLiteral("DB_DATA/gone.png") << false;
    QTest::newRow("folder shows nothing") << QStringLiteral("DB_DATA/") << false;
    QTest::newRow("text file shows nothing") << QStringLiteral("DB_DATA/text.png") << false;
    QTest::newRow("file above the folder shows nothing") << QStringLiteral("../out.png") << false;
    QTest::newRow("dots inside the path show nothing")
        << QStringLiteral("DB_DATA/../../out.png") << false;
    QTest::newRow("absolute path shows nothing") << QStringLiteral("ABSOLUTE/out.png") << false;
    QTest::newRow("built-in file shows nothing") << QStringLiteral(":/qt-project.org/styles/"
                                                                   "commonstyle/images/"
                                                                   "file-16.png")
                                                 << false;
}

void Tables::iconsFromSettings()
{
    QFETCH(QString, path);
    QFETCH(bool, general);
    const Workspace here;
    makePicture(here, QStringLiteral("out.png"), Qt::red);
    here.write(QStringLiteral("far/DB_DATA/text.png"), "no picture");
    path.replace(QStringLiteral("ABSOLUTE"), here.path());
    const QString database = QStringLiteral("far/books.db");
    here.sql(database, {Libri, Autori, Settings, iconRow(QStringLiteral("libri"), path)});
    here.remember(database);
    const Tavenor window;
    const QImage wanted = general ? generalIcon(QSize(32, 32)) : QImage();
    QCOMPARE(iconOf(window, QStringLiteral("libri")), wanted);
    // A table without a row of its own, for comparison.
    QCOMPARE(iconOf(window, QStringLiteral("autori")), generalIcon(QSize(32, 32)));
}

void Tables::fifoAsIcon()
{
    // Reading it would wait for ever.
    const Workspace here;
    here.write(QStringLiteral("DB_DATA/keep"), "");
    QCOMPARE(mkfifo(qPrintable(here.path(QStringLiteral("DB_DATA/pipe.png"))), 0600), 0);
    here.sql(Books, {Libri, Autori, Settings,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/pipe.png"))});
    here.remember(Books);
    const Tavenor window;
    QVERIFY(iconOf(window, QStringLiteral("libri")).isNull());
}

void Tables::linkedIconOutside()
{
    const Workspace here;
    makePicture(here, QStringLiteral("out.png"), Qt::red);
    here.write(QStringLiteral("far/DB_DATA/keep"), "");
    QVERIFY(QFile::link(here.path(QStringLiteral("out.png")),
                        here.path(QStringLiteral("far/DB_DATA/link.png"))));
    const QString database = QStringLiteral("far/books.db");
    here.sql(database, {Libri, Autori, Settings,
                        iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/link.png"))});
    here.remember(database);
    const Tavenor window;
    QVERIFY(iconOf(window, QStringLiteral("libri")).isNull());
}

void Tables::namesArePlainText()
{
    const Workspace here;
    const QString name = QStringLiteral("<img src=/etc/passwd>");
    here.sql(Books, {Libri, QStringLiteral("CREATE TABLE \"%1\" (a,b)").arg(name)});
    here.remember(Books);
    const Tavenor window;
    const ListButtonForm *const button = buttonOf(window, name);
    QCOMPARE(Window::get<QLabel>(*button, "lbListName")->textFormat(), Qt::PlainText);
    QCOMPARE(Window::get<QAbstractButton>(*button, "pbList")->toolTip(), name);
    Window::pressTable(window, name);
    QCOMPARE(Window::tableHeading(window), name);
    const QWidget *const area = Window::get<QWidget>(window, "mainArea");
    QCOMPARE(Window::get<QLabel>(*area, "lbListName")->textFormat(), Qt::PlainText);
}

void Tables::savedFilterButtons()
{
    const Workspace here;
    here.sql(Books, {Libri, Note, Settings, FiltersTable,
                     iconRow(QStringLiteral("libri"), QStringLiteral("DB_DATA/red.png")),
                     QStringLiteral("INSERT INTO filters (RSTRINGFORMAT_filterName,"
                                    "NSTRINGFORMAT_filterTableName) VALUES ('Rossi','libri'),"
                                    "('Rossi_XFLTRX_1','libri'),('Rossi_XFLTRX_2','libri'),"
                                    "('Appunti','HIDDENTABLE_note')")});
    makePicture(here, QStringLiteral("DB_DATA/red.png"), Qt::red);
    here.remember(Books);
    const Tavenor window;
    const QList<ListButtonForm *> buttons = Window::buttons(window, "filtersButtonLayout");
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(Window::get<QLabel>(*buttons.at(0), "lbListName")->text(), QStringLiteral("Rossi"));
    QCOMPARE(Window::get<QAbstractButton>(*buttons.at(0), "pbList")->toolTip(),
             QStringLiteral("libri"));
    QCOMPARE(buttons.at(0)->savedFilterTable(), QStringLiteral("libri"));
    QCOMPARE(buttons.at(0)->savedFilterName(), QStringLiteral("Rossi"));
    QVERIFY(buttons.at(0)->isFilter());
    QCOMPARE(colourOf(Window::get<QAbstractButton>(*buttons.at(0), "pbList")
                          ->icon()
                          .pixmap(32, 32)
                          .toImage()),
             QColor(Qt::red));
    QCOMPARE(Window::get<QLabel>(*buttons.at(1), "lbListName")->text(), QStringLiteral("Appunti"));
    QCOMPARE(Window::get<QAbstractButton>(*buttons.at(1), "pbList")->toolTip(),
             QStringLiteral("#note"));
    // The table list is another one.
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("libri")});
}

void Tables::savedFilterButtonsFollowDatabase()
{
    const Workspace here;
    here.sql(Books, {Libri, FiltersTable,
                     QStringLiteral("INSERT INTO filters (RSTRINGFORMAT_filterName,"
                                    "NSTRINGFORMAT_filterTableName) VALUES ('Rossi','libri')")});
    here.sql(Coins, {Autori});
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::buttons(window, "filtersButtonLayout").size(), 1);
    ModalResponder responder;
    responder.chooseFile(here.path(Coins));
    Window::action(window, "actionOpen_Db")->trigger();
    QVERIFY(Window::buttons(window, "filtersButtonLayout").isEmpty());
}

QTEST_MAIN(Tables)
#include "ui_tables.moc"
