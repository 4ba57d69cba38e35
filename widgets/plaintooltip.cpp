// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tool tips that show their text as it stands, whatever markup it looks like.
#include "widgets/plaintooltip.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPointer>
#include <QToolTip>
#include <QWidget>

namespace
{

constexpr int MostCharacters = 2000;

/// Answers the tool tip events of every widget that was given a plain tip.
class TipFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ToolTip) {
            return false;
        }
        auto *widget = qobject_cast<QWidget *>(watched);
        if (widget == nullptr || widget->toolTip().isEmpty()) {
            return false;
        }
        const QPoint position = static_cast<QHelpEvent *>(event)->globalPos();
        QToolTip::showText(position, PlainToolTip::markupFor(widget->toolTip()), widget);
        return true;
    }
};

/// One filter serves all widgets: an object for each of them would slow down the pages.
TipFilter *sharedFilter()
{
    static QPointer<TipFilter> filter;
    if (filter.isNull()) {
        filter = new TipFilter(qApp);
    }
    return filter;
}

} // namespace

void PlainToolTip::set(QWidget *widget, const QString &text)
{
    widget->installEventFilter(sharedFilter());
    widget->setToolTip(text);
}

QString PlainToolTip::markupFor(const QString &text)
{
    QString shown = text.left(MostCharacters);
    if (shown.size() < text.size()) {
        shown += QChar(0x2026);
    }
    return QLatin1String("<p style=\"white-space:pre-wrap\">") + shown.toHtmlEscaped() +
           QLatin1String("</p>");
}
