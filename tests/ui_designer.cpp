// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The page where tables are designed and fields are added: what it asks, writes and refuses.
#include "model/names.h"
#include "model/sqlnames.h"
#include "tests/support/DesignerPage.h"

#include <QApplication>
#include <QImage>
#include <QRandomGenerator>
#include <QScrollArea>
#include <QTimer>

namespace
{

const QString Database = QStringLiteral("books.db");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");
const QString CreateRefused = QStringLiteral("ERRORE: Impossibile creare la tabella %1!\n");
const QString AddRefused =
    QStringLiteral("ERRORE: Impossibile aggiungere il campo %1 alla tabella %2!\n");

const QStringList Library = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NDATEFORMAT_Nascita text)"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Zeno'),(2,'Atlante')"),
};

// What the database holds: every statement, and the rows of the program's own tables.
QStringList contents(const EntryPage::Started &program)
{
    return program.here.column(Database, QStringLiteral("SELECT sql FROM sqlite_master ORDER BY "
                                                        "rowid")) +
           program.rows(QStringLiteral("settings")) +
           program.rows(QStringLiteral("subtablesconfigs"));
}

QString statement(const EntryPage::Started &program, const QString &table)
{
    return DesignerPage::statement(program.here, Database, table);
}

// The program's own statement, with these columns after the Id.
QString created(const QString &table, const QString &columns)
{
    return QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,%2)")
        .arg(table, columns);
}

QStringList settings(const EntryPage::Started &program)
{
    return program.here.column(Database, QStringLiteral("SELECT RINTEGERFORMAT_Id||'|'||"
                                                        "RSTRINGFORMAT_tableName||'|'||"
                                                        "RSTRINGFORMAT_iconPath FROM settings"));
}

QStringList items(const QComboBox &box)
{
    QStringList texts;
    for (int i = 0; i < box.count(); ++i) {
        texts.append(box.itemText(i));
    }
    return texts;
}

QStringList items(const newTableElement &row, const char *box)
{
    return items(*Window::get<QComboBox>(row, box));
}

// What was typed on the page, row by row.
QStringList typed(const Tavenor &window)
{
    QStringList texts = {Window::get<QLineEdit>(window, "leTableName")->text(),
                         Window::get<QLineEdit>(window, "leIconData")->text()};
    for (const newTableElement *const row : DesignerPage::rows(window)) {
        texts.append(row->columnDefinition().first);
        for (const ColumnDefinition &column : row->subTableColumns()) {
            texts.append(column.first);
        }
    }
    return texts;
}

void compareWarning(const ModalResponder::Box &box, const QString &text)
{
    QCOMPARE(box.text, text);
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

void showHidden(Tavenor &window)
{
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
}

} // namespace

using EntryPage::Started;

class Designer : public QObject
{
    Q_OBJECT

private slots:
    void opensByKey_data();
    void opensByKey();
    void opensFromTheTableList();
    void withoutDatabase();
    void withoutTable();
    void startOfANewTable();
    void startOfAddedFields();
    void eachOpeningStartsAnew();
    void openingAsksForTypedValues();

    void everyFormat();
    void requiredFields();
    void folderColumn_data();
    void folderColumn();
    void equalLabelsGetNumbers();
    void blanksBecomeLines();
    void subTableIsConfigured();
    void emptySubRowTakesANumber();
    void linkToHiddenTable();
    void linkTargets();
    void linkTargetsWithoutCurrentTable();
    void linkTargetsOfOneOpening();
    void linkToAnyTable_data();
    void linkToAnyTable();
    void copiedField();
    void copiedFieldOfASubTable();
    void creationIsOneStep();
    void settingsIdIsChosen_data();
    void settingsIdIsChosen();

    void buttonAppears();
    void currentRecordIsShownAgain();
    void firstTableOfANewDatabase();
    void firstTableOfAReopenedDatabase();
    void hiddenTable_data();
    void hiddenTable();
    void typedHiddenMark();

    void iconIsCopiedOnce();
    void iconDialogCancelled();
    void typedIconPath();

    void refusedNewTable_data();
    void refusedNewTable();
    void refusedFields_data();
    void refusedFields();
    void unnamedSubTable_data();
    void unnamedSubTable();
    void emptySubTableIsSkipped();
    void takenNames_data();
    void takenNames();
    void lostLinkIsRefused_data();
    void lostLinkIsRefused();
    void copiedFieldOfAnotherProgram();
    void tableOfAnotherProgram();
    void unusedSubRowsAreNotTested();
    void refusedRowGetsTheFocus();
    void correctedAfterRefusal();
    void twoLinksToOneTable();
    void failedCreationKeepsConfigurations();
    void settingsRowExists();

    void existingNameAddsFields();
    void addedFields();
    void addedFieldsAreOneStep();
    void addedFieldGetsANumber();
    void addedSubTable();
    void addedToTheCurrentTable();
    void addedToAReservedTable();
    void nothingToAdd();
    void failedAdditionsGoOn();

    void rowsAreNumberedAndFocused();
    void returnAddsARow();
    void tabFollowsTheEye();
    void sixtyRows();
    void cancelled();
    void leftByOtherCommands_data();
    void leftByOtherCommands();
    void leftWithTheProgram();
    void whatIsTakenCanBeUsed();
};

void Designer::opensByKey_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::newRow("Ctrl+T makes a table") << true;
    QTest::newRow("Ctrl+Shift+T adds a field") << false;
}

