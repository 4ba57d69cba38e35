// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of the sample collection: that it is whole, true to the program's own layout, and that
// making it harms nothing.
#include "model/attachments.h"
#include "model/columns.h"
#include "model/formats.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "model/values.h"
#include "samples/SampleCollection.h"
#include "samples/unattendedboxes.h"

#include <QDirIterator>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

using Row = QMap<QString, QString>;
using Outcome = SampleCollection::Outcome;

const QString Connection = QStringLiteral("samples-test");
const QString Id = QStringLiteral("RINTEGERFORMAT_Id");
const QString UserPath = QStringLiteral("NLONGSTRINGFORMAT_UserPath");
const QString Title = QStringLiteral("RSTRINGFORMAT_Titolo");
const QString Author = QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Autore");
const QString Member = QStringLiteral("Xsoci_XDTX_RSTRINGFORMAT_Socio");
const QStringList Tables = {QStringLiteral("libri"), QStringLiteral("autori"),
                            QStringLiteral("soci"), QStringLiteral("HIDDENTABLE_Note")};
const QString LoanPrefix =
    QStringLiteral("HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_");
const QStringList LoanBooks = {QStringLiteral("Il nome della rosa"),
                               QStringLiteral("Il Gattopardo"),
                               QStringLiteral("Cent'anni di solitudine"),
                               QStringLiteral("Harry Potter e la pietra filosofale")};
const QStringList LoanColumns = {QStringLiteral("RINTEGERFORMAT_Id integer"),
                                 QStringLiteral("NLONGSTRINGFORMAT_UserPath "),
                                 QStringLiteral("Xsoci_XDTX_RSTRINGFORMAT_Socio integer"),
                                 QStringLiteral("NDATEFORMAT_Dal text"),
                                 QStringLiteral("NDATEFORMAT_Al text"),
                                 QStringLiteral("NBOOLFORMAT_Restituito text")};

QString loanTable(const QString &book)
{
    return SqlNames::madeSafe(
        SubTables::storedName(QStringLiteral("libri"), QStringLiteral("Prestiti"), book));
}

QStringList allTables()
{
    QStringList all = Tables;
    for (const QString &book : LoanBooks) {
        all.append(loanTable(book));
    }
    return all;
}

QVector<Row> rowsOf(const QString &table)
{
    QSqlQuery query(QSqlDatabase::database(Connection));
    query.exec(QStringLiteral("SELECT * FROM \"%1\"").arg(table));
    QVector<Row> rows;
    while (query.next()) {
        Row row;
        for (int place = 0; place < query.record().count(); ++place) {
            row.insert(query.record().fieldName(place), query.value(place).toString());
        }
        rows.append(row);
    }
    return rows;
}

/// "name type" of each column; SQLite's versions differ in the case of the type.
QStringList columnsOf(const QString &table)
{
    QSqlQuery query(QSqlDatabase::database(Connection));
    query.exec(QStringLiteral("PRAGMA table_info(\"%1\")").arg(table));
    QStringList columns;
    while (query.next()) {
        columns.append(query.value(1).toString() + QLatin1Char(' ') +
                       query.value(2).toString().toLower());
    }
    return columns;
}

QStringList valuesOf(const QString &table, const QString &column)
{
    QStringList values;
    for (const Row &row : rowsOf(table)) {
        values.append(row.value(column));
    }
    return values;
}

/// Everything in a folder: path below it -> bytes and time of the last change.
QMap<QString, QPair<QByteArray, QDateTime>> snapshot(const QString &folder)
{
    QMap<QString, QPair<QByteArray, QDateTime>> all;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        all.insert(QDir(folder).relativeFilePath(walk.filePath()),
                   {bytes, walk.fileInfo().lastModified()});
    }
    return all;
}

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// The collection's data in a folder of its own, to be spoilt.
void copyData(const QString &folder)
{
    SampleCollection builtIn;
    QDirIterator walk(QStringLiteral(":/samples"), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString from = walk.next();
        write(folder + from.mid(QStringLiteral(":/samples").size()), read(from));
    }
}

} // namespace

