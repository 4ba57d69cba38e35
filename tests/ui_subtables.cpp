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
    void equalFieldsAreConfiguredOnce();
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

void SubTablesPages::equalFieldsAreConfiguredOnce()
{
    const Customers program({QStringLiteral("Rossi")});
    DesignerPage::openAdd(*program.window);
    DesignerPage::addSubTable(
        *program.window, Ordini,
        {QStringLiteral("STRING Altro"), QStringLiteral("DATE Data"), QStringLiteral("URL Sito")});
    ModalResponder responder;
    for (int i = 0; i < 3; ++i) {
        responder.answer(QMessageBox::Ok);
    }
    DesignerPage::accept(*program.window);
    const QString message = QStringLiteral("ERRORE: L'identificativo '%1' esiste già nella "
                                           "tabella subtablesconfigs.\n");
    QCOMPARE(responder.takeTexts(),
             (QStringList{message.arg(QStringLiteral("Clienti_Ordini")),
                          message.arg(QStringLiteral("Clienti_Ordini_XSBCONFX_1")),
                          message.arg(QStringLiteral("Clienti_Ordini_XSBCONFX_2"))}));
    QCOMPARE(program.configurations(),
             Configured +
                 QStringList{QStringLiteral("Clienti_Ordini_XSBCONFX_3|NURLFORMAT_Sito|text")});
    QVERIFY(program.statement(QStringLiteral("Clienti"))
                .endsWith(QStringLiteral(", NSUBTABLEFORMAT_Ordini_XMLTYX_2 text)")));
}

QTEST_MAIN(SubTablesPages)
#include "ui_subtables.moc"