void Designer::opensByKey()
{
    QFETCH(bool, isNew);
    Started program(Library);
    program.window->administratorModeEnabled(true);
    QVERIFY(program.show());
    QTest::keyClick(program.window.get(), Qt::Key_T,
                    isNew ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leTableName")->isEnabled(), isNew);
}

void Designer::opensFromTheTableList()
{
    const Started program(Library);
    program.window->administratorModeEnabled(true);
    QTimer::singleShot(0, program.window.get(), [] {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        for (QAction *const action : menu->actions()) {
            if (action->text() == QStringLiteral("Aggiungi Campo")) {
                action->trigger();
            }
        }
        menu->close();
    });
    auto *const list = Window::get<QWidget>(*program.window, "listFrame");
    emit list->customContextMenuRequested(QPoint(5, 5));
    QVERIFY(DesignerPage::isOpen(*program.window));
}

void Designer::withoutDatabase()
{
    const Workspace here;
    Tavenor window;
    ModalResponder responder;
    for (QAction *const action :
         {Window::action(window, "actionTable"), Window::action(window, "actionAdd_Field")}) {
        responder.answer(QMessageBox::Ok);
        action->trigger();
        QCOMPARE(responder.takeTexts(), QStringList{NoTable});
        QVERIFY(!DesignerPage::isOpen(window));
        QVERIFY(DesignerPage::rows(window).isEmpty());
    }
    QVERIFY(!here.exists(QStringLiteral("DB_DATA")));
}

void Designer::withoutTable()
{
    // A new database holds none, and its first one has to come from somewhere.
    const Started program({});
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::openAdd(*program.window);
    compareWarning(responder.boxes().first(), NoTable);
    QVERIFY(!DesignerPage::isOpen(*program.window));
    DesignerPage::openNew(*program.window);
    QVERIFY(DesignerPage::isOpen(*program.window));
}

void Designer::startOfANewTable()
{
    const Started program(Library);
    const Tavenor &window = *program.window;
    DesignerPage::openAdd(*program.window);
    DesignerPage::openNew(*program.window);
    for (const char *const name : {"leTableName", "leIconData"}) {
        QVERIFY(Window::get<QLineEdit>(window, name)->text().isEmpty());
        QVERIFY(Window::get<QLineEdit>(window, name)->isEnabled());
    }
    QVERIFY(!Window::get<QCheckBox>(window, "cbHiddenTable")->isChecked());
    QVERIFY(!Window::get<QCheckBox>(window, "cbHiddenTable")->isHidden());
    QVERIFY(!Window::get<QWidget>(window, "pbIconImage")->isHidden());
    QCOMPARE(Window::get<QLabel>(window, "lbDesigner")->text(), QStringLiteral("Crea Tabella"));
    QCOMPARE(Window::get<QLabel>(window, "lbTableName")->text(), QStringLiteral("Table Name"));
    QCOMPARE(Window::get<QLabel>(window, "lbIcon")->text(), QStringLiteral("Icon"));
    QCOMPARE(Window::get<QCheckBox>(window, "cbHiddenTable")->text(),
             QStringLiteral("Hidden Table"));
    QCOMPARE(DesignerPage::rows(window).size(), 1);
    const newTableElement &row = *DesignerPage::rows(window).first();
    QCOMPARE(items(row, "cbExistList"),
             (QStringList{QStringLiteral("libri"), QStringLiteral("autori")}));
    QCOMPARE(items(row, "cbExistField"), QStringList{QStringLiteral("Titolo")});
    QVERIFY(items(row, "cbType").contains(QStringLiteral("SUBTABLE")));
}

void Designer::startOfAddedFields()
{
    const Started program(Library + QStringList{QStringLiteral(
                                        "CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer "
                                        "primary key,RSTRINGFORMAT_Nota text)")});
    const Tavenor &window = *program.window;
    program.window->changeTable(QStringLiteral("HIDDENTABLE_note"));
    DesignerPage::openNew(*program.window);
    Window::get<QCheckBox>(window, "cbHiddenTable")->setChecked(true);
    DesignerPage::openAdd(*program.window);
    QCOMPARE(Window::get<QLineEdit>(window, "leTableName")->text(), QStringLiteral("#note"));
    for (const char *const name : {"leTableName", "leIconData"}) {
        QVERIFY(!Window::get<QLineEdit>(window, name)->isEnabled());
    }
    QVERIFY(!Window::get<QCheckBox>(window, "cbHiddenTable")->isChecked());
    QVERIFY(Window::get<QCheckBox>(window, "cbHiddenTable")->isHidden());
    QVERIFY(Window::get<QWidget>(window, "pbIconImage")->isHidden());
    QCOMPARE(Window::get<QLabel>(window, "lbDesigner")->text(), QStringLiteral("Aggiungi Campo"));
    QCOMPARE(DesignerPage::rows(window).size(), 1);
}

void Designer::eachOpeningStartsAnew()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Via"));
    DesignerPage::openNew(*program.window);
    QCOMPARE(typed(*program.window), (QStringList{QString(), QString(), QString(),
                                                  QStringLiteral("NLONGSTRINGFORMAT_"
                                                                 "UserPath")}));
}

void Designer::openingAsksForTypedValues()
{
    // Where a command could be given at all, nothing typed into a record gets lost.
    const Started program(Library);
    program.window->administratorModeEnabled(true);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Titolo"), QStringLiteral("Cosmicomiche"));
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    program.window->newTable();
    QVERIFY(EntryPage::isOpen(*program.window));
    responder.answer(QMessageBox::Yes);
    program.window->newTable();
    QVERIFY(DesignerPage::isOpen(*program.window));
    QVERIFY(Window::get<QWidget>(*program.window, "listFrame")->isEnabled());
    QVERIFY(program.window->close());
}

void Designer::everyFormat()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("tutto"));
    for (const char *const type :
         {"STRING", "DATE", "INTEGER", "REAL", "MONEY", "BOOL", "MAIL", "URL", "IMAGE", "PDF"}) {
        DesignerPage::add(*program.window, QString::fromLatin1(type),
                          QStringLiteral("Campo ") + QString::fromLatin1(type).toLower());
    }
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce")});
    DesignerPage::fillCopied(DesignerPage::nextRow(*program.window), QStringLiteral("autori"),
                             QStringLiteral("Nascita"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("tutto")),
             created(QStringLiteral("tutto"),
                     QStringLiteral("NSTRINGFORMAT_Campo_string text,NDATEFORMAT_Campo_date text,"
                                    "NINTEGERFORMAT_Campo_integer text,NREALFORMAT_Campo_real text,"
                                    "NMONEYFORMAT_Campo_money text,NBOOLFORMAT_Campo_bool text,"
                                    "NMAILFORMAT_Campo_mail text,NURLFORMAT_Campo_url text,"
                                    "NLONGSTRINGFORMAT_UserPath ,NIMAGEFORMAT_Campo_image text,"
                                    "NPDFFORMAT_Campo_pdf text,NSUBTABLEFORMAT_Voci text,"
                                    "Xautori_XDTX_NDATEFORMAT_Nascita Integer")));
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(settings(program), QStringList{QStringLiteral("1|tutto|")});
}

void Designer::requiredFields()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"), true);
    DesignerPage::add(*program.window, QStringLiteral("DATE"), QStringLiteral("Nato il"), true);
    DesignerPage::add(*program.window, QStringLiteral("IMAGE"), QStringLiteral("Foto"), true);
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("soci")),
             created(QStringLiteral("soci"),
                     QStringLiteral("RSTRINGFORMAT_Nome text,RDATEFORMAT_Nato_il text,"
                                    "NLONGSTRINGFORMAT_UserPath ,RIMAGEFORMAT_Foto text")));
}

void Designer::folderColumn_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QString>("columns");
    QTest::newRow("last without attachments")
        << QStringList{"STRING", "DATE"}
        << "NSTRINGFORMAT_a text,NDATEFORMAT_a text,NLONGSTRINGFORMAT_UserPath ";
    QTest::newRow("before the picture")
        << QStringList{"DATE", "IMAGE"}
        << "NDATEFORMAT_a text,NLONGSTRINGFORMAT_UserPath ,NIMAGEFORMAT_a text";
    QTest::newRow("before the PDF, once")
        << QStringList{"DATE", "PDF", "IMAGE"}
        << "NDATEFORMAT_a text,NLONGSTRINGFORMAT_UserPath ,NPDFFORMAT_a text,NIMAGEFORMAT_a text";
    QTest::newRow("first") << QStringList{"IMAGE"}
                           << "NLONGSTRINGFORMAT_UserPath ,NIMAGEFORMAT_a text";
}

void Designer::folderColumn()
{
    QFETCH(QStringList, types);
    QFETCH(QString, columns);
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("t"));
    for (const QString &type : types) {
        DesignerPage::add(*program.window, type, QStringLiteral("a"));
    }
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("t")), created(QStringLiteral("t"), columns));
}

void Designer::equalLabelsGetNumbers()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("t"));
    for (int i = 0; i < 3; ++i) {
        DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    }
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("t")),
             created(QStringLiteral("t"),
                     QStringLiteral("NSTRINGFORMAT_Nome text,NSTRINGFORMAT_Nome_XMLTYX_2 text,"
                                    "NSTRINGFORMAT_Nome_XMLTYX_3 text,"
                                    "NLONGSTRINGFORMAT_UserPath ")));
    // Which people see without the mark.
    program.window->changeTable(QStringLiteral("t"));
    EntryPage::openNew(*program.window);
    QCOMPARE(
        EntryPage::labels(*program.window),
        (QStringList{QStringLiteral("Nome"), QStringLiteral("Nome2"), QStringLiteral("Nome3")}));
}

void Designer::blanksBecomeLines()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("I miei  libri"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral(" Data di "));
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("I_miei__libri")),
             created(QStringLiteral("I_miei__libri"),
                     QStringLiteral("NSTRINGFORMAT__Data_di_ text,NLONGSTRINGFORMAT_UserPath ")));
    QCOMPARE(settings(program), QStringList{QStringLiteral("1|I_miei__libri|")});
}

