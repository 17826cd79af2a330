// How editors look. Colours are those of style.css.
import { HighlightStyle } from '@codemirror/language';
import { EditorView } from '@codemirror/view';
import { tags } from '@lezer/highlight';

// How severe problems show: by a colour, the line below a text, and the sign at its line.
const SEVERITIES = [
    ['error', 'var(--bad)', 'wavy', '✕'],
    ['warning', 'var(--caution)', 'dashed', '!'],
    ['info', 'var(--accent)', 'dotted', 'i'],
];

const severities = SEVERITIES.flatMap(([name, colour, line, sign]) => [
    [`.cm-diagnostic-${name}`, { borderLeftColor: colour }],
    [`.cm-lintRange-${name}`, { textDecorationStyle: line, textDecorationColor: colour }],
    [`.cm-lint-marker-${name}`, { content: 'normal', color: colour }],
    [`.cm-lint-marker-${name}::before`, { content: `"${sign}"` }],
]);

/** Sizes and colours. */
export const look = EditorView.theme({
    '&': { color: 'var(--ink)', backgroundColor: 'var(--paper)', fontSize: '0.8125rem' },
    '&.cm-focused': { outline: 'none' },
    '&.cm-focused .cm-gutters': { boxShadow: 'inset 2px 0 0 var(--accent)' },
    '.cm-scroller': { fontFamily: 'var(--mono)', lineHeight: '1.55' },
    '.cm-gutters': { backgroundColor: 'var(--paper)', color: 'var(--soft)', border: 'none', paddingLeft: '2px' },
    '.cm-lineNumbers .cm-gutterElement': { paddingLeft: '0.5rem', minWidth: '2.5rem' },
    '.cm-activeLine, .cm-activeLineGutter': { backgroundColor: 'transparent' },
    // What is selected lies below the grounds of lines.
    '&.cm-focused .cm-activeLine, &.cm-focused .cm-activeLineGutter': { backgroundColor: 'var(--active)' },
    '.cm-line.cm-wrongLine, &.cm-focused .cm-wrongLine.cm-activeLine': { backgroundColor: 'var(--wrong)' },
    '.cm-cursor': { borderLeftColor: 'var(--accent)', borderLeftWidth: '2px' },
    '.cm-selectionBackground, &.cm-focused > .cm-scroller > .cm-selectionLayer .cm-selectionBackground': {
        backgroundColor: 'var(--chosen)',
    },
    '.cm-matchingBracket, &.cm-focused .cm-matchingBracket': {
        backgroundColor: 'transparent',
        outline: '1px solid var(--soft)',
        borderRadius: '2px',
    },
    '.cm-nonmatchingBracket, &.cm-focused .cm-nonmatchingBracket': { backgroundColor: 'transparent' },
    '.cm-mask': {
        color: 'var(--soft)',
        backgroundColor: 'var(--ground)',
        border: '1px solid var(--line)',
        borderRadius: '3px',
        padding: '0 0.25rem',
    },
    '.cm-placeholder': { color: 'var(--soft)' },
    '.cm-foldGutter .cm-gutterElement': { cursor: 'pointer', color: 'var(--soft)', padding: '0 0.25rem 0 0.125rem' },
    '.cm-foldPlaceholder': {
        backgroundColor: 'var(--ground)',
        border: '1px solid var(--line)',
        color: 'var(--soft)',
        padding: '0 0.25rem',
    },
    '.cm-panels': { backgroundColor: 'var(--ground)', color: 'var(--ink)', borderColor: 'var(--line)' },
    '.cm-panels .cm-textfield': {
        backgroundColor: 'var(--paper)',
        border: '1px solid var(--line)',
        color: 'var(--ink)',
        borderRadius: '0.25rem',
        fontSize: '0.8125rem',
        padding: '0.1875rem 0.5rem',
        width: '10rem',
    },
    '.cm-panel.cm-search': { padding: '0.375rem 0.5rem', fontFamily: 'var(--sans)' },
    '.cm-panel.cm-search label': { fontSize: '0.8125rem', color: 'var(--soft)' },
    '.cm-panel.cm-search input[type=checkbox]': { accentColor: 'var(--accent)', verticalAlign: '-0.125rem' },
    '.cm-panels .cm-button': {
        fontSize: '0.8125rem',
        padding: '0.125rem 0.5rem',
        minHeight: '1.625rem',
        backgroundImage: 'none',
        backgroundColor: 'var(--raised)',
        border: '1px solid var(--line)',
        borderRadius: '0.25rem',
    },
    '.cm-panel.cm-search [name="close"]': { color: 'var(--soft)', fontSize: '1rem', padding: '0 0.375rem' },
    '.cm-searchMatch': { backgroundColor: 'var(--caution-ground)', outline: '1px solid var(--caution)' },
    '.cm-searchMatch-selected': { backgroundColor: 'var(--chosen)' },
    '.cm-tooltip': {
        backgroundColor: 'var(--raised)',
        color: 'var(--ink)',
        border: '1px solid var(--line)',
        borderRadius: '0.375rem',
        boxShadow: 'var(--shadow)',
        maxWidth: 'min(34rem, 90vw)',
    },
    '.cm-tooltip .member': { padding: '0.5rem 0.75rem', fontFamily: 'var(--sans)', lineHeight: '1.45' },
    '.cm-tooltip-hover': { maxHeight: '20rem', overflowY: 'auto' },
    '.cm-tooltip.cm-tooltip-autocomplete > ul': { fontFamily: 'var(--mono)', maxHeight: '15rem', minWidth: '14rem' },
    '.cm-tooltip.cm-tooltip-autocomplete > ul > li': { padding: '0.1875rem 0.625rem', display: 'flex', gap: '1rem' },
    '.cm-tooltip-autocomplete > ul > li[aria-selected]': {
        backgroundColor: 'var(--chosen)',
        color: 'var(--ink)',
        boxShadow: 'inset 2px 0 0 var(--accent)',
    },
    '.cm-tooltip-autocomplete > ul > li[aria-selected] .cm-completionDetail': { color: 'var(--ink)' },
    '.cm-completionMatchedText': { textDecoration: 'none', fontWeight: '700' },
    '.cm-completionDetail': {
        marginLeft: 'auto',
        color: 'var(--soft)',
        fontStyle: 'normal',
        fontFamily: 'var(--sans)',
    },
    '.cm-tooltip.cm-completionInfo': {
        padding: '0',
        maxWidth: 'min(26rem, 90vw)',
        maxHeight: '20rem',
        overflowY: 'auto',
    },
    '.cm-diagnostic': { padding: '0.375rem 0.625rem', fontFamily: 'var(--sans)', borderLeftWidth: '3px' },
    '.cm-lintRange': {
        backgroundImage: 'none',
        textDecorationLine: 'underline',
        textDecorationThickness: '2px',
        textUnderlineOffset: '3px',
    },
    '.cm-lintRange-active': { backgroundColor: 'var(--caution-ground)' },
    '.cm-asked': { outline: '1.5px solid var(--partner)', borderRadius: '3px' },
    '.cm-partner': {
        outline: '1.5px solid var(--partner)',
        borderRadius: '3px',
        backgroundColor: 'var(--partner-ground)',
        fontWeight: '600',
    },
    '.cm-links .cm-gutterElement': { color: 'var(--partner)', fontSize: '0.625rem', padding: '0 0.125rem' },
    '.cm-gutter-lint': { width: '1.125rem' },
    '.cm-gutter-lint .cm-gutterElement': { padding: '0 0.125rem' },
    '.cm-lint-marker': {
        width: '0.875rem',
        height: '1.25rem',
        textAlign: 'center',
        fontWeight: '700',
        fontFamily: 'var(--sans)',
        fontSize: '0.75rem',
    },
    ...Object.fromEntries(severities),
});

/** The colours of JSON. */
export const colours = HighlightStyle.define([
    { tag: tags.propertyName, color: 'var(--name)' },
    { tag: tags.string, color: 'var(--text)' },
    { tag: tags.number, color: 'var(--number)' },
    { tag: [tags.bool, tags.null], color: 'var(--literal)' },
    { tag: [tags.punctuation, tags.separator, tags.bracket], color: 'var(--soft)' },
]);
