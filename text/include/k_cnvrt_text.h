/*
 * k_cnvrt_text.h: texts in, texts out. Reads a configuration, converts it (k_cnvrt.h), writes the result, and says of
 * every problem where it is in the text.
 *
 * 1. One call does one thing: fill a k_text_request_t, give it to k_text_run, ask the result, release it with
 *    k_text_free.
 * 2. The texts of a request are borrowed for the call. Whatever a result hands out is the result's own, and lives as
 *    long as the result.
 * 3. Texts are JSON in UTF-8. A member given twice in one object is refused, since one of its values would be lost in
 *    silence; so is a NUL inside a text, but for K_TEXT_DIFF and K_TEXT_APPLY, which carry it.
 * 4. Nothing is printed, nothing is global, and there are no callbacks. Calls may run on any threads at the same time;
 *    a result belongs to one thread at a time.
 * 5. A secret is never shown but in an output: in messages and excerpts *** stands for the value of a member whose name
 *    contains pass, key, psk, secret, pin or loid in letters of either case, and for all that is inside it, unless
 *    K_TEXT_SHOW_SECRETS is set.
 * 6. Later versions may add operations, flags, members at the end of a structure, and problems. An operation or a flag
 *    that a version does not know is wrong usage.
 */
#ifndef K_CNVRT_TEXT_H
#define K_CNVRT_TEXT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* What is asked: the operation of a request. Each says what it takes besides a text and an indent. Those that read a
 * whole configuration, its section or a base of one refuse a text of another layout (K_TEXT_WRONG_LAYOUT) and take
 * K_TEXT_FORCE. */
enum {
    /* The old configuration `text` in the new layout. With the base `other`, a configuration in the new layout, what
     * has to change in it instead, whatever failed on the way. Takes K_TEXT_DSL_VLAN; with a base K_TEXT_MERGE_PATCH,
     * without one K_TEXT_PARTIAL. */
    K_TEXT_TO_NEW = 1,
    /* The new configuration `text` in the old layout. Takes K_TEXT_DSL_VLAN and K_TEXT_PARTIAL. */
    K_TEXT_TO_OLD = 2,
    /* `section`, a name of K_TEXT_NEW_SECTIONS, from `text`, the section in the old layout or a whole configuration
     * that has it: see K_TEXT_AS_IS, which it takes. With the base `other`, the section in the new layout, what has to
     * change in it. Takes, with a base, K_TEXT_MERGE_PATCH; without one K_TEXT_PARTIAL. */
    K_TEXT_SECTION_TO_NEW = 3,
    /* `section`, a name of K_TEXT_OLD_SECTIONS, from `text`, the section in the new layout or a whole configuration
     * that has it. Takes K_TEXT_AS_IS and K_TEXT_PARTIAL. */
    K_TEXT_SECTION_TO_OLD = 4,
    /* What has to change in `text` to make it equal to `other`; both are any JSON values. Takes K_TEXT_MERGE_PATCH. */
    K_TEXT_DIFF = 5,
    /* `text` with the difference `other` applied: a JSON Patch (an array) or a JSON Merge Patch (an object). */
    K_TEXT_APPLY = 6,
    /* The configuration `text` in the other layout: one with an object "Device" as by K_TEXT_TO_OLD, any other as by
     * K_TEXT_TO_NEW (k_text_direction says which it was), unless K_TEXT_TOWARDS_NEW or K_TEXT_TOWARDS_OLD says it. Of
     * an old one it finds out by itself whether it needs K_TEXT_DSL_VLAN. Takes that, too, and K_TEXT_PARTIAL. */
    K_TEXT_CONVERT = 7,
    /* Whether the configuration `text` can be converted, and what of it the other layout will not hold: the problems
     * and the losses, and no output. The direction, and K_TEXT_DSL_VLAN, are found out as by K_TEXT_CONVERT. */
    K_TEXT_CHECK = 8,
    /* The same question about a text that may well be rejected: K_TEXT_CONVERTED then says that part of it can be
     * converted, and that the losses are those of this part. */
    K_TEXT_LOSSES = 9,
    /* What becomes of the member of the configuration `text` that `pointer` leads to: the output is an object
     *
     *     {"pointer": ..., "answer": ..., "effects": [{"pointer": ..., "with": ..., "without": ...}, ...]}
     *
     * The answer is "used" when the result depends on the member, or on what it says; its effects are the places in the
     * result that do, each with what stands there and what would stand there without the member, null for nothing. Both
     * are the same where the member says just what the conversion would put there without it; there are none where it
     * is read, and would make a difference only if it said something else. The answer is "regenerated" when the result
     * does not depend on it, and the way back makes such a member all the same; else "lost".
     *
     * With K_TEXT_FROM_RESULT `pointer` is of the result, and the output says of which members it was made, the
     * innermost that there are, those first on which nothing depends beside it, and what would stand there without each
     * of them alone:
     *
     *     {"pointer": ..., "value": ..., "sources": [{"pointer": ..., "value": ..., "without": ...}, ...]}
     *
     * Of a text that is rejected the part is explained that can be converted, which a note says. The problems are those
     * at the member and inside it. Secrets are masked in the output, too. A pointer to nothing is wrong usage. The
     * direction, and K_TEXT_DSL_VLAN, are found out as by K_TEXT_CONVERT. */
    K_TEXT_EXPLAIN = 10
};