void Designer::subTableIsConfigured()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("Clienti"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"), true);
    DesignerPage::addSubTable(*program.window, QStringLiteral("Ordini"),
                              {QStringLiteral("STRING Articolo"), QStringLiteral("DATE Data di")});
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("Clienti")),
             created(QStringLiteral("Clienti"),
                     QStringLiteral("RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Ordini text,"
                                    "NLONGSTRINGFORMAT_UserPath ")));
    QCOMPARE(program.rows(QStringLiteral("subtablesconfigs")),
             (QStringList{QStringLiteral("integer:1|text:'Clienti_Ordini'|"
                                         "text:'NLONGSTRINGFORMAT_UserPath'|text:''"),
                          QStringLiteral("integer:2|text:'Clienti_Ordini_XSBCONFX_1'|"
                                         "text:'NSTRINGFORMAT_Articolo'|text:'text'"),
                          QStringLiteral("integer:3|text:'Clienti_Ordini_XSBCONFX_2'|"
                                         "text:'NDATEFORMAT_Data_di'|text:'text'")}));
}

void Designer::emptySubRowTakesANumber()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("Clienti"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Ordini"),
                              {QStringLiteral("STRING Articolo"), QStringLiteral("DATE "),
                               QStringLiteral("MONEY Costo")});
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(DesignerPage::configurations(program.here, Database),
             (QStringList{QStringLiteral("Clienti_Ordini|NLONGSTRINGFORMAT_UserPath|"),
                          QStringLiteral("Clienti_Ordini_XSBCONFX_1|NSTRINGFORMAT_Articolo|text"),
                          QStringLiteral("Clienti_Ordini_XSBCONFX_3|NMONEYFORMAT_Costo|text")}));
}

void Designer::linkToHiddenTable()
{
    const Started program({QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id "
                                          "integer primary key,RSTRINGFORMAT_Nota text)"),
                           QStringLiteral("INSERT INTO HIDDENTABLE_note VALUES (4,'Spesa')")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("libri"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Titolo"));
    DesignerPage::fillLink(DesignerPage::nextRow(*program.window), QStringLiteral("#note"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("libri")),
             created(QStringLiteral("libri"),
                     QStringLiteral("NSTRINGFORMAT_Titolo text,NLINKFORMAT_＃note text,"
                                    "NLONGSTRINGFORMAT_UserPath ")));
    // The link finds its table.
    program.window->changeTable(QStringLiteral("libri"));
    EntryPage::openNew(*program.window);
    QCOMPARE(EntryPage::choices(*program.window, QStringLiteral("＃note")).last(),
             QStringLiteral("4 Spesa"));
}

void Designer::linkTargets()
{
    // While a table is current, only those that name it in a column are offered.
    const Started program(Library +
                          QStringList{QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id "
                                                     "integer primary key,"
                                                     "Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer)"),
                                      QStringLiteral("CREATE TABLE HIDDENTABLE_elenco "
                                                     "(RINTEGERFORMAT_Id integer primary key,"
                                                     "NLINKFORMAT_libri text)"),
                                      QStringLiteral("CREATE TABLE voci (RINTEGERFORMAT_Id "
                                                     "integer primary key,NLINKFORMAT_Libri)")});
    const QStringList expected = {QString(), QStringLiteral("prestiti"), QStringLiteral("#elenco")};
    DesignerPage::openNew(*program.window);
    QCOMPARE(items(*DesignerPage::rows(*program.window).first(), "cbExistList2"), expected);
    DesignerPage::openAdd(*program.window);
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    QCOMPARE(items(*DesignerPage::rows(*program.window).last(), "cbExistList2"), expected);
}

void Designer::linkTargetsWithoutCurrentTable()
{
    const Started program({QStringLiteral("CREATE TABLE HIDDENTABLE_a (x)"),
                           QStringLiteral("CREATE TABLE HIDDENTABLE_b (x)")});
    showHidden(*program.window);
    DesignerPage::openNew(*program.window);
    const newTableElement &row = *DesignerPage::rows(*program.window).first();
    QCOMPARE(items(row, "cbExistList2"),
             (QStringList{QString(), QStringLiteral("#a"), QStringLiteral("#b")}));
    QCOMPARE(items(row, "cbExistList"), (QStringList{QStringLiteral("#a"), QStringLiteral("#b")}));
}

void Designer::linkTargetsOfOneOpening()
{
    // The rows of a page offer what was found when it was opened.
    const Started program(
        Library + QStringList{QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id "
                                             "integer primary key,NLINKFORMAT_libri text)")});
    const QStringList expected = {QString(), QStringLiteral("prestiti")};
    DesignerPage::openNew(*program.window);
    program.sql(QStringLiteral("ALTER TABLE autori ADD COLUMN NLINKFORMAT_libri text"));
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    QCOMPARE(items(*DesignerPage::rows(*program.window).last(), "cbExistList2"), expected);
    DesignerPage::openNew(*program.window);
    QCOMPARE(items(*DesignerPage::rows(*program.window).first(), "cbExistList2"),
             (QStringList{QString(), QStringLiteral("autori"), QStringLiteral("prestiti")}));
}

void Designer::linkToAnyTable_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("label");
    QTest::newRow("a name that holds the end of a format") << "aFORMAT_b"
                                                           << "aFORMAT_b";
    QTest::newRow("a number sign inside the name") << "CHIDDENTABLE_"
                                                   << "C＃";
    QTest::newRow("a full-width sign that was typed") << "l＇arte"
                                                      << "l＇arte";
    QTest::newRow("a word of SQL") << "order"
                                   << "order";
    QTest::newRow("the details of a hidden table, with signs in the title")
        << "HIDDENTABLE_HIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_＃1－＞2"
        << "＃＃a－＞＃1－＞2－＞f";
}

void Designer::linkToAnyTable()
{
    QFETCH(QString, table);
    QFETCH(QString, label);
    const Started program({QStringLiteral("CREATE TABLE \"%1\" (RINTEGERFORMAT_Id integer primary "
                                          "key,RSTRINGFORMAT_Nota text)")
                               .arg(table),
                           QStringLiteral("INSERT INTO \"%1\" VALUES (4,'Spesa')").arg(table)});
    // Whatever table the window has chosen, the new one shall lead to this.
    program.window->changeTable(QString());
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("libri"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Titolo"));
    DesignerPage::fillLink(DesignerPage::nextRow(*program.window), Names::tableDisplayName(table));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("libri")),
             created(QStringLiteral("libri"),
                     QStringLiteral("NSTRINGFORMAT_Titolo text,NLINKFORMAT_%1 text,"
                                    "NLONGSTRINGFORMAT_UserPath ")
                         .arg(label)));
    program.window->changeTable(QStringLiteral("libri"));
    EntryPage::openNew(*program.window);
    const auto *const link = EntryPage::editors(*program.window).at(1);
    QCOMPARE(items(*Window::get<QComboBox>(*link, "cboxData")).last(), QStringLiteral("4 Spesa"));
}

void Designer::copiedField()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("prestiti"));
    const newTableElement &row = DesignerPage::nextRow(*program.window);
    DesignerPage::fillCopied(row, QStringLiteral("autori"), QStringLiteral("Nome"));
    QCOMPARE(items(row, "cbExistField"),
             (QStringList{QStringLiteral("Nome"), QStringLiteral("Nascita")}));
    Window::get<QComboBox>(row, "cbExistList")->setCurrentText(QStringLiteral("libri"));
    QCOMPARE(items(row, "cbExistField"), QStringList{QStringLiteral("Titolo")});
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("prestiti")),
             created(QStringLiteral("prestiti"),
                     QStringLiteral("Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer,"
                                    "NLONGSTRINGFORMAT_UserPath ")));
}

