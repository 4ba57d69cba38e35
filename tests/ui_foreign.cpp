// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Databases that other programs or other people made: shown as far as possible, never obeyed.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/PngFile.h"
#include "tests/support/Sql.h"
#include "tests/support/UrlCatcher.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"

#include <QDir>
#include <QFile>
#include <QHelpEvent>
#include <QImageReader>
#include <QPushButton>
#include <QToolTip>

#include <sys/stat.h>

namespace
{

const QString Database = QStringLiteral("far/books.db");
const QString Lock = QStringLiteral("lockDb.dat");

const QString Ordinary = QStringLiteral("CREATE TABLE ultima (RINTEGERFORMAT_Id integer primary "
                                        "key,RSTRINGFORMAT_Nome text)");
const QString OrdinaryRow = QStringLiteral("INSERT INTO ultima VALUES (1,'fine')");

QString quoted(const QString &name, QChar mark)
{
    QString inside = name;
    inside.replace(mark, QString(2, mark));
    return mark + inside + mark;
}

QString sqlName(const QString &name)
{
    return quoted(name, QLatin1Char('"'));
}

QString sqlText(const QString &text)
{
    return quoted(text, QLatin1Char('\''));
}

// A table "libri" with a title and one further column, which holds one value.
QStringList oneField(const QString &column, const QString &value,
                     const QString &title = QStringLiteral("'Zeno'"))
{
    return {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                           "RSTRINGFORMAT_Titolo text,%1 text)")
                .arg(sqlName(column)),
            QStringLiteral("INSERT INTO libri VALUES (1,%1,%2)").arg(title, value), Ordinary,
            OrdinaryRow};
}

void make(const Workspace &here, const QStringList &statements)
{
    here.write(QStringLiteral("far/keep"), "");
    here.sql(Database, statements);
    here.remember(Database);
}

// Everything in the database but the program's own tables.
QStringList contents(const Workspace &here)
{
    const QString ours = QStringLiteral("('settings','filters','subtablesconfigs')");
    QStringList all =
        here.column(Database, QStringLiteral("SELECT name||': '||sql FROM sqlite_master WHERE sql "
                                             "IS NOT NULL AND name NOT IN ") +
                                  ours);
    const QStringList tables = here.column(
        Database, QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' AND name "
                                 "NOT IN ") +
                      ours);
    for (const QString &table : tables) {
        const QVector<QVariantList> rows =
            here.rows(Database, QStringLiteral("SELECT * FROM ") + sqlName(table));
        for (const QVariantList &row : rows) {
            QStringList values;
            for (const QVariant &value : row) {
                values.append(QString::fromLatin1(value.toByteArray().toHex()));
            }
            all.append(table + QLatin1Char('|') + values.join(QLatin1Char('|')));
        }
    }
    return all;
}

// What a curious person does: every table, every line, both orders, stepping and searching.
void lookAround(Tavenor &window)
{
    window.show();
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
    const int tables = Window::buttons(window).size();
    for (int table = 0; table < tables; ++table) {
        Window::click(*Window::buttons(window).at(table), "pbList");
        for (int row = 0; row < qMin(Window::lines(window).size(), 5); ++row) {
            Window::selectLine(window, row);
        }
        for (const char *const button :
             {"pbSort", "pbNext", "pbNext", "pbPrev", "pbUserNext", "pbUserPrev", "pbSort"}) {
            Window::click(window, button);
        }
        Window::get<QLineEdit>(window, "userSearchEdit")->setText(QStringLiteral("'\"; --%s"));
        Window::get<QLineEdit>(window, "userSearchEdit")->clear();
        window.vwRecord(-1);
    }
    window.grab();
}

// Presses everything on the shown record that hands something to the desktop.
void openEverything(const Tavenor &window)
{
    for (outputDataForm *const form : Window::fields(window)) {
        for (const char *const name : {"pbViewImage", "pbViewPdf", "pbMail"}) {
            if (Window::offers(*form, name)) {
                Window::get<QPushButton>(*form, name)->click();
            }
        }
    }
}

const QString Markup = QStringLiteral("<img src='pipe'><b>x</b>&amp;<a href='file:///'>y</a>");

} // namespace

