// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tool tips show values letter for letter.
#include "widgets/plaintooltip.h"

#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QToolTip>
#include <QtTest>

namespace
{

/// What a person reads in the tip that the desktop's tool tip event brings up.
QString shownTip(QWidget *widget)
{
    const QPoint inside(2, 2);
    QHelpEvent event(QEvent::ToolTip, inside, widget->mapToGlobal(inside));
    QApplication::sendEvent(widget, &event);
    QTextDocument document;
    document.setHtml(QToolTip::text());
    return document.toPlainText();
}

} // namespace

class TestPlainToolTip : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QToolTip::hideText(); }
    void tipsReadAsTheValue_data();
    void tipsReadAsTheValue();
    void pictureMarkupIsNotFollowed();
    void longTipsAreCut();
    void anEmptyTipShowsNothing();
    void theLastTextCounts();
    void aTipWorksOverAChild();
};

void TestPlainToolTip::tipsReadAsTheValue_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << "Il barone rampante";
    QTest::newRow("bold markup") << "<b>grassetto</b>";
    QTest::newRow("a whole page") << "<html><body><h1>Titolo</h1></body></html>";
    QTest::newRow("a link") << "<a href=\"javascript:alert(1)\">qui</a>";
    QTest::newRow("entities") << "a < b &lt; c & d &amp; e";
    QTest::newRow("quotes") << "l'\"altro\"";
    QTest::newRow("several lines") << "prima\nseconda\n\nquarta";
    QTest::newRow("runs of blanks") << "a   b";
    QTest::newRow("letters beyond ASCII") << QString::fromUtf8("però €");
}

void TestPlainToolTip::tipsReadAsTheValue()
{
    QFETCH(QString, value);
    QLabel label;
    PlainToolTip::set(&label, value);
    QCOMPARE(label.toolTip(), value);
    QCOMPARE(shownTip(&label), value);
    QVERIFY(QToolTip::isVisible());
}

void TestPlainToolTip::pictureMarkupIsNotFollowed()
{
    const QString markup = PlainToolTip::markupFor("<img src=\"/dev/zero\">");
    QVERIFY(!markup.contains("<img"));
    QVERIFY(markup.contains("&lt;img src=&quot;/dev/zero&quot;&gt;"));
}

void TestPlainToolTip::longTipsAreCut()
{
    QLabel label;
    const QString value(100000, QLatin1Char('x'));
    PlainToolTip::set(&label, value);
    QCOMPARE(label.toolTip(), value);
    QCOMPARE(shownTip(&label), QString(2000, QLatin1Char('x')) + QChar(0x2026));
    PlainToolTip::set(&label, value.left(2000));
    QCOMPARE(shownTip(&label), value.left(2000));
}

void TestPlainToolTip::anEmptyTipShowsNothing()
{
    QLabel label;
    PlainToolTip::set(&label, "testo");
    PlainToolTip::set(&label, QString());
    QCOMPARE(shownTip(&label), QString());
    QVERIFY(!QToolTip::isVisible());
}

void TestPlainToolTip::theLastTextCounts()
{
    QLabel label;
    PlainToolTip::set(&label, "primo");
    PlainToolTip::set(&label, "secondo");
    QCOMPARE(shownTip(&label), QString("secondo"));
    label.setToolTip("terzo");
    QCOMPARE(shownTip(&label), QString("terzo"));
}

void TestPlainToolTip::aTipWorksOverAChild()
{
    QLineEdit line;
    QPlainTextEdit view(&line);
    PlainToolTip::set(&line, "<i>nota</i>");
    QCOMPARE(shownTip(view.viewport()), QString("<i>nota</i>"));
}

QTEST_MAIN(TestPlainToolTip)
#include "widgets_plaintooltip.moc"
