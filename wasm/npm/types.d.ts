/** A text as a string, or as bytes in UTF-8, also in shared memory (a Uint8Array over it). */
export type Text = string | Uint8Array | ArrayBuffer;

export type Layout = 'old' | 'new';

export interface Problem {
    /** An error has to be mended, a warning says what was left out, a note is good to know. */
    severity: 'error' | 'warning' | 'note';
    /** The text it is in: the first, or the second (a base, the other one, a difference). Null where it is in none. */
    which: 'text' | 'other' | null;
    /** Its place as a JSON Pointer, '' for the whole text. */
    pointer: string | null;
    /** The line, from 1. Null where the problem has no place, as the three that follow. */
    line: number | null;
    /** The column, from 1, in characters (Unicode code points). */
    column: number | null;
    /** Where the value starts, in UTF-16 units from 0: text.slice(offset, offset + length) is the value. */
    offset: number | null;
    /** The length of the value, in UTF-16 units; 0 where nothing is there. */
    length: number | null;
    /** Who says so: a function of the library, or 'parse', 'layout', 'partial', 'usage', 'diagnostic', 'module'. */
    function: string;
    message: string;
}

/** What becomes of a value that does not come back as it was from the other layout. */
export interface Loss {
    /**
     * - dropped: the other layout holds nothing of it
     * - cut: only the beginning of a text or a number comes back
     * - changed: it comes back as something else, or (no `after`) not at all although it is used
     * - defaulted: something comes back that was not there; the place is the innermost object or array that is
     * - renumbered: an entry of a list comes back as another one: `before` and `after` are the two numbers
     */
    kind: 'dropped' | 'cut' | 'changed' | 'defaulted' | 'renumbered';
    /** Its place, as that of a problem. */
    pointer: string;
    line: number | null;
    column: number | null;
    offset: number | null;
    length: number | null;
    /** The value there as a JSON text, in which secrets are masked; null where none was. */
    before: string | null;
    /** What comes back in its place, likewise; null where nothing does. */
    after: string | null;
}

export interface Answer {
    /**
     * - converted: there is an output, though there may be problems
     * - rejected: the text can be read but not converted; there is an output only with `partial`
     * - wrong-layout: a text is of another layout than the function reads
     * - unreadable: a text is not what the function reads
     * - wrong-usage: the function does not take such an option, or not together with the others
     * - out-of-memory: the text is too large
     * - stopped: the module stopped, which is a fault of its own
     */
    status:
        | 'converted'
        | 'rejected'
        | 'wrong-layout'
        | 'unreadable'
        | 'wrong-usage'
        | 'out-of-memory'
        | 'stopped';
    /** Which way the text was converted, or would have been; null where nothing is, or that was not found out. */
    direction: 'to-new' | 'to-old' | null;
    output: string | null;
    /** In the order in which they were found. */
    problems: Problem[];
    /** In the order of their places, where they were asked for. */
    losses: Loss[];
}

export interface Options {
    /** Blanks a level, from 0 (one line) to 31, or 'compact' for no white space at all. Default: 4. */
    indent?: number | 'compact';
    /** Passwords and keys are shown in messages. Default: *** stands for them. An output always has them. */
    showSecrets?: boolean;
}

export interface ConversionOptions extends Options {
    /** Of a rejected text, what can be converted of it. */
    partial?: boolean;
    /** Nothing is refused for its layout. */
    force?: boolean;
}

export interface LossOptions {
    /** The losses are found, too. */
    losses?: boolean;
    /** A text with any warning or loss is rejected; not with `partial`. */
    strict?: boolean;
}

/** What `convert` and all that asks about it take. The direction is found out where it is not given. */
export interface EitherWayOptions extends Options, DeviceOptions {
    /** The layout of the result. */
    to?: Layout;
    /** Nothing is refused for its layout. */
    force?: boolean;
}

export interface ExplainOptions extends EitherWayOptions {
    /** The pointer is of the result. */
    fromResult?: boolean;
}

export interface DifferenceOptions extends Options {
    /** A difference is a JSON Merge Patch (RFC 7396) instead of a JSON Patch (RFC 6902). */
    mergePatch?: boolean;
}

export interface BaseOptions {
    /** In the new layout: the output is what has to change in it. */
    base?: Text;
    /** With a base: the output is a JSON Merge Patch (RFC 7396) instead of a JSON Patch (RFC 6902). */
    mergePatch?: boolean;
}

export interface DeviceOptions {
    /** The device ties its VLANs to DSL services: 'groups' instead of 'vlan'. `convert` finds that out by itself. */
    dslVlan?: boolean;
}

export interface SectionOptions extends ConversionOptions, BaseOptions {
    /** The layout of the result. */
    to: Layout;
    /** The text is the section. Without it, a section is taken out of a text that is a whole configuration. */
    asIs?: boolean;
}

/*
 * What the functions throw is a TypeError for an argument of another type, a layout other than these two and an option
 * that there is not, for bytes whose buffer was transferred elsewhere or made smaller than they are, and for a name or
 * a pointer with a NUL or half of a character in it. Whatever happens to a text is an answer.
 */
export interface Converter {
    /** An old configuration in the new layout. */
    toNew(text: Text, options?: ConversionOptions & BaseOptions & DeviceOptions & LossOptions): Answer;
    /** A new configuration in the old layout. */
    toOld(text: Text, options?: ConversionOptions & DeviceOptions & LossOptions): Answer;
    /** A configuration in the layout `to`, or else in that which it is not in. */
    convert(text: Text, options?: EitherWayOptions & ConversionOptions & LossOptions): Answer;
    /** Whether a configuration can be converted, and what of it the other layout will not hold. There is no output. */
    check(text: Text, options?: EitherWayOptions): Answer;
    /** What the other layout will not hold of a configuration, or of the part that can be converted. No output. */
    losses(text: Text, options?: EitherWayOptions): Answer;
    /**
     * What becomes of the member that a JSON Pointer leads to, or of which members a place of the result was made. The
     * output is an object, in which secrets are masked:
     *
     *     {"pointer": ..., "answer": "used" | "regenerated" | "lost", "effects": [{"pointer", "with", "without"}, ...]}
     *     {"pointer": ..., "value": ..., "sources": [{"pointer", "value", "without"}, ...]}      with `fromResult`
     */
    explain(text: Text, pointer: string, options?: ExplainOptions): Answer;
    /**
     * Where in a JSON text the value is that a JSON Pointer leads to, in UTF-16 units; null where there is none. It is
     * the one function that throws an Error where memory runs out.
     */
    find(text: Text, pointer: string): { offset: number; length: number } | null;
    /** One section, by a name of `sections`. */
    section(name: string, text: Text, options: SectionOptions): Answer;
    /** The names of the sections that can be made in a layout. */
    sections(to: Layout): string[];
    /** What has to change in a text to make it equal to another. */
    diff(text: Text, other: Text, options?: DifferenceOptions): Answer;
    /** A text with a difference applied, a JSON Patch or a JSON Merge Patch. */
    apply(text: Text, difference: Text, options?: Options): Answer;
    /** The version of the library, as in '1.2.3'. */
    version(): string;
}
