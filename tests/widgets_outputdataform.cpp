// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One field of a record: what each format shows, and what each button does.
#include "tests/support/UrlCatcher.h"
#include "widgets/outputDataForm.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtTest>

#include <sys/stat.h>

namespace
{

const QString Markup = QStringLiteral("<img src=\"/dev/zero\"><b>A & B</b>");

/// Everything that a format may show, in the order of the form.
const QStringList Parts = {
    QStringLiteral("leData"),     QStringLiteral("cbData"), QStringLiteral("lbUrl"),
    QStringLiteral("imageFrame"), QStringLiteral("pbMail"), QStringLiteral("pbSubTable"),
    QStringLiteral("pbXView"),    QStringLiteral("pbLink"), QStringLiteral("pbViewPdf")};

template<typename Kind>
Kind *part(const outputDataForm &form, const QString &name)
{
    return form.findChild<Kind *>(name);
}

QLineEdit *data(const outputDataForm &form)
{
    return part<QLineEdit>(form, "leData");
}
QLabel *label(const outputDataForm &form, const QString &name)
{
    return part<QLabel>(form, name);
}
QPushButton *button(const outputDataForm &form, const QString &name)
{
    return part<QPushButton>(form, name);
}

QStringList shownParts(const outputDataForm &form)
{
    QStringList shown;
    for (const QString &name : Parts) {
        if (!part<QWidget>(form, name)->isHidden()) {
            shown.append(name);
        }
    }
    return shown;
}

/// The picture of the preview.
QPixmap preview(const outputDataForm &form)
{
    return label(form, "lbImage")->pixmap(Qt::ReturnByValue);
}

} // namespace

class TestOutputDataForm : public QObject
{
    Q_OBJECT

private:
    QString base() const { return directory.path() + QLatin1String("/db/"); }

    void picture(const QString &name, int width, int height) const
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(base() + name));
    }

    QTemporaryDir directory;

private slots:
    void initTestCase();
    void startsWithNothingShown();
    void signalsAndSlotsAreInterface();
    void titlesLoseTheirMarker_data();
    void titlesLoseTheirMarker();
    void titlesCanBeHidden();
    void formatsShowTheirParts_data();
    void formatsShowTheirParts();
    void textsAreShownAsTheyAre_data();
    void textsAreShownAsTheyAre();
    void valuesStartAtTheirBeginning();
    void yesAndNo_data();
    void yesAndNo();
    void yesAndNoCannotBeToggled();
    void aSecondValueReplacesTheFirst();
    void longTextsOfSeveralLinesCanBeRead();
    void addressesBecomeLinks_data();
    void addressesBecomeLinks();
    void theLinkButtonIsShownAndHidden();
    void theGoButtonSurvivesTheValue();
    void previewSizes_data();
    void previewSizes();
    void previewsComeFromTheBaseFolder();
    void previewsOfNothingAreEmpty_data();
    void previewsOfNothingAreEmpty();
    void previewsCanBeHidden();
    void filesAreHandedToTheDesktop_data();
    void filesAreHandedToTheDesktop();
    void filesThatMayNotBeOpened_data();
    void filesThatMayNotBeOpened();
    void mailIsHandedToTheDesktop_data();
    void mailIsHandedToTheDesktop();
    void webAddressesAreHandedToTheDesktop_data();
    void webAddressesAreHandedToTheDesktop();
    void aClickOnTheLinkOpensItOnce();
    void goToTheLinkedRecord();
    void openTheSubTable_data();
    void openTheSubTable();
    void listTheRecordsThatRefer();
    void everyButtonSignalsOnce();
    void aReceiverMayDeleteTheForm();
    void markupIsNeverRendered();
    void labelsOfAPageStandInOneColumn();
    void labelsThatDoNotFitHaveATip();
    void labelsAndValuesShareTheirFirstLine();
    void controlsAreNamedForScreenReaders();
    void theLabelBelongsToTheShownEditor();
};

void TestOutputDataForm::initTestCase()
{
    QVERIFY(QDir().mkpath(base() + "img/a"));
    picture("img/a/b.png", 300, 100);
}

