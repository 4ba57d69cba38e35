// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Attached files: chosen, dropped and pasted; where they are copied, and what is refused.
#include "widgets/attachfile.h"
#include "widgets/inputDataForm.h"

#include "tests/support/ModalResponder.h"
#include "tests/support/SmallDisk.h"
#include "widgets/ImageBox.h"

#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

#include <sys/stat.h>

class TestAttachments : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void copiesIntoTheRecordsFolder_data();
    void copiesIntoTheRecordsFolder();
    void neverOverwrites();
    void makesOneLevelOfFolders();
    void refusesWhatMayNotBeWritten_data();
    void refusesWhatMayNotBeWritten();
    void doesNotFollowLinksOutside();
    void leavesNothingOnAFullDisk();
    void savesPicturesUnderFreeNames();
    void savesNoPictureOutside_data();
    void savesNoPictureOutside();
    void findsTheFirstFittingFile_data();
    void findsTheFirstFittingFile();

    void addsAPdf();
    void aCancelledPdfChangesNothing();
    void replacesByAPdfOfTheSameName();
    void aFailedCopyIsMarked();
    void takesANewImage();
    void aPathWithoutFileLeavesTheValue();
    void opensTheImageDialog();
    void theImageDialogAttaches();
    void dropsWhatFits_data();
    void dropsWhatFits();
    void textFieldsTakeNoFiles();
    void pastesAFile();
    void pastesAPicture();
    void aPdfFieldTakesNoPicture();
    void pastesNothingElse();
    void asksForTheFolderWhenAFileComes();
    void marksSourcesThatAreNoFiles_data();
    void marksSourcesThatAreNoFiles();
    void marksMissingFiles_data();
    void marksMissingFiles();
    void showsAThumbnail();
    void looksAgainWhenTheFolderComes();

private:
    QString base() const { return dir->path() + QStringLiteral("/db/"); }
    QString outside(const QString &name) const { return dir->path() + QLatin1Char('/') + name; }
    QString write(const QString &name, const QByteArray &bytes) const;
    QByteArray read(const QString &storedPath) const;
    void prepare(inputDataForm &form, const QString &format, const QString &stored = {}) const;

    std::unique_ptr<QTemporaryDir> dir;
};

namespace
{

const QString Folder = QStringLiteral("TABLES_DOC/libri_x");

QString shownPath(const inputDataForm &form)
{
    return form.findChild<QLineEdit *>(QStringLiteral("leData"))->text();
}

const QLabel *label(const inputDataForm &form, const char *name)
{
    return form.findChild<QLabel *>(QLatin1String(name));
}

QImage picture(Qt::GlobalColor color, int width = 20, int height = 10)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

void pasteInto(inputDataForm &form)
{
    QTest::keySequence(form.editor(), QKeySequence(QKeySequence::Paste));
}

/// True when the field at `target` accepts the drag; the files are dropped then.
bool drop(QWidget *target, const QMimeData &data)
{
    const Qt::DropActions actions = Qt::MoveAction | Qt::CopyAction;
    QDragEnterEvent enter(QPoint(2, 2), actions, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent event(QPointF(2, 2), actions, &data, Qt::LeftButton, Qt::NoModifier);
    event.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(target, &event);
    // A move would let the file manager delete the original.
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

} // namespace

void TestAttachments::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    QVERIFY(QDir().mkpath(base() + QStringLiteral("TABLES_DOC")));
    QGuiApplication::clipboard()->clear();
}

void TestAttachments::cleanup()
{
    dir.reset();
}

QString TestAttachments::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = outside(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        QTest::qFail("cannot write a test file", __FILE__, __LINE__);
    }
    return path;
}

