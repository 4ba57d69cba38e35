// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tests of message boxes that nobody answers.
#include "samples/unattendedboxes.h"

#include <QDialog>
#include <QMessageBox>
#include <QtTest>

class SamplesUnattendedBoxes : public QObject
{
    Q_OBJECT

private slots:
    void boxesAreReportedAndClosed();
    void otherDialogsAreLeftAlone();
    void nothingHappensAfterwards();
};

void SamplesUnattendedBoxes::boxesAreReportedAndClosed()
{
    QStringList texts;
    const UnattendedBoxes boxes([&texts](const QString &text) { texts.append(text); });
    QMessageBox box;
    for (const char *text : {"ERRORE: uno!\n", "due"}) {
        box.setText(QString::fromLatin1(text));
        box.exec();
    }
    QCOMPARE(texts, QStringList({QStringLiteral("ERRORE: uno!"), QStringLiteral("due")}));
    QVERIFY(!box.isVisible());
}

void SamplesUnattendedBoxes::otherDialogsAreLeftAlone()
{
    QStringList texts;
    const UnattendedBoxes boxes([&texts](const QString &text) { texts.append(text); });
    QDialog dialog;
    dialog.show();
    QCoreApplication::processEvents();
    QVERIFY(dialog.isVisible());
    QCOMPARE(texts, QStringList());
}

void SamplesUnattendedBoxes::nothingHappensAfterwards()
{
    {
        const UnattendedBoxes boxes([](const QString &) {});
    }
    QMessageBox box;
    box.show();
    QCoreApplication::processEvents();
    QVERIFY(box.isVisible());
}

QTEST_MAIN(SamplesUnattendedBoxes)
#include "samples_unattendedboxes.moc"
