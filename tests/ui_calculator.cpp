// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The calculator page.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Sql.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/calcForm.h"

#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>

namespace
{

const QString Coins = QStringLiteral("coins.db");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

const QStringList CoinTables = {
    QStringLiteral("CREATE TABLE monete (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NINTEGERFORMAT_Pezzi text,NMONEYFORMAT_Prezzo text,"
                   "NINTEGERFORMAT_Idoneo text,NREALFORMAT_Peso text)"),
    QStringLiteral("INSERT INTO monete VALUES (1,'Lira','3','10.00','1','0.500000'),"
                   "(2,'Soldo','-1','2.50','1','1.250000'),(3,'Scudo',NULL,'','1','peso')"),
    QStringLiteral("CREATE TABLE note (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nota text)"),
    QStringLiteral("INSERT INTO note VALUES (1,'Leggere')"),
};

// The lines of the page, from the top.
QList<calcForm *> forms(const QWidget &window)
{
    QList<calcForm *> found;
    const QLayout *const layout = window.findChild<QLayout *>(QStringLiteral("calcLayout"));
    for (int i = 0; i < layout->count(); ++i) {
        if (auto *const form = qobject_cast<calcForm *>(layout->itemAt(i)->widget())) {
            found.append(form);
        }
    }
    return found;
}

// One text for each line: its label and its sum.
QStringList sums(const QWidget &window)
{
    QStringList texts;
    for (const calcForm *const form : forms(window)) {
        const QString sign = Window::offers(*form, "lbType") ? QStringLiteral(" €") : QString();
        texts.append(Window::get<QLabel>(*form, "lbName")->text() + QLatin1Char(' ') +
                     Window::get<QLineEdit>(*form, "leResult")->text() + sign);
    }
    return texts;
}

QLineEdit *totalLine(const QWidget &window)
{
    auto *const page = Window::get<QWidget>(window, "calcPage");
    return page->findChild<QLineEdit *>(QStringLiteral("leResult"), Qt::FindDirectChildrenOnly);
}

QString total(const QWidget &window)
{
    return totalLine(window)->text();
}

int pageIndex(const QWidget &window)
{
    return Window::get<QStackedWidget>(window, "stPages")->currentIndex();
}

void press(const QWidget &window, int line, const char *name)
{
    Window::click(*forms(window).at(line), name);
}

} // namespace

class CalculatorPage : public QObject
{
    Q_OBJECT

private slots:
    void openingSumsAllRecords();
    void modesWaitForRecalculation();
    void openingAgainStartsAnew();
    void withoutCurrentTable();
    void damagedTable();
    void recalculationReadsTheTableAnew();
    void tableWithoutNumericColumns();
    void emptyTableShowsZero();
    void unusualValues_data();
    void unusualValues();
    void roundingAtEveryStep();
    void referencesSumTheirIds();
    void moneyInAnyLabel();
    void foreignNames();
    void withoutTable();
    void whatEndsThePage_data();
    void whatEndsThePage();
    void closingShowsTheSameRecord();
    void anotherDatabaseEndsThePage();
    void readOnlyCopyCalculates();
    void textsAndNames();
    void keyboardOrder();
    void totalStaysInSight();
    void totalStandsUnderTheSums();
    void slotsAreInterface();
};

void CalculatorPage::openingSumsAllRecords()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(pageIndex(window), 1);
    QCOMPARE(sums(window),
             (QStringList{QStringLiteral("Pezzi 2.000000"), QStringLiteral("Prezzo 12.50 €"),
                          QStringLiteral("Peso 1.750000")}));
    QCOMPARE(total(window), QStringLiteral("16.250000"));
    for (const calcForm *const form : forms(window)) {
        QCOMPARE(form->mode(), 0);
    }
    QCOMPARE(forms(window).first()->getFieldName(), QStringLiteral("NINTEGERFORMAT_Pezzi"));
}

