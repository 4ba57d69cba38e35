// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tool tips that show their text as it stands, whatever markup it looks like.
#pragma once

#include <QString>

class QWidget;

/// Qt renders a tool tip that looks like markup, pictures included. Values of records come
/// from other people, so their tips go through here.
namespace PlainToolTip
{

/// Gives `widget` the tool tip `text`: toolTip() returns exactly this text, and the tip that
/// people see shows it letter for letter. May be called again; an empty text takes the tip
/// away.
void set(QWidget *widget, const QString &text);

/// What is handed to QToolTip for `text`: rich text that reads as `text`, wrapped, and cut
/// after the first few thousand characters, because a tip higher than the screen helps nobody.
QString markupFor(const QString &text);

} // namespace PlainToolTip
