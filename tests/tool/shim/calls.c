/* A library to preload (LD_PRELOAD) that stands between a program and the system. It fails chosen calls, cuts them
 * short, raises signals, cuts the power, and records the calls in their order.
 *
 *   SHIM="RULE RULE..."   what to do: each rule that fits a call is carried out
 *   SHIM_RECORD=FILE      each call is added to FILE as a line: KIND PATH [DETAIL...] = RESULT
 *
 * A rule is KIND[@PATH][:N[+]]=ACTION.
 *
 *   KIND     open read write close fsync rename link unlink stat readlink chmod chown truncate dup memfd exit mmap
 *            alloc, or "any" for all of them but mmap and alloc. Calls that do the same are of one kind: openat is an
 *            "open", pread a "read", fdatasync an "fsync", lstat a "stat", calloc an "alloc". "exit" is the end of the
 *            process, which no error can keep off.
 *   @PATH    only calls on a path that has PATH in it; a descriptor has the path of its file
 *   :N       only the Nth of the calls that the rule would fit without it, with + that one and all that follow
 *   ACTION   ENOSPC, EINTR...   the call is not made and fails with this error
 *            short              at most one byte is read or written
 *            TERM, KILL...      before the call the signal is raised; when it does not end the process the call is made
 *            power-cut          before the call the files lose what was written to them since their last fsync, and
 *                               SIGKILL ends the process. What they held before, and every rename, counts as safe.
 *
 *   LD_PRELOAD=libshim.so SHIM="write:1=short write:2=EINTR rename=EACCES" SHIM_RECORD=calls program
 *
 * To visit every moment of a program run it with a record, count the lines, and run it with "any:1=KILL", "any:2=KILL"
 * and so on. What libc calls inside of itself, as stdio does to write, is not seen. Each process counts for itself. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include "rules.h"
#include "unsynced.h"

/* Declares `next`, the function that the program would have called. */
#define NEXT(function)                   \
    static __typeof__(&(function)) next; \
    if (next == NULL) next = (__typeof__(next))(uintptr_t)dlsym(RTLD_NEXT, #function)

typedef struct {
    char text[PATH_MAX];
} path_t;

static path_t path_of(int descriptor) {
    char link[32];
    path_t path;
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link, path.text, sizeof path.text - 1);
    path.text[length < 0 ? 0 : length] = '\0';
    return path;
}

static bool refuses(const char* kind, const char* path) {
    return shim_refuses(kind, path, "", NULL);
}

