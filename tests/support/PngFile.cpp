// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// PNG files that claim a size of any choice.
#include "tests/support/PngFile.h"

namespace
{

// A length, a size or a check sum as PNG files hold it.
QByteArray bigEndian(quint32 number)
{
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0}) {
        bytes.append(char((number >> shift) & 0xff));
    }
    return bytes;
}

quint32 checkSum(const QByteArray &bytes)
{
    quint32 sum = 0xffffffffU;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? (sum >> 1) ^ 0xedb88320U : sum >> 1;
        }
    }
    return ~sum;
}

QByteArray chunk(const QByteArray &name, const QByteArray &content)
{
    return bigEndian(quint32(content.size())) + name + content +
           bigEndian(checkSum(name + content));
}

} // namespace

QByteArray pngOfSize(quint32 width, quint32 height)
{
    const QByteArray header =
        bigEndian(width) + bigEndian(height) + QByteArray("\x08\x02\0\0\0", 5);
    return QByteArray("\x89PNG\r\n\x1a\n") + chunk("IHDR", header) +
           chunk("IDAT", qCompress(QByteArray(1000, '\0')).mid(4)) + chunk("IEND", QByteArray());
}
