// Light or dark: what the system wants, until one chooses.

const KEY = 'k_cnvrt theme';
const dark = matchMedia('(prefers-color-scheme: dark)');

// A page opened from a file may have no storage.
function stored() {
    try {
        return localStorage.getItem(KEY);
    } catch {
        return null;
    }
}

function store(theme) {
    try {
        localStorage.setItem(KEY, theme);
    } catch {
        // It is forgotten with the page.
    }
}

export function followTheme(button) {
    let chosen = stored();
    const show = () => {
        const isDark = chosen === null ? dark.matches : chosen === 'dark';
        document.documentElement.dataset.theme = isDark ? 'dark' : 'light';
        button.textContent = isDark ? 'Light' : 'Dark';
        button.setAttribute('aria-label', isDark ? 'Light colours' : 'Dark colours');
    };
    dark.addEventListener('change', show);
    button.addEventListener('click', () => {
        chosen = document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark';
        store(chosen);
        show();
    });
    show();
}
