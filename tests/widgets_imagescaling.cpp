// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Sizes of pictures, and what may and may not be decoded.
#include "widgets/imagescaling.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace
{

quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? (sum >> 1) ^ 0xEDB88320 : sum >> 1;
        }
    }
    return sum ^ 0xFFFFFFFF;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << number;
    return bytes;
}

QByteArray chunk(const QByteArray &type, const QByteArray &data)
{
    return bigEndian(quint32(data.size())) + type + data + bigEndian(checksum(type + data));
}

/// A PNG whose header promises a picture of this size, one bit per pixel, without its pixels.
QByteArray pngPromising(quint32 width, quint32 height)
{
    const QByteArray header =
        bigEndian(width) + bigEndian(height) + QByteArray::fromHex("0100000000");
    return QByteArray::fromHex("89504e470d0a1a0a") + chunk("IHDR", header) +
           chunk("IDAT", QByteArray::fromHex("789c6300010000050001"));
}

/// A picture whose pixels all differ from their neighbours, so that ways of scaling show.
QImage motley(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, qRgb((x * 37) % 256, (y * 53) % 256, ((x + y) * 91) % 256));
        }
    }
    return image;
}

} // namespace

class TestImageScaling : public QObject
{
    Q_OBJECT

private:
    QString path(const QString &name) const { return directory.filePath(name); }

    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
                   ? file.fileName()
                   : QString();
    }

    QString picture(const QString &name, int width, int height) const
    {
        return motley(width, height).save(path(name)) ? path(name) : QString();
    }

    QTemporaryDir directory;

private slots:
    void previewsHaveTheSizesOfTheRules_data();
    void previewsHaveTheSizesOfTheRules();
    void smallPreviewsAreScaledByTheFastMethod();
    void largePreviewsAreDecodedAtTheirSize();
    void previewsFitAnyBox();
    void wholePicturesKeepTheirSize();
    void whatIsNoPictureIsEmpty_data();
    void whatIsNoPictureIsEmpty();
    void aFifoIsNotOpened();
    void picturesBeyondTheLimitAreNotDecoded_data();
    void picturesBeyondTheLimitAreNotDecoded();
    void truncatedPicturesAreEmpty();
    void boxesOfPreviews_data();
    void boxesOfPreviews();
    void firstShownSizes_data();
    void firstShownSizes();
    void sizesInAnArea_data();
    void sizesInAnArea();
    void zoomBoxes_data();
    void zoomBoxes();
    void nothingIsScaledWithoutWarning();
};

void TestImageScaling::previewsHaveTheSizesOfTheRules_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("a wide picture fills 120 x 100") << "w.png" << QSize(300, 100) << QSize(120, 40);
    QTest::newRow("a high picture fills 60 x 100") << "h.png" << QSize(100, 300) << QSize(33, 100);
    QTest::newRow("a square counts as high") << "s.png" << QSize(200, 200) << QSize(60, 60);
    QTest::newRow("a small wide picture is scaled up") << "u.png" << QSize(12, 6) << QSize(120, 60);
    QTest::newRow("a small high picture is scaled up") << "v.png" << QSize(5, 10) << QSize(50, 100);
    QTest::newRow("one pixel is scaled up") << "o.png" << QSize(1, 1) << QSize(60, 60);
    QTest::newRow("hardly wider than high") << "n.png" << QSize(101, 100) << QSize(101, 100);
    QTest::newRow("a large wide PNG") << "l.png" << QSize(3000, 1000) << QSize(120, 40);
    QTest::newRow("a large high PNG") << "m.png" << QSize(1000, 3000) << QSize(33, 100);
    QTest::newRow("a large square JPEG") << "q.jpg" << QSize(1600, 1600) << QSize(60, 60);
    QTest::newRow("a large wide JPEG") << "r.jpg" << QSize(3000, 1000) << QSize(120, 40);
    QTest::newRow("a large BMP") << "b.bmp" << QSize(3000, 1000) << QSize(120, 40);
    QTest::newRow("a line keeps one pixel") << "t.png" << QSize(2000, 1) << QSize(120, 1);
}

void TestImageScaling::previewsHaveTheSizesOfTheRules()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(QSize, shown);
    const QString file = picture(name, size.width(), size.height());
    QVERIFY(!file.isEmpty());
    QCOMPARE(ImageScaling::recordPreview(file).size(), shown);
}

void TestImageScaling::smallPreviewsAreScaledByTheFastMethod()
{
    const QString file = picture("fast.png", 500, 300);
    const QImage expected =
        motley(500, 300).scaled(120, 100, Qt::KeepAspectRatio, Qt::FastTransformation);
    const QImage shown = ImageScaling::recordPreview(file).toImage();
    QCOMPARE(shown.convertToFormat(QImage::Format_RGB32), expected);
}

