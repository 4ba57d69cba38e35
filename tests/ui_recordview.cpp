// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The record view: formats, references, links, sub-tables, steps and jumps.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/UrlCatcher.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"

#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QPushButton>

namespace
{

const QString Books = QStringLiteral("books.db");
const QString Lock = QStringLiteral("lockDb.dat");

// A second table, so that the first one is shown when the program starts.
const QString Autori = QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                                      "RSTRINGFORMAT_Nome text)");
const QString TwoAuthors = QStringLiteral("INSERT INTO autori VALUES (12,'Svevo'),(13,'Calvino')");
const QString Configs = QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer "
                                       "primary key,RSTRINGFORMAT_subConfigName text,"
                                       "NSTRINGFORMAT_subConfigFieldName text,"
                                       "NSTRINGFORMAT_subConfigFieldType text)");
const QString LoanConfig = QStringLiteral(
    "INSERT INTO subtablesconfigs VALUES (1,'libri_Prestiti','NLONGSTRINGFORMAT_UserPath',''),"
    "(2,'libri_Prestiti_XSBCONFX_1','RSTRINGFORMAT_Chi','text'),"
    "(3,'libri_Prestiti_XSBCONFX_3','NDATEFORMAT_Quando','text')");
const QString LoansOfZeno =
    QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Zeno");

QString createTable(const QString &name, const QStringList &columns)
{
    return QStringLiteral("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,%2)")
        .arg(name, columns.join(QLatin1Char(',')));
}

// A table "libri" with these columns and one row of values, before the table "autori".
QStringList booksWith(const QStringList &columns, const QString &values)
{
    return {createTable(QStringLiteral("libri"), columns), Autori, TwoAuthors,
            QStringLiteral("INSERT INTO libri VALUES (%1)").arg(values)};
}

QStringList booksWithLoans()
{
    return {createTable(QStringLiteral("libri"), {QStringLiteral("RSTRINGFORMAT_Titolo text"),
                                                  QStringLiteral("NSUBTABLEFORMAT_Prestiti text")}),
            Autori,
            TwoAuthors,
            Configs,
            LoanConfig,
            QStringLiteral("INSERT INTO libri VALUES (1,'Zeno',''),(2,'Atlante','')")};
}

void press(const Tavenor &window, const QString &label, const char *button)
{
    const outputDataForm *const form = Window::field(window, label);
    if (form == nullptr) {
        qFatal("no field %s", qPrintable(label));
    }
    Window::click(*form, button);
    // The pressed form left the page; it goes when control is back in the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The names of the value parts that the field shows.
QStringList partsOf(const outputDataForm &form)
{
    QStringList parts;
    for (const char *const name : {"leData", "cbData", "lbUrl", "imageFrame", "pbMail", "pbViewPdf",
                                   "pbSubTable", "pbLink", "pbXView"}) {
        if (Window::offers(form, name)) {
            parts.append(QString::fromUtf8(name));
        }
    }
    return parts;
}

void advancedMode(const Tavenor &window)
{
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::action(window, "actionTech_Mod")->trigger();
}

QString columnsOf(const Workspace &here, const QString &table)
{
    return here
        .column(Books, QStringLiteral("SELECT name||' '||lower(type) FROM pragma_table_info('%1')")
                           .arg(QString(table).replace(QLatin1Char('\''), QStringLiteral("''"))))
        .join(QStringLiteral(", "));
}

} // namespace

class RecordView : public QObject
{
    Q_OBJECT

private slots:
    void everyFormat_data();
    void everyFormat();
    void yesAndNo_data();
    void yesAndNo();
    void pictureComesFromTheFolder();
    void attachmentsAreOpenedFromTheFolder();
    void emptyFieldsAreNotPlaced();
    void fieldsKeepTableOrder();
    void labels_data();
    void labels();
    void ownFieldsInAdvancedModeOnly();
    void reference_data();
    void reference();
    void emptyLinkIsWrittenBack_data();
    void emptyLinkIsWrittenBack();
    void emptyLinkOfReadOnlyCopy();
    void emptyLinkInAdvancedModeAsksNothing();
    void otherFieldsKeepTheirBytes();
    void linkValues_data();
    void linkValues();
    void stepping();
    void steppingIsLimitedByTheEntries();
    void steppingMeetsUntitledLine();
    void untitledRecordsAndTheEntries_data();
    void untitledRecordsAndTheEntries();
    void steppingInEmptyTable();
    void unknownIdShowsFirstRow();
    void unknownIdWithoutSelection();
    void jumpAndBack();
    void jumpToRecordThatIsGone();
    void jumpToOneOfEqualTitles();
    void secondJumpForgetsTheFirst();
    void historyStaysAfterGoingBack();
    void anotherDatabaseHidesTheWayBack();
    void detailTableIsCreated();
    void detailTableIsOpened();
    void newestDetailRecordIsTheCurrentOne();
    void newestDetailRecordWithoutATitle();
    void detailColumnsAreFoundByContainment();
    void detailOfHiddenTable();
    void detailWithoutConfiguration();
    void detailOfUntitledRecord();
    void detailNameTakenBesidesIt();
    void detailNames_data();
    void detailNames();
    void detailInReadOnlyCopy();
    void detailAndBack();
    void detailFlagIsAlwaysN();
    void hideList();
    void texts();
};

