// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's files: what is written, byte for byte, and what is read from good and bad ones.
#include "exchange/readabletext.h"
#include "exchange/tscfile.h"
#include "exchange/wholefile.h"
#include "exchange/xmffile.h"
#include "model/values.h"
#include "tests/support/Workspace.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTextCodec>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr quint32 Start = 20240229;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

// How many generated inputs a test reads: as many as is usual, or that many times over when
// scripts/fuzz-files asks for it.
qint64 rounds(int usual)
{
    return qint64(usual) * qMax(1, qEnvironmentVariableIntValue("TAVENOR_FUZZ_ROUNDS"));
}

// The number that generated inputs come from; the same in every run unless another is asked for.
quint32 start()
{
    bool isGiven = false;
    const quint32 given = qEnvironmentVariable("TAVENOR_FUZZ_START").toUInt(&isGiven);
    return isGiven ? given : Start;
}

// The rule for the pairs of a line, step by step and as slow as it reads.
FieldPairs slowPairs(const QString &line)
{
    const QString separator = text("###");
    const int count = line.count(separator);
    FieldPairs pairs;
    for (int j = 0; j < count; j += 2) {
        const QString name = line.section(separator, j, j);
        const QString value = line.section(separator, j + 1, j + 1);
        if (!name.isEmpty()) {
            pairs.append({Values::quotesDoubled(name), Values::quotesDoubled(value)});
        }
    }
    return pairs;
}

// A line of pieces that meet in every way.
QString madeLine(QRandomGenerator &random)
{
    static const QStringList pieces = {text("#"), text("##"), text("###"),  text("######"),
                                       text("a"), text("'"),  text("però"), text("RSTRING_a"),
                                       text(" "), text("'#"), text("1"),    QString(QChar(0))};
    QString line;
    const int count = random.bounded(1, 24);
    for (int i = 0; i < count; ++i) {
        line += pieces.at(random.bounded(pieces.size()));
    }
    return line;
}

// The records in the bytes of a file, as "name=value" lists; at most a hundred.
QVector<FieldPairs> recordsIn(const QByteArray &bytes, QString *table = nullptr)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    QTextStream stream(&device);
    XmfFile::Reader reader(stream);
    if (table != nullptr) {
        *table = reader.table();
    }
    QVector<FieldPairs> records;
    while (records.size() < 100 && reader.next()) {
        records.append(reader.record());
    }
    return records;
}

// How many lines come after the first. They end at a line feed only, and at the end of the file a
// character that is cut off is nothing.
int linesAfterTheFirst(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    const QString read =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return read.count(QLatin1Char('\n')) - (read.endsWith(QLatin1Char('\n')) ? 1 : 0);
}

qint64 separatorsIn(const QByteArray &bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    return XmfFile::countSeparators(device);
}

bool structureIn(const QByteArray &bytes, TscFile::Structure *structure)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    QTextStream stream(&device);
    return TscFile::read(stream, structure, [](int, int) {});
}

// What `write` puts on a stream, as bytes.
QByteArray written(const std::function<void(QTextStream &)> &write)
{
    QByteArray bytes;
    QTextStream stream(&bytes, QIODevice::WriteOnly);
    write(stream);
    stream.flush();
    return bytes;
}

const FieldPairs TwoPairs = {{QStringLiteral("a"), QStringLiteral("1")},
                             {QStringLiteral("b"), QStringLiteral("2")}};

} // namespace

class ExchangeFiles : public QObject
{
    Q_OBJECT

private slots:
    void tableFile();
    void singleRecordFile();
    void pairsOfALine_data();
    void pairsOfALine();
    void pairsAreThoseOfTheSlowRule();
    void separatorsOverlap_data();
    void separatorsOverlap();
    void linesOfAFile_data();
    void linesOfAFile();
    void linesThatAreNoRecords_data();
    void linesThatAreNoRecords();
    void mutatedFilesAreReadToTheirEnd();
    void structureFile();
    void structureIsReadBack_data();
    void structureIsReadBack();
    void structureProgress();
    void structuresThatCannotBe_data();
    void structuresThatCannotBe();
    void mutatedStructures();
    void readableTexts();
    void fileIsWrittenWhole();
    void olderFileStaysUntilTheEnd();
    void targetsThatCannotBeWritten_data();
    void targetsThatCannotBeWritten();
    void fullDiskLeavesTheOlderFile();
};