class Foreign : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsWritten_data();
    void nothingIsWritten();
    void readOnlyCopyKeepsBytes_data();
    void readOnlyCopyKeepsBytes();
    void strangeTableNamesAreShown_data();
    void strangeTableNamesAreShown();
    void strangeColumnNamesAreShown_data();
    void strangeColumnNamesAreShown();
    void strangeTitleColumns_data();
    void strangeTitleColumns();
    void deletingFromStrangeTableIsRefused();
    void valuesThatAreNotWhatTheyShould_data();
    void valuesThatAreNotWhatTheyShould();
    void utf16_data();
    void utf16();
    void triggersDoNotRunByLooking();
    void failingTriggerIsTold();
    void markupIsText();
    void markupInAddress();
    void pathsOutside_data();
    void pathsOutside();
    void addresses_data();
    void addresses();
    void fifoAsPicture();
    void hugePicture();
    void longTitle();
    void manyColumns();
    void manyHiddenTables();
    void reservedNamesTaken();
};

void Foreign::nothingIsWritten_data()
{
    QTest::addColumn<QStringList>("statements");
    const auto row = [](const char *name, const QStringList &statements) {
        QTest::newRow(name) << statements + QStringList{Ordinary, OrdinaryRow};
    };
    const auto create = [](const char *sql) { return QString::fromUtf8(sql); };
    row("no Id column", {create("CREATE TABLE libri (titolo text,anno integer)"),
                         create("INSERT INTO libri VALUES ('Zeno',1923),('Alfa',NULL)")});
    row("one column", {create("CREATE TABLE libri (titolo text)"),
                       create("INSERT INTO libri VALUES ('Zeno'),(NULL)")});
    row("one column with a name of two words", {create("CREATE TABLE libri (\"il titolo\" text)"),
                                                create("INSERT INTO libri VALUES ('Zeno')")});
    row("Id alone", {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key)"),
                     create("INSERT INTO libri VALUES (1),(2)")});
    row("column without a name", {create("CREATE TABLE libri (\"\" text,\" \" text)"),
                                  create("INSERT INTO libri VALUES ('Zeno','b')")});
    row("Id not the first column",
        {create("CREATE TABLE libri (RSTRINGFORMAT_Titolo text,RINTEGERFORMAT_Id integer)"),
         create("INSERT INTO libri VALUES ('Zeno',1),('2',2)")});
    row("Ids that are no numbers",
        {create("CREATE TABLE libri (RINTEGERFORMAT_Id,RSTRINGFORMAT_Titolo text)"),
         create("INSERT INTO libri VALUES ('x','Zeno'),(NULL,'Alfa'),(1.5,'Mu'),(x'00ff','Nu'),"
                "(99999999999,'Xi'),(-3,'Pi'),(1,'Rho'),(1,'Sigma')")});
    row("views", {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                         "RSTRINGFORMAT_Titolo text)"),
                  create("CREATE VIEW vista AS SELECT * FROM libri"),
                  create("INSERT INTO libri VALUES (1,'Zeno')")});
    row("without rowid", {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                                 "RSTRINGFORMAT_Titolo text) WITHOUT ROWID"),
                          create("INSERT INTO libri VALUES (2,'Zeno'),(1,'Alfa')")});
    row("virtual tables", {create("CREATE VIRTUAL TABLE libri USING fts5(RINTEGERFORMAT_Id,"
                                  "RSTRINGFORMAT_Titolo)"),
                           create("INSERT INTO libri VALUES (1,'Zeno')"),
                           create("CREATE VIRTUAL TABLE vecchi USING fts4(titolo,testo)"),
                           create("INSERT INTO vecchi VALUES ('Zeno','x')")});
    row("generated columns", {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                                     "RSTRINGFORMAT_Titolo text AS ('T'||RINTEGERFORMAT_Id))"),
                              create("INSERT INTO libri VALUES (1),(2)")});
    row("references in a circle",
        {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                "Xlibri_XDTX_Xlibri_XDTX_RSTRINGFORMAT_a Integer,Xlibri_XDTX_RINTEGERFORMAT_Id "
                "Integer)"),
         create("INSERT INTO libri VALUES (1,1,1),(2,1,2)")});
    row("broken column names",
        {create("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,\"X\",\"XFORMAT_\","
                "\"X_XDTX_\",\"Xlibri_XDTX_\",\"Xultima_XDTX_FORMAT_\",\"FORMAT_\",\"_\","
                "\"NSTRINGFORMAT\",\"NSTRINGFORMAT_\",\"nstringformat_x\",\"FORMATFORMAT_FORMAT_\","
                "\"_XMLTYX_\",\"NSTRINGFORMAT__XMLTYX_\",\"a.b\",\"a\"\"b\",\"select\",\"[x]\","
                "\"current_date\",\"%s%n%d\",\"NSUBTABLEFORMAT_\",\"NPDFFORMAT_\")"),
         create("INSERT INTO libri VALUES (1,'a','b','c','d','e','f','g','h','i','j','k','l','m',"
                "'n','o','p','q','r','s','t','u')")});
    row("only markers as names",
        {create("CREATE TABLE HIDDENTABLE_ (a,b)"), create("CREATE TABLE _XSBTX_ (a,b)"),
         create("CREATE TABLE HIDDENTABLE_a_XSBTX_ (a,b)"),
         create("CREATE TABLE HIDDENTABLE__XSBTX_SUBTABLEFORMAT__XSBTUSRX_ (a,b)"),
         create("INSERT INTO HIDDENTABLE_ VALUES (1,2)")});
    row("empty tables", {create("CREATE TABLE libri (a)"), create("CREATE TABLE \"altri libri\" "
                                                                  "(\"a b\")")});
}