void RecordView::everyFormat_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("shown");
    const QString text = QStringLiteral("leData");
    const auto row = [](const char *name, const char *format) -> QTestData & {
        return QTest::newRow(name) << QStringLiteral("N%1_Campo").arg(QString::fromUtf8(format));
    };
    row("text", "STRINGFORMAT") << QStringLiteral("uno due") << QStringList{text}
                                << QStringLiteral("uno due");
    row("long text", "LONGSTRINGFORMAT")
        << QStringLiteral("uno\ndue") << QStringList{text} << QStringLiteral("uno\ndue");
    row("date as stored", "DATEFORMAT")
        << QStringLiteral("31/12/1999") << QStringList{text} << QStringLiteral("31/12/1999");
    row("date that is none as stored", "DATEFORMAT")
        << QStringLiteral("1999-12-31") << QStringList{text} << QStringLiteral("1999-12-31");
    row("integer", "INTEGERFORMAT")
        << QStringLiteral("42") << QStringList{text} << QStringLiteral("42");
    row("integer that is none as stored", "INTEGERFORMAT")
        << QStringLiteral("molti") << QStringList{text} << QStringLiteral("molti");
    row("real as stored", "REALFORMAT")
        << QStringLiteral("2.500000") << QStringList{text} << QStringLiteral("2.500000");
    row("money with two decimals", "MONEYFORMAT")
        << QStringLiteral("3") << QStringList{text} << QStringLiteral("3.00€");
    row("money that is none is zero", "MONEYFORMAT")
        << QStringLiteral("tanto") << QStringList{text} << QStringLiteral("0.00€");
    row("picture with its file name", "IMAGEFORMAT")
        << QStringLiteral("img/a/b.png") << QStringList{text, QStringLiteral("imageFrame")}
        << QStringLiteral("b.png");
    row("PDF with its file name", "PDFFORMAT")
        << QStringLiteral("doc/a b.pdf") << QStringList{text, QStringLiteral("pbViewPdf")}
        << QStringLiteral("a b.pdf");
    row("mail", "MAILFORMAT") << QStringLiteral("a@b.it")
                              << QStringList{text, QStringLiteral("pbMail")}
                              << QStringLiteral("a@b.it");
    row("web address", "URLFORMAT")
        << QStringLiteral("http://b.it") << QStringList{QStringLiteral("lbUrl")} << QString();
    row("sub-table", "SUBTABLEFORMAT")
        << QStringLiteral("x") << QStringList{QStringLiteral("pbSubTable")} << QString();
    row("unknown format as stored", "COLORFORMAT")
        << QStringLiteral("rosso") << QStringList{text} << QStringLiteral("rosso");
    row("format of another case as stored", "moneyFORMAT")
        << QStringLiteral("3") << QStringList{text} << QStringLiteral("3");
}

void RecordView::everyFormat()
{
    QFETCH(QString, column);
    QFETCH(QString, stored);
    QFETCH(QStringList, parts);
    QFETCH(QString, shown);
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               column + QStringLiteral(" text")},
                              QStringLiteral("1,'Zeno','%1'").arg(stored)));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window),
             (QStringList{QStringLiteral("Titolo"), QStringLiteral("Campo")}));
    const outputDataForm *const form = Window::field(window, QStringLiteral("Campo"));
    QCOMPARE(partsOf(*form), parts);
    if (parts.contains(QStringLiteral("leData"))) {
        QCOMPARE(Window::shownText(window, QStringLiteral("Campo")), shown);
    }
}

void RecordView::yesAndNo_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("yes");
    QTest::newRow("TRUE") << QStringLiteral("TRUE") << true;
    QTest::newRow("true") << QStringLiteral("true") << true;
    QTest::newRow("1") << QStringLiteral("1") << true;
    QTest::newRow("any word") << QStringLiteral("forse") << true;
    QTest::newRow("FALSE") << QStringLiteral("FALSE") << false;
    QTest::newRow("0") << QStringLiteral("0") << false;
}

void RecordView::yesAndNo()
{
    QFETCH(QString, stored);
    QFETCH(bool, yes);
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NBOOLFORMAT_Letto text")},
                              QStringLiteral("1,'Zeno','%1'").arg(stored)));
    here.remember(Books);
    Tavenor window;
    window.show();
    const outputDataForm *const form = Window::field(window, QStringLiteral("Letto"));
    auto *const box = Window::get<QCheckBox>(*form, "cbData");
    QCOMPARE(partsOf(*form), QStringList{QStringLiteral("cbData")});
    QCOMPARE(box->isChecked(), yes);
    QCOMPARE(box->text(), QString());
    QCOMPARE(box->focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      box->mapTo(&window, QPoint(8, box->height() / 2)));
    QCOMPARE(box->isChecked(), yes);
}

void RecordView::pictureComesFromTheFolder()
{
    const Workspace here;
    here.write(QStringLiteral("far/TABLES_DOC/libri_Zeno/a.png"), "");
    QImage picture(300, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(here.path(QStringLiteral("far/TABLES_DOC/libri_Zeno/a.png"))));
    const QString database = QStringLiteral("far/books.db");
    here.sql(database, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                                  QStringLiteral("NIMAGEFORMAT_Foto text")},
                                 QStringLiteral("1,'Zeno','TABLES_DOC/libri_Zeno/a.png'")));
    here.remember(database);
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("Foto"));
    const auto *const preview = Window::get<QLabel>(*form, "lbImage");
    QCOMPARE(preview->pixmap(Qt::ReturnByValue).size(), QSize(120, 40));
    QCOMPARE(preview->toolTip(), QStringLiteral("TABLES_DOC/libri_Zeno/a.png"));
}

void RecordView::attachmentsAreOpenedFromTheFolder()
{
    const Workspace here;
    const QString database = QStringLiteral("far/books.db");
    here.write(QStringLiteral("far/d/a.pdf"), "");
    here.sql(database, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                                  QStringLiteral("NIMAGEFORMAT_Foto text"),
                                  QStringLiteral("NPDFFORMAT_Doc text"),
                                  QStringLiteral("NMAILFORMAT_M text")},
                                 QStringLiteral("1,'Zeno','d/a.png','d/a.pdf','a@b.it'")));
    here.remember(database);
    const Tavenor window;
    UrlCatcher catcher;
    press(window, QStringLiteral("Foto"), "pbViewImage");
    press(window, QStringLiteral("Doc"), "pbViewPdf");
    press(window, QStringLiteral("M"), "pbMail");
    QCOMPARE(catcher.take(),
             (QList<QUrl>{QUrl::fromLocalFile(here.path(QStringLiteral("far/d/a.png"))),
                          QUrl::fromLocalFile(here.path(QStringLiteral("far/d/a.pdf"))),
                          QUrl(QStringLiteral("mailto:a@b.it"))}));
}

