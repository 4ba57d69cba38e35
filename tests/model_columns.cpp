// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of how column names are taken apart and put together.
#include "model/columns.h"

#include "model/formats.h"
#include "model/names.h"

#include <QRandomGenerator>
#include <QtTest>

class TestColumns : public QObject
{
    Q_OBJECT

private slots:
    void partsOfAColumn_data();
    void partsOfAColumn();
    void reference_data();
    void reference();
    void shownLabel_data();
    void shownLabel();
    void shownName_data();
    void shownName();
    void isSystemLabel_data();
    void isSystemLabel();
    void withoutDuplicateSuffix_data();
    void withoutDuplicateSuffix();
    void withDuplicateSuffix_data();
    void withDuplicateSuffix();
    void withUserPath_data();
    void withUserPath();
    void composedColumnsAreTakenApartAgain();
};

void TestColumns::partsOfAColumn_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("required");
    QTest::addColumn<bool>("isReference");
    QTest::addColumn<QString>("described");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("label");

    QTest::newRow("the Id") << "RINTEGERFORMAT_Id" << true << false << "RINTEGERFORMAT_Id"
                            << "INTEGER"
                            << "Id";
    QTest::newRow("a column that may stay empty")
        << "NDATEFORMAT_Nato il" << false << false << "NDATEFORMAT_Nato il"
        << "DATE"
        << "Nato il";
    QTest::newRow("a label keeps its duplicate suffix")
        << "NREALFORMAT_x_XMLTYX_2" << false << false << "NREALFORMAT_x_XMLTYX_2"
        << "REAL"
        << "x_XMLTYX_2";
    QTest::newRow("a label is cut at a second FORMAT_")
        << "NSTRINGFORMAT_a FORMAT_b" << false << false << "NSTRINGFORMAT_a FORMAT_b"
        << "STRING"
        << "a ";
    QTest::newRow("a reference is described by the field it names")
        << "XLibri_XDTX_RSTRINGFORMAT_Titolo" << false << true << "RSTRINGFORMAT_Titolo"
        << "STRING"
        << "Titolo";
    QTest::newRow("a reference's label keeps the suffix")
        << "XLibri_XDTX_NURLFORMAT_Sito_XMLTYX_3" << false << true << "NURLFORMAT_Sito_XMLTYX_3"
        << "URL"
        << "Sito_XMLTYX_3";
    QTest::newRow("a reference to a reference shows neither format nor label")
        << "XA_XDTX_XB_XDTX_NSTRINGFORMAT_c" << false << true << "XB"
        << "B"
        << "";
    QTest::newRow("a foreign name is a word without its first letter")
        << "Nome" << false << false << "Nome"
        << "ome"
        << "";
    QTest::newRow("a foreign name beginning with X has no parts")
        << "Xylophon" << false << true << ""
        << ""
        << "";
    QTest::newRow("a small x is no reference")
        << "xa_XDTX_NSTRINGFORMAT_b" << false << false << "xa_XDTX_NSTRINGFORMAT_b"
        << "a_XDTX_NSTRING"
        << "b";
    QTest::newRow("a small r is not required")
        << "rSTRINGFORMAT_b" << false << false << "rSTRINGFORMAT_b"
        << "STRING"
        << "b";
    QTest::newRow("nothing") << "" << false << false << ""
                             << ""
                             << "";
}

void TestColumns::partsOfAColumn()
{
    QFETCH(QString, column);
    QTEST(Columns::isRequired(column), "required");
    QTEST(Columns::isReference(column), "isReference");
    QTEST(Columns::described(column), "described");
    QTEST(Columns::formatWord(column), "word");
    QTEST(Columns::label(column), "label");
}