void CalculatorPage::modesWaitForRecalculation()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    Window::click(window, "pbCalc");
    const QStringList before = sums(window);
    press(window, 1, "pbMinus");
    press(window, 2, "pbExclude");
    QCOMPARE(total(window), QStringLiteral("16.250000"));
    Window::click(window, "pbRecalc");
    // Each line keeps the plain sum of its column.
    QCOMPARE(sums(window), before);
    QCOMPARE(total(window), QStringLiteral("-10.500000"));
    press(window, 1, "pbExclude");
    press(window, 0, "pbExclude");
    Window::click(window, "pbRecalc");
    QCOMPARE(sums(window), before);
    QCOMPARE(total(window), QStringLiteral("0.000000"));
    press(window, 1, "pbPlus");
    Window::click(window, "pbRecalc");
    QCOMPARE(total(window), QStringLiteral("12.500000"));
}

void CalculatorPage::withoutCurrentTable()
{
    const Workspace here;
    here.sql(Coins, {QStringLiteral("CREATE TABLE HIDDENTABLE_note (RINTEGERFORMAT_Id integer "
                                    "primary key)")});
    here.remember(Coins);
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::click(window, "pbCalc");
    QCOMPARE(responder.takeTexts(), QStringList{NoTable});
    QCOMPARE(pageIndex(window), 1);
    QVERIFY(forms(window).isEmpty());
}

void CalculatorPage::damagedTable()
{
    // The sums of the first half would pass for those of the whole.
    constexpr int PageSize = 4096;
    const Workspace here;
    here.sql(Coins, {CoinTables.at(2),
                     QStringLiteral("CREATE TABLE monete (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Nome text,NINTEGERFORMAT_Pezzi text)"),
                     QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n "
                                    "WHERE i<3000) INSERT INTO monete SELECT i,'Lira '||i,'1' "
                                    "FROM n")});
    QByteArray bytes = here.read(Coins);
    QVERIFY(bytes.size() > 12 * PageSize);
    bytes.replace(10 * PageSize, PageSize, QByteArray(PageSize, '\xff'));
    here.write(Coins, bytes);
    here.remember(Coins);
    const Tavenor window;
    ModalResponder responder;
    const QString unreadable = QStringLiteral("ERRORE: Impossibile leggere la tabella monete!\n"
                                              "database disk image is malformed Unable to fetch "
                                              "row");
    responder.answer(QMessageBox::Ok);
    Window::pressTable(window, QStringLiteral("monete"));
    responder.answer(QMessageBox::Ok);
    Window::click(window, "pbCalc");
    QCOMPARE(responder.takeTexts(), (QStringList{unreadable, unreadable}));
    QCOMPARE(sums(window), QStringList{QStringLiteral("Pezzi 0")});
    QCOMPARE(total(window), QString());
}

void CalculatorPage::openingAgainStartsAnew()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    Window::click(window, "pbCalc");
    press(window, 0, "pbMinus");
    // Also from the page itself.
    Window::click(window, "pbCalc");
    QCOMPARE(forms(window).size(), 3);
    QCOMPARE(forms(window).first()->mode(), 0);
    QCOMPARE(total(window), QStringLiteral("16.250000"));
}

void CalculatorPage::recalculationReadsTheTableAnew()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QVERIFY(Sql::run(QStringLiteral("DELETE FROM monete WHERE RINTEGERFORMAT_Id = 1")));
    Window::click(window, "pbRecalc");
    QCOMPARE(sums(window),
             (QStringList{QStringLiteral("Pezzi -1.000000"), QStringLiteral("Prezzo 2.50 €"),
                          QStringLiteral("Peso 1.250000")}));
    QCOMPARE(total(window), QStringLiteral("2.750000"));
}

void CalculatorPage::tableWithoutNumericColumns()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QVERIFY(Window::get<QLabel>(window, "lbNoColumns")->isHidden());
    Window::pressTable(window, QStringLiteral("note"));
    Window::click(window, "pbCalc");
    QCOMPARE(pageIndex(window), 1);
    QVERIFY(forms(window).isEmpty());
    QCOMPARE(total(window), QStringLiteral("0.000000"));
    const auto *const hint = Window::get<QLabel>(window, "lbNoColumns");
    QVERIFY(!hint->isHidden());
    QCOMPARE(hint->text(), QStringLiteral("Nessuna colonna numerica in questa tabella."));
    Window::click(window, "pbRecalc");
    QCOMPARE(total(window), QStringLiteral("0.000000"));
}