void RecordView::emptyFieldsAreNotPlaced()
{
    const Workspace here;
    here.sql(
        Books,
        booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                   QStringLiteral("NSTRINGFORMAT_a text"), QStringLiteral("NIMAGEFORMAT_b text"),
                   QStringLiteral("NBOOLFORMAT_c text"), QStringLiteral("NMONEYFORMAT_d text"),
                   QStringLiteral("NSUBTABLEFORMAT_e text"), QStringLiteral("NSTRINGFORMAT_f text"),
                   QStringLiteral("NsubtableFormat_g text")},
                  QStringLiteral("1,'Zeno','','',NULL,'',NULL,' ',NULL")));
    here.remember(Books);
    const Tavenor window;
    // A blank is a value. The test for sub-tables does not look at the letter case.
    QCOMPARE(Window::labels(window),
             (QStringList{QStringLiteral("Titolo"), QStringLiteral("e"), QStringLiteral("f"),
                          QStringLiteral("NsubtableFormat_g")}));
}

void RecordView::fieldsKeepTableOrder()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("NSTRINGFORMAT_c text"),
                               QStringLiteral("NSTRINGFORMAT_a text"),
                               QStringLiteral("NSTRINGFORMAT_b text")},
                              QStringLiteral("1,'x','y','z'")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window),
             (QStringList{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
}

void RecordView::labels_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("label");
    QTest::newRow("underscores stay")
        << QStringLiteral("NSTRINGFORMAT_a_b_") << QStringLiteral("a_b_");
    QTest::newRow("the duplicate marker is cut out")
        << QStringLiteral("NSTRINGFORMAT_Prezzo_XMLTYX_2") << QStringLiteral("Prezzo2");
    QTest::newRow("text after a second marker is dropped")
        << QStringLiteral("NSTRINGFORMAT_A_XMLTYX_2_XMLTYX_3") << QStringLiteral("A2");
    QTest::newRow("cut at a second format mark")
        << QStringLiteral("\"NSTRINGFORMAT_a FORMAT_b\"") << QStringLiteral("a ");
    QTest::newRow("any flag letter") << QStringLiteral("QSTRINGFORMAT_a") << QStringLiteral("a");
}

void RecordView::labels()
{
    QFETCH(QString, column);
    QFETCH(QString, label);
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               column + QStringLiteral(" text")},
                              QStringLiteral("1,'Zeno','x'")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window), (QStringList{QStringLiteral("Titolo"), label}));
}

void RecordView::ownFieldsInAdvancedModeOnly()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                               QStringLiteral("NSTRINGFORMAT_userpath2 text"),
                               QStringLiteral("NSTRINGFORMAT_ID text")},
                              QStringLiteral("7,'Zeno','TABLES_DOC/x','a','b'")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::labels(window),
             (QStringList{QStringLiteral("Titolo"), QStringLiteral("userpath2")}));
    advancedMode(window);
    QCOMPARE(
        Window::labels(window),
        (QStringList{QStringLiteral("Id"), QStringLiteral("Titolo"), QStringLiteral("UserPath"),
                     QStringLiteral("userpath2"), QStringLiteral("ID")}));
    QCOMPARE(Window::shownText(window, QStringLiteral("Id")), QStringLiteral("7"));
}

void RecordView::reference_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("shown");
    const QString line = QStringLiteral("leData");
    const QString go = QStringLiteral("pbXView");
    QTest::newRow("three columns: the value alone")
        << QStringLiteral("Xeditori_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("1")
        << QStringLiteral("Nome") << QStringList{line} << QStringLiteral("Adelphi");
    QTest::newRow("four columns: VAI")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("1")
        << QStringLiteral("Nome") << QStringList{line, go} << QStringLiteral("Trieste");
    QTest::newRow("duplicate suffix reads the same field")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Nome_XMLTYX_2") << QStringLiteral("1")
        << QStringLiteral("Nome2") << QStringList{line, go} << QStringLiteral("Trieste");
    QTest::newRow("shown in the format of the field")
        << QStringLiteral("Xluoghi_XDTX_NMONEYFORMAT_Costo") << QStringLiteral("1")
        << QStringLiteral("Costo") << QStringList{line, go} << QStringLiteral("4.50€");
    QTest::newRow("Id stored as a real number")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("1.000000")
        << QStringLiteral("Nome") << QStringList{line, go} << QStringLiteral("Trieste");
    QTest::newRow("record gone: not placed")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("99") << QString()
        << QStringList() << QString();
    QTest::newRow("no record chosen: not placed")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("0") << QString()
        << QStringList() << QString();
    QTest::newRow("table gone: not placed")
        << QStringLiteral("Xaltrove_XDTX_RSTRINGFORMAT_Nome") << QStringLiteral("1") << QString()
        << QStringList() << QString();
    QTest::newRow("field gone: not placed")
        << QStringLiteral("Xluoghi_XDTX_RSTRINGFORMAT_Altro") << QStringLiteral("1") << QString()
        << QStringList() << QString();
    QTest::newRow("to a sub-table field: always placed")
        << QStringLiteral("Xluoghi_XDTX_NSUBTABLEFORMAT_Visite") << QStringLiteral("99")
        << QStringLiteral("Visite") << QStringList{QStringLiteral("pbSubTable"), go} << QString();
}