static mode_t mode_of(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

int open(const char* path, int flags, ...) {
    NEXT(open);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return (int)shim_record(refuses("open", path) ? -1 : next(path, flags, mode), "open %s %o", path, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    NEXT(openat);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return (int)shim_record(refuses("open", path) ? -1 : next(folder, path, flags, mode), "open %s %o", path, mode);
}

ssize_t read(int descriptor, void* bytes, size_t size) {
    NEXT(read);
    const path_t path = path_of(descriptor);
    const bool refused = shim_refuses("read", path.text, "", &size);
    return shim_record(refused ? -1 : next(descriptor, bytes, size), "read %s", path.text);
}

ssize_t pread(int descriptor, void* bytes, size_t size, off_t offset) {
    NEXT(pread);
    const path_t path = path_of(descriptor);
    const bool refused = shim_refuses("read", path.text, "", &size);
    return shim_record(refused ? -1 : next(descriptor, bytes, size, offset), "read %s", path.text);
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    NEXT(write);
    const path_t path = path_of(descriptor);
    const bool refused = shim_refuses("write", path.text, "", &size);
    unsynced_write(descriptor);
    return shim_record(refused ? -1 : next(descriptor, bytes, size), "write %s", path.text);
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t offset) {
    NEXT(pwrite);
    const path_t path = path_of(descriptor);
    const bool refused = shim_refuses("write", path.text, "", &size);
    unsynced_write(descriptor);
    return shim_record(refused ? -1 : next(descriptor, bytes, size, offset), "write %s", path.text);
}

/* Cut short it writes less than its first part. */
ssize_t writev(int descriptor, const struct iovec* parts, int count) {
    NEXT(writev);
    const path_t path = path_of(descriptor);
    size_t size = count > 0 ? parts[0].iov_len : 0;
    const size_t whole = size;
    const bool refused = shim_refuses("write", path.text, "", &size);
    const struct iovec first = {count > 0 ? parts[0].iov_base : NULL, size};
    unsynced_write(descriptor);
    const ssize_t written = refused ? -1 : size < whole ? next(descriptor, &first, 1) : next(descriptor, parts, count);
    return shim_record(written, "write %s", path.text);
}

int close(int descriptor) {
    NEXT(close);
    const path_t path = path_of(descriptor);
    return (int)shim_record(refuses("close", path.text) ? -1 : next(descriptor), "close %s", path.text);
}

static int synced(int result, int descriptor) {
    if (result == 0) unsynced_sync(descriptor);
    return result;
}

int fsync(int descriptor) {
    NEXT(fsync);
    const path_t path = path_of(descriptor);
    const int result = refuses("fsync", path.text) ? -1 : synced(next(descriptor), descriptor);
    return (int)shim_record(result, "fsync %s", path.text);
}

int fdatasync(int descriptor) {
    NEXT(fdatasync);
    const path_t path = path_of(descriptor);
    const int result = refuses("fsync", path.text) ? -1 : synced(next(descriptor), descriptor);
    return (int)shim_record(result, "fsync %s", path.text);
}

int rename(const char* from, const char* to) {
    NEXT(rename);
    return (int)shim_record(shim_refuses("rename", from, to, NULL) ? -1 : next(from, to), "rename %s %s", from, to);
}

int link(const char* from, const char* to) {
    NEXT(link);
    return (int)shim_record(shim_refuses("link", from, to, NULL) ? -1 : next(from, to), "link %s %s", from, to);
}

int unlink(const char* path) {
    NEXT(unlink);
    return (int)shim_record(refuses("unlink", path) ? -1 : next(path), "unlink %s", path);
}

int stat(const char* path, struct stat* status) {
    NEXT(stat);
    return (int)shim_record(refuses("stat", path) ? -1 : next(path, status), "stat %s", path);
}

int lstat(const char* path, struct stat* status) {
    NEXT(lstat);
    return (int)shim_record(refuses("stat", path) ? -1 : next(path, status), "stat %s", path);
}

int fstat(int descriptor, struct stat* status) {
    NEXT(fstat);
    const path_t path = path_of(descriptor);
    return (int)shim_record(refuses("stat", path.text) ? -1 : next(descriptor, status), "stat %s", path.text);
}

ssize_t readlink(const char* path, char* target, size_t size) {
    NEXT(readlink);
    return shim_record(refuses("readlink", path) ? -1 : next(path, target, size), "readlink %s", path);
}

int chmod(const char* path, mode_t mode) {
    NEXT(chmod);
    return (int)shim_record(refuses("chmod", path) ? -1 : next(path, mode), "chmod %s %o", path, mode);
}

int fchmod(int descriptor, mode_t mode) {
    NEXT(fchmod);
    const path_t path = path_of(descriptor);
    return (int)shim_record(refuses("chmod", path.text) ? -1 : next(descriptor, mode), "chmod %s %o", path.text, mode);
}

int fchown(int descriptor, uid_t owner, gid_t group) {
    NEXT(fchown);
    const path_t path = path_of(descriptor);
    const int result = refuses("chown", path.text) ? -1 : next(descriptor, owner, group);
    return (int)shim_record(result, "chown %s %d:%d", path.text, (int)owner, (int)group);
}

int ftruncate(int descriptor, off_t size) {
    NEXT(ftruncate);
    const path_t path = path_of(descriptor);
    const bool refused = refuses("truncate", path.text);
    unsynced_write(descriptor);
    return (int)shim_record(refused ? -1 : next(descriptor, size), "truncate %s %jd", path.text, (intmax_t)size);
}

int dup2(int descriptor, int other) {
    NEXT(dup2);
    const path_t path = path_of(descriptor);
    return (int)shim_record(refuses("dup", path.text) ? -1 : next(descriptor, other), "dup %s %d", path.text, other);
}

int memfd_create(const char* name, unsigned flags) {
    NEXT(memfd_create);
    return (int)shim_record(refuses("memfd", name) ? -1 : next(name, flags), "memfd %s", name);
}

void* mmap(void* address, size_t size, int protection, int flags, int descriptor, off_t offset) {
    NEXT(mmap);
    const path_t path = path_of(descriptor);
    void* const got =
        refuses("mmap", path.text) ? MAP_FAILED : next(address, size, protection, flags, descriptor, offset);
    shim_record(got == MAP_FAILED ? -1 : 0, "mmap %s %zu", path.text, size);
    return got;
}

static void* allocated(void* got, size_t size) {
    shim_record(got == NULL ? -1 : 0, "alloc %zu", size);
    return got;
}

void* malloc(size_t size) {
    NEXT(malloc);
    return allocated(refuses("alloc", "") ? NULL : next(size), size);
}

void* calloc(size_t count, size_t size) {
    NEXT(calloc);
    return allocated(refuses("alloc", "") ? NULL : next(count, size), count * size);
}

void* realloc(void* old, size_t size) {
    NEXT(realloc);
    return allocated(refuses("alloc", "") ? NULL : next(old, size), size);
}

static void meet_end(void) {
    refuses("exit", "");
    shim_record(0, "exit");
}

__attribute__((destructor)) static void end(void) {
    meet_end();
}

void _exit(int status) {
    NEXT(_exit);
    meet_end();
    next(status);
    abort(); /* which the compiler does not know to be out of reach */
}
