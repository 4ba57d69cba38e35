// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Values to read, on one line and on several.
#include "widgets/ValueLine.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QtTest>

class TestValueLine : public QObject
{
    Q_OBJECT

private slots:
    void looksLikeText();
    void showsTheBeginning();
    void keepsLongTextsWhole();
    void severalLinesAreShownInFull();
    void severalLinesFollowTheWidth();
    void veryLongTextsScrollInside();
    void endlessWordsAreBrokenAnywhere();
    void aNewTextIsMeasuredAnew();
    void oneLineTakesTheViewAway();
    void keyboardReachesTheText();
    void screenReadersHearTheName();
    void linesAreCounted_data();
    void linesAreCounted();
};

namespace
{

QPlainTextEdit *viewOf(const ValueLine &line)
{
    return line.findChild<QPlainTextEdit *>();
}

} // namespace

void TestValueLine::looksLikeText()
{
    ValueLine line;
    QVERIFY(line.isReadOnly());
    QVERIFY(!line.hasFrame());
    // Painted over two grounds, it must take on both: it has none of its own.
    for (const QColor &ground : {QColor(Qt::green), QColor(Qt::darkBlue)}) {
        QWidget page;
        page.resize(100, 40);
        page.setAutoFillBackground(true);
        QPalette palette;
        palette.setColor(QPalette::Window, ground);
        page.setPalette(palette);
        line.setParent(&page);
        line.setGeometry(0, 0, 100, 40);
        line.show();
        QCOMPARE(page.grab().toImage().pixelColor(50, 20), ground);
        line.setParent(nullptr);
    }
}

void TestValueLine::showsTheBeginning()
{
    ValueLine line;
    line.resize(60, 24);
    line.showOneLine("Una riga molto lunga che non trova posto");
    QCOMPARE(line.cursorPosition(), 0);
    QVERIFY(viewOf(line) == nullptr);
}

void TestValueLine::keepsLongTextsWhole()
{
    const QString text(40000, QLatin1Char('x'));
    ValueLine line;
    line.showOneLine(text);
    QCOMPARE(line.text().size(), 40000);
    line.showOneLine("prima\nseconda");
    QCOMPARE(line.text(), QString("prima\nseconda"));
}

void TestValueLine::severalLinesAreShownInFull()
{
    ValueLine line;
    line.showOneLine("prima");
    line.resize(400, 300);
    const int oneLine = line.sizeHint().height();
    QVERIFY(!line.hasHeightForWidth());
    QCOMPARE(line.heightForWidth(400), oneLine);

    line.showSeveralLines("prima\nseconda\nterza");
    QCOMPARE(line.text(), QString("prima\nseconda\nterza"));
    QVERIFY(line.hasHeightForWidth());
    line.resize(400, line.heightForWidth(400));
    line.show();
    QPlainTextEdit *view = viewOf(line);
    QVERIFY(view != nullptr);
    QCOMPARE(view->toPlainText(), QString("prima\nseconda\nterza"));
    QVERIFY(view->isReadOnly());
    QVERIFY(view->isVisible());
    QCOMPARE(view->verticalScrollBar()->maximum(), 0);
    const int lineHeight = view->fontMetrics().height();
    QVERIFY(line.height() >= 3 * lineHeight);
    QVERIFY(line.height() <= 4 * lineHeight + 4);
}

void TestValueLine::severalLinesFollowTheWidth()
{
    ValueLine line;
    line.showSeveralLines(QString("parola ").repeated(40));
    QVERIFY(line.heightForWidth(200) > 2 * line.heightForWidth(600));
    for (const int width : {200, 600}) {
        line.resize(width, line.heightForWidth(width));
        line.show();
        QCoreApplication::processEvents();
        QCOMPARE(viewOf(line)->width(), width);
        QCOMPARE(viewOf(line)->verticalScrollBar()->maximum(), 0);
    }
}

