// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A power cut while the program writes leaves everything as it was or as it was to be.
#include "tests/faults/tools/powercut.h"
#include "tests/faults/tools/trial.h"
#include "tests/support/Campaign.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QSet>
#include <QtTest>

#include <sys/stat.h>

using FaultIo::Event;
using Keeps = PowerCut::Keeps;
using Scenarios::Files;
using Scenarios::Scenario;

namespace
{

// Files with small pages are written in many pieces.
const QVector<int> PageSizes = {4096, 1024, 512};

QByteArray hashOf(const Files &files)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (auto file = files.begin(); file != files.end(); ++file) {
        hash.addData(file.key().toUtf8());
        hash.addData(QByteArray::number(file->size()));
        hash.addData(*file);
    }
    return hash.result();
}

std::vector<Event> record(const Workspace &here, const Scenario &scenario)
{
    std::vector<Event> log;
    Scenarios::Stage stage(
        here, [&] { FaultIo::record(here.path().toStdString(), &log); }, [] { FaultIo::disarm(); });
    scenario.run(stage);
    return log;
}

} // namespace

class PowerCuts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void modelKeepsWhatIsSynchronised();
    void modelLosesWholeSectors();
    void modelKeepsNamesInTheirOrder();
    void everyCutLeavesOldOrNew_data();
    void everyCutLeavesOldOrNew();
    void cleanupTestCase();

private:
    static QString faultOf(const Workspace &here, const Trial::Ground &ground, const Files &image);
};

void PowerCuts::initTestCase()
{
    // It is noted where it would have been.
    FaultIo::skipSynchronisation();
}

void PowerCuts::modelKeepsWhatIsSynchronised()
{
    const Workspace here;
    here.write(QStringLiteral("a"), "old");
    PowerCut cut(here, Scenarios::filesOf(here));
    struct stat state {
    };
    stat(here.path(QStringLiteral("a")).toUtf8().constData(), &state);
    QRandomGenerator random(1);
    cut.add({Event::Kind::Write, state.st_ino, {}, {}, 0, "new"});
    QCOMPARE(cut.image(Keeps::Nothing, random).value(QStringLiteral("a")), QByteArray("old"));
    QCOMPARE(cut.image(Keeps::Everything, random).value(QStringLiteral("a")), QByteArray("new"));
    cut.add({Event::Kind::Sync, state.st_ino, {}, {}, 0, {}});
    QCOMPARE(cut.image(Keeps::Nothing, random).value(QStringLiteral("a")), QByteArray("new"));
    cut.add({Event::Kind::Truncate, state.st_ino, {}, {}, 1, {}});
    QCOMPARE(cut.image(Keeps::Nothing, random).value(QStringLiteral("a")), QByteArray("new"));
    QCOMPARE(cut.image(Keeps::Everything, random).value(QStringLiteral("a")), QByteArray("n"));
}

void PowerCuts::modelLosesWholeSectors()
{
    const Workspace here;
    here.write(QStringLiteral("a"), QByteArray(2048, 'o'));
    PowerCut cut(here, Scenarios::filesOf(here));
    struct stat state {
    };
    stat(here.path(QStringLiteral("a")).toUtf8().constData(), &state);
    // Two whole sectors and a part of two others.
    cut.add({Event::Kind::Write, state.st_ino, {}, {}, 100, std::string(1600, 'n')});
    QSet<QByteArray> seen;
    for (quint32 start = 0; start < 200; ++start) {
        QRandomGenerator random(start);
        const QByteArray bytes = cut.image(Keeps::Some, random).value(QStringLiteral("a"));
        QCOMPARE(bytes.size(), 2048);
        QCOMPARE(bytes.left(100), QByteArray(100, 'o'));
        QCOMPARE(bytes.mid(1700), QByteArray(348, 'o'));
        const QVector<QPair<int, int>> pieces = {
            {100, 512}, {512, 1024}, {1024, 1536}, {1536, 1700}};
        for (const QPair<int, int> &piece : pieces) {
            const int length = piece.second - piece.first;
            const QByteArray part = bytes.mid(piece.first, length);
            QVERIFY(part == QByteArray(length, 'o') || part == QByteArray(length, 'n'));
        }
        seen.insert(bytes);
    }
    QCOMPARE(seen.size(), 16);
}

