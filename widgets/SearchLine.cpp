// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A line for a text that is searched for.
#include "widgets/SearchLine.h"

#include "widgets/icons.h"
#include "widgets/textdrops.h"

#include <QAction>
#include <QApplication>
#include <QEvent>

SearchLine::SearchLine(QWidget *parent)
    : QLineEdit(parent)
    , magnifier(addAction(Icons::shared(QStringLiteral(":/searchIcon")), LeadingPosition))
{
    setClearButtonEnabled(true);
    letFilesPass(this);
}

void SearchLine::setNoMatch(const QString &description)
{
    if (description == accessibleDescription()) {
        return;
    }
    noMatch = !description.isEmpty();
    setAccessibleDescription(description);
    magnifier->setIcon(
        Icons::shared(noMatch ? QStringLiteral(":/noMatchIcon") : QStringLiteral(":/searchIcon")));
    showState();
}

QIcon SearchLine::sign() const
{
    return magnifier->icon();
}

void SearchLine::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) {
        showState();
    }
}

void SearchLine::showState()
{
    QPalette own;
    if (noMatch) {
        own.setColor(QPalette::Text, QApplication::palette(this).color(QPalette::PlaceholderText));
    }
    setPalette(own);
}