void Foreign::nothingIsWritten()
{
    QFETCH(QStringList, statements);
    const Workspace here;
    make(here, statements);
    const QStringList before = contents(here);
    {
        const ModalResponder responder;
        const UrlCatcher catcher;
        Tavenor window;
        lookAround(window);
        QVERIFY(responder.boxes().isEmpty());
        QVERIFY(catcher.urls().isEmpty());
        Window::pressTable(window, QStringLiteral("ultima"));
        QCOMPARE(Window::heading(window), QStringLiteral("fine"));
    }
    QCOMPARE(contents(here), before);
}

void Foreign::readOnlyCopyKeepsBytes_data()
{
    nothingIsWritten_data();
}

void Foreign::readOnlyCopyKeepsBytes()
{
    QFETCH(QStringList, statements);
    const Workspace here;
    make(here, statements);
    here.write(Lock, "Locked");
    const QByteArray before = here.read(Database);
    const QStringList files = QDir(here.path(QStringLiteral("far"))).entryList();
    {
        const ModalResponder responder;
        Tavenor window;
        lookAround(window);
        QVERIFY(responder.boxes().isEmpty());
    }
    QCOMPARE(here.read(Database), before);
    QCOMPARE(QDir(here.path(QStringLiteral("far"))).entryList(), files);
}

void Foreign::strangeTableNamesAreShown_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = {QStringLiteral("i miei libri"),
                               QStringLiteral("l'arte"),
                               QStringLiteral("\"a\""),
                               QStringLiteral("a,b"),
                               QStringLiteral("select"),
                               QStringLiteral("Table"),
                               QStringLiteral("a;b"),
                               QStringLiteral("a--"),
                               QStringLiteral("[a]"),
                               QStringLiteral("main.x"),
                               QStringLiteral("x AS SELECT 1 AS a"),
                               QStringLiteral("%s%n%d"),
                               QStringLiteral("1a"),
                               QStringLiteral("$a"),
                               QStringLiteral("`a`"),
                               QStringLiteral("a(b)"),
                               QStringLiteral("a\nb"),
                               QStringLiteral("città"),
                               QStringLiteral("📚"),
                               QStringLiteral(":a"),
                               QStringLiteral("?1"),
                               QStringLiteral("a/../../etc"),
                               QStringLiteral("ultima x")};
    for (const QString &name : names) {
        QTest::newRow(name.toUtf8().constData()) << name;
    }
}

