// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Preloaded into a program, ends it in the middle of writing a file.
//
// TAVENOR_KILL_FILE   part of the path of the files whose writing is counted
// TAVENOR_KILL_AT     which write, cut, synchronisation or removal of these files ends the
//                     program, counted from 1
// TAVENOR_KILL_HALF   "1": a write is done by half before the end; else nothing of it is done
#include <dlfcn.h>
#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

const char *setting(const char *name)
{
    const char *const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// True when this is the call at which the program ends.
bool isLast(const char *path)
{
    static const char *const file = setting("TAVENOR_KILL_FILE");
    static const long wanted = std::strtol(setting("TAVENOR_KILL_AT"), nullptr, 10);
    static long counted = 0;
    if (file[0] == '\0' || std::strstr(path, file) == nullptr) {
        return false;
    }
    return ++counted == wanted;
}

bool isLast(int descriptor)
{
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    std::array<char, 4096> path{};
    if (readlink(link.data(), path.data(), path.size() - 1) < 0) {
        return false;
    }
    return isLast(path.data());
}

size_t partOf(size_t count)
{
    static const bool half = std::strcmp(setting("TAVENOR_KILL_HALF"), "1") == 0;
    return half ? count / 2 : 0;
}

// Nothing is flushed or released, as at a power cut.
void end()
{
    kill(getpid(), SIGKILL);
}

} // namespace

extern "C" {

ssize_t write(int descriptor, const void *data, size_t count)
{
    static const auto original = next<ssize_t (*)(int, const void *, size_t)>("write");
    if (isLast(descriptor)) {
        original(descriptor, data, partOf(count));
        end();
    }
    return original(descriptor, data, count);
}

ssize_t pwrite(int descriptor, const void *data, size_t count, off_t place)
{
    static const auto original = next<ssize_t (*)(int, const void *, size_t, off_t)>("pwrite");
    if (isLast(descriptor)) {
        original(descriptor, data, partOf(count), place);
        end();
    }
    return original(descriptor, data, count, place);
}

ssize_t pwrite64(int descriptor, const void *data, size_t count, off64_t place)
{
    static const auto original = next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    if (isLast(descriptor)) {
        original(descriptor, data, partOf(count), place);
        end();
    }
    return original(descriptor, data, count, place);
}

int ftruncate(int descriptor, off_t length) noexcept
{
    static const auto original = next<int (*)(int, off_t)>("ftruncate");
    if (isLast(descriptor)) {
        end();
    }
    return original(descriptor, length);
}

int ftruncate64(int descriptor, off64_t length) noexcept
{
    static const auto original = next<int (*)(int, off64_t)>("ftruncate64");
    if (isLast(descriptor)) {
        end();
    }
    return original(descriptor, length);
}

int fsync(int descriptor)
{
    static const auto original = next<int (*)(int)>("fsync");
    if (isLast(descriptor)) {
        end();
    }
    return original(descriptor);
}

int fdatasync(int descriptor)
{
    static const auto original = next<int (*)(int)>("fdatasync");
    if (isLast(descriptor)) {
        end();
    }
    return original(descriptor);
}

int unlink(const char *path) noexcept
{
    static const auto original = next<int (*)(const char *)>("unlink");
    if (isLast(path)) {
        end();
    }
    return original(path);
}

} // extern "C"