void PowerCuts::modelKeepsNamesInTheirOrder()
{
    const Workspace here;
    PowerCut cut(here, Scenarios::filesOf(here));
    const std::string folder = here.path().toStdString();
    cut.add({Event::Kind::Make, 1, folder + "/a", {}, 0, {}});
    cut.add({Event::Kind::Make, 2, folder + "/b", {}, 0, {}});
    cut.add({Event::Kind::Unlink, 1, folder + "/a", {}, 0, {}});
    QSet<QStringList> seen;
    QRandomGenerator random(1);
    for (int i = 0; i < 100; ++i) {
        seen.insert(cut.image(Keeps::Some, random).keys());
    }
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    QCOMPARE(seen, (QSet<QStringList>{{}, {a}, {a, b}, {b}}));
    cut.add({Event::Kind::SyncFolder, 3, folder, {}, 0, {}});
    QCOMPARE(cut.image(Keeps::Nothing, random).keys(), QStringList(b));
}

// What is wrong with the files after a cut; empty when nothing is.
QString PowerCuts::faultOf(const Workspace &here, const Trial::Ground &ground, const Files &image)
{
    Scenarios::restore(here, image);
    const Scenarios::State left = Scenarios::stateOf(here);
    const QString fault = Scenarios::faultOf(left, ground.before, ground.after, true);
    if (!fault.isEmpty()) {
        return fault;
    }
    const QStringList lines = Scenarios::linesAfterStart(here);
    if (lines != ground.linesBefore && lines != ground.linesAfter) {
        return QStringLiteral("the next start shows: ") + lines.join(QLatin1Char('|'));
    }
    return QString();
}

void PowerCuts::everyCutLeavesOldOrNew_data()
{
    Trial::addScenarioRows(0, 3);
}

void PowerCuts::everyCutLeavesOldOrNew()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    Campaign::Row row(QStringLiteral("power cut: %1").arg(QLatin1String(scenario.name)));
    QSet<QByteArray> seen;
    QStringList found;
    QRandomGenerator random(Campaign::start());
    const int pageSizes = Campaign::cases(1, PageSizes.size());
    for (int size = 0; size < pageSizes; ++size) {
        const Workspace here;
        Trial::Ground ground = Trial::prepare(here, scenario, PageSizes.at(size));
        Trial::addLines(here, ground);
        PowerCut cut(here, ground.files);
        const std::vector<Event> log = record(here, scenario);
        QVERIFY2(log.size() > 3, "the program is not watched");
        const QVector<int> places =
            Trial::spread(int(log.size()), Campaign::cases(1, 50), Campaign::start());
        for (int place = 1; place <= int(log.size()); ++place) {
            cut.add(log.at(size_t(place - 1)));
            // At the end everything has been done, and nobody may find half a file.
            const bool isEnd = place == int(log.size());
            if (!places.contains(place) && !isEnd) {
                continue;
            }
            const QVector<Keeps> ways =
                Campaign::isFull() || isEnd
                    ? QVector<Keeps>{Keeps::Nothing, Keeps::Some, Keeps::Everything}
                    : QVector<Keeps>{Keeps::Some};
            for (const Keeps keeps : ways) {
                const Files image = cut.image(keeps, random);
                const QByteArray hash = hashOf(image);
                if (seen.contains(hash)) {
                    continue;
                }
                seen.insert(hash);
                const QString fault = faultOf(here, ground, image);
                row.ran();
                if (!fault.isEmpty()) {
                    found.append(QStringLiteral("event %1 of %2, page size %3, way %4: %5")
                                     .arg(place)
                                     .arg(log.size())
                                     .arg(PageSizes.at(size))
                                     .arg(int(keeps))
                                     .arg(fault));
                }
            }
        }
    }
    row.failed(found.size());
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void PowerCuts::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(PowerCuts)

#include "faults_powercut.moc"