void Designer::copiedFieldOfASubTable()
{
    const Started program(Library + QStringList{QStringLiteral(
                                        "CREATE TABLE soci (RINTEGERFORMAT_Id integer primary key,"
                                        "RSTRINGFORMAT_Tessera text,NSUBTABLEFORMAT_Voci text,"
                                        "Xautori_XDTX_RSTRINGFORMAT_Nome Integer)")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("Clienti"));
    const newTableElement &row =
        DesignerPage::addSubTable(*program.window, QStringLiteral("Ordini"),
                                  {QStringLiteral("STRING Articolo"), QStringLiteral("STRING ")});
    const newTableElement &sub = *row.subRows().last();
    QVERIFY(!items(sub, "cbType").contains(QStringLiteral("SUBTABLE")));
    DesignerPage::fillCopied(sub, QStringLiteral("soci"), QStringLiteral("Tessera"));
    QCOMPARE(items(sub, "cbExistField"), QStringList{QStringLiteral("Tessera")});
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(DesignerPage::configurations(program.here, Database).last(),
             QStringLiteral("Clienti_Ordini_XSBCONFX_2|Xsoci_XDTX_RSTRINGFORMAT_Tessera|Integer"));
}

void Designer::creationIsOneStep()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("Clienti"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Ordini"),
                              {QStringLiteral("STRING Articolo"), QStringLiteral("DATE Data")});
    const quint32 before = program.steps();
    DesignerPage::accept(*program.window);
    QCOMPARE(DesignerPage::configurations(program.here, Database).size(), 3);
    QCOMPARE(settings(program).size(), 1);
    QCOMPARE(program.steps(), before + 1);
}

void Designer::settingsIdIsChosen_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("largest");
    QTest::newRow("the tenth row") << 9 << 9;
    QTest::newRow("the 49th row, whose text would read as 1") << 48 << 48;
    QTest::newRow("after a larger Id") << 8 << 70;
}

void Designer::settingsIdIsChosen()
{
    QFETCH(int, rows);
    QFETCH(int, largest);
    QStringList statements = Library;
    statements.append(QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary "
                                     "key,RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath "
                                     "text)"));
    for (int id = largest - rows + 1; id <= largest; ++id) {
        statements.append(QStringLiteral("INSERT INTO settings VALUES (%1,'t%1','')").arg(id));
    }
    const Started program(statements);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(program.rows(QStringLiteral("settings")).last(),
             QStringLiteral("integer:%1|text:'soci'|text:''").arg(largest + 1));
}

void Designer::buttonAppears()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    DesignerPage::accept(*program.window);
    QCOMPARE(
        Window::tables(*program.window),
        (QStringList{QStringLiteral("libri"), QStringLiteral("autori"), QStringLiteral("soci")}));
    Window::pressTable(*program.window, QStringLiteral("soci"));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("soci"));
    // It is a table like all others from now on, for the designer too.
    DesignerPage::openNew(*program.window);
    QVERIFY(items(*DesignerPage::rows(*program.window).first(), "cbExistList")
                .contains(QStringLiteral("soci")));
}

void Designer::currentRecordIsShownAgain()
{
    const Started program(Library);
    Window::selectLine(*program.window, 1);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    DesignerPage::accept(*program.window);
    QCOMPARE(Window::get<QStackedWidget>(*program.window, "stPages")->currentIndex(), 2);
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{1});
    QCOMPARE(Window::markedTables(*program.window), QStringList{QStringLiteral("libri")});
}

void Designer::firstTableOfANewDatabase()
{
    // The list of a new file holds nothing, so the first table is not yet the current one.
    const Started program({});
    const ModalResponder responder;
    const QStringList names = {QStringLiteral("libri"), QStringLiteral("autori"),
                               QStringLiteral("soci")};
    for (const QString &name : names) {
        DesignerPage::openNew(*program.window);
        DesignerPage::typeName(*program.window, name);
        DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
        DesignerPage::accept(*program.window);
        QVERIFY(!DesignerPage::isOpen(*program.window));
        QCOMPARE(Window::tables(*program.window).last(), name);
        // The third name of the list becomes current when there is none.
        QCOMPARE(Window::markedTables(*program.window),
                 name == names.last() ? QStringList{name} : QStringList());
    }
    Window::pressTable(*program.window, QStringLiteral("libri"));
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Nome"), QStringLiteral("Zeno"));
    EntryPage::save(*program.window);
    QCOMPARE(Window::lines(*program.window), QStringList{QStringLiteral("Zeno")});
}

void Designer::firstTableOfAReopenedDatabase()
{
    // Here the list holds the three reserved tables already.
    Started program({});
    program.window.reset();
    program.window = std::make_unique<Tavenor>();
    const ModalResponder responder;
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("libri"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Titolo"));
    DesignerPage::accept(*program.window);
    QCOMPARE(Window::tables(*program.window), QStringList{QStringLiteral("libri")});
    QCOMPARE(Window::markedTables(*program.window), QStringList{QStringLiteral("libri")});
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("----"));
}

void Designer::hiddenTable_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("no button while hidden tables are not shown") << false;
    QTest::newRow("a button while they are") << true;
}

void Designer::hiddenTable()
{
    QFETCH(bool, shown);
    const Started program(Library);
    if (shown) {
        showHidden(*program.window);
    }
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("le note"));
    Window::get<QCheckBox>(*program.window, "cbHiddenTable")->setChecked(true);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nota"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(settings(program), QStringList{QStringLiteral("1|HIDDENTABLE_le_note|")});
    QCOMPARE(statement(program, QStringLiteral("HIDDENTABLE_le_note")),
             created(QStringLiteral("HIDDENTABLE_le_note"),
                     QStringLiteral("NSTRINGFORMAT_Nota text,NLONGSTRINGFORMAT_UserPath ")));
    QCOMPARE(Window::tables(*program.window).contains(QStringLiteral("#le_note")), shown);
}

