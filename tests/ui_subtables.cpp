// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Sub-tables from their design to their records: configurations, detail tables, added fields.
#include "tests/support/DesignerPage.h"

namespace
{

const QString Database = QStringLiteral("books.db");
const QString Ordini = QStringLiteral("Ordini");
const QString Prefix = QStringLiteral("HIDDENTABLE_Clienti_XSBTX_SUBTABLEFORMAT_Ordini_XSBTUSRX_");
const QString Detail =
    QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                   "NLONGSTRINGFORMAT_UserPath ,NSTRINGFORMAT_Articolo text,NDATEFORMAT_Data text");
const QString AddRefused =
    QStringLiteral("ERRORE: Impossibile aggiungere il campo %1 alla tabella %2!\n");
const QString Taken = QStringLiteral("Il nome '%1' è già stato usato.");
const QStringList Configured = {
    QStringLiteral("Clienti_Ordini|NLONGSTRINGFORMAT_UserPath|"),
    QStringLiteral("Clienti_Ordini_XSBCONFX_1|NSTRINGFORMAT_Articolo|text"),
    QStringLiteral("Clienti_Ordini_XSBCONFX_2|NDATEFORMAT_Data|text")};

// Customers with orders, designed and entered on the program's own pages.
struct Customers : EntryPage::Started {
    explicit Customers(const QStringList &names,
                       const QStringList &columns = {QStringLiteral("STRING Articolo"),
                                                     QStringLiteral("DATE Data")})
        : Started({QStringLiteral("CREATE TABLE altri (RINTEGERFORMAT_Id integer primary key,"
                                  "RSTRINGFORMAT_Nome text)"),
                   QStringLiteral("CREATE TABLE zeta (RINTEGERFORMAT_Id integer primary key,"
                                  "RSTRINGFORMAT_Nome text)")})
    {
        DesignerPage::openNew(*window);
        DesignerPage::typeName(*window, QStringLiteral("Clienti"));
        DesignerPage::add(*window, QStringLiteral("STRING"), QStringLiteral("Nome"));
        DesignerPage::addSubTable(*window, Ordini, columns);
        DesignerPage::accept(*window);
        Window::pressTable(*window, QStringLiteral("Clienti"));
        for (const QString &name : names) {
            EntryPage::openNew(*window);
            EntryPage::enter(*window, QStringLiteral("Nome"), name);
            EntryPage::save(*window);
        }
    }

    /// Opens the orders of the customer on this line of the list.
    void openOrders(int line) const
    {
        Window::pressTable(*window, QStringLiteral("Clienti"));
        Window::selectLine(*window, line);
        outputDataForm *const field = Window::field(*window, Ordini);
        if (field == nullptr) {
            qFatal("no orders");
        }
        Window::click(*field, "pbSubTable");
    }

    /// Adds an order to the table shown.
    void addOrder(const QString &article) const
    {
        EntryPage::openNew(*window);
        EntryPage::enter(*window, QStringLiteral("Articolo"), article);
        EntryPage::save(*window);
    }

    QStringList details() const
    {
        return here.column(database, QStringLiteral("SELECT name FROM sqlite_master WHERE name "
                                                    "LIKE 'HIDDENTABLE%' ORDER BY rowid"));
    }
    QString statement(const QString &table) const
    {
        return DesignerPage::statement(here, database, table);
    }
    QStringList configurations() const { return DesignerPage::configurations(here, database); }
};

} // namespace

class SubTablesPages : public QObject
{
    Q_OBJECT

private slots:
    void designedThenOpened();
    void titles_data();
    void titles();
    void labelsOfOlderFiles();
    void letterCaseOpensTheSameTable();
    void openingAgainShowsTheNewest();
    void missingParts();
    void addedFieldReachesLaterTables();
    void addedFieldsOfOneStep();
    void addedFieldToATableOfAnOlderFile();
    void noSubTableInASubTable();
    void takenNumberIsRefused();
    void equalFieldIsRefused_data();
    void equalFieldIsRefused();
    void addedLabelInOtherLetters();
    void designedLabelsInOtherLetters();
    void addedLinkThatIsThere_data();
    void addedLinkThatIsThere();
    void fieldsOfAnAffectedFile();
    void titlesThatOnlyDifferUnseen();
    void tableOfAnotherProgram_data();
    void tableOfAnotherProgram();
    void newTableIsListed_data();
    void newTableIsListed();
    void failedTableIsNotListed();
};

