// Checks the differences against other implementations: theirs apply ours, ours applies theirs, and both carry out
// generated operations alike.  Usage: node differences.js PROGRAM
import { spawnSync } from 'node:child_process';
import { isDeepStrictEqual } from 'node:util';
import jsonPatch from 'fast-json-patch';
import mergePatch from 'json-merge-patch';

const PAIRS = 3000;
const JSON_PATCH = 0;
const MERGE_PATCH = 2;
const NAMES = [
  'a', 'b', 'c', '', '/', '~', '~0', '~1', 'a/b', 'm~n', '0', '1', '-', '01', ' ', '"\\', 'é', '€', '%25', 'a.b',
];

const copy = (value) => structuredClone(value);
const isContainer = (value) => typeof value === 'object' && value !== null;

// The same documents on every run.
function generator(seed, { nulls }) {
  let state = seed * 2654435761 + 1;
  const below = (count) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * count);
  };
  const pick = (list) => list[below(list.length)];

  const leaves = [true, false, 0, 1, -7, 0.5, 1e21, '', 'text', 'ü', 'a\nb'];
  const leaf = () => pick([...leaves, pick(NAMES), ...(nulls ? [null, null] : [])]);
  const value = (levels) => {
    const kind = levels === 0 ? 0 : below(5);
    if (kind < 2) return leaf();
    return fill(kind < 4 ? {} : [], below(5), levels - 1);
  };
  const insert = (container, inserted) => {
    if (Array.isArray(container)) container.splice(below(container.length + 1), 0, inserted);
    else container[pick(NAMES)] = inserted;
  };
  const fill = (container, count, levels) => {
    for (let i = 0; i < count; ++i) insert(container, value(levels));
    return container;
  };
  const mutate = (container) => {
    const keys = Object.keys(container);
    if (keys.length === 0) return insert(container, value(2));
    const key = pick(keys);
    if (isContainer(container[key]) && below(4) > 0) return mutate(container[key]);
    const kind = below(4);
    if (kind === 0) insert(container, value(2));
    else if (kind > 1) container[key] = kind === 2 ? leaf() : value(2);
    else if (Array.isArray(container)) container.splice(Number(key), 1);
    else delete container[key];
  };
  // The pointer to some place in a document; now and then one name too far.
  const pointer = (document) => {
    let path = '';
    let at = document;
    while (isContainer(at) && below(4) > 0) {
      const keys = Object.keys(at);
      if (keys.length === 0) break;
      const key = pick(keys);
      path += `/${key.replaceAll('~', '~0').replaceAll('/', '~1')}`;
      at = at[key];
    }
    if (isContainer(at) && below(3) === 0) path += Array.isArray(at) ? `/${below(at.length + 2)}` : '/new';
    return path;
  };
  return { below, pick, fill, mutate, pointer, value };
}

function makePair(seed, options) {
  const generate = generator(seed, options);
  const base = generate.fill({}, generate.below(8), 4);
  if (generate.below(10) === 0) return { base, candidate: generate.fill({}, generate.below(8), 4) };
  const candidate = copy(base);
  for (let i = generate.below(5); i > 0; --i) generate.mutate(candidate);
  return { base, candidate };
}

// Operations made along the way, each for the document that the ones before it leave. The last may not fit.
function makeOperations(seed) {
  const generate = generator(seed, { nulls: true });
  const base = generate.fill({}, 3 + generate.below(8), 4);
  const difference = [];
  let document = copy(base);
  for (let i = 1 + generate.below(8); i > 0; --i) {
    const operation = makeOperation(generate, document);
    const result = applyForeign(document, [operation]);
    difference.push(operation);
    if (!('applied' in result)) break;
    document = result.applied;
  }
  return { base, difference };
}