void TestOutputDataForm::startsWithNothingShown()
{
    const outputDataForm form;
    QCOMPARE(shownParts(form), QStringList());
    QVERIFY(!label(form, "lbTitle")->isHidden());
    QVERIFY(!part<QFrame>(form, "line")->isHidden());
    QCOMPARE(label(form, "lbTitle")->text(), QString("Title"));
    QCOMPARE(part<QCheckBox>(form, "cbData")->text(), QString("CheckBox"));
    QCOMPARE(label(form, "lbUrl")->text(), QString("URL"));
    QVERIFY(data(form)->isReadOnly());

    const QList<QStringList> texts = {
        {"pbXView", "VAI", "Vai al Record"},           {"pbMail", " Send Mail", ""},
        {"pbSubTable", "Apri", "Apri la tabella"},     {"pbLink", "Trova", "Trova Records"},
        {"pbViewPdf", "Visualizza", "Visualizza Pdf"}, {"pbViewImage", "", "Visualizza Immagine"}};
    for (const QStringList &expected : texts) {
        QCOMPARE(button(form, expected.at(0))->text(), expected.at(1));
        QCOMPARE(button(form, expected.at(0))->toolTip(), expected.at(2));
        QVERIFY(!button(form, expected.at(0))->autoDefault());
    }
    const auto *frame = part<QFrame>(form, "imageFrame");
    QVERIFY(frame->isAncestorOf(label(form, "lbImage")));
    QVERIFY(frame->isAncestorOf(button(form, "pbViewImage")));
}

void TestOutputDataForm::signalsAndSlotsAreInterface()
{
    const QMetaObject &meta = outputDataForm::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QByteArray names = meta.method(i).parameterNames().join(',');
        methods.append(QString::fromLatin1(meta.method(i).methodSignature() + ' ' + names));
    }
    const QStringList expected = {"goToList(QString,int) listName,Id",
                                  "goToSubList(QString) listName",
                                  "goToFilter(QString,int) listName,Id",
                                  "viewImageBox() ",
                                  "viewPdf() ",
                                  "goToX() ",
                                  "sendMail() ",
                                  "callSubTable() ",
                                  "linkActivated(QString) link",
                                  "callLink() "};
    QCOMPARE(methods, expected);
}

void TestOutputDataForm::titlesLoseTheirMarker_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a plain label stays") << "Titolo"
                                         << "Titolo";
    QTest::newRow("the marker is cut out") << "Note_XMLTYX_Extra"
                                           << "NoteExtra";
    QTest::newRow("a number stays") << "Prezzo_XMLTYX_2"
                                    << "Prezzo2";
    QTest::newRow("text after a second marker is lost") << "A_XMLTYX_2_XMLTYX_3"
                                                        << "A2";
    QTest::newRow("underscores stay") << "Lista_spesa"
                                      << "Lista_spesa";
    QTest::newRow("ampersands stay") << "Vendita & Affitto"
                                     << "Vendita & Affitto";
    QTest::newRow("markup stays text") << Markup << Markup;
    QTest::newRow("an empty label") << ""
                                    << "";
}

void TestOutputDataForm::titlesLoseTheirMarker()
{
    QFETCH(QString, title);
    outputDataForm form;
    form.setTitle(true, title);
    QTEST(label(form, "lbTitle")->text(), "shown");
    QVERIFY(!label(form, "lbTitle")->isHidden());
}

void TestOutputDataForm::titlesCanBeHidden()
{
    outputDataForm form;
    form.setTitle(false, "Titolo");
    QVERIFY(label(form, "lbTitle")->isHidden());
    form.setTitle(true, "Titolo");
    QVERIFY(!label(form, "lbTitle")->isHidden());
}

void TestOutputDataForm::formatsShowTheirParts_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("shown");
    const QStringList line = {"leData"};
    for (const char *format : {"STRING", "LONGSTRING", "MONEY", "DATE", "INTEGER", "REAL"}) {
        QTest::newRow(format) << format << line;
    }
    QTest::newRow("an unknown format") << "COLOUR" << line;
    QTest::newRow("an empty format") << "" << line;
    QTest::newRow("formats are compared exactly") << "bool" << line;
    QTest::newRow("the keyword is no format word") << "BOOLFORMAT" << line;
    QTest::newRow("BOOL") << "BOOL" << QStringList{"cbData"};
    QTest::newRow("IMAGE") << "IMAGE" << QStringList{"leData", "imageFrame"};
    QTest::newRow("PDF") << "PDF" << QStringList{"leData", "pbViewPdf"};
    QTest::newRow("MAIL") << "MAIL" << QStringList{"leData", "pbMail"};
    QTest::newRow("LINK") << "LINK" << QStringList{"pbLink"};
    QTest::newRow("URL") << "URL" << QStringList{"lbUrl"};
    QTest::newRow("SUBTABLE") << "SUBTABLE" << QStringList{"pbSubTable"};
}