void SubTablesPages::designedThenOpened()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    QCOMPARE(program.configurations(), Configured);
    program.openOrders(0);
    const QString table = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(table), Detail.arg(table) + QLatin1Char(')'));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("#Clienti->Rossi->Ordini"));
    QCOMPARE(program.rows(QStringLiteral("settings")),
             QStringList{QStringLiteral("integer:1|text:'Clienti'|text:''")});
    program.addOrder(QStringLiteral("Lampada"));
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("Lampada"));
}

void SubTablesPages::titles_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("stored");
    QTest::newRow("an apostrophe") << "D'Amico"
                                   << "D＇Amico";
    QTest::newRow("punctuation and blanks") << "Rossi & figli, s.r.l. (Roma)"
                                            << "Rossi_＆_figli，_s．r．l．_（Roma）";
    QTest::newRow("quotes and a comment") << "\"x\"; DROP TABLE Clienti; --"
                                          << "＂x＂；_DROP_TABLE_Clienti；_－－";
    QTest::newRow("digits and a word of SQL") << "1 TABLE"
                                              << "1_TABLE";
    QTest::newRow("other scripts") << "Đorđe 中 🎲"
                                   << "Đorđe_中_🎲";
    QTest::newRow("a mark of the program") << "a_XSBTUSRX_b"
                                           << "a_XSBTUSRX_b";
    QTest::newRow("placeholders") << "100%s %1"
                                  << "100％s_％1";
    QTest::newRow("joined signs") << QStringLiteral("👨\u200d👩\u200d👧") << QStringLiteral("👨👩👧");
    QTest::newRow("a soft hyphen and a control character")
        << QStringLiteral("co\u00adop\u0001") << "coop";
    QTest::newRow("a title that nobody sees") << QStringLiteral("\u200b\u2060") << "";
}

void SubTablesPages::titles()
{
    QFETCH(QString, title);
    QFETCH(QString, stored);
    const ModalResponder responder;
    const Customers program({title});
    program.openOrders(0);
    const QString table = Prefix + stored;
    QCOMPARE(program.details(), QStringList{table});
    QCOMPARE(program.statement(table), Detail.arg(table) + QLatin1Char(')'));
    program.addOrder(QStringLiteral("L'ultimo \"saggio\""));
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("L'ultimo \"saggio\""));
    // The way back, and in again.
    Window::click(*program.window, "pbReturn");
    QCOMPARE(Window::heading(*program.window), title);
    program.openOrders(0);
    QCOMPARE(program.details(), QStringList{table});
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("L'ultimo \"saggio\""));
}

void SubTablesPages::labelsOfOlderFiles()
{
    // Where a label holds what is no longer taken, its configuration is still found.
    const EntryPage::Started program(
        {QStringLiteral("CREATE TABLE Soci (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text,\"NSUBTABLEFORMAT_Rate_d'anno\" text)"),
         QStringLiteral("CREATE TABLE zeta (RINTEGERFORMAT_Id integer primary key)"),
         QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                        "NSTRINGFORMAT_subConfigFieldType text)"),
         QStringLiteral("INSERT INTO subtablesconfigs VALUES "
                        "(1,'Soci_Rate_d''anno','NLONGSTRINGFORMAT_UserPath',''),"
                        "(2,'Soci_Rate_d''anno_XSBCONFX_1','NDATEFORMAT_Data','text')"),
         QStringLiteral("INSERT INTO Soci VALUES (1,'L''Aquila','')")});
    ModalResponder responder;
    Window::click(*Window::field(*program.window, QStringLiteral("Rate_d'anno")), "pbSubTable");
    const QString table = QStringLiteral("HIDDENTABLE_Soci_XSBTX_SUBTABLEFORMAT_Rate_d＇anno_"
                                         "XSBTUSRX_L＇Aquila");
    QCOMPARE(DesignerPage::statement(program.here, Database, table),
             QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                            "NLONGSTRINGFORMAT_UserPath ,NDATEFORMAT_Data text)")
                 .arg(table));
    // A field added to it joins the same configuration.
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nota"));
    DesignerPage::accept(*program.window);
    QCOMPARE(DesignerPage::configurations(program.here, Database).last(),
             QStringLiteral("Soci_Rate_d'anno_XSBCONFX_2|NSTRINGFORMAT_Nota|text"));
    QVERIFY(responder.boxes().isEmpty());
}

