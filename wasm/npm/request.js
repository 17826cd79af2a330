// From the arguments of a function to a request of the module.
import * as header from './header.js';

const FLAGS = {
    dslVlan: header.K_TEXT_DSL_VLAN,
    mergePatch: header.K_TEXT_MERGE_PATCH,
    showSecrets: header.K_TEXT_SHOW_SECRETS,
    partial: header.K_TEXT_PARTIAL,
    force: header.K_TEXT_FORCE,
    asIs: header.K_TEXT_AS_IS,
    losses: header.K_TEXT_TELL_LOSSES,
    strict: header.K_TEXT_STRICT,
    fromResult: header.K_TEXT_FROM_RESULT,
};

/** The options of a call, none where they are left out. */
export function optionsOf(options = {}) {
    if (typeof options === 'object' && options !== null && !Array.isArray(options)) return options;
    throw new TypeError('the options are no object');
}

/** The direction of an operation that finds it out by itself where no layout is given. */
export function towards(layout) {
    if (layout === undefined) return 0;
    return isNew(layout) ? header.K_TEXT_TOWARDS_NEW : header.K_TEXT_TOWARDS_OLD;
}

/** Of the two layouts. */
export function isNew(layout) {
    if (layout !== 'old' && layout !== 'new') throw new TypeError("a layout is 'old' or 'new'");
    return layout === 'new';
}

// The tool's.
const USUAL_INDENT = 4;

function indentOf(indent) {
    if (indent === 'compact') return header.K_TEXT_COMPACT;
    if (Number.isInteger(indent) && indent >= 0 && indent <= header.K_TEXT_DEEPEST_INDENT) return indent;
    throw new TypeError(`indent is neither 'compact' nor from 0 to ${header.K_TEXT_DEEPEST_INDENT}`);
}

function flagOf(name, value) {
    if (!Object.hasOwn(FLAGS, name)) throw new TypeError(`there is no option ${name}`);
    if (typeof value !== 'boolean') throw new TypeError(`${name} is neither true nor false`);
    return value ? FLAGS[name] : 0;
}

/** The flags and the indent that options ask for, with further flags. An option that is undefined is none. */
export function settingsOf({ indent = USUAL_INDENT, ...switches }, further = 0) {
    const given = Object.entries(switches).filter(([, value]) => value !== undefined);
    return {
        flags: given.reduce((flags, [name, value]) => flags | flagOf(name, value), further),
        indent: indentOf(indent),
    };
}