void ExchangeFiles::tableFile()
{
    const QByteArray bytes = written([](QTextStream &stream) {
        XmfFile::Writer writer(
            stream, text("libri"),
            {text("RINTEGERFORMAT_Id"), text("RSTRINGFORMAT_Titolo"), text("NINTEGERFORMAT_Anno")});
        for (const QString &value : {text("1"), text("Primo libro"), text("1980")}) {
            writer.add(value);
        }
        writer.endLine();
        for (const QString &value : {text("2"), text("L'anno 'perché'"), QString()}) {
            writer.add(value);
        }
        writer.endLine();
    });
    QCOMPARE(bytes, QByteArray("libri\n"
                               "RINTEGERFORMAT_Id###1###RSTRINGFORMAT_Titolo###Primo libro###"
                               "NINTEGERFORMAT_Anno###1980###\n"
                               "RINTEGERFORMAT_Id###2###RSTRINGFORMAT_Titolo###L'anno 'perché'###"
                               "NINTEGERFORMAT_Anno######\n"));
}

void ExchangeFiles::singleRecordFile()
{
    const QByteArray bytes = written([](QTextStream &stream) {
        XmfFile::Writer writer(stream, text("libri"), {text("a"), text("b")});
        writer.add(text("1"));
        writer.add(QString());
        writer.endWithoutLine();
    });
    QCOMPARE(bytes, QByteArray("libri\na###1###b######"));
    QCOMPARE(written([](QTextStream &stream) {
                 const XmfFile::Writer writer(stream, text("HIDDENTABLE_x"), {text("a")});
             }),
             QByteArray("HIDDENTABLE_x\n"));
}

void ExchangeFiles::pairsOfALine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<FieldPairs>("expected");
    const auto row = [](const char *claim, const char *line, const FieldPairs &expected) {
        QTest::newRow(claim) << text(line) << expected;
    };
    const auto pair = [](const char *name, const char *value) {
        return FieldPair(text(name), text(value));
    };
    row("two columns", "a###1###b###2###", TwoPairs);
    row("an empty value at the end", "a###1###b######", {pair("a", "1"), pair("b", "")});
    row("an empty value in the middle", "a######b###2###", {pair("a", ""), pair("b", "2")});
    row("only empty values", "a######b######c######",
        {pair("a", ""), pair("b", ""), pair("c", "")});
    row("a blank line has no pairs", "", {});
    row("no separator has no pairs", "a", {});
    row("one separator gives a value to its end", "a###1", {pair("a", "1")});
    row("text behind the last separator is left out", "a###1###b", {pair("a", "1")});
    row("a pair without a name is left out", "######b###2###", {pair("b", "2")});
    row("a value with a separator shifts the names", "a###x###y###b###2###",
        {pair("a", "x"), pair("y", "b"), pair("2", "")});
    row("quotes are doubled on both sides", "l'a###d'oro###", {pair("l''a", "d''oro")});
    row("a value that ends with a sign moves it to the next name", "a###x####b###2###",
        {pair("a", "x"), pair("#b", "2")});
    row("fewer than three signs are no separator", "a###x##y###", {pair("a", "x##y")});
    row("blanks stay", " a ### 1 ###", {pair(" a ", " 1 ")});
}

void ExchangeFiles::pairsOfALine()
{
    QFETCH(QString, line);
    QFETCH(FieldPairs, expected);
    QCOMPARE(slowPairs(line), expected);
    QCOMPARE(XmfFile::pairs(line), expected);
}

void ExchangeFiles::pairsAreThoseOfTheSlowRule()
{
    QRandomGenerator random(start());
    for (qint64 i = rounds(100000); i > 0; --i) {
        const QString line = madeLine(random);
        QVERIFY2(XmfFile::pairs(line) == slowPairs(line), qPrintable(line));
        QVERIFY2(XmfFile::countSeparators(line) == line.count(text("###")), qPrintable(line));
    }
}

void ExchangeFiles::separatorsOverlap_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("count");
    QTest::newRow("none") << QByteArray("a##b#\n##") << qint64(0);
    QTest::newRow("a record") << QByteArray("t\na###1###b###2###\n") << qint64(4);
    QTest::newRow("an empty value counts four") << QByteArray("a######") << qint64(4);
    QTest::newRow("a row of signs longer than a block")
        << QByteArray(200000, '#') << qint64(199998);
    QTest::newRow("separators across the edge of a block")
        << QByteArray(65535, 'x') + "###" + QByteArray(65533, 'x') + "###" << qint64(2);
}

