// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What screen readers are told: the name of every control of every page and dialog, and the
// states that are otherwise only seen.
#include "tests/support/DesignerPage.h"
#include "tests/support/EntryPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/ModalResponder.h"
#include "widgets/AboutForm.h"
#include "widgets/ImageBox.h"
#include "widgets/calcForm.h"
#include "widgets/chooseNameForm.h"
#include "widgets/progressBarForm.h"

#include <QAccessible>
#include <QLabel>

namespace
{

using EntryPage::Started;

// A table with a column of every format, one of detail records, and two that are referred to.
const QStringList Library = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_Trama text,NDATEFORMAT_Uscita text,"
                   "NINTEGERFORMAT_Pagine text,NREALFORMAT_Peso text,NMONEYFORMAT_Prezzo text,"
                   "NLONGSTRINGFORMAT_UserPath text,NIMAGEFORMAT_Copertina text,"
                   "NPDFFORMAT_Scheda text,NBOOLFORMAT_Letto text,NMAILFORMAT_Posta text,"
                   "NLINKFORMAT_autori text,NURLFORMAT_Sito text,NSUBTABLEFORMAT_Prestiti text,"
                   "Xautori_XDTX_RSTRINGFORMAT_Nome Integer)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NSTRINGFORMAT_Nato text,NSTRINGFORMAT_Morto text)"),
    QStringLiteral("INSERT INTO autori VALUES (1,'Svevo','Trieste','Motta')"),
    QStringLiteral(
        "INSERT INTO libri VALUES (1,'Zeno','Una vita\nlunga','01/05/1923','400','0.5',"
        "'12.5','TABLES_DOC/libri_Zeno','TABLES_DOC/libri_Zeno/a.png',"
        "'TABLES_DOC/libri_Zeno/a.pdf','TRUE','a@b.it','1 Svevo','https://a.it','','1')"),
};

// The way to a widget, for who reads a failure.
QString pathOf(const QWidget &widget)
{
    QString path = QString::fromLatin1(widget.metaObject()->className()) + QLatin1Char(' ') +
                   widget.objectName();
    for (const QWidget *parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        path.prepend(parent->objectName() + QLatin1Char('/'));
    }
    return path;
}

QString spoken(QWidget *widget, QAccessible::Text what = QAccessible::Name)
{
    const QAccessibleInterface *const reader = QAccessible::queryAccessibleInterface(widget);
    return reader == nullptr ? QString() : reader->text(what);
}

// A box of choices is known by its label: what it tells as its name is the choice.
QString nameOf(QWidget *widget)
{
    QAccessibleInterface *const reader = QAccessible::queryAccessibleInterface(widget);
    if (reader == nullptr || reader->role() != QAccessible::ComboBox) {
        return spoken(widget).trimmed();
    }
    for (const auto &relation : reader->relations(QAccessible::Label)) {
        return relation.first->text(QAccessible::Name);
    }
    return QString();
}

bool takesFocus(const QWidget &widget)
{
    return widget.focusPolicy() != Qt::NoFocus && widget.focusProxy() == nullptr &&
           widget.isVisible();
}

// The controls on the screen that would be nothing but "button" or "text" to a listener.
QStringList nameless(const QWidget &page)
{
    QStringList found;
    for (QWidget *const widget : page.findChildren<QWidget *>()) {
        if (takesFocus(*widget) && nameOf(widget).isEmpty()) {
            found.append(pathOf(*widget));
        }
    }
    return found;
}

// Two controls of one name on the screen cannot be told apart.
QStringList namesakes(const QWidget &page)
{
    QMap<QString, int> count;
    for (QWidget *const widget : page.findChildren<QWidget *>()) {
        if (takesFocus(*widget)) {
            const QAccessibleInterface *const reader =
                QAccessible::queryAccessibleInterface(widget);
            ++count[QStringLiteral("%1 %2").arg(int(reader->role())).arg(nameOf(widget))];
        }
    }
    QStringList found;
    for (auto name = count.cbegin(); name != count.cend(); ++name) {
        if (name.value() > 1) {
            found.append(name.key());
        }
    }
    return found;
}

// Labels beside a control that do not lead to it.
QStringList labelsWithoutBuddy(const QWidget &page, const QStringList &others = {})
{
    const QStringList usual = {QStringLiteral("lbTitle"), QStringLiteral("lbTableName"),
                               QStringLiteral("lbIcon"), QStringLiteral("lbTotal")};
    QStringList found;
    for (const QString &name : usual + others) {
        for (const QLabel *const label : page.findChildren<QLabel *>(name)) {
            if (label->isVisible() && label->buddy() == nullptr) {
                found.append(pathOf(*label));
            }
        }
    }
    return found;
}

