// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Menus of what was clicked on, and files that are dropped on the window.
#include "tests/support/DesignerPage.h"
#include "tests/support/EntryPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/ModalResponder.h"
#include "widgets/ImageBox.h"
#include "widgets/chooseNameForm.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>

#include <sys/stat.h>

namespace
{

using EntryPage::Started;

const QStringList Library = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_UserPath text,"
                   "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text)"),
    QStringLiteral("CREATE TABLE soci (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO libri VALUES (1,'Agostino','TABLES_DOC/a','TABLES_DOC/a/a.png',"
                   "'TABLES_DOC/a/a.pdf')"),
    QStringLiteral("INSERT INTO libri VALUES (2,'Barone','','','')"),
    QStringLiteral("INSERT INTO libri VALUES (3,'','','','')"),
    QStringLiteral("INSERT INTO soci VALUES (1,'Rossi')"),
};

const QString Agostino = QStringLiteral("Agostino");
const QString Barone = QStringLiteral("Barone");
const QString Edit = QStringLiteral("Modifica");
const QString Delete = QStringLiteral("Elimina");
const QString New = QStringLiteral("Aggiungi");
const QString ExportRecord = QStringLiteral("Esporta Record su file (Export Manager File)");
const QString ExportRecordText = QStringLiteral("Esporta Record su file (Formato Leggibile)");
const QString ExportTable = QStringLiteral("Esporta su file (Export Manager File)");
const QString ExportTableText = QStringLiteral("Esporta su file (Tabella leggibile)");
const QString ChangeIcon = QStringLiteral("Cambia Icona Tabella");
const QString Clear = QStringLiteral("Pulisci La Tabella Selezionata");
const QString Remove = QStringLiteral("Elimina Tabella");
const QString AddField = QStringLiteral("Aggiungi Campo");
const QString Apply = QStringLiteral("Applica");
const QString DeleteFilter = QStringLiteral("Elimina filtro");
const QStringList RecordMenu = {Edit, Delete, ExportRecord, ExportRecordText, New};
const QStringList TableMenu = {ExportTable, ExportTableText, ChangeIcon, Clear};
const QStringList SecondDoor = {
    QStringLiteral("Crea Tabella"), AddField, QStringLiteral("Modo Avanzato"),
    QStringLiteral("Esporta Strutture"), QStringLiteral("Esporta Struttura Tabella")};

// What a menu offered: its texts, and those among them that could be chosen.
struct Menu {
    QStringList texts;
    QStringList usable;
    QStringList keys;
    bool wasShown = false;
};

// Opens a menu, notes it, and chooses the entry of this text (Esc when it is empty).
template<typename Open>
Menu menuOf(const Open &open, const QString &choice = QString())
{
    Menu seen;
    QTimer::singleShot(0, [&seen, &choice] {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr) {
            return;
        }
        seen.wasShown = true;
        for (QAction *const entry : menu->actions()) {
            if (entry->isVisible() && !entry->isSeparator()) {
                seen.texts.append(entry->text());
                seen.usable.append(entry->isEnabled() ? QStringList{entry->text()} : QStringList());
                seen.keys.append(entry->shortcut().toString());
            }
            if (!choice.isEmpty() && entry->text() == choice) {
                menu->setActiveAction(entry);
            }
        }
        QTest::keyClick(menu, choice.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        menu->close();
    });
    open();
    QCoreApplication::processEvents();
    return seen;
}