class SamplesCollection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void folderHoldsTheCollectionAndNothingElse();
    void databaseIsSound();
    void tablesComeInOrder();
    void columns_data();
    void columns();
    void everyLineOfTheDataIsARecord_data();
    void everyLineOfTheDataIsARecord();
    void thereAreEnoughBooks();
    void noTitleComesTwice();
    void everyReferenceLeadsToARecord_data();
    void everyReferenceLeadsToARecord();
    void everyAuthorHasABook();
    void authorsLinkToTheBooks();
    void subTableFieldsHoldTheirLabel();
    void valuesFitTheirFormats_data();
    void valuesFitTheirFormats();
    void someFieldsAreEmpty();
    void addressesAreWebAndMail();
    void everyRecordHasItsOwnFolder();
    void coversLoad();
    void sheetsArePdf();
    void iconsLoad();
    void loansAreConfigured();
    void loanTablesFollowTheConfiguration_data();
    void loanTablesFollowTheConfiguration();
    void loansRunForward();
    void filtersAreSaved_data();
    void filtersAreSaved();

    void aSecondRunTouchesNothing();
    void aLinkInThePlaceOfTheDatabaseStays();
    void aMissingFolderIsMade();
    void theDatabaseIsRememberedByItsWholePath();
    void anEmptyRememberedPathIsFilled();
    void aRememberedDatabaseStays();
    void filesThatAreThereStay();
    void aFileInThePlaceOfAFolderFails();
    void spoiltDataMakeNothing_data();
    void spoiltDataMakeNothing();

private:
    // A box that nobody expects must not hang the test; without the collection it fails anyway.
    UnattendedBoxes boxes{[](const QString &text) { qWarning("%s", qPrintable(text)); }};
    QTemporaryDir place;
};

void SamplesCollection::initTestCase()
{
    QVERIFY(place.isValid());
    SampleCollection collection;
    const Outcome outcome = collection.makeIn(place.path());
    QCOMPARE(collection.problem(), QString());
    QCOMPARE(outcome, Outcome::Made);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection);
    database.setDatabaseName(SampleCollection::databasePath(place.path()));
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    QVERIFY(database.open());
}

void SamplesCollection::cleanupTestCase()
{
    QSqlDatabase::database(Connection).close();
    QSqlDatabase::removeDatabase(Connection);
}

void SamplesCollection::folderHoldsTheCollectionAndNothingElse()
{
    QCOMPARE(entries(place.path()),
             QStringList({QStringLiteral("DB_DATA"), QStringLiteral("TABLES_DOC"),
                          QStringLiteral("biblioteca.db"), QStringLiteral("lastDb.dat")}));
}

void SamplesCollection::databaseIsSound()
{
    QSqlQuery query(QSqlDatabase::database(Connection));
    QVERIFY(query.exec(QStringLiteral("PRAGMA integrity_check")));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toString(), QStringLiteral("ok"));
}

void SamplesCollection::tablesComeInOrder()
{
    const QStringList reserved = {QStringLiteral("settings"), QStringLiteral("filters"),
                                  QStringLiteral("subtablesconfigs")};
    QCOMPARE(QSqlDatabase::database(Connection).tables(), reserved + allTables());
}

void SamplesCollection::columns_data()
{
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("libri") << QStringList(
        {QStringLiteral("RINTEGERFORMAT_Id integer"), QStringLiteral("RSTRINGFORMAT_Titolo text"),
         QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Autore integer"),
         QStringLiteral("NINTEGERFORMAT_Anno text"), QStringLiteral("NSTRINGFORMAT_Genere text"),
         QStringLiteral("NINTEGERFORMAT_Pagine text"), QStringLiteral("NMONEYFORMAT_Prezzo text"),
         QStringLiteral("NBOOLFORMAT_Letto text"), QStringLiteral("NDATEFORMAT_Comprato_il text"),
         QStringLiteral("NREALFORMAT_Valutazione text"),
         QStringLiteral("NURLFORMAT_Pagina_web text"),
         QStringLiteral("NMAILFORMAT_Posta_editore text"),
         QStringLiteral("NLONGSTRINGFORMAT_UserPath "),
         QStringLiteral("NIMAGEFORMAT_Copertina text"), QStringLiteral("NPDFFORMAT_Scheda text"),
         QStringLiteral("NSUBTABLEFORMAT_Prestiti text")});
    QTest::newRow("autori") << QStringList(
        {QStringLiteral("RINTEGERFORMAT_Id integer"), QStringLiteral("RSTRINGFORMAT_Autore text"),
         QStringLiteral("NDATEFORMAT_Nato_il text"), QStringLiteral("NSTRINGFORMAT_Paese text"),
         QStringLiteral("NURLFORMAT_Pagina_web text"), QStringLiteral("NLINKFORMAT_libri text"),
         QStringLiteral("NLONGSTRINGFORMAT_UserPath ")});
    QTest::newRow("soci") << QStringList(
        {QStringLiteral("RINTEGERFORMAT_Id integer"), QStringLiteral("RSTRINGFORMAT_Socio text"),
         QStringLiteral("NMAILFORMAT_Posta text"), QStringLiteral("NSTRINGFORMAT_Telefono text"),
         QStringLiteral("NDATEFORMAT_Iscritto_il text"),
         QStringLiteral("NBOOLFORMAT_Quota_pagata text"), QStringLiteral("NMONEYFORMAT_Quota text"),
         QStringLiteral("NLONGSTRINGFORMAT_UserPath ")});
    QTest::newRow("HIDDENTABLE_Note") << QStringList(
        {QStringLiteral("RINTEGERFORMAT_Id integer"), QStringLiteral("RSTRINGFORMAT_Titolo text"),
         QStringLiteral("NDATEFORMAT_Scritta_il text"), QStringLiteral("NSTRINGFORMAT_Testo text"),
         QStringLiteral("NLONGSTRINGFORMAT_UserPath ")});
}

