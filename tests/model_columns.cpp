// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of how column names are taken apart and put together.
#include "model/columns.h"

#include "model/formats.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"

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
    void isRepeatedLink_data();
    void isRepeatedLink();
    void creatable_data();
    void creatable();
    void linkTarget_data();
    void linkTarget();
    void everyTableCanBeLinkedTo();
    void ambiguousTables_data();
    void ambiguousTables();
};

namespace
{

QString linkTo(const QString &table)
{
    return QStringLiteral("NLINKFORMAT_") + SqlNames::madeSafe(Names::tableDisplayName(table));
}

} // namespace

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

void TestColumns::isRepeatedLink_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a link that is there") << "NLINKFORMAT_autori" << true;
    QTest::newRow("one in another letter case") << "NLINKFORMAT_Autori" << true;
    QTest::newRow("a copied link that is there") << "Xa_XDTX_NLINKFORMAT_b" << true;
    QTest::newRow("a link to another table") << "NLINKFORMAT_autori2" << false;
    QTest::newRow("another field that is there gets a number") << "NSTRINGFORMAT_a" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestColumns::isRepeatedLink()
{
    QFETCH(QString, column);
    const QStringList others = {QStringLiteral("NSTRINGFORMAT_a"),
                                QStringLiteral("NLINKFORMAT_autori"),
                                QStringLiteral("Xa_XDTX_NLINKFORMAT_b")};
    QTEST(Columns::isRepeatedLink(column, others), "expected");
}

void TestColumns::creatable_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<QString>("expected");
    QTest::newRow("different names stay") << "Na Nb NLINKFORMAT_c"
                                          << "Na Nb NLINKFORMAT_c";
    QTest::newRow("equal names get numbers") << "Na Na Na"
                                             << "Na Na_XMLTYX_2 Na_XMLTYX_3";
    QTest::newRow("names in other letters get numbers") << "NNote Nnote NNOTE"
                                                        << "NNote Nnote_XMLTYX_2 NNOTE_XMLTYX_3";
    QTest::newRow("both kinds are counted together") << "NNote Nnote NNote"
                                                     << "NNote Nnote_XMLTYX_2 NNote_XMLTYX_3";
    QTest::newRow("letters beyond ASCII differ") << "Nè NÈ"
                                                 << "Nè NÈ";
    QTest::newRow("a number that is taken is passed over") << "Na_XMLTYX_2 Na NA"
                                                           << "Na_XMLTYX_2 Na NA_XMLTYX_3";
    QTest::newRow("a repeated link goes") << "NLINKFORMAT_c Na NLINKFORMAT_c"
                                          << "NLINKFORMAT_c Na";
    QTest::newRow("a repeated link in other letters goes") << "NLINKFORMAT_c NLINKFORMAT_C"
                                                           << "NLINKFORMAT_c";
    QTest::newRow("a copied link goes too") << "Xt_XDTX_NLINKFORMAT_c Xt_XDTX_NLINKFORMAT_c"
                                            << "Xt_XDTX_NLINKFORMAT_c";
    QTest::newRow("a link named as a numbered field goes")
        << "Nlinkformat_a Nlinkformat_a NLINKFORMAT_a_XMLTYX_2"
        << "Nlinkformat_a Nlinkformat_a_XMLTYX_2";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestColumns::creatable()
{
    QFETCH(QString, names);
    ColumnDefinitions columns;
    for (const QString &name : names.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        columns.append({name, QStringLiteral("text")});
    }
    QStringList result;
    for (const ColumnDefinition &column : Columns::creatable(columns)) {
        QCOMPARE(column.second, QStringLiteral("text"));
        result.append(column.first);
    }
    QTEST(result.join(QLatin1Char(' ')), "expected");
}