void CalculatorPage::emptyTableShowsZero()
{
    const Workspace here;
    here.sql(Coins, CoinTables + QStringList{QStringLiteral("DELETE FROM monete")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window), (QStringList{QStringLiteral("Pezzi 0"), QStringLiteral("Prezzo 0 €"),
                                        QStringLiteral("Peso 0")}));
    QCOMPARE(total(window), QStringLiteral("0.000000"));
}

void CalculatorPage::unusualValues_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("sum");
    QTest::addColumn<QString>("grand");
    const auto row = [](const char *name, const char *value, const char *sum, const char *grand) {
        QTest::newRow(name) << QString::fromUtf8(value) << QString::fromUtf8(sum)
                            << QString::fromUtf8(grand);
    };
    row("NULL is 0", "NULL", "1.00 €", "1.000000");
    row("an empty text is 0", "''", "1.00 €", "1.000000");
    row("a text is 0", "'dodici'", "1.00 €", "1.000000");
    row("a comma makes a text", "'1234,5'", "1.00 €", "1.000000");
    row("no number is 0", "'nan'", "1.00 €", "1.000000");
    row("infinity is 0", "'inf'", "1.00 €", "1.000000");
    row("a number of the database's own counts", "2.25", "3.25 €", "3.250000");
    row("a negative one too", "-3", "-2.00 €", "-2.000000");
    row("an exponent counts", "'1e3'", "1001.00 €", "1001.000000");
    row("a large amount keeps its cents", "'99999999999.99'", "100000000000.99 €",
        "100000000000.990005");
}

void CalculatorPage::unusualValues()
{
    QFETCH(QString, value);
    QFETCH(QString, sum);
    const Workspace here;
    here.sql(Coins,
             {QStringLiteral("CREATE TABLE spese (RINTEGERFORMAT_Id integer primary key,"
                             "RSTRINGFORMAT_Nome text,NMONEYFORMAT_Costo)"),
              QStringLiteral("INSERT INTO spese VALUES (1,'a','1.00'),(2,'b',%1)").arg(value),
              QStringLiteral("CREATE TABLE altra (RINTEGERFORMAT_Id integer primary key)")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window), QStringList{QStringLiteral("Costo ") + sum});
    QTEST(total(window), "grand");
}

void CalculatorPage::roundingAtEveryStep()
{
    const Workspace here;
    here.sql(Coins, {QStringLiteral("CREATE TABLE spese (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Nome text,NMONEYFORMAT_Costo text)"),
                     QStringLiteral("INSERT INTO spese VALUES (1,'a','0.004'),(2,'b','0.004'),"
                                    "(3,'c','0.004')"),
                     QStringLiteral("CREATE TABLE altra (RINTEGERFORMAT_Id integer primary key)")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window), QStringList{QStringLiteral("Costo 0.00 €")});
    QCOMPARE(total(window), QStringLiteral("0.012000"));
}

void CalculatorPage::referencesSumTheirIds()
{
    const Workspace here;
    here.sql(Coins,
             CoinTables +
                 QStringList{QStringLiteral("CREATE TABLE vendite (RINTEGERFORMAT_Id integer "
                                            "primary key,RSTRINGFORMAT_Nome text,"
                                            "Xmonete_XDTX_NINTEGERFORMAT_Pezzi Integer,"
                                            "Xmonete_XDTX_RSTRINGFORMAT_Nome Integer)"),
                             QStringLiteral("INSERT INTO vendite VALUES (1,'a',1,1),(2,'b',2,3)")});
    here.remember(Coins);
    const Tavenor window;
    Window::pressTable(window, QStringLiteral("vendite"));
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window), QStringList{QStringLiteral("Pezzi 3.000000")});
    QCOMPARE(total(window), QStringLiteral("3.000000"));
}