QByteArray TestAttachments::read(const QString &storedPath) const
{
    QFile file(base() + storedPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void TestAttachments::prepare(inputDataForm &form, const QString &format,
                              const QString &stored) const
{
    form.setBasePath(base());
    form.setAttachmentFolder(Folder);
    form.setValue(format, stored);
    form.clearCondition();
}

void TestAttachments::copiesIntoTheRecordsFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("a.pdf");
    QTest::newRow("with quotes") << QStringLiteral("l'isola \"bella\".pdf");
    QTest::newRow("with letters beyond ASCII") << QStringLiteral("però €.pdf");
    QTest::newRow("with a percent sign") << QStringLiteral("100%s.pdf");
    QTest::newRow("with two points") << QStringLiteral("a..b.pdf");
    QTest::newRow("without suffix") << QStringLiteral("scheda");
}

void TestAttachments::copiesIntoTheRecordsFolder()
{
    QFETCH(QString, name);
    const QString source = write(name, "bytes");
    const QString stored = AttachFile::copyIn(base(), Folder, source);
    QCOMPARE(stored, Folder + QLatin1Char('/') + name);
    QCOMPARE(read(stored), QByteArray("bytes"));
    QVERIFY(QFile::exists(source));
}

void TestAttachments::neverOverwrites()
{
    const QString old = AttachFile::copyIn(base(), Folder, write(QStringLiteral("1/a.pdf"), "1"));
    const QString again = AttachFile::copyIn(base(), Folder, write(QStringLiteral("2/a.pdf"), "2"));
    QCOMPARE(again, old);
    QCOMPARE(read(again), QByteArray("1"));
}

void TestAttachments::makesOneLevelOfFolders()
{
    const QString source = write(QStringLiteral("a.pdf"), "1");
    const QString deep = QStringLiteral("TABLES_DOC/a/b");
    QCOMPARE(AttachFile::copyIn(base(), deep, source), deep + QStringLiteral("/a.pdf"));
    QVERIFY(!QFileInfo::exists(base() + QStringLiteral("TABLES_DOC/a")));
    AttachFile::copyIn(base(), QStringLiteral("TABLES_DOC/a"), source);
    QVERIFY(QFileInfo::exists(base() + QStringLiteral("TABLES_DOC/a/a.pdf")));
}

void TestAttachments::refusesWhatMayNotBeWritten_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    const QString pdf = QStringLiteral("a.pdf");
    QTest::newRow("a folder above") << QStringLiteral("../altro") << pdf;
    QTest::newRow("a folder above, hidden inside") << QStringLiteral("TABLES_DOC/../..") << pdf;
    QTest::newRow("an absolute folder") << QStringLiteral("/tmp") << pdf;
    QTest::newRow("no folder") << QString() << pdf;
    QTest::newRow("a program") << Folder << QStringLiteral("a.exe");
    QTest::newRow("a script, in capitals") << Folder << QStringLiteral("a.SH");
    QTest::newRow("a starter") << Folder << QStringLiteral("a.pdf.desktop");
}

void TestAttachments::refusesWhatMayNotBeWritten()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    const QString source = write(QStringLiteral("from/") + name, "bytes");
    QCOMPARE(AttachFile::copyIn(base(), folder, source), QString());
    QVERIFY(!QFileInfo::exists(base() + folder + QLatin1Char('/') + name));
    QVERIFY(!QFileInfo::exists(base() + Folder));
}

void TestAttachments::doesNotFollowLinksOutside()
{
    QVERIFY(QDir().mkpath(outside(QStringLiteral("altrove"))));
    QVERIFY(QFile::link(outside(QStringLiteral("altrove")), base() + Folder));
    const QString source = write(QStringLiteral("a.pdf"), "bytes");
    QCOMPARE(AttachFile::copyIn(base(), Folder, source), QString());
    QCOMPARE(AttachFile::savePicture(base(), Folder, picture(Qt::red)), QString());
    QVERIFY(QDir(outside(QStringLiteral("altrove"))).isEmpty());
}