void TestOutputDataForm::formatsShowTheirParts()
{
    QFETCH(QString, format);
    for (const char *value : {"valore", ""}) {
        outputDataForm form;
        form.setValue(format, value);
        QTEST(shownParts(form), "shown");
    }
}

void TestOutputDataForm::textsAreShownAsTheyAre_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *format, const QVariant &value,
                        const QString &shown) {
        QTest::newRow(name) << QString::fromLatin1(format) << value << shown;
    };
    row("a text", "STRING", " Il barone  rampante ", " Il barone  rampante ");
    row("markup", "STRING", Markup, Markup);
    row("a text with a line break", "STRING", "a\nb", "a\nb");
    row("a long text", "LONGSTRING", "Copia in buono stato.", "Copia in buono stato.");
    row("a long text of several lines", "LONGSTRING", "a\nb\n\nc", "a\nb\n\nc");
    row("a date as stored", "DATE", "2/1/2020", "2/1/2020");
    row("an integer as stored", "INTEGER", "007", "007");
    row("a number", "INTEGER", 263, "263");
    row("a real as stored", "REAL", "0.412000", "0.412000");
    row("money", "MONEY", 3, QString::fromUtf8("3.00€"));
    row("money from a text", "MONEY", "12.5", QString::fromUtf8("12.50€"));
    row("money is rounded", "MONEY", "0.126", QString::fromUtf8("0.13€"));
    row("money that is no number", "MONEY", "dodici", QString::fromUtf8("0.00€"));
    row("money without a value", "MONEY", QVariant(), QString::fromUtf8("0.00€"));
    row("a picture's file name", "IMAGE", "img/a/b.png", "b.png");
    row("a picture without folder", "IMAGE", "b.png", "b.png");
    row("a PDF's file name", "PDF", "TABLES_DOC/libri/scheda.pdf", "scheda.pdf");
    row("a PDF's folder without name", "PDF", "TABLES_DOC/", "");
    row("a mail address", "MAIL", "ordini@example.org", "ordini@example.org");
    row("an unknown format", "COLOUR", "rosso", "rosso");
}

void TestOutputDataForm::textsAreShownAsTheyAre()
{
    QFETCH(QString, format);
    QFETCH(QVariant, value);
    outputDataForm form;
    form.setBasePath(base());
    form.setValue(format, value);
    QTEST(data(form)->text(), "shown");
    QTEST(data(form)->toolTip(), "shown");
}

void TestOutputDataForm::valuesStartAtTheirBeginning()
{
    outputDataForm form;
    form.setValue("STRING", QString("parola ").repeated(10000));
    QCOMPARE(data(form)->cursorPosition(), 0);
    QCOMPARE(data(form)->text().size(), 70000);
    QVERIFY(!data(form)->hasFrame());
}

void TestOutputDataForm::yesAndNo_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("checked");
    QTest::newRow("TRUE is yes") << QVariant("TRUE") << true;
    QTest::newRow("true is yes") << QVariant("true") << true;
    QTest::newRow("1 is yes") << QVariant("1") << true;
    QTest::newRow("any other word is yes") << QVariant("forse") << true;
    QTest::newRow("a true value is yes") << QVariant(true) << true;
    QTest::newRow("FALSE is no") << QVariant("FALSE") << false;
    QTest::newRow("false is no") << QVariant("false") << false;
    QTest::newRow("0 is no") << QVariant("0") << false;
    QTest::newRow("nothing is no") << QVariant("") << false;
    QTest::newRow("no value is no") << QVariant() << false;
}

void TestOutputDataForm::yesAndNo()
{
    QFETCH(QVariant, value);
    outputDataForm form;
    form.setValue("BOOL", value);
    QTEST(part<QCheckBox>(form, "cbData")->isChecked(), "checked");
    QCOMPARE(part<QCheckBox>(form, "cbData")->text(), QString());
}

void TestOutputDataForm::yesAndNoCannotBeToggled()
{
    outputDataForm form;
    form.setValue("BOOL", "TRUE");
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto *box = part<QCheckBox>(form, "cbData");
    QVERIFY(box->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(box->focusPolicy(), Qt::NoFocus);
    QVERIFY(box->isEnabled());
    const QPoint place = box->mapTo(&form, QPoint(8, box->height() / 2));
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, {}, place);
    QVERIFY(box->isChecked());
}

