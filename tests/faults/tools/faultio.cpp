// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Stands between a test program and the system: counts, fails, logs or ends at calls that write.
#include "tests/faults/tools/faultio.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

using FaultIo::Act;
using FaultIo::Event;

namespace
{

// Of FICLONE, whose header does not go together with others.
constexpr unsigned long CloneFile = _IOW(0x94, 9, int);

// Plain data, because calls come before the program's own objects are made and after they are
// gone.
std::array<char, 4096> watchedFolder{};
size_t watchedLength = 0;
FaultIo::Plan plan;
long counted = 0;
off_t grown = 0;
std::vector<Event> *events = nullptr;
bool skipsSynchronisation = false;

template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool isArmed()
{
    return watchedLength > 0;
}

bool isWatched(const char *path)
{
    if (!isArmed()) {
        return false;
    }
    std::array<char, 4096> whole{};
    if (path[0] != '/') {
        if (getcwd(whole.data(), whole.size()) == nullptr) {
            return false;
        }
        const size_t used = std::strlen(whole.data());
        std::snprintf(whole.data() + used, whole.size() - used, "/%s", path);
        path = whole.data();
    }
    const size_t length = std::strlen(path);
    // The folder itself is meant too: its names are synchronised through it.
    const bool isFolder = length + 1 == watchedLength;
    return std::strncmp(path, watchedFolder.data(), isFolder ? length : watchedLength) == 0;
}

std::string pathOf(int descriptor)
{
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    std::array<char, 4096> path{};
    const ssize_t length = readlink(link.data(), path.data(), path.size() - 1);
    return length < 0 ? std::string() : std::string(path.data(), size_t(length));
}

bool isWatched(int descriptor)
{
    if (!isArmed()) {
        return false;
    }
    const std::string path = pathOf(descriptor);
    // Pipes and the like have names that are no paths.
    return !path.empty() && path[0] == '/' && isWatched(path.c_str());
}

struct stat stateOf(int descriptor)
{
    struct stat state {
    };
    fstat(descriptor, &state);
    return state;
}

struct stat stateOf(const char *path)
{
    struct stat state {
    };
    lstat(path, &state);
    return state;
}

// Absolute, so that the log can be read without the working directory.
std::string whole(const char *path)
{
    std::array<char, 4096> folder{};
    if (path[0] == '/' || getcwd(folder.data(), folder.size()) == nullptr) {
        return path;
    }
    return std::string(folder.data()) + '/' + path;
}

// Nothing is flushed or released, as at a power cut.
[[noreturn]] void end()
{
    kill(getpid(), SIGKILL);
    for (;;) {
        pause();
    }
}

enum class Kind { Bytes, Change, Removal };

// What happens at this call.
enum class Verdict { Go, KillBefore, KillHalf, KillAfter, Fail };

Verdict verdict(Kind kind)
{
    // A full disk keeps nobody from removing a file.
    const bool canFail = kind != Kind::Removal || plan.error != ENOSPC;
    if ((plan.act == Act::KillHalf && kind != Kind::Bytes) || (plan.error != 0 && !canFail)) {
        return Verdict::Go;
    }
    ++counted;
    const bool isMeant = counted == plan.at;
    switch (plan.act) {
    case Act::KillBefore:
        return isMeant ? Verdict::KillBefore : Verdict::Go;
    case Act::KillHalf:
        return isMeant ? Verdict::KillHalf : Verdict::Go;
    case Act::KillAfter:
        return isMeant ? Verdict::KillAfter : Verdict::Go;
    case Act::FailOnce:
        return isMeant ? Verdict::Fail : Verdict::Go;
    case Act::FailOn:
        return counted >= plan.at ? Verdict::Fail : Verdict::Go;
    case Act::Count:
    case Act::NoRoom:
        break;
    }
    return Verdict::Go;
}

// Lets the call through as planned. `call` does it, `half` does half of it, `note` is told the
// result of a call that was done.
template<typename Call, typename Half, typename Note>
auto pass(Kind kind, const Call &call, const Half &half, const Note &note) -> decltype(call())
{
    switch (verdict(kind)) {
    case Verdict::KillBefore:
        end();
    case Verdict::KillHalf:
        half();
        end();
    case Verdict::KillAfter:
        call();
        end();
    case Verdict::Fail:
        errno = plan.error;
        return -1;
    case Verdict::Go:
        break;
    }
    const auto result = call();
    if (result >= 0) {
        note(result);
    }
    return result;
}

void log(Event event)
{
    if (events != nullptr) {
        events->push_back(std::move(event));
    }
}

void logWrite(int descriptor, off_t place, const void *data, size_t count)
{
    log({Event::Kind::Write,
         stateOf(descriptor).st_ino,
         {},
         {},
         place,
         std::string(static_cast<const char *>(data), count)});
}

// How many of the bytes still find room: all but those by which the file would grow too far.
size_t fitting(int descriptor, off_t place, size_t count)
{
    if (plan.act != Act::NoRoom) {
        return count;
    }
    const off_t end = place + off_t(count);
    const off_t size = stateOf(descriptor).st_size;
    const off_t wanted = end > size ? end - size : 0;
    const off_t room = plan.at > grown ? plan.at - grown : 0;
    const off_t given = wanted < room ? wanted : room;
    const off_t kept = off_t(count) - (wanted - given);
    grown += given;
    return kept > 0 ? size_t(kept) : 0;
}

// Of a file that becomes shorter or goes.
void giveBack(off_t bytes)
{
    if (plan.act == Act::NoRoom && bytes > 0) {
        grown -= bytes;
    }
}

// A write of any kind: `call` writes the first so many bytes.
template<typename Call>
ssize_t writeBytes(int descriptor, off_t place, const void *data, size_t count, const Call &call)
{
    const size_t fits = fitting(descriptor, place, count);
    if (fits == 0 && count > 0) {
        errno = ENOSPC;
        return -1;
    }
    return pass(
        Kind::Bytes, [&] { return call(fits); }, [&] { call(count / 2); },
        [&](ssize_t written) { logWrite(descriptor, place, data, size_t(written)); });
}

off_t placeIn(int descriptor)
{
    if ((fcntl(descriptor, F_GETFL) & O_APPEND) != 0) {
        return stateOf(descriptor).st_size;
    }
    return lseek(descriptor, 0, SEEK_CUR);
}

template<typename Call>
int cut(int descriptor, off_t length, const Call &call)
{
    if (!isWatched(descriptor)) {
        return call();
    }
    const off_t before = stateOf(descriptor).st_size;
    return pass(
        Kind::Change, call, [] {},
        [&](int) {
            giveBack(before - length);
            log({Event::Kind::Truncate, stateOf(descriptor).st_ino, {}, {}, length, {}});
        });
}

template<typename Call>
int synchronise(int descriptor, const Call &call)
{
    const auto done = [&] { return skipsSynchronisation ? 0 : call(); };
    if (!isWatched(descriptor)) {
        return done();
    }
    return pass(
        Kind::Change, done, [] {},
        [&](int) {
            const struct stat state = stateOf(descriptor);
            const bool isFolder = S_ISDIR(state.st_mode);
            log({isFolder ? Event::Kind::SyncFolder : Event::Kind::Sync,
                 state.st_ino,
                 pathOf(descriptor),
                 {},
                 0,
                 {}});
        });
}

template<typename Call>
int removeFile(const char *path, const Call &call)
{
    if (!isWatched(path)) {
        return call();
    }
    const struct stat state = stateOf(path);
    const auto removal = [&] {
        const int result = call();
        if (result == 0 && state.st_nlink == 1) {
            giveBack(state.st_size);
        }
        return result;
    };
    return pass(
        Kind::Removal, removal, [] {},
        [&](int) {
            log({Event::Kind::Unlink, state.st_ino, whole(path), {}, 0, {}});
        });
}

// A second name of a file, or a new one: `from` may also be a link to an open file.
template<typename Call>
int nameFile(Event::Kind kind, const char *from, const char *to, const Call &call)
{
    if (!isWatched(to)) {
        return call();
    }
    return pass(
        Kind::Change, call, [] {},
        [&](int) {
            log({kind, stateOf(to).st_ino, whole(from), whole(to), 0, {}});
        });
}

// Opens a file; that is a change where it makes or empties one.
template<typename Call>
int openFile(const char *path, int flags, const Call &call)
{
    const bool isUnnamed = (flags & O_TMPFILE) == O_TMPFILE;
    if ((flags & (O_CREAT | O_TRUNC)) == 0 && !isUnnamed) {
        return call();
    }
    if (!isWatched(path)) {
        return call();
    }
    const struct stat before = stateOf(path);
    const bool isThere = !isUnnamed && before.st_ino != 0;
    if (isThere && (flags & O_TRUNC) == 0) {
        return call();
    }
    if (!isThere && plan.act == Act::NoRoom && grown >= plan.at) {
        errno = ENOSPC;
        return -1;
    }
    return pass(
        Kind::Change, call, [] {},
        [&](int descriptor) {
            if (isThere) {
                giveBack(before.st_size);
                log({Event::Kind::Truncate, before.st_ino, {}, {}, 0, {}});
                return;
            }
            log({Event::Kind::Make,
                 stateOf(descriptor).st_ino,
                 isUnnamed ? std::string() : whole(path),
                 {},
                 0,
                 {}});
        });
}

mode_t modeOf(int flags, va_list arguments)
{
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? mode_t(va_arg(arguments, int)) : 0;
}

} // namespace

