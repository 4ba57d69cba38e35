// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Databases as they reach a program in the end: good ones that were damaged, and foreign ones.
#include "tests/faults/tools/OddDatabase.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <utility>

namespace
{

QString chosen(const QStringList &texts, QRandomGenerator &random)
{
    return texts.at(random.bounded(texts.size()));
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void removeAll(const QString &path)
{
    for (const char *const ending : {"", "-journal", "-wal", "-shm"}) {
        QFile::remove(path + QString::fromLatin1(ending));
    }
}

// How the pages of a good file are made; each statement works on an empty file only.
const QStringList &layouts()
{
    static const QStringList all = {
        QStringLiteral("PRAGMA page_size=512"),
        QStringLiteral("PRAGMA page_size=1024"),
        QStringLiteral("PRAGMA page_size=4096"),
        QStringLiteral("PRAGMA page_size=65536"),
        QStringLiteral("PRAGMA page_size=512;PRAGMA auto_vacuum=1"),
        QStringLiteral("PRAGMA page_size=1024;PRAGMA auto_vacuum=2"),
        QStringLiteral("PRAGMA page_size=512;PRAGMA encoding='UTF-16le'"),
        QStringLiteral("PRAGMA page_size=1024;PRAGMA encoding='UTF-16be'"),
        QStringLiteral("PRAGMA page_size=1024;PRAGMA journal_mode=WAL")};
    return all;
}

// Every format, detail tables with their configuration, saved filters and icons.
QStringList goodTables()
{
    return {
        QStringLiteral(
            "CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text,"
            "NDATEFORMAT_Nascita text,NLONGSTRINGFORMAT_Note text)"),
        QStringLiteral(
            "CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
            "NLONGSTRINGFORMAT_Trama text,NDATEFORMAT_Uscita text,NINTEGERFORMAT_Pagine text,"
            "NREALFORMAT_Peso text,NMONEYFORMAT_Prezzo text,NMONEYFORMAT_Prezzo_XMLTYX_2 text,"
            "NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text,NBOOLFORMAT_Letto text,"
            "NMAILFORMAT_Posta text,NURLFORMAT_Sito text,NLINKFORMAT_autori text,"
            "Xautori_XDTX_RSTRINGFORMAT_Nome text,NSUBTABLEFORMAT_Prestiti text,"
            "NLONGSTRINGFORMAT_UserPath text)"),
        QStringLiteral(
            "CREATE TABLE HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_Libro_1 ("
            "RINTEGERFORMAT_Id integer primary key,NSTRINGFORMAT_Chi text,NDATEFORMAT_Quando "
            "text)"),
        QStringLiteral(
            "CREATE TABLE settings (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_tableName "
            "text,RSTRINGFORMAT_iconPath text)"),
        QStringLiteral(
            "CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_filterName "
            "text,NSTRINGFORMAT_filterTableName text,NSTRINGFORMAT_filterFieldName text,"
            "NSTRINGFORMAT_filterFieldValue text,NSTRINGFORMAT_filterFieldType text,"
            "NSTRINGFORMAT_filterFieldCondition text,NSTRINGFORMAT_filterFieldConditionAndOr "
            "text)"),
        QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                       "NSTRINGFORMAT_subConfigFieldType text)"),
        QStringLiteral("CREATE INDEX indice ON libri (RSTRINGFORMAT_Titolo)")};
}

QStringList goodRows()
{
    QStringList rows = {
        QStringLiteral("INSERT INTO settings VALUES (1,'libri','DB_DATA/libri.png')"),
        QStringLiteral("INSERT INTO filters VALUES (1,'Cari','libri','NMONEYFORMAT_Prezzo','20',"
                       "'MONEY','Major','And'),(2,'Cari_XFLTRX_1','libri','NBOOLFORMAT_Letto',"
                       "'TRUE','BOOL','Equal','Or')"),
        QStringLiteral("INSERT INTO subtablesconfigs VALUES (1,'libri_XSBCONFX_Prestiti',"
                       "'NSTRINGFORMAT_Chi','text')"),
        QStringLiteral("INSERT INTO HIDDENTABLE_libri_XSBTX_SUBTABLEFORMAT_Prestiti_XSBTUSRX_"
                       "Libro_1 VALUES (1,'Anna','01/02/2020'),(2,'Ugo','03/02/2020')")};
    for (int id = 1; id <= 12; ++id) {
        rows.append(QStringLiteral("INSERT INTO autori VALUES (%1,'Autore %1','0%2/01/1950',"
                                   "'Nota di %1, perché città')")
                        .arg(id)
                        .arg(id % 9 + 1));
    }
    for (int id = 1; id <= 24; ++id) {
        rows.append(
            QStringLiteral("INSERT INTO libri VALUES (%1,'Libro %1','%2','0%3/05/2001','%4',"
                           "'%1.500000','%1.25','3.00','TABLES_DOC/libri_Libro_%1/foto.png',"
                           "'TABLES_DOC/libri_Libro_%1/scheda.pdf','TRUE','a%1@example.org',"
                           "'https://example.org/%1','%5 Autore %5','%5','Prestiti',"
                           "'TABLES_DOC/libri_Libro_%1')")
                .arg(id)
                .arg(QStringLiteral("Una trama lunga. ").repeated(id % 4 == 0 ? 90 : 3))
                .arg(id % 9 + 1)
                .arg(id * 17)
                .arg(id % 12 + 1));
    }
    return rows;
}

void flipBytes(QByteArray &bytes, QRandomGenerator &random)
{
    // The head and the list of tables are where a wrong byte does most.
    const int reach = random.bounded(2) == 0 ? qMin(bytes.size(), 2048) : bytes.size();
    const int count = 1 + random.bounded(30);
    for (int i = 0; i < count; ++i) {
        const int place = random.bounded(reach);
        bytes[place] = char(bytes.at(place) ^ char(1 + random.bounded(255)));
    }
}

int pageSize(const QByteArray &bytes)
{
    const int stored = quint8(bytes.at(16)) * 256 + quint8(bytes.at(17));
    return stored == 1 ? 65536 : stored;
}

void swapPages(QByteArray &bytes, QRandomGenerator &random)
{
    const int size = pageSize(bytes);
    const int pages = bytes.size() / size;
    for (int i = 0; i < 1 + random.bounded(4); ++i) {
        const int first = random.bounded(pages);
        const int second = random.bounded(pages);
        const QByteArray kept = bytes.mid(first * size, size);
        bytes.replace(first * size, size, bytes.mid(second * size, size));
        bytes.replace(second * size, size, kept);
    }
}

void zeroPages(QByteArray &bytes, QRandomGenerator &random)
{
    const int size = pageSize(bytes);
    for (int i = 0; i < 1 + random.bounded(4); ++i) {
        const int page = random.bounded(bytes.size() / size);
        bytes.replace(page * size, size, QByteArray(size, '\0'));
    }
}

// As the SQLite of old wrote files: a cut one whose head tells its size is not opened at all.
void forgetSize(QByteArray &bytes)
{
    constexpr int VersionOfSize = 92;
    if (bytes.size() >= VersionOfSize + 4) {
        bytes.replace(VersionOfSize, 4, QByteArray(4, '\0'));
    }
}

const QStringList &oddNames()
{
    static const QStringList all = {QStringLiteral("libri"),
                                    QStringLiteral("i miei libri"),
                                    QStringLiteral("l'arte"),
                                    QStringLiteral("\"a\""),
                                    QStringLiteral("a,b"),
                                    QStringLiteral("select"),
                                    QStringLiteral("a;b"),
                                    QStringLiteral("a--"),
                                    QStringLiteral("/*a*/"),
                                    QStringLiteral("[a]"),
                                    QStringLiteral("main.x"),
                                    QStringLiteral("x AS SELECT 1 AS a"),
                                    QStringLiteral("%s%n%d"),
                                    QStringLiteral("1a"),
                                    QStringLiteral("`a`"),
                                    QStringLiteral("a(b)"),
                                    QStringLiteral("a\nb"),
                                    QStringLiteral("città"),
                                    QStringLiteral("📚"),
                                    QStringLiteral(":a"),
                                    QStringLiteral("?1"),
                                    QStringLiteral("a/../../etc"),
                                    QString(),
                                    QStringLiteral(" "),
                                    QStringLiteral("\t"),
                                    QStringLiteral("\u202e\u0007"),
                                    QStringLiteral("HIDDENTABLE_"),
                                    QStringLiteral("HIDDENTABLE_a_XSBTX_"),
                                    QStringLiteral("_XSBTX_"),
                                    QStringLiteral("HIDDENTABLE__XSBTX_SUBTABLEFORMAT__XSBTUSRX_"),
                                    QStringLiteral("Settings"),
                                    QStringLiteral("FILTERS"),
                                    QStringLiteral("a->b"),
                                    QStringLiteral("<b>x</b>"),
                                    QStringLiteral("x").repeated(1000),
                                    QStringLiteral("è").repeated(20000)};
    return all;
}

const QStringList &oddColumns()
{
    static const QStringList all = {QStringLiteral("RINTEGERFORMAT_Id"),
                                    QStringLiteral("rintegerformat_id"),
                                    QStringLiteral("NLONGSTRINGFORMAT_UserPath"),
                                    QStringLiteral("RSTRINGFORMAT_Titolo"),
                                    QStringLiteral("NDATEFORMAT_d"),
                                    QStringLiteral("NINTEGERFORMAT_i"),
                                    QStringLiteral("NREALFORMAT_r"),
                                    QStringLiteral("NMONEYFORMAT_m"),
                                    QStringLiteral("NIMAGEFORMAT_f"),
                                    QStringLiteral("NPDFFORMAT_p"),
                                    QStringLiteral("NBOOLFORMAT_b"),
                                    QStringLiteral("NMAILFORMAT_e"),
                                    QStringLiteral("NURLFORMAT_u"),
                                    QStringLiteral("NLINKFORMAT_nessuna"),
                                    QStringLiteral("NSUBTABLEFORMAT_s"),
                                    QStringLiteral("NLONGSTRINGFORMAT_l"),
                                    QStringLiteral("NMONEYFORMAT_m_XMLTYX_2"),
                                    QStringLiteral("Xlibri_XDTX_RSTRINGFORMAT_t"),
                                    QStringLiteral("Xlibri_XDTX_Xlibri_XDTX_a"),
                                    QStringLiteral("X_XDTX_"),
                                    QStringLiteral("X"),
                                    QStringLiteral("XFORMAT_"),
                                    QStringLiteral("FORMATFORMAT_FORMAT_"),
                                    QStringLiteral("NSTRINGFORMAT"),
                                    QStringLiteral("_XMLTYX_"),
                                    QStringLiteral("rowid"),
                                    QStringLiteral("current_date"),
                                    QStringLiteral("NSTRINGFORMAT_a\"b"),
                                    QStringLiteral("NSTRINGFORMAT_###"),
                                    QStringLiteral("NMONEYFORMAT_"),
                                    QStringLiteral("NIMAGEFORMAT_PDFFORMAT_x"),
                                    QStringLiteral("NLINKFORMAT_")};
    return all;
}

const QStringList &oddValues()
{
    static const QStringList all = {QStringLiteral("NULL"),
                                    QStringLiteral("''"),
                                    QStringLiteral("'0'"),
                                    QStringLiteral("1"),
                                    QStringLiteral("x'00ff80fe'"),
                                    QStringLiteral("zeroblob(5000)"),
                                    QStringLiteral("'a'||char(0)||'b'"),
                                    QStringLiteral("9223372036854775807"),
                                    QStringLiteral("-9223372036854775808"),
                                    QStringLiteral("2147483647"),
                                    QStringLiteral("-1e999"),
                                    QStringLiteral("1e-320"),
                                    QStringLiteral("'nan'"),
                                    QStringLiteral("'99/99/9999'"),
                                    QStringLiteral("'01/01/2020'"),
                                    QStringLiteral("'%s%n%d'"),
                                    QStringLiteral("char(55296,65534,8238,7)"),
                                    QStringLiteral("'../../../etc/passwd'"),
                                    QStringLiteral("'/dev/zero'"),
                                    QStringLiteral("'1 Libro 1'"),
                                    QStringLiteral("'TRUE'"),
                                    QStringLiteral("'a###b##'"),
                                    QStringLiteral("'<img src=x>'"),
                                    QStringLiteral("replace(hex(zeroblob(60000)),'00','ab')"),
                                    QStringLiteral("randomblob(300)"),
                                    QStringLiteral("'\n\r\t'")};
    return all;
}

// A table as another program may have made it. A random tail keeps names apart.
QStringList foreignTable(QRandomGenerator &random)
{
    QString name = chosen(oddNames(), random);
    for (int i = random.bounded(3); i > 0; --i) {
        name += QChar(1 + random.bounded(0xd7ff));
    }
    const bool isOurs = random.bounded(2) == 0;
    const QStringList types = {QStringLiteral("text"), QStringLiteral("integer"), QString(),
                               QStringLiteral("blob"), QStringLiteral("NUMERIC(3,2)")};
    QStringList columns;
    if (isOurs) {
        columns.append(QStringLiteral("RINTEGERFORMAT_Id integer primary key"));
    }
    const int width = 1 + random.bounded(12);
    for (int i = 0; i < width; ++i) {
        columns.append(OddDatabase::quoted(chosen(oddColumns(), random)) + QLatin1Char(' ') +
                       chosen(types, random));
    }
    if (random.bounded(6) == 0) {
        columns.append(QStringLiteral("NSTRINGFORMAT_g text AS (1||2)"));
    }
    columns.removeDuplicates();
    const QStringList endings = {QString(), QString(), QString(),
                                 isOurs ? QStringLiteral(" WITHOUT ROWID") : QString(),
                                 QStringLiteral(" STRICT")};
    QStringList statements = {QStringLiteral("CREATE TABLE %1 (%2)%3")
                                  .arg(OddDatabase::quoted(name), columns.join(QLatin1Char(',')),
                                       chosen(endings, random))};
    for (int row = random.bounded(5); row >= 0; --row) {
        QStringList values;
        for (int i = 0; i < columns.size() - int(columns.last().contains(QLatin1String(" AS ")));
             ++i) {
            values.append(i == 0 && isOurs ? QString::number(row + 1)
                                           : chosen(oddValues(), random));
        }
        statements.append(QStringLiteral("INSERT INTO %1 VALUES (%2)")
                              .arg(OddDatabase::quoted(name), values.join(QLatin1Char(','))));
    }
    return statements;
}

// What a database may hold beside tables, and tables under the program's own names.
const QStringList &foreignThings()
{
    static const QStringList all = {
        QStringLiteral("CREATE VIEW vista AS SELECT * FROM libri"),
        QStringLiteral("CREATE VIEW rotta AS SELECT * FROM nessuna"),
        QStringLiteral("CREATE VIEW settings AS SELECT 1 AS a,2 AS b"),
        QStringLiteral("CREATE TRIGGER t AFTER UPDATE ON libri BEGIN DELETE FROM libri; END"),
        QStringLiteral("CREATE TRIGGER u BEFORE INSERT ON libri BEGIN SELECT "
                       "RAISE(ABORT,'no'); END"),
        QStringLiteral("CREATE VIRTUAL TABLE ricerca USING fts5(RINTEGERFORMAT_Id,testo)"),
        QStringLiteral("CREATE VIRTUAL TABLE vecchia USING fts4(titolo,testo)"),
        QStringLiteral("CREATE VIRTUAL TABLE piano USING rtree(id,minX,maxX)"),
        QStringLiteral("INSERT INTO ricerca VALUES (1,'Zeno')"),
        QStringLiteral("INSERT INTO piano VALUES (1,0,1)"),
        QStringLiteral("CREATE TABLE settings (\"a b\" text)"),
        QStringLiteral("INSERT INTO settings VALUES ('x')"),
        QStringLiteral("CREATE TABLE filters (a,b)"),
        QStringLiteral("INSERT INTO filters VALUES (1,NULL)"),
        QStringLiteral("CREATE TABLE filters (RINTEGERFORMAT_Id,RSTRINGFORMAT_filterName blob,"
                       "NSTRINGFORMAT_filterTableName)"),
        QStringLiteral("INSERT INTO filters VALUES ('x',x'00ff',zeroblob(9))"),
        QStringLiteral("CREATE TABLE subtablesconfigs (RSTRINGFORMAT_subConfigName integer)"),
        QStringLiteral("CREATE UNIQUE INDEX i ON libri (RSTRINGFORMAT_Titolo)"),
        QStringLiteral("CREATE TABLE conto (RINTEGERFORMAT_Id integer primary key autoincrement,"
                       "NMONEYFORMAT_a text)"),
        QStringLiteral("INSERT INTO conto VALUES (NULL,'1e308'),(NULL,'1e308'),(NULL,'-inf')"),
        QStringLiteral("PRAGMA user_version=-1"),
        QStringLiteral("ANALYZE")};
    return all;
}

} // namespace

