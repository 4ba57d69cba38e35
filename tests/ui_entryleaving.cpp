// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Leaving the entry page, its keys, and deleting records.
#include "tests/support/EntryPage.h"

namespace
{

const QString Titolo = QStringLiteral("Titolo");
const QString Question = QStringLiteral("Chiudere senza salvare le modifiche?");
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

const QStringList Books = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_Note text,"
                   "NINTEGERFORMAT_Anno text,NDATEFORMAT_Data text,NBOOLFORMAT_Letto text,"
                   "NREALFORMAT_Peso text,Xautori_XDTX_RSTRINGFORMAT_Nome Integer,"
                   "NSUBTABLEFORMAT_Prestiti text,NLONGSTRINGFORMAT_UserPath text,"
                   "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral(
        "INSERT INTO libri VALUES (3,'Zeno','','0','','FALSE','','','Prestiti','','',''),"
        "(7,'Zibaldone','','0','','FALSE','','','Prestiti','','','')"),
    QStringLiteral("INSERT INTO autori VALUES (1,'Svevo')"),
};

// What would leave the page or build it anew.
const char *const LeavingActions[] = {"actionNew_Db",
                                      "actionOpen_Db",
                                      "actionTable",
                                      "actionAdd_Field",
                                      "actionRemove_Table",
                                      "actionTech_Mod",
                                      "actionChange_Table_Icon",
                                      "actionDeleteFilter",
                                      "actionClear_Selected_List",
                                      "actionClear_All_Tables",
                                      "actionDelete_All_Database",
                                      "actionShow_Hidden_Tables",
                                      "actionImport_Table_Structure",
                                      "actionImport_From_File_Export_Manager_File"};
const char *const LeavingWidgets[] = {"listFrame", "pbFilter", "pbCalc", "pbReturn"};

// Name by name, whether it can be used.
QMap<QString, bool> usable(const QWidget &window)
{
    QMap<QString, bool> result;
    for (const char *const name : LeavingActions) {
        result.insert(QString::fromUtf8(name), Window::action(window, name)->isEnabled());
    }
    for (const char *const name : LeavingWidgets) {
        result.insert(QString::fromUtf8(name), Window::get<QWidget>(window, name)->isEnabled());
    }
    return result;
}

// Esc, in a window that a box may have made inactive; no window manager makes it active again.
void pressEscape(QWidget &window)
{
    QApplication::setActiveWindow(&window);
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
}

// The field that the widget with the focus belongs to; empty when it is none.
QString focusedField(const QWidget &window)
{
    for (const inputDataForm *const form : EntryPage::editors(window)) {
        if (form->isAncestorOf(QApplication::focusWidget())) {
            return form->label();
        }
    }
    return QString();
}

void compareQuestion(const ModalResponder::Box &box, const QString &text)
{
    QCOMPARE(box.text, text);
    QCOMPARE(box.title, QStringLiteral("DB Administration Tool"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::No | QMessageBox::Yes);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.escapeButton, QMessageBox::No);
    QCOMPARE(box.textFormat, Qt::PlainText);
}

} // namespace

using EntryPage::Started;

class EntryLeaving : public QObject
{
    Q_OBJECT

private slots:
    void cancelLeavesAtOnce_data();
    void cancelLeavesAtOnce();
    void escapeLeavesSilently_data();
    void escapeLeavesSilently();
    void escapeAsksAfterTyping_data();
    void escapeAsksAfterTyping();
    void closingAsksAfterTyping();
    void closingIsSilentOtherwise();
    void exitCommandAsks();
    void typingHoldsThePage_data();
    void typingHoldsThePage();
    void refusedSaveHoldsThePage();
    void openPageAloneHoldsNothing();
    void otherTableLeavesUntypedPage();
    void halfTypedDateIsSaved_data();
    void halfTypedDateIsSaved();
    void halfTypedDateCountsAsTyped();
    void leftPageHoldsNothing();

