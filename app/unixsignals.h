// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A normal end when the system asks for one.
#pragma once

#include <QObject>
#include <QScopedPointer>
#include <QSocketNotifier>

/// Turns SIGTERM, SIGINT and SIGHUP into a normal end of the event loop, so that the window
/// is destroyed and its lock goes. One object per process, made after the application.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(QObject *parent = nullptr);
    ~UnixSignals() override;

    /// True once a signal has come; the event loop must not be started any more.
    bool endRequested() const;

private:
    void endNormally();

    QScopedPointer<QSocketNotifier> notifier;
    bool requested = false;
};
