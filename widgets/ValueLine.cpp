// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A value to read: one line of text, or several.
#include "widgets/ValueLine.h"

#include "widgets/longtext.h"

#include <QFontMetrics>
#include <QPlainTextEdit>
#include <QTextLayout>

#include <limits>

namespace
{

/// About one screen; what is longer scrolls inside.
constexpr int MostLines = 60;

/// More than any line can show: the rest of a text cannot matter for its first lines.
constexpr int MostCharactersPerLine = 500;

/// The distance that a line edit keeps between its edge and its text.
constexpr int TextMargin = 2;

/// The number of lines of one paragraph, at most `most`.
int paragraphLines(const QString &paragraph, const QFont &font, QTextOption::WrapMode mode,
                   int width, int most)
{
    QTextOption option;
    option.setWrapMode(mode);
    QTextLayout layout(paragraph, font);
    layout.setTextOption(option);
    layout.beginLayout();
    int lines = 0;
    while (lines < most) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        ++lines;
    }
    layout.endLayout();
    return qMax(1, lines);
}

} // namespace

ValueLine::ValueLine(QWidget *parent)
    : QLineEdit(parent)
{
    setReadOnly(true);
    setFrame(false);
    setMaxLength(std::numeric_limits<int>::max());
    QPalette flat;
    flat.setColor(QPalette::Base, Qt::transparent);
    setPalette(flat);
}

void ValueLine::showOneLine(const QString &text)
{
    if (view != nullptr) {
        setFocusProxy(nullptr);
        delete view;
        view = nullptr;
        updateGeometry();
    }
    setText(text);
    setCursorPosition(0);
}

void ValueLine::showSeveralLines(const QString &text)
{
    if (text != this->text()) {
        setText(text);
    }
    setCursorPosition(0);
    if (view == nullptr) {
        createView();
    }
    measured = {};
    // The text shown before would be wrapped in the way of this one.
    view->clear();
    view->setWordWrapMode(LongText::wrapMode(text));
    view->setPlainText(text);
    updateGeometry();
}

void ValueLine::setValueName(const QString &name)
{
    setAccessibleName(name);
    if (view != nullptr) {
        view->setAccessibleName(name);
    }
}

void ValueLine::createView()
{
    view = new QPlainTextEdit(this);
    view->setObjectName(QStringLiteral("teData"));
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setTabChangesFocus(true);
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->document()->setDocumentMargin(TextMargin);
    view->setAccessibleName(accessibleName());
    view->show();
    setFocusProxy(view);
}

QSize ValueLine::sizeHint() const
{
    const QSize oneLine = QLineEdit::sizeHint();
    return view == nullptr ? oneLine : QSize(oneLine.width(), heightForWidth(qMax(width(), 1)));
}

QSize ValueLine::minimumSizeHint() const
{
    return QSize(QLineEdit::minimumSizeHint().width(), QLineEdit::sizeHint().height());
}

bool ValueLine::hasHeightForWidth() const
{
    return view != nullptr;
}

int ValueLine::heightForWidth(int width) const
{
    if (view == nullptr) {
        return QLineEdit::sizeHint().height();
    }
    const int lines = linesAt(width);
    const int lineHeight = qMax(fontMetrics().height(), fontMetrics().lineSpacing());
    return 2 * firstLineTop() + lines * lineHeight;
}

int ValueLine::linesAt(int width) const
{
    if (width != measured.width || font() != measured.font) {
        const int lines = wrappedLines(text(), font(), width - 2 * TextMargin, MostLines);
        measured = {width, font(), lines};
    }
    return measured.lines;
}

int ValueLine::wrappedLines(const QString &text, const QFont &font, int width, int most)
{
    QString start = text.left(most * MostCharactersPerLine);
    start.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    start.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const QTextOption::WrapMode mode = LongText::wrapMode(start);
    int lines = 0;
    int from = 0;
    while (from <= start.size() && lines < most) {
        const int found = start.indexOf(QLatin1Char('\n'), from);
        const int end = found < 0 ? start.size() : found;
        lines += paragraphLines(start.mid(from, end - from), font, mode, width, most - lines);
        from = end + 1;
    }
    return lines;
}

int ValueLine::firstLineTop() const
{
    const int oneLine = qMax(minimumHeight(), QLineEdit::sizeHint().height());
    return (oneLine - fontMetrics().height()) / 2;
}

void ValueLine::paintEvent(QPaintEvent *event)
{
    if (view == nullptr) {
        QLineEdit::paintEvent(event);
    }
}

void ValueLine::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    if (view == nullptr) {
        return;
    }
    const int top = firstLineTop() - TextMargin;
    view->setGeometry(0, top, width(), height() - top);
    view->setVerticalScrollBarPolicy(linesAt(width()) < MostLines ? Qt::ScrollBarAlwaysOff
                                                                  : Qt::ScrollBarAsNeeded);
}