// A right click on this place of a widget.
void rightClick(QWidget *widget, const QPoint &place)
{
    QTest::mouseClick(widget, Qt::RightButton, Qt::NoModifier, place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
}

// The Menu key where the focus is.
void menuKey(const QWidget &window)
{
    QWidget *const focused = window.focusWidget();
    const QPoint place = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
    QApplication::sendEvent(focused, &event);
}

Menu onLine(const QWidget &window, int row, const QString &choice = QString())
{
    auto *const list = Window::get<QListWidget>(window, "userListWidget");
    return menuOf(
        [list, row] {
            const QRect line = list->visualItemRect(list->item(row));
            rightClick(list->viewport(),
                       line.isValid() ? line.center() : list->viewport()->rect().center());
        },
        choice);
}

Menu onEntry(const QWidget &window, const QString &name, const QString &choice = QString(),
             const char *layout = "listButtonLayout")
{
    for (const ListButtonForm *const entry : Window::buttons(window, layout)) {
        if (Window::get<QLabel>(*entry, "lbListName")->text() == name) {
            QWidget *const label = Window::get<QWidget>(*entry, "lbListName");
            return menuOf([label] { rightClick(label, QPoint(3, 3)); }, choice);
        }
    }
    qFatal("no entry %s", qPrintable(name));
}

// True when this is accepted where it is dragged, and dropped there then.
bool drop(QWidget *target, const QMimeData &data)
{
    QDragEnterEvent enter(QPoint(2, 2), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent event(QPointF(2, 2), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    event.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(target, &event);
    // A move would let the file manager delete the original.
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

bool dropFiles(QWidget *target, const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &path : paths) {
        urls.append(path.contains(QStringLiteral("://")) ? QUrl(path) : QUrl::fromLocalFile(path));
    }
    data.setUrls(urls);
    return drop(target, data);
}

// The program with "libri" listed.
struct Running : Started {
    explicit Running(bool administrator = false, const QStringList &statements = Library)
        : Started(statements)
    {
        window->administratorModeEnabled(administrator);
        isShown = show();
        if (!statements.isEmpty()) {
            window->changeTable(QStringLiteral("libri"));
        }
    }
    bool isShown = false;
};

const QByteArray Rossi = "soci\nRINTEGERFORMAT_Id###2###RSTRINGFORMAT_Nome###Bianchi###\n";
const QByteArray Film = "DB_DATA/###RSTRINGFORMAT_Titolo###text###\n";

} // namespace

class Mouse : public QObject
{
    Q_OBJECT

private slots:
    // Menus of records
    void recordMenu();
    void recordMenuShowsKeys();
    void recordMenuActsOnTheLineClicked();
    void lineWithoutTitleOffersNoCommand();
    void emptyListOffersANewRecord();
    void recordMenuOfTheView();
    void recordMenuOfTheViewNeedsARecord_data();
    void recordMenuOfTheViewNeedsARecord();
    void recordMenuOfALineThatIsNotShown();
    void recordMenuByKey();
    void recordMenuWhenReadOnly();

    // Menus of tables and filters
    void tableMenu_data();
    void tableMenu();
    void tableMenuActsOnTheTableClicked();
    void lookingAtATableMenuChangesNothing();
    void fieldsAreAddedToTheTableClicked();
    void tableMenuByKey();
    void besideTheTables();
    void tableMenuWhileTyped();
    void tableMenuWhenReadOnly();
    void filterMenu_data();
    void filterMenu();
    void filterIsLoaded();
    void filterClickedIsDeleted();
    void filterInForceIsDeleted();

    // Menus of attachments
    void attachmentMenu();
    void attachmentMenuKeepsCopying();
    void editorMenu();
    void textHasItsOwnMenu();

    // Drops
    void databaseIsOpened();
    void recordsAreImported();
    void structureIsImported();
    void structuresAreImported();
    void refused_data();
    void refused();
    void refusedWhileTyped();
    void refusedWhileATableIsDesigned();
    void refusedBehindABox();
    void importsNeedADatabase();
    void readOnlyTakesDatabasesOnly();
    void pictureDialogTakesPictures();
    void pictureOverAnotherEditor();
    void filesAreNoText();
};

void Mouse::recordMenu()
{
    const Running program;
    QVERIFY(program.isShown);
    const Menu menu = onLine(*program.window, 1);
    QCOMPARE(menu.texts, RecordMenu);
    QCOMPARE(menu.usable, RecordMenu);
}

void Mouse::recordMenuShowsKeys()
{
    const Running program;
    QCOMPARE(onLine(*program.window, 1).keys,
             (QStringList{QStringLiteral("F2"), QStringLiteral("Ctrl+Del"), QString(), QString(),
                          QStringLiteral("Ctrl+N")}));
}

void Mouse::recordMenuActsOnTheLineClicked()
{
    const Running program;
    QCOMPARE(Window::lines(*program.window),
             (QStringList{QStringLiteral("----"), Agostino, Barone}));
    onLine(*program.window, 2);
    QCOMPARE(Window::heading(*program.window), Barone);
    onLine(*program.window, 1, Edit);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Titolo")), Agostino);
    EntryPage::field(*program.window, QStringLiteral("Titolo"));
    Window::click(*program.window, "pbCancelEdit");

    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    onLine(*program.window, 2, Delete);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare questo elemento?")});
    QCOMPARE(Window::lines(*program.window), (QStringList{QStringLiteral("----"), Agostino}));

    responder.cancelFileDialog();
    responder.answer(QMessageBox::Ok);
    onLine(*program.window, 1, ExportRecord);
    QCOMPARE(responder.fileDialogs().first().proposedName, QStringLiteral("libri.xmf"));
    responder.takeTexts();
    const QString file = program.here.path(QStringLiteral("a.txt"));
    responder.chooseFile(file);
    onLine(*program.window, 1, ExportRecordText);
    QVERIFY(program.here.read(QStringLiteral("a.txt")).contains("Agostino"));
}

void Mouse::lineWithoutTitleOffersNoCommand()
{
    const Running program;
    onLine(*program.window, 2);
    // Its record cannot be told from others, so nothing can be done to it, nor to another one.
    QCOMPARE(onLine(*program.window, 0).texts, QStringList{New});
}

void Mouse::emptyListOffersANewRecord()
{
    const Running program;
    program.sql(QStringLiteral("DELETE FROM libri"));
    program.window->changeTable(QStringLiteral("libri"));
    const Menu menu = onLine(*program.window, 0, New);
    QCOMPARE(menu.texts, QStringList{New});
    QCOMPARE(EntryPage::heading(*program.window), QStringLiteral("Aggiungi"));
}

void Mouse::recordMenuOfTheView()
{
    const Running program;
    onLine(*program.window, 2);
    QWidget *const title =
        Window::get<QWidget>(*Window::field(*program.window, QStringLiteral("Titolo")), "lbTitle");
    const Menu menu = menuOf([title] { rightClick(title, QPoint(2, 2)); }, Edit);
    QCOMPARE(menu.texts, RecordMenu);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Titolo")), Barone);
}

void Mouse::recordMenuOfTheViewNeedsARecord_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("values");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("a line without a title opens none, though sub-tables show")
        << QStringLiteral("NSUBTABLEFORMAT_Note") << QStringLiteral("1,'',''") << QStringList{New};
    QTest::newRow("one of which nothing is seen can be changed all the same")
        << QStringLiteral("NLONGSTRINGFORMAT_UserPath") << QStringLiteral("1,'','TABLES_DOC/x'")
        << RecordMenu;
}

void Mouse::recordMenuOfTheViewNeedsARecord()
{
    QFETCH(QString, column);
    QFETCH(QString, values);
    QFETCH(QStringList, texts);
    const bool isDetail = column.contains(QStringLiteral("UserPath"));
    const QString title = QStringLiteral("NSTRINGFORMAT_Voce");
    const Running program(
        false, {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                               "%1 text,%2 text)")
                    .arg(isDetail ? column : title, isDetail ? title : column),
                QStringLiteral("CREATE TABLE soci (RINTEGERFORMAT_Id integer primary key,"
                               "RSTRINGFORMAT_Nome text)"),
                QStringLiteral("INSERT INTO libri VALUES (%1)")
                    .arg(isDetail ? QStringLiteral("1,'TABLES_DOC/x',''") : values)});
    QCOMPARE(Window::fields(*program.window).isEmpty(), isDetail);
    QWidget *const page = Window::get<QWidget>(*program.window, "datiContents");
    QCOMPARE(menuOf([page] { rightClick(page, page->rect().center()); }).texts, texts);
}

