// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Generated records through the entry page: typed, saved, opened and saved again, byte for byte.
#include "tests/support/EntryPage.h"

#include <QMimeData>
#include <QRandomGenerator>
#include <QUrl>

namespace
{

const QString Titolo = QStringLiteral("Titolo");
const QString Testo = QStringLiteral("Testo");
const QString Note = QStringLiteral("Note");
const QString Anno = QStringLiteral("Anno");
const QString Peso = QStringLiteral("Peso");
const QString Prezzo = QStringLiteral("Prezzo");
const QString Data = QStringLiteral("Data");
const QString Letto = QStringLiteral("Letto");
const QString Posta = QStringLiteral("Posta");
const QString Sito = QStringLiteral("Sito");
const QString Foto = QStringLiteral("Foto");
const QString Scheda = QStringLiteral("Scheda");
const QString Autore = QStringLiteral("autori");
const QString Nome = QStringLiteral("Nome");
const QString Luogo = QStringLiteral("Luogo");

// A column of each format, a reference, and a column whose label repeats another.
const QString AllFormats =
    QStringLiteral("RINTEGERFORMAT_Id integer primary key,RSTRINGFORMAT_Titolo text,"
                   "NSTRINGFORMAT_Testo text,NLONGSTRINGFORMAT_Note text,NINTEGERFORMAT_Anno text,"
                   "NREALFORMAT_Peso text,NMONEYFORMAT_Prezzo text,NDATEFORMAT_Data text,"
                   "NBOOLFORMAT_Letto text,NMAILFORMAT_Posta text,NURLFORMAT_Sito text,"
                   "NLONGSTRINGFORMAT_UserPath text,NIMAGEFORMAT_Foto text,NPDFFORMAT_Scheda text,"
                   "NLINKFORMAT_autori text,NSUBTABLEFORMAT_Prestiti text,"
                   "Xautori_XDTX_RSTRINGFORMAT_Nome Integer,"
                   "Xluoghi_XDTX_NINTEGERFORMAT_Luogo Integer,NSTRINGFORMAT_Testo_XMLTYX_2 text");
const QStringList Library = {
    QStringLiteral("CREATE TABLE libri (%1)").arg(AllFormats),
    QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text)"),
    QStringLiteral("CREATE TABLE luoghi (RINTEGERFORMAT_Id integer primary key,"
                   "RSTRINGFORMAT_Nome text,NINTEGERFORMAT_Luogo text)"),
    QStringLiteral("INSERT INTO autori VALUES (2,'Svevo, Italo'),(9,'Calvino'),(12,'D''Annunzio'),"
                   "(30,'')"),
    QStringLiteral("INSERT INTO luoghi VALUES (1,'Trieste','34100'),(5,'Sanremo','18038')"),
};

// Texts that statements, templates and files trip over.
QString awkwardText(QRandomGenerator &dice, bool severalLines)
{
    static const QStringList pieces = {
        QStringLiteral("'"),       QStringLiteral("''"),
        QStringLiteral("\""),      QStringLiteral("L'Été"),
        QStringLiteral("perché"),  QStringLiteral("%"),
        QStringLiteral("%s%d%n"),  QStringLiteral(";"),
        QStringLiteral(":name"),   QStringLiteral("--"),
        QStringLiteral("/*"),      QStringLiteral("?"),
        QStringLiteral("@x"),      QStringLiteral("$y"),
        QStringLiteral("\\"),      QStringLiteral("###"),
        QStringLiteral("😀"),       QStringLiteral("日本"),
        QStringLiteral("€"),       QStringLiteral("\u00A0"),
        QStringLiteral(" "),       QStringLiteral("   "),
        QStringLiteral("\t"),      QStringLiteral("&amp;<b>"),
        QStringLiteral("NULL"),    QStringLiteral("0"),
        QStringLiteral("e\u0301"), QStringLiteral("x'); DROP TABLE libri;--"),
        QStringLiteral("FORMAT_"), QStringLiteral("_XMLTYX_"),
        QStringLiteral("שלום"),    QStringLiteral("a"),
    };
    QString text;
    const int count = dice.bounded(6);
    for (int i = 0; i < count; ++i) {
        text += pieces.at(dice.bounded(pieces.size()));
        if (severalLines && dice.bounded(3) == 0) {
            text += QLatin1Char('\n');
        }
    }
    return text;
}

QString awkwardNumber(QRandomGenerator &dice)
{
    static const QStringList numbers = {
        QStringLiteral("1 234,5"), QStringLiteral("1234.5"),   QStringLiteral("-0.05"),
        QStringLiteral("0"),       QStringLiteral("+7"),       QStringLiteral(".5"),
        QStringLiteral("  "),      QStringLiteral("99999999"), QStringLiteral("3,14159265")};
    return numbers.at(dice.bounded(numbers.size()));
}

// A PDF out of the clipboard, as a file manager's copy command puts it there.
void attachPdf(const QWidget &window, const QString &label, const QString &file)
{
    auto *const data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(file)});
    QGuiApplication::clipboard()->setMimeData(data);
    QTest::keyClick(EntryPage::field(window, label).editor(), Qt::Key_V, Qt::ControlModifier);
}