void TestColumns::linkTarget_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("expected");
    const QString detail = QStringLiteral("HIDDENTABLE_%1_XSBTX_SUBTABLEFORMAT_%2_XSBTUSRX_%3");
    const QString orders = detail.arg(QStringLiteral("Clienti"), QStringLiteral("Ordini"));
    QTest::newRow("a plain table") << "NLINKFORMAT_libri"
                                   << "libri";
    QTest::newRow("a hidden table") << "NLINKFORMAT_＃note"
                                    << "HIDDENTABLE_note";
    QTest::newRow("a hidden table of an older file") << "NLINKFORMAT_#note"
                                                     << "HIDDENTABLE_note";
    QTest::newRow("a table hidden twice") << "NLINKFORMAT_＃＃x"
                                          << "HIDDENTABLE_HIDDENTABLE_x";
    QTest::newRow("a number sign inside a name") << "NLINKFORMAT_C＃"
                                                 << "CHIDDENTABLE_";
    QTest::newRow("a number sign inside a name of an older file") << "NLINKFORMAT_C#"
                                                                  << "CHIDDENTABLE_";
    QTest::newRow("a name that holds the end of a format") << "NLINKFORMAT_aFORMAT_b"
                                                           << "aFORMAT_b";
    QTest::newRow("full-width signs that were typed") << "NLINKFORMAT_l＇arte＆c．"
                                                      << "l＇arte＆c．";
    QTest::newRow("full-width arrows in a plain name") << "NLINKFORMAT_a－＞b－＞c"
                                                       << "a－＞b－＞c";
    QTest::newRow("a detail table")
        << "NLINKFORMAT_＃Clienti－＞Rossi－＞Ordini" << orders.arg(QStringLiteral("Rossi"));
    QTest::newRow("a detail table of an older file")
        << "NLINKFORMAT_#Clienti->Rossi->Ordini" << orders.arg(QStringLiteral("Rossi"));
    QTest::newRow("a title of an older file")
        << "NLINKFORMAT_#Clienti->D'Amico->Ordini" << orders.arg(QStringLiteral("D＇Amico"));
    QTest::newRow("a title with a number sign") << "NLINKFORMAT_＃Clienti－＞Rossi_＃1－＞Ordini"
                                                << orders.arg(QStringLiteral("Rossi_＃1"));
    QTest::newRow("a title with an arrow")
        << "NLINKFORMAT_＃Clienti－＞a－＞b－＞Ordini" << orders.arg(QStringLiteral("a－＞b"));
    QTest::newRow("a detail table of a hidden one")
        << "NLINKFORMAT_＃＃P－＞s－＞f"
        << detail.arg(QStringLiteral("HIDDENTABLE_P"), QStringLiteral("f"), QStringLiteral("s"));
    QTest::newRow("an empty title")
        << "NLINKFORMAT_＃Clienti－＞－＞Ordini" << orders.arg(QString());
    QTest::newRow("no label") << "NLINKFORMAT_"
                              << "";
    QTest::newRow("no encoded name") << "libri"
                                     << "";
}

void TestColumns::linkTarget()
{
    QFETCH(QString, column);
    QTEST(Columns::linkTarget(column), "expected");
}

void TestColumns::everyTableCanBeLinkedTo()
{
    const QStringList typed = {
        QStringLiteral("a"),         QStringLiteral("B"),      QStringLiteral("_"),
        QStringLiteral("7"),         QStringLiteral("$"),      QStringLiteral("#"),
        QStringLiteral("FORMAT_"),   QStringLiteral("FORMAT"), QStringLiteral("è"),
        QStringLiteral("中"),        QStringLiteral("🎲"),      QStringLiteral("＇"),
        QStringLiteral("．"),        QStringLiteral("－"),     QStringLiteral("XDTX"),
        QStringLiteral("LINK"),      QStringLiteral("X"),      QStringLiteral(" "),
        QStringLiteral("linkformat")};
    const QStringList written = typed + QStringList{QStringLiteral("'"),
                                                    QStringLiteral("->"),
                                                    QStringLiteral("－＞"),
                                                    QStringLiteral("＃"),
                                                    QStringLiteral("-"),
                                                    QStringLiteral(">"),
                                                    QStringLiteral("_XSBTX_"),
                                                    QStringLiteral("_XMLTYX_2"),
                                                    QStringLiteral("\u200d"),
                                                    QStringLiteral("\u0001"),
                                                    QStringLiteral("SUBTABLEFORMAT"),
                                                    QStringLiteral("%1")};
    QRandomGenerator random(20260711);
    const auto text = [&random](const QStringList &pieces) {
        QString made;
        for (int length = random.bounded(1, 5); length > 0; --length) {
            made += pieces.at(random.bounded(pieces.size()));
        }
        return made;
    };
    int tables = 0;
    int details = 0;
    while (details < 2000) {
        const QString name = text(typed);
        const QString table = SqlNames::withoutBlanks(Names::tableStoredName(name));
        if (!SqlNames::tableRefusal(name, table).isEmpty()) {
            continue;
        }
        ++tables;
        QCOMPARE(Columns::linkTarget(linkTo(table)), table);
        const QString label = text(typed);
        if (SqlNames::labelRefusal(label, Formats::SubTable).isEmpty()) {
            ++details;
            const QString detail = SqlNames::madeSafe(
                SubTables::storedName(table, SqlNames::withoutBlanks(label), text(written)));
            QCOMPARE(Columns::linkTarget(linkTo(detail)), detail);
        }
    }
    QVERIFY(tables >= details);
}

void TestColumns::ambiguousTables_data()
{
    // Their shown names are those of other tables, once they stand in a column's name.
    QTest::addColumn<QString>("table");
    QTest::newRow("a full-width number sign") << "a＃b";
    QTest::newRow("a hidden name with two arrows") << "HIDDENTABLE_a－＞b－＞c";
    QTest::newRow("a parent with an arrow")
        << "HIDDENTABLE_a－＞b_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s";
    QTest::newRow("a field with an arrow")
        << "HIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_f－＞g_XSBTUSRX_s";
    QTest::newRow("a title with the mark in front of titles")
        << "HIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_s_XSBTUSRX_t";
    QTest::newRow("a title with the hidden mark")
        << "HIDDENTABLE_a_XSBTX_SUBTABLEFORMAT_f_XSBTUSRX_HIDDENTABLE_s";
    QTest::newRow("a name of another program") << "l'arte";
}

void TestColumns::ambiguousTables()
{
    QFETCH(QString, table);
    QVERIFY(Columns::linkTarget(linkTo(table)) != table);
}

QTEST_GUILESS_MAIN(TestColumns)
#include "model_columns.moc"