void Mouse::recordMenuOfALineThatIsNotShown()
{
    // After a jump to one of two equal titles the first line is selected, and another one shown.
    const Running program;
    program.sql(QStringLiteral("DELETE FROM libri WHERE RINTEGERFORMAT_Id=3"));
    program.sql(QStringLiteral("INSERT INTO libri VALUES (11,'Zeta','','',''),"
                               "(12,'Zeta','','','')"));
    program.window->goToRequest(QStringLiteral("libri"), 11);
    QCOMPARE(Window::heading(*program.window), QStringLiteral("Zeta"));
    QCOMPARE(onLine(*program.window, 0, Edit).texts, RecordMenu);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Titolo")), Agostino);
}

void Mouse::recordMenuByKey()
{
    const Running program;
    onLine(*program.window, 2);
    Window::get<QWidget>(*program.window, "userListWidget")->setFocus();
    QCOMPARE(menuOf([&program] { menuKey(*program.window); }, Edit).texts, RecordMenu);
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Titolo")), Barone);
    Window::click(*program.window, "pbCancelEdit");
    Window::get<QWidget>(*program.window, "datiScroll")->setFocus();
    QApplication::setActiveWindow(program.window.get());
    const auto shortcut = [&program] {
        QTest::keyClick(program.window->focusWidget(), Qt::Key_F10, Qt::ShiftModifier);
    };
    QCOMPARE(menuOf(shortcut).texts, RecordMenu);
    QCOMPARE(menuOf([&program] { menuKey(*program.window); }).texts, RecordMenu);
}

