// For Node: the module is read from beside this file, and everything is there when the import is done.
import { readFileSync } from 'node:fs';
import { createConverter } from './core.js';

const module = new WebAssembly.Module(readFileSync(new URL('./k_cnvrt.wasm', import.meta.url)));

export const {
    toNew, toOld, convert, section, sections, diff, apply, check, losses, explain, find, version,
} = createConverter(module);