void TestAttachments::leavesNothingOnAFullDisk()
{
    // The end of it still waits to be written when all has been handed over.
    const QByteArray bytes(20000, 'p');
    const QString source = write(QStringLiteral("a.pdf"), bytes);
    const QString stored = Folder + QStringLiteral("/a.pdf");
    {
        const SmallDisk disk(18000);
        QCOMPARE(AttachFile::copyIn(base(), Folder, source), stored);
    }
    // Half a file would count as one that is there already, for ever.
    QVERIFY(QDir(base() + Folder).isEmpty());
    QCOMPARE(AttachFile::copyIn(base(), Folder, source), stored);
    QCOMPARE(read(stored), bytes);
}

void TestAttachments::savesPicturesUnderFreeNames()
{
    const QString first = AttachFile::savePicture(base(), Folder, picture(Qt::red));
    const QString second = AttachFile::savePicture(base(), Folder, picture(Qt::green));
    QCOMPARE(first, Folder + QStringLiteral("/immagine.png"));
    QCOMPARE(second, Folder + QStringLiteral("/immagine_2.png"));
    QCOMPARE(QImage(base() + first).pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(QImage(base() + second).pixelColor(0, 0), QColor(Qt::green));
    QVERIFY(read(first).startsWith("\x89PNG"));
    QFile::remove(base() + first);
    QCOMPARE(AttachFile::savePicture(base(), Folder, picture(Qt::blue)), first);
}

void TestAttachments::savesNoPictureOutside_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QImage>("image");
    QTest::newRow("a folder above") << QStringLiteral("..") << picture(Qt::red);
    QTest::newRow("no folder") << QString() << picture(Qt::red);
    QTest::newRow("a folder that cannot be made")
        << QStringLiteral("TABLES_DOC/a/b") << picture(Qt::red);
    QTest::newRow("no picture") << Folder << QImage();
}

void TestAttachments::savesNoPictureOutside()
{
    QFETCH(QString, folder);
    QFETCH(QImage, image);
    QCOMPARE(AttachFile::savePicture(base(), folder, image), QString());
    QVERIFY(QDir(base() + QStringLiteral("TABLES_DOC")).isEmpty());
    QVERIFY(!QFileInfo::exists(outside(QStringLiteral("immagine.png"))));
}

void TestAttachments::findsTheFirstFittingFile_data()
{
    QTest::addColumn<QStringList>("addresses");
    QTest::addColumn<QString>("file");
    QTest::newRow("nothing") << QStringList() << QString();
    QTest::newRow("another kind") << QStringList{QStringLiteral("file:///a/b.txt")} << QString();
    QTest::newRow("capitals") << QStringList{QStringLiteral("file:///a/B.PDF")}
                              << QStringLiteral("/a/B.PDF");
    QTest::newRow("a blank in the name")
        << QStringList{QStringLiteral("file:///a/b%20c.pdf")} << QStringLiteral("/a/b c.pdf");
    QTest::newRow("behind others")
        << QStringList{QStringLiteral("http://x/a.pdf"), QStringLiteral("file:///a/b.txt"),
                       QStringLiteral("file:///a/c.pdf")}
        << QStringLiteral("/a/c.pdf");
    QTest::newRow("from the web") << QStringList{QStringLiteral("https://x/a.pdf")} << QString();
}

void TestAttachments::findsTheFirstFittingFile()
{
    QFETCH(QStringList, addresses);
    QMimeData data;
    data.setUrls(QUrl::fromStringList(addresses));
    QTEST(AttachFile::fileIn(&data, {QStringLiteral("pdf")}), "file");
}

