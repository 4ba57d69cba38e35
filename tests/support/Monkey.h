// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Uses a window without understanding it: random clicks, keys and texts.
#pragma once

#include <QList>
#include <QObject>
#include <QRandomGenerator>
#include <QStringList>
#include <QTimer>

class QAction;
class QDialog;
class QMenu;
class QWidget;

/// While it lives, whoever shows a progress dialog is pressed and closed: keys, clicks and the
/// title bar's button, on the dialog and on the windows behind it.
class Disturbance : public QObject
{
    Q_OBJECT

public:
    /// The random numbers begin at `start`.
    explicit Disturbance(quint32 start);

    /// How often something was done to a progress dialog.
    qint64 count() const { return done; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void lookForProgress();
    void disturb();

    QRandomGenerator random;
    QTimer timer;
    bool isDisturbing = false;
    qint64 done = 0;
};

/// Does at random what hands can do to the program's windows, through the toolkit's windows as
/// the mouse and the keyboard do, so that a modal dialog blocks what is behind it. Boxes, file
/// dialogs and menus that wait for an answer inside a step get one at random, and long operations
/// are disturbed.
class Monkey : public QObject
{
    Q_OBJECT

public:
    /// What has been done so far.
    struct Counts {
        qint64 steps = 0;
        qint64 boxes = 0;
        qint64 fileDialogs = 0;
        qint64 menus = 0;
        qint64 actions = 0;
        qint64 disturbances = 0;
    };

    /// The random numbers begin at `start`; `files` are what file dialogs are answered with.
    Monkey(quint32 start, const QStringList &files);

    /// Does one thing to what is in front, and lets the program follow.
    void step();

    Counts counts() const;
    /// Boxes whose text would be read as markup; there should be none.
    const QStringList &markupBoxes() const { return risky; }

private:
    void act(QWidget &front);
    void click(QWidget &front);
    void clickInside(QWidget &front, QWidget &target);
    void type(QWidget &front);
    void press(QWidget &front);
    void trigger(QWidget &front);
    void fillLines(QWidget &front);
    void paste(QWidget &front);
    void closeFront(QWidget &front);
    QString word();

    void lookForQuestions();
    void settle();
    void answerBox(QDialog &box);
    void answerFileDialog(QDialog &dialog);
    void answerMenu(QMenu &menu);

    QRandomGenerator hands;
    QRandomGenerator replies; // not to shift the hands when a dialog comes a moment later
    QStringList files;
    Disturbance disturbance;
    QTimer timer;
    bool isSettling = false;
    Counts done;
    QStringList risky;
};