void Foreign::strangeTableNamesAreShown()
{
    QFETCH(QString, name);
    const Workspace here;
    make(here, {QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                               "RSTRINGFORMAT_Titolo text)")
                    .arg(sqlName(name)),
                QStringLiteral("INSERT INTO %1 VALUES (1,'Zeno'),(2,'Alfa')").arg(sqlName(name)),
                Ordinary, OrdinaryRow});
    const QStringList before = contents(here);
    {
        const ModalResponder responder;
        Tavenor window;
        QCOMPARE(Window::tables(window).first(), name);
        QCOMPARE(Window::tableHeading(window), name);
        QCOMPARE(Window::lines(window),
                 (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zeno")}));
        Window::selectLine(window, 1);
        QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("Zeno"));
        lookAround(window);
        QVERIFY(responder.boxes().isEmpty());
    }
    QCOMPARE(contents(here), before);
}

void Foreign::strangeColumnNamesAreShown_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("label");
    const auto label = [](const char *name, const char *column, const char *shown) {
        QTest::newRow(name) << QString::fromUtf8(column) << QString::fromUtf8(shown);
    };
    label("blanks", "NSTRINGFORMAT_Il mio campo", "Il mio campo");
    label("apostrophe", "NSTRINGFORMAT_l'arte", "l'arte");
    label("double quotes, which the driver leaves out", "NSTRINGFORMAT_\"a\"", "a");
    label("comma", "NSTRINGFORMAT_a,b", "a,b");
    label("dot", "NSTRINGFORMAT_Vol. 1", "Vol. 1");
    label("markup", "NSTRINGFORMAT_<b>x</b>", "<b>x</b>");
    label("no format", "Anno", "Anno");
    label("no label", "NSTRINGFORMAT_", "NSTRINGFORMAT_");
    label("lower case", "nstringformat_x", "nstringformat_x");
    label("keyword", "select", "select");
    label("function", "current_date", "current_date");
    label("marks of print formats", "NSTRINGFORMAT_%s%n", "%s%n");
}

void Foreign::strangeColumnNamesAreShown()
{
    QFETCH(QString, column);
    QFETCH(QString, label);
    const Workspace here;
    make(here, oneField(column, QStringLiteral("'valore'")));
    const ModalResponder responder;
    const Tavenor window;
    QCOMPARE(Window::labels(window), (QStringList{QStringLiteral("Titolo"), label}));
    QCOMPARE(Window::shownText(window, label), QStringLiteral("valore"));
    QVERIFY(responder.boxes().isEmpty());
}

void Foreign::strangeTitleColumns_data()
{
    QTest::addColumn<QString>("column");
    const QStringList columns = {
        QStringLiteral("il titolo"),    QStringLiteral("a,b"),    QStringLiteral("Vol."),
        QStringLiteral("main.a"),       QStringLiteral("\"t\""),  QStringLiteral("l'arte"),
        QStringLiteral("current_date"), QStringLiteral("select"), QStringLiteral("a--")};
    for (const QString &column : columns) {
        QTest::newRow(column.toUtf8().constData()) << column;
    }
}

