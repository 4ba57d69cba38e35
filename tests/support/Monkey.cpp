// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Uses a window without understanding it: random clicks, keys and texts.
#include "tests/support/Monkey.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitterHandle>
#include <QWindow>
#include <QtTest>

#include <algorithm>

namespace
{

constexpr int Interval = 3;

const QStringList &texts()
{
    static const QStringList all = {
        QStringLiteral("a"),
        QStringLiteral("L'anno \"d'oro\""),
        QStringLiteral("'; DROP TABLE libri; --"),
        QStringLiteral("%s%n%d"),
        QStringLiteral("###"),
        QStringLiteral("<img src='pipe'>"),
        QStringLiteral("&amp; &x"),
        QStringLiteral("-1"),
        QStringLiteral("1e999"),
        QStringLiteral("999999999999"),
        QStringLiteral("1 234,5"),
        QStringLiteral("31/02/2020"),
        QStringLiteral("29/02/2020"),
        QStringLiteral("Zeno"),
        QStringLiteral("sqlite_x"),
        QStringLiteral("select"),
        QStringLiteral("_XDTX_"),
        QStringLiteral("#x"),
        QStringLiteral("libri"),
        QStringLiteral("\U0001f4da è 漢"),
        QStringLiteral("\u202eabc"),
        QStringLiteral("una\ndue\n"),
        QStringLiteral("../../etc/passwd"),
        QStringLiteral("   "),
        QString(),
    };
    return all;
}

bool isQuestion(const QWidget *widget)
{
    return qobject_cast<const QMessageBox *>(widget) != nullptr ||
           qobject_cast<const QFileDialog *>(widget) != nullptr;
}

bool isProgress(const QWidget *widget)
{
    return widget != nullptr && widget->isVisible() && widget->inherits("progressBarForm");
}

QWidget *shownProgress()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (isProgress(widget)) {
            return widget;
        }
    }
    return nullptr;
}

// What a person could reach now: a popup, the modal dialog, or else any window.
QWidget *frontWindow(QRandomGenerator &random)
{
    if (QWidget *const popup = QApplication::activePopupWidget()) {
        return popup;
    }
    if (QWidget *const modal = QApplication::activeModalWidget()) {
        return modal;
    }
    QWidgetList shown;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowType() != Qt::ToolTip &&
            widget->windowHandle() != nullptr) {
            shown.append(widget);
        }
    }
    return shown.isEmpty() ? nullptr : shown.at(random.bounded(shown.size()));
}

bool invitesClicks(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) != nullptr ||
           qobject_cast<const QLineEdit *>(widget) != nullptr ||
           qobject_cast<const QComboBox *>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox *>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit *>(widget) != nullptr ||
           qobject_cast<const QAbstractItemView *>(widget) != nullptr ||
           qobject_cast<const QScrollBar *>(widget) != nullptr ||
           qobject_cast<const QSplitterHandle *>(widget) != nullptr;
}

// True for the parts of rows and fields, which outnumber the buttons of the page.
bool isPartOfRow(const QWidget *widget)
{
    for (const QWidget *above = widget->parentWidget(); above != nullptr;
         above = above->parentWidget()) {
        if (above->inherits("inputDataForm") || above->inherits("outputDataForm") ||
            above->inherits("newTableElement")) {
            return true;
        }
    }
    return false;
}

QWidgetList targetsIn(const QWidget &front, bool inRows)
{
    QWidgetList targets;
    for (QWidget *const widget : front.findChildren<QWidget *>()) {
        if (widget->window() == &front && widget->isVisible() && widget->isEnabled() &&
            invitesClicks(widget) && isPartOfRow(widget) == inRows) {
            targets.append(widget);
        }
    }
    return targets;
}

void bringIntoView(QWidget &target)
{
    for (QWidget *above = target.parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto *const area = qobject_cast<QScrollArea *>(above)) {
            area->ensureWidgetVisible(&target, 0, 0);
            return;
        }
    }
}

// Ends what has been collected; often the last resort of a person as well.
bool isDrastic(const QAction &action)
{
    const QString name = action.objectName();
    return name.contains(QLatin1String("Exit")) || name.contains(QLatin1String("Delete_All")) ||
           name.contains(QLatin1String("Clear")) || name.contains(QLatin1String("_Db")) ||
           name.contains(QLatin1String("Remove"));
}

// A key, down and up again. What it does may be the end of the window.
void hit(const QPointer<QWindow> &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {},
         const QString &written = QString())
{
    if (window) {
        QTest::simulateEvent(window.data(), true, key, modifiers, written, false);
    }
    if (window) {
        QTest::simulateEvent(window.data(), false, key, modifiers, written, false);
    }
}

} // namespace

Disturbance::Disturbance(quint32 start)
    : random(start)
{
    connect(&timer, &QTimer::timeout, this, &Disturbance::lookForProgress);
    timer.start(0);
    qApp->installEventFilter(this);
}

/// A short operation lets events through only once: what is done then waits for it already.
bool Disturbance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->inherits("progressBarForm")) {
        lookForProgress();
    }
    return false;
}

