// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Pictures and PDFs attached on the entry page: where they are copied to, what is stored.
#include "tests/support/EntryPage.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QDir>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include "widgets/ImageBox.h"

namespace
{

const QString Titolo = QStringLiteral("Titolo");
const QString Foto = QStringLiteral("Foto");
const QString Scheda = QStringLiteral("Scheda");

const QStringList Books = {
    QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                   "NSTRINGFORMAT_Titolo text,NLONGSTRINGFORMAT_UserPath text,"
                   "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text)"),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("INSERT INTO libri VALUES (7,'Zeno','TABLES_DOC/libri_Zeno','','')"),
};

// A database of one book, and a picture and a PDF elsewhere that wait to be attached.
struct Library : EntryPage::Started {
    explicit Library(const QStringList &statements = Books)
        : Started(statements)
    {
        QImage picture(4, 3, QImage::Format_RGB32);
        picture.fill(Qt::red);
        here.write(QStringLiteral("da/cover.png"), QByteArray());
        picture.save(here.path(QStringLiteral("da/cover.png")));
        here.write(QStringLiteral("da/scheda.pdf"), "%PDF-1.4");
    }
    QString picture() const { return here.path(QStringLiteral("da/cover.png")); }
    QString pdf() const { return here.path(QStringLiteral("da/scheda.pdf")); }

    /// True when the two files hold the same bytes.
    bool isCopy(const QString &copy, const QString &source) const
    {
        return here.exists(copy) && here.read(copy) == here.read(source);
    }
    /// The folders of records that were made.
    QStringList folders() const
    {
        return QDir(here.path(QStringLiteral("TABLES_DOC")))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
};

// The open picture dialog of a field.
ImageBox &openPictureDialog(const QWidget &window, const QString &label)
{
    EntryPage::part<QAbstractButton>(window, label, "pbViewImage")->click();
    auto *const box = EntryPage::field(window, label).findChild<ImageBox *>();
    if (box == nullptr || !box->isVisible()) {
        qFatal("no picture dialog");
    }
    return *box;
}

void pressInDialog(const ImageBox &box, QDialogButtonBox::StandardButton button)
{
    Window::get<QDialogButtonBox>(box, "buttonBox")->button(button)->click();
}

// Chooses a picture in the dialog and accepts it.
void attachPicture(const QWidget &window, const QString &label, const QString &file)
{
    const ImageBox &box = openPictureDialog(window, label);
    ModalResponder responder;
    responder.chooseFile(file);
    Window::click(box, "pbAddReplace");
    pressInDialog(box, QDialogButtonBox::Ok);
}

void attachPdf(const QWidget &window, const QString &label, const QString &file)
{
    ModalResponder responder;
    responder.chooseFile(file);
    Window::click(EntryPage::field(window, label), "pbViewPdf");
}

bool isMarkedMissing(const QWidget &window, const QString &label)
{
    return Window::offers(EntryPage::field(window, label), "lbMissing");
}

} // namespace

class EntryAttachments : public QObject
{
    Q_OBJECT

private slots:
    void pictureThroughDialog();
    void pictureDialogCancelled();
    void pictureDialogWithoutChoice();
    void pdfThroughFileDialog();
    void pdfDialogCancelled();
    void pictureFromClipboard();
    void attachedWithoutChangeOfOtherFields();
    void cancelledPageKeepsRecord();
    void namesWithSigns();
    void existingFileIsNotOverwritten();
    void databaseInAnotherFolder();

    void newRecordUsesTypedTitle();
    void newRecordWithoutTitle();
    void newRecordOfReferencedTitle();
    void newRecordKnownByItsFolder();
    void recordWithoutFolderGetsOne_data();
    void recordWithoutFolderGetsOne();
    void recordWithoutFolderAndAttachmentKeepsNone();
    void folderTypedByHandStays();
    void attachmentsShareFolder_data();
    void attachmentsShareFolder();
    void nextPageHasItsOwnFolder();

