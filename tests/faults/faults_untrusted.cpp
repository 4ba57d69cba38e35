// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What somebody else has put into a database: pictures, paths, addresses and markup. Nothing
// outside is opened, nothing is rendered, nothing freezes.
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/PngFile.h"
#include "tests/support/UrlCatcher.h"
#include "widgets/ImageBox.h"

#include <QBuffer>
#include <QDialogButtonBox>
#include <QDir>
#include <QHelpEvent>
#include <QPointer>
#include <QRandomGenerator>
#include <QToolTip>

#include <sys/stat.h>

namespace
{

const QString Database = QStringLiteral("casa/books.db");

// Were it rendered, the window would open the pipe and wait for ever.
const QString Markup = QStringLiteral("<img src='pipe'><b>&x</b>&amp;<a href='file:///'>y</a>");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString sqlName(QString name)
{
    return QLatin1Char('"') + name.replace(QLatin1Char('"'), text("\"\"")) + QLatin1Char('"');
}

QString sqlText(QString value)
{
    return QLatin1Char('\'') + value.replace(QLatin1Char('\''), text("''")) + QLatin1Char('\'');
}

// A table with files and addresses, one record for each of these values.
QStringList library(const QStringList &values)
{
    QStringList statements = {
        text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
             "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text,NURLFORMAT_Sito text,"
             "NMAILFORMAT_Posta text,NLONGSTRINGFORMAT_UserPath text)"),
        text("CREATE TABLE altri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text)")};
    for (int i = 0; i < values.size(); ++i) {
        statements.append(text("INSERT INTO libri VALUES (%1,'t%1',%2,%2,%2,%2,'TABLES_DOC/x')")
                              .arg(QString::number(i + 1), sqlText(values.at(i))));
    }
    return statements;
}

// Presses everything on the shown record that hands something on.
int openEverything(const QWidget &window)
{
    int pressed = 0;
    for (const outputDataForm *const form : Window::fields(window)) {
        for (const char *const name : {"pbViewImage", "pbViewPdf", "pbMail"}) {
            if (Window::offers(*form, name)) {
                Window::get<QPushButton>(*form, name)->click();
                ++pressed;
            }
        }
        const auto *const address = Window::get<QLabel>(*form, "lbUrl");
        if (!address->isHidden()) {
            const QString shown = address->text();
            if (shown.count(QLatin1Char('<')) != 2) {
                qFatal("an address is rendered: %s", qPrintable(shown));
            }
            emit const_cast<QLabel *>(address)->linkActivated(
                shown.section(QLatin1Char('"'), 1, 1));
            ++pressed;
        }
    }
    return pressed;
}