void RecordView::reference()
{
    QFETCH(QString, column);
    QFETCH(QString, stored);
    QFETCH(QString, label);
    QFETCH(QStringList, parts);
    QFETCH(QString, shown);
    const Workspace here;
    here.sql(Books,
             booksWith(
                 {QStringLiteral("RSTRINGFORMAT_Titolo text"), column + QStringLiteral(" Integer")},
                 QStringLiteral("1,'Zeno','%1'").arg(stored)) +
                 QStringList{createTable(QStringLiteral("editori"),
                                         {QStringLiteral("RSTRINGFORMAT_Nome text"),
                                          QStringLiteral("NSTRINGFORMAT_Sede text")}),
                             createTable(QStringLiteral("luoghi"),
                                         {QStringLiteral("RSTRINGFORMAT_Nome text"),
                                          QStringLiteral("NMONEYFORMAT_Costo text"),
                                          QStringLiteral("NSUBTABLEFORMAT_Visite text")}),
                             QStringLiteral("INSERT INTO editori VALUES (1,'Adelphi','Milano')"),
                             QStringLiteral("INSERT INTO luoghi VALUES (1,'Trieste','4.5','')")});
    here.remember(Books);
    const Tavenor window;
    if (label.isEmpty()) {
        QCOMPARE(Window::labels(window), QStringList{QStringLiteral("Titolo")});
        return;
    }
    QCOMPARE(Window::labels(window), (QStringList{QStringLiteral("Titolo"), label}));
    QCOMPARE(partsOf(*Window::field(window, label)), parts);
    QCOMPARE(Window::shownText(window, label), shown);
}

void RecordView::emptyLinkIsWrittenBack_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("afterwards");
    QTest::addColumn<bool>("placed");
    QTest::newRow("empty text") << QStringLiteral("autori") << QStringLiteral("''")
                                << QStringLiteral("autori") << true;
    QTest::newRow("NULL") << QStringLiteral("autori") << QStringLiteral("NULL")
                          << QStringLiteral("autori") << true;
    QTest::newRow("unfilled") << QStringLiteral("autori") << QStringLiteral("'0'")
                              << QStringLiteral("autori") << true;
    QTest::newRow("shown name of a hidden table, made safe")
        << QStringLiteral("＃note") << QStringLiteral("''") << QStringLiteral("HIDDENTABLE_note")
        << true;
    QTest::newRow("a value stays") << QStringLiteral("autori") << QStringLiteral("'12 Svevo'")
                                   << QStringLiteral("12 Svevo") << true;
    QTest::newRow("target missing: nothing is written")
        << QStringLiteral("altrove") << QStringLiteral("''") << QString() << false;
    QTest::newRow("target missing and unfilled: nothing is written")
        << QStringLiteral("altrove") << QStringLiteral("'0'") << QStringLiteral("0") << false;
    QTest::newRow("target missing but a value: placed")
        << QStringLiteral("altrove") << QStringLiteral("'3 x'") << QStringLiteral("3 x") << true;
}

void RecordView::emptyLinkIsWrittenBack()
{
    QFETCH(QString, label);
    QFETCH(QString, stored);
    QFETCH(QString, afterwards);
    QFETCH(bool, placed);
    const Workspace here;
    const QString column = QStringLiteral("NLINKFORMAT_") + label;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               column + QStringLiteral(" text")},
                              QStringLiteral("1,'Zeno',") + stored) +
                        QStringList{createTable(QStringLiteral("HIDDENTABLE_note"),
                                                {QStringLiteral("RSTRINGFORMAT_Nota text")})});
    here.remember(Books);
    const ModalResponder responder;
    const Tavenor window;
    QCOMPARE(here.value(Books, QStringLiteral("SELECT %1 FROM libri").arg(column)).toString(),
             afterwards);
    const outputDataForm *const form = Window::field(window, label);
    QCOMPARE(form != nullptr, placed);
    if (placed) {
        // A button only where it leads somewhere; else the stored text can be read.
        const bool leads = label != QStringLiteral("altrove");
        const QString part = leads ? QStringLiteral("pbLink") : QStringLiteral("leData");
        QVERIFY(partsOf(*form).contains(part));
        QVERIFY(leads || !partsOf(*form).contains(QStringLiteral("pbLink")));
    }
    QVERIFY(responder.boxes().isEmpty());
}

void RecordView::emptyLinkOfReadOnlyCopy()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NLINKFORMAT_autori text"),
                               QStringLiteral("NLINKFORMAT_altrove text")},
                              QStringLiteral("1,'Zeno','',''")));
    here.remember(Books);
    here.write(Lock, "Locked");
    const QByteArray before = here.read(Books);
    {
        const ModalResponder responder;
        const Tavenor window;
        QCOMPARE(Window::labels(window),
                 (QStringList{QStringLiteral("Titolo"), QStringLiteral("autori")}));
        QVERIFY(responder.boxes().isEmpty());
    }
    QCOMPARE(here.read(Books), before);
}

void RecordView::emptyLinkInAdvancedModeAsksNothing()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NLINKFORMAT_autori text")},
                              QStringLiteral("5,'Alfa','12 Svevo'),(6,'Zeno',''")));
    here.remember(Books);
    const Tavenor window;
    advancedMode(window);
    const ModalResponder responder;
    Window::selectLine(window, 1);
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(here.column(Books, QStringLiteral("SELECT RINTEGERFORMAT_Id||NLINKFORMAT_autori "
                                               "FROM libri")),
             (QStringList{QStringLiteral("512 Svevo"), QStringLiteral("6autori")}));
}

void RecordView::otherFieldsKeepTheirBytes()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NINTEGERFORMAT_n text"),
                               QStringLiteral("NLINKFORMAT_autori text"),
                               QStringLiteral("NREALFORMAT_r text")},
                              QStringLiteral("1,'D''Annunzio',NULL,'','1,5'")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Sql::table(QStringLiteral("libri")),
             QStringList{QStringLiteral("1|'D'Annunzio'|NULL|'autori'|'1,5'")});
}

