// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Emptying and removing tables wholesale.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/progressBarForm.h"

#include <QProgressBar>
#include <QPushButton>
#include <QSqlDatabase>
#include <QStackedWidget>

namespace
{

const QString Shop = QStringLiteral("shop.db");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");
const QString Dashes = QStringLiteral("----");

QString create(const QString &table, const QString &columns = QStringLiteral("RSTRINGFORMAT_Nome"))
{
    return QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,%2 text)")
        .arg(table, columns);
}

const QString Settings =
    QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary "
                   "key,RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath text)");
const QString SavedFilters = QStringLiteral(
    "CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_filterName text,"
    "NSTRINGFORMAT_filterTableName text,NSTRINGFORMAT_filterFieldName text,"
    "NSTRINGFORMAT_filterFieldValue text,NSTRINGFORMAT_filterFieldType text,"
    "NSTRINGFORMAT_filterFieldCondition text,NSTRINGFORMAT_filterFieldConditionAndOr text)");
const QString Configurations =
    QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                   "NSTRINGFORMAT_subConfigFieldType text)");
const QStringList Reserved = {Settings, SavedFilters, Configurations};
const QStringList ReservedNames = {QStringLiteral("settings"), QStringLiteral("filters"),
                                   QStringLiteral("subtablesconfigs")};

QString row(const QString &table, const QString &values)
{
    return QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, values);
}

QString filterRow(int id, const QString &name, const QString &table)
{
    return row(QStringLiteral("filters"),
               QStringLiteral("%1,'%2','%3','RSTRINGFORMAT_Nome','x','STRING','Equal','And'")
                   .arg(id)
                   .arg(name, table));
}

QString configurationRow(int id, const QString &name)
{
    return row(QStringLiteral("subtablesconfigs"),
               QStringLiteral("%1,'%2','NSTRINGFORMAT_x','text'").arg(id).arg(name));
}

// Two tables, the second with everything that can belong to one.
const QStringList ShopTables =
    Reserved +
    QStringList{
        create(QStringLiteral("Articoli")),
        create(QStringLiteral("Clienti"),
               QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Ordini")),
        create(QStringLiteral("HIDDENTABLE_Clienti_XSBTX_SUBTABLEFORMAT_Ordini_XSBTUSRX_Anna")),
        row(QStringLiteral("Articoli"), QStringLiteral("1,'Penna'")),
        row(QStringLiteral("Articoli"), QStringLiteral("2,'Carta'")),
        row(QStringLiteral("Clienti"), QStringLiteral("1,'Anna',''")),
        row(QStringLiteral("settings"), QStringLiteral("1,'Articoli','DB_DATA/a.png'")),
        row(QStringLiteral("settings"), QStringLiteral("2,'Clienti','DB_DATA/c.png'")),
        row(QStringLiteral("settings"), QStringLiteral("3,'ClientiVecchi','DB_DATA/v.png'")),
        row(QStringLiteral("settings"), QStringLiteral("4,'Clienti','DB_DATA/d.png'")),
        filterRow(1, QStringLiteral("Cari"), QStringLiteral("Articoli")),
        filterRow(2, QStringLiteral("Noti"), QStringLiteral("Clienti")),
        filterRow(3, QStringLiteral("Noti_XFLTRX_1"), QStringLiteral("Clienti")),
        filterRow(4, QStringLiteral("Clienti"), QStringLiteral("Articoli")),
        filterRow(5, QStringLiteral("Vecchi"), QStringLiteral("ClientiVecchi")),
        configurationRow(1, QStringLiteral("Clienti_Ordini")),
        configurationRow(2, QStringLiteral("Clienti_Ordini_XSBCONFX_1")),
        configurationRow(3, QStringLiteral("Clienti_OrdiniVecchi")),
        configurationRow(4, QStringLiteral("VecchiClienti_Ordini")),
        configurationRow(5, QStringLiteral("Clienti_Ordini_XSBCONFX_12")),
        configurationRow(6, QStringLiteral("Articoli_Ordini")),
    };

// The window over a database made by these statements, with the administrator mode on.
class OpenShop
{
public:
    explicit OpenShop(const QStringList &statements)
    {
        here.sql(Shop, statements);
        here.remember(Shop);
        window = std::make_unique<Tavenor>();
        window->administratorModeEnabled(true);
        window->show();
    }

    const Workspace here;
    std::unique_ptr<Tavenor> window;
    ModalResponder responder;

    void trigger(const char *action) const { Window::action(*window, action)->trigger(); }
    void advancedMode()
    {
        responder.answer(QMessageBox::Yes);
        trigger("actionTech_Mod");
        responder.takeTexts();
    }
    // Makes a table current and removes it.
    void remove(const QString &shown)
    {
        Window::pressTable(*window, shown);
        responder.answer(QMessageBox::Yes);
        trigger("actionRemove_Table");
        QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare %1?").arg(shown)});
    }
    QStringList filterButtons() const
    {
        QStringList names;
        for (const ListButtonForm *const button : Window::buttons(*window, "filtersButtonLayout")) {
            names.append(button->savedFilterName());
        }
        return names;
    }
    bool backIsOffered() const { return Window::offers(*window, "pbReturn"); }
    int page() const { return Window::get<QStackedWidget>(*window, "stPages")->currentIndex(); }
};

QStringList tablesInFile()
{
    return Sql::lines(QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' AND name "
                                     "NOT LIKE 'sqlite_%' ORDER BY rowid"))
        .replaceInStrings(QStringLiteral("'"), QString());
}

