// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// New and changed records: what is written, what is refused, what stays on the page.
#include "tests/support/EntryPage.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace
{

const QString Titolo = QStringLiteral("Titolo");

// Two columns to type into beside the title, and one of each kind that the program fills.
const QStringList Books = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NSTRINGFORMAT_Autore text,"
                   "NLONGSTRINGFORMAT_UserPath text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO libri VALUES (3,'Zeno','Svevo','TABLES_DOC/libri_Zeno'),"
                   "(7,'Zibaldone','','TABLES_DOC/libri_Zibaldone')"),
};
const QStringList BookRows = {
    QStringLiteral("integer:3|text:'Zeno'|text:'Svevo'|text:'TABLES_DOC/libri_Zeno'"),
    QStringLiteral("integer:7|text:'Zibaldone'|text:''|text:'TABLES_DOC/libri_Zibaldone'"),
};

// Two columns only, so that a locked database is tried as seldom as possible.
const QStringList Authors = {
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("CREATE TABLE luoghi (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO autori VALUES (1,'Svevo')"),
};

// One row in the log for each statement that writes a record.
const QStringList LogOfStatements = {
    QStringLiteral("CREATE TABLE diario (nota text)"),
    QStringLiteral("CREATE TRIGGER inserito AFTER INSERT ON libri BEGIN "
                   "INSERT INTO diario VALUES ('INSERT'); END"),
    QStringLiteral("CREATE TRIGGER cambiato AFTER UPDATE ON libri BEGIN "
                   "INSERT INTO diario VALUES ('UPDATE'); END"),
};

const QString Locked = QStringLiteral("database is locked Unable to fetch row");

// Another program that holds the database for as long as the object lives.
class Holder
{
public:
    Holder(const QString &path, const QString &begin)
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        other.setDatabaseName(path);
        if (!other.open() || !QSqlQuery(other).exec(begin)) {
            qFatal("cannot hold the database");
        }
    }
    ~Holder()
    {
        QSqlDatabase::database(name).close();
        QSqlDatabase::removeDatabase(name);
    }
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;

private:
    const QString name = QStringLiteral("holder");
};

// SQLite waits 5 seconds for a held database; a test need not.
bool waitShortly()
{
    return QSqlQuery(QSqlDatabase::database()).exec(QStringLiteral("PRAGMA busy_timeout = 20"));
}

void compareWarning(const ModalResponder::Box &box, const QString &text)
{
    QCOMPARE(box.text, text);
    QCOMPARE(box.title, QStringLiteral("DB Administration Tool"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

} // namespace

using EntryPage::Started;

class RecordEntry : public QObject
{
    Q_OBJECT

private slots:
    void newPageIsEmpty();
    void editPageShowsRecord();
    void newRecordIsWrittenWhole();
    void newRecordIsOneStepOfOneStatement();
    void idIsOneMoreThanLargest();
    void newRecordIsShown();
    void titleThatExistsIsRefused_data();
    void titleThatExistsIsRefused();
    void titleWithApostropheIsTakenTwice();
    void folderComesFromTitle_data();
    void folderComesFromTitle();
    void folderComesFromReferencedTitle();
    void folderIsIdentityWhereItComesFirst();
    void fieldThatCannotBeWrittenKeepsZero();

    void emptyRequiredFieldIsNamed_data();
    void emptyRequiredFieldIsNamed();
    void emptyRequiredFieldKeepsEverything();
    void emptyRequiredFieldStopsChange();

    void changeIsOneStepOfOneStatement();
    void changeWritesTouchedFieldsOnly();
    void untouchedSaveWritesNothing_data();
    void untouchedSaveWritesNothing();
    void changedTitleMovesInList();
    void recordDeletedBeforeOpening();
    void recordDeletedBeforeSaving();
    void refusedColumnLeavesOthersWritten();
    void changeOfHeldDatabase_data();
    void changeOfHeldDatabase();
    void newRecordInHeldDatabase_data();
    void newRecordInHeldDatabase();

    void advancedModePlacesOwnFields();
    void changedIdAsks();
    void changedIdDeclined();
    void changedIdThatIsTaken();
    void advancedModeWritesFolder();
    void advancedModeNewRecordChoosesId();
};

void RecordEntry::newPageIsEmpty()
{
    const Started program(Books);
    EntryPage::openNew(*program.window);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Aggiungi"));
    QCOMPARE(EntryPage::labels(*program.window), (QStringList{Titolo, QStringLiteral("Autore")}));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QString());
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Autore")), QString());
}

void RecordEntry::editPageShowsRecord()
{
    const Started program(Books);
    EntryPage::openEdit(*program.window);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Modifica"));
    QCOMPARE(EntryPage::labels(*program.window), (QStringList{Titolo, QStringLiteral("Autore")}));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Zeno"));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Autore")), QStringLiteral("Svevo"));
}