void SubTablesPages::letterCaseOpensTheSameTable()
{
    // To the database both are one table.
    const ModalResponder responder;
    const Customers program({QStringLiteral("rossi")});
    program.openOrders(0);
    program.addOrder(QStringLiteral("Lampada"));
    program.here.sql(Database, {QStringLiteral("UPDATE Clienti SET NSTRINGFORMAT_Nome = 'ROSSI' "
                                               "WHERE NSTRINGFORMAT_Nome = 'rossi'")});
    program.openOrders(0);
    QCOMPARE(program.details(), QStringList{Prefix + QStringLiteral("rossi")});
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("#Clienti->rossi->Ordini"));
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("Lampada"));
}

void SubTablesPages::openingAgainShowsTheNewest()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    program.openOrders(0);
    for (const char *const article : {"Lampada", "Tavolo", "Sedia"}) {
        program.addOrder(QString::fromLatin1(article));
    }
    const QStringList before =
        program.here.column(Database, QStringLiteral("SELECT sql FROM sqlite_master"));
    program.openOrders(0);
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("Sedia"));
    QCOMPARE(program.here.column(Database, QStringLiteral("SELECT sql FROM sqlite_master")),
             before);
}

void SubTablesPages::missingParts()
{
    const Customers program({QString()});
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    program.window->goToSubTableRequest(Prefix);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Impossibile creare la sotto tabella "
                                        "NSUBTABLEFORMAT_Ordini di !\n")});
    QVERIFY(program.details().isEmpty());
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("#Clienti->->Ordini"));
    QVERIFY(Window::lines(*program.window).isEmpty());
}

void SubTablesPages::addedFieldReachesLaterTables()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Bianchi"), QStringLiteral("Rossi")});
    program.openOrders(0);
    DesignerPage::openAdd(*program.window);
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leTableName")->text(),
             QStringLiteral("#Clienti->Bianchi->Ordini"));
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Costo totale"));
    DesignerPage::accept(*program.window);
    QCOMPARE(program.configurations(),
             Configured + QStringList{QStringLiteral("Clienti_Ordini_XSBCONFX_3|"
                                                     "NMONEYFORMAT_Costo_totale|text")});
    const QString first = Prefix + QStringLiteral("Bianchi");
    QCOMPARE(program.statement(first),
             Detail.arg(first) + QStringLiteral(", NMONEYFORMAT_Costo_totale text)"));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("#Clienti->Bianchi->Ordini"));
    // A table made later has it from the start; one made before would not get it.
    program.openOrders(1);
    const QString second = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(second),
             Detail.arg(second) + QStringLiteral(",NMONEYFORMAT_Costo_totale text)"));
}

void SubTablesPages::addedFieldsOfOneStep()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    program.openOrders(0);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Costo"));
    DesignerPage::nextRow(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("BOOL"), QStringLiteral("Pagato"));
    const quint32 before = program.steps();
    DesignerPage::accept(*program.window);
    QCOMPARE(program.steps(), before + 1);
    QCOMPARE(program.configurations().mid(3),
             (QStringList{QStringLiteral("Clienti_Ordini_XSBCONFX_3|NMONEYFORMAT_Costo|text"),
                          QStringLiteral("Clienti_Ordini_XSBCONFX_4|NBOOLFORMAT_Pagato|text")}));
}

void SubTablesPages::addedFieldToATableOfAnOlderFile()
{
    // A detail table that no configuration is known of.
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    program.openOrders(0);
    program.here.sql(Database, {QStringLiteral("DELETE FROM subtablesconfigs")});
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Costo"));
    DesignerPage::accept(*program.window);
    QCOMPARE(program.configurations(),
             QStringList{QStringLiteral("Clienti_Ordini_XSBCONFX_0|NMONEYFORMAT_Costo|text")});
}

void SubTablesPages::noSubTableInASubTable()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    program.openOrders(0);
    DesignerPage::openAdd(*program.window);
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    for (const newTableElement *const row : DesignerPage::rows(*program.window)) {
        QCOMPARE(Window::get<QComboBox>(*row, "cbType")->findText(QStringLiteral("SUBTABLE")), -1);
    }
    // A new table's first row offers it wherever the page was opened, the next ones do not.
    DesignerPage::openNew(*program.window);
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    const auto offers = [](const newTableElement &row) {
        return Window::get<QComboBox>(row, "cbType")->findText(QStringLiteral("SUBTABLE")) >= 0;
    };
    QVERIFY(offers(*DesignerPage::rows(*program.window).first()));
    QVERIFY(!offers(*DesignerPage::rows(*program.window).last()));
}