void SamplesCollection::columns()
{
    QFETCH(const QStringList, expected);
    QCOMPARE(columnsOf(QString::fromLatin1(QTest::currentDataTag())), expected);
}

void SamplesCollection::everyLineOfTheDataIsARecord_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("libri") << Tables.at(0);
    QTest::newRow("autori") << Tables.at(1);
    QTest::newRow("soci") << Tables.at(2);
    QTest::newRow("note") << Tables.at(3);
}

void SamplesCollection::everyLineOfTheDataIsARecord()
{
    QFETCH(const QString, table);
    const QString path =
        QStringLiteral(":/samples/data/%1.tsv").arg(QLatin1String(QTest::currentDataTag()));
    QStringList titles;
    for (const QString &line : QString::fromUtf8(read(path)).split(QLatin1Char('\n'))) {
        titles.append(line.section(QLatin1Char('\t'), 0, 0));
    }
    titles.removeFirst();
    titles.removeLast();
    const QString titleColumn = columnsOf(table).at(1).section(QLatin1Char(' '), 0, 0);
    QCOMPARE(valuesOf(table, titleColumn), titles);
}

void SamplesCollection::thereAreEnoughBooks()
{
    QVERIFY(rowsOf(Tables.at(0)).size() >= 150);
    QVERIFY(rowsOf(Tables.at(1)).size() >= 80);
    QCOMPARE(rowsOf(Tables.at(2)).size(), 30);
}

void SamplesCollection::noTitleComesTwice()
{
    for (const QString &table : Tables) {
        const QString titleColumn = columnsOf(table).at(1).section(QLatin1Char(' '), 0, 0);
        QStringList seen;
        for (const QString &title : valuesOf(table, titleColumn)) {
            const QString plain = title.toLower().simplified();
            QVERIFY2(!plain.isEmpty() && !seen.contains(plain), qPrintable(title));
            seen.append(plain);
        }
    }
}

void SamplesCollection::everyReferenceLeadsToARecord_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("target");
    QTest::newRow("books have authors") << Tables.at(0) << Author << Tables.at(1);
    for (const QString &book : LoanBooks) {
        QTest::newRow(qPrintable(QStringLiteral("loans of %1 have members").arg(book)))
            << loanTable(book) << Member << Tables.at(2);
    }
}

void SamplesCollection::everyReferenceLeadsToARecord()
{
    QFETCH(const QString, table);
    QFETCH(const QString, column);
    QFETCH(const QString, target);
    const QStringList ids = valuesOf(target, Id);
    const QStringList references = valuesOf(table, column);
    QVERIFY(!references.isEmpty());
    for (const QString &reference : references) {
        QVERIFY2(ids.contains(reference), qPrintable(reference));
    }
}