QStringList OddDatabase::kinds()
{
    return {QStringLiteral("flipped bytes"), QStringLiteral("truncated"),
            QStringLiteral("swapped pages"), QStringLiteral("zeroed pages"),
            QStringLiteral("foreign")};
}

QString OddDatabase::quoted(const QString &name)
{
    QString inside = name;
    inside.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inside + QLatin1Char('"');
}

void OddDatabase::run(const QString &path, const QStringList &statements)
{
    const QString name = QStringLiteral("maker");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        database.open();
        for (const QString &statement : statements) {
            QSqlQuery(database).exec(statement);
        }
    }
    QSqlDatabase::removeDatabase(name);
}

QByteArray OddDatabase::goodFile(const QString &path, QRandomGenerator &random)
{
    const QString layout = chosen(layouts(), random);
    if (!goodFiles.contains(layout)) {
        removeAll(path);
        run(path, layout.split(QLatin1Char(';')) +
                      QStringList{QStringLiteral("PRAGMA synchronous=0"), QStringLiteral("BEGIN")} +
                      goodTables() + goodRows() +
                      QStringList{QStringLiteral("DELETE FROM autori WHERE RINTEGERFORMAT_Id=11"),
                                  QStringLiteral("COMMIT")});
        goodFiles.insert(layout, bytesOf(path));
    }
    return goodFiles.value(layout);
}

void OddDatabase::writeForeign(const QString &path, QRandomGenerator &random)
{
    QStringList statements = chosen(layouts(), random).split(QLatin1Char(';'));
    statements.append({QStringLiteral("PRAGMA synchronous=0"), QStringLiteral("BEGIN")});
    for (int i = 1 + random.bounded(4); i > 0; --i) {
        statements.append(foreignTable(random));
    }
    for (int i = random.bounded(5); i > 0; --i) {
        statements.append(chosen(foreignThings(), random));
    }
    statements.append(QStringLiteral("COMMIT"));
    run(path, statements);
}

void OddDatabase::write(const QString &path, Kind kind, QRandomGenerator &random)
{
    QByteArray bytes = kind == Kind::Foreign ? QByteArray() : goodFile(path, random);
    removeAll(path);
    switch (kind) {
    case Kind::FlippedBytes:
        flipBytes(bytes, random);
        break;
    case Kind::Truncated:
        bytes.truncate(random.bounded(bytes.size()));
        forgetSize(bytes);
        break;
    case Kind::SwappedPages:
        swapPages(bytes, random);
        break;
    case Kind::ZeroedPages:
        zeroPages(bytes, random);
        break;
    case Kind::Foreign:
        writeForeign(path, random);
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}