void RecordView::linkValues_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("leads");
    QTest::newRow("Id and title lead to the record") << QStringLiteral("12 Svevo") << true;
    QTest::newRow("the title is not compared") << QStringLiteral("12 altro nome") << true;
    QTest::newRow("record gone") << QStringLiteral("99 Svevo") << false;
    QTest::newRow("no Id") << QStringLiteral("Svevo Italo") << false;
    QTest::newRow("Id alone") << QStringLiteral("12") << false;
    QTest::newRow("table name alone") << QStringLiteral("autori") << false;
    QTest::newRow("negative Id") << QStringLiteral("-12 Svevo") << false;
    QTest::newRow("Id beyond all numbers") << QStringLiteral("99999999999999 Svevo") << false;
}

void RecordView::linkValues()
{
    QFETCH(QString, stored);
    QFETCH(bool, leads);
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NLINKFORMAT_autori text")},
                              QStringLiteral("1,'Zeno','%1'").arg(stored)));
    here.remember(Books);
    const Tavenor window;
    const outputDataForm *const form = Window::field(window, QStringLiteral("autori"));
    QVERIFY(form != nullptr);
    QStringList parts = {QStringLiteral("pbLink")};
    if (leads) {
        parts.append(QStringLiteral("pbXView"));
    }
    QCOMPARE(partsOf(*form), parts);
    if (leads) {
        press(window, QStringLiteral("autori"), "pbXView");
        QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
        QCOMPARE(Window::heading(window), QStringLiteral("Svevo"));
    }
}

void RecordView::stepping()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'c'),(2,'a'),(3,'b'")));
    here.remember(Books);
    const Tavenor window;
    const QStringList onwards = {QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("c")};
    for (const QString &title : onwards) {
        Window::click(window, "pbNext");
        QCOMPARE(Window::heading(window), title);
        QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), title);
    }
    QCOMPARE(Window::selectedRows(window), QList<int>{2});
    const QStringList back = {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("a")};
    for (const QString &title : back) {
        Window::click(window, "pbPrev");
        QCOMPARE(Window::heading(window), title);
    }
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
}

void RecordView::steppingIsLimitedByTheEntries()
{
    // Five lines, but four entries: the last line is never stepped to.
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'a'),(2,'b'),(3,'b'),(4,'c'),(5,'d'")));
    here.remember(Books);
    const Tavenor window;
    Window::click(window, "pbNext");
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
    // The second of the equal lines is the first one again.
    Window::click(window, "pbNext");
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
    Window::selectLine(window, 3);
    QCOMPARE(Window::heading(window), QStringLiteral("c"));
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("c"));
    Window::selectLine(window, 4);
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("c"));
}

void RecordView::steppingMeetsUntitledLine()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'#'),(2,'$'),(3,''),(4,'a'),(5,'b'),(6,'c'")));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window).at(2), QStringLiteral("----"));
    Window::selectLine(window, 1);
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), QStringLiteral("#"));
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    Window::selectLine(window, 3);
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("#"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("#"));
}

void RecordView::untitledRecordsAndTheEntries_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("untitled");
    QTest::addColumn<QString>("last");
    QTest::newRow("without a title there is no entry")
        << QStringLiteral("RSTRINGFORMAT_Nome text") << QStringLiteral("''")
        << QStringLiteral("12");
    QTest::newRow("a reference to nothing keeps an entry")
        << QStringLiteral("Xautori_XDTX_RINTEGERFORMAT_Id Integer") << QStringLiteral("99")
        << QStringLiteral("13");
}

void RecordView::untitledRecordsAndTheEntries()
{
    QFETCH(QString, column);
    QFETCH(QString, untitled);
    QFETCH(QString, last);
    const Workspace here;
    here.sql(Books, booksWith({column}, QStringLiteral("1,12),(2,13),(3,%1").arg(untitled)));
    here.remember(Books);
    const Tavenor window;
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("----"), QStringLiteral("12"), QStringLiteral("13")}));
    Window::selectLine(window, 1);
    Window::click(window, "pbNext");
    QCOMPARE(Window::heading(window), last);
}

void RecordView::steppingInEmptyTable()
{
    const Workspace here;
    here.sql(Books, {Autori, createTable(QStringLiteral("libri"),
                                         {QStringLiteral("RSTRINGFORMAT_Titolo text")})});
    here.remember(Books);
    const Tavenor window;
    Window::click(window, "pbNext");
    Window::click(window, "pbPrev");
    QVERIFY(Window::labels(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
}

void RecordView::unknownIdShowsFirstRow()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'a'),(2,'b'")));
    here.remember(Books);
    Tavenor window;
    Window::selectLine(window, 1);
    window.vwRecord(99);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::heading(window), QStringLiteral("a"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("a"));
}

void RecordView::unknownIdWithoutSelection()
{
    // A list that gets the focus after it was filled has a current line, but none selected.
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'a'),(2,'b'")));
    here.remember(Books);
    Tavenor window;
    auto *const list = Window::get<QListWidget>(window, "userListWidget");
    window.changeToUsersPage();
    list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    QVERIFY(Window::selectedRows(window).isEmpty());
    window.vwRecord(99);
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("a"));
}

void RecordView::jumpAndBack()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text"),
                               QStringLiteral("NLINKFORMAT_autori text")},
                              QStringLiteral("1,'Alfa','13 Calvino'),(2,'Zeno','12 Svevo'")));
    here.remember(Books);
    const Tavenor window;
    const auto *const back = Window::get<QPushButton>(window, "pbReturn");
    QVERIFY(back->isHidden());
    QCOMPARE(back->text(), QStringLiteral("Indietro"));
    Window::selectLine(window, 1);
    press(window, QStringLiteral("autori"), "pbXView");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("autori")});
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("Calvino"), QStringLiteral("Svevo")}));
    QCOMPARE(Window::heading(window), QStringLiteral("Svevo"));
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
    QCOMPARE(Window::shownText(window, QStringLiteral("Nome")), QStringLiteral("Svevo"));
    QVERIFY(!back->isHidden());

    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::markedTables(window), QStringList{QStringLiteral("libri")});
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
    QVERIFY(back->isHidden());
    // The next step starts from the record that was come back to.
    Window::click(window, "pbPrev");
    QCOMPARE(Window::heading(window), QStringLiteral("Alfa"));
}

