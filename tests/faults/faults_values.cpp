// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Awkward values in every format, typed, changed, filtered and imported: read back as they were,
// and no other record changes.
#include "model/values.h"
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"
#include "tests/support/UrlCatcher.h"

#include <QRegularExpression>

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList awkwardValues()
{
    QStringList values =
        text(
            "'|''|\"|L'anno \"d'oro\"|'; DROP TABLE t; --|a' OR '1'='1|%s%n|100%|"
            "%1 %2|\\|a\\nb|###|a###b|a#|##a|#NSTRINGFORMAT_C|######|----|---|0|-0|"
            "1|-1|+7|007|.5|5.|1,5|1.5|1 234,5|1.234,5|1e3|1e999|-1e999|1e-999|nan|"
            "NaN|inf|0x10|2147483647|2147483648|-2147483649|99999999999999999999|"
            "123456789.987654321|TRUE|true|FALSE|NULL|null|31/02/2020|29/02/2019|"
            "29/02/2020|1/1/2020|01/01/0001|31/12/9999|2020-01-01|00/00/0000| |  | a|"
            "a | a  b |\ta|a\tb|a\nb|a\n|\na|a\r\nb|a\rb|\x01|a\x1b[31mb|\x7f|perché|"
            "e\u0301|\u00e9|漢字|📚🏳\u200d🌈|שלום abc|\u202eabc|\u200b|\u00a0|\ufeffa|"
            "\u2028|<b>x</b>|<img src='pipe'>|&amp;|&x|:name|?1|@x|$y|--|/*|;|a,b|"
            "1 Svevo|autori|Titolo=x|HIDDENTABLE_x|_XDTX_")
            .split(QLatin1Char('|'));
    values.append(text("|"));
    values.append(QString());
    values.append(text("a") + QChar(0xd83d) + text("b"));
    values.append(text("a") + QChar(0xffff));
    values.append(QString(40001, QLatin1Char('x')));
    values.append(text("L'été 📚 ").repeated(6000));
    return values;
}

// Some of the values; other ones with other random numbers, all at full length.
QStringList chosenValues(int usual, int turn)
{
    const QStringList all = awkwardValues();
    if (Campaign::isFull()) {
        return all;
    }
    QStringList some;
    for (int i = 0; i < usual; ++i) {
        some.append(
            all.at(int((Campaign::start() + quint32(turn + i * 13)) % quint32(all.size()))));
    }
    return some;
}

QString sqlText(QString value)
{
    return QLatin1Char('\'') + value.replace(QLatin1Char('\''), text("''")) + QLatin1Char('\'');
}

const QStringList Beside = {
    text("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Nome text)"),
    text("INSERT INTO autori VALUES (1,'Svevo'),(2,'l''altro ### 100%s')"),
};

// A table with one column of the format, and records that nothing may change.
QStringList oneColumn(const QString &column)
{
    return QStringList{text("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,"
                            "RSTRINGFORMAT_Titolo text,%1 text)")
                           .arg(column),
                       text("INSERT INTO t VALUES (1,'primo','x'),(2,'secondo','l''altro'),"
                            "(3,'terzo',''),(4,'quarto',NULL)")} +
           Beside;
}

// All rows of the database, one text a record.
QStringList allRows(const EntryPage::Started &program)
{
    QStringList rows;
    for (const QString &table :
         program.here.column(program.database, text("SELECT name FROM sqlite_master WHERE "
                                                    "type='table' AND name<>'t' ORDER BY 1"))) {
        rows += table + text(": ") + program.rows(table).join(QLatin1Char('\n'));
    }
    return rows + program.rows(text("t"));
}

// The value of the record with this Id.
QString valueOf(const EntryPage::Started &program, const QString &column, int id)
{
    return program.here
        .value(program.database,
               text("SELECT %1 FROM t WHERE RINTEGERFORMAT_Id=%2").arg(column).arg(id))
        .toString();
}