/* The flags of a request. */
enum {
    K_TEXT_DSL_VLAN = 1u << 0,    /* the device ties its VLANs to DSL services: "groups" instead of "vlan" */
    K_TEXT_MERGE_PATCH = 1u << 1, /* a difference is a JSON Merge Patch (RFC 7396) instead of a JSON Patch (RFC 6902) */
    K_TEXT_SHOW_SECRETS = 1u << 2, /* of every operation: nothing is masked */
    K_TEXT_PARTIAL = 1u << 3,      /* of a rejected text, what can be converted of it: see K_TEXT_REJECTED */
    K_TEXT_FORCE = 1u << 4,        /* whatever layout a text seems to be of: nothing is refused for it */
    /* The text is the section. Without it, the section is taken out of a text that is a whole configuration, and a note
     * of the function "layout" says so: towards old one with an object "Device", towards new one with at least two
     * objects or arrays that have the names of sections of an old configuration. A section that is made of the whole
     * configuration takes that as it is. Nothing is refused for its layout. */
    K_TEXT_AS_IS = 1u << 5,
    K_TEXT_TELL_LOSSES = 1u << 6, /* of K_TEXT_TO_NEW, K_TEXT_TO_OLD and K_TEXT_CONVERT: finds the losses, too */
    K_TEXT_STRICT = 1u << 7, /* of the same: a text with any warning or loss is rejected; not with K_TEXT_PARTIAL */
    K_TEXT_TOWARDS_NEW = 1u << 8, /* the direction, where an operation finds it out by itself; not both */
    K_TEXT_TOWARDS_OLD = 1u << 9,
    K_TEXT_FROM_RESULT = 1u << 10 /* of K_TEXT_EXPLAIN: the pointer is of the result */
};

/* Values of `indent`: 0 (one line, with blanks) to K_TEXT_DEEPEST_INDENT blanks a level, or no white space at all. */
enum { K_TEXT_COMPACT = -1, K_TEXT_DEEPEST_INDENT = 31 };

/* A request. Set it to zero, `size` to its sizeof, and then what the operation takes; what it does not take stays 0. */
typedef struct {
    uint32_t size;
    uint32_t operation; /* K_TEXT_TO_NEW, ... */
    uint32_t flags;     /* any of K_TEXT_DSL_VLAN, ... that the operation takes */
    int32_t indent;
    const char *section; /* the name of a section, NUL-terminated */
    const char *pointer; /* of K_TEXT_EXPLAIN, NUL-terminated */
    const char *text;    /* need not end with a NUL */
    const char *other;   /* the second text, null where there is none */
    size_t text_length;  /* in bytes */
    size_t other_length;
} k_text_request_t;