void RecordView::jumpToRecordThatIsGone()
{
    const Workspace here;
    here.sql(Books,
             booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")}, QStringLiteral("1,'Zeno'")));
    here.remember(Books);
    Tavenor window;
    const ModalResponder responder;
    window.goToRequest(QStringLiteral("autori"), 99);
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
    // The first line's record stands in for it, everywhere.
    QCOMPARE(Window::selectedRows(window), QList<int>{0});
    QCOMPARE(Window::heading(window), Window::lines(window).first());
    QCOMPARE(Window::shownText(window, QStringLiteral("Nome")), Window::lines(window).first());
    window.goToRequest(QStringLiteral("altrove"), 1);
    QVERIFY(Window::lines(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QVERIFY(responder.boxes().isEmpty());
    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
}

void RecordView::jumpToOneOfEqualTitles()
{
    // Its line opens the other one, so it is shown under its own title.
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'Abate'),(2,'Rossi'),(3,'Rossi'")));
    here.remember(Books);
    Tavenor window;
    window.goToRequest(QStringLiteral("libri"), 2);
    QCOMPARE(Window::heading(window), QStringLiteral("Rossi"));
    QCOMPARE(Window::shownText(window, QStringLiteral("Titolo")), QStringLiteral("Rossi"));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(window, "pbDeleteUser");
    QCOMPARE(here.column(Books, QStringLiteral("SELECT RINTEGERFORMAT_Id FROM libri")),
             (QStringList{QStringLiteral("1"), QStringLiteral("3")}));
}

void RecordView::secondJumpForgetsTheFirst()
{
    const Workspace here;
    here.sql(Books,
             booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")}, QStringLiteral("1,'Zeno'")) +
                 QStringList{createTable(QStringLiteral("editori"),
                                         {QStringLiteral("RSTRINGFORMAT_Nome text")}),
                             QStringLiteral("INSERT INTO editori VALUES (3,'Adelphi')")});
    here.remember(Books);
    Tavenor window;
    window.goToRequest(QStringLiteral("autori"), 12);
    window.goToRequest(QStringLiteral("editori"), 3);
    QCOMPARE(Window::heading(window), QStringLiteral("Adelphi"));
    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("autori"));
    QCOMPARE(Window::heading(window), QStringLiteral("Svevo"));
}

void RecordView::historyStaysAfterGoingBack()
{
    const Workspace here;
    here.sql(Books, booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")},
                              QStringLiteral("1,'Zeno'),(2,'Alfa'")));
    here.remember(Books);
    Tavenor window;
    Window::selectLine(window, 1);
    window.goToRequest(QStringLiteral("autori"), 12);
    window.goBack();
    QVERIFY(Window::get<QPushButton>(window, "pbReturn")->isHidden());
    Window::pressTable(window, QStringLiteral("autori"));
    window.goBack();
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
}

void RecordView::anotherDatabaseHidesTheWayBack()
{
    const Workspace here;
    here.sql(Books,
             booksWith({QStringLiteral("RSTRINGFORMAT_Titolo text")}, QStringLiteral("1,'Zeno'")));
    const QString coins = QStringLiteral("coins.db");
    here.sql(coins, {createTable(QStringLiteral("monete"), {QStringLiteral("RSTRINGFORMAT_a")}),
                     createTable(QStringLiteral("zecche"), {QStringLiteral("RSTRINGFORMAT_a")})});
    here.remember(Books);
    Tavenor window;
    window.goToRequest(QStringLiteral("autori"), 12);
    ModalResponder responder;
    responder.chooseFile(here.path(coins));
    Window::action(window, "actionOpen_Db")->trigger();
    QVERIFY(Window::get<QPushButton>(window, "pbReturn")->isHidden());
}

void RecordView::detailTableIsCreated()
{
    const Workspace here;
    here.sql(Books, booksWithLoans());
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    const ModalResponder responder;
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(columnsOf(here, LoansOfZeno),
             QStringLiteral("RINTEGERFORMAT_Id integer, NLONGSTRINGFORMAT_UserPath , "
                            "RSTRINGFORMAT_Chi text, NDATEFORMAT_Quando text"));
    QCOMPARE(Window::tableHeading(window), QStringLiteral("#libri->Zeno->Prestiti"));
    QVERIFY(Window::lines(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    QVERIFY(Window::labels(window).isEmpty());
    QVERIFY(!Window::get<QPushButton>(window, "pbReturn")->isHidden());
    QVERIFY(responder.boxes().isEmpty());
    // It is a hidden table without settings of its own.
    QVERIFY(here.column(Books, QStringLiteral("SELECT RSTRINGFORMAT_tableName FROM settings"))
                .isEmpty());
    QVERIFY(!Window::tables(window).contains(QStringLiteral("#libri->Zeno->Prestiti")));
}

void RecordView::detailTableIsOpened()
{
    const Workspace here;
    here.sql(Books,
             booksWithLoans() +
                 QStringList{createTable(LoansOfZeno, {QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                                                       QStringLiteral("RSTRINGFORMAT_Chi text")}),
                             QStringLiteral("INSERT INTO %1 VALUES (4,'c','Ida'),"
                                            "(9,'b','Ugo'),(2,'a','Eva')")
                                 .arg(LoansOfZeno)});
    here.remember(Books);
    const Tavenor window;
    const QStringList before = Sql::schema();
    Window::selectLine(window, 1);
    const ModalResponder responder;
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(Sql::schema(), before);
    QCOMPARE(Window::lines(window),
             (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(Window::heading(window), QStringLiteral("b"));
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
    QCOMPARE(Window::shownText(window, QStringLiteral("Chi")), QStringLiteral("Ugo"));
    QVERIFY(responder.boxes().isEmpty());
}

void RecordView::newestDetailRecordIsTheCurrentOne()
{
    // What is shown is what the buttons work on.
    const Workspace here;
    here.sql(Books,
             booksWithLoans() +
                 QStringList{createTable(LoansOfZeno, {QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                                                       QStringLiteral("RSTRINGFORMAT_Chi text")}),
                             QStringLiteral("INSERT INTO %1 VALUES (1,'a','Ida'),"
                                            "(2,'b','Ugo'),(3,'c','Eva')")
                                 .arg(LoansOfZeno)});
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(Window::shownText(window, QStringLiteral("Chi")), QStringLiteral("Eva"));
    advancedMode(window);
    QCOMPARE(Window::shownText(window, QStringLiteral("Chi")), QStringLiteral("Eva"));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(window, "pbDeleteUser");
    QCOMPARE(here.column(Books, QStringLiteral("SELECT RSTRINGFORMAT_Chi FROM ") + LoansOfZeno),
             (QStringList{QStringLiteral("Ida"), QStringLiteral("Ugo")}));
}

void RecordView::newestDetailRecordWithoutATitle()
{
    // It has no line of its own in the list, and is still the one that the buttons work on.
    const Workspace here;
    here.sql(Books,
             booksWithLoans() +
                 QStringList{createTable(LoansOfZeno, {QStringLiteral("RSTRINGFORMAT_Titolo text"),
                                                       QStringLiteral("RSTRINGFORMAT_Chi text")}),
                             QStringLiteral("INSERT INTO %1 VALUES (1,'a','Ida'),(2,'','Ugo')")
                                 .arg(LoansOfZeno)});
    here.remember(Books);
    const Tavenor window;
    Window::click(window, "pbSort");
    Window::selectLine(window, 0);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(Window::shownText(window, QStringLiteral("Chi")), QStringLiteral("Ugo"));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(window, "pbDeleteUser");
    QCOMPARE(here.column(Books, QStringLiteral("SELECT RSTRINGFORMAT_Chi FROM ") + LoansOfZeno),
             QStringList{QStringLiteral("Ida")});
}

void RecordView::detailColumnsAreFoundByContainment()
{
    const Workspace here;
    here.sql(Books,
             booksWithLoans() + QStringList{QStringLiteral(
                                    "INSERT INTO subtablesconfigs VALUES "
                                    "(4,'vecchi_libri_Prestiti_2','NSTRINGFORMAT_Altro','text'),"
                                    "(5,'Libri_Prestiti','NSTRINGFORMAT_Maiuscolo','text'),"
                                    "(6,'libri_Presti','NSTRINGFORMAT_Corto','text')")});
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(columnsOf(here, LoansOfZeno),
             QStringLiteral("RINTEGERFORMAT_Id integer, NLONGSTRINGFORMAT_UserPath , "
                            "RSTRINGFORMAT_Chi text, NDATEFORMAT_Quando text, "
                            "NSTRINGFORMAT_Altro text"));
}

void RecordView::detailOfHiddenTable()
{
    const Workspace here;
    here.sql(Books, {createTable(QStringLiteral("HIDDENTABLE_note"),
                                 {QStringLiteral("RSTRINGFORMAT_Nota text"),
                                  QStringLiteral("NSUBTABLEFORMAT_Voci text")}),
                     Autori, Configs,
                     QStringLiteral("INSERT INTO subtablesconfigs VALUES (1,"
                                    "'HIDDENTABLE_note_Voci','NSTRINGFORMAT_Voce','text')"),
                     QStringLiteral("INSERT INTO HIDDENTABLE_note VALUES (1,'Spesa','')")});
    here.remember(Books);
    Tavenor window;
    window.changeTable(QStringLiteral("HIDDENTABLE_note"));
    press(window, QStringLiteral("Voci"), "pbSubTable");
    QCOMPARE(columnsOf(here, QStringLiteral("HIDDENTABLE_HIDDENTABLE_note_XSBTX_SUBTABLEFORMAT_"
                                            "Voci_XSBTUSRX_Spesa")),
             QStringLiteral("RINTEGERFORMAT_Id integer, NSTRINGFORMAT_Voce text"));
}

void RecordView::detailWithoutConfiguration()
{
    const Workspace here;
    here.sql(Books, booksWithLoans() + QStringList{QStringLiteral("DELETE FROM subtablesconfigs")});
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(columnsOf(here, LoansOfZeno), QStringLiteral("RINTEGERFORMAT_Id integer"));
}

void RecordView::detailOfUntitledRecord()
{
    const Workspace here;
    here.sql(Books, {createTable(QStringLiteral("libri"),
                                 {QStringLiteral("NSTRINGFORMAT_Titolo text"),
                                  QStringLiteral("NSUBTABLEFORMAT_Prestiti text")}),
                     Autori, Configs, LoanConfig,
                     QStringLiteral("INSERT INTO libri VALUES (1,'',"
                                    "'')")});
    here.remember(Books);
    const Tavenor window;
    const QStringList before = Sql::schema();
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Impossibile creare la sotto tabella "
                                        "NSUBTABLEFORMAT_Prestiti di !\n")});
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(Sql::schema(), before);
    // The page has switched all the same.
    QCOMPARE(Window::tableHeading(window), QStringLiteral("#libri->->Prestiti"));
    QVERIFY(Window::lines(window).isEmpty());
    QCOMPARE(Window::heading(window), QStringLiteral("----"));
    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
}

void RecordView::detailNameTakenBesidesIt()
{
    // A request that is put together otherwise than its parts say meets the table of the parts.
    const Workspace here;
    here.sql(Books, booksWithLoans() + QStringList{createTable(
                                           LoansOfZeno, {QStringLiteral("NSTRINGFORMAT_x text")})});
    here.remember(Books);
    Tavenor window;
    const QStringList before = Sql::schema();
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    window.goToSubTableRequest(QStringLiteral("vor_") + LoansOfZeno);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Il nome 'NSUBTABLEFORMAT_Prestiti' è già stato "
                                        "usato per una tabella.\n")});
    QCOMPARE(Sql::schema(), before);
}

