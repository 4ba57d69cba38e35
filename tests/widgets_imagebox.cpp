// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The image dialog: what it shows in which size, and what accepting copies and tells.
#include "widgets/ImageBox.h"

#include "tests/support/ModalResponder.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class TestImageBox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void hasItsTexts();
    void startsWithItsSize();
    void opensWithinTheScreen_data();
    void opensWithinTheScreen();
    void leavesRoomForItsFrame();
    void loadsInItsSize_data();
    void loadsInItsSize();
    void loadsNothingElse_data();
    void loadsNothingElse();
    void choosesByTheCrossedTest_data();
    void choosesByTheCrossedTest();
    void asksForPictures();
    void aCancelledChoiceEmptiesThePicture();
    void fitsTheOriginalIntoTheFrame();
    void zoomsInFromTheOriginal();
    void zoomsInUpToTheLimit_data();
    void zoomsInUpToTheLimit();
    void zoomsOutDownToTheLimit();
    void detailComesBack();
    void zoomingNothingShowsNothing();
    void acceptingCopiesAndTells();
    void acceptingNeverOverwrites();
    void acceptingWithoutChoiceTellsTheFolder();
    void thePreviousChoiceCounts();
    void viewOnlyCopiesNothing();
    void copiesNoOtherThanFiles_data();
    void copiesNoOtherThanFiles();
    void staysInsideTheBase();
    void asksForTheFolderLate();
    void cancellingOnlyCloses();
    void hidesTheButtons();
    void slotsAndSignalsKeepTheirSignatures();

private:
    QString base() const { return dir->path() + QStringLiteral("/db/"); }
    QString picture(const QString &name, int width, int height) const;
    void choose(const QString &path) const;
    QSize shownSize() const;

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<ImageBox> box;
};

namespace
{

template<typename T>
T *part(const ImageBox &box, const char *name)
{
    return box.findChild<T *>(QLatin1String(name));
}

} // namespace

void TestImageBox::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(base() + QStringLiteral("F")));
    box = std::make_unique<ImageBox>();
    box->setBasePath(base());
    box->setSubFolder(QStringLiteral("F"));
}

void TestImageBox::cleanup()
{
    box.reset();
    dir.reset();
}

/// Makes a picture file, by an absolute name or inside the base folder; the result is its path.
QString TestImageBox::picture(const QString &name, int width, int height) const
{
    const QString path = QDir(base()).absoluteFilePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    if (!image.save(path)) {
        QTest::qFail("cannot save a test picture", __FILE__, __LINE__);
    }
    return path;
}

void TestImageBox::choose(const QString &path) const
{
    ModalResponder responder;
    responder.chooseFile(path);
    part<QPushButton>(*box, "pbAddReplace")->click();
}

QSize TestImageBox::shownSize() const
{
    return part<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue).size();
}