void TestImageScaling::largePreviewsAreDecodedAtTheirSize()
{
    // 90 megapixels of one colour: decoded whole they would take 360 MB and seconds.
    QImage image(12000, 7500, QImage::Format_Mono);
    image.setColorTable({qRgb(200, 30, 30), qRgb(0, 0, 0)});
    image.fill(0);
    QVERIFY(image.save(path("huge.png")));
    const QImage shown = ImageScaling::recordPreview(path("huge.png")).toImage();
    QCOMPARE(shown.size(), QSize(120, 75));
    QCOMPARE(shown.pixelColor(60, 30), QColor(200, 30, 30));
}

void TestImageScaling::previewsFitAnyBox()
{
    const QString file = picture("any.png", 400, 300);
    QCOMPARE(ImageScaling::preview(file, QSize(40, 40)).size(), QSize(40, 30));
    QCOMPARE(ImageScaling::preview(file, QSize(800, 900)).size(), QSize(800, 600));
    QVERIFY(ImageScaling::preview(file, QSize(0, 40)).isNull());
    QVERIFY(ImageScaling::preview(file, QSize()).isNull());
}

void TestImageScaling::wholePicturesKeepTheirSize()
{
    QCOMPARE(ImageScaling::load(picture("whole.png", 640, 480)).size(), QSize(640, 480));
    QCOMPARE(ImageScaling::load(picture("large.png", 2000, 1000)).size(), QSize(2000, 1000));
    QCOMPARE(ImageScaling::headerSize(path("large.png")), QSize(2000, 1000));
    QVERIFY(QFile::link(path("whole.png"), path("link.png")));
    QCOMPARE(ImageScaling::load(path("link.png")).size(), QSize(640, 480));
    // Many pictures carry the ending of another format.
    QVERIFY(QFile::copy(path("whole.png"), path("named.jpg")));
    QCOMPARE(ImageScaling::load(path("named.jpg")).size(), QSize(640, 480));
}

void TestImageScaling::whatIsNoPictureIsEmpty_data()
{
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'/>";
    QTest::addColumn<QString>("file");
    QTest::newRow("a missing file") << path("missing.png");
    QTest::newRow("no name") << QString();
    QTest::newRow("a folder") << directory.path();
    QTest::newRow("a text") << write("text.png", "no picture\n");
    QTest::newRow("an empty file") << write("empty.png", QByteArray());
    QTest::newRow("a device") << "/dev/zero";
    QTest::newRow("a drawing") << write("drawing.svg", drawing);
    QTest::newRow("a drawing that calls itself a picture") << write("drawing.png", drawing);
}

void TestImageScaling::whatIsNoPictureIsEmpty()
{
    QFETCH(QString, file);
    QVERIFY(!ImageScaling::headerSize(file).isValid());
    QVERIFY(ImageScaling::load(file).isNull());
    QVERIFY(ImageScaling::recordPreview(file).isNull());
    QVERIFY(ImageScaling::preview(file, QSize(100, 100)).isNull());
}

void TestImageScaling::aFifoIsNotOpened()
{
    // Opening one that nobody writes to would wait for ever.
    const QString fifo = path("fifo.png");
    QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QVERIFY(QFile::link(fifo, path("fifolink.png")));
    for (const QString &file : {fifo, path("fifolink.png")}) {
        QVERIFY(!ImageScaling::headerSize(file).isValid());
        QVERIFY(ImageScaling::load(file).isNull());
        QVERIFY(ImageScaling::recordPreview(file).isNull());
        QVERIFY(ImageScaling::preview(file, QSize(100, 100)).isNull());
    }
}

void TestImageScaling::picturesBeyondTheLimitAreNotDecoded_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("100 megapixels are the limit") << 10000U << 10000U << true;
    QTest::newRow("a row more is refused") << 10000U << 10001U << false;
    QTest::newRow("900 megapixels are refused") << 30000U << 30000U << false;
    QTest::newRow("sides whose product overflows are refused") << 1000000U << 1000000U << false;
}

void TestImageScaling::picturesBeyondTheLimitAreNotDecoded()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(bool, accepted);
    const QString file = write("promise.png", pngPromising(width, height));
    QCOMPARE(ImageScaling::headerSize(file).isValid(), accepted);
    if (!accepted) {
        QVERIFY(ImageScaling::load(file).isNull());
        QVERIFY(ImageScaling::recordPreview(file).isNull());
    }
}

