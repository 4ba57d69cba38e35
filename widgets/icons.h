// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's icons, each read once, in the colours that their ground asks for.
#pragma once

#include <QIcon>
#include <QString>

class QWidget;

/// The resource names carry no file ending, so Qt looks into the file to learn its kind each
/// time that an icon is made: as long as building a whole field of a record takes.
///
/// The drawings are made for light grounds. On the dark ones of a palette they are shown
/// brighter, and on the marked entry of a menu in one colour, that of its text: slate lines
/// would drown in the mark.
namespace Icons
{

/// The icon of the resource `name`, such as ":/mailIcon", fit for every ground.
QIcon shared(const QString &name);

/// `drawing` made fit for every ground; one without a picture stays so.
QIcon onEveryGround(const QIcon &drawing);

/// Does this, once, for the icons that a form has given to the push buttons and actions in
/// `root`; tool buttons show those of their actions.
void fitToGround(QWidget &root);

} // namespace Icons
