// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What happens to files and folders behind the program's back, and what they are called.
#include "tests/support/Campaign.h"
#include "tests/support/DesignerPage.h"
#include "tests/support/FilterPage.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

const QString LastDb = QStringLiteral("lastDb.dat");
const QString Lock = QStringLiteral("lockDb.dat");
const QString Books = QStringLiteral("books.db");
const QString Title = QStringLiteral("DB Administration Tool");
const QString CannotOpen = QStringLiteral("ERRORE: Impossibile aprire il Db!");

// Nobody in particular: what a file's permissions forbid does not hold for the administrator, as
// whom tests may be run.
class Unprivileged
{
public:
    Unprivileged()
        : before(geteuid())
    {
        if (before == 0 && seteuid(Nobody) != 0) {
            qFatal("cannot give up rights");
        }
    }
    ~Unprivileged()
    {
        if (before == 0 && seteuid(before) != 0) {
            qFatal("cannot take rights back");
        }
    }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    const uid_t before;
};

QStringList collection()
{
    return {
        QStringLiteral("CREATE TABLE libri (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Titolo text,NMONEYFORMAT_Prezzo text)"),
        QStringLiteral("INSERT INTO libri VALUES (1,'Zeno','3.00'),(2,'Alfa','4.00')"),
        QStringLiteral("CREATE TABLE autori (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_Nome text)"),
        QStringLiteral("INSERT INTO autori VALUES (1,'Svevo')"),
        QStringLiteral("CREATE TABLE settings (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_tableName text,RSTRINGFORMAT_iconPath text)"),
        QStringLiteral("CREATE TABLE filters (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_filterName text,NSTRINGFORMAT_filterTableName text,"
                       "NSTRINGFORMAT_filterFieldName text,NSTRINGFORMAT_filterFieldValue text,"
                       "NSTRINGFORMAT_filterFieldType text,NSTRINGFORMAT_filterFieldCondition "
                       "text,NSTRINGFORMAT_filterFieldConditionAndOr text)"),
        QStringLiteral("CREATE TABLE subtablesconfigs (RINTEGERFORMAT_Id integer primary key,"
                       "RSTRINGFORMAT_subConfigName text,NSTRINGFORMAT_subConfigFieldName text,"
                       "NSTRINGFORMAT_subConfigFieldType text)"),
    };
}

void makeReadOnlyFolder(const Workspace &here)
{
    chmod(qPrintable(here.path()), 0555);
}

void removeFile(const Workspace &here)
{
    QFile::remove(here.path(Books));
}

void renameFile(const Workspace &here)
{
    QFile::rename(here.path(Books), here.path(QStringLiteral("moved.db")));
}

void replaceFile(const Workspace &here)
{
    here.sql(QStringLiteral("other.db"), collection());
    rename(qPrintable(here.path(QStringLiteral("other.db"))), qPrintable(here.path(Books)));
}

void fillWithGarbage(const Workspace &here)
{
    here.write(Books, QByteArray(40000, 'x'));
}

void cutToHalf(const Workspace &here)
{
    QFile::resize(here.path(Books), QFile(here.path(Books)).size() / 2);
}

void cutToNothing(const Workspace &here)
{
    QFile::resize(here.path(Books), 0);
}

void copyAnotherInto(const Workspace &here)
{
    here.sql(QStringLiteral("other.db"), {QStringLiteral("CREATE TABLE altro (a,b)")});
    here.write(Books, here.read(QStringLiteral("other.db")));
}

// Everything that people have there, byte by byte.
QVector<QByteArray> kept(const Workspace &here)
{
    return {here.read(Books), here.read(QStringLiteral("moved.db"))};
}

// Commands that write, each as a person gives it.
void saveNew(Tavenor &window)
{
    EntryPage::openNew(window);
    if (EntryPage::isOpen(window)) {
        EntryPage::enter(window, QStringLiteral("Titolo"), QStringLiteral("Mu"));
        EntryPage::save(window);
    }
    if (EntryPage::isOpen(window)) {
        Window::click(window, "pbCancelEdit");
    }
}

void saveChange(Tavenor &window)
{
    EntryPage::openEdit(window);
    if (EntryPage::isOpen(window)) {
        EntryPage::enter(window, QStringLiteral("Titolo"), QStringLiteral("Mu"));
        EntryPage::save(window);
    }
    if (EntryPage::isOpen(window)) {
        Window::click(window, "pbCancelEdit");
    }
}

void deleteRecord(Tavenor &window)
{
    Window::click(window, "pbDeleteUser");
}

void clearTable(Tavenor &window)
{
    Window::action(window, "actionClear_Selected_List")->trigger();
}

void removeTable(Tavenor &window)
{
    window.administratorModeEnabled(true);
    Window::action(window, "actionRemove_Table")->trigger();
}

void changeIcon(Tavenor &window)
{
    window.changeTableIcon();
}