void CalculatorPage::moneyInAnyLabel()
{
    const Workspace here;
    here.sql(Coins, {QStringLiteral("CREATE TABLE spese (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Nome text,NREALFORMAT_MONEYFORMAT text,"
                                    "NMONEYFORMAT_Costo text,NMONEYFORMAT_Costo_XMLTYX_2 text)"),
                     QStringLiteral("INSERT INTO spese VALUES (1,'a','1.5','2','3')"),
                     QStringLiteral("CREATE TABLE altra (RINTEGERFORMAT_Id integer primary key)")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window),
             (QStringList{QStringLiteral("MONEYFORMAT 1.50 €"), QStringLiteral("Costo 2.00 €"),
                          QStringLiteral("Costo_XMLTYX_2 3.00 €")}));
    QCOMPARE(total(window), QStringLiteral("6.500000"));
}

void CalculatorPage::foreignNames()
{
    const Workspace here;
    here.sql(Coins,
             {QStringLiteral("CREATE TABLE \"le spese\" (RINTEGERFORMAT_Id integer primary "
                             "key,RSTRINGFORMAT_Nome text,\"NREALFORMAT_a b\" real,"
                             "\"NMONEYFORMAT_c'd\" text)"),
              QStringLiteral("INSERT INTO \"le spese\" VALUES (1,'a',1.5,'2'),(2,'b',2,'3')"),
              QStringLiteral("CREATE TABLE altra (RINTEGERFORMAT_Id integer primary key)")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    QCOMPARE(sums(window),
             (QStringList{QStringLiteral("a b 3.500000"), QStringLiteral("c'd 5.00 €")}));
    QCOMPARE(total(window), QStringLiteral("8.500000"));
}

void CalculatorPage::withoutTable()
{
    const Workspace here;
    Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::click(window, "pbCalc");
    QCOMPARE(responder.takeTexts(), QStringList{NoTable});
    QCOMPARE(pageIndex(window), 2);
}

void CalculatorPage::whatEndsThePage_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the button") << "button";
    QTest::newRow("the Esc key") << "escape";
    QTest::newRow("another table") << "table";
    QTest::newRow("the same table") << "same";
}

void CalculatorPage::whatEndsThePage()
{
    QFETCH(QString, way);
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    Window::click(window, "pbCalc");
    if (way == QStringLiteral("button")) {
        Window::click(window, "pbExitCalc");
    } else if (way == QStringLiteral("escape")) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    } else {
        Window::pressTable(window, way == QStringLiteral("table") ? QStringLiteral("note")
                                                                  : QStringLiteral("monete"));
    }
    QCOMPARE(pageIndex(window), 2);
    const bool other = way == QStringLiteral("table");
    QCOMPARE(Window::heading(window), other ? QStringLiteral("Leggere") : QStringLiteral("Lira"));
}

void CalculatorPage::closingShowsTheSameRecord()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    Window::selectLine(window, 2);
    QCOMPARE(Window::heading(window), QStringLiteral("Soldo"));
    Window::click(window, "pbCalc");
    Window::click(window, "pbExitCalc");
    QCOMPARE(Window::heading(window), QStringLiteral("Soldo"));
    QCOMPARE(Window::selectedRows(window), QList<int>{2});
}

void CalculatorPage::anotherDatabaseEndsThePage()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.sql(QStringLiteral("books.db"),
             {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                             "RSTRINGFORMAT_Titolo text)")});
    here.remember(Coins);
    const Tavenor window;
    Window::click(window, "pbCalc");
    ModalResponder responder;
    responder.chooseFile(here.path(QStringLiteral("books.db")));
    Window::action(window, "actionOpen_Db")->trigger();
    QCOMPARE(pageIndex(window), 2);
    QVERIFY(forms(window).isEmpty());
    QCOMPARE(total(window), QString());
}

void CalculatorPage::readOnlyCopyCalculates()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    here.write(QStringLiteral("lockDb.dat"), "Locked");
    const QByteArray before = here.read(Coins);
    {
        const Tavenor window;
        Window::click(window, "pbCalc");
        QCOMPARE(total(window), QStringLiteral("16.250000"));
    }
    QCOMPARE(here.read(Coins), before);
}