/// Queued, because a timer does not fire again inside its own slot.
void Disturbance::lookForProgress()
{
    if (!isDisturbing && shownProgress() != nullptr) {
        isDisturbing = true;
        QMetaObject::invokeMethod(this, &Disturbance::disturb, Qt::QueuedConnection);
    }
}

void Disturbance::disturb()
{
    isDisturbing = false;
    QWidgetList shown;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowHandle() != nullptr) {
            shown.append(widget);
        }
    }
    if (shownProgress() == nullptr || shown.isEmpty()) {
        return;
    }
    ++done;
    QWidget *const widget = shown.at(random.bounded(shown.size()));
    QWindow *const window = widget->windowHandle();
    switch (random.bounded(4)) {
    case 0:
        hit(window, Qt::Key_Escape);
        break;
    case 1:
        window->close();
        break;
    case 2:
        hit(window, Qt::Key_Return);
        break;
    default:
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier,
                          QPoint(random.bounded(qMax(1, widget->width())),
                                 random.bounded(qMax(1, widget->height()))));
        break;
    }
}

Monkey::Monkey(quint32 start, const QStringList &files)
    : hands(start)
    , replies(start + 1)
    , files(files)
    , disturbance(start + 2)
{
    connect(&timer, &QTimer::timeout, this, &Monkey::lookForQuestions);
    timer.start(Interval);
}

Monkey::Counts Monkey::counts() const
{
    Counts counts = done;
    counts.disturbances = disturbance.count();
    return counts;
}

void Monkey::step()
{
    ++done.steps;
    if (QWidget *const front = frontWindow(hands)) {
        act(*front);
    }
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Monkey::act(QWidget &front)
{
    const int choice = hands.bounded(100);
    if (choice < 52) {
        click(front);
    } else if (choice < 62) {
        type(front);
    } else if (choice < 72) {
        press(front);
    } else if (choice < 77) {
        trigger(front);
    } else if (choice < 93) {
        fillLines(front);
    } else if (choice < 98) {
        paste(front);
    } else {
        closeFront(front);
    }
}

void Monkey::click(QWidget &front)
{
    const QWidgetList inRows = targetsIn(front, true);
    const QWidgetList outside = targetsIn(front, false);
    const bool takesRow = outside.isEmpty() || (!inRows.isEmpty() && hands.bounded(3) == 0);
    const QWidgetList &choice = takesRow ? inRows : outside;
    QWidget &target = choice.isEmpty() ? front : *choice.at(hands.bounded(choice.size()));
    bringIntoView(target);
    clickInside(front, target);
}

void Monkey::clickInside(QWidget &front, QWidget &target)
{
    QWidget *inside = &target;
    if (auto *const area = qobject_cast<QAbstractScrollArea *>(inside)) {
        inside = area->viewport();
    }
    const QRect visible = inside->visibleRegion().boundingRect();
    QWindow *const window = front.windowHandle();
    if (visible.isEmpty() || window == nullptr) {
        return;
    }
    const bool atRandom = inside != &target || &target == &front || hands.bounded(4) == 0;
    const QPoint place = atRandom ? visible.topLeft() + QPoint(hands.bounded(visible.width()),
                                                               hands.bounded(visible.height()))
                                  : visible.center();
    const QPoint inWindow = inside->mapTo(&front, place);
    const int kind = hands.bounded(20);
    if (kind == 0) {
        QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, inWindow);
    } else if (kind == 1) {
        QTest::mouseClick(window, Qt::RightButton, Qt::NoModifier, inWindow);
    } else {
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, inWindow);
    }
}

/// Types on top of what has the focus, whatever that is.
void Monkey::type(QWidget &front)
{
    const QPointer<QWindow> window = front.windowHandle();
    const QString keys = hands.bounded(2) == 0 ? word() : QString::number(hands.bounded(10000));
    for (const QChar key : keys) {
        if (key.unicode() < 0x7f && key.isPrint()) {
            hit(window, QTest::asciiToKey(key.toLatin1()), {}, QString(key));
        }
    }
}

void Monkey::press(QWidget &front)
{
    static const QList<int> keys = {
        Qt::Key_Return, Qt::Key_Escape,   Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Space,
        Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left,   Qt::Key_Right,   Qt::Key_Home,
        Qt::Key_End,    Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Delete,  Qt::Key_Backspace,
        Qt::Key_F2,     Qt::Key_F10,      Qt::Key_Menu,   Qt::Key_Enter};
    static const QList<int> letters = {Qt::Key_N, Qt::Key_S, Qt::Key_F, Qt::Key_T, Qt::Key_E,
                                       Qt::Key_I, Qt::Key_D, Qt::Key_A, Qt::Key_Z, Qt::Key_H};
    if (QWindow *const window = front.windowHandle()) {
        if (hands.bounded(4) == 0) {
            const auto modifier = hands.bounded(2) == 0 ? Qt::ControlModifier : Qt::AltModifier;
            hit(window, Qt::Key(letters.at(hands.bounded(letters.size()))), modifier);
        } else {
            hit(window, Qt::Key(keys.at(hands.bounded(keys.size()))));
        }
    }
}