    void failedCopyShowsNoBox_data();
    void failedCopyShowsNoBox();
    void vanishedPictureShowsNoBox();
    void folderOutsideIsNotWritten();
};

void EntryAttachments::pictureThroughDialog()
{
    Library library;
    QVERIFY(library.show());
    EntryPage::openEdit(*library.window);
    const ImageBox &box = openPictureDialog(*library.window, Foto);
    QVERIFY(box.isModal());
    ModalResponder responder;
    responder.chooseFile(library.picture());
    Window::click(box, "pbAddReplace");
    QCOMPARE(responder.fileDialogs().size(), 1);
    QCOMPARE(responder.fileDialogs().first().caption, QStringLiteral("Open File"));
    QCOMPARE(Window::get<QLineEdit>(box, "leImage")->text(), library.picture());
    // Nothing is copied before the picture is accepted.
    QCOMPARE(library.folders(), QStringList());
    pressInDialog(box, QDialogButtonBox::Ok);
    QVERIFY(!box.isVisible());
    const QString stored = QStringLiteral("TABLES_DOC/libri_Zeno/cover.png");
    QVERIFY(library.isCopy(stored, QStringLiteral("da/cover.png")));
    QCOMPARE(EntryPage::shown(*library.window, Foto), stored);
    QVERIFY(!isMarkedMissing(*library.window, Foto));
    const quint32 before = library.steps();
    EntryPage::save(*library.window);
    QCOMPARE(library.steps(), before + 1);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zeno'|text:'TABLES_DOC/libri_Zeno'|"
                                        "text:'TABLES_DOC/libri_Zeno/cover.png'|text:''")});
}

void EntryAttachments::pictureDialogCancelled()
{
    const Library library;
    EntryPage::openEdit(*library.window);
    const ImageBox &box = openPictureDialog(*library.window, Foto);
    ModalResponder responder;
    responder.chooseFile(library.picture());
    Window::click(box, "pbAddReplace");
    pressInDialog(box, QDialogButtonBox::Cancel);
    QCOMPARE(EntryPage::shown(*library.window, Foto), QString());
    EntryPage::save(*library.window);
    QCOMPARE(library.folders(), QStringList());
    QVERIFY(library.rows(QStringLiteral("libri")).first().endsWith(QStringLiteral("|text:''")));
}

void EntryAttachments::pictureDialogWithoutChoice()
{
    const Library library;
    EntryPage::openEdit(*library.window);
    attachPicture(*library.window, Foto, library.picture());
    EntryPage::save(*library.window);
    const QStringList before = library.rows(QStringLiteral("libri"));
    EntryPage::openEdit(*library.window);
    pressInDialog(openPictureDialog(*library.window, Foto), QDialogButtonBox::Ok);
    QCOMPARE(EntryPage::shown(*library.window, Foto),
             QStringLiteral("TABLES_DOC/libri_Zeno/cover.png"));
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")), before);
}

void EntryAttachments::pdfThroughFileDialog()
{
    const Library library;
    EntryPage::openEdit(*library.window);
    ModalResponder responder;
    responder.chooseFile(library.pdf());
    Window::click(EntryPage::field(*library.window, Scheda), "pbViewPdf");
    QCOMPARE(responder.fileDialogs().size(), 1);
    QCOMPARE(responder.fileDialogs().first().caption, QStringLiteral("Open File"));
    QCOMPARE(responder.fileDialogs().first().nameFilters,
             QStringList{QStringLiteral("Pdf (*.pdf)")});
    const QString stored = QStringLiteral("TABLES_DOC/libri_Zeno/scheda.pdf");
    QVERIFY(library.isCopy(stored, QStringLiteral("da/scheda.pdf")));
    QCOMPARE(EntryPage::shown(*library.window, Scheda), stored);
    const quint32 before = library.steps();
    EntryPage::save(*library.window);
    QCOMPARE(library.steps(), before + 1);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zeno'|text:'TABLES_DOC/libri_Zeno'|"
                                        "text:''|text:'TABLES_DOC/libri_Zeno/scheda.pdf'")});
}

