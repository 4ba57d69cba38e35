// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the list of field formats.
#include "model/formats.h"

#include <QtTest>

class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void keywordsStandInTheProgramsOrder();
    void kindOf_data();
    void kindOf();
};

Q_DECLARE_METATYPE(Formats::Kind)

void TestFormats::keywordsStandInTheProgramsOrder()
{
    const QStringList expected = {QStringLiteral("STRINGFORMAT"),    QStringLiteral("DATEFORMAT"),
                                  QStringLiteral("INTEGERFORMAT"),   QStringLiteral("REALFORMAT"),
                                  QStringLiteral("MONEYFORMAT"),     QStringLiteral("IMAGEFORMAT"),
                                  QStringLiteral("PDFFORMAT"),       QStringLiteral("BOOLFORMAT"),
                                  QStringLiteral("MAILFORMAT"),      QStringLiteral("LINKFORMAT"),
                                  QStringLiteral("SUBTABLEFORMAT"),  QStringLiteral("URLFORMAT"),
                                  QStringLiteral("LONGSTRINGFORMAT")};
    QCOMPARE(Formats::keywords(), expected);
}

void TestFormats::kindOf_data()
{
    using Formats::Kind;
    QTest::addColumn<QString>("word");
    QTest::addColumn<Kind>("kind");
    QTest::newRow("one line of text") << "STRING" << Kind::String;
    QTest::newRow("a date") << "DATE" << Kind::Date;
    QTest::newRow("a whole number") << "INTEGER" << Kind::Integer;
    QTest::newRow("a real number") << "REAL" << Kind::Real;
    QTest::newRow("an amount of money") << "MONEY" << Kind::Money;
    QTest::newRow("a picture") << "IMAGE" << Kind::Image;
    QTest::newRow("a PDF") << "PDF" << Kind::Pdf;
    QTest::newRow("yes or no") << "BOOL" << Kind::Bool;
    QTest::newRow("a mail address") << "MAIL" << Kind::Mail;
    QTest::newRow("a link") << "LINK" << Kind::Link;
    QTest::newRow("a sub-table") << "SUBTABLE" << Kind::SubTable;
    QTest::newRow("a web address") << "URL" << Kind::Url;
    QTest::newRow("several lines of text") << "LONGSTRING" << Kind::LongString;
    QTest::newRow("small letters are another word") << "string" << Kind::Other;
    QTest::newRow("a whole keyword is no short word") << "STRINGFORMAT" << Kind::Other;
    QTest::newRow("part of a word is another word") << "STRIN" << Kind::Other;
    QTest::newRow("nothing is another word") << "" << Kind::Other;
}

void TestFormats::kindOf()
{
    QFETCH(QString, word);
    QFETCH(Formats::Kind, kind);
    QCOMPARE(Formats::kindOf(word), kind);
}

QTEST_GUILESS_MAIN(TestFormats)
#include "model_formats.moc"
