// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Values of every format through the entry page: what is stored, shown, offered and refused.
#include "tests/support/EntryPage.h"

namespace
{

const QString Titolo = QStringLiteral("Titolo");
const QString Autore = QStringLiteral("autori");

// A table with one column of the format, and one that a reference or a link can lead to.
QStringList oneColumn(const QString &column)
{
    return {QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,"
                           "RSTRINGFORMAT_Titolo text,%1)")
                .arg(column),
            QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                           "RSTRINGFORMAT_Nome text)"),
            QStringLiteral("INSERT INTO autori VALUES (2,'Svevo'),(9,'Calvino'),(12,'Eco')")};
}

// The value of a new record that is told from its text: typeof() and quote().
QString storedValue(const EntryPage::Started &program, const QString &column)
{
    return program.here
        .value(program.database, QStringLiteral("SELECT typeof(%1)||':'||quote(%1) FROM t "
                                                "ORDER BY RINTEGERFORMAT_Id DESC LIMIT 1")
                                     .arg(column))
        .toString();
}

} // namespace

using EntryPage::Started;

class EntryValues : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storedForms_data();
    void storedForms();
    void emptyValues_data();
    void emptyValues();
    void longTexts_data();
    void longTexts();
    void emptiedDateIsEmpty();
    void emptiedBoxesOfChoices_data();
    void emptiedBoxesOfChoices();
    void textsOfOtherProgramsKeepTheirBytes_data();
    void textsOfOtherProgramsKeepTheirBytes();

    void lettersAreRefused_data();
    void lettersAreRefused();
    void wrongNumbersAreToldOnceEach();
    void wrongNumberOfUntouchedFieldIsNotTold();
    void wrongNumberIsToldAtEachSaving();

    void referenceChoicesInTableOrder();
    void referenceOfMissingTable();
    void linkChoicesShowListLines();
    void linkOfUnknownTextStays();
    void emptyLinkTakesTargetName();
};

void EntryValues::init()
{
    QGuiApplication::clipboard()->clear();
}

void EntryValues::storedForms_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("entered");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char *claim, const char *column, const QString &entered,
                        const QString &stored) {
        QTest::newRow(claim) << QString::fromUtf8(column) << entered << stored;
    };
    row("text keeps blanks around it", "NSTRINGFORMAT_C", QStringLiteral("  a b "),
        QStringLiteral("text:'  a b '"));
    row("text keeps apostrophes", "NSTRINGFORMAT_C", QStringLiteral("l'8' ''"),
        QStringLiteral("text:'l''8'' '''''"));
    row("text keeps signs of templates", "NSTRINGFORMAT_C", QStringLiteral("%s %d 100% %n"),
        QStringLiteral("text:'%s %d 100% %n'"));
    row("text keeps signs of statements", "NSTRINGFORMAT_C",
        QStringLiteral("a;b -- c :name ?1 @x $y /* \""),
        QStringLiteral("text:'a;b -- c :name ?1 @x $y /* \"'"));
    row("text keeps pictographs", "NSTRINGFORMAT_C", QStringLiteral("😀 è 日本"),
        QStringLiteral("text:'😀 è 日本'"));
    row("lines stay lines", "NLONGSTRINGFORMAT_C", QStringLiteral("una\n\n due\n"),
        QStringLiteral("text:'una\n\n due\n'"));
    row("hard blanks stay", "NLONGSTRINGFORMAT_C", QStringLiteral("a\u00A0b"),
        QStringLiteral("text:'a\u00A0b'"));
    row("mail as typed", "NMAILFORMAT_C", QStringLiteral("o'neil@x.it "),
        QStringLiteral("text:'o''neil@x.it '"));
    row("address as typed", "NURLFORMAT_C", QStringLiteral("http://x.it/?a=1&b='2'"),
        QStringLiteral("text:'http://x.it/?a=1&b=''2'''"));
    row("whole number", "NINTEGERFORMAT_C", QStringLiteral("-42"), QStringLiteral("text:'-42'"));
    row("largest whole number", "NINTEGERFORMAT_C", QStringLiteral("999999999"),
        QStringLiteral("text:'999999999'"));
    row("real number with comma and blank", "NREALFORMAT_C", QStringLiteral("1 234,5"),
        QStringLiteral("text:'1234.500000'"));
    row("real number with point", "NREALFORMAT_C", QStringLiteral("1234.5"),
        QStringLiteral("text:'1234.500000'"));
    row("money with comma and blank", "NMONEYFORMAT_C", QStringLiteral("1 234,5"),
        QStringLiteral("text:'1234.50'"));
    row("money with point", "NMONEYFORMAT_C", QStringLiteral("1234.5"),
        QStringLiteral("text:'1234.50'"));
    row("date", "NDATEFORMAT_C", QStringLiteral("29/02/2020"), QStringLiteral("text:'29/02/2020'"));
    row("date of early times", "NDATEFORMAT_C", QStringLiteral("04/10/1582"),
        QStringLiteral("text:'04/10/1582'"));
}