void RecordEntry::newRecordIsWrittenWhole()
{
    const Started program(Books);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("Il barone rampante"));
    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("libri")),
             BookRows + QStringList{QStringLiteral("integer:8|text:'Il barone rampante'|text:''|"
                                                   "text:'TABLES_DOC/libri_Il_barone_rampante'")});
}

void RecordEntry::newRecordIsOneStepOfOneStatement()
{
    const Started program(Books + LogOfStatements);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("Marcovaldo"));
    EntryPage::type(*program.window, QStringLiteral("Autore"), QStringLiteral("Calvino"));
    const quint32 before = program.steps();
    EntryPage::save(*program.window);
    QCOMPARE(program.steps(), before + 1);
    QCOMPARE(program.rows(QStringLiteral("diario")), QStringList{QStringLiteral("text:'INSERT'")});
}

void RecordEntry::idIsOneMoreThanLargest()
{
    // Also where a smaller one is free, and for the first record of all.
    const Started program(Books);
    Window::pressTable(*program.window, QStringLiteral("autori"));
    for (const QString &name : {QStringLiteral("Svevo"), QStringLiteral("Calvino")}) {
        EntryPage::openNew(*program.window);
        EntryPage::type(*program.window, QStringLiteral("Nome"), name);
        EntryPage::save(*program.window);
    }
    program.sql(QStringLiteral("DELETE FROM autori WHERE RINTEGERFORMAT_Id = 1"));
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Nome"), QStringLiteral("Eco"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("autori")),
             (QStringList{QStringLiteral("integer:2|text:'Calvino'"),
                          QStringLiteral("integer:3|text:'Eco'")}));
}

void RecordEntry::newRecordIsShown()
{
    const Started program(Books);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("Zero"));
    EntryPage::save(*program.window);
    // pbSort is checked at the start.
    QCOMPARE(
        Window::lines(*program.window),
        (QStringList{QStringLiteral("Zeno"), QStringLiteral("Zero"), QStringLiteral("Zibaldone")}));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zero"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{1});
    QCOMPARE(Window::shownText(*program.window, Titolo), QStringLiteral("Zero"));
}

void RecordEntry::titleThatExistsIsRefused_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("the same text") << QStringLiteral("Zeno");
    QTest::newRow("other letter case and blanks") << QStringLiteral("  zEnO ");
}

void RecordEntry::titleThatExistsIsRefused()
{
    QFETCH(QString, title);
    Started program(Books);
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, title);
    EntryPage::type(*program.window, QStringLiteral("Autore"), QStringLiteral("Anonimo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(responder.boxes().first(),
                   QStringLiteral("ERRORE: L'identificativo '%1' esiste già nella tabella "
                                  "libri.\n")
                       .arg(title));
    QCOMPARE(program.rows(QStringLiteral("libri")), BookRows);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), title);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Autore")),
             QStringLiteral("Anonimo"));

    // With another title the same page saves.
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Senilità"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("libri")).size(), 3);
}

