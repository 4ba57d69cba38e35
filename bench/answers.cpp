// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Commands that ask something first: what they cost from the answer on.
#include "bench/answers.h"

#include "widgets/chooseNameForm.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>

namespace
{

double secondsOn(const QElapsedTimer &clock)
{
    return double(clock.nsecsElapsed()) / 1e9;
}

} // namespace

namespace Answers
{

double secondsAfterYes(const std::function<void()> &command)
{
    QElapsedTimer clock;
    QTimer::singleShot(0, [&clock] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QObject::connect(box, &QMessageBox::finished, qApp, [&clock] { clock.start(); });
        box->button(QMessageBox::Yes)->click();
    });
    command();
    QCoreApplication::processEvents();
    return secondsOn(clock);
}

double secondsAfterName(const QString &name)
{
    auto *const prompt = qobject_cast<chooseNameForm *>(QApplication::activeModalWidget());
    prompt->setName(name);
    return seconds([prompt] { prompt->accept(); });
}

double seconds(const std::function<void()> &command)
{
    QElapsedTimer clock;
    clock.start();
    command();
    QCoreApplication::processEvents();
    return secondsOn(clock);
}

} // namespace Answers
