// For browsers: the module is compiled while it arrives from beside this file.
import { compile, createConverter } from './core.js';

const module = await compile(fetch(new URL('./k_cnvrt.wasm', import.meta.url)));

export const {
    toNew, toOld, convert, section, sections, diff, apply, check, losses, explain, find, version,
} = createConverter(module);