void TestAttachments::addsAPdf()
{
    inputDataForm form;
    prepare(form, QStringLiteral("PDF"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    ModalResponder responder;
    responder.chooseFile(write(QStringLiteral("l'atto.pdf"), "atto"));
    form.findChild<QPushButton *>(QStringLiteral("pbViewPdf"))->click();

    const QString stored = Folder + QStringLiteral("/l'atto.pdf");
    QCOMPARE(form.rawText(), stored);
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/l''atto.pdf"));
    QCOMPARE(shownPath(form), stored);
    QCOMPARE(read(stored), QByteArray("atto"));
    QVERIFY(form.isTouched());
    QCOMPARE(touched.size(), 1);
    QVERIFY(label(form, "lbMissing")->isHidden());
    QCOMPARE(responder.fileDialogs().size(), 1);
    QCOMPARE(responder.fileDialogs().first().caption, QStringLiteral("Open File"));
    QCOMPARE(responder.fileDialogs().first().directory, QStringLiteral("/home"));
    QCOMPARE(responder.fileDialogs().first().nameFilters,
             QStringList{QStringLiteral("Pdf (*.pdf)")});
}

void TestAttachments::aCancelledPdfChangesNothing()
{
    inputDataForm form;
    prepare(form, QStringLiteral("PDF"), QStringLiteral("TABLES_DOC/x/old.pdf"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    ModalResponder responder;
    responder.cancelFileDialog();
    form.addPdf();
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/x/old.pdf"));
    QCOMPARE(shownPath(form), QStringLiteral("TABLES_DOC/x/old.pdf"));
    QVERIFY(!form.isTouched());
    QCOMPARE(touched.size(), 0);
    QVERIFY(!QFileInfo::exists(base() + Folder));
}

void TestAttachments::replacesByAPdfOfTheSameName()
{
    inputDataForm form;
    const QString stored = AttachFile::copyIn(base(), Folder, write(QStringLiteral("a.pdf"), "1"));
    prepare(form, QStringLiteral("PDF"), stored);
    QSignalSpy touched(&form, &inputDataForm::touched);
    ModalResponder responder;
    responder.chooseFile(write(QStringLiteral("2/a.pdf"), "2"));
    form.addPdf();
    QCOMPARE(form.valueText(), stored);
    QCOMPARE(read(stored), QByteArray("1"));
    QCOMPARE(touched.size(), 1);
}

void TestAttachments::aFailedCopyIsMarked()
{
    inputDataForm form;
    prepare(form, QStringLiteral("PDF"));
    form.setAttachmentFolder(QStringLiteral("TABLES_DOC/a/b")); // needs two new levels
    ModalResponder responder;
    responder.chooseFile(write(QStringLiteral("a.pdf"), "1"));
    form.addPdf();
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/a/b/a.pdf"));
    QVERIFY(!label(form, "lbMissing")->isHidden());
    QCOMPARE(responder.boxes().size(), 0);
}

void TestAttachments::takesANewImage()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    form.setNewImage(Folder + QStringLiteral("/l'a.png"));
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/l''a.png"));
    QCOMPARE(shownPath(form), Folder + QStringLiteral("/l'a.png"));
    QVERIFY(form.isTouched());
    QVERIFY(!form.isActive());
    QCOMPARE(touched.size(), 1);
    QVERIFY(!QFileInfo::exists(base() + Folder)); // the dialog copies, not the field
}

void TestAttachments::aPathWithoutFileLeavesTheValue()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"), QStringLiteral("TABLES_DOC/x/old.png"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    form.setNewImage(Folder + QLatin1Char('/'));
    form.setNewImage(QString());
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/x/old.png"));
    QCOMPARE(shownPath(form), QStringLiteral("TABLES_DOC/x/old.png"));
    QVERIFY(!form.isTouched());
    QCOMPARE(touched.size(), 0);
}

void TestAttachments::opensTheImageDialog()
{
    inputDataForm form;
    QVERIFY(QDir().mkpath(base() + Folder));
    QVERIFY(picture(Qt::red).save(base() + Folder + QStringLiteral("/a.png")));
    prepare(form, QStringLiteral("IMAGE"), Folder + QStringLiteral("/a.png"));
    form.findChild<QPushButton *>(QStringLiteral("pbViewImage"))->click();
    auto *box = form.findChild<ImageBox *>();
    QVERIFY(box->isVisible());
    QVERIFY(box->isModal());
    QCOMPARE(box->parentWidget(), &form);
    QCOMPARE(box->findChild<QLineEdit *>(QStringLiteral("leImage"))->text(),
             Folder + QStringLiteral("/a.png"));
    const QPixmap shown =
        box->findChild<QLabel *>(QStringLiteral("lbImage"))->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.size(), QSize(20, 10));

    form.setValue(QStringLiteral("IMAGE"), QString());
    form.viewImageBox();
    QCOMPARE(form.findChildren<ImageBox *>().size(), 1); // one dialog for the field's life
}

void TestAttachments::theImageDialogAttaches()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    QVERIFY(picture(Qt::red).save(outside(QStringLiteral("a.png"))));
    form.viewImageBox();
    auto *box = form.findChild<ImageBox *>();
    ModalResponder responder;
    responder.chooseFile(outside(QStringLiteral("a.png")));
    box->addReplace();
    box->accepted();
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/a.png"));
    QVERIFY(QFileInfo::exists(base() + Folder + QStringLiteral("/a.png")));
    QVERIFY(!label(form, "lbPreview")->isHidden());
    QCOMPARE(touched.size(), 1);

    form.setValue(QStringLiteral("IMAGE"), QStringLiteral("TABLES_DOC/x/old.png"));
    form.viewImageBox();
    responder.cancelFileDialog();
    box->addReplace();
    box->accepted();
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/x/old.png"));
    QCOMPARE(touched.size(), 1);
}