void checkNames(const QWidget &page)
{
    QCOMPARE(nameless(page).join(QLatin1Char('\n')), QString());
    QCOMPARE(namesakes(page).join(QLatin1Char('\n')), QString());
}

template<typename Dialog>
Dialog *topLevel()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const dialog = qobject_cast<Dialog *>(widget)) {
            return dialog;
        }
    }
    return nullptr;
}

} // namespace

class Accessibility : public QObject
{
    Q_OBJECT

private slots:
    void recordsPage();
    void savedFiltersPanel();
    void emptyWindow();
    void entryPage();
    void entryPageOfSystemFields();
    void filterPage();
    void calculatorPage();
    void designerPage();
    void imageDialog();
    void namePrompt();
    void aboutBox();
    void progressWindow();
    void messageBoxes();

    void requiredIsTold();
    void missingFileIsTold();
    void conditionInForceIsTold();
    void filterInForceIsTold();
    void currentTableIsTold();
};

void Accessibility::recordsPage()
{
    Started program(Library);
    program.window->administratorModeEnabled(true);
    QVERIFY(program.show());
    QCOMPARE(Window::fields(*program.window).size(), 14);
    checkNames(*program.window);
    // A sub-table has a label and a button of its own name.
    QCOMPARE(labelsWithoutBuddy(*program.window).join(QLatin1Char('\n')), QString());
}

void Accessibility::savedFiltersPanel()
{
    Started program(Library);
    program.sql(QStringLiteral("INSERT INTO filters VALUES (1,'Lunghi','libri',"
                               "'NINTEGERFORMAT_Pagine','300','INTEGER','Major','And')"));
    program.window = nullptr;
    program.window = std::make_unique<Tavenor>();
    QVERIFY(program.show());
    Window::click(*program.window, "pbFiltersPage");
    Window::click(*program.window, "pbDbName");
    checkNames(*program.window);
    QWidget *const entry = Window::buttons(*program.window, "filtersButtonLayout").first();
    QCOMPARE(spoken(entry->focusProxy()), QStringLiteral("Lunghi"));
}

void Accessibility::emptyWindow()
{
    const Workspace here;
    Tavenor window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    checkNames(window);
    QWidget *const list = Window::get<QWidget>(window, "userListWidget");
    QVERIFY(spoken(list, QAccessible::Description).contains(QStringLiteral("Nessuna Tabella")));
}

void Accessibility::entryPage()
{
    Started program(Library);
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    QCOMPARE(EntryPage::labels(*program.window).size(), 14);
    checkNames(*program.window);
}

void Accessibility::entryPageOfSystemFields()
{
    Started program(Library);
    QVERIFY(program.show());
    EntryPage::setAdvancedMode(*program.window, true);
    EntryPage::openNew(*program.window);
    checkNames(*program.window);
    QCOMPARE(spoken(EntryPage::field(*program.window, QStringLiteral("Id")).editor()),
             QStringLiteral("Id"));
}

void Accessibility::filterPage()
{
    Started program(Library);
    QVERIFY(program.show());
    FilterPage::open(*program.window);
    checkNames(*program.window);
    QCOMPARE(labelsWithoutBuddy(*Window::get<QWidget>(*program.window, "filterPage"))
                 .join(QLatin1Char('\n')),
             QString());
}

void Accessibility::calculatorPage()
{
    Started program(Library);
    QVERIFY(program.show());
    Window::click(*program.window, "pbCalc");
    QCOMPARE(program.window->findChildren<calcForm *>().size(), 3);
    checkNames(*program.window);
    QCOMPARE(labelsWithoutBuddy(*program.window).join(QLatin1Char('\n')), QString());
}

void Accessibility::designerPage()
{
    Started program(Library);
    QVERIFY(program.show());
    DesignerPage::openNew(*program.window);
    program.window->addNewTableElement();
    // Each row has a button that adds one more, and all of them do the same.
    const QString sameInEveryRow = QStringLiteral("43 Aggiungi un nuovo campo alla tabella");
    const QStringList ofRows = {QStringLiteral("lbType"), QStringLiteral("lbExistList"),
                                QStringLiteral("lbExistList2"), QStringLiteral("lbExistField")};
    const auto check = [&program, &sameInEveryRow, &ofRows] {
        QCOMPARE(labelsWithoutBuddy(*program.window, ofRows).join(QLatin1Char('\n')), QString());
        QCOMPARE(nameless(*program.window).join(QLatin1Char('\n')), QString());
        QCOMPARE(namesakes(*program.window).join(QLatin1Char('\n')), sameInEveryRow);
    };
    newTableElement *const row = DesignerPage::rows(*program.window).last();
    for (const char *const type : {"STRING", "LINK", "SUBTABLE"}) {
        Window::get<QComboBox>(*row, "cbType")->setCurrentText(QString::fromLatin1(type));
        check();
    }
    Window::get<QCheckBox>(*DesignerPage::rows(*program.window).first(), "cbFromTable")->click();
    check();
}