QStringList idsOf(const QString &table)
{
    return Sql::lines(QStringLiteral("SELECT RINTEGERFORMAT_Id FROM %1 ORDER BY 1").arg(table));
}

// Everything in the file, to see that nothing was changed.
QStringList everything()
{
    QStringList all = Sql::schema();
    for (const QString &table : tablesInFile()) {
        all += Sql::table(QLatin1Char('"') + table + QLatin1Char('"'));
    }
    return all;
}

void compareNothingShown(const OpenShop &shop)
{
    QCOMPARE(Window::tableHeading(*shop.window), Dashes);
    QCOMPARE(Window::heading(*shop.window), Dashes);
    QCOMPARE(Window::lines(*shop.window), QStringList());
    QCOMPARE(Window::labels(*shop.window), QStringList());
    QVERIFY(Window::tableHeadIcon(*shop.window).isNull());
    QCOMPARE(Window::get<QLabel>(*shop.window, "lbToolbar")->text(), QString());
    QCOMPARE(Window::markedTables(*shop.window), QStringList());
    QVERIFY(!shop.backIsOffered());
    QCOMPARE(shop.page(), 2);
}

progressBarForm *progressDialog()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const dialog = qobject_cast<progressBarForm *>(widget)) {
            return dialog;
        }
    }
    return nullptr;
}

// A delete of this table's rows fails.
QString blockade(const QString &table)
{
    return QStringLiteral("CREATE TRIGGER fermo_%1 BEFORE DELETE ON %1 BEGIN SELECT "
                          "RAISE(ABORT,'fermo'); END")
        .arg(table);
}

} // namespace

class Maintenance : public QObject
{
    Q_OBJECT

private slots:
    void questions_data();
    void questions();
    void anythingButYesChangesNothing_data();
    void anythingButYesChangesNothing();
    void withoutTable_data();
    void withoutTable();
    void onlyReservedTables();
    void readOnlyCopyOffersNone();

    void clearTableEmptiesOneTable();
    void clearTableOfHiddenTable();
    void clearTableFails();
    void clearTableEndsOtherPages();

    void clearAllTablesEmptiesEverything();
    void clearAllTablesReadsTheDatabaseAnew();
    void clearAllTablesGoesOnAfterFailures();
    void clearAllTablesWithoutCurrentTable();

    void removalTakesWhatBelongs();
    void removalIsOneStep();
    void removalShowsTheSecondName();
    void removalChoosesOrdinaryTables();
    void removalInAdvancedMode();
    void removalDownToTheLast();
    void removalOfTheOnlyTable();
    void namesWithinNames_data();
    void namesWithinNames();
    void sharedConfigurationStays();
    void hiddenTables_data();
    void hiddenTables();
    void detailTableLeavesTheConfiguration();
    void removalOfReservedTable();
    void removalOfTablesThatNameThemselves_data();
    void removalOfTablesThatNameThemselves();
    void failedRemovalKeepsEverything();
    void failedRowsAreTold();
    void foreignNamesAreRefused_data();
    void foreignNamesAreRefused();
    void wayBackToARemovedTable();
    void wayBackToAnotherTable();
    void removalFromOtherPages();
    void missingReservedTables();

    void deleteAllLeavesReservedTables();
    void deleteAllTellsItsProgress();
    void deleteAllReadsTheDatabaseAnew();
    void deleteAllGoesOnAfterFailures();
    void deleteAllThenANewStart();
    void deleteAllInAdvancedMode();

    void buttonsFollowTheReservedTables();
    void lockedDatabaseStaysAsItIs_data();
    void lockedDatabaseStaysAsItIs();

    void advancedModeKeepsHiddenTablesOut();
};

void Maintenance::questions_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("text");
    QTest::newRow("clear the table") << QByteArray("actionClear_Selected_List")
                                     << "Eliminare tutti gli elementi di #libri->Zeno->Prestiti?";
    QTest::newRow("clear all") << QByteArray("actionClear_All_Tables")
                               << "Eliminare tutti gli elementi in tutto il database?";
    QTest::newRow("remove the table")
        << QByteArray("actionRemove_Table") << "Eliminare #libri->Zeno->Prestiti?";
    QTest::newRow("remove all") << QByteArray("actionDelete_All_Database")
                                << "Eliminare tutte le tabelle?";
}

void Maintenance::questions()
{
    QFETCH(QByteArray, action);
    const QString detail =
        QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Zeno");
    OpenShop shop(Reserved + QStringList{create(QStringLiteral("libri")), create(detail)});
    shop.window->changeTable(detail);
    shop.responder.answer(QMessageBox::No);
    shop.trigger(action.constData());
    const ModalResponder::Box box = shop.responder.boxes().first();
    QTEST(box.text, "text");
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::No | QMessageBox::Yes);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.escapeButton, QMessageBox::No);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

void Maintenance::anythingButYesChangesNothing_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("answer");
    for (const char *const action : {"actionClear_Selected_List", "actionClear_All_Tables",
                                     "actionRemove_Table", "actionDelete_All_Database"}) {
        for (const char *const answer : {"No", "Esc", "Return"}) {
            QTest::addRow("%s %s", action, answer) << QByteArray(action) << answer;
        }
    }
}

