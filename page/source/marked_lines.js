// Lines with an error have a ground of their own, so that the eye finds them.
import { StateEffect, StateField } from '@codemirror/state';
import { Decoration, EditorView } from '@codemirror/view';

/** The offsets of errors in the text as it is. */
export const setMarkedLines = StateEffect.define();

const wrongLine = Decoration.line({ class: 'cm-wrongLine' });

function linesAt(doc, offsets) {
    const starts = new Set(offsets.map((offset) => doc.lineAt(offset).from));
    return Decoration.set(
        [...starts].map((start) => wrongLine.range(start)),
        true,
    );
}

export const markedLines = StateField.define({
    create: () => Decoration.none,
    update(lines, transaction) {
        const effect = transaction.effects.find((one) => one.is(setMarkedLines));
        return effect ? linesAt(transaction.newDoc, effect.value) : lines.map(transaction.changes);
    },
    provide: (field) => EditorView.decorations.from(field),
});
