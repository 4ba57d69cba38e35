// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A value to read: one line of text, or several.
#pragma once

#include <QFont>
#include <QLineEdit>

class QPlainTextEdit;

/// A read-only line edit without frame that looks like text and can be selected and copied.
/// A text of several lines is shown in full by a view that covers the line; text() is the
/// whole text either way. Very long texts scroll inside, so that the fields below them stay
/// within reach.
class ValueLine : public QLineEdit
{
    Q_OBJECT

public:
    explicit ValueLine(QWidget *parent = nullptr);

    /// Shows the text on one line, its beginning first.
    void showOneLine(const QString &text);

    /// Shows the text wrapped on as many lines as it needs.
    void showSeveralLines(const QString &text);

    /// The name that screen readers give to the value, however it is shown.
    void setValueName(const QString &name);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    /// The number of lines that `text` takes in `font` at `width`, at most `most`.
    static int wrappedLines(const QString &text, const QFont &font, int width, int most);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The lines that were counted last: a page that is arranged asks for them several times.
    struct Measured {
        int width = -1;
        QFont font;
        int lines = 0;
    };

    void createView();
    int firstLineTop() const;
    int linesAt(int width) const;

    mutable Measured measured;
    QPlainTextEdit *view = nullptr; // made when the first text of several lines comes
};