void lookAround(Tavenor &window)
{
    Window::pressTable(window, QStringLiteral("autori"));
    Window::click(window, "pbFilter");
    Window::click(window, "pbCancelFilters");
    Window::click(window, "pbCalc");
    Window::click(window, "pbExitCalc");
    Window::click(window, "pbSort");
}

} // namespace

/// What happens to the database behind the program's back.
using Change = void (*)(const Workspace &);
Q_DECLARE_METATYPE(Change)

class Surroundings : public QObject
{
    Q_OBJECT

private slots:
    void changedBehindTheBack_data();
    void changedBehindTheBack();
    void startUpFileThatIsNone_data();
    void startUpFileThatIsNone();
    void nameIsRemembered_data();
    void nameIsRemembered();
    void folderThatForbidsWritingIsTold();
    void cleanupTestCase();
};

void Surroundings::changedBehindTheBack_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isReadable");
    QTest::newRow("folder made read-only") << &makeReadOnlyFolder << true;
    QTest::newRow("file deleted") << &removeFile << true;
    QTest::newRow("file moved") << &renameFile << true;
    QTest::newRow("file replaced") << &replaceFile << true;
    QTest::newRow("garbage written over it") << &fillWithGarbage << false;
    QTest::newRow("cut to half") << &cutToHalf << false;
    QTest::newRow("cut to nothing") << &cutToNothing << false;
    QTest::newRow("another database written over it") << &copyAnotherInto << false;
}

void Surroundings::changedBehindTheBack()
{
    QFETCH(Change, change);
    QFETCH(bool, isReadable);
    Campaign::Row row(QStringLiteral("commands after a change behind the program's back"));
    const std::vector<std::pair<const char *, void (*)(Tavenor &)>> writing = {
        {"save new", saveNew},           {"save change", saveChange},
        {"delete", deleteRecord},        {"clear a table", clearTable},
        {"remove a table", removeTable}, {"change the icon", changeIcon}};
    const Unprivileged rights;
    {
        EntryPage::Started program(collection());
        Window::pressTable(*program.window, QStringLiteral("libri"));
        change(program.here);
        const QVector<QByteArray> before = kept(program.here);
        for (const auto &command : writing) {
            ModalResponder responder;
            // The question, where there is one, and then whatever is shown.
            responder.answer(QMessageBox::Yes);
            responder.allowAnything();
            command.second(*program.window);
            const QStringList texts = responder.takeTexts();
            QVERIFY2(texts.size() <= 4, command.first);
            bool isTold = false;
            for (const QString &text : texts) {
                const bool tells = text.startsWith(QLatin1String("ERRORE: ")) ||
                                   text == QStringLiteral("Nessuna Tabella Caricata!");
                QVERIFY2(tells || text.startsWith(QLatin1String("Eliminare ")), qPrintable(text));
                isTold = isTold || tells;
            }
            QVERIFY2(isTold, command.first);
            QVERIFY2(kept(program.here) == before, command.first);
            row.ran();
        }
        ModalResponder responder;
        responder.allowAnything();
        lookAround(*program.window);
        QVERIFY(responder.boxes().size() <= 6);
        QCOMPARE(responder.boxes().isEmpty(), isReadable);
        QVERIFY(kept(program.here) == before);
        chmod(qPrintable(program.here.path()), 0755);
    }
}

void Surroundings::startUpFileThatIsNone_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("kind");
    for (const QString &file : {LastDb, Lock}) {
        for (const char *const kind :
             {"missing", "folder", "pipe", "unreadable", "read-only", "huge", "binary", "newlines",
              "no UTF-8", "long", "link to nothing", "link to itself"}) {
            QTest::addRow("%s: %s", qPrintable(file), kind) << file << QString::fromLatin1(kind);
        }
    }
}

// Makes the program's small file something that it should not be.
void makeOdd(const Workspace &here, const QString &file, const QString &kind)
{
    const QByteArray path = here.path(file).toUtf8();
    if (kind == QLatin1String("folder")) {
        QDir().mkpath(here.path(file));
    } else if (kind == QLatin1String("pipe")) {
        mkfifo(path.constData(), 0600);
    } else if (kind == QLatin1String("unreadable")) {
        here.write(file, "x");
        chmod(path.constData(), 0);
    } else if (kind == QLatin1String("read-only")) {
        here.write(file, here.path(Books).toUtf8());
        chmod(path.constData(), 0444);
    } else if (kind == QLatin1String("huge")) {
        here.write(file, "x");
        QFile::resize(here.path(file), Q_INT64_C(1) << 32);
    } else if (kind == QLatin1String("binary")) {
        here.write(file, QByteArray("\0\1\2\xff\xfe\0", 6));
    } else if (kind == QLatin1String("newlines")) {
        here.write(file, "\n\n\n");
    } else if (kind == QLatin1String("no UTF-8")) {
        here.write(file, "gone/\xe8\xff.db");
    } else if (kind == QLatin1String("long")) {
        here.write(file, QByteArray(70000, 'x'));
    } else if (kind.startsWith(QLatin1String("link"))) {
        const bool isOwn = kind.endsWith(QLatin1String("itself"));
        symlink(isOwn ? path.constData() : "/nowhere/at/all", path.constData());
    }
}