void Foreign::strangeTitleColumns()
{
    QFETCH(QString, column);
    const Workspace here;
    make(here, {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,%1 text)")
                    .arg(sqlName(column)),
                QStringLiteral("INSERT INTO libri VALUES (1,'Zeno'),(2,'Alfa')"), Ordinary});
    const Tavenor window;
    QCOMPARE(Window::lines(window), (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zeno")}));
    QCOMPARE(Window::get<QLabel>(window, "lbToolbar")->text(), QStringLiteral("2 Records"));
}

void Foreign::deletingFromStrangeTableIsRefused()
{
    const Workspace here;
    make(here,
         {QStringLiteral("CREATE TABLE \"ultima,libri\" (RINTEGERFORMAT_Id integer primary "
                         "key,RSTRINGFORMAT_Titolo text)"),
          QStringLiteral("INSERT INTO \"ultima,libri\" VALUES (1,'Zeno')"), Ordinary, OrdinaryRow});
    const QStringList before = contents(here);
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    responder.answer(QMessageBox::Ok);
    Window::click(window, "pbDeleteUser");
    QCOMPARE(responder.takeTexts().last(),
             QStringLiteral("ERRORE: Impossibile cancellare il record!\nIl nome 'ultima,libri' "
                            "contiene caratteri non ammessi: usare solo lettere, cifre e '_'."));
    QCOMPARE(contents(here), before);
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
}

void Foreign::valuesThatAreNotWhatTheyShould_data()
{
    QTest::addColumn<QStringList>("statements");
    const QStringList formats = {
        QStringLiteral("STRING"), QStringLiteral("DATE"),  QStringLiteral("INTEGER"),
        QStringLiteral("REAL"),   QStringLiteral("MONEY"), QStringLiteral("IMAGE"),
        QStringLiteral("PDF"),    QStringLiteral("BOOL"),  QStringLiteral("MAIL"),
        QStringLiteral("LINK"),   QStringLiteral("URL"),   QStringLiteral("LONGSTRING")};
    const QStringList values = {QStringLiteral("NULL"),
                                QStringLiteral("''"),
                                QStringLiteral("x'00ff80fe'"),
                                QStringLiteral("zeroblob(5000)"),
                                QStringLiteral("'a'||char(0)||'b'"),
                                QStringLiteral("9223372036854775807"),
                                QStringLiteral("-1e999"),
                                QStringLiteral("'nan'"),
                                QStringLiteral("'99/99/9999'"),
                                QStringLiteral("'%s%n%d'"),
                                QStringLiteral("char(55296,65534,8238,7)"),
                                QStringLiteral("'../../../etc/passwd'"),
                                QStringLiteral("'/dev/zero'")};
    // A record for each value, and tables in which the value is the title as well.
    for (const QString &format : formats) {
        QStringList statements =
            oneField(QStringLiteral("N%1FORMAT_Campo").arg(format), values.first());
        for (int i = 1; i < values.size(); ++i) {
            statements.append(QStringLiteral("INSERT INTO libri VALUES (%1,'Zeno %1',%2)")
                                  .arg(i + 1)
                                  .arg(values.at(i)));
        }
        QTest::newRow(qUtf8Printable(format)) << statements;
    }
    QStringList titles = {Ordinary, OrdinaryRow};
    for (int i = 0; i < values.size(); ++i) {
        titles.append(QStringLiteral("CREATE TABLE libri%1 (RINTEGERFORMAT_Id integer primary key,"
                                     "RSTRINGFORMAT_Titolo text,NSTRINGFORMAT_Campo text)")
                          .arg(i));
        titles.append(
            QStringLiteral("INSERT INTO libri%1 VALUES (1,%2,%2)").arg(i).arg(values.at(i)));
    }
    QTest::newRow("titles") << titles;
}

void Foreign::valuesThatAreNotWhatTheyShould()
{
    QFETCH(QStringList, statements);
    const Workspace here;
    make(here, statements);
    const QStringList before = contents(here);
    {
        const ModalResponder responder;
        UrlCatcher catcher;
        Tavenor window;
        lookAround(window);
        for (int table = 0; table < Window::buttons(window).size(); ++table) {
            Window::click(*Window::buttons(window).at(table), "pbList");
            for (int row = 0; row < Window::lines(window).size(); ++row) {
                Window::selectLine(window, row);
                openEverything(window);
            }
        }
        QVERIFY(responder.boxes().isEmpty());
        for (const QUrl &url : catcher.take()) {
            const bool inside = url.isLocalFile() &&
                                url.toLocalFile().startsWith(here.path(QStringLiteral("far/")));
            QVERIFY2(inside || url.scheme() == QStringLiteral("mailto"),
                     qPrintable(url.toString()));
        }
    }
    QCOMPARE(contents(here), before);
}

void Foreign::utf16_data()
{
    QTest::addColumn<QString>("encoding");
    QTest::newRow("little end first") << QStringLiteral("UTF-16le");
    QTest::newRow("big end first") << QStringLiteral("UTF-16be");
}

void Foreign::utf16()
{
    QFETCH(QString, encoding);
    const Workspace here;
    here.write(QStringLiteral("far/keep"), "");
    here.sql(Database, {QStringLiteral("PRAGMA encoding='%1'").arg(encoding),
                        QStringLiteral("CREATE TABLE città (RINTEGERFORMAT_Id integer primary key,"
                                       "RSTRINGFORMAT_Perché text)"),
                        QStringLiteral("INSERT INTO città VALUES (1,'€ 📚 è')"), Ordinary});
    here.remember(Database);
    QCOMPARE(here.value(Database, QStringLiteral("PRAGMA encoding")).toString(), encoding);
    const Tavenor window;
    QCOMPARE(Window::lines(window), QStringList{QStringLiteral("€ 📚 è")});
    QCOMPARE(Window::shownText(window, QStringLiteral("Perché")), QStringLiteral("€ 📚 è"));
}

void Foreign::triggersDoNotRunByLooking()
{
    const Workspace here;
    make(here, oneField(QStringLiteral("NSTRINGFORMAT_a"), QStringLiteral("'x'")) +
                   QStringList{QStringLiteral("CREATE TABLE spia (a)"),
                               QStringLiteral("CREATE TRIGGER t AFTER UPDATE ON libri BEGIN "
                                              "INSERT INTO spia VALUES (1); END"),
                               QStringLiteral("CREATE TRIGGER u AFTER INSERT ON libri BEGIN "
                                              "DELETE FROM ultima; END")});
    {
        Tavenor window;
        lookAround(window);
    }
    QCOMPARE(here.value(Database, QStringLiteral("SELECT count(*) FROM spia")).toInt(), 0);
    QCOMPARE(here.value(Database, QStringLiteral("SELECT count(*) FROM ultima")).toInt(), 1);
}

void Foreign::failingTriggerIsTold()
{
    // The empty link is written back; what stands against it is told, and the record shown.
    const Workspace here;
    make(here, oneField(QStringLiteral("NLINKFORMAT_ultima"), QStringLiteral("''")) +
                   QStringList{QStringLiteral("CREATE TRIGGER t BEFORE UPDATE ON libri BEGIN "
                                              "SELECT RAISE(ABORT,'niente da fare'); END")});
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    const Tavenor window;
    const QStringList texts = responder.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts.first().startsWith(
        QStringLiteral("ERRORE: Impossibile aggiornare il Record!\nniente da fare")));
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(
        here.value(Database, QStringLiteral("SELECT NLINKFORMAT_ultima FROM libri")).toString(),
        QString());
}