void Maintenance::anythingButYesChangesNothing()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, answer);
    OpenShop shop(ShopTables);
    Window::selectLine(*shop.window, 1);
    const QStringList before = everything();
    const QByteArray bytes = shop.here.read(Shop);
    if (answer == QStringLiteral("No")) {
        shop.responder.answer(QMessageBox::No);
    } else if (answer == QStringLiteral("Esc")) {
        shop.responder.pressEscape();
    } else {
        shop.responder.pressReturn();
    }
    shop.trigger(action.constData());
    QCOMPARE(shop.responder.takeTexts().size(), 1);
    QCOMPARE(everything(), before);
    QCOMPARE(shop.here.read(Shop), bytes);
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("Articoli"), QStringLiteral("Clienti")}));
    QCOMPARE(Window::heading(*shop.window), QStringLiteral("Penna"));
    QCOMPARE(shop.filterButtons().size(), 4);
}

void Maintenance::withoutTable_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::newRow("clear the table") << QByteArray("actionClear_Selected_List");
    QTest::newRow("clear all") << QByteArray("actionClear_All_Tables");
    QTest::newRow("remove the table") << QByteArray("actionRemove_Table");
    QTest::newRow("remove all") << QByteArray("actionDelete_All_Database");
}

void Maintenance::withoutTable()
{
    QFETCH(QByteArray, action);
    const Workspace here;
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::action(window, action.constData())->trigger();
    QCOMPARE(responder.takeTexts(), QStringList{NoTable});
}

void Maintenance::onlyReservedTables()
{
    OpenShop shop(Reserved);
    for (const char *const action : {"actionClear_Selected_List", "actionRemove_Table"}) {
        shop.responder.answer(QMessageBox::Ok);
        shop.trigger(action);
        QCOMPARE(shop.responder.takeTexts(), QStringList{NoTable});
    }
    QCOMPARE(tablesInFile(), ReservedNames);
}

void Maintenance::readOnlyCopyOffersNone()
{
    const Workspace here;
    here.sql(Shop, ShopTables);
    here.remember(Shop);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const Tavenor window;
    for (const char *const action : {"actionClear_Selected_List", "actionClear_All_Tables",
                                     "actionRemove_Table", "actionDelete_All_Database"}) {
        QVERIFY2(!Window::action(window, action)->isEnabled(), action);
    }
}

void Maintenance::clearTableEmptiesOneTable()
{
    OpenShop shop(ShopTables);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_Selected_List");
    QCOMPARE(shop.responder.takeTexts(),
             QStringList{QStringLiteral("Eliminare tutti gli elementi di Articoli?")});
    QCOMPARE(Sql::table(QStringLiteral("Articoli")), QStringList());
    QCOMPARE(Sql::table(QStringLiteral("Clienti")), QStringList{QStringLiteral("1|'Anna'|''")});
    QCOMPARE(idsOf(QStringLiteral("settings")).size(), 4);
    QCOMPARE(idsOf(QStringLiteral("filters")).size(), 5);
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("Articoli"));
    QCOMPARE(Window::lines(*shop.window), QStringList());
    QCOMPARE(Window::labels(*shop.window), QStringList());
    QCOMPARE(Window::heading(*shop.window), Dashes);
    QCOMPARE(Window::get<QLabel>(*shop.window, "lbToolbar")->text(), QStringLiteral("0 Records"));
}

void Maintenance::clearTableOfHiddenTable()
{
    OpenShop shop({create(QStringLiteral("HIDDENTABLE_note")), create(QStringLiteral("libri")),
                   row(QStringLiteral("HIDDENTABLE_note"), QStringLiteral("1,'x'"))});
    shop.trigger("actionShow_Hidden_Tables");
    Window::pressTable(*shop.window, QStringLiteral("#note"));
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_Selected_List");
    QCOMPARE(shop.responder.takeTexts(),
             QStringList{QStringLiteral("Eliminare tutti gli elementi di #note?")});
    QCOMPARE(Sql::table(QStringLiteral("HIDDENTABLE_note")), QStringList());
}

void Maintenance::clearTableFails()
{
    OpenShop shop(ShopTables + QStringList{blockade(QStringLiteral("Articoli"))});
    shop.responder.answer(QMessageBox::Yes);
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger("actionClear_Selected_List");
    const QString text = shop.responder.takeTexts().at(1);
    QVERIFY2(text.startsWith(QStringLiteral("ERRORE: Impossibile pulire la tabella Articoli!\n")),
             qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("fermo")), qPrintable(text));
    QCOMPARE(idsOf(QStringLiteral("Articoli")).size(), 2);
    QCOMPARE(Window::lines(*shop.window).size(), 2);
}

void Maintenance::clearTableEndsOtherPages()
{
    OpenShop shop(ShopTables);
    Window::click(*shop.window, "pbEditUser");
    QCOMPARE(shop.page(), 3);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_Selected_List");
    QCOMPARE(shop.page(), 2);
}

void Maintenance::clearAllTablesEmptiesEverything()
{
    OpenShop shop(ShopTables);
    const QStringList schema = Sql::schema();
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_All_Tables");
    QCOMPARE(Sql::schema(), schema);
    for (const QString &table : tablesInFile()) {
        QCOMPARE(Sql::table(table), QStringList());
    }
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("Articoli"), QStringLiteral("Clienti")}));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("Articoli"));
    QCOMPARE(Window::lines(*shop.window), QStringList());
    QCOMPARE(shop.filterButtons(), QStringList());
    // The icons are gone with "settings".
    const QImage general = QIcon(QStringLiteral(":generalIcon")).pixmap(QSize(32, 32)).toImage();
    for (const ListButtonForm *const button : Window::buttons(*shop.window)) {
        const QIcon icon = Window::get<QAbstractButton>(*button, "pbList")->icon();
        QCOMPARE(icon.pixmap(QSize(32, 32)).toImage(), general);
    }
}