void TestImageBox::hasItsTexts()
{
    QCOMPARE(box->objectName(), QStringLiteral("ImageBox"));
    QCOMPARE(box->windowTitle(), QStringLiteral("IMAGE"));
    const auto *add = part<QPushButton>(*box, "pbAddReplace");
    QCOMPARE(add->text(), QStringLiteral("Aggiungi/Sostituisci"));
    QCOMPARE(add->toolTip(), QStringLiteral("Aggiungi/Sostituisci Immagine"));
    QCOMPARE(part<QDialogButtonBox>(*box, "buttonBox")->standardButtons(),
             QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QVERIFY(part<QGridLayout>(*box, "gridLayout_3") == box->layout());
    QCOMPARE(part<QFrame>(*box, "imageFrame")->frameShape(), QFrame::NoFrame);
    QVERIFY(part<QScrollArea>(*box, "scrollArea")->widgetResizable());
    QCOMPARE(part<QLabel>(*box, "lbImage")->alignment(), Qt::AlignCenter);
    for (const char *name : {"pbzoomplus", "pbZoomFit", "pbzoomminus"}) {
        QVERIFY(!part<QPushButton>(*box, name)->accessibleName().isEmpty());
    }
}

void TestImageBox::startsWithItsSize()
{
    QCOMPARE(box->size(), QSize(700, 600));
}

void TestImageBox::opensWithinTheScreen_data()
{
    QTest::addColumn<QSize>("available");
    QTest::addColumn<QSize>("size");
    QTest::newRow("on a large screen as it should be") << QSize(1366, 728) << QSize(700, 600);
    QTest::newRow("on a low one as high as that") << QSize(1016, 560) << QSize(700, 560);
    QTest::newRow("on a narrow one as wide as that") << QSize(600, 1024) << QSize(600, 600);
}

void TestImageBox::opensWithinTheScreen()
{
    QFETCH(QSize, available);
    QTEST(ImageBox::firstSize(QSize(700, 600), available), "size");
}

void TestImageBox::leavesRoomForItsFrame()
{
    QWidget window;
    window.show();
    ImageBox over(&window);
    over.show();
    const QSize frame = window.frameGeometry().size() - window.size();
    const QSize room = window.screen()->availableSize() - frame;
    QCOMPARE(over.size(), QSize(700, 600).boundedTo(room));
    over.resize(9000, 9000);
    over.hide();
    over.show();
    QCOMPARE(over.size(), room);
}

void TestImageBox::loadsInItsSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("both sides 350") << QSize(350, 350) << QSize(350, 350);
    QTest::newRow("one side 351") << QSize(351, 10) << QSize(350, 9);
    QTest::newRow("higher than 350") << QSize(10, 700) << QSize(5, 350);
    QTest::newRow("small") << QSize(3, 2) << QSize(3, 2);
    QTest::newRow("large") << QSize(1400, 700) << QSize(350, 175);
}

void TestImageBox::loadsInItsSize()
{
    QFETCH(QSize, size);
    picture(QStringLiteral("F/a.png"), size.width(), size.height());
    box->loadImage(QStringLiteral("F/a.png"));
    QTEST(shownSize(), "shown");
    QCOMPARE(part<QLineEdit>(*box, "leImage")->text(), QStringLiteral("F/a.png"));
}

void TestImageBox::loadsNothingElse_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("a missing file") << QStringLiteral("F/b.png");
    QTest::newRow("a folder") << QStringLiteral("F");
    QTest::newRow("a file outside") << QStringLiteral("../out.png");
    QTest::newRow("a FIFO") << QStringLiteral("F/fifo.png");
    QTest::newRow("no picture") << QStringLiteral("F/text.png");
}

void TestImageBox::loadsNothingElse()
{
    QFETCH(QString, path);
    picture(QStringLiteral("F/a.png"), 20, 10);
    picture(QStringLiteral("../out.png"), 20, 10);
    QCOMPARE(mkfifo(QFile::encodeName(base() + QStringLiteral("F/fifo.png")).constData(), 0600), 0);
    QFile text(base() + QStringLiteral("F/text.png"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
    text.close();
    box->loadImage(QStringLiteral("F/a.png"));
    const ModalResponder responder; // a box would fail the test
    box->loadImage(path);
    QVERIFY(part<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue).isNull());
    QCOMPARE(part<QLineEdit>(*box, "leImage")->text(), path);
}

void TestImageBox::choosesByTheCrossedTest_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("label");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("a high picture in a wide label is not scaled")
        << QSize(300, 800) << QSize(900, 400) << QSize(300, 800);
    QTest::newRow("a wide picture in a wide label is scaled")
        << QSize(800, 300) << QSize(900, 400) << QSize(900, 337);
    QTest::newRow("a small picture is not scaled")
        << QSize(30, 20) << QSize(900, 400) << QSize(30, 20);
    QTest::newRow("sides that just fit, crossed")
        << QSize(400, 900) << QSize(900, 400) << QSize(400, 900);
    QTest::newRow("one pixel too high") << QSize(400, 901) << QSize(900, 400) << QSize(177, 400);
}