/// Chooses a command of the menus. They are not opened for it: that takes several clicks in a row.
void Monkey::trigger(QWidget &front)
{
    if (front.isModal() || front.windowType() == Qt::Popup) {
        return;
    }
    QList<QAction *> choice;
    for (QAction *const action : front.findChildren<QAction *>()) {
        const bool isCommand = !action->isSeparator() && action->menu() == nullptr;
        if (isCommand && action->isVisible() && action->isEnabled() && !action->text().isEmpty()) {
            choice.append(action);
        }
    }
    if (choice.isEmpty()) {
        return;
    }
    QAction *const action = choice.at(hands.bounded(choice.size()));
    if (!isDrastic(*action) || hands.bounded(12) == 0) {
        ++done.actions;
        action->trigger();
    }
}

/// Fills most empty lines with a word that pages accept, and often goes on with one of the page's
/// buttons.
void Monkey::fillLines(QWidget &front)
{
    for (const QPointer<QLineEdit> line : front.findChildren<QLineEdit *>()) {
        if (line && line->isVisible() && line->isEnabled() && !line->isReadOnly() &&
            line->text().isEmpty() && hands.bounded(4) != 0) {
            line->insert(QStringLiteral("p%1").arg(hands.bounded(100000)));
        }
    }
    const QWidgetList outside = targetsIn(front, false);
    QWidgetList buttons;
    std::copy_if(outside.begin(), outside.end(), std::back_inserter(buttons),
                 [](const QWidget *widget) { return qobject_cast<const QPushButton *>(widget); });
    if (!buttons.isEmpty() && hands.bounded(4) != 0) {
        clickInside(front, *buttons.at(hands.bounded(buttons.size())));
    }
}

/// Pastes into what has the focus.
void Monkey::paste(QWidget &front)
{
    if (front.windowHandle() == nullptr) {
        return;
    }
    const int size = hands.bounded(30) == 0 ? 40000 : 1;
    QGuiApplication::clipboard()->setText(word().repeated(size));
    hit(front.windowHandle(), Qt::Key_V, Qt::ControlModifier);
}

/// As the title bar's button does.
void Monkey::closeFront(QWidget &front)
{
    const bool isMain = !front.isModal() && front.windowType() == Qt::Window;
    if (front.windowHandle() != nullptr && (!isMain || hands.bounded(40) == 0)) {
        front.windowHandle()->close();
    }
}

QString Monkey::word()
{
    const QStringList &all = texts();
    return all.at(hands.bounded(all.size()));
}

/// Queued, because a timer does not fire again inside its own slot: a dialog that comes up out of
/// an answer would wait for ever.
void Monkey::lookForQuestions()
{
    const bool waits = isQuestion(QApplication::activeModalWidget()) ||
                       qobject_cast<QMenu *>(QApplication::activePopupWidget()) != nullptr;
    if (waits && !isSettling) {
        isSettling = true;
        QMetaObject::invokeMethod(this, &Monkey::settle, Qt::QueuedConnection);
    }
}

void Monkey::settle()
{
    isSettling = false;
    if (auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        answerMenu(*menu);
        return;
    }
    QWidget *const modal = QApplication::activeModalWidget();
    if (auto *const box = qobject_cast<QMessageBox *>(modal)) {
        answerBox(*box);
    } else if (auto *const dialog = qobject_cast<QFileDialog *>(modal)) {
        answerFileDialog(*dialog);
    }
}

void Monkey::answerBox(QDialog &box)
{
    const auto &shown = static_cast<QMessageBox &>(box);
    ++done.boxes;
    const bool isToolkits = qobject_cast<QFileDialog *>(box.parentWidget()) != nullptr;
    if (!isToolkits && shown.textFormat() != Qt::PlainText) {
        risky.append(shown.text());
    }
    const QList<QAbstractButton *> buttons = shown.buttons();
    if (buttons.isEmpty() || replies.bounded(4) == 0) {
        box.reject();
    } else {
        buttons.at(replies.bounded(buttons.size()))->click();
    }
}

void Monkey::answerFileDialog(QDialog &dialog)
{
    ++done.fileDialogs;
    auto *const line = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (line == nullptr || replies.bounded(3) == 0) {
        dialog.reject();
        return;
    }
    line->setText(files.at(replies.bounded(files.size())));
    QMetaObject::invokeMethod(&dialog, "accept");
}

void Monkey::answerMenu(QMenu &menu)
{
    ++done.menus;
    const QList<QAction *> entries = menu.actions();
    if (entries.isEmpty() || replies.bounded(3) == 0) {
        menu.close();
        return;
    }
    QAction *const entry = entries.at(replies.bounded(entries.size()));
    if (isDrastic(*entry) || !entry->isEnabled() || entry->isSeparator()) {
        menu.close();
        return;
    }
    menu.setActiveAction(entry);
    hit(menu.windowHandle(), Qt::Key_Return);
}
