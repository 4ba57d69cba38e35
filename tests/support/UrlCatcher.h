// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Catches what the tested code hands to the desktop.
#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

/// While it lives, nothing that is handed to QDesktopServices::openUrl() with one of the
/// schemes file, http, https, ftp, mailto, javascript, data or one of some rarer ones reaches the
/// desktop: the addresses are recorded instead. One at a time.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher();
    ~UrlCatcher() override;

    /// The addresses handed over so far, in their order.
    const QList<QUrl> &urls() const { return caught; }
    /// The addresses handed over since the last call.
    QList<QUrl> take();

public slots:
    /// Called by the toolkit for every address.
    void catchUrl(const QUrl &url);

private:
    QList<QUrl> caught;
    int taken = 0;
};
