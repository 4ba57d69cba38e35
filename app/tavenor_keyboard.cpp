// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: keys that belong to no single button, and where the focus goes.
#include "app/Tavenor.h"

#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"
#include "widgets/focusedge.h"
#include "widgets/progressBarForm.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QShortcut>

#include <algorithm>

namespace
{

// As many tables as there are digits.
constexpr int TableKeys = 9;

// True when the Tab key could stop there now.
bool isTabStop(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr &&
           widget.isVisible() && widget.isEnabled();
}

QWidget *firstTabStop(const QWidget &area)
{
    for (QWidget *next = area.nextInFocusChain(); next != &area; next = next->nextInFocusChain()) {
        if (area.isAncestorOf(next) && isTabStop(*next)) {
            return next;
        }
    }
    return nullptr;
}

// The entry in force, else the first one; null when the list has none.
QWidget *entryIn(const QList<ListButtonForm *> &buttons)
{
    const auto current = std::find_if(buttons.begin(), buttons.end(),
                                      [](const ListButtonForm *b) { return b->isCurrent(); });
    return current == buttons.end() ? buttons.value(0) : *current;
}

} // namespace

void Tavenor::connectKeyboard()
{
    const auto addKey = [this](const QKeySequence &key, QWidget *where, void (Tavenor::*slot)()) {
        auto *const shortcut = new QShortcut(key, where);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    addKey(QKeySequence::Find, ui->usersPage, &Tavenor::focusSearch);
    addKey(QKeySequence(Qt::Key_F5), ui->usersPage, &Tavenor::reload);
    addKey(QKeySequence(Qt::Key_F10), ui->menuBar, &Tavenor::openMenuBar);
    addKey(QKeySequence(Qt::SHIFT + Qt::Key_F10), this, &Tavenor::askForMenu);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *const edit = new QShortcut(QKeySequence(key), ui->userListWidget);
        edit->setContext(Qt::WidgetShortcut);
        connect(edit, &QShortcut::activated, this, &Tavenor::editListed);
    }
    connect(new QShortcut(QKeySequence(Qt::Key_F6), this), &QShortcut::activated, this,
            [this] { changeArea(1); });
    connect(new QShortcut(QKeySequence(Qt::SHIFT + Qt::Key_F6), this), &QShortcut::activated, this,
            [this] { changeArea(-1); });
    connectTableKeys();
    for (QWidget *const area :
         {ui->tablesScroll, ui->filtersScroll, ui->datiScroll, ui->inputScroll, ui->filterScroll,
          ui->calcScroll, ui->newElementScroll}) {
        showFocusEdge(area);
    }
    ui->userSearchEdit->installEventFilter(this);
    // What leaves the designer by a key.
    for (QObject *const leaving :
         {static_cast<QObject *>(ui->pbFilter), static_cast<QObject *>(ui->pbReturn),
          static_cast<QObject *>(ui->actionOpen_Db), static_cast<QObject *>(ui->actionExit),
          static_cast<QObject *>(secondDoor.at(1)), static_cast<QObject *>(secondDoor.at(2))}) {
        leaving->installEventFilter(this);
    }
}

void Tavenor::connectTableKeys()
{
    for (int place = 0; place < TableKeys; ++place) {
        // Of the window and not of the panel: the panel may be hidden, or show the filters.
        auto *const key = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_1 + place), this);
        key->setAutoRepeat(false);
        connect(key, &QShortcut::activated, this, [this, place] {
            if (ui->listFrame->isEnabled() && place < listButtons.size() && mayDropDesign()) {
                listButtons.at(place)->pushed();
            }
        });
    }
}

bool Tavenor::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->userSearchEdit) {
        // A key is hit by mistake more easily than a button or an entry of a menu.
        return event->type() == QEvent::Shortcut && !mayDropDesign();
    }
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto *const key = static_cast<QKeyEvent *>(event);
    if (event->type() == QEvent::KeyPress) {
        return searchKey(key);
    }
    if (key->matches(QKeySequence::DeleteEndOfWord)) {
        // The same key deletes the record elsewhere.
        event->accept();
    }
    return false;
}

bool Tavenor::searchKey(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if ((event->modifiers() & Qt::ShiftModifier) != 0) {
            userSearchPrev();
        } else {
            userSearchNext();
        }
        return true;
    case Qt::Key_Escape:
    case Qt::Key_Down:
        focusRecords();
        return true;
    default:
        return false;
    }
}