/*
 * How a request ended.
 *
 * A text that is rejected has no output, but with K_TEXT_PARTIAL: then the members and elements that its errors point
 * to are taken out, and the rest is converted, and so on until that passes. What was taken out is noted, each place by
 * a problem of the function "partial"; where nothing is left to take out, there is no output.
 */
enum {
    K_TEXT_CONVERTED = 0,    /* there is an output, though there may be problems */
    K_TEXT_REJECTED = 1,     /* the text can be read, but not be converted: the problems say why */
    K_TEXT_WRONG_LAYOUT = 2, /* a text is of another layout than the operation reads: the problems say what to do */
    K_TEXT_UNREADABLE = 3,   /* a text is not what the operation reads: the problems say where */
    K_TEXT_WRONG_USAGE = 4,  /* the request makes no sense: the one problem says why */
    K_TEXT_OUT_OF_MEMORY = 5 /* try again with more memory; there is no output */
};

/* Which text a problem is in. */
enum {
    K_TEXT_IN_REQUEST = 0, /* none: it is the request that is wrong */
    K_TEXT_IN_TEXT = 1,    /* `text` */
    K_TEXT_IN_OTHER = 2    /* `other` */
};

/* How bad a problem is. */
enum {
    K_TEXT_ERROR = 1,   /* this has to be mended */
    K_TEXT_WARNING = 2, /* left out, and the rest converted */
    K_TEXT_NOTE = 3     /* good to know */
};

/* A problem and its place. Set `size` to its sizeof before the call; members beyond it are left alone. */
typedef struct {
    uint32_t size;
    uint32_t which;      /* the text it is in: K_TEXT_IN_REQUEST, ... */
    size_t offset;       /* the place in it, from 0, in bytes: of the value, or of the object or array that lacks one */
    size_t length;       /* of the value there, in bytes; 0 where nothing is there */
    size_t line;         /* from 1; ends with a line feed. 0 where the problem has no place: all four are 0 then */
    size_t column;       /* from 1, in Unicode code points; a tab is one */
    const char *pointer; /* the place as a JSON Pointer (RFC 6901), "" for the whole text; null where there is none */
    uint32_t severity;   /* K_TEXT_ERROR, ... */
    const char *function; /* who says so: a function of the library, or "parse", "layout", "partial", "usage",
                             "diagnostic" */
    const char *message;  /* on one line or several, without a line break at its end */
} k_text_problem_t;

typedef struct k_text_result k_text_result_t;

/*
 * Does what is asked. The result is null only when there is not even memory for it; whatever else happens is its status
 * and its problems. Release it with k_text_free.
 */
k_text_result_t *k_text_run(const k_text_request_t *request);

/* How the request ended: K_TEXT_CONVERTED, ...; K_TEXT_OUT_OF_MEMORY for null. */
int k_text_status(const k_text_result_t *result);

/* Which way a text was converted, or would have been: K_TEXT_TO_NEW or K_TEXT_TO_OLD, also for a section; 0 where that
 * was not found out, or nothing is converted. */
uint32_t k_text_direction(const k_text_result_t *result);

/*
 * The text that was asked for, ended by a NUL and without a line break at its end; null where there is none. Its
 * length, in bytes and without the NUL, goes to `length`, which may be null.
 */
const char *k_text_output(const k_text_result_t *result, size_t *length);

/* How many problems there are, in the order in which they were found. */
size_t k_text_problem_count(const k_text_result_t *result);

/* Fills `problem` with the one at `index`, counted from 0. 0 on success; -1 when there is none, or the size is smaller
 * than the first version's. */
int k_text_problem(const k_text_result_t *result, size_t index, k_text_problem_t *problem);