    void saveKeySaves();
    void openingKeys();
    void deleteKeyAsks();
    void firstEditorHasFocus_data();
    void firstEditorHasFocus();
    void tabWalksFieldsThenButtons_data();
    void tabWalksFieldsThenButtons();

    void deleteAsks_data();
    void deleteAsks();
    void deleteShowsFirstLine();
    void deleteLastRecord();
    void deleteRefusedByDatabase();
    void withoutTable_data();
    void withoutTable();
};

void EntryLeaving::cancelLeavesAtOnce_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<bool>("typed");
    QTest::newRow("new record") << true << false;
    QTest::newRow("new record with a title typed") << true << true;
    QTest::newRow("changed record") << false << true;
}

void EntryLeaving::cancelLeavesAtOnce()
{
    QFETCH(bool, isNew);
    QFETCH(bool, typed);
    const Started program(Books);
    Window::selectLine(*program.window, 1);
    const QByteArray before = program.here.read(program.database);
    const ModalResponder noBox;
    if (isNew) {
        EntryPage::openNew(*program.window);
    } else {
        EntryPage::openEdit(*program.window);
    }
    if (typed) {
        EntryPage::type(*program.window, Titolo, QStringLiteral("x"));
    }
    Window::click(*program.window, "pbCancelEdit");
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(noBox.boxes().size(), 0);
    QVERIFY(program.here.read(program.database) == before);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zibaldone"));
    QCOMPARE(Window::shownText(*program.window, Titolo), QStringLiteral("Zibaldone"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{1});
}

void EntryLeaving::escapeLeavesSilently_data()
{
    QTest::addColumn<QString>("label");
    for (const QString &label :
         {Titolo, QStringLiteral("Note"), QStringLiteral("Anno"), QStringLiteral("Data"),
          QStringLiteral("Letto"), QStringLiteral("Peso"), QStringLiteral("Nome"),
          QStringLiteral("Foto"), QStringLiteral("Scheda")}) {
        QTest::addRow("from %s", qPrintable(label)) << label;
    }
}

void EntryLeaving::escapeLeavesSilently()
{
    QFETCH(QString, label);
    Started program(Books);
    QVERIFY(program.show());
    const ModalResponder noBox;
    EntryPage::openEdit(*program.window);
    EntryPage::field(*program.window, label).focusEditor();
    pressEscape(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(noBox.boxes().size(), 0);
}

void EntryLeaving::escapeAsksAfterTyping_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::newRow("new record") << true;
    QTest::newRow("changed record") << false;
}

void EntryLeaving::escapeAsksAfterTyping()
{
    QFETCH(bool, isNew);
    Started program(Books);
    QVERIFY(program.show());
    const QByteArray before = program.here.read(program.database);
    if (isNew) {
        EntryPage::openNew(*program.window);
    } else {
        EntryPage::openEdit(*program.window);
    }
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Altro"));
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    pressEscape(*program.window);
    responder.pressEscape();
    pressEscape(*program.window);
    responder.pressReturn();
    pressEscape(*program.window);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Altro"));

    responder.answer(QMessageBox::Yes);
    pressEscape(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(responder.takeTexts(), (QStringList{Question, Question, Question, Question}));
    compareQuestion(responder.boxes().first(), Question);
    QVERIFY(program.here.read(program.database) == before);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
}

void EntryLeaving::closingAsksAfterTyping()
{
    Started program(Books);
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Altro"));
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    QVERIFY(!program.window->close());
    QVERIFY(program.window->isVisible());
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Altro"));
    responder.answer(QMessageBox::Yes);
    QVERIFY(program.window->close());
    QVERIFY(!program.window->isVisible());
    QCOMPARE(responder.takeTexts(), (QStringList{Question, Question}));
    compareQuestion(responder.boxes().first(), Question);
}

void EntryLeaving::closingIsSilentOtherwise()
{
    Started program(Books);
    const ModalResponder noBox;
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    EntryPage::enter(*program.window, Titolo, QStringLiteral("Altro"));
    EntryPage::save(*program.window);
    EntryPage::openNew(*program.window);
    QVERIFY(program.window->close());
    QCOMPARE(noBox.boxes().size(), 0);
}

void EntryLeaving::exitCommandAsks()
{
    Started program(Books);
    QVERIFY(program.show());
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("x"));
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    Window::action(*program.window, "actionExit")->trigger();
    QVERIFY(program.window->isVisible());
    QCOMPARE(responder.takeTexts(), QStringList{Question});
}

void EntryLeaving::typingHoldsThePage_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("end");
    QTest::newRow("a title, then saved") << Titolo << int(Qt::Key_X) << "pbSaveNewUser";
    QTest::newRow("a title, then left") << Titolo << int(Qt::Key_X) << "pbCancelEdit";
    QTest::newRow("a note") << "Note" << int(Qt::Key_X) << "pbCancelEdit";
    QTest::newRow("a number") << "Anno" << int(Qt::Key_Up) << "pbCancelEdit";
    QTest::newRow("a date") << "Data" << int(Qt::Key_1) << "pbCancelEdit";
    QTest::newRow("a check mark") << "Letto" << int(Qt::Key_Space) << "pbCancelEdit";
    QTest::newRow("a weight") << "Peso" << int(Qt::Key_1) << "pbSaveNewUser";
    QTest::newRow("a choice") << "Nome" << int(Qt::Key_Down) << "pbSaveNewUser";
}