// Opens the entry page of the record shown, every picture's dialog on it, and leaves again.
void lookAtEditors(const QWidget &window)
{
    EntryPage::openEdit(window);
    for (inputDataForm *const form : EntryPage::editors(window)) {
        auto *const button = Window::get<QPushButton>(*form, "pbViewImage");
        if (!button->isHidden()) {
            button->click();
            for (ImageBox *const box : form->findChildren<ImageBox *>()) {
                box->reject();
            }
        }
    }
    Window::click(window, "pbCancelEdit");
    EntryPage::forgetOldPages();
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// Small files that say to be huge, of every format that the toolkit reads.
QVector<QByteArray> pictureBombs()
{
    const QByteArray huge = "100000";
    QVector<QByteArray> files;
    for (const quint32 side : {0U, 10001U, 30000U, 65535U, 0x7fffffffU, 0xffffffffU}) {
        files.append(pngOfSize(side, side));
        files.append("BM" + littleEndian(1000) + littleEndian(0) + littleEndian(54) +
                     littleEndian(40) + littleEndian(side) + littleEndian(side) +
                     QByteArray("\x01\0\x18\0", 4) + QByteArray(24, '\0') + QByteArray(100, 'x'));
    }
    files.append(QByteArray("GIF89a\xff\xff\xff\xff\x80\0\0\0\0\0\xff\xff\xff,", 20) +
                 QByteArray("\0\0\0\0\xff\xff\xff\xff\0\x02\x02L\x01\0;", 15));
    files.append(
        QByteArray("\xff\xd8\xff\xc0\0\x11\x08\xff\xff\xff\xff\x03\x01\x11\0\x02\x11\0", 19) +
        QByteArray("\x03\x11\0\xff\xda\0\x0c\x03\x01\0\x02\0\x03\0\0\x3f\0", 17));
    for (const char *const kind : {"P1", "P2", "P3", "P4", "P5", "P6"}) {
        files.append(QByteArray(kind) + '\n' + huge + ' ' + huge + "\n255\n" + QByteArray(50, '1'));
    }
    files.append("#define x_width " + huge + "\n#define x_height " + huge +
                 "\nstatic char x_bits[] = { 0x00 };\n");
    files.append("/* XPM */\nstatic char *x[] = {\"" + huge + ' ' + huge +
                 " 1 1\",\"a c #000000\",\"aaaa\"};\n");
    files.append("<svg xmlns='http://www.w3.org/2000/svg' width='" + huge + "' height='" + huge +
                 "'><rect width='1' height='1'/><image href='pipe'/></svg>");
    files.append(QByteArray("\0\0\x01\0\x01\0\0\0\0\0\x01\0\x20\0\xff\xff\xff\x7f\x16\0\0\0", 22));
    return files;
}

// A small picture with some of its bytes changed.
QByteArray damagedPicture(QRandomGenerator &random)
{
    static const QList<QByteArray> formats = {"PNG", "BMP", "JPG", "PPM", "XPM", "XBM"};
    QImage picture(16, 12, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, formats.at(random.bounded(formats.size())).constData());
    for (int changes = random.bounded(6); changes > 0 && !bytes.isEmpty(); --changes) {
        bytes[random.bounded(bytes.size())] = char(random.bounded(256));
    }
    if (random.bounded(4) == 0) {
        bytes.truncate(random.bounded(bytes.size() + 1));
    }
    return bytes;
}

// Paths that lead out, to devices, or to what a desktop would run.
QStringList badPaths(const Workspace &here)
{
    QStringList paths =
        text("/etc/passwd|//etc/passwd|/dev/zero|/dev/random|/proc/self/mem|../fuori.pdf|"
             "TABLES_DOC/../../fuori.pdf|./../fuori.pdf|TABLES_DOC/..|..|.|/|//|TABLES_DOC/pipe|"
             "TABLES_DOC/device|TABLES_DOC/link.pdf|TABLES_DOC/folder/passwd|:/listIcon|qrc:/"
             "listIcon|"
             "~/x.pdf|$HOME/x.pdf|-option|--help|TABLES_DOC/loop")
            .split(QLatin1Char('|'));
    const QString suffixes = text("desktop exe com bat cmd scr msi lnk ps1 hta js vbs jar sh "
                                  "appimage EXE Sh AppImage DESKTOP");
    for (const QString &suffix : suffixes.split(QLatin1Char(' '))) {
        here.write(text("casa/TABLES_DOC/a.") + suffix, "#!/bin/sh\n");
        paths.append(text("TABLES_DOC/a.") + suffix);
    }
    return paths;
}

void makeTraps(const Workspace &here)
{
    here.write(text("fuori.pdf"), "x");
    here.write(text("casa/TABLES_DOC/a.pdf"), "x");
    const QString folder = here.path(text("casa/TABLES_DOC/"));
    mkfifo(qPrintable(folder + text("pipe")), 0600);
    mkfifo(qPrintable(here.path(text("pipe"))), 0600);
    mkfifo(qPrintable(here.path(text("casa/pipe"))), 0600);
    QFile::link(text("/dev/zero"), folder + text("device"));
    QFile::link(here.path(text("fuori.pdf")), folder + text("link.pdf"));
    QFile::link(text("/etc"), folder + text("folder"));
    QFile::link(folder + text("loop"), folder + text("loop"));
}

// Addresses that no program may be started for.
QStringList badAddresses()
{
    return text("file:///etc/passwd|file://server/x|FILE:///etc/passwd|javascript:alert(1)|"
                "JavaScript:alert(1)|data:text/html,<b>x</b>|smb://server/x|sftp://x|ssh://x|"
                "ssh://-oProxyCommand=x|tel:1|about:blank|ldap://x|view-source:http://x|ms-msdt:/x|"
                "vbscript:x|nfs://x|dav://x|git://x|magnet:?x|qrc:/listIcon|x-man:ls|--help|-x|"
                "-option=http://x| --help|/etc/passwd|//server/x|../x|\\\\server\\x|:|://|http|"
                "javascript\n:alert(1)|java\tscript:alert(1)|\x01javascript:alert(1)")
        .split(QLatin1Char('|'));
}

// Widgets that would render what they show or take "&" for the mark of a key.
QStringList renderingWidgets()
{
    QStringList found;
    for (const QWidget *const widget : QApplication::allWidgets()) {
        if (const auto *const label = qobject_cast<const QLabel *>(widget)) {
            // An address is a link of which every sign that means something is written out.
            const bool isRendered =
                label->textFormat() != Qt::PlainText && label->text().contains(text("<img"));
            const bool hasKey = label->buddy() != nullptr && label->text().contains(text("pipe"));
            if (isRendered || hasKey) {
                found.append(text("label ") + label->objectName());
            }
        }
        const auto *const button = qobject_cast<const QAbstractButton *>(widget);
        if (button != nullptr && button->text().contains(text("pipe")) &&
            !button->shortcut().isEmpty()) {
            found.append(text("button ") + button->objectName());
        }
    }
    return found;
}

// Tool tips that come up as something else than plain text.
QStringList renderedTips(int *seen)
{
    QStringList found;
    QVector<QPointer<QWidget>> widgets;
    for (QWidget *const widget : QApplication::allWidgets()) {
        widgets.append(widget);
    }
    // The toolkit deletes the tips that were shown before.
    for (const QPointer<QWidget> &widget : qAsConst(widgets)) {
        if (widget && widget->isVisible() && widget->toolTip().contains(text("pipe"))) {
            ++*seen;
            QHelpEvent ask(QEvent::ToolTip, QPoint(1, 1), widget->mapToGlobal(QPoint(1, 1)));
            QCoreApplication::sendEvent(widget.data(), &ask);
            if (QToolTip::text().contains(text("<img"))) {
                found.append(text("tip of ") + widget->objectName());
            }
            QToolTip::hideText();
        }
    }
    return found;
}

// A database whose every name and value is markup.
QStringList markupLibrary()
{
    const QString table = sqlName(Markup);
    return {text("CREATE TABLE %1 (RINTEGERFORMAT_Id integer primary key,%2 text,%3 text,%4 "
                 "text,%5 text,%6 text,NURLFORMAT_u text,NMAILFORMAT_m text)")
                .arg(table, sqlName(text("RSTRINGFORMAT_") + Markup),
                     sqlName(text("NLONGSTRINGFORMAT_") + Markup),
                     sqlName(text("NMONEYFORMAT_") + Markup),
                     sqlName(text("NIMAGEFORMAT_") + Markup),
                     sqlName(text("NSUBTABLEFORMAT_") + Markup)),
            text("INSERT INTO %1 VALUES (1,%2,%2,%2,%2,%2,%2,%2)").arg(table, sqlText(Markup)),
            text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo "
                 "text,NLINKFORMAT_altri text,NSTRINGFORMAT_Nome text)"),
            text("INSERT INTO libri VALUES (1,%1,%1,%1)").arg(sqlText(Markup)),
            text("CREATE TABLE altri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome "
                 "text)"),
            text("INSERT INTO altri VALUES (1,%1)").arg(sqlText(Markup))};
}

} // namespace

