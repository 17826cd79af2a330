/* Converts a device's stored configuration once, when the first program that wants the new layout boots.
 *
 *   config-at-boot convert FOLDER   before the program starts
 *   config-at-boot back FOLDER      when the program rejects what it got
 *
 * FOLDER holds config.json, which the program reads. "convert" keeps what it found as config.old.json and puts the new
 * layout in its place. "back" keeps the new one as config.rejected.json, which stops any further conversion until
 * somebody removes it, and puts the old one in its place again.
 *
 * Whatever happens at whatever moment (no memory, no space, a power cut), config.json is one of the two, whole, and the
 * next boot goes on from there. Two at a time do it one after the other. Exit status: 0 all is as it should be, 1 the
 * configuration cannot be converted, and stays, 2 wrong usage, 3 the system failed.
 *
 *   cc config_at_boot.c -o config-at-boot $(pkg-config --cflags --libs k_cnvrt) */
#include <errno.h>
#include <fcntl.h>
#include <k_cnvrt.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

enum { DONE = 0, REJECTED = 1, WRONG_USAGE = 2, SYSTEM_FAILED = 3 };

static const char CURRENT[] = "config.json";
static const char OLD[] = "config.old.json";
static const char REFUSED[] = "config.rejected.json";
static const char PASSING[] = "config.json.passing"; /* at most one, which the next write replaces */

typedef struct {
    char* bytes;
    size_t size;
    struct stat status;
} content_t;

/* Nothing has to be undone: what is stored changes only by renaming a file that is whole, and what was allocated goes
 * with the process. */
static _Noreturn void end(const char* what) {
    fprintf(stderr, "config-at-boot: %s: %s\n", what, strerror(errno));
    exit(SYSTEM_FAILED);
}

/* What was begun would take the space that others need where there is none. */
static _Noreturn void give_up(const char* what) {
    const int reason = errno;
    unlink(PASSING);
    errno = reason;
    end(what);
}

/* Two at a time would write to the one file that passes. The second waits, and then finds what the first has done. The
 * lock goes with the process. */
static void enter(const char* folder) {
    const int lock = chdir(folder) == 0 ? open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
    if (lock < 0 || flock(lock, LOCK_EX) != 0) end(folder);
}

/* Jansson gets its memory here: its parser does not survive every allocation that fails, and could leave out part of a
 * text. */
static void* allocate(size_t size) {
    void* const block = malloc(size);
    if (block == NULL) end("memory");
    return block;
}

/* False where there is no such file. */
static bool read_whole(const char* name, content_t* content) {
    struct stat* const status = &content->status;
    ssize_t got;
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0 && errno == ENOENT) return false;
    if (file < 0 || fstat(file, status) != 0) end(name);
    content->size = 0;
    content->bytes = allocate((size_t)status->st_size + 1);
    while ((got = read(file, content->bytes + content->size, (size_t)status->st_size + 1 - content->size)) != 0) {
        if (got < 0 && errno != EINTR) end(name);
        if (got > 0) content->size += (size_t)got;
    }
    close(file);
    errno = EBUSY;
    if (content->size != (size_t)status->st_size) end(name); /* somebody writes to it */
    return true;
}

/* Writes a file whole or not at all: it has its name only when its bytes are safe. */
static void replace(const char* name, const content_t* content) {
    size_t written = 0;
    const int file = open(PASSING, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) give_up(PASSING);
    while (written < content->size) {
        const ssize_t put = write(file, content->bytes + written, content->size - written);
        if (put < 0 && errno != EINTR) give_up(PASSING);
        if (put > 0) written += (size_t)put;
    }
    if (fchown(file, content->status.st_uid, content->status.st_gid) != 0) give_up(PASSING);
    if (fchmod(file, content->status.st_mode & 0777) != 0 || fsync(file) != 0 || close(file) != 0) give_up(PASSING);
    if (rename(PASSING, name) != 0) give_up(name);
    const int folder = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0 || fsync(folder) != 0 || close(folder) != 0) give_up(name);
}

static bool exists(const char* name) {
    struct stat status;
    if (stat(name, &status) == 0) return true;
    if (errno != ENOENT) end(name);
    return false;
}

/* Only the new layout has a "Device". */
static bool is_new_layout(const json_t* config) {
    return json_object_get(config, "Device") != NULL;
}

static json_t* parse(const content_t* content) {
    json_error_t error;
    json_t* const config = json_loadb(content->bytes, content->size, JSON_REJECT_DUPLICATES, &error);
    /* The error's own text would show what stands there, perhaps a password. */
    if (config == NULL) fprintf(stderr, "%s:%d:%d: this is no JSON\n", CURRENT, error.line, error.column);
    return config;
}

/* The new layout's text; null, and the reasons are told, where there is none. */
static char* to_new(json_t* config) {
    char* text = NULL;
    k_err_t* const err = k_err_new();
    json_t* const converted = k_cnvrt_to_new(config, NULL, 0, err);
    for (size_t i = 0; i < k_err_count(err); ++i) {
        const char* const place = k_err_pointer(err, i);
        fprintf(stderr, "%s: %s\n", place == NULL ? "-" : place, k_err_message(err, i));
    }
    /* Without memory the library leaves out what it cannot store: such a result looks like a good one. */
    if (k_err_is_complete(err) == 0) end("memory");
    if (converted != NULL) text = json_dumps(converted, JSON_INDENT(4));
    json_decref(converted);
    k_err_free(err);
    return text;
}

static int convert(void) {
    content_t found;
    if (exists(REFUSED) || !read_whole(CURRENT, &found)) return DONE;
    json_t* const config = parse(&found);
    if (config == NULL) return REJECTED;
    if (is_new_layout(config)) return DONE;
    char* const text = to_new(config);
    if (text == NULL) return REJECTED;
    replace(OLD, &found);
    replace(CURRENT, &(content_t){text, strlen(text), found.status});
    return DONE;
}

/* The rejected one is kept first: a power cut in between leaves a program that rejects it again, and this is done
 * again. */
static int go_back(void) {
    content_t rejected;
    content_t old;
    if (!read_whole(CURRENT, &rejected)) return DONE;
    json_t* const config = parse(&rejected);
    if (config != NULL && !is_new_layout(config)) return DONE;
    if (!read_whole(OLD, &old)) {
        fprintf(stderr, "config-at-boot: there is no %s to go back to\n", OLD);
        return REJECTED;
    }
    replace(REFUSED, &rejected);
    replace(CURRENT, &old);
    return DONE;
}

int main(int argc, char** argv) {
    const bool converts = argc == 3 && strcmp(argv[1], "convert") == 0;
    if (!converts && !(argc == 3 && strcmp(argv[1], "back") == 0)) {
        fputs("Usage: config-at-boot convert|back FOLDER\n", stderr);
        return WRONG_USAGE;
    }
    json_set_alloc_funcs(allocate, free);
    enter(argv[2]);
    return converts ? convert() : go_back();
}