void ExchangeFiles::separatorsOverlap()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, count);
    QCOMPARE(separatorsIn(bytes), count);
    QCOMPARE(qint64(XmfFile::countSeparators(QString::fromUtf8(bytes))), count);
}

void ExchangeFiles::linesOfAFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QVector<FieldPairs>>("records");
    const auto row = [](const char *claim, const QByteArray &bytes, const char *table,
                        const QVector<FieldPairs> &records) {
        QTest::newRow(claim) << bytes << text(table) << records;
    };
    const QByteArray record = "a###1###b###2###";
    row("an empty file", "", "", {});
    row("a table line alone", "libri", "libri", {});
    row("a table line with its end", "libri\n", "libri", {});
    row("one record", "libri\n" + record + "\n", "libri", {TwoPairs});
    row("no final line end", "libri\n" + record, "libri", {TwoPairs});
    row("line ends of Windows", "libri\r\n" + record + "\r\n", "libri", {TwoPairs});
    row("a blank line is a record without pairs", "libri\n\n" + record + "\n", "libri",
        {{}, TwoPairs});
    row("blanks around the name belong to it", " libri \n", " libri ", {});
    row("a byte-order mark is none of the name", "\xef\xbb\xbflibri\n" + record, "libri",
        {TwoPairs});
    row("the beginning of a character at the end is no line", "libri\n" + record + "\n\xcf",
        "libri", {TwoPairs});
    row("invalid UTF-8 becomes replacement characters", "libri\na###\xff###b###2###", "libri",
        {{{text("a"), QString(QChar(0xfffd))}, {text("b"), text("2")}}});
}

void ExchangeFiles::linesOfAFile()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, table);
    QFETCH(QVector<FieldPairs>, records);
    QString found;
    QCOMPARE(recordsIn(bytes, &found), records);
    QCOMPARE(found, table);
}

void ExchangeFiles::linesThatAreNoRecords_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a NUL character in a value") << QByteArray("a###1\0x###b###2###", 18);
    QTest::newRow("a NUL character in a name") << QByteArray("a\0###1###b###2###", 17);
    QTest::newRow("more columns than a table can have") << QByteArray("a###1###").repeated(100000);
    QTest::newRow("above 64 MB") << "a###1###b###" + QByteArray(64 * 1024 * 1024, 'x') + "###";
}

void ExchangeFiles::linesThatAreNoRecords()
{
    QFETCH(QByteArray, line);
    const QVector<FieldPairs> records = recordsIn("libri\na###1###b###2###\n" + line + "\n");
    QVERIFY(records.size() >= 2);
    QCOMPARE(records.at(0), TwoPairs);
    QCOMPARE(records.at(1), FieldPairs());
}

void ExchangeFiles::mutatedFilesAreReadToTheirEnd()
{
    QRandomGenerator random(start());
    const QByteArray good = "libri\nRINTEGERFORMAT_Id###1###RSTRINGFORMAT_Titolo###Zeno###\n"
                            "RINTEGERFORMAT_Id###2###RSTRINGFORMAT_Titolo######\n";
    for (qint64 i = rounds(50000); i > 0; --i) {
        QByteArray bytes = good;
        for (int changes = random.bounded(1, 6); changes > 0 && !bytes.isEmpty(); --changes) {
            const int place = int(random.bounded(bytes.size()));
            if (random.bounded(2) == 0) {
                bytes[place] = char(random.bounded(256));
            } else {
                bytes.remove(place, random.bounded(1, 20));
            }
        }
        // The marks of other encodings are left to the stream.
        const bool isMarked = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
        const QVector<FieldPairs> records = recordsIn(bytes);
        QVERIFY2(isMarked || records.size() == linesAfterTheFirst(bytes),
                 bytes.toPercentEncoding().constData());
        QVERIFY(separatorsIn(bytes) <= bytes.size());
    }
}