void Foreign::markupIsText()
{
    // Were it read as markup, the window would open the pipe and wait for ever.
    const Workspace here;
    QCOMPARE(mkfifo(qPrintable(here.path(QStringLiteral("pipe"))), 0600), 0);
    const QString column = QStringLiteral("NSTRINGFORMAT_") + Markup;
    make(
        here,
        {QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Titolo text,%2 text,NIMAGEFORMAT_Foto text)")
             .arg(sqlName(Markup), sqlName(column)),
         QStringLiteral("INSERT INTO %1 VALUES (1,%2,%2,%2)").arg(sqlName(Markup), sqlText(Markup)),
         Ordinary});
    Tavenor window;
    lookAround(window);
    Window::pressTable(window, Markup);
    QCOMPARE(Window::lines(window), QStringList{Markup});
    QCOMPARE(Window::heading(window), Markup);
    QCOMPARE(Window::tableHeading(window), Markup);
    QCOMPARE(Window::shownText(window, Markup), Markup);
    for (const QLabel *const label : window.findChildren<QLabel *>()) {
        if (label->text().contains(QStringLiteral("pipe"))) {
            QVERIFY2(label->textFormat() == Qt::PlainText, qPrintable(label->objectName()));
        }
    }
    int tips = 0;
    for (QWidget *const widget : window.findChildren<QWidget *>()) {
        if (!widget->toolTip().contains(QStringLiteral("pipe")) || !widget->isVisible()) {
            continue;
        }
        ++tips;
        QHelpEvent ask(QEvent::ToolTip, QPoint(1, 1), widget->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(widget, &ask);
        QVERIFY2(!QToolTip::text().contains(QStringLiteral("<img")),
                 qPrintable(widget->objectName()));
        QToolTip::hideText();
    }
    QVERIFY(tips > 0);
}

void Foreign::markupInAddress()
{
    const Workspace here;
    make(here, oneField(QStringLiteral("NURLFORMAT_Sito"),
                        sqlText(QStringLiteral("http://a\"><img src='pipe'>"))));
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("Sito"));
    const QString shown = Window::get<QLabel>(*form, "lbUrl")->text();
    QVERIFY(!shown.contains(QStringLiteral("<img")));
    QCOMPARE(shown.count(QLatin1Char('<')), 2);
}

