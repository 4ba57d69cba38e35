// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the drawn covers and the printed sheets.
#include "samples/covers.h"
#include "samples/motifs.h"
#include "samples/sheets.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

const Motifs::Palette Colours = {Qt::white, Qt::darkBlue, Qt::red};
constexpr int MotifTop = 214;

QImage drawn(const QString &motif, bool *known)
{
    QImage image(300, 300, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    *known = Motifs::draw(motif, painter, QRectF(50, 50, 200, 200), Colours);
    return image;
}

bool isWhite(const QImage &image, const QRect &area)
{
    QImage plain(area.size(), image.format());
    plain.fill(Qt::white);
    return image.copy(area) == plain;
}

Cover cover(const QString &title)
{
    return {title, QStringLiteral("Anonimo"), QStringLiteral("sole"), Colours, Qt::black};
}

} // namespace

class SamplesCovers : public QObject
{
    Q_OBJECT

private slots:
    void motifs_data();
    void motifs();
    void anUnknownMotifDrawsNothing();
    void coversAreTheSameEveryTime();
    void textStaysOnTheCover_data();
    void textStaysOnTheCover();
    void aCoverWithAnUnknownMotifIsNoPicture();
    void apostrophesAreCurved();
    void aSheetIsOnePage();
    void aSheetThatCannotBeWrittenFails();
};

void SamplesCovers::motifs_data()
{
    QTest::addColumn<QString>("motif");
    for (const QString &motif : Motifs::names()) {
        QTest::newRow(qPrintable(motif)) << motif;
    }
}

void SamplesCovers::motifs()
{
    QFETCH(const QString, motif);
    bool known = false;
    const QImage image = drawn(motif, &known);
    QVERIFY(known);
    QVERIFY2(!isWhite(image, QRect(50, 50, 200, 200)), "nothing is drawn");
    for (const QRect &margin : {QRect(0, 0, 300, 50), QRect(0, 250, 300, 50), QRect(0, 0, 50, 300),
                                QRect(250, 0, 50, 300)}) {
        QVERIFY2(isWhite(image, margin), "the drawing leaves its area");
    }
    QCOMPARE(drawn(motif, &known), image);
}

void SamplesCovers::anUnknownMotifDrawsNothing()
{
    bool known = true;
    const QImage image = drawn(QStringLiteral("pois"), &known);
    QVERIFY(!known);
    QVERIFY(isWhite(image, image.rect()));
}

void SamplesCovers::coversAreTheSameEveryTime()
{
    const QImage image = Covers::picture(cover(QStringLiteral("Emma")));
    QCOMPARE(image.size(), QSize(400, 600));
    QCOMPARE(Covers::picture(cover(QStringLiteral("Emma"))), image);
    QVERIFY(Covers::picture(cover(QStringLiteral("Ulisse"))) != image);
}

void SamplesCovers::textStaysOnTheCover_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("short title") << QStringLiteral("It");
    QTest::newRow("title of several lines")
        << QStringLiteral("Se una notte d'inverno un viaggiatore");
    QTest::newRow("very long title")
        << QStringLiteral("Storia di una gabbianella e del gatto che le insegnò a volare");
}

void SamplesCovers::textStaysOnTheCover()
{
    QFETCH(const QString, title);
    const QImage image = Covers::picture(cover(title));
    const QImage empty = Covers::picture(cover(QString()));
    QVERIFY2(image != empty, "the title is not drawn");
    QString otherEnd = title;
    otherEnd.chop(1);
    QVERIFY2(image != Covers::picture(cover(otherEnd)), "the title's end is cut off");
    for (const QRect &area : {QRect(0, 0, 28, 600), QRect(372, 0, 28, 600),
                              QRect(0, MotifTop - 22, 400, 600 - MotifTop + 22)}) {
        QVERIFY2(image.copy(area) == empty.copy(area), "the title leaves its place");
    }
}

void SamplesCovers::aCoverWithAnUnknownMotifIsNoPicture()
{
    Cover unknown = cover(QStringLiteral("Emma"));
    unknown.motif = QStringLiteral("pois");
    QVERIFY(Covers::picture(unknown).isNull());
}

void SamplesCovers::apostrophesAreCurved()
{
    QCOMPARE(Covers::typeset(QStringLiteral("L'isola d'Arturo")),
             QStringLiteral("L\u2019isola d\u2019Arturo"));
}

void SamplesCovers::aSheetIsOnePage()
{
    const QTemporaryDir place;
    const QString path = place.filePath(QStringLiteral("scheda.pdf"));
    const Sheet sheet = {QStringLiteral("Emma"),
                         QStringLiteral("Jane Austen"),
                         {{QStringLiteral("Anno"), QStringLiteral("1815")}},
                         QStringLiteral("Una giovane combina matrimoni altrui."),
                         cover(QStringLiteral("Emma"))};
    QVERIFY(Sheets::write(path, sheet));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith("%PDF-"));
    QVERIFY(bytes.contains("/Count 1\n"));
    QVERIFY(bytes.contains("/MediaBox [0 0 595.000000 842.000000]"));
}

void SamplesCovers::aSheetThatCannotBeWrittenFails()
{
    const QTemporaryDir place;
    Sheet sheet;
    sheet.cover = cover(QStringLiteral("Emma"));
    QVERIFY(!Sheets::write(place.filePath(QStringLiteral("no/folder.pdf")), sheet));
    sheet.cover.motif = QStringLiteral("pois");
    QVERIFY(!Sheets::write(place.filePath(QStringLiteral("scheda.pdf")), sheet));
}

QTEST_MAIN(SamplesCovers)
#include "samples_covers.moc"