void FaultIo::arm(const std::string &folder, const Plan &newPlan)
{
    plan = newPlan;
    counted = 0;
    grown = 0;
    std::snprintf(watchedFolder.data(), watchedFolder.size(), "%s/", folder.c_str());
    watchedLength = std::strlen(watchedFolder.data());
}

long FaultIo::disarm()
{
    watchedLength = 0;
    events = nullptr;
    return counted;
}

void FaultIo::record(const std::string &folder, std::vector<Event> *log)
{
    arm(folder, {});
    events = log;
}

void FaultIo::skipSynchronisation()
{
    skipsSynchronisation = true;
}

extern "C" {

ssize_t write(int descriptor, const void *data, size_t count)
{
    static const auto original = next<ssize_t (*)(int, const void *, size_t)>("write");
    if (!isWatched(descriptor)) {
        return original(descriptor, data, count);
    }
    return writeBytes(descriptor, placeIn(descriptor), data, count,
                      [&](size_t part) { return original(descriptor, data, part); });
}

ssize_t pwrite(int descriptor, const void *data, size_t count, off_t place)
{
    static const auto original = next<ssize_t (*)(int, const void *, size_t, off_t)>("pwrite");
    if (!isWatched(descriptor)) {
        return original(descriptor, data, count, place);
    }
    return writeBytes(descriptor, place, data, count,
                      [&](size_t part) { return original(descriptor, data, part, place); });
}

ssize_t pwrite64(int descriptor, const void *data, size_t count, off64_t place)
{
    return pwrite(descriptor, data, count, place);
}

ssize_t sendfile(int to, int from, off_t *place, size_t count) noexcept
{
    static const auto original = next<ssize_t (*)(int, int, off_t *, size_t)>("sendfile");
    if (!isWatched(to)) {
        return original(to, from, place, count);
    }
    // The toolkit goes on with plain reading and writing, which says what is written.
    errno = ENOSYS;
    return -1;
}

ssize_t sendfile64(int to, int from, off64_t *place, size_t count) noexcept
{
    return sendfile(to, from, place, count);
}

ssize_t copy_file_range(int from, off64_t *fromPlace, int to, off64_t *toPlace, size_t count,
                        unsigned int flags)
{
    static const auto original =
        next<ssize_t (*)(int, off64_t *, int, off64_t *, size_t, unsigned int)>("copy_file_range");
    if (!isWatched(to)) {
        return original(from, fromPlace, to, toPlace, count, flags);
    }
    errno = ENOSYS;
    return -1;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static const auto original = next<int (*)(int, unsigned long, void *)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void *const argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request == CloneFile && isWatched(descriptor)) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return original(descriptor, request, argument);
}

