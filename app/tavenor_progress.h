// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The progress dialog held open for the length of an operation.
#pragma once

#include "app/Tavenor.h"

/// Scope object: shows the window's progress dialog, at 0, for as long as it lives. The user
/// cannot dismiss the dialog meanwhile, and it blocks the windows behind it, their shortcuts
/// too. It comes to the screen only when the operation lasts long enough to be noticed; a flash
/// of a window at every click would disturb more than it tells.
class Tavenor::Progress
{
public:
    /// `title` is the dialog's title, `text` says what is being done.
    Progress(Tavenor &window, const QString &title, const QString &text);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// Leaves the dialog on the screen at the end, for the user to dismiss or the next
    /// operation to take over.
    void leaveUp() { leftUp = true; }

private:
    Tavenor &owner;
    const bool insideAnother;
    std::unique_ptr<QObject> heldShortcuts;
    bool leftUp = false;
};
