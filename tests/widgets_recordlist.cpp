// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The record list's placeholder.
#include "widgets/RecordListWidget.h"

#include <QtTest>

namespace
{

/// The rows of the list's picture in which the placeholder's colour (red here) is painted,
/// grouped into lines of text: first and last row of each.
QVector<QPair<int, int>> paintedLines(const QImage &picture)
{
    QVector<QPair<int, int>> lines;
    for (int y = 0; y < picture.height(); ++y) {
        bool isPainted = false;
        for (int x = 0; x < picture.width() && !isPainted; ++x) {
            const QColor colour = picture.pixelColor(x, y);
            isPainted = colour.red() > 200 && colour.green() < 120;
        }
        if (isPainted && !lines.isEmpty() && lines.last().second == y - 1) {
            lines.last().second = y;
        } else if (isPainted) {
            lines.append({y, y});
        }
    }
    return lines;
}

/// The same for columns: first and last one painted.
QPair<int, int> paintedWidth(const QImage &picture)
{
    const QVector<QPair<int, int>> columns =
        paintedLines(picture.transformed(QTransform().rotate(90)));
    return columns.isEmpty() ? qMakePair(0, 0)
                             : qMakePair(columns.first().first, columns.last().second);
}

} // namespace

class TestRecordList : public QObject
{
    Q_OBJECT

private:
    QImage painted() { return list->viewport()->grab().toImage(); }

    QScopedPointer<RecordListWidget> list;

private slots:
    void init();
    void anEmptyListSaysWhy();
    void linesTakeThePlaceholdersPlace();
    void withoutTextNothingIsPainted();
    void hintsAreSmaller();
    void longTextsAreWrappedAndCentred();
    void screenReadersHearThePlaceholder();
    void addedLinesAreOrdinaryItems();
    void addedLinesAreToldOfOnce();
    void addedLinesLookLikeItems();
};

void TestRecordList::init()
{
    list.reset(new RecordListWidget);
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::PlaceholderText, Qt::red);
    list->setPalette(palette);
    list->resize(280, 360);
    list->show();
}

void TestRecordList::anEmptyListSaysWhy()
{
    QVERIFY(paintedLines(painted()).isEmpty());
    list->setPlaceholder("HHH", {});
    QCOMPARE(paintedLines(painted()).size(), 1);
    list->setPlaceholder("HHH", {"H", "HH"});
    QCOMPARE(paintedLines(painted()).size(), 3);
}

void TestRecordList::linesTakeThePlaceholdersPlace()
{
    list->setPlaceholder("HHH", {"H"});
    list->addItem("Il barone rampante");
    QVERIFY(paintedLines(painted()).isEmpty());
    delete list->takeItem(0);
    QCOMPARE(paintedLines(painted()).size(), 2);
    list->addItems({"a", "b"});
    QVERIFY(paintedLines(painted()).isEmpty());
    list->clear();
    QCOMPARE(paintedLines(painted()).size(), 2);
}

void TestRecordList::withoutTextNothingIsPainted()
{
    list->setPlaceholder(QString(), {"H"});
    QVERIFY(paintedLines(painted()).isEmpty());
}

void TestRecordList::hintsAreSmaller()
{
    list->setPlaceholder("HHH", {"HHH"});
    const QVector<QPair<int, int>> lines = paintedLines(painted());
    QCOMPARE(lines.size(), 2);
    const int text = lines.at(0).second - lines.at(0).first;
    const int hint = lines.at(1).second - lines.at(1).first;
    QVERIFY2(hint < text, qPrintable(QString("%1 against %2").arg(hint).arg(text)));
}

void TestRecordList::longTextsAreWrappedAndCentred()
{
    list->setPlaceholder(QString("HHHH ").repeated(20).trimmed(), {});
    const QImage picture = painted();
    const QVector<QPair<int, int>> lines = paintedLines(picture);
    QVERIFY(lines.size() > 2);
    const QPair<int, int> width = paintedWidth(picture);
    const int left = width.first;
    const int right = picture.width() - 1 - width.second;
    QVERIFY(left > 8);
    QVERIFY(qAbs(left - right) < 12);
    const int above = lines.first().first;
    const int below = picture.height() - 1 - lines.last().second;
    QVERIFY(qAbs(above - below) < 12);
}