void SubTablesPages::takenNumberIsRefused()
{
    // A row that was left out has made a gap, so the count meets a number that is in use.
    const Customers program({QStringLiteral("Rossi")},
                            {QStringLiteral("STRING Articolo"), QStringLiteral("STRING "),
                             QStringLiteral("DATE Data")});
    const QStringList configured = program.configurations();
    QCOMPARE(configured.last(), QStringLiteral("Clienti_Ordini_XSBCONFX_3|NDATEFORMAT_Data|text"));
    program.openOrders(0);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Costo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: L'identificativo 'Clienti_Ordini_XSBCONFX_3' "
                                        "esiste già nella tabella subtablesconfigs.\n")});
    // The table itself has the field all the same.
    QCOMPARE(program.configurations(), configured);
    const QString table = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(table),
             Detail.arg(table) + QStringLiteral(", NMONEYFORMAT_Costo text)"));
    QVERIFY(!DesignerPage::isOpen(*program.window));
}

void SubTablesPages::equalFieldIsRefused_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("the same label") << "Ordini";
    QTest::newRow("another letter case") << "ORDINI";
}

void SubTablesPages::equalFieldIsRefused()
{
    // Both fields of a record would open one table.
    QFETCH(QString, label);
    const Customers program({QStringLiteral("Rossi")});
    DesignerPage::openAdd(*program.window);
    DesignerPage::addSubTable(*program.window, label, {QStringLiteral("STRING Altro")});
    const QByteArray before = program.here.read(Database);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{AddRefused.arg(label, QStringLiteral("Clienti")) + Taken.arg(label)});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void SubTablesPages::addedLabelInOtherLetters()
{
    // To SQLite both are one name, so the second has a number in every table.
    const ModalResponder responder;
    const Customers program({QStringLiteral("Bianchi"), QStringLiteral("Rossi")});
    program.openOrders(0);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("ARTICOLO"));
    DesignerPage::accept(*program.window);
    const QString first = Prefix + QStringLiteral("Bianchi");
    QCOMPARE(program.statement(first),
             Detail.arg(first) + QStringLiteral(", NSTRINGFORMAT_ARTICOLO_XMLTYX_2 text)"));
    program.openOrders(1);
    const QString second = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(second),
             Detail.arg(second) + QStringLiteral(",NSTRINGFORMAT_ARTICOLO_XMLTYX_2 text)"));
}

void SubTablesPages::designedLabelsInOtherLetters()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")},
                            {QStringLiteral("STRING Nota"), QStringLiteral("STRING nota"),
                             QStringLiteral("STRING Nota")});
    program.openOrders(0);
    const QString table = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(table),
             QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                            "NLONGSTRINGFORMAT_UserPath ,NSTRINGFORMAT_Nota text,"
                            "NSTRINGFORMAT_nota_XMLTYX_2 text,NSTRINGFORMAT_Nota_XMLTYX_3 text)")
                 .arg(table));
}

void SubTablesPages::addedLinkThatIsThere_data()
{
    QTest::addColumn<bool>("there");
    QTest::newRow("twice on the page") << false;
    QTest::newRow("in the table already") << true;
}