void Mouse::recordMenuWhenReadOnly()
{
    Started program(Library);
    program.window = nullptr;
    program.here.write(QStringLiteral("lockDb.dat"), "Locked");
    program.window = std::make_unique<Tavenor>();
    QVERIFY(program.show());
    Window::pressTable(*program.window, QStringLiteral("libri"));
    const Menu menu = onLine(*program.window, 1);
    QCOMPARE(menu.texts, RecordMenu);
    QCOMPARE(menu.usable, QStringList());
}

void Mouse::tableMenu_data()
{
    QTest::addColumn<bool>("administrator");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("of everybody") << false << TableMenu;
    QTest::newRow("of administrators") << true << TableMenu + QStringList{Remove} + SecondDoor;
}

void Mouse::tableMenu()
{
    QFETCH(bool, administrator);
    QFETCH(QStringList, texts);
    const Running program(administrator);
    const Menu menu = onEntry(*program.window, QStringLiteral("soci"));
    QCOMPARE(menu.texts, texts);
    QCOMPARE(menu.usable, texts);
}

void Mouse::tableMenuActsOnTheTableClicked()
{
    const Running program(true);
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    onEntry(*program.window, QStringLiteral("soci"), Clear);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("Eliminare tutti gli elementi di soci?")});
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("soci"));

    responder.answer(QMessageBox::No);
    onEntry(*program.window, QStringLiteral("libri"), Remove);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare libri?")});

    responder.chooseFile(program.here.path(QStringLiteral("soci.xmf")));
    onEntry(*program.window, QStringLiteral("soci"), ExportTable);
    QVERIFY(program.here.read(QStringLiteral("soci.xmf")).startsWith("soci\n"));

    responder.answer(QMessageBox::Yes);
    onEntry(*program.window, QStringLiteral("soci"), Remove);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Eliminare soci?")});
    QCOMPARE(Window::tables(*program.window), QStringList{QStringLiteral("libri")});
}

void Mouse::lookingAtATableMenuChangesNothing()
{
    const Running program;
    EntryPage::openNew(*program.window);
    onEntry(*program.window, QStringLiteral("soci"));
    QVERIFY(EntryPage::isOpen(*program.window));
    QCOMPARE(Window::tableHeading(*program.window), QStringLiteral("libri"));
}

void Mouse::fieldsAreAddedToTheTableClicked()
{
    const Running program(true);
    onEntry(*program.window, QStringLiteral("soci"), AddField);
    QVERIFY(DesignerPage::isOpen(*program.window));
    QCOMPARE(Window::get<QLineEdit>(*program.window, "leTableName")->text(),
             QStringLiteral("soci"));
}

void Mouse::tableMenuByKey()
{
    const Running program;
    for (ListButtonForm *const entry : Window::buttons(*program.window)) {
        if (entry->tableName() == QStringLiteral("soci")) {
            entry->setFocus();
        }
    }
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    QCOMPARE(menuOf([&program] { menuKey(*program.window); }, Clear).texts, TableMenu);
    QCOMPARE(responder.takeTexts(),
             QStringList{QStringLiteral("Eliminare tutti gli elementi di soci?")});
}

void Mouse::besideTheTables()
{
    const Running program(true);
    QWidget *const panel = Window::get<QWidget>(*program.window, "tablesContents");
    const auto open = [panel] { rightClick(panel, QPoint(5, panel->height() - 5)); };
    QCOMPARE(menuOf(open).texts, SecondDoor);
    program.window->administratorModeEnabled(false);
    QVERIFY(!menuOf(open).wasShown);
}

void Mouse::tableMenuWhileTyped()
{
    const Running program(true);
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Titolo"), QStringLiteral("x"));
    QVERIFY(!onEntry(*program.window, QStringLiteral("soci")).wasShown);
}

void Mouse::tableMenuWhenReadOnly()
{
    Started program(Library);
    program.window = nullptr;
    program.here.write(QStringLiteral("lockDb.dat"), "Locked");
    program.window = std::make_unique<Tavenor>();
    program.window->administratorModeEnabled(true);
    QVERIFY(program.show());
    const Menu menu = onEntry(*program.window, QStringLiteral("soci"));
    QCOMPARE(menu.texts, TableMenu + QStringList{Remove} + SecondDoor);
    QCOMPARE(menu.usable, QStringList());
}

void Mouse::filterMenu_data()
{
    QTest::addColumn<bool>("administrator");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("of everybody") << false << QStringList{Apply};
    QTest::newRow("of administrators") << true << QStringList{Apply, DeleteFilter};
}

