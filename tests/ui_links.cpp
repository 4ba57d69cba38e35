// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Jumps from a record to the records that refer to it.
#include "model/formats.h"
#include "tests/support/EntryPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Workspace.h"

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Libri = QStringLiteral("libri");
const QString Autori = QStringLiteral("autori");

// Authors link to books and books to authors; loans hold a reference, a link and a column that
// only has the books' name in its own.
const QStringList Collection = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLINKFORMAT_autori text,NLINKFORMAT_prestiti text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NLINKFORMAT_libri text,NSTRINGFORMAT_Note text)"),
    QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Socio text,Xlibri_XDTX_RSTRINGFORMAT_Titolo Integer,"
                   "NSTRINGFORMAT_libri_visti text)"),
    QStringLiteral("INSERT INTO libri VALUES (12,'Rossi','3 Levi','prestiti'),"
                   "(13,'L''isola','autori','3 Levi'),(14,'Zeno','99 Nessuno','prestiti')"),
    QStringLiteral("INSERT INTO autori VALUES (3,'Levi','12 Rossi','x'),"
                   "(4,'Calvino','13 L''isola','x'),(5,'Svevo','12 Rossi e altri','x'),"
                   "(6,'Moravia','12 Rossi','y'),(7,'Eco','libri','y')"),
    QStringLiteral("INSERT INTO prestiti VALUES (1,'Anna',12,''),(2,'Bruno',13,'12 Rossi'),"
                   "(3,'Carla',13,'')"),
};

// Presses "Trova" of a field of the record shown.
void find(const Tavenor &window, const QString &label)
{
    Window::click(*Window::field(window, label), "pbLink");
}

struct Started {
    Started()
    {
        here.sql(Books, Collection);
        here.remember(Books);
        window = std::make_unique<Tavenor>();
    }
    Workspace here;
    std::unique_ptr<Tavenor> window;
};

} // namespace

class Links : public QObject
{
    Q_OBJECT

private slots:
    void recordsThatRefer();
    void theListIsReadOnce();
    void setsTheConditions();
    void titleWithApostrophe();
    void tableOfALinkValue();
    void firstOfEqualValues();
    void nothingToGoTo_data();
    void nothingToGoTo();
    void linkWithoutTargetIsText();
    void referencesCompareIds();
    void nobodyRefers();
    void wayBack();
    void byHandEverythingPasses();
    void changeByHandEndsTheMark_data();
    void changeByHandEndsTheMark();
    void cancelKeepsTheMark();
    void savedFilterDoesNotCarryTheMark();
    void columnsThatContainTheName();
    void linksToAHiddenTable();
    void linksToTablesNamedAfterFormats();
};

void Links::recordsThatRefer()
{
    const Started started;
    const Tavenor &window = *started.window;
    QCOMPARE(Window::lines(window).value(0), QStringLiteral("L'isola"));
    Window::selectLine(window, 1);
    QCOMPARE(Window::heading(window), QStringLiteral("Rossi"));
    find(window, Autori);
    QCOMPARE(Window::tableHeading(window), Autori);
    QCOMPARE(Window::markedTables(window), QStringList{Autori});
    // The whole text counts, so "12 Rossi e altri" does not.
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Levi"), QStringLiteral("Moravia")}));
    QCOMPARE(Window::heading(window), QStringLiteral("Levi"));
    QCOMPARE(FilterPage::page(window), 2);
    QVERIFY(FilterPage::isLit(window));
}

void Links::theListIsReadOnce()
{
    const Started started;
    const Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    const QSignalSpy filled(Window::get<QListWidget>(window, "userListWidget")->model(),
                            &QAbstractItemModel::rowsInserted);
    find(window, Autori);
    QCOMPARE(Window::lines(window).size(), 2);
    QCOMPARE(filled.size(), 1);
}

void Links::setsTheConditions()
{
    const Started started;
    Tavenor &window = *started.window;
    window.changeTable(Autori);
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Nome"), QStringLiteral("Levi"));
    window.linkToFilter(12, Libri, QStringLiteral("Rossi"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("libri Equal 12 Rossi Or")});
    for (const char *const label : {"Id", "Nome", "Note"}) {
        QCOMPARE(FilterPage::condition(window, QString::fromUtf8(label)).conditionName(),
                 QStringLiteral("NoCondition"));
    }
    // Again, over the same value.
    window.linkToFilter(12, Libri, QStringLiteral("Rossi"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("libri Equal 12 Rossi Or")});
    QCOMPARE(Window::lines(window).size(), 2);
}

void Links::titleWithApostrophe()
{
    const Started started;
    const Tavenor &window = *started.window;
    QCOMPARE(Window::heading(window), QStringLiteral("L'isola"));
    find(window, Autori);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Calvino")});
}

