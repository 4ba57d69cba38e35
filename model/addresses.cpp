// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which web and mail addresses of a record may be handed to the desktop.
#include "model/addresses.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

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
    static const QStringList schemes = {QStringLiteral("http"), QStringLiteral("https"),
                                        QStringLiteral("ftp")};
    const bool isWhole =
        std::any_of(schemes.begin(), schemes.end(), [&address](const QString &scheme) {
            return address.startsWith(scheme + QLatin1String("://"), Qt::CaseInsensitive);
        });
    // fromUserInput() completes what lacks a scheme. It makes a host called "http" of a whole
    // address that is broken, "file" addresses of local paths, and keeps the scheme of
    // "foo:bar", so it is the result that must be looked at.
    const QUrl url = isWhole ? QUrl(address) : QUrl::fromUserInput(address);
    const bool isWeb = schemes.contains(url.scheme()) && !url.host().isEmpty();
    return isWeb ? url : QUrl();
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