function makeOperation(generate, document) {
  const op = generate.pick(['add', 'remove', 'replace', 'move', 'copy', 'test']);
  const path = generate.pointer(document) || '/a';
  switch (op) {
    case 'remove':
      return { op, path };
    case 'move':
    case 'copy':
      return { op, from: generate.pointer(document) || '/a', path };
    case 'test':
      return { op, path, value: generate.below(3) === 0 ? generate.value(1) : found(document, path) };
    default:
      return { op, path, value: generate.value(2) };
  }
}

function found(document, path) {
  try {
    const value = jsonPatch.getValueByPointer(document, path);
    return value === undefined ? null : copy(value);
  } catch {
    return null;
  }
}

function applyForeign(base, difference) {
  try {
    return { applied: difference.reduce(step, copy(base)) };
  } catch {
    return {};
  }
}

// There, "move" and "copy" let through a value moved into itself and an index beyond an array's end; what they stand
// for, "remove" and "add", do not.
function step(document, operation) {
  const { op, from, path } = operation;
  const carry = (changed, steps) => jsonPatch.applyPatch(copy(changed), copy(steps), true).newDocument;
  if (op === 'move') carry(document, [{ op: 'remove', path: from }, { op: 'add', path, value: null }]);
  if (op === 'copy') carry(document, [{ op: 'add', path, value: null }]);
  return carry(document, [operation]);
}

function ask(program, questions) {
  const input = questions.map((question) => `${JSON.stringify(question)}\n`).join('');
  const run = spawnSync(program, { input, encoding: 'utf8', maxBuffer: 2 ** 30 });
  if (run.status !== 0) throw new Error(`${program} failed: ${run.error ?? run.stderr}`);
  return run.stdout.trimEnd().split('\n').map((line) => JSON.parse(line));
}

const FORMS = [
  {
    name: 'JSON Patch',
    flag: JSON_PATCH,
    nulls: true,
    make: (base, candidate) => jsonPatch.compare(base, candidate),
    apply: (base, difference) => jsonPatch.applyPatch(base, difference, true).newDocument,
  },
  {
    name: 'JSON Merge Patch',
    flag: MERGE_PATCH,
    nulls: false,
    make: (base, candidate) => mergePatch.generate(base, candidate) ?? {},
    apply: (base, difference) => mergePatch.apply(base, difference),
  },
];

let passed = 0;
let failed = 0;

function check(what, result, expected, details) {
  if (isDeepStrictEqual(result, expected)) {
    ++passed;
    return;
  }
  if (++failed <= 10) console.log(`FAILED ${what}\n${JSON.stringify({ result, expected, ...details })}`);
}

function checkForm(program, { name, flag, nulls, make, apply }) {
  const pairs = Array.from({ length: PAIRS }, (_, seed) => makePair(seed, { nulls }));
  const ours = ask(program, pairs.map((pair) => ({ ...pair, flag })));
  const made = ({ base, candidate }) => make(copy(base), copy(candidate));
  const theirs = ask(program, pairs.map((pair) => ({ base: pair.base, difference: made(pair) })));
  pairs.forEach((pair, i) => {
    const { difference } = ours[i];
    const details = { ...pair, difference };
    check(`${name}: ours applied by ours`, ours[i].applied, pair.candidate, details);
    check(`${name}: ours applied by theirs`, apply(copy(pair.base), copy(difference)), pair.candidate, details);
    check(`${name}: theirs applied by ours`, theirs[i].applied, pair.candidate, { ...pair, answer: theirs[i] });
  });
}

function checkOperations(program) {
  const questions = Array.from({ length: PAIRS }, (_, seed) => makeOperations(seed));
  ask(program, questions).forEach((answer, i) => {
    const { base, difference } = questions[i];
    const ours = 'applied' in answer ? { applied: answer.applied } : {};
    check('operations', ours, applyForeign(base, difference), { base, difference, answer });
  });
}

const program = process.argv[2];
FORMS.forEach((form) => checkForm(program, form));
checkOperations(program);
console.log(`${passed} passed, ${failed} failed`);
process.exit(failed === 0 && passed > 0 ? 0 : 1);
