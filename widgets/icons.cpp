// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's icons, each read once, in the colours that their ground asks for.
#include "widgets/icons.h"

#include <QAction>
#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

namespace
{

constexpr int DarkestLightGround = 128;
constexpr int BrighterOnDark = 100; // of 255, on the way to white

QHash<QString, QIcon> &store()
{
    static QHash<QString, QIcon> icons;
    return icons;
}

/// Pictures must not outlive the application.
void clearStore()
{
    store().clear();
}

/// Styles ask for an "active" icon both for the marked entry of a menu and for a button under
/// the pointer, whose ground is the usual one. While a menu is open no button is hovered.
bool isMarkedEntry(QIcon::Mode mode)
{
    // This style marks entries in a pale colour.
    const QString pale = QStringLiteral("windowsvista");
    return mode == QIcon::Selected ||
           (mode == QIcon::Active && qobject_cast<QMenu *>(QApplication::activePopupWidget()) &&
            QApplication::style()->objectName().compare(pale, Qt::CaseInsensitive) != 0);
}

/// `picture` with `colour` laid over what is drawn in it.
QPixmap washed(const QPixmap &picture, const QColor &colour)
{
    QPixmap result = picture;
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(result.rect(), colour);
    return result;
}

/// Colours a drawing at the moment when it is painted, so that a change of the desktop's
/// palette is followed.
class GroundEngine : public QIconEngine
{
public:
    explicit GroundEngine(const QIcon &drawing)
        : drawing(drawing)
    {
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        const bool marked = isMarkedEntry(mode);
        // The size is that on the screen, and the drawing would be enlarged once more.
        const double scale = QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps)
                                 ? qApp->devicePixelRatio()
                                 : 1.0;
        const QPixmap drawn = drawing.pixmap(size / scale, marked ? QIcon::Normal : mode, state);
        if (drawn.isNull() || mode == QIcon::Disabled) {
            return drawn;
        }
        const QPalette palette = QApplication::palette();
        if (marked) {
            return washed(drawn, palette.color(QPalette::HighlightedText));
        }
        const bool isLight = palette.color(QPalette::Window).lightness() >= DarkestLightGround;
        return isLight ? drawn : washed(drawn, QColor(255, 255, 255, BrighterOnDark));
    }

    void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State state) override
    {
        const double scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(place, pixmap(place.size() * scale, mode, state));
    }

    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return drawing.actualSize(size, mode, state);
    }

    QIconEngine *clone() const override { return new GroundEngine(*this); }

private:
    QIcon drawing;
};

template<typename Holder>
void fitIconsOf(QWidget &root)
{
    for (Holder *const holder : root.findChildren<Holder *>()) {
        if (!holder->icon().isNull()) {
            holder->setIcon(Icons::onEveryGround(holder->icon()));
        }
    }
}

} // namespace

QIcon Icons::shared(const QString &name)
{
    QHash<QString, QIcon> &icons = store();
    auto found = icons.find(name);
    if (found == icons.end()) {
        if (icons.isEmpty()) {
            qAddPostRoutine(clearStore);
        }
        found = icons.insert(name, onEveryGround(QIcon(name)));
    }
    return *found;
}

QIcon Icons::onEveryGround(const QIcon &drawing)
{
    return drawing.isNull() ? drawing : QIcon(new GroundEngine(drawing));
}

void Icons::fitToGround(QWidget &root)
{
    fitIconsOf<QAction>(root);
    fitIconsOf<QPushButton>(root);
}
