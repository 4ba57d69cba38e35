// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Choice lists: what they offer, how lines are found, and how long a large table takes.
#include "widgets/ChoiceBox.h"
#include "widgets/inputDataForm.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

using Records = QVector<QPair<int, QString>>;

class TestChoices : public QObject
{
    Q_OBJECT

private slots:
    void offersNoChoiceFirst();
    void keepsTheGivenOrderAndTheIds();
    void choosesById_data();
    void choosesById();
    void choosesByLine_data();
    void choosesByLine();
    void keepsOneFurtherChoiceAtMost();
    void equalLinesKeepTheirIds();
    void showsTheBeginningOfALongLine();
    void findsAnyPartOfALine_data();
    void findsAnyPartOfALine();
    void typingOnlySearches_data();
    void typingOnlySearches();
    void leavingShowsTheChoiceAgain();
    void aLineOfTheSearchIsChosen_data();
    void aLineOfTheSearchIsChosen();
    void arrowsChangeTheChoice();
    void aClickSelectsTheTextForTyping();
    void opensTwentyThousandLinesAtOnce();
};

namespace
{

Records someRecords()
{
    return {{7, QStringLiteral("7 Calvino Italo")},
            {3, QStringLiteral("3 Eco Umberto")},
            {12, QStringLiteral("12 Ginzburg Natalia")}};
}

/// A box in a window with another field, so that the focus has somewhere to go.
struct Page {
    explicit Page(const Records &records)
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&box);
        layout->addWidget(&other);
        box.setRecords(records);
        window.show();
        QApplication::setActiveWindow(&window);
        other.setFocus();
    }

    /// Types over the text of the box, as after tabbing into it.
    void type(const QString &text)
    {
        box.setFocus(Qt::TabFocusReason);
        box.lineEdit()->selectAll();
        QTest::keyClicks(box.lineEdit(), text);
    }

    QStringList found() const
    {
        const QAbstractItemModel *model = box.completer()->completionModel();
        QStringList lines;
        for (int row = 0; row < model->rowCount(); ++row) {
            lines.append(model->index(row, 0).data().toString());
        }
        return lines;
    }

    QWidget window;
    ChoiceBox box;
    QLineEdit other;
};

QStringList linesOf(const QComboBox &box)
{
    QStringList lines;
    for (int row = 0; row < box.count(); ++row) {
        lines.append(box.itemText(row));
    }
    return lines;
}

} // namespace

void TestChoices::offersNoChoiceFirst()
{
    ChoiceBox box;
    box.setRecords({});
    QCOMPARE(linesOf(box), QStringList{QStringLiteral("---")});
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.currentText(), QStringLiteral("---"));
    QCOMPARE(box.chosenId(), 0);
    QCOMPARE(box.chosenLine(), QString());
}

void TestChoices::keepsTheGivenOrderAndTheIds()
{
    ChoiceBox box;
    box.setRecords(someRecords());
    QCOMPARE(linesOf(box),
             QStringList({QStringLiteral("---"), QStringLiteral("7 Calvino Italo"),
                          QStringLiteral("3 Eco Umberto"), QStringLiteral("12 Ginzburg Natalia")}));
    QCOMPARE(box.itemData(0), QVariant());
    QCOMPARE(box.itemData(1), QVariant(7));
    QCOMPARE(box.itemData(2), QVariant(3));
    QCOMPARE(box.itemData(3), QVariant(12));
    QCOMPARE(box.currentIndex(), 0);
    box.setRecords({{1, QStringLiteral("1 Uno")}});
    QCOMPARE(linesOf(box), QStringList({QStringLiteral("---"), QStringLiteral("1 Uno")}));
}

void TestChoices::choosesById_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("index");
    QTest::newRow("an Id on offer") << 3 << 2;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("an Id that is not offered") << 4 << 0;
    QTest::newRow("a negative one") << -7 << 0;
}