void Tavenor::editListed()
{
    // In an empty list there is nothing to complain about.
    if (ui->userListWidget->currentItem() != nullptr) {
        showHighlighted();
        ui->pbEditUser->click();
    }
}

void Tavenor::focusSearch()
{
    ui->pbHideList->setChecked(true);
    ui->userSearchEdit->setFocus(Qt::ShortcutFocusReason);
    ui->userSearchEdit->selectAll();
}

void Tavenor::reload()
{
    const int wanted = currentId == 0 ? unreadId : currentId;
    loadUserList(currentTable);
    currentId = wanted;
    showCurrentRecord();
    searchAgain();
}

void Tavenor::openMenuBar()
{
    // It takes the focus by itself, and gives it back.
    ui->menuBar->setActiveAction(ui->menuFile->menuAction());
}

void Tavenor::askForMenu()
{
    QWidget *const focused = focusWidget();
    if (focused == nullptr) {
        return;
    }
    const QPoint place = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
    QApplication::sendEvent(focused, &event);
}

QList<QWidget *> Tavenor::areas() const
{
    const bool onRecords = ui->stPages->currentIndex() == RecordsPage;
    const QList<QWidget *> pages = onRecords
                                       ? QList<QWidget *>{ui->recordListFrame, ui->recordFrame}
                                       : QList<QWidget *>{ui->stPages->currentWidget()};
    return QList<QWidget *>{ui->listFrame} + pages;
}

QWidget *Tavenor::targetIn(QWidget *area) const
{
    if (!area->isVisible() || !area->isEnabled()) {
        return nullptr;
    }
    if (area == ui->listFrame) {
        return panelTarget();
    }
    if (area == ui->recordListFrame) {
        return ui->userListWidget;
    }
    if (area == ui->recordFrame) {
        return ui->datiScroll;
    }
    QWidget *const last = area->focusWidget();
    return last != nullptr && isTabStop(*last) ? last : firstTabStop(*area);
}

void Tavenor::changeArea(int step)
{
    const QList<QWidget *> all = areas();
    const auto holds = [this](const QWidget *area) { return area->isAncestorOf(focusWidget()); };
    const int start = int(std::find_if(all.begin(), all.end(), holds) - all.begin());
    const bool isOutside = start == all.size();
    for (int i = 1; i <= all.size(); ++i) {
        const int from = isOutside && step > 0 ? -1 : start;
        const int next = (from + i * step + 2 * all.size()) % all.size();
        if (QWidget *const target = targetIn(all.at(next))) {
            target->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void Tavenor::focusRecords()
{
    QWidget *const records = ui->recordListFrame->isHidden()
                                 ? static_cast<QWidget *>(ui->datiScroll)
                                 : ui->userListWidget;
    records->setFocus(Qt::OtherFocusReason);
}

void Tavenor::focusPage()
{
    if (ui->stPages->currentIndex() == RecordsPage) {
        focusRecords();
    } else if (QWidget *const target = targetIn(ui->stPages->currentWidget())) {
        target->setFocus(Qt::OtherFocusReason);
    }
}

QWidget *Tavenor::panelTarget() const
{
    const bool showsFilters = ui->sWControls->currentWidget() == ui->filtersPage;
    QWidget *const entry = entryIn(showsFilters ? filterButtons : listButtons);
    return entry != nullptr ? entry : firstTabStop(*ui->listFrame);
}

void Tavenor::focusPanel()
{
    if (QWidget *const target = panelTarget()) {
        target->setFocus(Qt::OtherFocusReason);
    }
}

void Tavenor::rememberFocus()
{
    if (ui->stPages->currentIndex() != RecordsPage) {
        return;
    }
    leftFocus = focusWidget();
    if (ui->datiContents->isAncestorOf(leftFocus)) {
        // The fields are made anew.
        leftFocus = ui->datiScroll;
    }
}

void Tavenor::restoreFocus()
{
    const bool isThere = leftFocus != nullptr && isAncestorOf(leftFocus) &&
                         leftFocus->isVisibleTo(this) && leftFocus->isEnabled();
    if (isThere) {
        leftFocus->setFocus(Qt::OtherFocusReason);
    }
}