// Fills some of the fields; the others stay as the page gave them.
void fillAtRandom(const EntryPage::Started &program, QRandomGenerator &dice, int number)
{
    const QWidget &window = *program.window;
    const auto sometimes = [&dice] { return dice.bounded(3) > 0; };
    EntryPage::enter(window, Titolo,
                     QStringLiteral("%1 %2").arg(number).arg(awkwardText(dice, false)));
    for (const QString &label : {Testo, Posta, Sito, QStringLiteral("Testo2")}) {
        if (sometimes()) {
            EntryPage::enter(window, label, awkwardText(dice, false));
        }
    }
    if (sometimes()) {
        EntryPage::enter(window, Note, awkwardText(dice, true));
    }
    for (const QString &label : {Peso, Prezzo}) {
        if (sometimes()) {
            EntryPage::enter(window, label, awkwardNumber(dice));
        }
    }
    if (sometimes()) {
        EntryPage::enter(window, Anno, QString::number(dice.bounded(-999999999, 999999999)));
    }
    if (sometimes()) {
        EntryPage::enter(
            window, Data,
            QDate(1000, 1, 1).addDays(dice.bounded(600000)).toString(QStringLiteral("dd/MM/yyyy")));
    }
    if (sometimes()) {
        EntryPage::part<QAbstractButton>(window, Letto, "cbData")->click();
    }
    EntryPage::choose(window, Autore, dice.bounded(5));
    EntryPage::choose(window, Nome, dice.bounded(5));
    EntryPage::choose(window, Luogo, dice.bounded(3));
    if (dice.bounded(4) == 0) {
        attachPdf(window, Scheda, program.here.path(QStringLiteral("l'été; %s.pdf")));
    }
}

// Changes the field's value and takes the change back, as somebody does who looks what a
// button is for.
void touchAndUndo(const QWidget &window, inputDataForm &form)
{
    QWidget *const editor = form.editor();
    if (auto *const check = qobject_cast<QAbstractButton *>(editor)) {
        check->click();
        check->click();
    } else if (auto *const box = qobject_cast<QComboBox *>(editor)) {
        const int before = box->currentIndex();
        box->setCurrentIndex(before == 0 ? 1 : 0);
        box->setCurrentIndex(before);
    } else if (qobject_cast<QSpinBox *>(editor) != nullptr) {
        EntryPage::part<QAbstractButton>(window, form.label(), "pbMinus")->click();
        EntryPage::part<QAbstractButton>(window, form.label(), "pbPlus")->click();
    } else if (auto *const date = qobject_cast<QDateEdit *>(editor)) {
        const QDate before = date->date();
        date->setDate(before.addDays(40));
        date->setDate(before);
    } else if (editor != nullptr && form.format() != QStringLiteral("PDF") &&
               form.format() != QStringLiteral("IMAGE")) {
        QTest::keyClick(editor, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("1"));
        QTest::keyClick(editor, Qt::Key_Backspace);
    }
}

} // namespace

using EntryPage::Started;

class EntryRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void labelsInColumnOrder();
    void generatedRecordsKeepTheirBytes_data();
    void generatedRecordsKeepTheirBytes();
    void touchedFieldsKeepTheirBytes();
};

void EntryRoundTrip::labelsInColumnOrder()
{
    const Started program(Library);
    EntryPage::openNew(*program.window);
    QCOMPARE(EntryPage::labels(*program.window),
             (QStringList{Titolo, Testo, Note, Anno, Peso, Prezzo, Data, Letto, Posta, Sito, Foto,
                          Scheda, Autore, QStringLiteral("Prestiti"), Nome, Luogo,
                          QStringLiteral("Testo2")}));
}

void EntryRoundTrip::generatedRecordsKeepTheirBytes_data()
{
    QTest::addColumn<quint32>("start");
    for (const quint32 start : {20240229U, 1U, 424242U}) {
        QTest::addRow("records of throw %u", start) << start;
    }
}

void EntryRoundTrip::generatedRecordsKeepTheirBytes()
{
    QFETCH(quint32, start);
    constexpr int Records = 15;
    constexpr int Savings = 3;
    const Started program(Library);
    program.here.write(QStringLiteral("l'été; %s.pdf"), "%PDF-1.4");
    QRandomGenerator dice(start);
    QStringList expected;
    for (int number = 1; number <= Records; ++number) {
        EntryPage::openNew(*program.window);
        fillAtRandom(program, dice, number);
        EntryPage::save(*program.window);
        QVERIFY2(!EntryPage::isOpen(*program.window), qPrintable(QString::number(number)));
        // What the record holds once it has been shown is what it keeps.
        const QStringList rows = program.rows(QStringLiteral("libri"));
        QCOMPARE(rows.mid(0, number - 1), expected);
        expected = rows;
        const QByteArray file = program.here.read(program.database);
        for (int time = 0; time < Savings; ++time) {
            EntryPage::openEdit(*program.window);
            EntryPage::save(*program.window);
            QVERIFY2(!EntryPage::isOpen(*program.window), qPrintable(QString::number(number)));
            EntryPage::forgetOldPages();
        }
        QVERIFY2(program.here.read(program.database) == file, qPrintable(QString::number(number)));
    }
    QCOMPARE(expected.size(), Records);
}

void EntryRoundTrip::touchedFieldsKeepTheirBytes()
{
    const Started program(Library);
    program.here.write(QStringLiteral("l'été; %s.pdf"), "%PDF-1.4");
    QRandomGenerator dice(7);
    for (int number = 1; number <= 12; ++number) {
        EntryPage::openNew(*program.window);
        fillAtRandom(program, dice, number);
        EntryPage::save(*program.window);
        const QStringList before = program.rows(QStringLiteral("libri"));
        EntryPage::openEdit(*program.window);
        for (inputDataForm *const form : EntryPage::editors(*program.window)) {
            touchAndUndo(*program.window, *form);
        }
        EntryPage::save(*program.window);
        QVERIFY(!EntryPage::isOpen(*program.window));
        // A number that was left out became one when the record was added.
        QCOMPARE(program.rows(QStringLiteral("libri")), before);
    }
}

QTEST_MAIN(EntryRoundTrip)
#include "ui_entryroundtrip.moc"