void Accessibility::imageDialog()
{
    Started program(Library);
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    const inputDataForm &field = EntryPage::field(*program.window, QStringLiteral("Copertina"));
    Window::click(field, "pbViewImage");
    const auto *const box = field.findChild<ImageBox *>();
    QVERIFY(box->isVisible());
    checkNames(*box);
}

void Accessibility::namePrompt()
{
    const Started program(Library);
    auto *const prompt = topLevel<chooseNameForm>();
    prompt->show();
    checkNames(*prompt);
    QVERIFY(Window::get<QLabel>(*prompt, "label")->isVisible());
    QCOMPARE(labelsWithoutBuddy(*prompt, {QStringLiteral("label")}).join(QLatin1Char('\n')),
             QString());
}

void Accessibility::aboutBox()
{
    Started program(Library);
    QVERIFY(program.show());
    Window::action(*program.window, "actionTool")->trigger();
    const auto *const box = program.window->findChild<AboutForm *>();
    QVERIFY(box->isVisible());
    checkNames(*box);
}

void Accessibility::progressWindow()
{
    const Started program(Library);
    auto *const progress = topLevel<progressBarForm>();
    progress->setProgressText(QStringLiteral("libri"));
    progress->show();
    checkNames(*progress);
    QWidget *const bar = Window::get<QWidget>(*progress, "progressBar");
    QCOMPARE(spoken(bar), QStringLiteral("libri"));
}

void Accessibility::messageBoxes()
{
    const Started program(Library);
    ModalResponder responder;
    QStringList found;
    responder.answer(QMessageBox::No, [&found](const QMessageBox &box) { found = nameless(box); });
    program.window->deleteUser();
    QCOMPARE(found, QStringList());
}

void Accessibility::requiredIsTold()
{
    Started program(Library);
    QVERIFY(program.show());
    EntryPage::openNew(*program.window);
    const auto description = [&program](const char *label) {
        return spoken(EntryPage::field(*program.window, QString::fromLatin1(label)).editor(),
                      QAccessible::Description);
    };
    QCOMPARE(description("Titolo"), QStringLiteral("obbligatorio"));
    QCOMPARE(description("Trama"), QString());
}

void Accessibility::missingFileIsTold()
{
    Started program(Library);
    QVERIFY(program.show());
    EntryPage::openEdit(*program.window);
    QWidget *const picture =
        EntryPage::field(*program.window, QStringLiteral("Copertina")).editor();
    QCOMPARE(spoken(picture, QAccessible::Description), QStringLiteral("Il file non c'è"));
}

void Accessibility::conditionInForceIsTold()
{
    Started program(Library);
    QVERIFY(program.show());
    FilterPage::open(*program.window);
    inputDataForm &titolo = FilterPage::condition(*program.window, QStringLiteral("Titolo"));
    QCOMPARE(spoken(titolo.editor(), QAccessible::Description), QString());
    QTest::keyClicks(titolo.editor(), QStringLiteral("Zeno"));
    QCOMPARE(spoken(titolo.editor(), QAccessible::Description), QStringLiteral("nel filtro"));
    Window::click(titolo, "pbNoFilter");
    QCOMPARE(spoken(titolo.editor(), QAccessible::Description), QString());
}

void Accessibility::filterInForceIsTold()
{
    Started program(Library);
    QVERIFY(program.show());
    QWidget *const button = Window::get<QWidget>(*program.window, "pbFilter");
    QCOMPARE(spoken(button, QAccessible::Description), QStringLiteral("spento"));
    FilterPage::open(*program.window);
    FilterPage::enter(*program.window, QStringLiteral("Titolo"), QStringLiteral("Zeno"));
    Window::click(*program.window, "pbSaveFilters");
    QCOMPARE(spoken(button, QAccessible::Description), QStringLiteral("acceso"));
}

void Accessibility::currentTableIsTold()
{
    Started program(Library);
    QVERIFY(program.show());
    QStringList told;
    for (const ListButtonForm *const entry : Window::buttons(*program.window)) {
        QWidget *const button = entry->focusProxy();
        told.append(spoken(button) + QLatin1Char(' ') + spoken(button, QAccessible::Description));
    }
    QCOMPARE(told.size(), 2);
    QVERIFY(told.contains(QStringLiteral("libri corrente")));
    QVERIFY(!told.contains(QStringLiteral("autori corrente")));
}

QTEST_MAIN(Accessibility)
#include "ui_accessibility.moc"