void ExchangeFiles::structureFile()
{
    QStringList steps;
    const QByteArray bytes = written([&steps](QTextStream &stream) {
        TscFile::write(stream, text("icons/libri.png"),
                       {text("RINTEGERFORMAT_Id"), text("RSTRINGFORMAT_Titolo"),
                        text("NINTEGERFORMAT_Anno"), text("Xautori_XDTX_RSTRINGFORMAT_Nome"),
                        text("NLONGSTRINGFORMAT_UserPath"), text("rintegerformat_id")},
                       [&steps](int done, int total) {
                           steps.append(QStringLiteral("%1/%2").arg(done).arg(total));
                       });
    });
    QCOMPARE(bytes, QByteArray("icons/libri.png\n"
                               "RSTRINGFORMAT_Titolo###text\n"
                               "NINTEGERFORMAT_Anno###text\n"
                               "Xautori_XDTX_RSTRINGFORMAT_Nome###text\n"
                               "NLONGSTRINGFORMAT_UserPath###text\n"
                               "rintegerformat_id###text\n"));
    QCOMPARE(steps, QStringList({text("0/6"), text("1/6"), text("2/6"), text("3/6"), text("4/6")}));
    QCOMPARE(written([](QTextStream &stream) {
                 TscFile::write(stream, QString(), {text("RINTEGERFORMAT_Id")}, [](int, int) {});
             }),
             QByteArray("\n"));
}

void ExchangeFiles::structureIsReadBack_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("iconPath");
    QTest::addColumn<ColumnDefinitions>("columns");
    const auto row = [](const char *claim, const QByteArray &bytes, const char *iconPath,
                        const ColumnDefinitions &columns) {
        QTest::newRow(claim) << bytes << text(iconPath) << columns;
    };
    const ColumnDefinition title(text("RSTRINGFORMAT_Titolo"), text("text"));
    row("an empty file", "", "", {});
    row("an icon alone", "DB_DATA/a.png", "DB_DATA/a.png", {});
    row("an empty icon line", "\nRSTRINGFORMAT_Titolo###text\n", "", {title});
    row("line ends of Windows", "i.png\r\nRSTRINGFORMAT_Titolo###text\r\n", "i.png", {title});
    row("no final line end", "i.png\nRSTRINGFORMAT_Titolo###text", "i.png", {title});
    row("a blank line is a column without a name", "i.png\n\nRSTRINGFORMAT_Titolo###text\n",
        "i.png", {{QString(), QString()}, title});
    row("a name alone has no type", "i.png\nRSTRINGFORMAT_Titolo\n", "i.png",
        {{text("RSTRINGFORMAT_Titolo"), QString()}});
    row("a third part is left out", "i.png\nRSTRINGFORMAT_Titolo###text###x\n", "i.png", {title});
    row("a byte-order mark is none of the path", "\xef\xbb\xbfi.png\n", "i.png", {});
}

void ExchangeFiles::structureIsReadBack()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, iconPath);
    QFETCH(ColumnDefinitions, columns);
    TscFile::Structure structure;
    QVERIFY(structureIn(bytes, &structure));
    QCOMPARE(structure.iconPath, iconPath);
    QCOMPARE(structure.columns, columns);
}

void ExchangeFiles::structureProgress()
{
    QString bytes = text("i.png\na###text\nb###text\n");
    QTextStream stream(&bytes);
    TscFile::Structure structure;
    QStringList steps;
    QVERIFY(TscFile::read(stream, &structure, [&steps](int done, int total) {
        steps.append(QStringLiteral("%1/%2").arg(done).arg(total));
    }));
    QCOMPARE(steps, QStringList({text("0/3"), text("1/3")}));
}

void ExchangeFiles::structuresThatCannotBe_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a line of 100 MB") << QByteArray(100 * 1024 * 1024, 'x');
    QTest::newRow("a million lines") << QByteArray(1000000, '\n');
}

void ExchangeFiles::structuresThatCannotBe()
{
    QFETCH(QByteArray, bytes);
    TscFile::Structure structure;
    QVERIFY(!structureIn(bytes, &structure));
}

void ExchangeFiles::mutatedStructures()
{
    QRandomGenerator random(start());
    const QByteArray good = "DB_DATA/a.png\nRSTRINGFORMAT_Titolo###text\nNDATEFORMAT_x###text\n";
    for (qint64 i = rounds(50000); i > 0; --i) {
        QByteArray bytes = good;
        for (int changes = random.bounded(1, 6); changes > 0; --changes) {
            bytes[int(random.bounded(bytes.size()))] = char(random.bounded(256));
        }
        TscFile::Structure structure;
        QVERIFY(structureIn(bytes, &structure));
        QVERIFY(structure.columns.size() <= bytes.count('\n'));
    }
}