void TestChoices::choosesById()
{
    QFETCH(int, id);
    ChoiceBox box;
    box.setRecords(someRecords());
    box.setCurrentIndex(1);
    box.chooseId(id);
    QTEST(box.currentIndex(), "index");
    QCOMPARE(box.chosenId(), box.currentIndex() == 0 ? 0 : id);
}

void TestChoices::choosesByLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    QTest::newRow("empty is no choice") << QString() << 0 << 3;
    QTest::newRow("a line on offer") << QStringLiteral("2 Bianchi") << 2 << 3;
    QTest::newRow("another letter case is another line") << QStringLiteral("2 bianchi") << 3 << 4;
    QTest::newRow("a part of a line is another line") << QStringLiteral("2") << 3 << 4;
    QTest::newRow("an unknown line") << QStringLiteral("9 Perduto") << 3 << 4;
}

void TestChoices::choosesByLine()
{
    QFETCH(QString, line);
    ChoiceBox box;
    box.setLines({QStringLiteral("1 Rossi"), QStringLiteral("2 Bianchi")});
    box.setCurrentIndex(1);
    box.chooseLine(line);
    QTEST(box.currentIndex(), "index");
    QTEST(box.count(), "count");
    QCOMPARE(box.chosenLine(), line);
    QCOMPARE(box.chosenId(), 0);
}

void TestChoices::keepsOneFurtherChoiceAtMost()
{
    ChoiceBox box;
    box.chooseLine(QStringLiteral("8 Prima"));
    QCOMPARE(linesOf(box), QStringList({QStringLiteral("---"), QStringLiteral("8 Prima")}));
    box.chooseLine(QStringLiteral("9 Poi"));
    QCOMPARE(linesOf(box), QStringList({QStringLiteral("---"), QStringLiteral("9 Poi")}));
    box.chooseLine(QString());
    QCOMPARE(linesOf(box), QStringList{QStringLiteral("---")});
}

void TestChoices::equalLinesKeepTheirIds()
{
    ChoiceBox box;
    box.setRecords({{1, QStringLiteral("Rossi")}, {2, QStringLiteral("Rossi")}});
    box.chooseId(2);
    QCOMPARE(box.currentIndex(), 2);
    QCOMPARE(box.chosenId(), 2);
}

void TestChoices::showsTheBeginningOfALongLine()
{
    Page page({{1, QStringLiteral("1 ") + QStringLiteral("lunga ").repeated(100)}});
    page.box.chooseId(1);
    page.box.setFocus();
    page.other.setFocus();
    QCOMPARE(page.box.lineEdit()->cursorPosition(), 0);
}

void TestChoices::findsAnyPartOfALine_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("found");
    const QString calvino = QStringLiteral("7 Calvino Italo");
    const QString eco = QStringLiteral("3 Eco Umberto");
    const QString ginzburg = QStringLiteral("12 Ginzburg Natalia");
    QTest::newRow("the beginning") << QStringLiteral("7 C") << QStringList{calvino};
    QTest::newRow("the middle") << QStringLiteral("vino") << QStringList{calvino};
    QTest::newRow("the end") << QStringLiteral("berto") << QStringList{eco};
    QTest::newRow("another letter case") << QStringLiteral("GINZ") << QStringList{ginzburg};
    QTest::newRow("several lines") << QStringLiteral("al") << QStringList{calvino, ginzburg};
    QTest::newRow("no line") << QStringLiteral("xyz") << QStringList{};
}

void TestChoices::findsAnyPartOfALine()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, found);
    Page page(someRecords());
    page.type(typed);
    QCOMPARE(page.found(), found);
    QCOMPARE(page.box.completer()->popup()->isVisible(), !found.isEmpty());
}

void TestChoices::typingOnlySearches_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("a part of another line") << QStringLiteral("eco");
    QTest::newRow("the whole of another line") << QStringLiteral("3 Eco Umberto");
    QTest::newRow("nothing that is offered") << QStringLiteral("Morante");
    QTest::newRow("only a blank") << QStringLiteral(" ");
}