void TestImageBox::choosesByTheCrossedTest()
{
    QFETCH(QSize, size);
    QFETCH(QSize, label);
    part<QLabel>(*box, "lbImage")->resize(label);
    choose(picture(QStringLiteral("../x/a.png"), size.width(), size.height()));
    QTEST(shownSize(), "shown");
    QCOMPARE(part<QLineEdit>(*box, "leImage")->text(),
             QDir::cleanPath(base() + QStringLiteral("../x/a.png")));
}

void TestImageBox::asksForPictures()
{
    ModalResponder responder;
    responder.cancelFileDialog();
    box->addReplace();
    QCOMPARE(responder.fileDialogs().size(), 1);
    QCOMPARE(responder.fileDialogs().first().caption, QStringLiteral("Open File"));
    QCOMPARE(responder.fileDialogs().first().directory, QStringLiteral("/home"));
    QCOMPARE(responder.fileDialogs().first().nameFilters,
             QStringList{QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp *.tif)")});
}

void TestImageBox::aCancelledChoiceEmptiesThePicture()
{
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    ModalResponder responder;
    responder.cancelFileDialog();
    box->addReplace();
    QCOMPARE(part<QLineEdit>(*box, "leImage")->text(), QString());
    QVERIFY(part<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue).isNull());
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    box->accepted();
    QCOMPARE(accepted, (QList<QList<QVariant>>{{QStringLiteral("F/")}}));
}

void TestImageBox::fitsTheOriginalIntoTheFrame()
{
    picture(QStringLiteral("F/a.png"), 800, 300);
    box->loadImage(QStringLiteral("F/a.png"));
    auto *frame = part<QFrame>(*box, "imageFrame");
    auto *fit = part<QPushButton>(*box, "pbZoomFit");
    frame->resize(610, 410);
    fit->click();
    QCOMPARE(shownSize(), QSize(600, 225));
    frame->resize(310, 810);
    fit->click();
    QCOMPARE(shownSize(), QSize(800, 300)); // crossed: 300 >= 300 and 800 >= 800
    frame->resize(309, 810);
    fit->click();
    QCOMPARE(shownSize(), QSize(299, 112));
}

void TestImageBox::zoomsInFromTheOriginal()
{
    picture(QStringLiteral("F/a.png"), 40, 20);
    box->loadImage(QStringLiteral("F/a.png"));
    part<QPushButton>(*box, "pbzoomplus")->click();
    QCOMPARE(shownSize(), QSize(80, 40));
    part<QPushButton>(*box, "pbzoomplus")->click();
    QCOMPARE(shownSize(), QSize(160, 80));
}

void TestImageBox::zoomsInUpToTheLimit_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("5000 would be 10000") << QSize(5000, 100) << QSize(5000, 100);
    QTest::newRow("4999 gives 9998") << QSize(4999, 100) << QSize(9998, 200);
    QTest::newRow("5000 high") << QSize(100, 5000) << QSize(100, 5000);
}

void TestImageBox::zoomsInUpToTheLimit()
{
    QFETCH(QSize, size);
    part<QLabel>(*box, "lbImage")->resize(6000, 6000); // room to be shown unscaled
    choose(picture(QStringLiteral("../x/a.png"), size.width(), size.height()));
    QCOMPARE(shownSize(), size);
    box->zoomIn();
    QTEST(shownSize(), "shown");
}

void TestImageBox::zoomsOutDownToTheLimit()
{
    picture(QStringLiteral("F/a.png"), 4, 4);
    box->loadImage(QStringLiteral("F/a.png"));
    part<QPushButton>(*box, "pbzoomminus")->click();
    QCOMPARE(shownSize(), QSize(2, 2));
    part<QPushButton>(*box, "pbzoomminus")->click();
    QCOMPARE(shownSize(), QSize(2, 2));
    picture(QStringLiteral("F/b.png"), 7, 101);
    box->loadImage(QStringLiteral("F/b.png"));
    box->zoomOut();
    QCOMPARE(shownSize(), QSize(3, 50)); // 7 and 101 are halved as whole numbers
    box->zoomOut();
    QCOMPARE(shownSize(), QSize(3, 50));
}