namespace
{

// Two saved filters of "libri", the panel of filters in front.
struct Filtered : Running {
    explicit Filtered(bool administrator = true)
        : Running(administrator)
    {
        for (const QString &title : {Agostino, Barone}) {
            sql(QStringLiteral("INSERT INTO filters SELECT count(*)+1,'%1','libri',"
                               "'RSTRINGFORMAT_Titolo','%1','STRING','Equal','And' FROM filters")
                    .arg(title));
        }
        window = nullptr;
        window = std::make_unique<Tavenor>();
        window->administratorModeEnabled(administrator);
        isShown = show();
        Window::click(*window, "pbFiltersPage");
    }
    QStringList filters() const
    {
        QStringList names;
        for (const ListButtonForm *const entry : Window::buttons(*window, "filtersButtonLayout")) {
            names.append(entry->savedFilterName());
        }
        return names;
    }
};

} // namespace

void Mouse::filterMenu()
{
    QFETCH(bool, administrator);
    QFETCH(QStringList, texts);
    const Filtered program(administrator);
    const Menu menu = onEntry(*program.window, Barone, QString(), "filtersButtonLayout");
    QCOMPARE(menu.texts, texts);
    QCOMPARE(menu.usable, texts);
}

void Mouse::filterIsLoaded()
{
    const Filtered program;
    onEntry(*program.window, Barone, Apply, "filtersButtonLayout");
    QCOMPARE(Window::lines(*program.window), QStringList{Barone});
}

void Mouse::filterClickedIsDeleted()
{
    const Filtered program;
    onEntry(*program.window, Agostino, Apply, "filtersButtonLayout");
    ModalResponder responder;
    responder.answer(QMessageBox::No);
    onEntry(*program.window, Barone, DeleteFilter, "filtersButtonLayout");
    QCOMPARE(program.filters(), (QStringList{Agostino, Barone}));
    responder.answer(QMessageBox::Yes);
    onEntry(*program.window, Barone, DeleteFilter, "filtersButtonLayout");
    const QString question = QStringLiteral("Eliminare Barone?");
    QCOMPARE(responder.takeTexts(), (QStringList{question, question}));
    QCOMPARE(program.filters(), QStringList{Agostino});
    // The one in force stays in force.
    QCOMPARE(Window::lines(*program.window), QStringList{Agostino});
    QCOMPARE(Window::buttons(*program.window, "filtersButtonLayout").first()->isCurrent(), true);
}

void Mouse::filterInForceIsDeleted()
{
    const Filtered program;
    onEntry(*program.window, Agostino, Apply, "filtersButtonLayout");
    ModalResponder responder;
    responder.answer(QMessageBox::Yes);
    onEntry(*program.window, Agostino, DeleteFilter, "filtersButtonLayout");
    QCOMPARE(program.filters(), QStringList{Barone});
    QCOMPARE(Window::lines(*program.window).size(), 3);
}

void Mouse::attachmentMenu()
{
    const Running program;
    onLine(*program.window, 1);
    QWidget *const preview =
        Window::get<QWidget>(*Window::field(*program.window, QStringLiteral("Foto")), "lbImage");
    const QStringList picture = menuOf([preview] { rightClick(preview, QPoint(2, 2)); }).texts;
    QCOMPARE(picture,
             QStringList{Window::get<QWidget>(
                             *Window::field(*program.window, QStringLiteral("Foto")), "pbViewImage")
                             ->toolTip()});
    const outputDataForm *const pdf = Window::field(*program.window, QStringLiteral("Scheda"));
    QWidget *const button = Window::get<QWidget>(*pdf, "pbViewPdf");
    button->setFocus();
    QCOMPARE(menuOf([&program] { menuKey(*program.window); }).texts,
             QStringList{Window::get<QPushButton>(*pdf, "pbViewPdf")->text().trimmed()});
}

void Mouse::attachmentMenuKeepsCopying()
{
    const Running program;
    onLine(*program.window, 1);
    QWidget *const name =
        Window::get<QWidget>(*Window::field(*program.window, QStringLiteral("Foto")), "leData");
    const QStringList texts = menuOf([name] { rightClick(name, QPoint(2, 2)); }).texts;
    QVERIFY2(texts.size() > 1, qPrintable(texts.join(QLatin1Char('\n'))));
}

