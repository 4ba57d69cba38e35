// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The shared dialogs: how many there are, whom they block, what the progress bar shows.
#include "app/Tavenor.h"
#include "tests/support/ModalResponder.h"
#include "tests/support/Window.h"
#include "tests/support/Workspace.h"
#include "widgets/AboutForm.h"
#include "widgets/chooseNameForm.h"
#include "widgets/progressBarForm.h"

#include <QApplication>
#include <QProgressBar>
#include <QSignalSpy>

namespace
{

const QString Books = QStringLiteral("books.db");

// A table "libri" with so many records, shown at the start.
QStringList booksOf(int count)
{
    return {QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                           "NSTRINGFORMAT_Titolo text)"),
            QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                           "RSTRINGFORMAT_Nome text)"),
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                           "i<%1) INSERT INTO libri SELECT i,'Titolo '||i FROM n")
                .arg(count)};
}

// All windows of one kind, shown or not, with a parent or without one.
template<typename Dialog>
QList<Dialog *> all()
{
    QList<Dialog *> found;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        if (auto *const dialog = qobject_cast<Dialog *>(widget)) {
            found.append(dialog);
        }
    }
    return found;
}

} // namespace

class Dialogs : public QObject
{
    Q_OBJECT

private slots:
    void oneOfEach();
    void parentsAndModality();
    void hiddenAtStart();
    void nothingIsLeftBehind();
    void percentIsCut_data();
    void percentIsCut();
    void progressIsUsedAgain();
    void progressStartsAtZero();
    void progressEndsForUnreadableTable();
    void warningsAreModalAndPlain();
};

void Dialogs::oneOfEach()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    const Tavenor window;
    const auto counts = [] {
        return QList<int>{all<progressBarForm>().size(), all<chooseNameForm>().size(),
                          all<AboutForm>().size()};
    };
    QCOMPARE(counts(), (QList<int>{1, 1, 1}));
    const QWidget *const progress = all<progressBarForm>().first();
    const QWidget *const about = all<AboutForm>().first();
    for (int i = 0; i < 3; ++i) {
        Window::pressTable(window, QStringLiteral("libri"));
        Window::action(window, "actionTool")->trigger();
        Window::click(*all<AboutForm>().first(), "pbClose");
    }
    QCOMPARE(counts(), (QList<int>{1, 1, 1}));
    QVERIFY(all<progressBarForm>().first() == progress);
    QVERIFY(all<AboutForm>().first() == about);
}

void Dialogs::parentsAndModality()
{
    const Workspace here;
    const Tavenor window;
    QVERIFY(all<progressBarForm>().first()->parentWidget() == nullptr);
    QCOMPARE(all<progressBarForm>().first()->windowModality(), Qt::ApplicationModal);
    QVERIFY(all<chooseNameForm>().first()->parentWidget() == nullptr);
    QCOMPARE(all<chooseNameForm>().first()->windowModality(), Qt::ApplicationModal);
    QVERIFY(all<AboutForm>().first()->parentWidget() == &window);
    QVERIFY(all<AboutForm>().first()->isModal());
}

void Dialogs::hiddenAtStart()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    Tavenor window;
    window.show();
    QVERIFY(!all<progressBarForm>().first()->isVisible());
    QVERIFY(!all<chooseNameForm>().first()->isVisible());
    QVERIFY(!all<AboutForm>().first()->isVisible());
}

void Dialogs::nothingIsLeftBehind()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    {
        Tavenor window;
        window.show();
        Window::pressTable(window, QStringLiteral("libri"));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(all<QDialog>().isEmpty());
    QVERIFY(all<outputDataForm>().isEmpty());
    QVERIFY(all<ListButtonForm>().isEmpty());
}

void Dialogs::percentIsCut_data()
{
    QTest::addColumn<int>("records");
    QTest::addColumn<int>("last");
    // It is told before each record how many are done.
    QTest::newRow("0 of 1") << 1 << 0;
    QTest::newRow("1 of 2") << 2 << 50;
    QTest::newRow("2 of 3 are 66, not 67") << 3 << 66;
    QTest::newRow("6 of 7") << 7 << 85;
    QTest::newRow("199 of 200 are 99, not 100") << 200 << 99;
    QTest::newRow("1999 of 2000 are 99, not 100") << 2000 << 99;
}

void Dialogs::percentIsCut()
{
    QFETCH(int, records);
    QFETCH(int, last);
    const Workspace here;
    here.sql(Books, booksOf(records));
    here.remember(Books);
    const Tavenor window;
    const auto *const bar =
        Window::get<QProgressBar>(*all<progressBarForm>().first(), "progressBar");
    QCOMPARE(bar->value(), last);
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(bar->value(), 0);
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(bar->value(), last);
}

void Dialogs::progressIsUsedAgain()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    const Tavenor window;
    const progressBarForm *const dialog = all<progressBarForm>().first();
    const auto *const text = Window::get<QLabel>(*dialog, "lbProgressTitle");
    // Texts stay until the next use.
    QCOMPARE(text->text(), QStringLiteral("libri"));
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Elaborazione"));
    Window::pressTable(window, QStringLiteral("autori"));
    QCOMPARE(text->text(), QStringLiteral("autori"));
    QCOMPARE(all<progressBarForm>().first(), dialog);
}

void Dialogs::progressStartsAtZero()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    const Tavenor window;
    const auto *const bar =
        Window::get<QProgressBar>(*all<progressBarForm>().first(), "progressBar");
    QCOMPARE(bar->value(), 66);
    const QSignalSpy values(bar, &QProgressBar::valueChanged);
    Window::pressTable(window, QStringLiteral("libri"));
    QVERIFY(values.count() >= 2);
    QCOMPARE(values.first().first().toInt(), 0);
    QCOMPARE(values.last().first().toInt(), 66);
}

void Dialogs::progressEndsForUnreadableTable()
{
    const Workspace here;
    here.sql(Books, booksOf(3));
    here.remember(Books);
    Tavenor window;
    window.goToRequest(QStringLiteral("altrove"), 1);
    QVERIFY(!all<progressBarForm>().first()->isVisible());
    QVERIFY(!all<progressBarForm>().first()->isHeld());
    Window::pressTable(window, QStringLiteral("libri"));
    QCOMPARE(Window::lines(window).size(), 3);
}

void Dialogs::warningsAreModalAndPlain()
{
    const Workspace here;
    const Tavenor window;
    ModalResponder responder;
    for (int i = 0; i < 2; ++i) {
        responder.answer(QMessageBox::Ok, [&window](const QMessageBox &box) {
            QVERIFY(box.isModal());
            QVERIFY(box.parentWidget() == &window);
        });
        Window::click(window, "pbNewUser");
    }
    QCOMPARE(responder.boxes().size(), 2);
    for (const ModalResponder::Box &box : responder.boxes()) {
        QCOMPARE(box.text, QStringLiteral("Nessuna Tabella Caricata!"));
        QCOMPARE(box.title, QStringLiteral("DB Administration Tool"));
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(box.textFormat, Qt::PlainText);
    }
    // One box serves all warnings.
    QCOMPARE(window.findChildren<QMessageBox *>().size(), 1);
}

QTEST_MAIN(Dialogs)
#include "ui_dialogs.moc"