void RecordEntry::titleWithApostropheIsTakenTwice()
{
    const Started program(Books);
    for (int time = 0; time < 2; ++time) {
        EntryPage::openNew(*program.window);
        EntryPage::type(*program.window, Titolo, QStringLiteral("L'isola"));
        EntryPage::save(*program.window);
        QVERIFY(!EntryPage::isOpen(*program.window));
    }
    QCOMPARE(
        program.rows(QStringLiteral("libri")).mid(2),
        (QStringList{
            QStringLiteral("integer:8|text:'L''isola'|text:''|text:'TABLES_DOC/libri_Lisola'"),
            QStringLiteral("integer:9|text:'L''isola'|text:''|text:'TABLES_DOC/libri_Lisola'")}));
}

void RecordEntry::folderComesFromTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("folder");
    QTest::newRow("blanks become underscores") << "Il nome"
                                               << "TABLES_DOC/libri_Il_nome";
    QTest::newRow("marks are left out") << "'?!.,;:<>/\\\"*[]x"
                                        << "TABLES_DOC/libri_x";
    QTest::newRow("accents and percent signs stay")
        << QStringLiteral("Più 100%s") << QStringLiteral("TABLES_DOC/libri_Più_100%s");
    QTest::newRow("nothing leads out of the folder") << "../../x"
                                                     << "TABLES_DOC/libri_x";
}

void RecordEntry::folderComesFromTitle()
{
    QFETCH(QString, title);
    QFETCH(QString, folder);
    const Started program(Books);
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, title);
    EntryPage::save(*program.window);
    QCOMPARE(program.here.value(program.database,
                                QStringLiteral("SELECT NLONGSTRINGFORMAT_UserPath FROM libri "
                                               "WHERE RINTEGERFORMAT_Id = 8")),
             QVariant(folder));
}

void RecordEntry::folderComesFromReferencedTitle()
{
    const Started program(
        {QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                        "Xsoci_XDTX_RSTRINGFORMAT_Nome Integer,NLONGSTRINGFORMAT_UserPath text,"
                        "NIMAGEFORMAT_Foto text)"),
         QStringLiteral("CREATE TABLE soci (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("INSERT INTO soci VALUES (4,'Anna D''Arco')")});
    EntryPage::openNew(*program.window);
    EntryPage::choose(*program.window, QStringLiteral("Nome"), 1);
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("prestiti")),
             QStringList{QStringLiteral("integer:1|integer:4|"
                                        "text:'TABLES_DOC/prestiti_Anna_DArco'|text:''")});
}