void TestRecordList::screenReadersHearThePlaceholder()
{
    QCOMPARE(list->accessibleDescription(), QString());
    list->setPlaceholder("Nessuna Tabella Caricata!", {"File", "Opzioni"});
    const QString all = "Nessuna Tabella Caricata!\nFile\nOpzioni";
    QCOMPARE(list->accessibleDescription(), all);
    list->addItem("riga");
    QCOMPARE(list->accessibleDescription(), QString());
    delete list->takeItem(0);
    QCOMPARE(list->accessibleDescription(), all);
    list->addItems({"a", "b"});
    list->clear();
    QCOMPARE(list->accessibleDescription(), all);
    list->setPlaceholder(QString(), {});
    QCOMPARE(list->accessibleDescription(), QString());
}

void TestRecordList::addedLinesAreOrdinaryItems()
{
    list->setPlaceholder("HHH", {"H"});
    list->addLines({"b", "a", "c"});
    QVERIFY(paintedLines(painted()).isEmpty());
    QCOMPARE(list->accessibleDescription(), QString());
    QCOMPARE(list->count(), 3);
    QCOMPARE(list->item(1)->text(), QString("a"));
    QCOMPARE(list->item(1)->data(Qt::EditRole).toString(), QString("a"));
    QVERIFY(!list->item(1)->data(Qt::DecorationRole).isValid());
    QCOMPARE(list->item(1)->flags(), QListWidgetItem().flags());
    QCOMPARE(list->findItems("A", Qt::MatchContains), {list->item(1)});

    QSignalSpy changes(list.get(), &QListWidget::itemChanged);
    list->item(1)->setText("aa");
    list->item(2)->setToolTip("tip");
    QCOMPARE(changes.count(), 2);
    QCOMPARE(list->item(1)->text(), QString("aa"));
    QCOMPARE(list->item(2)->toolTip(), QString("tip"));
    const std::unique_ptr<QListWidgetItem> copy(list->item(1)->clone());
    QCOMPARE(copy->text(), QString("aa"));

    QSignalSpy selections(list.get(), &QListWidget::itemSelectionChanged);
    list->setCurrentRow(2);
    QCOMPARE(selections.count(), 1);
    list->sortItems();
    QCOMPARE(list->item(0)->text(), QString("aa"));
    QCOMPARE(list->currentItem()->text(), QString("c"));
    list->addLines({"d"});
    QCOMPARE(list->count(), 4);
    delete list->takeItem(3);
    list->clear();
    QCOMPARE(list->count(), 0);
    QCOMPARE(paintedLines(painted()).size(), 2);
}

void TestRecordList::addedLinesAreToldOfOnce()
{
    list->addItem("a");
    const QSignalSpy about(list->model(), &QAbstractItemModel::rowsAboutToBeInserted);
    const QSignalSpy inserted(list->model(), &QAbstractItemModel::rowsInserted);
    list->addLines({});
    QCOMPARE(inserted.count(), 0);
    list->addLines({"b", "c", "d"});
    for (const QSignalSpy *const signal : {&about, &inserted}) {
        QCOMPARE(signal->count(), 1);
        QVERIFY(!signal->first().at(0).toModelIndex().isValid());
        QCOMPARE(signal->first().at(1).toInt(), 1);
        QCOMPARE(signal->first().at(2).toInt(), 3);
    }
}

void TestRecordList::addedLinesLookLikeItems()
{
    list->addItems({"Il barone rampante", "Cosmicomiche", QString("H").repeated(200)});
    list->setCurrentRow(1);
    const QImage expected = painted();
    list->clear();
    list->addLines({"Il barone rampante", "Cosmicomiche", QString("H").repeated(200)});
    list->setCurrentRow(1);
    QCOMPARE(painted(), expected);
}

QTEST_MAIN(TestRecordList)
#include "widgets_recordlist.moc"