void TestColumns::reference_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("field");

    QTest::newRow("table and field") << "XLibri_XDTX_RSTRINGFORMAT_Titolo"
                                     << "Libri"
                                     << "RSTRINGFORMAT_Titolo"
                                     << "RSTRINGFORMAT_Titolo";
    QTest::newRow("the field is named without its duplicate suffix")
        << "XLibri_XDTX_RSTRINGFORMAT_Titolo_XMLTYX_2"
        << "Libri"
        << "RSTRINGFORMAT_Titolo_XMLTYX_2"
        << "RSTRINGFORMAT_Titolo";
    QTest::newRow("a hidden table") << "XHIDDENTABLE_a_XDTX_NDATEFORMAT_d"
                                    << "HIDDENTABLE_a"
                                    << "NDATEFORMAT_d"
                                    << "NDATEFORMAT_d";
    QTest::newRow("a table beginning with X loses one letter only") << "XXanadu_XDTX_NDATEFORMAT_d"
                                                                    << "Xanadu"
                                                                    << "NDATEFORMAT_d"
                                                                    << "NDATEFORMAT_d";
    QTest::newRow("a reference to a reference ends at the second marker")
        << "XA_XDTX_XB_XDTX_NSTRINGFORMAT_c"
        << "A"
        << "XB"
        << "XB";
    QTest::newRow("without the marker all is the table") << "Xylophon"
                                                         << "ylophon"
                                                         << ""
                                                         << "";
    QTest::newRow("no reference has no parts") << "NSTRINGFORMAT_a_XDTX_b"
                                               << ""
                                               << ""
                                               << "";
}

void TestColumns::reference()
{
    QFETCH(QString, column);
    const Columns::Reference reference = Columns::reference(column);
    QTEST(reference.table, "table");
    QTEST(reference.description, "description");
    QTEST(reference.field, "field");
}

void TestColumns::shownLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a plain label") << "Prezzo"
                                   << "Prezzo";
    QTest::newRow("the marker is cut out") << "Prezzo_XMLTYX_2"
                                           << "Prezzo2";
    QTest::newRow("what follows the marker need not be a number") << "Note_XMLTYX_Extra"
                                                                  << "NoteExtra";
    QTest::newRow("text after a second marker is dropped") << "A_XMLTYX_2_XMLTYX_3"
                                                           << "A2";
    QTest::newRow("underscores stay") << "a_b_"
                                      << "a_b_";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestColumns::shownLabel()
{
    QFETCH(QString, label);
    QTEST(Columns::shownLabel(label), "expected");
}

void TestColumns::shownName_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the label") << "NSTRINGFORMAT_Nome"
                               << "Nome";
    QTest::newRow("the label without marker") << "NSTRINGFORMAT_Nome_XMLTYX_2"
                                              << "Nome2";
    QTest::newRow("the referenced label") << "XLibri_XDTX_NSTRINGFORMAT_Nome"
                                          << "Nome";
    QTest::newRow("a foreign name is shown whole") << "email"
                                                   << "email";
    QTest::newRow("a foreign name beginning with X is shown whole") << "Xylophon"
                                                                    << "Xylophon";
    QTest::newRow("a name with an empty label is shown whole") << "NSTRINGFORMAT_"
                                                               << "NSTRINGFORMAT_";
}

void TestColumns::shownName()
{
    QFETCH(QString, column);
    QTEST(Columns::shownName(column), "expected");
}

void TestColumns::isSystemLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the Id") << "Id" << true;
    QTest::newRow("the Id in capitals") << "ID" << true;
    QTest::newRow("the attachment folder") << "UserPath" << true;
    QTest::newRow("the attachment folder in small letters") << "userpath" << true;
    QTest::newRow("a label that holds Id") << "Idea" << false;
    QTest::newRow("a suffixed label") << "Id_XMLTYX_2" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestColumns::isSystemLabel()
{
    QFETCH(QString, label);
    QTEST(Columns::isSystemLabel(label), "expected");
}

void TestColumns::withoutDuplicateSuffix_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the suffix goes") << "NSTRINGFORMAT_a_XMLTYX_2"
                                     << "NSTRINGFORMAT_a";
    QTest::newRow("from the first marker on all goes") << "a_XMLTYX_2_XMLTYX_3"
                                                       << "a";
    QTest::newRow("a name without one stays") << "NSTRINGFORMAT_a"
                                              << "NSTRINGFORMAT_a";
}

void TestColumns::withoutDuplicateSuffix()
{
    QFETCH(QString, column);
    QTEST(Columns::withoutDuplicateSuffix(column), "expected");
}

void TestColumns::withDuplicateSuffix_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("earlier");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the first keeps its name") << "NSTRINGFORMAT_a" << 0 << "NSTRINGFORMAT_a";
    QTest::newRow("the second is number 2") << "NSTRINGFORMAT_a" << 1 << "NSTRINGFORMAT_a_XMLTYX_2";
    QTest::newRow("the eleventh is number 11")
        << "NSTRINGFORMAT_a" << 10 << "NSTRINGFORMAT_a_XMLTYX_11";
    QTest::newRow("links keep their name") << "NLINKFORMAT_a" << 1 << "NLINKFORMAT_a";
    QTest::newRow("references to links keep it too")
        << "Xt_XDTX_NLINKFORMAT_a" << 3 << "Xt_XDTX_NLINKFORMAT_a";
    QTest::newRow("small letters make no link") << "Nlinkformat_a" << 1 << "Nlinkformat_a_XMLTYX_2";
}