void CalculatorPage::textsAndNames()
{
    const Workspace here;
    const Tavenor window;
    QCOMPARE(Window::get<QPushButton>(window, "pbCalc")->text(), QStringLiteral("Calcola"));
    QCOMPARE(Window::get<QPushButton>(window, "pbRecalc")->text(), QStringLiteral("Ricalcola"));
    QCOMPARE(Window::get<QPushButton>(window, "pbRecalc")->toolTip(),
             QStringLiteral("Ricalcola il risultato"));
    QCOMPARE(Window::get<QPushButton>(window, "pbExitCalc")->text(), QStringLiteral("Chiudi"));
    QCOMPARE(totalLine(window)->accessibleName(), QStringLiteral("Totale"));
    QVERIFY(totalLine(window)->isReadOnly());
    auto *const pages = Window::get<QStackedWidget>(window, "stPages");
    QCOMPARE(pages->widget(1)->objectName(), QStringLiteral("calcPage"));
}

void CalculatorPage::keyboardOrder()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    Window::click(window, "pbCalc");
    QStringList expected;
    // The arrow keys choose among the buttons of a line.
    for (int line = 0; line < 3; ++line) {
        expected += QStringList{QStringLiteral("leResult"), QStringLiteral("pbPlus")};
    }
    expected +=
        {QStringLiteral("leResult"), QStringLiteral("pbExitCalc"), QStringLiteral("pbRecalc")};
    Window::get<QLineEdit>(*forms(window).first(), "leResult")->setFocus();
    QStringList visited;
    for (int step = 0; step < expected.size(); ++step) {
        QWidget *const focused = QApplication::focusWidget();
        QVERIFY(focused != nullptr);
        visited.append(focused->objectName());
        QVERIFY2(!focused->accessibleName().isEmpty() ||
                     qobject_cast<QAbstractButton *>(focused) != nullptr,
                 qPrintable(focused->objectName()));
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    QCOMPARE(visited, expected);
}

void CalculatorPage::totalStaysInSight()
{
    QString columns;
    for (int i = 0; i < 40; ++i) {
        columns += QStringLiteral(",NREALFORMAT_c%1 text").arg(i);
    }
    const Workspace here;
    here.sql(Coins, {QStringLiteral("CREATE TABLE molte (RINTEGERFORMAT_Id integer primary key,"
                                    "RSTRINGFORMAT_Nome text%1)")
                         .arg(columns),
                     QStringLiteral("CREATE TABLE altra (RINTEGERFORMAT_Id integer primary key)")});
    here.remember(Coins);
    Tavenor window;
    window.resize(1000, 600);
    window.show();
    Window::click(window, "pbCalc");
    QCoreApplication::processEvents();
    QCOMPARE(forms(window).size(), 40);
    const QRect place(totalLine(window)->mapTo(&window, QPoint()), totalLine(window)->size());
    QVERIFY(window.rect().contains(place));
    auto *const scroll = Window::get<QScrollArea>(window, "calcScroll");
    QVERIFY(scroll->widget()->height() > scroll->viewport()->height());
}

void CalculatorPage::totalStandsUnderTheSums()
{
    const Workspace here;
    here.sql(Coins, CoinTables);
    here.remember(Coins);
    Tavenor window;
    window.show();
    Window::click(window, "pbCalc");
    const auto rightEdge = [&window](const QWidget *line) {
        return line->mapTo(&window, line->rect().topRight()).x();
    };
    const int expected = rightEdge(totalLine(window));
    for (const calcForm *const form : forms(window)) {
        QTRY_COMPARE(rightEdge(Window::get<QLineEdit>(*form, "leResult")), expected);
        // The page draws the last line itself, between the sums and their total.
        QCOMPARE(Window::get<QFrame>(*form, "line")->isHidden(), form == forms(window).last());
    }
}

void CalculatorPage::slotsAreInterface()
{
    const QMetaObject &meta = Tavenor::staticMetaObject;
    for (const char *const signature : {"changeToCalcPage()", "calcResult()", "clearTable()",
                                        "clearAllTables()", "removeTable()", "deleteAll()"}) {
        const int index = meta.indexOfSlot(signature);
        QVERIFY2(index >= 0, signature);
        QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
    }
}

QTEST_MAIN(CalculatorPage)
#include "ui_calculator.moc"
