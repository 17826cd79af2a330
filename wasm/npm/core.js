// The functions of the package over a compiled module, wherever that comes from.
import { ask, find } from './answer.js';
import * as header from './header.js';
import { Instance } from './instance.js';
import { isNew, optionsOf, settingsOf, towards } from './request.js';
import { nameOf, sourceOf } from './text.js';

/** Compiles the module from its bytes, or from a response while it arrives, whatever type the server gives it. */
export async function compile(source) {
    const response = await source;
    if (!(response instanceof Response)) return WebAssembly.compile(response);
    if (!response.ok) throw new Error(`the module cannot be fetched: ${response.status} ${response.statusText}`);
    const [type] = (response.headers.get('Content-Type') ?? '').split(';');
    if (type.trim() === 'application/wasm') return WebAssembly.compileStreaming(response);
    return WebAssembly.compile(await response.arrayBuffer());
}

/** The functions, each of which stands for itself: they may be taken out of the object. */
export function createConverter(module) {
    const instance = new Instance(module);

    const about = (operation, text, given, { flags, ...names } = {}) => {
        const { base, ...options } = optionsOf(given);
        const other = base === undefined ? null : sourceOf(base, 'base');
        const sources = { text: sourceOf(text, 'text'), other };
        return ask(instance, { operation, ...names, ...sources, ...settingsOf(options, flags) });
    };
    const eitherWay = (operation, text, given, names = {}) => {
        const { to, ...options } = optionsOf(given);
        return about(operation, text, options, { flags: towards(to), ...names });
    };
    const between = (operation, text, other, name, options) => {
        const sources = { text: sourceOf(text, 'text'), other: sourceOf(other, name) };
        return ask(instance, { operation, ...sources, ...settingsOf(optionsOf(options)) });
    };

    return {
        toNew: (text, options) => about(header.K_TEXT_TO_NEW, text, options),
        toOld: (text, options) => about(header.K_TEXT_TO_OLD, text, options),
        convert: (text, options) => eitherWay(header.K_TEXT_CONVERT, text, options),
        check: (text, options) => eitherWay(header.K_TEXT_CHECK, text, options),
        losses: (text, options) => eitherWay(header.K_TEXT_LOSSES, text, options),
        explain: (text, pointer, options) =>
            eitherWay(header.K_TEXT_EXPLAIN, text, options, { pointer: nameOf(pointer, 'the pointer') }),
        section: (name, text, given) => {
            const { to, ...options } = optionsOf(given);
            const operation = isNew(to) ? header.K_TEXT_SECTION_TO_NEW : header.K_TEXT_SECTION_TO_OLD;
            return about(operation, text, options, { section: nameOf(name, 'the name of a section') });
        },
        sections: (layout) => {
            const list = isNew(layout) ? header.K_TEXT_NEW_SECTIONS : header.K_TEXT_OLD_SECTIONS;
            return instance.run((running) => {
                const names = [];
                for (let name; (name = running.text(running.exports.k_text_section(list, names.length))) !== null; )
                    names.push(name);
                return names;
            });
        },
        diff: (text, other, options) => between(header.K_TEXT_DIFF, text, other, 'the second text', options),
        apply: (text, difference, options) =>
            between(header.K_TEXT_APPLY, text, difference, 'the difference', options),
        find: (text, pointer) =>
            find(instance, { text: sourceOf(text, 'text'), pointer: nameOf(pointer, 'the pointer') }),
        version: () => instance.run((running) => running.text(running.exports.k_text_version())),
    };
}
