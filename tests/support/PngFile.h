// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// PNG files that claim a size of any choice.
#pragma once

#include <QByteArray>

/// The bytes of a PNG file that says to be `width` × `height` pixels large, with hardly anything
/// behind it.
QByteArray pngOfSize(quint32 width, quint32 height);