void Maintenance::clearAllTablesReadsTheDatabaseAnew()
{
    OpenShop shop({create(QStringLiteral("libri")), create(QStringLiteral("autori"))});
    QVERIFY(Sql::run(create(QStringLiteral("nuova"))));
    QVERIFY(Sql::run(row(QStringLiteral("nuova"), QStringLiteral("1,'x'"))));
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_All_Tables");
    QCOMPARE(Sql::table(QStringLiteral("nuova")), QStringList());
    // The list shown is not read again by this.
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("autori")}));
}

void Maintenance::clearAllTablesGoesOnAfterFailures()
{
    OpenShop shop(ShopTables + QStringList{blockade(QStringLiteral("Articoli")),
                                           blockade(QStringLiteral("filters"))});
    for (int box = 0; box < 3; ++box) {
        shop.responder.answer(box == 0 ? QMessageBox::Yes : QMessageBox::Ok);
    }
    shop.trigger("actionClear_All_Tables");
    QStringList heads;
    for (const QString &text : shop.responder.takeTexts().mid(1)) {
        heads.append(text.section(QLatin1Char('\n'), 0, 0));
    }
    heads.sort();
    QCOMPARE(heads,
             (QStringList{QStringLiteral("ERRORE: Impossibile pulire la tabella Articoli!"),
                          QStringLiteral("ERRORE: Impossibile pulire la tabella filters!")}));
    QCOMPARE(idsOf(QStringLiteral("Articoli")).size(), 2);
    QCOMPARE(idsOf(QStringLiteral("filters")).size(), 5);
    QCOMPARE(idsOf(QStringLiteral("Clienti")), QStringList());
    QCOMPARE(idsOf(QStringLiteral("settings")), QStringList());
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")), QStringList());
    QCOMPARE(shop.filterButtons().size(), 4);
}

void Maintenance::clearAllTablesWithoutCurrentTable()
{
    OpenShop shop(Reserved +
                  QStringList{filterRow(1, QStringLiteral("Cari"), QStringLiteral("Articoli"))});
    QCOMPARE(shop.filterButtons().size(), 1);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_All_Tables");
    QCOMPARE(idsOf(QStringLiteral("filters")), QStringList());
    QCOMPARE(shop.filterButtons(), QStringList());
}

void Maintenance::removalTakesWhatBelongs()
{
    OpenShop shop(ShopTables);
    QCOMPARE(shop.filterButtons(),
             (QStringList{QStringLiteral("Cari"), QStringLiteral("Noti"), QStringLiteral("Clienti"),
                          QStringLiteral("Vecchi")}));
    shop.remove(QStringLiteral("Clienti"));
    QStringList left = ReservedNames;
    left << QStringLiteral("Articoli")
         << QStringLiteral("HIDDENTABLE_Clienti_XSBTX_SUBTABLEFORMAT_Ordini_XSBTUSRX_Anna");
    QCOMPARE(tablesInFile(), left);
    QCOMPARE(idsOf(QStringLiteral("settings")), (QStringList{"1", "3"}));
    QCOMPARE(idsOf(QStringLiteral("filters")), (QStringList{"1", "4", "5"}));
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")), (QStringList{"3", "4", "6"}));
    QCOMPARE(Window::tables(*shop.window), QStringList{QStringLiteral("Articoli")});
    QCOMPARE(shop.filterButtons(), (QStringList{QStringLiteral("Cari"), QStringLiteral("Clienti"),
                                                QStringLiteral("Vecchi")}));
}

void Maintenance::removalIsOneStep()
{
    // One step for the disk counts as one change of the file.
    OpenShop shop(ShopTables);
    const auto changes = [&shop] {
        return QString::fromLatin1(shop.here.read(Shop).mid(24, 4).toHex()).toUInt(nullptr, 16);
    };
    Window::pressTable(*shop.window, QStringLiteral("Clienti"));
    const uint before = changes();
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionRemove_Table");
    QCOMPARE(changes(), before + 1);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_All_Tables");
    QCOMPARE(changes(), before + 2);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    QCOMPARE(changes(), before + 3);
}

void Maintenance::removalShowsTheSecondName()
{
    OpenShop shop({create(QStringLiteral("a")), create(QStringLiteral("b")),
                   create(QStringLiteral("c")), create(QStringLiteral("d")),
                   row(QStringLiteral("c"), QStringLiteral("1,'Zeno'"))});
    shop.remove(QStringLiteral("b"));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("c"));
    QCOMPARE(Window::markedTables(*shop.window), QStringList{QStringLiteral("c")});
    QCOMPARE(Window::lines(*shop.window), QStringList{QStringLiteral("Zeno")});
    QCOMPARE(Window::heading(*shop.window), QStringLiteral("Zeno"));
    shop.remove(QStringLiteral("a"));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("d"));
    QCOMPARE(Window::tables(*shop.window), (QStringList{QStringLiteral("c"), QStringLiteral("d")}));
}

void Maintenance::removalChoosesOrdinaryTables()
{
    // The second name left is a reserved one, which nobody sees now.
    OpenShop shop({Settings, SavedFilters, create(QStringLiteral("HIDDENTABLE_n")),
                   create(QStringLiteral("b")), create(QStringLiteral("c"))});
    shop.remove(QStringLiteral("b"));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("c"));
    // Of two left, none can be shown.
    shop.remove(QStringLiteral("c"));
    compareNothingShown(shop);
    QCOMPARE(Window::tables(*shop.window), QStringList());
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger("actionRemove_Table");
    QCOMPARE(shop.responder.takeTexts(), QStringList{NoTable});
}

