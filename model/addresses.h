// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which web and mail addresses of a record may be handed to the desktop.
#pragma once

#include <QString>
#include <QUrl>

namespace Addresses
{

/// The address to open for a stored web address: http, https and ftp ones, and those
/// without a scheme; an invalid QUrl for every other text (local paths too) and for one
/// beginning with "-".
QUrl web(const QString &text);

/// The "mailto:" address for a mail address, which is taken as it stands (the caller sends it
/// throughLatin1() first); invalid for a blank one and for one beginning with "-".
QUrl mail(const QString &text);

/// Rich text of a link whose target and text are both `text`, with everything that would be
/// read as markup escaped: <, >, the double quote, and an "&" that begins an entity.
QString linkMarkup(const QString &text);

/// The text's UTF-8 bytes read as Latin-1. Deliberate: paths and mail addresses pass
/// through this on their way to the desktop, so only plain ASCII ones survive unchanged.
QString throughLatin1(const QString &text);

} // namespace Addresses
