// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Generated and damaged files, in the readers and through the window: each is read to its end,
// quickly, and changes nothing but what it names.
#include "app/workingfiles.h"
#include "exchange/tscfile.h"
#include "exchange/xmffile.h"
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"

#include <QBuffer>
#include <QRandomGenerator>

#include <ctime>
#include <functional>

namespace
{

constexpr qint64 LongestReading = 1000;    // in milliseconds
constexpr qint64 LongestImport = 10000;    // of the longest line, in milliseconds
constexpr qint64 MostMemory = 1024 * 1024; // in kilobytes
constexpr int LongestLine = 100 * 1024 * 1024;
constexpr int FilesPerWindow = 100;
constexpr int RecordsOfLibri = 2;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

// Files of the program's kinds, well made at first and then damaged in some places.
class FileMaker
{
public:
    explicit FileMaker(quint32 start)
        : random(start)
    {
    }

    QByteArray records()
    {
        QByteArray bytes =
            pick({"libri", "libri", "libri", "autori", "manca", "HIDDENTABLE_x", "settings", ""}) +
            '\n';
        for (int record = random.bounded(5); record > 0; --record) {
            bytes += "RINTEGERFORMAT_Id###" + pick({"1", "2", "77", "0", "-1", "99999999999", ""}) +
                     "###RSTRINGFORMAT_Titolo###" + value() + "###NINTEGERFORMAT_Anno###" +
                     value() + "###NLINKFORMAT_autori###" + value() + "###\n";
        }
        return damaged(bytes);
    }
    QByteArray structure()
    {
        QByteArray bytes = pick({"", "DB_DATA/a.png", "../../a.png", "/etc/passwd"}) + '\n';
        for (int column = random.bounded(6); column > 0; --column) {
            bytes += pick({"R", "N", "X", ""}) +
                     pick({"STRING", "INTEGER", "DATE", "LINK", "SUBTABLE", "PDF", "x"}) +
                     "FORMAT_" + pick({"a", "b", "c", "select", "però", "a b", "'", "UserPath"}) +
                     "###" + pick({"text", "Integer", "", "text);--", "text"}) + '\n';
        }
        return damaged(bytes);
    }
    QByteArray startUp()
    {
        return damaged(pick({"casa/books.db", "casa/books.db", "casa/books.db", "casa/books.db",
                             "casa/books.db", "books.db", "/", "", "casa", "/dev/null", ":memory:",
                             "file:books.db?mode=rwc", "manca/x.db", "Locked", "Locked\n"}) +
                       pick({"", "\n", "\r\n", "\nzweite\n", " "}));
    }

private:
    QByteArray pick(std::initializer_list<const char *> choice)
    {
        return *(choice.begin() + random.bounded(int(choice.size())));
    }
    QByteArray value()
    {
        return pick({"Zeno", "", "l'anno", "1 234,5", "-0", "29/02/2020", "📚 è", "%s%n", "a#", "##",
                     "'; DROP TABLE libri; --", "<img src=x>", "\t", "\x01", "0.5", "TRUE"});
    }
    QByteArray damaged(QByteArray bytes)
    {
        // What is damaged in one place is mostly refused as a whole.
        const int most = random.bounded(2) == 0 ? 5 : 1;
        for (int changes = random.bounded(most); changes > 0; --changes) {
            const int place = random.bounded(bytes.size() + 1);
            switch (random.bounded(8)) {
            case 0:
                bytes.truncate(place);
                break;
            case 1:
                bytes.insert(place, pick({"###", "######", "\n", "\r", "\xff", "\xef\xbb\xbf",
                                          "\xe2", "\xed\xa0\x80", "FORMAT_", "_XDTX_"}));
                break;
            case 2:
                bytes.insert(place, '\0');
                break;
            case 3:
                bytes.remove(place, random.bounded(1, 30));
                break;
            case 4:
                bytes.insert(place, bytes.mid(random.bounded(bytes.size() + 1), 200));
                break;
            case 5:
                bytes.insert(place, QByteArray(random.bounded(5000), char(random.bounded(256))));
                break;
            case 6:
                bytes.prepend(
                    pick({"\xef\xbb\xbf", "\xff\xfe", "\xfe\xff", "\n", "\x1f\x8b", "PK"}));
                break;
            default:
                if (place < bytes.size()) {
                    bytes[place] = char(random.bounded(256));
                }
            }
        }
        return bytes;
    }