void Surroundings::startUpFileThatIsNone()
{
    QFETCH(QString, file);
    QFETCH(QString, kind);
    Campaign::Row row(QStringLiteral("odd files of the program's own"));
    const Unprivileged rights;
    const Workspace here;
    here.sql(Books, collection());
    makeOdd(here, file, kind);
    const QByteArray before = here.read(Books);
    ModalResponder responder;
    responder.allowAnything();
    {
        Tavenor window;
        // What cannot be read locks nothing.
        QCOMPARE(window.windowTitle(), Title);
        const QStringList texts = responder.takeTexts();
        QVERIFY(texts.isEmpty() || texts == QStringList(CannotOpen));
        responder.chooseFile(here.path(Books));
        window.openDb();
        QCOMPARE(responder.takeTexts(), QStringList());
        QCOMPARE(Window::lines(window),
                 (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zeno")}));
    }
    QCOMPARE(here.read(Books), before);
    row.ran();
}

void Surroundings::nameIsRemembered_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = {QStringLiteral("i miei libri.db"),
                               QStringLiteral("l'arte.db"),
                               QStringLiteral("perché 📚.db"),
                               QStringLiteral("%s%n%d.db"),
                               QStringLiteral("a;b#c?d&e=f.db"),
                               QStringLiteral("-rf.db"),
                               QStringLiteral("<b>x.db"),
                               QStringLiteral("[a] {b}.db"),
                               QStringLiteral("senza"),
                               QStringLiteral("\"a\" b.db"),
                               QStringLiteral("x").repeated(240) + QStringLiteral(".db"),
                               QStringLiteral("è").repeated(120)};
    for (const QString &name : names) {
        QTest::newRow(qUtf8Printable(name.left(20))) << name;
    }
}

void Surroundings::nameIsRemembered()
{
    QFETCH(QString, name);
    Campaign::Row row(QStringLiteral("odd names of databases"));
    const Workspace here;
    here.sql(Books, collection());
    QVERIFY(QFile::rename(here.path(Books), here.path(name)));
    // The dialog takes quotes for those around several names.
    const bool isChosen = !name.contains(QLatin1Char('"'));
    if (!isChosen) {
        here.remember(name);
    }
    ModalResponder responder;
    {
        Tavenor window;
        if (isChosen) {
            responder.chooseFile(here.path(name));
            window.openDb();
        }
        QCOMPARE(Window::get<QPushButton>(window, "pbDbName")->text(), name);
        saveNew(window);
        QCOMPARE(Window::heading(window), QStringLiteral("Mu"));
    }
    QCOMPARE(QString::fromUtf8(here.read(LastDb)), here.path(name));
    const Tavenor again;
    QCOMPARE(Window::lines(again),
             (QStringList{QStringLiteral("Alfa"), QStringLiteral("Mu"), QStringLiteral("Zeno")}));
    QCOMPARE(responder.takeTexts(), QStringList());
    row.ran();
}

void Surroundings::folderThatForbidsWritingIsTold()
{
    Campaign::Row row(QStringLiteral("a database that cannot be written to"));
    // A file on a disc, or in somebody else's folder: it can be looked at.
    const Unprivileged rights;
    const Workspace here;
    here.write(QStringLiteral("disc/keep"), "");
    here.sql(QStringLiteral("disc/books.db"), collection());
    here.remember(QStringLiteral("disc/books.db"));
    const QByteArray before = here.read(QStringLiteral("disc/books.db"));
    chmod(qPrintable(here.path(QStringLiteral("disc/books.db"))), 0444);
    chmod(qPrintable(here.path(QStringLiteral("disc"))), 0555);
    {
        ModalResponder responder;
        Tavenor window;
        QCOMPARE(Window::lines(window),
                 (QStringList{QStringLiteral("Alfa"), QStringLiteral("Zeno")}));
        QCOMPARE(responder.takeTexts(), QStringList());
        EntryPage::openNew(window);
        EntryPage::enter(window, QStringLiteral("Titolo"), QStringLiteral("Mu"));
        responder.answer(QMessageBox::Ok);
        EntryPage::save(window);
        QCOMPARE(responder.takeTexts(),
                 QStringList{QStringLiteral(
                     "ERRORE: Impossibile aggiungere un elemento alla tabella libri!\nattempt to "
                     "write a readonly database Unable to fetch row")});
        QCOMPARE(EntryPage::shown(window, QStringLiteral("Titolo")), QStringLiteral("Mu"));
    }
    chmod(qPrintable(here.path(QStringLiteral("disc"))), 0755);
    QCOMPARE(here.read(QStringLiteral("disc/books.db")), before);
    row.ran();
}

void Surroundings::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(Surroundings)
#include "faults_surroundings.moc"
