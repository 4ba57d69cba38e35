// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which web and mail addresses of a record may be handed to the desktop.
#include "model/addresses.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{

/// The text that rich text reads back as `text`.
QString escaped(QString text)
{
    // An "&" stands for itself in rich text unless it begins an entity such as "&lt;". The
    // many that join the parameters of an address need no escaping and keep it readable.
    static const QRegularExpression entity(QStringLiteral("&(?=#?[0-9A-Za-z]+;)"));
    return text.replace(entity, QStringLiteral("&amp;"))
        .replace(QLatin1Char('<'), QLatin1String("&lt;"))
        .replace(QLatin1Char('>'), QLatin1String("&gt;"))
        .replace(QLatin1Char('"'), QLatin1String("&quot;"));
}

} // namespace

namespace Addresses
{

QUrl web(const QString &text)
{
    const QString address = text.trimmed();
    if (address.startsWith(QLatin1Char('-'))) {
        return {};
    }
    // Local paths come out as "file" addresses and "foo:bar" with its own scheme, so it is
    // the result that must be looked at.
    const QUrl url = QUrl::fromUserInput(address);
    static const QStringList schemes = {QStringLiteral("http"), QStringLiteral("https"),
                                        QStringLiteral("ftp")};
    const bool known = url.isValid() && schemes.contains(url.scheme()) && !url.host().isEmpty();
    return known ? url : QUrl();
}

QUrl mail(const QString &text)
{
    const QString address = text.trimmed();
    if (address.isEmpty() || address.startsWith(QLatin1Char('-'))) {
        return {};
    }
    return QUrl(QLatin1String("mailto:") + text);
}

QString linkMarkup(const QString &text)
{
    const QByteArray value = escaped(text).toUtf8();
    return QString::asprintf("<a href=\"%s\">%s</a>", value.constData(), value.constData());
}

QString throughLatin1(const QString &text)
{
    return QString::fromLatin1(text.toUtf8());
}

} // namespace Addresses