void Links::tableOfALinkValue()
{
    // The value is no table's name; the field that holds it knows where it leads.
    const Started started;
    Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    window.callFilter(QStringLiteral("3 Levi"), 12);
    QCOMPARE(Window::tableHeading(window), Autori);
    QCOMPARE(Window::lines(window).size(), 2);
}

void Links::firstOfEqualValues()
{
    const Started started;
    started.here.sql(Books, {QStringLiteral("UPDATE libri SET NLINKFORMAT_prestiti='3 Levi'")});
    Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    window.callFilter(QStringLiteral("3 Levi"), 12);
    QCOMPARE(Window::tableHeading(window), Autori);
}

void Links::nothingToGoTo_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("neither a table nor a value") << QStringLiteral("altrove");
    QTest::newRow("nothing") << QString();
    QTest::newRow("a table's name in another case") << QStringLiteral("AUTORI");
    QTest::newRow("a value of another record") << QStringLiteral("99 Nessuno");
}

void Links::nothingToGoTo()
{
    QFETCH(QString, target);
    const Started started;
    Tavenor &window = *started.window;
    const ModalResponder responder;
    window.callFilter(target, 13);
    QCOMPARE(Window::tableHeading(window), Libri);
    QCOMPARE(Window::heading(window), QStringLiteral("L'isola"));
    QVERIFY(Window::get<QWidget>(window, "pbReturn")->isHidden());
    QVERIFY(!FilterPage::isLit(window));
    QVERIFY(responder.boxes().isEmpty());
}

void Links::linkWithoutTargetIsText()
{
    const Started started;
    started.here.sql(Books, {QStringLiteral("DROP TABLE prestiti")});
    const Tavenor &window = *started.window;
    Window::pressTable(window, Libri);
    const outputDataForm *const field = Window::field(window, QStringLiteral("prestiti"));
    QVERIFY(!Window::offers(*field, "pbLink"));
    QCOMPARE(Window::shownText(window, QStringLiteral("prestiti")), QStringLiteral("3 Levi"));
    QVERIFY(Window::offers(*Window::field(window, Autori), "pbLink"));
}

void Links::referencesCompareIds()
{
    const Started started;
    Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    find(window, QStringLiteral("prestiti"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("prestiti"));
    // Anna by the Id, Bruno by the column that has the table's name in its own.
    QCOMPARE(Window::lines(window), (QStringList{QStringLiteral("Anna"), QStringLiteral("Bruno")}));
    FilterPage::open(window);
    QCOMPARE(
        FilterPage::part<QComboBox>(window, QStringLiteral("Titolo"), "cboxData")->currentText(),
        QStringLiteral("Rossi"));
}

void Links::columnsThatContainTheName()
{
    const Started started;
    Tavenor &window = *started.window;
    window.changeTable(QStringLiteral("prestiti"));
    window.linkToFilter(12, Libri, QStringLiteral("Rossi"));
    QCOMPARE(FilterPage::active(window),
             (QStringList{QStringLiteral("Titolo Equal 12 Rossi Or"),
                          QStringLiteral("libri_visti Equal 12 Rossi Or")}));
}

void Links::nobodyRefers()
{
    const Started started;
    Tavenor &window = *started.window;
    window.changeTable(Autori);
    window.callFilter(QStringLiteral("prestiti"), 4);
    // No column of it has the calling table's name: everything passes.
    QCOMPARE(Window::lines(window).size(), 3);
    QVERIFY(FilterPage::active(window).isEmpty());
    QVERIFY(!FilterPage::isLit(window));
}

void Links::wayBack()
{
    const Started started;
    const Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    find(window, Autori);
    QVERIFY(!Window::get<QWidget>(window, "pbReturn")->isHidden());
    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), Libri);
    QCOMPARE(Window::heading(window), QStringLiteral("Rossi"));
    QCOMPARE(Window::lines(window).size(), 3);
    QVERIFY(!FilterPage::isLit(window));
    QVERIFY(Window::get<QWidget>(window, "pbReturn")->isHidden());
}

void Links::byHandEverythingPasses()
{
    const Started started;
    const Tavenor &window = *started.window;
    Window::pressTable(window, Autori);
    FilterPage::open(window);
    FilterPage::part<QComboBox>(window, Libri, "cboxData")->setCurrentIndex(1);
    FilterPage::apply(window);
    QVERIFY(FilterPage::isLit(window));
    QCOMPARE(Window::lines(window).size(), 5);
}