void TestAttachments::dropsWhatFits_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("fits");
    const auto add = [](const char *format, const char *name, bool fits) {
        QTest::addRow("%s on %s", name, format)
            << QString::fromLatin1(format) << QString::fromLatin1(name) << fits;
    };
    for (const char *name : {"a.png", "a.jpg", "a.jpeg", "a.bmp", "a.tif", "A.PNG"}) {
        add("IMAGE", name, true);
    }
    add("IMAGE", "a.pdf", false);
    add("IMAGE", "a.svg", false);
    add("IMAGE", "a.exe", false);
    add("PDF", "a.pdf", true);
    add("PDF", "A.Pdf", true);
    add("PDF", "a.png", false);
}

void TestAttachments::dropsWhatFits()
{
    QFETCH(QString, format);
    QFETCH(QString, name);
    QFETCH(bool, fits);
    inputDataForm form;
    prepare(form, format);
    QSignalSpy touched(&form, &inputDataForm::touched);
    const QString source = write(name, "bytes");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(source)});
    QCOMPARE(drop(form.editor(), data), fits);
    QCOMPARE(form.valueText(), fits ? Folder + QLatin1Char('/') + name : QString());
    QCOMPARE(touched.size(), fits ? 1 : 0);
    QCOMPARE(QFileInfo::exists(base() + Folder), fits);
    QVERIFY(QFile::exists(source));
}

void TestAttachments::textFieldsTakeNoFiles()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"));
    prepare(form, QStringLiteral("STRING"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(write(QStringLiteral("a.png"), "bytes"))});
    QVERIFY(!form.acceptDrops());
    QVERIFY(!drop(&form, data));
    QVERIFY(!QFileInfo::exists(base() + Folder));
}

void TestAttachments::pastesAFile()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    QVERIFY(picture(Qt::red).save(outside(QStringLiteral("a.png"))));
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(outside(QStringLiteral("a.png")))});
    data->setImageData(picture(Qt::green)); // what file managers add
    QGuiApplication::clipboard()->setMimeData(data);
    pasteInto(form);
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/a.png"));
    QCOMPARE(QImage(base() + form.rawText()).pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(touched.size(), 1);
}