void TestImageScaling::truncatedPicturesAreEmpty()
{
    for (const quint32 side : {200U, 2000U}) {
        const QString file = write("cut.png", pngPromising(side, side));
        QCOMPARE(ImageScaling::headerSize(file), QSize(int(side), int(side)));
        QVERIFY(ImageScaling::load(file).isNull());
        QVERIFY(ImageScaling::recordPreview(file).isNull());
    }
}

void TestImageScaling::boxesOfPreviews_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("box");
    QTest::newRow("wider than high") << QSize(101, 100) << QSize(120, 100);
    QTest::newRow("square") << QSize(100, 100) << QSize(60, 100);
    QTest::newRow("higher than wide") << QSize(100, 101) << QSize(60, 100);
}

void TestImageScaling::boxesOfPreviews()
{
    QFETCH(QSize, picture);
    QTEST(ImageScaling::previewBox(picture), "box");
}

void TestImageScaling::firstShownSizes_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("350 x 350 as it is") << QSize(350, 350) << QSize(350, 350);
    QTest::newRow("small as it is") << QSize(10, 20) << QSize(10, 20);
    QTest::newRow("351 wide is fitted") << QSize(351, 10) << QSize(350, 9);
    QTest::newRow("351 high is fitted") << QSize(10, 351) << QSize(9, 350);
    QTest::newRow("large is fitted") << QSize(1400, 700) << QSize(350, 175);
    QTest::newRow("a thin line keeps one pixel") << QSize(2000, 1) << QSize(350, 1);
}

void TestImageScaling::firstShownSizes()
{
    QFETCH(QSize, picture);
    QTEST(ImageScaling::firstShownSize(picture), "shown");
}

void TestImageScaling::sizesInAnArea_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("area");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("the crossed test lets a high picture stand out")
        << QSize(300, 800) << QSize(900, 400) << QSize(300, 800);
    QTest::newRow("equal sides are enough")
        << QSize(300, 800) << QSize(800, 300) << QSize(300, 800);
    QTest::newRow("one pixel less in width is fitted")
        << QSize(300, 800) << QSize(799, 300) << QSize(112, 300);
    QTest::newRow("one pixel less in height is fitted")
        << QSize(300, 800) << QSize(800, 299) << QSize(112, 299);
    QTest::newRow("the crossed test fits what has room")
        << QSize(400, 100) << QSize(500, 300) << QSize(500, 125);
}

void TestImageScaling::sizesInAnArea()
{
    QFETCH(QSize, picture);
    QFETCH(QSize, area);
    QTEST(ImageScaling::sizeInArea(picture, area), "shown");
}

void TestImageScaling::zoomBoxes_data()
{
    QTest::addColumn<QSize>("shown");
    QTest::addColumn<QSize>("larger");
    QTest::addColumn<QSize>("smaller");
    QTest::newRow("twice and half") << QSize(100, 60) << QSize(200, 120) << QSize(50, 30);
    QTest::newRow("halves are whole") << QSize(101, 61) << QSize(202, 122) << QSize(50, 30);
    QTest::newRow("4999 wide still grows")
        << QSize(4999, 100) << QSize(9998, 200) << QSize(2499, 50);
    QTest::newRow("5000 wide does not") << QSize(5000, 100) << QSize() << QSize(2500, 50);
    QTest::newRow("5000 high does not") << QSize(100, 5000) << QSize() << QSize(50, 2500);
    QTest::newRow("4 x 4 still shrinks") << QSize(4, 4) << QSize(8, 8) << QSize(2, 2);
    QTest::newRow("3 wide does not") << QSize(3, 40) << QSize(6, 80) << QSize();
    QTest::newRow("3 high does not") << QSize(40, 3) << QSize(80, 6) << QSize();
}

void TestImageScaling::zoomBoxes()
{
    QFETCH(QSize, shown);
    QTEST(ImageScaling::zoomInBox(shown), "larger");
    QTEST(ImageScaling::zoomOutBox(shown), "smaller");
}

void TestImageScaling::nothingIsScaledWithoutWarning()
{
    static int warnings;
    warnings = 0;
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &) { ++warnings; });
    const bool isEmpty = ImageScaling::scaledToFit(QPixmap(), QSize(10, 10)).isNull();
    qInstallMessageHandler(before);
    QVERIFY(isEmpty);
    QCOMPARE(warnings, 0);
    QPixmap picture(10, 10);
    QVERIFY(ImageScaling::scaledToFit(picture, QSize(0, 5)).isNull());
    QCOMPARE(ImageScaling::scaledToFit(picture, QSize(20, 40)).size(), QSize(20, 20));
}

QTEST_MAIN(TestImageScaling)
#include "widgets_imagescaling.moc"