bool matches(const QString &value, const char *pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(text(pattern)))
        .match(value)
        .hasMatch();
}

bool isOneOf(const QString &format, const char *formats)
{
    return text(formats).split(QLatin1Char(' ')).contains(format);
}

bool isTextFormat(const QString &format)
{
    return isOneOf(format, "STRING LONGSTRING MAIL URL");
}

// What the column must hold after `shown` stood in its editor of a new record and was saved.
bool isWellStored(const QString &format, const QString &shown, const QString &stored)
{
    if (isTextFormat(format)) {
        return stored == Values::asStored(shown);
    }
    if (format == QLatin1String("INTEGER")) {
        return stored == QString::number(shown.toInt());
    }
    bool isNumber = false;
    QString plain = shown;
    const double number = plain.remove(QLatin1Char(' '))
                              .replace(QLatin1Char(','), QLatin1Char('.'))
                              .toDouble(&isNumber);
    const double kept = isNumber && qIsFinite(number) ? number : 0.0;
    if (format == QLatin1String("REAL")) {
        return stored == QString::asprintf("%f", kept);
    }
    if (format == QLatin1String("MONEY")) {
        return shown.trimmed().isEmpty() ? stored.isEmpty()
                                         : stored == QString::asprintf("%.2f", kept);
    }
    return stored.isEmpty() || (matches(stored, "\\d\\d/\\d\\d/\\d{4}") &&
                                QDate::fromString(stored, text("dd/MM/yyyy")).isValid());
}

// What an editor makes of a text is seen on it; these formats show any text as it is.
bool showsAsIs(const QString &format, const QString &value)
{
    static const QRegularExpression changed(text("[\\x{1}-\\x{1f}\\x{7f}\\x{2028}\\x{2029}]"));
    return isTextFormat(format) && value.isValidUtf16() && !value.contains(changed);
}

// Reports a fault with a value.
QString fault(const QString &value, const QString &what)
{
    return text("'%1': %2").arg(value.left(40), what.left(200));
}

// Types the value into the column on the open page and saves; what is wrong with it.
QString enterAndSave(const EntryPage::Started &program, const QString &format, const QString &value,
                     QString *shown)
{
    const QWidget &window = *program.window;
    EntryPage::enter(window, text("C"), value);
    // What a several-line editor gives as plain text has other blanks.
    *shown = EntryPage::part<QLineEdit>(window, text("C"), "leData")->text();
    if (!isTextFormat(format)) {
        *shown = EntryPage::shown(window, text("C"));
    }
    if (showsAsIs(format, value) && *shown != value) {
        return fault(value, text("shown as ") + *shown);
    }
    ModalResponder responder;
    responder.answerOthers(QMessageBox::Ok);
    EntryPage::save(window);
    const bool isNumber = isOneOf(format, "REAL MONEY");
    if (responder.boxes().size() > (isNumber ? 1 : 0)) {
        return fault(value, responder.boxes().first().text);
    }
    return EntryPage::isOpen(window) ? fault(value, text("not saved")) : QString();
}

// The lines that a condition with this value leaves.
QStringList filtered(const EntryPage::Started &program, const QString &value)
{
    const QWidget &window = *program.window;
    FilterPage::open(window);
    FilterPage::enter(window, text("C"), value);
    FilterPage::apply(window);
    const QStringList lines = Window::lines(window);
    FilterPage::open(window);
    Window::click(window, "pbResetFilters");
    Window::click(window, "pbCancelFilters");
    return lines;
}

// True for values that a line of an Export Manager File can hold.
bool canStandInFile(const QString &value)
{
    return !value.contains(text("###")) && !value.contains(QLatin1Char('\n')) &&
           !value.contains(QLatin1Char('\r')) && !value.startsWith(QLatin1Char('#')) &&
           !value.endsWith(QLatin1Char('#')) && value.isValidUtf16();
}