void SamplesCollection::everyAuthorHasABook()
{
    const QStringList used = valuesOf(Tables.at(0), Author);
    for (const Row &author : rowsOf(Tables.at(1))) {
        QVERIFY2(used.contains(author.value(Id)), qPrintable(author.first()));
    }
    // One pair that everybody knows, so that a shift of all references shows.
    for (const Row &book : rowsOf(Tables.at(0))) {
        if (book.value(Title) == QLatin1String("Il Gattopardo")) {
            const int id = book.value(Author).toInt();
            QCOMPARE(rowsOf(Tables.at(1)).at(id - 1).value(QStringLiteral("RSTRINGFORMAT_Autore")),
                     QStringLiteral("Giuseppe Tomasi di Lampedusa"));
        }
    }
}

void SamplesCollection::authorsLinkToTheBooks()
{
    QStringList links = valuesOf(Tables.at(1), QStringLiteral("NLINKFORMAT_libri"));
    links.removeDuplicates();
    QCOMPARE(links, QStringList(QStringLiteral("libri")));
}

void SamplesCollection::subTableFieldsHoldTheirLabel()
{
    QStringList texts = valuesOf(Tables.at(0), QStringLiteral("NSUBTABLEFORMAT_Prestiti"));
    texts.removeDuplicates();
    QCOMPARE(texts, QStringList(QStringLiteral("Prestiti")));
}

void SamplesCollection::valuesFitTheirFormats_data()
{
    QTest::addColumn<QString>("table");
    for (const QString &table : allTables()) {
        QTest::newRow(qPrintable(table)) << table;
    }
}

void SamplesCollection::valuesFitTheirFormats()
{
    QFETCH(const QString, table);
    const QMap<QString, QString> patterns = {
        {QStringLiteral("INTEGER"), QStringLiteral("\\A\\d+\\z")},
        {QStringLiteral("REAL"), QStringLiteral("\\A[0-5]\\.\\d{6}\\z")},
        {QStringLiteral("MONEY"), QStringLiteral("\\A\\d+\\.\\d\\d\\z")},
        {QStringLiteral("BOOL"), QStringLiteral("\\A(TRUE|FALSE)\\z")}};
    for (const Row &row : rowsOf(table)) {
        for (auto field = row.begin(); field != row.end(); ++field) {
            if (Columns::isReference(field.key())) {
                continue;
            }
            const QString word = Columns::formatWord(field.key());
            const QByteArray where = (field.key() + QLatin1Char(' ') + *field).toUtf8();
            if (patterns.contains(word)) {
                QVERIFY2(QRegularExpression(patterns.value(word)).match(*field).hasMatch(),
                         where.constData());
            }
            if (word == QLatin1String("DATE")) {
                QVERIFY2(field->isEmpty() || Values::date(*field).isValid(), where.constData());
            }
            QVERIFY2(*field == field->trimmed(), where.constData());
        }
    }
}

void SamplesCollection::someFieldsAreEmpty()
{
    const QStringList bought = valuesOf(Tables.at(0), QStringLiteral("NDATEFORMAT_Comprato_il"));
    QVERIFY(bought.contains(QString()) && bought.count(QString()) < bought.size() / 2);
    const QStringList rated = valuesOf(Tables.at(0), QStringLiteral("NREALFORMAT_Valutazione"));
    QVERIFY(rated.contains(QStringLiteral("0.000000")));
    QVERIFY(rated.contains(QStringLiteral("4.500000")));
}

void SamplesCollection::addressesAreWebAndMail()
{
    const QRegularExpression web(
        QStringLiteral("\\A(|https://it\\.wikipedia\\.org/wiki/[^ ?#]+)\\z"));
    const QRegularExpression mail(QStringLiteral("\\A(|info@[a-z]+\\.(it|com))\\z"));
    const QRegularExpression invented(QStringLiteral("\\A[a-z.]+@example\\.org\\z"));
    for (const Row &row : rowsOf(Tables.at(0))) {
        QVERIFY(web.match(row.value(QStringLiteral("NURLFORMAT_Pagina_web"))).hasMatch());
        QVERIFY(mail.match(row.value(QStringLiteral("NMAILFORMAT_Posta_editore"))).hasMatch());
    }
    for (const QString &address : valuesOf(Tables.at(1), QStringLiteral("NURLFORMAT_Pagina_web"))) {
        QVERIFY2(web.match(address).hasMatch(), qPrintable(address));
    }
    for (const QString &address : valuesOf(Tables.at(2), QStringLiteral("NMAILFORMAT_Posta"))) {
        QVERIFY2(invented.match(address).hasMatch(), qPrintable(address));
    }
}