void Designer::typedHiddenMark()
{
    // The button is there until the list is built again.
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("#note"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nota"));
    DesignerPage::accept(*program.window);
    QCOMPARE(settings(program), QStringList{QStringLiteral("1|HIDDENTABLE_note|")});
    QVERIFY(Window::tables(*program.window).contains(QStringLiteral("#note")));
    EntryPage::setAdvancedMode(*program.window, true);
    QVERIFY(!Window::tables(*program.window).contains(QStringLiteral("#note")));
}

void Designer::iconIsCopiedOnce()
{
    const Started program(Library);
    const QString choice = program.here.path(QStringLiteral("choice/blue.png"));
    program.here.write(QStringLiteral("choice/blue.png"), QByteArray());
    QImage blue(8, 8, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    QVERIFY(blue.save(choice));
    const QByteArray bytes = program.here.read(QStringLiteral("choice/blue.png"));

    ModalResponder responder;
    for (const QString &name : {QStringLiteral("soci"), QStringLiteral("monete")}) {
        DesignerPage::openNew(*program.window);
        DesignerPage::typeName(*program.window, name);
        responder.chooseFile(choice);
        Window::click(*program.window, "pbIconImage");
        QCOMPARE(Window::get<QLineEdit>(*program.window, "leIconData")->text(),
                 QStringLiteral("DB_DATA/blue.png"));
        QCOMPARE(program.here.read(QStringLiteral("DB_DATA/blue.png")), bytes);
        DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
        DesignerPage::accept(*program.window);
        // The second time another picture has taken the name; the first copy stays.
        program.here.write(QStringLiteral("choice/blue.png"), "changed");
    }
    QCOMPARE(settings(program), (QStringList{QStringLiteral("1|soci|DB_DATA/blue.png"),
                                             QStringLiteral("2|monete|DB_DATA/blue.png")}));
    const ModalResponder::FileDialog dialog = responder.fileDialogs().first();
    QCOMPARE(dialog.caption, QStringLiteral("Open File"));
    QCOMPARE(dialog.directory, QStringLiteral("/home"));
    QCOMPARE(dialog.nameFilters,
             QStringList{QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp *.tif)")});
    QVERIFY(!dialog.saving);
    const auto *const button =
        Window::get<QAbstractButton>(*Window::buttons(*program.window).last(), "pbList");
    QCOMPARE(button->icon().pixmap(8, 8).toImage().pixelColor(4, 4), QColor(Qt::blue));
}

void Designer::iconDialogCancelled()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    ModalResponder responder;
    responder.cancelFileDialog();
    Window::click(*program.window, "pbIconImage");
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leIconData")->text(),
             QStringLiteral("DB_DATA/"));
}

void Designer::typedIconPath()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    EntryPage::pasteInto(Window::get<QLineEdit>(*program.window, "leIconData"),
                         QStringLiteral("../l'icona.png"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(settings(program), QStringList{QStringLiteral("1|soci|../l'icona.png")});
    const auto *const button =
        Window::get<QAbstractButton>(*Window::buttons(*program.window).last(), "pbList");
    QVERIFY(button->icon().pixmap(8, 8).isNull());
}

void Designer::refusedNewTable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("message");
    const QString characters = QStringLiteral("Il nome '%1' contiene caratteri non ammessi: usare "
                                              "solo lettere, cifre e '_'.");
    const QString programs =
        QStringLiteral("Il nome '%1' contiene una parola riservata al programma.");
    const auto name = [](const char *row, const QString &name, const QString &reason) {
        QTest::newRow(row) << name << "STRING"
                           << "Nome" << CreateRefused.arg(name) + reason.arg(name);
    };
    const auto label = [](const char *row, const QString &type, const QString &label,
                          const QString &reason) {
        QTest::newRow(row) << "soci" << type << label
                           << CreateRefused.arg(QStringLiteral("soci")) + reason.arg(label);
    };
    QTest::newRow("no name") << ""
                             << "STRING"
                             << "Nome"
                             << "ERRORE: La Tabella è vuota!";
    name("a name with an apostrophe", QStringLiteral("l'arte"), characters);
    name("a name with a bracket", QStringLiteral("a(b)"), characters);
    name("a name with a digit in front", QStringLiteral("2 libri"),
         QStringLiteral("Il nome '%1' deve iniziare con una lettera."));
    name("a word of SQL", QStringLiteral("Order"),
         QStringLiteral("Il nome '%1' è una parola riservata."));
    name("a name that SQLite keeps", QStringLiteral("sqlite_stat1"),
         QStringLiteral("Il nome '%1' è una parola riservata."));
    name("an arrow", QStringLiteral("#libri->Zeno->Voci"), programs);
    name("a format's word in small letters", QStringLiteral("linkformat_"), programs);
    name("a hidden name with a format's word", QStringLiteral("#Vecchi subTableFormat"), programs);
    name("a reserved table", QStringLiteral("settings"), programs);
    name("a reserved table in other letters", QStringLiteral("Filters"), programs);
    name("a hidden reserved table", QStringLiteral("#SubTablesConfigs"), programs);
    name("a name that is too long", QString(101, QLatin1Char('a')),
         QStringLiteral("Il nome '%1' è troppo lungo."));
    QTest::newRow("an existing name in other letters")
        << "Libri"
        << "STRING"
        << "Nome"
        << "ERRORE: Il nome 'Libri' è già stato usato per una tabella.\n";
    QTest::newRow("a row without a label")
        << "soci"
        << "STRING"
        << ""
        << CreateRefused.arg(QStringLiteral("soci")) + QStringLiteral("Una riga non ha nome.");
    label("a label with an apostrophe", QStringLiteral("STRING"), QStringLiteral("L'età"),
          characters);
    label("a label with a mark", QStringLiteral("STRING"), QStringLiteral("a_XDTX_b"), programs);
    label("a label that names the key", QStringLiteral("STRING"), QStringLiteral("id"), programs);
    label("a label that names the folder", QStringLiteral("STRING"), QStringLiteral("UserPath"),
          programs);
    label("a label that is a format's word in small letters", QStringLiteral("STRING"),
          QStringLiteral("linkformat"), programs);
    label("a text that would be written as a number", QStringLiteral("STRING"),
          QStringLiteral("REALE"), programs);
    label("a real number that would be written as a whole one", QStringLiteral("REAL"),
          QStringLiteral("a INTEGER"), programs);
    label("a label that is too long", QStringLiteral("STRING"), QString(101, QChar(0xe8)),
          QStringLiteral("Il nome '%1' è troppo lungo."));
    label("a label of a sub-table", QStringLiteral("SUBTABLE"), QStringLiteral("a,b"), characters);
}

void Designer::refusedNewTable()
{
    QFETCH(QString, name);
    QFETCH(QString, type);
    QFETCH(QString, label);
    QFETCH(QString, message);
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, name);
    Window::get<QCheckBox>(*program.window, "cbHiddenTable")->setChecked(false);
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce")});
    DesignerPage::add(*program.window, type, label);
    const QByteArray before = program.here.read(Database);
    const QStringList page = typed(*program.window);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(responder.boxes().first(), message);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(typed(*program.window), page);
    QCOMPARE(program.here.read(Database), before);
}

void Designer::refusedFields_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("subLabel");
    QTest::addColumn<QString>("message");
    const QString reason = QStringLiteral("Il nome '%1' contiene caratteri non ammessi: usare "
                                          "solo lettere, cifre e '_'.");
    QTest::newRow("a bad label") << "L'età"
                                 << "Voce"
                                 << AddRefused.arg(QStringLiteral("L'età"),
                                                   QStringLiteral("libri")) +
                                        reason.arg(QStringLiteral("L'età"));
    QTest::newRow("a bad label in its sub-table")
        << "Età"
        << "L'ora"
        << AddRefused.arg(QStringLiteral("Età"), QStringLiteral("libri")) +
               reason.arg(QStringLiteral("L'ora"));
}

void Designer::refusedFields()
{
    QFETCH(QString, label);
    QFETCH(QString, subLabel);
    QFETCH(QString, message);
    const Started program(Library);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Buono"));
    DesignerPage::addSubTable(*program.window, label, {QStringLiteral("STRING ") + subLabel});
    const QByteArray before = program.here.read(Database);
    const QStringList page = typed(*program.window);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(responder.boxes().first(), message);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(typed(*program.window), page);
    QCOMPARE(program.here.read(Database), before);
}

void Designer::unnamedSubTable_data()
{
    QTest::addColumn<bool>("added");
    QTest::newRow("of a new table") << false;
    QTest::newRow("among added fields") << true;
}

void Designer::unnamedSubTable()
{
    // Its columns were filled in, so they are not dropped in silence.
    QFETCH(bool, added);
    const Started program(Library);
    if (added) {
        DesignerPage::openAdd(*program.window);
    } else {
        DesignerPage::openNew(*program.window);
        DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    }
    DesignerPage::addSubTable(*program.window, QString(),
                              {QStringLiteral("STRING "), QStringLiteral("STRING Voce")});
    const QByteArray before = program.here.read(Database);
    const QStringList page = typed(*program.window);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{(added ? AddRefused.arg(QString(), QStringLiteral("libri"))
                                : CreateRefused.arg(QStringLiteral("soci"))) +
                         QStringLiteral("Una riga non ha nome.")});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(typed(*program.window), page);
    QCOMPARE(program.here.read(Database), before);
}

void Designer::emptySubTableIsSkipped()
{
    const Started program(
        Library + QStringList{QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id "
                                             "integer primary key,NLINKFORMAT_libri text)")});
    DesignerPage::openAdd(*program.window);
    DesignerPage::addSubTable(*program.window, QString(),
                              {QStringLiteral("STRING "), QStringLiteral("DATE ")});
    // Columns out of sight, of a row that now leads nowhere, count for nothing.
    const newTableElement &row =
        DesignerPage::addSubTable(*program.window, QString(), {QStringLiteral("STRING Voce")});
    DesignerPage::fillLink(row, QString());
    const QByteArray before = program.here.read(Database);
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void Designer::takenNames_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("two sub-tables with the label that the page gives") << "Nuovo Nome"
                                                                       << "Nuovo Nome";
    QTest::newRow("two sub-tables in other letters") << "Voci"
                                                     << "VOCI";
    QTest::newRow("two sub-tables whose labels are cut alike") << "Voci FORMAT_a"
                                                               << "voci FORMAT_b";
    QTest::newRow("two links in one sub-table") << "Voci"
                                                << "";
}