    QRandomGenerator random;
};

void readRecords(const QByteArray &bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    const qint64 separators = XmfFile::countSeparators(device);
    device.seek(0);
    QTextStream stream(&device);
    XmfFile::Reader reader(stream);
    int records = 0;
    for (; reader.next(); ++records) {
        for (const FieldPair &pair : reader.record()) {
            QVERIFY(!pair.first.isEmpty());
        }
    }
    QVERIFY(records <= bytes.size() + 1 && separators <= bytes.size());
}

void readStructure(const QByteArray &bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    QTextStream stream(&device);
    TscFile::Structure structure;
    TscFile::read(stream, &structure, [](int, int) {});
    QVERIFY(structure.columns.size() <= bytes.size());
}

void readStartUp(const Workspace &here, const QByteArray &bytes)
{
    here.write(text("lastDb.dat"), bytes);
    here.write(text("lockDb.dat"), bytes);
    QVERIFY(!WorkingFiles::lastDatabase().contains(QLatin1Char('\n')));
    const bool isLocked = WorkingFiles::isLocked();
    QCOMPARE(WorkingFiles::takeLock(), !isLocked);
    WorkingFiles::releaseLock();
    QVERIFY(!WorkingFiles::isLocked());
}

const QStringList Library = {
    text("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
         "NINTEGERFORMAT_Anno text,NLINKFORMAT_autori text)"),
    text("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text)"),
    text("INSERT INTO libri VALUES (1,'Uno','1','autori'),(2,'Due','2','autori')"),
    text("INSERT INTO autori VALUES (1,'Svevo')"),
};

// What no file may change: the tables as they were made, and the records that there were.
QStringList kept(const EntryPage::Started &program)
{
    return program.here.column(program.database, text("SELECT sql FROM sqlite_master WHERE name IN "
                                                      "('libri','autori','settings','filters')")) +
           program.rows(text("libri")).mid(0, RecordsOfLibri) +
           program.rows(text("autori")).mid(0, 1);
}

qint64 mostMemoryUsed()
{
    QFile status(text("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).simplified().split(' ').first().toLongLong();
        }
    }
    return -1;
}

} // namespace

class FaultsFiles : public QObject
{
    Q_OBJECT

private slots:
    void longestLine();
    void readers();
    void recordsThroughTheWindow();
    void structuresThroughTheWindow();
    void startsWithDamagedFiles();
    void cleanupTestCase();
};

void FaultsFiles::longestLine()
{
    if (!Campaign::isFull()) {
        return;
    }
    Campaign::Row row(text("an imported line of 100 MB"));
    const EntryPage::Started program(Library);
    const QStringList before = kept(program);
    program.here.write(text("dati.xmf"), "libri\nRINTEGERFORMAT_Id###9###RSTRINGFORMAT_Titolo###" +
                                             QByteArray(LongestLine, 'x') + "###\n");
    ModalResponder responder;
    responder.chooseFile(program.here.path(text("dati.xmf")));
    responder.answer(QMessageBox::Ok);
    // Of the processor, because others may be using the machine as well.
    const std::clock_t begin = std::clock();
    Window::action(*program.window, "actionImport_From_File_Export_Manager_File")->trigger();
    const qint64 took = qint64(std::clock() - begin) * 1000 / CLOCKS_PER_SEC;
    QCOMPARE(responder.takeTexts(), QStringList(text("ERRORE: Tabella Incompatibile!")));
    QCOMPARE(kept(program), before);
    const qint64 memory = mostMemoryUsed();
    row.ran();
    row.remark(text("%1 ms, %2 MB of memory").arg(took).arg(memory / 1024));
    QVERIFY(took < LongestImport);
#ifndef __SANITIZE_ADDRESS__
    QVERIFY(memory > 0 && memory < MostMemory);
#endif
}

void FaultsFiles::readers()
{
    Campaign::Row row(text("generated and damaged .xmf, .tsc and start-up files, read"));
    const Workspace here;
    FileMaker files(Campaign::start());
    const int rounds = Campaign::cases(500, 50000);
    qint64 slowest = 0; // in milliseconds of the processor
    for (int round = 0; round < rounds; ++round) {
        const QByteArray all[] = {files.records(), files.structure(), files.startUp()};
        const std::function<void()> readings[] = {[&] { readRecords(all[0]); },
                                                  [&] { readStructure(all[1]); },
                                                  [&] { readStartUp(here, all[2]); }};
        for (const std::function<void()> &reading : readings) {
            const std::clock_t begin = std::clock();
            reading();
            row.ran();
            slowest = qMax(slowest, qint64(std::clock() - begin) * 1000 / CLOCKS_PER_SEC);
        }
        if (QTest::currentTestFailed()) {
            qInfo("round %d: %s | %s | %s", round, all[0].toPercentEncoding().constData(),
                  all[1].toPercentEncoding().constData(), all[2].toPercentEncoding().constData());
            return;
        }
    }
    row.remark(text("the slowest %1 ms").arg(slowest));
    QVERIFY(!Campaign::isFull() || slowest < LongestReading);
}