void TestChoices::typingOnlySearches()
{
    QFETCH(QString, typed);
    Page page(someRecords());
    page.box.chooseId(12);
    QSignalSpy changed(&page.box, QOverload<int>::of(&QComboBox::currentIndexChanged));
    page.type(typed);
    QCOMPARE(page.box.lineEdit()->text(), typed);
    QCOMPARE(page.box.chosenId(), 12);
    page.box.completer()->popup()->hide();
    QTest::keyClick(page.box.lineEdit(), Qt::Key_Return);
    QCOMPARE(page.box.lineEdit()->text(), QStringLiteral("12 Ginzburg Natalia"));
    QCOMPARE(page.box.chosenId(), 12);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(page.box.count(), 4);
}

void TestChoices::leavingShowsTheChoiceAgain()
{
    Page page(someRecords());
    page.box.chooseId(12);
    page.type(QStringLiteral("eco"));
    page.box.completer()->popup()->hide();
    page.other.setFocus();
    QCOMPARE(page.box.lineEdit()->text(), QStringLiteral("12 Ginzburg Natalia"));
    QCOMPARE(page.box.currentIndex(), 3);
}

void TestChoices::aLineOfTheSearchIsChosen_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("by Return") << int(Qt::Key_Return);
    QTest::newRow("by Enter") << int(Qt::Key_Enter);
}

void TestChoices::aLineOfTheSearchIsChosen()
{
    QFETCH(int, key);
    Page page(someRecords());
    page.box.chooseId(12);
    QSignalSpy changed(&page.box, QOverload<int>::of(&QComboBox::currentIndexChanged));
    page.type(QStringLiteral("ECO"));
    QAbstractItemView *popup = page.box.completer()->popup();
    QVERIFY(popup->isVisible());
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, static_cast<Qt::Key>(key));
    QCOMPARE(page.box.chosenId(), 3);
    QCOMPARE(page.box.lineEdit()->text(), QStringLiteral("3 Eco Umberto"));
    QCOMPARE(changed.size(), 1);
    page.other.setFocus();
    QCOMPARE(page.box.lineEdit()->text(), QStringLiteral("3 Eco Umberto"));
}

void TestChoices::arrowsChangeTheChoice()
{
    Page page(someRecords());
    page.box.setFocus();
    QTest::keyClick(&page.box, Qt::Key_Down);
    QCOMPARE(page.box.chosenId(), 7);
    QCOMPARE(page.box.lineEdit()->text(), QStringLiteral("7 Calvino Italo"));
}

void TestChoices::aClickSelectsTheTextForTyping()
{
    Page page(someRecords());
    QVERIFY(!page.box.hasFocus());
    page.box.setFocus(Qt::MouseFocusReason);
    QTRY_COMPARE(page.box.lineEdit()->selectedText(), QStringLiteral("---"));
}

void TestChoices::opensTwentyThousandLinesAtOnce()
{
    Records records;
    for (int id = 1; id <= 20000; ++id) {
        records.append({id, QStringLiteral("%1 Cognome%2 Nome").arg(id).arg(id * 7919 % 20000)});
    }
    inputDataForm form;
    QElapsedTimer time;
    time.start();
    form.setChoices(records);
    form.setReferenceValue(QStringLiteral("19999"));
    qInfo("filled in %lld ms", time.restart());
    form.show();
    auto *box = form.findChild<ChoiceBox *>(QStringLiteral("cboxData"));
    QCOMPARE(box->count(), 20001);
    QCOMPARE(form.chosenId(), 19999);
    box->showPopup();
    QApplication::processEvents();
    const qint64 opening = time.restart();
    box->hidePopup();
    box->setFocus();
    box->lineEdit()->selectAll();
    QTest::keyClicks(box->lineEdit(), QStringLiteral("nome1999"));
    const qint64 typing = time.elapsed();
    qInfo("opened in %lld ms, eight letters typed in %lld ms", opening, typing);
    QCOMPARE(box->completer()->completionCount(), 11);
    // Generous bounds: line by line or with measured lines each of these takes many seconds.
    QVERIFY(opening < 1500);
    QVERIFY(typing < 5000);
}

QTEST_MAIN(TestChoices)
#include "widgets_choices.moc"