void EntryAttachments::pdfDialogCancelled()
{
    const Library library;
    const QByteArray before = library.here.read(library.database);
    EntryPage::openEdit(*library.window);
    ModalResponder responder;
    responder.cancelFileDialog();
    Window::click(EntryPage::field(*library.window, Scheda), "pbViewPdf");
    EntryPage::save(*library.window);
    QVERIFY(library.here.read(library.database) == before);
    QCOMPARE(library.folders(), QStringList());
}

void EntryAttachments::pictureFromClipboard()
{
    const Library library;
    EntryPage::openEdit(*library.window);
    QImage picture(5, 5, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QGuiApplication::clipboard()->setImage(picture);
    QTest::keyClick(EntryPage::field(*library.window, Foto).editor(), Qt::Key_V,
                    Qt::ControlModifier);
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zeno'|text:'TABLES_DOC/libri_Zeno'|"
                                        "text:'TABLES_DOC/libri_Zeno/immagine.png'|text:''")});
    QCOMPARE(QImage(library.here.path(QStringLiteral("TABLES_DOC/libri_Zeno/immagine.png"))),
             picture);
}

void EntryAttachments::attachedWithoutChangeOfOtherFields()
{
    const Library library(Books +
                          QStringList{QStringLiteral("UPDATE libri SET NPDFFORMAT_Scheda = NULL")});
    EntryPage::openEdit(*library.window);
    attachPicture(*library.window, Foto, library.picture());
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zeno'|text:'TABLES_DOC/libri_Zeno'|"
                                        "text:'TABLES_DOC/libri_Zeno/cover.png'|null:NULL")});
}

void EntryAttachments::cancelledPageKeepsRecord()
{
    const Library library;
    const QByteArray before = library.here.read(library.database);
    EntryPage::openEdit(*library.window);
    attachPicture(*library.window, Foto, library.picture());
    Window::click(*library.window, "pbCancelEdit");
    QVERIFY(library.here.read(library.database) == before);
}

void EntryAttachments::namesWithSigns()
{
    const Library library;
    const QString name = QStringLiteral("l'été %s; perché?.png");
    library.here.write(QStringLiteral("da/") + name,
                       library.here.read(QStringLiteral("da/cover.png")));
    EntryPage::openNew(*library.window);
    EntryPage::enter(*library.window, Titolo, QStringLiteral("L'isola: 100%s"));
    attachPicture(*library.window, Foto, library.here.path(QStringLiteral("da/") + name));
    EntryPage::save(*library.window);
    const QString folder = QStringLiteral("TABLES_DOC/libri_Lisola_100%s");
    QVERIFY(library.isCopy(folder + QLatin1Char('/') + name, QStringLiteral("da/") + name));
    QCOMPARE(library.here.rows(library.database, QStringLiteral("SELECT NLONGSTRINGFORMAT_UserPath,"
                                                                "NIMAGEFORMAT_Foto FROM libri "
                                                                "WHERE RINTEGERFORMAT_Id = 8")),
             QVector<QVariantList>{(QVariantList{folder, folder + QLatin1Char('/') + name})});
}

void EntryAttachments::existingFileIsNotOverwritten()
{
    const Library library;
    const QString stored = QStringLiteral("TABLES_DOC/libri_Zeno/scheda.pdf");
    library.here.write(stored, "older");
    EntryPage::openEdit(*library.window);
    attachPdf(*library.window, Scheda, library.pdf());
    EntryPage::save(*library.window);
    QCOMPARE(library.here.read(stored), QByteArray("older"));
    QVERIFY(library.rows(QStringLiteral("libri"))
                .first()
                .endsWith(QStringLiteral("|text:'%1'").arg(stored)));
}