void Maintenance::removalInAdvancedMode()
{
    OpenShop shop({Settings, SavedFilters, Configurations, create(QStringLiteral("b")),
                   create(QStringLiteral("c"))});
    shop.advancedMode();
    shop.remove(QStringLiteral("b"));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("filters"));
}

void Maintenance::removalDownToTheLast()
{
    OpenShop shop({create(QStringLiteral("a")), create(QStringLiteral("b")),
                   row(QStringLiteral("a"), QStringLiteral("1,'Zeno'"))});
    // The reserved tables were made after the list was read.
    shop.remove(QStringLiteral("b"));
    compareNothingShown(shop);
    // The other one is still there to be chosen.
    QCOMPARE(Window::tables(*shop.window), QStringList{QStringLiteral("a")});
    Window::pressTable(*shop.window, QStringLiteral("a"));
    QCOMPARE(Window::heading(*shop.window), QStringLiteral("Zeno"));
    shop.remove(QStringLiteral("a"));
    compareNothingShown(shop);
    QCOMPARE(Window::tables(*shop.window), QStringList());
    QCOMPARE(tablesInFile(), ReservedNames);
}

void Maintenance::removalOfTheOnlyTable()
{
    OpenShop shop({create(QStringLiteral("a"))});
    shop.remove(QStringLiteral("a"));
    compareNothingShown(shop);
    // What needs a table says so, and nothing else happens.
    for (const char *const button : {"pbNewUser", "pbEditUser", "pbDeleteUser", "pbCalc"}) {
        shop.responder.answer(QMessageBox::Ok);
        Window::click(*shop.window, button);
        QCOMPARE(shop.responder.takeTexts(), QStringList{NoTable});
    }
}

void Maintenance::namesWithinNames_data()
{
    QTest::addColumn<QString>("removed");
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QStringList>("filters");
    QTest::addColumn<QStringList>("configurations");
    QTest::newRow("the shorter name")
        << "Libri" << QStringList{"2", "3"} << QStringList{"2", "3"} << QStringList{"2", "3", "4"};
    QTest::newRow("the longer name") << "LibriVecchi" << QStringList{"1", "3"}
                                     << QStringList{"1", "3"} << QStringList{"1", "3", "4"};
    QTest::newRow("the name that ends alike")
        << "MieiLibri" << QStringList{"1", "2"} << QStringList{"1", "2"}
        << QStringList{"1", "2", "4"};
}

void Maintenance::namesWithinNames()
{
    QFETCH(QString, removed);
    const QString columns = QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Prestiti");
    OpenShop shop(
        Reserved +
        QStringList{create(QStringLiteral("Libri"), columns),
                    create(QStringLiteral("LibriVecchi"), columns),
                    create(QStringLiteral("MieiLibri"), columns),
                    row(QStringLiteral("settings"), QStringLiteral("1,'Libri','a'")),
                    row(QStringLiteral("settings"), QStringLiteral("2,'LibriVecchi','b'")),
                    row(QStringLiteral("settings"), QStringLiteral("3,'MieiLibri','c'")),
                    filterRow(1, QStringLiteral("x"), QStringLiteral("Libri")),
                    filterRow(2, QStringLiteral("y"), QStringLiteral("LibriVecchi")),
                    filterRow(3, QStringLiteral("z"), QStringLiteral("MieiLibri")),
                    configurationRow(1, QStringLiteral("Libri_Prestiti")),
                    configurationRow(2, QStringLiteral("LibriVecchi_Prestiti")),
                    configurationRow(3, QStringLiteral("MieiLibri_Prestiti")),
                    configurationRow(4, QStringLiteral("Libri_PrestitiVecchi"))});
    shop.remove(removed);
    QTEST(idsOf(QStringLiteral("settings")), "settings");
    QTEST(idsOf(QStringLiteral("filters")), "filters");
    QTEST(idsOf(QStringLiteral("subtablesconfigs")), "configurations");
}

void Maintenance::sharedConfigurationStays()
{
    // "Clienti" with a field "Ordini_Righe" and "Clienti_Ordini" with a field "Righe" have the
    // same configuration.
    const QStringList made =
        Reserved +
        QStringList{create(QStringLiteral("Clienti"),
                           QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Ordini text,"
                                          "NSUBTABLEFORMAT_Ordini_Righe")),
                    create(QStringLiteral("Clienti_Ordini"),
                           QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Righe")),
                    configurationRow(1, QStringLiteral("Clienti_Ordini")),
                    configurationRow(2, QStringLiteral("Clienti_Ordini_XSBCONFX_1")),
                    configurationRow(3, QStringLiteral("Clienti_Ordini_Righe")),
                    configurationRow(4, QStringLiteral("Clienti_Ordini_Righe_XSBCONFX_1"))};
    OpenShop shop(made);
    shop.remove(QStringLiteral("Clienti"));
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")), (QStringList{"3", "4"}));
    shop.remove(QStringLiteral("Clienti_Ordini"));
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")), QStringList());
}

void Maintenance::hiddenTables_data()
{
    QTest::addColumn<bool>("hasShorter");
    QTest::addColumn<QStringList>("configurations");
    QTest::newRow("a table of the shorter name keeps its configuration")
        << true << QStringList{"2", "3"};
    QTest::newRow("without one, rows of the shorter name go too") << false << QStringList{"3"};
}