void TestOutputDataForm::aSecondValueReplacesTheFirst()
{
    outputDataForm form;
    form.setValue("MAIL", "a@example.org");
    form.setValue("BOOL", "TRUE");
    QCOMPARE(shownParts(form), QStringList{"cbData"});
    form.setValue("LONGSTRING", "prima\nseconda");
    form.setValue("STRING", "sola");
    QCOMPARE(shownParts(form), QStringList{"leData"});
    QVERIFY(form.findChild<QPlainTextEdit *>() == nullptr);
    QCOMPARE(data(form)->text(), QString("sola"));
    form.setValue("LINK", "3 Calvino");
    QCOMPARE(shownParts(form), QStringList{"pbLink"});
    form.setValue("URL", "example.org");
    QCOMPARE(shownParts(form), QStringList{"lbUrl"});
}

void TestOutputDataForm::longTextsOfSeveralLinesCanBeRead()
{
    QWidget page;
    page.resize(500, 700);
    auto *layout = new QVBoxLayout(&page);
    auto *several = new outputDataForm;
    several->setValue("LONGSTRING", "prima\nseconda\nterza\nquarta");
    auto *one = new outputDataForm;
    one->setValue("LONGSTRING", "una riga sola");
    auto *wrapped = new outputDataForm;
    wrapped->setValue("LONGSTRING", QString("parola ").repeated(60));
    layout->addWidget(several);
    layout->addWidget(one);
    layout->addWidget(wrapped);
    layout->addStretch();
    page.show();
    QCoreApplication::processEvents();

    QVERIFY(data(*several)->isVisible());
    QCOMPARE(several->findChild<QPlainTextEdit *>()->toPlainText(),
             QString("prima\nseconda\nterza\nquarta"));
    const int lineHeight = data(*one)->fontMetrics().height();
    QVERIFY(one->findChild<QPlainTextEdit *>() == nullptr);
    QVERIFY(data(*several)->height() >= 4 * lineHeight);
    QVERIFY(data(*one)->height() < 3 * lineHeight);
    QVERIFY(data(*wrapped)->height() >= 5 * lineHeight);
    QCOMPARE(data(*wrapped)->height(), data(*wrapped)->heightForWidth(data(*wrapped)->width()));
}

void TestOutputDataForm::addressesBecomeLinks_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("an address") << "http://example.org/a?b=1&c=2"
                                << "<a href=\"http://example.org/a?b=1&c=2\">"
                                   "http://example.org/a?b=1&c=2</a>";
    QTest::newRow("signs of markup are escaped")
        << "a\"><img src=x>"
        << "<a href=\"a&quot;&gt;&lt;img src=x&gt;\">a&quot;&gt;&lt;img src=x&gt;</a>";
    QTest::newRow("no address") << ""
                                << "<a href=\"\"></a>";
}

void TestOutputDataForm::addressesBecomeLinks()
{
    QFETCH(QString, value);
    outputDataForm form;
    form.setValue("URL", value);
    const QLabel *url = label(form, "lbUrl");
    QTEST(url->text(), "shown");
    QCOMPARE(url->toolTip(), value);
    QCOMPARE(url->textInteractionFlags(), Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse |
                                              Qt::LinksAccessibleByKeyboard);
    QVERIFY(!url->openExternalLinks());
}

void TestOutputDataForm::theLinkButtonIsShownAndHidden()
{
    outputDataForm form;
    form.setLinkButtonVisible(true);
    QCOMPARE(shownParts(form), QStringList{"pbLink"});
    form.setLinkButtonVisible(false);
    QCOMPARE(shownParts(form), QStringList());
    form.setLinkButtonVisible(true);
    form.setValue("STRING", "valore");
    QCOMPARE(shownParts(form), QStringList{"leData"});
}

void TestOutputDataForm::theGoButtonSurvivesTheValue()
{
    outputDataForm form;
    form.setXViewVisible(true);
    form.setValue("STRING", "Italo Calvino");
    QCOMPARE(shownParts(form), (QStringList{"leData", "pbXView"}));
    form.setXViewVisible(false);
    QCOMPARE(shownParts(form), QStringList{"leData"});
}