void EntryLeaving::typingHoldsThePage()
{
    QFETCH(QString, label);
    QFETCH(int, key);
    QFETCH(QString, end);
    Started program(Books);
    QVERIFY(program.show());
    Window::action(*program.window, "actionAdministrator_Mode")->trigger();
    const QMap<QString, bool> before = usable(*program.window);
    for (const char *const name : {"actionNew_Db", "actionOpen_Db", "actionChange_Table_Icon",
                                   "actionShow_Hidden_Tables", "listFrame", "pbReturn"}) {
        QVERIFY2(before.value(QString::fromUtf8(name)), name);
    }
    EntryPage::openEdit(*program.window);
    QCOMPARE(usable(*program.window), before);

    QTest::keyClick(EntryPage::field(*program.window, label).editor(), Qt::Key(key));
    const QMap<QString, bool> held = usable(*program.window);
    for (auto entry = held.begin(); entry != held.end(); ++entry) {
        QVERIFY2(!entry.value(), qPrintable(entry.key()));
    }
    QVERIFY(Window::get<QWidget>(*program.window, "pbSaveNewUser")->isEnabled());
    QVERIFY(Window::get<QWidget>(*program.window, "pbCancelEdit")->isEnabled());
    QVERIFY(Window::action(*program.window, "actionExit")->isEnabled());

    Window::click(*program.window, end.toUtf8().constData());
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(usable(*program.window), before);
}

void EntryLeaving::refusedSaveHoldsThePage()
{
    const Started program(Books);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Note"), QStringLiteral("x"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    EntryPage::save(*program.window);
    QVERIFY(!Window::get<QWidget>(*program.window, "listFrame")->isEnabled());
    QVERIFY(!Window::action(*program.window, "actionOpen_Db")->isEnabled());
}

void EntryLeaving::openPageAloneHoldsNothing()
{
    const Started program(Books);
    const QMap<QString, bool> before = usable(*program.window);
    EntryPage::openNew(*program.window);
    QCOMPARE(usable(*program.window), before);
    EntryPage::openEdit(*program.window);
    QCOMPARE(usable(*program.window), before);
}

void EntryLeaving::otherTableLeavesUntypedPage()
{
    const Started program(Books);
    const ModalResponder noBox;
    EntryPage::openNew(*program.window);
    Window::pressTable(*program.window, QStringLiteral("autori"));
    QVERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(Window::lines(*program.window), QStringList{QStringLiteral("Svevo")});
    QCOMPARE(noBox.boxes().size(), 0);
}

void EntryLeaving::halfTypedDateIsSaved_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by the key, which leaves the focus where it is") << true;
}