void SamplesCollection::everyRecordHasItsOwnFolder()
{
    QStringList seen;
    for (const QString &table : allTables()) {
        const QString second = columnsOf(table).at(1).section(QLatin1Char(' '), 0, 0);
        for (const Row &row : rowsOf(table)) {
            // Records without a title of their own are told apart by their Id.
            const QString name = second == UserPath ? row.value(Id) : row.value(second);
            QCOMPARE(row.value(UserPath), Attachments::recordFolder(table, name));
            QVERIFY2(!seen.contains(row.value(UserPath)), qPrintable(name));
            seen.append(row.value(UserPath));
        }
    }
}

void SamplesCollection::coversLoad()
{
    QVector<QByteArray> seen;
    const QString base = place.path() + QLatin1Char('/');
    for (const Row &row : rowsOf(Tables.at(0))) {
        const QString path = row.value(QStringLiteral("NIMAGEFORMAT_Copertina"));
        if (path.isEmpty()) {
            continue;
        }
        QVERIFY2(path.startsWith(row.value(UserPath) + QStringLiteral("/copertina_")),
                 qPrintable(path));
        QVERIFY2(Attachments::mayBeOpened(base, path), qPrintable(path));
        QCOMPARE(QString::fromLatin1(path.toUtf8()), path);
        QCOMPARE(QImage(base + path).size(), QSize(400, 600));
        QVERIFY2(!seen.contains(read(base + path)), qPrintable(path));
        seen.append(read(base + path));
    }
    QCOMPARE(seen.size(), 16);
}

void SamplesCollection::sheetsArePdf()
{
    int sheets = 0;
    const QString base = place.path() + QLatin1Char('/');
    for (const Row &row : rowsOf(Tables.at(0))) {
        const QString path = row.value(QStringLiteral("NPDFFORMAT_Scheda"));
        if (path.isEmpty()) {
            continue;
        }
        QVERIFY2(path.startsWith(row.value(UserPath) + QStringLiteral("/scheda_")),
                 qPrintable(path));
        QVERIFY2(Attachments::mayBeOpened(base, path), qPrintable(path));
        QCOMPARE(QString::fromLatin1(path.toUtf8()), path);
        const QByteArray bytes = read(base + path);
        QVERIFY2(bytes.startsWith("%PDF-"), qPrintable(path));
        QVERIFY2(bytes.trimmed().endsWith("%%EOF"), qPrintable(path));
        QVERIFY2(bytes.contains("/Count 1\n"), qPrintable(path));
        ++sheets;
    }
    QCOMPARE(sheets, 8);
}

void SamplesCollection::iconsLoad()
{
    QMap<QString, QString> icons;
    for (const Row &row : rowsOf(QStringLiteral("settings"))) {
        const QString path = row.value(QStringLiteral("RSTRINGFORMAT_iconPath"));
        icons.insert(row.value(QStringLiteral("RSTRINGFORMAT_tableName")), path);
        QVERIFY2(!QImage(place.filePath(path)).isNull(), qPrintable(path));
        QVERIFY2(QFileInfo(place.filePath(path)).permission(QFile::WriteOwner), qPrintable(path));
    }
    QMap<QString, QString> expected = {{Tables.at(0), QStringLiteral("DB_DATA/libri.png")},
                                       {Tables.at(1), QStringLiteral("DB_DATA/autori.png")},
                                       {Tables.at(2), QStringLiteral("DB_DATA/soci.png")},
                                       {Tables.at(3), QStringLiteral("DB_DATA/note.png")}};
    for (const QString &book : LoanBooks) {
        expected.insert(loanTable(book), QStringLiteral("DB_DATA/prestiti.png"));
    }
    QCOMPARE(icons, expected);
}

void SamplesCollection::loansAreConfigured()
{
    QStringList lines;
    for (const Row &row : rowsOf(QStringLiteral("subtablesconfigs"))) {
        lines.append(row.value(QStringLiteral("RSTRINGFORMAT_subConfigName")) + QLatin1Char('|') +
                     row.value(QStringLiteral("NSTRINGFORMAT_subConfigFieldName")) +
                     QLatin1Char('|') +
                     row.value(QStringLiteral("NSTRINGFORMAT_subConfigFieldType")));
    }
    QCOMPARE(
        lines,
        QStringList(
            {QStringLiteral("libri_Prestiti|NLONGSTRINGFORMAT_UserPath|"),
             QStringLiteral("libri_Prestiti_XSBCONFX_1|Xsoci_XDTX_RSTRINGFORMAT_Socio|Integer"),
             QStringLiteral("libri_Prestiti_XSBCONFX_2|NDATEFORMAT_Dal|text"),
             QStringLiteral("libri_Prestiti_XSBCONFX_3|NDATEFORMAT_Al|text"),
             QStringLiteral("libri_Prestiti_XSBCONFX_4|NBOOLFORMAT_Restituito|text")}));
}