void TestAttachments::pastesAPicture()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    QGuiApplication::clipboard()->setImage(picture(Qt::green));
    pasteInto(form);
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/immagine.png"));
    QCOMPARE(QImage(base() + form.rawText()).pixelColor(0, 0), QColor(Qt::green));
    QVERIFY(!label(form, "lbPreview")->isHidden());
    auto *button = form.findChild<QPushButton *>(QStringLiteral("pbViewImage"));
    QTest::keySequence(button, QKeySequence(QKeySequence::Paste));
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/immagine_2.png"));
    QCOMPARE(touched.size(), 2);
}

void TestAttachments::aPdfFieldTakesNoPicture()
{
    inputDataForm form;
    prepare(form, QStringLiteral("PDF"));
    QGuiApplication::clipboard()->setImage(picture(Qt::green));
    pasteInto(form);
    QVERIFY(!form.isTouched());
    QVERIFY(!QFileInfo::exists(base() + Folder));
}

void TestAttachments::pastesNothingElse()
{
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"), QStringLiteral("TABLES_DOC/x/old.png"));
    QGuiApplication::clipboard()->setText(QStringLiteral("/etc/passwd"));
    pasteInto(form);
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/x/old.png"));
    QCOMPARE(shownPath(form), QStringLiteral("TABLES_DOC/x/old.png"));
    prepare(form, QStringLiteral("STRING"));
    pasteInto(form);
    QCOMPARE(form.valueText(), QStringLiteral("/etc/passwd")); // plain texts paste as ever
}

void TestAttachments::asksForTheFolderWhenAFileComes()
{
    inputDataForm form;
    prepare(form, QStringLiteral("PDF"));
    form.setAttachmentFolder(QString());
    int asked = 0;
    form.setAttachmentFolderSource([&asked] {
        ++asked;
        return QStringLiteral("TABLES_DOC/libri_Nuovo");
    });
    ModalResponder responder;
    responder.cancelFileDialog();
    form.addPdf();
    QCOMPARE(asked, 0);
    responder.chooseFile(write(QStringLiteral("a.pdf"), "1"));
    form.addPdf();
    QCOMPARE(asked, 1);
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/libri_Nuovo/a.pdf"));

    prepare(form, QStringLiteral("IMAGE"));
    form.setAttachmentFolder(QString());
    form.viewImageBox();
    QCOMPARE(asked, 1);
    QVERIFY(picture(Qt::red).save(outside(QStringLiteral("a.png"))));
    auto *box = form.findChild<ImageBox *>();
    responder.chooseFile(outside(QStringLiteral("a.png")));
    box->addReplace();
    QCOMPARE(asked, 1);
    box->accepted();
    QCOMPARE(asked, 2);
    QCOMPARE(form.valueText(), QStringLiteral("TABLES_DOC/libri_Nuovo/a.png"));

    form.setAttachmentFolder(Folder);
    QGuiApplication::clipboard()->setImage(picture(Qt::green));
    pasteInto(form);
    QCOMPARE(asked, 2); // a folder that is set is not asked for
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/immagine.png"));
}

void TestAttachments::marksSourcesThatAreNoFiles_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a folder") << QStringLiteral("folder");
    QTest::newRow("a FIFO") << QStringLiteral("fifo");
    QTest::newRow("nothing") << QStringLiteral("nothing");
}

void TestAttachments::marksSourcesThatAreNoFiles()
{
    QFETCH(QString, kind);
    const QString source = outside(QStringLiteral("a.png"));
    if (kind == QLatin1String("folder")) {
        QVERIFY(QDir().mkpath(source));
    } else if (kind == QLatin1String("fifo")) {
        QCOMPARE(mkfifo(QFile::encodeName(source).constData(), 0600), 0);
    }
    inputDataForm form;
    prepare(form, QStringLiteral("IMAGE"), QStringLiteral("TABLES_DOC/x/old.png"));
    QSignalSpy touched(&form, &inputDataForm::touched);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(source)});
    const ModalResponder responder; // a box would fail the test
    drop(&form, data);
    QCOMPARE(form.valueText(), Folder + QStringLiteral("/a.png"));
    QCOMPARE(shownPath(form), Folder + QStringLiteral("/a.png"));
    QVERIFY(!form.findChild<QWidget *>(QStringLiteral("lbMissing"))->isHidden());
    QVERIFY(form.isTouched());
    QCOMPARE(touched.size(), 1);
    QVERIFY(!QFileInfo::exists(base() + Folder + QStringLiteral("/a.png")));
}