// A table with a column of each format, all of which hold the same value.
QStringList everyColumn(const QStringList &values)
{
    QStringList statements = {
        text("CREATE TABLE t (RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
             "NSTRINGFORMAT_a text,NLONGSTRINGFORMAT_b text,NINTEGERFORMAT_c text,NREALFORMAT_d "
             "text,NMONEYFORMAT_e text,NDATEFORMAT_f text,NBOOLFORMAT_g text,NMAILFORMAT_h text,"
             "NURLFORMAT_i text,NIMAGEFORMAT_j text,NPDFFORMAT_k text,NLINKFORMAT_autori text,"
             "NSUBTABLEFORMAT_m text,Xautori_XDTX_RSTRINGFORMAT_Nome Integer,"
             "NLONGSTRINGFORMAT_UserPath text)")};
    for (int i = 0; i < values.size(); ++i) {
        QStringList cells;
        for (int column = 0; column < 15; ++column) {
            cells.append(sqlText(Values::asStored(values.at(i))));
        }
        statements.append(text("INSERT INTO t VALUES (%1,'t%1',%2)")
                              .arg(QString::number(i + 1), cells.join(QLatin1Char(','))));
    }
    return statements + Beside;
}

} // namespace

using EntryPage::Started;

class FaultsValues : public QObject
{
    Q_OBJECT

private slots:
    void typedValues_data();
    void typedValues();
    void importedValues_data();
    void importedValues();
    void savingsWithoutChange();
    void cleanupTestCase();
};

void FaultsValues::typedValues_data()
{
    QTest::addColumn<QString>("format");
    const char *const formats[] = {"STRING",  "LONGSTRING", "MAIL",  "URL",
                                   "INTEGER", "REAL",       "MONEY", "DATE"};
    for (const char *const format : formats) {
        QTest::newRow(format) << text(format);
    }
}

void FaultsValues::typedValues()
{
    QFETCH(const QString, format);
    Campaign::Row row(text("awkward values typed, in new and in changed records"));
    int filters = 0;
    const QString column = QLatin1Char('N') + format + text("FORMAT_C");
    const Started program(oneColumn(column));
    const QWidget &window = *program.window;
    QStringList faults;
    const QStringList values = chosenValues(2, format.size());
    for (int i = 0; i < values.size(); ++i) {
        const QString &value = values.at(i);
        const QStringList before = allRows(program);
        QString shown;
        EntryPage::openNew(window);
        EntryPage::enter(window, text("Titolo"), text("nuovo %1").arg(i));
        faults += enterAndSave(program, format, value, &shown);
        const int id = 5 + i;
        if (!isWellStored(format, shown, valueOf(program, column, id))) {
            faults += fault(value, text("added as ") + valueOf(program, column, id));
        }
        if (allRows(program).mid(0, before.size()) != before) {
            faults += fault(value, text("adding changes others"));
        }
        if (isTextFormat(format)) {
            QStringList expected;
            for (int other = 1; other <= id; ++other) {
                if (valueOf(program, column, other) == Values::asStored(shown)) {
                    expected += valueOf(program, text("RSTRINGFORMAT_Titolo"), other);
                }
            }
            QStringList lines = filtered(program, shown);
            lines.sort();
            expected.sort();
            const bool canBeFound = !shown.isEmpty() && shown == Values::asStored(shown);
            filters += canBeFound ? 1 : 0;
            if (canBeFound && lines != expected) {
                faults += fault(value, text("the filter leaves ") + lines.join(QLatin1Char(',')));
            }
        }
        // The record that is changed is the second one, over and over.
        Window::selectLine(window, Window::lines(window).indexOf(text("secondo")));
        const QString keptBefore = valueOf(program, column, 2);
        EntryPage::openEdit(window);
        const QString shownBefore = EntryPage::shown(window, text("C"));
        faults += enterAndSave(program, format, value, &shown);
        // What was not touched, or stays as it was shown, keeps its bytes.
        const bool isKept = !isTextFormat(format) && shown == shownBefore &&
                            valueOf(program, column, 2) == keptBefore;
        if (!isKept && !isWellStored(format, shown, valueOf(program, column, 2))) {
            faults += fault(value, text("changed to ") + valueOf(program, column, 2));
        }
        QStringList after = allRows(program);
        QStringList rest = before;
        after.removeAt(before.size() - (4 + i) + 1);
        rest.removeAt(before.size() - (4 + i) + 1);
        if (after.mid(0, rest.size()) != rest) {
            faults += fault(value, text("a change changes others"));
        }
        row.ran(2);
        EntryPage::forgetOldPages();
    }
    faults.removeAll(QString());
    row.failed(faults.size());
    QVERIFY(filters > 0 || !isTextFormat(format));
    QCOMPARE(faults.join(QLatin1Char('\n')), QString());
}