void TestOutputDataForm::previewSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shown");
    QTest::newRow("wide") << QSize(300, 100) << QSize(120, 40);
    QTest::newRow("high") << QSize(100, 300) << QSize(33, 100);
    QTest::newRow("square") << QSize(200, 200) << QSize(60, 60);
    QTest::newRow("small") << QSize(6, 3) << QSize(120, 60);
}

void TestOutputDataForm::previewSizes()
{
    QFETCH(QSize, size);
    picture("size.png", size.width(), size.height());
    outputDataForm form;
    form.setBasePath(base());
    form.setValue("IMAGE", "size.png");
    QTEST(preview(form).size(), "shown");
}

void TestOutputDataForm::previewsComeFromTheBaseFolder()
{
    outputDataForm form;
    form.setBasePath(base());
    form.setValue("IMAGE", "img/a/b.png");
    QCOMPARE(data(form)->text(), QString("b.png"));
    QCOMPARE(preview(form).size(), QSize(120, 40));
    const QLabel *image = label(form, "lbImage");
    QCOMPARE(image->toolTip(), QString("img/a/b.png"));
    QCOMPARE(image->minimumSize(), QSize(60, 100));
    QCOMPARE(image->maximumSize(), QSize(120, 100));

    // The preview takes the path as it is, unlike the hand-off to the desktop.
    picture(QString::fromUtf8("però.png"), 30, 10);
    form.setValue("IMAGE", QString::fromUtf8("però.png"));
    QCOMPARE(preview(form).size(), QSize(120, 40));
}

void TestOutputDataForm::previewsOfNothingAreEmpty_data()
{
    QTest::addColumn<QString>("path");
    picture("../outside.png", 30, 10);
    QVERIFY(QFile::link(directory.filePath("outside.png"), base() + "link.png"));
    QCOMPARE(mkfifo(QFile::encodeName(base() + "fifo.png").constData(), 0600), 0);
    QFile text(base() + "text.png");
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
    QTest::newRow("no path") << "";
    QTest::newRow("a missing file") << "img/missing.png";
    QTest::newRow("a folder") << "img";
    QTest::newRow("a text") << "text.png";
    QTest::newRow("a FIFO") << "fifo.png";
    QTest::newRow("a file above the folder") << "../outside.png";
    QTest::newRow("a way round to above the folder") << "img/../../outside.png";
    QTest::newRow("a link to outside") << "link.png";
    QTest::newRow("an absolute path") << "/dev/zero";
}

void TestOutputDataForm::previewsOfNothingAreEmpty()
{
    QFETCH(QString, path);
    outputDataForm form;
    form.setBasePath(base());
    form.setValue("IMAGE", path);
    QVERIFY(preview(form).isNull());
    QVERIFY(!part<QFrame>(form, "imageFrame")->isHidden());
    QCOMPARE(label(form, "lbImage")->toolTip(), path);
}

void TestOutputDataForm::previewsCanBeHidden()
{
    outputDataForm form;
    form.setBasePath(base());
    form.setImagePreview(true, "img/a/b.png");
    QCOMPARE(shownParts(form), QStringList{"imageFrame"});
    QCOMPARE(preview(form).size(), QSize(120, 40));
    form.setImagePreview(false, "img/a/b.png");
    QCOMPARE(shownParts(form), QStringList());
}

void TestOutputDataForm::filesAreHandedToTheDesktop_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("buttonName");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("opened");
    const QString image = "pbViewImage";
    const QString pdf = "pbViewPdf";
    QTest::newRow("a picture") << "IMAGE" << image << "img/a/b.png"
                               << "img/a/b.png";
    QTest::newRow("a PDF") << "PDF" << pdf << "docs/scheda.pdf"
                           << "docs/scheda.pdf";
    QTest::newRow("blanks and signs") << "PDF" << pdf << "docs/a b#c?d%20.pdf"
                                      << "docs/a b#c?d%20.pdf";
    QTest::newRow("letters beyond ASCII are read as Latin-1")
        << "PDF" << pdf << QString::fromUtf8("docs/però.pdf")
        << QString::fromUtf8("docs/perÃ².pdf");
    QTest::newRow("a picture's name too")
        << "IMAGE" << image << QString::fromUtf8("però.png") << QString::fromUtf8("perÃ².png");
}

void TestOutputDataForm::filesAreHandedToTheDesktop()
{
    QFETCH(QString, format);
    QFETCH(QString, buttonName);
    QFETCH(QString, stored);
    QFETCH(QString, opened);
    UrlCatcher catcher;
    outputDataForm form;
    form.setBasePath(base());
    form.setValue(format, stored);
    button(form, buttonName)->click();
    QCOMPARE(catcher.urls(), QList<QUrl>{QUrl::fromLocalFile(base() + opened)});
}