void EntryValues::storedForms()
{
    QFETCH(QString, column);
    QFETCH(QString, entered);
    QFETCH(QString, stored);
    const Started program(oneColumn(column + QStringLiteral(" text")));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::enter(*program.window, QStringLiteral("C"), entered);
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, column), stored);

    // The same when a record is changed.
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("y"));
    EntryPage::save(*program.window);
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("C"), entered);
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, column), stored);
}

void EntryValues::emptyValues_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("stored");
    QTest::newRow("text") << "NSTRINGFORMAT_C text"
                          << "text:''";
    QTest::newRow("several lines") << "NLONGSTRINGFORMAT_C text"
                                   << "text:''";
    QTest::newRow("whole number") << "NINTEGERFORMAT_C text"
                                  << "text:'0'";
    QTest::newRow("real number") << "NREALFORMAT_C text"
                                 << "text:'0.000000'";
    QTest::newRow("money") << "NMONEYFORMAT_C text"
                           << "text:''";
    QTest::newRow("date") << "NDATEFORMAT_C text"
                          << "text:''";
    QTest::newRow("yes or no") << "NBOOLFORMAT_C text"
                               << "text:'FALSE'";
    QTest::newRow("mail") << "NMAILFORMAT_C text"
                          << "text:''";
    QTest::newRow("address") << "NURLFORMAT_C text"
                             << "text:''";
    QTest::newRow("picture") << "NIMAGEFORMAT_C text"
                             << "text:''";
    QTest::newRow("PDF") << "NPDFFORMAT_C text"
                         << "text:''";
    QTest::newRow("link to a table that is not there") << "NLINKFORMAT_C text"
                                                       << "text:''";
    QTest::newRow("sub-table") << "NSUBTABLEFORMAT_C text"
                               << "text:'C'";
    QTest::newRow("reference") << "Xautori_XDTX_RSTRINGFORMAT_C Integer"
                               << "text:''";
}

void EntryValues::emptyValues()
{
    QFETCH(QString, column);
    QFETCH(QString, stored);
    const QString name = column.section(QLatin1Char(' '), 0, 0);
    const Started program(oneColumn(column));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, name), stored);
    for (int time = 0; time < 3; ++time) {
        EntryPage::openEdit(*program.window);
        EntryPage::enter(*program.window, Titolo, QStringLiteral("x%1").arg(time));
        EntryPage::save(*program.window);
        QCOMPARE(storedValue(program, name), stored);
    }
}

void EntryValues::longTexts_data()
{
    QTest::addColumn<QString>("column");
    QTest::newRow("one line") << "NSTRINGFORMAT_C";
    QTest::newRow("several lines") << "NLONGSTRINGFORMAT_C";
}

void EntryValues::longTexts()
{
    QFETCH(QString, column);
    const QString text = QStringLiteral("l'è😀%s;").repeated(12500);
    QCOMPARE(text.size(), 100000);
    const Started program(oneColumn(column + QStringLiteral(" text")));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::enter(*program.window, QStringLiteral("C"), text);
    EntryPage::save(*program.window);
    const QString query = QStringLiteral("SELECT %1 FROM t").arg(column);
    QVERIFY(program.here.value(program.database, query).toString() == text);
    EntryPage::openEdit(*program.window);
    EntryPage::type(*program.window, QStringLiteral("C"), QStringLiteral("a"));
    QTest::keyClick(EntryPage::field(*program.window, QStringLiteral("C")).editor(),
                    Qt::Key_Backspace);
    EntryPage::save(*program.window);
    QVERIFY(program.here.value(program.database, query).toString() == text);
}

void EntryValues::emptiedDateIsEmpty()
{
    const Started program(oneColumn(QStringLiteral("NDATEFORMAT_C text")) +
                          QStringList{QStringLiteral("INSERT INTO t VALUES (1,'x','02/01/2020')")});
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("C"), QString());
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, QStringLiteral("NDATEFORMAT_C")), QStringLiteral("text:''"));
}