class FaultsUntrusted : public QObject
{
    Q_OBJECT

private slots:
    void pictures();
    void paths();
    void addresses();
    void markup();
    void boxes();
    void cleanupTestCase();
};

void FaultsUntrusted::pictures()
{
    Campaign::Row row(text("pictures that say to be huge, damaged pictures, pipes and devices"));
    QRandomGenerator random(Campaign::start());
    QVector<QByteArray> files = pictureBombs();
    const int bombs = files.size();
    for (int i = Campaign::cases(12, 3000); i > 0; --i) {
        files.append(damagedPicture(random));
    }
    const UrlCatcher catcher;
    for (int first = 0; first < files.size(); first += 200) {
        const Workspace here;
        makeTraps(here);
        QStringList values;
        for (int i = first; i < qMin(first + 200, files.size()); ++i) {
            // The suffix tells the toolkit nothing that it believes.
            values.append(text("TABLES_DOC/f%1.png").arg(i));
            here.write(text("casa/") + values.last(), files.at(i));
        }
        values += {text("TABLES_DOC/pipe"), text("TABLES_DOC/device"), text("TABLES_DOC/folder"),
                   text("TABLES_DOC/loop")};
        here.sql(Database, library(values));
        here.remember(Database);
        const Tavenor window;
        Window::pressTable(window, text("libri"));
        const int lines = Window::lines(window).size();
        QCOMPARE(lines, values.size());
        for (int line = 0; line < lines; ++line) {
            Window::selectLine(window, line);
            QVERIFY(!Window::fields(window).isEmpty());
            row.ran();
            if (Campaign::isFull() || line % 4 == 0) {
                lookAtEditors(window);
            }
        }
    }
    QVERIFY(catcher.urls().isEmpty());
    row.remark(text("%1 of them huge").arg(bombs));
    QVERIFY(row.cases() >= files.size() + 4);
}