void EntryLeaving::halfTypedDateIsSaved()
{
    QFETCH(bool, byKey);
    Started program(Books + QStringList{QStringLiteral("UPDATE libri SET NDATEFORMAT_Data = "
                                                       "'15/11/2020'")});
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    inputDataForm &date = EntryPage::field(*program.window, QStringLiteral("Data"));
    date.focusEditor();
    QTest::keyClick(date.editor(), Qt::Key_2);
    if (byKey) {
        QTest::keyClick(date.editor(), Qt::Key_S, Qt::ControlModifier);
    } else {
        EntryPage::save(*program.window);
    }
    QTRY_VERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(
        program.here.value(program.database, QStringLiteral("SELECT NDATEFORMAT_Data FROM libri "
                                                            "WHERE RINTEGERFORMAT_Id = 3")),
        QVariant(QStringLiteral("02/11/2020")));
}

void EntryLeaving::halfTypedDateCountsAsTyped()
{
    Started program(Books + QStringList{QStringLiteral("UPDATE libri SET NDATEFORMAT_Data = "
                                                       "'15/11/2020'")});
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    inputDataForm &date = EntryPage::field(*program.window, QStringLiteral("Data"));
    date.focusEditor();
    QTest::keyClick(date.editor(), Qt::Key_2);
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    pressEscape(*program.window);
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(program.window->focusWidget(), date.editor());
    responder.answer(QMessageBox::Yes);
    QVERIFY(program.window->close());
    QCOMPARE(responder.takeTexts(), (QStringList{Question, Question}));
}