void EntryValues::emptiedBoxesOfChoices_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("stored");
    QTest::newRow("reference") << "Xautori_XDTX_RSTRINGFORMAT_C Integer"
                               << "9"
                               << "text:''";
    QTest::newRow("reference to a whole number") << "Xautori_XDTX_NINTEGERFORMAT_C Integer"
                                                 << "9"
                                                 << "integer:0";
    QTest::newRow("link to a table that is not there") << "NLINKFORMAT_C text"
                                                       << "'9 Calvino'"
                                                       << "text:''";
}

void EntryValues::emptiedBoxesOfChoices()
{
    QFETCH(QString, column);
    QFETCH(QString, value);
    QFETCH(QString, stored);
    const Started program(
        oneColumn(column) +
        QStringList{QStringLiteral("INSERT INTO t VALUES (1,'x',%1)").arg(value)});
    EntryPage::openEdit(*program.window);
    QVERIFY(EntryPage::shown(*program.window, QStringLiteral("C")) != QStringLiteral("---"));
    EntryPage::choose(*program.window, QStringLiteral("C"), 0);
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, column.section(QLatin1Char(' '), 0, 0)), stored);
}

void EntryValues::textsOfOtherProgramsKeepTheirBytes_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *claim, const char *column, const char *value) {
        QTest::newRow(claim) << QString::fromUtf8(column) << QString::fromUtf8(value);
    };
    row("a date that is none", "NDATEFORMAT_C text", "'31/02/2020'");
    row("a date in another order", "NDATEFORMAT_C text", "'2020-02-01'");
    row("a date before the year 100", "NDATEFORMAT_C text", "'01/01/0044'");
    row("the earliest date that an editor takes", "NDATEFORMAT_C text", "'01/01/0100'");
    row("a date that nobody filled", "NDATEFORMAT_C text", "'0'");
    row("money with more decimals", "NMONEYFORMAT_C text", "'12.345'");
    row("money as a number", "NMONEYFORMAT_C", "12.345");
    row("money that is no number", "NMONEYFORMAT_C text", "'circa 12'");
    row("a real number that is none", "NREALFORMAT_C text", "'circa 12'");
    row("a real number with a comma", "NREALFORMAT_C text", "'1234,5'");
    row("a whole number that the editor cannot hold", "NINTEGERFORMAT_C text", "'99999999999'");
    row("a whole number that is none", "NINTEGERFORMAT_C text", "'7.9'");
    row("no whole number at all", "NINTEGERFORMAT_C text", "NULL");
    row("a yes of another kind", "NBOOLFORMAT_C text", "'1'");
    row("a yes in small letters", "NBOOLFORMAT_C text", "'true'");
    row("no yes and no no", "NBOOLFORMAT_C text", "NULL");
    row("a text that is missing", "NSTRINGFORMAT_C text", "NULL");
    row("a line break in a line", "NSTRINGFORMAT_C text", "'a\nb'");
    row("line ends of another system", "NLONGSTRINGFORMAT_C text", "'a\r\nb\r'");
    row("a reference to a record that is gone", "Xautori_XDTX_RSTRINGFORMAT_C Integer", "77");
    row("a reference stored as text", "Xautori_XDTX_RSTRINGFORMAT_C text", "'9.000000'");
    row("a reference that nobody filled", "Xautori_XDTX_RSTRINGFORMAT_C Integer", "NULL");
    row("a path out of the folder", "NPDFFORMAT_C text", "'../../x.pdf'");
    row("a picture that is not there", "NIMAGEFORMAT_C text", "'TABLES_DOC/x.png'");
    row("a value that is no text", "NSTRINGFORMAT_C", "x'00ff'");
}

void EntryValues::textsOfOtherProgramsKeepTheirBytes()
{
    QFETCH(QString, column);
    QFETCH(QString, value);
    const Started program(
        oneColumn(column) +
        QStringList{QStringLiteral("INSERT INTO t VALUES (1,'prima',%1)").arg(value)});
    const QString before = program.rows(QStringLiteral("t")).first();
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("dopo"));
    EntryPage::save(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("t")).first(),
             QString(before).replace(QStringLiteral("prima"), QStringLiteral("dopo")));
}

void EntryValues::lettersAreRefused_data()
{
    QTest::addColumn<QString>("column");
    QTest::newRow("real number") << "NREALFORMAT_C text";
    QTest::newRow("money") << "NMONEYFORMAT_C text";
}