void TestColumns::withDuplicateSuffix()
{
    QFETCH(QString, column);
    QFETCH(int, earlier);
    QTEST(Columns::withDuplicateSuffix(column, earlier), "expected");
}

void TestColumns::composedColumnsAreTakenApartAgain()
{
    static const QString letters = QStringLiteral("aZ9_X -'èßRN中.%");
    QRandomGenerator random(4711);
    const auto text = [&random]() {
        QString made;
        for (int length = random.bounded(1, 12); length > 0; --length) {
            made += letters.at(random.bounded(letters.size()));
        }
        return made;
    };
    for (int i = 0; i < 2000; ++i) {
        const QString keyword = Formats::keywords().at(i % Formats::keywords().size());
        const bool required = random.bounded(2) == 1;
        const QString label = text();
        const QString column =
            (required ? QLatin1Char('R') : QLatin1Char('N')) + Names::joinName(keyword, label);
        QCOMPARE(Columns::isRequired(column), required);
        QVERIFY(!Columns::isReference(column));
        QCOMPARE(Columns::formatWord(column), Names::formatWord(keyword));
        QCOMPARE(Names::formatKeyword(column), keyword);
        QCOMPARE(Columns::label(column), label);

        const QString stored = Columns::withDuplicateSuffix(column, random.bounded(5));
        QCOMPARE(Columns::withoutDuplicateSuffix(stored), column);

        const QString table = text();
        const QString referring = QLatin1Char('X') + table + QLatin1String("_XDTX_") + stored;
        QVERIFY(Columns::isReference(referring));
        QCOMPARE(Columns::reference(referring).table, table);
        QCOMPARE(Columns::reference(referring).description, stored);
        QCOMPARE(Columns::reference(referring).field, column);
        QCOMPARE(Columns::formatWord(referring), Names::formatWord(keyword));
        QCOMPARE(Columns::shownLabel(Columns::label(referring)),
                 Columns::shownLabel(Columns::label(stored)));
    }
}

void TestColumns::withUserPath_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<QString>("expected");
    QTest::newRow("last without attachments") << "RSTRINGFORMAT_a NDATEFORMAT_b"
                                              << "RSTRINGFORMAT_a NDATEFORMAT_b U";
    QTest::newRow("before the first picture") << "NDATEFORMAT_a NIMAGEFORMAT_b NIMAGEFORMAT_c"
                                              << "NDATEFORMAT_a U NIMAGEFORMAT_b NIMAGEFORMAT_c";
    QTest::newRow("before the first PDF") << "NDATEFORMAT_a NPDFFORMAT_b NIMAGEFORMAT_c"
                                          << "NDATEFORMAT_a U NPDFFORMAT_b NIMAGEFORMAT_c";
    QTest::newRow("first when a picture is") << "NIMAGEFORMAT_a NSTRINGFORMAT_b"
                                             << "U NIMAGEFORMAT_a NSTRINGFORMAT_b";
    QTest::newRow("before a copied picture") << "NDATEFORMAT_a Xt_XDTX_NIMAGEFORMAT_b NURLFORMAT_c"
                                             << "NDATEFORMAT_a U Xt_XDTX_NIMAGEFORMAT_b "
                                                "NURLFORMAT_c";
    QTest::newRow("alone in a table without columns") << ""
                                                      << "U";
}

void TestColumns::withUserPath()
{
    QFETCH(QString, names);
    QFETCH(QString, expected);
    ColumnDefinitions columns;
    for (const QString &name : names.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        columns.append({name, QStringLiteral("text")});
    }
    QStringList result;
    for (const ColumnDefinition &column : Columns::withUserPath(columns)) {
        const bool isFolder = column.first == QLatin1String("NLONGSTRINGFORMAT_UserPath");
        QCOMPARE(column.second, isFolder ? QString() : QStringLiteral("text"));
        result.append(isFolder ? QStringLiteral("U") : column.first);
    }
    QCOMPARE(result.join(QLatin1Char(' ')), expected);
}

QTEST_GUILESS_MAIN(TestColumns)
#include "model_columns.moc"