void TestAttachments::marksMissingFiles_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("isMarked");
    const QString pdf = QStringLiteral("PDF");
    const QString image = QStringLiteral("IMAGE");
    QTest::newRow("no path") << pdf << QString() << false;
    QTest::newRow("a file that is there") << pdf << Folder + QStringLiteral("/a.png") << false;
    QTest::newRow("a picture that is there") << image << Folder + QStringLiteral("/a.png") << false;
    QTest::newRow("a file that is gone") << pdf << Folder + QStringLiteral("/b.pdf") << true;
    QTest::newRow("a picture that is gone") << image << Folder + QStringLiteral("/b.png") << true;
    QTest::newRow("a folder") << image << Folder << true;
    QTest::newRow("an unfilled field") << image << QStringLiteral("0") << true;
    QTest::newRow("a file outside") << image << QStringLiteral("../out.png") << true;
}

void TestAttachments::marksMissingFiles()
{
    QFETCH(QString, format);
    QFETCH(QString, stored);
    QVERIFY(QDir().mkpath(base() + Folder));
    QVERIFY(picture(Qt::red).save(base() + Folder + QStringLiteral("/a.png")));
    QVERIFY(picture(Qt::red).save(outside(QStringLiteral("out.png"))));
    inputDataForm form;
    prepare(form, format, stored);
    const QLabel *mark = label(form, "lbMissing");
    QTEST(!mark->isHidden(), "isMarked");
    QCOMPARE(mark->accessibleName(), QStringLiteral("Il file non c'è"));
    QVERIFY(!mark->pixmap(Qt::ReturnByValue).isNull());
    form.setValue(QStringLiteral("STRING"), stored);
    QVERIFY(mark->isHidden());
}

void TestAttachments::showsAThumbnail()
{
    QVERIFY(QDir().mkpath(base() + Folder));
    QVERIFY(picture(Qt::red, 300, 100).save(base() + Folder + QStringLiteral("/a.png")));
    QVERIFY(picture(Qt::red, 30, 10).save(outside(QStringLiteral("out.png"))));
    write(QStringLiteral("db/TABLES_DOC/libri_x/b.png"), "no picture");
    inputDataForm form;
    const QLabel *preview = label(form, "lbPreview");
    prepare(form, QStringLiteral("IMAGE"), Folder + QStringLiteral("/a.png"));
    QVERIFY(!preview->isHidden());
    QCOMPARE(preview->pixmap(Qt::ReturnByValue).size(), QSize(120, 40));
    form.setValue(QStringLiteral("IMAGE"), QStringLiteral("../out.png"));
    QVERIFY(preview->isHidden());
    form.setValue(QStringLiteral("IMAGE"), Folder + QStringLiteral("/b.png"));
    QVERIFY(preview->isHidden());
    form.setValue(QStringLiteral("PDF"), Folder + QStringLiteral("/a.png"));
    QVERIFY(preview->isHidden());
}

void TestAttachments::looksAgainWhenTheFolderComes()
{
    QVERIFY(QDir().mkpath(base() + Folder));
    QVERIFY(picture(Qt::red).save(base() + Folder + QStringLiteral("/a.png")));
    inputDataForm form;
    form.setValue(QStringLiteral("IMAGE"), Folder + QStringLiteral("/a.png"));
    QVERIFY(!label(form, "lbMissing")->isHidden());
    form.setBasePath(base());
    QVERIFY(label(form, "lbMissing")->isHidden());
    QVERIFY(!label(form, "lbPreview")->isHidden());
}

QTEST_MAIN(TestAttachments)
#include "widgets_attachments.moc"