void RecordEntry::folderIsIdentityWhereItComesFirst()
{
    // Without a title of its own every record is known by its folder, which must differ.
    const Started program(
        {QStringLiteral("CREATE TABLE foto (RINTEGERFORMAT_Id integer primary key,"
                        "NLONGSTRINGFORMAT_UserPath text,NIMAGEFORMAT_Foto text)"),
         QStringLiteral("CREATE TABLE altro (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("INSERT INTO foto VALUES (5,'TABLES_DOC/foto_5','')")});
    for (int time = 0; time < 2; ++time) {
        EntryPage::openNew(*program.window);
        EntryPage::save(*program.window);
        QVERIFY(!EntryPage::isOpen(*program.window));
    }
    QCOMPARE(program.rows(QStringLiteral("foto")),
             (QStringList{QStringLiteral("integer:5|text:'TABLES_DOC/foto_5'|text:''"),
                          QStringLiteral("integer:6|text:'TABLES_DOC/foto_6'|text:''"),
                          QStringLiteral("integer:7|text:'TABLES_DOC/foto_7'|text:''")}));
}

void RecordEntry::fieldThatCannotBeWrittenKeepsZero()
{
    // The record is added all the same; the field that is refused keeps what a new row holds.
    const Started program(
        Books +
        QStringList{QStringLiteral("CREATE TRIGGER nuovo BEFORE INSERT ON libri WHEN "
                                   "NEW.NSTRINGFORMAT_Autore = 'X' BEGIN SELECT RAISE(ABORT,"
                                   "'no'); END"),
                    QStringLiteral("CREATE TRIGGER dopo BEFORE UPDATE ON libri WHEN "
                                   "NEW.NSTRINGFORMAT_Autore = 'X' BEGIN SELECT RAISE(ABORT,"
                                   "'autore rifiutato'); END")});
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("Nuovo"));
    EntryPage::type(*program.window, QStringLiteral("Autore"), QStringLiteral("X"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Impossibile aggiornare il Record!\n"
                                        "autore rifiutato Unable to fetch row")});
    QCOMPARE(program.rows(QStringLiteral("libri")).last(),
             QStringLiteral("integer:8|text:'Nuovo'|text:'0'|text:'TABLES_DOC/libri_Nuovo'"));
    QVERIFY(!EntryPage::isOpen(*program.window));
}

void RecordEntry::emptyRequiredFieldIsNamed_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("filled");
    QTest::addColumn<QString>("named");
    const QString plain = QStringLiteral("RSTRINGFORMAT_Titolo text,RSTRINGFORMAT_Autore text,"
                                         "NSTRINGFORMAT_Editore text");
    QTest::newRow("the lower one of two") << plain << QStringList() << "Autore";
    QTest::newRow("the only one left")
        << plain << QStringList{QStringLiteral("Autore")} << "Titolo";
    QTest::newRow("the duplicate marker is left out")
        << "RSTRINGFORMAT_Titolo text,RSTRINGFORMAT_Titolo_XMLTYX_2 text" << QStringList{Titolo}
        << "Titolo2";
    QTest::newRow("all after the first underscore")
        << "RDATEFORMAT_Data_di_nascita text" << QStringList() << "Data_di_nascita";
    QTest::newRow("a blank number")
        << "RSTRINGFORMAT_Titolo text,RREALFORMAT_Peso text" << QStringList{Titolo} << "Peso";
    QTest::newRow("a picture that is missing")
        << "RSTRINGFORMAT_Titolo text,RIMAGEFORMAT_Foto text" << QStringList{Titolo} << "Foto";
}

void RecordEntry::emptyRequiredFieldIsNamed()
{
    QFETCH(QString, table);
    QFETCH(QStringList, filled);
    QFETCH(QString, named);
    Started program(
        {QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,%1)").arg(table),
         QStringLiteral("CREATE TABLE u (RINTEGERFORMAT_Id integer primary key)")});
    QVERIFY(program.show());
    EntryPage::openNew(*program.window);
    for (const QString &label : filled) {
        EntryPage::type(*program.window, label, QStringLiteral("x"));
    }
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(
        responder.boxes().first(),
        QStringLiteral("Compila il campo %1 prima di salvare il nuovo Record!").arg(named));
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(program.window->focusWidget(), EntryPage::field(*program.window, named).editor());
    QCOMPARE(program.rows(QStringLiteral("t")), QStringList());
}

void RecordEntry::emptyRequiredFieldKeepsEverything()
{
    Started program({QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Titolo text,NINTEGERFORMAT_Anno text,"
                                    "NDATEFORMAT_Data text,NBOOLFORMAT_Letto text,"
                                    "NLONGSTRINGFORMAT_Note text,NMONEYFORMAT_Prezzo text)"),
                     QStringLiteral("CREATE TABLE u (RINTEGERFORMAT_Id integer primary key)")});
    const QMap<QString, QString> typed = {{QStringLiteral("Anno"), QStringLiteral("1984")},
                                          {QStringLiteral("Data"), QStringLiteral("02/01/2020")},
                                          {QStringLiteral("Note"), QStringLiteral("una\ndue")},
                                          {QStringLiteral("Prezzo"), QStringLiteral("1 234,5")}};
    EntryPage::openNew(*program.window);
    for (auto field = typed.begin(); field != typed.end(); ++field) {
        EntryPage::enter(*program.window, field.key(), field.value());
    }
    EntryPage::part<QAbstractButton>(*program.window, QStringLiteral("Letto"), "cbData")->click();
    const quint32 before = program.steps();
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    for (auto field = typed.begin(); field != typed.end(); ++field) {
        QCOMPARE(EntryPage::shown(*program.window, field.key()), field.value());
    }
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Letto")), QStringLiteral("TRUE"));
    QCOMPARE(program.steps(), before);

    EntryPage::type(*program.window, Titolo, QStringLiteral("Ora"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("t")),
             QStringList{QStringLiteral("integer:1|text:'Ora'|text:'1984'|text:'02/01/2020'|"
                                        "text:'TRUE'|text:'una\ndue'|text:'1234.50'")});
}

