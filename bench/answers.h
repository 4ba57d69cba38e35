// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Commands that ask something first: what they cost from the answer on.
#pragma once

#include <QString>

#include <functional>

/// Seconds are counted from the moment at which the program has its answer.
namespace Answers
{

/// Runs `command`, says yes to the question that it asks, and gives the seconds from then on.
double secondsAfterYes(const std::function<void()> &command);

/// Accepts the name prompt that is open with `name`; the seconds that what waits for it takes.
double secondsAfterName(const QString &name);

/// The seconds of `command`.
double seconds(const std::function<void()> &command);

} // namespace Answers