void SamplesCollection::loanTablesFollowTheConfiguration_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("plain title") << LoanPrefix + QStringLiteral("Il_nome_della_rosa");
    QTest::newRow("capital inside") << LoanPrefix + QStringLiteral("Il_Gattopardo");
    QTest::newRow("apostrophe in full width")
        << LoanPrefix + QStringLiteral("Cent\uFF07anni_di_solitudine");
    QTest::newRow("long title") << LoanPrefix +
                                       QStringLiteral("Harry_Potter_e_la_pietra_filosofale");
}

void SamplesCollection::loanTablesFollowTheConfiguration()
{
    QFETCH(const QString, table);
    QCOMPARE(columnsOf(table), LoanColumns);
    QVERIFY(rowsOf(table).size() >= 2);
}

void SamplesCollection::loansRunForward()
{
    QMap<QString, QDate> joined;
    for (const Row &row : rowsOf(Tables.at(2))) {
        joined.insert(row.value(Id),
                      Values::date(row.value(QStringLiteral("NDATEFORMAT_Iscritto_il"))));
    }
    for (const QString &book : LoanBooks) {
        for (const Row &row : rowsOf(loanTable(book))) {
            const QDate from = Values::date(row.value(QStringLiteral("NDATEFORMAT_Dal")));
            const QDate to = Values::date(row.value(QStringLiteral("NDATEFORMAT_Al")));
            const bool back =
                row.value(QStringLiteral("NBOOLFORMAT_Restituito")) == QLatin1String("TRUE");
            QVERIFY(from.isValid());
            QVERIFY(from >= joined.value(row.value(Member)));
            QCOMPARE(back, to.isValid());
            QVERIFY(!back || from <= to);
        }
    }
}

void SamplesCollection::filtersAreSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Row>("set");
    QTest::newRow("books to read")
        << QStringLiteral("Da leggere")
        << Row({{QStringLiteral("NBOOLFORMAT_Letto"), QStringLiteral("FALSE|BOOL|Equal|And")}});
    QTest::newRow("short classics")
        << QStringLiteral("Classici brevi")
        << Row({{QStringLiteral("NINTEGERFORMAT_Anno"), QStringLiteral("1950|INTEGER|Minor|And")},
                {QStringLiteral("NINTEGERFORMAT_Pagine"),
                 QStringLiteral("200|INTEGER|Minor|And")}});
}

void SamplesCollection::filtersAreSaved()
{
    QFETCH(const QString, name);
    QFETCH(const Row, set);
    const QStringList untouched = {QStringLiteral("RINTEGERFORMAT_Id=0|INTEGER"),
                                   QStringLiteral("RSTRINGFORMAT_Titolo=|STRING"),
                                   QStringLiteral("Xautori_XDTX_RSTRINGFORMAT_Autore=|STRING"),
                                   QStringLiteral("NINTEGERFORMAT_Anno=0|INTEGER"),
                                   QStringLiteral("NSTRINGFORMAT_Genere=|STRING"),
                                   QStringLiteral("NINTEGERFORMAT_Pagine=0|INTEGER"),
                                   QStringLiteral("NMONEYFORMAT_Prezzo=|MONEY"),
                                   QStringLiteral("NBOOLFORMAT_Letto=FALSE|BOOL"),
                                   QStringLiteral("NDATEFORMAT_Comprato_il=|DATE"),
                                   QStringLiteral("NREALFORMAT_Valutazione=|REAL"),
                                   QStringLiteral("NURLFORMAT_Pagina_web=|URL"),
                                   QStringLiteral("NMAILFORMAT_Posta_editore=|MAIL")};
    QStringList expected;
    for (int place = 0; place < untouched.size(); ++place) {
        const QString column = untouched.at(place).section(QLatin1Char('='), 0, 0);
        const QString free =
            untouched.at(place).section(QLatin1Char('='), 1) + QStringLiteral("|NoCondition|And");
        const QString row = place == 0 ? name : name + QStringLiteral("_XFLTRX_%1").arg(place);
        expected.append(row + QStringLiteral("|libri|") + column + QLatin1Char('|') +
                        set.value(column, free));
    }
    QStringList saved;
    for (const Row &row : rowsOf(QStringLiteral("filters"))) {
        if (row.value(QStringLiteral("RSTRINGFORMAT_filterName")).startsWith(name)) {
            saved.append(
                QStringList({row.value(QStringLiteral("RSTRINGFORMAT_filterName")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterTableName")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterFieldName")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterFieldValue")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterFieldType")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterFieldCondition")),
                             row.value(QStringLiteral("NSTRINGFORMAT_filterFieldConditionAndOr"))})
                    .join(QLatin1Char('|')));
        }
    }
    QCOMPARE(saved, expected);
    QCOMPARE(rowsOf(QStringLiteral("filters")).size(), 2 * untouched.size());
}

