// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How page widgets leave their page: the same rule that the rows of sub-tables follow.
#pragma once

#include "widgets/ownedwidgets.h"
