// The WebAssembly module beside this machine's own library: CPU time a call, as ratios of rounds that run in turn.
// Usage: wasm.js PROGRAMS DOCUMENTS PACKAGE SCALE...
// DOCUMENTS has old.SCALE.json and new.SCALE.json. `module` is the call of the module alone, from bytes in its memory
// to bytes in its memory; `string` is the package's function, from a string to a string.
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';

const [programs, documents, folder, ...scales] = process.argv.slice(2);
const packaged = (name) => import(pathToFileURL(join(folder, name)));
const { toNew, toOld } = await packaged('node.js');
const { Instance } = await packaged('instance.js');
const header = await packaged('header.js');

const ROUNDS = 9;
const SECONDS_A_ROUND = 0.3;

// Milliseconds of CPU time a call, with what Node's other threads do for it.
function costOf(call) {
    const start = process.cpuUsage();
    const spent = () => {
        const { user, system } = process.cpuUsage(start);
        return (user + system) / 1e3;
    };
    let count = 0;
    for (; count < 3 || spent() < SECONDS_A_ROUND * 1e3; ++count) call();
    return spent() / count;
}

const module = new WebAssembly.Module(readFileSync(join(folder, 'k_cnvrt.wasm')));
const { K_TEXT_TO_NEW, K_TEXT_TO_OLD, k_text_request_t } = header;

function moduleAlone(operation, bytes) {
    return new Instance(module).run((running) => {
        const values = { operation, indent: 4, text: running.put(bytes), text_length: bytes.length };
        const request = running.putStructure(k_text_request_t, values);
        return () => {
            const result = running.exports.k_text_run(request);
            if (running.exports.k_text_status(result) !== header.K_TEXT_CONVERTED) throw new Error('not converted');
            running.exports.k_text_free(result);
        };
    });
}

function native(operation, path) {
    return Number(execFileSync(join(programs, 'bench_text_calls'), [operation, path, SECONDS_A_ROUND]));
}

const median = (values) => values.toSorted((a, b) => a - b)[Math.floor(values.length / 2)];
const column = (value, digits = 2) => value.toFixed(digits).padStart(9);

console.log('direction     bytes    native    module    string   /native: module    string');
for (const scale of scales) {
    const kinds = [['to-new', 'old', K_TEXT_TO_NEW, toNew], ['to-old', 'new', K_TEXT_TO_OLD, toOld]];
    for (const [direction, layout, operation, convert] of kinds) {
        const path = join(documents, `${layout}.${scale}.json`);
        const text = readFileSync(path, 'utf8');
        const calls = [moduleAlone(operation, readFileSync(path)), () => convert(text)];
        calls.forEach(costOf); // until the compiler has done its best
        const rounds = Array.from({ length: ROUNDS }, () => [native(operation, path), ...calls.map(costOf)]);
        const costs = [0, 1, 2].map((i) => median(rounds.map((round) => round[i])));
        const ratios = [1, 2].map((i) => median(rounds.map((round) => round[i] / round[0])));
        const words = [`${direction} ${column(text.length, 0)}`, ...costs.map((cost) => column(cost)), '        '];
        console.log([...words, ...ratios.map((ratio) => column(ratio))].join(' '));
    }
}