void RecordView::detailNames_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("stored");
    QTest::newRow("blanks become underscores")
        << QStringLiteral(" Casa   di Zeno ") << QStringLiteral("_Casa_di_Zeno");
    QTest::newRow("an apostrophe becomes its full-width form")
        << QStringLiteral("L'arte") << QStringLiteral("L＇arte");
    QTest::newRow("punctuation becomes full-width")
        << QStringLiteral("a,b;c-d.e(f)\"g\"#h") << QStringLiteral("a，b；c－d．e（f）＂g＂＃h");
    QTest::newRow("SQL becomes full-width") << QStringLiteral("x (a); DROP TABLE libri; --")
                                            << QStringLiteral("x_（a）；_DROP_TABLE_libri；_－－");
    QTest::newRow("letters with accents stay")
        << QStringLiteral("Perché") << QStringLiteral("Perché");
    QTest::newRow("percent signs stay what they are")
        << QStringLiteral("100%s") << QStringLiteral("100％s");
}

void RecordView::detailNames()
{
    QFETCH(QString, title);
    QFETCH(QString, stored);
    const Workspace here;
    here.sql(Books,
             {createTable(QStringLiteral("libri"), {QStringLiteral("RSTRINGFORMAT_Titolo text"),
                                                    QStringLiteral("NSUBTABLEFORMAT_Prestiti")}),
              Autori, Configs, LoanConfig,
              QStringLiteral("INSERT INTO libri VALUES (1,'%1','')")
                  .arg(QString(title).replace(QLatin1Char('\''), QStringLiteral("''")))});
    here.remember(Books);
    const Tavenor window;
    const QStringList before =
        here.column(Books, QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid"));
    const ModalResponder responder;
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QVERIFY(responder.boxes().isEmpty());
    const QString name =
        QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_") + stored;
    QCOMPARE(here.column(Books, QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid")),
             before + QStringList{name});
    QCOMPARE(columnsOf(here, name),
             QStringLiteral("RINTEGERFORMAT_Id integer, NLONGSTRINGFORMAT_UserPath , "
                            "RSTRINGFORMAT_Chi text, NDATEFORMAT_Quando text"));
    // Asking again opens the same table.
    Window::click(window, "pbReturn");
    QCOMPARE(Window::heading(window), title);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QVERIFY(responder.boxes().isEmpty());
    QCOMPARE(here.column(Books, QStringLiteral("SELECT name FROM sqlite_master")).size(),
             before.size() + 1);
}

void RecordView::detailInReadOnlyCopy()
{
    const Workspace here;
    here.sql(Books, booksWithLoans());
    here.remember(Books);
    here.write(Lock, "Locked");
    const QByteArray before = here.read(Books);
    {
        const ModalResponder responder;
        const Tavenor window;
        Window::selectLine(window, 1);
        press(window, QStringLiteral("Prestiti"), "pbSubTable");
        QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
        QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
        QVERIFY(Window::get<QPushButton>(window, "pbReturn")->isHidden());
        QVERIFY(responder.boxes().isEmpty());
    }
    QCOMPARE(here.read(Books), before);
}

void RecordView::detailAndBack()
{
    const Workspace here;
    here.sql(Books, booksWithLoans());
    here.remember(Books);
    const Tavenor window;
    Window::selectLine(window, 1);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    Window::click(window, "pbReturn");
    QCOMPARE(Window::tableHeading(window), QStringLiteral("libri"));
    QCOMPARE(Window::heading(window), QStringLiteral("Zeno"));
    QCOMPARE(Window::selectedRows(window), QList<int>{1});
}

void RecordView::detailFlagIsAlwaysN()
{
    // The message of a refused creation names the column as it is put together anew.
    const Workspace here;
    here.sql(Books, {createTable(QStringLiteral("libri"),
                                 {QStringLiteral("NSTRINGFORMAT_Titolo text"),
                                  QStringLiteral("RSUBTABLEFORMAT_Prestiti text")}),
                     Autori, QStringLiteral("INSERT INTO libri VALUES (1,'','')")});
    here.remember(Books);
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    press(window, QStringLiteral("Prestiti"), "pbSubTable");
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("ERRORE: Impossibile creare la sotto tabella "
                                        "NSUBTABLEFORMAT_Prestiti di !\n")});
}

