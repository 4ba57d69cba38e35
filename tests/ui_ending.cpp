// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program itself, started and ended as the system does it.
#include "tests/support/Workspace.h"

#include <QFile>
#include <QProcess>
#include <QtTest>

#include <csignal>

class Ending : public QObject
{
    Q_OBJECT

private slots:
    void signalEndsNormally_data();
    void signalEndsNormally();
    void signalEndsNormallyBehindABox();
};

namespace
{

// The program in this working directory.
void start(QProcess &program, const Workspace &here)
{
    program.setWorkingDirectory(here.path());
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(QStringLiteral(PROGRAM), QStringList());
    QVERIFY(program.waitForStarted());
}

// True when the process has a handler for the signal.
bool catches(const QProcess &program, int number)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(program.processId()));
    if (!status.open(QIODevice::ReadOnly)) {
        return false;
    }
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("SigCgt:")) {
            const quint64 caught = line.mid(7).trimmed().toULongLong(nullptr, 16);
            return (caught >> (number - 1) & 1) != 0;
        }
    }
    return false;
}

void signalAndWait(QProcess &program, int number)
{
    QCOMPARE(::kill(pid_t(program.processId()), number), 0);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

} // namespace

void Ending::signalEndsNormally_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void Ending::signalEndsNormally()
{
    QFETCH(int, number);
    const Workspace here;
    QProcess program;
    start(program, here);
    QTRY_COMPARE_WITH_TIMEOUT(here.read(QStringLiteral("lockDb.dat")), QByteArray("Locked"), 20000);
    signalAndWait(program, number);
    QVERIFY(!here.exists(QStringLiteral("lockDb.dat")));
}

void Ending::signalEndsNormallyBehindABox()
{
    const Workspace here;
    // Nothing that can be opened: the start stops at a message box.
    here.write(QStringLiteral("lastDb.dat"), "folder");
    here.write(QStringLiteral("folder/file"), "");
    QProcess program;
    start(program, here);
    // The box stands before the lock is taken; from the moment at which the program catches the
    // signal it must end by it, box or not.
    QTRY_VERIFY_WITH_TIMEOUT(catches(program, SIGTERM), 20000);
    signalAndWait(program, SIGTERM);
    QVERIFY(!here.exists(QStringLiteral("lockDb.dat")));
}

QTEST_GUILESS_MAIN(Ending)
#include "ui_ending.moc"
