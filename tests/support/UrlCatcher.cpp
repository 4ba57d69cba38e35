// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Catches what the tested code hands to the desktop.
#include "tests/support/UrlCatcher.h"

#include <QDesktopServices>

namespace
{

QStringList schemes()
{
    return QStringLiteral("file http https ftp mailto javascript data smb sftp ssh tel about ldap "
                          "view-source ms-msdt vbscript nfs dav git magnet qrc x-man")
        .split(QLatin1Char(' '));
}

} // namespace

UrlCatcher::UrlCatcher()
{
    const QStringList all = schemes();
    for (const QString &scheme : all) {
        QDesktopServices::setUrlHandler(scheme, this, "catchUrl");
    }
}

UrlCatcher::~UrlCatcher()
{
    const QStringList all = schemes();
    for (const QString &scheme : all) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

QList<QUrl> UrlCatcher::take()
{
    const QList<QUrl> fresh = caught.mid(taken);
    taken = caught.size();
    return fresh;
}

void UrlCatcher::catchUrl(const QUrl &url)
{
    caught.append(url);
}