void RecordView::hideList()
{
    const Workspace here;
    Tavenor window;
    window.show();
    const auto *const list = Window::get<QListWidget>(window, "userListWidget");
    QVERIFY(list->isVisible());
    Window::click(window, "pbHideList");
    QVERIFY(!list->isVisible());
    QVERIFY(!Window::get<QLineEdit>(window, "userSearchEdit")->isVisible());
    Window::click(window, "pbHideList");
    QVERIFY(list->isVisible());
}

void RecordView::texts()
{
    const Workspace here;
    const Tavenor window;
    const struct {
        const char *name;
        const char *text;
        const char *toolTip;
    } expected[] = {
        {"pbPrev", "Precedente", "Record Precedente"},
        {"pbNext", "Prossimo", "Prossimo Record"},
        {"pbDeleteUser", "Elimina", "Elimina Record"},
        {"pbEditUser", "Modifica", "Modifica Record"},
        {"pbHideList", "Mostra Lista", "Mostra la Lista"},
    };
    QVERIFY(Window::get<QPushButton>(window, "pbReturn")->isHidden());
    for (const auto &row : expected) {
        const auto *const button = Window::get<QPushButton>(window, row.name);
        QCOMPARE(button->text(), QString::fromUtf8(row.text));
        QCOMPARE(button->toolTip(), QString::fromUtf8(row.toolTip));
    }
}

QTEST_MAIN(RecordView)
#include "ui_recordview.moc"