void Links::changeByHandEndsTheMark_data()
{
    QTest::addColumn<QString>("button");
    for (const char *const name : {"pbEqual", "pbDiff", "pbMajor", "pbMinor", "pbAnd", "pbOr"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
    QTest::newRow("another choice") << QString();
}

void Links::changeByHandEndsTheMark()
{
    QFETCH(QString, button);
    const Started started;
    const Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    find(window, Autori);
    FilterPage::open(window);
    if (button.isEmpty()) {
        FilterPage::part<QComboBox>(window, Libri, "cboxData")->setCurrentIndex(2);
    } else {
        FilterPage::press(window, Libri, button.toUtf8().constData());
    }
    FilterPage::apply(window);
    QCOMPARE(Window::lines(window).size(), 5);
}

void Links::cancelKeepsTheMark()
{
    const Started started;
    Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    find(window, Autori);
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Note"), QStringLiteral("y"));
    Window::click(window, "pbCancelFilters");
    QCOMPARE(Window::lines(window).size(), 2);
    window.changeToUsersPage();
    QCOMPARE(Window::lines(window).size(), 2);
    FilterPage::open(window);
    FilterPage::enter(window, QStringLiteral("Nome"), QStringLiteral("Moravia"));
    FilterPage::apply(window);
    // Name and link, joined by the link's "Or".
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Levi"), QStringLiteral("Moravia")}));
}

void Links::savedFilterDoesNotCarryTheMark()
{
    const Started started;
    const Tavenor &window = *started.window;
    Window::selectLine(window, 1);
    find(window, Autori);
    FilterPage::open(window);
    FilterPage::save(window, QStringLiteral("Rossi"));
    QCOMPARE(Window::lines(window).size(), 2);
    FilterPage::load(window, QStringLiteral("Rossi"));
    QCOMPARE(FilterPage::active(window), QStringList{QStringLiteral("libri Equal 12 Rossi Or")});
    QCOMPARE(Window::lines(window).size(), 5);
}

void Links::linksToAHiddenTable()
{
    // The column carries the table's shown name, in a form that SQL can take.
    Workspace here;
    here.sql(
        Books,
        {QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer primary "
                        "key,RSTRINGFORMAT_Nota text,NLINKFORMAT_libri text)"),
         QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Titolo text,NLINKFORMAT_＃note text)"),
         QStringLiteral("INSERT INTO HIDDENTABLE_note VALUES (1,'Abate','libri')"),
         QStringLiteral("INSERT INTO libri VALUES (1,'Zeno','1 Abate'),(2,'Emma','9 Altro')")});
    here.remember(Books);
    Tavenor window;
    window.changeTable(QStringLiteral("HIDDENTABLE_note"));
    find(window, Libri);
    QCOMPARE(Window::tableHeading(window), Libri);
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("Zeno")});
    QVERIFY(FilterPage::isLit(window));
}

void Links::linksToTablesNamedAfterFormats()
{
    // Made by another program, or before such names were refused: a link is a link whatever the
    // words in its table's name.
    QStringList names;
    QStringList columns = {QStringLiteral("RINTEGERFORMAT_Id integer primary key"),
                           QStringLiteral("RSTRINGFORMAT_Titolo text")};
    QStringList values = {QStringLiteral("1,'Zeno'")};
    QStringList statements;
    for (const QString &keyword : Formats::keywords()) {
        names.append(keyword.toLower() + QStringLiteral("_x"));
        columns.append(QStringLiteral("NLINKFORMAT_%1 text").arg(names.last()));
        values.append(QStringLiteral("'1 %1'").arg(names.last()));
        statements += {QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                                      "RSTRINGFORMAT_Nome text,NLINKFORMAT_libri text)")
                           .arg(names.last()),
                       QStringLiteral("INSERT INTO %1 VALUES (1,'%1','1 Zeno'),(2,'Due','')")
                           .arg(names.last())};
    }
    statements +=
        {QStringLiteral("CREATE TABLE libri (%1)").arg(columns.join(QLatin1Char(','))),
         QStringLiteral("INSERT INTO libri VALUES (%1)").arg(values.join(QLatin1Char(',')))};
    const Workspace here;
    here.sql(Books, statements);
    here.remember(Books);
    Tavenor window;
    window.changeTable(Libri);
    QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Titolo")} + names);
    Window::click(window, "pbEditUser");
    for (const QString &name : qAsConst(names)) {
        QCOMPARE(EntryPage::choices(window, name),
                 (QStringList{QStringLiteral("---"), QStringLiteral("1 ") + name,
                              QStringLiteral("2 Due")}));
        QCOMPARE(EntryPage::shown(window, name), QStringLiteral("1 ") + name);
    }
    Window::click(window, "pbCancelEdit");
    for (const QString &name : qAsConst(names)) {
        window.changeTable(Libri);
        find(window, name);
        QCOMPARE(Window::tableHeading(window), name);
        QCOMPARE(Window::lines(window), QStringList{name});
    }
}

QTEST_MAIN(Links)
#include "ui_links.moc"