void TestOutputDataForm::filesThatMayNotBeOpened_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("no path") << "";
    QTest::newRow("above the folder") << "../outside.png";
    QTest::newRow("round about above the folder") << "img/../../outside.png";
    QTest::newRow("absolute") << "/etc/passwd";
    QTest::newRow("a link to outside") << "link.png";
    QTest::newRow("a program") << "img/setup.EXE";
    QTest::newRow("a launcher") << "img/a.desktop";
    QTest::newRow("a script") << "img/a.sh";
}

void TestOutputDataForm::filesThatMayNotBeOpened()
{
    QFETCH(QString, stored);
    UrlCatcher catcher;
    outputDataForm form;
    form.setBasePath(base());
    form.setValue("PDF", stored);
    form.viewPdf();
    form.setValue("IMAGE", stored);
    form.viewImageBox();
    QCOMPARE(catcher.urls(), QList<QUrl>());
}

void TestOutputDataForm::mailIsHandedToTheDesktop_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("opened");
    QTest::newRow("an address") << "a@example.org" << QStringList{"mailto:a@example.org"};
    QTest::newRow("letters beyond ASCII are read as Latin-1")
        << QString::fromUtf8("però@example.org")
        << QStringList{QString::fromUtf8("mailto:perÃ²@example.org")};
    QTest::newRow("no address") << "" << QStringList();
    QTest::newRow("an option") << "--attach=/etc/passwd" << QStringList();
}

void TestOutputDataForm::mailIsHandedToTheDesktop()
{
    QFETCH(QString, address);
    QFETCH(QStringList, opened);
    UrlCatcher catcher;
    outputDataForm form;
    form.setValue("MAIL", address);
    button(form, "pbMail")->click();
    QStringList texts;
    for (const QUrl &url : catcher.urls()) {
        texts.append(url.toString());
    }
    QCOMPARE(texts, opened);
}

void TestOutputDataForm::webAddressesAreHandedToTheDesktop_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QList<QUrl>>("opened");
    const auto row = [](const char *name, const char *address, const QList<QUrl> &opened) {
        QTest::newRow(name) << QString::fromLatin1(address) << opened;
    };
    row("http", "http://example.org/a?b=1", {QUrl("http://example.org/a?b=1")});
    row("https", "https://example.org", {QUrl("https://example.org")});
    row("ftp", "ftp://example.org/a", {QUrl("ftp://example.org/a")});
    row("without a scheme", "www.example.org", {QUrl("http://www.example.org")});
    row("a script", "javascript:alert(1)", {});
    row("a local file", "file:///etc/passwd", {});
    row("a path", "/etc/passwd", {});
    row("data", "data:text/html,<b>x</b>", {});
    row("an option", "-version", {});
    row("nothing", "", {});
}

void TestOutputDataForm::webAddressesAreHandedToTheDesktop()
{
    QFETCH(QString, address);
    UrlCatcher catcher;
    outputDataForm form;
    form.setValue("URL", address);
    form.linkActivated(address);
    QTEST(catcher.urls(), "opened");
}

void TestOutputDataForm::aClickOnTheLinkOpensItOnce()
{
    UrlCatcher catcher;
    outputDataForm form;
    form.resize(600, 60);
    form.setValue("URL", "https://example.org/a?b=1&c=2");
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QLabel *url = label(form, "lbUrl");
    QTest::mouseClick(url, Qt::LeftButton, {}, QPoint(20, url->height() / 2));
    QCOMPARE(catcher.urls(), QList<QUrl>{QUrl("https://example.org/a?b=1&c=2")});
}

void TestOutputDataForm::goToTheLinkedRecord()
{
    outputDataForm form;
    form.setLinkTarget("HIDDENTABLE_Autori", 12);
    form.setXViewVisible(true);
    QSignalSpy spy(&form, &outputDataForm::goToList);
    button(form, "pbXView")->click();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), (QVariantList{"HIDDENTABLE_Autori", 12}));
}