void SamplesCollection::aSecondRunTouchesNothing()
{
    const auto before = snapshot(place.path());
    SampleCollection collection;
    QCOMPARE(collection.makeIn(place.path()), Outcome::AlreadyThere);
    QCOMPARE(snapshot(place.path()), before);
}

void SamplesCollection::aLinkInThePlaceOfTheDatabaseStays()
{
    const QTemporaryDir other;
    QVERIFY(QFile::link(QStringLiteral("/nonexistent/nowhere.db"),
                        SampleCollection::databasePath(other.path())));
    SampleCollection collection;
    QCOMPARE(collection.makeIn(other.path()), Outcome::AlreadyThere);
    QCOMPARE(entries(other.path()), QStringList(QStringLiteral("biblioteca.db")));
    QCOMPARE(QFileInfo(SampleCollection::databasePath(other.path())).symLinkTarget(),
             QStringLiteral("/nonexistent/nowhere.db"));
}

void SamplesCollection::aMissingFolderIsMade()
{
    const QTemporaryDir other;
    const QString folder = other.filePath(QStringLiteral("a/b c"));
    SampleCollection collection;
    QCOMPARE(collection.makeIn(folder), Outcome::Made);
    QVERIFY(QFileInfo::exists(folder + QStringLiteral("/biblioteca.db")));
}

void SamplesCollection::theDatabaseIsRememberedByItsWholePath()
{
    QCOMPARE(QString::fromUtf8(read(place.filePath(QStringLiteral("lastDb.dat")))),
             place.filePath(QStringLiteral("biblioteca.db")));
}

void SamplesCollection::anEmptyRememberedPathIsFilled()
{
    const QTemporaryDir other;
    write(other.filePath(QStringLiteral("lastDb.dat")), QByteArray());
    SampleCollection collection;
    QCOMPARE(collection.makeIn(other.path()), Outcome::Made);
    QCOMPARE(QString::fromUtf8(read(other.filePath(QStringLiteral("lastDb.dat")))),
             other.filePath(QStringLiteral("biblioteca.db")));
}

void SamplesCollection::aRememberedDatabaseStays()
{
    const QTemporaryDir other;
    write(other.filePath(QStringLiteral("lastDb.dat")), "/home/anna/vini.db");
    SampleCollection collection;
    QCOMPARE(collection.makeIn(other.path()), Outcome::Made);
    QCOMPARE(read(other.filePath(QStringLiteral("lastDb.dat"))), QByteArray("/home/anna/vini.db"));
}

void SamplesCollection::filesThatAreThereStay()
{
    const QTemporaryDir other;
    const QString cover =
        other.filePath(QStringLiteral("TABLES_DOC/libri_Moby_Dick/copertina_moby_dick.png"));
    const QString icon = other.filePath(QStringLiteral("DB_DATA/libri.png"));
    const QString own = other.filePath(QStringLiteral("TABLES_DOC/vini_Barolo/etichetta.png"));
    for (const QString &path : {cover, icon, own}) {
        write(path, "mine");
    }
    SampleCollection collection;
    QCOMPARE(collection.makeIn(other.path()), Outcome::Made);
    for (const QString &path : {cover, icon, own}) {
        QCOMPARE(read(path), QByteArray("mine"));
    }
    QVERIFY(QFileInfo::exists(
        other.filePath(QStringLiteral("TABLES_DOC/libri_Moby_Dick/scheda_moby_dick.pdf"))));
    QVERIFY(QFileInfo::exists(other.filePath(QStringLiteral("DB_DATA/autori.png"))));
}