void EntryValues::lettersAreRefused()
{
    QFETCH(QString, column);
    const Started program(oneColumn(column));
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("C"), QStringLiteral("a1e%x ,;5z"));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("C")), QStringLiteral("1 ,5"));
    EntryPage::enter(*program.window, QStringLiteral("C"), QStringLiteral("dodici"));
    QVERIFY(
        !EntryPage::shown(*program.window, QStringLiteral("C")).contains(QStringLiteral("dodici")));
}

void EntryValues::wrongNumbersAreToldOnceEach()
{
    const Started program(
        oneColumn(QStringLiteral("NREALFORMAT_A text,NMONEYFORMAT_B text,NREALFORMAT_C text,"
                                 "NMONEYFORMAT_D text")));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::enter(*program.window, QStringLiteral("A"), QStringLiteral("1.2.3"));
    EntryPage::enter(*program.window, QStringLiteral("B"), QStringLiteral("--"));
    EntryPage::enter(*program.window, QStringLiteral("C"), QStringLiteral("2,5"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 2);
    for (const ModalResponder::Box &box : responder.boxes()) {
        QCOMPARE(box.text, QStringLiteral("ERRORE: Valore numerico non valido"));
        QCOMPARE(box.icon, QMessageBox::Warning);
    }
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(program.rows(QStringLiteral("t")),
             QStringList{QStringLiteral("integer:1|text:'x'|text:'0.000000'|text:'0.00'|"
                                        "text:'2.500000'|text:''")});
}

void EntryValues::wrongNumberOfUntouchedFieldIsNotTold()
{
    const Started program(
        oneColumn(QStringLiteral("NREALFORMAT_A text,NMONEYFORMAT_B text")) +
        QStringList{QStringLiteral("INSERT INTO t VALUES (1,'x','circa','poco')")});
    ModalResponder responder;
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("y"));
    EntryPage::save(*program.window);
    QCOMPARE(responder.boxes().size(), 0);
    QCOMPARE(program.rows(QStringLiteral("t")),
             QStringList{QStringLiteral("integer:1|text:'y'|text:'circa'|text:'poco'")});
}

void EntryValues::wrongNumberIsToldAtEachSaving()
{
    const Started program(oneColumn(QStringLiteral("NREALFORMAT_C text")));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, QStringLiteral("C"), QStringLiteral("1.2.3"));
    ModalResponder responder;
    const QString wrong = QStringLiteral("ERRORE: Valore numerico non valido");
    const QString missing =
        QStringLiteral("Compila il campo Titolo prima di salvare il nuovo Record!");
    responder.answer(QMessageBox::Ok);
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts(), (QStringList{wrong, missing}));
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("C")), QStringLiteral("1.2.3"));
    EntryPage::enter(*program.window, QStringLiteral("C"), QStringLiteral("1.2"));
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QCOMPARE(responder.takeTexts(), QStringList{missing});
}

void EntryValues::referenceChoicesInTableOrder()
{
    const QString nome = QStringLiteral("Nome");
    const QString luogo = QStringLiteral("Luogo");
    // In another order than that of the names, which the lists keep.
    const Started program(
        {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Titolo text,Xautori_XDTX_RSTRINGFORMAT_Nome Integer,"
                        "Xluoghi_XDTX_NINTEGERFORMAT_Luogo Integer)"),
         QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("CREATE TABLE luoghi (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text,NINTEGERFORMAT_Luogo text)"),
         QStringLiteral("INSERT INTO autori VALUES (2,'Svevo, Italo'),(9,'Calvino'),"
                        "(12,'D''Annunzio'),(30,'')"),
         QStringLiteral("INSERT INTO luoghi VALUES (1,'Trieste','34100'),(5,'Sanremo','18038')")});
    EntryPage::openNew(*program.window);
    QCOMPARE(EntryPage::choices(*program.window, nome),
             (QStringList{QStringLiteral("---"), QStringLiteral("2 Svevo, Italo"),
                          QStringLiteral("9 Calvino"), QStringLiteral("12 D'Annunzio"),
                          QStringLiteral("30 ")}));
    // Another field than the title may be referenced; people still choose by the title.
    QCOMPARE(EntryPage::choices(*program.window, luogo),
             (QStringList{QStringLiteral("---"), QStringLiteral("1 Trieste"),
                          QStringLiteral("5 Sanremo")}));
    QCOMPARE(EntryPage::shown(*program.window, nome), QStringLiteral("---"));
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::choose(*program.window, nome, 3);
    EntryPage::choose(*program.window, luogo, 2);
    EntryPage::save(*program.window);
    const QVector<QVariantList> stored = program.here.rows(
        program.database, QStringLiteral("SELECT typeof(Xautori_XDTX_RSTRINGFORMAT_Nome),"
                                         "Xautori_XDTX_RSTRINGFORMAT_Nome,"
                                         "typeof(Xluoghi_XDTX_NINTEGERFORMAT_Luogo),"
                                         "Xluoghi_XDTX_NINTEGERFORMAT_Luogo FROM libri"));
    QCOMPARE(stored.first(),
             (QVariantList{QStringLiteral("integer"), 12, QStringLiteral("integer"), 5}));
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::shown(*program.window, nome), QStringLiteral("12 D'Annunzio"));
    QCOMPARE(EntryPage::shown(*program.window, luogo), QStringLiteral("5 Sanremo"));
}