int ftruncate(int descriptor, off_t length) noexcept
{
    static const auto original = next<int (*)(int, off_t)>("ftruncate");
    return cut(descriptor, length, [&] { return original(descriptor, length); });
}

int ftruncate64(int descriptor, off64_t length) noexcept
{
    return ftruncate(descriptor, length);
}

int fsync(int descriptor)
{
    static const auto original = next<int (*)(int)>("fsync");
    return synchronise(descriptor, [&] { return original(descriptor); });
}

int fdatasync(int descriptor)
{
    static const auto original = next<int (*)(int)>("fdatasync");
    return synchronise(descriptor, [&] { return original(descriptor); });
}

int unlink(const char *path) noexcept
{
    static const auto original = next<int (*)(const char *)>("unlink");
    return removeFile(path, [&] { return original(path); });
}

int rename(const char *from, const char *to) noexcept
{
    static const auto original = next<int (*)(const char *, const char *)>("rename");
    return nameFile(Event::Kind::Rename, from, to, [&] { return original(from, to); });
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned int flags) noexcept
{
    static const auto original =
        next<int (*)(int, const char *, int, const char *, unsigned int)>("renameat2");
    return nameFile(Event::Kind::Rename, from, to,
                    [&] { return original(fromFolder, from, toFolder, to, flags); });
}

int link(const char *from, const char *to) noexcept
{
    static const auto original = next<int (*)(const char *, const char *)>("link");
    return nameFile(Event::Kind::Link, from, to, [&] { return original(from, to); });
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    static const auto original = next<int (*)(int, const char *, int, const char *, int)>("linkat");
    return nameFile(Event::Kind::Link, from, to,
                    [&] { return original(fromFolder, from, toFolder, to, flags); });
}

int mkdir(const char *path, mode_t mode) noexcept
{
    static const auto original = next<int (*)(const char *, mode_t)>("mkdir");
    // One that is there already is no change.
    if (!isWatched(path) || stateOf(path).st_ino != 0) {
        return original(path, mode);
    }
    return pass(
        Kind::Change, [&] { return original(path, mode); }, [] {},
        [&](int) {
            log({Event::Kind::MakeFolder, 0, whole(path), {}, 0, {}});
        });
}

int open(const char *path, int flags, ...)
{
    static const auto original = next<int (*)(const char *, int, mode_t)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile(path, flags, [&] { return original(path, flags, mode); });
}

int open64(const char *path, int flags, ...)
{
    static const auto original = next<int (*)(const char *, int, mode_t)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile(path, flags, [&] { return original(path, flags, mode); });
}

} // extern "C"