void Mouse::editorMenu()
{
    const Running program;
    onLine(*program.window, 1, Edit);
    const inputDataForm &field = EntryPage::field(*program.window, QStringLiteral("Foto"));
    auto *const button = Window::get<QPushButton>(field, "pbViewImage");
    const QString text = button->text().isEmpty() ? button->toolTip() : button->text();
    for (QWidget *const place : {Window::get<QWidget>(field, "lbTitle"), field.editor()}) {
        const Menu menu = menuOf([place] { rightClick(place, QPoint(2, 2)); }, text);
        QCOMPARE(menu.texts.first(), text);
        auto *const box = field.findChild<ImageBox *>();
        QVERIFY(box->isVisible());
        box->close();
    }
}

void Mouse::textHasItsOwnMenu()
{
    const Running program;
    onLine(*program.window, 1, Edit);
    QWidget *const editor = EntryPage::field(*program.window, QStringLiteral("Titolo")).editor();
    QVERIFY(menuOf([editor] { rightClick(editor, QPoint(2, 2)); }).wasShown);
    QWidget *const label = Window::get<QWidget>(
        EntryPage::field(*program.window, QStringLiteral("Titolo")), "lbTitle");
    QVERIFY(!menuOf([label] { rightClick(label, QPoint(2, 2)); }).wasShown);
}

void Mouse::databaseIsOpened()
{
    const Running program;
    program.here.sql(QStringLiteral("Altri.DB"),
                     {QStringLiteral("CREATE TABLE dischi (RINTEGERFORMAT_Id integer primary key,"
                                     "RSTRINGFORMAT_Titolo text)"),
                      QStringLiteral("CREATE TABLE film (RINTEGERFORMAT_Id integer primary key,"
                                     "RSTRINGFORMAT_Titolo text)")});
    const QString path = program.here.path(QStringLiteral("Altri.DB"));
    // Wherever nothing else takes it.
    QVERIFY(dropFiles(Window::get<QWidget>(*program.window, "userListWidget"), {path}));
    QTRY_COMPARE(Window::tables(*program.window),
                 (QStringList{QStringLiteral("dischi"), QStringLiteral("film")}));
    QCOMPARE(program.here.read(QStringLiteral("lastDb.dat")), path.toUtf8());
}

void Mouse::recordsAreImported()
{
    const Running program;
    program.here.write(QStringLiteral("a.xmf"), Rossi);
    program.here.write(QStringLiteral("b.XMF"), QByteArray(Rossi).replace("###2", "###3"));
    program.here.write(QStringLiteral("c.xmf"), QByteArray(Rossi).replace("soci", "nessuno"));
    ModalResponder responder;
    responder.answer(QMessageBox::Ok);
    QVERIFY(dropFiles(program.window.get(), {program.here.path(QStringLiteral("a.xmf")),
                                             program.here.path(QStringLiteral("b.XMF")),
                                             program.here.path(QStringLiteral("c.xmf"))}));
    QTRY_COMPARE(responder.boxes().size(), 1);
    QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("ERRORE: La Tabella non esiste!")});
    QCOMPARE(program.here.column(program.database, QStringLiteral("SELECT * FROM soci")).size(), 3);
}

void Mouse::structureIsImported()
{
    const Running program;
    program.here.write(QStringLiteral("film.tsc"), Film);
    QVERIFY(dropFiles(program.window.get(), {program.here.path(QStringLiteral("film.tsc"))}));
    chooseNameForm *prompt = nullptr;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        prompt = prompt == nullptr ? qobject_cast<chooseNameForm *>(widget) : prompt;
    }
    QTRY_VERIFY(prompt->isVisible());
    QCOMPARE(prompt->getName(), QStringLiteral("film"));
    prompt->accept();
    QTRY_VERIFY(Window::tables(*program.window).contains(QStringLiteral("film")));
}

void Mouse::structuresAreImported()
{
    const Running program;
    program.here.write(QStringLiteral("film.tsc"), Film);
    program.here.write(QStringLiteral("dischi.tsc"), Film);
    QVERIFY(dropFiles(program.window.get(), {program.here.path(QStringLiteral("film.tsc")),
                                             program.here.path(QStringLiteral("dischi.tsc"))}));
    QTRY_COMPARE(Window::tables(*program.window).size(), 4);
}

