// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What stands in the middle of a place that has nothing to show.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

class QRect;
class QWidget;

/// A picture of what is missing, a word on it, and in smaller type what to do next. Each part
/// may be left out.
struct Placeholder {
    QIcon picture;
    QString text;
    QStringList hints;

    /// All words, a line for each, for those who hear the window.
    QString description() const;

    /// Paints it on `canvas`, in the middle of `room`, in the palette's colour for such words.
    void paint(QWidget *canvas, const QRect &room) const;
};
