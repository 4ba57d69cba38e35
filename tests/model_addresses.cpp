// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of which web and mail addresses are handed to the desktop, and of link markup.
#include "model/addresses.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QtTest>

class TestAddresses : public QObject
{
    Q_OBJECT

private slots:
    void web_data();
    void web();
    void mail_data();
    void mail();
    void linkMarkup_data();
    void linkMarkup();
    void linkMarkupReadsBackAsTheValue_data();
    void linkMarkupReadsBackAsTheValue();
    void throughLatin1_data();
    void throughLatin1();
};

void TestAddresses::web_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected"); // empty: nothing is opened
    QTest::newRow("http") << "http://a.example/b?c=1&d=2#e"
                          << "http://a.example/b?c=1&d=2#e";
    QTest::newRow("https") << "https://a.example"
                           << "https://a.example";
    QTest::newRow("ftp") << "ftp://a.example/b"
                         << "ftp://a.example/b";
    QTest::newRow("a scheme in capitals") << "HTTPS://a.example/B"
                                          << "https://a.example/B";
    QTest::newRow("without a scheme") << "www.a.example/b"
                                      << "http://www.a.example/b";
    QTest::newRow("without a scheme, an FTP host") << "ftp.a.example"
                                                   << "ftp://ftp.a.example";
    QTest::newRow("a host and a port") << "localhost:8080/a"
                                       << "http://localhost:8080/a";
    QTest::newRow("another address as a parameter") << "www.a.example/?u=http://b.example"
                                                    << "http://www.a.example/?u=http://b.example";
    QTest::newRow("blanks around") << "  http://a.example \n"
                                   << "http://a.example";
    QTest::newRow("accents") << "http://a.example/però"
                             << "http://a.example/però";
    QTest::newRow("a local file") << "/etc/passwd"
                                  << "";
    QTest::newRow("a file address") << "file:///etc/passwd"
                                    << "";
    QTest::newRow("a file address in capitals") << "FILE:///etc/passwd"
                                                << "";
    QTest::newRow("an address without a scheme but with lines") << "//host/share"
                                                                << "";
    QTest::newRow("a script") << "javascript:alert(1)"
                              << "";
    QTest::newRow("a mail address with a scheme") << "mailto:a@b.example"
                                                  << "";
    QTest::newRow("an unknown scheme") << "foo:bar"
                                       << "";
    QTest::newRow("a desktop's own scheme") << "smb://host/share"
                                            << "";
    QTest::newRow("data") << "data:text/html,<b>"
                          << "";
    QTest::newRow("a built-in file of Qt") << "qrc:/addIcon"
                                           << "";
    QTest::newRow("a drive") << "C:\\a.exe"
                             << "";
    QTest::newRow("http without a host") << "http:///etc/passwd"
                                         << "";
    QTest::newRow("http alone") << "http:"
                                << "";
    QTest::newRow("an option") << "-http://a.example"
                               << "";
    QTest::newRow("an option that could be a user") << "-a@b.example"
                                                    << "";
    QTest::newRow("an option behind a blank") << " -a@b.example"
                                              << "";
    QTest::newRow("a host that cannot be, behind a blank") << " http://a b.example"
                                                           << "";
    QTest::newRow("a host that cannot be, with capitals") << "HTTP://a b.example"
                                                          << "";
    QTest::newRow("a port that cannot be") << "http://a.example:99999999"
                                           << "";
    QTest::newRow("a host that cannot be") << "http://a b.example"
                                           << "";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("blanks") << "  "
                            << "";
}

void TestAddresses::web()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QUrl url = Addresses::web(text);
    QCOMPARE(url.isValid(), !expected.isEmpty());
    QCOMPARE(url.toString(), expected);
}

void TestAddresses::mail_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected"); // empty: nothing is opened
    QTest::newRow("an address") << "anna@a.example"
                                << "mailto:anna@a.example";
    QTest::newRow("an address with a subject") << "anna@a.example?subject=b"
                                               << "mailto:anna@a.example?subject=b";
    QTest::newRow("accents") << "però@a.example"
                             << "mailto:però@a.example";
    QTest::newRow("another scheme stays part of the address") << "file:///etc"
                                                              << "mailto:file:///etc";
    QTest::newRow("an option") << "-a@b.example"
                               << "";
    QTest::newRow("an option behind a blank") << " -a@b.example"
                                              << "";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("blanks") << "  "
                            << "";
}

void TestAddresses::mail()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QUrl url = Addresses::mail(text);
    QCOMPARE(url.isValid(), !expected.isEmpty());
    QCOMPARE(url.toString(), expected);
}

void TestAddresses::linkMarkup_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a plain address") << "http://a.example/%s"
                                     << "<a href=\"http://a.example/%s\">http://a.example/%s</a>";
    QTest::newRow("an & between parameters stays")
        << "a?b=1&c=2&lt=3"
        << "<a href=\"a?b=1&c=2&lt=3\">a?b=1&c=2&lt=3</a>";
    QTest::newRow("markup is text") << "<b>"
                                    << "<a href=\"&lt;b&gt;\">&lt;b&gt;</a>";
    QTest::newRow("a quote does not end the target")
        << "a\" x=\""
        << "<a href=\"a&quot; x=&quot;\">a&quot; x=&quot;</a>";
    QTest::newRow("what reads as a sign is text") << "a&lt;b"
                                                  << "<a href=\"a&amp;lt;b\">a&amp;lt;b</a>";
    QTest::newRow("what reads as a code is text")
        << "&#60;&#x3c;"
        << "<a href=\"&amp;#60;&amp;#x3c;\">&amp;#60;&amp;#x3c;</a>";
    QTest::newRow("accents") << "però"
                             << "<a href=\"però\">però</a>";
    QTest::newRow("nothing") << ""
                             << "<a href=\"\"></a>";
}

void TestAddresses::linkMarkup()
{
    QFETCH(QString, text);
    QTEST(Addresses::linkMarkup(text), "expected");
}

void TestAddresses::linkMarkupReadsBackAsTheValue_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"http://a.example/b?c=1&d=2", "a?lt=1&lt=2", "a&lt;b", "&#60;script&#x3e;",
          "<img src=\"file:///etc\">", "\"><b>x</b>", "a'b", "&amp;lt;", "&nbsp;&euro;", "&;&#;&",
          "&unknown;", "&lt", "però€🎲", "a&b;c&d"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
}

void TestAddresses::linkMarkupReadsBackAsTheValue()
{
    QFETCH(QString, text);
    QTextDocument document;
    document.setHtml(Addresses::linkMarkup(text));
    QCOMPARE(document.toPlainText(), text);
    const QTextBlock block = document.firstBlock();
    for (auto part = block.begin(); part != block.end(); ++part) {
        QCOMPARE(part.fragment().charFormat().anchorHref(), text);
    }
}

void TestAddresses::throughLatin1_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("ASCII is unchanged") << "a/b c.pdf"
                                        << "a/b c.pdf";
    QTest::newRow("an accent becomes two signs") << "però"
                                                 << "perÃ²";
    QTest::newRow("the euro sign becomes three") << "€" << QString::fromLatin1("\xe2\x82\xac");
    QTest::newRow("nothing") << ""
                             << "";
}

void TestAddresses::throughLatin1()
{
    QFETCH(QString, text);
    QTEST(Addresses::throughLatin1(text), "expected");
}

QTEST_MAIN(TestAddresses)
#include "model_addresses.moc"