void FaultsValues::importedValues_data()
{
    QTest::addColumn<QString>("format");
    for (const char *const format : {"STRING", "LONGSTRING", "MAIL", "URL", "INTEGER", "REAL",
                                     "MONEY", "DATE", "BOOL", "IMAGE", "PDF", "LINK", "SUBTABLE"}) {
        QTest::newRow(format) << text(format);
    }
}

void FaultsValues::importedValues()
{
    QFETCH(const QString, format);
    Campaign::Row row(text("awkward values imported"));
    const QString column = QLatin1Char('N') + format + text("FORMAT_C");
    const Started program(oneColumn(column));
    QStringList faults;
    int id = 1000;
    for (const QString &value : chosenValues(2, format.size() * 7)) {
        ++id;
        const QStringList before = allRows(program);
        program.here.write(
            text("dati.xmf"),
            text("t\nRINTEGERFORMAT_Id###%1###RSTRINGFORMAT_Titolo###i%1###%2###%3###\n")
                .arg(QString::number(id), column, value)
                .toUtf8());
        ModalResponder responder;
        responder.chooseFile(program.here.path(text("dati.xmf")));
        responder.answerOthers(QMessageBox::Ok);
        Window::action(*program.window, "actionImport_From_File_Export_Manager_File")->trigger();
        row.ran();
        if (allRows(program).mid(0, before.size()) != before || responder.boxes().size() > 1) {
            faults +=
                fault(value, text("others change, or %1 boxes").arg(responder.boxes().size()));
        }
        const QString stored = valueOf(program, column, id);
        const bool isText = !isOneOf(format, "INTEGER REAL");
        if (canStandInFile(value) && isText && stored != Values::asStored(value)) {
            faults += fault(value, text("imported as ") + stored);
        }
        EntryPage::forgetOldPages();
    }
    row.failed(faults.size());
    QCOMPARE(faults.join(QLatin1Char('\n')), QString());
}

void FaultsValues::savingsWithoutChange()
{
    Campaign::Row row(text("savings without a change of records of awkward values"));
    const QStringList values = chosenValues(5, 3);
    const Started program(everyColumn(values));
    const UrlCatcher catcher;
    const QWidget &window = *program.window;
    // Links that are empty get their table at the first look.
    Window::pressTable(window, text("t"));
    const QStringList lines = Window::lines(window);
    QCOMPARE(lines.size(), values.size());
    for (int line = 0; line < lines.size(); ++line) {
        Window::selectLine(window, line);
    }
    const QStringList before = allRows(program);
    const QByteArray file = program.here.read(program.database);
    const int rounds = Campaign::cases(2, 10);
    for (int line = 0; line < lines.size(); ++line) {
        Window::selectLine(window, line);
        for (int round = 0; round < rounds; ++round) {
            EntryPage::openEdit(window);
            EntryPage::save(window);
            QVERIFY2(!EntryPage::isOpen(window), qPrintable(lines.at(line)));
            row.ran();
            EntryPage::forgetOldPages();
        }
        QCOMPARE(allRows(program), before);
    }
    QVERIFY(program.here.read(program.database) == file);
    QVERIFY(catcher.urls().isEmpty());
}

void FaultsValues::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(FaultsValues)
#include "faults_values.moc"