void TestImageBox::detailComesBack()
{
    QImage columns(70, 70, QImage::Format_RGB32);
    for (int x = 0; x < 70; ++x) {
        for (int y = 0; y < 70; ++y) {
            columns.setPixelColor(x, y, QColor(3 * x, 0, 0));
        }
    }
    QVERIFY(columns.save(base() + QStringLiteral("F/a.png")));
    box->loadImage(QStringLiteral("F/a.png"));
    const auto shown = [this] {
        const QPixmap pixmap = part<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue);
        return pixmap.toImage().convertToFormat(QImage::Format_RGB32);
    };
    box->zoomOut();
    box->zoomOut();
    const QImage reduced = shown();
    QCOMPARE(reduced.size(), QSize(17, 17));
    box->zoomOut();
    QCOMPARE(shown(), reduced.scaled(8, 8));
    QVERIFY(shown() != columns.scaled(8, 8)); // what was lost on the way down
    box->zoomIn();
    QCOMPARE(shown(), columns.scaled(16, 16));
}

void TestImageBox::zoomingNothingShowsNothing()
{
    box->loadImage(QString());
    box->zoomIn();
    box->zoomOut();
    box->fitImage();
    QVERIFY(part<QLabel>(*box, "lbImage")->pixmap(Qt::ReturnByValue).isNull());
}

void TestImageBox::acceptingCopiesAndTells()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    box->setSubFolder(QStringLiteral("G")); // made when missing
    box->show();
    choose(picture(QStringLiteral("../x/l'a.png"), 20, 10));
    part<QDialogButtonBox>(*box, "buttonBox")->button(QDialogButtonBox::Ok)->click();
    QVERIFY(!box->isVisible());
    QCOMPARE(accepted, (QList<QList<QVariant>>{{QStringLiteral("G/l'a.png")}}));
    QCOMPARE(QImage(base() + QStringLiteral("G/l'a.png")).size(), QSize(20, 10));
}

void TestImageBox::acceptingNeverOverwrites()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    picture(QStringLiteral("F/a.png"), 5, 5);
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    box->accepted();
    QCOMPARE(accepted, (QList<QList<QVariant>>{{QStringLiteral("F/a.png")}}));
    QCOMPARE(QImage(base() + QStringLiteral("F/a.png")).size(), QSize(5, 5));
}

void TestImageBox::acceptingWithoutChoiceTellsTheFolder()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    box->accepted();
    QCOMPARE(accepted, (QList<QList<QVariant>>{{QStringLiteral("F/")}}));
    QVERIFY(QFileInfo(base() + QStringLiteral("F")).isDir());
    QVERIFY(QDir(base() + QStringLiteral("F")).isEmpty());
}

void TestImageBox::thePreviousChoiceCounts()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    box->accepted();
    QVERIFY(QFile::remove(base() + QStringLiteral("F/a.png")));
    box->loadImage(QString());
    box->show();
    box->accepted();
    QCOMPARE(accepted.size(), 2);
    QCOMPARE(accepted.last(), QList<QVariant>{QStringLiteral("F/a.png")});
    QVERIFY(QFile::exists(base() + QStringLiteral("F/a.png")));
    QVERIFY(QFile::remove(base() + QStringLiteral("../x/a.png")));
    box->accepted();
    QCOMPARE(accepted.last(), QList<QVariant>{QStringLiteral("F/a.png")});
}

void TestImageBox::viewOnlyCopiesNothing()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    box->setViewOnly(true);
    box->show();
    box->accepted();
    QVERIFY(!box->isVisible());
    QCOMPARE(accepted.size(), 0);
    QVERIFY(QDir(base() + QStringLiteral("F")).isEmpty());
    box->setViewOnly(false);
    box->accepted();
    QCOMPARE(accepted.size(), 1);
}

