// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of attachment folders and of which stored paths may be followed.
#include "model/attachments.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class TestAttachments : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void documentPath_data();
    void documentPath();
    void recordFolder_data();
    void recordFolder();
    void fileName_data();
    void fileName();
    void insideByItsText_data();
    void insideByItsText();
    void anEmptyBaseIsTheCurrentFolder();
    void aBaseThatDoesNotExistYetHoldsFiles();
    void theBaseMayBeReachedThroughALink();
    void links_data();
    void links();
    void mayBeOpened_data();
    void mayBeOpened();
    void neitherSideOfALinkMayBeRunnable();

private:
    void makeFile(const QString &path);
    void makeLink(const QString &target, const QString &path);

    QScopedPointer<QTemporaryDir> folder; ///< Holds "db", the database's folder, and "other".
    QString base;
    QString startFolder;
};

void TestAttachments::init()
{
    startFolder = QDir::currentPath();
    folder.reset(new QTemporaryDir);
    QVERIFY(folder->isValid());
    base = folder->filePath(QStringLiteral("db/"));
    QVERIFY(QDir().mkpath(base + QStringLiteral("TABLES_DOC/libri")));
    QVERIFY(QDir().mkpath(folder->filePath(QStringLiteral("db2"))));
    QVERIFY(QDir().mkpath(folder->filePath(QStringLiteral("other"))));
    makeFile(base + QStringLiteral("TABLES_DOC/libri/a.png"));
    makeFile(folder->filePath(QStringLiteral("other/secret.png")));
    makeFile(folder->filePath(QStringLiteral("db2/secret.png")));
}

void TestAttachments::cleanup()
{
    QVERIFY(QDir::setCurrent(startFolder));
    folder.reset();
}

void TestAttachments::makeFile(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void TestAttachments::makeLink(const QString &target, const QString &path)
{
    QVERIFY(QFile::link(target, path));
}

void TestAttachments::documentPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a plain name") << "libri"
                                  << "TABLES_DOC/libri";
    QTest::newRow("unwanted characters are removed, not replaced")
        << "a'b?c!d.e,f;g:h<i>j/k\\l\"m*n[o]p"
        << "TABLES_DOC/abcdefghijklmnop";
    QTest::newRow("other characters stay") << "a (b) & c_%-#è€"
                                           << "TABLES_DOC/a (b) & c_%-#è€";
    QTest::newRow("a name cannot climb") << "../../etc"
                                         << "TABLES_DOC/etc";
    QTest::newRow("a hidden table keeps its marker") << "HIDDENTABLE_Notes"
                                                     << "TABLES_DOC/HIDDENTABLE_Notes";
    QTest::newRow("a sub-table loses its markers")
        << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_spesa_XSBTUSRX_Casa_1"
        << "TABLES_DOC/Spese_Lista_spesa_Casa_1";
    QTest::newRow("a configuration loses its marker") << "P_SUBTABLEFORMAT_f_XSBCONFX_2"
                                                      << "TABLES_DOC/P__f2";
    QTest::newRow("markers of an ordinary table stay")
        << "a_XSBTX_b_XSBTUSRX_c_XSBCONFX_"
        << "TABLES_DOC/a_XSBTX_b_XSBTUSRX_c_XSBCONFX_";
    QTest::newRow("characters are removed before markers are looked for")
        << "HIDDEN.TABLE_P_SUB'TABLEFORMAT_f"
        << "TABLES_DOC/P__f";
    QTest::newRow("the parent's marker is removed last") << "SUBTABLEFORMATP_XSB_XSBCONFX_TX_f"
                                                         << "TABLES_DOC/Pf";
    QTest::newRow("nothing leaves the folder") << ""
                                               << "TABLES_DOC/";
}

void TestAttachments::documentPath()
{
    QFETCH(QString, name);
    QTEST(Attachments::documentPath(name), "expected");
}

void TestAttachments::recordFolder_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");
    QTest::newRow("table and title") << "libri"
                                     << "Primo libro"
                                     << "TABLES_DOC/libri_Primo_libro";
    QTest::newRow("every blank becomes a line") << "a b"
                                                << " c  d"
                                                << "TABLES_DOC/a_b__c__d";
    QTest::newRow("unwanted characters go") << "libri"
                                            << "L'isola: 1/2"
                                            << "TABLES_DOC/libri_Lisola_12";
    QTest::newRow("a sub-table") << "HIDDENTABLE_P_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s"
                                 << "7"
                                 << "TABLES_DOC/P_f_s_7";
    QTest::newRow("an empty title") << "libri"
                                    << ""
                                    << "TABLES_DOC/libri_";
}