void Foreign::pathsOutside_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("opened");
    QTest::newRow("inside") << QStringLiteral("doc/a.pdf") << true;
    QTest::newRow("inside, not there") << QStringLiteral("doc/gone.pdf") << true;
    QTest::newRow("above") << QStringLiteral("../out.pdf") << false;
    QTest::newRow("down and up") << QStringLiteral("doc/../../out.pdf") << false;
    QTest::newRow("up inside the folder") << QStringLiteral("doc/../doc/a.pdf") << false;
    QTest::newRow("absolute") << QStringLiteral("/etc/passwd") << false;
    QTest::newRow("absolute, doubled") << QStringLiteral("//etc/passwd") << false;
    QTest::newRow("address") << QStringLiteral("file:///etc/passwd") << true;
    QTest::newRow("link that leads outside") << QStringLiteral("doc/link.pdf") << false;
    QTest::newRow("script") << QStringLiteral("doc/a.sh") << false;
    QTest::newRow("program in capitals") << QStringLiteral("doc/A.EXE") << false;
    QTest::newRow("starter of the desktop") << QStringLiteral("doc/a.desktop") << false;
    QTest::newRow("link that leads to a script") << QStringLiteral("doc/script.pdf") << false;
    QTest::newRow("built-in file") << QStringLiteral(":/listIcon") << false;
}

void Foreign::pathsOutside()
{
    QFETCH(QString, path);
    QFETCH(bool, opened);
    const Workspace here;
    here.write(QStringLiteral("out.pdf"), "x");
    here.write(QStringLiteral("far/doc/a.pdf"), "x");
    here.write(QStringLiteral("far/doc/a.sh"), "x");
    const QString doc = here.path(QStringLiteral("far/doc/"));
    QVERIFY(QFile::link(here.path(QStringLiteral("out.pdf")), doc + QStringLiteral("link.pdf")));
    QVERIFY(QFile::link(doc + QStringLiteral("a.sh"), doc + QStringLiteral("script.pdf")));
    make(here, {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                               "RSTRINGFORMAT_Titolo text,NIMAGEFORMAT_Foto text,NPDFFORMAT_Doc "
                               "text)"),
                QStringLiteral("INSERT INTO libri VALUES (1,'Zeno',%1,%1)").arg(sqlText(path)),
                Ordinary});
    UrlCatcher catcher;
    const Tavenor window;
    QCOMPARE(Window::labels(window).size(), 3);
    openEverything(window);
    const QList<QUrl> urls = catcher.take();
    QCOMPARE(urls.size(), opened ? 2 : 0);
    for (const QUrl &url : urls) {
        QVERIFY(url.isLocalFile());
        QVERIFY(url.toLocalFile().startsWith(here.path(QStringLiteral("far/"))));
    }
}

void Foreign::addresses_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<bool>("opened");
    QTest::newRow("web address") << QStringLiteral("https://example.org/") << true;
    QTest::newRow("without a scheme") << QStringLiteral("example.org") << true;
    QTest::newRow("file") << QStringLiteral("file:///etc/passwd") << false;
    QTest::newRow("local path") << QStringLiteral("/etc/passwd") << false;
    QTest::newRow("script") << QStringLiteral("javascript:alert(1)") << false;
    QTest::newRow("option of a program") << QStringLiteral("--help") << false;
}

void Foreign::addresses()
{
    QFETCH(QString, link);
    QFETCH(bool, opened);
    const Workspace here;
    make(here, oneField(QStringLiteral("NURLFORMAT_Sito"), sqlText(link)));
    UrlCatcher catcher;
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("Sito"));
    emit Window::get<QLabel>(*form, "lbUrl")->linkActivated(link);
    QCOMPARE(catcher.take().size(), opened ? 1 : 0);
}

void Foreign::fifoAsPicture()
{
    const Workspace here;
    here.write(QStringLiteral("far/doc/keep"), "");
    QCOMPARE(mkfifo(qPrintable(here.path(QStringLiteral("far/doc/pipe.png"))), 0600), 0);
    make(here, oneField(QStringLiteral("NIMAGEFORMAT_Foto"), sqlText(QStringLiteral("doc/"
                                                                                    "pipe.png"))));
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("Foto"));
    QVERIFY(Window::get<QLabel>(*form, "lbImage")->pixmap(Qt::ReturnByValue).isNull());
    QCOMPARE(Window::shownText(window, QStringLiteral("Foto")), QStringLiteral("pipe.png"));
}