void FaultsUntrusted::paths()
{
    Campaign::Row row(text("stored paths that lead out or to what a desktop would run"));
    const Workspace here;
    makeTraps(here);
    const QStringList values = badPaths(here);
    here.sql(Database, library(values));
    here.remember(Database);
    const QStringList files = QDir(here.path(text("casa/TABLES_DOC"))).entryList();
    const UrlCatcher catcher;
    const Tavenor window;
    Window::pressTable(window, text("libri"));
    for (int line = 0; line < Window::lines(window).size(); ++line) {
        Window::selectLine(window, line);
        for (outputDataForm *const form : Window::fields(window)) {
            for (const char *const name : {"pbViewImage", "pbViewPdf"}) {
                if (Window::offers(*form, name)) {
                    Window::get<QPushButton>(*form, name)->click();
                    row.ran();
                }
            }
        }
        if (Campaign::isFull() || line % 8 == 0) {
            lookAtEditors(window);
        }
    }
    QVERIFY(row.cases() >= values.size());
    for (const QUrl &url : catcher.urls()) {
        const QString path = url.toLocalFile();
        QVERIFY2(url.isLocalFile() && path.startsWith(here.path(text("casa/"))) &&
                     !path.contains(text("..")) && !QFileInfo(path).exists(),
                 qPrintable(url.toString()));
    }
    QCOMPARE(QDir(here.path(text("casa/TABLES_DOC"))).entryList(), files);
}

void FaultsUntrusted::addresses()
{
    Campaign::Row row(text("addresses of schemes that are not opened, pressed"));
    const Workspace here;
    here.write(text("casa/keep"), "");
    const QStringList values = badAddresses();
    here.sql(Database, library(values));
    here.remember(Database);
    const UrlCatcher catcher;
    const Tavenor window;
    Window::pressTable(window, text("libri"));
    for (int line = 0; line < Window::lines(window).size(); ++line) {
        Window::selectLine(window, line);
        row.ran(openEverything(window));
    }
    QVERIFY(row.cases() >= values.size());
    const QStringList allowed = text("http https ftp mailto").split(QLatin1Char(' '));
    for (const QUrl &url : catcher.urls()) {
        const bool isInside =
            url.isLocalFile() && url.toLocalFile().startsWith(here.path(text("casa/")));
        QVERIFY2(allowed.contains(url.scheme()) || isInside, qPrintable(url.toString()));
    }
}