void Maintenance::hiddenTables()
{
    QFETCH(bool, hasShorter);
    QStringList made =
        Reserved +
        QStringList{create(QStringLiteral("HIDDENTABLE_Clienti"),
                           QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Ordini")),
                    create(QStringLiteral("Articoli")),
                    row(QStringLiteral("settings"), QStringLiteral("1,'HIDDENTABLE_Clienti','a'")),
                    row(QStringLiteral("settings"), QStringLiteral("2,'Clienti','b'")),
                    configurationRow(1, QStringLiteral("HIDDENTABLE_Clienti_Ordini")),
                    configurationRow(2, QStringLiteral("Clienti_Ordini")),
                    configurationRow(3, QStringLiteral("Clienti_OrdiniVecchi"))};
    if (hasShorter) {
        made.append(create(QStringLiteral("Clienti")));
    }
    OpenShop shop(made);
    shop.trigger("actionShow_Hidden_Tables");
    shop.remove(QStringLiteral("#Clienti"));
    QTEST(idsOf(QStringLiteral("subtablesconfigs")), "configurations");
    QCOMPARE(idsOf(QStringLiteral("settings")), QStringList{"2"});
}

void Maintenance::detailTableLeavesTheConfiguration()
{
    OpenShop shop(ShopTables);
    shop.trigger("actionShow_Hidden_Tables");
    shop.remove(QStringLiteral("#Clienti->Anna->Ordini"));
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")).size(), 6);
    QCOMPARE(tablesInFile().size(), 5);
    // Opening it again makes it anew.
    Window::pressTable(*shop.window, QStringLiteral("Clienti"));
    Window::click(*Window::field(*shop.window, QStringLiteral("Ordini")), "pbSubTable");
    QCOMPARE(tablesInFile().size(), 6);
}

void Maintenance::removalOfReservedTable()
{
    OpenShop shop(ShopTables);
    shop.advancedMode();
    shop.remove(QStringLiteral("filters"));
    QVERIFY(!tablesInFile().contains(QStringLiteral("filters")));
    QCOMPARE(shop.filterButtons(), QStringList());
    QCOMPARE(idsOf(QStringLiteral("settings")).size(), 4);
}

void Maintenance::removalOfTablesThatNameThemselves_data()
{
    QTest::addColumn<QString>("table");
    for (const QString &table : ReservedNames) {
        QTest::newRow(qPrintable(table)) << table;
    }
}

void Maintenance::removalOfTablesThatNameThemselves()
{
    QFETCH(QString, table);
    QStringList statements = ShopTables;
    for (const QString &own : ReservedNames) {
        const int id = 10 + ReservedNames.indexOf(own);
        statements.append(row(QStringLiteral("settings"),
                              QStringLiteral("%1,'%2','DB_DATA/o.png'").arg(id).arg(own)));
        statements.append(filterRow(id, QStringLiteral("Di ") + own, own));
    }
    OpenShop shop(statements);
    shop.advancedMode();
    // Without a complaint about rows that are gone with their table.
    shop.remove(table);
    QVERIFY(!tablesInFile().contains(table));
    for (const QString &other : {QStringLiteral("settings"), QStringLiteral("filters")}) {
        if (other != table) {
            QCOMPARE(idsOf(other).size(), other == QLatin1String("settings") ? 6 : 7);
        }
    }
}

void Maintenance::failedRemovalKeepsEverything()
{
    OpenShop shop(ShopTables);
    Window::pressTable(*shop.window, QStringLiteral("Clienti"));
    const QStringList before = everything();
    // Somebody else is reading.
    QSqlQuery reader(QStringLiteral("SELECT * FROM Articoli"));
    QVERIFY(reader.next());
    shop.responder.answer(QMessageBox::Yes);
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger("actionRemove_Table");
    reader.finish();
    const QString text = shop.responder.takeTexts().at(1);
    QVERIFY2(
        text.startsWith(QStringLiteral("ERRORE: Impossibile cancellare la tabella Clienti!\n")),
        qPrintable(text));
    QCOMPARE(everything(), before);
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("Articoli"), QStringLiteral("Clienti")}));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("Clienti"));
    QCOMPARE(shop.filterButtons().size(), 4);
}

void Maintenance::failedRowsAreTold()
{
    OpenShop shop(ShopTables + QStringList{blockade(QStringLiteral("settings"))});
    Window::pressTable(*shop.window, QStringLiteral("Clienti"));
    shop.responder.answer(QMessageBox::Yes);
    // The table has two rows there.
    shop.responder.answer(QMessageBox::Ok);
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger("actionRemove_Table");
    for (const QString &text : shop.responder.takeTexts().mid(1)) {
        QVERIFY2(text.startsWith(QStringLiteral("ERRORE: Impossibile cancellare il record!\n")),
                 qPrintable(text));
    }
    QVERIFY(!tablesInFile().contains(QStringLiteral("Clienti")));
    QCOMPARE(idsOf(QStringLiteral("settings")).size(), 4);
    QCOMPARE(idsOf(QStringLiteral("filters")), (QStringList{"1", "4", "5"}));
    QCOMPARE(idsOf(QStringLiteral("subtablesconfigs")), (QStringList{"3", "4", "6"}));
    QCOMPARE(Window::tables(*shop.window), QStringList{QStringLiteral("Articoli")});
}

void Maintenance::foreignNamesAreRefused_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("removal") << QByteArray("actionRemove_Table") << "Eliminare a,b?"
                             << "ERRORE: Impossibile cancellare la tabella a,b!\n";
    QTest::newRow("clearing") << QByteArray("actionClear_Selected_List")
                              << "Eliminare tutti gli elementi di a,b?"
                              << "ERRORE: Impossibile pulire la tabella a,b!\n";
}

