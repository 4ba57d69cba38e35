// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// An edge that shows where the focus is.
#include "widgets/focusedge.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace
{

/// Lies over the area, inside of it, and is seen while the area has the focus.
class FocusEdge : public QWidget
{
public:
    explicit FocusEdge(QWidget *area)
        : QWidget(area)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
        area->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
        }
        if (event->type() == QEvent::FocusIn) {
            raise();
            show();
        } else if (event->type() == QEvent::FocusOut) {
            hide();
        }
        return false;
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

} // namespace

void showFocusEdge(QWidget *area)
{
    new FocusEdge(area); // the area's child
}