void RecordEntry::emptyRequiredFieldStopsChange()
{
    const Started program(Books);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QString());
    EntryPage::enter(*program.window, QStringLiteral("Autore"), QStringLiteral("Italo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("Compila il campo Titolo prima di salvare il nuovo "
                                        "Record!")});
    QCOMPARE(program.rows(QStringLiteral("libri")), BookRows);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Autore")), QStringLiteral("Italo"));

    // The page still changes the record instead of adding one.
    EntryPage::type(*program.window, Titolo, QStringLiteral("Zeno"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("libri")).size(), 2);
}

void RecordEntry::changeIsOneStepOfOneStatement()
{
    const Started program(Books + LogOfStatements);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("La coscienza di Zeno"));
    EntryPage::enter(*program.window, QStringLiteral("Autore"), QStringLiteral("Italo Svevo"));
    const quint32 before = program.steps();
    EntryPage::save(*program.window);
    QCOMPARE(program.steps(), before + 1);
    QCOMPARE(program.rows(QStringLiteral("diario")), QStringList{QStringLiteral("text:'UPDATE'")});
    QCOMPARE(program.rows(QStringLiteral("libri")),
             (QStringList{QStringLiteral("integer:3|text:'La coscienza di Zeno'|"
                                         "text:'Italo Svevo'|text:'TABLES_DOC/libri_Zeno'"),
                          BookRows.at(1)}));
}

void RecordEntry::changeWritesTouchedFieldsOnly()
{
    // What no editor can show must survive the correction of something else.
    const QString values = QStringLiteral("NULL,'31/02/2020','12.345','99999999999','3.0000001',"
                                          "NULL,'si','cover.png',7,'0'");
    const Started program(
        {QStringLiteral(
             "CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
             "NINTEGERFORMAT_Anno text,NDATEFORMAT_Data text,NMONEYFORMAT_Prezzo text,"
             "NINTEGERFORMAT_Grande text,NREALFORMAT_Peso text,NLONGSTRINGFORMAT_Note text,"
             "NBOOLFORMAT_Letto text,NIMAGEFORMAT_Foto text,Xu_XDTX_RSTRINGFORMAT_Nome Integer,"
             "NLONGSTRINGFORMAT_UserPath text)"),
         QStringLiteral("CREATE TABLE u (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("INSERT INTO t VALUES (1,'Prima',%1)").arg(values)});
    const QString before = program.rows(QStringLiteral("t")).first();
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Dopo"));
    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("t")).first(),
             QString(before).replace(QStringLiteral("Prima"), QStringLiteral("Dopo")));
}

void RecordEntry::untouchedSaveWritesNothing_data()
{
    QTest::addColumn<bool>("advanced");
    QTest::newRow("usually") << false;
    QTest::newRow("in the advanced mode, which shows the Id too") << true;
}

void RecordEntry::untouchedSaveWritesNothing()
{
    QFETCH(bool, advanced);
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, advanced);
    const QByteArray before = program.here.read(program.database);
    EntryPage::openEdit(*program.window);
    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    QVERIFY(program.here.read(program.database) == before);
}

void RecordEntry::changedTitleMovesInList()
{
    const Started program(Books);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Zoo"));
    EntryPage::save(*program.window);
    QCOMPARE(Window::lines(*program.window),
             (QStringList{QStringLiteral("Zibaldone"), QStringLiteral("Zoo")}));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zoo"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{1});
}