void Mouse::refused_data()
{
    QTest::addColumn<QStringList>("names");
    const auto add = [](const char *row, const QString &names) {
        QTest::newRow(row) << names.split(QLatin1Char(' '));
    };
    add("a text", QStringLiteral("a.txt"));
    add("a picture", QStringLiteral("a.png"));
    add("two databases", QStringLiteral("a.db b.db"));
    add("records and a structure", QStringLiteral("a.xmf a.tsc"));
    add("records and a text", QStringLiteral("a.xmf a.txt"));
    add("a database on another machine", QStringLiteral("https://x/a.db"));
    add("records here and elsewhere", QStringLiteral("a.xmf ftp://x/b.xmf"));
    add("a file that is not there", QStringLiteral("missing.db"));
    add("a folder", QStringLiteral("folder.db"));
    add("a pipe", QStringLiteral("pipe.xmf"));
    add("a name without a point", QStringLiteral("db"));
    add("the database that is open", QStringLiteral("books.db"));
    add("the one that is open by another name", QStringLiteral("link.db"));
}

void Mouse::refused()
{
    QFETCH(QStringList, names);
    const Running program;
    for (const char *const file :
         {"a.txt", "a.png", "a.db", "b.db", "a.xmf", "a.tsc", "db", "folder.db/x"}) {
        program.here.write(QString::fromLatin1(file), "x");
    }
    QVERIFY(QFile::link(program.here.path(program.database),
                        program.here.path(QStringLiteral("link.db"))));
    const QByteArray pipe = QFile::encodeName(program.here.path(QStringLiteral("pipe.xmf")));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const ModalResponder responder; // a box would fail the test
    QStringList paths;
    for (const QString &name : names) {
        paths.append(name.contains(QStringLiteral("://")) ? name : program.here.path(name));
    }
    QVERIFY(!dropFiles(program.window.get(), paths));
    QMimeData text;
    text.setText(program.here.path(QStringLiteral("a.db")));
    QVERIFY(!drop(program.window.get(), text));
    QCoreApplication::processEvents();
    QCOMPARE(Window::tables(*program.window).size(), 2);
}

void Mouse::refusedWhileTyped()
{
    const Running program;
    for (const char *const name : {"a.db", "a.xmf", "a.tsc"}) {
        program.here.write(QString::fromLatin1(name), "");
    }
    EntryPage::openNew(*program.window);
    EntryPage::type(*program.window, QStringLiteral("Titolo"), QStringLiteral("x"));
    for (const char *const name : {"a.db", "a.xmf", "a.tsc"}) {
        QVERIFY(!dropFiles(program.window.get(), {program.here.path(QString::fromLatin1(name))}));
    }
    QCOMPARE(EntryPage::shown(*program.window, QStringLiteral("Titolo")), QStringLiteral("x"));
}

void Mouse::refusedWhileATableIsDesigned()
{
    const Running program(true);
    program.here.write(QStringLiteral("a.db"), "");
    program.here.write(QStringLiteral("a.tsc"), Film);
    DesignerPage::openNew(*program.window);
    auto *const name = Window::get<QLineEdit>(*program.window, "leTableName");
    name->setText(QStringLiteral("film"));
    for (const char *const file : {"a.db", "a.tsc"}) {
        QVERIFY(!dropFiles(program.window.get(), {program.here.path(QString::fromLatin1(file))}));
    }
    name->clear();
    QVERIFY(dropFiles(program.window.get(), {program.here.path(QStringLiteral("a.db"))}));
}

void Mouse::refusedBehindABox()
{
    const Running program;
    program.here.write(QStringLiteral("a.xmf"), Rossi);
    const QString path = program.here.path(QStringLiteral("a.xmf"));
    bool taken = true;
    ModalResponder responder;
    responder.answer(QMessageBox::No, [&program, &taken, &path](const QMessageBox &) {
        taken = dropFiles(program.window.get(), {path});
    });
    program.window->deleteUser();
    QVERIFY(!taken);
}

void Mouse::importsNeedADatabase()
{
    const Workspace here;
    Tavenor window;
    window.show();
    here.write(QStringLiteral("a.xmf"), Rossi);
    here.write(QStringLiteral("a.tsc"), Film);
    ModalResponder responder;
    for (const char *const name : {"a.xmf", "a.tsc"}) {
        responder.answer(QMessageBox::Ok);
        QVERIFY(dropFiles(&window, {here.path(QString::fromLatin1(name))}));
        QTRY_COMPARE(responder.pending(), 0);
        QCOMPARE(responder.takeTexts(), QStringList{QStringLiteral("Nessuna Tabella Caricata!")});
    }
}