void Designer::takenNames()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const Started program({QStringLiteral("CREATE TABLE HIDDENTABLE_note (x)")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    const newTableElement &row = DesignerPage::addSubTable(
        *program.window, first, {QStringLiteral("STRING Voce"), QStringLiteral("STRING Voce")});
    QString taken = second;
    if (second.isEmpty()) {
        taken = QStringLiteral("#note");
        DesignerPage::fillLink(*row.subRows().first(), taken);
        DesignerPage::fillLink(*row.subRows().last(), taken);
    } else {
        DesignerPage::addSubTable(*program.window, second, {QStringLiteral("STRING Voce")});
    }
    const QByteArray before = program.here.read(Database);
    const QStringList page = typed(*program.window);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{CreateRefused.arg(QStringLiteral("soci")) +
                         QStringLiteral("Il nome '%1' è già stato usato.").arg(taken)});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(typed(*program.window), page);
    QCOMPARE(program.here.read(Database), before);
}

void Designer::lostLinkIsRefused_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("reason");
    const QString programs =
        QStringLiteral("Il nome '%1' contiene una parola riservata al programma.");
    QTest::newRow("a name whose texts would be written as numbers")
        << "HIDDENTABLE_REALI" << programs;
    QTest::newRow("a name that would be shown as a sub-table") << "subtableformat_x" << programs;
    QTest::newRow("a name that would lead to a hidden table") << "＃note" << programs;
    QTest::newRow("a hidden name that would lead to a detail table")
        << "HIDDENTABLE_a－＞b－＞c" << programs;
    QTest::newRow("a name of another program")
        << "l'arte"
        << "Il nome '%1' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.";
    QTest::newRow("a name with a blank")
        << "le note"
        << "Il nome '%1' contiene caratteri non ammessi: usare solo lettere, cifre e '_'.";
}

void Designer::lostLinkIsRefused()
{
    QFETCH(QString, table);
    QFETCH(QString, reason);
    const QString shown = Names::tableDisplayName(table);
    const Started program({QStringLiteral("CREATE TABLE \"%1\" (x)").arg(table)});
    program.window->changeTable(QString());
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::fillLink(DesignerPage::nextRow(*program.window), shown);
    const QByteArray before = program.here.read(Database);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{CreateRefused.arg(QStringLiteral("soci")) + reason.arg(shown)});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void Designer::copiedFieldOfAnotherProgram()
{
    const Started program(Library +
                          QStringList{QStringLiteral("CREATE TABLE arte (RINTEGERFORMAT_Id integer "
                                                     "primary key,\"NSTRINGFORMAT_L'età\" text)")});
    DesignerPage::openAdd(*program.window);
    DesignerPage::fillCopied(DesignerPage::nextRow(*program.window), QStringLiteral("arte"),
                             QStringLiteral("L'età"));
    const QByteArray before = program.here.read(Database);
    const QString column = QStringLiteral("Xarte_XDTX_NSTRINGFORMAT_L'età");
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{AddRefused.arg(column, QStringLiteral("libri")) +
                         QStringLiteral("Il nome '%1' contiene caratteri non ammessi: usare solo "
                                        "lettere, cifre e '_'.")
                             .arg(column)});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void Designer::tableOfAnotherProgram()
{
    const QString table = QStringLiteral("l'arte");
    const Started program(Library +
                          QStringList{QStringLiteral("CREATE TABLE \"l'arte\" (RINTEGERFORMAT_Id "
                                                     "integer primary key,RSTRINGFORMAT_a text)")});
    program.window->changeTable(table);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    const QByteArray before = program.here.read(Database);
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{AddRefused.arg(QStringLiteral("Nome"), table) +
                         QStringLiteral("Il nome '%1' contiene caratteri non ammessi: usare solo "
                                        "lettere, cifre e '_'.")
                             .arg(table)});
    QCOMPARE(program.here.read(Database), before);
}

void Designer::unusedSubRowsAreNotTested()
{
    // A row that left SUBTABLE for LINK keeps them out of sight.
    const Started program({QStringLiteral("CREATE TABLE HIDDENTABLE_note (x)")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    const newTableElement &row = DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                                                           {QStringLiteral("STRING l'ora")});
    DesignerPage::fillLink(row, QStringLiteral("#note"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("soci")),
             created(QStringLiteral("soci"),
                     QStringLiteral("NLINKFORMAT_＃note text,NLONGSTRINGFORMAT_UserPath ")));
    QVERIFY(program.rows(QStringLiteral("subtablesconfigs")).isEmpty());
}

void Designer::refusedRowGetsTheFocus()
{
    Started program(Library);
    QVERIFY(program.show());
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    const newTableElement &row =
        DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                                  {QStringLiteral("STRING Voce"), QStringLiteral("STRING a-b")});
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(program.window->focusWidget(), DesignerPage::label(*row.subRows().last()));

    DesignerPage::typeName(*program.window, QStringLiteral("1"));
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(program.window->focusWidget(), Window::get<QWidget>(*program.window, "leTableName"));
}

void Designer::correctedAfterRefusal()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("Clienti"));
    const newTableElement &row = DesignerPage::addSubTable(*program.window, QStringLiteral("a'b"),
                                                           {QStringLiteral("STRING Voce")});
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    DesignerPage::fill(row, QStringLiteral("SUBTABLE"), QStringLiteral("Ordini"));
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    QCOMPARE(DesignerPage::configurations(program.here, Database),
             (QStringList{QStringLiteral("Clienti_Ordini|NLONGSTRINGFORMAT_UserPath|"),
                          QStringLiteral("Clienti_Ordini_XSBCONFX_1|NSTRINGFORMAT_Voce|text")}));
}

void Designer::twoLinksToOneTable()
{
    const Started program({QStringLiteral("CREATE TABLE HIDDENTABLE_note (x)")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    for (int i = 0; i < 2; ++i) {
        DesignerPage::fillLink(DesignerPage::nextRow(*program.window), QStringLiteral("#note"));
    }
    const QStringList before = contents(program);
    const QStringList page = typed(*program.window);
    ModalResponder responder;
    // Nobody is kept waiting by the box: another program can write while it is shown.
    responder.answer(QMessageBox::Ok, [&program](const QMessageBox &) {
        program.sql(QStringLiteral("INSERT INTO HIDDENTABLE_note VALUES (1)"));
    });
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{CreateRefused.arg(QStringLiteral("soci")) +
                         QStringLiteral("duplicate column name: NLINKFORMAT_＃note Unable to "
                                        "execute statement")});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(typed(*program.window), page);
    QCOMPARE(contents(program), before);
    QVERIFY(Window::tables(*program.window).isEmpty());
}

void Designer::failedCreationKeepsConfigurations()
{
    // They are written before the table, which then cannot be made.
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce")});
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("NOME"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{CreateRefused.arg(QStringLiteral("soci")) +
                         QStringLiteral("duplicate column name: NSTRINGFORMAT_NOME Unable to "
                                        "execute statement")});
    QVERIFY(DesignerPage::isOpen(*program.window));
    QVERIFY(statement(program, QStringLiteral("soci")).isEmpty());
    QVERIFY(settings(program).isEmpty());
    QCOMPARE(DesignerPage::configurations(program.here, Database),
             (QStringList{QStringLiteral("soci_Voci|NLONGSTRINGFORMAT_UserPath|"),
                          QStringLiteral("soci_Voci_XSBCONFX_1|NSTRINGFORMAT_Voce|text")}));
}

void Designer::settingsRowExists()
{
    // A row that a removed table has left is told of, and the table made.
    const Started program(
        Library + QStringList{QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer "
                                             "primary key,RSTRINGFORMAT_tableName text,"
                                             "RSTRINGFORMAT_iconPath text)"),
                              QStringLiteral("INSERT INTO settings VALUES (5,'soci','')")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: L'identificativo 'soci' esiste già nella tabella "
                                        "settings.\n")});
    QCOMPARE(settings(program), QStringList{QStringLiteral("5|soci|")});
    QVERIFY(!statement(program, QStringLiteral("soci")).isEmpty());
    QVERIFY(Window::tables(*program.window).contains(QStringLiteral("soci")));
    QVERIFY(!DesignerPage::isOpen(*program.window));
}