void RecordEntry::recordDeletedBeforeOpening()
{
    const Started program(Books);
    program.sql(QStringLiteral("DELETE FROM libri WHERE RINTEGERFORMAT_Id = 3"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::openEdit(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(responder.boxes().first(), QStringLiteral("ERRORE: Record non trovato!"));
    QVERIFY(!EntryPage::isOpen(*program.window));
}

void RecordEntry::recordDeletedBeforeSaving()
{
    const Started program(Books);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Zoe"));
    program.sql(QStringLiteral("DELETE FROM libri WHERE RINTEGERFORMAT_Id = 3"));
    const quint32 before = program.steps();
    for (int time = 0; time < 2; ++time) {
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        EntryPage::save(*program.window);
        QCOMPARE(responder.boxes().size(), 1);
        compareWarning(responder.boxes().first(), QStringLiteral("L'Id 3 non è valido!"));
        QVERIFY(EntryPage::isOpen(*program.window));
        QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Zoe"));
    }
    QCOMPARE(program.steps(), before);
    QCOMPARE(program.rows(QStringLiteral("libri")), QStringList{BookRows.at(1)});
}

void RecordEntry::refusedColumnLeavesOthersWritten()
{
    const Started program(Books +
                          QStringList{QStringLiteral("CREATE TRIGGER rifiuto BEFORE UPDATE OF "
                                                     "RSTRINGFORMAT_Titolo ON libri BEGIN SELECT "
                                                     "RAISE(ABORT,'titolo protetto'); END")});
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Zoe"));
    EntryPage::enter(*program.window, QStringLiteral("Autore"), QStringLiteral("Anonimo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    compareWarning(responder.boxes().first(),
                   QStringLiteral("ERRORE: Impossibile aggiornare il Record!\n"
                                  "titolo protetto Unable to fetch row"));
    QCOMPARE(program.rows(QStringLiteral("libri")).first(),
             QString(BookRows.first()).replace(QStringLiteral("Svevo"), QStringLiteral("Anonimo")));
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Zoe"));

    // Once the column can be written, "Salva" changes the record and adds no copy.
    program.sql(QStringLiteral("DROP TRIGGER rifiuto"));
    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("libri")),
             (QStringList{QStringLiteral("integer:3|text:'Zoe'|text:'Anonimo'|"
                                         "text:'TABLES_DOC/libri_Zeno'"),
                          BookRows.at(1)}));
}

void RecordEntry::changeOfHeldDatabase_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("message");
    QTest::newRow("another program writes")
        << "BEGIN IMMEDIATE"
        << QStringLiteral("ERRORE: Impossibile aggiornare il Record!\n") + Locked;
    QTest::newRow("another program lets nobody read")
        << "BEGIN EXCLUSIVE"
        << QStringLiteral("ERRORE: Impossibile aggiornare il Record!\n") + Locked;
}

void RecordEntry::changeOfHeldDatabase()
{
    QFETCH(QString, begin);
    QFETCH(QString, message);
    const Started program(Authors);
    QVERIFY(waitShortly());
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Nome"), QStringLiteral("Italo Svevo"));
    {
        const Holder other(program.here.path(program.database), begin);
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        EntryPage::save(*program.window);
        QCOMPARE(responder.boxes().size(), 1);
        compareWarning(responder.boxes().first(), message);
    }
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Nome")),
             QStringLiteral("Italo Svevo"));
    QCOMPARE(program.rows(QStringLiteral("autori")),
             QStringList{QStringLiteral("integer:1|text:'Svevo'")});

    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("autori")),
             QStringList{QStringLiteral("integer:1|text:'Italo Svevo'")});
}

void RecordEntry::newRecordInHeldDatabase_data()
{
    QTest::addColumn<QString>("begin");
    QTest::newRow("another program writes") << "BEGIN IMMEDIATE";
    QTest::newRow("another program lets nobody read") << "BEGIN EXCLUSIVE";
}

