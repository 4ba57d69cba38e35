// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the reader of tab-separated texts.
#include "samples/tabfile.h"

#include <QTemporaryDir>
#include <QtTest>

class SamplesTabFile : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreFoundByColumn();
    void lineEndsOfAnyKind();
    void rowsAreFoundByText();
    void aSecondFileReplacesTheFirst();
    void malformedFilesAreRefused_data();
    void malformedFilesAreRefused();
    void aMissingFileIsRefused();

private:
    QString file(const QByteArray &bytes);

    QTemporaryDir place;
};

QString SamplesTabFile::file(const QByteArray &bytes)
{
    QFile file(place.filePath(QStringLiteral("prova.tsv")));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return {};
    }
    return file.fileName();
}

void SamplesTabFile::valuesAreFoundByColumn()
{
    TabFile tab;
    QVERIFY(tab.read(file("Titolo\tAnno\nNanà\t1880\nL'isola\t\n")));
    QCOMPARE(tab.problem(), QString());
    QCOMPARE(tab.rowCount(), 2);
    QCOMPARE(tab.value(0, QStringLiteral("Titolo")), QStringLiteral("Nanà"));
    QCOMPARE(tab.value(0, QStringLiteral("Anno")), QStringLiteral("1880"));
    QCOMPARE(tab.value(1, QStringLiteral("Titolo")), QStringLiteral("L'isola"));
    QCOMPARE(tab.value(1, QStringLiteral("Anno")), QString());
    QCOMPARE(tab.value(1, QStringLiteral("Prezzo")), QString());
}

void SamplesTabFile::lineEndsOfAnyKind()
{
    TabFile tab;
    QVERIFY(tab.read(file("A\tB\r\n1\t2\r\n3\t4")));
    QCOMPARE(tab.rowCount(), 2);
    QCOMPARE(tab.value(0, QStringLiteral("B")), QStringLiteral("2"));
    QCOMPARE(tab.value(1, QStringLiteral("B")), QStringLiteral("4"));
}

void SamplesTabFile::rowsAreFoundByText()
{
    TabFile tab;
    QVERIFY(tab.read(file("A\tB\nx\ty\ny\tx\ny\tz\n")));
    QCOMPARE(tab.find(QStringLiteral("A"), QStringLiteral("y")), 1);
    QCOMPARE(tab.find(QStringLiteral("B"), QStringLiteral("y")), 0);
    QCOMPARE(tab.find(QStringLiteral("A"), QStringLiteral("z")), -1);
    QCOMPARE(tab.find(QStringLiteral("C"), QStringLiteral("x")), -1);
}

void SamplesTabFile::aSecondFileReplacesTheFirst()
{
    TabFile tab;
    QVERIFY(tab.read(file("A\nx\n")));
    QVERIFY(tab.read(file("B\ny\n")));
    QCOMPARE(tab.rowCount(), 1);
    QCOMPARE(tab.value(0, QStringLiteral("B")), QStringLiteral("y"));
    QCOMPARE(tab.value(0, QStringLiteral("A")), QString());
}

void SamplesTabFile::malformedFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    QTest::newRow("no header") << QByteArray() << QStringLiteral("%1: intestazione non valida");
    QTest::newRow("a column without a name")
        << QByteArray("A\t\n1\t2\n") << QStringLiteral("%1: intestazione non valida");
    QTest::newRow("a column named twice")
        << QByteArray("A\tA\n1\t2\n") << QStringLiteral("%1: intestazione non valida");
    QTest::newRow("a cell too many")
        << QByteArray("A\tB\n1\t2\n1\t2\t3\n") << QStringLiteral("%1, riga 3: 3 campi invece di 2");
    QTest::newRow("an empty line")
        << QByteArray("A\tB\n\n1\t2\n") << QStringLiteral("%1, riga 2: 1 campi invece di 2");
}

void SamplesTabFile::malformedFilesAreRefused()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, problem);
    TabFile tab;
    const QString path = file(bytes);
    QVERIFY(!tab.read(path));
    QCOMPARE(tab.problem(), problem.arg(path));
}

void SamplesTabFile::aMissingFileIsRefused()
{
    TabFile tab;
    QVERIFY(!tab.read(QStringLiteral("/nonexistent/prova.tsv")));
    QCOMPARE(tab.problem(), QStringLiteral("Impossibile leggere /nonexistent/prova.tsv"));
}

QTEST_GUILESS_MAIN(SamplesTabFile)
#include "samples_tabfile.moc"