void Foreign::hugePicture()
{
    const Workspace here;
    here.write(QStringLiteral("far/doc/huge.png"), pngOfSize(30000, 30000));
    make(here, oneField(QStringLiteral("NIMAGEFORMAT_Foto"), sqlText(QStringLiteral("doc/"
                                                                                    "huge.png"))));
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("Foto"));
    QVERIFY(Window::get<QLabel>(*form, "lbImage")->pixmap(Qt::ReturnByValue).isNull());
    // The header is sound, so the size is what decides.
    QCOMPARE(QImageReader(here.path(QStringLiteral("far/doc/huge.png"))).size(),
             QSize(30000, 30000));
}

void Foreign::longTitle()
{
    const Workspace here;
    const int length = 1000000;
    const QString title =
        QStringLiteral("replace(hex(zeroblob(%1)),'00','ab cd<b>')").arg(length / 8);
    make(here, oneField(QStringLiteral("NLONGSTRINGFORMAT_Testo"), title, title));
    const ModalResponder responder;
    Tavenor window;
    window.show();
    QCOMPARE(Window::heading(window).size(), length);
    QCOMPARE(Window::shownText(window, QStringLiteral("Testo")).size(), length);
    Window::get<QLineEdit>(window, "userSearchEdit")->setText(QStringLiteral("AB CD"));
    Window::click(window, "pbSort");
    QCOMPARE(Window::lines(window).first().size(), length);
    window.grab();
    QVERIFY(responder.boxes().isEmpty());
}

void Foreign::manyColumns()
{
    const Workspace here;
    QStringList columns;
    QStringList values;
    for (int i = 1; i <= 300; ++i) {
        columns.append(QStringLiteral("NSTRINGFORMAT_c%1 text").arg(i));
        values.append(QStringLiteral("'v%1'").arg(i));
    }
    const QString comma = QStringLiteral(",");
    make(here,
         {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,%1)")
              .arg(columns.join(comma)),
          QStringLiteral("INSERT INTO libri VALUES (1,%1)").arg(values.join(comma)), Ordinary});
    Tavenor window;
    window.show();
    QCOMPARE(Window::fields(window).size(), 300);
    QCOMPARE(Window::shownText(window, QStringLiteral("c300")), QStringLiteral("v300"));
    Window::pressTable(window, QStringLiteral("ultima"));
    QVERIFY(Window::fields(window).isEmpty());
}

void Foreign::manyHiddenTables()
{
    const Workspace here;
    QStringList statements = {Ordinary, OrdinaryRow};
    for (int i = 0; i < 2000; ++i) {
        statements.append(QStringLiteral("CREATE TABLE HIDDENTABLE_t%1 (a,b)").arg(i));
    }
    make(here, statements);
    Tavenor window;
    window.show();
    QCOMPARE(Window::tables(window), QStringList{QStringLiteral("ultima")});
    QCOMPARE(Window::heading(window), QStringLiteral("fine"));
    window.administratorModeEnabled(true);
    Window::action(window, "actionShow_Hidden_Tables")->trigger();
    QCOMPARE(Window::buttons(window).size(), 2001);
    Window::click(*Window::buttons(window).last(), "pbList");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("#t1999"));
}

void Foreign::reservedNamesTaken()
{
    // Tables of other columns under the program's own names: nothing of theirs is changed.
    const Workspace here;
    make(here, {QStringLiteral("CREATE TABLE settings (\"a b\" text)"),
                QStringLiteral("INSERT INTO settings VALUES ('x')"),
                QStringLiteral("CREATE TABLE filters (a,b)"),
                QStringLiteral("INSERT INTO filters VALUES (1,2)"),
                QStringLiteral("CREATE TABLE subtablesconfigs (a)"), Ordinary, OrdinaryRow});
    const QByteArray before = here.read(Database);
    {
        const ModalResponder responder;
        Tavenor window;
        QCOMPARE(Window::tables(window), QStringList{QStringLiteral("ultima")});
        QVERIFY(Window::buttons(window, "filtersButtonLayout").isEmpty());
        lookAround(window);
        QVERIFY(responder.boxes().isEmpty());
    }
    QCOMPARE(here.read(Database), before);
}

QTEST_MAIN(Foreign)
#include "ui_foreign.moc"