void SamplesCollection::aFileInThePlaceOfAFolderFails()
{
    const QTemporaryDir other;
    write(other.filePath(QStringLiteral("TABLES_DOC")), "mine");
    SampleCollection collection;
    QCOMPARE(collection.makeIn(other.path()), Outcome::Failed);
    QCOMPARE(collection.problem(), QStringLiteral("Impossibile scrivere in %1")
                                       .arg(other.filePath(QStringLiteral("TABLES_DOC"))));
    QCOMPARE(entries(other.path()), QStringList(QStringLiteral("TABLES_DOC")));
    QCOMPARE(read(other.filePath(QStringLiteral("TABLES_DOC"))), QByteArray("mine"));
}

void SamplesCollection::spoiltDataMakeNothing_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("problem");
    QTest::newRow("an author who is missing")
        << "data/autori.tsv" << QByteArray("Primo Levi") << QByteArray("Secondo Levi")
        << QStringLiteral("«Primo Levi» non c'è nella tabella autori");
    QTest::newRow("a member who is missing")
        << "data/soci.tsv" << QByteArray("Ada Acquaviva") << QByteArray("Ida Acquaviva")
        << QStringLiteral("«Ada Acquaviva» non c'è nella tabella soci");
    QTest::newRow("loans of a book that is missing")
        << "data/prestiti.tsv" << QByteArray("Il Gattopardo") << QByteArray("Il Giaguaro")
        << QStringLiteral("«Il Giaguaro» non c'è nella tabella libri");
    QTest::newRow("a filter on a field that is missing")
        << "data/filtri.tsv" << QByteArray("NINTEGERFORMAT_Anno") << QByteArray("Anno")
        << QStringLiteral("Filtro Classici brevi: il campo Anno non c'è in libri");
    QTest::newRow("a filter on a field that has no condition")
        << "data/filtri.tsv" << QByteArray("NINTEGERFORMAT_Anno")
        << QByteArray("NIMAGEFORMAT_Copertina")
        << QStringLiteral(
               "Filtro Classici brevi: il campo NIMAGEFORMAT_Copertina non c'è in libri");
    QTest::newRow("a line without all its cells")
        << "data/note.tsv" << QByteArray("Orario\t") << QByteArray("Orario ")
        << QStringLiteral("%1/data/note.tsv, riga 2: 2 campi invece di 3");
    QTest::newRow("a cover with an unknown motif")
        << "data/copertine.tsv" << QByteArray("ventagli") << QByteArray("pois")
        << QStringLiteral("copertina_grande_gatsby.png");
    QTest::newRow("a sheet of a book without a cover")
        << "data/copertine.tsv" << QByteArray("Moby Dick\t") << QByteArray("Emma\t")
        << QStringLiteral("scheda_moby_dick.pdf");
    QTest::newRow("a data file that is missing")
        << "data/soci.tsv" << QByteArray() << QByteArray()
        << QStringLiteral("Impossibile leggere %1/data/soci.tsv");
    QTest::newRow("an icon that is missing")
        << "icons/note.png" << QByteArray() << QByteArray() << QStringLiteral("DB_DATA/note.png");
}

void SamplesCollection::spoiltDataMakeNothing()
{
    QFETCH(const QString, file);
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QString, problem);
    const QTemporaryDir source;
    copyData(source.path());
    const QString path = source.filePath(file);
    if (from.isEmpty()) {
        QVERIFY(QFile::remove(path));
    } else {
        QVERIFY(read(path).contains(from));
        write(path, read(path).replace(from, to));
    }
    const QTemporaryDir other;
    SampleCollection collection(source.path());
    QCOMPARE(collection.makeIn(other.path()), Outcome::Failed);
    const QString expected =
        problem.contains(QStringLiteral("%1")) ? problem.arg(source.path()) : problem;
    QVERIFY2(collection.problem().endsWith(expected), qPrintable(collection.problem()));
    QCOMPARE(entries(other.path()), QStringList());
}

QTEST_MAIN(SamplesCollection)
#include "samples_collection.moc"