void EntryAttachments::databaseInAnotherFolder()
{
    const Workspace here;
    const QString database = QStringLiteral("archivio/books.db");
    here.write(QStringLiteral("archivio/da.pdf"), "%PDF-1.4");
    here.sql(database, Books);
    here.remember(database);
    const Tavenor window;
    EntryPage::openEdit(window);
    attachPdf(window, Scheda, here.path(QStringLiteral("archivio/da.pdf")));
    EntryPage::save(window);
    QVERIFY(here.exists(QStringLiteral("archivio/TABLES_DOC/libri_Zeno/da.pdf")));
    QVERIFY(!here.exists(QStringLiteral("TABLES_DOC")));
    // The collection can be moved: what is stored names no place outside it.
    QCOMPARE(here.value(database, QStringLiteral("SELECT NPDFFORMAT_Scheda FROM libri")),
             QVariant(QStringLiteral("TABLES_DOC/libri_Zeno/da.pdf")));
}

void EntryAttachments::newRecordUsesTypedTitle()
{
    const Library library;
    EntryPage::openNew(*library.window);
    EntryPage::type(*library.window, Titolo, QStringLiteral("Il barone"));
    attachPicture(*library.window, Foto, library.picture());
    attachPdf(*library.window, Scheda, library.pdf());
    EntryPage::save(*library.window);
    QCOMPARE(library.folders(), QStringList{QStringLiteral("libri_Il_barone")});
    QCOMPARE(library.rows(QStringLiteral("libri")).last(),
             QStringLiteral("integer:8|text:'Il barone'|text:'TABLES_DOC/libri_Il_barone'|"
                            "text:'TABLES_DOC/libri_Il_barone/cover.png'|"
                            "text:'TABLES_DOC/libri_Il_barone/scheda.pdf'"));
}

void EntryAttachments::newRecordWithoutTitle()
{
    const Library library;
    EntryPage::openNew(*library.window);
    attachPdf(*library.window, Scheda, library.pdf());
    QCOMPARE(EntryPage::shown(*library.window, Scheda),
             QStringLiteral("TABLES_DOC/libri_8/scheda.pdf"));
    EntryPage::save(*library.window);
    QVERIFY(library.here.exists(QStringLiteral("TABLES_DOC/libri_8/scheda.pdf")));
    QVERIFY(library.rows(QStringLiteral("libri"))
                .last()
                .endsWith(QStringLiteral("|text:'TABLES_DOC/libri_8/scheda.pdf'")));
}

void EntryAttachments::newRecordOfReferencedTitle()
{
    const Library library(
        {QStringLiteral("CREATE TABLE prestiti (RINTEGERFORMAT_Id integer primary key,"
                        "Xsoci_XDTX_RSTRINGFORMAT_Nome Integer,NLONGSTRINGFORMAT_UserPath text,"
                        "NPDFFORMAT_Scheda text)"),
         QStringLiteral("CREATE TABLE soci (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("INSERT INTO soci VALUES (4,'Anna Bo')")});
    EntryPage::openNew(*library.window);
    EntryPage::choose(*library.window, QStringLiteral("Nome"), 1);
    attachPdf(*library.window, Scheda, library.pdf());
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("prestiti")),
             QStringList{QStringLiteral("integer:1|integer:4|text:'TABLES_DOC/prestiti_Anna_Bo'|"
                                        "text:'TABLES_DOC/prestiti_Anna_Bo/scheda.pdf'")});
}

void EntryAttachments::newRecordKnownByItsFolder()
{
    const Library library(
        {QStringLiteral("CREATE TABLE foto (RINTEGERFORMAT_Id integer primary key,"
                        "NLONGSTRINGFORMAT_UserPath text,NIMAGEFORMAT_Foto text)"),
         QStringLiteral("CREATE TABLE altro (RINTEGERFORMAT_Id integer primary key,"
                        "RSTRINGFORMAT_Nome text)"),
         QStringLiteral("INSERT INTO foto VALUES (5,'TABLES_DOC/foto_5','')")});
    EntryPage::openNew(*library.window);
    attachPicture(*library.window, Foto, library.picture());
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("foto")).last(),
             QStringLiteral("integer:6|text:'TABLES_DOC/foto_6'|"
                            "text:'TABLES_DOC/foto_6/cover.png'"));
    QVERIFY(library.here.exists(QStringLiteral("TABLES_DOC/foto_6/cover.png")));
}