void TestImageBox::copiesNoOtherThanFiles_data()
{
    QTest::addColumn<bool>("isFifo");
    QTest::newRow("a FIFO") << true;
    QTest::newRow("a program") << false;
}

void TestImageBox::copiesNoOtherThanFiles()
{
    QFETCH(bool, isFifo);
    const QString name = isFifo ? QStringLiteral("/a.png") : QStringLiteral("/a.exe");
    const QString path = dir->path() + name;
    if (isFifo) {
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    } else {
        QVERIFY(QFile::copy(picture(QStringLiteral("../x/a.png"), 20, 10), path));
    }
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    choose(path);
    box->accepted();
    // A program is not even named; what cannot be copied is, and shows as missing.
    const QString stored = isFifo ? QStringLiteral("F/a.png") : QStringLiteral("F/");
    QCOMPARE(accepted, (QList<QList<QVariant>>{{stored}}));
    QVERIFY(QDir(base() + QStringLiteral("F")).isEmpty());
}

void TestImageBox::staysInsideTheBase()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    box->setSubFolder(QStringLiteral("../fuori"));
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    box->accepted();
    QCOMPARE(accepted, (QList<QList<QVariant>>{{QStringLiteral("../fuori/")}}));
    QVERIFY(!QFileInfo::exists(dir->path() + QStringLiteral("/fuori")));
}

void TestImageBox::asksForTheFolderLate()
{
    int asked = 0;
    box->setSubFolder(QString());
    box->setSubFolderSource([&asked] {
        ++asked;
        return QStringLiteral("F");
    });
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    box->accepted();
    QCOMPARE(asked, 0);
    QCOMPARE(accepted.last(), QList<QVariant>{QStringLiteral("/")});
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    QCOMPARE(asked, 0);
    box->accepted();
    QCOMPARE(asked, 1);
    QCOMPARE(accepted.last(), QList<QVariant>{QStringLiteral("F/a.png")});
}

void TestImageBox::cancellingOnlyCloses()
{
    QSignalSpy accepted(box.get(), &ImageBox::acceptedFile);
    choose(picture(QStringLiteral("../x/a.png"), 20, 10));
    box->show();
    part<QDialogButtonBox>(*box, "buttonBox")->button(QDialogButtonBox::Cancel)->click();
    QVERIFY(!box->isVisible());
    box->show();
    QTest::keyClick(box.get(), Qt::Key_Escape);
    QVERIFY(!box->isVisible());
    QCOMPARE(accepted.size(), 0);
    QVERIFY(QDir(base() + QStringLiteral("F")).isEmpty());
}

void TestImageBox::hidesTheButtons()
{
    const auto *add = part<QPushButton>(*box, "pbAddReplace");
    const auto *cancel =
        part<QDialogButtonBox>(*box, "buttonBox")->button(QDialogButtonBox::Cancel);
    box->hideAddReplace(true);
    QVERIFY(add->isHidden());
    QVERIFY(cancel->isHidden());
    box->hideAddReplace(false);
    QVERIFY(!add->isHidden());
    QVERIFY(!cancel->isHidden());
}

void TestImageBox::slotsAndSignalsKeepTheirSignatures()
{
    const QMetaObject &meta = ImageBox::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods.append(QString::fromLatin1(method.methodSignature()) + QLatin1Char(' ') +
                       QString::fromLatin1(method.parameterNames().join(' ')));
    }
    QCOMPARE(methods, QStringList({QStringLiteral("acceptedFile(QString) name"),
                                   QStringLiteral("accepted() "), QStringLiteral("rejected() "),
                                   QStringLiteral("addReplace() "), QStringLiteral("zoomOut() "),
                                   QStringLiteral("zoomIn() "), QStringLiteral("fitImage() ")}));
}

QTEST_MAIN(TestImageBox)
#include "widgets_imagebox.moc"
