// What the tests share: the files of the repository and of the build.
import { execFileSync, spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { join } from 'node:path';

export const root = process.env.KCNVRT_ROOT;
export const built = process.env.KCNVRT_WASM;
export const folder = fileURLToPath(new URL('.', import.meta.url));

export const example = (name) => readFileSync(join(root, 'examples', name), 'utf8');
export const packaged = (name) => fileURLToPath(new URL(`./node_modules/k-cnvrt/${name}`, import.meta.url));

/** What a program of the build's npm packages prints; the folder is the one where the package is installed. */
export const runTool = (name, ...options) =>
    execFileSync(join(built, 'tools/node_modules/.bin', name), options, { cwd: folder, encoding: 'utf8' });

/** What a script of the folder prints, run by a Node of its own. */
export const runScript = (path, options = {}) =>
    spawnSync(process.execPath, [path], { cwd: folder, encoding: 'utf8', ...options });