void Maintenance::foreignNamesAreRefused()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, question);
    QFETCH(QString, refusal);
    OpenShop shop(Reserved + QStringList{create(QStringLiteral("\"a,b\"")),
                                         create(QStringLiteral("a")), create(QStringLiteral("b")),
                                         row(QStringLiteral("\"a,b\""), QStringLiteral("1,'x'")),
                                         row(QStringLiteral("a"), QStringLiteral("1,'y'"))});
    const QStringList before = everything();
    Window::pressTable(*shop.window, QStringLiteral("a,b"));
    shop.responder.answer(QMessageBox::Yes);
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger(action.constData());
    QCOMPARE(shop.responder.takeTexts(),
             (QStringList{question, refusal + QStringLiteral("Il nome 'a,b' contiene caratteri non "
                                                             "ammessi: usare solo lettere, cifre "
                                                             "e '_'.")}));
    QCOMPARE(everything(), before);
    QCOMPARE(Window::tables(*shop.window).size(), 3);
}

void Maintenance::wayBackToARemovedTable()
{
    OpenShop shop(ShopTables);
    Window::pressTable(*shop.window, QStringLiteral("Clienti"));
    shop.window->goToRequest(QStringLiteral("Articoli"), 1);
    QVERIFY(shop.backIsOffered());
    shop.remove(QStringLiteral("Clienti"));
    QVERIFY(!shop.backIsOffered());
}

void Maintenance::wayBackToAnotherTable()
{
    OpenShop shop(ShopTables);
    shop.window->goToRequest(QStringLiteral("Clienti"), 1);
    shop.remove(QStringLiteral("Clienti"));
    QVERIFY(shop.backIsOffered());
    Window::click(*shop.window, "pbReturn");
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("Articoli"));
    QCOMPARE(Window::heading(*shop.window), QStringLiteral("Carta"));
}

void Maintenance::removalFromOtherPages()
{
    OpenShop shop({create(QStringLiteral("a")), create(QStringLiteral("b")),
                   row(QStringLiteral("a"), QStringLiteral("1,'x'")),
                   row(QStringLiteral("b"), QStringLiteral("1,'y'"))});
    // With nothing typed the entry page gives way.
    Window::click(*shop.window, "pbNewUser");
    QCOMPARE(shop.page(), 3);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionRemove_Table");
    compareNothingShown(shop);
    Window::pressTable(*shop.window, QStringLiteral("b"));
    Window::click(*shop.window, "pbCalc");
    QCOMPARE(shop.page(), 1);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    compareNothingShown(shop);
}

void Maintenance::missingReservedTables()
{
    OpenShop shop(
        {create(QStringLiteral("a")), create(QStringLiteral("b")), create(QStringLiteral("c"))});
    for (const QString &name : ReservedNames) {
        QVERIFY(Sql::run(QStringLiteral("DROP TABLE ") + name));
    }
    shop.remove(QStringLiteral("b"));
    QCOMPARE(tablesInFile(), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("c"));
}

void Maintenance::deleteAllLeavesReservedTables()
{
    OpenShop shop(ShopTables + QStringList{create(QStringLiteral("extra"))});
    shop.window->goToRequest(QStringLiteral("Clienti"), 1);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    QCOMPARE(shop.responder.takeTexts(),
             QStringList{QStringLiteral("Eliminare tutte le tabelle?")});
    QCOMPARE(tablesInFile(), ReservedNames);
    QCOMPARE(Sql::schema(), Reserved);
    for (const QString &name : ReservedNames) {
        QCOMPARE(Sql::table(name), QStringList());
    }
    QCOMPARE(Window::tables(*shop.window), QStringList());
    QCOMPARE(shop.filterButtons(), QStringList());
    compareNothingShown(shop);
    shop.responder.answer(QMessageBox::Ok);
    Window::click(*shop.window, "pbNewUser");
    QCOMPARE(shop.responder.takeTexts(), QStringList{NoTable});
}

void Maintenance::deleteAllTellsItsProgress()
{
    OpenShop shop(ShopTables);
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    const progressBarForm *const dialog = progressDialog();
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Eliminazione in corso"));
    QCOMPARE(Window::get<QLabel>(*dialog, "lbProgressTitle")->text(),
             QStringLiteral("Elaborazione"));
    // Six tables: after the last one the bar stands at five sixths.
    QCOMPARE(Window::get<QProgressBar>(*dialog, "progressBar")->value(), 83);
}

void Maintenance::deleteAllReadsTheDatabaseAnew()
{
    OpenShop shop(ShopTables);
    QVERIFY(Sql::run(create(QStringLiteral("nuova"))));
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    QCOMPARE(tablesInFile(), ReservedNames);
}

void Maintenance::deleteAllGoesOnAfterFailures()
{
    OpenShop shop(ShopTables +
                  QStringList{create(QStringLiteral("\"a b\"")), create(QStringLiteral("zeta"))});
    shop.responder.answer(QMessageBox::Yes);
    shop.responder.answer(QMessageBox::Ok);
    shop.trigger("actionDelete_All_Database");
    QCOMPARE(shop.responder.takeTexts().mid(1),
             QStringList{QStringLiteral("ERRORE: Impossibile cancellare la tabella a b!\nIl nome "
                                        "'a b' contiene caratteri non ammessi: usare solo lettere, "
                                        "cifre e '_'.")});
    QCOMPARE(tablesInFile(), QStringList{QStringLiteral("a b")} + ReservedNames);
    QCOMPARE(idsOf(QStringLiteral("settings")), QStringList());
    // What could not be removed is still shown.
    QCOMPARE(Window::tables(*shop.window), QStringList{QStringLiteral("a b")});
    compareNothingShown(shop);
}

