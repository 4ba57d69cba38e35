// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The geometric drawings of the sample covers.
#include "samples/motifs.h"

#include <QMap>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRandomGenerator>
#include <QtMath>

namespace
{

using Motifs::Palette;
using Drawing = void (*)(QPainter &, const QRectF &, const Palette &);

QColor mixed(const QColor &a, const QColor &b, qreal share)
{
    const auto channel = [share](qreal from, qreal to) { return from + (to - from) * share; };
    return QColor::fromRgbF(channel(a.redF(), b.redF()), channel(a.greenF(), b.greenF()),
                            channel(a.blueF(), b.blueF()));
}

QPen roundPen(const QColor &color, qreal width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void fill(QPainter &painter, const QColor &color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
}

void outline(QPainter &painter, const QPen &pen)
{
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
}

void disc(QPainter &painter, const QPointF &centre, qreal radius)
{
    painter.drawEllipse(centre, radius, radius);
}

/// A point at `angle` degrees and `distance` from `centre`, clockwise from the right.
QPointF around(const QPointF &centre, qreal angle, qreal distance)
{
    const qreal radians = qDegreesToRadians(angle);
    return centre + QPointF(qCos(radians), qSin(radians)) * distance;
}

/// The area below a wavy line, for hills and waves.
QPainterPath wave(const QRectF &area, qreal level, qreal height, qreal length, qreal shift)
{
    QPainterPath path(QPointF(area.left(), area.bottom()));
    for (qreal x = area.left(); x <= area.right(); x += 2) {
        path.lineTo(x, level + height * qSin(2 * M_PI * (x - area.left() + shift) / length));
    }
    path.lineTo(area.right(), area.bottom());
    path.closeSubpath();
    return path;
}

void labyrinth(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF centre = area.center() + QPointF(0, -6);
    const int rings = 7;
    const qreal step = area.width() * 0.42 / rings;
    outline(painter, QPen(palette.tint, step * 0.42, Qt::SolidLine, Qt::FlatCap));
    for (int ring = 1; ring <= rings; ++ring) {
        const qreal radius = step * ring;
        const QRectF square(centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
        // Doors change sides from ring to ring, so that there is one long way in.
        const int door = ring * 137 % 360;
        const int gap = qRound(qRadiansToDegrees(step * 0.9 / radius));
        painter.drawArc(square, (door + gap) * 16, (360 - 2 * gap) * 16);
        if (ring < rings) {
            const qreal angle = -(door + gap + 24.0);
            painter.drawLine(around(centre, angle, radius), around(centre, angle, radius + step));
        }
    }
    fill(painter, palette.accent);
    disc(painter, centre, step * 0.38);
}

void branch(QPainter &painter, const QPointF &from, qreal angle, qreal length, int depth,
            const Palette &palette)
{
    const QPointF to = around(from, angle, length);
    outline(painter, roundPen(palette.tint, depth * 2.1));
    painter.drawLine(from, to);
    if (depth == 1) {
        fill(painter, palette.tint);
        disc(painter, to, 8);
        return;
    }
    branch(painter, to, angle - 27, length * 0.78, depth - 1, palette);
    branch(painter, to, angle + 22, length * 0.8, depth - 1, palette);
}

void tree(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF root(area.center().x(), area.bottom());
    branch(painter, root, -90, area.height() * 0.25, 7, palette);
    fill(painter, palette.accent);
    disc(painter, root + QPointF(62, -area.height() * 0.62), 15);
}

void sun(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF centre(area.center().x(), area.bottom());
    fill(painter, palette.accent);
    for (int ray = 0; ray < 18; ++ray) {
        const qreal angle = 180 + ray * 10 + 5;
        const qreal reach = ray % 2 == 0 ? 1.0 : 0.8;
        painter.drawPolygon(QPolygonF({around(centre, angle - 3.4, area.width() * 0.38),
                                       around(centre, angle, area.height() * 0.98 * reach),
                                       around(centre, angle + 3.4, area.width() * 0.38)}));
    }
    fill(painter, palette.tint);
    disc(painter, centre, area.width() * 0.36);
    outline(painter, QPen(palette.accent, 2.5));
    for (int ring = 1; ring <= 3; ++ring) {
        disc(painter, centre, area.width() * (0.36 - 0.04 * ring));
    }
}

void dunes(QPainter &painter, const QRectF &area, const Palette &palette)
{
    fill(painter, mixed(palette.background, palette.accent, 0.85));
    const qreal base = area.top() + area.height() * 0.33;
    painter.drawRect(QRectF(area.left() + 236, base - 46, 84, 60));
    for (int merlon = 0; merlon < 5; ++merlon) {
        painter.drawRect(QRectF(area.left() + 236 + merlon * 18.5, base - 57, 10, 12));
    }
    painter.drawRect(QRectF(area.left() + 284, base - 88, 24, 60));
    const int hills = 5;
    for (int hill = 0; hill < hills; ++hill) {
        const qreal share = static_cast<qreal>(hill) / (hills - 1);
        fill(painter, mixed(mixed(palette.background, palette.tint, 0.45), palette.accent, share));
        painter.drawPath(wave(area, base + hill * area.height() * 0.135, 20 + 6 * share,
                              430 + 90 * share, hill * 170));
    }
}

void butterfly(QPainter &painter, const QPointF &at, qreal size, qreal turn, const QColor &color)
{
    painter.save();
    painter.translate(at);
    painter.rotate(turn);
    painter.scale(size, size);
    fill(painter, color);
    for (const qreal side : {-1.0, 1.0}) {
        QPainterPath wings(QPointF(0, 0));
        wings.cubicTo(side * 4, -16, side * 22, -22, side * 20, -8);
        wings.cubicTo(side * 19, 0, side * 8, 2, 0, 1);
        wings.cubicTo(side * 8, 2, side * 17, 6, side * 13, 13);
        wings.cubicTo(side * 9, 18, side * 2, 12, 0, 3);
        painter.drawPath(wings);
    }
    painter.restore();
}

void butterflies(QPainter &painter, const QRectF &area, const Palette &palette)
{
    QRandomGenerator random(1967);
    const int columns = 5;
    const int rows = 6;
    for (int place = 0; place < columns * rows; ++place) {
        const QPointF jitter(random.bounded(26) - 13, random.bounded(26) - 13);
        const qreal size = 0.75 + random.bounded(0.75);
        const qreal turn = random.bounded(80) - 40;
        const int row = place / columns;
        const qreal shift = row % 2 == 0 ? 0.3 : 0.7;
        const QPointF at(area.left() + (place % columns + shift) * area.width() / columns,
                         area.top() + (row + 0.6) * area.height() / rows);
        butterfly(painter, at + jitter, size, turn, place % 4 == 1 ? palette.accent : palette.tint);
    }
}

void rails(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF vanishing(area.center().x(), area.top() + area.height() * 0.22);
    fill(painter, palette.accent);
    disc(painter, vanishing - QPointF(0, 10), 46);
    fill(painter, mixed(palette.background, palette.tint, 0.25));
    painter.drawRect(QRectF(area.left(), vanishing.y(), area.width(), area.height()));
    // Sleepers crowd towards the horizon.
    fill(painter, mixed(palette.background, palette.tint, 0.7));
    for (qreal near = 0.03; near < 1.1; near *= 1.28) {
        const qreal y = vanishing.y() + (area.bottom() - vanishing.y()) * near;
        const qreal half = 12 + 190 * near;
        painter.drawRect(QRectF(vanishing.x() - half, y, 2 * half, 2 + 16 * near));
    }
    fill(painter, mixed(palette.tint, Qt::black, 0.35));
    for (const qreal side : {-1.0, 1.0}) {
        painter.drawPolygon(
            QPolygonF({vanishing + QPointF(side * 7, 0), vanishing + QPointF(side * 9, 0),
                       QPointF(vanishing.x() + side * 152, area.bottom()),
                       QPointF(vanishing.x() + side * 126, area.bottom())}));
    }
}

void bubbles(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF porthole = area.center() + QPointF(0, 8);
    fill(painter, mixed(palette.background, Qt::black, 0.35));
    disc(painter, porthole, 152);
    outline(painter, QPen(palette.accent, 12));
    disc(painter, porthole, 152);
    fill(painter, mixed(palette.background, Qt::black, 0.35));
    for (int rivet = 0; rivet < 16; ++rivet) {
        disc(painter, around(porthole, rivet * 22.5, 152), 3);
    }
    QPainterPath glass;
    glass.addEllipse(porthole, 145, 145);
    painter.setClipPath(glass, Qt::IntersectClip);
    fill(painter, mixed(palette.background, palette.tint, 0.25));
    painter.drawPath(wave(area, porthole.y() + 78, 14, 220, 40));
    fill(painter, mixed(palette.background, palette.tint, 0.5));
    painter.drawPath(wave(area, porthole.y() + 112, 10, 170, 120));
    QRandomGenerator random(1870);
    for (int bubble = 0; bubble < 26; ++bubble) {
        const QPointF at(porthole.x() - 130 + random.bounded(260),
                         porthole.y() - 140 + random.bounded(220));
        outline(painter, QPen(palette.tint, 2.4));
        disc(painter, at, 3 + random.bounded(12));
    }
}

void star(QPainter &painter, const QPointF &centre, qreal size)
{
    QPolygonF points;
    for (int tip = 0; tip < 8; ++tip) {
        points << around(centre, tip * 45 - 90, tip % 2 == 0 ? size : size * 0.28);
    }
    painter.drawPolygon(points);
}

void stars(QPainter &painter, const QRectF &area, const Palette &palette)
{
    QRandomGenerator random(1943);
    const int columns = 7;
    fill(painter, palette.tint);
    for (int place = 0; place < 4 * columns; ++place) {
        const int row = place / columns;
        const qreal x = place % columns + 0.15 + random.bounded(0.7);
        const qreal y = row + random.bounded(0.8);
        const QPointF at =
            area.topLeft() + QPointF(x * area.width() / columns, y * area.height() * 0.15);
        star(painter, at, place % 5 == 0 ? 10 : 3 + random.bounded(4));
    }
    const QPointF planet(area.center().x(), area.bottom() + 10);
    fill(painter, mixed(palette.background, palette.tint, 0.55));
    disc(painter, planet, 130);
    fill(painter, mixed(palette.background, palette.tint, 0.42));
    disc(painter, planet + QPointF(-50, -60), 18);
    disc(painter, planet + QPointF(46, -34), 12);
    // A single rose stands on top of it.
    outline(painter, roundPen(palette.tint, 3.5));
    painter.drawLine(planet + QPointF(10, -128), planet + QPointF(10, -172));
    painter.drawLine(planet + QPointF(10, -144), planet + QPointF(24, -154));
    fill(painter, palette.accent);
    disc(painter, planet + QPointF(10, -180), 13);
    outline(painter, roundPen(mixed(palette.accent, Qt::white, 0.4), 2));
    painter.drawArc(QRectF(planet + QPointF(4, -186), QSizeF(12, 12)), 30 * 16, 250 * 16);
}

void eye(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF centre = area.center();
    outline(painter, QPen(palette.tint, 3));
    for (int ray = 0; ray < 48; ++ray) {
        painter.drawLine(around(centre, ray * 7.5, 150), around(centre, ray * 7.5, 330));
    }
    fill(painter, palette.background);
    QPainterPath lens(QPointF(area.left() + 24, centre.y()));
    lens.quadTo(centre.x(), centre.y() - 210, area.right() - 24, centre.y());
    lens.quadTo(centre.x(), centre.y() + 210, area.left() + 24, centre.y());
    painter.setPen(QPen(palette.tint, 10, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawPath(lens);
    fill(painter, palette.accent);
    disc(painter, centre, 82);
    fill(painter, palette.tint);
    disc(painter, centre, 44);
    fill(painter, palette.background);
    disc(painter, centre + QPointF(16, -18), 12);
}

void rings(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF centre = area.center() + QPointF(0, 4);
    outline(painter, QPen(mixed(palette.background, palette.tint, 0.35), 2));
    for (int circle = 0; circle < 9; ++circle) {
        disc(painter, around(centre, circle * 40 - 90, 102), 56);
    }
    outline(painter, QPen(palette.tint, 18));
    disc(painter, centre, 102);
    outline(painter, QPen(palette.accent, 3));
    disc(painter, centre, 107);
    outline(painter, QPen(mixed(palette.tint, palette.background, 0.5), 2));
    disc(painter, centre, 95);
    fill(painter, palette.accent);
    star(painter, centre, 40);
}

void fans(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const qreal radius = area.width() / 6;
    const int rows = qCeil(area.height() / radius) + 2;
    for (int row = 0; row < rows; ++row) {
        for (int column = -1; column < 4; ++column) {
            const QPointF centre(area.left() + (column * 2 + 1 + row % 2) * radius,
                                 area.top() + (row + 1) * radius);
            fill(painter, (row + column) % 3 == 0 ? mixed(palette.background, palette.accent, 0.75)
                                                  : palette.background);
            disc(painter, centre, radius);
            outline(painter, QPen(palette.tint, 2.6));
            for (const qreal share : {1.0, 0.78, 0.56, 0.34}) {
                disc(painter, centre, radius * share - 1.3);
            }
        }
    }
}

void waves(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const QPointF root(area.center().x() + 26, area.top() + area.height() * 0.62);
    fill(painter, palette.tint);
    QPainterPath tail(root + QPointF(-34, 30));
    tail.cubicTo(root + QPointF(-20, -40), root + QPointF(-14, -80), root + QPointF(-8, -104));
    tail.cubicTo(root + QPointF(-50, -104), root + QPointF(-98, -122), root + QPointF(-118, -176));
    tail.cubicTo(root + QPointF(-72, -164), root + QPointF(-22, -158), root + QPointF(0, -126));
    tail.cubicTo(root + QPointF(22, -158), root + QPointF(72, -164), root + QPointF(118, -176));
    tail.cubicTo(root + QPointF(98, -122), root + QPointF(50, -104), root + QPointF(8, -104));
    tail.cubicTo(root + QPointF(14, -80), root + QPointF(20, -40), root + QPointF(34, 30));
    tail.closeSubpath();
    painter.drawPath(tail);
    for (int row = 0; row < 5; ++row) {
        const qreal level = root.y() - 4 + row * area.height() * 0.085;
        fill(painter, row % 2 == 0 ? palette.accent : palette.tint);
        painter.drawPath(wave(area, level, 9, 100, row * 37));
        fill(painter, palette.background);
        painter.drawPath(wave(area, level + 7, 9, 100, row * 37));
    }
    fill(painter, palette.tint);
    painter.drawPath(wave(area, area.bottom() - 16, 8, 100, 10));
}

void flame(QPainter &painter, const QPointF &foot, qreal width, qreal height)
{
    QPainterPath path(foot + QPointF(0, -height));
    path.cubicTo(foot + QPointF(width * 0.1, -height * 0.7),
                 foot + QPointF(width * 0.62, -height * 0.45),
                 foot + QPointF(width * 0.42, -height * 0.1));
    path.quadTo(foot + QPointF(width * 0.3, height * 0.06), foot);
    path.quadTo(foot + QPointF(-width * 0.36, height * 0.06),
                foot + QPointF(-width * 0.45, -height * 0.16));
    path.cubicTo(foot + QPointF(-width * 0.52, -height * 0.5),
                 foot + QPointF(-width * 0.02, -height * 0.6), foot + QPointF(0, -height));
    painter.drawPath(path);
}

void flames(QPainter &painter, const QRectF &area, const Palette &palette)
{
    QRandomGenerator random(451);
    const int layers = 3;
    for (int layer = 0; layer < layers; ++layer) {
        const qreal share = static_cast<qreal>(layer) / (layers - 1);
        fill(painter, mixed(palette.tint, palette.accent, share));
        const int count = 5 + layer;
        for (int tongue = 0; tongue <= count; ++tongue) {
            const qreal height =
                area.height() * (0.9 - 0.27 * layer) * (0.72 + random.bounded(0.3));
            const QPointF foot(area.left() + tongue * area.width() / count, area.bottom() + 12);
            flame(painter, foot, area.width() / count * 1.9, height);
        }
    }
    // Pages fly up from the fire.
    fill(painter, mixed(palette.accent, Qt::white, 0.75));
    for (int page = 0; page < 7; ++page) {
        painter.save();
        painter.translate(area.left() + 34 + page * 55, area.top() + 8 + random.bounded(90));
        painter.rotate(random.bounded(90) - 45);
        painter.drawRect(QRectF(-7, -9, 14, 18));
        painter.restore();
    }
}

void fragments(QPainter &painter, const QRectF &area, const Palette &palette)
{
    QRandomGenerator random(1915);
    const int columns = 6;
    const int rows = 6;
    const auto corner = [&area](int column, int row) {
        // Corners are moved by a fixed rule, so that neighbours share them.
        const qreal x = column % 6 == 0 ? 0 : (column * 53 + row * 31) % 37 - 18;
        const qreal y = (column * 29 + row * 47) % 33 - 16;
        return area.topLeft() + QPointF(column * area.width() / columns + x,
                                        row * area.height() / rows + (row < rows ? y : 20));
    };
    for (int place = 0; place < columns * rows; ++place) {
        const int column = place % columns;
        const int row = place / columns;
        const QPointF right = corner(column + 1, row);
        const QPointF below = corner(column, row + 1);
        for (const QPointF &third : {corner(column, row), corner(column + 1, row + 1)}) {
            // The insect's colour gathers towards the foot.
            const bool whole = random.bounded(rows) <= row;
            const QColor base = random.bounded(5) == 0 ? palette.accent : palette.tint;
            painter.setPen(QPen(palette.background, 1.5));
            painter.setBrush(mixed(palette.background, base,
                                   whole ? 0.55 + random.bounded(0.45) : random.bounded(0.25)));
            painter.drawPolygon(QPolygonF({right, below, third}));
        }
    }
}

void chess(QPainter &painter, const QRectF &area, const Palette &palette)
{
    const int squares = 8;
    const qreal side = area.width() / squares;
    fill(painter, palette.tint);
    for (int place = 0; place < squares * squares; ++place) {
        const int column = place % squares;
        const int row = place / squares;
        if ((column + row) % 2 == 1) {
            painter.drawRect(
                QRectF(area.left() + column * side, area.bottom() - (row + 1) * side, side, side));
        }
    }
    const QPointF foot(area.left() + side * 4, area.bottom() - side * 1.1);
    painter.setPen(QPen(palette.background, 6));
    painter.setBrush(palette.accent);
    QPainterPath pawn;
    pawn.addEllipse(foot + QPointF(0, -side * 4.1), side * 0.85, side * 0.85);
    QPainterPath body(foot + QPointF(-side * 0.5, -side * 3.2));
    body.quadTo(foot + QPointF(-side * 0.35, -side * 1.4),
                foot + QPointF(-side * 1.25, -side * 0.6));
    body.lineTo(foot + QPointF(-side * 1.25, 0));
    body.lineTo(foot + QPointF(side * 1.25, 0));
    body.lineTo(foot + QPointF(side * 1.25, -side * 0.6));
    body.quadTo(foot + QPointF(side * 0.35, -side * 1.4), foot + QPointF(side * 0.5, -side * 3.2));
    body.closeSubpath();
    QPainterPath collar;
    collar.addRoundedRect(
        QRectF(foot + QPointF(-side * 0.9, -side * 3.35), QSizeF(side * 1.8, side * 0.34)),
        side * 0.17, side * 0.17);
    painter.drawPath(pawn.united(body).united(collar));
}

void trunks(QPainter &painter, const QRectF &area, const Palette &palette)
{
    fill(painter, palette.accent);
    disc(painter, area.topLeft() + QPointF(286, 116), 62);
    const qreal widths[] = {26, 12, 34, 9, 20, 14, 30, 10, 24};
    qreal x = area.left() + 8;
    for (const qreal width : widths) {
        const qreal lean = width * 0.5;
        fill(painter, width < 15 ? mixed(palette.background, palette.tint, 0.6) : palette.tint);
        painter.drawPolygon(QPolygonF({QPointF(x, area.bottom()), QPointF(x + width, area.bottom()),
                                       QPointF(x + width - lean * 0.3, area.top()),
                                       QPointF(x + lean * 0.3, area.top())}));
        x += width + 23;
    }
    fill(painter, mixed(palette.tint, Qt::black, 0.3));
    painter.drawPath(wave(area, area.bottom() - 34, 10, 320, 60));
}

const QMap<QString, Drawing> &drawings()
{
    static const QMap<QString, Drawing> all{
        {QStringLiteral("albero"), tree},
        {QStringLiteral("anelli"), rings},
        {QStringLiteral("binari"), rails},
        {QStringLiteral("bolle"), bubbles},
        {QStringLiteral("dune"), dunes},
        {QStringLiteral("farfalle"), butterflies},
        {QStringLiteral("fiamme"), flames},
        {QStringLiteral("frammenti"), fragments},
        {QStringLiteral("labirinto"), labyrinth},
        {QStringLiteral("occhio"), eye},
        {QStringLiteral("onde"), waves},
        {QStringLiteral("scacchi"), chess},
        {QStringLiteral("sole"), sun},
        {QStringLiteral("stelle"), stars},
        {QStringLiteral("tronchi"), trunks},
        {QStringLiteral("ventagli"), fans},
    };
    return all;
}

} // namespace

namespace Motifs
{

QStringList names()
{
    return drawings().keys();
}

bool draw(const QString &name, QPainter &painter, const QRectF &area, const Palette &palette)
{
    const Drawing drawing = drawings().value(name);
    if (drawing == nullptr) {
        return false;
    }
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing(painter, area, palette);
    painter.restore();
    return true;
}

} // namespace Motifs