void ExchangeFiles::readableTexts()
{
    const QStringList columns = {text("RINTEGERFORMAT_Id"), text("NSTRINGFORMAT_Prezzo_XMLTYX_2"),
                                 text("Xautori_XDTX_RSTRINGFORMAT_Nome"),
                                 text("NLONGSTRINGFORMAT_UserPath"), text("foreign")};
    const QStringList values = {text("7"), text("3;50"), text("---"), text("però"), QString()};
    QCOMPARE(written([&](QTextStream &stream) {
                 ReadableText::Writer writer(stream, columns);
                 for (const QString &value : values) {
                     writer.addLine(value);
                 }
             }),
             QByteArray("Id=7\nPrezzo_XMLTYX_2=3;50\nNome=---\nUserPath=però\n=\n"));
    QCOMPARE(written([&](QTextStream &stream) {
                 ReadableText::Writer writer(stream, columns);
                 for (int record = 0; record < 2; ++record) {
                     for (const QString &value : values) {
                         writer.addCell(value);
                     }
                     writer.endRecord();
                 }
             }),
             QByteArray("Id;7;Prezzo_XMLTYX_2;3;50;Nome;---;UserPath;però;;;\n").repeated(2));
}

void ExchangeFiles::fileIsWrittenWhole()
{
    const Workspace here;
    {
        WholeFile file(here.path(text("a.txt")));
        QVERIFY(file.isOpen());
        file.stream() << text("però") << '\n';
        QVERIFY(!here.exists(text("a.txt")));
        QVERIFY(file.commit());
    }
    QCOMPARE(here.read(text("a.txt")), QByteArray("però\n"));
    QCOMPARE(QDir(here.path()).entryList(QDir::Files), QStringList(text("a.txt")));
}

void ExchangeFiles::olderFileStaysUntilTheEnd()
{
    const Workspace here;
    here.write(text("a.txt"), "vecchio");
    {
        WholeFile file(here.path(text("a.txt")));
        QVERIFY(file.isOpen());
        file.stream() << QString(100000, QLatin1Char('x'));
        file.stream().flush();
        QCOMPARE(here.read(text("a.txt")), QByteArray("vecchio"));
    }
    QCOMPARE(here.read(text("a.txt")), QByteArray("vecchio"));
    QCOMPARE(QDir(here.path()).entryList(QDir::Files), QStringList(text("a.txt")));
}

void ExchangeFiles::targetsThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("an empty name") << QString();
    QTest::newRow("a folder") << text("folder");
    QTest::newRow("a missing folder") << text("missing/a.txt");
    QTest::newRow("a pipe") << text("pipe");
    QTest::newRow("a link to a device") << text("device");
}

void ExchangeFiles::targetsThatCannotBeWritten()
{
    QFETCH(QString, name);
    const Workspace here;
    QVERIFY(QDir(here.path()).mkdir(text("folder")));
    QCOMPARE(mkfifo(qPrintable(here.path(text("pipe"))), 0600), 0);
    QCOMPARE(symlink("/dev/full", qPrintable(here.path(text("device")))), 0);
    const WholeFile file(name.isEmpty() ? name : here.path(name));
    QVERIFY(!file.isOpen());
    QCOMPARE(QDir(here.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList(QDir(here.path()).entryList(QDir::Files)));
    QVERIFY(!QFileInfo(text("/dev/full")).isFile());
}

void ExchangeFiles::fullDiskLeavesTheOlderFile()
{
    const Workspace here;
    here.write(text("a.txt"), "vecchio");
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    bool committed = true;
    {
        WholeFile file(here.path(text("a.txt")));
        const rlimit small{100000, before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        for (int i = 0; i < 1000; ++i) {
            file.stream() << QString(1000, QLatin1Char('x'));
        }
        committed = file.commit();
    }
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    QVERIFY(!committed);
    QCOMPARE(here.read(text("a.txt")), QByteArray("vecchio"));
    QCOMPARE(QDir(here.path()).entryList(QDir::Files), QStringList(text("a.txt")));
}

QTEST_GUILESS_MAIN(ExchangeFiles)

#include "exchange_files.moc"