void EntryLeaving::leftPageHoldsNothing()
{
    // An editor that tells of its last change only when the page goes must not hold a page
    // that is gone.
    Started program(Books);
    QVERIFY(program.show());
    EntryPage::openNew(*program.window);
    inputDataForm &date = EntryPage::field(*program.window, QStringLiteral("Data"));
    date.focusEditor();
    QTest::keyClick(date.editor(), Qt::Key_2);
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    pressEscape(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QVERIFY(Window::get<QWidget>(*program.window, "listFrame")->isEnabled());
    QVERIFY(Window::action(*program.window, "actionOpen_Db")->isEnabled());
    QVERIFY(program.window->close());
}

void EntryLeaving::saveKeySaves()
{
    Started program(Books);
    QVERIFY(program.show());
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, Titolo, QStringLiteral("Nuovo"));
    QTest::keyClick(program.window->focusWidget(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!EntryPage::isOpen(*program.window));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Nuovo"));
    // On the record page the key does nothing.
    QTest::keyClick(program.window.get(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(Window::lines(*program.window).size(), 3);
}

void EntryLeaving::openingKeys()
{
    Started program(Books);
    QVERIFY(program.show());
    QTest::keyClick(program.window.get(), Qt::Key_N, Qt::ControlModifier);
    QTRY_VERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Aggiungi"));
    pressEscape(*program.window);
    QVERIFY(!EntryPage::isOpen(*program.window));
    QTest::keyClick(program.window.get(), Qt::Key_F2);
    QTRY_VERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Modifica"));
    // Opening another page over this one would lose what is typed.
    EntryPage::type(*program.window, Titolo, QStringLiteral("x"));
    QTest::keyClick(program.window->focusWidget(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Modifica"));
    QVERIFY(EntryPage::shown(*program.window, Titolo).contains(QLatin1Char('x')));
}

void EntryLeaving::deleteKeyAsks()
{
    Started program(Books);
    QVERIFY(program.show());
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    QTest::keyClick(program.window.get(), Qt::Key_Delete, Qt::ControlModifier);
    QTRY_COMPARE(Window::lines(*program.window), QStringList{QStringLiteral("Zibaldone")});
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare questo elemento?")});
}

void EntryLeaving::firstEditorHasFocus_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("label");
    QTest::newRow("a line") << "RSTRINGFORMAT_A text,RSTRINGFORMAT_B text"
                            << "A";
    QTest::newRow("several lines") << "RLONGSTRINGFORMAT_A text,RSTRINGFORMAT_B text"
                                   << "A";
    QTest::newRow("a date") << "RDATEFORMAT_A text"
                            << "A";
    QTest::newRow("a choice") << "Xu_XDTX_RSTRINGFORMAT_A Integer"
                              << "A";
    QTest::newRow("the first that can be edited") << "NSUBTABLEFORMAT_A text,RSTRINGFORMAT_B text"
                                                  << "B";
}

void EntryLeaving::firstEditorHasFocus()
{
    QFETCH(QString, columns);
    QFETCH(QString, label);
    Started program(
        {QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,%1)").arg(columns),
         QStringLiteral("CREATE TABLE u (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_A text)")});
    QVERIFY(program.show());
    for (int time = 0; time < 2; ++time) {
        EntryPage::openNew(*program.window);
        QCOMPARE(QApplication::focusWidget(), EntryPage::field(*program.window, label).editor());
        pressEscape(*program.window);
    }
}

void EntryLeaving::tabWalksFieldsThenButtons_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QStringList>("walked");
    QTest::newRow("every kind of editor")
        << "RSTRINGFORMAT_A text,NLONGSTRINGFORMAT_B text,NINTEGERFORMAT_C text,"
           "NDATEFORMAT_D text,NBOOLFORMAT_E text,NREALFORMAT_F text,"
           "Xu_XDTX_RSTRINGFORMAT_G Integer,NLINKFORMAT_u text,NIMAGEFORMAT_I text,"
           "NPDFFORMAT_L text,NMONEYFORMAT_M text"
        << QStringLiteral("A B C D E F G u I L M").split(QLatin1Char(' '));
    QTest::newRow("a sub-table, where nothing is typed, is passed over")
        << "RSTRINGFORMAT_A text,NSUBTABLEFORMAT_B text,NSTRINGFORMAT_C text"
        << QStringLiteral("A C").split(QLatin1Char(' '));
    QTest::newRow("a sub-table at the end") << "RSTRINGFORMAT_A text,NSUBTABLEFORMAT_B text"
                                            << QStringLiteral("A").split(QLatin1Char(' '));
}

void EntryLeaving::tabWalksFieldsThenButtons()
{
    QFETCH(QString, columns);
    QFETCH(QStringList, walked);
    Started program(
        {QStringLiteral("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,%1)").arg(columns),
         QStringLiteral("CREATE TABLE u (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_A text)")});
    QVERIFY(program.show());
    // Also when the page is opened again.
    for (int time = 0; time < 2; ++time) {
        EntryPage::openNew(*program.window);
        QStringList fields;
        for (int key = 0; key < 50 && !focusedField(*program.window).isEmpty(); ++key) {
            const QString field = focusedField(*program.window);
            if (fields.isEmpty() || fields.last() != field) {
                QCOMPARE(QApplication::focusWidget(),
                         EntryPage::field(*program.window, field).editor());
                fields.append(field);
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(fields, walked);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("pbCancelEdit"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("pbSaveNewUser"));
        pressEscape(*program.window);
        QVERIFY(!EntryPage::isOpen(*program.window));
    }
}

void EntryLeaving::deleteAsks_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("No") << 0;
    QTest::newRow("Esc") << int(Qt::Key_Escape);
    QTest::newRow("Return, the default") << int(Qt::Key_Return);
}

void EntryLeaving::deleteAsks()
{
    QFETCH(int, key);
    const Started program(Books);
    Window::selectLine(*program.window, 1);
    const QByteArray before = program.here.read(program.database);
    ModalResponder responder;
    switch (key) {
    case Qt::Key_Escape:
        responder.pressEscape();
        break;
    case Qt::Key_Return:
        responder.pressReturn();
        break;
    default:
        responder.answer(QMessageBox::No);
    }
    Window::click(*program.window, "pbDeleteUser");
    QCOMPARE(responder.boxes().size(), 1);
    compareQuestion(responder.boxes().first(), QStringLiteral("Eliminare questo elemento?"));
    QVERIFY(program.here.read(program.database) == before);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zibaldone"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{1});
}

void EntryLeaving::deleteShowsFirstLine()
{
    const Started program(Books +
                          QStringList{QStringLiteral("INSERT INTO libri (RINTEGERFORMAT_Id,"
                                                     "RSTRINGFORMAT_Titolo) VALUES (9,'Alfa')")});
    Window::selectLine(*program.window, 1);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
    const quint32 before = program.steps();
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(*program.window, "pbDeleteUser");
    QCOMPARE(program.steps(), before + 1);
    QCOMPARE(program.here.column(program.database,
                                 QStringLiteral("SELECT RINTEGERFORMAT_Id FROM libri")),
             (QStringList{QStringLiteral("7"), QStringLiteral("9")}));
    QCOMPARE(Window::lines(*program.window),
             (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zibaldone")}));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Alfa"));
    QCOMPARE(Window::shownText(*program.window, Titolo), QStringLiteral("Alfa"));
    QCOMPARE(Window::selectedRows(*program.window), QList<int>{0});
    // The next change is made to the record that is shown.
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::shown(*program.window, Titolo), QStringLiteral("Alfa"));
}

void EntryLeaving::deleteLastRecord()
{
    const Started program(Books);
    Window::pressTable(*program.window, QStringLiteral("autori"));
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    Window::click(*program.window, "pbDeleteUser");
    QCOMPARE(program.rows(QStringLiteral("autori")), QStringList());
    QCOMPARE(Window::lines(*program.window), QStringList());
    QCOMPARE(Window::heading(*program.window), QStringLiteral("----"));
    QCOMPARE(Window::labels(*program.window), QStringList());
    QCOMPARE(Window::get<QLabel>(*program.window, "lbToolbar")->text(),
             QStringLiteral("0 Records"));

    responder.answer(QMessageBox::Ok);
    EntryPage::openEdit(*program.window);
    QCOMPARE(responder.takeTexts().last(), QStringLiteral("ERRORE: Record non trovato!"));
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Nome"), QStringLiteral("Eco"));
    EntryPage::save(*program.window);
    QCOMPARE(Window::lines(*program.window), QStringList{QStringLiteral("Eco")});
}

void EntryLeaving::deleteRefusedByDatabase()
{
    const Started program(Books +
                          QStringList{QStringLiteral("CREATE TRIGGER tieni BEFORE DELETE ON libri "
                                                     "BEGIN SELECT RAISE(ABORT,'protetto'); END")});
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    responder.answer(QMessageBox::Ok);
    Window::click(*program.window, "pbDeleteUser");
    QCOMPARE(responder.takeTexts().last(),
             QStringLiteral("ERRORE: Impossibile cancellare il record!\n"
                            "protetto Unable to fetch row"));
    QCOMPARE(Window::lines(*program.window),
             (QStringList{QStringLiteral("Zeno"), QStringLiteral("Zibaldone")}));
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeno"));
}

void EntryLeaving::withoutTable_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("database");
    for (const char *const button : {"pbNewUser", "pbEditUser", "pbDeleteUser"}) {
        QTest::addRow("%s without a database", button) << QString::fromUtf8(button) << false;
        QTest::addRow("%s without a table of one's own", button)
            << QString::fromUtf8(button) << true;
    }
}

void EntryLeaving::withoutTable()
{
    QFETCH(QString, button);
    QFETCH(bool, database);
    const Workspace here;
    if (database) {
        here.write(QStringLiteral("empty.db"), QByteArray());
        here.remember(QStringLiteral("empty.db"));
    }
    const Tavenor window;
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    Window::click(window, button.toUtf8().constData());
    QCOMPARE(responder.boxes().size(), 1);
    QCOMPARE(responder.boxes().first().text, NoTable);
    QCOMPARE(responder.boxes().first().icon, QMessageBox::Warning);
    QVERIFY(!EntryPage::isOpen(window));
}

QTEST_MAIN(EntryLeaving)
#include "ui_entryleaving.moc"
