// Making and finding elements.

export const byId = (id) => document.getElementById(id);

/** element('li', { class: 'x', onclick: f }, 'text', child, null, ...) */
export function element(name, attributes, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(attributes ?? {})) {
        if (value === null || value === undefined || value === false) continue;
        if (key.startsWith('on')) made.addEventListener(key.slice(2), value);
        else made.setAttribute(key, value);
    }
    made.append(...children.filter((child) => child !== null));
    return made;
}

export const numberText = (number) => number.toLocaleString('en');

/** 1 problem, 2 problems */
export const countText = (count, one, many = `${one}s`) => `${numberText(count)} ${count === 1 ? one : many}`;

export function sizeText(units) {
    if (units < 1000) return `${units} B`;
    if (units < 1e6) return `${Math.round(units / 1000)} KB`;
    return `${(units / 1e6).toFixed(1)} MB`;
}