void Mouse::readOnlyTakesDatabasesOnly()
{
    Started program(Library);
    program.window = nullptr;
    program.here.write(QStringLiteral("lockDb.dat"), "Locked");
    program.window = std::make_unique<Tavenor>();
    QVERIFY(program.show());
    program.here.write(QStringLiteral("a.xmf"), Rossi);
    program.here.write(QStringLiteral("a.tsc"), Film);
    QVERIFY(!dropFiles(program.window.get(), {program.here.path(QStringLiteral("a.xmf"))}));
    QVERIFY(!dropFiles(program.window.get(), {program.here.path(QStringLiteral("a.tsc"))}));
    program.here.sql(QStringLiteral("b.db"), {QStringLiteral("CREATE TABLE x (a text)"),
                                              QStringLiteral("CREATE TABLE y (a text)")});
    QVERIFY(dropFiles(program.window.get(), {program.here.path(QStringLiteral("b.db"))}));
    QTRY_COMPARE(Window::tables(*program.window),
                 (QStringList{QStringLiteral("x"), QStringLiteral("y")}));
}

void Mouse::pictureDialogTakesPictures()
{
    const Running program;
    onLine(*program.window, 2, Edit);
    const inputDataForm &field = EntryPage::field(*program.window, QStringLiteral("Foto"));
    Window::click(field, "pbViewImage");
    auto *const box = field.findChild<ImageBox *>();
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString path = program.here.path(QStringLiteral("nuova.PNG"));
    QVERIFY(picture.save(path, "PNG"));
    program.here.write(QStringLiteral("a.pdf"), "x");
    QVERIFY(!dropFiles(box, {program.here.path(QStringLiteral("a.pdf"))}));
    QVERIFY(!dropFiles(box, {program.here.path(QStringLiteral("missing.png"))}));
    QVERIFY(!dropFiles(box, {QStringLiteral("https://x/a.png")}));
    // The page behind it is blocked.
    QVERIFY(!dropFiles(field.editor(), {path}));

    QVERIFY(dropFiles(box, {path}));
    QCOMPARE(Window::get<QLineEdit>(*box, "leImage")->text(), path);
    const QPixmap shown = Window::get<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.toImage().pixelColor(shown.width() / 2, shown.height() / 2), QColor(Qt::red));
    box->accepted();
    QCOMPARE(field.rawText(), QStringLiteral("TABLES_DOC/libri_Barone/nuova.PNG"));

    box->setViewOnly(true);
    box->show();
    QVERIFY(!dropFiles(box, {path}));
}

void Mouse::pictureOverAnotherEditor()
{
    const Running program;
    onLine(*program.window, 2, Edit);
    program.here.write(QStringLiteral("a.png"), "x");
    const QString picture = program.here.path(QStringLiteral("a.png"));
    QVERIFY(!dropFiles(EntryPage::field(*program.window, QStringLiteral("Scheda")).editor(),
                       {picture}));
    QVERIFY(
        dropFiles(EntryPage::field(*program.window, QStringLiteral("Foto")).editor(), {picture}));
    QCOMPARE(EntryPage::field(*program.window, QStringLiteral("Foto")).rawText(),
             QStringLiteral("TABLES_DOC/libri_Barone/a.png"));
}

void Mouse::filesAreNoText()
{
    const Running program(
        false,
        Library + QStringList{QStringLiteral("ALTER TABLE libri ADD COLUMN NLONGSTRINGFORMAT_Trama "
                                             "text")});
    program.here.write(QStringLiteral("a.txt"), "x");
    QMimeData word;
    word.setText(QStringLiteral("Emma"));
    auto *const search = Window::get<QLineEdit>(*program.window, "userSearchEdit");
    EntryPage::openNew(*program.window);
    const auto editor = [&program](const char *label) {
        QWidget *const found =
            EntryPage::field(*program.window, QString::fromLatin1(label)).editor();
        auto *const area = qobject_cast<QAbstractScrollArea *>(found);
        return area == nullptr ? found : area->viewport();
    };
    const auto accepts = [](QWidget *target, const QMimeData &data) {
        QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(target, &enter);
        return enter.isAccepted();
    };
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(program.here.path(QStringLiteral("a.txt")))});
    QMimeData address;
    address.setUrls({QUrl(QStringLiteral("https://a.it"))});
    // File managers and browsers give the text as well.
    file.setText(file.urls().first().toLocalFile());
    address.setText(QStringLiteral("https://a.it"));
    for (QWidget *const target :
         {static_cast<QWidget *>(search), editor("Titolo"), editor("Trama")}) {
        QVERIFY(!accepts(target, file));
        QVERIFY(accepts(target, word));
        QVERIFY(accepts(target, address));
    }
}

QTEST_MAIN(Mouse)
#include "ui_mouse.moc"