/*
 * What becomes of a value that does not come back as it was when the text is converted to the other layout and back.
 *
 * What does not come back at all is dropped when the conversion does not use it: neither taking it away nor changing it
 * changes the output or a problem. Otherwise it is changed: something of it is in the other layout, from where nothing
 * leads back. One loss stands for a value with all that is inside it, but for what is dropped inside a changed one.
 */
enum {
    K_TEXT_DROPPED = 1,   /* the other layout holds nothing of it; there is no `after` */
    K_TEXT_CUT = 2,       /* only the beginning of a text or a number comes back */
    K_TEXT_CHANGED = 3,   /* it comes back as something else, or (no `after`) not at all although it is used */
    K_TEXT_DEFAULTED = 4, /* something comes back that was not there. The place is the innermost object or array that
                             is; `after` is an object with the members that it gets, or an array with the elements */
    K_TEXT_RENUMBERED = 5 /* an entry of a numbered list or an array comes back as another one: `before` and `after`
                             are the two numbers, as they stand in a pointer */
};

/* A loss. Set `size` to its sizeof before the call; members beyond it are left alone. */
typedef struct {
    uint32_t size;
    uint32_t kind; /* K_TEXT_DROPPED, ... */
    size_t offset; /* the place in `text`, as that of a problem */
    size_t length;
    size_t line;
    size_t column;
    const char *pointer; /* the place as a JSON Pointer */
    const char *before;  /* the value there, a JSON text on one line in which secrets are masked; null where none was */
    const char *after;   /* what comes back in its place, likewise; null where nothing does */
} k_text_loss_t;

/* How many losses there are, in the order of their places; 0 where they were not asked for, or the text is rejected and
 * nothing of it is converted. */
size_t k_text_loss_count(const k_text_result_t *result);

/* Fills `loss` with the one at `index`, counted from 0. 0 on success; -1 when there is none, or the size is smaller
 * than the first version's. */
int k_text_loss(const k_text_result_t *result, size_t index, k_text_loss_t *loss);

/* A line of a text, shown to a person. Set `size` to its sizeof before the call. */
typedef struct {
    uint32_t size;
    const char *line;   /* without what it is indented by; lives until the next excerpt of the result */
    size_t mark;        /* where in it the value stands, from 0, in bytes; its end where nothing is there */
    size_t mark_length; /* in bytes, as far as it is shown; 0 where nothing is there */
} k_text_excerpt_t;

/*
 * Fills `excerpt` with the line of problem `index`, at most `width` Unicode code points of it (24 at least), around the
 * value where it is longer. Each secret is a ***; characters that would move a cursor are replaced, so that the line
 * stays one. `text` is again the text that the problem is in, unchanged, and `length` its length in bytes.
 * 0 on success; -1 when there is no such problem, it has no place, or memory runs out.
 */
int k_text_excerpt(k_text_result_t *result, size_t index, const char *text, size_t length, size_t width,
                   k_text_excerpt_t *excerpt);

/* Releases the result and all it handed out; null is allowed. */
void k_text_free(k_text_result_t *result);

/* The two lists of sections that can be converted alone. */
enum {
    K_TEXT_OLD_SECTIONS = 0, /* what K_TEXT_SECTION_TO_OLD makes */
    K_TEXT_NEW_SECTIONS = 1  /* what K_TEXT_SECTION_TO_NEW makes */
};

/* The name at `index`, counted from 0, of a list of sections; null beyond its end, and of another list. It is the
 * library's own. */
const char *k_text_section(uint32_t list, size_t index);

/*
 * Where in a JSON text the value is that a JSON Pointer leads to ("" is the whole): `offset` from 0 and `value_length`,
 * in bytes. It looks for no more than where values end, so that in a text that cannot be read it may find something, or
 * nothing. 1 when it has found it, 0 when there is no such value, -1 when memory runs out; the two are 0 then.
 */
int k_text_find(const char *text, size_t length, const char *pointer, size_t *offset, size_t *value_length);

/* The library's version, as in "1.2.3". */
const char *k_text_version(void);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
