// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Files of limited length, as on a disk that is nearly full.
#pragma once

#include <QtGlobal>

#include <csignal>

#include <sys/resource.h>

/// While it lives, no file can become longer than this: writing more fails.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        // Else the system would end the program.
        signal(SIGXFSZ, SIG_IGN);
        if (getrlimit(RLIMIT_FSIZE, &before) != 0) {
            qFatal("the limit of files is not known");
        }
        const rlimit small{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

private:
    rlimit before{};
};