void TestValueLine::veryLongTextsScrollInside()
{
    ValueLine line;
    line.showSeveralLines(QString("riga\n").repeated(5000));
    const int height = line.heightForWidth(300);
    QVERIFY(height < 61 * line.fontMetrics().height() + 40);
    line.resize(300, height);
    line.show();
    QVERIFY(viewOf(line)->verticalScrollBar()->maximum() > 4000);
    QCOMPARE(viewOf(line)->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void TestValueLine::endlessWordsAreBrokenAnywhere()
{
    // Broken between words, the text would be laid out anew as a whole for each of its lines.
    const QString text = QStringLiteral("prima ") + QString(120000, QLatin1Char('x'));
    ValueLine line;
    line.showSeveralLines(text);
    line.resize(300, line.heightForWidth(300));
    line.show();
    QCOMPARE(viewOf(line)->wordWrapMode(), QTextOption::WrapAnywhere);
    QVERIFY(line.height() < 61 * line.fontMetrics().height() + 40);
    viewOf(line)->selectAll();
    viewOf(line)->copy();
    QCOMPARE(QApplication::clipboard()->text(), text);

    line.showSeveralLines(QString("parola ").repeated(2000));
    QCOMPARE(viewOf(line)->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void TestValueLine::aNewTextIsMeasuredAnew()
{
    ValueLine line;
    line.showSeveralLines("prima\nseconda");
    const int twoLines = line.heightForWidth(300);
    line.showSeveralLines("prima\nseconda\nterza");
    const int threeLines = line.heightForWidth(300);
    QVERIFY(threeLines > twoLines);
    QFont larger = line.font();
    larger.setPointSize(2 * larger.pointSize());
    line.setFont(larger);
    QVERIFY(line.heightForWidth(300) > threeLines);
}

void TestValueLine::oneLineTakesTheViewAway()
{
    ValueLine line;
    line.showSeveralLines("prima\nseconda");
    line.showOneLine("sola");
    QVERIFY(viewOf(line) == nullptr);
    QVERIFY(!line.hasHeightForWidth());
    QVERIFY(line.focusProxy() == nullptr);
    QCOMPARE(line.text(), QString("sola"));
}

void TestValueLine::keyboardReachesTheText()
{
    QWidget page;
    ValueLine line(&page);
    line.showSeveralLines("prima\nseconda");
    page.show();
    QApplication::setActiveWindow(&page);
    line.setFocus();
    QTRY_VERIFY(viewOf(line)->hasFocus());
    QTest::keyClick(viewOf(line), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(viewOf(line), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QString("prima\nseconda"));
    QTest::keyClick(viewOf(line), Qt::Key_X);
    QCOMPARE(viewOf(line)->toPlainText(), QString("prima\nseconda"));
    QVERIFY(viewOf(line)->tabChangesFocus());
}

void TestValueLine::screenReadersHearTheName()
{
    ValueLine line;
    line.setValueName("Nota");
    line.showSeveralLines("prima\nseconda");
    QCOMPARE(viewOf(line)->accessibleName(), QString("Nota"));
    line.setValueName("Osservazioni");
    QCOMPARE(line.accessibleName(), QString("Osservazioni"));
    QCOMPARE(viewOf(line)->accessibleName(), QString("Osservazioni"));
}

void TestValueLine::linesAreCounted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lines");
    QTest::newRow("nothing is one line") << "" << 1;
    QTest::newRow("one word is one line") << "parola" << 1;
    QTest::newRow("breaks count") << "a\nb\nc" << 3;
    QTest::newRow("a final break begins a line") << "a\n" << 2;
    QTest::newRow("empty lines count") << "a\n\nb" << 3;
    QTest::newRow("Windows breaks count once") << "a\r\nb" << 2;
    QTest::newRow("old breaks count") << "a\rb" << 2;
    QTest::newRow("the count stops at the limit") << QString("a\n").repeated(50) << 10;
    QTest::newRow("wrapped lines stop at the limit") << QString("parola ").repeated(5000) << 10;
    QTest::newRow("a word without end stops at the limit") << QString(120000, 'x') << 10;
}

void TestValueLine::linesAreCounted()
{
    QFETCH(QString, text);
    QTEST(ValueLine::wrappedLines(text, QFont(), 200, 10), "lines");
}

QTEST_MAIN(TestValueLine)
#include "widgets_valueline.moc"