void TestAttachments::recordFolder()
{
    QFETCH(QString, table);
    QFETCH(QString, title);
    QTEST(Attachments::recordFolder(table, title), "expected");
}

void TestAttachments::fileName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the last part") << "img/a/b.png"
                                   << "b.png";
    QTest::newRow("a bare name") << "b.png"
                                 << "b.png";
    QTest::newRow("nothing after a final line") << "img/a/"
                                                << "";
    QTest::newRow("a backslash is part of a name") << "img\\b.png"
                                                   << "img\\b.png";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestAttachments::fileName()
{
    QFETCH(QString, path);
    QTEST(Attachments::fileName(path), "expected");
}

void TestAttachments::insideByItsText_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a file that is there") << "TABLES_DOC/libri/a.png" << true;
    QTest::newRow("a folder that is there") << "TABLES_DOC/libri" << true;
    QTest::newRow("a file that is not there yet") << "TABLES_DOC/nuovo/b.png" << true;
    QTest::newRow("a file below a file") << "TABLES_DOC/libri/a.png/x" << true;
    QTest::newRow("doubled and final lines") << "TABLES_DOC//libri///a.png/" << true;
    QTest::newRow("a component of one point") << "./TABLES_DOC/./libri" << true;
    QTest::newRow("points inside a name") << "TABLES_DOC/a..b/..c/d.." << true;
    QTest::newRow("three points") << "TABLES_DOC/.../a" << true;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("the folder itself") << "." << false;
    QTest::newRow("the folder itself, longer") << "./." << false;
    QTest::newRow("an absolute path") << "/etc/passwd" << false;
    QTest::newRow("a built-in file of Qt") << ":/addIcon" << false;
    QTest::newRow("the folder above") << ".." << false;
    QTest::newRow("a file above") << "../other/secret.png" << false;
    QTest::newRow("a folder whose name begins the same") << "../db2/secret.png" << false;
    QTest::newRow("up in the middle") << "TABLES_DOC/../../other/secret.png" << false;
    QTest::newRow("up and back again") << "TABLES_DOC/../TABLES_DOC/libri/a.png" << false;
    QTest::newRow("up at the end") << "TABLES_DOC/.." << false;
    QTest::newRow("a NUL in it") << QString(QStringLiteral("TABLES_DOC/a.sh") + QChar(0) + ".png")
                                 << false;
}

void TestAttachments::insideByItsText()
{
    QFETCH(QString, path);
    QTEST(Attachments::isInside(base, path), "expected");
    QTEST(Attachments::mayBeOpened(base, path), "expected");
}

void TestAttachments::anEmptyBaseIsTheCurrentFolder()
{
    QVERIFY(QDir::setCurrent(base));
    const QString none;
    QVERIFY(Attachments::isInside(none, QStringLiteral("TABLES_DOC/libri/a.png")));
    QVERIFY(Attachments::isInside(none, QStringLiteral("TABLES_DOC/nuovo/b.png")));
    QVERIFY(!Attachments::isInside(none, QStringLiteral("../other/secret.png")));
    QVERIFY(!Attachments::isInside(none, base + QStringLiteral("TABLES_DOC/libri/a.png")));
    QVERIFY(!Attachments::isInside(none, QStringLiteral(":/addIcon")));
    QVERIFY(!Attachments::isInside(none, none));
    makeLink(folder->filePath(QStringLiteral("other")), base + QStringLiteral("way"));
    QVERIFY(!Attachments::isInside(none, QStringLiteral("way/secret.png")));
}

void TestAttachments::aBaseThatDoesNotExistYetHoldsFiles()
{
    const QString later = folder->filePath(QStringLiteral("più/tardi/"));
    QVERIFY(Attachments::isInside(later, QStringLiteral("TABLES_DOC/a.png")));
    QVERIFY(Attachments::mayBeOpened(later, QStringLiteral("TABLES_DOC/a.png")));
    QVERIFY(!Attachments::isInside(later, QStringLiteral("../a.png")));
    QVERIFY(!Attachments::isInside(later, QString()));
    QVERIFY(!Attachments::isInside(later, QStringLiteral("./")));
}

void TestAttachments::theBaseMayBeReachedThroughALink()
{
    const QString way = folder->filePath(QStringLiteral("way"));
    makeLink(base, way);
    const QString linked = way + QLatin1Char('/');
    QVERIFY(Attachments::isInside(linked, QStringLiteral("TABLES_DOC/libri/a.png")));
    QVERIFY(Attachments::isInside(linked, QStringLiteral("TABLES_DOC/nuovo/b.png")));
}

