// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Fields stacked on a page: labels in one column, keyboard order.
#pragma once

#include <QLayout>
#include <QList>
#include <QWidget>

/// The forms that stand on the page; others are kept for their values only.
template<typename Form>
QList<Form *> placedForms(const QList<Form *> &forms)
{
    QList<Form *> placed;
    for (Form *const form : forms) {
        if (form->parentWidget() != nullptr) {
            placed.append(form);
        }
    }
    return placed;
}

/// Gives the labels of all forms the width that the widest one on the page wants.
template<typename Form>
void alignLabels(const QList<Form *> &forms)
{
    int width = 0;
    for (const Form *const form : placedForms(forms)) {
        width = qMax(width, form->labelWidthHint());
    }
    for (Form *const form : forms) {
        form->setLabelWidth(width);
    }
}

/// Scope object: a page arranges its forms once, at the end, and not again for each form that
/// is added to it.
class LayoutPause
{
public:
    explicit LayoutPause(const QWidget *page)
        : layout(page->layout())
    {
        layout->setEnabled(false);
    }
    ~LayoutPause()
    {
        layout->setEnabled(true);
        layout->activate();
    }
    LayoutPause(const LayoutPause &) = delete;
    LayoutPause &operator=(const LayoutPause &) = delete;

private:
    QLayout *const layout;
};

/// Puts the last of `buttons`, entries of a list, behind the others in the order of the Tab key;
/// the first entry comes behind `head`. Without this, whatever is made later comes last.
template<typename Button>
void orderLast(const QList<Button *> &buttons, QWidget *head)
{
    QWidget *const before = buttons.size() > 1 ? buttons.at(buttons.size() - 2) : head;
    QWidget::setTabOrder(before, buttons.last());
}

/// The last control inside `form` that the Tab key reaches; the form itself when there is none.
inline QWidget *lastTabStop(QWidget *form)
{
    QWidget *last = form;
    for (QWidget *next = form->nextInFocusChain(); form->isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0) {
            last = next;
        }
    }
    return last;
}