void TestOutputDataForm::openTheSubTable_data()
{
    QTest::addColumn<QString>("owner");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks become underscores")
        << "Spese"
        << "Lista spesa"
        << "Casa 1"
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX_Casa_1";
    QTest::newRow("white space is simplified first")
        << "Spese"
        << "Lista  spesa"
        << " Casa \t 1 "
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX__Casa_1";
    QTest::newRow("the label as shown counts")
        << "Spese"
        << "Lista_XMLTYX_2"
        << "Casa"
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista2_XSBTUSRX_Casa";
    QTest::newRow("per cent signs and quotes stay")
        << "Spese"
        << "100%s"
        << "l'altra"
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_100%s_XSBTUSRX_l'altra";
}

void TestOutputDataForm::openTheSubTable()
{
    QFETCH(QString, owner);
    QFETCH(QString, title);
    QFETCH(QString, record);
    QFETCH(QString, name);
    outputDataForm form;
    form.setOwnerTable(owner);
    form.setRecordTitle(record);
    form.setTitle(true, title);
    form.setValue("SUBTABLE", "");
    QSignalSpy spy(&form, &outputDataForm::goToSubList);
    button(form, "pbSubTable")->click();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), QVariantList{name});
}

void TestOutputDataForm::listTheRecordsThatRefer()
{
    outputDataForm form;
    form.setRecordId(7);
    form.setValue("LINK", "12 Rossi <b>Mario</b>");
    QSignalSpy spy(&form, &outputDataForm::goToFilter);
    button(form, "pbLink")->click();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), (QVariantList{"12 Rossi <b>Mario</b>", 7}));
}

void TestOutputDataForm::everyButtonSignalsOnce()
{
    UrlCatcher catcher;
    outputDataForm form;
    QSignalSpy list(&form, &outputDataForm::goToList);
    QSignalSpy subList(&form, &outputDataForm::goToSubList);
    QSignalSpy filter(&form, &outputDataForm::goToFilter);
    const auto signalCount = [&]() { return list.count() + subList.count() + filter.count(); };
    for (const char *name : {"pbXView", "pbSubTable", "pbLink"}) {
        const int before = signalCount();
        button(form, name)->click();
        QCOMPARE(signalCount(), before + 1);
    }
    for (const char *name : {"pbMail", "pbViewPdf", "pbViewImage"}) {
        button(form, name)->click();
        QCOMPARE(signalCount(), 3);
    }
    QVERIFY(catcher.urls().isEmpty());
}

void TestOutputDataForm::aReceiverMayDeleteTheForm()
{
    QPointer<outputDataForm> form;
    const auto remove = [&form]() { delete form; };
    const auto create = [&form, &remove, this]() {
        form = new outputDataForm;
        connect(form.data(), &outputDataForm::goToList, this, remove);
        connect(form.data(), &outputDataForm::goToSubList, this, remove);
        connect(form.data(), &outputDataForm::goToFilter, this, remove);
    };
    create();
    form->goToX();
    QVERIFY(form.isNull());
    create();
    form->callSubTable();
    QVERIFY(form.isNull());
    create();
    form->callLink();
    QVERIFY(form.isNull());
}

void TestOutputDataForm::markupIsNeverRendered()
{
    outputDataForm form;
    form.setTitle(true, Markup);
    form.setBasePath(base());
    const QStringList formats = {"STRING", "LONGSTRING", "IMAGE", "PDF",
                                 "MAIL",   "DATE",       "URL",   "COLOUR"};
    for (const QString &format : formats) {
        form.setValue(format, Markup);
        const QString tip =
            format == "URL" ? label(form, "lbUrl")->toolTip() : data(form)->toolTip();
        const bool isFile = format == "IMAGE" || format == "PDF";
        QCOMPARE(tip, isFile ? Markup.section('/', -1) : Markup);
    }
    QCOMPARE(label(form, "lbTitle")->textFormat(), Qt::PlainText);
    QVERIFY(!label(form, "lbUrl")->text().contains("<img"));
    QVERIFY(!label(form, "lbUrl")->text().contains("<b>"));
}