void EntryAttachments::recordWithoutFolderGetsOne_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none yet") << "''"
                              << "Zeno"
                              << "TABLES_DOC/libri_Zeno";
    QTest::newRow("never filled") << "'0'"
                                  << "Zeno"
                                  << "TABLES_DOC/libri_Zeno";
    QTest::newRow("nothing at all") << "NULL"
                                    << "Zeno"
                                    << "TABLES_DOC/libri_Zeno";
    QTest::newRow("by the title that stands on the page") << "''"
                                                          << "Zeno Cosini"
                                                          << "TABLES_DOC/libri_Zeno_Cosini";
    QTest::newRow("without a title") << "''"
                                     << ""
                                     << "TABLES_DOC/libri_8";
}

void EntryAttachments::recordWithoutFolderGetsOne()
{
    QFETCH(QString, folder);
    QFETCH(QString, title);
    QFETCH(QString, expected);
    const Library library(
        Books +
        QStringList{
            QStringLiteral("UPDATE libri SET NLONGSTRINGFORMAT_UserPath = %1").arg(folder)});
    EntryPage::openEdit(*library.window);
    if (title != QStringLiteral("Zeno")) {
        EntryPage::enter(*library.window, Titolo, title);
    }
    attachPdf(*library.window, Scheda, library.pdf());
    const quint32 before = library.steps();
    EntryPage::save(*library.window);
    QCOMPARE(library.steps(), before + 1);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'%1'|text:'%2'|text:''|"
                                        "text:'%2/scheda.pdf'")
                             .arg(title, expected)});
    QVERIFY(
        library.isCopy(expected + QStringLiteral("/scheda.pdf"), QStringLiteral("da/scheda.pdf")));
}

void EntryAttachments::recordWithoutFolderAndAttachmentKeepsNone()
{
    const Library library(
        Books + QStringList{QStringLiteral("UPDATE libri SET NLONGSTRINGFORMAT_UserPath = '0'")});
    EntryPage::openEdit(*library.window);
    EntryPage::enter(*library.window, Titolo, QStringLiteral("Zoe"));
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zoe'|text:'0'|text:''|text:''")});
}

void EntryAttachments::folderTypedByHandStays()
{
    const Library library(
        Books + QStringList{QStringLiteral("UPDATE libri SET NLONGSTRINGFORMAT_UserPath = ''")});
    EntryPage::setAdvancedMode(*library.window, true);
    EntryPage::openEdit(*library.window);
    attachPdf(*library.window, Scheda, library.pdf());
    EntryPage::enter(*library.window, QStringLiteral("UserPath"), QStringLiteral("TABLES_DOC/z"));
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")),
             QStringList{QStringLiteral("integer:7|text:'Zeno'|text:'TABLES_DOC/z'|text:''|"
                                        "text:'TABLES_DOC/libri_Zeno/scheda.pdf'")});
}

void EntryAttachments::attachmentsShareFolder_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<QString>("folder");
    // A new record's own folder always comes from the title that it is saved with.
    QTest::newRow("of a new record") << true << "TABLES_DOC/libri_Dopo";
    QTest::newRow("of a record without a folder") << false << "TABLES_DOC/libri_Prima";
}

void EntryAttachments::attachmentsShareFolder()
{
    QFETCH(bool, isNew);
    QFETCH(QString, folder);
    const Library library(
        Books + QStringList{QStringLiteral("UPDATE libri SET NLONGSTRINGFORMAT_UserPath = ''")});
    if (isNew) {
        EntryPage::openNew(*library.window);
    } else {
        EntryPage::openEdit(*library.window);
    }
    EntryPage::enter(*library.window, Titolo, QStringLiteral("Prima"));
    attachPicture(*library.window, Foto, library.picture());
    EntryPage::enter(*library.window, Titolo, QStringLiteral("Dopo"));
    attachPdf(*library.window, Scheda, library.pdf());
    EntryPage::save(*library.window);
    QCOMPARE(library.folders(), QStringList{QStringLiteral("libri_Prima")});
    QCOMPARE(library.rows(QStringLiteral("libri")).last(),
             QStringLiteral("integer:%1|text:'Dopo'|text:'%2'|"
                            "text:'TABLES_DOC/libri_Prima/cover.png'|"
                            "text:'TABLES_DOC/libri_Prima/scheda.pdf'")
                 .arg(isNew ? 8 : 7)
                 .arg(folder));
}