void Maintenance::deleteAllThenANewStart()
{
    const Workspace here;
    here.sql(Shop, ShopTables);
    here.remember(Shop);
    {
        const Tavenor window;
        ModalResponder responder;
        responder.answer(QMessageBox::Yes);
        Window::action(window, "actionDelete_All_Database")->trigger();
    }
    const Tavenor window;
    QCOMPARE(Window::tables(window), QStringList());
    QCOMPARE(tablesInFile(), ReservedNames);
}

void Maintenance::deleteAllInAdvancedMode()
{
    OpenShop shop(ShopTables);
    shop.advancedMode();
    Window::pressTable(*shop.window, QStringLiteral("settings"));
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionDelete_All_Database");
    QCOMPARE(tablesInFile(), ReservedNames);
    QCOMPARE(Window::tables(*shop.window), QStringList());
    compareNothingShown(shop);
    // They come back with the next reading of the list.
    shop.trigger("actionShow_Hidden_Tables");
    QCOMPARE(Window::tables(*shop.window), ReservedNames);
}

void Maintenance::buttonsFollowTheReservedTables()
{
    OpenShop shop(ShopTables);
    shop.advancedMode();
    QCOMPARE(shop.filterButtons().size(), 4);
    Window::pressTable(*shop.window, QStringLiteral("filters"));
    Window::selectLine(*shop.window, 0);
    const QString gone = Window::heading(*shop.window);
    shop.responder.answer(QMessageBox::Yes);
    Window::click(*shop.window, "pbDeleteUser");
    QCOMPARE(shop.filterButtons().size(), 3);
    QVERIFY(!shop.filterButtons().contains(gone));
    shop.responder.answer(QMessageBox::Yes);
    shop.trigger("actionClear_Selected_List");
    QCOMPARE(shop.filterButtons(), QStringList());
}

void Maintenance::lockedDatabaseStaysAsItIs_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QStringList>("heads");
    const QString drop = QStringLiteral("ERRORE: Impossibile cancellare la tabella %1!");
    const QString clear = QStringLiteral("ERRORE: Impossibile pulire la tabella %1!");
    const QString make = QStringLiteral("ERRORE: Impossibile creare la tabella %1!");
    QStringList drops;
    QStringList clears;
    QStringList makes;
    for (const QString &name :
         QStringList{QStringLiteral("a"), QStringLiteral("b")} + ReservedNames) {
        drops.append(drop.arg(name));
        clears.append(clear.arg(name));
    }
    for (const QString &name : ReservedNames) {
        makes.append(make.arg(name));
    }
    QTest::newRow("clear the table")
        << QByteArray("actionClear_Selected_List")
        << QStringList{clears.first(), QStringLiteral("ERRORE: Impossibile leggere la tabella a!")};
    QTest::newRow("clear all") << QByteArray("actionClear_All_Tables") << clears;
    QTest::newRow("remove the table")
        << QByteArray("actionRemove_Table") << QStringList{drops.first()};
    QTest::newRow("remove all") << QByteArray("actionDelete_All_Database") << drops + makes;
}

void Maintenance::lockedDatabaseStaysAsItIs()
{
    QFETCH(QByteArray, action);
    QFETCH(QStringList, heads);
    OpenShop shop(QStringList{create(QStringLiteral("a")), create(QStringLiteral("b"))} + Reserved +
                  QStringList{row(QStringLiteral("a"), QStringLiteral("1,'Zeno'")),
                              filterRow(1, QStringLiteral("Cari"), QStringLiteral("a"))});
    const QStringList before = everything();
    QVERIFY(Sql::run(QStringLiteral("PRAGMA busy_timeout = 10")));
    {
        QSqlDatabase other =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(shop.here.path(Shop));
        QVERIFY(other.open());
        QSqlQuery query(other);
        QVERIFY(query.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        shop.responder.answer(QMessageBox::Yes);
        for (int box = 0; box < heads.size(); ++box) {
            shop.responder.answer(QMessageBox::Ok);
        }
        shop.trigger(action.constData());
        QVERIFY(query.exec(QStringLiteral("ROLLBACK")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    QStringList shown;
    for (const QString &text : shop.responder.takeTexts().mid(1)) {
        shown.append(text.section(QLatin1Char('\n'), 0, 0));
    }
    QCOMPARE(shown, heads);
    QCOMPARE(everything(), before);
    // Nothing looks removed that is still there.
    QCOMPARE(Window::tables(*shop.window), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(Window::tableHeading(*shop.window), QStringLiteral("a"));
    QCOMPARE(shop.filterButtons(), QStringList{QStringLiteral("Cari")});
    Window::pressTable(*shop.window, QStringLiteral("a"));
    QCOMPARE(Window::heading(*shop.window), QStringLiteral("Zeno"));
}

void Maintenance::advancedModeKeepsHiddenTablesOut()
{
    OpenShop shop({create(QStringLiteral("libri")), create(QStringLiteral("HIDDENTABLE_note"))});
    shop.advancedMode();
    QCOMPARE(Window::tables(*shop.window), QStringList{QStringLiteral("libri")} + ReservedNames);
    shop.trigger("actionShow_Hidden_Tables");
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("#note")} + ReservedNames));
    // Switched off, the hidden ones stay.
    shop.trigger("actionTech_Mod");
    QCOMPARE(Window::tables(*shop.window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("#note")}));
}

QTEST_MAIN(Maintenance)
#include "ui_maintenance.moc"