void Designer::existingNameAddsFields()
{
    const Started program(Library);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("autori"));
    DesignerPage::add(*program.window, QStringLiteral("STRING"),
                      QStringLiteral("Luogo di nascita"));
    DesignerPage::nextRow(*program.window);
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("autori")),
             created(QStringLiteral("autori"),
                     QStringLiteral("RSTRINGFORMAT_Nome text,NDATEFORMAT_Nascita text, "
                                    "NSTRINGFORMAT_Luogo_di_nascita text")));
    QVERIFY(settings(program).isEmpty());
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(Window::tables(*program.window),
             (QStringList{QStringLiteral("libri"), QStringLiteral("autori")}));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
}

void Designer::addedFields()
{
    const Started program(Library);
    Window::selectLine(*program.window, 1);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Prezzo"), true);
    DesignerPage::nextRow(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("IMAGE"), QStringLiteral("Foto"));
    DesignerPage::fillCopied(DesignerPage::nextRow(*program.window), QStringLiteral("autori"),
                             QStringLiteral("Nome"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("libri")),
             created(QStringLiteral("libri"),
                     QStringLiteral("RSTRINGFORMAT_Titolo text, RMONEYFORMAT_Prezzo text, "
                                    "NIMAGEFORMAT_Foto text, Xautori_XDTX_RSTRINGFORMAT_Nome "
                                    "Integer")));
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::labels(*program.window),
             (QStringList{QStringLiteral("Titolo"), QStringLiteral("Prezzo"),
                          QStringLiteral("Foto"), QStringLiteral("Nome")}));
}

void Designer::addedFieldsAreOneStep()
{
    const Started program(Library);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("MONEY"), QStringLiteral("Prezzo"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce")});
    const quint32 before = program.steps();
    DesignerPage::accept(*program.window);
    QCOMPARE(DesignerPage::configurations(program.here, Database).size(), 2);
    QCOMPARE(program.steps(), before + 1);
}

void Designer::addedFieldGetsANumber()
{
    const Started program(Library);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("TITOLO"), true);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Titolo"), true);
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("libri")),
             created(QStringLiteral("libri"),
                     QStringLiteral("RSTRINGFORMAT_Titolo text, RSTRINGFORMAT_TITOLO_XMLTYX_2 "
                                    "text, RSTRINGFORMAT_Titolo_XMLTYX_3 text")));
}

void Designer::addedSubTable()
{
    const Started program(Library);
    DesignerPage::openAdd(*program.window);
    DesignerPage::addSubTable(*program.window, QStringLiteral("Prestiti"),
                              {QStringLiteral("STRING Chi")});
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QVERIFY(statement(program, QStringLiteral("libri"))
                .endsWith(QStringLiteral(", NSUBTABLEFORMAT_Prestiti text)")));
    QCOMPARE(DesignerPage::configurations(program.here, Database),
             (QStringList{QStringLiteral("libri_Prestiti|NLONGSTRINGFORMAT_UserPath|"),
                          QStringLiteral("libri_Prestiti_XSBCONFX_1|NSTRINGFORMAT_Chi|text")}));
}

void Designer::addedToTheCurrentTable()
{
    // A name that does not come back from the way it is shown.
    const QString table = QStringLiteral("HIDDENTABLE_a_XSBTX_b");
    const Started program(Library +
                          QStringList{QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer "
                                                     "primary key,RSTRINGFORMAT_Nota text)")
                                          .arg(table)});
    program.window->changeTable(table);
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Altro"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, table),
             created(table, QStringLiteral("RSTRINGFORMAT_Nota text, NSTRINGFORMAT_Altro text")));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("#a->->"));
}

void Designer::addedToAReservedTable()
{
    const Started program(Library);
    EntryPage::setAdvancedMode(*program.window, true);
    Window::pressTable(*program.window, QStringLiteral("filters"));
    DesignerPage::openAdd(*program.window);
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nota"));
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QVERIFY(statement(program, QStringLiteral("filters"))
                .endsWith(QStringLiteral(", NSTRINGFORMAT_Nota text)")));
}

void Designer::nothingToAdd()
{
    const Started program(Library);
    DesignerPage::openAdd(*program.window);
    const QByteArray before = program.here.read(Database);
    const ModalResponder responder;
    DesignerPage::accept(*program.window);
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(program.here.read(Database), before);
}

void Designer::failedAdditionsGoOn()
{
    const Started program(
        Library + QStringList{QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer "
                                             "primary key,NLINKFORMAT_libri text)")});
    DesignerPage::openAdd(*program.window);
    for (int i = 0; i < 3; ++i) {
        DesignerPage::fillLink(DesignerPage::nextRow(*program.window), QStringLiteral("prestiti"));
    }
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Editore"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    responder.answer(QMessageBox::Ok);
    DesignerPage::accept(*program.window);
    const QString message =
        AddRefused.arg(QStringLiteral("NLINKFORMAT_prestiti"), QStringLiteral("libri")) +
        QStringLiteral("duplicate column name: NLINKFORMAT_prestiti Unable to execute statement");
    QCOMPARE(responder.takeTexts(), (QStringList{message, message}));
    QVERIFY(!DesignerPage::isOpen(*program.window));
    QCOMPARE(statement(program, QStringLiteral("libri")),
             created(QStringLiteral("libri"),
                     QStringLiteral("RSTRINGFORMAT_Titolo text, NLINKFORMAT_prestiti text, "
                                    "NSTRINGFORMAT_Editore text")));
}

void Designer::rowsAreNumberedAndFocused()
{
    Started program(Library);
    QVERIFY(program.show());
    DesignerPage::openNew(*program.window);
    QCOMPARE(program.window->focusWidget(), Window::get<QWidget>(*program.window, "leTableName"));
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    QCOMPARE(program.window->focusWidget(),
             DesignerPage::label(*DesignerPage::rows(*program.window).last()));
    // A row always comes last, whichever asked for it.
    DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Terza"));
    DesignerPage::addAfter(*DesignerPage::rows(*program.window).first());
    QStringList numbers;
    for (const newTableElement *const row : DesignerPage::rows(*program.window)) {
        numbers.append(Window::get<QLabel>(*row, "lbNumber")->text());
    }
    QCOMPARE(numbers, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                   QStringLiteral("4")}));
    QVERIFY(DesignerPage::label(*DesignerPage::rows(*program.window).last())->text().isEmpty());

    DesignerPage::openAdd(*program.window);
    QCOMPARE(program.window->focusWidget(),
             DesignerPage::label(*DesignerPage::rows(*program.window).first()));
}

void Designer::returnAddsARow()
{
    Started program(Library);
    QVERIFY(program.show());
    DesignerPage::openAdd(*program.window);
    for (const char *const name : {"Prezzo", "Editore"}) {
        QTest::keyClicks(program.window->focusWidget(), QString::fromLatin1(name));
        QTest::keyClick(program.window->focusWidget(), Qt::Key_Return);
    }
    QCOMPARE(DesignerPage::rows(*program.window).size(), 3);
    QVERIFY(DesignerPage::isOpen(*program.window));
    DesignerPage::accept(*program.window);
    QVERIFY(statement(program, QStringLiteral("libri"))
                .endsWith(QStringLiteral(" NSTRINGFORMAT_Prezzo text, NSTRINGFORMAT_Editore "
                                         "text)")));
}

