/* What a power cut would take: the bytes written to files since their last fsync. */
#include "unsynced.h"

#include <fcntl.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { MOST_FILES = 32, HIGH_DESCRIPTOR = 620 };

typedef struct {
    int descriptor; /* one of our own, since the program's may be closed by then; 0 where the place is free */
    dev_t device;
    ino_t inode;
    off_t safe_size;
} unsynced_t;

static unsynced_t files[MOST_FILES];
static bool are_watched;

void unsynced_watch(void) {
    are_watched = true;
}

/* The place of the file, or a free one. */
static unsynced_t* find(const struct stat* status) {
    unsynced_t* free_place = NULL;
    for (unsynced_t* file = files; file < files + MOST_FILES; ++file) {
        if (file->descriptor == 0) {
            free_place = file;
        } else if (file->device == status->st_dev && file->inode == status->st_ino) {
            return file;
        }
    }
    if (free_place == NULL) abort();
    return free_place;
}

static unsynced_t* find_by_descriptor(int descriptor, struct stat* status) {
    if (!are_watched || syscall(SYS_fstat, descriptor, status) != 0 || !S_ISREG(status->st_mode)) return NULL;
    return find(status);
}

void unsynced_write(int descriptor) {
    struct stat status;
    unsynced_t* const file = find_by_descriptor(descriptor, &status);
    if (file == NULL || file->descriptor != 0) return;
    const long copy = syscall(SYS_fcntl, descriptor, F_DUPFD_CLOEXEC, HIGH_DESCRIPTOR);
    if (copy < 0) abort();
    *file = (unsynced_t){(int)copy, status.st_dev, status.st_ino, status.st_size};
}

void unsynced_sync(int descriptor) {
    struct stat status;
    unsynced_t* const file = find_by_descriptor(descriptor, &status);
    if (file == NULL || file->descriptor == 0) return;
    syscall(SYS_close, file->descriptor);
    file->descriptor = 0;
}

void unsynced_lose(void) {
    for (const unsynced_t* file = files; file < files + MOST_FILES; ++file) {
        if (file->descriptor != 0 && syscall(SYS_ftruncate, file->descriptor, file->safe_size) != 0) abort();
    }
}