void EntryAttachments::nextPageHasItsOwnFolder()
{
    const Library library;
    for (const QString &title : {QStringLiteral("Uno"), QStringLiteral("Due")}) {
        EntryPage::openNew(*library.window);
        EntryPage::type(*library.window, Titolo, title);
        attachPdf(*library.window, Scheda, library.pdf());
        EntryPage::save(*library.window);
    }
    QCOMPARE(library.folders(),
             (QStringList{QStringLiteral("libri_Due"), QStringLiteral("libri_Uno")}));
}

void EntryAttachments::failedCopyShowsNoBox_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("title");
    QTest::newRow("the record's folder is a file") << "TABLES_DOC/libri_Nuovo"
                                                   << "Nuovo";
    QTest::newRow("the folder's name is too long") << QString() << QString(300, QLatin1Char('x'));
}

void EntryAttachments::failedCopyShowsNoBox()
{
    QFETCH(QString, obstacle);
    QFETCH(QString, title);
    const Library library;
    if (!obstacle.isEmpty()) {
        library.here.write(obstacle, "a file");
    }
    EntryPage::openNew(*library.window);
    EntryPage::enter(*library.window, Titolo, title);
    attachPicture(*library.window, Foto, library.picture());
    attachPdf(*library.window, Scheda, library.pdf());
    QVERIFY(isMarkedMissing(*library.window, Foto));
    QVERIFY(isMarkedMissing(*library.window, Scheda));
    const ModalResponder noBox;
    EntryPage::save(*library.window);
    QVERIFY(!EntryPage::isOpen(*library.window));
    QCOMPARE(
        library.here.value(library.database, QStringLiteral("SELECT NPDFFORMAT_Scheda FROM libri "
                                                            "WHERE RINTEGERFORMAT_Id = 8")),
        QVariant(QStringLiteral("TABLES_DOC/libri_%1/scheda.pdf").arg(title)));
    QCOMPARE(noBox.boxes().size(), 0);
}

void EntryAttachments::vanishedPictureShowsNoBox()
{
    const Library library;
    EntryPage::openEdit(*library.window);
    const ImageBox &box = openPictureDialog(*library.window, Foto);
    ModalResponder responder;
    responder.chooseFile(library.picture());
    Window::click(box, "pbAddReplace");
    QVERIFY(QFile::remove(library.picture()));
    pressInDialog(box, QDialogButtonBox::Ok);
    QVERIFY(isMarkedMissing(*library.window, Foto));
    EntryPage::save(*library.window);
    QVERIFY(!EntryPage::isOpen(*library.window));
    QCOMPARE(responder.boxes().size(), 0);
    QVERIFY(!library.here.exists(QStringLiteral("TABLES_DOC/libri_Zeno/cover.png")));
}

void EntryAttachments::folderOutsideIsNotWritten()
{
    const Library library(Books + QStringList{QStringLiteral(
                                      "UPDATE libri SET NLONGSTRINGFORMAT_UserPath = '../fuori'")});
    const QStringList before = library.rows(QStringLiteral("libri"));
    EntryPage::openEdit(*library.window);
    attachPicture(*library.window, Foto, library.picture());
    attachPdf(*library.window, Scheda, library.pdf());
    const ModalResponder noBox;
    EntryPage::save(*library.window);
    QCOMPARE(library.rows(QStringLiteral("libri")), before);
    QVERIFY(!library.here.exists(QStringLiteral("../fuori")));
    QCOMPARE(noBox.boxes().size(), 0);
}

QTEST_MAIN(EntryAttachments)
#include "ui_entryattachments.moc"