void RecordEntry::newRecordInHeldDatabase()
{
    QFETCH(QString, begin);
    const Started program(Authors);
    QVERIFY(waitShortly());
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Nome"), QStringLiteral("Calvino"));
    {
        const Holder other(program.here.path(program.database), begin);
        ModalResponder responder;
        responder.answer(QMessageBox::Ok);
        EntryPage::save(*program.window);
        QCOMPARE(responder.boxes().size(), 1);
        compareWarning(responder.boxes().first(),
                       QStringLiteral("ERRORE: Impossibile aggiungere un elemento alla tabella "
                                      "autori!\n") +
                           Locked);
    }
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Nome")), QStringLiteral("Calvino"));

    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("autori")),
             (QStringList{QStringLiteral("integer:1|text:'Svevo'"),
                          QStringLiteral("integer:2|text:'Calvino'")}));
}

void RecordEntry::advancedModePlacesOwnFields()
{
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::labels(*program.window),
             (QStringList{QStringLiteral("Id"), Titolo, QStringLiteral("Autore"),
                          QStringLiteral("UserPath")}));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Id")), QStringLiteral("3"));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("UserPath")),
             QStringLiteral("TABLES_DOC/libri_Zeno"));
    EntryPage::setAdvancedMode(*program.window, false);
    Window::click(*program.window, "pbCancelEdit");
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::labels(*program.window), (QStringList{Titolo, QStringLiteral("Autore")}));
}

void RecordEntry::changedIdAsks()
{
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Id"), QStringLiteral("70"));
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Zoe"));
    QStringList whileAsked;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes, [&](const QMessageBox &) {
        whileAsked = program.rows(QStringLiteral("libri"));
    });
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    const ModalResponder::Box box = responder.boxes().first();
    QCOMPARE(box.text, QStringLiteral("Vuoi veramente aggiornare l'Id 3 con il nuovo Id 70? Questa "
                                      "operazione può essere molto dannosa!"));
    QCOMPARE(box.title, QStringLiteral("DB Administration Tool"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.escapeButton, QMessageBox::No);
    QCOMPARE(box.textFormat, Qt::PlainText);
    // The other fields were on the disk before the question came, outside any transaction.
    QCOMPARE(whileAsked.first(),
             QStringLiteral("integer:3|text:'Zoe'|text:'Svevo'|text:'TABLES_DOC/libri_Zeno'"));
    QCOMPARE(program.rows(QStringLiteral("libri")),
             (QStringList{BookRows.at(1), QStringLiteral("integer:70|text:'Zoe'|text:'Svevo'|"
                                                         "text:'TABLES_DOC/libri_Zeno'")}));
    QVERIFY(!EntryPage::isOpen(*program.window));
}

void RecordEntry::changedIdDeclined()
{
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Id"), QStringLiteral("70"));
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Zoe"));
    ModalResponder responder;
    responder.pressEscape();
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 1);
    QCOMPARE(program.rows(QStringLiteral("libri")).first(),
             QStringLiteral("integer:3|text:'Zoe'|text:'Svevo'|text:'TABLES_DOC/libri_Zeno'"));
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zoe"));
}

void RecordEntry::changedIdThatIsTaken()
{
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Id"), QStringLiteral("7"));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts().last(),
             QStringLiteral("ERRORE: Impossibile aggiornare il Record!\n"
                            "UNIQUE constraint failed: libri.RINTEGERFORMAT_Id Unable to fetch "
                            "row"));
    QCOMPARE(program.rows(QStringLiteral("libri")), BookRows);
    QVERIFY(EntryPage::isOpen(*program.window));
}

void RecordEntry::advancedModeWritesFolder()
{
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("UserPath"), QStringLiteral("TABLES_DOC/z"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("libri")).first(),
             QStringLiteral("integer:3|text:'Zeno'|text:'Svevo'|text:'TABLES_DOC/z'"));
}

void RecordEntry::advancedModeNewRecordChoosesId()
{
    // A new record's Id and folder are worked out, whatever was typed.
    const Started program(Books);
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("Id"), QStringLiteral("70"));
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Nuovo"));
    EntryPage::enter(*program.window, QStringLiteral("UserPath"), QStringLiteral("altrove"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("libri")).last(),
             QStringLiteral("integer:8|text:'Nuovo'|text:''|text:'TABLES_DOC/libri_Nuovo'"));
}

QTEST_MAIN(RecordEntry)
#include "ui_recordentry.moc"