void Designer::tabFollowsTheEye()
{
    Started program(Library);
    QVERIFY(program.show());
    // Also when the page is opened again.
    for (int time = 0; time < 2; ++time) {
        DesignerPage::openNew(*program.window);
        DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                                  {QStringLiteral("STRING Voce"), QStringLiteral("DATE Data")});
        DesignerPage::add(*program.window, QStringLiteral("STRING"), QStringLiteral("Nome"));
        QCoreApplication::processEvents();
        Window::get<QWidget>(*program.window, "leTableName")->setFocus();
        QStringList walked;
        for (int key = 0; key < 40; ++key) {
            const QWidget *const focus = program.window->focusWidget();
            const auto *const button = qobject_cast<const QPushButton *>(focus);
            const bool isNamed = button == nullptr || !focus->objectName().isEmpty();
            walked.append(isNamed ? focus->objectName() : button->text());
            if (walked.last() == QStringLiteral("OK")) {
                break;
            }
            QTest::keyClick(program.window->focusWidget(), Qt::Key_Tab);
        }
        walked.removeAll(QStringLiteral("cbRequired"));
        const QString row = QStringLiteral(" leName cbType cbFromTable pbAddNew");
        QCOMPARE(walked.join(QLatin1Char(' ')),
                 QStringLiteral("leTableName cbHiddenTable leIconData pbIconImage") +
                     row.repeated(4) + QStringLiteral(" Annulla OK"));
    }
}

void Designer::sixtyRows()
{
    Started program(Library);
    QVERIFY(program.show());
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("grande"));
    QStringList columns;
    const auto *const page = Window::get<QScrollArea>(*program.window, "newElementScroll");
    for (int i = 1; i <= 60; ++i) {
        newTableElement &row = DesignerPage::nextRow(*program.window);
        QCoreApplication::processEvents();
        const int top = row.mapTo(page->viewport(), QPoint()).y();
        QVERIFY2(top >= 0 && top + row.height() <= page->viewport()->height(),
                 qPrintable(QString::number(i)));
        DesignerPage::fill(row, QStringLiteral("STRING"), QStringLiteral("c%1").arg(i));
        columns.append(QStringLiteral("NSTRINGFORMAT_c%1 text").arg(i));
    }
    DesignerPage::accept(*program.window);
    QCOMPARE(statement(program, QStringLiteral("grande")),
             created(QStringLiteral("grande"), columns.join(QLatin1Char(',')) +
                                                   QStringLiteral(",NLONGSTRINGFORMAT_UserPath ")));
}

void Designer::cancelled()
{
    const Started program(Library);
    Window::selectLine(*program.window, 1);
    const QByteArray before = program.here.read(Database);
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce")});
    const ModalResponder responder;
    DesignerPage::cancel(*program.window);
    QCOMPARE(Window::get<QStackedWidget>(*program.window, "stPages")->currentIndex(), 2);
    QVERIFY(DesignerPage::rows(*program.window).isEmpty());
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    QCOMPARE(program.here.read(Database), before);
}

void Designer::leftByOtherCommands_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("another table") << "table";
    QTest::newRow("the same table") << "same";
    QTest::newRow("another database") << "database";
    QTest::newRow("a new record") << "record";
}

void Designer::leftByOtherCommands()
{
    QFETCH(QString, command);
    const Started program(Library);
    const QString other = QStringLiteral("other.db");
    program.here.sql(other, {QStringLiteral("CREATE TABLE monete (RINTEGERFORMAT_Id integer "
                                            "primary key,RSTRINGFORMAT_Nome text)"),
                             QStringLiteral("CREATE TABLE zecche (RINTEGERFORMAT_Id integer "
                                            "primary key,RSTRINGFORMAT_Nome text)")});
    DesignerPage::openNew(*program.window);
    DesignerPage::typeName(*program.window, QStringLiteral("soci"));
    DesignerPage::addSubTable(*program.window, QStringLiteral("Voci"),
                              {QStringLiteral("STRING Voce"), QStringLiteral("DATE Data")});
    ModalResponder responder;
    if (command == QStringLiteral("table")) {
        Window::pressTable(*program.window, QStringLiteral("autori"));
    } else if (command == QStringLiteral("same")) {
        Window::pressTable(*program.window, QStringLiteral("libri"));
    } else if (command == QStringLiteral("record")) {
        program.window->changeToNewUserPage();
    } else {
        responder.chooseFile(program.here.path(other));
        Window::action(*program.window, "actionOpen_Db")->trigger();
    }
    QVERIFY(!DesignerPage::isOpen(*program.window));
    EntryPage::forgetOldPages();
    QVERIFY(DesignerPage::rows(*program.window).isEmpty());
    QVERIFY(program.window->findChildren<newTableElement *>().isEmpty());
    DesignerPage::openNew(*program.window);
    QCOMPARE(DesignerPage::rows(*program.window).size(), 1);
    QVERIFY(Window::get<QLineEdit>(*program.window, "leTableName")->text().isEmpty());
}

void Designer::leftWithTheProgram()
{
    // Rows that are open at the end go with the window.
    Started program(Library);
    DesignerPage::openNew(*program.window);
    const QPointer<newTableElement> row(&DesignerPage::addSubTable(
        *program.window, QStringLiteral("Voci"), {QStringLiteral("STRING Voce")}));
    program.window.reset();
    QVERIFY(row.isNull());
}

void Designer::whatIsTakenCanBeUsed()
{
    // Whatever label the page takes keeps the value that people give it.
    const Started program(Library);
    const QStringList pieces =
        QStringLiteral("a|Z|9|_|$| |è|中|🎲|'|\"|%1|%s|-|>|FORMAT_|FORMAT|INTEGER|REAL|LINK|"
                       "STRINGFORMAT|XDTX|_XMLTYX_|HIDDENTABLE|Id|UserPath|SUBTABLE|IMAGE|X|R|N|"
                       "select|＇|(|)|,|;|--|#|FORMAT_SUBTABLE")
            .split(QLatin1Char('|'));
    QRandomGenerator random(20250607);
    int taken = 0;
    int refused = 0;
    for (int round = 0; round < 120; ++round) {
        QString label;
        for (int i = random.bounded(1, 4); i > 0; --i) {
            label += pieces.at(random.bounded(pieces.size()));
        }
        const QString table = QStringLiteral("t%1").arg(round);
        DesignerPage::openNew(*program.window);
        DesignerPage::typeName(*program.window, table);
        DesignerPage::add(*program.window, QStringLiteral("STRING"), label);
        DesignerPage::add(*program.window, QStringLiteral("STRING"), label);
        const QString reason = SqlNames::labelRefusal(label, QStringLiteral("STRINGFORMAT"));
        ModalResponder responder;
        if (!reason.isEmpty()) {
            responder.answer(QMessageBox::Ok);
            DesignerPage::accept(*program.window);
            QCOMPARE(responder.takeTexts(), QStringList{CreateRefused.arg(table) + reason});
            ++refused;
            continue;
        }
        DesignerPage::accept(*program.window);
        QVERIFY2(!DesignerPage::isOpen(*program.window), qPrintable(label));
        ++taken;
        Window::pressTable(*program.window, table);
        EntryPage::openNew(*program.window);
        for (int field = 0; field < 2; ++field) {
            EntryPage::pasteInto(EntryPage::editors(*program.window).at(field)->editor(),
                                 QStringLiteral("1,5 l'una %1").arg(field));
        }
        EntryPage::save(*program.window);
        QVERIFY2(!EntryPage::isOpen(*program.window), qPrintable(label));
        EntryPage::openEdit(*program.window);
        for (int field = 0; field < 2; ++field) {
            QCOMPARE(EntryPage::editors(*program.window).at(field)->rawText(),
                     QStringLiteral("1,5 l'una %1").arg(field));
        }
        Window::click(*program.window, "pbCancelEdit");
        QCOMPARE(Window::lines(*program.window), QStringList{QStringLiteral("1,5 l'una 0")});
        EntryPage::forgetOldPages();
    }
    QVERIFY(taken > 20);
    QVERIFY(refused > 20);
}

QTEST_MAIN(Designer)
#include "ui_designer.moc"