void SubTablesPages::addedLinkThatIsThere()
{
    QFETCH(bool, there);
    ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    program.openOrders(0);
    const QString table = Prefix + QStringLiteral("Rossi");
    // Only tables that name the current one in a column can be linked to.
    program.sql(
        QStringLiteral("ALTER TABLE altri ADD COLUMN X%1_XDTX_NSTRINGFORMAT_a Integer").arg(table));
    const auto addLink = [&program] {
        DesignerPage::fillLink(DesignerPage::nextRow(*program.window), QStringLiteral("altri"));
    };
    DesignerPage::openAdd(*program.window);
    addLink();
    if (there) {
        DesignerPage::accept(*program.window);
        DesignerPage::openAdd(*program.window);
    }
    addLink();
    const QByteArray before = program.here.read(Database);
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{AddRefused.arg(QStringLiteral("altri"),
                                        QStringLiteral("#Clienti->Rossi->Ordini")) +
                         Taken.arg(QStringLiteral("altri"))});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void SubTablesPages::fieldsOfAnAffectedFile()
{
    // Written down before such fields were refused.
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    const QString row = QStringLiteral("INSERT INTO subtablesconfigs VALUES (%1,"
                                       "'Clienti_Ordini_XSBCONFX_%1','%2','text')");
    program.sql(row.arg(QStringLiteral("4"), QStringLiteral("NLINKFORMAT_altri")));
    program.sql(row.arg(QStringLiteral("5"), QStringLiteral("NSTRINGFORMAT_articolo")));
    program.sql(row.arg(QStringLiteral("6"), QStringLiteral("NLINKFORMAT_altri")));
    program.openOrders(0);
    const QString table = Prefix + QStringLiteral("Rossi");
    QCOMPARE(program.statement(table),
             Detail.arg(table) +
                 QStringLiteral(",NLINKFORMAT_altri text,NSTRINGFORMAT_articolo_XMLTYX_2 text)"));
}

void SubTablesPages::titlesThatOnlyDifferUnseen()
{
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi"), QStringLiteral("Ros\u200bsi")});
    program.openOrders(0);
    program.addOrder(QStringLiteral("Lampada"));
    program.openOrders(1);
    QCOMPARE(program.details(), QStringList{Prefix + QStringLiteral("Rossi")});
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("Lampada"));
}

void SubTablesPages::tableOfAnotherProgram_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("a name with an apostrophe") << "D'Amico";
    QTest::newRow("a name with a soft hyphen") << QStringLiteral("co\u00adop");
}

void SubTablesPages::tableOfAnotherProgram()
{
    // The records that are there are shown, instead of a new table without any.
    QFETCH(QString, title);
    const ModalResponder responder;
    const Customers program({title});
    const QString table = QLatin1Char('"') + Prefix + title + QLatin1Char('"');
    program.sql(QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                               "NLONGSTRINGFORMAT_UserPath,NSTRINGFORMAT_Articolo text)")
                    .arg(table));
    program.sql(QStringLiteral("INSERT INTO %1 VALUES (1,'','Lampada')").arg(table));
    program.openOrders(0);
    QCOMPARE(program.details(), QStringList{Prefix + title});
    QCOMPARE(Window::shownText(*program.window, QStringLiteral("Articolo")),
             QStringLiteral("Lampada"));
}

void SubTablesPages::newTableIsListed_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("no button while hidden tables are not shown") << false;
    QTest::newRow("a button while they are") << true;
}

void SubTablesPages::newTableIsListed()
{
    QFETCH(bool, shown);
    const ModalResponder responder;
    const Customers program({QStringLiteral("Rossi")});
    if (shown) {
        program.window->administratorModeEnabled(true);
        Window::action(*program.window, "actionShow_Hidden_Tables")->trigger();
    }
    QStringList expected = Window::tables(*program.window);
    const QString table = QStringLiteral("#Clienti->Rossi->Ordini");
    if (shown) {
        expected.append(table);
    }
    program.openOrders(0);
    QCOMPARE(Window::tables(*program.window), expected);
    // Opened again, it stays the one.
    program.openOrders(0);
    QCOMPARE(Window::tables(*program.window), expected);
    // Its fields can be copied.
    DesignerPage::openNew(*program.window);
    auto *const sources =
        Window::get<QComboBox>(*DesignerPage::rows(*program.window).first(), "cbExistList");
    QCOMPARE(sources->itemText(sources->count() - 1), table);
}

void SubTablesPages::failedTableIsNotListed()
{
    const Customers program({QStringLiteral("Rossi")});
    program.window->administratorModeEnabled(true);
    Window::action(*program.window, "actionShow_Hidden_Tables")->trigger();
    const QStringList expected = Window::tables(*program.window);
    program.sql(QStringLiteral("UPDATE subtablesconfigs SET NSTRINGFORMAT_subConfigFieldName = "
                               "'NSTRINGFORMAT_l''ora' WHERE RINTEGERFORMAT_Id = 2"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    program.openOrders(0);
    QCOMPARE(responder.boxes().size(), 1);
    QVERIFY(program.details().isEmpty());
    QCOMPARE(Window::tables(*program.window), expected);
}

QTEST_MAIN(SubTablesPages)
#include "ui_subtables.moc"