void FaultsFiles::recordsThroughTheWindow()
{
    Campaign::Row row(text("generated and damaged .xmf files, imported in the window"));
    FileMaker files(Campaign::start() + 1);
    const int total = Campaign::cases(20, 3000);
    int added = 0;
    for (int done = 0; done < total;) {
        const EntryPage::Started program(Library);
        const QStringList before = kept(program);
        for (int i = 0; i < FilesPerWindow && done < total; ++i, ++done) {
            const QByteArray bytes = files.records();
            program.here.write(text("dati.xmf"), bytes);
            ModalResponder responder;
            responder.answerOthers(QMessageBox::Ok);
            responder.chooseFile(program.here.path(text("dati.xmf")));
            Window::action(*program.window, "actionImport_From_File_Export_Manager_File")
                ->trigger();
            QVERIFY2(responder.boxes().size() <= 1, bytes.toPercentEncoding().constData());
            QVERIFY2(kept(program) == before, bytes.toPercentEncoding().constData());
            row.ran();
            EntryPage::forgetOldPages();
        }
        added += program.rows(text("libri")).size() - RecordsOfLibri;
        QCOMPARE(program.here.value(program.database, text("PRAGMA integrity_check")).toString(),
                 text("ok"));
    }
    row.remark(text("%1 records added").arg(added));
    QVERIFY(added > 0);
}

void FaultsFiles::structuresThroughTheWindow()
{
    Campaign::Row row(text("generated and damaged .tsc files, imported in the window"));
    FileMaker files(Campaign::start() + 2);
    const int total = Campaign::cases(15, 2000);
    int made = 0;
    for (int done = 0; done < total;) {
        const EntryPage::Started program(Library);
        const QStringList before = kept(program);
        for (int i = 0; i < FilesPerWindow && done < total; ++i, ++done) {
            const QByteArray bytes = files.structure();
            program.here.write(text("nuova.tsc"), bytes);
            const QString name = text("s%1").arg(done);
            ModalResponder responder;
            responder.answerOthers(QMessageBox::Ok);
            responder.chooseFile(program.here.path(text("nuova.tsc")));
            Window::action(*program.window, "actionImport_Table_Structure")->trigger();
            if (FilterPage::prompt().isVisible()) {
                FilterPage::acceptName(name);
            }
            const bool isMade =
                !DesignerPage::statement(program.here, program.database, name).isEmpty();
            made += isMade ? 1 : 0;
            QVERIFY2(responder.boxes().size() == (isMade ? 0 : 1),
                     bytes.toPercentEncoding().constData());
            QVERIFY2(kept(program) == before, bytes.toPercentEncoding().constData());
            row.ran();
            EntryPage::forgetOldPages();
        }
        const int tables =
            program.here
                .value(program.database, text("SELECT count(*) FROM sqlite_master WHERE name LIKE "
                                              "'s%' AND name GLOB 's[0-9]*'"))
                .toInt();
        QVERIFY(tables <= made);
    }
    row.remark(text("%1 made a table").arg(made));
    QVERIFY(made > 0 && made < total);
}

void FaultsFiles::startsWithDamagedFiles()
{
    Campaign::Row row(text("starts with generated and damaged start-up files"));
    FileMaker files(Campaign::start() + 3);
    const int total = Campaign::cases(5, 1000);
    int opened = 0;
    for (int i = 0; i < total; ++i) {
        const Workspace here;
        here.write(text("casa/keep"), "");
        here.sql(text("casa/books.db"), Library);
        const QByteArray bytes = i == 0 ? QByteArray("casa/books.db") : files.startUp();
        here.write(text("lastDb.dat"), bytes);
        if (i % 3 == 0) {
            here.write(text("lockDb.dat"), files.startUp());
        }
        ModalResponder responder;
        responder.answerOthers(QMessageBox::Ok);
        {
            const Tavenor window;
            opened += Window::tables(window).contains(text("libri")) ? 1 : 0;
        }
        QVERIFY2(responder.boxes().size() <= 1, bytes.toPercentEncoding().constData());
        QCOMPARE(here.value(text("casa/books.db"), text("SELECT count(*) FROM libri")).toInt(), 2);
        row.ran();
        EntryPage::forgetOldPages();
    }
    row.remark(text("%1 opened the library").arg(opened));
    QVERIFY(opened > 0 && opened < total);
}

void FaultsFiles::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(FaultsFiles)
#include "faults_files.moc"