void FaultsUntrusted::markup()
{
    Campaign::Row row(text("looks at pages and tool tips full of markup"));
    const Workspace here;
    makeTraps(here);
    here.sql(Database, markupLibrary());
    here.remember(Database);
    const UrlCatcher catcher;
    Tavenor window;
    window.show();
    const ModalResponder responder;
    int tips = 0;
    const auto look = [&] {
        row.ran();
        window.grab();
        QStringList found = renderingWidgets() + renderedTips(&tips);
        for (const QWidget *const widget : QApplication::topLevelWidgets()) {
            if (Qt::mightBeRichText(widget->windowTitle())) {
                found.append(text("title ") + widget->windowTitle());
            }
        }
        return found.join(QLatin1Char(','));
    };
    for (const QString &table : {Markup, text("libri")}) {
        Window::pressTable(window, table);
        QCOMPARE(look(), QString());
        EntryPage::openEdit(window);
        QCOMPARE(look(), QString());
        Window::click(window, "pbCancelEdit");
        Window::click(window, "pbCalc");
        QCOMPARE(look(), QString());
        Window::click(window, "pbExitCalc");
        FilterPage::open(window);
        QCOMPARE(look(), QString());
        if (table != Markup) {
            FilterPage::enter(window, text("Nome"), Markup);
            FilterPage::save(window, Markup);
            Window::get<QAbstractButton>(window, "pbFiltersPage")->click();
        }
        QCOMPARE(look(), QString());
        Window::click(window, "pbCancelFilters");
        DesignerPage::openAdd(window);
        Window::get<QCheckBox>(*DesignerPage::rows(window).first(), "cbFromTable")
            ->setChecked(true);
        QCOMPARE(look(), QString());
        DesignerPage::cancel(window);
        EntryPage::forgetOldPages();
    }
    row.ran(tips);
    QVERIFY(tips > 0);
    QVERIFY(catcher.urls().isEmpty());
}

void FaultsUntrusted::boxes()
{
    Campaign::Row row(text("boxes that name markup"));
    const Workspace here;
    makeTraps(here);
    here.sql(Database, markupLibrary());
    here.remember(Database);
    Tavenor window;
    window.show();
    ModalResponder responder;
    responder.answerOthers(QMessageBox::No);
    Window::pressTable(window, Markup);
    Window::click(window, "pbDeleteUser");
    Window::action(window, "actionRemove_Table")->trigger();
    Window::action(window, "actionClear_Selected_List")->trigger();
    responder.answerOthers(QMessageBox::Ok);
    DesignerPage::openNew(window);
    DesignerPage::typeName(window, Markup);
    DesignerPage::add(window, text("STRING"), Markup);
    DesignerPage::accept(window);
    DesignerPage::cancel(window);
    here.write(text("x.xmf"), Markup.toUtf8() + "\nx###1###\n");
    here.write(text("y.tsc"), "\n" + Markup.toUtf8() + "###text\n");
    responder.chooseFile(here.path(text("x.xmf")));
    Window::action(window, "actionImport_From_File_Export_Manager_File")->trigger();
    responder.chooseFile(here.path(text("y.tsc")));
    Window::action(window, "actionImport_Table_Structure")->trigger();
    FilterPage::acceptName(Markup);
    int withMarkup = 0;
    for (const ModalResponder::Box &box : responder.boxes()) {
        QCOMPARE(box.textFormat, Qt::PlainText);
        row.ran();
        withMarkup += box.text.contains(Markup) ? 1 : 0;
    }
    QVERIFY(withMarkup >= 3);
}

void FaultsUntrusted::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(FaultsUntrusted)
#include "faults_untrusted.moc"
