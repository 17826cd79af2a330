// Secrets in an editor: masked on the screen and in what is copied out of it. A value that is being typed stays visible
// until the cursor leaves it.
import { RangeSet, StateEffect, StateField } from '@codemirror/state';
import { Decoration, EditorView, WidgetType } from '@codemirror/view';
import { MASK, masked, secretsOf } from './secrets.js';

/** The secrets of the text as it is after the transaction: from, to, from, to, ... */
export const setSecrets = StateEffect.define();
export const setShown = StateEffect.define();

class Mask extends WidgetType {
    eq() {
        return true;
    }
    toDOM() {
        const mask = document.createElement('span');
        mask.className = 'cm-mask';
        mask.textContent = MASK;
        mask.title = 'a secret, masked';
        return mask;
    }
}

const mask = Decoration.replace({ widget: new Mask() });

function ranges(secrets, offset = 0) {
    const list = [];
    for (let i = 0; i < secrets.length; i += 2) list.push(mask.range(secrets[i] + offset, secrets[i + 1] + offset));
    return list;
}

// What came in by one change is looked at alone, until the answer for the whole text arrives.
function secretsOfChanges(transaction) {
    const list = [];
    transaction.changes.iterChanges((_fromOld, _toOld, from, to) => {
        if (to - from > 1) list.push(...ranges(secretsOf(transaction.newDoc.sliceString(from, to)), from));
    });
    return list;
}

function mapped(all, transaction) {
    const kept = all.map(transaction.changes);
    const added = secretsOfChanges(transaction).filter(({ from, to }) => !isMasked(kept, from, to));
    return kept.update({ add: added });
}

function isMasked(all, from, to) {
    let found = false;
    all.between(from, to, () => {
        found = true;
        return false;
    });
    return found;
}

function without(all, head) {
    return all.update({ filterFrom: head, filterTo: head, filter: (from, to) => head <= from || head > to });
}

export const secretsField = StateField.define({
    create: () => ({ all: RangeSet.empty, hidden: RangeSet.empty, isShown: false, isTyping: false }),
    update(value, transaction) {
        let { all, isShown, isTyping } = value;
        const known = transaction.effects.find((effect) => effect.is(setSecrets));
        if (known !== undefined) all = RangeSet.of(ranges(known.value));
        if (transaction.docChanged) {
            if (known === undefined) all = mapped(all, transaction);
            isTyping = transaction.isUserEvent('input.type');
        } else if (transaction.selection) {
            isTyping = false;
        }
        for (const effect of transaction.effects) if (effect.is(setShown)) isShown = effect.value;
        if (all === value.all && isShown === value.isShown && isTyping === value.isTyping) return value;
        const hidden = isTyping ? without(all, transaction.newSelection.main.head) : all;
        return { all, hidden: isShown ? RangeSet.empty : hidden, isShown, isTyping };
    },
    provide: (field) => [
        EditorView.decorations.from(field, ({ hidden }) => hidden),
        EditorView.atomicRanges.of((view) => view.state.field(field).hidden),
    ],
});

// What was copied last, masked and as it is: pasted in this page it is whole again, so that moving a piece loses
// nothing.
let copied = { masked: '', whole: '' };

const plain = (text) => text.replace(/\r\n?/g, '\n');

// As editors copy: without a selection, the lines of the cursors.
function copiedPieces(state) {
    const chosen = state.selection.ranges.filter(({ empty }) => !empty);
    if (chosen.length > 0) return chosen;
    return state.selection.ranges.map(({ head }) => state.doc.lineAt(head));
}

function hiddenOffsets(state) {
    const offsets = [];
    for (const cursor = state.field(secretsField).hidden.iter(); cursor.value; cursor.next())
        offsets.push(cursor.from, cursor.to);
    return offsets;
}

function maskedCopy(text, state) {
    const whole = state.doc.toString();
    const offsets = hiddenOffsets(state);
    const pieces = copiedPieces(state).map(({ from, to }) => masked(whole, offsets, from, to));
    const result = pieces.join('\n') + (text.endsWith('\n') && !pieces.at(-1).endsWith('\n') ? '\n' : '');
    copied = { masked: plain(result), whole: text };
    return result;
}

/** An editor's secrets. */
export const masks = [
    secretsField,
    EditorView.clipboardOutputFilter.of((text, state) =>
        state.field(secretsField).isShown ? text : maskedCopy(text, state),
    ),
    EditorView.clipboardInputFilter.of((text) => (plain(text) === copied.masked ? copied.whole : text)),
];

/** The text of an editor as it may be copied. */
export function copyOf(state) {
    const text = state.doc.toString();
    return masked(text, hiddenOffsets(state));
}
