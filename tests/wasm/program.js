// program.js PROGRAM FOLDER [OPTION...]: runs a program of WebAssembly, which sees that folder and nothing else.
import { readFileSync } from 'node:fs';
import { WASI } from 'node:wasi';

const [program, folder, ...options] = process.argv.slice(2);
const args = [program, ...options, folder];
const wasi = new WASI({ version: 'preview1', args, env: process.env, preopens: { [folder]: folder } });
const instance = new WebAssembly.Instance(new WebAssembly.Module(readFileSync(program)), wasi.getImportObject());
process.exitCode = wasi.start(instance);