void TestOutputDataForm::labelsOfAPageStandInOneColumn()
{
    outputDataForm shortForm;
    outputDataForm longForm;
    outputDataForm longest;
    shortForm.setTitle(true, "Id");
    longForm.setTitle(true, "Data di acquisto");
    longest.setTitle(true, QString("parola ").repeated(30));
    QVERIFY(shortForm.labelWidthHint() < longForm.labelWidthHint());
    QVERIFY(longForm.labelWidthHint() < longest.labelWidthHint());
    QVERIFY(longest.labelWidthHint() < 300);
    const int text = longForm.fontMetrics().horizontalAdvance("Data di acquisto");
    QVERIFY(longForm.labelWidthHint() >= text);
    for (outputDataForm *form : {&shortForm, &longForm, &longest}) {
        form->setLabelWidth(150);
        form->setValue("STRING", "valore");
        form->resize(500, 80);
        form->show();
        QCOMPARE(label(*form, "lbTitle")->width(), 150);
        QCOMPARE(data(*form)->mapTo(form, QPoint()).x(), 158);
    }
    QVERIFY(label(longest, "lbTitle")->height() > 2 * label(shortForm, "lbTitle")->height());
}

void TestOutputDataForm::labelsThatDoNotFitHaveATip()
{
    outputDataForm form;
    form.setLabelWidth(100);
    form.setTitle(true, "Parolalunghissimasenzaspazi");
    QCOMPARE(label(form, "lbTitle")->toolTip(), QString("Parolalunghissimasenzaspazi"));
    form.setLabelWidth(600);
    QCOMPARE(label(form, "lbTitle")->toolTip(), QString());
    QCOMPARE(label(form, "lbTitle")->text(), QString("Parolalunghissimasenzaspazi"));
}

void TestOutputDataForm::labelsAndValuesShareTheirFirstLine()
{
    outputDataForm form;
    form.setTitle(true, "Titolo");
    form.resize(500, 40);
    for (const char *format : {"STRING", "MAIL", "BOOL", "URL"}) {
        form.setValue(format, "valore");
        form.show();
        QCoreApplication::processEvents();
        const QLabel *title = label(form, "lbTitle");
        const int middle = title->mapTo(&form, title->rect().center()).y();
        const auto *shown = part<QWidget>(form, shownParts(form).first());
        QVERIFY(qAbs(shown->mapTo(&form, shown->rect().center()).y() - middle) <= 1);
        QVERIFY(title->height() >= form.fontMetrics().height());
    }
    QFont large = form.font();
    large.setPointSize(large.pointSize() * 3);
    const int before = data(form)->minimumHeight();
    form.setFont(large);
    QVERIFY(data(form)->minimumHeight() > before);
}

void TestOutputDataForm::controlsAreNamedForScreenReaders()
{
    outputDataForm form;
    form.setTitle(true, "Scheda_XMLTYX_2");
    form.setBasePath(base());
    form.setValue("URL", "https://example.org");
    QCOMPARE(data(form)->accessibleName(), QString("Scheda2"));
    QCOMPARE(part<QCheckBox>(form, "cbData")->accessibleName(), QString("Scheda2"));
    QCOMPARE(label(form, "lbUrl")->accessibleName(), QString("Scheda2 https://example.org"));
    QCOMPARE(button(form, "pbMail")->accessibleName(), QString("Scheda2 Send Mail"));
    QCOMPARE(button(form, "pbViewPdf")->accessibleName(), QString("Scheda2 Visualizza"));
    QCOMPARE(button(form, "pbSubTable")->accessibleName(), QString("Scheda2 Apri"));
    QCOMPARE(button(form, "pbLink")->accessibleName(), QString("Scheda2 Trova"));
    QCOMPARE(button(form, "pbXView")->accessibleName(), QString("Scheda2 VAI"));
    QCOMPARE(button(form, "pbViewImage")->accessibleName(), QString("Scheda2 Visualizza Immagine"));
    form.setTitle(true, "Altro");
    QCOMPARE(data(form)->accessibleName(), QString("Altro"));
}

void TestOutputDataForm::theLabelBelongsToTheShownEditor()
{
    const QList<QStringList> editors = {{"STRING", "leData"}, {"BOOL", "cbData"},
                                        {"URL", "lbUrl"},     {"SUBTABLE", "pbSubTable"},
                                        {"LINK", "pbLink"},   {"IMAGE", "leData"}};
    outputDataForm form;
    form.setTitle(true, "Titolo");
    for (const QStringList &expected : editors) {
        form.setValue(expected.at(0), "valore");
        QCOMPARE(label(form, "lbTitle")->buddy()->objectName(), expected.at(1));
    }
    // With a buddy, Qt would take the sign away and make a shortcut of it.
    form.setTitle(true, "Vendita & Affitto");
    QVERIFY(label(form, "lbTitle")->buddy() == nullptr);
}

QTEST_MAIN(TestOutputDataForm)
#include "widgets_outputdataform.moc"