void EntryValues::referenceOfMissingTable()
{
    const Started program(oneColumn(QStringLiteral("Xnessuna_XDTX_RSTRINGFORMAT_C Integer")) +
                          QStringList{QStringLiteral("INSERT INTO t VALUES (1,'x',4)")});
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::choices(*program.window, QStringLiteral("C")),
             QStringList{QStringLiteral("---")});
    EntryPage::enter(*program.window, Titolo, QStringLiteral("y"));
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("t")),
             QStringList{QStringLiteral("integer:1|text:'y'|integer:4")});
}

void EntryValues::linkChoicesShowListLines()
{
    // The lines of the record list: "----" without a title, references followed.
    const Started program(
        {QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Titolo text,NLINKFORMAT_autori text,"
                        "NLINKFORMAT_prestiti text)"),
         QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                        "Xautori_XDTX_RSTRINGFORMAT_Nome Integer)"),
         QStringLiteral("INSERT INTO autori VALUES (2,'Svevo'),(9,'D''Annunzio'),(12,'')"),
         QStringLiteral("INSERT INTO prestiti VALUES (1,9),(4,77)")});
    EntryPage::openNew(*program.window);
    QCOMPARE(EntryPage::choices(*program.window, QStringLiteral("autori")),
             (QStringList{QStringLiteral("---"), QStringLiteral("2 Svevo"),
                          QStringLiteral("9 D'Annunzio"), QStringLiteral("12 ----")}));
    QCOMPARE(EntryPage::choices(*program.window, QStringLiteral("prestiti")),
             (QStringList{QStringLiteral("---"), QStringLiteral("1 D'Annunzio"),
                          QStringLiteral("4 ----")}));
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::choose(*program.window, QStringLiteral("autori"), 2);
    EntryPage::choose(*program.window, QStringLiteral("prestiti"), 1);
    EntryPage::save(*program.window);
    QCOMPARE(program.rows(QStringLiteral("t")),
             QStringList{QStringLiteral("integer:1|text:'x'|text:'9 D''Annunzio'|"
                                        "text:'1 D''Annunzio'")});
}

void EntryValues::linkOfUnknownTextStays()
{
    const Started program(oneColumn(QStringLiteral("NLINKFORMAT_autori text")) +
                          QStringList{QStringLiteral("INSERT INTO t VALUES (1,'x','9 Vecchio')")});
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::shown(*program.window, Autore), QStringLiteral("9 Vecchio"));
    QCOMPARE(EntryPage::choices(*program.window, Autore).size(), 5);
    EntryPage::choose(*program.window, Autore, 0);
    EntryPage::choose(*program.window, Autore, 4);
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, QStringLiteral("NLINKFORMAT_autori")),
             QStringLiteral("text:'9 Vecchio'"));
}

void EntryValues::emptyLinkTakesTargetName()
{
    const Started program(oneColumn(QStringLiteral("NLINKFORMAT_autori text")));
    EntryPage::openNew(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("x"));
    EntryPage::save(*program.window);
    // The record is shown after it was saved, and that fills the link.
    QCOMPARE(storedValue(program, QStringLiteral("NLINKFORMAT_autori")),
             QStringLiteral("text:'autori'"));
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::shown(*program.window, Autore), QStringLiteral("autori"));
    EntryPage::save(*program.window);
    QCOMPARE(storedValue(program, QStringLiteral("NLINKFORMAT_autori")),
             QStringLiteral("text:'autori'"));
}

QTEST_MAIN(EntryValues)
#include "ui_entryvalues.moc"