void TestAttachments::links_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    QTest::newRow("to a folder inside") << "db/TABLES_DOC/libri"
                                        << "way/a.png" << true;
    QTest::newRow("to a file inside") << "db/TABLES_DOC/libri/a.png"
                                      << "way" << true;
    QTest::newRow("to a file outside") << "other/secret.png"
                                       << "way" << false;
    QTest::newRow("through a folder outside") << "other"
                                              << "way/secret.png" << false;
    QTest::newRow("to a new file in a folder outside") << "other"
                                                       << "way/new/b.png" << false;
    QTest::newRow("to a folder whose name begins the same") << "db2"
                                                            << "way/secret.png" << false;
    QTest::newRow("to the folder itself") << "db"
                                          << "way" << false;
    QTest::newRow("to nowhere, so that writing would make it") << "other/none"
                                                               << "way" << false;
    QTest::newRow("below a link to nowhere") << "other/none"
                                             << "way/b.png" << false;
    QTest::newRow("to nowhere, with a final line") << "other/none"
                                                   << "way/" << false;
    QTest::newRow("to itself") << "db/way"
                               << "way" << false;
}

void TestAttachments::links()
{
    QFETCH(QString, target);
    QFETCH(QString, path);
    makeLink(folder->filePath(target), base + QStringLiteral("way"));
    QTEST(Attachments::isInside(base, path), "expected");
    QTEST(Attachments::mayBeOpened(base, path), "expected");
}

void TestAttachments::mayBeOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    const QString suffixes =
        QStringLiteral("desktop exe com bat cmd scr msi lnk ps1 hta js vbs jar sh appimage");
    for (const QString &suffix : suffixes.split(QLatin1Char(' '))) {
        QTest::addRow("not one ending in .%s", qPrintable(suffix))
            << QStringLiteral("TABLES_DOC/a.") + suffix << false;
    }
    QTest::newRow("a PDF") << "TABLES_DOC/a.pdf" << true;
    QTest::newRow("a file without a suffix") << "TABLES_DOC/sh" << true;
    QTest::newRow("a suffix that only begins so") << "TABLES_DOC/a.shtml" << true;
    QTest::newRow("a suffix in the middle") << "TABLES_DOC/a.exe.pdf" << true;
    QTest::newRow("a suffix of a folder") << "TABLES_DOC/a.exe/b.pdf" << true;
    QTest::newRow("not in capitals") << "TABLES_DOC/a.DESKTOP" << false;
    QTest::newRow("not in mixed letters") << "TABLES_DOC/a.AppImage" << false;
    QTest::newRow("not behind another suffix") << "TABLES_DOC/a.pdf.exe" << false;
    QTest::newRow("not a name that is all suffix") << "TABLES_DOC/.desktop" << false;
    QTest::newRow("not with a final line") << "TABLES_DOC/a.desktop/" << false;
    QTest::newRow("not with a final point") << "TABLES_DOC/a.desktop/." << false;
    QTest::newRow("not outside") << "../other/secret.png" << false;
    QTest::newRow("not a pipe") << "TABLES_DOC/pipe" << false;
    QTest::newRow("not a link to a pipe") << "TABLES_DOC/link.pdf" << false;
    QTest::newRow("a folder") << "TABLES_DOC/libri" << true;
}

void TestAttachments::mayBeOpened()
{
    QFETCH(QString, path);
    QCOMPARE(mkfifo(qPrintable(base + QStringLiteral("TABLES_DOC/pipe")), 0600), 0);
    makeLink(base + QStringLiteral("TABLES_DOC/pipe"),
             base + QStringLiteral("TABLES_DOC/link.pdf"));
    QTEST(Attachments::mayBeOpened(base, path), "expected");
}

void TestAttachments::neitherSideOfALinkMayBeRunnable()
{
    const QString script = base + QStringLiteral("TABLES_DOC/run.sh");
    makeFile(script);
    makeLink(script, base + QStringLiteral("picture.png"));
    QVERIFY(Attachments::isInside(base, QStringLiteral("picture.png")));
    QVERIFY(!Attachments::mayBeOpened(base, QStringLiteral("picture.png")));

    makeLink(base + QStringLiteral("TABLES_DOC/libri/a.png"), base + QStringLiteral("b.desktop"));
    QVERIFY(!Attachments::mayBeOpened(base, QStringLiteral("b.desktop")));
    QVERIFY(!Attachments::mayBeOpened(base, QStringLiteral("b.desktop/.")));
}

QTEST_GUILESS_MAIN(TestAttachments)
#include "model_attachments.moc"
